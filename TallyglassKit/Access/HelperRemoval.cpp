#include "TallyglassKit/Access/HelperRemoval.h"

#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/Processes/ChildProcess.h"
#include "TallyglassKit/Platform/Text/Text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>

namespace tallyglass {

namespace {

/// The text as one quoted word of the shell.
std::string inSingleQuotes(std::string_view text) {
    std::string word = "'";
    for (const char character : text) {
        if (character == '\'')
            word += R"('\'')";
        else
            word += character;
    }
    return word + "'";
}

/// The same, without quotes if the text needs none.
std::string shellWord(std::string_view text) {
    static constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/._-";
    return text.find_first_not_of(plain) == std::string_view::npos ? std::string(text) : inSingleQuotes(text);
}

} // namespace

std::string HelperRemoval::command() const {
    const std::string script = paths.path(scriptPath);
    if (isExecutableFile(script))
        return inSingleQuotes(script);
    const auto word = [this](std::string_view path) { return shellWord(paths.path(path)); };
    const std::array lines{
        "rm -f " + word(daemonPath),
        "rm -f " + word(helperPath) + " " + word(scriptPath),
        "rm -rf " + word(supportFolder),
        "rm -f " + word(logPath),
        fmt::format("launchctl bootout system/{} 2>/dev/null || true", label),
    };
    return fmt::format("{}", fmt::join(lines, "; "));
}

std::string HelperRemoval::appleScript(std::string_view command) {
    std::string text;
    for (const char character : command) {
        if (character == '\\' || character == '"')
            text += '\\';
        text += character;
    }
    return fmt::format("do shell script \"{}\" with administrator privileges", text);
}

HelperRemoval::Result HelperRemoval::run(std::stop_token stop) const {
    const ChildProcess child{.executable = paths.path(osascriptPath),
                             .arguments = {"-e", appleScript(command())}};
    try {
        const auto result = child.run(stop);
        if (result.end == decltype(result.end)(ChildProcess::Exited{0}))
            return Succeeded{};
        const std::string_view errors = result.errors;
        if (errors.find("User canceled") != std::string_view::npos)
            return Declined{};
        return Failed{std::string(trimmed(errors))};
    } catch (const Error& error) {
        return Failed{error.errorDescription()};
    }
}

} // namespace tallyglass
