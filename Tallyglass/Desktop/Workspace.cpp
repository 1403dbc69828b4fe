#include "Tallyglass/Desktop/Workspace.h"

#include "Tallyglass/Desktop/SessionBus.h"
#include "Tallyglass/Desktop/SystemSettings.h"

#include <QDesktopServices>

namespace tallyglass {

DesktopWorkspace::DesktopWorkspace(QString busAddress, QObject* parent)
    : Workspace(parent), m_busAddress(std::move(busAddress)) {}

DesktopWorkspace::DesktopWorkspace(QObject* parent) : DesktopWorkspace(sessionBusAddress(), parent) {}

bool DesktopWorkspace::openUrl(const QUrl& url) {
    const QString scheme = url.scheme();
    if (scheme == QStringLiteral("x-apple.systempreferences"))
        return openSystemSettings();
    const bool isKnown =
        scheme == QStringLiteral("https") || scheme == QStringLiteral("http") || url.isLocalFile();
    return isKnown && url.isValid() && QDesktopServices::openUrl(url);
}

} // namespace tallyglass
