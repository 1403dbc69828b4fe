// The history of files, the exclusions, diagnostics and the benchmark from a terminal.

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
using testing::EndsWith;
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

TEST_F(TallyInsightTest, savesDiagnosticsOfAMachine) {
    const auto into = (folder() / "dump").string();

    const auto dump = onMachine({"diagnostics", "--into", into + "/", "--depth", "2", "--json"}).json();

    EXPECT_EQ(dump.at("directory"), into);
    EXPECT_EQ(dump.at("summary"), "8 of 8 probes succeeded");
    const auto& steps = dump.at("steps");
    EXPECT_EQ(steps.at(0).size(), 7U);
    EXPECT_EQ(steps.at(5).at("label"), "Compare last two backups (depth 2)");
    EXPECT_EQ(steps.at(5).at("exitCode"), 0);
    EXPECT_EQ(steps.at(5).at("error"), nullptr);
    EXPECT_EQ(steps.at(7).at("succeeded"), true);
    EXPECT_EQ(readFile(into + "/listbackups.txt").view(), [] {
        std::string lines;
        for (const auto& backup : SampleMachine::shared().backups())
            lines += backup + "\n";
        return lines;
    }());
    const auto text = onMachine({"diagnostics", "--into", into}).out;
    EXPECT_THAT(text, StartsWith("8 of 8 probes succeeded\nOK    Destination info\n      "));
    EXPECT_THAT(text, EndsWith("\nSaved in " + into + "\n"));

    const auto inside = onMachine({"diagnostics", "--into", inBackup(0, "/Users")});
    EXPECT_EQ(inside.exitCode, 1);
    EXPECT_THAT(inside.err, HasSubstr("backups are never changed"));
}

TEST_F(TallyInsightTest, measuresComparisonsOnAMachine) {
    const auto results = onMachine({"benchmark", "--pairs", "1", "--depth", "1", "--json"}).json();

    ASSERT_EQ(results.size(), 5U); // eight backups: three sets, two levels with two pairs each
    EXPECT_EQ(results.at(0).at("arguments"), nlohmann::json({"-X", "-@gmstu", "-D", "1"}));
    EXPECT_EQ(results.at(0).at("pairsUsed"), 1);
    EXPECT_EQ(results.at(0).at("secondsPerPair"), results.at(0).at("seconds"));
    EXPECT_EQ(results.at(3).at("label"), "concurrency 4");
    EXPECT_EQ(results.at(3).at("error"), nullptr);
    EXPECT_EQ(results.at(3).size(), 8U);
    EXPECT_THAT(
        onMachine({"benchmark", "--pairs", "9"}).out,
        testing::AllOf(StartsWith("Tallyglass — compare benchmark\n"),
                       HasSubstr("\nsize only (-s)\n    tmutil compare -X -s -D 3 …\n    2 pairs\n")));
}

} // namespace
} // namespace tallyglass::test
