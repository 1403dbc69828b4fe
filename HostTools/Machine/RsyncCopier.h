// Copies with rsync. Stopping ends the child; so does the death of this process.

#pragma once

#include "HostTools/Machine/SnapshotCopier.h"

namespace tallyglass {

class RsyncCopier final : public SnapshotCopier {
public:
    /// `lock` is a descriptor that the child keeps open: whoever waits for it waits for the child, too.
    explicit RsyncCopier(int lock) : m_lock(lock) {}
    void copy(const CopyOrder& order, const CopyCheckpoint& checkpoint) override;

private:
    int m_lock;
};

/// The newest figures in a piece of rsync's progress output, such as "  1024  10%  1.2MB/s  0:00:01 (xfr#3,
/// to-chk=5/9)". What isn't there stays as it was.
void readProgress(std::string_view output, CopyProgress& progress);

/// A line of an exclude list that means just this path. rsync takes a pattern without wildcards as it stands,
/// and one with any as a pattern throughout.
[[nodiscard]] std::string excludePattern(const std::string& logicalPath);

} // namespace tallyglass
