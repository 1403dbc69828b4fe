// The real timeline over a model of its own, off screen, for a history that the test gives.
//
// Main thread only. Needs Tests/Support/QtMain.

#pragma once

#include "Tallyglass/Screens/Timeline/TimelineChart.h"
#include "Tallyglass/Screens/Timeline/TimelineViewModel.h"
#include "Tests/Screens/QmlScreen.h"
#include "Tests/Screens/ScreenStage.h"

#include <vector>

namespace tallyglass::test {

/// The machine under the timeline, with a clock that stands still.
class TimelineMachine : public ScreenStage {
public:
    TimelineMachine();

    /// Gives the model one destination with backups and attempts, each so many seconds ago.
    void setHistory(const std::vector<double>& backups, const std::vector<double>& attempts = {});
    /// Gives every backup but the newest ones a row in the manifest, the oldest as the initial backup.
    void setManifest(std::size_t without = 0);
    [[nodiscard]] static Date ago(double seconds);
};

/// Backups of every hour up to one hour ago.
[[nodiscard]] std::vector<double> hourly(int count);

/// The timeline of a machine in a window.
class TimelineScreen : public QmlScreen {
public:
    explicit TimelineScreen(TimelineMachine& machine, QSize size = {800, 600});

    [[nodiscard]] TimelineViewModel& viewModel() const { return *m_viewModel; }
    [[nodiscard]] TimelineChart& chart() const { return *m_chart; }
    /// Where an entry stands, in the window, in the middle of the plot's height.
    [[nodiscard]] QPointF place(std::size_t index) const;
    /// The chart as a screen reader meets it.
    [[nodiscard]] Element element() const;

private:
    TimelineViewModel* m_viewModel;
    TimelineChart* m_chart;
};

} // namespace tallyglass::test
