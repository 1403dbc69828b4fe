// A file that is written in pieces and appears at its path in one step when it is complete. Until then, and
// for good without `publish`, whatever was there stays as it is, and nothing is left beside it; a process
// that is killed leaves a hidden file, which the next draft in that folder removes. One thread; failures are
// FileErrors with the path.

#pragma once

#include "TallyglassKit/Platform/Files/FileDescriptor.h"

#include <filesystem>
#include <memory>
#include <stop_token>
#include <string_view>

namespace tallyglass {

class CopyDestination;

class FileDraft {
public:
    enum class Rights {
        ofUser,   ///< mode 0600, whatever the umask
        ofOthers, ///< as the umask allows, for documents
    };

    /// Requires: the folder of `path` exists. Throws EISDIR for a folder and EINVAL for a device or pipe,
    /// which are never replaced. A link at `path` will be replaced, not followed.
    FileDraft(const std::filesystem::path& path, Rights rights, const std::stop_token& stop = {});
    /// Removes the draft unless it was published.
    ~FileDraft();
    FileDraft(const FileDraft&) = delete;
    FileDraft& operator=(const FileDraft&) = delete;

    void append(std::string_view bytes);

    /// Gives the draft its path. What replaces a file is on the disk before it does.
    void publish();

private:
    const std::unique_ptr<CopyDestination> m_destination;
    FileDescriptor m_file;
    bool m_isPublished = false;
};

} // namespace tallyglass
