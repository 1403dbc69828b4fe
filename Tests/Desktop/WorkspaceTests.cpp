#include "Tallyglass/Desktop/SystemSettings.h"
#include "Tallyglass/Desktop/Workspace.h"
#include "Tests/Desktop/PrivateBus.h"
#include "Tests/Support/QtMain/EventLoop.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QDBusContext>
#include <QDesktopServices>
#include <QFile>

namespace tallyglass {
namespace {

/// Takes the addresses that the desktop would open.
class OpenedUrls : public QObject {
    Q_OBJECT

public:
    OpenedUrls() {
        for (const auto* scheme : schemes)
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "take");
    }
    ~OpenedUrls() override {
        for (const auto* scheme : schemes)
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }
    Q_DISABLE_COPY_MOVE(OpenedUrls)

    QStringList urls;

public slots:
    void take(const QUrl& url) { urls.append(url.toString()); }

private:
    static constexpr std::array schemes{"http", "https", "file", "ftp", "javascript"};
};

/// The desktop's file manager, as the message bus knows it.
class StandInFileManager : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QStringList shown;
    bool refuses = false;

public slots:
    void ShowItems(const QStringList& uris, const QString&) {
        if (refuses)
            sendErrorReply(QDBusError::Failed);
        shown.append(uris);
    }
};

TEST(DesktopWorkspace, opensWebAddressesAndFilesAndNothingElse) {
    OpenedUrls opened;
    DesktopWorkspace workspace(test::noBus);

    EXPECT_TRUE(workspace.openUrl(QUrl("https://example.org/a?b=c")));
    EXPECT_TRUE(workspace.openUrl(QUrl("http://example.org/")));
    EXPECT_TRUE(workspace.openUrl(QUrl("file:///tmp")));
    EXPECT_FALSE(workspace.openUrl(QUrl("ftp://example.org/")));
    EXPECT_FALSE(workspace.openUrl(QUrl("javascript:1")));
    EXPECT_FALSE(workspace.openUrl(QUrl()));

    EXPECT_EQ(opened.urls, QStringList({"https://example.org/a?b=c", "http://example.org/", "file:///tmp"}));
}

TEST(DesktopWorkspace, opensTheSettingsProgramOfThisDesktopFirst) {
    EXPECT_EQ(systemSettingsPrograms("ubuntu:GNOME").first(), "gnome-control-center");
    EXPECT_EQ(systemSettingsPrograms("KDE").first(), "systemsettings");
    EXPECT_EQ(systemSettingsPrograms("").size(), systemSettingsPrograms("KDE").size());
}

TEST(DesktopWorkspace, startsTheSettingsProgramThatIsInstalled) {
    const test::TemporaryFolder folder;
    const auto program = folder.write("xfce4-settings-manager", "#!/bin/sh\n: > \"$0.started\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    const QByteArray path = qgetenv("PATH");
    DesktopWorkspace workspace(test::noBus);
    const QUrl pane("x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles");

    qputenv("PATH", QByteArray::fromStdString(folder.path().string()));
    EXPECT_TRUE(workspace.openUrl(pane));
    test::waitUntil([&] { return std::filesystem::exists(folder / "xfce4-settings-manager.started"); });
    std::filesystem::remove(program);
    EXPECT_FALSE(workspace.openUrl(pane));
    qputenv("PATH", path);
}

TEST(DesktopWorkspace, asksTheFileManagerToSelectAnItem) {
    test::PrivateBus bus;
    StandInFileManager manager;
    bus.connection().registerObject("/org/freedesktop/FileManager1", &manager,
                                    QDBusConnection::ExportAllSlots);
    bus.connection().registerService("org.freedesktop.FileManager1");
    OpenedUrls opened;
    DesktopWorkspace workspace(bus.connector());

    workspace.reveal("/tmp/a folder/50% \xC3\xA4#?.txt");
    test::waitUntil([&] { return !manager.shown.isEmpty(); });
    EXPECT_EQ(manager.shown, QStringList("file:///tmp/a%20folder/50%25%20%C3%A4%23%3F.txt"));
    EXPECT_TRUE(opened.urls.isEmpty());

    manager.refuses = true;
    workspace.reveal("/tmp/a folder/b");
    test::waitUntil([&] { return !opened.urls.isEmpty(); });
    EXPECT_EQ(opened.urls, QStringList("file:///tmp/a folder"));
}

TEST(DesktopWorkspace, opensTheFolderWhereThereIsNoFileManagerOrNoBus) {
    test::PrivateBus bus;
    OpenedUrls opened;
    DesktopWorkspace withBus(bus.connector());
    DesktopWorkspace withoutBus(test::noBus);

    withBus.reveal("/tmp/one/file");
    test::waitUntil([&] { return opened.urls.size() == 1; });
    withoutBus.reveal("/tmp/two/file");
    test::waitUntil([&] { return opened.urls.size() == 2; });

    EXPECT_EQ(opened.urls, QStringList({"file:///tmp/one", "file:///tmp/two"}));
}

} // namespace
} // namespace tallyglass

#include "WorkspaceTests.moc"
