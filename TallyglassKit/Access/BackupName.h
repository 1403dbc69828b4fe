// Names for backups that a person can type and read: the stamp in a backup's path instead of the path.
// Static operations only; pure; any thread.

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tallyglass {

struct BackupName {
    /// The last stamp in `path` and what follows it, such as "2026-11-23-110917/Data/Users"; the whole path
    /// if there is no stamp in it.
    [[nodiscard]] static std::string of(std::string_view path);

    /// The index of the backup that `name` means, of these roots, oldest first. A name is a root; its stamp,
    /// or a beginning of that which no other has, such as "2026-11-23"; "latest", "latest~3" for the third
    /// before it, or "oldest".
    ///
    /// Throws Error with what was meant, perhaps: the nearest names for an unknown one, all that it could be
    /// for an ambiguous one.
    [[nodiscard]] static std::size_t find(std::string_view name, std::span<const std::string> roots);
};

} // namespace tallyglass
