// The user's diff cache as somebody else may hold or break it while the program works on it.

#pragma once

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/Connection.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

namespace tallyglass::test {

class UserCache {
public:
    explicit UserCache(const std::filesystem::path& file)
        : m_connection(TallyglassDatabase::makeQueue(file)), m_store(file) {}

    /// Keeps everybody else out, for the five seconds that they wait.
    void lock() const { m_connection->execute("BEGIN EXCLUSIVE"); }
    void unlock() const { m_connection->execute("ROLLBACK"); }

    /// Has the disk fill up just before the row of this path is stored.
    void fillDiskAt(const std::string& path) const {
        m_connection->execute("CREATE TRIGGER full BEFORE INSERT ON fileChange WHEN new.path = '" + path +
                              "' BEGIN SELECT RAISE(ABORT, 'the disk is full'); END");
    }
    void makeRoom() const { m_connection->execute("DROP TRIGGER full"); }

    /// Has every look at the rows of a comparison take forever. Storing them takes no longer than it does.
    void holdRows() const {
        m_connection->execute(R"(
            ALTER TABLE fileChange RENAME TO heldRows;
            CREATE VIEW fileChange AS SELECT * FROM heldRows WHERE
                (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n)
                 SELECT COUNT(*) FROM n WHERE i <> heldRows.id);
            CREATE TRIGGER removing INSTEAD OF DELETE ON fileChange BEGIN
                DELETE FROM heldRows WHERE id = old.id;
            END;
            CREATE TRIGGER storing INSTEAD OF INSERT ON fileChange BEGIN
                INSERT INTO heldRows(comparisonID, path, parentPath, kind, isDirectory, size, sizeDelta,
                                     differences)
                VALUES (new.comparisonID, new.path, new.parentPath, new.kind, new.isDirectory, new.size,
                        new.sizeDelta, new.differences);
            END)");
    }
    void giveRows() const {
        m_connection->execute("DROP VIEW fileChange; ALTER TABLE heldRows RENAME TO fileChange");
    }

    /// Whether a comparison has ended without error, whoever may have read its rows.
    [[nodiscard]] bool hasResult() {
        return std::ranges::any_of(m_store.allComparisons(),
                                   [](const Comparison& comparison) { return !comparison.isPartial; });
    }

private:
    const std::unique_ptr<Connection> m_connection;
    BackupStore m_store;
};

} // namespace tallyglass::test
