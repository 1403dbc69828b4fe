// The application object: owns the models and what the screens are given beside it, and the window that
// shows them.
//
// Main thread only. Needs the QGuiApplication, which it uses to the end.

#pragma once

#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Desktop/Clipboard.h"
#include "Tallyglass/Desktop/DesktopSettings.h"
#include "Tallyglass/Desktop/FilePanels.h"
#include "Tallyglass/Desktop/UpdaterController.h"
#include "Tallyglass/Desktop/Workspace.h"
#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/FixtureSession.h"
#include "Tallyglass/Models/HelperSetup.h"
#include "Tallyglass/Screens/Context/ScreenContext.h"
#include "Tallyglass/Screens/Shell/ApplicationOptions.h"

#include <QObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

class AppDelegate;
class Theme;
class TrayPresence;

class TallyglassApp : public QObject {
    Q_OBJECT

public:
    /// The names of the made-up sessions.
    [[nodiscard]] static std::vector<std::string> sessions();

    /// Makes the model, starts its first refresh and loads the window meanwhile. Throws `Error`.
    explicit TallyglassApp(const ApplicationOptions& options);
    ~TallyglassApp() override;

    void showWindow();
    /// Brings the window to the front, closed or not.
    void reopen();

    /// Draws every screen and sheet into `folder`. Requires: the options ask for it. Throws `Error`.
    void savePictures(const std::filesystem::path& folder,
                      const std::function<void(const QString&)>& written);

private:
    void startModel();
    void loadWindow();
    void followDesktop();
    [[nodiscard]] bool hasData() const;
    [[nodiscard]] bool hasRate() const;
    [[nodiscard]] ScreenActions actions() const;
    void finishStart();
    void reportStart();
    [[nodiscard]] Theme& theme() { return *m_theme; }

    const ApplicationOptions m_options;
    DesktopWorkspace m_workspace;
    DesktopClipboard m_clipboard;
    Alerts m_alerts;
    FilePanels m_panels{m_alerts};
    const std::optional<FixtureSession> m_fixture;
    AppModel m_model;
    DiffModel m_diff{m_model.environment()};
    HelperSetup m_helperSetup;
    UpdaterController m_updater;
    ScreenContext m_context;
    DesktopSettings m_desktop;
    std::unique_ptr<QQmlEngine> m_engine; // after what its objects use
    Theme* m_theme = nullptr;
    std::unique_ptr<QQuickWindow> m_window;
    QMetaObject::Connection m_startReport;
    QMetaObject::Connection m_backupStop;
    std::unique_ptr<AppDelegate> m_delegate;
    std::unique_ptr<TrayPresence> m_tray; ///< absent until the start is finished
};

} // namespace tallyglass
