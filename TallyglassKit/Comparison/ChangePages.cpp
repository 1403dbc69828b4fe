#include "TallyglassKit/Comparison/ChangePages.h"

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/Internal/BackupStoreOperation.h"
#include "TallyglassKit/Comparison/Internal/BackupStoreRecords.h"
#include "TallyglassKit/Comparison/Internal/ChangeOrderSQL.h"
#include "TallyglassKit/Persistence/Timestamp.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>
#include <utility>

namespace tallyglass {

namespace {

std::optional<Date> asStored(const std::optional<Date>& date) {
    return date ? std::optional(tallyglass::asStored(*date)) : std::nullopt;
}

} // namespace

ChangePages::ChangePages(BackupStore& store, Comparison run, ChangeOrder order, std::int64_t pageSize)
    : m_store(store), m_run(std::move(run)), m_order(order), m_pageSize(pageSize) {}

std::vector<ChangeRecord> ChangePages::next(const std::stop_token& stop) {
    const BackupStore::Operation operation(m_store, stop);
    const Transaction transaction(*m_store.m_connection, Transaction::Kind::read);
    check();
    return m_order == ChangeOrder::path ? nextByPath() : nextByIdentifier();
}

void ChangePages::check() const {
    const auto row = fetchOne<Comparison>(*m_store.m_connection, m_run.id);
    if (!row || row->startedAt != tallyglass::asStored(m_run.startedAt) ||
        row->completedAt != asStored(m_run.completedAt))
        throw ComparisonChanged();
}

std::vector<ChangeRecord> ChangePages::nextByPath() {
    constexpr std::string_view columns = "SELECT * FROM fileChange WHERE comparisonID = ?1";
    const Query query = m_store.m_connection->query(
        fmt::format("{}{} ORDER BY {} LIMIT ?2", columns,
                    m_last ? " AND (path, id) > (SELECT path, id FROM fileChange WHERE id = ?3)" : "",
                    orderTerms(m_order)));
    query->bindText(1, m_run.id);
    query->bindInteger(2, m_pageSize);
    if (m_last)
        query->bindInteger(3, *m_last);

    std::vector<ChangeRecord> page;
    page.reserve(static_cast<std::size_t>(std::clamp<std::int64_t>(m_run.totalChanges(), 0, m_pageSize)));
    RecordReader<ChangeRecord> reader(*query);
    while (query->step())
        page.push_back(reader.read());
    if (!page.empty())
        m_last = page.back().id;
    return page;
}

std::vector<ChangeRecord> ChangePages::nextByIdentifier() {
    if (!m_identifiers)
        m_identifiers = identifiers();
    const Query query = m_store.m_connection->query("SELECT * FROM fileChange WHERE id = ?");
    RecordReader<ChangeRecord> reader(*query);
    const auto rest = std::span(*m_identifiers).subspan(m_read);
    const auto due = rest.first(std::min(rest.size(), static_cast<std::size_t>(m_pageSize)));
    std::vector<ChangeRecord> page;
    page.reserve(due.size());
    for (const std::int64_t identifier : due) {
        query->reset();
        query->bindInteger(1, identifier);
        if (!query->step())
            throw ComparisonChanged();
        page.push_back(reader.read());
    }
    m_read += due.size();
    return page;
}

std::vector<std::int64_t> ChangePages::identifiers() const {
    const Query query = m_store.m_connection->query(
        fmt::format("SELECT id FROM fileChange WHERE comparisonID = ? ORDER BY {}", orderTerms(m_order)));
    query->bindText(1, m_run.id);
    std::vector<std::int64_t> result;
    while (query->step())
        result.push_back(query->value(0).integer());
    return result;
}

} // namespace tallyglass
