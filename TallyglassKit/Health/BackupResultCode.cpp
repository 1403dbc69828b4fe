#include "TallyglassKit/Health/BackupResultCode.h"

#include <unordered_map>

namespace tallyglass {

namespace {

const std::unordered_map<std::int64_t, std::string_view>& reasons() {
    static const std::unordered_map<std::int64_t, std::string_view> map{
        {1, "Time Machine couldn’t start."},
        {2, "Couldn’t create the backup folder."},
        {3, "The backup disk isn’t Mac OS Extended (Journaled), which is required."},
        {4, "Couldn’t read the backup disk’s status."},
        {5, "Couldn’t enable ownership on the backup disk — repair or erase it in Disk Utility."},
        {6, "The backup disk isn’t Mac OS Extended (Journaled), which is required."},
        {7, "Not enough space on the backup disk."},
        {8, "The backup disk is read-only — repair or erase it in Disk Utility."},
        {9, "The backup disk doesn’t have Access Control Lists enabled, which is required."},
        {10, "An error occurred while preparing the backup."},
        {11, "An error occurred while copying files. This is often temporary."},
        {12, "An error occurred while linking files on the backup disk."},
        {14, "Couldn’t remove expired backups from the backup disk."},
        {15, "Expired backups were removed but the disk is still full — use a larger disk or exclude more "
             "files."},
        {16, "Expired backups were removed but the disk is still full — use a larger disk or exclude more "
             "files."},
        {17, "No backup disk is selected."},
        {18, "The backup disk couldn’t be found — check that it’s connected."},
        {19, "The backup disk couldn’t be mounted."},
        {20, "The backup disk image couldn’t be created."},
        {21, "The backup disk image couldn’t be accessed."},
        {22, "The backup was canceled."},
        {23, "A source disk is case-sensitive but the backup disk isn’t."},
        {24, "Two source disks have the same name — rename one."},
        {25, "No disks are available to back up."},
        {26, "A network problem interrupted the backup."},
        {27, "The backup disk may have been ejected or disconnected."},
        {28, "The backup disk ran out of space unexpectedly."},
        {29, "A network username or password problem blocked access to the backup disk."},
        {30, "Time Machine couldn’t inherit the backup for this computer."},
        {31, "The backup disk is already in use."},
        {32, "The backup couldn’t be found."},
        {33, "The system date and time are incorrect."},
        {37, "A source disk may have been ejected or disconnected."},
        {38, "The disk image is read-only."},
        {39, "The backup disk was previously encrypted but no longer is."},
        {40, "Couldn’t verify your backups — the backup disk isn’t available."},
        {41, "Couldn’t verify your backups — the disk is read-only or unreadable."},
        {42, "Couldn’t verify your backups — verification was interrupted."},
        {44, "Couldn’t delete the backup disk image."},
        {45, "The network backup disk doesn’t support the required AFP features."},
        {49, "Couldn’t create a local snapshot to back up from."},
        {50, "Couldn’t create a local snapshot — not enough free space on the source volume."},
        {52, "The backup was encrypted with an empty password — set up a new backup."},
        {100, "Skipped — the computer was running on battery power."},
        {101, "Skipped — the battery charge was low."},
        {102, "Skipped — the computer was in a poor thermal state."},
        {103, "Skipped — FileVault was encrypting or decrypting a disk."},
        {1000, "The backup disk is almost full."},
        {1001, "The backup disk is full."},
        {1002, "Check that the disk is available, or select a new one."},
        {1003, "The backup was created on a different computer."},
        {1004, "The Time Capsule’s firmware needs updating."},
        {1006, "Verification finished — Time Machine must create a new backup."},
        {1008, "The backup disk’s identity has changed since the last backup."},
        {1009, "The backup will continue when connected to a power source."},
        {1011, "Backing up an encrypted disk to an unencrypted disk."},
    };
    return map;
}

} // namespace

bool BackupResultCode::isDeferral() const {
    return (code >= 100 && code <= 103) || code == 1009;
}

std::optional<std::string_view> BackupResultCode::reason() const {
    const auto found = reasons().find(code);
    return found == reasons().end() ? std::nullopt : std::optional(found->second);
}

} // namespace tallyglass
