#include "Tallyglass/Models/HelperSetup.h"

#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Desktop/Workspace.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/Text/Timestamps.h"

#include <QGuiApplication>
#include <QSaveFile>
#include <QUrl>

namespace tallyglass {

HelperSetup::HelperSetup(SystemPaths paths, Workspace& workspace, Alerts& alerts, Clock clock,
                         QObject* parent)
    : QObject(parent), m_paths(std::move(paths)), m_clock(std::move(clock)), m_workspace(workspace),
      m_alerts(alerts) {
    lookForHelper();
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            lookForHelper();
    });
}

void HelperSetup::lookForHelper() {
    const bool exists = fileExists(m_paths.path(HelperRemoval::helperPath));
    if (exists == m_helperExists)
        return;
    m_helperExists = exists;
    emit helperExistsChanged();
}

QString HelperSetup::helperPath() const {
    return QString::fromStdString(m_paths.path(HelperRemoval::helperPath));
}

void HelperSetup::requestHelperRun() {
    const auto moment = formatIso8601(m_clock());
    if (!moment)
        return;
    // In the background, because replacing a file waits for the disk.
    runOnPool([file = m_paths.path(HelperRemoval::triggerPath), moment = *moment] {
        QSaveFile trigger(QString::fromStdString(file));
        trigger.setDirectWriteFallback(true); // only the file may be writable, and its folder not
        if (trigger.open(QIODevice::WriteOnly) && trigger.write(moment.data(), std::ssize(moment)) >= 0)
            trigger.commit();
    });
}

void HelperSetup::openFullDiskAccessAndReveal() {
    const auto address = FullDiskAccessProbe::settingsURL;
    m_workspace.openUrl(QUrl(QString::fromUtf8(address.data(), std::ssize(address))));
    lookForHelper();
    if (helperExists())
        m_workspace.reveal(m_paths.path(HelperRemoval::helperPath));
}

void HelperSetup::confirmAndUninstall() {
    if (m_isUninstalling)
        return;
    m_isUninstalling = true;
    const Alert question{
        .kind = Alert::Kind::warning,
        .title = tr("Remove Tallyglass’s helper?"),
        .text =
            tr("This unloads and deletes the privileged background helper and the files it installed. You’ll "
               "be asked for your administrator password, and per-backup sizes will stop working unless you "
               "reinstall.\n\nAfterward, quit and drag Tallyglass to the Trash to finish."),
        .confirmText = tr("Remove Helper…"),
        .cancelText = tr("Cancel"),
    };
    m_alerts.show(question, this, [this](bool confirmed) {
        if (confirmed)
            runUninstall();
        else
            m_isUninstalling = false;
    });
}

void HelperSetup::runUninstall() {
    const HelperRemoval removal{m_paths};
    m_removal = startTask(
        this, [removal](TaskContext& task) { return removal.run(task.stopToken()); },
        [this](const HelperRemoval::Result& result) { show(result); },
        [this](const std::exception_ptr&) { m_isUninstalling = false; });
}

void HelperSetup::show(const HelperRemoval::Result& result) {
    m_isUninstalling = false;
    lookForHelper();
    if (std::holds_alternative<HelperRemoval::Succeeded>(result)) {
        m_alerts.show(
            {.title = tr("Helper removed"),
             .text = tr("The background helper and its files are gone. Quit Tallyglass and drag it from "
                        "your Applications folder to the Trash to finish removing it.")});
    } else if (const auto* failure = std::get_if<HelperRemoval::Failed>(&result)) {
        m_alerts.show({.kind = Alert::Kind::warning,
                       .title = tr("Couldn’t remove the helper"),
                       .text = QString::fromStdString(failure->message)});
    }
}

} // namespace tallyglass
