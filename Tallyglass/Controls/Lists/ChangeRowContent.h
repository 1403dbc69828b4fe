// One changed path as a row of a list, and as one text for a screen reader. A value.

#pragma once

#include "Tallyglass/Controls/Theme/Theme.h"

#include <QtQml/qqmlregistration.h>

#include <QMetaType>
#include <QString>
#include <cstdint>

namespace tallyglass {

struct ChangeRecord;

struct ChangeRowContent {
    Q_GADGET
    QML_VALUE_TYPE(changeRowContent)

    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tallyglass::Theme::Role role MEMBER role)
    Q_PROPERTY(QString fileName MEMBER fileName)
    Q_PROPERTY(QString parentPath MEMBER parentPath)
    Q_PROPERTY(QString size MEMBER size)
    Q_PROPERTY(QString path MEMBER path)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString value MEMBER value)

public:
    QString symbol; ///< of the kind of change
    Theme::Role role = Theme::Role::text;
    QString fileName;
    QString parentPath; ///< may be empty
    QString size;
    QString path;  ///< to copy
    QString label; ///< for a screen reader: "Added, letter.txt"
    QString value; ///< for a screen reader: "12 KB, in /Users/alex"

    friend bool operator==(const ChangeRowContent&, const ChangeRowContent&) = default;
};

[[nodiscard]] ChangeRowContent changeRowContent(const ChangeRecord& change);

/// The colour of the symbol of a kind.
enum class ChangeKind : std::uint8_t;
[[nodiscard]] Theme::Role roleOf(ChangeKind kind);

} // namespace tallyglass
