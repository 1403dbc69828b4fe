// What the frame around the screens says. A value, made from what the model knows.

#pragma once

#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Health/BackupHealth.h"

#include <QtQml/qqmlregistration.h>

#include <QMetaType>
#include <QString>
#include <optional>

namespace tallyglass {

struct ShellContent {
    Q_GADGET
    QML_VALUE_TYPE(shellContent)

    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(bool liteMode MEMBER liteMode)

public:
    QString subtitle;     ///< of the window; empty without a verdict
    bool liteMode = true; ///< Full Disk Access isn't known to be granted

    friend bool operator==(const ShellContent&, const ShellContent&) = default;
};

[[nodiscard]] ShellContent shellContent(const std::optional<BackupHealth>& health, FDAStatus access);

} // namespace tallyglass
