#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/TMUtilCompare.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>

namespace tallyglass {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string older = "/b/one.backup";
const std::string newer = "/b/two.backup";

TMUtilCompare::Result decode(std::string_view data) {
    return TMUtilCompare::decode(data, std::array{older, newer}, "id");
}

std::string item(const std::string& key, const std::string& path, const std::string& size = "") {
    return "<key>" + key + "</key><dict><key>Path</key><string>" + path + "</string>" +
           (size.empty() ? "" : "<key>Size</key><integer>" + size + "</integer>") + "</dict>";
}

/// Output with one dictionary per change.
std::string output(std::initializer_list<std::string> changes) {
    std::string xml = "<plist><dict><key>Changes</key><array>";
    for (const std::string& change : changes)
        xml += "<dict>" + change + "</dict>";
    return xml + "</array></dict></plist>";
}

ChangeRecord onlyRecord(const std::string& change) {
    const auto result = decode(output({change}));
    EXPECT_EQ(result.changes.size(), 1U) << change;
    return result.changes.empty() ? ChangeRecord() : result.changes.front();
}

/// The record's path for a raw path.
std::string stripped(const std::string& path) {
    return onlyRecord(item("AddedItem", path)).path;
}

std::optional<SharedText> differencesOf(const std::string& value) {
    return onlyRecord(item("NewerItem", newer + "/v/f") + "<key>Differences</key>" + value).differences;
}

/// The same list in the binary form.
std::string asBinary(const std::string& xml) {
    plist_t root = nullptr;
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &root);
    char* bytes = nullptr;
    std::uint32_t size = 0;
    plist_to_bin(root, &bytes, &size);
    std::string binary(bytes, size);
    plist_to_bin_free(bytes);
    plist_free(root);
    return binary;
}

std::string problem(std::string_view data) {
    try {
        (void)decode(data);
    } catch (const TMUtilError& error) {
        const auto* malformed = error.get<TMUtilError::MalformedOutput>();
        EXPECT_THAT(malformed ? malformed->arguments : TMUtilError::Arguments(),
                    ElementsAre("compare", "-X"));
        return error.errorDescription();
    }
    return "none";
}

/// Records the arguments of the run, and outputs a change in a folder of the newer snapshot.
struct FakeTool {
    TMUtilRunner::Arguments arguments;
    bool hasCallback = false;
    TMUtilRunner runner{[this](const TMUtilRunner::Arguments& given, std::chrono::milliseconds,
                               const TMUtilRunner::OnBytes& onBytes, const std::stop_token&) {
        arguments = given;
        hasCallback = onBytes != nullptr;
        return TMUtilResult{
            .exitCode = 0, .stdout = output({item("AddedItem", newer + "/v/a/b")}), .stderr = ""};
    }};
};

} // namespace

TEST(TMUtilCompare, readsTheBinaryAndTheOldFormAsItReadsXML) {
    const std::string xml = output({
        item("NewerItem", newer + "/v/é&amp;", "10") + item("OlderItem", older + "/v/é&amp;", "25") +
            "<key>Differences</key><array><string>size</string><string>mtime</string></array>",
        item("AddedItem", newer + "/v/d"),
        "<key>RemovedItem</key><true/>",
        item("RemovedItem", older, "18446744073709551615"),
    });
    const auto expected = decode(xml);
    ASSERT_EQ(expected.changes.size(), 3U);
    EXPECT_EQ(decode(asBinary(xml)), expected);
    EXPECT_EQ(decode("{ Changes = ({ AddedItem = { Path = \"" + newer + "/v/d\"; }; }); }").changes.at(0),
              expected.changes[1]);
}

TEST(TMUtilCompare, refusesBinaryOutputThatRepeatsOneLongPath) {
    std::string repeated = output({item("AddedItem", std::string(5000, 'a'))});
    const std::string once = repeated.substr(repeated.find("<dict><key>Added"));
    const std::string change = once.substr(0, once.find("</array>"));
    std::string array;
    for (int i = 0; i < 500; ++i)
        array += change;
    // libplist writes equal texts once and each container separately: some forty bytes per change.
    const std::string xml = "<dict><key>Changes</key><array>" + array + "</array></dict>";
    EXPECT_EQ(decode(xml).changes.size(), 500U);
    EXPECT_THAT(problem(asBinary(xml)), HasSubstr("repeats itself"));
}

TEST(TMUtilCompare, decodesOutputWithoutChangesOrTotals) {
    EXPECT_EQ(decode("<plist><dict/></plist>"), TMUtilCompare::Result());
    EXPECT_EQ(
        decode(
            "<plist><dict><key>Changes</key><true/><key>Other</key><array><date>2001-01-01T00:00:00Z</date>"
            "</array></dict></plist>"),
        TMUtilCompare::Result());
}

TEST(TMUtilCompare, handsOnTheTotals) {
    const auto result = decode("<dict><key>Totals</key><dict><key>AddedSize</key><integer>1</integer>"
                               "<key>ChangedSize</key><string>2</string><key>RemovedSize</key>"
                               "<integer>18446744073709551615</integer></dict></dict>");
    EXPECT_EQ(result.addedSize, 1);
    EXPECT_EQ(result.changedSize, std::nullopt);
    EXPECT_EQ(result.removedSize, std::nullopt);
}

TEST(TMUtilCompare, decodesAnAddedFile) {
    const auto record = onlyRecord(item("AddedItem", newer + "/v/a/b", "10"));
    EXPECT_EQ(record,
              ChangeRecord(std::nullopt, "id", "/a/b", ChangeKind::added, false, 10, 10, std::nullopt));
}

TEST(TMUtilCompare, decodesARemovedFileHoweverItIsNamed) {
    const ChangeRecord removed(std::nullopt, "id", "/a/b", ChangeKind::removed, false, 10, -10, std::nullopt);
    EXPECT_EQ(onlyRecord(item("RemovedItem", older + "/v/a/b", "10")), removed);
    EXPECT_EQ(onlyRecord(item("OlderItem", older + "/v/a/b", "10")), removed);
}

TEST(TMUtilCompare, decodesAModifiedFile) {
    const auto record =
        onlyRecord(item("OlderItem", older + "/v/old", "25") + item("NewerItem", newer + "/v/new", "10"));
    EXPECT_EQ(record,
              ChangeRecord(std::nullopt, "id", "/new", ChangeKind::modified, false, 10, -15, std::nullopt));
}

TEST(TMUtilCompare, hasNoDifferenceOfSizesWithoutBothOfThem) {
    const auto olderLacks =
        onlyRecord(item("NewerItem", newer + "/v/f", "10") + item("OlderItem", older + "/v/f"));
    EXPECT_EQ(olderLacks.sizeDelta, std::nullopt);
    EXPECT_FALSE(olderLacks.isDirectory);
    const auto newerLacks =
        onlyRecord(item("NewerItem", newer + "/v/f") + item("OlderItem", older + "/v/f", "10"));
    EXPECT_EQ(newerLacks.size, std::nullopt);
    EXPECT_EQ(newerLacks.sizeDelta, std::nullopt);
    EXPECT_TRUE(newerLacks.isDirectory);
    const auto alone = onlyRecord(item("NewerItem", newer + "/v/f", "10"));
    EXPECT_EQ(alone.kind, ChangeKind::modified);
    EXPECT_EQ(alone.sizeDelta, std::nullopt);
}

TEST(TMUtilCompare, takesAnItemWithoutSizeForADirectory) {
    for (const auto* key : {"AddedItem", "RemovedItem", "NewerItem", "OlderItem"}) {
        const auto record = onlyRecord(item(key, newer + "/v/d"));
        EXPECT_TRUE(record.isDirectory) << key;
        EXPECT_EQ(record.size, std::nullopt) << key;
        EXPECT_EQ(record.sizeDelta, std::nullopt) << key;
    }
}

TEST(TMUtilCompare, ranksTheItemsOfOneChange) {
    const std::string pair = item("OlderItem", "/o") + item("NewerItem", "/n");
    const std::string removed = item("RemovedItem", "/r");
    EXPECT_EQ(onlyRecord(pair + removed + item("AddedItem", "/a")).path, "/a");
    EXPECT_EQ(onlyRecord(pair + removed).path, "/r");
    EXPECT_EQ(onlyRecord(pair).path, "/n");
}

TEST(TMUtilCompare, leavesOutSizesAndDifferencesThatDoNotFit) {
    EXPECT_EQ(onlyRecord(item("AddedItem", "/a", "9223372036854775808")).size, std::nullopt);
    const auto removed = onlyRecord(item("RemovedItem", "/a", "-9223372036854775808"));
    EXPECT_EQ(removed.size, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(removed.sizeDelta, std::nullopt);
    const auto modified =
        onlyRecord(item("NewerItem", "/a", "9223372036854775807") + item("OlderItem", "/a", "-1"));
    EXPECT_EQ(modified.size, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(modified.sizeDelta, std::nullopt);
}

TEST(TMUtilCompare, countsChangesWithoutItemsAndGoesOn) {
    const auto result = decode("<dict><key>Changes</key><array>"
                               "<dict><key>Differences</key><array><string>size</string></array></dict>"
                               "<string>no change</string><array/>"
                               "<dict><key>AddedItem</key><string>no item</string></dict>"
                               "<dict>" +
                               item("AddedItem", "/a") + "</dict></array></dict>");
    EXPECT_EQ(result.unrecognizedCount, 4);
    EXPECT_EQ(result.changes.size(), 1U);
}

TEST(TMUtilCompare, stripsTheRootAndTheVolume) {
    EXPECT_EQ(stripped(newer + "/Macintosh HD/Users/anna"), "/Users/anna");
    EXPECT_EQ(stripped(newer + "/v/R&amp;D/<![CDATA[<x>]]>"), "/R&D/<x>");
    EXPECT_EQ(stripped(newer + "/v/a\r\n"), "/a\r\n");
}

TEST(TMUtilCompare, keepsPathsThatNoRootStrips) {
    for (const std::string& path :
         {newer, newer + "/", newer + "/v", std::string("/elsewhere/a"), std::string()})
        EXPECT_EQ(stripped(path), path);
}

TEST(TMUtilCompare, stripsTheLongestRoot) {
    const std::string xml = output({item("AddedItem", "/b/two/v/a")});
    const auto result = TMUtilCompare::decode(xml, std::array<std::string, 3>{"/b", "/b/two", "/b/t"}, "id");
    EXPECT_EQ(result.changes.at(0).path, "/a");
}

TEST(TMUtilCompare, joinsTheDifferences) {
    EXPECT_EQ(differencesOf("<array><string>size</string><string/><string>a&amp;b</string></array>"),
              "size,,a&b");
    EXPECT_EQ(differencesOf("<array/>"), "");
    EXPECT_EQ(differencesOf("<string>size</string>"), std::nullopt);
    EXPECT_EQ(differencesOf("<array><string>size</string><integer>1</integer></array>"), std::nullopt);
}

TEST(TMUtilCompare, letsTheLastOfEqualKeysWin) {
    const auto result =
        decode("<dict><key>Changes</key><array><dict><key>AddedItem</key><dict/></dict><true/></array>"
               "<key>Changes</key><array><dict>" +
               item("AddedItem", "/first", "1") +
               "<key>AddedItem</key><dict><key>Path</key><true/><key>Path</key><string>/last</string>"
               "</dict></dict></array></dict>");
    EXPECT_EQ(result.unrecognizedCount, 0);
    ASSERT_EQ(result.changes.size(), 1U);
    EXPECT_EQ(result.changes[0].path, "/last");
    EXPECT_EQ(result.changes[0].size, std::nullopt);
}

TEST(TMUtilCompare, refusesWhatIsNoCompareOutput) {
    EXPECT_THAT(problem(""), HasSubstr("Could not read tmutil output: "));
    EXPECT_THAT(problem("<array/>"), HasSubstr("root"));
    EXPECT_THAT(problem(output({"<key>AddedItem</key><dict/>"})), HasSubstr("no path"));
    EXPECT_THAT(problem(output(
                    {"<key>OlderItem</key><dict><key>Path</key><true/></dict>" + item("AddedItem", "/a")})),
                HasSubstr("no path"));
    EXPECT_THAT(problem("<dict><key>Changes</key>\n<array></dict>"), HasSubstr("line 2, column 8"));
    EXPECT_THAT(problem(output({item("AddedItem", "/\xff")})), HasSubstr("UTF-8"));
}

TEST(TMUtilCompare, comparesTwoSnapshotsAndStripsThem) {
    FakeTool tool;
    const auto result = TMUtilCompare::compare(tool.runner, older, newer, CompareOptions::tmutilDefault(3),
                                               "id", [](std::int64_t) {});
    EXPECT_THAT(tool.arguments, ElementsAre("compare", "-X", "-@gmstu", "-D", "3", older, newer));
    EXPECT_TRUE(tool.hasCallback);
    EXPECT_EQ(result.changes.at(0).path, "/a/b");
    EXPECT_EQ(result.changes.at(0).comparisonID, "id");
}

TEST(TMUtilCompare, comparesTwoFoldersAndStripsTheRootsGiven) {
    FakeTool tool;
    const auto result = TMUtilCompare::compare(tool.runner, older + "/v/a", newer + "/v/a", std::array{newer},
                                               CompareOptions(), "id", {});
    EXPECT_THAT(tool.arguments, ElementsAre("compare", "-X", older + "/v/a", newer + "/v/a"));
    EXPECT_EQ(result.changes.at(0).path, "/a/b");
}

TEST(TMUtilCompare, comparesSizesAndTimesToADepth) {
    FakeTool tool;
    TMUtilCompare::compare(tool.runner, older, newer, 2, "id");
    EXPECT_THAT(tool.arguments, ElementsAre("compare", "-X", "-st", "-D", "2", older, newer));
    EXPECT_FALSE(tool.hasCallback);
}

TEST(TMUtilCompare, comparesASnapshotWithItsSource) {
    FakeTool tool;
    const auto result = TMUtilCompare::compareWithSource(tool.runner, newer, std::nullopt, "id");
    EXPECT_THAT(tool.arguments, ElementsAre("compare", "-X", newer));
    EXPECT_EQ(result.changes.at(0).path, "/a/b");
    TMUtilCompare::compareWithSource(tool.runner, newer, 0, "id");
    EXPECT_THAT(tool.arguments, ElementsAre("compare", "-X", "-D", "0", newer));
}

} // namespace tallyglass
