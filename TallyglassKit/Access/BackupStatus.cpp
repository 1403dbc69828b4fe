#include "TallyglassKit/Access/BackupStatus.h"

#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"
#include "TallyglassKit/Platform/Text/NumberConversion.h"

namespace tallyglass {

namespace {

// All scalars are text in tmutil's old-style output, and may be numbers in other forms.
std::optional<double> number(std::optional<PropertyListValue> value) {
    if (!value)
        return std::nullopt;
    if (const auto text = value->text())
        return doubleOfText(*text);
    return value->number();
}

std::optional<std::int64_t> count(std::optional<double> number) {
    return number ? truncated(*number) : std::nullopt;
}

template <typename Condition>
std::optional<double> onlyIf(std::optional<double> number, Condition condition) {
    return number && condition(*number) ? number : std::nullopt;
}

} // namespace

std::optional<BackupStatus> BackupStatus::parse(std::string_view text) {
    const auto start = text.find('{');
    if (start == std::string_view::npos)
        return std::nullopt;
    try {
        const PropertyList list = PropertyList::parse(text.substr(start));
        return list.root().isDictionary() ? std::optional(parse(list.root())) : std::nullopt;
    } catch (const PropertyListError&) {
        return std::nullopt;
    }
}

BackupStatus BackupStatus::parse(const PropertyListValue& dictionary) {
    const auto progress = dictionary.find("Progress");
    const auto inProgress = [&](std::string_view key) {
        return progress ? number(progress->find(key)) : std::nullopt;
    };
    const auto atTopLevel = [&](std::string_view key) { return number(dictionary.find(key)); };
    const auto anywhere = [&](std::string_view key) {
        const auto found = inProgress(key);
        return found ? found : atTopLevel(key);
    };
    const auto isSet = [&](std::string_view key) { return atTopLevel(key).value_or(0) != 0; };

    BackupStatus status;
    status.isRunning = isSet("Running");
    status.percent = onlyIf(anywhere("Percent"), [](double value) { return value >= 0; });
    if (const auto phase = dictionary.find("BackupPhase"); phase && phase->text())
        status.phase = *phase->text();
    status.bytesCopied = count(anywhere("bytes"));
    status.totalBytes = count(anywhere("totalBytes"));
    status.filesCopied = count(anywhere("files"));
    status.totalFiles = count(anywhere("totalFiles"));
    status.timeRemaining = onlyIf(inProgress("TimeRemaining"), [](double value) { return value > 0; });
    status.numberOfChangedItems = count(atTopLevel("NumberOfChangedItems"));
    status.isStopping = isSet("Stopping");
    return status;
}

} // namespace tallyglass
