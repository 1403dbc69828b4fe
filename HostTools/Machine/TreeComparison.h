// Compares two folder trees. A file that both trees share by a hard link, like an unchanged file in two
// backups, is recognised from the folders' listings alone.
//
// Order: each folder's items by the bytes of their names, a folder's contents directly after it. Memory
// depends on the largest folder and the depth, not on the number of differences; at most a few hundred
// descriptors are open, even for deep trees. Any thread.

#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class ExclusionRules;

/// The properties to compare, each under its option letter. Copies don't preserve flags and creation times on
/// this platform; requesting them is allowed and finds no difference.
struct ComparedProperties {
    static constexpr std::string_view all = "@cdefgmstu";
    static constexpr std::string_view standard = "@gmstu";

    std::string letters = std::string(standard);

    [[nodiscard]] bool has(char letter) const { return letters.find(letter) != std::string::npos; }
};

struct ComparisonOptions {
    ComparedProperties properties;
    /// The number of levels below the operands that are reported. With a limit, a folder with a difference
    /// anywhere below is reported as different in its "contents", so that no change is hidden.
    std::optional<std::int64_t> depth;
    std::vector<std::string> ignoredNames;
};

struct TreeDifference {
    std::string_view path;    ///< below the operands: "/a/b", or empty for the operands themselves
    const struct stat* older; ///< null for an addition
    const struct stat* newer; ///< null for a removal
    std::span<const std::string_view> properties; ///< names of the differing properties, if both exist
};

/// Receives the results during the walk. Views are valid for the call only. An exception ends the walk.
class ComparisonSink {
public:
    virtual ~ComparisonSink() = default;
    virtual void differs(const TreeDifference& difference) = 0;
    /// A folder or file couldn't be read; the walk continues without it.
    virtual void unreadable(const std::string& path, int errorNumber) = 0;
    /// `path` in the newer tree is excluded by its rules, so both sides are ignored.
    virtual void excluded(std::string_view path) { static_cast<void>(path); }
    /// The walk enters a reported folder; null for a missing side.
    virtual void entered(std::string_view path, const struct stat* older, const struct stat* newer) {
        static_cast<void>(path), static_cast<void>(older), static_cast<void>(newer);
    }
};

/// The trees to compare. With an empty path, everything in the other is added or removed.
struct ComparisonOperands {
    std::string older;
    std::string newer;
    /// Exclusion rules for the newer side, or null.
    const ExclusionRules* exclusions = nullptr;
    /// The included paths below the operands, such as "/home/ann"; if empty, all. In their ancestors only the
    /// way to them is included.
    std::vector<std::string> within = {};
    /// The level of the operands below the folder that the depth is counted from.
    std::int64_t level = 0;
    /// Doesn't enter other file systems that are mounted in the newer tree.
    bool oneFileSystem = false;
};

/// Returns the number of files without a difference. Throws Error if an operand can't be opened, and what
/// `sink` throws.
std::int64_t compareTrees(const ComparisonOperands& operands, const ComparisonOptions& options,
                          ComparisonSink& sink);

} // namespace tallyglass
