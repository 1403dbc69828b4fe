#include "Tallyglass/Models/Internal/FixtureFiles.h"

#include "Tallyglass/Models/Internal/FixtureMachine.h"
#include "Tallyglass/Models/Internal/FixturePropertyList.h"
#include "TallyglassKit/Access/ManifestReader.h"
#include "TallyglassKit/Platform/Error.h"

#include <fmt/format.h>

#include <cstdlib>
#include <fstream>
#include <system_error>

namespace tallyglass {

namespace {

std::string text(const std::optional<std::string>& value) {
    return value ? fixture::text(*value) : std::string();
}

std::string integer(const std::optional<std::int64_t>& value) {
    return value ? fixture::integer(*value) : std::string();
}

std::string dates(const AscendingDates& values) {
    std::vector<std::string> elements;
    for (const Date date : values)
        elements.push_back(fixture::date(date));
    return fixture::array(elements);
}

std::string destination(const TMDestination& values) {
    const std::vector<std::string> uuids{text(values.destinationUUID)};
    return fixture::dictionary({
        {"DestinationID", fixture::text(values.id)},
        {"DestinationUUIDs", fixture::array(uuids)},
        {"LastKnownVolumeName", text(values.volumeName)},
        {"NetworkURL", text(values.networkURL)},
        {"BytesUsed", integer(values.bytesUsed)},
        {"BytesAvailable", integer(values.bytesAvailable)},
        {"LastKnownEncryptionState",
         values.isEncrypted ? fixture::text(*values.isEncrypted ? "Encrypted" : "NotEncrypted") : ""},
        {"FilesystemTypeName", text(values.filesystemTypeName)},
        {"ConsistencyScanDate",
         values.consistencyScanDate ? fixture::date(*values.consistencyScanDate) : std::string()},
        {"SnapshotDates", dates(values.snapshotDates)},
        {"AttemptDates", dates(values.attemptDates)},
        {"RESULT", integer(values.lastResult)},
    });
}

std::string preferences(const TMSettings& settings) {
    std::vector<std::string> destinations;
    for (const TMDestination& values : settings.destinations)
        destinations.push_back(destination(values));
    std::vector<std::string> skipPaths;
    for (const std::string& path : settings.skipPaths)
        skipPaths.push_back(fixture::text(path));
    return fixture::propertyList(fixture::dictionary({
        {"AutoBackup", fixture::boolean(settings.autoBackupEnabled)},
        {"AutoBackupInterval", settings.autoBackupInterval
                                   ? fixture::integer(static_cast<std::int64_t>(*settings.autoBackupInterval))
                                   : std::string()},
        {"RequiresACPower", fixture::boolean(settings.requiresACPower)},
        {"SkipPaths", fixture::array(skipPaths)},
        {"Destinations", fixture::array(destinations)},
    }));
}

std::string backup(const BackupManifestEntry& entry) {
    const std::string changed = fixture::dictionary({
        {"count", fixture::integer(entry.changedCount)},
        {"logicalSize", fixture::integer(entry.changedLogicalSize)},
        {"physicalSize", fixture::integer(entry.changedPhysicalSize)},
    });
    const std::string propagated =
        fixture::dictionary({{"count", fixture::integer(entry.isInitialBackup ? 0 : 1)}});
    return fixture::dictionary({
        {"startDate", entry.startDate ? fixture::date(*entry.startDate) : std::string()},
        {"stats", fixture::dictionary({{"changed", changed}, {"propagated", propagated}})},
    });
}

std::string manifest(const std::vector<BackupManifestEntry>& entries) {
    std::vector<std::string> elements;
    for (const BackupManifestEntry& entry : entries) {
        elements.push_back(fixture::date(entry.completionDate));
        elements.push_back(backup(entry));
    }
    return fixture::propertyList(fixture::array(elements));
}

} // namespace

FixtureFiles::FixtureFiles(const FixtureMachine& machine) {
    std::string pattern = (std::filesystem::temp_directory_path() / "tallyglass-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw Error(fmt::format("There can't be a temporary folder at {}.", pattern));
    m_root = pattern;
    write(paths().path("/Library/Preferences/com.apple.TimeMachine.plist"), preferences(machine.settings));
    if (machine.manifest.empty())
        return;
    if (machine.hasHelper) {
        write(paths().path(ManifestReader::exportPath), manifest(machine.manifest));
    } else {
        m_machineDirectory = paths().path("/Volumes/Backup Disk/machine");
        write(m_machineDirectory + "/" + std::string(BackupManifest::fileName), manifest(machine.manifest));
    }
}

FixtureFiles::~FixtureFiles() {
    std::error_code ignored;
    std::filesystem::remove_all(m_root, ignored);
}

void FixtureFiles::write(const std::string& file, const std::string& contents) const {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << contents;
    if (!stream.flush())
        throw Error(fmt::format("The file \"{}\" can't be written.", file));
}

} // namespace tallyglass
