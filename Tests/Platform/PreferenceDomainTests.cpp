#include "TallyglassKit/Platform/PreferenceDomain.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

constexpr const char* name = "com.example.Name";
constexpr const char* file = "Library/Preferences/com.example.Name.plist";

class PreferenceDomainFile : public testing::Test {
protected:
    std::optional<PreferenceDomain> open(std::string_view contents) {
        m_folder.write(file, contents);
        return PreferenceDomain::open(name, SystemPaths(m_folder.path()));
    }

    test::TemporaryFolder m_folder;
};

TEST_F(PreferenceDomainFile, opensNothingWithoutADictionary) {
    EXPECT_FALSE(PreferenceDomain::open(name, SystemPaths(m_folder.path())));
    EXPECT_FALSE(open(""));
    EXPECT_FALSE(open("bplist00garbage"));
    EXPECT_FALSE(open("<plist><array/></plist>"));
    EXPECT_FALSE(open("<plist><dict><key>A</key></dict></plist>"));
    EXPECT_TRUE(open("<plist><dict/></plist>"));

    std::filesystem::remove(m_folder / file);
    std::filesystem::create_directory(m_folder / file);
    EXPECT_FALSE(PreferenceDomain::open(name, SystemPaths(m_folder.path())))
        << "a folder in the file's place";
}

TEST_F(PreferenceDomainFile, readsObjectsAndArrays) {
    const auto domain = open("<plist><dict><key>List</key><array><string>x</string></array>"
                             "<key>Text</key><string>y</string></dict></plist>");
    ASSERT_TRUE(domain);

    EXPECT_EQ(domain->array("List").value()[0].text(), "x");
    EXPECT_EQ(domain->object("Text").value().text(), "y");
    EXPECT_FALSE(domain->array("Text"));
    EXPECT_FALSE(domain->object("text"));
}

TEST_F(PreferenceDomainFile, outlivesAMoveOfItself) {
    auto domain = open("<plist><dict><key>Text</key><string>y</string></dict></plist>");
    const auto value = domain->object("Text");
    const PreferenceDomain moved = std::move(*domain);
    EXPECT_EQ(value->text(), "y");
    EXPECT_EQ(moved.object("Text")->text(), "y");
}

TEST_F(PreferenceDomainFile, coercesToBooleansAsTheSystemDoes) {
    const auto boolean = [this](const std::string& value) {
        return open("<plist><dict><key>Flag</key>" + value + "</dict></plist>")->boolean("Flag");
    };
    for (const char* value : {"<true/>", "<integer>1</integer>", "<integer>-2</integer>", "<real>0.5</real>",
                              "<integer>18446744073709551615</integer>", "<string>YES</string>",
                              "<string>true</string>", "<string> 01</string>"})
        EXPECT_TRUE(boolean(value)) << value;
    for (const char* value :
         {"<false/>", "<integer>0</integer>", "<real>0</real>", "<string>NO</string>", "<string/>",
          "<array><true/></array>", "<dict/>", "<data>AQ==</data>", "<date>2026-01-01T00:00:00Z</date>"})
        EXPECT_FALSE(boolean(value)) << value;
    EXPECT_FALSE(open("<plist><dict/></plist>")->boolean("Flag"));
}

} // namespace
} // namespace tallyglass
