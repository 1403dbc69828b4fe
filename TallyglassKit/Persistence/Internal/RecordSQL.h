// The table of a record type, and the SQL statements that store and find its records.
//
// A record type is made storable by a specialisation of RecordTable beside the code that stores it:
//
//     template <>
//     struct RecordTable<Comparison> {
//         static constexpr std::string_view name = "comparison";
//         static constexpr std::string_view primaryKey = "id";
//         static constexpr auto columns = std::tuple(Column("id", &Comparison::id), ...);
//     };
//
// The order of the columns doesn't matter. Instead of a field, a column may name a member function, whose
// result is written and never read.

#pragma once

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

namespace tallyglass {

template <typename Record>
struct RecordTable;

template <typename Field>
struct Column {
    constexpr Column(std::string_view columnName, Field columnField) : name(columnName), field(columnField) {}

    static constexpr bool isRead = std::is_member_object_pointer_v<Field>;
    std::string_view name;
    Field field;
};

/// The statements on records of one type. Those that store have the columns as their parameters, in order.
template <typename Record>
struct RecordSQL {
    /// For that many records in one statement, whose parameters are the fields of one record after the other.
    template <std::size_t count = 1>
    [[nodiscard]] static const std::string& insert();
    /// Updates all other columns of a row with the same primary key.
    [[nodiscard]] static const std::string& upsert();
    /// Sets all columns but the primary key: assigning that, even its current value, makes SQLite search for
    /// every row that refers to it.
    [[nodiscard]] static const std::string& update();
    /// Its parameter is the primary key.
    [[nodiscard]] static const std::string& selectByKey();

private:
    using Table = RecordTable<Record>;
    enum class Which { all, key, allButKey };

    /// `pattern` for each of these columns, joined with ", ", with "@" replaced by the column's name and "#"
    /// by its parameter.
    [[nodiscard]] static std::string list(std::string_view pattern, Which which = Which::all);
};

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
