#include "CommandLine/Commands/Suggestions.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace tallyglass::commandline {

namespace {

constexpr std::size_t mostWords = 3;

/// The least number of letters to insert, remove or replace that makes one of the other (Levenshtein): row by
/// row, where element j is the distance of the beginning of `a` so far from the first j letters of `b`.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char letter : a) {
        std::size_t diagonal = std::exchange(row[0], row[0] + 1);
        for (std::size_t j = 1; j < row.size(); ++j) {
            const auto replaced = diagonal + (letter != b[j - 1]);
            diagonal = std::exchange(row[j], std::min({row[j] + 1, row[j - 1] + 1, replaced}));
        }
    }
    return row.back();
}

} // namespace

std::vector<std::string> nearestWords(std::string_view word, std::span<const std::string> words) {
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const auto& candidate : words) {
        const bool begins = !word.empty() && candidate.starts_with(word);
        const auto letters = begins ? 0 : distance(word, candidate);
        if (letters <= std::max<std::size_t>(word.size(), 3) / 3)
            near.emplace_back(letters, candidate);
    }
    std::ranges::stable_sort(near, {}, [](const auto& entry) { return entry.first; });
    near.resize(std::min(near.size(), mostWords));
    std::vector<std::string> result;
    for (auto& entry : near)
        result.push_back(std::move(entry.second));
    return result;
}

} // namespace tallyglass::commandline
