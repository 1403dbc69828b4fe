// One open SQLite database with the statements prepared on it. Not thread-safe: its owner lets one thread in
// at a time. Statements on it never outlive it.

#pragma once

#include "TallyglassKit/Persistence/LockWait.h"
#include "TallyglassKit/Persistence/Statement.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

struct sqlite3;
namespace SQLite {
class Database;
}

namespace tallyglass {

class Connection {
public:
    /// Opens the database file, making it when it is missing. Its statements wait for other connections'
    /// locks as LockWait says. Throws DatabaseError.
    explicit Connection(const std::filesystem::path& file,
                        std::chrono::milliseconds lockTimeout = defaultLockTimeout);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Runs one or more statements that give no rows.
    void execute(const std::string& sql);

    /// The statement with this text, prepared at its first use and kept. Requires: no other use of the same
    /// text is active.
    [[nodiscard]] Query query(std::string_view sql);

    /// The failure that the last call reported with `code`: throws DatabaseError, or Cancelled when it failed
    /// because the token of a StopScope was stopped.
    [[noreturn]] void fail(int code) const;

    [[nodiscard]] const std::filesystem::path& file() const { return m_file; }
    [[nodiscard]] sqlite3* handle() const;

private:
    friend class StopScope;
    static int isStopRequested(void* connection);
    static int waitForLock(void* connection, int attempt);

    std::filesystem::path m_file;
    LockWait m_lockWait;
    std::stop_token m_stop;
    std::unique_ptr<SQLite::Database> m_database;
    std::map<std::string, Statement, std::less<>> m_statements; // destroyed before the database
};

/// For the lifetime of this object, statements of the connection and their waits for a lock end with
/// Cancelled soon after a stop. Throws Cancelled at once if `stop` is stopped already. With a `waitEnd` they
/// wait for locks until then at most.
class StopScope {
public:
    StopScope(Connection& connection, std::stop_token stop,
              std::optional<std::chrono::steady_clock::time_point> waitEnd = {});
    ~StopScope();
    StopScope(const StopScope&) = delete;
    StopScope& operator=(const StopScope&) = delete;

private:
    Connection& m_connection;
};

/// A transaction, rolled back at the end of the scope unless it was committed.
class Transaction {
public:
    enum class Kind {
        read,  ///< all statements see the same state
        write, ///< takes the write lock at once, so that no later statement can fail to get it
    };
    Transaction(Connection& connection, Kind kind);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Connection& m_connection;
};

} // namespace tallyglass
