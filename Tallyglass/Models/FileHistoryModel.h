// The model behind the file history screen: it traces a path through all backups, keeps the paths traced
// lately, and copies a version out of its backup.
//
// Main thread only; backups are listed and probed, settings read and files copied on the pool. Setting an
// equal value emits nothing.

#pragma once

#include "Tallyglass/Models/AppEnvironment.h"
#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Insight/FileVersion.h"
#include "TallyglassKit/Platform/Files/FileCopy.h"

#include <QObject>
#include <QProperty>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class FilePanels;

class FileHistoryModel : public QObject {
    Q_OBJECT

public:
    static constexpr std::string_view recentPathsKey = "TracedPaths";
    static constexpr std::size_t recentPathsLimit = 10;

    /// A version that is being copied out of its backup.
    struct Export {
        std::string name; ///< of the item
        CopyProgress progress;
        friend bool operator==(const Export&, const Export&) = default;
    };

    /// The panels outlive the model.
    FileHistoryModel(AppEnvironment environment, FilePanels& panels, QObject* parent = nullptr);
    ~FileHistoryModel() override;

    [[nodiscard]] const std::string& logicalPath() const { return m_logicalPath.value(); }
    void setLogicalPath(const std::string& path) { m_logicalPath.setValue(path); }

    /// The distinct versions, the newest first, of the last scan that ran to its end.
    [[nodiscard]] const std::vector<FileVersionSpan>& spans() const { return m_spans; }
    /// What that scan found in each backup, in the order of the backups, oldest first.
    [[nodiscard]] const std::vector<FileVersion>& versions() const { return m_versions; }
    [[nodiscard]] std::int64_t probedCount() const { return static_cast<std::int64_t>(m_versions.size()); }
    [[nodiscard]] std::int64_t missingCount() const { return m_missingCount; }
    /// A scan has run to its end at least once.
    [[nodiscard]] bool hasSearched() const { return m_hasSearched; }

    /// Present exactly while a scan runs.
    [[nodiscard]] const std::optional<std::string>& progress() const { return m_progress.value(); }
    [[nodiscard]] const std::optional<std::string>& error() const { return m_error.value(); }
    /// Present exactly while an export runs.
    [[nodiscard]] const std::optional<Export>& currentExport() const { return m_export.value(); }
    /// The paths that were traced last, the latest first.
    [[nodiscard]] const std::vector<std::string>& recentPaths() const { return m_recentPaths.value(); }

    /// Reads `recentPaths`.
    void prepare();
    /// Traces `logicalPath`; stops and drops a scan that runs. Does nothing for a path of blanks.
    void scan();
    /// Stops the scan and drops it. The earlier result stays.
    void cancelScan();
    /// Traces an item of the file system; of one inside a backup, the item on the Mac that it is a version
    /// of.
    void trace(const std::filesystem::path& item);
    /// Asks for an item and traces it.
    void chooseItem();

    /// Asks for a destination, copies the version there and shows the copy in the file manager. Does nothing
    /// while another is copied.
    void exportVersion(const FileVersion& version);
    /// Leaves at the destination what was there.
    void cancelExport();
    /// Opens a write-protected copy of a file in the program for it, so that nothing writes into the backup.
    void openVersion(const FileVersion& version);
    /// Shows the item inside its backup in the file manager.
    void revealVersion(const FileVersion& version) const;

signals:
    void pathChanged();   ///< logicalPath
    void resultChanged(); ///< spans, versions, missingCount, hasSearched
    void progressChanged();
    void errorChanged();
    void exportChanged();
    void recentPathsChanged();

private:
    using Self = FileHistoryModel;

    struct Result {
        std::vector<FileVersion> versions = {};
        std::vector<FileVersionSpan> spans = {};
        std::vector<std::string> recentPaths = {};
        std::optional<std::string> unavailableReason = {}; ///< without a backup
    };

    void tellProgress(const std::string& text) { m_progress.setValue(text); }
    void tellCopied(const CopyProgress& progress);
    void take(Result result);
    void copyVersion(const FileVersion& version, const std::filesystem::path& destination);

    const AppEnvironment m_environment;
    FilePanels& m_panels;
    TaskHandle m_task;
    TaskHandle m_recentPathsTask;
    TaskHandle m_exportTask;
    TaskHandle m_openTask;
    std::vector<FileVersionSpan> m_spans;
    std::vector<FileVersion> m_versions;
    std::int64_t m_missingCount = 0;
    bool m_hasSearched = false;

    Q_OBJECT_BINDABLE_PROPERTY(Self, std::string, m_logicalPath, &Self::pathChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_progress, &Self::progressChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_error, &Self::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<Export>, m_export, &Self::exportChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::vector<std::string>, m_recentPaths, &Self::recentPathsChanged)
};

} // namespace tallyglass
