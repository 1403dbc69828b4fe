#include "TallyglassKit/Platform/PropertyLists/Internal/XMLScalars.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tallyglass {

namespace {

std::optional<std::int64_t> signedInteger(std::string_view text) {
    const auto integer = parseXMLInteger(text);
    return integer ? integer->asSigned() : std::nullopt;
}

std::optional<double> secondsOf(std::string_view date) {
    const auto parsed = parseXMLDate(date);
    return parsed ? std::optional(secondsSince1970(*parsed)) : std::nullopt;
}

std::string base64(std::string_view text) {
    std::string bytes = "left over";
    return decodeBase64(text, bytes) ? bytes : "refused";
}

} // namespace

TEST(XMLScalars, takesIntegersWithWhiteSpaceSignsAndHexadecimalDigits) {
    EXPECT_EQ(signedInteger(" \n+ 12"), 12);
    EXPECT_EQ(signedInteger("-012"), -12);
    EXPECT_EQ(signedInteger("0x1F"), 31);
    EXPECT_EQ(signedInteger("-0Xff"), -255);
    EXPECT_EQ(signedInteger("-0"), 0);
    for (const auto* text : {"", " ", "-", "0x", "--1", "+-1", "1 ", "1a", "0x-1", "1.0", "0b1"})
        EXPECT_FALSE(parseXMLInteger(text)) << text;
}

TEST(XMLScalars, refusesIntegersOutsideOf64Bits) {
    EXPECT_EQ(signedInteger("-9223372036854775808"), INT64_MIN);
    EXPECT_FALSE(parseXMLInteger("-9223372036854775809"));
    EXPECT_EQ(parseXMLInteger("0xffffffffffffffff"), (XMLInteger{UINT64_MAX, true}));
    EXPECT_FALSE(parseXMLInteger("18446744073709551616"));
}

TEST(XMLScalars, takesRealsAndTheirWordsInAnyCase) {
    EXPECT_EQ(parseXMLReal("-1.5E3"), -1500);
    EXPECT_EQ(parseXMLReal(" +.5"), 0.5);
    EXPECT_EQ(parseXMLReal("7"), 7);
    EXPECT_EQ(parseXMLReal("4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(parseXMLReal("-InF"), -INFINITY);
    EXPECT_EQ(parseXMLReal("+infinity"), INFINITY);
    EXPECT_TRUE(std::isnan(parseXMLReal("NaN").value()));
    for (const auto* text : {"", ".", "1,5", "1.5 ", "+-1", "0x10", "nan(1)", "infinit", "1e", "1e999"})
        EXPECT_FALSE(parseXMLReal(text)) << text;
}

TEST(XMLScalars, takesDatesOfOneShapeAndRollsFieldsOver) {
    EXPECT_EQ(secondsOf("2001-01-01T00:00:00Z"), 978307200);
    EXPECT_EQ(secondsOf("2024-02-30T00:00:00Z"), secondsOf("2024-03-01T00:00:00Z"));
    EXPECT_EQ(secondsOf("2023-14-01T25:61:61Z"), secondsOf("2024-02-02T02:02:01Z"));
    EXPECT_EQ(secondsOf("2024-00-00T00:00:00Z"), secondsOf("2023-11-30T00:00:00Z"));
    EXPECT_TRUE(secondsOf("0000-00-00T00:00:00Z"));
    for (const auto* text :
         {"", "2001-01-01", "2001-01-01T00:00:00", " 2001-01-01T00:00:00Z", "2001-01-01t00:00:00Z",
          "2001-01-01T00:00:00.5Z", "2001-1-01T00:00:000Z", "-001-01-01T00:00:00Z"})
        EXPECT_FALSE(secondsOf(text)) << text;
}

TEST(XMLScalars, decodesWholeGroupsOfBase64) {
    EXPECT_EQ(base64(""), "");
    EXPECT_EQ(base64(" aGVs\n\tbG8 = "), "hello");
    EXPECT_EQ(base64("aGVsbG9v"), "helloo");
    EXPECT_EQ(base64("aA=="), "h");
    for (const auto* text :
         {"a", "aG", "aGV", "aA=", "=", "a===", "aA==aA==", "aA=A", "aG!s", "a-_b", "aA====="})
        EXPECT_EQ(base64(text), "refused") << text;
}

} // namespace tallyglass
