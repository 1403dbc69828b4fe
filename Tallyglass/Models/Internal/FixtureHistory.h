// The backups of a made-up machine as real folders, so that a file can be traced through them.

#pragma once

#include <string>
#include <string_view>

namespace tallyglass {

class FixtureFiles;

struct FixtureHistory {
    /// The path on the Mac that has a history.
    static constexpr std::string_view tracedPath = "/Users/alex/Documents/Letter to the landlord.pages";

    /// Makes a folder for each root of the listing, which has one in each line, with the traced file in most
    /// of them. Returns the listing of those folders. Throws std::exception.
    [[nodiscard]] static std::string write(const FixtureFiles& files, std::string_view listing);
};

} // namespace tallyglass
