#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Persistence/DatabaseError.h"
#include "TallyglassKit/Persistence/FullText.h"
#include "TallyglassKit/Persistence/Migration.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <thread>

using namespace tallyglass;
using testing::ElementsAre;

namespace {

class ConnectionTest : public testing::Test {
protected:
    ConnectionTest() { connection.execute("CREATE TABLE t (x)"); }

    static std::int64_t count(Connection& connection) {
        const Query query = connection.query("SELECT count(*) FROM t");
        return query->step() ? query->value(0).integer() : -1;
    }
    static int codeOf(const std::function<void()>& work) {
        try {
            work();
        } catch (const DatabaseError& failure) {
            return failure.code();
        }
        return SQLITE_OK;
    }

    test::TemporaryFolder folder;
    Connection connection{folder / "test.sqlite"};
};

TEST_F(ConnectionTest, rollsAnUncommittedTransactionBack) {
    {
        Transaction transaction(connection, Transaction::Kind::write);
        connection.execute("INSERT INTO t VALUES (1)");
    }
    EXPECT_EQ(count(connection), 0);
    {
        Transaction transaction(connection, Transaction::Kind::write);
        connection.execute("INSERT INTO t VALUES (1)");
        transaction.commit();
    }
    EXPECT_EQ(count(connection), 1);
}

TEST_F(ConnectionTest, keepsTextsAsTheyAre) {
    const std::string text("a\0b\xFF", 4);
    const Query query = connection.query("SELECT ?, typeof(?)");
    query->bindText(1, text);
    query->bindText(2, std::string_view());

    ASSERT_TRUE(query->step());

    EXPECT_EQ(query->value(0).text(), text);
    EXPECT_EQ(query->value(1).text(), "text");
}

TEST_F(ConnectionTest, saysWhatSQLiteSays) {
    try {
        connection.execute("INSERT INTO missing VALUES (1)");
        FAIL();
    } catch (const DatabaseError& failure) {
        EXPECT_EQ(failure.errorDescription(), "no such table: missing");
        EXPECT_EQ(failure.code(), SQLITE_ERROR);
    }
    EXPECT_THROW(static_cast<void>(connection.query("SELEKT")), DatabaseError);
}

TEST_F(ConnectionTest, givesUpOnALockAfterFiveSeconds) {
    Connection other(folder / "test.sqlite");
    const Transaction transaction(other, Transaction::Kind::write);
    const auto start = std::chrono::steady_clock::now();
    try {
        connection.execute("INSERT INTO t VALUES (1)");
        FAIL();
    } catch (const DatabaseError& failure) {
        EXPECT_EQ(failure.errorDescription(), "database is locked");
        EXPECT_EQ(failure.code(), SQLITE_BUSY);
    }
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(4900));
}

TEST_F(ConnectionTest, waitsForALockAsLongAsItsHolderMakesProgress) {
    Connection waiting(folder / "test.sqlite", std::chrono::seconds(1));
    connection.execute("PRAGMA cache_size = 5"); // the rest is written before the commit
    {
        Transaction transaction(connection, Transaction::Kind::write);
        std::jthread waiter([&] { EXPECT_NO_THROW(waiting.execute("INSERT INTO t VALUES (1)")); });
        for (int row = 0; row < 150; ++row) {
            connection.execute("INSERT INTO t VALUES (zeroblob(50000))");
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        transaction.commit();
    }
    EXPECT_EQ(count(connection), 151);
}

TEST_F(ConnectionTest, waitsForALockUntilAGivenTime) {
    Connection patient(folder / "test.sqlite", std::chrono::hours(1));
    const Transaction transaction(connection, Transaction::Kind::write);
    const StopScope scope(patient, {}, std::chrono::steady_clock::now() + std::chrono::milliseconds(20));
    EXPECT_EQ(codeOf([&] { patient.execute("INSERT INTO t VALUES (1)"); }), SQLITE_BUSY);
}

TEST_F(ConnectionTest, stopsAStatementThatWouldNeverEnd) {
    const auto endless = [&](std::stop_token stop) {
        const StopScope scope(connection, std::move(stop));
        connection
            .query("WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) SELECT max(x) FROM c")
            ->run();
    };
    std::stop_source source;
    std::jthread stopper([&] { source.request_stop(); });

    EXPECT_THROW(endless(source.get_token()), Cancelled);

    EXPECT_THROW(endless(source.get_token()), Cancelled); // stopped before it began
    EXPECT_EQ(count(connection), 0);                      // works as before
}

TEST_F(ConnectionTest, appliesEachMigrationOnceAndFailuresAlone) {
    const std::vector<Migration> good{{"one", "INSERT INTO t VALUES (1)"},
                                      {"two", "INSERT INTO t VALUES (2)"}};
    migrate(connection, good);
    migrate(connection, good);
    EXPECT_EQ(count(connection), 2);

    const std::vector<Migration> bad{{"three", "INSERT INTO t VALUES (3)"},
                                     {"four", "INSERT INTO t VALUES (4); INSERT INTO missing VALUES (1)"}};
    EXPECT_THROW(migrate(connection, bad), DatabaseError);
    EXPECT_EQ(count(connection), 3);
}

TEST_F(ConnectionTest, checksForeignKeysAtTheEndOfAMigration) {
    connection.execute("PRAGMA foreign_keys = ON; CREATE TABLE parent (id PRIMARY KEY); "
                       "CREATE TABLE child (p REFERENCES parent(id))");

    migrate(connection, std::vector<Migration>{
                            {"late parent", "INSERT INTO child VALUES (1); INSERT INTO parent VALUES (1)"}});

    EXPECT_EQ(codeOf([&] {
                  migrate(connection, std::vector<Migration>{{"orphan", "INSERT INTO child VALUES (2)"}});
              }),
              SQLITE_CONSTRAINT_FOREIGNKEY);
}

TEST_F(ConnectionTest, findsWordsAsTheAsciiTokenizerDoes) {
    EXPECT_THAT(asciiTokens(connection, "My Doc.txt"), ElementsAre("my", "doc", "txt"));
    EXPECT_THAT(asciiTokens(connection, "ÄB_c\"NOT*"), ElementsAre("Äb", "c", "not"));
    EXPECT_THAT(asciiTokens(connection, "... "), testing::IsEmpty());
}

} // namespace
