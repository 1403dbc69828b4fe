// The system resources of this process: descriptors, children and threads. Comparing them before and after
// some work finds leaks.

#pragma once

#include <cstddef>
#include <ostream>

namespace tallyglass::test {

struct ProcessResources {
    std::size_t descriptors = 0;
    std::size_t children = 0; ///< including zombies
    std::size_t threads = 0;

    [[nodiscard]] static ProcessResources now();

    friend bool operator==(const ProcessResources&, const ProcessResources&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const ProcessResources& resources);
};

/// Its destructor fails the test if the process holds other resources than at its construction.
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
