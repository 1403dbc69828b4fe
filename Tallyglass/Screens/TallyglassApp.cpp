#include "Tallyglass/Screens/TallyglassApp.h"

#include "Tallyglass/Screens/AppDelegate.h"
#include "Tallyglass/Screens/ScreenPictures.h"
#include "Tallyglass/Screens/Startup.h"
#include "Tallyglass/Screens/Symbols.h"
#include "Tallyglass/Screens/Theme.h"
#include "Tallyglass/Screens/TrayPresence.h"
#include "TallyglassKit/Health/Fmt.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QQmlComponent>
#include <cmath>
#include <cstdio>

namespace tallyglass {

namespace {

/// Makes ready what writing the first text needs, which takes longer than writing it. Calls `between` after
/// each step.
void prepareText(const std::function<void()>& between) {
    const Theme usual;
    const QString text = QGuiApplication::font().family();
    const QString symbols = Symbols::fontFamily(); // first: a new font makes Qt forget those that are open
    between();
    const std::tuple<QString, double, QFont::Weight> styles[] = {
        {text, usual.captionSize(), QFont::Normal},    {text, usual.headlineSize(), QFont::DemiBold},
        {text, usual.titleSize(), QFont::DemiBold},    {text, usual.displaySize(), QFont::Bold},
        {symbols, usual.displaySize(), QFont::Normal},
    };
    for (const auto& [family, size, weight] : styles) {
        QFont font(family);
        font.setPixelSize(static_cast<int>(std::lround(size)));
        font.setWeight(weight);
        static_cast<void>(QFontMetricsF(font).height());
        between();
    }
    static_cast<void>(Fmt::size(1)); // which makes the formats of all sizes
}

std::optional<FixtureSession> fixture(const ApplicationOptions& options) {
    return options.fixture ? FixtureSession::make(*options.fixture, systemTime()) : std::nullopt;
}

AppSurroundings surroundings(const std::optional<FixtureSession>& fixture, Workspace& workspace) {
    AppSurroundings surroundings = fixture ? fixture->surroundings : AppSurroundings();
    surroundings.workspace = &workspace;
    return surroundings;
}

} // namespace

std::vector<std::string> TallyglassApp::sessions() {
    const auto names = FixtureSession::names();
    return {names.begin(), names.end()};
}

TallyglassApp::TallyglassApp(const ApplicationOptions& options)
    : m_options(options), m_fixture(fixture(options)), m_model(surroundings(m_fixture, m_workspace)),
      m_helperSetup(m_model.paths(), m_workspace, m_alerts),
      m_updater(UpdaterOptions::ofThisBuild(), m_alerts, m_workspace) {
    startModel();
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
    // The types are loaded on a thread of the engine's, which now and then needs this one. Text is prepared
    // meanwhile, and the window is made while those of its first screen are still loaded.
    const auto load = [this](const char* file) {
        return std::make_unique<QQmlComponent>(m_engine.get(),
                                               QUrl(QStringLiteral("qrc:/Tallyglass/") + QLatin1String(file)),
                                               QQmlComponent::Asynchronous);
    };
    const auto window = load("Main.qml");
    const auto screen = load("DashboardView.qml");
    prepareText([] { QCoreApplication::processEvents(); });
    while (window->isLoading())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (window->isReady()) {
        Startup::of(*m_engine)->setOver(m_options.screenshots.has_value());
        m_window.reset(qobject_cast<QQuickWindow*>(window->createWithInitialProperties({
            {QStringLiteral("model"), QVariant::fromValue(&m_model)},
            {QStringLiteral("helperSetup"), QVariant::fromValue(&m_helperSetup)},
            {QStringLiteral("workspace"), QVariant::fromValue<Workspace*>(&m_workspace)},
            {QStringLiteral("pasteboard"), QVariant::fromValue<Pasteboard*>(&m_pasteboard)},
            {QStringLiteral("alerts"), QVariant::fromValue(&m_alerts)},
            {QStringLiteral("updater"), QVariant::fromValue(&m_updater)},
        })));
    }
    if (!m_window)
        throw Error(window->errorString().trimmed().toStdString());
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
    connect(
        m_window.get(), &QQuickWindow::frameSwapped, this, [this] { Startup::of(*m_engine)->setOver(true); },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    m_window->show();
    QMetaObject::invokeMethod(this, &TallyglassApp::finishStart, Qt::QueuedConnection);
}

void TallyglassApp::reopen() {
    m_delegate->applicationShouldHandleReopen();
}

/// What nobody has to wait for. It doesn't hang on a frame: a window that starts minimized draws none.
void TallyglassApp::finishStart() {
    m_tray = std::make_unique<TrayPresence>(*m_engine, m_model, m_workspace, m_updater);
    m_delegate->stayInTray(*m_tray);
    m_delegate->followActivation();
    m_updater.start();
}

/// Says "ready" once, at the first frame that shows the whole screen with its data.
void TallyglassApp::reportStart() {
    connect(&m_model, &AppModel::refreshingChanged, m_window.get(), [this] { m_window->update(); });
    m_startReport = connect(m_window.get(), &QQuickWindow::frameSwapped, this, [this] {
        if (!hasData() || !Startup::of(*m_engine)->isOver())
            return;
        disconnect(m_startReport);
        std::puts("ready");
        std::fflush(stdout);
    });
}

void TallyglassApp::savePictures(const std::filesystem::path& folder,
                                 const std::function<void(const QString&)>& written) {
    m_window->show();
    while (!hasData())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
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
