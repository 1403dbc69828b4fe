// The program's side of the privileged helper that exports the backup manifest: asks it for a fresh export,
// leads the user to grant it Full Disk Access, and removes it.
//
// Main thread only; the removal runs in the background.

#pragma once

#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Access/HelperRemoval.h"
#include "TallyglassKit/Platform/Clock.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <QObject>
#include <QString>

namespace tallyglass {

class Alerts;
class Workspace;

class HelperSetup : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool helperExists READ helperExists NOTIFY helperExistsChanged)
    Q_PROPERTY(QString helperPath READ helperPath CONSTANT)

public:
    /// Workspace and alerts outlive it.
    HelperSetup(SystemPaths paths, Workspace& workspace, Alerts& alerts, Clock clock = systemTime,
                QObject* parent = nullptr);

    /// Whether the helper's file existed at the last look, which happens at the start, whenever the program
    /// becomes active, and in lookForHelper().
    [[nodiscard]] bool helperExists() const { return m_helperExists; }
    Q_INVOKABLE void lookForHelper();

    [[nodiscard]] QString helperPath() const;

    /// Asks the helper for a new export. Failures are ignored.
    Q_INVOKABLE void requestHelperRun();

    /// Opens the settings at Full Disk Access, and shows the helper in the file manager if it exists.
    Q_INVOKABLE void openFullDiskAccessAndReveal();

    /// Asks the user whether to remove the helper, removes it, and tells the outcome. Does nothing while that
    /// is under way already.
    Q_INVOKABLE void confirmAndUninstall();

signals:
    void helperExistsChanged();

private:
    void runUninstall();
    void show(const HelperRemoval::Result& result);

    const SystemPaths m_paths;
    const Clock m_clock;
    Workspace& m_workspace;
    Alerts& m_alerts;
    bool m_helperExists = false;
    bool m_isUninstalling = false; ///< from the question to the outcome
    TaskHandle m_removal;
};

} // namespace tallyglass
