#include "TallyglassKit/Platform/Text/ByteCount.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace tallyglass {

namespace {

const UserLocale english{.identifier = "en_US", .timeZone = "UTC"};

void expectTexts(const std::vector<std::pair<std::int64_t, std::string>>& expectations) {
    for (const auto& [bytes, text] : expectations)
        EXPECT_EQ(formatByteCount(bytes, english), text) << bytes;
}

} // namespace

TEST(ByteCount, takesTheUnitThatFits) {
    expectTexts({{1, "1 byte"},
                 {2, "2 bytes"},
                 {999, "999 bytes"},
                 {1000, "1 KB"},
                 {1024, "1 KB"},
                 {11'999, "12 KB"},
                 {12'345'678, "12.3 MB"},
                 {123'456'789, "123.5 MB"},
                 {1'234'567'898, "1.23 GB"},
                 {2'000'000'000'000, "2 TB"},
                 {1'805'307'203'584, "1.81 TB"},
                 {4'500'000'000'000'000, "4.5 PB"}});
}

TEST(ByteCount, spellsOutZero) {
    EXPECT_EQ(formatByteCount(0, english), "Zero KB");
    EXPECT_EQ(formatByteCount(0, {.identifier = "de_DE", .timeZone = ""}), "Null KB");
}

TEST(ByteCount, takesTheNextUnitRatherThanAThousandOfOne) {
    expectTexts({{999'499, "999 KB"},
                 {999'500, "1 MB"},
                 {999'949'999, "999.9 MB"},
                 {999'950'000, "1 GB"},
                 {999'994'999'999, "999.99 GB"},
                 {999'995'000'000, "1 TB"}});
}

TEST(ByteCount, roundsHalvesToTheEvenDigit) {
    expectTexts({{2'500, "2 KB"}, {3'500, "4 KB"}, {1'250'000, "1.2 MB"}, {1'350'000, "1.4 MB"}});
}

TEST(ByteCount, countsBelowZeroUpToTheEndsOfTheRange) {
    expectTexts({{-1, "-1 byte"},
                 {-1023, "-1 KB"},
                 {-999'500, "-1 MB"},
                 {std::numeric_limits<std::int64_t>::max(), "9.22 EB"},
                 {std::numeric_limits<std::int64_t>::min(), "-9.22 EB"}});
}

TEST(ByteCount, followsTheLocale) {
    EXPECT_EQ(formatByteCount(12'345'678, {.identifier = "de_DE", .timeZone = ""}), "12,3 MB");
    EXPECT_EQ(formatByteCount(5'000, {.identifier = "fr_FR", .timeZone = ""}), "5\u202FKo");
}

} // namespace tallyglass
