#include "HostTools/Machine/HostPreferences.h"

#include "HostTools/Machine/FileOperations.h"
#include "HostTools/Machine/PlistDocument.h"
#include "HostTools/Machine/Snapshots.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fmt/core.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <cerrno>

namespace tallyglass {

namespace {

PlistDocument readDocument(const MachinePaths& machine) {
    const auto bytes = readWholeFile(machine.preferences());
    if (!bytes)
        return PlistDocument::dictionary();
    auto document = PlistDocument::parse(*bytes);
    if (!document || !document->isDictionary())
        throw Error(fmt::format("{} is no preference file.", machine.preferences().string()));
    return std::move(*document);
}

HostDestination destinationOf(const PlistNode& node) {
    const auto uuids = node.texts("DestinationUUIDs");
    return {.id = node.text("DestinationID").value_or(""),
            .uuid = uuids.empty() ? "" : uuids.front(),
            .name = node.text("LastKnownVolumeName").value_or(""),
            .filesystem = node.text("FilesystemTypeName").value_or(""),
            .bytesUsed = node.integer("BytesUsed").value_or(0),
            .bytesAvailable = node.integer("BytesAvailable").value_or(0),
            .quota = node.integer("Quota"),
            .result = node.integer("RESULT"),
            .snapshotDates = node.dates("SnapshotDates"),
            .attemptDates = node.dates("AttemptDates")};
}

HostPreferences preferencesOf(const PlistNode& root) {
    HostPreferences preferences{.sources = root.texts("IncludeByPath"),
                                .volumeName = root.text("SourceVolumeName").value_or("Data"),
                                .skipPaths = root.texts("SkipPaths"),
                                .excludedPaths = root.texts("ExcludeByPath"),
                                .currentDestinationID = root.text("LastDestinationID").value_or(""),
                                .destinations = {},
                                .nextResult = root.integer("NextResult"),
                                .copyLimit = root.integer("CopyLimit")};
    for (const PlistNode& node : root.dictionaries("Destinations"))
        preferences.destinations.push_back(destinationOf(node));
    return preferences;
}

void setOptional(const PlistNode& node, const std::string& key, const std::optional<std::int64_t>& value) {
    if (value)
        node.set(key, *value);
    else
        node.remove(key);
}

void setDates(const PlistNode& node, const std::string& key, const std::vector<Date>& dates) {
    if (dates.empty())
        node.remove(key); // missing rather than empty without backups
    else
        node.set(key, dates);
}

void store(const HostDestination& destination, const PlistNode& node) {
    node.set("DestinationID", destination.id);
    node.set("DestinationUUIDs", std::vector{destination.uuid});
    node.set("LastKnownVolumeName", destination.name);
    node.set("LastKnownEncryptionState", "NotEncrypted");
    node.set("FilesystemTypeName", destination.filesystem);
    node.set("BytesUsed", destination.bytesUsed);
    node.set("BytesAvailable", destination.bytesAvailable);
    setOptional(node, "Quota", destination.quota);
    setOptional(node, "RESULT", destination.result);
    setDates(node, "SnapshotDates", destination.snapshotDates);
    setDates(node, "AttemptDates", destination.attemptDates);
}

void store(const HostPreferences& preferences, const PlistNode& root) {
    if (!root.at("AutoBackup").exists()) {
        root.set("PreferencesVersion", std::int64_t{6});
        root.set("AutoBackup", true);
        root.set("AutoBackupInterval", std::int64_t{3600});
        root.set("RequiresACPower", false);
    }
    root.set("IncludeByPath", preferences.sources);
    root.set("SourceVolumeName", preferences.volumeName);
    root.set("SkipPaths", preferences.skipPaths);
    root.set("ExcludeByPath", preferences.excludedPaths);
    root.set("LastDestinationID", preferences.currentDestinationID);
    setOptional(root, "NextResult", preferences.nextResult);
    setOptional(root, "CopyLimit", preferences.copyLimit);

    auto nodes = root.dictionaries("Destinations");
    const PlistNode array = nodes.empty() ? root.setArray("Destinations") : root.at("Destinations");
    for (const HostDestination& destination : preferences.destinations) {
        const auto known = std::ranges::find_if(
            nodes, [&](const PlistNode& node) { return node.text("DestinationID") == destination.id; });
        store(destination, known != nodes.end() ? *known : array.appendDictionary());
    }
}

} // namespace

void HostDestination::refresh(const std::filesystem::path& folder) {
    snapshotDates.clear();
    for (const Snapshot& snapshot : Snapshots::list(folder))
        snapshotDates.push_back(snapshot.date);
    if (!quota) {
        struct statvfs status {};
        if (statvfs(folder.c_str(), &status) != 0)
            throw FileError(errno, folder.string());
        const auto bytes = [&](auto blocks) { return static_cast<std::int64_t>(blocks * status.f_frsize); };
        bytesUsed = bytes(status.f_blocks - status.f_bfree);
        bytesAvailable = bytes(status.f_bavail);
        return;
    }
    bytesUsed = 0;
    for (const ManifestRecord& record : Snapshots::manifest(folder))
        bytesUsed += record.changedPhysicalSize;
    bytesAvailable = std::max<std::int64_t>(0, *quota - bytesUsed);
}

const HostDestination* HostPreferences::current() const {
    const auto found = std::ranges::find(destinations, currentDestinationID, &HostDestination::id);
    if (found != destinations.end())
        return &*found;
    return destinations.empty() ? nullptr : &destinations.front();
}

HostDestination* HostPreferences::destination(const std::string& id) {
    const auto found = std::ranges::find(destinations, id, &HostDestination::id);
    return found == destinations.end() ? nullptr : &*found;
}

HostPreferences HostPreferences::load(const MachinePaths& machine) {
    return preferencesOf(readDocument(machine).root());
}

HostPreferences HostPreferences::edit(const MachinePaths& machine,
                                      const std::function<void(HostPreferences&)>& change,
                                      Durability durability) {
    const auto lock = FileLock::wait(machine.runFolder() / "preferences.lock");
    const PlistDocument document = readDocument(machine);
    HostPreferences preferences = preferencesOf(document.root());
    change(preferences);
    store(preferences, document.root());
    replaceFile(machine.preferences(), document.binary(), durability);
    return preferences;
}

} // namespace tallyglass
