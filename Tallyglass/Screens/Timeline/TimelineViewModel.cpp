#include "Tallyglass/Screens/Timeline/TimelineViewModel.h"

#include "Tallyglass/Screens/Context/TimelinePoint.h"
#include "Tallyglass/Screens/Timeline/TimelineWords.h"
#include "TallyglassKit/Platform/Text/LocalDays.h"

#include <algorithm>

namespace tallyglass {

void TimelineViewModel::update() {
    const TMDestination* destination = model()->selectedDestination();
    const auto health = model()->health();
    std::vector<TimelineEntry> entries;
    std::optional<double> medianInterval;
    if (destination && health) {
        entries = timelineEntries(*destination, *health, model()->manifest());
        medianInterval = health->medianInterval;
    }
    if (!std::ranges::equal(entries, m_entries, &TimelineEntry::showsSameAs))
        setEntries(std::move(entries));
    if (medianInterval != m_medianInterval) {
        m_medianInterval = medianInterval;
        emit typicalHoursChanged();
    }
    updateContent();
}

void TimelineViewModel::setEntries(std::vector<TimelineEntry> entries) {
    const auto selectedDate =
        m_selectedIndex ? std::optional(m_entries[*m_selectedIndex].date) : std::nullopt;
    m_entries = std::move(entries);

    std::vector<Date> dates(m_entries.size());
    std::ranges::transform(m_entries, dates.begin(), &TimelineEntry::date);
    m_days = localDays(dates);

    // The old index means nothing in the new list, so nobody may see both.
    const auto formerIndex = m_selectedIndex;
    m_selectedIndex = selectedDate ? indexOfBackup(m_entries, *selectedDate) : std::nullopt;
    emit entriesChanged();
    if (m_selectedIndex != formerIndex)
        emit selectionChanged();
}

std::optional<double> TimelineViewModel::typicalHours() const {
    if (m_metric != TimelineMetric::interval || !m_medianInterval)
        return std::nullopt;
    return *m_medianInterval / 3600;
}

void TimelineViewModel::setMetric(TimelineMetric metric) {
    if (metric == m_metric)
        return;
    m_metric = metric;
    emit metricChanged();
    updateContent();
}

void TimelineViewModel::setMetricIndex(int index) {
    if (index >= 0 && index < static_cast<int>(allTimelineMetrics.size()))
        setMetric(allTimelineMetrics[static_cast<std::size_t>(index)]);
}

void TimelineViewModel::select(std::size_t index) {
    if (selectableIndex(m_entries, index))
        setSelectedIndex(index);
}

void TimelineViewModel::clearSelection() {
    setSelectedIndex(std::nullopt);
}

void TimelineViewModel::moveSelection(int steps) {
    if (const auto index = movedSelection(m_entries, m_selectedIndex, steps))
        setSelectedIndex(index);
}

void TimelineViewModel::setSelectedIndex(std::optional<std::size_t> index) {
    if (index == m_selectedIndex)
        return;
    m_selectedIndex = index;
    updateContent(); // first, so that who is told of the selection finds its words
    emit selectionChanged();
}

void TimelineViewModel::openSelectedChanges() {
    if (const auto index = selectableIndex(m_entries, m_selectedIndex); index && context())
        context()->openSheet(ScreenContext::BackupChanges,
                             QVariant::fromValue(TimelinePoint{m_entries[*index].date}));
}

void TimelineViewModel::setHelperExists(bool exists) {
    if (exists == m_helperExists)
        return;
    m_helperExists = exists;
    emit settingsChanged();
    updateContent();
}

void TimelineViewModel::setDifferentiateWithoutColor(bool differentiate) {
    if (differentiate == m_differentiateWithoutColor)
        return;
    m_differentiateWithoutColor = differentiate;
    emit settingsChanged();
    updateContent();
}

void TimelineViewModel::updateContent() {
    if (!model())
        return;
    TimelineContent content =
        timelineContent({.entries = m_entries,
                         .metric = m_metric,
                         .selectedIndex = m_selectedIndex,
                         .medianInterval = m_medianInterval,
                         .hasManifest = !model()->manifest().empty(),
                         .hasFullDiskAccess = model()->fdaStatus() == FDAStatus::granted,
                         .helperExists = m_helperExists,
                         .differentiateWithoutColor = m_differentiateWithoutColor});
    if (content == m_content)
        return;
    m_content = std::move(content);
    emit contentChanged();
}

QStringList TimelineViewModel::metricNames() {
    return timelinewords::metricNames();
}

QString TimelineViewModel::installCommand() {
    return QString::fromUtf8(helperInstallCommand.data(), helperInstallCommand.size());
}

} // namespace tallyglass
