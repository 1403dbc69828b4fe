#include "TallyglassKit/Persistence/Connection.h"

#include "TallyglassKit/Persistence/DatabaseError.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

#include <tuple>

namespace tallyglass {

namespace {

constexpr int openFlags =
    SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;

/// How many steps of SQLite's virtual machine run between checks of the stop token: well under a millisecond.
constexpr int stepsBetweenStopTests = 5000;

/// Whether `code` means that the file itself is at fault, not a passing condition.
bool concernsFile(int code) {
    switch (code & 0xFF) {
    case SQLITE_NOTADB:
    case SQLITE_CANTOPEN:
    case SQLITE_CORRUPT:
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_IOERR:
        return true;
    default:
        return false;
    }
}

DatabaseError makeError(int code, const std::string& text, const std::filesystem::path& file) {
    return DatabaseError(code, text, concernsFile(code) ? file : std::filesystem::path());
}

} // namespace

Connection::Connection(const std::filesystem::path& file, std::chrono::milliseconds lockTimeout)
    : m_file(std::filesystem::absolute(file)), m_lockWait(lockTimeout) {
    try {
        m_database = std::make_unique<SQLite::Database>(m_file.string(), openFlags);
    } catch (const SQLite::Exception& failure) {
        throw makeError(failure.getErrorCode(), failure.what(), m_file);
    }
    const char* name =
        sqlite3_db_filename(handle(), "main"); // the target of a link, beside which its journal is
    m_lockWait.watch({name, sqlite3_filename_journal(name)});
    sqlite3_busy_handler(handle(), &Connection::waitForLock, this);
}

Connection::~Connection() = default;

void Connection::execute(const std::string& sql) {
    if (const int code = m_database->tryExec(sql); code != SQLITE_OK)
        fail(code);
}

Query Connection::query(std::string_view sql) {
    auto found = m_statements.find(sql);
    if (found == m_statements.end())
        found = m_statements
                    .emplace(std::piecewise_construct, std::forward_as_tuple(sql),
                             std::forward_as_tuple(*this, sql))
                    .first;
    return Query(found->second);
}

void Connection::fail(int code) const {
    const int primary = code & 0xFF;
    if (m_stop.stop_requested() && (primary == SQLITE_INTERRUPT || primary == SQLITE_BUSY))
        throw Cancelled();
    throw makeError(code, sqlite3_errmsg(handle()), m_file);
}

sqlite3* Connection::handle() const {
    return m_database->getHandle();
}

int Connection::isStopRequested(void* connection) {
    return static_cast<const Connection*>(connection)->m_stop.stop_requested();
}

int Connection::waitForLock(void* connection, int attempt) {
    auto& self = *static_cast<Connection*>(connection);
    return self.m_lockWait.goesOn(attempt, self.m_stop);
}

StopScope::StopScope(Connection& connection, std::stop_token stop,
                     std::optional<std::chrono::steady_clock::time_point> waitEnd)
    : m_connection(connection) {
    if (stop.stop_requested())
        throw Cancelled();
    connection.m_lockWait.setEnd(waitEnd);
    if (stop.stop_possible()) {
        connection.m_stop = std::move(stop);
        sqlite3_progress_handler(connection.handle(), stepsBetweenStopTests, &Connection::isStopRequested,
                                 &connection);
    }
}

StopScope::~StopScope() {
    sqlite3_progress_handler(m_connection.handle(), 0, nullptr, nullptr);
    m_connection.m_stop = {};
    m_connection.m_lockWait.setEnd({});
}

Transaction::Transaction(Connection& connection, Kind kind) : m_connection(connection) {
    connection.query(kind == Kind::write ? "BEGIN IMMEDIATE" : "BEGIN")->run();
}

Transaction::~Transaction() {
    // SQLite has rolled back by itself after some failures, such as a full disk.
    if (!sqlite3_get_autocommit(m_connection.handle()))
        sqlite3_exec(m_connection.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit() {
    m_connection.query("COMMIT")->run();
}

} // namespace tallyglass
