// A temporary machine with its host tmutil.

#pragma once

#include "HostTools/Machine/MachinePaths.h"
#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Access/TimeMachinePreferences.h"
#include "TallyglassKit/Platform/Processes/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tallyglass::test {

struct ToolResult {
    int status;
    std::string output;
    std::string errors;
};

inline ToolResult runTool(const std::string& tool, const std::vector<std::string>& arguments) {
    const auto result = ChildProcess{.executable = tool, .arguments = arguments}.run();
    const auto* exited = std::get_if<ChildProcess::Exited>(&result.end);
    return {exited ? exited->status : -1, std::string(result.output.view()),
            std::string(result.errors.view())};
}

class HostMachine {
public:
    HostMachine() {
        std::filesystem::create_directories(source());
        std::filesystem::create_directories(paths().tool().parent_path());
        std::filesystem::create_symlink(program("tmutil"), paths().tool());
    }

    /// Creates the machine; `more` are further options of the verb.
    void setUp(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"setup", "--source", source(), "--destination",
                                           disk(),  "--name",   "Disk"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const auto result = run(arguments);
        ASSERT_EQ(result.status, 0) << result.errors;
    }

    ToolResult run(const std::vector<std::string>& arguments) const { return runTool(tool(), arguments); }
    void backUp() const {
        const auto result = run({"startbackup", "--block"});
        ASSERT_EQ(result.status, 0) << result.errors;
    }
    std::vector<std::string> backups() const {
        std::istringstream lines(run({"listbackups", "-m"}).output);
        std::vector<std::string> result;
        for (std::string line; std::getline(lines, line);)
            result.push_back(line);
        return result;
    }
    /// The path of the source in a backup.
    std::filesystem::path inBackup(const std::string& backup) const {
        return backup + "/Data" + source().string();
    }
    TMDestination destination() const {
        return TimeMachinePreferences().read(SystemPaths(root())).value().destinations.at(0);
    }

    std::filesystem::path root() const { return m_folder / "root"; }
    std::filesystem::path source() const { return m_folder / "source"; }
    std::filesystem::path disk() const { return m_folder / "disk"; }
    std::string tool() const { return paths().tool(); }
    MachinePaths paths() const { return MachinePaths(SystemPaths(root())); }
    const TemporaryFolder& folder() const { return m_folder; }

private:
    TemporaryFolder m_folder;
};

/// All properties in a tree that a backup must preserve, by path: kind, permissions, date, and contents or
/// target.
inline std::map<std::string, std::string> describeTree(const std::filesystem::path& root) {
    namespace fs = std::filesystem;
    std::map<std::string, std::string> result;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        std::ostringstream text;
        const auto status = entry.symlink_status();
        text << static_cast<int>(status.type()) << ' ' << static_cast<int>(status.permissions()) << ' ';
        if (entry.is_symlink())
            text << fs::read_symlink(entry.path());
        else
            text << entry.last_write_time().time_since_epoch().count() << ' ';
        if (entry.is_regular_file() && !entry.is_symlink())
            text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        result[entry.path().lexically_relative(root)] = text.str();
    }
    return result;
}

} // namespace tallyglass::test
