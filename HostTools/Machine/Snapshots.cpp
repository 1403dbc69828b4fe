#include "HostTools/Machine/Snapshots.h"

#include "HostTools/Machine/FileOperations.h"
#include "HostTools/Machine/PlistDocument.h"
#include "TallyglassKit/Access/BackupPath.h"

#include <algorithm>
#include <map>

namespace tallyglass {

namespace fs = std::filesystem;

fs::path Snapshots::place(const fs::path& folder, const std::string& stamp) {
    const std::string name = std::string(stamp).append(BackupPath::suffix);
    return folder / name / name;
}

std::vector<Snapshot> Snapshots::list(const fs::path& folder) {
    std::map<std::string, Date> dates;
    for (const ManifestRecord& known : manifest(folder))
        dates[BackupPath::stamp(known.completion)] = known.completion;

    std::vector<Snapshot> snapshots;
    std::error_code ignored;
    for (fs::directory_iterator entry(folder, ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
        std::string stamp = entry->path().filename();
        if (!stamp.ends_with(BackupPath::suffix))
            continue;
        stamp.resize(stamp.size() - BackupPath::suffix.size());
        const auto date = BackupPath::dateOfStamp(stamp);
        std::error_code missing;
        if (!date || !fs::is_directory(place(folder, stamp), missing))
            continue;
        const auto known = dates.find(stamp);
        snapshots.push_back({.stamp = stamp,
                             .date = known != dates.end() ? known->second : *date,
                             .path = place(folder, stamp)});
    }
    std::ranges::sort(snapshots, {}, &Snapshot::date);
    return snapshots;
}

std::vector<ManifestRecord> Snapshots::manifest(const fs::path& folder) {
    std::vector<ManifestRecord> records;
    const auto document = PlistDocument::read(folder / manifestName);
    if (!document || !document->isArray())
        return records;
    const PlistNode root = document->root();
    for (std::size_t index = 0; index + 1 < root.size(); index += 2) {
        const auto completion = root.element(index).asDate();
        if (!completion)
            continue;
        const PlistNode details = root.element(index + 1);
        const PlistNode changed = details.at("stats").at("changed");
        records.push_back(
            {.completion = *completion,
             .start = details.date("startDate").value_or(*completion),
             .changedCount = changed.integer("count").value_or(0),
             .changedLogicalSize = changed.integer("logicalSize").value_or(0),
             .changedPhysicalSize = changed.integer("physicalSize").value_or(0),
             .propagatedCount = details.at("stats").at("propagated").integer("count").value_or(0),
             .uniqueSize = details.integer("uniqueSize").value_or(0)});
    }
    return records;
}

void Snapshots::record(const fs::path& folder, const ManifestRecord& record,
                       std::optional<std::int64_t> uniqueSizeOfPrevious, Durability durability) {
    auto document = PlistDocument::read(folder / manifestName);
    if (!document || !document->isArray())
        document = PlistDocument::array();
    const PlistNode root = document->root();
    std::int64_t transaction = 0;
    if (root.size() >= 2) {
        const PlistNode previous = root.element(root.size() - 1);
        transaction = previous.integer("xid").value_or(0);
        if (uniqueSizeOfPrevious)
            previous.set("uniqueSize", *uniqueSizeOfPrevious);
    }

    root.append(record.completion);
    const PlistNode details = root.appendDictionary();
    details.set("startDate", record.start);
    details.set("uniqueSize", record.uniqueSize);
    details.set("xid", transaction + 1 + record.changedCount); // one for each written item
    const PlistNode stats = details.setDictionary("stats");
    const PlistNode changed = stats.setDictionary("changed");
    changed.set("count", record.changedCount);
    changed.set("logicalSize", record.changedLogicalSize);
    changed.set("physicalSize", record.changedPhysicalSize);
    stats.setDictionary("propagated").set("count", record.propagatedCount);
    replaceFile(folder / manifestName, document->binary(), durability);
}

} // namespace tallyglass
