// The file history screen's state over a model of its own: what it shows, and what its controls do.
//
// Main thread only.

#pragma once

#include "Tallyglass/Models/FileHistoryModel.h"
#include "Tallyglass/Screens/Context/ViewModel.h"
#include "Tallyglass/Screens/FileHistory/FileHistoryContent.h"
#include "Tallyglass/Screens/FileHistory/PresenceCell.h"
#include "Tallyglass/Screens/FileHistory/VersionListModel.h"

#include <QList>
#include <QProperty>
#include <QStringList>
#include <QUrl>
#include <memory>
#include <optional>
#include <vector>

namespace tallyglass {

class FileHistoryViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(bool isLocked READ isLocked NOTIFY isLockedChanged)
    Q_PROPERTY(tallyglass::FileHistoryContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    Q_PROPERTY(QString hint READ hint NOTIFY contextChanged)
    Q_PROPERTY(QString examplePath READ examplePath NOTIFY contextChanged)
    Q_PROPERTY(QStringList recentPaths READ recentPaths NOTIFY recentPathsChanged)
    Q_PROPERTY(tallyglass::VersionListModel* rows READ rows CONSTANT)

public:
    explicit FileHistoryViewModel(QObject* parent = nullptr);
    ~FileHistoryViewModel() override;

    /// Null until the application's model is there.
    [[nodiscard]] FileHistoryModel* history() const { return m_history.get(); }

    [[nodiscard]] bool isLocked() const { return m_isLocked; } ///< Full Disk Access isn't known to be granted
    [[nodiscard]] FileHistoryContent content() const { return m_content; }
    [[nodiscard]] QString path() const;
    void setPath(const QString& path);
    [[nodiscard]] QString hint() const;
    [[nodiscard]] QString examplePath() const;
    [[nodiscard]] QStringList recentPaths() const { return m_recentPaths; }
    [[nodiscard]] VersionListModel* rows() { return &m_rows; }

    /// What each probed backup holds, oldest first.
    [[nodiscard]] const std::vector<Presence>& presence() const { return m_presence; }
    /// The selected one of the probed backups.
    [[nodiscard]] std::optional<std::size_t> selectedBackup() const { return m_selectedBackup; }
    /// Also makes the row of the version that it holds the current one.
    void selectBackup(std::size_t backup);
    /// What is in a probed backup, such as "Nov 3, 2026 at 7:41 AM: version 2 of 4, 12 KB".
    [[nodiscard]] QString backupText(std::size_t backup) const;

    // The controls. None does anything before the application's model is there.
    Q_INVOKABLE void scan();
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void trace(const QString& path);
    /// The first item of the file system among those that were dropped here.
    Q_INVOKABLE void traceItem(const QList<QUrl>& urls);
    Q_INVOKABLE void chooseItem();
    Q_INVOKABLE void cancelExport();

    // A version by its row.
    [[nodiscard]] Q_INVOKABLE tallyglass::VersionRowContent versionAt(int row) const;
    Q_INVOKABLE void exportVersion(int row);
    Q_INVOKABLE void open(int row);
    Q_INVOKABLE void reveal(int row);
    Q_INVOKABLE void copyPath(int row);
    /// With the version before it: its first backup with the last one of the other.
    Q_INVOKABLE void compareWithPrevious(int row);

signals:
    void isLockedChanged();
    void contentChanged();
    void pathChanged();
    void recentPathsChanged();
    void presenceChanged();
    void selectedBackupChanged();
    void rowRequested(int row); ///< is to be brought into view

protected:
    void update() override;

private:
    using Self = FileHistoryViewModel;

    void makeModel();
    void takeResult();
    [[nodiscard]] const FileVersionSpan* spanAt(int row) const;

    std::unique_ptr<FileHistoryModel> m_history;
    VersionListModel m_rows;
    std::vector<Presence> m_presence;
    std::optional<std::size_t> m_selectedBackup;

    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_isLocked, true, &Self::isLockedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, FileHistoryContent, m_content, &Self::contentChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, QStringList, m_recentPaths, &Self::recentPathsChanged)
};

} // namespace tallyglass
