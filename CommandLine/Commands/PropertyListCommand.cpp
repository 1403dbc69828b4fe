#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/PropertyListJSON.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"

#include <memory>

namespace tallyglass::commandline {

Command propertyListCommand() {
    const auto file = std::make_shared<std::string>();
    return {"plist",
            "Any property list as JSON, whatever its form",
            {{"FILE", "The file, or - for standard input", file.get()}},
            [file](const Context& context) {
                constexpr auto most = PropertyList::mostBytes;
                const auto bytes = *file == "-" ? readStandardInput(context.stop, most)
                                                : readFile(*file, context.stop, most);
                const auto list = PropertyList::parse(bytes);
                printPropertyListJSON(list.root(), context.out);
                context.out << "\n";
            }};
}

} // namespace tallyglass::commandline
