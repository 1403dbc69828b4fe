#include "Tallyglass/Screens/FileHistory/FileHistoryContent.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "Tallyglass/Models/FileHistoryModel.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

class FileHistory {
    Q_DECLARE_TR_FUNCTIONS(FileHistory)
};

QString dateText(const std::optional<Date>& date) {
    return date ? toQString(Fmt::timestamp(*date)) : FileHistory::tr("Unknown date");
}

QList<StatTileContent> tilesOf(const FileHistoryModel& model) {
    QList<StatTileContent> tiles{
        {FileHistory::tr("Distinct versions"), grouped(static_cast<std::int64_t>(model.spans().size())),
         FileHistory::tr("across %1 backups").arg(grouped(model.probedCount()))},
        {FileHistory::tr("Present in"), grouped(model.probedCount() - model.missingCount()),
         FileHistory::tr("backups")},
    };
    if (const auto size = model.spans().front().version.size)
        tiles.append({FileHistory::tr("Current size"), sizeInWords(size), FileHistory::tr("latest version")});
    return tiles;
}

QString exportText(const FileHistoryModel::Export& current) {
    const CopyProgress& progress = current.progress;
    const QString name = toQString(current.name);
    if (progress.totalBytes)
        return FileHistory::tr("Exporting %1: %2 of %3")
            .arg(name, sizeInWords(progress.bytes), sizeInWords(progress.totalBytes));
    return FileHistory::tr("Exporting %1: %2, %n items", "", static_cast<int>(progress.items))
        .arg(name, sizeInWords(progress.bytes));
}

} // namespace

QVariantList FileHistoryContent::tileList() const {
    return variants(tiles);
}

FileHistoryContent fileHistoryContent(const FileHistoryModel& model) {
    FileHistoryContent content;
    content.isScanning = model.progress().has_value();
    content.progressText = model.progress() ? toQString(*model.progress()) : FileHistory::tr("Scanning");
    content.error = toQString(model.error().value_or(""));
    if (const auto& current = model.currentExport()) {
        content.isExporting = true;
        content.exportText = exportText(*current);
        if (const auto total = current->progress.totalBytes; total && *total > 0)
            content.exportFraction =
                static_cast<double>(current->progress.bytes) / static_cast<double>(*total);
    }
    if (!model.hasSearched())
        return content;
    if (model.spans().empty()) {
        content.notFoundText =
            FileHistory::tr("Checked %1 backups. Verify the path — it should be the path on "
                            "your Mac, not inside the backup.")
                .arg(grouped(model.probedCount()));
        return content;
    }
    content.tiles = tilesOf(model);
    content.firstBackup = dateText(model.versions().front().backupDate);
    content.lastBackup = dateText(model.versions().back().backupDate);
    return content;
}

VersionRowContent versionRowContent(const std::vector<FileVersionSpan>& spans, std::size_t index) {
    const FileVersionSpan& span = spans[index];
    VersionRowContent content;
    content.title = dateText(span.lastSeen());
    content.isLatest = index == 0;
    content.number = static_cast<int>(spans.size() - index);
    content.numberText = FileHistory::tr("Version %1").arg(content.number);
    content.label = (content.isLatest ? FileHistory::tr("%1, %2, latest") : QStringLiteral("%1, %2"))
                        .arg(content.numberText, content.title);
    content.canOpen = !span.version.isDirectory;
    content.canCompare = index + 1 < spans.size();

    if (span.version.size)
        content.details = sizeInWords(span.version.size) + QStringLiteral(" · ");
    content.details += span.backupCount() == 1
                           ? FileHistory::tr("kept in 1 backup")
                           : FileHistory::tr("kept in %1 backups").arg(grouped(span.backupCount()));
    if (span.version.modified)
        content.details += FileHistory::tr(" · modified %1").arg(dateText(span.version.modified));
    return content;
}

std::vector<std::optional<std::size_t>> spansOfBackups(const std::vector<FileVersion>& versions,
                                                       const std::vector<FileVersionSpan>& spans) {
    std::vector<std::optional<std::size_t>> result;
    result.reserve(versions.size());
    std::size_t span = spans.size(); // one beyond that of the version before
    std::size_t left = 0;            // backups of it that are still to come
    for (const FileVersion& version : versions) {
        if (!version.exists) {
            result.emplace_back();
            continue;
        }
        if (left == 0)
            left = spans[--span].backups.size();
        --left;
        result.emplace_back(span);
    }
    return result;
}

QString presenceText(const FileVersion& version, std::optional<std::size_t> span, std::size_t spanCount) {
    const QString date = dateText(version.backupDate);
    if (!span)
        return FileHistory::tr("%1: missing").arg(date);
    const QString number = FileHistory::tr("%1: version %2 of %3")
                               .arg(date)
                               .arg(static_cast<qlonglong>(spanCount - *span))
                               .arg(static_cast<qlonglong>(spanCount));
    return version.size ? QStringLiteral("%1, %2").arg(number, sizeInWords(version.size)) : number;
}

QString examplePath(const std::string& user) {
    return QStringLiteral("/Users/%1/Documents/notes.txt").arg(toQString(user));
}

QString pathHint(const std::string& user) {
    return FileHistory::tr("Enter a path as it appears on your Mac, for example %1").arg(examplePath(user));
}

} // namespace tallyglass
