#include "TallyglassKit/Access/BackupListing.h"

#include "TallyglassKit/Access/TMUtilError.h"

namespace tallyglass {

std::string BackupListing::message() {
    return "No backups were found on this destination. If it's a network destination, check that it is "
           "switched on and reachable.";
}

std::string BackupListing::message(const std::exception& failure) {
    const auto* error = dynamic_cast<const TMUtilError*>(&failure);
    if (error && error->get<TMUtilError::RequiresFullDiskAccess>())
        return "Listing backups needs Full Disk Access. Grant it to Tallyglass in System Settings > Privacy "
               "& "
               "Security > Full Disk Access. Updating the app can reset this, so it may need granting again.";
    return std::string("Backups couldn't be listed: ") + failure.what();
}

std::string BackupListing::message(const std::exception_ptr& failure) {
    if (!failure)
        return message();
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& exception) {
        return message(exception);
    }
}

} // namespace tallyglass
