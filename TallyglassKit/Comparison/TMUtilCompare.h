// Runs `tmutil compare -X` and decodes its output to records. Static operations only; any thread.

#pragma once

#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Platform/Text/SharedText.h"

#include <cstdint>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

struct CompareOptions;

struct TMUtilCompare {
    struct Result {
        std::vector<ChangeRecord> changes; ///< in the order of the output, without identifiers
        std::optional<std::int64_t> addedSize;
        std::optional<std::int64_t> changedSize;
        std::optional<std::int64_t> removedSize;
        std::int64_t unrecognizedCount = 0; ///< changes that named no item

        friend bool operator==(const Result&, const Result&) = default;
    };

    /// Decodes standard output, a property list in any form. XML, which tmutil prints, is read in one pass
    /// without a tree, to save time and memory.
    ///
    /// The longest of `roots` that is a prefix of a path is stripped from it with the volume after it, unless
    /// nothing would be left. Every record gets `comparisonID`.
    ///
    /// A value of the wrong type is absent, as is a size or difference that doesn't fit in 64 bits. Throws
    /// TMUtilError (malformedOutput) if the data can't be parsed, its root isn't a dictionary, or an item has
    /// no path.
    [[nodiscard]] static Result decode(std::string_view data, std::span<const std::string> roots,
                                       const SharedText& comparisonID);

    // Each runs tmutil and decodes its output. They throw what TMUtilRunner::run and decode throw. `onBytes`
    // may be empty.

    /// Compares two snapshots, whose roots are stripped from the paths.
    static Result compare(const TMUtilRunner& runner, const std::string& from, const std::string& to,
                          const CompareOptions& options, const SharedText& comparisonID,
                          const TMUtilRunner::OnBytes& onBytes, std::stop_token stop = {});

    /// Compares two folders inside snapshots. `stripRoots` are stripped instead of the folders, so that the
    /// paths are relative to the volume.
    static Result compare(const TMUtilRunner& runner, const std::string& fromOperand,
                          const std::string& toOperand, std::span<const std::string> stripRoots,
                          const CompareOptions& options, const SharedText& comparisonID,
                          const TMUtilRunner::OnBytes& onBytes, std::stop_token stop = {});

    /// Compares sizes and modification times of two snapshots; without a depth, all the way down.
    static Result compare(const TMUtilRunner& runner, const std::string& from, const std::string& to,
                          std::optional<std::int64_t> depth, const SharedText& comparisonID,
                          std::stop_token stop = {});

    /// Compares a snapshot with the computer's current state, in tmutil's default properties.
    static Result compareWithSource(const TMUtilRunner& runner, const std::string& backupPath,
                                    std::optional<std::int64_t> depth, const SharedText& comparisonID,
                                    std::stop_token stop = {});
};

} // namespace tallyglass
