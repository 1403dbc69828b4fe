// The steps of a walk through a tree that others may change meanwhile. Each item is opened by its name
// relative to its open parent folder and no link is followed, so replacing a folder by a link can't redirect
// a walk. One thread at a time.

#pragma once

#include <dirent.h>
#include <sys/stat.h>

#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace tallyglass {

class OpenFolder;

/// An item during a walk. Must not outlive its parent folder.
struct WalkItem {
    int folder;       ///< the descriptor of its parent folder
    std::string name; ///< in that folder
    std::string path; ///< for error messages

    /// The item at which a walk begins. Throws FileError for a path that ends in "." or ".." or is the root.
    [[nodiscard]] static WalkItem at(const std::string& path);

    [[nodiscard]] struct stat status() const;
    /// Throws the FileError of `error` for this item.
    [[noreturn]] void fail(int error) const;
    /// The same for the last failed system call.
    [[noreturn]] void fail() const;
};

/// A folder that a walk has entered.
class OpenFolder {
public:
    /// Throws FileError.
    explicit OpenFolder(const WalkItem& item);
    /// The folder at `path`; symbolic links are followed.
    explicit OpenFolder(const std::string& path);

    [[nodiscard]] int fd() const { return dirfd(m_folder.get()); }
    /// The names in it without "." and "..", ascending by their bytes. Can be read once.
    [[nodiscard]] std::vector<std::string> readNames();
    [[nodiscard]] WalkItem item(std::string name) const;

private:
    struct Close {
        void operator()(DIR* folder) const { closedir(folder); }
    };

    std::string m_path;
    std::unique_ptr<DIR, Close> m_folder;
};

/// Whether a removal may change permissions that would prevent it. Only for trees that the program
/// created or is asked to replace.
enum class Removal { asPermitted, forced };

void remove(const WalkItem& item, Removal removal, const std::stop_token& stop);

} // namespace tallyglass
