// The diff cache against plain C over SQLite with the same schema: what typed records and the counters cost.

#include "Benchmarks/Support/Row.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/Connection.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

using namespace tallyglass;

namespace {

constexpr std::size_t batchSize = 500;
constexpr std::int64_t storedRows = 100'000;
constexpr std::int64_t cachedRows = 1'000'000;
constexpr std::int64_t readRows = 20'000;

class Folder {
public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "tallyglass-bench-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw std::runtime_error("no temporary folder");
        m_path = name;
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

Comparison makeComparison() {
    const std::string root = "/Volumes/.timemachine/11112222-5A5D-4859-A4A7-4B3B7885CFEB/2026-02-2{0}-010848."
                             "backup/2026-02-2{0}-010848.backup";
    return Comparison(fmt::format(fmt::runtime(root), 6), fmt::format(fmt::runtime(root), 7), {}, {}, 0,
                      CompareOptions::tmutilDefault().cacheKey(), dateSince1970(1.77e9));
}

/// Rows as a home folder gives them, in the order of their paths.
std::vector<ChangeRecord> makeChanges(std::int64_t count, const SharedText& comparisonID) {
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

/// SQLite by hand, as the reference uses it.
class PlainDatabase {
public:
    explicit PlainDatabase(const std::filesystem::path& file) {
        check(sqlite3_open_v2(file.c_str(), &m_database,
                              SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr));
        run("PRAGMA synchronous = NORMAL");
        run("PRAGMA foreign_keys = ON");
    }
    ~PlainDatabase() {
        for (sqlite3_stmt* statement : m_statements)
            sqlite3_finalize(statement);
        sqlite3_close(m_database);
    }
    PlainDatabase(const PlainDatabase&) = delete;
    PlainDatabase& operator=(const PlainDatabase&) = delete;

    void run(const char* sql) { check(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr)); }
    sqlite3_stmt* prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        check(sqlite3_prepare_v2(m_database, sql, -1, &statement, nullptr));
        m_statements.push_back(statement);
        return statement;
    }
    void check(int code) const {
        if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW)
            throw std::runtime_error(sqlite3_errmsg(m_database));
    }

private:
    sqlite3* m_database = nullptr;
    std::vector<sqlite3_stmt*> m_statements;
};

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

// ---- store-records

struct Storing {
    Folder folder;
    Comparison comparison = makeComparison();
    std::vector<ChangeRecord> changes = makeChanges(storedRows, comparison.id);

    /// An empty cache with the comparison begun.
    std::filesystem::path freshFile() {
        const auto file = folder.path() / "cache.sqlite";
        TallyglassDatabase::reset(file);
        BackupStore(file).beginComparison(comparison);
        return file;
    }
};
std::shared_ptr<Storing> storing;

double measureStoring() {
    const auto file = storing->freshFile();
    BackupStore store(file);
    const std::span<const ChangeRecord> all = storing->changes;
    return bench::seconds([&] {
        for (std::size_t start = 0; start < all.size(); start += batchSize)
            store.appendChanges(all.subspan(start, std::min(batchSize, all.size() - start)),
                                storing->comparison.id);
    });
}

double measureStoringReference() {
    PlainDatabase database(storing->freshFile());
    return bench::seconds([&] { insertPlainly(database, storing->changes, batchSize); });
}

const bool addsStoring = bench::add({
    .name = "store-records",
    .work = "100,000 rows into a fresh cache, 500 a transaction, with their counters",
    .reference = "the same rows, schema and transactions in C over SQLite, without counters",
    .unit = "s",
    .ratio = bench::Ratio::speed,
    .must = 0.95,
    .aim = 1.0,
    .runs = 3, // of several seconds each
    .prepare = [] { return storing = std::make_shared<Storing>(); },
    .measure = measureStoring,
    .measureReference = measureStoringReference,
});

// ---- read-cached-rows

struct Reading {
    Folder folder;
    std::filesystem::path file = folder.path() / "cache.sqlite";
    Comparison comparison = makeComparison();

    Reading() {
        {
            BackupStore store(file);
            store.beginComparison(comparison);
        }
        PlainDatabase database(file);
        database.run("PRAGMA synchronous = OFF");
        database.run("DROP TRIGGER __fileChangeSearch_ai"); // a million words, which no row here looks for
        insertPlainly(database, makeChanges(cachedRows, comparison.id), cachedRows);
    }
};
std::shared_ptr<Reading> reading;

double measureReading() {
    BackupStore store(reading->file);
    std::vector<ChangeRecord> rows;
    const double time =
        bench::seconds([&] { rows = store.changes(reading->comparison.id, {}, {}, readRows, 0); });
    if (std::ssize(rows) != readRows)
        throw std::runtime_error("rows are missing");
    return time;
}

double measureReadingReference() {
    PlainDatabase database(reading->file);
    std::int64_t rows = 0;
    std::uint64_t touched = 0;
    const double time = bench::seconds([&] {
        sqlite3_stmt* query = database.prepare(
            "SELECT * FROM fileChange WHERE comparisonID = ? ORDER BY path LIMIT ? OFFSET ?");
        bindText(query, 1, reading->comparison.id);
        sqlite3_bind_int64(query, 2, readRows);
        sqlite3_bind_int64(query, 3, 0);
        for (; sqlite3_step(query) == SQLITE_ROW; ++rows)
            for (int column = 0; column < sqlite3_column_count(query); ++column)
                switch (sqlite3_column_type(query, column)) {
                case SQLITE_INTEGER:
                    touched += static_cast<std::uint64_t>(sqlite3_column_int64(query, column));
                    break;
                case SQLITE_TEXT:
                    touched += sqlite3_column_text(query, column)[0];
                    touched += static_cast<std::uint64_t>(sqlite3_column_bytes(query, column));
                    break;
                default:
                    break;
                }
    });
    bench::keep(touched);
    if (rows != readRows)
        throw std::runtime_error("rows are missing");
    return time;
}

const bool addsReading = bench::add({
    .name = "read-cached-rows",
    .work = "20,000 of 1,000,000 cached rows into records",
    .reference = "the same query stepped in C, its columns touched",
    .unit = "s",
    .ratio = bench::Ratio::speed,
    .must = 0.7,
    .aim = 0.9,
    .runs = 15,
    .prepare = [] { return reading = std::make_shared<Reading>(); },
    .measure = measureReading,
    .measureReference = measureReadingReference,
});

} // namespace
