#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Comparison/ChangePages.h"
#include "TallyglassKit/Insight/ChangeExport.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "TallyglassKit/Platform/Text/UTF8.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace tallyglass::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

using Table = std::vector<std::vector<std::string>>;

/// Reads CSV by its grammar: cells in quotation marks may hold anything, others no comma, mark or line end.
Table parseCSV(std::string_view text) {
    Table table;
    while (!text.empty()) {
        std::vector<std::string> line;
        for (bool isLast = false; !isLast;) {
            std::string cell;
            if (text.starts_with('"')) {
                text.remove_prefix(1);
                while (!text.starts_with('"') || text.starts_with("\"\"")) {
                    text.remove_prefix(text.starts_with('"') ? 1 : 0);
                    cell += text.at(0);
                    text.remove_prefix(1);
                }
                text.remove_prefix(1);
            } else {
                cell = text.substr(0, text.find_first_of(",\r\n\""));
                text.remove_prefix(cell.size());
            }
            line.push_back(cell);
            isLast = text.starts_with("\r\n");
            if (!isLast && !text.starts_with(','))
                throw std::runtime_error("a cell doesn't end");
            text.remove_prefix(isLast ? 2 : 1);
        }
        table.push_back(line);
    }
    return table;
}

class ChangeExportTest : public testing::Test {
protected:
    void SetUp() override { fs::create_directory(folder / "out"); }

    Comparison run(std::vector<ChangeRecord> rows) {
        const Comparison begun("/a", "/b", {}, {}, 0, "k", dateSince1970(1e9));
        store.beginComparison(begun);
        for (ChangeRecord& row : rows)
            row.comparisonID = begun.id;
        store.appendChanges(rows, begun.id);
        store.finishComparison(begun.id, std::nullopt);
        return store.comparison(begun.id).value();
    }
    Comparison runOfManyRows() {
        std::vector<ChangeRecord> rows;
        for (std::int64_t index = 0; index < ChangePages::defaultPageSize + 1; ++index)
            rows.push_back({std::nullopt, "", "/" + std::to_string(index), ChangeKind::added, false, index,
                            std::nullopt, std::nullopt});
        return run(rows);
    }
    /// Exports as CSV in the order of paths over an existing file.
    void replace(const Comparison& comparison, const ChangeExport::OnProgress& progress = {},
                 const std::stop_token& stop = {}) {
        ChangeExport::write(store, comparison, {}, ChangeOrder::path, ExportFormat::csv, target, progress,
                            stop);
    }
    void expectUntouched() const {
        EXPECT_EQ(readFile(target).view(), "old");
        EXPECT_THAT(folderNames(folder / "out"), ElementsAre("file"));
    }

    TemporaryFolder folder;
    BackupStore store{folder / "cache.sqlite"};
    fs::path target = folder.write("out/file", "old");
};

TEST_F(ChangeExportTest, givesBackWhatWasStoredInBothFormats) {
    const std::vector<std::string> names{
        "plain", "comma, \"quote\"", "line\r\nend", "'", "=1+1", "@a", "-b", "+c",
        "\ttab", "bad \xE2\x82 byte"};
    std::vector<ChangeRecord> rows;
    for (const auto& name : names)
        rows.push_back({std::nullopt, "", name, ChangeKind::modified, true, std::nullopt, -5,
                        std::vector<std::string>{"size", "mtime"}});
    rows.push_back(
        {std::nullopt, "", "/file", ChangeKind::removed, false, 1LL << 60, std::nullopt, std::nullopt});
    const auto comparison = run(rows);
    std::ranges::sort(rows, {}, &ChangeRecord::path);

    const auto write = [&](ExportFormat format) {
        EXPECT_EQ(ChangeExport::write(store, comparison, {}, ChangeOrder::path, format, target), 11);
        return std::string(readFile(target).view());
    };
    const auto table = parseCSV(write(ExportFormat::csv));
    const auto document = nlohmann::json::parse(write(ExportFormat::json));

    ASSERT_EQ(table.size(), rows.size() + 1);
    ASSERT_EQ(document.size(), rows.size());
    EXPECT_THAT(table.front(),
                ElementsAre("path", "name", "kind", "isDirectory", "size", "sizeDelta", "differences"));
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const ChangeRecord& row = rows[index];
        const auto path = decodeUTF8(row.path);
        const bool isFormula = std::string("=+-@\t\r").find(path.front()) != std::string::npos;
        const auto name = path == "/file" ? "file" : path;
        const auto& object = document[index];
        EXPECT_EQ(object["path"], path);
        EXPECT_EQ(object["name"], name);
        EXPECT_EQ(object["kind"], rawValue(row.kind));
        EXPECT_EQ(object["isDirectory"], row.isDirectory);
        EXPECT_EQ(object["size"], row.size ? nlohmann::json(*row.size) : nlohmann::json());
        EXPECT_EQ(object["sizeDelta"], row.sizeDelta ? nlohmann::json(-5) : nlohmann::json());
        EXPECT_EQ(object["differences"], row.differences ? nlohmann::json("size,mtime") : nlohmann::json());
        const std::string mark = isFormula ? "'" : "";
        EXPECT_THAT(table[index + 1],
                    ElementsAre(mark + path, mark + name, std::string(rawValue(row.kind)),
                                row.isDirectory ? "true" : "false", row.size ? std::to_string(*row.size) : "",
                                row.sizeDelta ? "-5" : "", row.differences ? "size,mtime" : ""));
    }
}

TEST_F(ChangeExportTest, writesTheRowsThatTheFilterKeepsInTheOrder) {
    const auto comparison = runOfManyRows();
    const ChangeFilter filter(true, "/12", std::nullopt);
    std::vector<std::pair<std::int64_t, std::int64_t>> progress;
    const auto count = ChangeExport::write(
        store, comparison, filter, ChangeOrder::size, ExportFormat::json, folder / "out/new",
        [&](std::int64_t done, std::int64_t total) { progress.emplace_back(done, total); });

    const auto document = nlohmann::json::parse(readFile(folder / "out/new").view());
    EXPECT_EQ(std::ssize(document), count);
    EXPECT_EQ(count, 111); // 12, 120 to 129 and 1200 to 1299
    EXPECT_EQ(document.front()["path"], "/1299");
    EXPECT_EQ(document.back()["path"], "/12");
    EXPECT_THAT(progress, ElementsAre(std::pair(0, 5001), std::pair(5000, 5001), std::pair(5001, 5001)));
}

TEST_F(ChangeExportTest, writesNoRowsAsAnEmptyDocument) {
    const auto comparison = run({});
    EXPECT_EQ(ChangeExport::write(store, comparison, {}, ChangeOrder::name, ExportFormat::json, target), 0);
    EXPECT_EQ(readFile(target).view(), "[]\n");
    EXPECT_EQ(ChangeExport::write(store, comparison, {}, ChangeOrder::name, ExportFormat::csv, target), 0);
    EXPECT_EQ(parseCSV(readFile(target).view()).size(), 1U);
}

TEST_F(ChangeExportTest, hasTheRightsThatTheUserGivesToNewFiles) {
    const auto before = umask(0027);
    replace(run({}));
    umask(before);
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
}

TEST_F(ChangeExportTest, leavesEverythingAsItWasWhenItFailsOrIsStopped) {
    auto comparison = runOfManyRows();
    std::stop_source source;
    EXPECT_THROW(replace(
                     comparison, [&](std::int64_t done, std::int64_t) { done > 0 && source.request_stop(); },
                     source.get_token()),
                 Cancelled);
    expectUntouched();

    const auto remove = [&](std::int64_t done, std::int64_t) {
        if (done > 0)
            BackupStore(folder / "cache.sqlite").deleteComparison(comparison.id);
    };
    EXPECT_THROW(replace(comparison, remove), ComparisonChanged);
    expectUntouched();

    comparison = run({});
    const auto failure = [&](const fs::path& file) {
        try {
            ChangeExport::write(store, comparison, {}, ChangeOrder::path, ExportFormat::csv, file);
        } catch (const FileError& error) {
            return error.code();
        }
        return 0;
    };
    EXPECT_EQ(failure(folder / "missing/file"), ENOENT);
    EXPECT_EQ(failure(folder / "out"), EISDIR);
    EXPECT_EQ(failure("/dev/full"), EINVAL);
    EXPECT_EQ(failure(folder / "2026-07-20-122943.backup/2026-07-20-122943.backup/file"), EROFS);
    expectUntouched();
}

/// A limit for the size of files stands for a full disk, which needs another user's rights.
TEST_F(ChangeExportTest, leavesEverythingAsItWasWhenTheFileCannotGrow) {
    const auto comparison = runOfManyRows();
    auto* const before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const auto previous = limit;
    limit.rlim_cur = 10'000;
    setrlimit(RLIMIT_FSIZE, &limit);

    int code = 0;
    try {
        replace(comparison);
    } catch (const FileError& error) {
        code = error.code();
        EXPECT_THAT(error.errorDescription(), HasSubstr(target.string()));
    }

    setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(code, EFBIG);
    expectUntouched();
}

TEST_F(ChangeExportTest, leavesTheOldFileWhenItIsKilledAndCleansUpNextTime) {
    const auto comparison = runOfManyRows();
    const pid_t child = fork();
    if (child == 0) {
        BackupStore own(folder / "cache.sqlite");
        ChangeExport::write(own, comparison, {}, ChangeOrder::path, ExportFormat::csv, target,
                            [](std::int64_t done, std::int64_t) { done > 0 && raise(SIGKILL); });
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(readFile(target).view(), "old");
    EXPECT_EQ(folderNames(folder / "out").size(), 2U);

    replace(comparison);
    EXPECT_THAT(folderNames(folder / "out"), ElementsAre("file"));
    EXPECT_EQ(std::ssize(parseCSV(readFile(target).view())), comparison.totalChanges() + 1);
}

} // namespace
} // namespace tallyglass::test
