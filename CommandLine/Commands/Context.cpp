#include "CommandLine/Commands/Context.h"

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"

namespace tallyglass::commandline {

TMUtilRunner Context::runner() const {
    return TMUtilRunner(paths.path(TMUtilRunner::executablePath));
}

BackupStore Context::openStore() const {
    return BackupStore(TallyglassDatabase::defaultURL());
}

} // namespace tallyglass::commandline
