#include "Benchmarks/Screens/BenchScreen.h"

#include <QQmlComponent>
#include <stdexcept>
#include <utility>

namespace tallyglass::bench {

namespace {

class NoWorkspace : public Workspace {
public:
    bool openUrl(const QUrl&) override { return false; }
    void reveal(const std::filesystem::path&) override {}
};

std::unique_ptr<QGuiApplication> makeApplication(int& argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

struct BenchScreen::Surroundings {
    explicit Surroundings(const AppEnvironment& environment) : model(environment) {}

    AppModel model;
    DiffModel diff{model.environment()};
    NoWorkspace workspace;
    Alerts alerts;
    FilePanels panels{alerts};
    DesktopClipboard clipboard;
    HelperSetup helperSetup{model.paths(), workspace, alerts};
    UpdaterController updater{UpdaterOptions{}, alerts, workspace};
    ScreenContext context{model, diff, helperSetup, workspace, clipboard, alerts, panels, updater};
};

BenchScreen::BenchScreen(const AppEnvironment& environment)
    : m_application(makeApplication(m_argc, m_argv)),
      m_surroundings(std::make_unique<Surroundings>(environment)), m_engine(std::make_unique<QQmlEngine>()),
      m_window(std::make_unique<QQuickWindow>()) {
    m_engine->addImportPath(QStringLiteral("qrc:/"));
}

BenchScreen::~BenchScreen() = default;

AppModel& BenchScreen::model() {
    return m_surroundings->model;
}

void BenchScreen::show(const char* file, QSize size) {
    QQmlComponent component(m_engine.get(), QUrl(QStringLiteral("qrc:/Tallyglass/") + QLatin1String(file)));
    m_root.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(
        {{QStringLiteral("context"), QVariant::fromValue(&m_surroundings->context)}})));
    if (!m_root)
        throw std::runtime_error(component.errorString().toStdString());
    m_window->resize(size);
    m_root->setParentItem(m_window->contentItem());
    m_root->setSize(m_window->size());
    m_window->show();
    m_window->requestActivate();
    while (!m_window->isExposed() || !m_window->isActive())
        QCoreApplication::processEvents();
    QObject::connect(m_window.get(), &QQuickWindow::frameSwapped, m_window.get(), [this] { ++m_frames; });
}

void BenchScreen::settle() {
    for (int turn = 0; turn < 4; ++turn) {
        QCoreApplication::processEvents();
        static_cast<void>(m_window->grabWindow());
    }
}

void BenchScreen::drawFrame() {
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(m_window.get(), &request);
    if (std::exchange(m_framesSeen, m_frames) == m_frames)
        throw std::runtime_error("No frame was drawn.");
}

} // namespace tallyglass::bench
