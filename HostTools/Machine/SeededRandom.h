// Reproducible random numbers, the same on every machine. One thread.

#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace tallyglass {

class SeededRandom {
public:
    explicit SeededRandom(std::uint64_t seed) : m_engine(seed) {}

    [[nodiscard]] std::uint64_t next() { return m_engine(); }
    /// From 0 to `count` - 1; 0 if there is nothing to choose from.
    [[nodiscard]] std::size_t below(std::size_t count) {
        return count == 0 ? 0 : static_cast<std::size_t>(m_engine() % count);
    }
    /// From `low` up to `high`.
    [[nodiscard]] double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(m_engine() >> 11) * 0x1p-53);
    }
    template <typename Choices>
    [[nodiscard]] auto& choice(Choices& choices) {
        return choices[below(std::size(choices))];
    }
    [[nodiscard]] std::string bytes(std::size_t count) {
        std::string result(count + sizeof(std::uint64_t), '\0');
        for (std::size_t at = 0; at < count; at += sizeof(std::uint64_t)) {
            const std::uint64_t word = m_engine();
            result.replace(at, sizeof word, reinterpret_cast<const char*>(&word), sizeof word);
        }
        result.resize(count);
        return result;
    }

private:
    std::mt19937_64 m_engine; // its sequence is standardised, unlike the distributions'
};

} // namespace tallyglass
