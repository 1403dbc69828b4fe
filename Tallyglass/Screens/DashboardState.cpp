#include "Tallyglass/Screens/DashboardState.h"

#include "Tallyglass/Screens/Words.h"

namespace tallyglass {

void DashboardState::setDifferentiateWithoutColor(bool differentiate) {
    m_differentiateWithoutColor = differentiate;
    scheduleUpdate();
}

void DashboardState::update() {
    const AppModel& from = *model();
    const TMDestination* destination = from.selectedDestination();
    m_isWaiting = !from.settings() && from.isRefreshing();
    m_error = words(from.lastError().value_or(""));
    m_unlock = unlockCardContent(from.fdaStatus());
    m_configuration = configurationCardContent(from.settings(), destination, from.now());
    if (from.status().isRunning)
        m_activity = activityCardContent(from.status(), from.backupRate());
    if (destination) {
        m_header = destinationHeaderContent(*destination, m_differentiateWithoutColor);
        if (const auto health = from.health())
            m_health = healthCardContent(*health, *destination, from.now());
    }
    m_isRunning = from.status().isRunning;
    m_hasDestination = destination != nullptr;
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
