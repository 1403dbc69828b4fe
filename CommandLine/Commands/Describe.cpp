#include "CommandLine/Commands/Describe.h"

#include "TallyglassKit/Access/BackupName.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/Comparison.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Health/HumanizeCamelCase.h"
#include "TallyglassKit/Platform/SaturatingArithmetic.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <fmt/core.h>

namespace tallyglass::commandline {

namespace {

std::string partOf(const std::string& done, const std::optional<std::string>& all) {
    return all ? done + " of " + *all : done;
}

std::string signedSize(std::int64_t bytes) {
    return (bytes > 0   ? "+"
            : bytes < 0 ? "−"
                        : "") +
           Fmt::size(bytes < 0 ? saturatingNegation(bytes) : bytes);
}

/// What a change adds to the size of the newer backup; empty if nothing.
std::string signedSize(const ChangeRecord& change) {
    const auto delta = change.sizeDelta ? change.sizeDelta : change.size;
    return delta && *delta != 0 ? signedSize(*delta) : "";
}

} // namespace

std::string describe(const BackupStatus& status) {
    if (!status.isRunning)
        return "Idle";
    std::string text = status.isStopping ? "Stopping" : "Running";
    std::string separator = ": ";
    const auto add = [&](const std::string& part) {
        text += separator + part;
        separator = ", ";
    };
    if (status.phase)
        add(humanizeCamelCase(*status.phase));
    if (status.percent)
        add(fmt::format("{:.0f} %", *status.percent * 100));
    if (status.bytesCopied)
        add(partOf(Fmt::size(status.bytesCopied),
                   status.totalBytes ? std::optional(Fmt::size(status.totalBytes)) : std::nullopt));
    if (status.filesCopied)
        add(partOf(formatGrouped(*status.filesCopied),
                   status.totalFiles ? std::optional(formatGrouped(*status.totalFiles)) : std::nullopt) +
            " files");
    if (status.timeRemaining)
        add(Fmt::duration(status.timeRemaining, DurationStyle::abbreviated) + " left");
    return text;
}

std::string describe(FDAStatus access) {
    switch (access) {
    case FDAStatus::granted:
        return "Full Disk Access is granted";
    case FDAStatus::denied:
        return "Full Disk Access is denied";
    case FDAStatus::indeterminate:
        break;
    }
    return "It isn't known whether Full Disk Access is granted";
}

std::string describe(const TMDestination& destination) {
    auto text = destination.displayName();
    if (const auto fraction = destination.usedFraction())
        text += fmt::format(": {} of {} used ({:.0f} %)", Fmt::size(destination.bytesUsed),
                            Fmt::size(destination.totalBytes()), *fraction * 100);
    else
        text += ": capacity unknown";
    const auto backups = destination.snapshotDates.size();
    text += fmt::format(", {} {}", formatGrouped(static_cast<std::int64_t>(backups)),
                        backups == 1 ? "backup" : "backups");
    if (const auto latest = destination.latestSnapshot())
        text += ", latest " + Fmt::timestamp(*latest);
    return text;
}

std::string describe(const TMDestination& destination, const BackupHealth& health) {
    return destination.displayName() + ": " + health.summary();
}

std::string describe(const DiffEngine::Backup& backup) {
    return (backup.date ? Fmt::timestamp(*backup.date) : "—") + "  " + BackupName::of(backup.path);
}

std::string describe(const Comparison& comparison) {
    return fmt::format("{} added, {} removed, {} modified, {} in all", formatGrouped(comparison.addedCount),
                       formatGrouped(comparison.removedCount), formatGrouped(comparison.modifiedCount),
                       comparison.netBytesFormatted());
}

std::string stateOf(const Comparison& comparison) {
    if (!comparison.isPartial)
        return describe(comparison);
    return comparison.errorMessage.value_or("Interrupted");
}

std::string describe(const StorageTree::Node& node) {
    return fmt::format("{} in {} {}, {} in all", Fmt::size(node.magnitude), formatGrouped(node.changeCount),
                       node.changeCount == 1 ? "change" : "changes", signedSize(node.netBytes));
}

std::string alignedRight(const std::string& text, std::size_t width) {
    std::size_t characters = 0;
    for (const char byte : text)
        characters += (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    return std::string(characters < width ? width - characters : 0, ' ') + text;
}

std::string describeOperands(const std::string& from, const std::string& to) {
    return BackupName::of(from) + " → " + BackupName::of(to);
}

void printChanges(std::ostream& out, std::span<const ChangeRecord> changes) {
    for (const auto& change : changes)
        out << fmt::format("{:<8} {}  {}{}\n", rawValue(change.kind), alignedRight(signedSize(change), 10),
                           change.path, change.isDirectory ? "/" : "");
}

} // namespace tallyglass::commandline
