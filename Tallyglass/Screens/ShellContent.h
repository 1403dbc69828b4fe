// What the frame around the screens says: the sections, and the line below the window's title. Values, made
// from what the model knows.

#pragma once

#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Health/BackupHealth.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMetaType>
#include <QString>
#include <optional>

namespace tallyglass {

/// One of the places of the sidebar. The raw value of a case is its name.
struct Section {
    Q_GADGET
    QML_VALUE_TYPE(section)

    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)

public:
    QString name;   ///< raw value
    QString title;  ///< in the user's language
    QString symbol; ///< as Symbols names it

    friend bool operator==(const Section&, const Section&) = default;
};

/// In the order of the sidebar.
[[nodiscard]] QList<Section> sections();

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
