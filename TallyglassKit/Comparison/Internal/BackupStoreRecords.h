// The columns of the diff cache in which the fields of its records are stored.

#pragma once

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/Comparison.h"
#include "TallyglassKit/Comparison/DirectoryRollup.h"
#include "TallyglassKit/Persistence/Record.h"

namespace tallyglass {

template <>
struct RecordTable<Comparison> {
    static constexpr std::string_view name = "comparison";
    static constexpr std::string_view primaryKey = "id";
    static constexpr auto columns = std::tuple(
        Column("id", &Comparison::id), Column("fromPath", &Comparison::fromPath),
        Column("toPath", &Comparison::toPath), Column("fromDate", &Comparison::fromDate),
        Column("toDate", &Comparison::toDate), Column("depth", &Comparison::depth),
        Column("startedAt", &Comparison::startedAt), Column("completedAt", &Comparison::completedAt),
        Column("isPartial", &Comparison::isPartial), Column("errorMessage", &Comparison::errorMessage),
        Column("addedCount", &Comparison::addedCount), Column("removedCount", &Comparison::removedCount),
        Column("modifiedCount", &Comparison::modifiedCount), Column("bytesAdded", &Comparison::bytesAdded),
        Column("bytesRemoved", &Comparison::bytesRemoved));
};

template <>
struct RecordTable<ChangeRecord> {
    static constexpr std::string_view name = "fileChange";
    static constexpr std::string_view primaryKey = "id";
    static constexpr auto columns =
        std::tuple(Column("id", &ChangeRecord::id), Column("comparisonID", &ChangeRecord::comparisonID),
                   Column("path", &ChangeRecord::path), Column("parentPath", &ChangeRecord::parentPath),
                   Column("kind", &ChangeRecord::kind), Column("isDirectory", &ChangeRecord::isDirectory),
                   Column("size", &ChangeRecord::size), Column("sizeDelta", &ChangeRecord::sizeDelta),
                   Column("differences", &ChangeRecord::differences));
};

/// Not a table, but the rows of a query.
template <>
struct RecordTable<DirectoryRollup> {
    static constexpr auto columns = std::tuple(Column("path", &DirectoryRollup::path),
                                               Column("changeCount", &DirectoryRollup::changeCount),
                                               Column("bytesDelta", &DirectoryRollup::bytesDelta));
};

} // namespace tallyglass
