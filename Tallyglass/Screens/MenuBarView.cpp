#include "Tallyglass/Screens/MenuBarView.h"

#include "Tallyglass/Desktop/UpdaterController.h"
#include "Tallyglass/Desktop/Workspace.h"
#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Screens/Support.h"
#include "Tallyglass/Screens/SymbolImages.h"

namespace tallyglass {

MenuBarView::MenuBarView(AppModel& model, Workspace& workspace, UpdaterController& updater, QObject* parent)
    : ModelView(parent), m_workspace(workspace), m_updater(updater) {
    connect(&updater, &UpdaterController::canCheckForUpdatesChanged, this, [this] { scheduleUpdate(); });
    setModel(&model);
}

QVariantList MenuBarView::entries() const {
    QVariantList list;
    for (const MenuEntry& entry : m_entries)
        list.append(QVariant::fromValue(entry));
    return list;
}

QUrl MenuBarView::iconSource() const {
    return SymbolImages::source(m_icon.symbol, menuBarIconColor(m_level));
}

void MenuBarView::update() {
    MenuBarState state{
        .health = model()->health(),
        .status = model()->status(),
        .canCheckForUpdates = m_updater.canCheckForUpdates(),
        .offersDonation = Support::isConfigured(),
    };
    if (const TMDestination* destination = model()->selectedDestination())
        state.selectedDestination = *destination;
    if (auto entries = menuBarContent(state, model()->now()); entries != m_entries) {
        m_entries = std::move(entries);
        emit entriesChanged();
    }
    if (const auto level = model()->overallHealth(); level != m_level) {
        m_level = level;
        m_icon = menuBarIcon(level);
        emit iconChanged();
    }
}

void MenuBarView::activate(int index) {
    if (index < 0 || index >= std::ssize(m_entries) || !m_entries[static_cast<std::size_t>(index)].isEnabled)
        return;
    switch (m_entries[static_cast<std::size_t>(index)].command) {
    case MenuEntry::Command::startBackup:
        return model()->startBackup();
    case MenuEntry::Command::stopBackup:
        return model()->stopBackup();
    case MenuEntry::Command::open:
        return open();
    case MenuEntry::Command::refresh:
        return model()->refresh();
    case MenuEntry::Command::checkForUpdates:
        return m_updater.checkForUpdates();
    case MenuEntry::Command::donate:
        m_workspace.openUrl(QUrl(QString::fromUtf8(Support::donateURL.data(), Support::donateURL.size())));
        return;
    case MenuEntry::Command::quit:
        emit quitRequested();
        return;
    case MenuEntry::Command::none:
        return;
    }
}

} // namespace tallyglass
