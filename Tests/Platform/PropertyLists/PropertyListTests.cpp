#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListBuilder.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"
#include "Tests/Support/BinaryPropertyListFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using namespace tallyglass;
using namespace tallyglass::test;
using namespace std::string_literals;
using Kind = PropertyListValue::Kind;

namespace {

void expectBounded(const std::string& bytes) {
    const auto list = PropertyList::parse(bytes);
    EXPECT_LE(list.memorySize(), PropertyList::memoryPerByte * bytes.size() + (64 << 10));
}

} // namespace

TEST(PropertyListValue, givesOnlyWhatItsKindHas) {
    const auto one = PropertyListValue::ofInteger(1);
    EXPECT_EQ(one.integer(), 1);
    EXPECT_EQ(one.boolean(), std::nullopt);
    EXPECT_EQ(one.real(), std::nullopt);
    EXPECT_EQ(one.uid(), std::nullopt);
    EXPECT_EQ(one.text(), std::nullopt);
    EXPECT_FALSE(one.array() || one.set() || one.dictionary() || one.date() || one.data() || one.find("a"));
    EXPECT_EQ(PropertyListValue::ofInteger(-1).unsignedInteger(), std::nullopt);
    EXPECT_EQ(PropertyListValue::ofUnsigned(5).integer(), 5);
    EXPECT_EQ(PropertyListValue::ofText({}).text(), "");
    EXPECT_EQ(PropertyListValue().kind(), Kind::null);
    EXPECT_EQ(PropertyListValue::ofDate(1).date(), dateSince2001(1));
}

TEST(PropertyListValue, convertsNumbersOfEveryKind) {
    EXPECT_EQ(PropertyListValue::ofBoolean(true).number(), 1.0);
    EXPECT_EQ(PropertyListValue::ofUnsigned(UINT64_MAX).number(), 0x1p64);
    EXPECT_EQ(PropertyListValue::ofReal(2.5).number(), 2.5);
    EXPECT_EQ(PropertyListValue::ofText("1").number(), std::nullopt);

    EXPECT_EQ(PropertyListValue::ofReal(-3.0).exactInteger(), -3);
    EXPECT_EQ(PropertyListValue::ofReal(-3.5).exactInteger(), std::nullopt);
    EXPECT_EQ(PropertyListValue::ofReal(-3.5).truncatedInteger(), -3);
    EXPECT_EQ(PropertyListValue::ofReal(-0x1p63).truncatedInteger(), INT64_MIN);
    for (const double outside :
         {0x1p63, -0x1.8p63, static_cast<double>(NAN), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(PropertyListValue::ofReal(outside).truncatedInteger(), std::nullopt) << outside;
    EXPECT_EQ(PropertyListValue::ofUnsigned(UINT64_MAX).exactInteger(), std::nullopt);
}

TEST(PropertyListValue, findsEveryKeyOfAnySize) {
    for (const std::size_t size : {0, 1, 11, 12, 13, 100, 5000}) {
        std::string text = "{";
        for (std::size_t i = 0; i < size; ++i) // twice each, of lengths from 1 to 20 and more
            text += std::string(i % 20, 'k') + std::to_string(i) + " = old;";
        for (std::size_t i = 0; i < size; ++i)
            text += std::string(i % 20, 'k') + std::to_string(i) + " = v" + std::to_string(i) + ";";
        const auto list = PropertyList::parse(text + "}");
        const auto dictionary = list.root().dictionary().value();

        ASSERT_EQ(dictionary.size(), size);
        std::size_t i = 0;
        for (const PropertyListPair& pair : dictionary) {
            const auto name = std::string(i % 20, 'k') + std::to_string(i);
            EXPECT_EQ(pair.key(), name);
            EXPECT_EQ(list.root().find(name).value().text(), "v" + std::to_string(i));
            ++i;
        }
        EXPECT_FALSE(list.root().find("absent") || list.root().find(""));
    }
}

TEST(PropertyListBuilder, keepsWhatItIsGiven) {
    PropertyListStorage storage;
    PropertyListBuilder builder(storage, "");
    builder.beginDictionary(0);
    {
        std::string passing = "passing";
        builder.key(passing);
        builder.text(passing);
        builder.key(passing + "2");
        builder.data(passing);
        passing.assign(7, '-');
    }
    builder.end();
    const PropertyListStorage moved = std::move(storage);

    EXPECT_EQ(builder.root().find("passing").value().text(), "passing");
    EXPECT_EQ(builder.root().find("passing2").value().data(), "passing");
}

TEST(PropertyList, takesTheFormFromTheBytes) {
    EXPECT_EQ(PropertyList::parse("{ a = b; }").root().kind(), Kind::dictionary);
    EXPECT_EQ(PropertyList::parse(BinaryPropertyListFile{.objects = {"\x08"}}.bytes()).root().boolean(),
              false);
    for (const char* xml :
         {"<true/>", " \n<?xml version='1.0'?><plist><true/></plist>", "\xEF\xBB\xBF<true/>"})
        EXPECT_EQ(PropertyList::parse(xml).root().boolean(), true) << xml;
    EXPECT_EQ(PropertyList::parse("\xFF\xFE<\0t\0r\0u\0e\0/\0>\0"s).root().boolean(), true);
    EXPECT_EQ(PropertyList::parse(" <da da>").root().data(), "\xDA\xDA");
    EXPECT_THROW((void)PropertyList::parse(""), PropertyListError);
    EXPECT_THROW((void)PropertyList::parse("bplist0"), PropertyListError);
    EXPECT_EQ(PropertyList::parse("bplist").root().text(), "bplist");
}

TEST(PropertyList, takesMemoryInProportionToTheInput) {
    BinaryPropertyListFile arrays{.referenceWidth = 1};
    arrays.objects = {object(0xAF, "\x12" + bigEndian(100000, 4) + std::string(100000, '\x01')), "\x08"};
    expectBounded(arrays.bytes());

    BinaryPropertyListFile pairs{.referenceWidth = 1};
    pairs.objects = {object(0xDF, "\x12" + bigEndian(100000, 4) + std::string(200000, '\x01')), "\x50"};
    expectBounded(pairs.bytes());

    BinaryPropertyListFile distinct{.offsetWidth = 3, .referenceWidth = 2};
    std::string keys;
    for (std::uint64_t i = 1; i <= 40000; ++i)
        keys += bigEndian(i, 2);
    distinct.objects = {object(0xDF, "\x12" + bigEndian(40000, 4) + keys + keys)};
    for (std::uint64_t i = 1; i <= 40000; ++i)
        distinct.objects.push_back(
            object(0x53, bigEndian((i & 0x7F) + ((i >> 7 & 0x7F) << 8) + (i >> 14 << 16), 3)));
    expectBounded(distinct.bytes());

    std::string text = "(";
    for (int i = 0; i < 100000; ++i)
        text += "a,";
    expectBounded(text + ")");
    text = "{";
    for (int i = 0; i < 100000; ++i)
        text += "a;";
    expectBounded(text + "}");
    text = "(";
    for (int i = 0; i < 100000; ++i)
        text += "(),";
    expectBounded(text + ")");
}
