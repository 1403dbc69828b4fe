// The timeline's state: what its bars measure, which backup is selected and which one's changes are asked
// for.
//
// Main thread only. Entries are built anew when the model changes, and kept while they show the same. The
// selection stays on its backup then, wherever that stands in the new list.

#pragma once

#include "Tallyglass/Screens/Context/ViewModel.h"
#include "Tallyglass/Screens/Timeline/TimelineContent.h"
#include "Tallyglass/Screens/Timeline/TimelineEntries.h"

#include <QStringList>
#include <QVariant>
#include <chrono>
#include <optional>
#include <vector>

namespace tallyglass {

class TimelineViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(tallyglass::TimelineContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(int metric READ metricIndex WRITE setMetricIndex NOTIFY metricChanged)
    Q_PROPERTY(QStringList metricNames READ metricNames CONSTANT)
    Q_PROPERTY(bool helperExists READ helperExists WRITE setHelperExists NOTIFY settingsChanged)
    Q_PROPERTY(bool differentiateWithoutColor READ differentiatesWithoutColor WRITE
                   setDifferentiateWithoutColor NOTIFY settingsChanged)
    Q_PROPERTY(QString installCommand READ installCommand CONSTANT)
    Q_PROPERTY(bool copiedCommand MEMBER m_copiedCommand NOTIFY copiedCommandChanged)
    Q_PROPERTY(bool chartFocused MEMBER m_chartFocused NOTIFY chartFocusedChanged)

public:
    using ViewModel::ViewModel;

    [[nodiscard]] const TimelineContent& content() const { return m_content; }
    [[nodiscard]] const std::vector<TimelineEntry>& entries() const { return m_entries; }
    /// The local days of the entries.
    [[nodiscard]] const std::vector<std::chrono::local_days>& days() const { return m_days; }
    /// Where the rule of the typical cadence stands; absent for other metrics than intervals.
    [[nodiscard]] std::optional<double> typicalHours() const;

    [[nodiscard]] TimelineMetric metric() const { return m_metric; }
    void setMetric(TimelineMetric metric);

    [[nodiscard]] std::optional<std::size_t> selectedIndex() const { return m_selectedIndex; }
    /// Anything but the index of a backup changes nothing.
    void select(std::size_t index);
    void clearSelection();
    /// By `steps` backups; from nowhere to the newest.
    Q_INVOKABLE void moveSelection(int steps);
    /// Asks for the sheet of what changed in the selected backup, if there is one.
    Q_INVOKABLE void openSelectedChanges();

    [[nodiscard]] bool helperExists() const { return m_helperExists; }
    void setHelperExists(bool exists);
    [[nodiscard]] bool differentiatesWithoutColor() const { return m_differentiateWithoutColor; }
    void setDifferentiateWithoutColor(bool differentiate);

    [[nodiscard]] int metricIndex() const { return static_cast<int>(m_metric); }
    void setMetricIndex(int index);
    [[nodiscard]] static QStringList metricNames();
    [[nodiscard]] static QString installCommand();

signals:
    void contentChanged();
    void entriesChanged();
    void typicalHoursChanged();
    void metricChanged();
    void selectionChanged();
    void settingsChanged();
    void copiedCommandChanged();
    void chartFocusedChanged();

protected:
    void update() override;

private:
    void setEntries(std::vector<TimelineEntry> entries);
    void setSelectedIndex(std::optional<std::size_t> index);
    void updateContent();

    std::vector<TimelineEntry> m_entries;
    std::vector<std::chrono::local_days> m_days;
    std::optional<double> m_medianInterval; ///< seconds
    TimelineMetric m_metric = TimelineMetric::interval;
    std::optional<std::size_t> m_selectedIndex;
    bool m_helperExists = false;
    bool m_differentiateWithoutColor = false;
    bool m_copiedCommand = false;
    bool m_chartFocused = false;
    TimelineContent m_content;
};

} // namespace tallyglass
