#include "Tallyglass/Screens/Shell/ApplicationOptions.h"

#include <CLI/CLI.hpp>
#include <fmt/ranges.h>

#include <algorithm>

namespace tallyglass {

namespace {

constexpr auto description = "Shows the state and the history of this machine's Time Machine backups.";
constexpr auto epilogue = R"(The machine is the one in the environment variable TALLYGLASS_ROOT, or else in
"Tallyglass/root" in your data folder. A second start brings the window of the
first to the front.)";

std::string oneLine(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return text;
}

} // namespace

ApplicationOptions ApplicationOptions::parse(std::vector<std::string> arguments,
                                             const std::vector<std::string>& fixtures) {
    CLI::App app(description, "tallyglass");
    app.footer(epilogue);
    app.set_version_flag("--version", "Tallyglass " TALLYGLASS_VERSION);
    ApplicationOptions options;
    app.add_option("--fixture", options.fixture,
                   fmt::format("Show a made-up session in place of a machine: {}", fmt::join(fixtures, ", ")))
        ->type_name("NAME");
    app.add_option("--screenshots", options.screenshots,
                   "Draw every screen and sheet of the session into PNG files in this folder, and end")
        ->type_name("FOLDER");
    app.add_flag("--report-start", options.reportsStart)->group(""); // for measurements, not in the help
    try {
        std::ranges::reverse(arguments); // as the parser wants them
        app.parse(std::move(arguments));
    } catch (const CLI::CallForVersion& version) {
        return {.answer = version.what()};
    } catch (const CLI::CallForHelp&) {
        return {.answer = app.help()};
    } catch (const CLI::ParseError& error) {
        throw UsageError(oneLine(error.what()) + " See tallyglass --help.");
    }

    if (options.fixture && std::ranges::find(fixtures, *options.fixture) == fixtures.end())
        throw UsageError(fmt::format("There is no session named \"{}\". Known: {}.", *options.fixture,
                                     fmt::join(fixtures, ", ")));
    if (options.screenshots && options.screenshots->empty())
        throw UsageError("The folder for screenshots has no name. See tallyglass --help.");
    return options;
}

} // namespace tallyglass
