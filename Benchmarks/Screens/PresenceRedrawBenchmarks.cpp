// The file history screen over thousands of backups: from a moved selection in the presence strip to the
// drawn frame.

#include "Benchmarks/Screens/BenchScreen.h"
#include "Benchmarks/Support/Row.h"
#include "Tallyglass/Screens/FileHistory/FileHistoryViewModel.h"

#include <fmt/format.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace tallyglass::bench {

namespace {

constexpr std::size_t backups = 3000;
constexpr int moves = 50;
constexpr double frame = 1.0 / 60;

/// Backups that hold a file, which changes every hundredth time.
class Backups {
public:
    Backups() {
        namespace fs = std::filesystem;
        fs::path previous;
        for (std::size_t number = 0; number < backups; ++number) {
            const fs::path root = m_folder.path().toStdString() + fmt::format("/{:04}", number);
            const fs::path file = root / "Data/file";
            fs::create_directories(file.parent_path());
            if (number % 100 == 0)
                std::ofstream(file) << std::string(number + 1, 'x');
            else
                fs::create_hard_link(previous, file);
            previous = file;
            m_listing += root.string() + "\n";
        }
    }

    [[nodiscard]] AppEnvironment environment() const {
        AppEnvironment result(
            SystemPaths(m_folder.path().toStdString()),
            TMUtilRunner([listing = m_listing](const auto& arguments, auto, const auto&, const auto&) {
                const bool lists = arguments.front() == "listbackups";
                return TMUtilResult{.exitCode = 0, .stdout = lists ? listing : std::string(), .stderr = {}};
            }));
        result.defaults = UserDefaults(m_folder.path().toStdString() + "/defaults.json");
        return result;
    }

private:
    QTemporaryDir m_folder;
    std::string m_listing;
};

class FileHistory {
public:
    FileHistory() {
        m_screen.model().setFdaStatus(FDAStatus::granted);
        m_screen.show("FileHistory/FileHistoryView.qml", {900, 1400});
        m_viewModel = m_screen.root().findChild<FileHistoryViewModel*>();
        m_viewModel->trace(QStringLiteral("/file"));
        while (m_viewModel->history()->progress())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (m_viewModel->presence().size() != backups)
            throw std::runtime_error("backups are missing");
        m_screen.settle();
    }

    /// Goes to another cell of the strip, and seldom to another version.
    void redraw() {
        m_backup = (m_backup + backups - 23) % backups;
        m_viewModel->selectBackup(m_backup);
        m_screen.drawFrame();
    }

private:
    Backups m_backups;
    BenchScreen m_screen{m_backups.environment()};
    FileHistoryViewModel* m_viewModel = nullptr;
    std::size_t m_backup = 0;
};

FileHistory* history = nullptr;

std::shared_ptr<void> prepare() {
    auto made = std::make_shared<FileHistory>();
    history = made.get();
    return made;
}

double redraw() {
    return seconds([] {
               for (int move = 0; move < moves; ++move)
                   history->redraw();
           }) /
           moves;
}

const bool added = add({.name = "presence-redraw",
                        .work = "from a moved selection to a drawn presence strip of 3,000 backups",
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
