#include "Tallyglass/Screens/Shell/TallyglassApp.h"

#include "Tallyglass/Controls/Theme/Theme.h"
#include "Tallyglass/Screens/Shell/AppDelegate.h"
#include "Tallyglass/Screens/Shell/ScreenPictures.h"
#include "Tallyglass/Screens/Shell/TrayPresence.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <cstdio>

namespace tallyglass {

namespace {

std::optional<FixtureSession> fixture(const ApplicationOptions& options) {
    return options.fixture ? FixtureSession::make(*options.fixture, systemTime()) : std::nullopt;
}

/// While pictures are taken nothing else comes up on the desktop.
AppEnvironment environment(const ApplicationOptions& options, const std::optional<FixtureSession>& fixture,
                           Workspace& workspace) {
    AppEnvironment environment = fixture ? fixture->environment : AppEnvironment();
    environment.workspace = options.screenshots ? nullptr : &workspace;
    return environment;
}

} // namespace

std::vector<std::string> TallyglassApp::sessions() {
    const auto names = FixtureSession::names();
    return {names.begin(), names.end()};
}

TallyglassApp::TallyglassApp(const ApplicationOptions& options)
    : m_options(options), m_fixture(fixture(options)), m_model(environment(options, m_fixture, m_workspace)),
      m_helperSetup(m_model.paths(), m_workspace, m_alerts),
      m_updater(UpdaterOptions::ofThisBuild(), m_alerts, m_workspace),
      m_context(m_model, m_diff, m_helperSetup, m_workspace, m_clipboard, m_alerts, m_panels, m_updater) {
    startModel();
    if (m_options.screenshots) { // or else the window would be drawn while what it shows comes in
        while (!hasData())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    loadWindow();
    if (m_options.screenshots)
        return;
    followDesktop();
    m_delegate = std::make_unique<AppDelegate>(m_model, *m_window);
}

TallyglassApp::~TallyglassApp() = default;

void TallyglassApp::startModel() {
    if (m_model.isFixtureSession())
        return;
    connect(&m_model, &AppModel::backupEnded, &m_diff.backfill(), &BackfillModel::takeNewBackup);
    if (actions().stopsBackup)
        m_backupStop = connect(&m_model, &AppModel::statusChanged, this, [this] {
            if (hasRate() && disconnect(m_backupStop))
                m_model.stopBackup();
        });
    m_model.refresh([this] { m_model.startPolling(); });
}

/// What somebody does in the made-up session, or else on a real machine.
ScreenActions TallyglassApp::actions() const {
    return m_fixture ? m_fixture->actions : ScreenActions();
}

/// The first refresh is done, and a made-up session shows what it is about.
bool TallyglassApp::hasData() const {
    return m_model.hasReadSettings() && !m_model.isRefreshing() && hasRate() &&
           (!actions().stopsBackup || m_model.lastError());
}

bool TallyglassApp::hasRate() const {
    return !m_fixture || !m_fixture->measuresRate || m_model.backupRate();
}

void TallyglassApp::loadWindow() {
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    m_engine = std::make_unique<QQmlEngine>();
    m_engine->addImportPath(QStringLiteral("qrc:/"));
    connect(m_engine.get(), &QQmlEngine::quit, qGuiApp, &QGuiApplication::quit, Qt::QueuedConnection);
    // The types are loaded on the engine's own thread; what the model reads comes in meanwhile.
    QQmlComponent component(m_engine.get(), QUrl(QStringLiteral("qrc:/Tallyglass/Shell/Main.qml")),
                            QQmlComponent::Asynchronous);
    while (component.isLoading())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (component.isReady())
        m_window.reset(qobject_cast<QQuickWindow*>(component.createWithInitialProperties(
            {{QStringLiteral("context"), QVariant::fromValue(&m_context)}})));
    if (!m_window)
        throw Error(component.errorString().trimmed().toStdString());
    m_theme = Theme::of(*m_engine); // known to the engine only now
}

void TallyglassApp::followDesktop() {
    const auto follow = [this] {
        theme().setDark(m_desktop.isDark());
        theme().setReduceMotion(m_desktop.reducesMotion());
        theme().setDifferentiateWithoutColor(m_desktop.differentiatesWithoutColor());
        theme().setTextScale(m_desktop.textScale());
    };
    connect(&m_desktop, &DesktopSettings::changed, this, follow);
    follow();
}

void TallyglassApp::showWindow() {
    if (m_options.reportsStart)
        reportStart();
    m_window->show();
    QMetaObject::invokeMethod(this, &TallyglassApp::finishStart, Qt::QueuedConnection);
}

void TallyglassApp::reopen() {
    m_delegate->applicationShouldHandleReopen();
}

/// What nobody has to wait for. It doesn't hang on a frame: a window that starts minimized draws none.
void TallyglassApp::finishStart() {
    m_tray = std::make_unique<TrayPresence>(*m_engine, m_context);
    m_delegate->stayInTray(*m_tray);
    m_delegate->followActivation();
    m_updater.start();
}

/// Says "ready" once, at the first frame that shows the whole screen with its data.
void TallyglassApp::reportStart() {
    connect(&m_model, &AppModel::refreshingChanged, m_window.get(), [this] { m_window->update(); });
    m_startReport = connect(m_window.get(), &QQuickWindow::frameSwapped, this, [this] {
        if (!hasData())
            return;
        disconnect(m_startReport);
        std::puts("ready");
        std::fflush(stdout);
    });
}

void TallyglassApp::savePictures(const std::filesystem::path& folder,
                                 const std::function<void(const QString&)>& written) {
    theme().setReduceMotion(true);
    m_window->show();
    const auto dismiss = [this] { m_alerts.answer(false); };
    const AppcastItem newer{.version = QStringLiteral("9.9"),
                            .name = QStringLiteral("9.9"),
                            .link = QUrl(QStringLiteral("https://example.org/tallyglass"))};
    ScreenPictures(*m_window, theme(), actions(),
                   {{QStringLiteral("uninstall"), [this] { m_helperSetup.confirmAndUninstall(); }, dismiss},
                    {QStringLiteral("update"), [this, newer] { m_updater.offer(newer); }, dismiss}})
        .save(folder, QString::fromStdString(m_options.fixture.value_or("machine")), written);
}

} // namespace tallyglass
