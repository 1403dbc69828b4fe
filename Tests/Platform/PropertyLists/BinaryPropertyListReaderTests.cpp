#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"
#include "Tests/Support/BinaryPropertyListFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <bit>
#include <chrono>
#include <cmath>
#include <memory>

using namespace tallyglass;
using namespace tallyglass::test;
using Kind = PropertyListValue::Kind;
using namespace std::string_literals;

namespace {

/// A file whose root is an array of the one object given.
PropertyListValue only(const PropertyList& list) {
    return list.root().array().value().front();
}

PropertyList readOne(const std::string& bytes) {
    return PropertyList::parse(BinaryPropertyListFile{.objects = {"\xA1\x01", bytes}}.bytes());
}

std::string errorOf(const std::string& bytes) {
    try {
        (void)PropertyList::parse(bytes);
    } catch (const PropertyListError& error) {
        return error.errorDescription();
    }
    return "none";
}

std::string errorOfObjects(const std::vector<std::string>& objects) {
    return errorOf(BinaryPropertyListFile{.objects = objects}.bytes());
}

std::string doubleBytes(double value) {
    return bigEndian(std::bit_cast<std::uint64_t>(value), 8);
}

/// `levels` arrays, each the only element of the one before it.
std::string nested(std::size_t levels) {
    BinaryPropertyListFile file{.referenceWidth = 4};
    for (std::size_t i = 1; i < levels; ++i)
        file.objects.push_back(object(0xA1, bigEndian(i, 4)));
    file.objects.push_back(object(0xA0));
    return file.bytes();
}

} // namespace

TEST(BinaryPropertyListReader, readsNarrowIntegersWithoutSignAndWideOnesWithIt) {
    EXPECT_EQ(only(readOne("\x10\xFF")).integer(), 255);
    EXPECT_EQ(only(readOne("\x11\xFF\xFE")).integer(), 65534);
    EXPECT_EQ(only(readOne("\x12\xFF\xFF\xFF\xFF")).integer(), 4294967295);
    EXPECT_EQ(only(readOne(object(0x13, bigEndian(-5, 8)))).integer(), -5);

    const auto large = only(readOne(object(0x14, bigEndian(0, 8) + bigEndian(UINT64_MAX, 8))));
    EXPECT_EQ(large.kind(), Kind::integer);
    EXPECT_EQ(large.unsignedInteger(), UINT64_MAX);
    EXPECT_EQ(large.integer(), std::nullopt);
    EXPECT_EQ(only(readOne(object(0x14, bigEndian(-1, 8) + bigEndian(-7, 8)))).integer(), -7);
    EXPECT_EQ(only(readOne(object(0x14, bigEndian(9, 8) + bigEndian(3, 8)))).integer(), 3);
}

TEST(BinaryPropertyListReader, readsTheOtherScalarsAsTheirOwnKinds) {
    EXPECT_EQ(only(readOne("\x08")).boolean(), false);
    EXPECT_EQ(only(readOne("\x09")).boolean(), true);
    EXPECT_TRUE(only(readOne("\0"s)).isNull());
    EXPECT_EQ(only(readOne(object(0x22, bigEndian(std::bit_cast<std::uint32_t>(0.5F), 4)))).real(), 0.5);
    EXPECT_EQ(only(readOne(object(0x23, doubleBytes(-1.25)))).real(), -1.25);
    EXPECT_EQ(only(readOne(object(0x33, doubleBytes(0.1)))).secondsSince2001(), 0.1);
    EXPECT_TRUE(std::isnan(*only(readOne(object(0x33, doubleBytes(NAN)))).secondsSince2001()));
    EXPECT_EQ(only(readOne("\x81\x01\x02")).uid(), 258);
    EXPECT_EQ(only(readOne("\x43"
                           "a\0b"s))
                  .data(),
              "a\0b"s);
}

TEST(BinaryPropertyListReader, convertsTextToUTF8) {
    EXPECT_EQ(only(readOne("\x53"
                           "abc"))
                  .text(),
              "abc");
    EXPECT_EQ(only(readOne("\x50")).text(), "");
    EXPECT_EQ(only(readOne("\x62\x00\xE9\x4E\x2D"s)).text(), "é中");
    EXPECT_EQ(only(readOne("\x62\xD8\x3D\xDE\x00"s)).text(), "😀");
    EXPECT_EQ(only(readOne("\x63\xDE\x00\x00"
                           "a\xD8\x3D"s))
                  .text(),
              "\uFFFDa\uFFFD")
        << "lone surrogates";
    EXPECT_THAT(errorOfObjects({object(0x52, "a\xE9")}),
                testing::HasSubstr("ASCII text holds another character, at byte 10"));
}

TEST(BinaryPropertyListReader, takesReferencesAndOffsetsOfAnyWidth) {
    for (const std::size_t width : {1, 2, 3, 5, 8, 11}) {
        const auto index = [&](std::uint64_t i) { return bigEndian(i, width); };
        const BinaryPropertyListFile file{.objects = {object(0xD1, index(1) + index(2)), "\x51k",
                                                      object(0xC2, index(3) + index(3)), "\x10\x07"},
                                          .offsetWidth = width,
                                          .referenceWidth = width};
        const auto list = PropertyList::parse(file.bytes());
        const auto set = list.root().find("k").value().set().value();
        ASSERT_EQ(set.size(), 2U) << width;
        EXPECT_EQ(set[1].integer(), 7) << width;
    }
}

TEST(BinaryPropertyListReader, keepsTheFirstOfEqualKeysInTheOrderOfTheFile) {
    const auto list = PropertyList::parse(BinaryPropertyListFile{
        .objects = {"\xD3\x01\x02\x03\x04\x05\x04", "\x51z",
                    "\x51"
                    "a",
                    "\x51z", "\x10\x01",
                    "\x10\x02"}}.bytes());
    const auto dictionary = list.root().dictionary().value();
    std::vector<std::string> keys;
    for (const PropertyListPair& pair : dictionary)
        keys.emplace_back(pair.key());
    EXPECT_THAT(keys, testing::ElementsAre("z", "a"));
    EXPECT_EQ(list.root().find("z").value().integer(), 1);
    EXPECT_THAT(errorOfObjects({"\xD1\x01\x01", "\x10\x01"}),
                testing::HasSubstr("a key that isn't text, at byte 11"));
}

TEST(BinaryPropertyListReader, refusesATrailerThatDoesNotFitTheFile) {
    const std::string sound = BinaryPropertyListFile{.objects = {"\xA1\x01", "\x08"}}.bytes();
    const auto with = [&](std::size_t fromEnd, char byte) {
        std::string bytes = sound;
        bytes[bytes.size() - fromEnd] = byte;
        return errorOf(bytes);
    };
    EXPECT_EQ(errorOf(sound), "none");
    for (std::size_t size = 7; size < sound.size(); ++size)
        EXPECT_NE(errorOf(sound.substr(0, size)), "none") << size;
    EXPECT_NE(errorOf(sound + '\0'), "none");
    EXPECT_THAT(with(26, 0), testing::HasSubstr("offsets have no width"));
    EXPECT_THAT(with(25, 0), testing::HasSubstr("references have no width"));
    EXPECT_THAT(with(17, 9), testing::HasSubstr("table doesn't fill the file"));
    EXPECT_THAT(with(24, '\x40'), testing::HasSubstr("table doesn't fill the file"))
        << "count times width overflows";
    EXPECT_THAT(with(9, 2), testing::HasSubstr("root isn't one of the objects"));
    EXPECT_THAT(with(1, 99), testing::HasSubstr("table lies outside"));
    EXPECT_THAT(with(33, 11), testing::HasSubstr("offset lies outside of the objects, at byte 15"));
    EXPECT_THAT(with(33, 7), testing::HasSubstr("offset lies outside of the objects"));
}

TEST(BinaryPropertyListReader, refusesObjectsThatRunPastTheirArea) {
    for (const std::string& cut : {"\x13\x01"s, "\x33"s, "\x5F\x10\xFF"s, "\x6F\x13"s, "\x61\x00"s, "\x42 "s,
                                   "\xA2\x00"s, "\xDF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
                                   "\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, "\x87"s, "\x14"s})
        EXPECT_THAT(errorOfObjects({cut}), testing::HasSubstr("past the objects"))
            << testing::PrintToString(cut);
    for (const std::string& unknown :
         {"\x01"s, "\x0F"s, "\x15"s, "\x24"s, "\x32"s, "\x70"s, "\x88"s, "\xB0"s, "\xF0"s})
        EXPECT_NE(errorOfObjects({unknown}), "none") << testing::PrintToString(unknown);
    EXPECT_THAT(errorOfObjects({object(0xA1, "\x07")}), testing::HasSubstr("doesn't exist, at byte 9"));
}

TEST(BinaryPropertyListReader, acceptsNestingOf512AndNoMore) {
    EXPECT_EQ(PropertyList::parse(nested(512)).root().nesting(), 512U);
    EXPECT_THAT(errorOf(nested(513)), testing::HasSubstr("nested too deeply"));
    EXPECT_THAT(errorOf(nested(100000)), testing::HasSubstr("nested too deeply"));
}

TEST(BinaryPropertyListReader, countsNestingThroughSharedContainers) {
    // The root's first element is a chain of 300 containers, its second another chain of 300 that ends in the
    // first.
    BinaryPropertyListFile file{.referenceWidth = 2};
    file.objects.push_back(object(0xA2, bigEndian(1, 2) + bigEndian(301, 2)));
    for (std::uint64_t i = 1; i <= 600; ++i)
        file.objects.push_back(i == 300 ? object(0xA0) : object(0xA1, bigEndian(i == 600 ? 1 : i + 1, 2)));
    EXPECT_THAT(errorOf(file.bytes()), testing::HasSubstr("nested too deeply"));
}

TEST(BinaryPropertyListReader, refusesCycles) {
    EXPECT_THAT(errorOfObjects({object(0xA1, "\0"s)}), testing::HasSubstr("holds itself, at byte 8"));
    EXPECT_THAT(errorOfObjects({"\xD1\x01\x02", "\x51k", object(0xC1, "\0"s)}),
                testing::HasSubstr("holds itself"));
    // Objects 1 and 2 have the same offset.
    const BinaryPropertyListFile file{.offsetWidth = 1};
    EXPECT_THAT(errorOf(file.withTable("bplist00\xA1\x01\xA1\x02"s, "\x08\x0A\x0A", 3)),
                testing::HasSubstr("holds itself"));
}

TEST(BinaryPropertyListReader, sharesWhatIsReferredToTwice) {
    // 40 levels of pairs: 2^40 paths, 40 containers.
    BinaryPropertyListFile file;
    for (char i = 1; i <= 40; ++i)
        file.objects.push_back(object(0xA2, {i, i}));
    file.objects.push_back(object(0x6F, "\x11\x10\x00"s + std::string(8192, 'x')));

    const auto list = PropertyList::parse(file.bytes());

    EXPECT_EQ(list.root().nesting(), 40U);
    EXPECT_LT(list.memorySize(), 64U << 10);
    const auto pair = list.root().array().value();
    EXPECT_EQ(pair[0].array()->data(), pair[1].array()->data());
}

TEST(BinaryPropertyListReader, takesEntriesOfOneOffsetForOneObject) {
    // 200 entries refer to one array of 200 elements.
    std::string area = "bplist00\xAF\x10\xC8"s;
    for (int i = 0; i < 200; ++i)
        area += static_cast<char>(i + 1);
    const std::size_t shared = area.size();
    area += "\xAF\x10\xC8"s + std::string(200, '\xC9') + "\x09";
    const BinaryPropertyListFile file{.offsetWidth = 2};
    std::string table = bigEndian(8, 2);
    for (int i = 0; i < 200; ++i)
        table += bigEndian(shared, 2);
    table += bigEndian(area.size() - 1, 2);

    const auto list = PropertyList::parse(file.withTable(area, table, 202));

    EXPECT_EQ(list.root().array().value().back().array().value().back().boolean(), true);
    EXPECT_LT(list.memorySize(), 16U << 10);
}

TEST(BinaryPropertyListReader, refusesContainersThatOverlap) {
    // Each array begins 4 bytes after the previous one and overlaps all later ones: quadratic memory if
    // accepted. All other references in their bytes are to a boolean.
    const std::uint64_t count = 2000;
    std::string area = "bplist00\x08"s;
    std::string root = object(0xAF, "\x11"s + bigEndian(count, 2));
    std::string table;
    for (std::uint64_t i = 0; i < count; ++i) {
        root += bigEndian(i, 2);
        table += bigEndian(area.size(), 3);
        area += "\xAF\x11"s + bigEndian(count, 2);
    }
    for (std::uint64_t i = count; i < 0x10000; ++i)
        table += bigEndian(8, 3);
    area += std::string(2 * count, '\xFF');
    table.replace(table.size() - 6, 3, bigEndian(area.size(), 3));
    const BinaryPropertyListFile file{.offsetWidth = 3, .referenceWidth = 2, .root = 0xFFFE};
    EXPECT_THAT(errorOf(file.withTable(area + root, table, 0x10000)), testing::HasSubstr("overlaps others"));
}

TEST(BinaryPropertyListReader, agreesWithAnIndependentWriter) {
    const std::unique_ptr<void, decltype(&plist_free)> written(plist_new_dict(), plist_free);
    plist_dict_set_item(written.get(), "size", plist_new_uint(1805307203584));
    plist_dict_set_item(written.get(), "real", plist_new_real(0.1));
    plist_dict_set_item(written.get(), "text", plist_new_string("Bücher \U0001F4BE"));
    plist_dict_set_item(written.get(), "yes", plist_new_bool(1));
    plist_dict_set_item(written.get(), "date", plist_new_date(794793600, 250000));
    plist_dict_set_item(written.get(), "uid", plist_new_uid(70000));
    plist_dict_set_item(written.get(), "data", plist_new_data("\0\xFF", 2));
    const plist_t names = plist_new_array();
    for (int i = 0; i < 1000; ++i)
        plist_array_append_item(names, plist_new_string(("name " + std::to_string(i % 300)).c_str()));
    plist_dict_set_item(written.get(), "names", names);
    char* bytes = nullptr;
    std::uint32_t size = 0;
    plist_to_bin(written.get(), &bytes, &size);
    const auto list = PropertyList::parse({bytes, size});
    plist_to_bin_free(bytes);

    const auto root = list.root();
    EXPECT_EQ(root.dictionary().value().size(), 8U);
    EXPECT_EQ(root.find("size").value().integer(), 1805307203584);
    EXPECT_EQ(root.find("real").value().real(), 0.1);
    EXPECT_EQ(root.find("text").value().text(), "Bücher \U0001F4BE");
    EXPECT_EQ(root.find("yes").value().boolean(), true);
    EXPECT_EQ(root.find("date").value().secondsSince2001(), 794793600.25);
    EXPECT_EQ(root.find("uid").value().uid(), 70000U);
    EXPECT_EQ(root.find("data").value().data(), "\0\xFF"s);
    EXPECT_EQ(root.find("names").value().array().value()[999].text(), "name 99");
}
