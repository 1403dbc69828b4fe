// What the dashboard shows, block by block, made anew when the model changes. Each block tells of a change of
// its own alone.
//
// Main thread only.

#pragma once

#include "Tallyglass/Screens/Context/ViewModel.h"
#include "Tallyglass/Screens/Dashboard/ActivityCardContent.h"
#include "Tallyglass/Screens/Dashboard/ConfigurationCardContent.h"
#include "Tallyglass/Screens/Dashboard/DestinationHeaderContent.h"
#include "Tallyglass/Screens/Dashboard/HealthCardContent.h"
#include "Tallyglass/Screens/Dashboard/UnlockCardContent.h"

#include <QProperty>
#include <QVariantList>

namespace tallyglass {

class DashboardViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(bool differentiateWithoutColor READ differentiateWithoutColor WRITE
                   setDifferentiateWithoutColor NOTIFY differentiateWithoutColorChanged)
    Q_PROPERTY(bool isWaiting READ isWaiting NOTIFY isWaitingChanged)
    Q_PROPERTY(bool hasDestination READ hasDestination NOTIFY hasDestinationChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(tallyglass::DestinationHeaderContent header READ header NOTIFY headerChanged)
    Q_PROPERTY(QVariantList tiles READ tiles NOTIFY tilesChanged)
    Q_PROPERTY(tallyglass::ActivityCardContent activity READ activity NOTIFY activityChanged)
    Q_PROPERTY(tallyglass::HealthCardContent health READ health NOTIFY healthChanged)
    Q_PROPERTY(tallyglass::UnlockCardContent unlock READ unlock NOTIFY unlockChanged)
    Q_PROPERTY(
        tallyglass::ConfigurationCardContent configuration READ configuration NOTIFY configurationChanged)

public:
    using ViewModel::ViewModel;

    [[nodiscard]] bool differentiateWithoutColor() const { return m_differentiateWithoutColor; }
    void setDifferentiateWithoutColor(bool differentiate);

    /// The settings haven't been read yet, so it isn't known whether there is a destination.
    [[nodiscard]] bool isWaiting() const { return m_isWaiting; }
    [[nodiscard]] bool hasDestination() const { return m_hasDestination; }
    [[nodiscard]] bool isRunning() const { return m_isRunning; } ///< a backup
    [[nodiscard]] QString error() const { return m_error; }      ///< empty when there is none

    // The blocks. The activity keeps its last content when the backup ends, so that it can leave as it was.
    [[nodiscard]] DestinationHeaderContent header() const { return m_header; }
    [[nodiscard]] QVariantList tiles() const { return m_tiles; } ///< of the header
    [[nodiscard]] ActivityCardContent activity() const { return m_activity; }
    [[nodiscard]] HealthCardContent health() const { return m_health; }
    [[nodiscard]] UnlockCardContent unlock() const { return m_unlock; }
    [[nodiscard]] ConfigurationCardContent configuration() const { return m_configuration; }

signals:
    void differentiateWithoutColorChanged();
    void isWaitingChanged();
    void hasDestinationChanged();
    void isRunningChanged();
    void errorChanged();
    void headerChanged();
    void tilesChanged();
    void activityChanged();
    void healthChanged();
    void unlockChanged();
    void configurationChanged();

protected:
    void update() override;

private:
    using Self = DashboardViewModel;
    Q_OBJECT_BINDABLE_PROPERTY(Self, bool, m_differentiateWithoutColor,
                               &DashboardViewModel::differentiateWithoutColorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, bool, m_isWaiting, &DashboardViewModel::isWaitingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, bool, m_hasDestination, &DashboardViewModel::hasDestinationChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, bool, m_isRunning, &DashboardViewModel::isRunningChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, QString, m_error, &DashboardViewModel::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, DestinationHeaderContent, m_header, &DashboardViewModel::headerChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, QVariantList, m_tiles, &DashboardViewModel::tilesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, ActivityCardContent, m_activity, &DashboardViewModel::activityChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, HealthCardContent, m_health, &DashboardViewModel::healthChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, UnlockCardContent, m_unlock, &DashboardViewModel::unlockChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, ConfigurationCardContent, m_configuration,
                               &DashboardViewModel::configurationChanged)
};

} // namespace tallyglass
