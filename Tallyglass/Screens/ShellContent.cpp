#include "Tallyglass/Screens/ShellContent.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

struct Shell {
    Q_DECLARE_TR_FUNCTIONS(Shell)
};

} // namespace

QList<Section> sections() {
    return {
        {QStringLiteral("overview"), Shell::tr("Overview"),
         QStringLiteral("gauge.with.dots.needle.33percent")},
        {QStringLiteral("compare"), Shell::tr("Compare"), QStringLiteral("arrow.left.arrow.right")},
        {QStringLiteral("history"), Shell::tr("File History"), QStringLiteral("clock.arrow.circlepath")},
        {QStringLiteral("exclusions"), Shell::tr("Exclusions"), QStringLiteral("nosign")},
    };
}

ShellContent shellContent(const std::optional<BackupHealth>& health, FDAStatus access) {
    ShellContent content{.subtitle = {}, .liteMode = access != FDAStatus::granted};
    if (health)
        content.subtitle = QString::fromStdString(health->summary());
    if (health && content.liteMode)
        content.subtitle += QStringLiteral(" · ") + Shell::tr("Lite mode");
    return content;
}

} // namespace tallyglass
