// One path inside a backup, taken apart: the backup's root, the backed-up volume under it, and the path on
// that volume. The root's last component spells when the backup was made, as local wall-clock time.
//
// A value; its static operations are pure, but for the machine's time zone, and any thread may call them.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tallyglass {

struct BackupPath {
    static constexpr std::string_view stampFormat = "yyyy-MM-dd-HHmmss";
    static constexpr std::string_view suffix = ".backup";
    static constexpr std::string_view mountPrefix = "/Volumes/.timemachine/";

    std::string root;                  // exactly as it was given to split()
    std::optional<std::string> volume; // the first component under the root
    std::string logicalPath;           // the rest with a leading "/", or empty
    std::optional<Date> timestamp;     // what the root's last component spells

    /// The same parts as views of the path and root that were split, for callers with very many paths.
    struct View {
        std::string_view root;
        std::optional<std::string_view> volume;
        std::string_view logicalPath;
    };

    /// Absent unless `path` begins with `root`, as plain text: a component boundary isn't asked for.
    [[nodiscard]] static std::optional<BackupPath> split(std::string_view path, std::string_view root);

    /// Splits at the longest of the roots with which `path` begins; absent without one.
    [[nodiscard]] static std::optional<BackupPath> split(std::string_view path,
                                                         std::span<const std::string> roots);

    /// As split(), without copies and without reading the stamp. The result must not outlive its arguments.
    [[nodiscard]] static std::optional<View> splitView(std::string_view path, std::string_view root);
    [[nodiscard]] static std::optional<View> splitView(std::string_view path,
                                                       std::span<const std::string> roots);

    /// The date that a root spells; absent unless its last component is a stamp and the suffix.
    [[nodiscard]] static std::optional<Date> timestampOfRoot(std::string_view root);

    /// The root at which the system mounts a backup that the listing can't supply. A system path: its place
    /// on a machine under another root is what SystemPaths::path() says.
    [[nodiscard]] static std::string reconstructRoot(std::string_view destinationUUID, Date completionDate);

    /// A date as a stamp, cut to whole seconds, and a stamp as a date. Only a whole, valid stamp is read.
    [[nodiscard]] static std::string stamp(Date date);
    [[nodiscard]] static std::optional<Date> dateOfStamp(std::string_view stamp);

    friend bool operator==(const BackupPath&, const BackupPath&) = default;
};

} // namespace tallyglass
