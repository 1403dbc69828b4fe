// The desktop's own program for its settings. Main thread only.

#pragma once

#include <QString>
#include <QStringList>

namespace tallyglass {

/// Opens the settings program. False if there is none.
bool openSystemSettings();

/// The settings programs of the desktops, those of the desktops in `currentDesktop` ("ubuntu:GNOME") first.
[[nodiscard]] QStringList systemSettingsPrograms(const QString& currentDesktop);

} // namespace tallyglass
