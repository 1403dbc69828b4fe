#include "TallyglassKit/Comparison/BackupStore.h"

#include "TallyglassKit/Comparison/Internal/BackupStoreOperation.h"
#include "TallyglassKit/Comparison/Internal/BackupStoreRecords.h"
#include "TallyglassKit/Comparison/Internal/ChangeOrderSQL.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/FullText.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>

namespace tallyglass {

namespace {

using Changes = std::vector<ChangeRecord>;

/// Without spaces and tabs at both ends.
std::string_view trimmed(std::string_view text) {
    constexpr std::string_view whiteSpace = " \t";
    const auto first = text.find_first_not_of(whiteSpace);
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

/// The full-text query for a prefix match of every word of `text`; empty without words.
std::string prefixQuery(Connection& connection, std::string_view text) {
    std::string query;
    for (const std::string& token : asciiTokens(connection, text)) {
        if (!query.empty())
            query += ' ';
        query += token + '*';
    }
    return query;
}

/// Whether FTS5 rejected the query itself, such as one with too many words.
bool isInvalidQuery(const DatabaseError& failure) {
    return std::string_view(failure.what()).starts_with("fts5: ");
}

/// The expected number of rows of a read without a search, to reserve memory. Uses the counters of the
/// comparison, which are only a hint: a file may contain anything.
std::size_t expectedCount(Connection& connection, const std::string& comparisonID,
                          const std::set<ChangeKind>& kinds, std::int64_t limit, std::int64_t offset) {
    constexpr std::int64_t most = 4'000'000;
    const auto comparison = fetchOne<Comparison>(connection, comparisonID);
    if (!comparison)
        return 0;
    std::int64_t count = 0;
    const auto add = [&](ChangeKind kind, std::int64_t rows) {
        if (kinds.empty() || kinds.contains(kind))
            count += std::clamp<std::int64_t>(rows, 0, most);
    };
    add(ChangeKind::added, comparison->addedCount);
    add(ChangeKind::removed, comparison->removedCount);
    add(ChangeKind::modified, comparison->modifiedCount);
    count -= std::clamp<std::int64_t>(offset, 0, count);
    return static_cast<std::size_t>(std::min({count, most, limit < 0 ? most : limit}));
}

std::string selectChanges(std::size_t kindCount, bool searches, ChangeOrder order) {
    std::string sql = "SELECT * FROM fileChange WHERE comparisonID = ?";
    for (std::size_t index = 0; index < kindCount; ++index)
        sql += index == 0 ? " AND kind IN (?" : ", ?";
    if (kindCount > 0)
        sql += ")";
    if (searches)
        sql += " AND path LIKE ?";
    return fmt::format("{} ORDER BY {} LIMIT ? OFFSET ?", sql, orderTerms(order));
}

} // namespace

BackupStore::BackupStore(const std::filesystem::path& url, Clock clock)
    : BackupStore(TallyglassDatabase::makeQueue(url), std::move(clock)) {}

BackupStore::BackupStore(std::unique_ptr<Connection> connection, Clock clock)
    : m_clock(std::move(clock)), m_connection(std::move(connection)) {}

BackupStore::~BackupStore() = default;

std::optional<Comparison> BackupStore::completedComparison(const std::string& fromPath,
                                                           const std::string& toPath,
                                                           const CompareOptions& options,
                                                           std::stop_token stop) {
    auto found = comparison(Comparison::makeID(fromPath, toPath, options.cacheKey()), std::move(stop));
    return found && !found->isPartial ? std::move(found) : std::nullopt;
}

std::optional<Comparison> BackupStore::comparison(const std::string& id, std::stop_token stop) {
    const Operation operation(*this, std::move(stop));
    return fetchOne<Comparison>(*m_connection, id);
}

std::vector<std::optional<Comparison>> BackupStore::comparisons(std::span<const std::string> ids,
                                                                std::stop_token stop) {
    const Operation operation(*this, std::move(stop));
    const Transaction transaction(*m_connection, Transaction::Kind::read);
    std::vector<std::optional<Comparison>> result;
    result.reserve(ids.size());
    for (const std::string& id : ids)
        result.push_back(fetchOne<Comparison>(*m_connection, id));
    return result;
}

std::vector<Comparison> BackupStore::completedComparisons(const std::string& fromPath,
                                                          const std::string& toPath, std::stop_token stop) {
    const Operation operation(*this, std::move(stop));
    const Query query =
        m_connection->query("SELECT * FROM comparison WHERE fromPath = ? AND toPath = ? AND NOT "
                            "isPartial ORDER BY depth > 0, depth DESC, startedAt DESC");
    query->bindText(1, fromPath);
    query->bindText(2, toPath);
    return fetchAll<Comparison>(*query);
}

std::vector<Comparison> BackupStore::allComparisons() {
    const Operation operation(*this);
    const Query query = m_connection->query("SELECT * FROM comparison ORDER BY startedAt DESC");
    return fetchAll<Comparison>(*query);
}

Changes BackupStore::changes(const std::string& comparisonID,
                             const std::optional<std::set<ChangeKind>>& kinds,
                             const std::optional<std::string>& search, std::int64_t limit,
                             std::int64_t offset, std::stop_token stop) {
    return changes(comparisonID, kinds, search, ChangeOrder::path, limit, offset, std::move(stop));
}

Changes BackupStore::changes(const std::string& comparisonID,
                             const std::optional<std::set<ChangeKind>>& kinds,
                             const std::optional<std::string>& search, ChangeOrder order, std::int64_t limit,
                             std::int64_t offset, std::stop_token stop) {
    const auto wantedKinds = kinds.value_or(std::set<ChangeKind>());
    const bool searches = search && !trimmed(*search).empty();
    const auto pattern = searches ? fmt::format("%{}%", *search) : std::string();

    const Operation operation(*this, std::move(stop));
    const Transaction transaction(*m_connection, Transaction::Kind::read);
    Changes result;
    if (!searches)
        result.reserve(expectedCount(*m_connection, comparisonID, wantedKinds, limit, offset));

    const Query query = m_connection->query(selectChanges(wantedKinds.size(), searches, order));
    int parameter = 0;
    query->bindText(++parameter, comparisonID);
    for (const ChangeKind kind : wantedKinds)
        query->bindText(++parameter, rawValue(kind));
    if (searches)
        query->bindText(++parameter, pattern);
    query->bindInteger(++parameter, limit);
    query->bindInteger(++parameter, offset);

    RecordReader<ChangeRecord> reader(*query);
    while (query->step())
        result.push_back(reader.read());
    if (result.capacity() > result.size() + result.size() / 8)
        result.shrink_to_fit(); // long lists are kept for long
    return result;
}

std::int64_t BackupStore::changeCount(const std::string& comparisonID) {
    const Operation operation(*this);
    const Query query = m_connection->query("SELECT COUNT(*) FROM fileChange WHERE comparisonID = ?");
    query->bindText(1, comparisonID);
    return query->step() ? query->value(0).integer() : 0;
}

std::vector<DirectoryRollup> BackupStore::rollups(const std::string& comparisonID, std::int64_t limit,
                                                  std::stop_token stop) {
    const Operation operation(*this, std::move(stop));
    const Query query = m_connection->query(
        "SELECT parentPath AS path, COUNT(*) AS changeCount, "
        "COALESCE(SUM(COALESCE(sizeDelta, size, 0)), 0) AS bytesDelta FROM fileChange "
        "WHERE comparisonID = ? GROUP BY parentPath ORDER BY ABS(bytesDelta) DESC LIMIT ?");
    query->bindText(1, comparisonID);
    query->bindInteger(2, limit);
    return fetchAll<DirectoryRollup>(*query);
}

std::vector<std::pair<Comparison, ChangeRecord>> BackupStore::history(const std::string& path,
                                                                      std::stop_token stop) {
    const Operation operation(*this, std::move(stop));
    const Transaction transaction(*m_connection, Transaction::Kind::read);
    const Query query = m_connection->query("SELECT * FROM fileChange WHERE path = ?");
    query->bindText(1, path);

    std::vector<std::pair<Comparison, ChangeRecord>> result;
    for (ChangeRecord& change : fetchAll<ChangeRecord>(*query))
        if (auto comparison = fetchOne<Comparison>(*m_connection, change.comparisonID))
            result.emplace_back(std::move(*comparison), std::move(change));
    // An absent date is less than any other.
    std::ranges::stable_sort(result, std::greater(), [](const auto& pair) { return pair.first.toDate; });
    return result;
}

Changes BackupStore::searchPaths(const std::string& text, std::int64_t limit, std::stop_token stop) {
    const auto words = trimmed(text);
    if (words.empty())
        return {};
    const Operation operation(*this, std::move(stop));
    const auto pattern = prefixQuery(*m_connection, words);
    if (pattern.empty())
        return {};
    const Query query =
        m_connection->query("SELECT fileChange.* FROM fileChange JOIN fileChangeSearch ON "
                            "fileChangeSearch.rowid = fileChange.id WHERE fileChangeSearch MATCH ? LIMIT ?");
    query->bindText(1, pattern);
    query->bindInteger(2, limit);
    try {
        return fetchAll<ChangeRecord>(*query);
    } catch (const DatabaseError& failure) {
        if (isInvalidQuery(failure))
            return {};
        throw;
    }
}

} // namespace tallyglass
