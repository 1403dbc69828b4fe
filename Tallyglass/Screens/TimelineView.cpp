#include "Tallyglass/Screens/TimelineView.h"

#include "Tallyglass/Screens/TimelineWords.h"
#include "TallyglassKit/Platform/Text/LocalDays.h"

#include <algorithm>

namespace tallyglass {

void TimelineView::update() {
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

void TimelineView::setEntries(std::vector<TimelineEntry> entries) {
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

std::optional<double> TimelineView::typicalHours() const {
    if (m_metric != TimelineMetric::interval || !m_medianInterval)
        return std::nullopt;
    return *m_medianInterval / 3600;
}

void TimelineView::setMetric(TimelineMetric metric) {
    if (metric == m_metric)
        return;
    m_metric = metric;
    emit metricChanged();
    updateContent();
}

void TimelineView::setMetricIndex(int index) {
    if (index >= 0 && index < static_cast<int>(allTimelineMetrics.size()))
        setMetric(allTimelineMetrics[static_cast<std::size_t>(index)]);
}

void TimelineView::select(std::size_t index) {
    if (selectableIndex(m_entries, index))
        setSelectedIndex(index);
}

void TimelineView::clearSelection() {
    setSelectedIndex(std::nullopt);
}

void TimelineView::moveSelection(int steps) {
    if (const auto index = movedSelection(m_entries, m_selectedIndex, steps))
        setSelectedIndex(index);
}

void TimelineView::setSelectedIndex(std::optional<std::size_t> index) {
    if (index == m_selectedIndex)
        return;
    m_selectedIndex = index;
    updateContent(); // first, so that who is told of the selection finds its words
    emit selectionChanged();
}

QVariant TimelineView::changesTargetValue() const {
    return m_changesTarget ? QVariant::fromValue(*m_changesTarget) : QVariant();
}

void TimelineView::openSelectedChanges() {
    const auto index = selectableIndex(m_entries, m_selectedIndex);
    if (!index)
        return;
    const TimelinePoint target{m_entries[*index].date};
    if (target == m_changesTarget)
        return;
    m_changesTarget = target;
    emit changesTargetChanged();
}

void TimelineView::closeChanges() {
    if (!m_changesTarget)
        return;
    m_changesTarget.reset();
    emit changesTargetChanged();
}

void TimelineView::setHelperExists(bool exists) {
    if (exists == m_helperExists)
        return;
    m_helperExists = exists;
    emit settingsChanged();
    updateContent();
}

void TimelineView::setDifferentiateWithoutColor(bool differentiate) {
    if (differentiate == m_differentiateWithoutColor)
        return;
    m_differentiateWithoutColor = differentiate;
    emit settingsChanged();
    updateContent();
}

void TimelineView::updateContent() {
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

QStringList TimelineView::metricNames() {
    return timelinewords::metricNames();
}

QString TimelineView::installCommand() {
    return QString::fromUtf8(helperInstallCommand.data(), helperInstallCommand.size());
}

} // namespace tallyglass
