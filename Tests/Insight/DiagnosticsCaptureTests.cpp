#include "TallyglassKit/Insight/DiagnosticsCapture.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "Tests/Insight/ChildTool.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/Variable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <map>
#include <set>

using namespace std::chrono_literals;

namespace tallyglass::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Arguments = TMUtilRunner::Arguments;
using Step = DiagnosticsDump::Step;

constexpr auto older = "/Volumes/B/2026-01-01-000000.backup";
constexpr auto newer = "/Volumes/B/2026-01-02-000000.backup";

class DiagnosticsCaptureTest : public testing::Test {
protected:
    /// The machine answers at once, except for the commands that are run by a child.
    [[nodiscard]] TMUtilRunner runner() const {
        return TMUtilRunner([this](const Arguments& command, auto killAfter, const auto& onBytes,
                                   const std::stop_token& stop) {
            const auto steps = byChild.find(command.front());
            if (steps == byChild.end())
                return TMUtilResult{.exitCode = 0, .stdout = answers.at(command.front()), .stderr = {}};
            return childTool([&](const auto&) { return steps->second; }, onChildOutput)
                .runRaw(command, killAfter, onBytes, stop);
        });
    }
    DiagnosticsDump capture(const fs::path& into, std::stop_token stop = {},
                            std::chrono::milliseconds killTime = 20s) const {
        return captureDiagnostics(runner(), into, 3, {}, stop, killTime);
    }
    DiagnosticsDump capture() const { return capture(dump); }
    [[nodiscard]] int failure(const fs::path& into) const {
        try {
            static_cast<void>(capture(into));
        } catch (const FileError& error) {
            return error.code();
        }
        return 0;
    }
    [[nodiscard]] std::string contents(const std::string& name) const {
        return std::string(readFile(dump / name).view());
    }
    [[nodiscard]] bool exists(const std::string& name) const {
        return fs::exists(fs::symlink_status(dump / name));
    }

    ResourceGuard guard;
    TemporaryFolder folder;
    fs::path dump = folder / "Desktop/Tallyglass Diagnostics";
    fs::path manifest = folder.write("machine/backup_manifest.plist", "<plist><array/></plist>");
    std::map<std::string, std::string> answers{
        {"destinationinfo", "<plist/>"},
        {"status", "idle"},
        {"machinedirectory", (folder / "machine").string() + "\n"},
        {"listbackups", std::string(older) + "\n" + newer + "\n"},
        {"latestbackup", newer},
        {"compare", "<plist/>"},
    };
    std::map<std::string, Arguments> byChild; ///< the steps of the child by verb
    TMUtilRunner::OnBytes onChildOutput;
};

TEST_F(DiagnosticsCaptureTest, savesWhatEachProbeSays) {
    std::vector<std::string> told;
    const auto result =
        captureDiagnostics(runner(), dump, 3, [&](const auto& label) { told.push_back(label); });

    EXPECT_EQ(result.directory, dump);
    EXPECT_EQ(result.summary(), "8 of 8 probes succeeded");
    std::vector<std::string> labels;
    std::set<std::string> ids;
    for (const Step& step : result.steps) {
        labels.push_back(step.label);
        ids.insert(step.id);
    }
    EXPECT_EQ(told, labels);
    EXPECT_EQ(ids.size(), labels.size());
    EXPECT_EQ(result.steps[1].arguments, Arguments{"status"});
    EXPECT_EQ(result.steps[5].arguments, (Arguments{"compare", "-X", "-D", "3", older, newer}));
    EXPECT_EQ(result.steps[6].arguments, (Arguments{"compare", "-X", "-D", "1", newer}));
    EXPECT_EQ(contents("status.txt"), "idle");
    EXPECT_EQ(contents("backup_manifest.plist"), "<plist><array/></plist>");
    EXPECT_EQ(folderNames(dump),
              (std::vector<std::string>{"backup_manifest.plist", "compare-pair.plist", "compare-single.plist",
                                        "destinationinfo.plist", "latestbackup.txt", "listbackups.txt",
                                        "machinedirectory.txt", "manifest.txt", "status.txt"}));
    const auto text = contents("manifest.txt");
    EXPECT_THAT(text, StartsWith("Tallyglass diagnostics\n8 of 8 probes succeeded\n\n"
                                 "OK    Destination info\n      tmutil destinationinfo -X\n      8 bytes\n"
                                 "OK    Engine status\n      tmutil status\n      4 bytes\n"));
    EXPECT_THAT(text, EndsWith("OK    Backup manifest\n      tmutil " + manifest.string() + "\n      " +
                               manifest.string() + " exists=true posixReadable=true → parsed 0 entries\n"));
}

TEST_F(DiagnosticsCaptureTest, goesOnAfterProbesThatFail) {
    byChild = {{"destinationinfo", {"--garbage", "--flood-out", "3000000"}},
               {"status", {"--out", "busy", "--err", "denied", "--exit", "1"}},
               {"latestbackup", {"--flood-err", "2000000", "--die", "9"}}};

    const auto result = capture();

    EXPECT_EQ(result.summary(), "6 of 8 probes succeeded");
    EXPECT_EQ(result.steps[0].byteCount, 3'000'008);
    EXPECT_EQ(fs::file_size(dump / "destinationinfo.plist"), 3'000'008U);
    EXPECT_EQ(result.steps[1].exitCode, 1);
    EXPECT_EQ(result.steps[1].error, std::nullopt);
    EXPECT_EQ(contents("status.txt"), "busy");
    EXPECT_EQ(contents("status.txt.stderr.txt"), "denied");
    EXPECT_EQ(result.steps[4].exitCode, 9);
    EXPECT_EQ(fs::file_size(dump / "latestbackup.txt.stderr.txt"), 2'000'000U);
    EXPECT_THAT(contents("manifest.txt"),
                HasSubstr("FAIL  Engine status\n      tmutil status\n      4 bytes\n"));

    byChild.clear();
    EXPECT_EQ(capture().summary(), "8 of 8 probes succeeded");
    EXPECT_EQ(contents("status.txt"), "idle");
    EXPECT_FALSE(exists("status.txt.stderr.txt")); // of the first capture
}

TEST_F(DiagnosticsCaptureTest, endsProbesThatHang) {
    EXPECT_EQ(capture().summary(), "8 of 8 probes succeeded");
    byChild = {{"status", {"--pause"}}, {"latestbackup", {"--ignore-term", "--flood-for-ever"}}};

    const auto result = capture(dump, {}, 200ms);

    EXPECT_EQ(result.summary(), "6 of 8 probes succeeded");
    for (const std::size_t hung : {1U, 4U}) {
        EXPECT_EQ(result.steps[hung].error, "Timed out after 0.2 s.");
        EXPECT_EQ(result.steps[hung].exitCode, std::nullopt);
    }
    EXPECT_FALSE(exists("status.txt"));
    EXPECT_TRUE(exists("compare-pair.plist"));

    byChild = {{"listbackups", {"--pause"}}, {"machinedirectory", {"--pause"}}};
    const auto silent = capture(dump, {}, 200ms);
    EXPECT_THAT(silent.steps[5].error.value(), StartsWith("No backups could be listed"));
    EXPECT_EQ(silent.steps[6].error, "machinedirectory returned nothing.");
    EXPECT_FALSE(exists("compare-pair.plist"));
    EXPECT_FALSE(exists("backup_manifest.plist"));
}

TEST_F(DiagnosticsCaptureTest, isCancelledWithItsRunningProbe) {
    for (const char* verb : {"status", "listbackups", "machinedirectory"}) {
        std::stop_source source;
        byChild = {{verb, {"--out", "x", "--pause"}}};
        onChildOutput = [&](std::int64_t) { source.request_stop(); };

        EXPECT_THROW(capture(dump, source.get_token()), Cancelled) << verb;
    }
    EXPECT_FALSE(exists("manifest.txt"));
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_THROW(capture(dump, stopped.get_token()), Cancelled);
}

TEST_F(DiagnosticsCaptureTest, saysWhyNothingIsCompared) {
    answers["listbackups"] = std::string(newer) + "\n";
    const auto one = capture();
    EXPECT_EQ(one.steps.size(), 7U);
    EXPECT_EQ(one.steps[5].label, "Compare backups");
    EXPECT_EQ(one.steps[5].error, "Only 1 backup found; two are needed to compare.");
    EXPECT_THAT(one.steps[5].arguments, testing::IsEmpty());

    const auto none = captureDiagnostics(TMUtilRunner("/nowhere"), dump, 3);
    EXPECT_EQ(none.summary(), "0 of 7 probes succeeded");
    EXPECT_EQ(none.steps[0].error, "Could not run tmutil: No such file or directory");
    EXPECT_EQ(none.steps[5].error, "No backups could be listed — Full Disk Access is probably not granted.");
}

TEST_F(DiagnosticsCaptureTest, tellsWhatBecameOfTheManifest) {
    const auto report = [&] { return capture().steps.back(); };
    folder.write("machine/backup_manifest.plist", "no property list");
    const auto corrupt = report();
    EXPECT_EQ(corrupt.error, manifest.string() + " exists=true posixReadable=true");
    EXPECT_EQ(corrupt.exitCode, 0);
    EXPECT_FALSE(corrupt.succeeded());
    EXPECT_EQ(contents("backup_manifest.plist"), "no property list");

    fs::remove(manifest);
    const auto missing = report();
    EXPECT_THAT(missing.error.value(),
                AllOf(StartsWith(manifest.string() + " exists=false posixReadable=false → read failed: "),
                      EndsWith("No such file or directory")));
    EXPECT_EQ(missing.exitCode, std::nullopt);
    EXPECT_FALSE(exists("backup_manifest.plist"));
}

TEST_F(DiagnosticsCaptureTest, followsNoLinkAndReplacesNoFolder) {
    const auto outside = folder.write("outside", "mine");
    fs::create_directories(dump / "latestbackup.txt/inside");
    for (const char* link : {"status.txt", "status.txt.stderr.txt", "manifest.txt"})
        fs::create_symlink(outside, dump / link);

    const auto result = capture();

    EXPECT_EQ(readFile(outside).view(), "mine");
    EXPECT_EQ(contents("status.txt"), "idle");
    EXPECT_FALSE(exists("status.txt.stderr.txt"));
    EXPECT_THAT(result.steps[4].error.value(), EndsWith("Is a directory"));
    EXPECT_TRUE(exists("latestbackup.txt/inside"));
    EXPECT_THAT(contents("manifest.txt"), StartsWith("Tallyglass diagnostics\n7 of 8"));
}

TEST_F(DiagnosticsCaptureTest, failsWhereItMustNotWrite) {
    fs::create_directories(dump);
    fs::create_directory_symlink(dump, folder / "link");
    EXPECT_EQ(failure(folder / "link"), ELOOP);
    EXPECT_EQ(failure(folder / "link/"), ELOOP);
    EXPECT_EQ(failure(folder.write("file", "") / "Tallyglass Diagnostics"), ENOTDIR);
    EXPECT_EQ(failure(folder / "2026-01-01-000000.backup/2026-01-01-000000.backup/Data"), EROFS);
    fs::create_directory(dump / "manifest.txt");
    EXPECT_EQ(failure(dump), EISDIR);
    fs::remove(dump / "manifest.txt");
    EXPECT_EQ(failure(folder / "link/../new/"), 0);
    EXPECT_TRUE(fs::exists(folder / "new/manifest.txt") ||
                fs::exists(dump.parent_path() / "new/manifest.txt"));
}

/// Files can't grow beyond a size while an object of this class lives, as on a full disk.
class SmallFiles {
public:
    explicit SmallFiles(rlim_t size) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{size, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFiles() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;

private:
    rlimit m_before{};
    decltype(SIG_DFL) m_handler = std::signal(SIGXFSZ, SIG_IGN);
};

TEST_F(DiagnosticsCaptureTest, recordsAnOutputThatDoesNotFitOnTheDisk) {
    static_cast<void>(capture());
    answers["status"] = std::string(200'000, 'x');
    {
        const SmallFiles full(100'000);
        const auto result = capture();
        EXPECT_EQ(result.summary(), "7 of 8 probes succeeded");
        EXPECT_EQ(result.steps[1].exitCode, 0);
        EXPECT_THAT(result.steps[1].error.value(), EndsWith("status.txt: File too large"));
    }
    EXPECT_FALSE(exists("status.txt"));
    EXPECT_EQ(folderNames(dump).size(), 8U); // and no beginning of it
    const SmallFiles full(50);
    EXPECT_EQ(failure(dump), EFBIG);
}

TEST_F(DiagnosticsCaptureTest, writesToTheDesktopUnlessToldOtherwise) {
    const Variable home("HOME", folder.path());
    const Variable configuration("XDG_CONFIG_HOME", folder / "nowhere");

    EXPECT_EQ(captureDiagnostics(runner(), std::nullopt, 3).directory, dump);
    EXPECT_EQ(fs::status(dump).permissions(), fs::perms::owner_all);
}

} // namespace
} // namespace tallyglass::test
