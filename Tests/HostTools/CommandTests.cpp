#include "HostTools/Machine/RunState.h"
#include "TallyglassKit/Comparison/TMUtilCompare.h"
#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "Tests/Support/HostMachine.h"
#include "Tests/Support/SampleMachine.h"

#include <gmock/gmock.h>

#include <set>

namespace tallyglass::test {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(Commands, printAnIdleStatusInTheOldStyle) {
    const HostMachine machine;

    EXPECT_EQ(machine.run({"status"}).output, "Backup session status:\n"
                                              "{\n"
                                              "    ClientID = \"com.apple.backupd\";\n"
                                              "    Percent = \"-1\";\n"
                                              "    Running = 0;\n"
                                              "}\n");
}

TEST(Commands, printARunningStatusInTheOldStyle) {
    const RunState state{.phase = BackupPhase::copying,
                         .stateChange = dateSince1970(1772154668),
                         .destinationID = "11112222-5A5D-4859-A4A7-4B3B7885CFEB",
                         .mountPoint = "/Volumes/Backups of \"Zoe\u0308\" \U0001F600",
                         .fractionDone = {},
                         .changedItems = 460,
                         .bytes = 1000,
                         .totalBytes = 4000,
                         .files = 457,
                         .totalFiles = 10159895,
                         .timeRemaining = 3.8e-05};

    EXPECT_EQ(state.statusText(false), R"({
    BackupPhase = Copying;
    ClientID = "com.apple.backupd";
    DateOfStateChange = "2026-02-27 01:11:08 +0000";
    DestinationID = "11112222-5A5D-4859-A4A7-4B3B7885CFEB";
    DestinationMountPoint = "/Volumes/Backups of \"Zoe\U0308\" \Ud83d\Ude00";
    FractionOfProgressBar = "0.30000000000000004";
    NumberOfChangedItems = 460;
    Progress =     {
        Percent = "0.25";
        TimeRemaining = "3.8e-05";
        "_raw_Percent" = "0.25";
        "_raw_totalBytes" = 4000;
        bytes = 1000;
        files = 457;
        sizingFreePreflight = 1;
        totalBytes = 4000;
        totalFiles = 10159895;
    };
    Running = 1;
    Stopping = 0;
})");
}

TEST(Commands, thatReadBackupsNeedPermission) {
    const HostMachine machine;
    machine.setUp();
    machine.run({"arrange", "--permission", "revoked"});

    for (const char* verb : {"listbackups", "latestbackup", "machinedirectory", "compare"}) {
        const auto result = machine.run({verb});
        EXPECT_EQ(result.status, 80);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "tmutil: " + std::string(verb) +
                                     " requires Full Disk Access privileges.\n"
                                     "To allow this operation, select Full Disk Access in the Privacy\n"
                                     "tab of the Security & Privacy preference pane, and add Terminal\n"
                                     "to the list of applications which are allowed Full Disk Access.\n");
    }
    EXPECT_EQ(machine.run({"status"}).status, 0);
    EXPECT_EQ(machine.run({"destinationinfo", "-X"}).status, 0);
    machine.run({"arrange", "--permission", "granted"});
    EXPECT_EQ(machine.run({"listbackups"}).status, 0);
}

TEST(Commands, sayWhatIsMissingOnANewMachine) {
    const HostMachine machine;
    EXPECT_EQ(machine.run({"destinationinfo"}).errors, "tmutil: No destinations configured.\n");
    EXPECT_EQ(machine.run({"startbackup"}).errors, "tmutil: No destinations configured.\n");
    machine.setUp();

    for (const char* verb : {"listbackups", "latestbackup"}) {
        const auto result = machine.run({verb});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "No backups found for host.\n");
    }
    const auto folder = machine.run({"machinedirectory"});
    EXPECT_EQ(folder.status, 1);
    EXPECT_EQ(folder.errors, "No machine directory found for host.\n");
}

TEST(Commands, refuseWhatTheyDoNotKnow) {
    const HostMachine machine;
    machine.setUp();

    EXPECT_EQ(machine.run({}).status, 64);
    EXPECT_THAT(machine.run({"frobnicate"}).errors, HasSubstr("there is no verb frobnicate"));
    EXPECT_THAT(machine.run({"compare", "-q"}).errors, HasSubstr("there is no option -q"));
    EXPECT_THAT(machine.run({"compare", "-D"}).errors, HasSubstr("option -D needs a value"));
    EXPECT_THAT(machine.run({"compare", "-D", "-1", "/a", "/b"}).errors, HasSubstr("-1 is no depth"));
    EXPECT_THAT(machine.run({"setup", "--source", "/nowhere", "--destination", machine.disk()}).errors,
                HasSubstr("/nowhere is no folder"));
}

TEST(Commands, setUpTwiceChangesNothing) {
    const HostMachine machine;
    machine.setUp();
    const auto before = describeTree(machine.root());

    machine.setUp();

    auto after = describeTree(machine.root());
    for (const char* rewritten : {"Library/Preferences", "Library/Preferences/com.apple.TimeMachine.plist"})
        after[rewritten] = before.at(rewritten); // the same contents with a later date
    EXPECT_EQ(after, before);
    EXPECT_EQ(machine.destination().attemptDates.size(), 0u);
    EXPECT_EQ(machine.destination().snapshotDates.size(), 0u);
}

TEST(Commands, describeTheDestinations) {
    const HostMachine machine;
    machine.setUp();
    const TMDestination destination = machine.destination();

    const auto text = machine.run({"destinationinfo"}).output;
    const auto list = machine.run({"destinationinfo", "-X"}).output;

    EXPECT_THAT(text, HasSubstr("Name          : Disk\nKind          : Local\nMount Point   : " +
                                (machine.root() / "Volumes/Disk").string() +
                                "\nID            : " + destination.id));
    for (const std::string& part :
         {destination.id, (machine.root() / "Volumes/Disk").string(), std::string("Local")})
        EXPECT_THAT(list, HasSubstr("<string>" + part + "</string>"));
    EXPECT_THAT(list, HasSubstr("<key>LastDestination</key>\n\t\t\t<integer>1</integer>"));
}

TEST(Commands, markAndReportExclusions) {
    const HostMachine machine;
    const std::string item = machine.folder().write("source/with blanks/item", "x").parent_path();
    const std::string inside = item + "/item";
    const std::string skipped = machine.folder().write("source/skipped", "x");
    machine.setUp();
    constexpr auto attribute = "com.apple.metadata:com_apple_backup_excludeItem";

    EXPECT_EQ(machine.run({"addexclusion", item}).status, 0);
    EXPECT_EQ(machine.run({"addexclusion", "-p", skipped}).status, 0);
    EXPECT_TRUE(hasExtendedAttribute(item, attribute));
    EXPECT_EQ(machine.run({"isexcluded", item, inside, skipped, machine.source(), "/no/such"}).output,
              "[Excluded]    " + item + "\n[Excluded]    " + inside + "\n[Excluded]    " + skipped +
                  "\n[Included]    " + machine.source().string() + "\n[Unknown]    /no/such\n");

    EXPECT_EQ(machine.run({"removeexclusion", item}).status, 0);
    EXPECT_EQ(machine.run({"removeexclusion", "-p", skipped}).status, 0);
    EXPECT_FALSE(hasExtendedAttribute(item, attribute));
    EXPECT_EQ(machine.run({"isexcluded", inside, skipped}).output,
              "[Included]    " + inside + "\n[Included]    " + skipped + "\n");

    const auto failure = machine.run({"addexclusion", "/no/such"});
    EXPECT_EQ(failure.status, 1);
    EXPECT_EQ(failure.errors, "/no/such: Error (-43) while attempting to change exclusion setting.\n");
}

TEST(CompareCommand, printsAListThatIsReadBackAsItWas) {
    const HostMachine machine;
    machine.folder().write("source/Tom & <Jerry>", "1");
    machine.folder().write("source/tab\tand\nline", "1");
    machine.folder().write("source/gone", "12345");
    machine.folder().write("source/bad\xff"
                           "bytes\x01",
                           "1");
    machine.setUp();
    machine.backUp();
    fs::remove(machine.source() / "gone");
    for (const char* name : {"Tom & <Jerry>", "tab\tand\nline",
                             "bad\xff"
                             "bytes\x01",
                             "new\rfile"})
        machine.folder().write("source/" + std::string(name), "123");
    machine.backUp();
    const auto backups = machine.backups();
    ASSERT_EQ(backups.size(), 2u);

    const auto output = machine.run({"compare", "-X", "-s", backups[0], backups[1]}).output;
    const auto result = TMUtilCompare::decode(output, backups, SharedText("id"));

    std::set<std::string> rows;
    for (const ChangeRecord& change : result.changes)
        rows.insert(std::string(rawValue(change.kind)) + " " +
                    fs::path(std::string(change.path)).filename().string() + " " +
                    std::to_string(change.sizeDelta.value_or(-1)));
    EXPECT_THAT(rows, testing::UnorderedElementsAre("modified Tom & <Jerry> 2", "modified tab\tand\nline 2",
                                                    "modified bad\uFFFD"
                                                    "bytes\uFFFD 2",
                                                    "added new\rfile 3", "removed gone -5"));
    EXPECT_EQ(result.addedSize, 3);
    EXPECT_EQ(result.changedSize, 9);
    EXPECT_EQ(result.removedSize, 5);
}

TEST(CompareCommand, printsLinesForPeople) {
    const HostMachine machine;
    machine.folder().write("older/a", "1");
    machine.folder().write("newer/a", std::string(2048, 'x'));
    machine.folder().write("newer/b", "");
    machine.run({"arrange", "--permission", "granted"});
    const std::string newer = machine.folder() / "newer";

    const auto output = machine.run({"compare", "-s", machine.folder() / "older", newer}).output;

    EXPECT_EQ(output, "!     2.0K  " + newer +
                          "/a (size)\n"
                          "+       0B  " +
                          newer +
                          "/b\n"
                          "-------------------------------------\n"
                          "Added:             0B\nRemoved:           0B\nChanged:         2.0K\n");
}

TEST(CompareCommand, comparesBackupsWithTheComputer) {
    const HostMachine machine;
    machine.folder().write("source/kept", "1");
    machine.folder().write("source/marked/file", "1");
    machine.setUp();
    machine.backUp();
    const std::string backup = machine.backups().at(0);
    machine.run({"addexclusion", machine.source() / "marked"});
    machine.folder().write("source/new", "12");
    const auto paths = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"compare", "-X", "-s"});
        std::vector<std::string> result;
        for (const auto& change :
             TMUtilCompare::decode(machine.run(arguments).output, {}, SharedText("id")).changes)
            result.push_back(std::string(rawValue(change.kind)) + " " + std::string(change.path));
        return result;
    };
    const std::string added = "added " + (machine.source() / "new").string();

    EXPECT_THAT(paths({}), ElementsAre(added));
    EXPECT_THAT(paths({backup}), ElementsAre(added));
    EXPECT_THAT(paths({machine.inBackup(backup)}), ElementsAre(added));
    EXPECT_THAT(paths({"-D", "1", backup}), ElementsAre("modified /"));
    EXPECT_THAT(paths({machine.inBackup(backup), machine.source()}), ElementsAre(added));
    EXPECT_THAT(paths({"-E", machine.inBackup(backup), machine.source()}), ElementsAre(added));
    machine.folder().write("source/marked/another", "1");
    EXPECT_THAT(paths({backup}), ElementsAre(added));
    EXPECT_THAT(paths({"-E", backup}),
                ElementsAre("added " + (machine.source() / "marked/another").string(), added));
}

TEST(CompareCommand, takesWhatOnlyOneBackupHoldsAsAddedOrRemoved) {
    const HostMachine machine;
    machine.folder().write("source/kept", "1");
    machine.setUp();
    machine.backUp();
    machine.folder().write("source/album/photo", "123");
    machine.backUp();
    const auto backups = machine.backups();
    const std::string older = machine.inBackup(backups.at(0)) / "album";
    const std::string newer = machine.inBackup(backups.at(1)) / "album";

    const auto addition = machine.run({"compare", "-X", older, newer});
    const auto removal = machine.run({"compare", "-X", newer, older});
    const auto neither = machine.run({"compare", "-X", older + "x", newer + "x"});
    const auto outside = machine.run({"compare", "-X", "/no/such", newer});

    EXPECT_EQ(TMUtilCompare::decode(addition.output, {}, SharedText("id")).addedSize, 3);
    EXPECT_EQ(TMUtilCompare::decode(removal.output, {}, SharedText("id")).removedSize, 3);
    EXPECT_EQ(neither.status, 1);
    EXPECT_EQ(outside.status, 1);
    EXPECT_EQ(outside.errors, "tmutil: /no/such: No such file or directory\n");
}

TEST(CompareCommand, findsOperandsUnderTheRootAndNamesThemAsGiven) {
    const SampleMachine& machine = SampleMachine::shared();
    const auto withoutRoot = [&](const std::string& path) {
        return path.substr(machine.root().string().size());
    };
    const std::string older = withoutRoot(machine.backups().front());
    const std::string newer = withoutRoot(machine.backups().back());

    const auto result = runTool(machine.tool(), {"compare", "-X", older, newer});

    EXPECT_EQ(result.status, 0) << result.errors;
    const auto changes = TMUtilCompare::decode(result.output, {}, SharedText("id")).changes;
    EXPECT_GT(changes.size(), 5u);
    for (const ChangeRecord& change : changes)
        EXPECT_THAT(std::string(change.path),
                    testing::AnyOf(testing::StartsWith(older), testing::StartsWith(newer)));
}

} // namespace tallyglass::test
