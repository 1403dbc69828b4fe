#include "Tallyglass/Screens/Shell/AppDelegate.h"

#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Screens/Shell/TrayPresence.h"

#include <QGuiApplication>
#include <QWindow>

namespace tallyglass {

AppDelegate::AppDelegate(AppModel& model, QWindow& window) : m_model(model), m_window(window) {}

void AppDelegate::followActivation() {
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            applicationDidBecomeActive();
    });
}

void AppDelegate::stayInTray(TrayPresence& tray) {
    m_tray = &tray;
    const auto decide = [this] {
        QGuiApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
    };
    connect(&tray, &TrayPresence::shownChanged, this, decide);
    connect(&tray, &TrayPresence::openRequested, this, &AppDelegate::applicationShouldHandleReopen);
    decide();
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() const {
    return !m_tray || !m_tray->isShown();
}

void AppDelegate::applicationShouldHandleReopen() {
    if (m_window.windowStates() & Qt::WindowMinimized)
        m_window.setWindowStates(m_window.windowStates() & ~Qt::WindowMinimized);
    m_window.show();
    m_window.requestActivate(); // raises it too
}

void AppDelegate::applicationDidBecomeActive() {
    if (!m_model.isFixtureSession())
        m_model.recheckPermission();
}

} // namespace tallyglass
