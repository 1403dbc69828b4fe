// What `tmutil compare -X` says, as the records of a comparison, and the runs of that verb. All operations
// are static and may be called from any thread.

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

    /// Decodes standard output: a property list in any form. XML, which tmutil prints, is read in one pass
    /// without a tree, so that time and memory are little more than those of the records.
    ///
    /// The longest of `roots` that begins a path is stripped from it together with the volume under it; a
    /// path of which nothing would be left stays whole. Every record gets `comparisonID`.
    ///
    /// A value of a wrong type counts as absent, and so does a size or difference that 64 bits don't hold.
    /// Throws TMUtilError (malformedOutput) if the data is no property list, its root is no dictionary, or an
    /// item has no path.
    [[nodiscard]] static Result decode(std::string_view data, std::span<const std::string> roots,
                                       const SharedText& comparisonID);

    // Each runs tmutil and decodes what it printed. They throw as TMUtilRunner::run and decode do. `onBytes`
    // may be empty.

    /// Compares two snapshots, whose roots are stripped from the paths.
    static Result compare(const TMUtilRunner& runner, const std::string& from, const std::string& to,
                          const CompareOptions& options, const SharedText& comparisonID,
                          const TMUtilRunner::OnBytes& onBytes, std::stop_token stop = {});

    /// Compares two folders inside snapshots: `stripRoots` says what to strip instead of the folders, so that
    /// the paths stay relative to the volume.
    static Result compare(const TMUtilRunner& runner, const std::string& fromOperand,
                          const std::string& toOperand, std::span<const std::string> stripRoots,
                          const CompareOptions& options, const SharedText& comparisonID,
                          const TMUtilRunner::OnBytes& onBytes, std::stop_token stop = {});

    /// Compares sizes and modification times of two snapshots; without a depth, all the way down.
    static Result compare(const TMUtilRunner& runner, const std::string& from, const std::string& to,
                          std::optional<std::int64_t> depth, const SharedText& comparisonID,
                          std::stop_token stop = {});

    /// Compares a snapshot with the computer as it is now, in the properties that tmutil takes by itself.
    static Result compareWithSource(const TMUtilRunner& runner, const std::string& backupPath,
                                    std::optional<std::int64_t> depth, const SharedText& comparisonID,
                                    std::stop_token stop = {});
};

} // namespace tallyglass
