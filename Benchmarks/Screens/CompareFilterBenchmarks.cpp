// The compare screen over as many rows as it loads: from a letter typed into the filter to the drawn list.

#include "Benchmarks/Screens/BenchScreen.h"
#include "Benchmarks/Support/Row.h"
#include "Tallyglass/Screens/Compare/CompareViewModel.h"
#include "TallyglassKit/Comparison/CacheSession.h"

#include <fmt/format.h>

#include <QCoreApplication>
#include <QKeyEvent>
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

AppEnvironment environment(const std::filesystem::path& folder) {
    AppEnvironment result{SystemPaths(folder), TMUtilRunner(runTool)};
    result.cache = std::make_shared<CacheSession>(result.runner, folder / "cache.sqlite");
    return result;
}

class Compare {
public:
    Compare() {
        m_screen.model().setFdaStatus(FDAStatus::granted);
        m_screen.show("Compare/CompareView.qml", {1600, 1000});
        m_viewModel = m_screen.root().findChild<CompareViewModel*>();
        showRows();
        for (const char* letters : {"", "7", "73"})
            m_passing.push_back(passing(letters));
    }

    /// Types into the filter, after which so many letters are in it, and draws the frame that shows it.
    void type(Qt::Key key, const QString& text, std::size_t letters) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&m_screen.window(), &event);
        QCoreApplication::processEvents();
        m_screen.drawFrame();
        if (m_viewModel->diff()->visibleRows().size() != m_passing[letters])
            throw std::runtime_error("The list wasn't filtered.");
    }

private:
    std::size_t passing(const std::string& letters) const {
        std::size_t count = 0;
        for (const ChangeRecord& change : m_viewModel->diff()->changes())
            count += change.path.find(letters) != std::string::npos ? 1 : 0;
        return count;
    }

    void showRows() {
        DiffModel& diff = *m_viewModel->diff();
        while (!diff.canRun())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        diff.run(true);
        while (diff.progressText())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (std::ssize(diff.changes()) != rows)
            throw std::runtime_error("rows are missing: " + diff.error().value_or(""));
        m_screen.settle();
        for (auto* item : m_screen.root().findChildren<QQuickItem*>())
            if (item->property("placeholderText").toString() == QLatin1String("Filter paths"))
                item->forceActiveFocus(Qt::TabFocusReason);
        m_screen.settle();
    }

    QTemporaryDir m_folder;
    BenchScreen m_screen{environment(m_folder.path().toStdString())};
    CompareViewModel* m_viewModel = nullptr;
    std::vector<std::size_t> m_passing; ///< rows, by how many letters are in the filter
};

Compare* compare = nullptr;

std::shared_ptr<void> prepare() {
    auto made = std::make_shared<Compare>();
    compare = made.get();
    return made;
}

double filter() {
    constexpr int rounds = 5;
    return seconds([&] {
               for (int round = 0; round < rounds; ++round) {
                   compare->type(Qt::Key_7, QStringLiteral("7"), 1);
                   compare->type(Qt::Key_3, QStringLiteral("3"), 2);
                   compare->type(Qt::Key_Backspace, {}, 1);
                   compare->type(Qt::Key_Backspace, {}, 0);
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
