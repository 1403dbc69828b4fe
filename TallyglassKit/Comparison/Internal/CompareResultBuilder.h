// Builds records from the changes that a reader of compare output finds, for all forms of that output. An
// item on both sides is a modification, on one side an addition or a removal; the size delta is the
// difference of the sides' sizes. One thread.

#pragma once

#include "TallyglassKit/Comparison/TMUtilCompare.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tallyglass {

/// A file or folder on one side of a change. Borrows its path.
struct CompareItem {
    bool isPresent = false;
    std::optional<std::string_view> path;
    std::optional<std::int64_t> size;
};

/// One element of "Changes". Borrows its text.
struct CompareChange {
    CompareItem added;
    CompareItem removed;
    CompareItem newer;
    CompareItem older;
    std::optional<std::string_view> differences; ///< joined with ","
};

class CompareResultBuilder {
public:
    /// The input common to all records. Borrows the roots.
    struct Context {
        std::span<const std::string> roots;
        const SharedText& comparisonID;
    };

    explicit CompareResultBuilder(const Context& context) : m_context(context) {}

    void add(const CompareChange& change);

    /// Discards all changes, because a later "Changes" replaces them.
    void removeChanges();

    /// For the reader to set the totals, which are returned unchanged.
    [[nodiscard]] TMUtilCompare::Result& result() { return m_result; }

    /// The result, after everything has been read. Throws Error if an item had no path; not earlier, because
    /// a later "Changes" may replace that item, or the rest of the data may be malformed.
    [[nodiscard]] TMUtilCompare::Result finish();

private:
    Context m_context;
    TMUtilCompare::Result m_result;
    TextPool m_differences;
    bool m_lacksPath = false;
};

} // namespace tallyglass
