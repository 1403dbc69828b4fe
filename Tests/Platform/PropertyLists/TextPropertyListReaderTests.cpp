#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace tallyglass;
using namespace std::string_literals;

namespace {

std::string errorOf(const std::string& text) {
    try {
        (void)PropertyList::parse(text);
    } catch (const PropertyListError& error) {
        return error.errorDescription();
    }
    return "none";
}

/// The text of a list that consists of it alone.
std::string textOf(const std::string& list) {
    return std::string(PropertyList::parse(list).root().text().value());
}

} // namespace

TEST(TextPropertyListReader, readsTheStatusOfTheBackupEngine) {
    const auto list = PropertyList::parse(R"({
    BackupPhase = Copying;
    DateOfStateChange = "2026-02-27 01:11:08 +0000";
    Progress =     {
        Percent = "0.25";
        "_raw_totalBytes" = 1805307203584;
        bytes = 831418368;
    };
    Running = 1;
})");
    const auto root = list.root();
    EXPECT_EQ(root.dictionary().value().size(), 4U);
    EXPECT_EQ(root.find("BackupPhase").value().text(), "Copying");
    EXPECT_EQ(root.find("DateOfStateChange").value().text(), "2026-02-27 01:11:08 +0000");
    EXPECT_EQ(root.find("Progress").value().find("_raw_totalBytes").value().text(), "1805307203584");
    EXPECT_EQ(root.find("Running").value().text(), "1") << "numbers are text in this form";
}

TEST(TextPropertyListReader, readsStringsQuotedAndUnquoted) {
    EXPECT_EQ(textOf("aZ09_$/:.-"), "aZ09_$/:.-");
    EXPECT_EQ(textOf("'say \"hi\"'"), "say \"hi\"");
    EXPECT_EQ(textOf("\"\""), "");
    EXPECT_EQ(textOf("\"a\nb\""), "a\nb");
    EXPECT_EQ(textOf("\"Größe\""), "Größe");
    EXPECT_THAT(errorOf("{ k = a+b; }"),
                testing::HasSubstr("';' is missing after the value of a key, at line 1, column 8"));
    EXPECT_THAT(errorOf("{ k = Größe; }"), testing::HasSubstr("line 1, column 9"));
    EXPECT_THAT(errorOf("{\r\n  k = \"open; }"),
                testing::HasSubstr("without its closing quote, at line 2, column 7"));
    EXPECT_THAT(errorOf("\"ends in \\"), testing::HasSubstr("without its closing quote"));
}

TEST(TextPropertyListReader, decodesEscapes) {
    EXPECT_EQ(textOf(R"("\a\b\f\n\r\t\v\"\'\\")"), "\a\b\f\n\r\t\v\"'\\");
    EXPECT_EQ(textOf(R"("\0\7\101\1012\18")"), "\0\7AA2\1"s + "8");
    EXPECT_EQ(textOf(R"("\341\256")"), "Æ\uFB01") << "octal escapes are in the encoding of the form's origin";
    EXPECT_EQ(textOf(R"("\U00e9\Ue9 \U4E2D1\U")"), "éé 中1\0"s);
    EXPECT_EQ(textOf(R"("\Ud83d\Ude00")"), "😀");
    EXPECT_EQ(textOf(R"("\Ud83dx\Ud83d\U0041\Ude00")"), "\uFFFDx\uFFFDA\uFFFD") << "lone surrogates";
    EXPECT_EQ(textOf(R"("\q\é")"), "qé");
}

TEST(TextPropertyListReader, readsDataOfWholeBytes) {
    EXPECT_EQ(PropertyList::parse("<0fbD 77\n>").root().data(), "\x0F\xBD\x77");
    EXPECT_EQ(PropertyList::parse("<>").root().data(), "");
    EXPECT_THAT(errorOf("(<0fb>)"), testing::HasSubstr("pairs of hexadecimal digits, at line 1, column 6"));
    EXPECT_NE(errorOf("(<0 f>)"), "none");
    EXPECT_THAT(errorOf("(<0f"), testing::HasSubstr("data without its end"));
}

TEST(TextPropertyListReader, keepsToTheGrammarOfContainers) {
    const auto list = PropertyList::parse("{ list = (a, (), {}, <00>,); key; b = 1; b = 2; }");
    EXPECT_EQ(list.root().find("list").value().array().value().size(), 4U);
    EXPECT_EQ(list.root().find("key").value().text(), "key");
    EXPECT_EQ(list.root().find("b").value().text(), "2") << "the last of equal keys wins";

    for (const char* wrong :
         {"{ a = b }",  "{ a }",  "{ a = ; }", "{ = b; }", "{ (a) = b; }",  "{;}", "(,)",
          "(a b)",      "(a,,b)", "(a",        "{",        "{ a = b; ",     ")",   "( a }",
          "{ a = b; )", "a b",    "{} {}",     "() ;",     "{ <00> = a; }", "\0"})
        EXPECT_NE(errorOf(wrong), "none") << wrong;
    EXPECT_THAT(errorOf("{ a = b; } x"),
                testing::HasSubstr("text follows the end of the list, at line 1, column 12"));
}

TEST(TextPropertyListReader, skipsCommentsWhereATokenCouldBegin) {
    EXPECT_EQ(PropertyList::parse("// one\n{ /* two */ a /**/ = /x/y; // three\r } // four")
                  .root()
                  .find("a")
                  .value()
                  .text(),
              "/x/y");
    EXPECT_EQ(textOf("a//b"), "a//b");
    EXPECT_EQ(textOf("\u2028 a \u2029\v\f"), "a");
    for (const char* blank : {" ", "\n// only a comment", "/* only a comment */"})
        EXPECT_TRUE(PropertyList::parse(blank).root().dictionary().value().empty()) << blank;
    EXPECT_THAT(errorOf("{ /* open }"), testing::HasSubstr("a comment without its end, at line 1, column 3"));
}

TEST(TextPropertyListReader, readsUTF8AndMarkedUTF16Only) {
    EXPECT_EQ(textOf("\xEF\xBB\xBF"
                     "a"),
              "a");
    EXPECT_EQ(textOf("\xFE\xFF\0a\0b"s), "ab");
    EXPECT_EQ(textOf("\xFF\xFE\"\0\xE9\0\"\0"s), "é");
    for (const std::string& wrong : {"\"\x80\""s, "\"\xC3\""s, "\"\xC0\x80\""s, "\"\xED\xA0\x80\""s,
                                     "\"\xF4\x90\x80\x80\""s, "\"\xE2\x82"s})
        EXPECT_THAT(errorOf(wrong), testing::HasSubstr("a byte that isn't UTF-8, at line 1, column 2"));
}

TEST(TextPropertyListReader, acceptsNestingOf512AndNoMore) {
    const auto nested = [](std::size_t levels) {
        return std::string(levels, '(') + std::string(levels, ')');
    };
    EXPECT_EQ(PropertyList::parse(nested(512)).root().nesting(), 512U);
    EXPECT_THAT(errorOf(nested(513)), testing::HasSubstr("nested too deeply, at line 1, column 513"));
    EXPECT_THAT(errorOf(std::string(100000, '(')), testing::HasSubstr("nested too deeply"));
    std::string pairs;
    for (int i = 0; i < 100000; ++i)
        pairs += "{a=";
    EXPECT_THAT(errorOf(pairs), testing::HasSubstr("nested too deeply"));
}
