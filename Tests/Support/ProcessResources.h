// What this process holds of the system: descriptors, children and threads. A test that counts before and
// after its work finds whatever the work has left behind.

#pragma once

#include <cstddef>
#include <ostream>

namespace tallyglass::test {

struct ProcessResources {
    std::size_t descriptors = 0;
    std::size_t children = 0; ///< those that have ended and weren't waited for included
    std::size_t threads = 0;

    [[nodiscard]] static ProcessResources now();

    friend bool operator==(const ProcessResources&, const ProcessResources&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const ProcessResources& resources);
};

/// Fails the test if, at the end of its life, the process holds anything else than at the beginning.
class ResourceGuard {
public:
    ResourceGuard();
    ~ResourceGuard();
    ResourceGuard(const ResourceGuard&) = delete;
    ResourceGuard& operator=(const ResourceGuard&) = delete;

private:
    ProcessResources m_before;
};

} // namespace tallyglass::test
