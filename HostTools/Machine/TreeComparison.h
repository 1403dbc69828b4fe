// Walks two folder trees side by side and tells what differs. A file that both trees share, hard-linked as an
// unchanged file is in two backups, is known to be the same from the folders' listings alone.
//
// Order: each folder's items by the bytes of their names, what a folder holds right after the folder. Memory
// grows with the largest folder and the depth, not with the number of differences; at most a few hundred
// descriptors are open however deep the trees are. Any thread.

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

/// The properties that are compared, each under its option letter. Flags and creation times aren't kept by
/// copies on this platform; asking for them is allowed and finds no difference.
struct ComparedProperties {
    static constexpr std::string_view all = "@cdefgmstu";
    static constexpr std::string_view standard = "@gmstu";

    std::string letters = std::string(standard);

    [[nodiscard]] bool has(char letter) const { return letters.find(letter) != std::string::npos; }
};

struct ComparisonOptions {
    ComparedProperties properties;
    /// How many levels below the operands are told. Then a folder also counts as different, in its
    /// "contents", when something in it is, told or not: the limit hides no change.
    std::optional<std::int64_t> depth;
    std::vector<std::string> ignoredNames;
};

struct TreeDifference {
    std::string_view path;    ///< below the operands: "/a/b", or empty for the operands themselves
    const struct stat* older; ///< null for what was added
    const struct stat* newer; ///< null for what was removed
    std::span<const std::string_view> properties; ///< names of what differs when both are there
};

/// What the walk tells while it goes on. The views last for the call only. An exception ends the walk.
class ComparisonSink {
public:
    virtual ~ComparisonSink() = default;
    virtual void differs(const TreeDifference& difference) = 0;
    /// A folder or file that couldn't be read; the walk goes on without it.
    virtual void unreadable(const std::string& path, int errorNumber) = 0;
    /// The newer tree has `path` but its exclusion rules leave it out, so neither side counts.
    virtual void excluded(std::string_view path) { static_cast<void>(path); }
    /// The walk enters a folder that is told; null where that side has none. The chance to look round, too.
    virtual void entered(std::string_view path, const struct stat* older, const struct stat* newer) {
        static_cast<void>(path), static_cast<void>(older), static_cast<void>(newer);
    }
};

/// What is compared. An empty path stands for nothing, so that everything in the other is added or removed.
struct ComparisonOperands {
    std::string older;
    std::string newer;
    /// Rules for the newer side; null for none.
    const ExclusionRules* exclusions = nullptr;
    /// The only paths below the operands that count, such as "/home/ann"; all without one. Of a folder on
    /// the way to one of them only that counts which leads there.
    std::vector<std::string> within = {};
    /// How many levels the operands lie below what the depth is counted from.
    std::int64_t level = 0;
    /// Doesn't enter other file systems that are mounted in the newer tree.
    bool oneFileSystem = false;
};

/// Returns how many files both trees hold with no difference. Throws Error when an operand can't be opened,
/// and whatever `sink` throws.
std::int64_t compareTrees(const ComparisonOperands& operands, const ComparisonOptions& options,
                          ComparisonSink& sink);

} // namespace tallyglass
