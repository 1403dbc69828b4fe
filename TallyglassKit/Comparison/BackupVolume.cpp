#include "TallyglassKit/Comparison/BackupVolume.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace tallyglass {

std::optional<std::string> volumeComponent(const std::string& root) {
    namespace fs = std::filesystem;
    std::optional<std::string> first;
    std::error_code failure;
    fs::directory_iterator entry(root, failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        std::string name = entry->path().filename().string();
        std::error_code unknown;
        if (!name.starts_with('.') && entry->is_directory(unknown) && (!first || name < *first))
            first = std::move(name);
    }
    return failure ? std::nullopt : first;
}

} // namespace tallyglass
