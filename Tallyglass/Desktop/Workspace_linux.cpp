#include "Tallyglass/Desktop/Workspace.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QStringList>

namespace tallyglass {

namespace {

QUrl urlOf(const std::filesystem::path& path) {
    return QUrl::fromLocalFile(QString::fromStdString(path.string()));
}

} // namespace

void DesktopWorkspace::reveal(const std::filesystem::path& item) {
    withBus(this, m_bus, [this, item](QDBusConnection bus) {
        const auto openFolder = [this, item] { openUrl(urlOf(item.parent_path())); };
        if (!bus.isConnected())
            return openFolder();
        auto message = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
            QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
        message << QStringList(urlOf(item).toString(QUrl::FullyEncoded)) << QString();
        auto* call = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
        connect(call, &QDBusPendingCallWatcher::finished, this, [call, openFolder] {
            call->deleteLater();
            if (call->isError())
                openFolder();
        });
    });
}

} // namespace tallyglass
