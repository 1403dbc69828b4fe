#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/Comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace tallyglass;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Kind = ChangeKind;
using Property = CompareOptions::Property;
using Differences = std::optional<std::vector<std::string>>;
constexpr auto least = std::numeric_limits<std::int64_t>::min();
constexpr auto most = std::numeric_limits<std::int64_t>::max();

ChangeRecord modified(const Differences& differences) {
    return {std::nullopt, "id", "/x", Kind::modified, false, 1, 1, differences};
}

TEST(ChangeRecord, takesTheLastComponentOffForItsParent) {
    const std::vector<std::pair<std::string, std::string>> parents{
        {"/a/b/c", "/a/b"}, {"/a", "/"}, {"/", "/"},   {"name", ""},    {"", ""},     {"a/b", "a"},
        {"/a/b/", "/a"},    {"a/", ""},  {"///", "/"}, {"/a//b", "/a"}, {"//a", "/"},
    };
    for (const auto& [path, parent] : parents)
        EXPECT_EQ(parentPath(path), parent) << path;
}

TEST(ChangeRecord, namesItsLastComponent) {
    const std::vector<std::pair<std::string, std::string>> names{
        {"/a/b", "b"}, {"/a/b/", "b"}, {"/", "/"}, {"name", "name"}, {"", ""}};
    for (const auto& [path, name] : names)
        EXPECT_EQ(ChangeRecord({}, "id", path, Kind::added, false, {}, {}, {}).fileName(), name) << path;
}

TEST(ChangeRecord, tellsAbsentDifferencesFromNone) {
    EXPECT_EQ(modified(std::nullopt).differences, std::nullopt);
    EXPECT_EQ(modified(std::vector<std::string>{}).differences, "");
    EXPECT_EQ(modified(Differences({"size", "mode"})).differences, "size,mode");
}

TEST(ChangeRecord, splitsDifferencesWithoutEmptyPieces) {
    EXPECT_THAT(modified(std::nullopt).differenceList(), IsEmpty());
    EXPECT_THAT(modified(Differences({"", ""})).differenceList(), IsEmpty());
    EXPECT_THAT(modified(Differences({"size", "", "mode"})).differenceList(), ElementsAre("size", "mode"));
}

TEST(ChangeRecord, countsAsContentByWholeDifferences) {
    EXPECT_TRUE(modified(Differences({"mode", "size"})).isContentChange());
    EXPECT_TRUE(modified(Differences({"contents"})).isContentChange());
    EXPECT_TRUE(modified(Differences({"data", "uid"})).isContentChange());
    EXPECT_FALSE(modified(Differences({"mode", "uid"})).isContentChange());
    EXPECT_FALSE(modified(Differences({"filesize"})).isContentChange());
    EXPECT_FALSE(modified(Differences({",,"})).isContentChange());
    EXPECT_FALSE(modified(std::nullopt).isContentChange());
    for (const Kind kind : {Kind::added, Kind::removed})
        EXPECT_TRUE(
            ChangeRecord({}, "id", "/x", kind, true, {}, {}, Differences({"mode"})).isContentChange());
}

TEST(ChangeFilter, keepsTheOrderOfWhatPassesAllTests) {
    const UserLocale english{"en_US", "UTC"};
    std::vector<ChangeRecord> changes{modified(Differences({"mode"})),
                                      modified(Differences({"size"})),
                                      {{}, "id", "/Users/Ärger", Kind::added, false, 1, 1, {}}};
    const auto count = [&](bool contentOnly, std::string_view search, std::optional<std::set<Kind>> kinds) {
        return filtered(changes, contentOnly, search, kinds, english).size();
    };

    EXPECT_EQ(filtered(changes, false, "", std::nullopt, english), changes);
    EXPECT_EQ(count(true, "", std::nullopt), 2U);
    EXPECT_EQ(count(false, "", std::set<Kind>{}), 0U);
    EXPECT_EQ(count(false, "", std::set{Kind::added}), 1U);
    EXPECT_EQ(count(false, "äRGER", std::nullopt), 1U);
    EXPECT_EQ(count(false, " ", std::nullopt), 0U);
    EXPECT_EQ(metadataOnlyCount(changes), 1);
    EXPECT_THAT(filtered({}, true, "x", std::nullopt, english), IsEmpty());
}

TEST(Comparison, isNamedByOperandsAndOptions) {
    const Comparison fresh("/a", "/b", dateSince1970(1), {}, 4, CompareOptions::fast(4).cacheKey(),
                           dateSince1970(2));

    EXPECT_EQ(fresh.id, "/a|/b|pst|d4|i");
    EXPECT_TRUE(fresh.isPartial);
    EXPECT_FALSE(fresh.completedAt || fresh.errorMessage);
    EXPECT_EQ(fresh.totalChanges(), 0);
}

TEST(Comparison, staysAtTheEndsOfTheRangeOfBytes) {
    Comparison comparison;
    comparison.bytesAdded = most - 1;
    comparison.count({{}, "id", "/x", Kind::added, false, 5, 5, {}});
    EXPECT_EQ(comparison.bytesAdded, most);
    comparison.count({{}, "id", "/x", Kind::modified, false, 5, least, {}});
    EXPECT_EQ(comparison.bytesRemoved, most);
    comparison.bytesAdded = -10;
    EXPECT_EQ(comparison.netBytes(), least);
    EXPECT_TRUE(comparison.netBytesFormatted().starts_with("\u2212"));
}

TEST(Comparison, putsASignBeforeItsNetBytes) {
    Comparison comparison;
    const auto net = [&](std::int64_t added, std::int64_t removed) {
        comparison.bytesAdded = added;
        comparison.bytesRemoved = removed;
        return comparison.netBytesFormatted();
    };

    EXPECT_EQ(net(2000, 1000), "+1 KB");
    EXPECT_EQ(net(1000, 2000), "\u22121 KB");
    EXPECT_EQ(net(7, 7), "Zero KB");
}

TEST(CompareOptions, makesArgumentsInAFixedOrder) {
    auto options = CompareOptions::thorough(0);
    options.ignoredComponents = {"b", "a"};
    EXPECT_THAT(options.arguments(), ElementsAre("-X", "-@cdefgmstu", "-D", "0", "-I", "b", "-I", "a"));
    EXPECT_EQ(options.cacheKey(), "p@cdefgmstu|d0|ia,b");

    EXPECT_THAT(CompareOptions().arguments(), ElementsAre("-X"));
    EXPECT_EQ(CompareOptions().cacheKey(), "p|dall|i");
    EXPECT_THAT(CompareOptions::tmutilDefault().arguments(), ElementsAre("-X", "-@gmstu"));
    EXPECT_EQ(CompareOptions::fast(4).cacheKey(), "pst|d4|i");
}

TEST(CompareOptions, neverShareAKeyWhenTheToolSeesOtherComponents) {
    std::set<std::string> keys;
    const std::vector<std::vector<std::string>> lists{{},      {""},   {"", ""},   {"a,b"}, {"a", "b"},
                                                      {"\\e"}, {"\\"}, {"\\", ""}, {"\\,"}, {"a", ",b"}};
    for (const auto& components : lists) {
        CompareOptions options;
        options.ignoredComponents = components;
        keys.insert(options.cacheKey());
    }
    EXPECT_EQ(keys.size(), lists.size());
}

TEST(CompareOptions, comeFromTheControlsOfAScreen) {
    EXPECT_EQ(CompareOptions::fromFlags(3, false, true), CompareOptions::tmutilDefault(3));
    EXPECT_EQ(CompareOptions::fromFlags(3, false, false), CompareOptions::fast(3));
    EXPECT_EQ(CompareOptions::fromFlags(3, true, false), CompareOptions::fromFlags(9, true, false));
    EXPECT_EQ(CompareOptions::fromFlags(3, true, false).depth, std::nullopt);
    EXPECT_EQ(fromRawValue<Property>("t"), Property::modificationTime);
    EXPECT_EQ(fromRawValue<Property>("st"), std::nullopt);
}

} // namespace
