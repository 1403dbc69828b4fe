// Typed records: structs whose fields are the columns of a table (see RecordTable), bound to statements, read
// from rows, stored and fetched.

#pragma once

#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Persistence/FieldValue.h"
#include "TallyglassKit/Persistence/Internal/RecordSQL.h"

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <tuple>
#include <vector>

namespace tallyglass {

template <typename Record>
inline constexpr std::size_t columnCount = std::tuple_size_v<decltype(RecordTable<Record>::columns)>;

/// Binds the fields of `record` to the parameters after `parameter`. They must stay unchanged until the
/// statement is reset.
template <typename Record>
void bindRecord(Statement& statement, const Record& record, int parameter = 0) {
    std::apply(
        [&](const auto&... column) {
            (bindValue(statement, ++parameter, std::invoke(column.field, record)), ...);
        },
        RecordTable<Record>::columns);
}

/// Reads records from a statement's rows. Columns are found by name; the statement may have others.
template <typename Record>
class RecordReader {
public:
    explicit RecordReader(Statement& statement) : m_statement(statement) {
        eachColumn([&](const auto& column, int& index) { index = statement.column(column.name); });
    }

    /// The record of the current row.
    [[nodiscard]] Record read() {
        Record record;
        eachColumn([&](const auto& column, int index) {
            readValue(m_statement.value(index), std::invoke(column.field, record));
        });
        return record;
    }

private:
    using Table = RecordTable<Record>;

    template <typename Visit>
    void eachColumn(Visit visit) {
        std::size_t position = 0;
        const auto visitRead = [&](const auto& column, int& index) {
            if constexpr (std::remove_cvref_t<decltype(column)>::isRead)
                visit(column, index);
        };
        std::apply([&](const auto&... column) { (visitRead(column, m_indexes[position++]), ...); },
                   Table::columns);
    }

    Statement& m_statement;
    std::array<int, columnCount<Record>> m_indexes{};
};

/// All remaining rows of the statement.
template <typename Record>
[[nodiscard]] std::vector<Record> fetchAll(Statement& statement) {
    RecordReader<Record> reader(statement);
    std::vector<Record> records;
    while (statement.step())
        records.push_back(reader.read());
    return records;
}

/// The record with that primary key.
template <typename Record>
[[nodiscard]] std::optional<Record> fetchOne(Connection& connection, std::string_view key) {
    const Query query = connection.query(RecordSQL<Record>::selectByKey());
    query->bindText(1, key);
    if (!query->step())
        return std::nullopt;
    return RecordReader<Record>(*query).read();
}

/// Inserts records from the front of `records` in statements of `count` each and removes them from the span;
/// fewer than `count` remain.
template <std::size_t count, typename Record>
void insertInGroups(Connection& connection, std::span<const Record>& records) {
    if (records.size() < count)
        return;
    const Query query = connection.query(RecordSQL<Record>::template insert<count>());
    for (; records.size() >= count; records = records.subspan(count)) {
        int parameter = 0;
        for (const Record& record : records.first(count)) {
            bindRecord(*query, record, parameter);
            parameter += static_cast<int>(columnCount<Record>);
        }
        query->run();
    }
}

/// Inserts the records in their order. Many go into one statement, because each statement that fires triggers
/// is a savepoint, at which a full-text index flushes its pending entries.
template <typename Record>
void insertAll(Connection& connection, std::span<const Record> records) {
    insertInGroups<100>(connection, records);
    insertInGroups<10>(connection, records);
    insertInGroups<1>(connection, records);
}

/// Inserts the record, or updates the row with its primary key.
template <typename Record>
void upsert(Connection& connection, const Record& record) {
    const Query query = connection.query(RecordSQL<Record>::upsert());
    bindRecord(*query, record);
    query->run();
}

/// Updates the row with the record's primary key.
template <typename Record>
void update(Connection& connection, const Record& record) {
    const Query query = connection.query(RecordSQL<Record>::update());
    bindRecord(*query, record);
    query->run();
}

} // namespace tallyglass
