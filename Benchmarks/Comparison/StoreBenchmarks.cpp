// The diff cache relative to plain SQLite with the same schema: the cost of typed records and counters.

#include "Benchmarks/Comparison/SampleChanges.h"
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
constexpr std::int64_t readRows = 20'000;

// ---- store-records

struct Storing {
    bench::Folder folder;
    Comparison comparison = bench::sampleComparison();
    std::vector<ChangeRecord> changes = bench::sampleChanges(storedRows, comparison.id);

    /// A cache in which the comparison has begun.
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
    bench::PlainDatabase database(storing->freshFile());
    return bench::seconds([&] { bench::insertPlainly(database, storing->changes, batchSize); });
}

const bool addsStoring = bench::add({
    .name = "store-records",
    .work = "100,000 rows into a fresh cache, 500 a transaction, with their counters",
    .reference = "the same rows, schema and transactions in C over SQLite, without counters",
    .unit = "s",
    .ratio = bench::Ratio::speed,
    .must = 0.95,
    .aim = 1.0,
    .runs = 3, // each takes several seconds
    .prepare = [] { return storing = std::make_shared<Storing>(); },
    .measure = measureStoring,
    .measureReference = measureStoringReference,
});

// ---- read-cached-rows

std::shared_ptr<bench::CachedMillion> reading;

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
    bench::PlainDatabase database(reading->file);
    std::int64_t rows = 0;
    std::uint64_t touched = 0;
    const double time = bench::seconds([&] {
        sqlite3_stmt* query = database.prepare(
            "SELECT * FROM fileChange WHERE comparisonID = ? ORDER BY path LIMIT ? OFFSET ?");
        bench::bindText(query, 1, reading->comparison.id);
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
    .prepare = [] { return reading = bench::CachedMillion::shared(); },
    .measure = measureReading,
    .measureReference = measureReadingReference,
});

} // namespace
