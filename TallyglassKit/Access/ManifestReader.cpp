#include "TallyglassKit/Access/ManifestReader.h"

#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"
#include "TallyglassKit/Platform/Text/Text.h"

#include <exception>

namespace tallyglass {

namespace {

std::optional<ByteBuffer> readIfPossible(const std::string& file, std::stop_token stop) {
    try {
        return readFile(file, std::move(stop), PropertyList::mostBytes);
    } catch (const FileError& error) {
        if (error.code() == EFBIG) // readable, but not valid
            throw BackupManifestError::unreadable(error.errorDescription());
        return std::nullopt;
    }
}

ByteBuffer readManifest(const std::string& file, std::stop_token stop) {
    try {
        return readFile(file, std::move(stop), PropertyList::mostBytes);
    } catch (const FileError& error) {
        throw BackupManifestError::unreadable(error.errorDescription());
    }
}

} // namespace

ManifestReader::ManifestReader(TMUtilRunner runner, const SystemPaths& paths)
    : m_runner(std::move(runner)), m_exportURL(paths.path(exportPath)) {}

std::vector<BackupManifestEntry> ManifestReader::read(std::stop_token stop) const {
    if (const auto exported = readIfPossible(m_exportURL, stop))
        return BackupManifest::parse(*exported);

    const auto directory = machineDirectory(stop);
    if (stop.stop_requested())
        throw Cancelled();
    if (!directory)
        throw BackupManifestError::machineDirectoryUnavailable();
    return BackupManifest::parse(
        readManifest(*directory + "/" + std::string(BackupManifest::fileName), stop));
}

std::vector<BackupManifestEntry> ManifestReader::readExport(std::stop_token stop) const {
    return BackupManifest::parse(readFile(m_exportURL, std::move(stop), PropertyList::mostBytes));
}

std::optional<std::string> ManifestReader::machineDirectory(std::stop_token stop) const {
    try {
        const std::string output = m_runner.run({"machinedirectory"}, std::move(stop)).stdoutText();
        const std::string_view directory = trimmed(output);
        return directory.empty() ? std::nullopt : std::optional(std::string(directory));
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

bool ManifestReader::isHelperInstalled() const {
    return openStatus(m_exportURL) == 0;
}

} // namespace tallyglass
