#include "Tallyglass/Desktop/Workspace.h"

#include "Tallyglass/Desktop/SystemSettings.h"

#include <QDesktopServices>

namespace tallyglass {

DesktopWorkspace::DesktopWorkspace(BusConnector bus, QObject* parent)
    : Workspace(parent), m_bus(std::move(bus)) {}

bool DesktopWorkspace::openUrl(const QUrl& url) {
    const QString scheme = url.scheme();
    if (scheme == QStringLiteral("x-apple.systempreferences"))
        return openSystemSettings();
    const bool isKnown =
        scheme == QStringLiteral("https") || scheme == QStringLiteral("http") || url.isLocalFile();
    return isKnown && url.isValid() && QDesktopServices::openUrl(url);
}

} // namespace tallyglass
