#include "TallyglassKit/Persistence/Statement.h"

#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Persistence/DatabaseError.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <limits>

namespace tallyglass {

namespace {

int length(std::string_view text) {
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw DatabaseError(SQLITE_TOOBIG, sqlite3_errstr(SQLITE_TOOBIG));
    return static_cast<int>(text.size());
}

/// SQLite takes a null pointer for NULL, and an empty view may hold one.
const char* start(std::string_view text) {
    return text.empty() ? "" : text.data();
}

} // namespace

// SQLite calls these values unprotected: it doesn't lock the connection for them. It needn't, since one
// thread at a time uses the statement.

bool Value::isNull() const {
    return sqlite3_value_type(m_value) == SQLITE_NULL;
}

bool Value::isText() const {
    return sqlite3_value_type(m_value) == SQLITE_TEXT;
}

std::int64_t Value::integer() const {
    return sqlite3_value_int64(m_value);
}

double Value::real() const {
    return sqlite3_value_double(m_value);
}

std::string_view Value::text() const {
    const void* bytes = sqlite3_value_text(m_value);
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(m_value));
    return bytes ? std::string_view(static_cast<const char*>(bytes), size) : std::string_view();
}

void Value::failAsUnexpected() const {
    throw DatabaseError(SQLITE_MISMATCH, fmt::format("unexpected value: {}", text()));
}

Statement::Statement(Connection& connection, std::string_view sql) : m_connection(connection) {
    check(sqlite3_prepare_v3(connection.handle(), start(sql), length(sql), SQLITE_PREPARE_PERSISTENT,
                             &m_statement, nullptr));
    m_texts.resize(static_cast<std::size_t>(sqlite3_column_count(m_statement)));
}

Statement::~Statement() {
    sqlite3_finalize(m_statement);
}

void Statement::bindNull(int parameter) {
    check(sqlite3_bind_null(m_statement, parameter));
}

void Statement::bindInteger(int parameter, std::int64_t value) {
    check(sqlite3_bind_int64(m_statement, parameter, value));
}

void Statement::bindText(int parameter, std::string_view text) {
    check(sqlite3_bind_text(m_statement, parameter, start(text), length(text), SQLITE_STATIC));
}

void Statement::bindCopyOfText(int parameter, std::string_view text) {
    const auto transient = SQLITE_TRANSIENT; // NOLINT: SQLite's own constant casts an integer
    check(sqlite3_bind_text(m_statement, parameter, start(text), length(text), transient));
}

bool Statement::step() {
    switch (const int code = sqlite3_step(m_statement)) {
    case SQLITE_ROW:
        return true;
    case SQLITE_DONE:
        return false;
    default:
        m_connection.fail(code);
    }
}

void Statement::run() {
    while (step()) {
    }
    sqlite3_reset(m_statement);
}

void Statement::reset() noexcept {
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
    for (TextPool& texts : m_texts)
        texts.clear();
}

Value Statement::value(int column) {
    return {sqlite3_column_value(m_statement, column), m_texts[static_cast<std::size_t>(column)]};
}

int Statement::column(std::string_view name) const {
    for (int column = 0; column < sqlite3_column_count(m_statement); ++column)
        if (name == sqlite3_column_name(m_statement, column))
            return column;
    throw DatabaseError(SQLITE_ERROR, "no such column: " + std::string(name));
}

void Statement::check(int code) const {
    if (code != SQLITE_OK)
        m_connection.fail(code);
}

} // namespace tallyglass
