// A prepared SQL statement of one connection. Its owner uses it from one thread at a time.
//
// Use: bind its parameters (counted from 1), step through its rows and read their columns (counted from 0),
// reset it. Texts are bound without a copy: what they view must stay until the reset.

#pragma once

#include "TallyglassKit/Platform/Text/SharedText.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3_stmt;
struct sqlite3_value;

namespace tallyglass {

class Connection;

/// The value of one column of the current row. Valid until the next step or reset.
class Value {
public:
    Value(sqlite3_value* value, TextPool& texts) : m_value(value), m_texts(texts) {}

    [[nodiscard]] bool isNull() const;
    [[nodiscard]] bool isText() const;
    [[nodiscard]] std::int64_t integer() const;
    [[nodiscard]] double real() const;
    /// Valid for the lifetime of the value.
    [[nodiscard]] std::string_view text() const;
    /// The text, shared with earlier rows that have the same text in this column.
    [[nodiscard]] SharedText sharedText() const { return m_texts.share(text()); }

    /// Throws a DatabaseError that reports an impossible value in the column.
    [[noreturn]] void failAsUnexpected() const;

private:
    sqlite3_value* m_value;
    TextPool& m_texts;
};

class Statement {
public:
    /// Prepares the one statement in `sql`, to be used many times. `connection` must outlive it.
    Statement(Connection& connection, std::string_view sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void bindNull(int parameter);
    void bindInteger(int parameter, std::int64_t value);
    void bindText(int parameter, std::string_view text);
    /// For a text that is destroyed before the reset: copies it.
    void bindCopyOfText(int parameter, std::string_view text);

    /// Goes to the next row; false when there is none. Throws DatabaseError, or Cancelled when the
    /// connection's stop token was stopped. After either, the statement must be reset before its next use.
    bool step();

    /// Steps to the end and resets, keeping the bindings.
    void run();

    /// Resets to the start and clears the bindings.
    void reset() noexcept;

    [[nodiscard]] Value value(int column);

    /// The index of the result column of that name; throws DatabaseError when there is none.
    [[nodiscard]] int column(std::string_view name) const;

private:
    void check(int code) const;

    Connection& m_connection;
    sqlite3_stmt* m_statement = nullptr;
    std::vector<TextPool> m_texts; // by column
};

/// A use of a statement that its connection keeps: reset when the use ends.
class Query {
public:
    explicit Query(Statement& statement) : m_statement(&statement) {}

    [[nodiscard]] Statement& operator*() const { return *m_statement; }
    Statement* operator->() const { return m_statement.get(); }

private:
    struct Reset {
        void operator()(Statement* statement) const noexcept { statement->reset(); }
    };
    std::unique_ptr<Statement, Reset> m_statement;
};

} // namespace tallyglass
