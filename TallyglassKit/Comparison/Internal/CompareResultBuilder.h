// Makes records of the changes that a reader of compare output finds, whatever the form of that output. Used
// by one thread.

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
    /// What every record needs. Borrows the roots.
    struct Context {
        std::span<const std::string> roots;
        const SharedText& comparisonID;
    };

    explicit CompareResultBuilder(const Context& context) : m_context(context) {}

    void add(const CompareChange& change);

    /// Forgets all changes, because a later "Changes" takes the place of this one.
    void removeChanges();

    /// For the reader to write the totals, which stay as they are.
    [[nodiscard]] TMUtilCompare::Result& result() { return m_result; }

    /// The result, once all has been read. Throws Error if an item had no path; not before, because a later
    /// "Changes" may take the place of that item, or the data turn out to be no property list at all.
    [[nodiscard]] TMUtilCompare::Result finish();

private:
    Context m_context;
    TMUtilCompare::Result m_result;
    TextPool m_differences;
    bool m_lacksPath = false;
};

} // namespace tallyglass
