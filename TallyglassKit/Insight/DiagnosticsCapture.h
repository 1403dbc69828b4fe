// Saves what tmutil says to a fixed series of read-only questions, for a report on a problem. Free functions;
// any thread.

#pragma once

#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Insight/DiagnosticsDump.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>

namespace tallyglass {

/// Called on the capturing thread with the label of each probe before it runs.
using OnProbe = std::function<void(const std::string& label)>;

/// "Tallyglass Diagnostics" in `desktop`.
[[nodiscard]] std::filesystem::path diagnosticsFolder(const std::filesystem::path& desktop);

/// Creates the folder with its missing ancestors, readable by the user alone. Returns its path without links.
/// Throws FileError: also for a link, through which nothing is written, and for a place in a backup.
std::filesystem::path makeDiagnosticsFolder(const std::filesystem::path& folder);

/// Runs the probes one after the other and saves their outputs into the folder `into`, or else the one on the
/// user's desktop, with a summary in "manifest.txt". `depth` is that of the comparison of the last two
/// backups.
///
/// A probe that fails doesn't stop those after it. One that takes longer than `killTime` is ended like a
/// stopped child, and its step says that it timed out. Files of an earlier capture are replaced, each in one
/// step, or removed where there is nothing in their place now.
///
/// Throws FileError if the folder can't be created or the summary not be written. A stop ends the running
/// probe and throws Cancelled.
DiagnosticsDump captureDiagnostics(const TMUtilRunner& runner,
                                   const std::optional<std::filesystem::path>& into, std::int64_t depth,
                                   const OnProbe& progress = {}, const std::stop_token& stop = {},
                                   std::chrono::milliseconds killTime = TMUtilRunner::defaultKillAfter);

} // namespace tallyglass
