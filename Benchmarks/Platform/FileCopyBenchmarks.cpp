// copy-file and copy-folder: copying out of a backup, relative to cp -a.

#include "Benchmarks/Support/Row.h"
#include "TallyglassKit/Platform/Files/FileCopy.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace tallyglass::bench {

namespace fs = std::filesystem;

namespace {

constexpr int files = 20'000;
constexpr int filesPerFolder = 100;
constexpr std::size_t largeSize = std::size_t{1} << 30;

/// What is copied, in a folder of its own.
struct Items {
    explicit Items(void (*fill)(const fs::path&)) {
        std::string pattern = (fs::temp_directory_path() / "tallyglass-copy-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw FileError(errno, pattern);
        folder = pattern;
        fill(folder / "source");
        sync();
    }
    ~Items() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    Items(const Items&) = delete;
    Items& operator=(const Items&) = delete;

    fs::path folder;
};

std::shared_ptr<Items> items;

void makeLargeFile(const fs::path& path) {
    std::mt19937_64 random(1);
    std::vector<std::uint64_t> block(std::size_t{1} << 17);
    std::ofstream file(path, std::ios::binary);
    for (std::size_t size = 0; size < largeSize; size += block.size() * sizeof block[0]) {
        for (auto& word : block)
            word = random();
        file.write(reinterpret_cast<const char*>(block.data()),
                   static_cast<std::streamsize>(block.size() * sizeof block[0]));
    }
    if (!file.flush())
        throw FileError(errno, path);
}

void makeSmallFiles(const fs::path& path) {
    for (int index = 0; index < files; ++index) {
        const fs::path folder = path / std::to_string(index / filesPerFolder);
        if (index % filesPerFolder == 0)
            fs::create_directories(folder);
        std::ofstream(folder / std::to_string(index))
            << std::string(static_cast<std::size_t>(index % 6000), 'x');
    }
}

/// Seconds of `copy`, whose result is removed and off the disk before and after.
double copying(void (*copy)(const std::string& source, const std::string& destination)) {
    const std::string destination = items->folder / "copy";
    fs::remove_all(destination);
    sync();
    const double time = seconds([&] { copy(items->folder / "source", destination); });
    fs::remove_all(destination);
    return time;
}

double copyingByProgram() {
    return copying([](const std::string& source, const std::string& destination) {
        copyItem(source, destination, ExistingItem::replace);
    });
}

double copyingByCp() {
    return copying([](const std::string& source, const std::string& destination) {
        const auto result =
            ChildProcess{.executable = "/bin/cp", .arguments = {"-a", source, destination}}.run();
        if (result.end != decltype(result.end)(ChildProcess::Exited{0}))
            throw Error("cp failed");
    });
}

bool addCopy(const char* name, const char* work, void (*fill)(const fs::path&)) {
    return add({
        .name = name,
        .work = work,
        .reference = "cp -a of the same",
        .unit = "s",
        .ratio = Ratio::cost,
        .must = 1.2,
        .aim = 1,
        .runs = 3, // each is followed by a removal that takes longer
        .prepare =
            [fill] {
                items = std::make_shared<Items>(fill);
                return std::shared_ptr<void>(nullptr, [](void*) { items.reset(); });
            },
        .measure = copyingByProgram,
        .measureReference = copyingByCp,
    });
}

const bool file = addCopy("copy-file", "copy a file of 1 GiB", makeLargeFile);
const bool folder = addCopy("copy-folder", "copy a folder of 20,000 small files", makeSmallFiles);

} // namespace

} // namespace tallyglass::bench
