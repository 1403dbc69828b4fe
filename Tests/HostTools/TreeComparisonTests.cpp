#include "HostTools/Machine/FileOperations.h"
#include "HostTools/Machine/SeededRandom.h"
#include "HostTools/Machine/TreeComparison.h"
#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>

namespace tallyglass::test {

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace {

struct Row {
    char sign; ///< '+', '-' or '!'
    std::string path;
    std::string properties; ///< "size,mtime"

    bool operator==(const Row&) const = default;
    [[nodiscard]] std::string text() const {
        return std::string{sign, ' '} + path + (properties.empty() ? "" : " " + properties);
    }
    friend void PrintTo(const Row& row, std::ostream* stream) { *stream << row.text(); }
};

struct Rows final : ComparisonSink {
    void differs(const TreeDifference& difference) override {
        std::string properties;
        for (const std::string_view property : difference.properties)
            properties.append(properties.empty() ? "" : ",").append(property);
        const char sign = !difference.older ? '+' : !difference.newer ? '-' : '!';
        rows.push_back({sign, std::string(difference.path), properties});
    }
    void unreadable(const std::string& path, int) override { FAIL() << path; }

    [[nodiscard]] std::vector<std::string> texts() const {
        std::vector<std::string> result;
        std::ranges::transform(rows, std::back_inserter(result), &Row::text);
        return result;
    }

    std::vector<Row> rows;
};

Rows compare(const fs::path& older, const fs::path& newer, const std::string& letters = "@gmstu",
             std::optional<std::int64_t> depth = {}, std::vector<std::string> ignored = {}) {
    Rows sink;
    compareTrees({.older = older, .newer = newer},
                 {.properties = {letters}, .depth = depth, .ignoredNames = std::move(ignored)}, sink);
    return sink;
}

std::string read(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The names of the differing properties, found in the simplest way.
std::string plainDifferences(const fs::path& older, const fs::path& newer, const std::string& letters) {
    struct stat before {};
    struct stat after {};
    lstat(older.c_str(), &before);
    lstat(newer.c_str(), &after);
    const bool isFolder = S_ISDIR(before.st_mode);
    const auto asked = [&](char letter) { return letters.find(letter) != std::string::npos; };
    std::string result;
    const auto add = [&](const char* name) { result.append(result.empty() ? "" : ",").append(name); };
    if (asked('@') && extendedAttribute(older, "tag") != extendedAttribute(newer, "tag"))
        add("xattr");
    if (asked('d') && S_ISREG(before.st_mode) && read(older) != read(newer))
        add("data");
    if (asked('d') && S_ISLNK(before.st_mode) && fs::read_symlink(older) != fs::read_symlink(newer))
        add("data");
    if (asked('m') && before.st_mode != after.st_mode)
        add("mode");
    if (asked('s') && !isFolder && before.st_size != after.st_size)
        add("size");
    if (asked('t') &&
        (before.st_mtim.tv_sec != after.st_mtim.tv_sec || before.st_mtim.tv_nsec != after.st_mtim.tv_nsec))
        add("mtime");
    return result;
}

/// All rows that a comparison of the two folders should report, by a naive recursive implementation.
void plainCompare(const fs::path& older, const fs::path& newer, const std::string& path,
                  const std::string& letters, const std::set<std::string>& ignored, std::vector<Row>& rows) {
    const auto kind = [](const fs::path& item) { return fs::symlink_status(item).type(); };
    std::set<std::string> names;
    for (const fs::path& side : {older, newer})
        if (kind(side) == fs::file_type::directory)
            for (const auto& entry : fs::directory_iterator(side))
                names.insert(entry.path().filename());
    for (const std::string& name : names) {
        if (ignored.contains(name))
            continue;
        const fs::path before = older / name;
        const fs::path after = newer / name;
        const std::string itemPath = path + "/" + name;
        const bool isSameKind = kind(before) == kind(after);
        if (isSameKind) {
            if (const auto differences = plainDifferences(before, after, letters); !differences.empty())
                rows.push_back({'!', itemPath, differences});
            if (kind(before) == fs::file_type::directory)
                plainCompare(before, after, itemPath, letters, ignored, rows);
            continue;
        }
        const fs::path nothing = older / "no such folder";
        if (kind(before) != fs::file_type::not_found) {
            rows.push_back({'-', itemPath, ""});
            if (kind(before) == fs::file_type::directory)
                plainCompare(before, nothing, itemPath, letters, ignored, rows);
        }
        if (kind(after) != fs::file_type::not_found) {
            rows.push_back({'+', itemPath, ""});
            if (kind(after) == fs::file_type::directory)
                plainCompare(nothing, after, itemPath, letters, ignored, rows);
        }
    }
}

/// Two trees with items of every kind that are shared, alike, changed, of another kind, or on one side only.
class RandomTrees {
public:
    RandomTrees(const TemporaryFolder& folder, std::uint64_t seed) : m_random(seed) {
        fs::create_directories(folder / "older");
        fs::create_directories(folder / "newer");
        fill(folder / "older", folder / "newer", 3);
    }

private:
    void make(const fs::path& path, std::size_t kind, const std::string& contents) {
        if (kind == 0)
            fs::create_directory(path);
        else if (kind == 1)
            fs::create_symlink(contents, path);
        else
            std::ofstream(path, std::ios::binary) << contents;
        setTime(path, 1'700'000'000);
    }
    void setTime(const fs::path& path, time_t seconds) {
        const timespec times[2] = {{seconds, 0}, {seconds, 0}};
        utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW);
    }
    void change(const fs::path& path, std::size_t kind) {
        switch (m_random.below(5)) {
        case 0:
            if (kind == 2)
                std::ofstream(path, std::ios::app) << "more";
            break;
        case 1:
            if (kind != 1)
                fs::permissions(path, fs::perms::others_all, fs::perm_options::add);
            break;
        case 2:
            if (kind != 1)
                setExtendedAttribute(path, "tag", "changed");
            break;
        case 3:
            if (kind == 2) { // with the same size and date
                std::fstream(path, std::ios::in | std::ios::out) << "#";
                setTime(path, 1'700'000'000);
            }
            break;
        default:
            setTime(path, 1'700'000'001);
        }
    }
    void fill(const fs::path& older, const fs::path& newer, int depth) {
        static const std::vector<std::string> names{
            "a",  "a.b", "a b", "B",  "é", "e\u0301",          "~x",
            "ab", "0",   "日",  "a-", "Z", "long name indeed", "\x01\xff"};
        for (const std::string& name : names) {
            const std::size_t kind = m_random.below(depth > 0 ? 3 : 2) + (depth > 0 ? 0 : 1);
            const std::string contents = "contents " + std::to_string(m_random.below(1000));
            const std::size_t fate = m_random.below(8);
            if (fate != 0)
                make(older / name, kind, contents);
            if (fate == 2 && kind != 0)
                fs::create_hard_link(older / name, newer / name);
            else if (fate == 3)
                make(newer / name, (kind + 1) % 3, contents);
            else if (fate != 1)
                make(newer / name, kind, contents);
            if (fate == 4 || fate == 5)
                change(newer / name, kind);
            if (depth > 0)
                for (const fs::path& side : {older / name, newer / name})
                    if (fs::is_directory(fs::symlink_status(side)) && (fate == 0 || fate == 1 || fate == 3))
                        std::ofstream(side / "inside") << contents;
            if (kind == 0 && fate != 0 && fate != 1 && fate != 3)
                fill(older / name, newer / name, depth - 1);
        }
    }

    SeededRandom m_random;
};

} // namespace

class RandomComparison : public testing::TestWithParam<std::uint64_t> {
protected:
    RandomComparison() : older(folder / "older"), newer(folder / "newer") { RandomTrees(folder, GetParam()); }

    [[nodiscard]] std::vector<Row> plainRows(const std::string& letters,
                                             const std::set<std::string>& ignored = {}) const {
        std::vector<Row> rows;
        plainCompare(older, newer, "", letters, ignored, rows);
        return rows;
    }

    const TemporaryFolder folder;
    const fs::path older;
    const fs::path newer;
};

TEST_P(RandomComparison, tellsWhatAPlainComparisonFinds) {
    for (const char* letters : {"@gmstu", "st", "d", "@cdefgmstu", ""})
        for (const std::set<std::string>& ignored : {std::set<std::string>{}, {"a", "B"}}) {
            const auto expected = plainRows(letters, ignored);

            const auto told = compare(older, newer, letters, {}, {ignored.begin(), ignored.end()});

            EXPECT_EQ(told.rows, expected) << letters;
            EXPECT_GT(expected.size(), 10u);
        }
}

TEST_P(RandomComparison, toADepthTellsThoseLevelsAndWhichFoldersHoldDifferences) {
    const auto levelOf = [](const std::string& path) { return std::ranges::count(path, '/'); };
    const auto standsOnBothSides = [&](const fs::path& path) {
        return fs::is_directory(fs::symlink_status(older / path.relative_path())) &&
               fs::is_directory(fs::symlink_status(newer / path.relative_path()));
    };
    const auto all = plainRows("st");
    for (const std::int64_t depth : {1, 2, 3}) {
        std::map<std::string, std::string> expectedChanges; // by path, what differs
        std::vector<Row> expectedOthers;
        for (const Row& row : all) {
            if (row.sign == '!' && levelOf(row.path) <= depth)
                expectedChanges[row.path].insert(0, row.properties);
            else if (levelOf(row.path) <= depth)
                expectedOthers.push_back(row);
            for (fs::path above = fs::path(row.path).parent_path(); above != "/"; above = above.parent_path())
                if (auto& known = expectedChanges[above]; levelOf(above) > depth || !standsOnBothSides(above))
                    expectedChanges.erase(above);
                else if (!known.ends_with("contents"))
                    known.append(known.empty() ? "contents" : ",contents");
        }

        std::map<std::string, std::string> changes;
        std::vector<Row> others;
        for (const Row& row : compare(older, newer, "st", depth).rows)
            if (row.sign == '!')
                EXPECT_TRUE(changes.emplace(row.path, row.properties).second) << row.path;
            else
                others.push_back(row);

        EXPECT_EQ(changes, expectedChanges) << depth;
        EXPECT_EQ(others, expectedOthers) << depth;
    }
}

TEST_P(RandomComparison, keepsItsOrderAtEveryDepth) {
    std::vector<std::string> order;
    for (const Row& row : compare(older, newer, "st", 100).rows)
        order.push_back(row.sign + row.path);
    for (const std::int64_t depth : {1, 2, 3}) {
        auto rest = order.begin();
        for (const Row& row : compare(older, newer, "st", depth).rows) {
            rest = std::find(rest, order.end(), row.sign + row.path);
            ASSERT_NE(rest, order.end()) << row.path;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomComparison, testing::Values(1, 2, 3, 4));

TEST(TreeComparison, putsWhatAFolderHoldsRightBehindIt) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "older");
    for (const char* name : {"newer/a/x", "newer/a-b", "newer/a.txt", "newer/B"})
        folder.write(name, name);

    EXPECT_THAT(compare(folder / "older", folder / "newer").texts(),
                ElementsAre("+ /B", "+ /a", "+ /a/x", "+ /a-b", "+ /a.txt"));
}

TEST(TreeComparison, atDepthZeroTellsWhetherTheOperandsDiffer) {
    const TemporaryFolder folder;
    folder.write("older/a/b", "one");
    folder.write("newer/a/b", "three");
    EXPECT_THAT(compare(folder / "older", folder / "newer", "s", 0).texts(), ElementsAre("!  contents"));

    folder.write("newer/a/b", "two");
    EXPECT_THAT(compare(folder / "older", folder / "newer", "s", 0).texts(), ElementsAre());
}

TEST(TreeComparison, comparesFilesAndTreesOfWhichOneSideIsMissing) {
    const TemporaryFolder folder;
    const auto older = folder.write("older/file", "1");
    const auto newer = folder.write("newer/file", "22");

    EXPECT_THAT(compare(older, newer, "s").texts(), ElementsAre("!  size"));
    EXPECT_THAT(compare("", folder / "newer").texts(), ElementsAre("+ ", "+ /file"));
    EXPECT_THAT(compare(older, folder / "newer").texts(), ElementsAre("- ", "+ ", "+ /file"));
}

TEST(TreeComparison, walksTreesDeeperThanPathsAndDescriptorsReach) {
    const TemporaryFolder folder;
    constexpr int levels = 900;
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    const rlimit tight{.rlim_cur = 400, .rlim_max = limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &tight), 0);
    for (const char* side : {"older", "newer"}) {
        fs::create_directory(folder / side);
        FileDescriptor current(open((folder / side).c_str(), O_RDONLY | O_DIRECTORY));
        for (int level = 0; level <= levels; ++level) {
            if (level % 300 == 0) // an item after the deep folder, so that the way back matters
                FileDescriptor(openat(current.fd(), side, O_WRONLY | O_CREAT, 0600));
            ASSERT_EQ(mkdirat(current.fd(), "deep", 0700), 0);
            current = FileDescriptor(openat(current.fd(), "deep", O_RDONLY | O_DIRECTORY));
        }
    }
    const ResourceGuard guard;

    const auto told = compare(folder / "older", folder / "newer", "s").texts();

    std::vector<std::string> expected;
    for (int level = levels; level >= 0; level -= 300) {
        std::string path;
        for (int index = 0; index < level; ++index)
            path += "/deep";
        expected.push_back("+ " + path + "/newer");
        expected.push_back("- " + path + "/older");
    }
    EXPECT_EQ(told, expected);
    setrlimit(RLIMIT_NOFILE, &limit);
    removeTree(folder / "older");
    removeTree(folder / "newer");
}

} // namespace tallyglass::test
