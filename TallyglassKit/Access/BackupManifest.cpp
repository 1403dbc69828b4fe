#include "TallyglassKit/Access/BackupManifest.h"

#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"

#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

using Value = std::optional<PropertyListValue>;

std::optional<Date> finiteDate(const Value& value) {
    const auto date = value ? value->date() : std::nullopt;
    return date && std::isfinite(secondsSince1970(*date)) ? date : std::nullopt;
}

Value find(const Value& dictionary, std::string_view key) {
    return dictionary ? dictionary->find(key) : std::nullopt;
}

std::optional<std::int64_t> number(const Value& value) {
    return value ? value->truncatedInteger() : std::nullopt;
}

PropertyList read(std::string_view data) {
    try {
        return PropertyList::parse(data);
    } catch (const PropertyListError& error) {
        throw BackupManifestError::unreadable(error.errorDescription());
    }
}

BackupManifestEntry entry(Date completion, const PropertyListValue& backup) {
    const Value stats = backup.find("stats");
    const Value changed = find(stats, "changed");
    const Value propagated = find(stats, "propagated");
    return {
        .completionDate = completion,
        .startDate = finiteDate(backup.find("startDate")),
        .changedCount = number(find(changed, "count")).value_or(0),
        .changedLogicalSize = number(find(changed, "logicalSize")).value_or(0),
        .changedPhysicalSize = number(find(changed, "physicalSize")).value_or(0),
        .uniqueSize = number(backup.find("uniqueSize")),
        .xid = number(backup.find("xid")),
        // Items propagated from a previous backup imply that there is one.
        .isInitialBackup =
            propagated && propagated->isDictionary() && number(find(propagated, "count")).value_or(0) == 0,
    };
}

} // namespace

std::optional<double> BackupManifestEntry::duration() const {
    return startDate ? std::optional((completionDate - *startDate).count()) : std::nullopt;
}

BackupManifestError BackupManifestError::unreadable(std::string_view text) {
    return {Case::unreadable, std::string("Could not read the backup manifest: ").append(text)};
}

BackupManifestError BackupManifestError::machineDirectoryUnavailable() {
    return {Case::machineDirectoryUnavailable, "Could not locate the backup's machine directory."};
}

std::vector<BackupManifestEntry> BackupManifest::parse(std::string_view data) {
    const PropertyList list = read(data);
    const auto elements = list.root().array();
    if (!elements)
        throw BackupManifestError::unreadable("Unexpected manifest shape.");

    std::vector<BackupManifestEntry> entries;
    entries.reserve(elements->size() / 2);
    for (std::size_t i = 0; i + 1 < elements->size(); i += 2) {
        const auto completion = finiteDate((*elements)[i]);
        const PropertyListValue& backup = (*elements)[i + 1];
        if (completion && backup.isDictionary())
            entries.push_back(entry(*completion, backup));
    }
    std::ranges::stable_sort(entries, {}, &BackupManifestEntry::completionDate);
    return entries;
}

} // namespace tallyglass
