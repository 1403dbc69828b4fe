// Copies a backup's sources within this process, by the same rules as rsync does for RsyncCopier: for the
// sample machine, whose many small backups would mostly spend time starting processes.

#pragma once

#include "HostTools/Machine/SnapshotCopier.h"

namespace tallyglass {

class LinkCopier final : public SnapshotCopier {
public:
    void copy(const CopyOrder& order, const CopyCheckpoint& checkpoint) override;
};

} // namespace tallyglass
