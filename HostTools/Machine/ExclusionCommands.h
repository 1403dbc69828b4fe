// `tmutil isexcluded`, `addexclusion` and `removeexclusion`.

#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace tallyglass {

class MachinePaths;

/// Prints a line for each path, made absolute. Returns the exit status.
[[nodiscard]] int isExcludedCommand(const MachinePaths& machine, const std::vector<std::string>& paths,
                                    FILE* output);

enum class ExclusionChange { add, remove };

/// Sets or clears the marker of items; with "-p", adds paths to the skip list or removes them. Continues
/// after an item that can't be changed. Returns the exit status.
[[nodiscard]] int changeExclusionCommand(const MachinePaths& machine,
                                         const std::vector<std::string>& arguments, ExclusionChange change,
                                         FILE* errors);

} // namespace tallyglass
