// What the file history screen shows, in words. Values, made anew from the model.

#pragma once

#include "Tallyglass/Controls/Cards/StatTileContent.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantList>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

class FileHistoryModel;
struct FileVersion;
struct FileVersionSpan;

struct FileHistoryContent {
    Q_GADGET
    QML_VALUE_TYPE(fileHistoryContent)

    Q_PROPERTY(bool isScanning MEMBER isScanning)
    Q_PROPERTY(QString progressText MEMBER progressText)
    Q_PROPERTY(QString error MEMBER error)
    Q_PROPERTY(bool isExporting MEMBER isExporting)
    Q_PROPERTY(QString exportText MEMBER exportText)
    Q_PROPERTY(double exportFraction MEMBER exportFraction)
    Q_PROPERTY(QString notFoundText MEMBER notFoundText)
    Q_PROPERTY(QVariantList tiles READ tileList)
    Q_PROPERTY(QString firstBackup MEMBER firstBackup)
    Q_PROPERTY(QString lastBackup MEMBER lastBackup)

public:
    bool isScanning = false;
    QString progressText;
    QString error; ///< empty when there is none
    bool isExporting = false;
    QString exportText;
    double exportFraction = -1;   ///< 0 to 1; negative while the total isn't known
    QString notFoundText;         ///< empty unless a scan has found nothing
    QList<StatTileContent> tiles; ///< empty unless a scan has found something
    QString firstBackup;          ///< dates of the backups that were probed
    QString lastBackup;

    [[nodiscard]] QVariantList tileList() const;

    friend bool operator==(const FileHistoryContent&, const FileHistoryContent&) = default;
};

/// A distinct version in the list.
struct VersionRowContent {
    Q_GADGET
    QML_VALUE_TYPE(versionRowContent)

    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(bool isLatest MEMBER isLatest)
    Q_PROPERTY(QString details MEMBER details)
    Q_PROPERTY(int number MEMBER number)
    Q_PROPERTY(QString numberText MEMBER numberText)
    Q_PROPERTY(bool canOpen MEMBER canOpen)
    Q_PROPERTY(bool canCompare MEMBER canCompare)

public:
    QString title; ///< when it was last seen
    QString label; ///< to a screen reader
    bool isLatest = false;
    QString details;
    int number = 1; ///< the oldest version is 1
    QString numberText;
    bool canOpen = false;    ///< it is a file
    bool canCompare = false; ///< there is a version before it

    friend bool operator==(const VersionRowContent&, const VersionRowContent&) = default;
};

[[nodiscard]] FileHistoryContent fileHistoryContent(const FileHistoryModel& model);

/// The row at `index` of the spans, which are the newest first.
[[nodiscard]] VersionRowContent versionRowContent(const std::vector<FileVersionSpan>& spans,
                                                  std::size_t index);

/// For each probed backup the index of its span, or nothing where the item is missing.
[[nodiscard]] std::vector<std::optional<std::size_t>>
spansOfBackups(const std::vector<FileVersion>& versions, const std::vector<FileVersionSpan>& spans);

/// "Nov 3, 2026 at 7:41 AM: version 2 of 4, 12 KB" for a backup that holds the span at `span`, or "…:
/// missing".
[[nodiscard]] QString presenceText(const FileVersion& version, std::optional<std::size_t> span,
                                   std::size_t spanCount);

/// "Enter a path as it appears on your Mac, for example …", and such a path in the user's home folder.
[[nodiscard]] QString pathHint(const std::string& user);
[[nodiscard]] QString examplePath(const std::string& user);

} // namespace tallyglass
