// The timeline's screen over thousands of backups: from a moved selection to the drawn frame, by the renderer
// that has no graphics processor to help it.

#include "Benchmarks/Support/Row.h"
#include "Tallyglass/Screens/Context/ScreenContext.h"
#include "Tallyglass/Screens/Timeline/TimelineViewModel.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <stdexcept>

namespace tallyglass::bench {

namespace {

constexpr int backups = 3000;
constexpr int moves = 50;
constexpr double frame = 1.0 / 60;

class NoWorkspace : public Workspace {
public:
    bool openUrl(const QUrl&) override { return false; }
    void reveal(const std::filesystem::path&) override {}
};

class Screen {
public:
    Screen() {
        m_engine.addImportPath(QStringLiteral("qrc:/"));
        fillModel();
        QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/Tallyglass/Timeline/TimelineView.qml")));
        m_root.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(
            {{QStringLiteral("context"), QVariant::fromValue(&m_context)}})));
        if (!m_root)
            throw std::runtime_error(component.errorString().toStdString());
        m_viewModel = m_root->findChild<TimelineViewModel*>();
        m_window.resize(900, 720);
        m_root->setParentItem(m_window.contentItem());
        m_root->setSize(m_window.size());
        m_window.show();
        while (!m_window.isExposed())
            QCoreApplication::processEvents();
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, &m_window, [this] { ++m_frames; });
        redraw(-1);
    }

    /// Moves the selection and draws the frame that shows it, at once instead of at the next tick.
    void redraw(int steps) {
        const int before = m_frames;
        m_viewModel->moveSelection(steps);
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&m_window, &request);
        if (m_frames == before)
            throw std::runtime_error("No frame was drawn.");
    }

private:
    void fillModel() {
        std::vector<Date> dates;
        std::vector<BackupManifestEntry> manifest;
        const double now = secondsSince1970(m_model.now());
        for (int index = 0; index < backups; ++index) {
            dates.push_back(dateSince1970(now - 3600.0 * (backups - index)));
            manifest.push_back({.completionDate = dates.back(),
                                .changedCount = index * 7919 % 9973,
                                .changedPhysicalSize = index * 104'729LL % 1'000'003 * 1000});
        }
        TMSettings settings;
        settings.destinations = {{.id = "A", .snapshotDates = dates}};
        m_model.setSettings(settings);
        m_model.setManifest(manifest);
    }

    AppModel m_model;
    NoWorkspace m_workspace;
    Alerts m_alerts;
    FilePanels m_panels{m_alerts};
    DesktopClipboard m_clipboard;
    HelperSetup m_helperSetup{m_model.paths(), m_workspace, m_alerts};
    UpdaterController m_updater{UpdaterOptions{}, m_alerts, m_workspace};
    ScreenContext m_context{m_model, m_helperSetup, m_workspace, m_clipboard, m_alerts, m_panels, m_updater};
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_root;
    TimelineViewModel* m_viewModel = nullptr;
    int m_frames = 0;
};

/// The program around the screen, off screen.
struct Program {
    Program() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
        application.emplace(argc, argv);
        screen.emplace();
    }
    int argc = 1;
    char name[17] = "tallyglass-bench";
    char* argv[2] = {name, nullptr};
    std::optional<QGuiApplication> application;
    std::optional<Screen> screen; // goes first
};

Program* program = nullptr;

std::shared_ptr<void> prepare() {
    auto made = std::make_shared<Program>();
    program = made.get();
    return made;
}

double redraw() {
    return seconds([] {
               for (int move = 0; move < moves; ++move)
                   program->screen->redraw(-1);
           }) /
           moves;
}

const bool added = add({.name = "timeline-redraw",
                        .work = "from a moved selection to a drawn timeline of 3,000 backups",
                        .reference = "one frame at 60 Hz",
                        .unit = "s",
                        .ratio = Ratio::cost,
                        .must = 1,
                        .aim = 0.3,
                        .prepare = prepare,
                        .measure = redraw,
                        .measureReference = [] { return frame; }});

} // namespace

} // namespace tallyglass::bench
