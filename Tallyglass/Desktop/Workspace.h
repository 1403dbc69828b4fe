// What the program asks of the desktop around it: show a web page, a folder or a settings pane, and select a
// file in the file manager.
//
// Main thread only. Nothing here waits: what the desktop does about it, it does later, and a failure there is
// between the desktop and its user.

#pragma once

#include "Tallyglass/Desktop/SessionBus.h"

#include <QObject>
#include <QUrl>
#include <filesystem>

namespace tallyglass {

class Workspace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Opens a web address, a file or folder, or the system's settings in the program for it.
    /// False if the address is of no such kind or nothing on this desktop can open it.
    Q_INVOKABLE virtual bool openUrl(const QUrl& url) = 0;

    /// Shows the item selected in the file manager, or at least its folder.
    virtual void reveal(const std::filesystem::path& item) = 0;
};

/// The desktop that the program runs on.
class DesktopWorkspace : public Workspace {
    Q_OBJECT

public:
    /// The file manager is asked over this bus.
    explicit DesktopWorkspace(BusConnector bus = connectToSessionBus, QObject* parent = nullptr);

    bool openUrl(const QUrl& url) override;
    void reveal(const std::filesystem::path& item) override;

private:
    const BusConnector m_bus;
};

} // namespace tallyglass
