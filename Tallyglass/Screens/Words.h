// The way of text and lists from the kit to QML.

#pragma once

#include <QList>
#include <QString>
#include <QVariantList>
#include <string_view>

namespace tallyglass {

/// The kit's text as Qt's.
[[nodiscard]] inline QString words(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Values as a list that QML can walk.
template <typename Value>
[[nodiscard]] QVariantList variants(const QList<Value>& values) {
    QVariantList list;
    list.reserve(values.size());
    for (const Value& value : values)
        list.append(QVariant::fromValue(value));
    return list;
}

} // namespace tallyglass
