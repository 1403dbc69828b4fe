// Copies of items and whole trees that appear at their destination complete or not at all: a copy is made
// beside the destination, under a hidden name that begins with ".tallyglass-copy-", and takes the
// destination's name in one step when it is complete.
//
// Any thread. Failures are FileErrors with the path of the item that failed.

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>

namespace tallyglass {

struct CopyProgress {
    std::int64_t items = 0;                      ///< copied so far, folders included
    std::int64_t bytes = 0;                      ///< of their contents, without holes
    std::optional<std::int64_t> totalBytes = {}; ///< for a file; a folder would have to be walked twice

    friend bool operator==(const CopyProgress&, const CopyProgress&) = default;
};

/// Called on the copying thread at the beginning, some ten times a second, and when all is copied.
using OnCopyProgress = std::function<void(const CopyProgress&)>;

/// What happens to an item that is at the destination already.
enum class ExistingItem {
    keep,    ///< the copy fails with EEXIST
    replace, ///< the complete copy takes its place, and it is removed
};

/// Copies the item recursively: contents with their holes, permissions, extended attributes, times, links as
/// links, pipes and sockets without contents, and owners where that is permitted. Hard links become separate
/// files. Devices fail with ENOTSUP.
///
/// Requires: the folder of `destination` exists. A copy that fails or is stopped leaves the destination as it
/// was and nothing beside it. One that is killed does the same but for its hidden beginning, which the next
/// copy into that folder removes. What replaces something is on the disk before it does, so that this also
/// holds for a loss of power; a new item is written when the system sees fit.
///
/// Where the file system can't exchange two items, a folder that is replaced is renamed to
/// ".tallyglass-previous-..." first, and renamed back if the second step fails.
///
/// Fails with EINVAL if one of the two is the other or lies in it, whatever links lead there.
void copyItem(const std::string& source, const std::string& destination,
              ExistingItem existing = ExistingItem::keep, const OnCopyProgress& progress = {},
              const std::stop_token& stop = {});

} // namespace tallyglass
