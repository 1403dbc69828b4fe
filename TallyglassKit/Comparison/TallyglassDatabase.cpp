#include "TallyglassKit/Comparison/TallyglassDatabase.h"

#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Persistence/Migration.h"
#include "TallyglassKit/Platform/Files/PrivateFile.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <system_error>
#include <vector>

namespace tallyglass {

namespace {

// Never change a migration: files of earlier builds have it applied.
const std::vector<Migration>& migrations() {
    static const std::vector<Migration> all{
        {"v1", R"sql(
CREATE TABLE "comparison" (
    "id" TEXT NOT NULL PRIMARY KEY,
    "fromPath" TEXT NOT NULL,
    "toPath" TEXT NOT NULL,
    "fromDate" DATETIME,
    "toDate" DATETIME,
    "depth" INTEGER NOT NULL,
    "startedAt" DATETIME NOT NULL,
    "completedAt" DATETIME,
    "isPartial" BOOLEAN NOT NULL DEFAULT 1,
    "errorMessage" TEXT,
    "addedCount" INTEGER NOT NULL DEFAULT 0,
    "removedCount" INTEGER NOT NULL DEFAULT 0,
    "modifiedCount" INTEGER NOT NULL DEFAULT 0,
    "bytesAdded" INTEGER NOT NULL DEFAULT 0,
    "bytesRemoved" INTEGER NOT NULL DEFAULT 0
);
CREATE TABLE "fileChange" (
    "id" INTEGER PRIMARY KEY AUTOINCREMENT,
    "comparisonID" TEXT NOT NULL REFERENCES "comparison"("id") ON DELETE CASCADE,
    "path" TEXT NOT NULL,
    "parentPath" TEXT NOT NULL,
    "kind" TEXT NOT NULL,
    "isDirectory" BOOLEAN NOT NULL DEFAULT 0,
    "size" INTEGER,
    "sizeDelta" INTEGER
);
CREATE INDEX "index_fileChange_on_comparisonID" ON "fileChange"("comparisonID");
CREATE INDEX "index_fileChange_on_parentPath" ON "fileChange"("parentPath");
CREATE INDEX "idx_change_comparison_path" ON "fileChange"("comparisonID", "path");
CREATE INDEX "idx_change_path" ON "fileChange"("path");
)sql"},
        {"v2-search", R"sql(
CREATE VIRTUAL TABLE "fileChangeSearch" USING fts5(path, tokenize='''unicode61'' ''separators'' ''-./_''', content='fileChange', content_rowid='id');
CREATE TRIGGER "__fileChangeSearch_ai" AFTER INSERT ON "fileChange" BEGIN INSERT INTO "fileChangeSearch"("rowid", "path") VALUES (new."id", new."path"); END;
CREATE TRIGGER "__fileChangeSearch_ad" AFTER DELETE ON "fileChange" BEGIN INSERT INTO "fileChangeSearch"("fileChangeSearch", "rowid", "path") VALUES('delete', old."id", old."path"); END;
CREATE TRIGGER "__fileChangeSearch_au" AFTER UPDATE ON "fileChange" BEGIN INSERT INTO "fileChangeSearch"("fileChangeSearch", "rowid", "path") VALUES('delete', old."id", old."path"); INSERT INTO "fileChangeSearch"("rowid", "path") VALUES (new."id", new."path"); END;
INSERT INTO "fileChangeSearch"("fileChangeSearch") VALUES('rebuild');
)sql"},
        {"v3-differences", R"sql(ALTER TABLE "fileChange" ADD COLUMN "differences" TEXT)sql"},
    };
    return all;
}

} // namespace

std::filesystem::path TallyglassDatabase::defaultURL() {
    return SystemPaths::applicationSupportFolder() / "Tallyglass" / "cache.sqlite";
}

std::unique_ptr<Connection> TallyglassDatabase::makeQueue(const std::filesystem::path& url,
                                                          std::chrono::milliseconds lockTimeout) {
    const auto file = std::filesystem::absolute(url);
    makePrivateFolder(file.parent_path());
    if (file == defaultURL()) // elsewhere, an existing folder may be meant for everybody
        takeRightsFromOthers(file.parent_path());
    makePrivateFile(file); // SQLite would apply the umask, and gives its journal the file's mode

    auto connection = std::make_unique<Connection>(file, lockTimeout);
    connection->execute("PRAGMA synchronous = NORMAL"); // fails if the file isn't a database
    connection->execute("PRAGMA foreign_keys = ON");
    takeRightsFromOthers(file);
    migrate(*connection, migrations());
    return connection;
}

void TallyglassDatabase::reset(const std::filesystem::path& url) {
    for (const char* suffix : {"", "-wal", "-shm"}) {
        auto file = url;
        std::error_code ignored;
        std::filesystem::remove(file += suffix, ignored);
    }
}

} // namespace tallyglass
