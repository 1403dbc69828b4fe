// The diff cache: one SQLite file that holds the results of comparisons. DiffCache.md describes it. It holds
// only what can be computed again.
//
// Static operations; any thread.

#pragma once

#include <chrono>
#include <filesystem>
#include <memory>

namespace tallyglass {

class Connection;

struct TallyglassDatabase {
    /// "Tallyglass/cache.sqlite" in the per-user data folder.
    [[nodiscard]] static std::filesystem::path defaultURL();

    /// Opens the file, making it and the folders above it when they are missing, readable by their user
    /// alone, and brings it to the present schema. The connection waits for the lock of another up to
    /// `lockTimeout` after that one's last progress. Throws Error, most often a DatabaseError. A file that
    /// can't be opened stays as it is.
    [[nodiscard]] static std::unique_ptr<Connection>
    makeQueue(const std::filesystem::path& url,
              std::chrono::milliseconds lockTimeout = std::chrono::seconds(5));

    /// Removes the file with those that SQLite may keep beside it. What can't be removed stays, silently.
    static void reset(const std::filesystem::path& url);
};

} // namespace tallyglass
