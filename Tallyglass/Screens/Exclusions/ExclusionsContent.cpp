#include "Tallyglass/Screens/Exclusions/ExclusionsContent.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "Tallyglass/Models/ExclusionsModel.h"
#include "TallyglassKit/Insight/ExclusionStatus.h"

#include <QCoreApplication>
#include <filesystem>

namespace tallyglass {

namespace {

class Exclusions {
    Q_DECLARE_TR_FUNCTIONS(Exclusions)
};

QString symbolOf(ExclusionState state) {
    switch (state) {
    case ExclusionState::included:
        return QStringLiteral("checkmark.circle");
    case ExclusionState::excluded:
        return QStringLiteral("nosign");
    case ExclusionState::unknown:
        break;
    }
    return QStringLiteral("questionmark.circle");
}

Theme::Role roleOf(ExclusionState state) {
    switch (state) {
    case ExclusionState::included:
        return Theme::Role::healthy;
    case ExclusionState::excluded:
        return Theme::Role::accent;
    case ExclusionState::unknown:
        break;
    }
    return Theme::Role::secondaryText;
}

QString reasonInShort(std::optional<ExclusionReason> reason) {
    if (reason == ExclusionReason::inherited)
        return Exclusions::tr("Inherited");
    if (reason == ExclusionReason::systemSkipPath)
        return Exclusions::tr("System rule");
    return {};
}

} // namespace

QString ExclusionRowContent::path() const {
    return toQString(key);
}

ExclusionRowContent exclusionRowContent(const ExclusionStatus& status, std::optional<bool> pendingExclusion) {
    ExclusionRowContent content{.key = status.path,
                                .symbol = symbolOf(status.state),
                                .role = roleOf(status.state),
                                .detail = toQString(status.explanation()),
                                .isExcluded = pendingExclusion.value_or(status.isExcluded()),
                                .isChanging = pendingExclusion.has_value(),
                                .canToggle = status.canToggle(),
                                .reason = reasonInShort(status.reason),
                                .toggleText = status.isExcluded() ? Exclusions::tr("Include")
                                                                  : Exclusions::tr("Exclude"),
                                .exists = status.state != ExclusionState::unknown};
    if (pendingExclusion)
        content.detail = *pendingExclusion ? Exclusions::tr("Excluding…") : Exclusions::tr("Including…");
    return content;
}

QString exclusionFailure(const ExclusionsModel& model) {
    const auto& error = model.error();
    const auto& path = model.failedPath();
    if (!error)
        return {};
    const QString text = toQString(*error);
    if (!path || error->find(*path) != std::string::npos)
        return text; // which names the item, if there is one
    return QStringLiteral("%1: %2").arg(toQString(std::filesystem::path(*path).filename().string()), text);
}

} // namespace tallyglass
