#include "Tallyglass/Screens/Exclusions/ExclusionsViewModel.h"
#include "Tests/Screens/QmlScreen.h"
#include "Tests/Screens/ScreenStage.h"
#include "Tests/Support/Models/ScriptedMachine.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <algorithm>
#include <memory>

namespace tallyglass {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Role = QAccessible::Role;

constexpr auto nothingTracked = "Nothing tracked yet. Use Add Items to choose files or folders.";

/// The machine has to be there first.
struct WatchedMachine {
    test::ScriptedMachine machine;
};

struct ExclusionsStage : WatchedMachine, test::ScreenStage {
    ExclusionsStage() : ScreenStage(machine.environment()) {}
};

class ExclusionsOnScreen : public testing::Test {
protected:
    void watch(const std::vector<std::string>& paths) const {
        defaults.setStringArray(ExclusionsModel::watchedPathsKey, paths);
    }
    [[nodiscard]] std::vector<std::string> watched() const {
        return defaults.stringArray(ExclusionsModel::watchedPathsKey).value_or(std::vector<std::string>());
    }
    void open(QSize size = {900, 720}) {
        screen = std::make_unique<test::QmlScreen>("ExclusionsView {}", stage.properties(), size);
        viewModel = screen->root()->findChild<ExclusionsViewModel*>();
        settle();
    }
    /// With three items: one can be excluded, one is left out with its folder, and one doesn't exist.
    void openWithItems(QSize size = {900, 720}) {
        watch({"/b/included", "/c/inherited", "/d/gone"});
        stage.machine.answer("isexcluded", "[Included] /b/included\n[Excluded] /c/inherited\n");
        open(size);
    }
    void settle() {
        screen->until(
            [this] { return viewModel->exclusions()->isLoaded() && !viewModel->exclusions()->isBusy(); });
        layOut();
    }
    void layOut() {
        for (int turn = 0; turn < 4; ++turn) {
            QCoreApplication::processEvents();
            static_cast<void>(screen->picture());
        }
    }
    [[nodiscard]] test::Element get(Role role, const char* name) const {
        return screen->tree().get(role, QString::fromUtf8(name));
    }
    [[nodiscard]] bool has(Role role, const char* name) const {
        return screen->tree().find(role, QString::fromUtf8(name)).has_value();
    }
    [[nodiscard]] bool hasText(const char* text) const {
        return screen->tree().hasText(QString::fromUtf8(text));
    }
    [[nodiscard]] auto count(Role role, const char* name) const {
        return std::ranges::count_if(screen->tree().elements(), [&](const test::Element& element) {
            return element.role() == role && element.name() == QString::fromUtf8(name);
        });
    }
    void focusList() const {
        qobject_cast<QQuickItem*>(get(Role::List, "Managed items").object())
            ->forceActiveFocus(Qt::TabFocusReason);
    }
    [[nodiscard]] std::string currentPath() const {
        return viewModel->rows()->keyAt(viewModel->rows()->currentRow()).toStdString();
    }
    void openMenu(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        screen->key(key, modifiers);
        screen->until([this] { return has(Role::MenuItem, "Copy Path"); });
    }
    /// Carries these over the screen, and drops them if it would take them. Whether it would.
    bool drag(const QList<QUrl>& urls, bool drops) {
        QMimeData data;
        data.setUrls(urls);
        const QPoint position(400, 300);
        QDragEnterEvent enter(position, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(screen->window(), &enter);
        layOut();
        const bool isTaken = has(Role::Heading, "Drop files or folders to track them here");
        if (drops) {
            QDropEvent drop(position, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(screen->window(), &drop);
            EXPECT_EQ(drop.isAccepted(), isTaken);
            EXPECT_TRUE(!isTaken || drop.dropAction() == Qt::CopyAction);
        } else {
            QDragLeaveEvent leave;
            QCoreApplication::sendEvent(screen->window(), &leave);
        }
        layOut();
        EXPECT_FALSE(has(Role::Heading, "Drop files or folders to track them here"));
        return isTaken;
    }

    ExclusionsStage stage;
    const UserDefaults defaults{stage.machine.defaultsFile()};
    std::unique_ptr<test::QmlScreen> screen;
    ExclusionsViewModel* viewModel = nullptr;
};

TEST_F(ExclusionsOnScreen, saysThatNothingIsTracked) {
    open();
    EXPECT_TRUE(has(Role::Heading, "Exclusions"));
    EXPECT_TRUE(has(Role::Heading, "What's left out of backups"));
    EXPECT_TRUE(hasText(nothingTracked));
    EXPECT_FALSE(has(Role::Heading, "System-wide rules"));
    EXPECT_FALSE(has(Role::Indicator, "Updating exclusions"));
    EXPECT_THAT(stage.machine.calls(), IsEmpty());
}

TEST_F(ExclusionsOnScreen, claimsNothingBeforeItKnows) {
    watch({"/a"});
    stage.machine.hold("isexcluded");
    screen = std::make_unique<test::QmlScreen>("ExclusionsView {}", stage.properties());
    screen->until([this] { return has(Role::Indicator, "Updating exclusions"); });
    EXPECT_FALSE(hasText(nothingTracked));
    stage.machine.answer("isexcluded", "[Included] /a\n");
    screen->until([this] { return screen->tree().value("/a") == "Included in backups."; });
    EXPECT_FALSE(has(Role::Indicator, "Updating exclusions"));
}

TEST_F(ExclusionsOnScreen, listsTheRulesOfTheSystem) {
    stage.machine.folder().write("Library/Preferences/com.apple.TimeMachine.plist",
                                 "<plist><dict><key>AutoBackup</key><true/><key>SkipPaths</key><array>"
                                 "<string>/Users/alex/Downloads</string></array></dict></plist>");
    open();
    EXPECT_TRUE(has(Role::Heading, "System-wide rules"));
    EXPECT_TRUE(hasText("/Users/alex/Downloads"));
}

TEST_F(ExclusionsOnScreen, offersASwitchOnlyWhereItCanBeUsed) {
    openWithItems();
    EXPECT_FALSE(hasText(nothingTracked));
    EXPECT_EQ(screen->tree().value("/b/included"), "Included in backups.");
    EXPECT_EQ(screen->tree().value("/d/gone"), "This item no longer exists.");
    EXPECT_EQ(count(Role::CheckBox, "Excluded"), 1);
    EXPECT_EQ(count(Role::Button, "Stop tracking"), 3);
    EXPECT_TRUE(hasText("Inherited"));
}

TEST_F(ExclusionsOnScreen, saysInTheRowThatAChangeIsRunning) {
    openWithItems();
    stage.machine.hold("addexclusion");
    get(Role::CheckBox, "Excluded").press();
    screen->until([this] { return has(Role::Indicator, "Excluding…"); });
    EXPECT_TRUE(has(Role::Indicator, "Updating exclusions"));
    EXPECT_FALSE(get(Role::CheckBox, "Excluded").isEnabled());
    EXPECT_FALSE(get(Role::Button, "Stop tracking").isEnabled());
    EXPECT_TRUE(get(Role::Button, "Add Items").isEnabled());

    stage.machine.fail("addexclusion", "Not permitted\n");
    std::filesystem::remove(stage.machine.folder() / "answers/addexclusion.hold");
    screen->until([this] { return has(Role::AlertMessage, "included: Not permitted"); });
    settle();
    EXPECT_FALSE(get(Role::CheckBox, "Excluded").isChecked()) << "as it was before";
    EXPECT_TRUE(get(Role::CheckBox, "Excluded").isEnabled());
    EXPECT_FALSE(has(Role::Indicator, "Excluding…"));
}

TEST_F(ExclusionsOnScreen, togglesAndStopsTrackingByKeyboard) {
    openWithItems();
    focusList();
    screen->key(Qt::Key_Space);
    settle();
    EXPECT_THAT(stage.machine.calls(), ElementsAre("isexcluded", "addexclusion", "isexcluded"));

    screen->key(Qt::Key_Down);
    screen->key(Qt::Key_Space);
    settle();
    EXPECT_THAT(stage.machine.calls(), testing::SizeIs(3)) << "an inherited exclusion can't be changed";
    screen->key(Qt::Key_Delete);
    settle();
    EXPECT_THAT(watched(), ElementsAre("/b/included", "/d/gone"));
    EXPECT_EQ(currentPath(), "/d/gone");
    EXPECT_EQ(screen->focusedName(), "/d/gone");

    screen->key(Qt::Key_Delete);
    settle();
    EXPECT_EQ(currentPath(), "/b/included");
    screen->key(Qt::Key_Delete);
    settle();
    EXPECT_THAT(watched(), IsEmpty());
    EXPECT_TRUE(hasText(nothingTracked));
    EXPECT_EQ(screen->focusedName(), "Add Items");
}

TEST_F(ExclusionsOnScreen, stopsTrackingARowWithoutASwitchByItsButton) {
    watch({"/inherited"});
    stage.machine.answer("isexcluded", "[Excluded] /inherited\n");
    open();
    EXPECT_EQ(count(Role::CheckBox, "Excluded"), 0);
    get(Role::Button, "Stop tracking").press();
    settle();
    EXPECT_THAT(watched(), IsEmpty());
}

TEST_F(ExclusionsOnScreen, copiesAndRevealsAndChangesByTheMenu) {
    openWithItems();
    focusList();
    screen->key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(stage.clipboard.text, "/b/included");
    openMenu(Qt::Key_Menu);
    get(Role::MenuItem, "Show in File Manager").press();
    EXPECT_THAT(stage.workspace.requests, ElementsAre("reveal /b/included"));

    screen->key(Qt::Key_Escape);
    screen->until([this] { return !has(Role::MenuItem, "Copy Path"); });
    openMenu(Qt::Key_F10, Qt::ShiftModifier);
    get(Role::MenuItem, "Exclude").press();
    settle();
    EXPECT_THAT(stage.machine.calls(), Contains("addexclusion"));

    screen->key(Qt::Key_Escape);
    screen->until([this] { return !has(Role::MenuItem, "Copy Path"); });
    screen->key(Qt::Key_End);
    openMenu(Qt::Key_Menu);
    EXPECT_FALSE(get(Role::MenuItem, "Show in File Manager").isEnabled());
    EXPECT_FALSE(get(Role::MenuItem, "Exclude").isEnabled());
    get(Role::MenuItem, "Stop tracking").press();
    settle();
    EXPECT_THAT(watched(), ElementsAre("/b/included", "/c/inherited"));
}

TEST_F(ExclusionsOnScreen, addsWhatIsChosen) {
    open();
    get(Role::Button, "Add Items").press();
    EXPECT_EQ(stage.panels.current(), (FilePanel{.kind = FilePanel::Kind::openFiles,
                                                 .message = "Choose files or folders to manage"}));
    stage.panels.answer({QUrl::fromLocalFile("/b"), QUrl::fromLocalFile("/a b")});
    settle();
    EXPECT_THAT(watched(), ElementsAre("/a b", "/b"));

    get(Role::Button, "Add Folder…").press();
    EXPECT_TRUE(stage.panels.current().asksForFolder());
    stage.panels.answer({});
    settle();
    EXPECT_THAT(watched(), ElementsAre("/a b", "/b"));
}

TEST_F(ExclusionsOnScreen, addsTheLocalItemsThatAreDropped) {
    open();
    const QUrl page("https://example.com/page");
    const QUrl folder("file:///a%20folder/");
    EXPECT_FALSE(drag({page}, true));
    EXPECT_TRUE(drag({folder}, false));
    EXPECT_THAT(watched(), IsEmpty());

    EXPECT_TRUE(drag({page, folder, QUrl("file:///file")}, true));
    settle();
    EXPECT_THAT(watched(), ElementsAre("/a folder", "/file"));
}

TEST_F(ExclusionsOnScreen, asksAgainWhenTheUserComesBack) {
    openWithItems();
    auto* page = qobject_cast<QQuickItem*>(screen->root());
    page->setVisible(false);
    stage.machine.answer("isexcluded", "[Included] /b/included\n[Included] /c/inherited\n");
    page->setVisible(true);
    screen->until([this] { return count(Role::CheckBox, "Excluded") == 2; });
}

TEST_F(ExclusionsOnScreen, makesFewRowsOfManyItems) {
    std::vector<std::string> paths;
    for (int index = 1000; index < 3000; ++index)
        paths.push_back("/" + std::to_string(index));
    watch(paths);
    open();
    EXPECT_EQ(viewModel->rows()->count(), 2000);
    EXPECT_LT(count(Role::Button, "Stop tracking"), 60);
    focusList();
    screen->key(Qt::Key_End);
    layOut();
    EXPECT_EQ(screen->focusedName(), "/2999");
}

TEST_F(ExclusionsOnScreen, bringsEachRowIntoASmallWindowAtTwiceTheSizeOfText) {
    openWithItems({460, 440}); // what the frame of the smallest window and its sidebar leave
    screen->theme().setTextScale(2);
    layOut();
    const QRectF window({0, 0}, screen->window()->size());
    focusList();
    for (const char* path : {"/b/included", "/c/inherited", "/d/gone"}) {
        layOut();
        const auto* row = qobject_cast<QQuickItem*>(get(Role::StaticText, path).object());
        EXPECT_TRUE(window.contains(row->mapRectToScene(row->boundingRect()))) << path;
        screen->key(Qt::Key_Down);
    }
}

} // namespace
} // namespace tallyglass
