// The menu of the tray item and the item's own look, decided from what the model knows. Values; what shows
// them and does what they ask for is elsewhere.

#pragma once

#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Platform/Date.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QMetaType>
#include <QString>
#include <optional>
#include <vector>

namespace tallyglass {

/// One line of the menu: a command if it has one, else a text, or a divider where the text is empty.
struct MenuEntry {
    Q_GADGET
    QML_VALUE_TYPE(menuEntry)

    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString shortcut MEMBER shortcut)
    Q_PROPERTY(bool isDivider READ isDivider)
    Q_PROPERTY(bool isEnabled MEMBER isEnabled)

public:
    enum class Command { none, startBackup, stopBackup, open, refresh, checkForUpdates, donate, quit };

    QString text = {};
    Command command = Command::none;
    bool isEnabled = false;
    QString shortcut = {}; ///< in words, such as "Ctrl+Q"; else empty

    [[nodiscard]] bool isDivider() const { return text.isEmpty(); }
    friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

/// What the menu depends on.
struct MenuBarState {
    std::optional<TMDestination> selectedDestination = {};
    std::optional<BackupHealth> health = {}; ///< of that destination
    BackupStatus status = {};
    bool canCheckForUpdates = false;
    bool offersDonation = false; ///< whether a donation link is configured
};

/// From top to bottom.
[[nodiscard]] std::vector<MenuEntry> menuBarContent(const MenuBarState& state, Date now);

/// The look of the tray item: a symbol, and its name for a screen reader and under the pointer.
struct MenuBarIcon {
    QString symbol;
    QString accessibleName;

    friend bool operator==(const MenuBarIcon&, const MenuBarIcon&) = default;
};

/// `overallHealth` is the worst level of all destinations.
[[nodiscard]] MenuBarIcon menuBarIcon(BackupHealth::Level overallHealth);

/// Stands out at least 3 : 1 from a panel of any shade, since nobody tells what the panel looks like.
[[nodiscard]] QColor menuBarIconColor(BackupHealth::Level overallHealth);

} // namespace tallyglass
