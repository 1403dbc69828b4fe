// Typed records: structs whose fields are the columns of a table. A record type takes part by specialising
// RecordTable beside the code that stores it:
//
//     template <>
//     struct RecordTable<Comparison> {
//         static constexpr std::string_view name = "comparison";
//         static constexpr std::string_view primaryKey = "id";
//         static constexpr auto columns = std::tuple(Column("id", &Comparison::id), ...);
//     };
//
// The order of the columns doesn't matter; a column's getter may also be a function of the record, which is
// written and not read.

#pragma once

#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Persistence/FieldValue.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <functional>
#include <span>
#include <string>
#include <tuple>
#include <vector>

namespace tallyglass {

template <typename Record>
struct RecordTable;

template <typename Field>
struct Column {
    constexpr Column(std::string_view columnName, Field columnField) : name(columnName), field(columnField) {}

    static constexpr bool isStored = std::is_member_object_pointer_v<Field>;
    std::string_view name;
    Field field;
};

/// The statements on records of one type. Those that store have the columns as their parameters, in order.
template <typename Record>
struct RecordSQL {
    /// Of that many records in one statement, whose parameters stand one record after the other.
    template <std::size_t count = 1>
    [[nodiscard]] static const std::string& insert();
    /// A row with the same primary key takes all other values.
    [[nodiscard]] static const std::string& upsert();
    /// Sets all columns but the primary key: setting that anew, if only to its own value, makes SQLite look
    /// for every row that refers to it.
    [[nodiscard]] static const std::string& update();
    /// Its parameter is the primary key.
    [[nodiscard]] static const std::string& selectByKey();

private:
    using Table = RecordTable<Record>;
    enum class Which { all, key, allButKey };

    /// `pattern` for each of those columns, joined with ", "; in it "@" stands for the column's name and "#"
    /// for its parameter.
    [[nodiscard]] static std::string list(std::string_view pattern, Which which = Which::all);
};

template <typename Record>
inline constexpr std::size_t columnCount = std::tuple_size_v<decltype(RecordTable<Record>::columns)>;

/// Binds the fields of `record` to the parameters that follow `parameter`. They must stay until the statement
/// is reset.
template <typename Record>
void bindRecord(Statement& statement, const Record& record, int parameter = 0) {
    std::apply(
        [&](const auto&... column) {
            (bindValue(statement, ++parameter, std::invoke(column.field, record)), ...);
        },
        RecordTable<Record>::columns);
}

/// Makes records of a statement's rows. Columns are found by their names, so the statement may have others.
template <typename Record>
class RecordReader {
public:
    explicit RecordReader(Statement& statement) : m_statement(statement) {
        eachColumn([&](const auto& column, int& index) { index = statement.column(column.name); });
    }

    /// The record of the row that the statement is at.
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
        const auto visitStored = [&](const auto& column, int& index) {
            if constexpr (std::remove_cvref_t<decltype(column)>::isStored)
                visit(column, index);
        };
        std::apply([&](const auto&... column) { (visitStored(column, m_indexes[position++]), ...); },
                   Table::columns);
    }

    Statement& m_statement;
    std::array<int, columnCount<Record>> m_indexes{};
};

/// All rows that are left of the statement.
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

/// Inserts the records from the front of `records` that fill statements of `count` each, and takes them off.
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
/// is a savepoint, at which a full-text index writes out what it has gathered.
template <typename Record>
void insertAll(Connection& connection, std::span<const Record> records) {
    insertInGroups<100>(connection, records);
    insertInGroups<10>(connection, records);
    insertInGroups<1>(connection, records);
}

template <typename Record>
void upsert(Connection& connection, const Record& record) {
    const Query query = connection.query(RecordSQL<Record>::upsert());
    bindRecord(*query, record);
    query->run();
}

template <typename Record>
void update(Connection& connection, const Record& record) {
    const Query query = connection.query(RecordSQL<Record>::update());
    bindRecord(*query, record);
    query->run();
}

template <typename Record>
std::string RecordSQL<Record>::list(std::string_view pattern, Which which) {
    std::string result;
    int parameter = 0;
    const auto append = [&](std::string_view name) {
        ++parameter;
        if (which != Which::all && (name == Table::primaryKey) != (which == Which::key))
            return;
        if (!result.empty())
            result += ", ";
        for (const char character : pattern)
            if (character == '@')
                result += name;
            else if (character == '#')
                result += '?' + std::to_string(parameter);
            else
                result += character;
    };
    std::apply([&](const auto&... column) { (append(column.name), ...); }, Table::columns);
    return result;
}

template <typename Record>
template <std::size_t count>
const std::string& RecordSQL<Record>::insert() {
    static const std::string sql = [] {
        const std::vector<std::string> rows(count, fmt::format("({})", list("?")));
        return fmt::format("INSERT INTO \"{}\" ({}) VALUES {}", Table::name, list("\"@\""),
                           fmt::join(rows, ", "));
    }();
    return sql;
}

template <typename Record>
const std::string& RecordSQL<Record>::upsert() {
    static const std::string sql =
        fmt::format("{} ON CONFLICT (\"{}\") DO UPDATE SET {}", insert(), Table::primaryKey,
                    list("\"@\" = excluded.\"@\"", Which::allButKey));
    return sql;
}

template <typename Record>
const std::string& RecordSQL<Record>::update() {
    static const std::string sql =
        fmt::format("UPDATE \"{}\" SET {} WHERE {}", Table::name, list("\"@\" = #", Which::allButKey),
                    list("\"@\" = #", Which::key));
    return sql;
}

template <typename Record>
const std::string& RecordSQL<Record>::selectByKey() {
    static const std::string sql =
        fmt::format("SELECT * FROM \"{}\" WHERE \"{}\" = ?", Table::name, Table::primaryKey);
    return sql;
}

} // namespace tallyglass
