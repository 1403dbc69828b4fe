// What a mistyped word may have meant. Pure; any thread.

#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass::commandline {

/// The words that differ from `word` by few letters, or begin with it; the nearest first, at most three.
[[nodiscard]] std::vector<std::string> nearestWords(std::string_view word,
                                                    std::span<const std::string> words);

} // namespace tallyglass::commandline
