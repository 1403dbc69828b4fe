#include "Tallyglass/Screens/Shell/MenuBarContent.h"

#include "TallyglassKit/Health/Fmt.h"

#include <QCoreApplication>
#include <cmath>

namespace tallyglass {

namespace {

using Command = MenuEntry::Command;

struct MenuBar {
    Q_DECLARE_TR_FUNCTIONS(MenuBar)
};

MenuEntry text(const QString& text) {
    return {.text = text};
}

MenuEntry command(const QString& text, Command command, bool isEnabled = true) {
    return {.text = text, .command = command, .isEnabled = isEnabled};
}

/// The share that is done, cut to whole percent, since 100 % is only said of what is finished.
QString percentWords(std::optional<double> fraction) {
    return fraction ? QString::number(std::trunc(*fraction * 100), 'f', 0) + QLatin1Char('%') : QString();
}

} // namespace

std::vector<MenuEntry> menuBarContent(const MenuBarState& state, Date now) {
    const MenuEntry divider;
    std::vector<MenuEntry> entries;
    if (state.selectedDestination && state.health) {
        const std::string last = Fmt::relative(state.selectedDestination->latestSnapshot(), now);
        entries.push_back(text(QString::fromStdString(state.selectedDestination->displayName())));
        entries.push_back(text(QString::fromStdString(state.health->summary())));
        entries.push_back(text(MenuBar::tr("Last backup %1").arg(QString::fromStdString(last))));
        entries.push_back(divider);
    }
    if (state.status.isRunning) {
        entries.push_back(text(MenuBar::tr("Backing up… %1").arg(percentWords(state.status.percent))));
        entries.push_back(command(MenuBar::tr("Stop Backup"), Command::stopBackup));
    } else {
        entries.push_back(command(MenuBar::tr("Back Up Now"), Command::startBackup));
    }
    entries.push_back(divider);
    entries.push_back(command(MenuBar::tr("Open Tallyglass"), Command::open));
    entries.push_back(command(MenuBar::tr("Refresh"), Command::refresh));
    entries.push_back(
        command(MenuBar::tr("Check for Updates…"), Command::checkForUpdates, state.canCheckForUpdates));
    if (state.offersDonation) {
        entries.push_back(divider);
        entries.push_back(command(MenuBar::tr("Support Tallyglass…"), Command::donate));
    }
    entries.push_back(divider);
    entries.push_back(command(MenuBar::tr("Quit"), Command::quit));
    entries.back().shortcut = QStringLiteral("Ctrl+Q"); // the command key where there is one
    return entries;
}

MenuBarIcon menuBarIcon(BackupHealth::Level overallHealth) {
    switch (overallHealth) {
    case BackupHealth::Level::critical:
        return {QStringLiteral("exclamationmark.octagon"), MenuBar::tr("Tallyglass — backup problem")};
    case BackupHealth::Level::warning:
        return {QStringLiteral("exclamationmark.triangle"),
                MenuBar::tr("Tallyglass — backups need attention")};
    case BackupHealth::Level::healthy:
        break;
    }
    return {QStringLiteral("clock.arrow.trianglehead.counterclockwise.rotate.90"),
            MenuBar::tr("Tallyglass — backups healthy")};
}

QColor menuBarIconColor(BackupHealth::Level overallHealth) {
    switch (overallHealth) {
    case BackupHealth::Level::critical:
        return QColor(0xE0, 0x45, 0x4F);
    case BackupHealth::Level::warning:
        return QColor(0xB9, 0x7A, 0x0A);
    case BackupHealth::Level::healthy:
        break;
    }
    return QColor(0x6B, 0x84, 0xC4);
}

} // namespace tallyglass
