#include "TallyglassKit/Platform/PropertyLists/Internal/KeyTable.h"

#include <cstring>
#include <random>

namespace tallyglass {

namespace {

// Up to this number of pairs, comparing hashes one after the other is as fast as a table.
constexpr std::size_t largestWithoutTable = 12;

template <typename T>
std::uint64_t load(const char* place) {
    T value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

// Both halves of the product depend on every bit of the factors.
std::uint64_t mix(std::uint64_t a, std::uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

struct Seed {
    std::uint64_t first;
    std::uint64_t second;
};

Seed makeSeed() {
    std::random_device device;
    const auto word = [&] { return std::uint64_t{device()} << 32 | device() | 1; };
    return {word(), word()};
}

} // namespace

std::uint32_t keyHash(std::string_view key) {
    static const Seed seed = makeSeed();
    const char* const start = key.data();
    const std::size_t size = key.size();
    std::uint64_t a = 0;
    std::uint64_t b = 0;
    std::uint64_t state = seed.second ^ size;
    if (size > 16) {
        for (std::size_t i = 0; i + 16 < size; i += 16)
            state =
                mix(load<std::uint64_t>(start + i) ^ seed.first, load<std::uint64_t>(start + i + 8) ^ state);
        a = load<std::uint64_t>(start + size - 16);
        b = load<std::uint64_t>(start + size - 8);
    } else if (size >= 8) {
        a = load<std::uint64_t>(start);
        b = load<std::uint64_t>(start + size - 8);
    } else if (size >= 4) {
        a = load<std::uint32_t>(start);
        b = load<std::uint32_t>(start + size - 4);
    } else if (size > 0) {
        a = load<std::uint8_t>(start);
        b = load<std::uint8_t>(start + size / 2) << 8 | load<std::uint8_t>(start + size - 1);
    }
    const auto result = static_cast<std::uint32_t>(mix(a ^ seed.first, b ^ state) >> (64 - keyHashBits));
    return result ? result : 1;
}

std::size_t keyTableSize(std::size_t pairs) {
    return pairs > largestWithoutTable ? std::bit_ceil(pairs + pairs / 2) : 0;
}

} // namespace tallyglass
