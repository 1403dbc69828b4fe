#include "TallyglassKit/Platform/Files/MemoryBlock.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace tallyglass {

namespace {

constexpr std::size_t hugePage = std::size_t{2} << 20;
/// Blocks of this size and more have pages of their own, smaller ones are from the heap.
constexpr std::size_t ownPages = 2 * hugePage;

constexpr std::size_t roundedUp(std::size_t size) {
    return (size + hugePage - 1) / hugePage * hugePage;
}

/// New pages aligned for huge pages, null if there is no memory. `size` is a multiple of huge pages.
char* map(std::size_t size) {
    const std::size_t extended = size + hugePage; // so that an aligned range lies somewhere in it
    void* const range = mmap(nullptr, extended, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (range == MAP_FAILED)
        return nullptr;
    char* const start = static_cast<char*>(range);
    const std::size_t before =
        roundedUp(reinterpret_cast<std::uintptr_t>(start)) - reinterpret_cast<std::uintptr_t>(start);
    if (before > 0)
        munmap(start, before);
    if (before < hugePage)
        munmap(start + before + size, hugePage - before);
    madvise(start + before, size, MADV_HUGEPAGE);
    return start + before;
}

/// Resizes a block of pages, moving them if necessary; null if there is no memory.
char* remap(char* block, std::size_t oldSize, std::size_t size) {
    if (mremap(block, oldSize, size, 0) != MAP_FAILED)
        return block;
    char* const target = map(size);
    if (!target)
        return nullptr;
    if (mremap(block, oldSize, size, MREMAP_MAYMOVE | MREMAP_FIXED, target) != MAP_FAILED)
        return target;
    munmap(target, size);
    return nullptr;
}

} // namespace

bool MemoryBlock::resize(std::size_t size) noexcept {
    if (size > PTRDIFF_MAX - 2 * hugePage)
        return false;
    const bool hasOwnPages = m_size >= ownPages;
    const bool wantsOwnPages = size >= ownPages;
    if (wantsOwnPages)
        size = roundedUp(size);
    if (size == m_size)
        return true;
    char* block = nullptr;
    if (hasOwnPages && wantsOwnPages)
        block = remap(m_start, m_size, size);
    else if (!hasOwnPages && !wantsOwnPages)
        block = static_cast<char*>(std::realloc(m_start, std::max<std::size_t>(size, 1)));
    else
        block = wantsOwnPages ? map(size) : static_cast<char*>(std::malloc(std::max<std::size_t>(size, 1)));
    if (!block)
        return false;
    if (m_start && hasOwnPages != wantsOwnPages) {
        std::memcpy(block, m_start, std::min(size, m_size)); // at most a few MiB
        free();
    }
    m_start = block;
    m_size = size;
    return true;
}

void MemoryBlock::free() noexcept {
    if (m_size >= ownPages)
        munmap(m_start, m_size);
    else
        std::free(m_start);
    m_start = nullptr;
    m_size = 0;
}

} // namespace tallyglass
