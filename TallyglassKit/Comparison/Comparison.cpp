#include "TallyglassKit/Comparison/Comparison.h"

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Platform/SaturatingArithmetic.h"
#include "TallyglassKit/Platform/Text/ByteCount.h"

#include <utility>

namespace tallyglass {

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
        bytesAdded = saturatingSum(bytesAdded, change.size.value_or(0));
        break;
    case ChangeKind::removed:
        ++removedCount;
        bytesRemoved = saturatingSum(bytesRemoved, change.size.value_or(0));
        break;
    case ChangeKind::modified:
        ++modifiedCount;
        if (const auto delta = change.sizeDelta.value_or(0); delta < 0)
            bytesRemoved = saturatingSum(bytesRemoved, saturatingNegation(delta));
        else
            bytesAdded = saturatingSum(bytesAdded, delta);
        break;
    }
}

std::int64_t Comparison::netBytes() const {
    return saturatingDifference(bytesAdded, bytesRemoved);
}

std::string Comparison::netBytesFormatted() const {
    const auto net = netBytes();
    const std::string sign = net > 0 ? "+" : net < 0 ? "\u2212" : ""; // the minus sign, as wide as the plus
    return sign + formatByteCount(net < 0 ? saturatingNegation(net) : net);
}

} // namespace tallyglass
