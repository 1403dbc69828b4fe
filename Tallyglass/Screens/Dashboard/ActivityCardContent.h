// What the dashboard says about a running backup. A value, made from the status.

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QMetaType>
#include <QString>
#include <optional>

namespace tallyglass {

struct BackupRate;
struct BackupStatus;

struct ActivityCardContent {
    Q_GADGET
    QML_VALUE_TYPE(activityCardContent)

    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(bool hasFraction MEMBER hasFraction)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(QString percent MEMBER percent)
    Q_PROPERTY(QString detail MEMBER detail)

public:
    QString title;
    bool hasFraction = false; ///< the engine tells how far it is
    double fraction = 0;      ///< 0 to 1
    QString percent;          ///< "37%"; empty without a fraction
    QString detail;           ///< one line on what has been done and what is left

    friend bool operator==(const ActivityCardContent&, const ActivityCardContent&) = default;
};

[[nodiscard]] ActivityCardContent activityCardContent(const BackupStatus& status,
                                                      const std::optional<BackupRate>& rate);

} // namespace tallyglass
