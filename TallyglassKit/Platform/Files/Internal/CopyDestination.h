// The place that a copy goes to: the folder it lies in, held open and shared with other copies into it, and
// the name that the copy takes when it is complete. One thread.

#pragma once

#include "TallyglassKit/Platform/Files/FileCopy.h"
#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Files/FolderWalk.h"

#include <optional>
#include <stop_token>
#include <string>

namespace tallyglass {

class CopyDestination {
public:
    explicit CopyDestination(const std::string& path);

    /// Throws unless a copy of `source` may go here.
    void check(const WalkItem& source, ExistingItem existing) const;

    /// Announces a copy into the folder, for as long as this object lives. If nobody else has, removes what
    /// copies that were killed have left there. A stop throws Cancelled.
    void begin(const std::stop_token& stop);

    /// The temporary place of the copy. Its path is the destination's, which is the one to report.
    [[nodiscard]] const WalkItem& draft() const { return m_draft; }

    /// Gives the draft the destination's name. Returns what had it until then, if that is left to be removed.
    [[nodiscard]] std::optional<WalkItem> finish(ExistingItem existing) const;
    void removeReplaced(const WalkItem& item) const;

    /// Removes the draft, if there is one. Never throws.
    void discard() const noexcept;

private:
    void removeLeftovers(const std::stop_token& stop) const;
    [[nodiscard]] std::optional<WalkItem> replace() const;
    [[nodiscard]] WalkItem exchangeInSteps() const;
    void synchronizeDraft() const;
    [[nodiscard]] std::optional<struct stat> existingItem() const;

    FileDescriptor m_folder; ///< only a place, which needs no right to read the folder
    FileDescriptor m_lock;
    WalkItem m_item;
    WalkItem m_draft;
};

} // namespace tallyglass
