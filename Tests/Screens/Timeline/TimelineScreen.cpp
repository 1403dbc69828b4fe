#include "Tests/Screens/Timeline/TimelineScreen.h"

#include "TallyglassKit/Access/TMSettings.h"

#include <algorithm>

namespace tallyglass::test {

namespace {

constexpr double now = 1'795'376'280; // 2026-11-22 19:38:00 UTC

AppEnvironment environment(const std::filesystem::path& root) {
    AppEnvironment result{SystemPaths(root)};
    result.clock = [] { return dateSince1970(now); };
    return result;
}

std::vector<Date> dates(const std::vector<double>& secondsAgo) {
    std::vector<Date> result(secondsAgo.size());
    std::ranges::transform(secondsAgo, result.begin(), TimelineMachine::ago);
    return result;
}

} // namespace

TimelineMachine::TimelineMachine() : ScreenStage(&environment) {}

Date TimelineMachine::ago(double seconds) {
    return dateSince1970(now - seconds);
}

void TimelineMachine::setHistory(const std::vector<double>& backups, const std::vector<double>& attempts) {
    TMSettings settings;
    settings.destinations = {{.id = "A", .snapshotDates = dates(backups), .attemptDates = dates(attempts)}};
    model.setSettings(settings);
}

void TimelineMachine::setManifest(std::size_t without) {
    const AscendingDates& backups = model.selectedDestination()->snapshotDates;
    std::vector<BackupManifestEntry> rows;
    for (std::size_t index = 0; index + without < backups.size(); ++index) {
        const auto weight = static_cast<std::int64_t>(index * 7919 % 97 + 3);
        rows.push_back({.completionDate = backups[index],
                        .changedCount = index == 0 ? 812'345 : weight * 13,
                        .changedLogicalSize = index == 0 ? 512'000'000'000 : weight * 3'500'000,
                        .changedPhysicalSize = index == 0 ? 402'000'000'000 : weight * 3'100'000,
                        .isInitialBackup = index == 0});
    }
    model.setManifest(rows);
}

std::vector<double> hourly(int count) {
    std::vector<double> secondsAgo;
    for (int hours = count; hours > 0; --hours)
        secondsAgo.push_back(hours * 3600.0);
    return secondsAgo;
}

TimelineScreen::TimelineScreen(TimelineMachine& machine, QSize size)
    : QmlScreen(R"(
          Rectangle {
              required property ScreenContext context
              color: Theme.windowBackground
              TimelineView {
                  anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.unit * 2 }
                  context: parent.context
              }
          })",
                machine.properties(), size),
      m_viewModel(root()->findChild<TimelineViewModel*>()), m_chart(root()->findChild<TimelineChart*>()) {}

QPointF TimelineScreen::place(std::size_t index) const {
    const TimelineLayout& layout = m_chart->layout();
    return m_chart->mapToScene({layout.x(static_cast<double>(index)), layout.plot.center().y()});
}

Element TimelineScreen::element() const {
    return tree().get(QAccessible::Slider, m_viewModel->content().accessibleName);
}

} // namespace tallyglass::test
