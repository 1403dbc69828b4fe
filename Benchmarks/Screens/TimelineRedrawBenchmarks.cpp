// The timeline's screen over thousands of backups: from a moved selection to the drawn frame.

#include "Benchmarks/Screens/BenchScreen.h"
#include "Benchmarks/Support/Row.h"
#include "Tallyglass/Screens/Timeline/TimelineViewModel.h"

#include <memory>
#include <vector>

namespace tallyglass::bench {

namespace {

constexpr int backups = 3000;
constexpr int moves = 50;
constexpr double frame = 1.0 / 60;

class Timeline {
public:
    Timeline() {
        fillModel();
        m_screen.show("Timeline/TimelineView.qml", {900, 720});
        m_viewModel = m_screen.root().findChild<TimelineViewModel*>();
        redraw(-1);
    }

    void redraw(int steps) {
        m_viewModel->moveSelection(steps);
        m_screen.drawFrame();
    }

private:
    void fillModel() {
        AppModel& model = m_screen.model();
        std::vector<Date> dates;
        std::vector<BackupManifestEntry> manifest;
        const double now = secondsSince1970(model.now());
        for (int index = 0; index < backups; ++index) {
            dates.push_back(dateSince1970(now - 3600.0 * (backups - index)));
            manifest.push_back({.completionDate = dates.back(),
                                .changedCount = index * 7919 % 9973,
                                .changedPhysicalSize = index * 104'729LL % 1'000'003 * 1000});
        }
        TMSettings settings;
        settings.destinations = {{.id = "A", .snapshotDates = dates}};
        model.setSettings(settings);
        model.setManifest(manifest);
    }

    BenchScreen m_screen;
    TimelineViewModel* m_viewModel = nullptr;
};

Timeline* timeline = nullptr;

std::shared_ptr<void> prepare() {
    auto made = std::make_shared<Timeline>();
    timeline = made.get();
    return made;
}

double redraw() {
    return seconds([] {
               for (int move = 0; move < moves; ++move)
                   timeline->redraw(-1);
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
