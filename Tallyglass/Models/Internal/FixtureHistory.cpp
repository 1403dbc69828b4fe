#include "Tallyglass/Models/Internal/FixtureHistory.h"

#include "Tallyglass/Models/Internal/FixtureFiles.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Platform/Date.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <vector>

namespace tallyglass {

namespace {

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

/// The number of the version that the backup at this part of the history holds, or 0 where the file is
/// missing.
int versionAt(double part) {
    constexpr double starts[] = {0.1, 0.35, 0.5, 0.58, 0.8};
    if (part >= 0.28 && part < 0.35)
        return 0;
    int version = 0;
    for (const double start : starts)
        version += part >= start ? 1 : 0;
    return version;
}

void setModified(const std::filesystem::path& file, Date date) {
    const auto time = std::chrono::time_point_cast<std::chrono::system_clock::duration>(date);
    std::filesystem::last_write_time(file, std::chrono::file_clock::from_sys(time));
}

} // namespace

std::string FixtureHistory::write(const FixtureFiles& files, std::string_view listing) {
    const std::vector<std::string> roots = linesOf(listing);
    std::string result;
    std::filesystem::path previous;
    int previousVersion = 0;
    for (std::size_t index = 0; index < roots.size(); ++index) {
        const std::string root = files.paths().path(roots[index]);
        result += root + "\n";
        const std::filesystem::path file = root + "/Macintosh HD - Data" + std::string(tracedPath);
        std::filesystem::create_directories(file.parent_path());
        const int version = versionAt(static_cast<double>(index) / static_cast<double>(roots.size()));
        if (version == 0)
            continue;
        if (version == previousVersion) {
            std::filesystem::create_hard_link(previous, file);
        } else {
            files.write(file, std::string(static_cast<std::size_t>(40'000 + 23'456 * version), ' '));
            const auto made = BackupPath::timestampOfRoot(root);
            setModified(file, made.value() - std::chrono::minutes(95));
        }
        previous = file;
        previousVersion = version;
    }
    return result;
}

} // namespace tallyglass
