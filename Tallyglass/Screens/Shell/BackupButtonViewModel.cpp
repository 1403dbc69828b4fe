#include "Tallyglass/Screens/Shell/BackupButtonViewModel.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

struct BackupButton {
    Q_DECLARE_TR_FUNCTIONS(BackupButton)
};

} // namespace

BackupButtonContent backupButtonContent(const BackupStatus& status) {
    if (status.isRunning)
        return {
            .text = BackupButton::tr("Stop Backup"), .symbol = QStringLiteral("stop.circle"), .stops = true};
    return {.text = BackupButton::tr("Back Up Now"),
            .symbol = QStringLiteral("arrow.clockwise.circle"),
            .stops = false};
}

void BackupButtonViewModel::update() {
    m_content = backupButtonContent(model()->status());
}

void BackupButtonViewModel::press() {
    if (!model())
        return;
    if (model()->status().isRunning)
        model()->stopBackup();
    else
        model()->startBackup();
}

} // namespace tallyglass
