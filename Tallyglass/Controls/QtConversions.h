// Conversions of text and lists from the kit to QML.

#pragma once

#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

/// UTF-8 text as a QString.
[[nodiscard]] inline QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline QStringList toQStringList(const std::vector<std::string>& texts) {
    QStringList list;
    list.reserve(static_cast<qsizetype>(texts.size()));
    for (const std::string& text : texts)
        list.append(toQString(text));
    return list;
}

/// A count with digit grouping.
[[nodiscard]] inline QString grouped(std::int64_t count) {
    return toQString(formatGrouped(count));
}

/// A number of bytes as Fmt::size formats it.
[[nodiscard]] inline QString sizeInWords(std::optional<std::int64_t> bytes) {
    return toQString(Fmt::size(bytes));
}

/// Values as a list that QML can iterate.
template <typename Value>
[[nodiscard]] QVariantList variants(const QList<Value>& values) {
    QVariantList list;
    list.reserve(values.size());
    for (const Value& value : values)
        list.append(QVariant::fromValue(value));
    return list;
}

} // namespace tallyglass
