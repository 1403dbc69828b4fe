#include "HostTools/Machine/Exclusions.h"

#include "HostTools/Machine/HostPreferences.h"
#include "HostTools/Machine/PlistDocument.h"
#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"

#include <algorithm>
#include <filesystem>

namespace tallyglass {

namespace fs = std::filesystem;

ExclusionRules::ExclusionRules(const MachinePaths& machine, const HostPreferences& preferences)
    : m_paths{"/dev", "/proc", "/run", "/sys", "/tmp", "/var/tmp", machine.backups().string()} {
    for (const HostDestination& destination : preferences.destinations) {
        m_paths.push_back(machine.mountPoint(destination.name));
        std::error_code missing;
        if (const auto folder = fs::canonical(machine.backups(destination.uuid), missing); !missing)
            m_paths.push_back(folder);
    }
    // If a machine's sources are in its root, that is the backed-up computer; otherwise the root isn't part
    // of the user's files.
    m_paths.push_back(machine.root());
    // A source in such a folder is intended by the user.
    std::erase_if(m_paths, [&](const std::string& path) {
        return std::ranges::any_of(preferences.sources,
                                   [&](const std::string& source) { return isWithin(source, path); });
    });
    m_paths.insert(m_paths.end(), preferences.skipPaths.begin(), preferences.skipPaths.end());
    m_paths.insert(m_paths.end(), preferences.excludedPaths.begin(), preferences.excludedPaths.end());
    std::ranges::sort(m_paths);
}

bool ExclusionRules::excludesItself(const std::string& path) const {
    return std::ranges::binary_search(m_paths, path) || ExclusionMarker::isOn(path);
}

bool ExclusionRules::excludes(const std::string& path) const {
    for (fs::path item = path; item.has_relative_path(); item = item.parent_path())
        if (excludesItself(item))
            return true;
    return false;
}

bool ExclusionMarker::isOn(const std::string& path) {
    return hasExtendedAttribute(path, attribute);
}

void ExclusionMarker::put(const std::string& path) {
    setExtendedAttribute(path, attribute, PlistDocument::string("com.apple.backupd").binary());
}

void ExclusionMarker::remove(const std::string& path) {
    removeExtendedAttribute(path, attribute);
}

} // namespace tallyglass
