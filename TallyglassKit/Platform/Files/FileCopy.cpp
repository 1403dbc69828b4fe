#include "TallyglassKit/Platform/Files/FileCopy.h"

#include "TallyglassKit/Platform/Files/FolderWalk.h"
#include "TallyglassKit/Platform/Files/Internal/CopyDestination.h"
#include "TallyglassKit/Platform/Files/Internal/TreeCopy.h"

namespace tallyglass {

void copyItem(const std::string& source, const std::string& destination, ExistingItem existing,
              const OnCopyProgress& progress, const std::stop_token& stop) {
    const WalkItem from = WalkItem::at(source);
    static_cast<void>(from.status()); // a missing source is reported first
    CopyDestination to(destination);
    to.check(from, existing);
    to.begin(stop);
    std::optional<WalkItem> replaced;
    try {
        TreeCopy(progress, stop).copy(from, to.draft());
        replaced = to.finish(existing);
    } catch (...) {
        to.discard();
        throw;
    }
    if (replaced)
        to.removeReplaced(*replaced);
}

} // namespace tallyglass
