// A reference-counted immutable text at the cost of one pointer: a million rows share the identifier of their
// comparison, and a handful of lists of differences.
//
// SharedText is a value, equal by its text; copies may be used on any threads. TextPool isn't thread-safe.

#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace tallyglass {

class SharedText {
public:
    SharedText() noexcept = default; ///< the empty text, which allocates nothing
    SharedText(std::string text) : m_owned(text.empty() ? nullptr : new Owned(std::move(text))) {}
    SharedText(std::string_view text) : SharedText(std::string(text)) {}
    SharedText(const char* text) : SharedText(std::string(text)) {}

    SharedText(const SharedText& other) noexcept : m_owned(other.m_owned) {
        if (m_owned)
            m_owned->owners.fetch_add(1, std::memory_order_relaxed);
    }
    SharedText(SharedText&& other) noexcept : m_owned(std::exchange(other.m_owned, nullptr)) {}
    SharedText& operator=(SharedText other) noexcept {
        std::swap(m_owned, other.m_owned);
        return *this;
    }
    ~SharedText() {
        if (m_owned && m_owned->owners.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete m_owned;
    }

    /// Valid for the lifetime of any copy.
    [[nodiscard]] const std::string& string() const noexcept { return m_owned ? m_owned->text : emptyText(); }
    operator const std::string&() const noexcept { return string(); }
    operator std::string_view() const noexcept { return string(); }

    /// Whether both share one text in memory; if not, the texts may still be equal.
    [[nodiscard]] bool sharesTextWith(const SharedText& other) const noexcept {
        return m_owned == other.m_owned;
    }
    friend bool operator==(const SharedText& left, const SharedText& right) noexcept {
        return left.sharesTextWith(right) || left.string() == right.string();
    }
    friend bool operator==(const SharedText& left, std::string_view right) noexcept {
        return left.string() == right;
    }
    friend bool operator==(const SharedText& left, const std::string& right) noexcept {
        return left.string() == right;
    }
    friend bool operator==(const SharedText& left, const char* right) noexcept {
        return left.string() == right;
    }

private:
    struct Owned {
        explicit Owned(std::string&& value) : text(std::move(value)) {}
        const std::string text;
        std::atomic<std::uint32_t> owners{1};
    };
    static const std::string& emptyText() noexcept {
        static const std::string empty;
        return empty;
    }

    Owned* m_owned = nullptr;
};

/// Returns the same SharedText for equal texts, for building a long list.
class TextPool {
public:
    [[nodiscard]] SharedText share(std::string_view text) {
        if (text == m_last)
            return m_last; // neighbouring rows mostly have the same text
        auto found = m_texts.find(text);
        if (found == m_texts.end()) {
            if (m_texts.size() >= capacity)
                m_texts.clear(); // texts that rarely repeat aren't worth keeping
            found = m_texts.emplace(text).first;
        }
        return m_last = *found;
    }

    void clear() {
        m_texts.clear();
        m_last = {};
    }

private:
    static constexpr std::size_t capacity = 4096;
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
        std::size_t operator()(const SharedText& text) const { return (*this)(std::string_view(text)); }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(const SharedText& left, const SharedText& right) const { return left == right; }
        bool operator()(std::string_view left, const SharedText& right) const { return right == left; }
        bool operator()(const SharedText& left, std::string_view right) const { return left == right; }
    };

    std::unordered_set<SharedText, Hash, Equal> m_texts;
    SharedText m_last;
};

} // namespace tallyglass
