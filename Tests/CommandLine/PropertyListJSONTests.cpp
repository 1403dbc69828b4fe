#include "CommandLine/Commands/PropertyListJSON.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"
#include "Tests/Support/BinaryPropertyListFile.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>

using namespace tallyglass;
using namespace tallyglass::test;

namespace {

std::string json(PropertyListValue value) {
    std::ostringstream output;
    printPropertyListJSON(value, output);
    return output.str();
}

} // namespace

TEST(PropertyListJSON, tellsEveryKindOfScalar) {
    using Value = PropertyListValue;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(json(Value()), "null");
    EXPECT_EQ(json(Value::ofBoolean(true)), "true");
    EXPECT_EQ(json(Value::ofInteger(INT64_MIN)), "-9223372036854775808");
    EXPECT_EQ(json(Value::ofUnsigned(UINT64_MAX)), "18446744073709551615");
    EXPECT_EQ(json(Value::ofReal(0.1)), R"({"real": 0.1})");
    EXPECT_EQ(json(Value::ofReal(1)), R"({"real": 1})");
    EXPECT_EQ(json(Value::ofReal(NAN)), R"({"real": "nan"})");
    EXPECT_EQ(json(Value::ofReal(-infinity)), R"({"real": "-inf"})");
    EXPECT_EQ(json(Value::ofDate(794793600.25)), R"({"date": 794793600.25})");
    EXPECT_EQ(json(Value::ofDate(infinity)), R"({"date": "inf"})");
    EXPECT_EQ(json(Value::ofData({"\0\xFA", 2})), R"({"data": "00fa"})");
    EXPECT_EQ(json(Value::ofUID(7)), R"({"uid": 7})");
}

TEST(PropertyListJSON, writesTextThatEveryReaderTakes) {
    EXPECT_EQ(json(PropertyListValue::ofText("a\"\\\n\x1F\x7Fé😀")), "\"a\\\"\\\\\\u000a\\u001f\x7Fé😀\"");
    EXPECT_EQ(json(PropertyListValue::ofText("a\xFFz\xC3")), "\"a\uFFFDz\uFFFD\"");
}

TEST(PropertyListJSON, nestsContainers) {
    const auto list = PropertyList::parse("{ z = (a, (), {}, <00>); a = { k = ((b)); }; }");
    const auto text = json(list.root());
    EXPECT_EQ(text, R"({"z": ["a", [], {}, {"data": "00"}], "a": {"k": [["b"]]}})");
    EXPECT_EQ(nlohmann::json::parse(text)["a"]["k"][0][0], "b");

    const BinaryPropertyListFile set{.objects = {"\xC2\x01\x01", "\x10\x05"}};
    EXPECT_EQ(json(PropertyList::parse(set.bytes()).root()), R"({"set": [5, 5]})");
}

TEST(PropertyListJSON, refusesAListThatExpandsBeyondItsLimit) {
    BinaryPropertyListFile file;
    for (char i = 1; i <= 40; ++i)
        file.objects.push_back(object(0xA2, {i, i}));
    file.objects.emplace_back("\x08");
    const auto list = PropertyList::parse(file.bytes());
    std::ostringstream output;

    EXPECT_THROW(printPropertyListJSON(list.root(), output), Error);

    EXPECT_EQ(output.str(), "");
    // 4 texts of 1 byte, 2 arrays of them, and the one around.
    const auto pair = PropertyList::parse("((a, a), (a, a))");
    EXPECT_THROW(printPropertyListJSON(pair.root(), output, 10), Error);
    printPropertyListJSON(pair.root(), output, 11);
    EXPECT_EQ(output.str(), R"([["a", "a"], ["a", "a"]])");
}
