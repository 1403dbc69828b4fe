// One copy of a tree, item by item in folders held open, so that nobody can redirect it by a link. One
// thread.

#pragma once

#include "TallyglassKit/Platform/Files/FileCopy.h"
#include "TallyglassKit/Platform/Files/FolderWalk.h"

#include <chrono>
#include <optional>
#include <stop_token>

namespace tallyglass {

class TreeCopy {
public:
    /// Both are borrowed.
    TreeCopy(const OnCopyProgress& progress, const std::stop_token& stop)
        : m_onProgress(progress), m_stop(stop) {}

    /// Copies `source` to `target`, where nothing may be. Called once. A failure leaves what was copied.
    void copy(const WalkItem& source, const WalkItem& target);

private:
    void copyAny(const WalkItem& source, const WalkItem& target, const struct stat& status);
    void copyFile(const WalkItem& source, const WalkItem& target, const struct stat& status);
    void copyContents(const WalkItem& source, int from, const WalkItem& target, int to, off_t size);
    off_t copyPart(const WalkItem& source, int from, const WalkItem& target, int to, off_t begin, off_t end);
    void copyFolder(const WalkItem& source, const WalkItem& target, const struct stat& status);
    void throwIfStopped() const;
    void report(bool isDue);

    const OnCopyProgress& m_onProgress;
    const std::stop_token& m_stop;
    CopyProgress m_progress;
    std::chrono::steady_clock::time_point m_reported;
    /// The topmost folder that was made, which must not be copied into itself.
    std::optional<struct stat> m_top;
};

} // namespace tallyglass
