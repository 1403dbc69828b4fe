#include "TallyglassKit/Insight/ExclusionManager.h"

#include "TallyglassKit/Access/TMUtilResult.h"
#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "TallyglassKit/Platform/Text/CanonicalText.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <unordered_map>

namespace tallyglass {

namespace {

struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
};

/// The states that tmutil prints, by path.
class EffectiveStates {
public:
    explicit EffectiveStates(std::string_view output) {
        for (std::size_t end = 0; !output.empty(); output.remove_prefix(std::min(end + 1, output.size()))) {
            end = std::min(output.find('\n'), output.size());
            read(output.substr(0, end));
        }
    }

    /// Unknown if there is no line for the path. A file system may change a name's Unicode form, so an
    /// equivalent path will do.
    [[nodiscard]] ExclusionState of(const std::string& path) const {
        if (const auto exact = m_states.find(path); exact != m_states.end())
            return exact->second;
        const auto isEquivalent = [&](const auto& entry) {
            return std::is_eq(compareCanonically(entry.first, path));
        };
        const auto equivalent = std::ranges::find_if(m_states, isEquivalent);
        return equivalent == m_states.end() ? ExclusionState::unknown : equivalent->second;
    }

private:
    void read(std::string_view line) {
        const auto bracket = line.find(']');
        if (bracket == std::string_view::npos)
            return;
        const auto state = line.starts_with("[Excluded]")   ? ExclusionState::excluded
                           : line.starts_with("[Included]") ? ExclusionState::included
                                                            : ExclusionState::unknown;
        line.remove_prefix(bracket + 1);
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        m_states.insert_or_assign(std::string(line), state);
    }

    std::unordered_map<std::string, ExclusionState, Hash, std::equal_to<>> m_states;
};

EffectiveStates effectiveStates(const TMUtilRunner& runner, std::span<const std::string> paths,
                                const std::stop_token& stop) {
    TMUtilRunner::Arguments arguments{"isexcluded"};
    arguments.insert(arguments.end(), paths.begin(), paths.end());
    try {
        const auto result = runner.runRaw(arguments, TMUtilRunner::defaultKillAfter, nullptr, stop);
        return EffectiveStates(result.stdout.view());
    } catch (const TMUtilError&) {
        return EffectiveStates({});
    }
}

bool isWithin(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

std::vector<ExclusionStatus> ExclusionManager::status(std::span<const std::string> paths,
                                                      std::span<const std::string> skipPaths,
                                                      const std::stop_token& stop) const {
    if (paths.empty())
        return {};
    const auto states = effectiveStates(m_runner, paths, stop);
    std::vector<std::string> rules;
    std::ranges::transform(skipPaths, std::back_inserter(rules), canonicalForm);
    const auto reason = [&](const std::string& path) {
        const auto applies = [canonical = canonicalForm(path)](const auto& rule) {
            return isWithin(canonical, rule);
        };
        if (std::ranges::any_of(rules, applies))
            return ExclusionReason::systemSkipPath;
        return hasOwnMarker(path) ? ExclusionReason::ownMarker : ExclusionReason::inherited;
    };

    std::vector<ExclusionStatus> statuses;
    statuses.reserve(paths.size());
    for (const auto& path : paths) {
        auto& status = statuses.emplace_back(ExclusionStatus{.path = path, .state = states.of(path)});
        if (status.isExcluded())
            status.reason = reason(path);
    }
    return statuses;
}

bool ExclusionManager::hasOwnMarker(const std::string& path) {
    return hasExtendedAttribute(path, excludeAttribute);
}

void ExclusionManager::exclude(const std::string& path, const std::stop_token& stop) const {
    static_cast<void>(m_runner.run({"addexclusion", path}, stop));
}

void ExclusionManager::include(const std::string& path, const std::stop_token& stop) const {
    static_cast<void>(m_runner.run({"removeexclusion", path}, stop));
}

} // namespace tallyglass
