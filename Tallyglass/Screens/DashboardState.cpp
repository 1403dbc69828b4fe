#include "Tallyglass/Screens/DashboardState.h"

#include "Tallyglass/Screens/Words.h"

namespace tallyglass {

void DashboardState::setDifferentiateWithoutColor(bool differentiate) {
    m_differentiateWithoutColor = differentiate;
    scheduleUpdate();
}

void DashboardState::setHeaderOnly(bool only) {
    m_headerOnly = only;
    if (model())
        update(); // at once: what wants the rest is being made
}

void DashboardState::update() {
    const AppModel& from = *model();
    const TMDestination* destination = from.selectedDestination();
    if (destination)
        m_header = destinationHeaderContent(*destination, m_differentiateWithoutColor);
    if (!m_headerOnly)
        updateTheRest(destination);
    m_isWaiting = !from.hasReadSettings();
    m_hasDestination = destination != nullptr;
}

void DashboardState::updateTheRest(const TMDestination* destination) {
    const AppModel& from = *model();
    m_error = words(from.lastError().value_or(""));
    m_unlock = unlockCardContent(from.fdaStatus());
    m_configuration = configurationCardContent(from.settings(), destination, from.now());
    if (from.status().isRunning)
        m_activity = activityCardContent(from.status(), from.backupRate());
    if (destination)
        m_tiles = variants(destinationTiles(*destination));
    const auto health = from.health();
    if (destination && health)
        m_health = healthCardContent(*health, *destination, from.now());
    m_isRunning = from.status().isRunning;
}

void BackupButtonState::update() {
    m_content = backupButtonContent(model()->status());
}

void BackupButtonState::press() {
    if (!model())
        return;
    if (model()->status().isRunning)
        model()->stopBackup();
    else
        model()->startBackup();
}

} // namespace tallyglass
