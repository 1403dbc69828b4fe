// Runs the real tally with a temporary cache and records its output.

#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <nlohmann/json.hpp>
#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tallyglass::test {

struct TallyRun {
    int exitCode = -1;
    std::string out;
    std::string err;

    /// Standard output as one JSON document.
    [[nodiscard]] nlohmann::json json() const { return nlohmann::json::parse(out); }
};

/// Replaces the user's data folder by a temporary one, for this process and its children.
class TallySession {
public:
    TallySession();
    ~TallySession();
    TallySession(const TallySession&) = delete;
    TallySession& operator=(const TallySession&) = delete;

    [[nodiscard]] TallyRun tally(const std::vector<std::string>& arguments) const;

    /// The same through a shell, in which $TALLY is the program.
    [[nodiscard]] TallyRun shell(const std::string& script) const;

    /// Starts it with default termination signals, as at a terminal; a background test may not have them. Its
    /// output goes to the file "output" in folder(). The caller waits for the process.
    [[nodiscard]] pid_t start(std::vector<std::string> arguments) const;

    [[nodiscard]] const TemporaryFolder& folder() const { return m_folder; }

private:
    TemporaryFolder m_folder;
};

} // namespace tallyglass::test
