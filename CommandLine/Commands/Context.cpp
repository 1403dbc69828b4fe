#include "CommandLine/Commands/Context.h"

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"

#include <nlohmann/json.hpp>

namespace tallyglass::commandline {

TMUtilRunner Context::runner() const {
    return TMUtilRunner(paths.path(TMUtilRunner::executablePath));
}

BackupStore Context::openStore() const {
    return BackupStore(TallyglassDatabase::defaultURL());
}

void Context::print(const nlohmann::ordered_json& document) const {
    // File names needn't be valid UTF-8, JSON must be.
    out << document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
}

} // namespace tallyglass::commandline
