// Removes the privileged helper with the administrator's password: the command, the AppleScript line that
// runs it, and the run.
//
// Immutable after construction; any thread.

#pragma once

#include "TallyglassKit/Platform/SystemPaths.h"

#include <stop_token>
#include <string>
#include <string_view>
#include <variant>

namespace tallyglass {

struct HelperRemoval {
    static constexpr std::string_view label = "com.brindlewick.Tallyglass.helper"; ///< of the launch daemon
    static constexpr std::string_view helperPath = "/usr/local/libexec/tallyglass-helper";
    static constexpr std::string_view scriptPath = "/usr/local/libexec/tallyglass-uninstall.sh";
    static constexpr std::string_view daemonPath =
        "/Library/LaunchDaemons/com.brindlewick.Tallyglass.helper.plist";
    static constexpr std::string_view supportFolder = "/Library/Application Support/Tallyglass";
    static constexpr std::string_view triggerPath = "/Library/Application Support/Tallyglass/refresh";
    static constexpr std::string_view logPath = "/var/log/tallyglass-helper.log";
    static constexpr std::string_view osascriptPath = "/usr/bin/osascript";

    SystemPaths paths;

    struct Succeeded {
        friend bool operator==(const Succeeded&, const Succeeded&) = default;
    };
    /// The user cancelled the password prompt.
    struct Declined {
        friend bool operator==(const Declined&, const Declined&) = default;
    };
    struct Failed {
        std::string message;
        friend bool operator==(const Failed&, const Failed&) = default;
    };
    using Result = std::variant<Succeeded, Declined, Failed>;

    /// The shell command: the helper's uninstall script, or equivalent commands if that isn't executable.
    [[nodiscard]] std::string command() const;

    /// `do shell script "{command}" with administrator privileges`, with the command escaped.
    [[nodiscard]] static std::string appleScript(std::string_view command);

    /// Runs it and waits for its end. Throws Cancelled, nothing else.
    [[nodiscard]] Result run(std::stop_token stop = {}) const;
};

} // namespace tallyglass
