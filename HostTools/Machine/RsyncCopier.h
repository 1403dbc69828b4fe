// Copies with rsync. A stop terminates the child, as does the end of this process.

#pragma once

#include "HostTools/Machine/SnapshotCopier.h"

namespace tallyglass {

class RsyncCopier final : public SnapshotCopier {
public:
    /// The child inherits the descriptor `lock`, so that waiting for the lock waits for the child, too.
    explicit RsyncCopier(int lock) : m_lock(lock) {}
    void copy(const CopyOrder& order, const CopyCheckpoint& checkpoint) override;

private:
    int m_lock;
};

/// The latest figures in rsync's progress output, such as "  1024  10%  1.2MB/s  0:00:01 (xfr#3,
/// to-chk=5/9)". Missing ones are unchanged.
void readProgress(std::string_view output, CopyProgress& progress);

/// A line of an exclude list that matches exactly this path. rsync only processes escapes in patterns with
/// wildcards.
[[nodiscard]] std::string excludePattern(const std::string& logicalPath);

} // namespace tallyglass
