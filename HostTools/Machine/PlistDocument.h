// A mutable property list on top of libplist, in the binary or XML form. Unknown contents are preserved.
//
// PlistDocument owns its tree; a PlistNode borrows from it. Not thread-safe.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

/// A node of a document: a dictionary, array or scalar. A handle that is valid until the node is replaced or
/// the document destroyed.
class PlistNode {
public:
    explicit PlistNode(void* node = nullptr) : m_node(node) {}

    [[nodiscard]] bool exists() const { return m_node != nullptr; }
    [[nodiscard]] void* handle() const { return m_node; }

    // The value at a key of a dictionary; absent if missing or of another type.
    [[nodiscard]] PlistNode at(const std::string& key) const;
    [[nodiscard]] std::optional<std::string> text(const std::string& key) const;
    [[nodiscard]] std::optional<std::int64_t> integer(const std::string& key) const;
    [[nodiscard]] std::optional<double> real(const std::string& key) const;
    [[nodiscard]] std::optional<bool> boolean(const std::string& key) const;
    [[nodiscard]] std::optional<Date> date(const std::string& key) const;
    [[nodiscard]] std::vector<std::string> texts(const std::string& key) const;
    [[nodiscard]] std::vector<Date> dates(const std::string& key) const;
    /// The dictionaries among the elements of the array at a key.
    [[nodiscard]] std::vector<PlistNode> dictionaries(const std::string& key) const;

    // Set the value at a key of a dictionary.
    void set(const std::string& key, std::string_view value) const;
    void set(const std::string& key, const char* value) const { set(key, std::string_view(value)); }
    void set(const std::string& key, std::int64_t value) const;
    void set(const std::string& key, bool value) const;
    void set(const std::string& key, double value) const;
    void set(const std::string& key, Date value) const;
    void set(const std::string& key, const std::vector<std::string>& values) const;
    void set(const std::string& key, const std::vector<Date>& values) const;
    [[nodiscard]] PlistNode setDictionary(const std::string& key) const;
    [[nodiscard]] PlistNode setArray(const std::string& key) const;
    void remove(const std::string& key) const;

    // An array's elements.
    [[nodiscard]] std::size_t size() const;
    [[nodiscard]] PlistNode element(std::size_t index) const;
    [[nodiscard]] PlistNode appendDictionary() const;
    void append(Date value) const;
    [[nodiscard]] std::optional<Date> asDate() const;

private:
    void* m_node;
};

class PlistDocument {
public:
    [[nodiscard]] static PlistDocument dictionary();
    [[nodiscard]] static PlistDocument array();
    [[nodiscard]] static PlistDocument string(const std::string& text);
    /// Parses the binary or XML form; absent if `bytes` is invalid.
    [[nodiscard]] static std::optional<PlistDocument> parse(std::string_view bytes);
    /// The same for a file; also absent if it can't be read.
    [[nodiscard]] static std::optional<PlistDocument> read(const std::filesystem::path& file);

    [[nodiscard]] PlistNode root() const { return PlistNode(m_root.get()); }
    [[nodiscard]] bool isDictionary() const;
    [[nodiscard]] bool isArray() const;
    [[nodiscard]] std::string binary() const;
    [[nodiscard]] std::string xml() const;

private:
    explicit PlistDocument(void* root) : m_root(root) {}
    struct Free {
        void operator()(void* node) const;
    };
    std::unique_ptr<void, Free> m_root;
};

} // namespace tallyglass
