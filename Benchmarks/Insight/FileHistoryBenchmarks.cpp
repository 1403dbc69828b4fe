// trace-path and version-spans: tracing a path through backups, relative to the system calls and copies that
// it can't do without.

#include "Benchmarks/Support/Row.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Insight/FileHistoryScanner.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass::bench {

namespace fs = std::filesystem;

namespace {

constexpr int backupCount = 3000;
constexpr int passes = 5; // one is too short to be measured well
constexpr std::size_t versionCount = 100'000;
const std::string logicalPath = "/Users/me/Documents/notes.txt";

/// Backups that hold one file each.
struct Backups {
    Backups() {
        std::string pattern = (fs::temp_directory_path() / "tallyglass-trace-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw FileError(errno, pattern);
        folder = pattern;
        for (int index = 0; index < backupCount; ++index) {
            const auto stamp = BackupPath::stamp(dateSince1970(1.7e9 + 3600.0 * index)) + ".backup";
            roots.push_back(folder / stamp / stamp);
            const std::string file = roots.back() + "/Macintosh HD - Data" + logicalPath;
            fs::create_directories(fs::path(file).parent_path());
            std::ofstream(file) << index;
        }
    }
    ~Backups() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    Backups(const Backups&) = delete;
    Backups& operator=(const Backups&) = delete;

    fs::path folder;
    std::vector<std::string> roots;
};

std::shared_ptr<Backups> backups;

void traceInC(const std::string& root) {
    DIR* const folder = opendir(root.c_str());
    if (!folder)
        throw FileError(errno, root);
    std::string path;
    while (const dirent* entry = readdir(folder))
        if (entry->d_name[0] != '.')
            path = root + "/" + entry->d_name + logicalPath;
    closedir(folder);
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0)
        throw FileError(errno, path);
    keep(status);
}

const bool trace = add({
    .name = "trace-path",
    .work = "trace a path through 3,000 backups, looking up their volumes",
    .reference = "lstat, and opendir and readdir of each root, in C",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 1.5,
    .aim = 1.1,
    .runs = 11,
    .prepare =
        [] {
            backups = std::make_shared<Backups>();
            return std::shared_ptr<void>(nullptr, [](void*) { backups.reset(); });
        },
    .measure =
        [] {
            const FileHistoryScanner scanner{TMUtilRunner()};
            return seconds([&] {
                for (int pass = 0; pass < passes; ++pass)
                    keep(scanner.versions(logicalPath, std::nullopt, backups->roots));
            });
        },
    .measureReference =
        [] {
            return seconds([] {
                for (int pass = 0; pass < passes; ++pass)
                    for (const auto& root : backups->roots)
                        traceInC(root);
            });
        },
});

/// Versions of which every tenth differs from the one before it.
std::vector<FileVersion> manyVersions() {
    std::vector<FileVersion> versions(versionCount);
    for (std::size_t index = 0; index < versionCount; ++index) {
        auto& version = versions[index];
        version.backupRoot = "/Volumes/.timemachine/11112222-5A5D-4859-A4A7-4B3B7885CFEB/"
                             "2026-07-20-122943.backup/2026-07-20-122943.backup";
        version.path = version.backupRoot + "/Macintosh HD - Data" + logicalPath;
        version.backupDate = dateSince1970(static_cast<double>(index));
        version.exists = true;
        version.inode = index / 10;
        version.size = 1;
        version.modified = dateSince1970(1);
    }
    return versions;
}

const std::vector<FileVersion>& sharedVersions() {
    static const auto versions = manyVersions();
    return versions;
}

const bool spans = add({
    .name = "version-spans",
    .work = "group 100,000 versions into spans",
    .reference = "copy and compare the same versions once",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 6,
    .aim = 3,
    .runs = 11,
    .prepare = {},
    .measure =
        [] {
            const auto& versions = sharedVersions();
            return seconds([&] { keep(FileHistoryScanner::spans(versions)); });
        },
    .measureReference =
        [] {
            const auto& versions = sharedVersions();
            return seconds([&] {
                std::vector<FileVersion> copies;
                copies.reserve(versions.size());
                std::size_t differing = 0;
                for (const auto& version : versions) {
                    differing += !copies.empty() && !copies.back().isSameVersion(version);
                    copies.push_back(version);
                }
                keep(differing);
            });
        },
});

} // namespace

} // namespace tallyglass::bench
