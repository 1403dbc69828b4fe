// One changed path of a comparison: a row of the diff cache's table "fileChange". A value; copies share the
// identifier of their comparison and the text of their differences, so that a million of them fit in memory.

#pragma once

#include "TallyglassKit/Comparison/ChangeKind.h"
#include "TallyglassKit/Platform/Text/SharedText.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

struct ChangeRecord {
    std::optional<std::int64_t> id;        ///< row identifier; absent until the store has it
    SharedText comparisonID;               ///< Comparison::id of the comparison it belongs to
    std::string path;                      ///< with the snapshot's root stripped
    std::optional<SharedText> differences; ///< names of the properties that differ, joined with ","
    std::optional<std::int64_t> size;      ///< bytes in the newer snapshot, for removals in the older one
    std::optional<std::int64_t> sizeDelta; ///< signed change in bytes
    ChangeKind kind = ChangeKind::added;
    bool isDirectory = false;

    ChangeRecord() = default;
    ChangeRecord(std::optional<std::int64_t> id, SharedText comparisonID, std::string path, ChangeKind kind,
                 bool isDirectory, std::optional<std::int64_t> size, std::optional<std::int64_t> sizeDelta,
                 const std::optional<std::vector<std::string>>& differences);

    /// `path` without its last component, as a view into `path`. "/a/b" gives "/a", "/a" and "/" give "/",
    /// and a name without a slash gives the empty text. Trailing slashes are ignored.
    [[nodiscard]] std::string_view parentPath() const;

    /// The last component of `path`, as a view into it. "/" for the root.
    [[nodiscard]] std::string_view fileName() const;

    /// `differences` split at its commas, without empty pieces.
    [[nodiscard]] std::vector<std::string> differenceList() const;

    /// False if only metadata changed: for a modified path whose differences don't include its size, data or
    /// contents.
    [[nodiscard]] bool isContentChange() const;

    friend bool operator==(const ChangeRecord&, const ChangeRecord&) = default;
};

/// The rule of ChangeRecord::parentPath for any path: a view into `path`.
[[nodiscard]] std::string_view parentPath(std::string_view path);

/// The list in the format of `ChangeRecord::differences`.
[[nodiscard]] std::string joinedDifferences(const std::vector<std::string>& differences);

} // namespace tallyglass
