// The folders of the user of this process. Any thread.

#pragma once

#include <filesystem>

namespace tallyglass {

/// $HOME, or else what the system knows; "/" if that is nothing.
[[nodiscard]] std::filesystem::path homeFolder();

/// The folder whose items the user sees on the desktop, which need not exist: XDG_DESKTOP_DIR in the file
/// "user-dirs.dirs" of the user's configuration, or else "Desktop" in the home folder. Reads that file.
[[nodiscard]] std::filesystem::path desktopFolder();

} // namespace tallyglass
