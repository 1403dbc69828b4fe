#include "Tallyglass/Models/AppEnvironment.h"

#include "Tallyglass/Models/ContinuousTimer.h"
#include "TallyglassKit/Comparison/CacheSession.h"
#include "TallyglassKit/Platform/LoginName.h"
#include "TallyglassKit/Platform/UserFolders.h"

#include <utility>

namespace tallyglass {

namespace {

TMUtilRunner standardTool(const SystemPaths& paths) {
    return TMUtilRunner(paths.path(TMUtilRunner::executablePath));
}

} // namespace

AppEnvironment::AppEnvironment(SystemPaths systemPaths)
    : AppEnvironment(systemPaths, standardTool(systemPaths)) {}

AppEnvironment::AppEnvironment(SystemPaths systemPaths, TMUtilRunner tool)
    : paths(std::move(systemPaths)), runner(std::move(tool)), clock(systemTime),
      probeAccess([paths = paths] { return FullDiskAccessProbe::probe(paths); }),
      makeTimer([] { return std::make_unique<ContinuousTimer>(); }),
      cache(std::make_shared<CacheSession>(runner)), userName(loginName),
      desktopFolder(tallyglass::desktopFolder) {}

} // namespace tallyglass
