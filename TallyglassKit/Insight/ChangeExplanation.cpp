#include "TallyglassKit/Insight/ChangeExplanation.h"

#include "TallyglassKit/Insight/Internal/LargestPlaces.h"
#include "TallyglassKit/Insight/StorageTree.h"
#include "TallyglassKit/Platform/SaturatingArithmetic.h"
#include "TallyglassKit/Platform/Text/ByteCount.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <string_view>

namespace tallyglass {

namespace {

using Place = ChangeExplanation::Place;

/// The growth, in either direction, below which so much change is worth a remark: a tenth of it.
constexpr double littleGrowth = 0.1;

/// The deepest folder that has both in it, with a slash at its end.
std::string_view commonFolder(std::string_view left, std::string_view right) {
    const auto common =
        left.substr(0, static_cast<std::size_t>(std::ranges::mismatch(left, right).in1 - left.begin()));
    return common.substr(0, common.rfind('/') + 1);
}

class Sentence {
public:
    Sentence(const ChangeExplanation& explanation, const UserLocale& locale)
        : m_all(explanation), m_locale(locale) {}

    [[nodiscard]] std::string text() const {
        if (m_all.changeCount == 0)
            return "Nothing changed.";
        if (m_all.magnitude == 0)
            return m_all.changeCount == 1
                       ? "One change, which makes no difference in size."
                       : fmt::format("{} changes, none of which makes a difference in size.",
                                     formatGrouped(m_all.changeCount, m_locale));
        return fmt::format("{} changed, {}{}.", bytes(m_all.magnitude), where(), growth());
    }

private:
    [[nodiscard]] std::string bytes(std::int64_t count) const { return formatByteCount(count, m_locale); }

    [[nodiscard]] std::string where() const {
        const auto& places = m_all.places;
        if (places.empty())
            return fmt::format("spread over {} items so that no place stands out",
                               formatGrouped(m_all.changeCount, m_locale));
        if (places.size() == 1)
            return fmt::format("{} in {}", howMuch(), places.front().path) +
                   (isAll() ? "" : fmt::format(" ({:.0f} %)", places.front().share * 100));

        std::string_view folder = places.front().path;
        for (const Place& place : std::span(places).subspan(1))
            folder = commonFolder(folder, place.path);
        const bool isRoot = folder.size() == 1;
        std::string list;
        for (const Place& place : places) {
            if (&place != &places.front())
                list += &place == &places.back() ? " and " : ", ";
            list += fmt::format("{} in {} ({:.0f} %)", bytes(place.magnitude),
                                place.path.substr(isRoot ? 0 : folder.size()), place.share * 100);
        }
        return fmt::format("{} in {} places{}: {}", howMuch(), places.size() == 2 ? "two" : "three",
                           isRoot ? "" : fmt::format(" under {}", folder.substr(0, folder.size() - 1)), list);
    }

    [[nodiscard]] double share() const {
        double sum = 0;
        for (const Place& place : m_all.places)
            sum += place.share;
        return sum;
    }
    [[nodiscard]] bool isAll() const { return share() > 0.995; }
    [[nodiscard]] std::string_view howMuch() const {
        return isAll() ? "all of it" : share() >= 0.9 ? "nearly all of it" : "most of it";
    }

    /// A remark if the change is mostly replacement.
    [[nodiscard]] std::string growth() const {
        const auto net = m_all.netBytes;
        if (std::abs(static_cast<double>(net)) > littleGrowth * static_cast<double>(m_all.magnitude))
            return "";
        if (net == 0)
            return ", yet the backup is as large as before";
        return fmt::format(", yet the backup {} by only {}", net > 0 ? "grew" : "shrank",
                           bytes(net > 0 ? net : saturatingNegation(net)));
    }

    const ChangeExplanation& m_all;
    const UserLocale& m_locale;
};

} // namespace

ChangeExplanation ChangeExplanation::explain(const StorageTree& tree, const UserLocale& locale) {
    const auto root = tree.root();
    ChangeExplanation result{.magnitude = root.magnitude,
                             .netBytes = root.netBytes,
                             .changeCount = root.changeCount,
                             .places = {},
                             .sentence = {}};
    for (const auto index : largestPlaces(tree))
        result.places.push_back(
            {.path = tree.pathOf(index),
             .magnitude = tree.magnitudeOf(index),
             .netBytes = tree.netBytesOf(index),
             .changeCount = tree.changeCountOf(index),
             .share = static_cast<double>(tree.magnitudeOf(index)) / static_cast<double>(root.magnitude)});
    result.sentence = Sentence(result, locale).text();
    return result;
}

} // namespace tallyglass
