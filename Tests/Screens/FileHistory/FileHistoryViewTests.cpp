#include "Tallyglass/Screens/FileHistory/FileHistoryViewModel.h"
#include "Tests/Screens/QmlScreen.h"
#include "Tests/Screens/ScreenStage.h"
#include "Tests/Support/Models/ScriptedMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace tallyglass {
namespace {

using testing::Contains;
using testing::ElementsAre;
using Role = QAccessible::Role;

namespace fs = std::filesystem;

const QString thinSpace = QString(QChar(0x202F));

class FileHistoryOnScreen : public testing::Test {
protected:
    FileHistoryOnScreen() { stage.model.setFdaStatus(FDAStatus::granted); }

    /// In four backups: version 1 twice, nothing, version 2 with 2,000 bytes.
    void setVersions() {
        roots = machine.setBackups(4);
        const auto file = [this](std::size_t backup) { return roots[backup] + "/Data/Users/me/notes.txt"; };
        for (std::size_t backup = 0; backup < 4; ++backup)
            fs::create_directories(fs::path(file(backup)).parent_path());
        std::ofstream(file(0)) << "one";
        fs::create_hard_link(file(0), file(1));
        std::ofstream(file(3)) << std::string(2000, '2');
    }
    test::QmlScreen& open(QSize size = {900, 1400}) {
        screen = std::make_unique<test::QmlScreen>("FileHistoryView {}", stage.properties(), size);
        viewModel = screen->root()->findChild<FileHistoryViewModel*>();
        return *screen;
    }
    void trace(const char* path = "/Users/me/notes.txt") {
        viewModel->trace(QString::fromUtf8(path));
        screen->until([this] { return !viewModel->history()->progress(); });
        settle();
    }
    void settle() const {
        for (int turn = 0; turn < 4; ++turn) {
            QCoreApplication::processEvents();
            static_cast<void>(screen->picture());
        }
    }
    [[nodiscard]] bool has(Role role, const char* name) const {
        return screen->tree().find(role, QString::fromUtf8(name)).has_value();
    }
    [[nodiscard]] bool hasText(const QString& text) const { return screen->tree().hasText(text); }
    [[nodiscard]] test::Element get(Role role, const QString& name) const {
        return screen->tree().get(role, name);
    }
    /// "Nov 22, 2025 at 4:00 PM" of one of the backups.
    [[nodiscard]] QString dateOf(int backup) const {
        return QStringLiteral("Nov %1, 2025 at 4:00%2PM").arg(20 + backup).arg(thinSpace);
    }

    const test::ScriptedMachine machine;
    std::vector<std::string> roots;
    test::ScreenStage stage{machine.environment()};
    std::unique_ptr<test::QmlScreen> screen;
    FileHistoryViewModel* viewModel = nullptr;
};

TEST_F(FileHistoryOnScreen, isLockedWithoutFullDiskAccess) {
    stage.model.setFdaStatus(FDAStatus::denied);
    open();
    EXPECT_TRUE(hasText("File history needs Full Disk Access"));
    EXPECT_TRUE(hasText("Reading a file's versions means looking inside each backup."));
    get(Role::Button, "Show me how").press();
    EXPECT_THAT(stage.sheets, ElementsAre(ScreenContext::AppAccessGuide));
}

TEST_F(FileHistoryOnScreen, showsNothingBeforeTheFirstScanAndThenTheVersions) {
    setVersions();
    open();
    EXPECT_FALSE(hasText("Not found in any backup"));
    EXPECT_FALSE(has(Role::Heading, "Versions"));

    trace();
    EXPECT_TRUE(has(Role::Heading, "Versions"));
    const auto tree = screen->tree();
    EXPECT_EQ(tree.value("Distinct versions").value_or(""), "2, across 4 backups");
    EXPECT_EQ(tree.value("Present in").value_or(""), "3, backups");
    EXPECT_EQ(tree.value("Current size").value_or(""), "2 KB, latest version");
    EXPECT_THAT(tree.value("Version 2, " + dateOf(3) + ", latest").value_or("").toStdString(),
                testing::StartsWith("2 KB · kept in 1 backup · modified "));
    EXPECT_THAT(tree.value("Version 1, " + dateOf(1)).value_or("").toStdString(),
                testing::StartsWith("3 bytes · kept in 2 backups · modified "));
}

TEST_F(FileHistoryOnScreen, tracesWhatIsTyped) {
    setVersions();
    open();
    auto* field = qobject_cast<QQuickItem*>(get(Role::EditableText, "Path").object());
    field->forceActiveFocus();
    screen->type("/nowhere");
    screen->key(Qt::Key_Return);
    screen->until([this] { return hasText("Not found in any backup"); });
    EXPECT_TRUE(hasText("Checked 4 backups. Verify the path — it should be the path on your Mac, not inside "
                        "the backup."));
}

TEST_F(FileHistoryOnScreen, cancelsAScan) {
    machine.hold("listbackups");
    open();
    viewModel->trace("/Users/me/notes.txt");
    screen->until([this] { return has(Role::Button, "Cancel") && hasText("Listing backups…"); });
    get(Role::Button, "Cancel").press();
    screen->until([this] { return has(Role::Button, "Trace"); });
    EXPECT_FALSE(has(Role::Heading, "Versions"));
}

TEST_F(FileHistoryOnScreen, showsAFailure) {
    machine.fail("listbackups", "no disk");
    open();
    trace();
    EXPECT_TRUE(viewModel->content().error.startsWith(QStringLiteral("Backups couldn't be listed: ")));
    screen->until(
        [this] { return screen->tree().find(Role::AlertMessage, viewModel->content().error).has_value(); });
}

TEST_F(FileHistoryOnScreen, walksTheStripByKeyboard) {
    setVersions();
    open();
    trace();
    const auto strip = [this] { return get(Role::Slider, "Presence in backups"); };
    auto* item = qobject_cast<QQuickItem*>(strip().object());
    item->forceActiveFocus(Qt::TabFocusReason);

    screen->key(Qt::Key_End);
    EXPECT_EQ(strip().description(), dateOf(3) + ": version 2 of 2, 2 KB");
    EXPECT_EQ(viewModel->rows()->currentRow(), 0);
    screen->key(Qt::Key_Left);
    EXPECT_EQ(strip().description(), dateOf(2) + ": missing");
    screen->key(Qt::Key_PageUp);
    EXPECT_EQ(strip().description(), dateOf(1) + ": version 1 of 2, 3 bytes");
    EXPECT_EQ(viewModel->rows()->currentRow(), 1);
    screen->key(Qt::Key_Home);
    screen->key(Qt::Key_Left);
    EXPECT_EQ(strip().description(), dateOf(0) + ": version 1 of 2, 3 bytes");
    strip().invoke(QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(viewModel->selectedBackup(), 1U);
    settle();
    EXPECT_TRUE(hasText(dateOf(1) + ": version 1 of 2, 3 bytes"));
}

TEST_F(FileHistoryOnScreen, offersWhatCanBeDoneWithAVersion) {
    setVersions();
    open();
    trace();
    auto* list = qobject_cast<QQuickItem*>(get(Role::List, "Versions").object());
    list->forceActiveFocus(Qt::TabFocusReason);
    screen->key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(stage.clipboard.text, QString::fromStdString(roots[3] + "/Data/Users/me/notes.txt"));

    QStringList compared;
    QObject::connect(&stage.context, &ScreenContext::comparisonRequested, list,
                     [&](const QString& older, const QString& newer) {
                         compared = {older, newer};
                     });
    const auto choose = [this](const char* item) {
        screen->key(Qt::Key_F10, Qt::ShiftModifier);
        screen->until([&] { return has(Role::MenuItem, item); });
        get(Role::MenuItem, item).press();
        screen->until([&] { return !has(Role::MenuItem, item); });
    };
    choose("Show in Backup");
    EXPECT_THAT(stage.workspace.requests, Contains("reveal " + roots[3] + "/Data/Users/me/notes.txt"));
    choose("Compare with the Version Before");
    EXPECT_EQ(compared, (QStringList{QString::fromStdString(roots[1]), QString::fromStdString(roots[3])}));
}

TEST_F(FileHistoryOnScreen, asksWhereToExportTo) {
    setVersions();
    open();
    trace();
    get(Role::Button, "Export").press();
    EXPECT_EQ(stage.panels.current().name, "notes.txt");
    const fs::path destination = stage.folder / "copy.txt";
    stage.panels.answer({QUrl::fromLocalFile(QString::fromStdString(destination.string()))});
    screen->until([&] { return !stage.workspace.requests.empty(); });
    EXPECT_EQ(fs::file_size(destination), 2000U);
    EXPECT_THAT(stage.workspace.requests, ElementsAre("reveal " + destination.string()));
}

} // namespace
} // namespace tallyglass
