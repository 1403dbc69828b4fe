// What every screen and sheet is given: the models of the application, the services of the desktop, and the
// way to ask for a sheet that stands over the whole window.
//
// Main thread only. What it refers to has to outlive it.

#pragma once

#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Desktop/Clipboard.h"
#include "Tallyglass/Desktop/FilePanels.h"
#include "Tallyglass/Desktop/UpdaterController.h"
#include "Tallyglass/Desktop/Workspace.h"
#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/DiffModel.h"
#include "Tallyglass/Models/HelperSetup.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QVariant>

namespace tallyglass {

class ScreenContext : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")

    Q_PROPERTY(tallyglass::AppModel* model READ model CONSTANT)
    Q_PROPERTY(tallyglass::DiffModel* diff READ diff CONSTANT)
    Q_PROPERTY(tallyglass::HelperSetup* helperSetup READ helperSetup CONSTANT)
    Q_PROPERTY(tallyglass::Workspace* workspace READ workspace CONSTANT)
    Q_PROPERTY(tallyglass::Clipboard* clipboard READ clipboard CONSTANT)
    Q_PROPERTY(tallyglass::Alerts* alerts READ alerts CONSTANT)
    Q_PROPERTY(tallyglass::FilePanels* panels READ panels CONSTANT)
    Q_PROPERTY(tallyglass::UpdaterController* updater READ updater CONSTANT)

public:
    /// The sheets of the window.
    enum Sheet {
        About,
        AppAccessGuide,    ///< to Full Disk Access, for this program
        HelperAccessGuide, ///< to Full Disk Access, for the helper
        BackupChanges,     ///< its subject is a TimelinePoint; the newest backup without one
    };
    Q_ENUM(Sheet)

    ScreenContext(AppModel& model, DiffModel& diff, HelperSetup& helperSetup, Workspace& workspace,
                  Clipboard& clipboard, Alerts& alerts, FilePanels& panels, UpdaterController& updater)
        : m_model(model), m_diff(diff), m_helperSetup(helperSetup), m_workspace(workspace),
          m_clipboard(clipboard), m_alerts(alerts), m_panels(panels), m_updater(updater) {}

    [[nodiscard]] AppModel* model() const { return &m_model; }
    [[nodiscard]] DiffModel* diff() const { return &m_diff; }
    [[nodiscard]] HelperSetup* helperSetup() const { return &m_helperSetup; }
    [[nodiscard]] Workspace* workspace() const { return &m_workspace; }
    [[nodiscard]] Clipboard* clipboard() const { return &m_clipboard; }
    [[nodiscard]] Alerts* alerts() const { return &m_alerts; }
    [[nodiscard]] FilePanels* panels() const { return &m_panels; }
    [[nodiscard]] UpdaterController* updater() const { return &m_updater; }

    /// Asks the window to open a sheet.
    Q_INVOKABLE void openSheet(tallyglass::ScreenContext::Sheet sheet, const QVariant& subject = {}) {
        emit sheetRequested(sheet, subject);
    }
    /// Asks the window to trace a path on the Mac through all backups, on the screen that does that.
    Q_INVOKABLE void traceFile(const QString& path) { emit traceRequested(path); }
    /// Asks the window to compare two backups, named by their root folders, on the screen that does that.
    Q_INVOKABLE void compareBackups(const QString& olderRoot, const QString& newerRoot) {
        emit comparisonRequested(olderRoot, newerRoot);
    }

signals:
    void sheetRequested(tallyglass::ScreenContext::Sheet sheet, const QVariant& subject);
    void traceRequested(const QString& path);
    void comparisonRequested(const QString& olderRoot, const QString& newerRoot);

private:
    AppModel& m_model;
    DiffModel& m_diff;
    HelperSetup& m_helperSetup;
    Workspace& m_workspace;
    Clipboard& m_clipboard;
    Alerts& m_alerts;
    FilePanels& m_panels;
    UpdaterController& m_updater;
};

} // namespace tallyglass
