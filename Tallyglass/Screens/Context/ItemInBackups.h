// Where the item of a changed path stands in the two backups that were compared, if it does, so that it can
// be shown in the file manager.
//
// Main thread only. The disk is asked on the pool: a backup may be slow, or on a network.

#pragma once

#include "Tallyglass/Desktop/Workspace.h"
#include "Tallyglass/Models/Task.h"

#include <qqmlintegration.h>

#include <QObject>
#include <QPointer>
#include <QProperty>
#include <filesystem>
#include <optional>
#include <string>

namespace tallyglass {

class ItemInBackups : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        tallyglass::Workspace* workspace READ workspace WRITE setWorkspace NOTIFY workspaceChanged REQUIRED)
    Q_PROPERTY(bool isInOlder READ isInOlder NOTIFY isInOlderChanged)
    Q_PROPERTY(bool isInNewer READ isInNewer NOTIFY isInNewerChanged)

public:
    using QObject::QObject;

    /// Outlives this object.
    [[nodiscard]] Workspace* workspace() const { return m_workspace; }
    void setWorkspace(Workspace* workspace);

    /// Looks for the item of `path`, as a change tells it, in the backups with these roots. Until that is
    /// known it counts as absent.
    Q_INVOKABLE void look(const QString& path, const QString& olderRoot, const QString& newerRoot);

    [[nodiscard]] bool isInOlder() const { return m_isInOlder; }
    [[nodiscard]] bool isInNewer() const { return m_isInNewer; }

    /// Shows the item where it was found, else does nothing.
    Q_INVOKABLE void showInOlder();
    Q_INVOKABLE void showInNewer();

signals:
    void workspaceChanged();
    void isInOlderChanged();
    void isInNewerChanged();

private:
    using Place = std::optional<std::filesystem::path>;

    void reveal(const Place& place);

    QPointer<Workspace> m_workspace;
    TaskHandle m_task;
    Place m_older;
    Place m_newer;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(ItemInBackups, bool, m_isInOlder, false,
                                         &ItemInBackups::isInOlderChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(ItemInBackups, bool, m_isInNewer, false,
                                         &ItemInBackups::isInNewerChanged)
};

} // namespace tallyglass
