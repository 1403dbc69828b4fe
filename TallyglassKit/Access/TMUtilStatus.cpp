// The verbs of TMUtilRunner that query and control the backup engine.

#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/TMUtilRunner.h"

namespace tallyglass {

BackupStatus TMUtilRunner::status(std::stop_token stop) const {
    return BackupStatus::parse(run({"status"}, std::move(stop)).stdoutText()).value_or(BackupStatus::idle);
}

void TMUtilRunner::startBackup(std::stop_token stop) const {
    run({"startbackup"}, std::move(stop));
}

void TMUtilRunner::stopBackup(std::stop_token stop) const {
    run({"stopbackup"}, std::move(stop));
}

} // namespace tallyglass
