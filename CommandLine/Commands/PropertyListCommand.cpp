#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/PropertyListJSON.h"
#include "TallyglassKit/Platform/FileReading.h"
#include "TallyglassKit/Platform/PropertyList.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tallyglass::commandline {

void addPropertyListCommand(CLI::App& app, Action& chosen) {
    const auto file = std::make_shared<std::string>();
    auto* command = app.add_subcommand("plist", "Any property list as JSON, whatever its form");
    command->add_option("FILE", *file, "The file, or - for standard input")->required();
    command->callback([&chosen, file] {
        chosen = [file](const Context& context) {
            const auto bytes = *file == "-" ? readStandardInput(context.stop) : readFile(*file, context.stop);
            const auto list = PropertyList::parse(bytes);
            printPropertyListJSON(list.root(), context.out);
            context.out << "\n";
        };
    });
}

} // namespace tallyglass::commandline
