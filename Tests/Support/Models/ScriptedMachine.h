// A machine in a temporary folder whose tmutil is a real program that prints what the test wrote down for it,
// with a diff cache of its own and a clock and a timer that the test sets.

#pragma once

#include "Tallyglass/Models/AppModel.h"
#include "TallyglassKit/Comparison/CacheSession.h"
#include "Tests/Support/Models/FakeTimer.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tallyglass::test {

class ScriptedMachine {
public:
    /// Has tmutil, asked for `verb`, print this and exit with 0.
    void answer(const std::string& verb, const std::string& output) const;
    /// Has it fail with `error` on standard error.
    void fail(const std::string& verb, const std::string& error) const;
    /// Has it take so many seconds for each answer.
    void delay(const std::string& seconds) const;
    /// Has it wait, once asked, until it is told to terminate or has an answer.
    void hold(const std::string& verb) const;
    /// What "tmutil status" says: `entries` are of the form "Running = 1;".
    void setStatus(const std::string& entries) const;
    /// The preferences, with this many backups an hour apart on each destination, the last an hour ago.
    void setDestinations(const std::vector<std::string>& identifiers, int backups = 3) const;
    /// Makes so many backups, a day apart, the last one day ago, each of them an empty folder. Their roots.
    std::vector<std::string> setBackups(int count) const;
    /// The date of one of so many backups.
    [[nodiscard]] Date dateOfBackup(int index, int count) const;
    /// Has "tmutil compare" report these files, each of 10 bytes, as added below /Data of `root`; a name that
    /// ends in a slash stands for a folder.
    void setAdded(const std::string& root, const std::vector<std::string>& names) const;
    /// Has it report these files as touched, without a change of their content, in the newer of two roots.
    void setTouched(const std::string& older, const std::string& newer,
                    const std::vector<std::string>& names) const;
    /// The helper's copy of the manifest, with one row of this transaction.
    void setManifest(int xid) const;
    void grantAccess() const;

    /// The verbs that tmutil was asked for, in their order.
    [[nodiscard]] std::vector<std::string> calls() const;
    [[nodiscard]] AppEnvironment environment() const;

    const TemporaryFolder& folder() const { return m_folder; }
    [[nodiscard]] SystemPaths paths() const { return SystemPaths(m_folder.path()); }
    [[nodiscard]] std::filesystem::path cacheFile() const {
        return m_folder / "data/Tallyglass/cache.sqlite";
    }
    [[nodiscard]] std::filesystem::path defaultsFile() const {
        return m_folder / "data/Tallyglass/defaults.json";
    }

    /// Starts with an idle engine and no settings.
    ScriptedMachine();

    const std::shared_ptr<FakeTimer::State> timer = std::make_shared<FakeTimer::State>();
    const std::shared_ptr<Date> now = std::make_shared<Date>(dateSince1970(1'764'000'000));

private:
    TemporaryFolder m_folder;

public:
    /// Shared by all environment.
    const std::shared_ptr<CacheSession> cache;
};

} // namespace tallyglass::test
