#include "Tallyglass/Controls/Lists/ChangeRowContent.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

class ChangeRow {
    Q_DECLARE_TR_FUNCTIONS(ChangeRow)
};

} // namespace

Theme::Role roleOf(ChangeKind kind) {
    switch (kind) {
    case ChangeKind::added:
        return Theme::Role::healthy;
    case ChangeKind::removed:
        return Theme::Role::critical;
    case ChangeKind::modified:
        break;
    }
    return Theme::Role::accent;
}

ChangeRowContent changeRowContent(const ChangeRecord& change) {
    ChangeRowContent content{.symbol = toQString(symbolName(change.kind)),
                             .role = roleOf(change.kind),
                             .fileName = toQString(change.fileName()),
                             .parentPath = toQString(change.parentPath()),
                             .size = sizeInWords(change.size),
                             .path = toQString(change.path),
                             .label = {},
                             .value = {}};
    content.label = toQString(label(change.kind)) + QStringLiteral(", ") + content.fileName;
    content.value = content.size;
    if (!content.parentPath.isEmpty())
        content.value += QStringLiteral(", ") + ChangeRow::tr("in %1").arg(content.parentPath);
    return content;
}

} // namespace tallyglass
