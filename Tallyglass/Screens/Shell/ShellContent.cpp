#include "Tallyglass/Screens/Shell/ShellContent.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

struct Shell {
    Q_DECLARE_TR_FUNCTIONS(Shell)
};

} // namespace

ShellContent shellContent(const std::optional<BackupHealth>& health, FDAStatus access) {
    ShellContent content{.subtitle = {}, .liteMode = access != FDAStatus::granted};
    if (health)
        content.subtitle = QString::fromStdString(health->summary());
    if (health && content.liteMode)
        content.subtitle += QStringLiteral(" · ") + Shell::tr("Lite mode");
    return content;
}

} // namespace tallyglass
