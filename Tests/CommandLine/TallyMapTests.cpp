// The map of a comparison, its explanation, its export and the layout of a treemap from a terminal.

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "Tests/CommandLine/TallyTest.h"

#include <gmock/gmock.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

namespace tallyglass::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// A cache with one finished comparison.
class TallyMapTest : public testing::Test, protected TallySession {
protected:
    TallyMapTest() { fs::create_directory(folder() / "out"); }

    void store(const std::vector<ChangeRecord>& rows, const std::optional<std::string>& error = {}) {
        BackupStore cache(TallyglassDatabase::defaultURL());
        const Comparison begun("/V/2026-01-01-000000.backup", "/V/2026-01-02-000000.backup", {}, {}, 0, "k",
                               dateSince1970(1e9));
        cache.beginComparison(begun);
        std::vector<ChangeRecord> own = rows;
        for (ChangeRecord& row : own)
            row.comparisonID = begun.id;
        cache.appendChanges(own, begun.id);
        cache.finishComparison(begun.id, error);
        id = begun.id;
    }
    void storeSome() {
        store({row("/Users/anna/film.mov", 8'000'000), row("/Users/anna/b.txt", 1'000'000),
               row("/Users/anna/empty", 0), row("/Library/a.log", -1'000'000)});
    }
    static ChangeRecord row(std::string path, std::int64_t delta) {
        return {std::nullopt, "",           std::move(path), ChangeKind::modified,
                false,        std::nullopt, delta,           std::nullopt};
    }
    static std::vector<std::string> paths(const nlohmann::json& items) {
        std::vector<std::string> result;
        for (const auto& item : items)
            result.push_back(item.at("path"));
        return result;
    }

    std::string id;
};

TEST_F(TallyMapTest, showsTheItemsOfAFolderLargestFirst) {
    storeSome();
    const auto root = tally({"map", id, "--json"}).json();
    EXPECT_EQ(root.at("comparison").at("id"), id);
    EXPECT_EQ(root.at("folder"), (nlohmann::json{{"path", "/"},
                                                 {"name", "/"},
                                                 {"magnitude", 10'000'000},
                                                 {"netBytes", 8'000'000},
                                                 {"changeCount", 4},
                                                 {"isFile", false}}));
    EXPECT_THAT(paths(root.at("children")), ElementsAre("/Users", "/Library"));
    EXPECT_THAT(paths(root.at("breadcrumb")), ElementsAre("/"));

    for (const auto* path : {"/Users/anna", "Users/anna/", "/Users/anna//"}) {
        const auto folder = tally({"map", id, "--path", path, "--limit", "1", "--json"}).json();
        EXPECT_THAT(paths(folder.at("children")), ElementsAre("/Users/anna/film.mov"));
        EXPECT_EQ(folder.at("unsizedChildCount"), 1);
        EXPECT_THAT(paths(folder.at("breadcrumb")), ElementsAre("/", "/Users", "/Users/anna"));
    }
    const auto text =
        tally({"map", "/V/2026-01-01-000000.backup", "/V/2026-01-02-000000.backup", "--limit", "1"});
    EXPECT_EQ(text.out, "2026-01-01-000000 → 2026-01-02-000000\n"
                        "/: 10 MB in 4 changes, +8 MB in all\n"
                        "      9 MB  Users/: 9 MB in 3 changes, +9 MB in all\n"
                        "and 1 more\n");
}

TEST_F(TallyMapTest, explainsTheChange) {
    storeSome();
    const auto sentence =
        "10 MB changed, all of it in three places: 8 MB in /Users/anna/film.mov (80 %), 1 MB in "
        "/Users/anna/b.txt (10 %) and 1 MB in /Library/a.log (10 %).";
    const auto explanation = tally({"explain", id, "--json"}).json().at("explanation");
    EXPECT_EQ(explanation.at("sentence"), sentence);
    EXPECT_EQ(explanation.at("places").at(0).at("path"), "/Users/anna/film.mov");
    EXPECT_EQ(explanation.at("places").at(0).at("share"), 0.8);
    EXPECT_THAT(tally({"explain", id}).out, HasSubstr(std::string(sentence) + "\n"));
}

TEST_F(TallyMapTest, failsInWordsForWhatItCannotShow) {
    storeSome();
    const auto error = [&](const std::vector<std::string>& command) {
        const auto run = tally(command);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.out, "");
        return run.err;
    };
    EXPECT_EQ(error({"map", id, "--path", "/nowhere"}),
              "tally: Nothing changed in /nowhere from 2026-01-01-000000 → 2026-01-02-000000.\n");
    EXPECT_THAT(error({"explain", "/V/x", "/V/y"}), StartsWith("tally: There is no comparison "));
    EXPECT_THAT(error({"export-changes", id, folder() / "missing/file"}),
                HasSubstr("missing: No such file or directory"));

    store({row("/a", 1)}, "Cancelled");
    for (const auto& command :
         {std::vector<std::string>{"map", id}, {"explain", id}, {"export-changes", id, "file"}})
        EXPECT_EQ(error(command),
                  "tally: The comparison 2026-01-01-000000 → 2026-01-02-000000 hasn't finished: "
                  "Cancelled\n");
}

TEST_F(TallyMapTest, exportsAllChanges) {
    storeSome();
    const auto file = folder() / "out/changes";
    const auto run =
        tally({"export-changes", id, file, "--format", "json", "--sort", "name", "--json"}).json();
    EXPECT_EQ(run.at("rowCount"), 4);
    const auto document = nlohmann::json::parse(readFile(file).view());
    EXPECT_THAT(paths(document), ElementsAre("/Library/a.log", "/Users/anna/b.txt", "/Users/anna/empty",
                                             "/Users/anna/film.mov"));

    EXPECT_EQ(tally({"export-changes", id, file}).out, "Saved 4 changes in " + file.string() + "\n");
    EXPECT_THAT(readFile(file).view(), StartsWith("path,name,kind,"));
    EXPECT_EQ(tally({"export-changes", id, file, "--format", "xml"}).exitCode, 2);
}

TEST_F(TallyMapTest, leavesNothingOfAnExportThatIsInterrupted) {
    std::vector<ChangeRecord> rows;
    for (int index = 0; index < 30'000; ++index)
        rows.push_back(row("/" + std::to_string(index), index));
    store(rows);
    for (int round = 0; round < 5; ++round) {
        const auto file = folder().write("out/file", "old");
        const pid_t pid = start({"export-changes", id, file, "--sort", round % 2 ? "size" : "path"});
        const auto hasBegun = [&] {
            return folderNames(folder() / "out").size() > 1 || readFile(file).view() != "old";
        };
        while (!hasBegun())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        kill(pid, SIGINT);
        int status = 0;
        ASSERT_EQ(waitpid(pid, &status, 0), pid);

        EXPECT_THAT(folderNames(folder() / "out"), ElementsAre("file"));
        const bool isComplete = WEXITSTATUS(status) == 0; // it may be too late to stop
        EXPECT_TRUE(isComplete || WEXITSTATUS(status) == 130) << status;
        const auto lines = std::ranges::count(readFile(file).view(), '\n');
        EXPECT_EQ(lines, isComplete ? std::ssize(rows) + 1 : 0);
    }
}

TEST_F(TallyMapTest, laysOutATreemap) {
    const auto layout = [&](const std::string& items, const std::string& options = "--json") {
        return shell("echo '" + items + "' | \"$TALLY\" treemap --width 20 --height 10 " + options);
    };
    const auto tiles =
        layout(R"([{"id": "a", "label": "A", "value": 1}, {"id": "b", "label": "B", "value": 1.0},
                                  {"id": "c", "label": "", "value": null}, {"id": "d", "label": "", "value": -1}])")
            .json();
    ASSERT_EQ(tiles.size(), 2U);
    EXPECT_EQ(tiles.at(1),
              (nlohmann::json{{"id", "b"},
                              {"label", "B"},
                              {"value", 1.0},
                              {"rect", {{"x", 10.0}, {"y", 0.0}, {"width", 10.0}, {"height", 10.0}}}}));
    EXPECT_EQ(layout("[]").json(), nlohmann::json::array());
    EXPECT_EQ(layout(R"([{"id": "a", "label": "A", "value": 1}])", "").out,
              "      0.00       0.00      20.00      10.00  A\n");
    for (const auto* wrong : {"{}", "[1]", "[{}]", R"([{"id": "a", "label": "A", "value": "1"}])", "", "["}) {
        const auto run = layout(wrong);
        EXPECT_EQ(run.exitCode, 1) << wrong;
        EXPECT_THAT(run.err, StartsWith("tally: The items ")) << wrong;
    }
}

} // namespace
} // namespace tallyglass::test
