// Writes the result of a comparison incrementally, as a property list or as text.
//
// One thread. The stream is borrowed. end() completes the report.

#pragma once

#include "HostTools/Machine/TreeComparison.h"

#include <cstdio>
#include <string>

namespace tallyglass {

/// Paths begin with the operands as the user gave them.
class ComparisonReport : public ComparisonSink {
public:
    ComparisonReport(std::string older, std::string newer, FILE* output, FILE* warnings);

    void differs(const TreeDifference& difference) override;
    void unreadable(const std::string& path, int errorNumber) override;
    virtual void end() = 0;

protected:
    struct Item {
        const std::string& root;
        std::string_view path;
        const struct stat& status;
        [[nodiscard]] bool isRootFolder() const { return root.empty() && path.empty(); }
    };
    struct Totals {
        std::int64_t added = 0;
        std::int64_t removed = 0;
        std::int64_t changed = 0; ///< newer sizes
    };

    virtual void added(const Item& item) = 0;
    virtual void removed(const Item& item) = 0;
    virtual void changed(const Item& older, const Item& newer,
                         std::span<const std::string_view> properties) = 0;

    /// Appends to the buffered output. Throws Error if it can't be written.
    void put(std::string_view text);
    void flush();
    [[nodiscard]] const Totals& totals() const { return m_totals; }

private:
    std::string m_older;
    std::string m_newer;
    FILE* m_output;
    FILE* m_warnings;
    std::string m_buffer;
    Totals m_totals;
};

/// A dictionary with "Changes" and "Totals". Bytes of a name that aren't valid in XML become U+FFFD.
class PropertyListReport final : public ComparisonReport {
public:
    using ComparisonReport::ComparisonReport;
    void end() override;

private:
    void added(const Item& item) override;
    void removed(const Item& item) override;
    void changed(const Item& older, const Item& newer, std::span<const std::string_view> properties) override;
    void begin();
    void putItem(std::string_view key, const Item& item);
    void putText(std::string_view text);

    bool m_hasBegun = false;
};

/// Lines such as "+ 12.0K  /path" and a table of totals.
class TextReport final : public ComparisonReport {
public:
    using ComparisonReport::ComparisonReport;
    void end() override;

private:
    void added(const Item& item) override;
    void removed(const Item& item) override;
    void changed(const Item& older, const Item& newer, std::span<const std::string_view> properties) override;
    void putLine(char sign, const Item& item, std::string_view remark);
};

/// A byte count for a column, in units of 1024: "0B", "512B", "4.0K", "1.2M".
[[nodiscard]] std::string columnSize(std::int64_t bytes);

} // namespace tallyglass
