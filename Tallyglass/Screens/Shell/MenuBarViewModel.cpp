#include "Tallyglass/Screens/Shell/MenuBarViewModel.h"

#include "Tallyglass/Controls/Theme/SymbolImages.h"
#include "Tallyglass/Screens/Diagnostics/Support.h"

namespace tallyglass {

MenuBarViewModel::MenuBarViewModel(ScreenContext& context, QObject* parent) : ViewModel(parent) {
    connect(context.updater(), &UpdaterController::canCheckForUpdatesChanged, this,
            &MenuBarViewModel::scheduleUpdate);
    setContext(&context);
}

QVariantList MenuBarViewModel::entries() const {
    QVariantList list;
    for (const MenuEntry& entry : m_entries)
        list.append(QVariant::fromValue(entry));
    return list;
}

QUrl MenuBarViewModel::iconSource() const {
    return SymbolImages::source(m_icon.symbol, menuBarIconColor(m_level));
}

void MenuBarViewModel::update() {
    MenuBarState state{
        .health = model()->health(),
        .status = model()->status(),
        .canCheckForUpdates = context()->updater()->canCheckForUpdates(),
        .offersDonation = Support::isSet(Support::paymentLink()),
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

void MenuBarViewModel::activate(int index) {
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
        return context()->updater()->checkForUpdates();
    case MenuEntry::Command::donate:
        context()->workspace()->openUrl(QUrl(Support::paymentLink()));
        return;
    case MenuEntry::Command::quit:
        emit quitRequested();
        return;
    case MenuEntry::Command::none:
        return;
    }
}

} // namespace tallyglass
