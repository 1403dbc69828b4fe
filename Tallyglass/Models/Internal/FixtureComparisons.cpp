#include "Tallyglass/Models/Internal/FixtureMachine.h"
#include "Tallyglass/Models/Internal/FixturePropertyList.h"
#include "TallyglassKit/Access/BackupPath.h"

#include <fmt/format.h>

#include <chrono>

namespace tallyglass {
namespace {

constexpr std::string_view mount = "/Volumes/.timemachine/6D8A4C1E-53F0-4B0B-9C34-2C1B7A9E0F52";
constexpr std::string_view volume = "Macintosh HD - Data";

/// The root of the backup that is so many days older than the newest one.
std::string rootOfBackup(int age, Date newest) {
    const std::string name =
        BackupPath::stamp(newest - std::chrono::hours(24 * age)) + std::string(BackupPath::suffix);
    return fmt::format("{}/{}/{}", mount, name, name);
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

/// Some of every kind.
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
        change(ChangeKind::removed, "/private/var/log/system.log.7", 61'204, -61'204),
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

/// The item of a change as it is below `root`.
std::string item(std::string_view root, const std::string& path, std::optional<std::int64_t> size) {
    return fixture::dictionary({{"Path", fixture::text(fmt::format("{}/{}{}", root, volume, path))},
                                {"Size", size ? fixture::integer(*size) : std::string()}});
}

std::string asTMUtilSays(const ChangeRecord& row, std::string_view from, std::string_view to) {
    switch (row.kind) {
    case ChangeKind::added:
        return fixture::dictionary({{"AddedItem", item(to, row.path, row.size)}});
    case ChangeKind::removed:
        return fixture::dictionary({{"RemovedItem", item(from, row.path, row.size)}});
    case ChangeKind::modified:
        break;
    }
    std::vector<std::string> differences;
    for (const std::string& difference : row.differenceList())
        differences.push_back(fixture::text(difference));
    const auto olderSize = row.size && row.sizeDelta ? std::optional(*row.size - *row.sizeDelta) : row.size;
    return fixture::dictionary({{"NewerItem", item(to, row.path, row.size)},
                                {"OlderItem", item(from, row.path, olderSize)},
                                {"Differences", fixture::array(differences)}});
}

FixtureAnswer resultOf(std::string_view name, Date newest) {
    std::vector<std::string> changes;
    for (const ChangeRecord& row : rowsOf(name))
        changes.push_back(asTMUtilSays(row, rootOfBackup(1, newest), rootOfBackup(0, newest)));
    return {.output = fixture::propertyList(fixture::dictionary({{"Changes", fixture::array(changes)}}))};
}

FixtureAnswer listingOf(int oldestAge, Date newest) {
    FixtureAnswer answer;
    for (int age = oldestAge; age >= 0; --age)
        answer.output += rootOfBackup(age, newest) + "\n";
    return answer;
}

/// Halts a run that compares all backups: most are done, one has failed, and the others wait.
void haltBackfill(FixtureComparisons& all) {
    all.secondsEach = 9;
    all.exceptions[4] = {.failure =
                             "The backup disk was disconnected while tmutil compared the two backups."};
    for (std::size_t age = 17; age < 30; ++age)
        all.exceptions[age] = {.isWaiting = true};
}

} // namespace

FixtureComparisons FixtureComparisons::make(std::string_view name, Date newest) {
    const FixtureAnswer result = resultOf(name, newest);
    FixtureComparisons all{.listing = listingOf(30, newest),
                           .latest = {.output = rootOfBackup(0, newest) + "\n"},
                           .backups = result,
                           .changes = result};
    if (name == "diagnostics-results")
        all.backups.timePerProperty = std::chrono::milliseconds(40);
    else if (name == "diagnostics-running")
        all.latest = all.backups = {.isWaiting = true};
    else if (name == "diagnostics-denied")
        all.listing = all.latest = {.failure = "tmutil: listbackups requires Full Disk Access privileges."};
    else if (name == "compare-running")
        all.backups = {.isWaiting = true};
    else if (name == "compare-failure")
        all.backups = {.failure = "The backup disk was disconnected while tmutil compared the two backups."};
    else if (name == "compare-backfill")
        haltBackfill(all);
    else if (name == "changes-waiting" || name == "history-running")
        all.listing = {.isWaiting = true};
    else if (name == "changes-running" || name == "changes-network")
        all.changes = {.isWaiting = true, .bytesBeforeWait = 3'410'220};
    else if (name == "changes-failure")
        all.changes = {.failure = "tmutil: the backup disk was disconnected."};
    else if (name == "history-failure")
        all.listing = {.failure = "tmutil: the backup disk was disconnected."};
    else if (name == "history-many")
        all.listing = listingOf(1'499, newest);
    else if (name == "changes-oldest")
        all.listing = listingOf(0, newest);
    return all;
}

} // namespace tallyglass
