#include "HostTools/Machine/TreeComparison.h"

#include "HostTools/Machine/Exclusions.h"
#include "HostTools/Machine/FileOperations.h"
#include "HostTools/Machine/FolderListing.h"
#include "HostTools/Machine/ItemProperties.h"
#include "HostTools/Machine/MachinePaths.h"
#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <memory>

// The walk merges the two sorted listings of each folder: a name on one side only is an addition or a
// removal, a name on both sides is compared, and a folder is entered before the next name. An item with the
// same inode on both sides is skipped without looking at it.
//
// The levels are a stack of their own, so that the depth isn't limited by the call stack. Folders far up are
// closed to bound the number of descriptors, and reopened through ".." on the way back, which is checked by
// their inode.
//
// With a depth limit, a folder differs if anything below it does. Its row is pending until the first
// difference below it is found, or until the walk leaves it, when only its own properties count.

namespace tallyglass {

namespace {

/// Folders more than this many levels above the current one are closed, and reopened on the way back.
constexpr std::size_t openLevels = 100;

bool isSameItem(const struct stat& left, const struct stat& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

FileDescriptor openFolder(int parent, const char* name) {
    return FileDescriptor(openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

class TreeWalk {
public:
    TreeWalk(const ComparisonOperands& operands, const ComparisonOptions& options, ComparisonSink& sink)
        : m_operands(operands), m_options(options), m_sink(sink) {}

    [[nodiscard]] std::int64_t run();

private:
    /// A folder on one side.
    struct Side {
        bool exists = false;
        FileDescriptor folder; ///< closed while the walk is deep below
        struct stat status {};
        FolderListing items;
        std::size_t next = 0;

        [[nodiscard]] bool hasNext() const { return next < items.size(); }
    };
    /// A level of the walk: a folder on both sides, or on one.
    struct Level {
        Side older;
        Side newer;
        std::size_t pathLength = 0; ///< of the folder's own path
        bool isOnTheWay = false;    ///< leads to an included path, see ComparisonOperands::within
        bool rowIsPending = false;  ///< its own row is only reported if something below differs
        std::vector<std::string_view> ownDifferences;
    };

    void start();
    void step();
    void stepOneSided(Level& level, Side& side, bool isAdded);
    void stepBoth(Level& level, const FolderListing::Item& before, const FolderListing::Item& after);
    void compareFolders(Level& level, const char* name, bool childIsOnTheWay);
    void compareOperandFiles(const struct stat& before, const struct stat& after);

    Level& push(bool isOnTheWay);
    void enter(Level& level, FileDescriptor older, FileDescriptor newer);
    bool list(Side& side);
    void pop();
    void reopen(Side& parent, const Side& child);

    [[nodiscard]] std::int64_t childLevel() const {
        return m_operands.level + static_cast<std::int64_t>(m_count);
    }
    [[nodiscard]] bool isReported(std::int64_t level) const {
        return !m_options.depth || level <= *m_options.depth;
    }
    [[nodiscard]] bool counts(std::string_view name, const Level& level, bool& childIsOnTheWay);
    [[nodiscard]] bool isExcluded();
    [[nodiscard]] bool isForeign(const Level& level, const struct stat& folder) const;

    void found(const struct stat* before, const struct stat* after,
               std::span<const std::string_view> differences);
    void flushPendingRows();
    void unreadable(int errorNumber, bool onNewerSide);

    const ComparisonOperands& m_operands;
    const ComparisonOptions& m_options;
    ComparisonSink& m_sink;
    std::vector<std::unique_ptr<Level>> m_levels; ///< the first m_count are in use, the others are for reuse
    std::size_t m_count = 0;
    std::size_t m_firstPending = 0; ///< no level before it has a pending row
    std::int64_t m_sameFiles = 0;
    std::string m_path; ///< of the current item, below the operands
    std::string m_fullPath;
};

std::int64_t TreeWalk::run() {
    start();
    while (m_count > 0)
        step();
    return m_sameFiles;
}

void TreeWalk::start() {
    struct stat before {};
    struct stat after {};
    const auto look = [](const std::string& path, struct stat& status) {
        if (path.empty())
            return false;
        if (stat(path.c_str(), &status) != 0 && lstat(path.c_str(), &status) != 0)
            throw FileError(errno, path);
        return true;
    };
    const bool hasOlder = look(m_operands.older, before);
    const bool hasNewer = look(m_operands.newer, after);
    const bool olderIsFolder = hasOlder && S_ISDIR(before.st_mode);
    const bool newerIsFolder = hasNewer && S_ISDIR(after.st_mode);
    if (hasOlder && hasNewer && olderIsFolder != newerIsFolder) {
        compareTrees({.older = m_operands.older, .newer = ""}, m_options, m_sink);
        compareTrees({.older = "", .newer = m_operands.newer}, m_options, m_sink);
        return;
    }
    if (hasOlder != hasNewer)
        found(hasOlder ? &before : nullptr, hasNewer ? &after : nullptr, {});
    else if (!olderIsFolder)
        return compareOperandFiles(before, after);

    const auto openOperand = [](const std::string& path, bool isFolder) {
        FileDescriptor folder(isFolder ? open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1);
        if (isFolder && !folder.isOpen())
            throw FileError(errno, path);
        return folder;
    };
    if (!olderIsFolder && !newerIsFolder)
        return;
    Level& level = push(!m_operands.within.empty());
    level.older.status = before;
    level.newer.status = after;
    // The operands have a row of their own only below the folder that the depth is counted from, or at depth
    // 0, where it is the only row.
    level.rowIsPending = m_options.depth && (m_operands.level > 0 || *m_options.depth == 0) &&
                         isReported(m_operands.level) && olderIsFolder && newerIsFolder;
    enter(level, openOperand(m_operands.older, olderIsFolder), openOperand(m_operands.newer, newerIsFolder));
}

void TreeWalk::compareOperandFiles(const struct stat& before, const struct stat& after) {
    int failure = 0;
    const auto differences =
        differingProperties(m_options.properties, {AT_FDCWD, m_operands.older.c_str(), &before},
                            {AT_FDCWD, m_operands.newer.c_str(), &after}, failure);
    if (failure)
        unreadable(failure, true);
    else if (differences.empty())
        ++m_sameFiles;
    if (!differences.empty())
        found(&before, &after, differences);
}

void TreeWalk::step() {
    Level& level = *m_levels[m_count - 1];
    Side& older = level.older;
    Side& newer = level.newer;
    if (!older.hasNext() && !newer.hasNext())
        return pop();
    int order = !newer.hasNext() ? -1 : 1;
    if (older.hasNext() && newer.hasNext())
        order = FolderListing::compare(older.items, older.items[older.next], newer.items,
                                       newer.items[newer.next]);
    if (order < 0)
        return stepOneSided(level, older, false);
    if (order > 0)
        return stepOneSided(level, newer, true);
    stepBoth(level, older.items[older.next], newer.items[newer.next]);
}

/// Appends `name` to the current path and returns whether the item is included.
bool TreeWalk::counts(std::string_view name, const Level& level, bool& childIsOnTheWay) {
    m_path.resize(level.pathLength);
    m_path.append("/").append(name);
    childIsOnTheWay = false;
    if (std::ranges::find(m_options.ignoredNames, name) != m_options.ignoredNames.end())
        return false;
    if (!level.isOnTheWay)
        return true;
    bool isInside = false;
    for (const std::string& path : m_operands.within) {
        isInside = isInside || isWithin(m_path, path);
        childIsOnTheWay = childIsOnTheWay || isWithin(path, m_path);
    }
    childIsOnTheWay = childIsOnTheWay && !isInside;
    return isInside || childIsOnTheWay;
}

bool TreeWalk::isExcluded() {
    if (!m_operands.exclusions)
        return false;
    m_fullPath.assign(m_operands.newer == "/" ? "" : m_operands.newer).append(m_path);
    if (!m_operands.exclusions->excludesItself(m_fullPath))
        return false;
    m_sink.excluded(m_path);
    return true;
}

/// Whether a folder of the newer side is on a file system that isn't entered. The way to an included path may
/// cross to another one.
bool TreeWalk::isForeign(const Level& level, const struct stat& folder) const {
    return m_operands.oneFileSystem && !level.isOnTheWay && folder.st_dev != level.newer.status.st_dev;
}

void TreeWalk::stepOneSided(Level& level, Side& side, bool isAdded) {
    const FolderListing::Item& item = side.items[side.next++];
    bool childIsOnTheWay = false;
    if (!counts(side.items.name(item), level, childIsOnTheWay) || (isAdded && isExcluded()))
        return;
    const char* name = side.items.nameText(item);
    struct stat status {};
    if (fstatat(side.folder.fd(), name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return unreadable(errno, isAdded);
    const auto depthBefore = m_count;
    found(isAdded ? nullptr : &status, isAdded ? &status : nullptr, {});
    if (m_count != depthBefore || !S_ISDIR(status.st_mode) || !isReported(childLevel() + 1))
        return;
    if (isAdded && isForeign(level, status))
        return;
    FileDescriptor folder = openFolder(side.folder.fd(), name);
    if (!folder.isOpen())
        return unreadable(errno, isAdded);
    Level& child = push(childIsOnTheWay);
    (isAdded ? child.newer : child.older).status = status;
    if (isAdded)
        enter(child, FileDescriptor(), std::move(folder));
    else
        enter(child, std::move(folder), FileDescriptor());
}

void TreeWalk::stepBoth(Level& level, const FolderListing::Item& before, const FolderListing::Item& after) {
    bool childIsOnTheWay = false;
    if (!counts(level.newer.items.name(after), level, childIsOnTheWay) || isExcluded()) {
        ++level.older.next;
        ++level.newer.next;
        return;
    }
    const char* name = level.newer.items.nameText(after);
    const bool mayBeFolders = before.type == DT_DIR || before.type == DT_UNKNOWN || after.type == DT_DIR ||
                              after.type == DT_UNKNOWN;
    if (!mayBeFolders && before.inode == after.inode &&
        level.older.status.st_dev == level.newer.status.st_dev) {
        ++m_sameFiles;
        ++level.older.next;
        ++level.newer.next;
        return;
    }
    if (before.type == DT_DIR && after.type == DT_DIR)
        return compareFolders(level, name, childIsOnTheWay);

    struct stat olderStatus {};
    struct stat newerStatus {};
    int failure = 0;
    if (fstatat(level.older.folder.fd(), name, &olderStatus, AT_SYMLINK_NOFOLLOW) != 0 ||
        fstatat(level.newer.folder.fd(), name, &newerStatus, AT_SYMLINK_NOFOLLOW) != 0)
        failure = errno;
    else if (S_ISDIR(olderStatus.st_mode) && S_ISDIR(newerStatus.st_mode))
        return compareFolders(level, name, childIsOnTheWay);
    else if ((olderStatus.st_mode & S_IFMT) != (newerStatus.st_mode & S_IFMT))
        // One is removed and the other added.
        return stepOneSided(level, level.older, false);

    ++level.older.next;
    ++level.newer.next;
    std::vector<std::string_view> differences;
    if (!failure)
        differences = differingProperties(m_options.properties, {level.older.folder.fd(), name, &olderStatus},
                                          {level.newer.folder.fd(), name, &newerStatus}, failure);
    if (failure)
        unreadable(failure, true);
    else if (differences.empty())
        ++m_sameFiles;
    if (!differences.empty())
        found(&olderStatus, &newerStatus, differences);
}

void TreeWalk::compareFolders(Level& level, const char* name, bool childIsOnTheWay) {
    ++level.older.next;
    ++level.newer.next;
    FileDescriptor older = openFolder(level.older.folder.fd(), name);
    const int olderFailure = older.isOpen() ? 0 : errno;
    FileDescriptor newer = openFolder(level.newer.folder.fd(), name);
    const int newerFailure = newer.isOpen() ? 0 : errno;
    struct stat olderStatus {};
    struct stat newerStatus {};
    const auto status = [&](const FileDescriptor& folder, const Side& parent, struct stat& result) {
        return folder.isOpen() ? fstat(folder.fd(), &result)
                               : fstatat(parent.folder.fd(), name, &result, AT_SYMLINK_NOFOLLOW);
    };
    if (status(older, level.older, olderStatus) != 0 || status(newer, level.newer, newerStatus) != 0)
        return unreadable(errno, true);
    if (isSameItem(olderStatus, newerStatus))
        return;

    int failure = 0;
    std::vector<std::string_view> differences;
    if (!childIsOnTheWay)
        differences = differingProperties(m_options.properties, {level.older.folder.fd(), name, &olderStatus},
                                          {level.newer.folder.fd(), name, &newerStatus}, failure);
    const bool reportsFolder = isReported(childLevel());
    if (olderFailure || newerFailure || isForeign(level, newerStatus)) {
        if (!differences.empty())
            found(&olderStatus, &newerStatus, differences);
        if (olderFailure)
            unreadable(olderFailure, false);
        if (newerFailure)
            unreadable(newerFailure, true);
        return;
    }
    if (!differences.empty() && !m_options.depth)
        found(&olderStatus, &newerStatus, differences);
    else if (!differences.empty() && !reportsFolder)
        return found(&olderStatus, &newerStatus, differences);

    Level& child = push(childIsOnTheWay);
    child.older.status = olderStatus;
    child.newer.status = newerStatus;
    child.rowIsPending = m_options.depth && reportsFolder;
    child.ownDifferences = std::move(differences);
    enter(child, std::move(older), std::move(newer));
}

TreeWalk::Level& TreeWalk::push(bool isOnTheWay) {
    if (m_count == m_levels.size())
        m_levels.push_back(std::make_unique<Level>());
    Level& level = *m_levels[m_count++];
    level.pathLength = m_path.size();
    level.isOnTheWay = isOnTheWay;
    level.rowIsPending = false;
    level.ownDifferences.clear();
    return level;
}

/// Takes the open folders of the level just pushed and reads what they hold.
void TreeWalk::enter(Level& level, FileDescriptor older, FileDescriptor newer) {
    level.older.exists = older.isOpen();
    level.newer.exists = newer.isOpen();
    level.older.folder = std::move(older);
    level.newer.folder = std::move(newer);
    if (isReported(childLevel() - 1))
        m_sink.entered(m_path, level.older.exists ? &level.older.status : nullptr,
                       level.newer.exists ? &level.newer.status : nullptr);
    if (!list(level.older) ||
        !list(level.newer)) { // an incomplete listing would look like additions or removals
        level.older.items.clear();
        level.newer.items.clear();
    }
    if (m_count > openLevels) {
        Level& distant = *m_levels[m_count - 1 - openLevels];
        if (level.older.exists)
            distant.older.folder.close();
        if (level.newer.exists)
            distant.newer.folder.close();
    }
}

bool TreeWalk::list(Side& side) {
    side.items.clear();
    side.next = 0;
    if (!side.exists)
        return true;
    const int failure = side.items.read(side.folder.fd());
    if (failure)
        unreadable(failure, &side == &m_levels[m_count - 1]->newer);
    return failure == 0;
}

void TreeWalk::pop() {
    Level& level = *m_levels[m_count - 1];
    if (level.rowIsPending && !level.ownDifferences.empty()) {
        level.rowIsPending = false;
        flushPendingRows();
        m_path.resize(level.pathLength);
        m_sink.differs({m_path, &level.older.status, &level.newer.status, level.ownDifferences});
    }
    if (m_count > 1) {
        Level& parent = *m_levels[m_count - 2];
        reopen(parent.older, level.older);
        reopen(parent.newer, level.newer);
        m_path.resize(parent.pathLength);
    }
    level.older.folder.close();
    level.newer.folder.close();
    --m_count;
    m_firstPending = std::min(m_firstPending, m_count);
}

void TreeWalk::reopen(Side& parent, const Side& child) {
    if (!parent.exists || parent.folder.isOpen() || !child.exists)
        return;
    parent.folder = openFolder(child.folder.fd(), "..");
    struct stat status {};
    if (parent.folder.isOpen() && fstat(parent.folder.fd(), &status) == 0 &&
        isSameItem(status, parent.status))
        return;
    // The folder was moved while the walk was below it, so the rest of its level can't be reached.
    Level& level = *m_levels[m_count - 2];
    level.older.items.clear();
    level.newer.items.clear();
    m_path.resize(level.pathLength);
    unreadable(ENOENT, &parent == &level.newer);
}

/// Reports a difference of the current item or, if it is too deep, only that its ancestors differ.
void TreeWalk::found(const struct stat* before, const struct stat* after,
                     std::span<const std::string_view> differences) {
    if (m_options.depth)
        flushPendingRows();
    if (isReported(childLevel()))
        return m_sink.differs({m_path, before, after, differences});
    while (m_count > 0 && !isReported(childLevel()))
        pop();
}

void TreeWalk::flushPendingRows() {
    for (; m_firstPending < m_count; ++m_firstPending) {
        Level& level = *m_levels[m_firstPending];
        if (!level.rowIsPending)
            continue;
        level.rowIsPending = false;
        level.ownDifferences.push_back("contents");
        m_sink.differs({std::string_view(m_path).substr(0, level.pathLength), &level.older.status,
                        &level.newer.status, level.ownDifferences});
    }
}

void TreeWalk::unreadable(int errorNumber, bool onNewerSide) {
    m_sink.unreadable((onNewerSide ? m_operands.newer : m_operands.older) + m_path, errorNumber);
}

} // namespace

std::int64_t compareTrees(const ComparisonOperands& operands, const ComparisonOptions& options,
                          ComparisonSink& sink) {
    return TreeWalk(operands, options, sink).run();
}

} // namespace tallyglass
