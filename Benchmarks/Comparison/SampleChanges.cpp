#include "Benchmarks/Comparison/SampleChanges.h"

#include "TallyglassKit/Comparison/BackupStore.h"

#include <fmt/format.h>

#include <algorithm>

namespace tallyglass::bench {

Comparison sampleComparison() {
    const std::string root = "/Volumes/.timemachine/11112222-5A5D-4859-A4A7-4B3B7885CFEB/2026-02-2{0}-010848."
                             "backup/2026-02-2{0}-010848.backup";
    return Comparison(fmt::format(fmt::runtime(root), 6), fmt::format(fmt::runtime(root), 7), {}, {}, 0,
                      CompareOptions::tmutilDefault().cacheKey(), dateSince1970(1.77e9));
}

std::vector<ChangeRecord> sampleChanges(std::int64_t count, const SharedText& comparisonID) {
    std::vector<ChangeRecord> result;
    result.reserve(static_cast<std::size_t>(count));
    const SharedText common("size,mtime");
    for (std::int64_t index = 0; index < count; ++index) {
        auto path = fmt::format("/Users/sample/Library/Application Support/Folder {:04}/Item {:03}-{}.plist",
                                index / 200, index % 200, (index * 7919) % 1000);
        const ChangeKind kind = allChangeKinds[static_cast<std::size_t>(index % 3)];
        ChangeRecord change(std::nullopt, comparisonID, std::move(path), kind, false, index * 37, index,
                            std::nullopt);
        if (kind == ChangeKind::modified)
            change.differences = common;
        result.push_back(std::move(change));
    }
    return result;
}

void bindText(sqlite3_stmt* statement, int parameter, std::string_view text) {
    sqlite3_bind_text(statement, parameter, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

void insertPlainly(PlainDatabase& database, const std::vector<ChangeRecord>& changes,
                   std::size_t rowsAtOnce) {
    sqlite3_stmt* begin = database.prepare("BEGIN IMMEDIATE");
    sqlite3_stmt* commit = database.prepare("COMMIT");
    sqlite3_stmt* insertion = database.prepare(
        "INSERT INTO fileChange (comparisonID, path, parentPath, kind, isDirectory, size, sizeDelta, "
        "differences) VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
    const auto runOnce = [&](sqlite3_stmt* statement) {
        database.check(sqlite3_step(statement));
        sqlite3_reset(statement);
    };
    for (std::size_t start = 0; start < changes.size(); start += rowsAtOnce) {
        runOnce(begin);
        for (std::size_t index = start; index < std::min(start + rowsAtOnce, changes.size()); ++index) {
            const ChangeRecord& change = changes[index];
            bindText(insertion, 1, change.comparisonID);
            bindText(insertion, 2, change.path);
            bindText(insertion, 3, change.parentPath());
            bindText(insertion, 4, rawValue(change.kind));
            sqlite3_bind_int(insertion, 5, change.isDirectory);
            sqlite3_bind_int64(insertion, 6, *change.size);
            sqlite3_bind_int64(insertion, 7, *change.sizeDelta);
            if (change.differences)
                bindText(insertion, 8, *change.differences);
            else
                sqlite3_bind_null(insertion, 8);
            runOnce(insertion);
        }
        runOnce(commit);
    }
}

CachedMillion::CachedMillion() {
    {
        BackupStore store(file);
        store.beginComparison(comparison);
        store.finishComparison(comparison.id, std::nullopt);
    }
    PlainDatabase database(file);
    database.run("PRAGMA synchronous = OFF");
    database.run("DROP TRIGGER __fileChangeSearch_ai"); // no row here searches for words
    insertPlainly(database, sampleChanges(rows, comparison.id), rows);
}

std::shared_ptr<CachedMillion> CachedMillion::shared() {
    static std::weak_ptr<CachedMillion> current;
    auto million = current.lock();
    if (!million)
        current = million = std::make_shared<CachedMillion>();
    return million;
}

} // namespace tallyglass::bench
