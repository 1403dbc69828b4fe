#include "Tallyglass/Desktop/SystemSettings.h"

#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <utility>

namespace tallyglass {

QStringList systemSettingsPrograms(const QString& currentDesktop) {
    static constexpr std::array<std::pair<const char*, const char*>, 8> programs{{
        {"GNOME", "gnome-control-center"},
        {"KDE", "systemsettings"},
        {"KDE", "systemsettings5"},
        {"XFCE", "xfce4-settings-manager"},
        {"X-Cinnamon", "cinnamon-settings"},
        {"MATE", "mate-control-center"},
        {"LXQt", "lxqt-config"},
        {"Budgie", "budgie-control-center"},
    }};
    const QStringList desktops = currentDesktop.split(u':', Qt::SkipEmptyParts);
    QStringList own;
    QStringList others;
    for (const auto& [desktop, program] : programs)
        (desktops.contains(QLatin1String(desktop), Qt::CaseInsensitive) ? own : others)
            .append(QLatin1String(program));
    return own + others;
}

bool openSystemSettings() {
    const QStringList programs = systemSettingsPrograms(qEnvironmentVariable("XDG_CURRENT_DESKTOP"));
    return std::any_of(programs.begin(), programs.end(), [](const QString& program) {
        const QString path = QStandardPaths::findExecutable(program);
        return !path.isEmpty() && QProcess::startDetached(path, {});
    });
}

} // namespace tallyglass
