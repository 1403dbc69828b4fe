#include "Tallyglass/Screens/Timeline/TimelineEntries.h"

#include "TallyglassKit/Access/NearestMatch.h"
#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Health/BackupHealth.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <tuple>

namespace tallyglass {

namespace {

/// The first of `count` identities that no other list of this process has.
std::uint64_t freshIdentities(std::size_t count) {
    static std::atomic<std::uint64_t> next = 1;
    return next.fetch_add(count, std::memory_order_relaxed);
}

/// Finds the manifest's rows of backups that are asked for in ascending order, as NearestMatch would, but
/// walks the manifest once instead of once for each backup.
class ManifestRows {
public:
    explicit ManifestRows(std::span<const BackupManifestEntry> manifest) : m_manifest(manifest) {
        m_rows.reserve(manifest.size());
        for (std::size_t index = 0; index < manifest.size(); ++index)
            if (std::isfinite(manifest[index].id()))
                m_rows.push_back({manifest[index].completionDate, index});
        if (!std::ranges::is_sorted(m_rows))
            std::ranges::sort(m_rows);
        m_next = m_rows.begin();
        m_earlier = m_rows.end();
    }

    [[nodiscard]] const BackupManifestEntry* nearest(Date date) {
        while (m_next != m_rows.end() && m_next->date < date) {
            if (m_earlier == m_rows.end() || m_earlier->date != m_next->date)
                m_earlier = m_next; // of rows with one date the first counts
            ++m_next;
        }
        const auto distance = [&](Rows::const_iterator row) {
            return row == m_rows.end() ? HUGE_VAL : std::abs((row->date - date).count());
        };
        const double before = distance(m_earlier);
        const double after = distance(m_next);
        if (std::min(before, after) > NearestMatch::backupTolerance)
            return nullptr;
        if (before == after)
            return &m_manifest[std::min(m_earlier->index, m_next->index)];
        return &m_manifest[(before < after ? m_earlier : m_next)->index];
    }

private:
    struct Row {
        Date date;
        std::size_t index;
        auto operator<=>(const Row&) const = default;
    };
    using Rows = std::vector<Row>;

    std::span<const BackupManifestEntry> m_manifest;
    Rows m_rows;                    ///< in ascending order of date
    Rows::const_iterator m_next;    ///< the first row that isn't earlier than the backup
    Rows::const_iterator m_earlier; ///< the first with the last date before that
};

} // namespace

bool TimelineEntry::showsSameAs(const TimelineEntry& other) const {
    const auto shown = [](const TimelineEntry& entry) {
        return std::tie(entry.date, entry.intervalHours, entry.isGap, entry.manifest, entry.isFailure);
    };
    return shown(*this) == shown(other);
}

std::vector<TimelineEntry> timelineEntries(const TMDestination& destination, const BackupHealth& health,
                                           std::span<const BackupManifestEntry> manifest) {
    const std::vector<Date>& snapshots = destination.snapshotDates;
    const std::vector<Date>& failures = health.suspectedFailedAttempts;
    std::vector<TimelineEntry> entries;
    if (snapshots.empty())
        return entries;
    entries.reserve(snapshots.size() + failures.size());
    std::uint64_t id = freshIdentities(entries.capacity());

    ManifestRows rows(manifest);
    auto failure = failures.begin();
    auto gap = health.gaps.begin();
    const auto addFailuresBefore = [&](Date date) {
        for (; failure != failures.end() && *failure < date; ++failure)
            entries.push_back({.id = id++, .date = *failure, .isFailure = true});
    };
    for (std::size_t index = 0; index < snapshots.size(); ++index) {
        const Date date = snapshots[index];
        addFailuresBefore(date);
        TimelineEntry& entry = entries.emplace_back();
        entry.id = id++;
        entry.date = date;
        if (index > 0) {
            const Date previous = snapshots[index - 1];
            gap = std::find_if(gap, health.gaps.end(), [&](const BackupHealth::Gap& candidate) {
                return candidate.start >= previous;
            });
            entry.intervalHours = (date - previous).count() / 3600;
            entry.isGap = gap != health.gaps.end() && gap->start == previous;
        }
        if (const BackupManifestEntry* row = rows.nearest(date))
            entry.manifest = *row;
    }
    addFailuresBefore(Date::max());
    return entries;
}

std::optional<double> timelineValue(const TimelineEntry& entry, TimelineMetric metric) {
    if (metric == TimelineMetric::interval)
        return entry.intervalHours;
    if (!entry.manifest || entry.manifest->isInitialBackup)
        return std::nullopt;
    return static_cast<double>(metric == TimelineMetric::changeSize ? entry.manifest->changedPhysicalSize
                                                                    : entry.manifest->changedCount);
}

const TimelineEntry* initialEntry(std::span<const TimelineEntry> entries) {
    const auto found = std::ranges::find_if(entries, &TimelineEntry::isInitialBackup);
    return found == entries.end() ? nullptr : &*found;
}

std::vector<std::size_t> selectableIndices(std::span<const TimelineEntry> entries) {
    std::vector<std::size_t> indices;
    indices.reserve(entries.size());
    for (std::size_t index = 0; index < entries.size(); ++index)
        if (!entries[index].isFailure)
            indices.push_back(index);
    return indices;
}

std::optional<std::size_t> selectableIndex(std::span<const TimelineEntry> entries,
                                           std::optional<std::size_t> index) {
    return index && *index < entries.size() && !entries[*index].isFailure ? index : std::nullopt;
}

std::optional<std::size_t> indexAtPosition(std::span<const TimelineEntry> entries, double position) {
    const double nearest = std::round(position);
    if (!(nearest >= 0 && nearest < static_cast<double>(entries.size()))) // nor what is no number
        return std::nullopt;
    return static_cast<std::size_t>(nearest);
}

std::optional<std::size_t> movedSelection(std::span<const TimelineEntry> entries,
                                          std::optional<std::size_t> current, std::ptrdiff_t steps) {
    const auto indices = selectableIndices(entries);
    if (indices.empty())
        return std::nullopt;
    if (!selectableIndex(entries, current))
        return indices.back();
    const auto position = std::ranges::lower_bound(indices, *current) - indices.begin();
    const auto last = std::ssize(indices) - 1;
    const auto target = position + std::clamp(steps, -position, last - position);
    return indices[static_cast<std::size_t>(target)];
}

std::optional<std::size_t> indexOfBackup(std::span<const TimelineEntry> entries, Date date) {
    const auto isBackupOfDate = [&](const TimelineEntry& entry) {
        return entry.date == date && !entry.isFailure;
    };
    const auto found = std::find_if(std::ranges::lower_bound(entries, date, {}, &TimelineEntry::date),
                                    entries.end(), isBackupOfDate);
    return found == entries.end() ? std::nullopt
                                  : std::optional(static_cast<std::size_t>(found - entries.begin()));
}

} // namespace tallyglass
