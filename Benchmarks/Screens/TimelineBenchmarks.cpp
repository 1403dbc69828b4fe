// The timeline of a destination with thousands of backups: working out what it shows, and redrawing it when
// the selection moves.

#include "Benchmarks/Support/Row.h"
#include "Tallyglass/Screens/Timeline/TimelineEntries.h"
#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Health/BackupHealth.h"

#include <algorithm>
#include <random>
#include <stdexcept>

namespace tallyglass::bench {

namespace {

constexpr int backups = 3000;
constexpr int repetitions = 20;

/// Backups every hour or so with gaps, as many attempts, most of which led to one, and a full manifest.
struct History {
    TMDestination destination{.id = "A"};
    std::vector<BackupManifestEntry> manifest;
    std::vector<Date> dates; ///< the backups' and then the attempts'
    Date now;

    History() {
        std::mt19937 random(3000);
        const auto below = [&](int bound) { return std::uniform_int_distribution(0, bound - 1)(random); };
        double seconds = 1'780'000'000;
        std::vector<Date> snapshots;
        std::vector<Date> attempts;
        for (int index = 0; index < backups; ++index) {
            seconds += 3300 + below(600) + (below(50) == 0 ? 40'000 : 0);
            snapshots.push_back(dateSince1970(seconds));
            attempts.push_back(dateSince1970(seconds - (below(20) == 0 ? 7300 : 200 + below(300))));
            manifest.push_back({.completionDate = dateSince1970(seconds + below(120)),
                                .changedCount = below(10'000),
                                .changedPhysicalSize = below(1'000'000'000)});
        }
        destination.snapshotDates = snapshots;
        destination.attemptDates = attempts;
        now = dateSince1970(seconds + 4000);
        dates = snapshots;
        dates.insert(dates.end(), attempts.begin(), attempts.end());
    }
};

const History& history() {
    static const History made;
    return made;
}

double buildEntries() {
    return seconds([] {
        for (int repetition = 0; repetition < repetitions; ++repetition) {
            const auto health = BackupHealth::analyze(history().destination, history().now);
            const auto entries = timelineEntries(history().destination, health, history().manifest);
            if (entries.size() < backups || health.gaps.empty() || health.suspectedFailedAttempts.empty())
                throw std::runtime_error("The history isn't what it was made to be.");
            keep(entries.data());
        }
    });
}

double sortDates() {
    return seconds([] {
        for (int repetition = 0; repetition < repetitions; ++repetition) {
            auto dates = history().dates;
            std::ranges::sort(dates);
            keep(dates.data());
        }
    });
}

const bool added = add({.name = "timeline-entries",
                        .work = "health and timeline entries of 3,000 backups and 3,000 attempts",
                        .reference = "sorting the same dates",
                        .unit = "s",
                        .ratio = Ratio::cost,
                        .must = 20,
                        .aim = 8,
                        .prepare = {},
                        .measure = buildEntries,
                        .measureReference = sortDates});

} // namespace

} // namespace tallyglass::bench
