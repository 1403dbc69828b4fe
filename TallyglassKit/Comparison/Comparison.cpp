#include "TallyglassKit/Comparison/Comparison.h"

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Platform/Text/ByteCount.h"

#include <limits>
#include <utility>

namespace tallyglass {

namespace {

constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

std::int64_t sum(std::int64_t left, std::int64_t right) {
    std::int64_t result = 0;
    if (__builtin_add_overflow(left, right, &result))
        return right < 0 ? least : most;
    return result;
}

std::int64_t negated(std::int64_t value) {
    return value == least ? most : -value;
}

} // namespace

Comparison::Comparison(std::string from, std::string to, std::optional<Date> newFromDate,
                       std::optional<Date> newToDate, std::int64_t newDepth, const std::string& optionsKey,
                       Date newStartedAt)
    : id(makeID(from, to, optionsKey)), fromPath(std::move(from)), toPath(std::move(to)),
      fromDate(newFromDate), toDate(newToDate), depth(newDepth), startedAt(newStartedAt) {}

std::string Comparison::makeID(const std::string& fromPath, const std::string& toPath,
                               const std::string& optionsKey) {
    return fromPath + "|" + toPath + "|" + optionsKey;
}

void Comparison::count(const ChangeRecord& change) {
    switch (change.kind) {
    case ChangeKind::added:
        ++addedCount;
        bytesAdded = sum(bytesAdded, change.size.value_or(0));
        break;
    case ChangeKind::removed:
        ++removedCount;
        bytesRemoved = sum(bytesRemoved, change.size.value_or(0));
        break;
    case ChangeKind::modified:
        ++modifiedCount;
        if (const auto delta = change.sizeDelta.value_or(0); delta < 0)
            bytesRemoved = sum(bytesRemoved, negated(delta));
        else
            bytesAdded = sum(bytesAdded, delta);
        break;
    }
}

std::int64_t Comparison::netBytes() const {
    std::int64_t result = 0;
    if (__builtin_sub_overflow(bytesAdded, bytesRemoved, &result))
        return bytesRemoved > 0 ? least : most;
    return result;
}

std::string Comparison::netBytesFormatted() const {
    const auto net = netBytes();
    const std::string sign = net > 0 ? "+" : net < 0 ? "\u2212" : ""; // the minus sign, as wide as the plus
    return sign + formatByteCount(net < 0 ? negated(net) : net);
}

} // namespace tallyglass
