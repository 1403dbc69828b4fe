#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/UserDefaults.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <thread>

namespace tallyglass {
namespace {

using List = std::vector<std::string>;

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(UserDefaults, keepListsAcrossObjects) {
    const test::TemporaryFolder folder;
    const auto file = folder / "data/Tallyglass/defaults.json";
    EXPECT_FALSE(UserDefaults(file).stringArray("Paths"));

    UserDefaults(file).setStringArray("Paths", {"/b", "/ä \"x\"\n"});
    UserDefaults(file).setStringArray("Other", {});

    EXPECT_EQ(UserDefaults(file).stringArray("Paths"), (List{"/b", "/ä \"x\"\n"}));
    EXPECT_EQ(UserDefaults(file).stringArray("Other"), List{});
    EXPECT_FALSE(UserDefaults(file).stringArray("paths"));
}

TEST(UserDefaults, takeTextThatIsNotUTF8WithoutHarm) {
    const test::TemporaryFolder folder;
    const UserDefaults defaults(folder / "defaults.json");

    defaults.setStringArray("Paths", {"/\xff", "/a"});

    EXPECT_EQ(defaults.stringArray("Paths"), (List{"/\uFFFD", "/a"}));
}

TEST(UserDefaults, keepWhatTheyDoNotUnderstand) {
    const test::TemporaryFolder folder;
    const UserDefaults defaults(folder.write("defaults.json", R"({"A": {"b": 1}, "C": ["x", 2]})"));

    defaults.setStringArray("Paths", {"/a"});

    EXPECT_FALSE(defaults.stringArray("A"));
    EXPECT_FALSE(defaults.stringArray("C"));
    EXPECT_NE(contents(folder / "defaults.json").find("\"b\": 1"), std::string::npos);
}

TEST(UserDefaults, setABrokenFileAside) {
    for (const std::string broken : {"", "{", "[]", "{\"a\": \"\xff\"}"}) {
        const test::TemporaryFolder folder;
        const UserDefaults defaults(folder.write("defaults.json", broken));
        EXPECT_FALSE(defaults.stringArray("Paths")) << broken;

        defaults.setStringArray("Paths", {"/a"});

        EXPECT_EQ(defaults.stringArray("Paths"), List{"/a"}) << broken;
        EXPECT_EQ(contents(folder / "defaults.json.broken"), broken);
    }
}

TEST(UserDefaults, loseNoKeyToChangesAtOnce) {
    const test::TemporaryFolder folder;
    const UserDefaults defaults(folder / "defaults.json");

    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 8; ++i)
            threads.emplace_back([&folder, i] {
                for (int j = 0; j < 5; ++j)
                    UserDefaults(folder / "defaults.json").setStringArray(std::to_string(i * 5 + j), {"x"});
            });
    }

    for (int key = 0; key < 40; ++key)
        EXPECT_EQ(defaults.stringArray(std::to_string(key)), List{"x"}) << key;
}

TEST(UserDefaults, sayWhyTheyCanNotBeSaved) {
    const test::TemporaryFolder folder;
    const UserDefaults defaults(folder.write("file", "x") / "defaults.json");

    try {
        defaults.setStringArray("Paths", {});
        FAIL() << "nothing was thrown";
    } catch (const Error& error) {
        EXPECT_NE(error.errorDescription().find("Not a directory"), std::string::npos) << error.what();
    }
}

} // namespace
} // namespace tallyglass
