// What the program does when something happens to it as a whole: its window was closed, it was started again,
// it became active.
//
// Main thread only. The model and the window have to outlive it.

#pragma once

#include <QObject>

class QWindow;

namespace tallyglass {

class AppModel;
class TrayPresence;

class AppDelegate : public QObject {
    Q_OBJECT

public:
    AppDelegate(AppModel& model, QWindow& window);

    /// From now on the program stays in the tray when its window is closed, for as long as there is a tray.
    void stayInTray(TrayPresence& tray);

    /// Whether closing the window ends the program: only where nothing else could bring it back.
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const;

    /// Brings the window to the front, closed or not.
    void applicationShouldHandleReopen();

    /// From now on the program looks for the permission whenever it becomes active.
    void followActivation();
    void applicationDidBecomeActive();

private:
    AppModel& m_model;
    QWindow& m_window;
    const TrayPresence* m_tray = nullptr;
};

} // namespace tallyglass
