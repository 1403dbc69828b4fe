// How the types of a record's fields are stored in columns: booleans as 0 or 1, dates as text in UTC (see
// Timestamp.h), enumerations as their raw values, absent optionals as NULL, integers and texts as they are.
//
// One pair of functions per type, found by Record.h.

#pragma once

#include "TallyglassKit/Persistence/DatabaseError.h"
#include "TallyglassKit/Persistence/Statement.h"
#include "TallyglassKit/Persistence/Timestamp.h"
#include "TallyglassKit/Platform/RawValue.h"

#include <concepts>
#include <optional>
#include <string>
#include <type_traits>

namespace tallyglass {

inline void bindValue(Statement& statement, int parameter, std::int64_t value) {
    statement.bindInteger(parameter, value);
}
inline void readValue(const Value& stored, std::int64_t& value) {
    value = stored.integer();
}

template <std::same_as<bool> Boolean>
void bindValue(Statement& statement, int parameter, Boolean value) {
    statement.bindInteger(parameter, value);
}
inline void readValue(const Value& stored, bool& value) {
    value = stored.integer() != 0;
}

inline void bindValue(Statement& statement, int parameter, std::string_view value) {
    statement.bindText(parameter, value);
}
inline void readValue(const Value& stored, std::string& value) {
    value = stored.text();
}
inline void readValue(const Value& stored, SharedText& value) {
    value = stored.sharedText();
}

inline void bindValue(Statement& statement, int parameter, Date value) {
    statement.bindCopyOfText(parameter, TimestampText(value));
}
/// A number is taken as seconds since 1970; an unreadable value is absent.
inline void readValue(const Value& stored, std::optional<Date>& value) {
    if (stored.isText())
        value = parseTimestamp(stored.text());
    else
        value = stored.isNull() ? std::nullopt : std::optional(dateSince1970(stored.real()));
}
/// An unreadable value is 1970.
inline void readValue(const Value& stored, Date& value) {
    std::optional<Date> date;
    readValue(stored, date);
    value = date.value_or(Date());
}

template <typename E>
    requires std::is_enum_v<E>
void bindValue(Statement& statement, int parameter, E value) {
    statement.bindText(parameter, rawValue(value));
}
/// Throws DatabaseError for a text that isn't a raw value.
template <typename E>
    requires std::is_enum_v<E>
void readValue(const Value& stored, E& value) {
    const auto known = fromRawValue<E>(stored.text());
    if (!known)
        stored.failAsUnexpected();
    value = *known;
}

template <typename T>
void bindValue(Statement& statement, int parameter, const std::optional<T>& value) {
    if (value)
        bindValue(statement, parameter, *value);
    else
        statement.bindNull(parameter);
}
template <typename T>
void readValue(const Value& stored, std::optional<T>& value) {
    if (stored.isNull())
        value.reset();
    else
        readValue(stored, value.emplace());
}

} // namespace tallyglass
