// The steps of a walk through a tree that others may change meanwhile. Each item is reached by its name in
// the open folder that holds it and no link is followed, so a folder that is swapped for a link can't lead a
// walk elsewhere. One thread at a time.

#pragma once

#include <dirent.h>
#include <sys/stat.h>

#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace tallyglass {

class OpenFolder;

/// An item as a walk reaches it. Doesn't outlive the folder that holds it.
struct WalkItem {
    int folder;       ///< the descriptor of the folder that holds it
    std::string name; ///< in that folder
    std::string path; ///< for the words of errors

    /// Where a walk begins. Throws FileError for a path that ends in "." or ".." or is the root.
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
    /// The folder at `path`, where a link counts as what it leads to.
    explicit OpenFolder(const std::string& path);

    [[nodiscard]] int number() const { return dirfd(m_folder.get()); }
    /// The names in it without "." and "..", ascending by their bytes. Can be asked for once.
    [[nodiscard]] std::vector<std::string> readNames();
    [[nodiscard]] WalkItem item(std::string name) const;

private:
    struct Close {
        void operator()(DIR* folder) const { closedir(folder); }
    };

    void open(const WalkItem& item, int flags);

    std::string m_path;
    std::unique_ptr<DIR, Close> m_folder;
};

/// Whether a removal may open what is closed to it. Only for trees that we made ourselves.
enum class Removal { asPermitted, forced };

void remove(const WalkItem& item, Removal removal, const std::stop_token& stop);

} // namespace tallyglass
