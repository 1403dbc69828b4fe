#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/Internal/BackupStoreOperation.h"
#include "TallyglassKit/Comparison/Internal/BackupStoreRecords.h"
#include "TallyglassKit/Persistence/Timestamp.h"

#include <chrono>
#include <tuple>

namespace tallyglass {

namespace {

/// `comparison` as running and without rows.
Comparison asBegun(Comparison comparison) {
    comparison.isPartial = true;
    comparison.completedAt.reset();
    comparison.errorMessage.reset();
    comparison.addedCount = comparison.removedCount = comparison.modifiedCount = 0;
    comparison.bytesAdded = comparison.bytesRemoved = 0;
    return comparison;
}

/// Whether the row is unchanged since the last write of `run`.
bool belongsTo(const Comparison& row, const Comparison& run) {
    const auto counters = [](const Comparison& comparison) {
        return std::tie(comparison.addedCount, comparison.removedCount, comparison.modifiedCount,
                        comparison.bytesAdded, comparison.bytesRemoved);
    };
    return row.isPartial && !row.completedAt && row.startedAt == asStored(run.startedAt) &&
           counters(row) == counters(run);
}

// Parts of a transaction.

void begin(Connection& connection, const Comparison& begun) {
    const Query removal = connection.query("DELETE FROM fileChange WHERE comparisonID = ?");
    removal->bindText(1, begun.id);
    removal->run();
    upsert(connection, begun);
}

void count(std::span<const ChangeRecord> changes, Comparison& row) {
    for (const ChangeRecord& change : changes)
        row.count(change);
}

void finish(Comparison& row, Date now, const std::optional<std::string>& error) {
    row.completedAt = asStored(now);
    row.errorMessage = error;
    row.isPartial = error.has_value();
}

} // namespace

Comparison BackupStore::beginComparison(const Comparison& comparison, std::stop_token stop) {
    auto begun = asBegun(comparison);
    const Operation operation(*this, std::move(stop));
    Transaction transaction(*m_connection, Transaction::Kind::write);
    begin(*m_connection, begun);
    transaction.commit();
    return begun;
}

void BackupStore::appendChanges(std::span<const ChangeRecord> changes, const std::string& comparisonID) {
    const Operation operation(*this);
    Transaction transaction(*m_connection, Transaction::Kind::write);
    insertAll(*m_connection, changes);
    if (auto row = fetchOne<Comparison>(*m_connection, comparisonID)) {
        count(changes, *row);
        update(*m_connection, *row);
    }
    transaction.commit();
}

void BackupStore::finishComparison(const std::string& id, const std::optional<std::string>& error) {
    const Date now = m_clock();
    const Operation operation(*this);
    Transaction transaction(*m_connection, Transaction::Kind::write);
    if (auto row = fetchOne<Comparison>(*m_connection, id)) {
        finish(*row, now, error);
        update(*m_connection, *row);
    }
    transaction.commit();
}

void BackupStore::deleteComparison(const std::string& id) {
    const Operation operation(*this);
    Transaction transaction(*m_connection, Transaction::Kind::write);
    const Query removal = m_connection->query("DELETE FROM comparison WHERE id = ?");
    removal->bindText(1, id);
    removal->run();
    transaction.commit();
}

Comparison BackupStore::beginUnlessCompleted(const Comparison& comparison, std::stop_token stop) {
    auto begun = asBegun(comparison);
    const Operation operation(*this, std::move(stop));
    Transaction transaction(*m_connection, Transaction::Kind::write);
    if (auto row = fetchOne<Comparison>(*m_connection, begun.id); row && !row->isPartial)
        return *std::move(row);
    begin(*m_connection, begun);
    transaction.commit();
    return begun;
}

Comparison BackupStore::appendChanges(std::span<const ChangeRecord> changes, const Comparison& run,
                                      std::stop_token stop) {
    const Operation operation(*this, std::move(stop));
    Transaction transaction(*m_connection, Transaction::Kind::write);
    auto row = fetchOne<Comparison>(*m_connection, run.id);
    if (!row || !belongsTo(*row, run))
        throw RunReplaced();
    insertAll(*m_connection, changes);
    count(changes, *row);
    update(*m_connection, *row);
    transaction.commit();
    return *std::move(row);
}

std::optional<Comparison> BackupStore::finishComparison(const Comparison& run,
                                                        const std::optional<std::string>& error,
                                                        std::stop_token stop) {
    const Date now = m_clock();
    const auto waitEnd =
        error ? std::optional(std::chrono::steady_clock::now() + defaultLockTimeout) : std::nullopt;
    const Operation operation(*this, std::move(stop), waitEnd);
    Transaction transaction(*m_connection, Transaction::Kind::write);
    auto row = fetchOne<Comparison>(*m_connection, run.id);
    if (!row)
        return std::nullopt;
    if (!belongsTo(*row, run))
        throw RunReplaced();
    finish(*row, now, error);
    update(*m_connection, *row);
    transaction.commit();
    return row;
}

std::optional<Comparison> BackupStore::takeOver(const std::optional<Comparison>& seen, const Comparison& run,
                                                std::span<const ChangeRecord> changes, bool isAll,
                                                std::stop_token stop) {
    const Date now = m_clock();
    auto row = asBegun(run);
    row.startedAt = asStored(row.startedAt);
    const Operation operation(*this, std::move(stop));
    Transaction transaction(*m_connection, Transaction::Kind::write);
    if (fetchOne<Comparison>(*m_connection, run.id) != seen)
        return std::nullopt;
    begin(*m_connection, row);
    insertAll(*m_connection, changes);
    count(changes, row);
    if (isAll)
        finish(row, now, std::nullopt);
    update(*m_connection, row);
    transaction.commit();
    return row;
}

} // namespace tallyglass
