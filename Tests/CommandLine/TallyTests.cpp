#include "Tests/CommandLine/TallyTest.h"
#include "Tests/Support/Sanitizers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <thread>

namespace tallyglass::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

bool isOneLine(const std::string& text) {
    return std::ranges::count(text, '\n') == 1 && text.ends_with('\n');
}

TEST_F(TallyTest, saysWhatIsWrongWithTheArguments) {
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{},
                                                  {"frobnicate"},
                                                  {"export", "one"},
                                                  {"compare", "a", "b", "--depth", "-1"},
                                                  {"compare", "a", "b", "--properties", "slow"},
                                                  {"compare", "a", "b", "--kinds", "added,lost"},
                                                  {"compare", "a", "b", "--depth", "1", "--no-limit"},
                                                  {"status", "--limit", "3"}}) {
        const auto run = tally(wrong);
        EXPECT_EQ(run.exitCode, 2) << testing::PrintToString(wrong);
        EXPECT_TRUE(isOneLine(run.err)) << run.err;
        EXPECT_THAT(run.out, IsEmpty());
    }
}

TEST_F(TallyTest, explainsItselfAndItsExitCodes) {
    const auto help = tally({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* word : {"status",
                             "health",
                             "backfill",
                             "settings",
                             "backups",
                             "manifest",
                             "compare",
                             "comparisons",
                             "search",
                             "rollups",
                             "history-of-changes",
                             "map",
                             "explain",
                             "treemap",
                             "export-changes",
                             "trace",
                             "export",
                             "exclusions",
                             "exclude",
                             "include",
                             "diagnostics",
                             "benchmark",
                             "plist",
                             "--root",
                             "--json",
                             "130",
                             "Full Disk Access"})
        EXPECT_THAT(help.out, HasSubstr(word));
    EXPECT_THAT(tally({"compare", "--help"}).out, HasSubstr("--no-limit"));
}

TEST_F(TallyTest, tellsStatusAndSettings) {
    const auto status = onMachine({"status", "--json"}).json();
    EXPECT_EQ(status.at("isRunning"), false);
    EXPECT_EQ(status.at("percent"), nullptr);
    EXPECT_EQ(status.at("access"), "granted");
    EXPECT_EQ(status.size(), 12U);
    EXPECT_THAT(onMachine({"status"}).out, StartsWith("Idle\n"));

    const auto destination = onMachine({"--json", "settings"}).json().at("destinations").at(0);
    EXPECT_EQ(destination.at("totalBytes"), destination.at("bytesUsed").get<std::int64_t>() +
                                                destination.at("bytesAvailable").get<std::int64_t>());
    EXPECT_EQ(destination.at("latestSnapshot"), destination.at("snapshotDates").back());
    EXPECT_EQ(destination.at("kind"), "local");
    EXPECT_THAT(destination.at("latestSnapshot"), testing::Truly([](const nlohmann::json& date) {
                    return date.get<std::string>().size() == 24 && date.get<std::string>().ends_with("Z");
                }));
}

TEST_F(TallyWithScriptTest, judgesTheHealthOfEachDestination) {
    folder().write("root/Library/Preferences/com.apple.TimeMachine.plist", R"(<plist><dict>
        <key>Destinations</key><array>
        <dict><key>DestinationID</key><string>A</string><key>LastKnownVolumeName</key><string>Full</string>
        <key>BytesUsed</key><integer>96</integer><key>BytesAvailable</key><integer>4</integer>
        <key>SnapshotDates</key><array>
        <date>2026-01-01T00:00:00Z</date><date>2026-01-01T01:00:00Z</date><date>2026-01-01T02:00:00Z</date>
        <date>2026-01-01T03:00:00Z</date><date>2026-01-01T09:00:00Z</date></array>
        <key>AttemptDates</key><array><date>2026-01-01T05:00:00Z</date></array>
        <key>RESULT</key><integer>1009</integer></dict>
        <dict><key>DestinationID</key><string>B</string><key>LastKnownVolumeName</key><string>New</string></dict>
        </array></dict></plist>)");
    tmutilDoes("echo 'Backup session status: { Running = 0; }'");

    const auto health = tally({"--root", root(), "health", "--json"}).json();
    ASSERT_EQ(health.size(), 2U);
    EXPECT_EQ(health[0].at("destination"), "Full");
    EXPECT_EQ(health[0].at("level"), "critical");
    EXPECT_EQ(health[0].at("summary"), "Destination almost full");
    EXPECT_EQ(health[0].at("suspectedFailedAttempts").size(), 1U);
    EXPECT_EQ(health[0].at("gaps").at(0).at("duration"), 21600);
    EXPECT_EQ(health[0].at("medianInterval"), 3600);
    EXPECT_EQ(health[0].at("lastBackupWasDeferred"), true);
    EXPECT_EQ(health[1].at("level"), "healthy");
    EXPECT_EQ(health[1].at("medianInterval"), nullptr);

    const auto text = tally({"--root", root(), "health"}).out;
    EXPECT_THAT(text, StartsWith("Full: Destination almost full\n  Level: critical\n"));
    EXPECT_THAT(text, HasSubstr("  Last result: 1009, The backup will continue when connected"));
    EXPECT_THAT(text, HasSubstr("\n  Longer than usual: 6h · "));
    EXPECT_THAT(
        text,
        HasSubstr("\nNew: Backups healthy\n  Level: healthy\n  Last backup Never, typically every —\n"));
    const auto status = tally({"--root", root(), "status"}).out;
    EXPECT_THAT(status, HasSubstr("\nFull: Destination almost full\nNew: Backups healthy\n"));
    std::filesystem::remove(folder() / "root/Library/Preferences/com.apple.TimeMachine.plist");
    EXPECT_EQ(tally({"--root", root(), "health"}).out, "This computer has no backup destination.\n");
}

TEST_F(TallyTest, listsBackupsAndTheirManifestOldestFirst) {
    const auto backups = onMachine({"backups", "--json"}).json();
    const auto manifest = onMachine({"manifest", "--json"}).json();

    ASSERT_EQ(backups.size(), SampleMachine::backupCount);
    EXPECT_EQ(manifest.size(), backups.size());
    EXPECT_TRUE(std::ranges::is_sorted(backups, {}, [](const auto& backup) { return backup.at("date"); }));
    EXPECT_EQ(manifest.front().at("isInitialBackup"), true);
    EXPECT_EQ(manifest.back().at("isInitialBackup"), false);
    EXPECT_GT(manifest.front().at("duration"), 0.0);
    EXPECT_TRUE(std::filesystem::is_directory(backups.back().at("path").get<std::string>()));
}

TEST_F(TallyTest, keepsAComparisonInTheCache) {
    const auto [from, to] = latestPair();

    const auto first = onMachine({"compare", from, to, "--no-limit", "--json"}).json();
    const auto second = onMachine({"compare", from, to, "--no-limit", "--json"}).json();
    const auto forced = onMachine({"compare", from, to, "--no-limit", "--no-cache", "--json"}).json();

    EXPECT_EQ(first.at("cached"), false);
    EXPECT_EQ(second.at("cached"), true);
    EXPECT_EQ(forced.at("cached"), false);
    EXPECT_EQ(first.at("comparison"), second.at("comparison"));
    EXPECT_EQ(first.at("changes"), second.at("changes"));
    EXPECT_EQ(first.at("comparison").at("id"), from + "|" + to + "|pst|dall|i");
    EXPECT_GT(first.at("changes").size(), 0U);
    EXPECT_TRUE(std::ranges::is_sorted(first.at("changes"), {},
                                       [](const auto& change) { return change.at("path"); }));
    EXPECT_THAT(onMachine({"compare", from, to, "--no-limit"}).out, HasSubstr("from the cache"));
}

TEST_F(TallyTest, narrowsWhatItShowsOfAComparison) {
    const auto [from, to] = latestPair();
    const auto shown = [&, from = from, to = to](std::vector<std::string> options) {
        options.insert(options.begin(), {"compare", from, to, "--no-limit", "--json"});
        return onMachine(options).json().at("changes");
    };
    const auto all = shown({});
    const auto added = shown({"--kinds", "added"});

    EXPECT_TRUE(std::ranges::all_of(added, [](const auto& change) { return change.at("kind") == "added"; }));
    EXPECT_EQ(added.size() + shown({"--kinds", "removed,modified"}).size(), all.size());
    EXPECT_EQ(shown({"--limit", "1"}).size(), 1U);
    const auto addedBySize = shown({"--kinds", "added", "--sort", "size"});
    EXPECT_THAT(addedBySize, testing::UnorderedElementsAreArray(added));
    EXPECT_TRUE(std::ranges::is_sorted(addedBySize, std::ranges::greater{}, [](const auto& change) {
        return change.at("size").is_null() ? 0 : change.at("size").template get<std::int64_t>();
    }));
    EXPECT_EQ(shown({"--search", all.front().at("path")}).front(), all.front());
    EXPECT_THAT(onMachine({"compare", from, to, "--depth", "1", "--properties", "default", "--ignore", "b",
                           "--ignore", "a", "--json"})
                    .json()
                    .at("comparison")
                    .at("id"),
                EndsWith("|p@gmstu|d1|ia,b"));
}

TEST_F(TallyTest, looksUpWhatTheCacheHolds) {
    const auto [from, to] = latestPair();
    const auto comparison = onMachine({"compare", from, to, "--no-limit", "--json"}).json();
    const auto change = comparison.at("changes").front();
    const std::string id = comparison.at("comparison").at("id");

    EXPECT_EQ(onMachine({"comparisons", "--json"}).json().at(0), comparison.at("comparison"));
    EXPECT_EQ(onMachine({"rollups", id, "--limit", "1", "--json"}).json().size(), 1U);
    const auto history = onMachine({"history-of-changes", change.at("path"), "--json"}).json();
    EXPECT_EQ(history.at(0).at("change"), change);
    EXPECT_EQ(history.at(0).at("comparison"), comparison.at("comparison"));
    const auto found = onMachine({"search", change.at("path"), "--json"}).json();
    EXPECT_NE(std::ranges::find(found, change), found.end());
    EXPECT_EQ(onMachine({"search", "...", "--json"}).json(), nlohmann::json::array());
}

TEST_F(TallyTest, givesAnOverviewThatUsesTheCacheTheSecondTime) {
    const auto first = onMachine({"overview"});
    const auto second = onMachine({"overview"});
    EXPECT_EQ(first.exitCode, 0) << first.err;
    EXPECT_THAT(first.out, testing::Not(HasSubstr("cache")));
    EXPECT_THAT(second.out, HasSubstr("cache"));

    const auto document = onMachine({"overview", "--json"}).json();
    EXPECT_LE(document.at("backups").size(), 10U);
    EXPECT_EQ(document.at("cached"), true);
    const std::string sentence = document.at("explanation").at("sentence");
    EXPECT_THAT(sentence, HasSubstr(" changed, "));
    EXPECT_THAT(second.out, HasSubstr(sentence + "\n"));
    const auto sizes = document.at("biggestChanges");
    EXPECT_TRUE(std::ranges::is_sorted(sizes, std::ranges::greater{}, [](const auto& change) {
        const auto& bytes = change.at("sizeDelta").is_null() ? change.at("size") : change.at("sizeDelta");
        return bytes.is_null() ? 0 : std::abs(bytes.template get<std::int64_t>());
    }));
}

TEST_F(TallyTest, printsPropertyListsFromFilesAndStandardInput) {
    const auto preferences =
        SampleMachine::shared().root() / "Library/Preferences/com.apple.TimeMachine.plist";
    EXPECT_TRUE(tally({"plist", preferences.string()}).json().at("Destinations").is_array());

    const auto piped = shell("printf '{ a = (1, <0f>); }' | \"$TALLY\" plist -");
    EXPECT_EQ(piped.json(), nlohmann::json::parse(R"({"a": ["1", {"data": "0f"}]})"));

    const auto broken = shell("printf '{ a = ' | \"$TALLY\" plist -");
    EXPECT_EQ(broken.exitCode, 1);
    EXPECT_TRUE(isOneLine(broken.err)) << broken.err;
    EXPECT_THAT(broken.out, IsEmpty());
}

TEST_F(TallyWithScriptTest, endsWithThreeWithoutFullDiskAccess) {
    tmutilDoes("echo 'tmutil: listbackups requires Full Disk Access privileges.' >&2; exit 80");
    const auto run = tally({"--root", root(), "backups", "--json"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.err, "tally: This requires Full Disk Access.\n");
    EXPECT_THAT(run.out, IsEmpty());
}

TEST_F(TallyWithScriptTest, tellsFailuresInOneLine) {
    tmutilDoes("printf 'first\\nsecond\\n' >&2; exit 70");
    const auto failed = tally({"--root", root(), "backups"});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(failed.err, "tally: first second\n");

    tmutilDoes("printf 'first\\000second' >&2; exit 70");
    EXPECT_EQ(tally({"--root", root(), "backups"}).err, "tally: first\uFFFDsecond\n");

    const auto missing = tally({"--root", (folder() / "nowhere").string(), "status"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_THAT(missing.err, StartsWith("tally: Could not run tmutil: "));

    const auto full = shell("\"$TALLY\" comparisons --json > /dev/full");
    EXPECT_EQ(full.exitCode, 1);

    folder().write("data/Tallyglass/cache.sqlite", "this is no database, whatever its name says about it");
    const auto noCache = tally({"comparisons"});
    EXPECT_EQ(noCache.exitCode, 1);
    EXPECT_TRUE(isOneLine(noCache.err)) << noCache.err;
}

TEST_F(TallyWithScriptTest, runsChildrenWhereTheirEndsWereIgnored) {
    tmutilDoes("echo '/Volumes/B/2026-01-01-000000.backup'");
    const auto run = shell("env --ignore-signal=CHLD \"$TALLY\" --root '" + root() + "' backups");
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, EndsWith("  2026-01-01-000000\n"));
}

TEST_F(TallyWithScriptTest, saysSoWhenDescriptorsRunOut) {
    if (isSanitized)
        GTEST_SKIP();
    tmutilDoes("echo '/Volumes/B/2026-01-01-000000.backup'");
    int failures = 0;
    for (const char* command : {"backups", "compare /a /b", "manifest"})
        for (int descriptors = 4; descriptors <= 14; ++descriptors) {
            const auto run = shell("ulimit -n " + std::to_string(descriptors) + "; exec \"$TALLY\" --root '" +
                                   root() + "' " + command);
            if (run.exitCode == 0)
                continue;
            ++failures;
            EXPECT_EQ(run.exitCode, 1) << command << " with " << descriptors;
            EXPECT_TRUE(isOneLine(run.err) && run.err.starts_with("tally: ")) << run.err;
        }
    EXPECT_GT(failures, 5);
}

/// A comparison that is interrupted while its child runs.
class TallyInterruptionTest : public TallyWithScriptTest {
protected:
    /// Sends the signals when the child has run `script` and begins to sleep. Returns the exit code of tally.
    int exitCode(const std::string& script, const std::vector<int>& signals,
                 const std::vector<std::string>& command = {"compare", "/a", "/b"}) {
        const auto pidFile = (folder() / "pid").string();
        std::filesystem::remove(pidFile);
        tmutilDoes(script + "; echo $$ > '" + pidFile + ".new'; mv '" + pidFile + ".new' '" + pidFile +
                   "'; exec sleep 600");
        std::vector<std::string> arguments{"--root", root()};
        arguments.insert(arguments.end(), command.begin(), command.end());
        const pid_t pid = start(arguments);
        while (!std::filesystem::exists(pidFile))
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        std::ifstream(pidFile) >> m_child;
        for (const int signal : signals)
            kill(pid, signal);
        int status = 0;
        EXPECT_EQ(waitpid(pid, &status, 0), pid);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    [[nodiscard]] bool childLivesOn() const { return m_child <= 0 || kill(m_child, 0) == 0; }
    void TearDown() override {
        if (m_child > 0)
            kill(m_child, SIGKILL);
    }
    void expectRecord() const {
        EXPECT_EQ(tally({"comparisons", "--json"}).json().at(0).at("errorMessage"), "Cancelled");
    }

private:
    pid_t m_child = 0;
};

TEST_F(TallyInterruptionTest, stopsTheChildAndRecordsTheCancellation) {
    EXPECT_EQ(exitCode(":", {SIGINT}), 130);
    EXPECT_FALSE(childLivesOn());
    expectRecord();
}

TEST_F(TallyInterruptionTest, endsTheChildrenOfDiagnosticsAndTheBenchmark) {
    EXPECT_EQ(exitCode(":", {SIGINT}, {"diagnostics", "--into", folder() / "dump"}), 130);
    EXPECT_FALSE(childLivesOn());
    EXPECT_EQ(exitCode("[ $1 = compare ] || exec printf '/1\n/2\n/3\n/4\n'", {SIGTERM}, {"benchmark"}), 130);
    EXPECT_FALSE(childLivesOn());
}

TEST_F(TallyInterruptionTest, killsAChildThatWontStopAtTheSecondSignal) {
    EXPECT_EQ(exitCode("trap '' TERM", {SIGINT, SIGTERM}), 130);
    EXPECT_FALSE(childLivesOn());
    expectRecord();
}

} // namespace
} // namespace tallyglass::test
