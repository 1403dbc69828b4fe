#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListBuilder.h"

#include "TallyglassKit/Platform/PropertyLists/PropertyListError.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace tallyglass {

void PropertyListBuilder::begin(PropertyListValue::Kind kind, std::size_t offset) {
    if (m_open.size() == PropertyListStorage::maximumNesting)
        fail("containers are nested too deeply", offset);
    m_open.push_back({kind, 1, m_pending.size()});
}

void PropertyListBuilder::key(std::string_view utf8) {
    PropertyListValue key = PropertyListStorage::asKey(PropertyListValue::ofText(utf8));
    PropertyListValue& recent = m_recentKeys[key.tag() % m_recentKeys.size()];
    if (!PropertyListValue::isSameKey(key, recent)) {
        key.m_bytes = m_storage.keep(utf8).data();
        recent = key;
    }
    add(recent);
}

void PropertyListBuilder::keyAsText() {
    add(m_pending.back());
}

void PropertyListBuilder::end() {
    const Open closed = m_open.back();
    m_open.pop_back();
    const std::span values(m_pending.begin() + static_cast<std::ptrdiff_t>(closed.start), m_pending.end());
    const bool isDictionary = closed.kind == PropertyListValue::Kind::dictionary;
    const auto kept = m_storage.allocate(closed.kind, isDictionary ? values.size() / 2 : values.size());
    std::ranges::copy(values, kept.begin());
    m_pending.resize(closed.start);
    add(m_storage.finish(closed.kind, kept, closed.nesting, DuplicateKeys::lastWins));
    if (!m_open.empty())
        m_open.back().nesting = std::max(m_open.back().nesting, closed.nesting + 1);
}

void PropertyListBuilder::fail(std::string_view problem, std::size_t offset) const {
    throw PropertyListError::inText(problem, m_text, offset);
}

} // namespace tallyglass
