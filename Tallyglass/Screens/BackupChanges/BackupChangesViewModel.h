// What the sheet of one backup's changes shows and does, from its opening to its closing. It owns the model
// of the changes.
//
// Main thread only. The changes are loaded once: at the opening, or when the permission comes after it.

#pragma once

#include "Tallyglass/Models/BackupChangesModel.h"
#include "Tallyglass/Screens/BackupChanges/BackupChangesContent.h"
#include "Tallyglass/Screens/BackupChanges/ChangeTreeListModel.h"
#include "Tallyglass/Screens/Context/TimelinePoint.h"
#include "Tallyglass/Screens/Context/ViewModel.h"

#include <QProperty>
#include <QVariant>
#include <memory>
#include <optional>

namespace tallyglass {

class BackupChangesViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QVariant target READ target WRITE setTarget)
    Q_PROPERTY(tallyglass::BackupChangesContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(tallyglass::ChangeTreeListModel* rows READ rows CONSTANT)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY filterChanged)
    Q_PROPERTY(bool showContentChangesOnly READ showContentChangesOnly WRITE setShowContentChangesOnly NOTIFY
                   filterChanged)

public:
    static constexpr std::int64_t depth = 2; ///< of the first comparison

    explicit BackupChangesViewModel(QObject* parent = nullptr);
    ~BackupChangesViewModel() override;

    /// The TimelinePoint whose backup is shown; without one it is the newest backup. Doesn't change any more
    /// once the loading began.
    void setTarget(const QVariant& target);
    [[nodiscard]] QVariant target() const;

    [[nodiscard]] BackupChangesContent content() const { return m_content; }
    [[nodiscard]] ChangeTreeListModel* rows() { return &m_rows; }

    [[nodiscard]] QString searchText() const;
    void setSearchText(const QString& text);
    [[nodiscard]] bool showContentChangesOnly() const;
    void setShowContentChangesOnly(bool contentOnly);

    /// Whether a load or a fetch is under way.
    [[nodiscard]] bool isBusy() const { return m_changes && m_changes->isBusy(); }

    /// Opens the folder of this path, if it is there.
    void expand(const std::string& path);
    /// Opens or closes the folder at `row`.
    Q_INVOKABLE void toggle(int row);
    // The keys of a tree. Each gives the row that is current after it.
    /// Opens a folder; in an open one goes to its first row.
    Q_INVOKABLE int stepIn(int row);
    /// Closes a folder; from anything else goes to the folder around it.
    Q_INVOKABLE int stepOut(int row);

    /// Ends the loading. What is shown stays as it is, to leave with the sheet.
    Q_INVOKABLE void close();

signals:
    void contentChanged();
    void filterChanged();

protected:
    void update() override;

private:
    void makeChanges();
    void load();
    [[nodiscard]] Date targetDate() const;
    [[nodiscard]] const DisplayRow* rowAt(int row) const;

    std::optional<TimelinePoint> m_target;
    std::unique_ptr<BackupChangesModel> m_changes; ///< null until there is an application model
    ChangeTreeListModel m_rows;
    bool m_hasLoaded = false;
    bool m_isClosed = false;

    Q_OBJECT_BINDABLE_PROPERTY(BackupChangesViewModel, BackupChangesContent, m_content,
                               &BackupChangesViewModel::contentChanged)
};

} // namespace tallyglass
