#include "Tallyglass/Models/BackupChangesModel.h"
#include "Tallyglass/Models/DiffModel.h"
#include "Tallyglass/Models/FixtureSession.h"

#include <fmt/format.h>

namespace tallyglass {
namespace {

constexpr std::string_view root = "/Volumes/.timemachine/6D8A4C1E-53F0-4B0B-9C34-2C1B7A9E0F52";

std::vector<DiffModel::BackupChoice> backupsUntil(Date now) {
    std::vector<DiffModel::BackupChoice> backups;
    // The last one is as old as that of a made-up machine, and so finds its row in the manifest.
    for (int age = 30; age >= 0; --age) {
        const Date date = now - std::chrono::minutes(38) - std::chrono::hours(24 * age);
        backups.push_back({fmt::format("{}/day-{}.backup/day-{}.backup", root, age, age), date});
    }
    return backups;
}

ChangeRecord change(ChangeKind kind, const std::string& path, std::optional<std::int64_t> size,
                    std::optional<std::int64_t> delta, const std::vector<std::string>& differences = {}) {
    return {std::nullopt, "fixture",
            path,         kind,
            false,        size,
            delta,        kind == ChangeKind::modified ? std::optional(differences) : std::nullopt};
}

ChangeRecord folder(const std::string& path) {
    return {std::nullopt, "fixture",    path,         ChangeKind::modified,
            true,         std::nullopt, std::nullopt, std::vector<std::string>{"mtime"}};
}

std::vector<ChangeRecord> metadataRows() {
    std::vector<ChangeRecord> rows;
    for (const char* name : {"Documents/Taxes 2025.pdf", "Documents/Tickets.pdf", "Library/Caches/index.db",
                             "Music/Playlists.xml", "Pictures/Album/IMG_0017.heic"})
        rows.push_back(change(ChangeKind::modified, fmt::format("/Users/alex/{}", name), 48'211, 0,
                              {"mtime", "xattrs"}));
    return rows;
}

/// Some of every kind, in the order of their paths.
std::vector<ChangeRecord> mixedRows() {
    return {
        folder("/Applications"),
        change(ChangeKind::modified, "/Applications/Chess.app", 7'811'220, 120'004, {"size", "mtime"}),
        folder("/Users"),
        folder("/Users/alex"),
        folder("/Users/alex/Documents"),
        folder("/Users/alex/Downloads"),
        change(ChangeKind::added, "/Users/alex/Documents/Letter to the landlord (draft 3).pages", 812'004,
               812'004),
        change(ChangeKind::modified, "/Users/alex/Documents/Taxes 2025.numbers", 2'204'118, 41'912,
               {"size", "mtime"}),
        change(ChangeKind::removed, "/Users/alex/Downloads/Installer.dmg", 1'204'551'680, -1'204'551'680),
        change(ChangeKind::modified, "/Users/alex/Library/Mail/V10/MailData/Envelope Index", 412'221'440,
               1'048'576, {"size", "data"}),
        change(ChangeKind::added, "/Users/alex/Movies/Räume im Herbst/家族の休日 — whole afternoon.mov",
               6'420'112'384, 6'420'112'384),
        change(ChangeKind::modified, "/Users/alex/Pictures/Library.photoslibrary/database/Photos.sqlite",
               902'144'000, -4'096, {"data", "mtime"}),
        change(ChangeKind::modified, "/Users/alex/notes.txt", 4'112, 0, {"mtime"}),
        change(ChangeKind::removed, "/private/var/log/system.log.7", std::nullopt, std::nullopt),
    };
}

std::vector<ChangeRecord> manyRows(int count) {
    std::vector<ChangeRecord> rows;
    for (int number = 0; number < count; ++number) {
        const auto kind = number % 7 == 3   ? ChangeKind::removed
                          : number % 2 == 0 ? ChangeKind::modified
                                            : ChangeKind::added;
        const std::int64_t size = 900 + static_cast<std::int64_t>(number) * number % 7'000'003;
        rows.push_back(change(kind,
                              fmt::format("/Users/alex/Archive/{:03}/item {:05}.dat", number / 100, number),
                              size, kind == ChangeKind::removed ? -size : size, {"size"}));
    }
    return rows;
}

Comparison comparisonOf(const std::vector<ChangeRecord>& rows, const DiffModel::BackupChoice& from,
                        const DiffModel::BackupChoice& to, std::int64_t depth, Date now) {
    Comparison comparison(from.path, to.path, from.date, to.date, depth, "fixture", now);
    comparison.completedAt = now;
    comparison.isPartial = false;
    for (const ChangeRecord& row : rows)
        comparison.count(row);
    return comparison;
}

/// The rows of the session; none for one that has no result.
std::vector<ChangeRecord> rowsOf(std::string_view name) {
    if (name.ends_with("-metadata"))
        return metadataRows();
    if (name.ends_with("-many"))
        return manyRows(12'345);
    if (name.ends_with("-none"))
        return {};
    return mixedRows();
}

bool hasResult(std::string_view name) {
    for (const std::string_view state : {"-results", "-metadata", "-none", "-partial", "-many"}) {
        if (name.ends_with(state))
            return true;
    }
    return false;
}

} // namespace

void FixtureSession::fill(DiffModel& model, std::string_view name, Date now) {
    DiffModel::Shown shown{.backups = backupsUntil(now)};
    const auto& from = shown.backups[shown.backups.size() - 2];
    const auto& to = shown.backups.back();
    if (name.starts_with("compare-") && hasResult(name)) {
        shown.changes = rowsOf(name);
        shown.comparison = comparisonOf(shown.changes, from, to, 3, now);
        shown.comparison->isPartial = name == "compare-partial";
    } else if (name == "compare-running") {
        shown.progressText = "Running tmutil compare…";
    } else if (name == "compare-failure") {
        shown.error = "The backup disk was disconnected while tmutil compared the two backups.";
    }
    model.show(shown);
}

void FixtureSession::fill(BackupChangesModel& model, std::string_view name, Date now) {
    const auto backups = backupsUntil(now);
    const auto& from = backups[backups.size() - 2];
    const auto& to = backups.back();
    BackupChangesModel::Shown shown{.resolvedFrom = from.date, .resolvedTo = to.date};
    if (name == "changes-waiting") {
        shown.progressText = "Finding backup…";
        shown.resolvedFrom.reset();
        shown.resolvedTo.reset();
        shown.elapsed = 2;
    } else if (name == "changes-running" || name == "changes-network") {
        shown.progressText = "Running tmutil compare…";
        shown.elapsed = 75;
        shown.bytesReceived = 3'410'220;
    } else if (name == "changes-failure") {
        shown.error = "tmutil: the backup disk was disconnected.";
    } else if (name == "changes-oldest") {
        shown.isOldest = true;
        shown.resolvedFrom.reset();
    } else {
        shown.changes = rowsOf(name);
        shown.comparison = comparisonOf(shown.changes, from, to, 2, now);
    }
    model.show(shown);
    if (const ChangeRecord* users = model.tree().find("/Users"))
        model.toggleExpand(*users);
    if (const ChangeRecord* home = model.tree().find("/Users/alex"))
        model.toggleExpand(*home);
}

} // namespace tallyglass
