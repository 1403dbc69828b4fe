// How Time Machine is set up, as rows of label and value and the list of what it leaves out. A value, made
// anew from the settings.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <optional>

namespace tallyglass {

struct TMDestination;
struct TMSettings;

struct LabelledValue {
    Q_GADGET
    QML_VALUE_TYPE(labelledValue)

    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString value MEMBER value)

public:
    QString label;
    QString value;

    friend bool operator==(const LabelledValue&, const LabelledValue&) = default;
};

struct ConfigurationCardContent {
    Q_GADGET
    QML_VALUE_TYPE(configurationCardContent)

    Q_PROPERTY(QVariantList rows READ rowList)
    Q_PROPERTY(QStringList skipPaths MEMBER skipPaths)

public:
    QList<LabelledValue> rows;
    QStringList skipPaths; ///< in the order of the settings

    [[nodiscard]] QVariantList rowList() const;

    friend bool operator==(const ConfigurationCardContent&, const ConfigurationCardContent&) = default;
};

/// `destination` is the one whose last verification shows; null for none.
[[nodiscard]] ConfigurationCardContent configurationCardContent(const std::optional<TMSettings>& settings,
                                                                const TMDestination* destination, Date now);

} // namespace tallyglass
