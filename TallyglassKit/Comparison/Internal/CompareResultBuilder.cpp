#include "TallyglassKit/Comparison/Internal/CompareResultBuilder.h"

#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Platform/Error.h"

#include <utility>

namespace tallyglass {

namespace {

/// `a` - `b`, if both are present and the result fits in 64 bits.
std::optional<std::int64_t> difference(std::optional<std::int64_t> a, std::optional<std::int64_t> b) {
    std::int64_t result = 0;
    if (!a || !b || __builtin_sub_overflow(*a, *b, &result))
        return std::nullopt;
    return result;
}

} // namespace

void CompareResultBuilder::add(const CompareChange& change) {
    const CompareItem* item = nullptr;
    ChangeKind kind = ChangeKind::modified;
    std::optional<std::int64_t> sizeDelta;
    if (change.added.isPresent) {
        item = &change.added;
        kind = ChangeKind::added;
        sizeDelta = item->size;
    } else if (change.removed.isPresent || (change.older.isPresent && !change.newer.isPresent)) {
        item = change.removed.isPresent ? &change.removed : &change.older;
        kind = ChangeKind::removed;
        sizeDelta = difference(0, item->size);
    } else if (change.newer.isPresent) {
        item = &change.newer;
        sizeDelta = difference(item->size, change.older.size);
    } else {
        ++m_result.unrecognizedCount;
        return;
    }
    for (const CompareItem* any : {&change.added, &change.removed, &change.newer, &change.older})
        if (any->isPresent && !any->path) {
            m_lacksPath = true;
            return;
        }

    std::string_view path = *item->path;
    if (const auto parts = BackupPath::splitView(path, m_context.roots); parts && !parts->logicalPath.empty())
        path = parts->logicalPath;
    ChangeRecord& record = m_result.changes.emplace_back();
    record.comparisonID = m_context.comparisonID;
    record.path = path;
    if (change.differences)
        record.differences = m_differences.share(*change.differences);
    record.size = item->size;
    record.sizeDelta = sizeDelta;
    record.kind = kind;
    record.isDirectory = !item->size;
}

void CompareResultBuilder::removeChanges() {
    m_result.changes.clear();
    m_result.unrecognizedCount = 0;
    m_lacksPath = false;
}

TMUtilCompare::Result CompareResultBuilder::finish() {
    if (m_lacksPath)
        throw Error("An item of a change has no path.");
    return std::move(m_result);
}

} // namespace tallyglass
