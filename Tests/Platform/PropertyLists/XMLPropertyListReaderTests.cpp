#include "TallyglassKit/Platform/PropertyLists/Internal/XMLPropertyListReader.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>

namespace tallyglass {

namespace {

using namespace std::string_literals;
using testing::HasSubstr;

struct List {
    explicit List(std::string_view xml) : root(readXMLPropertyList(xml, storage)) {}

    PropertyListStorage storage;
    PropertyListValue root;
};

/// The text of the document's root value.
std::string textIn(std::string_view xml) {
    return std::string(List(xml).root.text().value_or("no text"));
}

/// The error for the document.
std::string problem(std::string_view xml) {
    try {
        const List list(xml);
    } catch (const PropertyListError& error) {
        return error.errorDescription();
    }
    return "none";
}

std::string nested(std::size_t depth) {
    std::string xml;
    for (std::size_t i = 0; i < depth; ++i)
        xml += "<array>";
    for (std::size_t i = 0; i < depth; ++i)
        xml += "</array>";
    return xml;
}

} // namespace

TEST(XMLPropertyListReader, readsEveryKindOfValue) {
    const List list(R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>array</key>
	<array>
		<string>one</string>
		<true/>
		<false></false>
	</array>
	<key>data</key>
	<data>
	AAEC
	/w==
	</data>
	<key>date</key>
	<date>2001-01-01T00:01:00Z</date>
	<key>integer</key>
	<integer>-7</integer>
	<key>real</key>
	<real>2.5e-1</real>
</dict>
</plist>
)");
    const auto array = list.root.find("array")->array().value();
    ASSERT_EQ(array.size(), 3U);
    EXPECT_EQ(array[0].text(), "one");
    EXPECT_EQ(array[1].boolean(), true);
    EXPECT_EQ(array[2].boolean(), false);
    EXPECT_EQ(list.root.find("data")->data(), "\0\1\2\xff"s);
    EXPECT_EQ(list.root.find("date")->secondsSince2001(), 60);
    EXPECT_EQ(list.root.find("integer")->integer(), -7);
    EXPECT_EQ(list.root.find("real")->real(), 0.25);
}

TEST(XMLPropertyListReader, needsNoPlistElementAndIgnoresWhatFollowsOne) {
    EXPECT_EQ(textIn("<string>bare</string>"), "bare");
    EXPECT_EQ(textIn("  <string>bare</string>\n<!-- the end --> "), "bare");
    EXPECT_EQ(textIn("<plist><string>a</string></plist><garbage &&&"), "a");
}

TEST(XMLPropertyListReader, holdsExactlyOneRoot) {
    EXPECT_THAT(problem("<plist/>"), HasSubstr("<plist> holds no value"));
    EXPECT_THAT(problem("<plist></plist>"), HasSubstr("no value stands at the root"));
    EXPECT_THAT(problem("<plist><true/><true/></plist>"), HasSubstr("more than one value"));
    EXPECT_THAT(problem("<true/><true/>"), HasSubstr("more than one value"));
    EXPECT_THAT(problem("<plist><true/>"), HasSubstr("ends too early"));
    EXPECT_THAT(problem(" "), HasSubstr("ends too early"));
}

TEST(XMLPropertyListReader, skipsEverythingElseBetweenElementsAndInTags) {
    const List list("<!-- > --><?stylesheet a='?'?><plist a=\"/>\"><!----><dict note='<&>' ><!-- x --><key "
                    "b=\"\">k</key >"
                    "<?p?><array ><true /><!-- y --></array ></dict\n></plist >");
    EXPECT_EQ(list.root.find("k")->array()->size(), 1U);
}

TEST(XMLPropertyListReader, readsEmptyElements) {
    EXPECT_EQ(List("<array/>").root.array()->size(), 0U);
    EXPECT_EQ(List("<dict><key/><dict/></dict>").root.find("")->dictionary()->size(), 0U);
    EXPECT_EQ(textIn("<string/>"), "");
    EXPECT_EQ(List("<data/>").root.data(), "");
    for (const std::string name : {"integer", "real", "date"})
        EXPECT_THAT(problem("<" + name + "/>"), HasSubstr("<" + name + "> doesn't hold")) << name;
}

TEST(XMLPropertyListReader, decodesReferencesAndCDATA) {
    EXPECT_EQ(textIn("<string>&lt;&gt;&amp;&quot;&apos;</string>"), "<>&\"'");
    EXPECT_EQ(textIn("<string>&#65;&#x00e9;&#x1F600;</string>"), "Aé😀");
    EXPECT_EQ(textIn("<string>a<![CDATA[<b>&amp;]]]>c</string>"), "a<b>&amp;]c");
    EXPECT_EQ(List("<dict><key>a&amp;b</key><string>&lt;</string></dict>").root.find("a&b")->text(), "<");
    for (const std::string reference : {"&nbsp;", "&", "&#;", "&#x;", "&#0;", "&#xD800;", "&#x110000;",
                                        "&#99999999999;", "&#-1;", "&#65", "&AMP;"})
        EXPECT_THAT(problem("<string>" + reference + "</string>"), HasSubstr("at line 1, column 9"))
            << reference;
}

TEST(XMLPropertyListReader, keepsTextUnchanged) {
    EXPECT_EQ(textIn("<string> a\r\n\tb \r</string>"), " a\r\n\tb \r");
    EXPECT_EQ(textIn("<string>a]]>b</string>"), "a]]>b");
}

TEST(XMLPropertyListReader, refusesWhatStringsCannotHold) {
    EXPECT_THAT(problem("<string>a<!-- b --></string>"), HasSubstr("holds more than text"));
    EXPECT_THAT(problem("<string>a<string>b</string></string>"), HasSubstr("holds more than text"));
    EXPECT_THAT(problem("<string>a\xff</string>"), HasSubstr("isn't UTF-8"));
    EXPECT_THAT(problem("<string>&lt;a\xc3</string>"), HasSubstr("isn't UTF-8"));
    EXPECT_THAT(problem("<string>a</key>"), HasSubstr("</key> stands where </string> belongs"));
}

TEST(XMLPropertyListReader, refusesDeclarationsInTheDocumentType) {
    EXPECT_THAT(problem("<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><string>&a;</string></plist>"),
                HasSubstr("at line 1, column 17"));
    EXPECT_EQ(textIn("<!DOCTYPE plist SYSTEM '[>'><string>a</string>"), "a");
}

TEST(XMLPropertyListReader, refusesWhatIsNotClosed) {
    for (const std::string xml :
         {"<",         "<!-- a",      "<?xml",      "<!DOCTYPE",          "<!DOCTYPE \"",
          "<plist",    "<plist a=\"", "<dict>",     "<dict><key>",        "<dict><key>a</key>",
          "<string>a", "<string>a&",  "<string>a<", "<string><![CDATA[a", "<integer>1",
          "<data>AA",  "<date>",      "<true>",     "<true></true",       "<array><true/>"})
        EXPECT_THAT(problem(xml), HasSubstr("line 1")) << xml;
}

TEST(XMLPropertyListReader, refusesElementsOutOfPlace) {
    EXPECT_THAT(problem("<dict><key>a</key></dict>"), HasSubstr("a key has no value"));
    EXPECT_THAT(problem("<dict><key>a</key><key>b</key></dict>"), HasSubstr("a key has no value"));
    EXPECT_THAT(problem("<dict><true/></dict>"), HasSubstr("<true> has no key"));
    EXPECT_THAT(problem("<array><key>a</key></array>"), HasSubstr("<key> can't stand here"));
    EXPECT_THAT(problem("<array></dict>"), HasSubstr("</dict> closes nothing"));
    EXPECT_THAT(problem("<array>a</array>"), HasSubstr("text stands between"));
    EXPECT_THAT(problem("<array><![CDATA[a]]></array>"), HasSubstr("no element"));
    EXPECT_THAT(problem("<Dict/>"), HasSubstr("<Dict> is no element"));
    EXPECT_THAT(problem("<true>1</true>"), HasSubstr("</true> is missing"));
}

TEST(XMLPropertyListReader, tellsLineAndColumnInCharacters) {
    EXPECT_THAT(problem("<array>\n\t<string>é</string><foo/>\n</array>"), HasSubstr("at line 2, column 20"));
}

TEST(XMLPropertyListReader, honoursByteOrderMarksAndDeclaredEncodings) {
    EXPECT_EQ(textIn("\xef\xbb\xbf<string>é</string>"), "é");
    EXPECT_EQ(textIn("\xfe\xff\0<\0s\0t\0r\0i\0n\0g\0>\xd8\x3d\xde\0\0<\0/\0s\0t\0r\0i\0n\0g\0>"s), "😀");
    EXPECT_EQ(textIn("\xff\xfe<\0s\0t\0r\0i\0n\0g\0/\0>\0"s), "");
    EXPECT_EQ(textIn("<?xml version='1.0' encoding = 'iso-8859-1'?><string>\xe9</string>"), "é");
    EXPECT_EQ(textIn("\xef\xbb\xbf<?xml version='1.0' encoding='ISO-8859-1'?><string>é</string>"), "é");
    EXPECT_THAT(problem("<?xml version='1.0' encoding='EBCDIC'?><string>a</string>"), HasSubstr("encoding"));
}

TEST(XMLPropertyListReader, takesTheLastOfEqualKeys) {
    const List list("<dict><key>a</key><integer>1</integer><key>a</key><integer>2</integer></dict>");
    EXPECT_EQ(list.root.find("a")->integer(), 2);
}

TEST(XMLPropertyListReader, holds512NestedContainers) {
    EXPECT_EQ(List(nested(512)).root.nesting(), 512U);
    EXPECT_THAT(problem(nested(513)), HasSubstr("more than 512 containers"));
    EXPECT_THAT(problem(std::string(1'000'000, '<')), HasSubstr("line 1, column 1"));
}

TEST(XMLPropertyListReader, holdsIntegersOf64BitsSignedAndUnsigned) {
    EXPECT_EQ(List("<integer>-9223372036854775808</integer>").root.integer(), INT64_MIN);
    EXPECT_EQ(List("<integer>9223372036854775807</integer>").root.integer(), INT64_MAX);
    const List large("<integer>18446744073709551615</integer>");
    EXPECT_EQ(large.root.integer(), std::nullopt);
    EXPECT_EQ(large.root.unsignedInteger(), UINT64_MAX);
}

} // namespace tallyglass
