// The compare screen over as many rows as it loads: from a letter typed into the filter to the drawn list, by
// the renderer that has no graphics processor to help it.

#include "Benchmarks/Support/Row.h"
#include "Tallyglass/Screens/Compare/CompareViewModel.h"
#include "Tallyglass/Screens/Context/ScreenContext.h"
#include "TallyglassKit/Comparison/CacheSession.h"

#include <fmt/format.h>

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <stdexcept>

namespace tallyglass::bench {

namespace {

constexpr int rows = 20'000;
constexpr double frame = 1.0 / 60;

/// A tmutil that knows of two backups and of so many changes between them.
TMUtilResult runTool(const TMUtilRunner::Arguments& arguments, std::chrono::milliseconds,
                     const TMUtilRunner::OnBytes&, const std::stop_token&) {
    std::string output;
    if (arguments.front() == "listbackups") {
        output = "/older\n/newer\n";
    } else if (arguments.front() == "compare") {
        output = "<plist version=\"1.0\"><dict><key>Changes</key><array>";
        for (int number = 0; number < rows; ++number)
            output +=
                fmt::format("<dict><key>AddedItem</key><dict><key>Path</key><string>/newer/Data/Users/alex/"
                            "Documents/{:03}/{:x}/item {}.dat</string><key>Size</key>"
                            "<integer>{}</integer></dict></dict>",
                            number / 60, number * 7919 % 65'521, number, number * 37);
        output += "</array></dict></plist>";
    }
    return {.exitCode = 0, .stdout = output, .stderr = {}};
}

class NoWorkspace : public Workspace {
public:
    bool openUrl(const QUrl&) override { return false; }
    void reveal(const std::filesystem::path&) override {}
};

class Screen {
public:
    Screen() {
        m_engine.addImportPath(QStringLiteral("qrc:/"));
        m_model.setFdaStatus(FDAStatus::granted);
        QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/Tallyglass/Compare/CompareView.qml")));
        m_root.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(
            {{QStringLiteral("context"), QVariant::fromValue(&m_context)}})));
        if (!m_root)
            throw std::runtime_error(component.errorString().toStdString());
        m_viewModel = m_root->findChild<CompareViewModel*>();
        m_window.resize(1600, 1000);
        m_root->setParentItem(m_window.contentItem());
        m_root->setSize(m_window.size());
        m_window.show();
        m_window.requestActivate();
        while (!m_window.isExposed() || !m_window.isActive())
            QCoreApplication::processEvents();
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, &m_window, [this] { ++m_frames; });
        showRows();
    }

    /// Types into the filter and draws the frame that shows it, at once instead of at the next tick.
    /// `expected` is how many rows then pass.
    void type(Qt::Key key, const QString& text, std::size_t expected) {
        const int before = m_frames;
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&m_window, &event);
        QCoreApplication::processEvents();
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&m_window, &request);
        if (m_frames == before || m_viewModel->diff()->visibleRows().size() != expected)
            throw std::runtime_error("The list wasn't filtered and drawn.");
    }

    /// How many rows pass each of the first letters of the text that is typed.
    std::size_t passing(const std::string& letters) const {
        std::size_t count = 0;
        for (const ChangeRecord& change : m_viewModel->diff()->changes())
            count += change.path.find(letters) != std::string::npos ? 1 : 0;
        return count;
    }

private:
    void showRows() {
        DiffModel& diff = *m_viewModel->diff();
        while (!diff.canRun())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        diff.run(true);
        while (diff.progressText())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (std::ssize(diff.changes()) != rows)
            throw std::runtime_error("rows are missing: " + diff.error().value_or(""));
        for (int turn = 0; turn < 4; ++turn) {
            QCoreApplication::processEvents();
            static_cast<void>(m_window.grabWindow());
        }
        for (auto* item : m_root->findChildren<QQuickItem*>())
            if (item->property("placeholderText").toString() == QLatin1String("Filter paths"))
                item->forceActiveFocus(Qt::TabFocusReason);
        for (int turn = 0; turn < 4; ++turn) {
            QCoreApplication::processEvents();
            static_cast<void>(m_window.grabWindow());
        }
    }

    static AppEnvironment environment(const std::filesystem::path& folder) {
        AppEnvironment result{SystemPaths(folder), TMUtilRunner(runTool)};
        result.cache = std::make_shared<CacheSession>(result.runner, folder / "cache.sqlite");
        return result;
    }

    QTemporaryDir m_folder;
    AppModel m_model{environment(m_folder.path().toStdString())};
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
    CompareViewModel* m_viewModel = nullptr;
    int m_frames = 0;
};

/// The program around the screen, off screen.
struct Program {
    Program() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
        application.emplace(argc, argv);
        screen.emplace();
        for (const char* letters : {"", "7", "73"})
            passing.push_back(screen->passing(letters));
    }
    int argc = 1;
    char name[17] = "tallyglass-bench";
    char* argv[2] = {name, nullptr};
    std::optional<QGuiApplication> application;
    std::optional<Screen> screen; // goes first
    std::vector<std::size_t> passing;
};

Program* program = nullptr;

std::shared_ptr<void> prepare() {
    auto made = std::make_shared<Program>();
    program = made.get();
    return made;
}

double filter() {
    constexpr int rounds = 5;
    const auto& passing = program->passing;
    return seconds([&] {
               for (int round = 0; round < rounds; ++round) {
                   program->screen->type(Qt::Key_7, QStringLiteral("7"), passing[1]);
                   program->screen->type(Qt::Key_3, QStringLiteral("3"), passing[2]);
                   program->screen->type(Qt::Key_Backspace, {}, passing[1]);
                   program->screen->type(Qt::Key_Backspace, {}, passing[0]);
               }
           }) /
           (rounds * 4);
}

const bool added = add({.name = "compare-filter",
                        .work = "filter 20,000 rows by a typed letter, to the drawn list",
                        .reference = "one frame at 60 Hz",
                        .unit = "s",
                        .ratio = Ratio::cost,
                        .must = 1,
                        .aim = 0.4,
                        .prepare = prepare,
                        .measure = filter,
                        .measureReference = [] { return frame; }});

} // namespace

} // namespace tallyglass::bench
