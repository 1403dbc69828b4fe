// A path inside a backup, split into the backup's root, the backed-up volume, and the path on that volume.
// The root's last component contains when the backup was made, in local time.
//
// A value; its static operations depend on the machine's time zone only. Any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tallyglass {

struct BackupPath {
    static constexpr std::string_view suffix = ".backup";
    static constexpr std::string_view mountPrefix = "/Volumes/.timemachine/";

    std::string root;                  // exactly as passed to split()
    std::optional<std::string> volume; // the first component under the root
    std::string logicalPath;           // the rest with a leading "/", or empty
    std::optional<Date> timestamp;     // parsed from the root's last component

    /// The same parts as views, for callers with very many paths.
    struct View {
        std::string_view root;
        std::optional<std::string_view> volume;
        std::string_view logicalPath;
    };

    /// Absent unless `root` is a prefix of `path`, not necessarily at a component boundary.
    [[nodiscard]] static std::optional<BackupPath> split(std::string_view path, std::string_view root);

    /// Splits at the longest of the roots that are a prefix of `path`; absent without one.
    [[nodiscard]] static std::optional<BackupPath> split(std::string_view path,
                                                         std::span<const std::string> roots);

    /// Splits at the root of the backup that `path` names or lies in, told by the stamps of its folders;
    /// absent for a path outside of backups.
    [[nodiscard]] static std::optional<BackupPath> containing(std::string_view path);

    /// Like split(), without copies and without parsing the stamp. The result must not outlive its arguments.
    [[nodiscard]] static std::optional<View> splitView(std::string_view path, std::string_view root);
    [[nodiscard]] static std::optional<View> splitView(std::string_view path,
                                                       std::span<const std::string> roots);

    /// The date in a root's last component; absent unless that is a stamp and the suffix.
    [[nodiscard]] static std::optional<Date> timestampOfRoot(std::string_view root);

    /// The root at which the system mounts a backup, for when the listing can't supply it. A system path, to
    /// be mapped by SystemPaths::path().
    [[nodiscard]] static std::string reconstructRoot(std::string_view destinationUUID, Date completionDate);

    /// Whether `path` names, by its text, a backup or something in it, or one of the folders that the system
    /// keeps backups in: a component is a stamp with the suffix, or "Backups.backupdb", or the path begins
    /// with the mount prefix under any root.
    [[nodiscard]] static bool isInBackup(std::string_view path);

    /// Converts a date to a stamp "yyyy-MM-dd-HHmmss", truncated to whole seconds, and a whole, valid stamp
    /// to a date.
    [[nodiscard]] static std::string stamp(Date date);
    [[nodiscard]] static std::optional<Date> dateOfStamp(std::string_view stamp);

    friend bool operator==(const BackupPath&, const BackupPath&) = default;
};

} // namespace tallyglass
