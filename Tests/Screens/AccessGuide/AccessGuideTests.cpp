#include "Tallyglass/Screens/AccessGuide/AccessGuideContent.h"
#include "Tests/Screens/QmlScreen.h"
#include "Tests/Screens/ScreenStage.h"
#include "Tests/Support/Models/FakeTimer.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

namespace tallyglass {
namespace {

TEST(AccessGuide, saysWhetherAccessWasGranted) {
    const AccessGuideContent waiting = accessGuideContent(AccessTarget::app, false, false);
    EXPECT_EQ(waiting.symbol, "lock.shield");
    EXPECT_EQ(waiting.status, "Waiting for access…");
    EXPECT_EQ(waiting.statusSymbol, "");

    const AccessGuideContent granted = accessGuideContent(AccessTarget::app, true, false);
    EXPECT_EQ(granted.symbol, "checkmark.shield.fill");
    EXPECT_EQ(granted.status, "Access granted");
    EXPECT_EQ(granted.statusSymbol, "checkmark.circle.fill");
}

class AccessGuideScreen : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        AppEnvironment environment{SystemPaths(folder.path())};
        environment.makeTimer = test::FakeTimer::factory(timer);
        stage = std::make_unique<test::ScreenStage>(environment);
        QVariantMap properties = stage->properties();
        properties["forHelper"] = GetParam();
        screen = std::make_unique<test::QmlScreen>(
            "import QtQuick.Controls.Basic as Basic\n"
            "Basic.ApplicationWindow { id: window; width: 720; height: 560; visible: true\n"
            "required property ScreenContext context; required property bool forHelper\n"
            "Button { text: 'Open'; onClicked: guide.open() }\n"
            "FullDiskAccessGuide { id: guide; context: window.context; forHelper: window.forHelper } }",
            properties);
        screen->theme().setReduceMotion(true);
        screen->key(Qt::Key_Tab);
        screen->key(Qt::Key_Return);
        screen->until([this] { return screen->tree().find(QAccessible::Button, "Done").has_value(); });
    }
    void press(const char* button) { screen->tree().get(QAccessible::Button, button).press(); }

    test::TemporaryFolder folder;
    std::shared_ptr<test::FakeTimer::State> timer = std::make_shared<test::FakeTimer::State>();
    std::unique_ptr<test::ScreenStage> stage;
    std::unique_ptr<test::QmlScreen> screen;
};

class AppAccessGuide : public AccessGuideScreen {};
class HelperAccessGuide : public AccessGuideScreen {};

TEST_P(AppAccessGuide, readsFromTopToBottom) {
    EXPECT_EQ(
        screen->tree().texts(),
        (QStringList{"Give Tallyglass access",
                     "macOS won't ask for this, so it's added by hand — once. It takes about a minute.", "1",
                     "Open Full Disk Access",
                     "The button below opens System Settings › Privacy & Security › Full Disk Access.", "2",
                     "Drag Tallyglass into the list",
                     "Drag the icon above straight onto the list — or click + and choose it from "
                     "Applications. If it's already listed, just turn its switch on.",
                     "3", "Turn its switch on",
                     "macOS may ask you to quit and reopen the app — that's expected.", "4", "Come back here",
                     "The app unlocks on its own the moment access is granted.", "Waiting for access…"}));
    EXPECT_TRUE(screen->tree().find(
        QAccessible::Graphic,
        "Illustration: drag Tallyglass into the Full Disk Access list and turn its switch on."));
}

TEST_P(AppAccessGuide, opensTheSettingsAndRevealsTheApp) {
    press("Open Full Disk Access");
    press("Reveal app");

    EXPECT_THAT(
        stage->workspace.requests,
        testing::ElementsAre("open x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles",
                             "reveal " + QCoreApplication::applicationFilePath().toStdString()));
    EXPECT_FALSE(timer->remaining) << "it waits for nothing";
}

TEST_P(AppAccessGuide, showsTheGrantAsItComes) {
    stage->model.setFdaStatus(FDAStatus::granted);

    screen->until([this] { return screen->tree().hasText("Access granted"); });
    EXPECT_FALSE(screen->tree().hasText("Waiting for access…"));
}

TEST_P(AppAccessGuide, closesByEscapeAndGivesTheKeyboardBack) {
    screen->key(Qt::Key_Escape);

    screen->until([this] { return !screen->tree().find(QAccessible::Button, "Done"); });
    EXPECT_EQ(screen->focusedName(), "Open");
}

TEST_P(AppAccessGuide, isWalkedByTabInReadingOrder) {
    QStringList visited{screen->focusedName()};
    for (int i = 0; i < 2; ++i) {
        screen->key(Qt::Key_Tab);
        visited.append(screen->focusedName());
    }

    EXPECT_EQ(visited, (QStringList{"Done", "Open Full Disk Access", "Reveal app"}));
}

TEST_P(AppAccessGuide, letsItsItemBeDragged) {
    const auto* tile = screen->root()->findChild<QObject*>("dragSource");
    ASSERT_TRUE(tile);

    const QVariantMap data = tile->property("dragged").toMap();

    const QUrl url(data["text/uri-list"].toString().trimmed());
    EXPECT_EQ(url, QUrl::fromLocalFile(QCoreApplication::applicationFilePath()));
}

TEST_P(HelperAccessGuide, saysHowToGrantTheHelper) {
    for (
        const char* text :
        {"Give the helper access",
         "Per-backup sizes come from a file only the helper can read. This grant is separate from the app's.",
         "Open Full Disk Access & reveal the helper",
         "The button below opens the settings pane and a Finder window with tallyglass-helper selected.",
         "Drag tallyglass-helper into the list",
         "Drag the icon above — or the file from the Finder window that opens — onto the list. Its folder is "
         "hidden, so the + picker can't reach it; dragging is the way.",
         "Turn its switch on", "Come back and press Refresh",
         "Per-backup sizes appear within a moment; otherwise they arrive on the helper's next run."})
        EXPECT_TRUE(screen->tree().hasText(QString::fromUtf8(text))) << text;
}

TEST_P(HelperAccessGuide, saysForTwoSecondsThatThePathWasCopied) {
    press("Copy path");
    screen->until([this] { return screen->tree().find(QAccessible::Button, "Copied").has_value(); });
    EXPECT_TRUE(stage->clipboard.text.endsWith("/usr/local/libexec/tallyglass-helper"));
    EXPECT_EQ(timer->remaining, 2);

    timer->fire();

    EXPECT_TRUE(screen->tree().find(QAccessible::Button, "Copy path"));
}

TEST_P(HelperAccessGuide, waitsForTheManifestWhileItIsOpen) {
    stage->model.setFdaStatus(FDAStatus::granted);
    EXPECT_EQ(timer->remaining, 3);
    EXPECT_TRUE(screen->tree().hasText("Waiting for access…"))
        << "the program's own grant isn't the helper's";

    stage->model.setManifest({BackupManifestEntry{.completionDate = stage->model.now()}});
    screen->until([this] { return screen->tree().hasText("Access granted"); });

    press("Done");
    screen->until([this] { return !screen->tree().find(QAccessible::Button, "Done"); });
    EXPECT_FALSE(timer->timer) << "closed, it waits no longer";
}

INSTANTIATE_TEST_SUITE_P(, AppAccessGuide, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(, HelperAccessGuide, testing::Values(true));

} // namespace
} // namespace tallyglass
