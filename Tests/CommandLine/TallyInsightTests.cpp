// The history of files and the exclusions from a terminal.

#include "TallyglassKit/Access/BackupName.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "Tests/CommandLine/TallyTest.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace tallyglass::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class TallyInsightTest : public TallyTest {
protected:
    /// A file in the oldest backup, by its path on the volume.
    [[nodiscard]] static std::string oldFile() {
        const std::string volume = SampleMachine::shared().backups()[0] + "/" + SampleMachine::volumeName;
        for (const auto& entry : fs::recursive_directory_iterator(volume + "/Users/alex"))
            if (entry.is_regular_file())
                return entry.path().string().substr(volume.size());
        return {};
    }
    [[nodiscard]] static std::string inBackup(std::size_t index, const std::string& path) {
        return SampleMachine::shared().backups()[index] + "/" + SampleMachine::volumeName + path;
    }
};

TEST_F(TallyInsightTest, tracesAFileThroughAllBackups) {
    const auto path = oldFile();
    const auto history = onMachine({"trace", " " + path.substr(1), "--json"}).json();

    EXPECT_EQ(history.at("path"), path);
    EXPECT_EQ(history.at("probedCount"), SampleMachine::backupCount);
    const auto& versions = history.at("versions");
    ASSERT_EQ(versions.size(), SampleMachine::backupCount);
    EXPECT_EQ(versions.at(0).at("path"), inBackup(0, path));
    EXPECT_EQ(versions.at(0).at("size"), fs::file_size(inBackup(0, path)));
    EXPECT_EQ(versions.at(0).size(), 9U);
    std::size_t members = 0;
    for (const auto& span : history.at("spans"))
        members += span.at("backupCount").get<std::size_t>();
    EXPECT_EQ(members, versions.size() - history.at("missingCount").get<std::size_t>());
    EXPECT_EQ(history.at("spans").back().at("firstSeen"), versions.at(0).at("backupDate"));

    EXPECT_THAT(onMachine({"trace", path}).out, StartsWith(path + ": "));
    EXPECT_EQ(onMachine({"trace", "/nowhere"}).out, "Not found in any backup; checked 8 backups.\n");
    EXPECT_EQ(onMachine({"trace", path, "--volume", "Other", "--json"}).json().at("missingCount"), 8);
    EXPECT_EQ(onMachine({"trace", " "}).exitCode, 1);
}

TEST_F(TallyInsightTest, exportsAnItemAndReplacesNoFolderUnasked) {
    const auto path = oldFile();
    const auto destination = folder().write("target/item", "old").string();
    const auto stamp = BackupName::of(SampleMachine::shared().backups()[0]);

    const auto run = onMachine({"export", path, destination, "--backup", stamp});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, StartsWith("Exported 1 item, "));
    EXPECT_EQ(readFile(destination).view(), readFile(inBackup(0, path)).view());

    fs::remove(destination);
    fs::create_directory(destination);
    const auto refused = onMachine({"export", "/Users/alex", destination});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err, HasSubstr("--replace"));
    const auto replaced = onMachine({"export", "/Users/alex", destination, "--replace", "--json"}).json();
    EXPECT_EQ(replaced.at("destination"), destination);
    EXPECT_EQ(replaced.at("version").at("path"), inBackup(SampleMachine::backupCount - 1, "/Users/alex"));
    EXPECT_EQ(folderNames(destination), folderNames(inBackup(SampleMachine::backupCount - 1, "/Users/alex")));

    const auto missing = onMachine({"export", "/nowhere", destination, "--json"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_THAT(missing.err, HasSubstr("No such file or directory"));
    EXPECT_THAT(missing.out, IsEmpty());
    EXPECT_THAT(folderNames(folder() / "target"), ElementsAre("item"));
}

TEST_F(TallyInsightTest, showsAndSwitchesExclusions) {
    const SampleMachine machine({"--backups", "2", "--files", "10"});
    const auto documents = (machine.home() / "Documents").string();
    const auto onOwnMachine = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--root", machine.root().string(), "--json"});
        return tally(arguments);
    };

    const auto before = onOwnMachine({"exclusions", documents + "/", machine.home() / "missing"}).json();
    EXPECT_EQ(before.at(0).at("path"), documents);
    EXPECT_EQ(before.at(0).at("state"), "included");
    EXPECT_EQ(before.at(0).at("reason"), nullptr);
    EXPECT_EQ(before.at(1).at("explanation"), "This item no longer exists.");
    const auto excluded = onOwnMachine({"exclude", documents}).json();
    EXPECT_EQ(excluded.at(0).at("reason"), "ownMarker");
    EXPECT_EQ(excluded.at(0).at("canToggle"), true);
    EXPECT_EQ(onOwnMachine({"include", documents}).json().at(0).at("state"), "included");
    EXPECT_EQ(onOwnMachine({"exclude", machine.home() / "missing"}).exitCode, 1);
    EXPECT_THAT(tally({"--root", machine.root(), "exclusions", documents}).out,
                StartsWith("included  " + documents + "\n          Included in backups.\n"));
}

} // namespace
} // namespace tallyglass::test
