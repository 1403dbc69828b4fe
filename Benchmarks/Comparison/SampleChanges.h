// Changes for the comparison benchmarks, and a cache filled with them.

#pragma once

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/Comparison.h"

#include <sqlite3.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass::bench {

/// A temporary folder, removed with its contents at the end.
class Folder {
public:
    explicit Folder(const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
        std::string name = (parent / "tallyglass-bench-XXXXXX").string();
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

/// Two backups a day apart, compared without a limit.
[[nodiscard]] Comparison sampleComparison();

/// Rows like those of a home folder, in the order of their paths.
[[nodiscard]] std::vector<ChangeRecord> sampleChanges(std::int64_t count, const SharedText& comparisonID);

/// Plain SQLite, for the reference.
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

void bindText(sqlite3_stmt* statement, int parameter, std::string_view text);

/// Stores rows with plain SQLite, in transactions of `rowsAtOnce`, without counters.
void insertPlainly(PlainDatabase& database, const std::vector<ChangeRecord>& changes, std::size_t rowsAtOnce);

/// A cache with one finished comparison of a million rows.
struct CachedMillion {
    static constexpr std::int64_t rows = 1'000'000;

    Folder folder;
    std::filesystem::path file = folder.path() / "cache.sqlite";
    Comparison comparison = sampleComparison();

    CachedMillion();

    /// Created on first use, shared while it is referenced.
    [[nodiscard]] static std::shared_ptr<CachedMillion> shared();
};

} // namespace tallyglass::bench
