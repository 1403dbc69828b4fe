// Traces one path through all backups and groups the backups that hold the same version of it. It looks the
// path up in each backup by its file status: no file is opened, tmutil isn't run.
//
// Immutable and cheap to copy; thread-safe. Paths are bytes: a name in composed and in decomposed Unicode
// finds what the file system that holds the backups finds.

#pragma once

#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Insight/FileVersion.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class FileHistoryScanner {
public:
    /// Called on the scanning thread before each backup is looked into, with its position from 1.
    using OnProgress = std::function<void(std::size_t index, std::size_t count)>;

    /// `runner` is the tmutil that lists the backups.
    explicit FileHistoryScanner(TMUtilRunner runner) : m_runner(std::move(runner)) {}

    [[nodiscard]] const TMUtilRunner& runner() const { return m_runner; }

    /// `logicalPath` without white space at its ends and with a slash in front; empty if nothing is left.
    [[nodiscard]] static std::string normalize(std::string_view logicalPath);

    /// The names in the folder `backupRoot` that don't begin with ".", ascending, whatever they are; none if
    /// it can't be listed.
    [[nodiscard]] static std::vector<std::string> volumes(const std::string& backupRoot);

    /// One version per backup root, in the order of `backups`, without the backups that have no volume.
    /// `logicalPath` is as from normalize(). Without a `volume`, each backup's first one is used.
    ///
    /// Never fails: what can't be read is missing. A stop ends it early, with the versions so far.
    [[nodiscard]] std::vector<FileVersion> versions(std::string_view logicalPath,
                                                    const std::optional<std::string>& volume,
                                                    std::span<const std::string> backups,
                                                    const OnProgress& progress = {},
                                                    const std::stop_token& stop = {}) const;

    /// What is at `path`, which lies in the backup at `root`. Links aren't followed.
    [[nodiscard]] static FileVersion probe(std::string path, const std::string& root);

    /// Groups neighbours of the same version, in the given order. Versions that don't exist are skipped and
    /// don't end a run.
    [[nodiscard]] static std::vector<FileVersionSpan> spans(std::vector<FileVersion> versions);

private:
    TMUtilRunner m_runner;
};

} // namespace tallyglass
