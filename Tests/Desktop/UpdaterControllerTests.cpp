#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Desktop/UpdaterController.h"
#include "Tests/Desktop/FeedServer.h"
#include "Tests/Support/FakeWorkspace.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

QByteArray feedOf(const QByteArray& version, const QByteArray& link = "https://example.org/get") {
    return "<rss xmlns:v='http://example.org/versions'><channel><item><v:version>" + version +
           "</v:version><link>" + link + "</link></item></channel></rss>";
}

class UpdaterControllerTest : public testing::Test {
protected:
    [[nodiscard]] UpdaterOptions options(const QString& path = "/feed") const {
        return {.feed = m_server.url(path),
                .version = "1.4",
                .limits = {.bytes = 4096},
                .tls = m_server.trust(),
                .delay = std::chrono::milliseconds(0)};
    }

    /// What a check on request says in the end.
    Alert alertAfterCheck(const UpdaterOptions& options) {
        UpdaterController updater(options, m_alerts, m_workspace);
        updater.checkForUpdates();
        EXPECT_FALSE(updater.canCheckForUpdates());
        test::waitUntil([&] { return m_alerts.isShowing(); });
        EXPECT_TRUE(updater.canCheckForUpdates());
        const Alert alert = m_alerts.current();
        m_alerts.answer(false);
        return alert;
    }

    test::FeedServer m_server;
    test::FakeWorkspace m_workspace;
    Alerts m_alerts;
};

TEST_F(UpdaterControllerTest, offersANewerVersionAndOpensItsLink) {
    m_server.answers["/feed"] = test::FeedServer::ok(feedOf("1.10"));
    UpdaterController updater(options(), m_alerts, m_workspace);
    QSignalSpy changed(&updater, &UpdaterController::canCheckForUpdatesChanged);

    updater.checkForUpdates();
    updater.checkForUpdates();
    test::waitUntil([&] { return m_alerts.isShowing(); });

    EXPECT_EQ(m_alerts.current().title, "Tallyglass 1.10 is available");
    EXPECT_EQ(m_alerts.current().text,
              "You have version 1.4. The download opens in your browser, from example.org.");
    EXPECT_THAT(m_workspace.requests, IsEmpty());
    m_alerts.answer(true);
    EXPECT_THAT(m_workspace.requests, ElementsAre("open https://example.org/get"));
    EXPECT_FALSE(m_alerts.isShowing());
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(m_server.asked.size(), 1);
}

TEST_F(UpdaterControllerTest, offersNoLinkWhereTheFeedHasNone) {
    m_server.answers["/feed"] = test::FeedServer::ok(feedOf("2", "http://example.org/get"));
    const Alert alert = alertAfterCheck(options());
    EXPECT_EQ(alert.title, "Tallyglass 2 is available");
    EXPECT_EQ(alert.cancelText, "");
}

TEST_F(UpdaterControllerTest, saysWhenThereIsNothingNewer) {
    m_server.answers["/feed"] = test::FeedServer::ok(feedOf("1.4.0"));
    const Alert alert = alertAfterCheck(options());
    EXPECT_EQ(alert.title, "Tallyglass is up to date");
    EXPECT_EQ(alert.text, "Version 1.4 is the newest there is.");
}

TEST_F(UpdaterControllerTest, isQuietAfterTheStartUnlessThereIsSomethingNewer) {
    m_server.answers["/feed"] = test::FeedServer::ok(feedOf("1.4"));
    m_server.answers["/broken"] = test::FeedServer::ok("<html/>");
    for (const auto* path : {"/feed", "/broken"}) {
        UpdaterController updater(options(path), m_alerts, m_workspace);
        QSignalSpy changed(&updater, &UpdaterController::canCheckForUpdatesChanged);
        updater.start();
        test::waitUntil([&] { return changed.count() == 2; });
        EXPECT_FALSE(m_alerts.isShowing()) << path;
    }

    m_server.answers["/feed"] = test::FeedServer::ok(feedOf("1.5"));
    UpdaterController updater(options(), m_alerts, m_workspace);
    updater.start();
    test::waitUntil([&] { return m_alerts.isShowing(); });
    EXPECT_EQ(m_alerts.current().title, "Tallyglass 1.5 is available");
}

TEST_F(UpdaterControllerTest, followsRedirectsOnlyToHTTPSAndNotForEver) {
    m_server.answers["/feed"] = test::FeedServer::ok(feedOf("1.5"));
    m_server.answers["/moved"] = test::FeedServer::redirect(m_server.url("/feed"));
    m_server.answers["/insecure"] = test::FeedServer::redirect(QUrl("http://localhost:9/feed"));
    m_server.answers["/file"] = test::FeedServer::redirect(QUrl("file:///etc/hostname"));
    m_server.answers["/circle"] = test::FeedServer::redirect(m_server.url("/circle"));

    EXPECT_EQ(alertAfterCheck(options("/moved")).title, "Tallyglass 1.5 is available");
    EXPECT_EQ(alertAfterCheck(options("/insecure")).text,
              "The server leads to an address without encryption.");
    EXPECT_EQ(alertAfterCheck(options("/file")).title, "Couldn’t check for updates");
    const Alert circle = alertAfterCheck(options("/circle"));
    EXPECT_EQ(circle.title, "Couldn’t check for updates");
    EXPECT_EQ(circle.text, "Too many redirects");
    // Five redirects. Qt now and then sends a request a second time, over another connection.
    EXPECT_LE(m_server.asked.count("/circle"), 2 * 6);
}

TEST_F(UpdaterControllerTest, saysWhatIsWrongWithTheServer) {
    m_server.answers["/long"] = test::FeedServer::ok(QByteArray(100000, 'x'));
    m_server.answers["/missing"] = "HTTP/1.1 404 Not Found\r\nConnection: close\r\nContent-Length: 0\r\n\r\n";
    m_server.answers["/nothing"] = "HTTP/1.1 204 No Content\r\nConnection: close\r\n\r\n";
    m_server.answers["/page"] = test::FeedServer::ok("<html><body>Hello</body></html>");
    const auto text = [this](const UpdaterOptions& asked) {
        const Alert alert = alertAfterCheck(asked);
        EXPECT_TRUE(alert.isWarning());
        EXPECT_EQ(alert.title, "Couldn’t check for updates");
        return alert.text;
    };

    EXPECT_EQ(text(options("/long")), "The answer is too long to be a list of versions.");
    EXPECT_EQ(text(options("/nothing")), "The server has no list of versions there.");
    EXPECT_EQ(text(options("/page")), "The server’s answer isn’t a list of versions.");
    EXPECT_NE(text(options("/missing")), "");
    auto silent = options("/silent");
    silent.limits.time = std::chrono::milliseconds(50);
    EXPECT_EQ(text(silent), "The server took too long.");
    auto stranger = options();
    stranger.tls = QSslConfiguration::defaultConfiguration();
    EXPECT_NE(text(stranger), "");
}

TEST_F(UpdaterControllerTest, checksNothingWithoutAFeedOfHTTPS) {
    for (const auto* feed : {"", "http://example.org/feed", "file:///tmp/feed", "https:"}) {
        UpdaterController updater({.feed = QUrl(feed), .version = "1"}, m_alerts, m_workspace);
        EXPECT_FALSE(updater.canCheckForUpdates()) << feed;
        updater.start();
        updater.checkForUpdates();
    }
    EXPECT_FALSE(m_alerts.isShowing());
}

TEST_F(UpdaterControllerTest, givesACheckUpWhenItEnds) {
    {
        UpdaterController updater(options("/silent"), m_alerts, m_workspace);
        updater.checkForUpdates();
        test::waitUntil([&] { return !m_server.asked.isEmpty(); });
    }
    EXPECT_FALSE(m_alerts.isShowing());
}

} // namespace
} // namespace tallyglass
