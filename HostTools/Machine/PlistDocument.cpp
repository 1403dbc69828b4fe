#include "HostTools/Machine/PlistDocument.h"

#include "HostTools/Machine/FileOperations.h"

#include <plist/plist.h>

#include <cmath>
#include <cstdlib>

namespace tallyglass {

namespace {

/// Dates have milliseconds: libplist truncates to microseconds on reading, which would make a date drift each
/// time it is read and written.
plist_t dateNode(Date date) {
    const std::int64_t milliseconds = std::llround(secondsSince2001(date) * 1000);
    const std::int64_t fraction = (milliseconds % 1000 + 1000) % 1000;
    return plist_new_date(static_cast<std::int32_t>((milliseconds - fraction) / 1000),
                          static_cast<std::int32_t>(fraction * 1000));
}

std::optional<Date> dateOf(plist_t node) {
    if (!node || plist_get_node_type(node) != PLIST_DATE)
        return std::nullopt;
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return dateSince2001(seconds + std::round(microseconds * 1e-3) * 1e-3);
}

std::optional<std::string> textOf(plist_t node) {
    if (!node || plist_get_node_type(node) != PLIST_STRING)
        return std::nullopt;
    char* text = nullptr;
    plist_get_string_val(node, &text);
    std::string result = text ? text : "";
    std::free(text);
    return result;
}

plist_t textNode(std::string_view text) {
    return plist_new_string(std::string(text).c_str());
}

void put(void* dictionary, const std::string& key, plist_t value) {
    plist_dict_set_item(dictionary, key.c_str(), value);
}

template <typename Element>
std::vector<Element> elements(plist_t array, std::optional<Element> (*read)(plist_t)) {
    std::vector<Element> result;
    if (!array || plist_get_node_type(array) != PLIST_ARRAY)
        return result;
    for (std::uint32_t index = 0; index < plist_array_get_size(array); ++index)
        if (auto element = read(plist_array_get_item(array, index)))
            result.push_back(std::move(*element));
    return result;
}

std::string takeBuffer(char* buffer, std::uint32_t length, void (*release)(char*)) {
    std::string result(buffer ? buffer : "", buffer ? length : 0);
    release(buffer);
    return result;
}

} // namespace

PlistNode PlistNode::at(const std::string& key) const {
    if (!m_node || plist_get_node_type(m_node) != PLIST_DICT)
        return PlistNode();
    return PlistNode(plist_dict_get_item(m_node, key.c_str()));
}

std::optional<std::string> PlistNode::text(const std::string& key) const {
    return textOf(at(key).m_node);
}

std::optional<std::int64_t> PlistNode::integer(const std::string& key) const {
    const PlistNode node = at(key);
    if (!node.exists() || plist_get_node_type(node.m_node) != PLIST_UINT)
        return std::nullopt;
    std::uint64_t value = 0;
    plist_get_uint_val(node.m_node, &value);
    return static_cast<std::int64_t>(value);
}

std::optional<double> PlistNode::real(const std::string& key) const {
    const PlistNode node = at(key);
    if (!node.exists() || plist_get_node_type(node.m_node) != PLIST_REAL)
        return std::nullopt;
    double value = 0;
    plist_get_real_val(node.m_node, &value);
    return value;
}

std::optional<bool> PlistNode::boolean(const std::string& key) const {
    const PlistNode node = at(key);
    if (!node.exists() || plist_get_node_type(node.m_node) != PLIST_BOOLEAN)
        return std::nullopt;
    std::uint8_t value = 0;
    plist_get_bool_val(node.m_node, &value);
    return value != 0;
}

std::optional<Date> PlistNode::date(const std::string& key) const {
    return dateOf(at(key).m_node);
}

std::vector<std::string> PlistNode::texts(const std::string& key) const {
    return elements<std::string>(at(key).m_node, textOf);
}

std::vector<Date> PlistNode::dates(const std::string& key) const {
    return elements<Date>(at(key).m_node, dateOf);
}

std::vector<PlistNode> PlistNode::dictionaries(const std::string& key) const {
    return elements<PlistNode>(at(key).m_node, [](plist_t node) -> std::optional<PlistNode> {
        if (plist_get_node_type(node) != PLIST_DICT)
            return std::nullopt;
        return PlistNode(node);
    });
}

void PlistNode::set(const std::string& key, std::string_view value) const {
    put(m_node, key, textNode(value));
}
void PlistNode::set(const std::string& key, std::int64_t value) const {
    put(m_node, key, plist_new_uint(static_cast<std::uint64_t>(value)));
}
void PlistNode::set(const std::string& key, bool value) const {
    put(m_node, key, plist_new_bool(value));
}
void PlistNode::set(const std::string& key, double value) const {
    put(m_node, key, plist_new_real(value));
}
void PlistNode::set(const std::string& key, Date value) const {
    put(m_node, key, dateNode(value));
}

void PlistNode::set(const std::string& key, const std::vector<std::string>& values) const {
    plist_t array = plist_new_array();
    for (const std::string& value : values)
        plist_array_append_item(array, textNode(value));
    put(m_node, key, array);
}

void PlistNode::set(const std::string& key, const std::vector<Date>& values) const {
    plist_t array = plist_new_array();
    for (const Date value : values)
        plist_array_append_item(array, dateNode(value));
    put(m_node, key, array);
}

PlistNode PlistNode::setDictionary(const std::string& key) const {
    plist_t dictionary = plist_new_dict();
    put(m_node, key, dictionary);
    return PlistNode(dictionary);
}

PlistNode PlistNode::setArray(const std::string& key) const {
    plist_t array = plist_new_array();
    put(m_node, key, array);
    return PlistNode(array);
}

void PlistNode::remove(const std::string& key) const {
    if (at(key).exists())
        plist_dict_remove_item(m_node, key.c_str());
}

std::size_t PlistNode::size() const {
    return m_node && plist_get_node_type(m_node) == PLIST_ARRAY ? plist_array_get_size(m_node) : 0;
}

PlistNode PlistNode::element(std::size_t index) const {
    return PlistNode(plist_array_get_item(m_node, static_cast<std::uint32_t>(index)));
}

PlistNode PlistNode::appendDictionary() const {
    plist_t dictionary = plist_new_dict();
    plist_array_append_item(m_node, dictionary);
    return PlistNode(dictionary);
}

void PlistNode::append(Date value) const {
    plist_array_append_item(m_node, dateNode(value));
}

std::optional<Date> PlistNode::asDate() const {
    return dateOf(m_node);
}

void PlistDocument::Free::operator()(void* node) const {
    plist_free(node);
}

PlistDocument PlistDocument::dictionary() {
    return PlistDocument(plist_new_dict());
}

PlistDocument PlistDocument::array() {
    return PlistDocument(plist_new_array());
}

PlistDocument PlistDocument::string(const std::string& text) {
    return PlistDocument(plist_new_string(text.c_str()));
}

std::optional<PlistDocument> PlistDocument::parse(std::string_view bytes) {
    plist_t root = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    if (!root)
        return std::nullopt;
    return PlistDocument(root);
}

std::optional<PlistDocument> PlistDocument::read(const std::filesystem::path& file) {
    const auto bytes = readWholeFile(file);
    return bytes ? parse(*bytes) : std::nullopt;
}

bool PlistDocument::isDictionary() const {
    return plist_get_node_type(m_root.get()) == PLIST_DICT;
}

bool PlistDocument::isArray() const {
    return plist_get_node_type(m_root.get()) == PLIST_ARRAY;
}

std::string PlistDocument::binary() const {
    char* buffer = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(m_root.get(), &buffer, &length);
    return takeBuffer(buffer, length, plist_to_bin_free);
}

std::string PlistDocument::xml() const {
    char* buffer = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(m_root.get(), &buffer, &length);
    return takeBuffer(buffer, length, plist_to_xml_free);
}

} // namespace tallyglass
