// Builds files in the binary form byte by byte, valid or not.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tallyglass::test {

inline std::string bigEndian(std::uint64_t value, std::size_t width) {
    std::string bytes(width, '\0');
    for (std::size_t i = width; i-- > 0; value >>= 8)
        bytes[i] = static_cast<char>(value & 0xFF);
    return bytes;
}

inline std::string object(unsigned char marker, const std::string& rest = {}) {
    return static_cast<char>(marker) + rest;
}

struct BinaryPropertyListFile {
    std::vector<std::string> objects = {};
    std::size_t offsetWidth = 4;
    std::size_t referenceWidth = 1;
    std::uint64_t root = 0;

    [[nodiscard]] std::string bytes() const {
        std::string area = "bplist00";
        std::string table;
        for (const std::string& object : objects) {
            table += bigEndian(area.size(), offsetWidth);
            area += object;
        }
        return withTable(area, table, objects.size());
    }

    /// A file of an object area with its header and of a table of offsets.
    [[nodiscard]] std::string withTable(const std::string& area, const std::string& table,
                                        std::uint64_t count) const {
        return area + table + std::string(6, '\0') + bigEndian(offsetWidth, 1) +
               bigEndian(referenceWidth, 1) + bigEndian(count, 8) + bigEndian(root, 8) +
               bigEndian(area.size(), 8);
    }
};

} // namespace tallyglass::test
