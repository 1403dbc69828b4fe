#include "TallyglassKit/Platform/Text/NumberConversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tallyglass {
namespace {

constexpr auto least = std::numeric_limits<std::int64_t>::min();
constexpr auto most = std::numeric_limits<std::int64_t>::max();

TEST(NumberConversion, readsEveryFormOfAReal) {
    EXPECT_EQ(doubleOfText("0.25"), 0.25);
    EXPECT_EQ(doubleOfText("-1"), -1);
    EXPECT_EQ(doubleOfText("+.5e1"), 5);
    EXPECT_EQ(doubleOfText("3.8e-05"), 3.8e-05);
    EXPECT_EQ(doubleOfText("0x1p4"), 16);
    EXPECT_EQ(doubleOfText("1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(doubleOfText("-Inf"), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(doubleOfText("nan").value_or(0)));
}

TEST(NumberConversion, readsARealOnlyFromTheWholeText) {
    using namespace std::string_view_literals;
    for (const auto text : {""sv, " 1"sv, "1 "sv, "\n1"sv, "1x"sv, "abc"sv, "1,5"sv, "1\0"sv, "-"sv, "--1"sv})
        EXPECT_FALSE(doubleOfText(text)) << text;
}

TEST(NumberConversion, readsIntegersThatFit) {
    EXPECT_EQ(integerOfText("0"), 0);
    EXPECT_EQ(integerOfText("+018"), 18);
    EXPECT_EQ(integerOfText("-9223372036854775808"), least);
    for (const char* text : {"", "+", "-", "+-5", "abc", "1.0", " 1", "1 ", "0x1", "9223372036854775808"})
        EXPECT_FALSE(integerOfText(text)) << text;
}

TEST(NumberConversion, readsBooleansAfterWhiteSpaceSignAndZeros) {
    for (const char* text : {"YES", "yes", "true", "T", "1", "9x", " \t+001", "-1", "0y"})
        EXPECT_TRUE(booleanOfText(text)) << text;
    for (const char* text : {"", "NO", "false", "0", "000", "on", "--1", "+ 1", ".1"})
        EXPECT_FALSE(booleanOfText(text)) << text;
}

TEST(NumberConversion, takesOnlyRealsThatFitAnInteger) {
    EXPECT_EQ(truncated(-1.9), -1);
    EXPECT_EQ(truncated(-9223372036854775808.0), least);
    EXPECT_EQ(truncated(std::nextafter(9223372036854775808.0, 0)), most - 1023);
    for (const double real :
         {9223372036854775808.0, -9223372036854777856.0, HUGE_VAL, -HUGE_VAL, std::nan("")})
        EXPECT_FALSE(truncated(real)) << real;
}

} // namespace
} // namespace tallyglass
