// `tmutil isexcluded`, `addexclusion` and `removeexclusion`.

#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace tallyglass {

class MachinePaths;

/// Prints a line for each path, which it names as it was given, made absolute. Returns the exit status.
[[nodiscard]] int isExcludedCommand(const MachinePaths& machine, const std::vector<std::string>& paths,
                                    FILE* output);

enum class ExclusionChange { add, remove };

/// Marks the items, or clears the mark; with "-p" it is the paths that are put on the skip list or taken off.
/// Goes on after an item that can't be changed. Returns the exit status.
[[nodiscard]] int changeExclusionCommand(const MachinePaths& machine,
                                         const std::vector<std::string>& arguments, ExclusionChange change,
                                         FILE* complaints);

} // namespace tallyglass
