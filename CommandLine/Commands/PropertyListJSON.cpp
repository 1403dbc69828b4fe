#include "CommandLine/Commands/PropertyListJSON.h"

#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Text/UTF8.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tallyglass {

namespace {

using Kind = PropertyListValue::Kind;

/// The remaining part of a container during traversal.
struct Walk {
    explicit Walk(PropertyListValue value) : container(value) {
        if (isDictionary())
            pairs = *value.dictionary();
        else
            elements = value.kind() == Kind::set ? *value.set() : *value.array();
    }

    [[nodiscard]] bool isDictionary() const { return container.kind() == Kind::dictionary; }
    [[nodiscard]] bool atEnd() const { return isDictionary() ? pairs.empty() : elements.empty(); }
    /// The next value, with its key in a dictionary.
    std::pair<std::string_view, PropertyListValue> next() {
        if (isDictionary()) {
            const auto& pair = pairs.front();
            pairs = pairs.subspan(1);
            return {pair.key(), pair.value()};
        }
        const auto element = elements.front();
        elements = elements.subspan(1);
        return {{}, element};
    }

    PropertyListValue container;
    std::span<const PropertyListValue> elements;
    std::span<const PropertyListPair> pairs;
    std::uint64_t size = 1; // counted so far
    bool hasBegun = false;  // a value of it has been printed
};

bool isContainer(PropertyListValue value) {
    return value.kind() >= Kind::array;
}

std::uint64_t saturatingSum(std::uint64_t a, std::uint64_t b) {
    return a > std::numeric_limits<std::uint64_t>::max() - b ? std::numeric_limits<std::uint64_t>::max()
                                                             : a + b;
}

std::uint64_t scalarSize(PropertyListValue value) {
    return 1 + value.text().value_or("").size() + value.data().value_or("").size();
}

/// The size of the graph expanded to a tree. Visits each container once.
std::uint64_t expandedSize(PropertyListValue root) {
    if (!isContainer(root))
        return scalarSize(root);
    std::unordered_map<const void*, std::uint64_t> known;
    std::vector<Walk> walks{Walk(root)};
    for (;;) {
        Walk& walk = walks.back();
        if (walk.atEnd()) {
            const std::uint64_t size = walk.size;
            known.emplace(walk.container.identity(), size);
            walks.pop_back();
            if (walks.empty())
                return size;
            walks.back().size = saturatingSum(walks.back().size, size);
            continue;
        }
        const auto [key, value] = walk.next();
        walk.size = saturatingSum(walk.size, key.size());
        if (!isContainer(value))
            walk.size = saturatingSum(walk.size, scalarSize(value));
        else if (const auto found = known.find(value.identity()); found != known.end())
            walk.size = saturatingSum(walk.size, found->second);
        else
            walks.emplace_back(value);
    }
}

class Printer {
public:
    explicit Printer(std::ostream& output) : m_output(output) {}

    void print(PropertyListValue root);

private:
    void printScalar(PropertyListValue value);
    void printText(std::string_view text);
    void printReal(double value);
    void printData(std::string_view bytes);
    void addHexadecimal(char byte);
    void open(PropertyListValue container);
    void flush() {
        m_output.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
        m_buffer.clear();
    }

    std::ostream& m_output;
    std::string m_buffer;
    std::vector<Walk> m_walks;
};

void Printer::print(PropertyListValue root) {
    if (isContainer(root))
        open(root);
    else
        printScalar(root);
    while (!m_walks.empty()) {
        Walk& walk = m_walks.back();
        if (walk.atEnd()) {
            m_buffer += walk.isDictionary() ? "}" : walk.container.kind() == Kind::set ? "]}" : "]";
            m_walks.pop_back();
            continue;
        }
        if (std::exchange(walk.hasBegun, true))
            m_buffer += ", ";
        const bool hasKey = walk.isDictionary();
        const auto [key, value] = walk.next();
        if (hasKey) {
            printText(key);
            m_buffer += ": ";
        }
        if (isContainer(value))
            open(value);
        else
            printScalar(value);
        if (m_buffer.size() > 64 << 10)
            flush();
    }
    flush();
}

void Printer::open(PropertyListValue container) {
    m_buffer += container.kind() == Kind::dictionary ? "{"
                : container.kind() == Kind::set      ? R"({"set": [)"
                                                     : "[";
    m_walks.emplace_back(container);
}

void Printer::printScalar(PropertyListValue value) {
    switch (value.kind()) {
    case Kind::boolean:
        m_buffer += *value.boolean() ? "true" : "false";
        break;
    case Kind::integer:
        if (const auto integer = value.integer())
            m_buffer += std::to_string(*integer);
        else
            m_buffer += std::to_string(*value.unsignedInteger());
        break;
    case Kind::real:
        m_buffer += R"({"real": )";
        printReal(*value.real());
        m_buffer += '}';
        break;
    case Kind::date:
        m_buffer += R"({"date": )";
        printReal(*value.secondsSince2001());
        m_buffer += '}';
        break;
    case Kind::uid:
        m_buffer += R"({"uid": )" + std::to_string(*value.uid()) + '}';
        break;
    case Kind::text:
        printText(*value.text());
        break;
    case Kind::data:
        printData(*value.data());
        break;
    default:
        m_buffer += "null";
        break;
    }
}

void Printer::printReal(double value) {
    if (!std::isfinite(value)) {
        m_buffer += std::isnan(value) ? R"("nan")" : value > 0 ? R"("inf")" : R"("-inf")";
        return;
    }
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    m_buffer.append(digits, end);
}

void Printer::addHexadecimal(char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    m_buffer += digits[byte >> 4 & 0xF];
    m_buffer += digits[byte & 0xF];
}

void Printer::printData(std::string_view bytes) {
    m_buffer += R"({"data": ")";
    for (const char byte : bytes)
        addHexadecimal(byte);
    m_buffer += R"("})";
}

void Printer::printText(std::string_view text) {
    m_buffer += '"';
    std::size_t invalid = findInvalidUTF8(text);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (i == invalid) {
            m_buffer += "\uFFFD";
            const std::size_t further = findInvalidUTF8(text.substr(i + 1));
            invalid = further == std::string_view::npos ? further : i + 1 + further;
        } else if (c == '"' || c == '\\') {
            m_buffer += '\\';
            m_buffer += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            m_buffer += "\\u00";
            addHexadecimal(c);
        } else {
            m_buffer += c;
        }
    }
    m_buffer += '"';
}

} // namespace

void printPropertyListJSON(PropertyListValue root, std::ostream& output, std::uint64_t most) {
    if (expandedSize(root) > most)
        throw Error("The property list shares its values so often that it would take more than " +
                    std::to_string(most) + " bytes in JSON.");
    Printer(output).print(root);
}

} // namespace tallyglass
