#include "Tallyglass/Models/Internal/FixtureExclusions.h"

#include "Tallyglass/Models/ExclusionsModel.h"
#include "Tallyglass/Models/Internal/FixtureFiles.h"
#include "TallyglassKit/Insight/ExclusionManager.h"
#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/UserDefaults.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace tallyglass {

namespace {

TMUtilResult failure(const std::string& path, int code) {
    return {.exitCode = 1,
            .stdout = {},
            .stderr =
                fmt::format("{}: Error ({}) while attempting to change exclusion setting.\n", path, code)};
}

void setMarker(const std::string& path, bool excluded) {
    if (excluded)
        setExtendedAttribute(path, ExclusionManager::excludeAttribute, "com.apple.backupd");
    else
        removeExtendedAttribute(path, ExclusionManager::excludeAttribute);
}

} // namespace

FixtureExclusions::FixtureExclusions(std::string_view name, const FixtureFiles& files,
                                     std::vector<std::string> skipPaths)
    : m_changesFail(name == "exclusions-failure"), m_excluded(std::move(skipPaths)) {
    if (!name.starts_with("exclusions-"))
        return;
    const auto real = [&](std::string_view path) {
        std::string item = files.paths().path(path);
        files.write(item, {});
        return item;
    };
    const std::string excluded = real("/Users/alex/Movies/Screen Recordings/2026-11-18 Rehearsal.mov");
    try {
        setMarker(excluded, true);
    } catch (const FileError&) {
        m_excluded.push_back(excluded); // the file system has no attributes; then by a rule
    }
    m_excluded.emplace_back("/Users/alex/Projects/Renderings");
    std::vector<std::string> watched{real("/Users/alex/Documents/Thesis/Chapter 3 (draft).pages"), excluded,
                                     "/Users/alex/Projects/Renderings/Intermediate/Version 17/frames.noindex",
                                     "/Users/alex/Library/Caches/com.example.editor",
                                     "/Users/alex/Desktop/Old invoices.numbers"};
    std::ranges::sort(watched);
    UserDefaults(files.defaults()).setStringArray(ExclusionsModel::watchedPathsKey, watched);
}

std::string_view FixtureExclusions::wordFor(const std::string& path) const {
    const bool isUnderRule = std::ranges::any_of(
        m_excluded, [&](const std::string& rule) { return path == rule || path.starts_with(rule + '/'); });
    if (isUnderRule || ExclusionManager::hasOwnMarker(path))
        return "Excluded";
    return fileExists(path) ? "Included" : "Unknown";
}

TMUtilResult FixtureExclusions::run(std::string_view verb, std::span<const std::string> paths) const {
    std::string answer;
    for (const std::string& path : paths) {
        if (verb == "isexcluded") {
            answer += fmt::format("[{}]    {}\n", wordFor(path), path);
            continue;
        }
        if (m_changesFail)
            return failure(path, -5000); // no access
        try {
            setMarker(path, verb == "addexclusion");
        } catch (const FileError&) {
            return failure(path, -50);
        }
    }
    return {.exitCode = 0, .stdout = answer, .stderr = {}};
}

} // namespace tallyglass
