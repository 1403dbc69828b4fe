#include "Tallyglass/Screens/Compare/BackfillContent.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "Tallyglass/Models/BackfillModel.h"
#include "TallyglassKit/Access/BackupPath.h"

#include <QCoreApplication>
#include <algorithm>
#include <ranges>

namespace tallyglass {

namespace {

using State = AdjacentPair::State;

class Backfill {
    Q_DECLARE_TR_FUNCTIONS(Backfill)
};

QString dateText(const std::string& root) {
    const auto date = BackupPath::timestampOfRoot(root);
    return date ? toQString(Fmt::timestamp(*date)) : Backfill::tr("Unknown date");
}

QString namesOf(const AdjacentPair& pair) {
    return Backfill::tr("%1 to %2").arg(dateText(pair.from), dateText(pair.to));
}

QString stateText(const AdjacentPair& pair) {
    switch (pair.state) {
    case State::missing:
        return Backfill::tr("not compared yet");
    case State::running:
        return Backfill::tr("being compared");
    case State::failed:
        return toQString(pair.failure.value_or(""));
    case State::ready:
        break;
    }
    return Backfill::tr("ready");
}

std::int64_t countOf(const BackfillModel& model, State state) {
    return std::ranges::count(model.pairs(), state, &AdjacentPair::state);
}

QString summaryOf(std::int64_t ready, std::int64_t total) {
    if (ready == total)
        return Backfill::tr("All %n comparisons ready", "", static_cast<int>(total));
    return Backfill::tr("%1 of %n comparisons ready", "", static_cast<int>(total)).arg(grouped(ready));
}

QString optionsText(const CompareOptions& options) {
    const QString depth =
        options.depth ? Backfill::tr("Down to depth %1").arg(*options.depth) : Backfill::tr("All folders");
    return options.properties.contains(CompareOptions::Property::extendedAttributes)
               ? Backfill::tr("%1, with extended attributes and ownership").arg(depth)
               : Backfill::tr("%1, by size and date").arg(depth);
}

QString workText(const BackfillModel& model) {
    if (model.isPausing())
        return Backfill::tr("Pausing…");
    const auto running =
        std::ranges::find(model.pairs().rbegin(), model.pairs().rend(), State::running, &AdjacentPair::state);
    if (running == model.pairs().rend())
        return toQString(model.progress()->currentLabel);
    const auto others = countOf(model, State::running) - 1;
    const QString names = namesOf(*running);
    return others == 0 ? Backfill::tr("Comparing %1").arg(names)
                       : Backfill::tr("Comparing %1 and %n more", "", static_cast<int>(others)).arg(names);
}

QString timeLeft(std::optional<double> seconds) {
    if (!seconds)
        return {};
    if (*seconds < 60)
        return Backfill::tr("Less than a minute left");
    return Backfill::tr("About %1 left").arg(toQString(Fmt::duration(seconds, DurationStyle::full)));
}

void describeRun(const BackfillModel& model, BackfillContent& content) {
    content.isRunning = true;
    content.isPausing = model.isPausing();
    const auto& progress = *model.progress();
    if (progress.total > 0)
        content.fraction = static_cast<double>(progress.completed) / static_cast<double>(progress.total);
    content.workText = workText(model);
    content.timeLeft = model.isPausing() ? QString() : timeLeft(model.secondsLeft());
}

void describeFailures(const std::vector<AdjacentPair>& pairs, BackfillContent& content) {
    const auto count = static_cast<int>(std::ranges::count(pairs, State::failed, &AdjacentPair::state));
    if (count == 0)
        return;
    content.failedText = Backfill::tr("%n failed", "", count);
    for (const AdjacentPair& pair : pairs | std::views::reverse)
        if (pair.state == State::failed && content.failures.size() < BackfillContent::failureLimit)
            content.failures.append({namesOf(pair), stateText(pair)});
    if (const auto others = count - static_cast<int>(content.failures.size()); others > 0)
        content.moreFailures = Backfill::tr("and %n more", "", others);
}

} // namespace

QVariantList BackfillContent::failureList() const {
    return variants(failures);
}

BackfillContent backfillContent(const BackfillModel& model) {
    BackfillContent content;
    const auto& pairs = model.pairs();
    content.error = toQString(model.error().value_or(""));
    content.preparesNewBackups = model.preparesNewBackups();
    content.hasPairs = !pairs.empty();
    if (!content.hasPairs)
        return content;
    const auto ready = countOf(model, State::ready);
    content.summary = summaryOf(ready, std::ssize(pairs));
    content.optionsText = optionsText(model.options());
    content.firstBackup = dateText(pairs.front().from);
    content.lastBackup = dateText(pairs.back().to);
    describeFailures(pairs, content);
    if (model.isRunning())
        describeRun(model, content);
    else if (ready == 0)
        content.startText = Backfill::tr("Prepare all");
    else if (ready < std::ssize(pairs))
        content.startText = Backfill::tr("Prepare the rest");
    return content;
}

QString pairText(const AdjacentPair& pair) {
    return Backfill::tr("%1: %2").arg(namesOf(pair), stateText(pair));
}

} // namespace tallyglass
