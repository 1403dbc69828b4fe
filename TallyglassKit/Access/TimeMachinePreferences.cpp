#include "TallyglassKit/Access/TimeMachinePreferences.h"

#include "TallyglassKit/Platform/PreferenceDomain.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"
#include "TallyglassKit/Platform/Text/NumberConversion.h"
#include "TallyglassKit/Platform/Text/Text.h"

#include <cmath>
#include <span>
#include <utility>
#include <vector>

namespace tallyglass {

namespace {

using Value = std::optional<PropertyListValue>;
using Values = std::span<const PropertyListValue>;

std::optional<std::string> text(const Value& value) {
    const auto found = value ? value->text() : std::nullopt;
    return found ? std::optional(std::string(*found)) : std::nullopt;
}

std::optional<Date> date(const Value& value) {
    const auto found = value ? value->date() : std::nullopt;
    return found && std::isfinite(secondsSince1970(*found)) ? found : std::nullopt;
}

std::optional<std::int64_t> exactInteger(const Value& value) {
    return value ? value->exactInteger() : std::nullopt;
}

// The converted elements of an array; empty if there is no array or an element can't be converted.
template <typename Convert>
auto list(std::optional<Values> values, Convert convert) {
    std::vector<typename std::invoke_result_t<Convert, const PropertyListValue&>::value_type> converted;
    if (values)
        converted.reserve(values->size());
    for (const PropertyListValue& value : values.value_or(Values())) {
        auto element = convert(value);
        if (!element)
            return decltype(converted)();
        converted.push_back(std::move(*element));
    }
    return converted;
}

std::optional<Values> array(const Value& value) {
    return value ? value->array() : std::nullopt;
}

// AscendingDates sorts them and omits those that aren't finite.
AscendingDates dates(const Value& value) {
    return list(array(value), [](const PropertyListValue& element) { return element.date(); });
}

std::optional<bool> isEncrypted(const Value& state) {
    constexpr std::string_view encrypted = "encrypted";
    const auto word = state ? state->text() : std::nullopt;
    if (!word)
        return std::nullopt;
    return word->size() == encrypted.size() && containsIgnoringCase(*word, encrypted);
}

std::optional<double> interval(const Value& value) {
    if (!value)
        return std::nullopt;
    const auto word = value->text();
    const auto seconds = word ? doubleOfText(*word) : value->number();
    return seconds && std::isfinite(*seconds) ? seconds : std::nullopt;
}

std::optional<std::int64_t> resultCode(const Value& value) {
    if (!value)
        return std::nullopt;
    const auto word = value->text();
    return word ? integerOfText(*word) : value->truncatedInteger();
}

std::optional<TMDestination> destination(const PropertyListValue& entry) {
    auto id = text(entry.find("DestinationID"));
    if (!id)
        return std::nullopt;
    const auto uuids =
        list(array(entry.find("DestinationUUIDs")), [](const Value& uuid) { return text(uuid); });
    auto networkURL = text(entry.find("NetworkURL"));
    const auto kind = networkURL ? TMDestination::Kind::network : TMDestination::Kind::local;
    return TMDestination{
        .id = std::move(*id),
        .destinationUUID = uuids.empty() ? std::nullopt : std::optional(uuids.front()),
        .volumeName = text(entry.find("LastKnownVolumeName")),
        .networkURL = std::move(networkURL),
        .kind = kind,
        .bytesUsed = exactInteger(entry.find("BytesUsed")),
        .bytesAvailable = exactInteger(entry.find("BytesAvailable")),
        .isEncrypted = isEncrypted(entry.find("LastKnownEncryptionState")),
        .filesystemTypeName = text(entry.find("FilesystemTypeName")),
        .consistencyScanDate = date(entry.find("ConsistencyScanDate")),
        .snapshotDates = dates(entry.find("SnapshotDates")),
        .attemptDates = dates(entry.find("AttemptDates")),
        .lastResult = resultCode(entry.find("RESULT")),
    };
}

} // namespace

std::optional<TMSettings> TimeMachinePreferences::read(const SystemPaths& paths) const {
    const auto domain = PreferenceDomain::open(suiteName, paths);
    if (!domain)
        return std::nullopt;

    TMSettings settings;
    const auto entries = list(domain->array("Destinations"), [](const PropertyListValue& entry) {
        return entry.isDictionary() ? Value(entry) : std::nullopt;
    });
    for (const PropertyListValue& entry : entries)
        if (auto found = destination(entry))
            settings.destinations.push_back(std::move(*found));
    if (settings.destinations.empty() && !domain->object("AutoBackup"))
        return std::nullopt;

    settings.autoBackupEnabled = domain->boolean("AutoBackup");
    settings.autoBackupInterval = interval(domain->object("AutoBackupInterval"));
    settings.requiresACPower = domain->boolean("RequiresACPower");
    settings.skipPaths = list(domain->array("SkipPaths"), [](const Value& path) { return text(path); });
    return settings;
}

} // namespace tallyglass
