// What a capacity ring shows of the fill level of a destination: colour, text and symbol.

#pragma once

#include "Tallyglass/Controls/Theme/Theme.h"

#include <QtQml/qqmlregistration.h>

#include <QMetaType>
#include <QString>
#include <cstdint>
#include <optional>

namespace tallyglass {

struct CapacityRingContent {
    Q_GADGET
    QML_VALUE_TYPE(capacityRingContent)

    Q_PROPERTY(tallyglass::Theme::Role role MEMBER role)
    Q_PROPERTY(bool known MEMBER known)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(QString accessibleName MEMBER accessibleName)
    Q_PROPERTY(QString accessibleValue MEMBER accessibleValue)

public:
    Theme::Role role = Theme::Role::healthy;
    bool known = false;      ///< whether the fraction is known
    double fraction = 0;     ///< 0 to 1; 0 if unknown
    QString text;            ///< in the centre: "72%"
    QString symbol;          ///< beside the text, for users who can't rely on colour; else empty
    QString detail;          ///< "512 GB of 1 TB"; empty if neither is known
    QString accessibleName;  ///< "Destination capacity"
    QString accessibleValue; ///< "72 percent used, plenty free"

    friend bool operator==(const CapacityRingContent&, const CapacityRingContent&) = default;
};

/// `fraction` is the used part, 0 to 1; `used` and `total` are bytes.
[[nodiscard]] CapacityRingContent capacityRingContent(std::optional<double> fraction,
                                                      std::optional<std::int64_t> used,
                                                      std::optional<std::int64_t> total,
                                                      bool differentiateWithoutColor);

} // namespace tallyglass
