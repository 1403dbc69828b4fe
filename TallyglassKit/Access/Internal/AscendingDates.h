// A list of dates that is always in ascending order. Dates that aren't finite are omitted.
//
// A value; different threads may read one object at once.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <vector>

namespace tallyglass {

class AscendingDates {
public:
    AscendingDates() = default;
    AscendingDates(std::vector<Date> dates) : m_dates(std::move(dates)) { // implicit, as it only sorts
        std::erase_if(m_dates, [](Date date) { return !std::isfinite(secondsSince1970(date)); });
        std::ranges::sort(m_dates);
    }
    AscendingDates(std::initializer_list<Date> dates) : AscendingDates(std::vector<Date>(dates)) {}

    [[nodiscard]] const std::vector<Date>& values() const { return m_dates; }
    operator const std::vector<Date>&() const { return m_dates; }

    [[nodiscard]] bool empty() const { return m_dates.empty(); }
    [[nodiscard]] std::size_t size() const { return m_dates.size(); }
    [[nodiscard]] auto begin() const { return m_dates.begin(); }
    [[nodiscard]] auto end() const { return m_dates.end(); }
    /// Requires: the index is in range, or the list isn't empty.
    [[nodiscard]] Date operator[](std::size_t index) const { return m_dates[index]; }
    [[nodiscard]] Date front() const { return m_dates.front(); }
    [[nodiscard]] Date back() const { return m_dates.back(); }

    friend bool operator==(const AscendingDates&, const AscendingDates&) = default;

private:
    std::vector<Date> m_dates;
};

} // namespace tallyglass
