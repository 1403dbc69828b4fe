#include "HostTools/Machine/SampleSchedule.h"

#include <algorithm>
#include <array>

namespace tallyglass {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr double hour = 3600;
constexpr double day = 24 * hour;

/// Where each of the daily backups stands in their row, for what happens on the way.
struct DailyRow {
    std::size_t begin = 0;
    std::size_t count = 0;
};

/// Seconds between the starts of consecutive backups. Transitions stay below two and a half times the
/// intervals before, so that only the gap is unusual.
std::vector<double> intervals(std::size_t count, DailyRow& daily) {
    std::vector<double> result;
    if (count >= 20) {
        result.assign(count / 4, hour);
        for (const double step : {2.0, 4.8, 11.5})
            result.insert(result.end(), 3, step * hour);
    }
    daily = {.begin = result.size(), .count = count - result.size()};
    for (std::size_t index = 0; index < daily.count; ++index)
        result.push_back(index % 9 == 7 ? 2 * day : day);
    if (daily.count >= 5)
        result[daily.begin + daily.count * 3 / 5] = daily.count >= 20 ? 14 * day : 5 * day;
    return result;
}

} // namespace

std::vector<SampleAttempt> sampleSchedule(int backups, Date now, SeededRandom& random) {
    DailyRow daily;
    auto steps = intervals(static_cast<std::size_t>(std::max(backups, 1)) - 1, daily);
    std::vector<SampleAttempt> attempts{{.start = now - Seconds(55 * 60)}};
    for (auto step = steps.rbegin(); step != steps.rend(); ++step)
        attempts.push_back({.start = attempts.back().start - Seconds(*step + random.between(-120, 120))});
    std::ranges::reverse(attempts);

    // Each failure is some hours before a successful daily backup.
    constexpr std::array failures{std::int64_t{27}, std::int64_t{11}, std::int64_t{18}};
    const std::size_t failureCount = std::min(failures.size(), daily.count / 4);
    for (std::size_t index = 0; index < failureCount; ++index) {
        const std::size_t backup = daily.begin + 1 + daily.count * (2 * index + 1) / (2 * failures.size());
        attempts.push_back({.start = attempts[backup].start - Seconds(random.between(4, 7) * hour),
                            .result = failures[index]});
    }
    constexpr std::int64_t onBatteryPower = 100;
    attempts.push_back({.start = now - Seconds(20 * 60), .result = onBatteryPower});
    std::ranges::sort(attempts, {}, &SampleAttempt::start);
    return attempts;
}

} // namespace tallyglass
