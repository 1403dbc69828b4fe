#include "Tallyglass/Screens/Dashboard/DashboardViewModel.h"

#include "Tallyglass/Controls/QtConversions.h"

namespace tallyglass {

void DashboardViewModel::setDifferentiateWithoutColor(bool differentiate) {
    m_differentiateWithoutColor = differentiate;
    scheduleUpdate();
}

void DashboardViewModel::update() {
    const AppModel& from = *model();
    const TMDestination* destination = from.selectedDestination();
    if (destination) {
        m_header = destinationHeaderContent(*destination, m_differentiateWithoutColor);
        m_tiles = variants(destinationTiles(*destination));
    }
    m_error = toQString(from.lastError().value_or(""));
    m_unlock = unlockCardContent(from.fdaStatus());
    m_configuration = configurationCardContent(from.settings(), destination, from.now());
    if (from.status().isRunning)
        m_activity = activityCardContent(from.status(), from.backupRate());
    const auto health = from.health();
    if (destination && health)
        m_health = healthCardContent(*health, *destination, from.now());
    m_isRunning = from.status().isRunning;
    m_isWaiting = !from.hasReadSettings();
    m_hasDestination = destination != nullptr;
}

} // namespace tallyglass
