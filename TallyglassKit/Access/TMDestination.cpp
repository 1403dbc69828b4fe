#include "TallyglassKit/Access/TMDestination.h"

#include "TallyglassKit/Platform/Text/URLHost.h"

namespace tallyglass {

std::string TMDestination::displayName() const {
    if (volumeName && !volumeName->empty())
        return *volumeName;
    if (const auto host = networkURL ? hostOfURL(*networkURL) : std::nullopt)
        return *host;
    return "Backup Destination";
}

std::optional<std::int64_t> TMDestination::totalBytes() const {
    std::int64_t total = 0;
    if (!bytesUsed || !bytesAvailable || __builtin_add_overflow(*bytesUsed, *bytesAvailable, &total))
        return std::nullopt;
    return total;
}

std::optional<double> TMDestination::usedFraction() const {
    const auto total = totalBytes();
    if (!total || *total < 1)
        return std::nullopt;
    return static_cast<double>(*bytesUsed) / static_cast<double>(*total);
}

std::optional<Date> TMDestination::latestSnapshot() const {
    return snapshotDates.empty() ? std::nullopt : std::optional(snapshotDates.back());
}

std::string_view rawValue(TMDestination::Kind kind) {
    switch (kind) {
    case TMDestination::Kind::network:
        return "network";
    case TMDestination::Kind::local:
        return "local";
    case TMDestination::Kind::unknown:
        return "unknown";
    }
    return {};
}

template <>
std::optional<TMDestination::Kind> fromRawValue<TMDestination::Kind>(std::string_view raw) {
    using enum TMDestination::Kind;
    for (const auto kind : {network, local, unknown})
        if (raw == rawValue(kind))
            return kind;
    return std::nullopt;
}

} // namespace tallyglass
