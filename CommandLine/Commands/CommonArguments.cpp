#include "CommandLine/Commands/CommonArguments.h"

namespace tallyglass::commandline {

Argument newerBackupArgument(std::string& backup) {
    return {.name = "TO",
            .description = "The newer backup",
            .value = &backup,
            .type = "BACKUP",
            .isOptional = true};
}

Argument sortArgument(std::string& order) {
    return {.name = "--sort",
            .description = "The order of the changes (path)",
            .value = &order,
            .type = "path|size|name",
            .choices = {"path", "size", "name"}};
}

} // namespace tallyglass::commandline
