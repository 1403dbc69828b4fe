// The items that the user of a made-up machine watches on the exclusions screen, and what its tmutil says of
// them. Items whose own marker can be set are real files in the machine's temporary folder; the others exist
// by name only.
//
// Immutable; any thread.

#pragma once

#include "TallyglassKit/Access/TMUtilResult.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class FixtureFiles;

class FixtureExclusions {
public:
    /// Writes the items and the list of watched paths of the session with this name. `skipPaths` are those of
    /// its settings. Throws std::exception.
    FixtureExclusions(std::string_view name, const FixtureFiles& files, std::vector<std::string> skipPaths);

    /// tmutil's "isexcluded", "addexclusion" and "removeexclusion". Requires: `verb` is one of them.
    [[nodiscard]] TMUtilResult run(std::string_view verb, std::span<const std::string> paths) const;

private:
    [[nodiscard]] std::string_view wordFor(const std::string& path) const;

    bool m_changesFail;
    std::vector<std::string> m_excluded; ///< with all that is in them
};

} // namespace tallyglass
