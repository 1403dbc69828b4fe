// The sliding window of readings behind a backup's transfer rate: the mean over up to half a minute.
//
// A value. The caller passes the time.

#pragma once

#include "TallyglassKit/Access/BackupRate.h"
#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <deque>
#include <optional>

namespace tallyglass {

struct BackupStatus;

class RateWindow {
public:
    static constexpr double length = 30;      ///< seconds
    static constexpr double shortestSpan = 1; ///< seconds that a new rate must span

    /// Adds the status read at `now`. The rate is absent until a running backup has copied a byte and two
    /// readings are in the window.
    void take(const BackupStatus& status, Date now);

    [[nodiscard]] const std::optional<BackupRate>& rate() const { return m_rate; }

private:
    struct Sample {
        Date date;
        std::int64_t bytes;
        std::int64_t files;
    };

    std::deque<Sample> m_samples;
    std::optional<BackupRate> m_rate;
};

} // namespace tallyglass
