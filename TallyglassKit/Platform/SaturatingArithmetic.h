// Sums of byte counts from outside, which may be any integers: a result that would overflow is the nearest
// integer. Any thread.

#pragma once

#include <cstdint>
#include <limits>

namespace tallyglass {

[[nodiscard]] constexpr std::int64_t saturatingSum(std::int64_t left, std::int64_t right) {
    using Limits = std::numeric_limits<std::int64_t>;
    std::int64_t result = 0;
    if (__builtin_add_overflow(left, right, &result))
        return right < 0 ? Limits::min() : Limits::max();
    return result;
}

[[nodiscard]] constexpr std::int64_t saturatingDifference(std::int64_t left, std::int64_t right) {
    using Limits = std::numeric_limits<std::int64_t>;
    std::int64_t result = 0;
    if (__builtin_sub_overflow(left, right, &result))
        return right > 0 ? Limits::min() : Limits::max();
    return result;
}

[[nodiscard]] constexpr std::int64_t saturatingNegation(std::int64_t value) {
    return saturatingDifference(0, value);
}

} // namespace tallyglass
