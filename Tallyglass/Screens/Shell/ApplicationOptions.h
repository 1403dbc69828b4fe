// What the program was asked for on its command line.

#pragma once

#include "TallyglassKit/Platform/Error.h"

#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

/// Arguments that make no sense; the text is one line that says why.
struct UsageError : Error {
    using Error::Error;
};

struct ApplicationOptions {
    std::optional<std::string> answer = {};      ///< what to print instead of running: help or the version
    std::optional<std::string> fixture = {};     ///< the session to show in place of this machine
    std::optional<std::string> screenshots = {}; ///< the folder for pictures of that session
    bool reportsStart = false; ///< print "ready" when the first frame that shows data is drawn

    /// Reads the arguments after the program's name. `fixtures` are the names that `--fixture` takes.
    /// Throws `UsageError`.
    [[nodiscard]] static ApplicationOptions parse(std::vector<std::string> arguments,
                                                  const std::vector<std::string>& fixtures);

    friend bool operator==(const ApplicationOptions&, const ApplicationOptions&) = default;
};

} // namespace tallyglass
