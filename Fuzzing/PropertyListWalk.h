// The guarantees of property-list readers for any bytes, checked by their fuzzers.

#pragma once

#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"
#include "TallyglassKit/Platform/Text/UTF8.h"

#include <cstdlib>
#include <set>
#include <string_view>
#include <vector>

namespace tallyglass::fuzzing {

inline void require(bool holds) {
    if (!holds)
        std::abort();
}

/// Visits every value once, and every byte of text and data.
inline void walk(PropertyListValue root) {
    require(root.nesting() <= PropertyListStorage::maximumNesting);
    std::set<const void*> seen;
    std::vector<PropertyListValue> waiting{root};
    while (!waiting.empty()) {
        const PropertyListValue value = waiting.back();
        waiting.pop_back();
        const auto add = [&](PropertyListValue inner) {
            if (inner.kind() >= PropertyListValue::Kind::array)
                require(inner.nesting() < value.nesting());
            if (!inner.identity() || seen.insert(inner.identity()).second)
                waiting.push_back(inner);
        };
        if (const auto text = value.text(); text && seen.insert(text->data()).second)
            require(findInvalidUTF8(*text) == std::string_view::npos);
        if (const auto elements = value.kind() == PropertyListValue::Kind::set ? value.set() : value.array())
            for (const PropertyListValue element : *elements)
                add(element);
        if (const auto dictionary = value.dictionary()) {
            for (const PropertyListPair& pair : *dictionary) {
                const auto found = value.find(pair.key());
                require(found && found->kind() == pair.value().kind());
                add(pair.value());
            }
        }
    }
}

template <typename Reader>
void readAndWalk(std::string_view bytes, Reader read) {
    PropertyListStorage storage;
    try {
        walk(read(bytes, storage));
    } catch (const PropertyListError&) {
        return; // most bytes aren't a list
    }
    require(storage.size() <= PropertyList::memoryPerByte * bytes.size() + (64 << 10));
}

} // namespace tallyglass::fuzzing
