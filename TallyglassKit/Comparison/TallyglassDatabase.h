// The diff cache: one SQLite file that holds the results of comparisons. DiffCache.md describes it.
// Everything in it can be recomputed.
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

    /// Opens the file and migrates it to the current schema. Creates it and its folders if they are missing,
    /// accessible to their user only. The connection waits for another's lock up to `lockTimeout` after that
    /// one's last progress. Throws Error, usually a DatabaseError. A file that can't be opened is left
    /// unchanged.
    [[nodiscard]] static std::unique_ptr<Connection>
    makeQueue(const std::filesystem::path& url,
              std::chrono::milliseconds lockTimeout = std::chrono::seconds(5));

    /// Removes the file and those that SQLite may keep beside it. Ignores failures.
    static void reset(const std::filesystem::path& url);
};

} // namespace tallyglass
