#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Persistence/DatabaseError.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

using namespace tallyglass;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::vector<std::string> texts(Connection& connection, std::string_view sql) {
    std::vector<std::string> result;
    const Query query = connection.query(sql);
    while (query->step())
        result.emplace_back(query->value(0).text());
    return result;
}

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

mode_t rights(const std::filesystem::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

class TallyglassDatabaseTest : public testing::Test {
protected:
    std::string failureToOpen() {
        try {
            static_cast<void>(TallyglassDatabase::makeQueue(file));
        } catch (const Error& failure) {
            return failure.errorDescription();
        }
        return "opened";
    }

    test::TemporaryFolder folder;
    std::filesystem::path file = folder / "cache.sqlite";
};

TEST_F(TallyglassDatabaseTest, writesItsSchemaWordForWord) {
    const auto connection = TallyglassDatabase::makeQueue(file);

    const auto schema = texts(*connection, "SELECT sql FROM sqlite_master");
    EXPECT_THAT(
        schema,
        Contains(
            R"(CREATE VIRTUAL TABLE "fileChangeSearch" USING fts5(path, tokenize='''unicode61'' ''separators'' ''-./_''', content='fileChange', content_rowid='id'))"));
    EXPECT_THAT(
        schema,
        Contains(
            R"(CREATE TRIGGER "__fileChangeSearch_au" AFTER UPDATE ON "fileChange" BEGIN INSERT INTO "fileChangeSearch"("fileChangeSearch", "rowid", "path") VALUES('delete', old."id", old."path"); INSERT INTO "fileChangeSearch"("rowid", "path") VALUES (new."id", new."path"); END)"));
    EXPECT_THAT(texts(*connection, "SELECT name || ' ' || type || ' ' || \"notnull\" || ' ' || pk FROM "
                                   "pragma_table_info('fileChange')"),
                ElementsAre("id INTEGER 0 1", "comparisonID TEXT 1 0", "path TEXT 1 0", "parentPath TEXT 1 0",
                            "kind TEXT 1 0", "isDirectory BOOLEAN 1 0", "size INTEGER 0 0",
                            "sizeDelta INTEGER 0 0", "differences TEXT 0 0"));
    EXPECT_THAT(texts(*connection, "SELECT name FROM sqlite_master WHERE type = 'index' AND sql NOT NULL"),
                ElementsAre("index_fileChange_on_comparisonID", "index_fileChange_on_parentPath",
                            "idx_change_comparison_path", "idx_change_path"));
    EXPECT_THAT(texts(*connection, "SELECT identifier FROM grdb_migrations ORDER BY rowid"),
                ElementsAre("v1", "v2-search", "v3-differences"));
    EXPECT_THAT(texts(*connection, "PRAGMA journal_mode"), ElementsAre("delete"));
    EXPECT_THAT(texts(*connection, "PRAGMA synchronous"), ElementsAre("1"));
    EXPECT_THAT(texts(*connection, "PRAGMA foreign_keys"), ElementsAre("1"));
}

TEST_F(TallyglassDatabaseTest, readsRowsThroughTheIndexThatHasTheirOrder) {
    const auto connection = TallyglassDatabase::makeQueue(file);

    const Query plan = connection->query("EXPLAIN QUERY PLAN SELECT * FROM fileChange WHERE comparisonID = ? "
                                         "ORDER BY path LIMIT ? OFFSET ?");

    ASSERT_TRUE(plan->step());
    EXPECT_THAT(std::string(plan->value(3).text()), HasSubstr("USING INDEX idx_change_comparison_path"));
    EXPECT_FALSE(plan->step()) << "sorts";
}

// A file from builds without the search, and without the differences.
TEST_F(TallyglassDatabaseTest, upgradesAFileOfTheFirstMigrationAlone) {
    {
        const auto connection = TallyglassDatabase::makeQueue(file);
        connection->execute("DROP TABLE fileChangeSearch; DROP TRIGGER __fileChangeSearch_ai; "
                            "DROP TRIGGER __fileChangeSearch_ad; DROP TRIGGER __fileChangeSearch_au; "
                            "ALTER TABLE fileChange DROP COLUMN differences; "
                            "DELETE FROM grdb_migrations WHERE identifier <> 'v1'; "
                            "INSERT INTO comparison (id, fromPath, toPath, depth, startedAt) VALUES "
                            "('c', '/a', '/b', 0, '2026-02-27 01:08:48.250'); "
                            "INSERT INTO fileChange (comparisonID, path, parentPath, kind) VALUES "
                            "('c', '/old/report.txt', '/old', 'modified')");
    }

    BackupStore store(file);

    EXPECT_EQ(store.comparison("c")->startedAt, dateSince1970(1772154528.25));
    ASSERT_EQ(store.searchPaths("rep", 10).size(), 1U);
    EXPECT_EQ(store.searchPaths("rep", 10)[0].differences, std::nullopt);
    store.appendChanges({}, "c");
    store.deleteComparison("c");
    EXPECT_THAT(store.searchPaths("rep", 10), IsEmpty());
}

TEST_F(TallyglassDatabaseTest, opensAFileOfANewerBuild) {
    TallyglassDatabase::makeQueue(file)->execute(
        "INSERT INTO grdb_migrations VALUES ('v9-later'); ALTER TABLE comparison ADD COLUMN later TEXT");

    BackupStore store(file);
    const auto stored = store.beginComparison(Comparison("/a", "/b", {}, {}, 0, "k", Date()));

    EXPECT_EQ(store.comparison(stored.id), stored);
    const auto connection = TallyglassDatabase::makeQueue(file);
    EXPECT_THAT(texts(*connection, "SELECT identifier FROM grdb_migrations"), Contains("v9-later"));
}

TEST_F(TallyglassDatabaseTest, keepsFilesAndNewFoldersFromOthersWhateverTheUmaskIs) {
    file = folder / "new/Tallyglass/cache.sqlite";
    for (const mode_t mask : {0000, 0022, 0777}) {
        std::filesystem::remove_all(folder / "new");
        const mode_t before = umask(mask);
        const auto connection = TallyglassDatabase::makeQueue(file);
        Transaction transaction(*connection, Transaction::Kind::write);
        connection->execute("DELETE FROM grdb_migrations");
        umask(before);

        EXPECT_EQ(rights(folder / "new"), 0700);
        EXPECT_EQ(rights(file.parent_path()), 0700);
        EXPECT_EQ(rights(file), 0600);
        EXPECT_EQ(rights(file.string() + "-journal"), 0600);
    }
}

TEST_F(TallyglassDatabaseTest, takesAnOldFilesRightsFromOthersButNotTheirFolders) {
    static_cast<void>(TallyglassDatabase::makeQueue(file));
    chmod(file.c_str(), 0644);
    chmod(folder.path().c_str(), 0755);

    static_cast<void>(TallyglassDatabase::makeQueue(file));

    EXPECT_EQ(rights(file), 0600);
    EXPECT_EQ(rights(folder.path()), 0755);
}

TEST_F(TallyglassDatabaseTest, opensThroughALinkAndLeavesTheRightsOfItsTarget) {
    const auto target = folder / "elsewhere.sqlite";
    std::filesystem::create_symlink(target, file);

    static_cast<void>(TallyglassDatabase::makeQueue(file));
    EXPECT_EQ(rights(target), 0600) << "made by the opening";
    chmod(target.c_str(), 0644);
    static_cast<void>(TallyglassDatabase::makeQueue(file));

    EXPECT_EQ(rights(target), 0644);
    EXPECT_TRUE(std::filesystem::is_symlink(file));
}

TEST_F(TallyglassDatabaseTest, refusesWhatIsNoFileAndLeavesItsRights) {
    const auto pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    chmod(pipe.c_str(), 0644);
    std::filesystem::create_symlink(pipe, file);

    EXPECT_EQ(failureToOpen(), file.string() + ": Not a regular file");

    EXPECT_EQ(rights(pipe), 0644);
}

TEST_F(TallyglassDatabaseTest, isInTheUsersDataFolder) {
    setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
    std::filesystem::create_directory(folder / "Tallyglass");
    chmod((folder / "Tallyglass").c_str(), 0755);

    EXPECT_EQ(TallyglassDatabase::defaultURL(), folder / "Tallyglass/cache.sqlite");
    static_cast<void>(TallyglassDatabase::makeQueue(TallyglassDatabase::defaultURL()));
    EXPECT_EQ(rights(folder / "Tallyglass"), 0700);
    unsetenv("XDG_DATA_HOME");
}

TEST_F(TallyglassDatabaseTest, refusesAFileThatIsNoDatabaseAndLeavesIt) {
    const std::string notes(5000, 'n');
    folder.write("cache.sqlite", notes);
    chmod(file.c_str(), 0644);

    EXPECT_EQ(failureToOpen(), "file is not a database: " + file.string());

    EXPECT_EQ(contents(file), notes);
    EXPECT_EQ(rights(file), 0644);
}

TEST_F(TallyglassDatabaseTest, refusesADatabaseWithOtherTables) {
    Connection(file).execute("CREATE TABLE comparison (mine TEXT); INSERT INTO comparison VALUES ('kept')");

    EXPECT_EQ(failureToOpen(), "table \"comparison\" already exists");

    Connection connection(file);
    EXPECT_THAT(texts(connection, "SELECT mine FROM comparison"), ElementsAre("kept"));
    EXPECT_THAT(texts(connection, "SELECT identifier FROM grdb_migrations"), IsEmpty());
}

TEST_F(TallyglassDatabaseTest, saysWhichFolderCannotBeMade) {
    folder.write("blocked", "a file");
    file = folder / "blocked/Tallyglass/cache.sqlite";
    EXPECT_EQ(failureToOpen(), (folder / "blocked").string() + ": Not a directory");

    file = folder.path();
    EXPECT_THAT(failureToOpen(), HasSubstr("unable to open database file"));
}

TEST_F(TallyglassDatabaseTest, saysWhichFolderIsWithoutRights) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may do anything";
    chmod(folder.path().c_str(), 0500);
    EXPECT_EQ(failureToOpen(), file.string() + ": Permission denied");
    chmod(folder.path().c_str(), 0700);
}

TEST_F(TallyglassDatabaseTest, resetsWhateverIsThere) {
    for (const char* name : {"cache.sqlite", "cache.sqlite-wal", "cache.sqlite-other"})
        folder.write(name, "x");

    TallyglassDatabase::reset(file);
    TallyglassDatabase::reset(file);

    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_FALSE(std::filesystem::exists(folder / "cache.sqlite-wal"));
    EXPECT_TRUE(std::filesystem::exists(folder / "cache.sqlite-other"));
}

} // namespace
