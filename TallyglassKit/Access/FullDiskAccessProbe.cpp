#include "TallyglassKit/Access/FullDiskAccessProbe.h"

#include "TallyglassKit/Platform/Files/FileStatus.h"

#include <cerrno>

namespace tallyglass {

std::string_view rawValue(FDAStatus status) {
    switch (status) {
    case FDAStatus::granted:
        return "granted";
    case FDAStatus::denied:
        return "denied";
    case FDAStatus::indeterminate:
        return "indeterminate";
    }
    return {};
}

template <>
std::optional<FDAStatus> fromRawValue<FDAStatus>(std::string_view raw) {
    for (const auto status : {FDAStatus::granted, FDAStatus::denied, FDAStatus::indeterminate})
        if (raw == rawValue(status))
            return status;
    return std::nullopt;
}

FDAStatus FullDiskAccessProbe::probe(const std::filesystem::path& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        return FDAStatus::indeterminate;
    return statusOfOpening(openStatus(path));
}

FDAStatus FullDiskAccessProbe::probe(const SystemPaths& paths) {
    return probe(std::filesystem::path(paths.path(canaryPath)));
}

// EACCES and others decide nothing: ordinary permissions may deny the file too.
FDAStatus FullDiskAccessProbe::statusOfOpening(int error) {
    switch (error) {
    case 0:
        return FDAStatus::granted;
    case EPERM:
        return FDAStatus::denied;
    default:
        return FDAStatus::indeterminate;
    }
}

} // namespace tallyglass
