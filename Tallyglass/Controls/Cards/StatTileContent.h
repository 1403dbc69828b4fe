// A number on a screen: its label, its value and a caption. A value.

#pragma once

#include "Tallyglass/Controls/Theme/Theme.h"

#include <QtQml/qqmlregistration.h>

#include <QMetaType>
#include <QString>

namespace tallyglass {

struct StatTileContent {
    Q_GADGET
    QML_VALUE_TYPE(statTileContent)

    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(tallyglass::Theme::Role role MEMBER role)

public:
    QString label;
    QString value;
    QString caption; ///< may be empty
    Theme::Role role = Theme::Role::text;

    friend bool operator==(const StatTileContent&, const StatTileContent&) = default;
};

} // namespace tallyglass
