#include "TallyglassKit/Platform/Files/FileDraft.h"

#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/Files/Internal/CopyDestination.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tallyglass {

namespace {

void requireReplaceable(const std::filesystem::path& path) {
    const auto status = FileStatus::of(path);
    if (status && status->isFolder())
        throw FileError(EISDIR, path);
    if (status && status->kind == FileStatus::Kind::other)
        throw FileError(EINVAL, path, "Not a regular file");
}

} // namespace

FileDraft::FileDraft(const std::filesystem::path& path, Rights rights, const std::stop_token& stop)
    : m_destination(std::make_unique<CopyDestination>(path)) {
    requireReplaceable(path);
    m_destination->begin(stop);
    const bool isPrivate = rights == Rights::ofUser;
    const WalkItem& draft = m_destination->draft();
    m_file = FileDescriptor(openat(draft.folder, draft.name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC,
                                   isPrivate ? 0600 : 0666));
    if (!m_file.isOpen())
        draft.fail();
    if (isPrivate && fchmod(m_file.fd(), 0600) != 0) { // the umask may have removed the user's own rights
        const int error = errno;
        m_destination->discard();
        draft.fail(error);
    }
}

FileDraft::~FileDraft() {
    if (!m_isPublished)
        m_destination->discard();
}

void FileDraft::append(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = write(m_file.fd(), bytes.data(), bytes.size());
        if (count >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            m_destination->draft().fail();
    }
}

void FileDraft::publish() {
    static_cast<void>(m_destination->finish(ExistingItem::replace)); // a file leaves nothing to remove
    m_isPublished = true;
    m_file.close();
}

} // namespace tallyglass
