// What the models ask of the machine they run on. A value whose parts are shared by its copies; a test sets
// each.

#pragma once

#include "Tallyglass/Models/Timer.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Platform/Clock.h"
#include "TallyglassKit/Platform/SystemPaths.h"
#include "TallyglassKit/Platform/UserDefaults.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace tallyglass {

class CacheSession;
class Workspace;

struct AppEnvironment {
    /// This computer, with the user's diff cache.
    explicit AppEnvironment(SystemPaths systemPaths = SystemPaths::standard());
    /// The same with another tmutil.
    AppEnvironment(SystemPaths systemPaths, TMUtilRunner tool);

    SystemPaths paths;
    TMUtilRunner runner;
    Clock clock;
    std::function<FDAStatus()> probeAccess;               ///< blocks; called on the pool
    TimerFactory makeTimer;                               ///< timers that count through sleep
    std::shared_ptr<CacheSession> cache;                  ///< runs `runner`; never null
    UserDefaults defaults;                                ///< read and written on the pool
    std::function<std::string()> userName;                ///< the name with which the user logged in
    std::function<std::filesystem::path()> desktopFolder; ///< of the user; reads a file
    /// The time for each probe of a diagnostics capture.
    std::chrono::milliseconds probeTime = TMUtilRunner::defaultKillAfter;
    Workspace* workspace = nullptr; ///< outlives the models; without one nothing is opened
};

} // namespace tallyglass
