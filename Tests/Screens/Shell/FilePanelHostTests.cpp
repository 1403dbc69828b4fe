#include "Tallyglass/Desktop/FilePanels.h"
#include "Tests/Screens/BrokenModule.h"
#include "Tests/Screens/QmlScreen.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QMetaObject>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FilePanelHostTest : public testing::Test {
protected:
    /// The dialog that is open, once it is.
    QObject* dialog() {
        QObject* open = nullptr;
        m_screen.until([&] {
            for (QObject* object : m_screen.root()->findChildren<QObject*>())
                if (object->inherits("QQuickAbstractDialog") && object->property("visible").toBool())
                    open = object;
            return open != nullptr;
        });
        return open;
    }

    Alerts m_alerts;
    FilePanels m_panels{m_alerts};
    QObject m_receiver;
    std::optional<FilePanels::Choice> m_choice;
    std::function<void(const FilePanels::Choice&)> m_chosen = [this](const auto& choice) {
        m_choice = choice;
    };
    test::QmlScreen m_screen{"FilePanelHost {}", {{"panels", QVariant::fromValue(&m_panels)}}};
};

TEST_F(FilePanelHostTest, opensADialogAndPassesTheChosenFileOn) {
    const test::TemporaryFolder folder;
    const auto file = folder.write("a file", "");
    m_panels.show({.kind = FilePanel::Kind::openFiles, .message = "Choose files"}, &m_receiver, m_chosen);

    QObject* files = dialog();
    ASSERT_TRUE(files);
    EXPECT_EQ(files->property("title"), "Choose files");
    files->setProperty("currentFolder", QUrl::fromLocalFile(QString::fromStdString(folder.path().string())));
    m_screen.until([&] { return m_screen.tree().hasText("a file"); });
    const auto row = m_screen.tree().get(QAccessible::ListItem, "");
    const auto* item = qobject_cast<QQuickItem*>(row.object());
    m_screen.click(item->mapToScene(QPointF(item->width() / 2, item->height() / 2)));
    m_screen.until([&] { return !files->property("selectedFile").toUrl().isEmpty(); });
    QMetaObject::invokeMethod(files, "accept");

    m_screen.until([&] { return m_choice.has_value(); });
    EXPECT_THAT(*m_choice, ElementsAre(file));
    EXPECT_FALSE(m_panels.isShowing());
}

TEST_F(FilePanelHostTest, suggestsANameToSaveUnder) {
    m_panels.show({.kind = FilePanel::Kind::save, .message = "Export", .name = "a.txt"}, &m_receiver,
                  m_chosen);

    QObject* files = dialog();
    ASSERT_TRUE(files);
    EXPECT_TRUE(files->property("selectedFile").toUrl().fileName() == "a.txt");
    QMetaObject::invokeMethod(files, "accept");
    m_screen.until([&] { return m_choice.has_value(); });
    EXPECT_EQ(m_choice->front().filename(), "a.txt");
}

TEST_F(FilePanelHostTest, opensTheNextPanelWhenOneIsDeclined) {
    m_panels.show({.kind = FilePanel::Kind::openFolder, .message = "One"}, &m_receiver, m_chosen);
    m_panels.show({.kind = FilePanel::Kind::openFiles, .message = "Two"}, &m_receiver, m_chosen);

    QObject* first = dialog();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->property("title"), "One");
    QMetaObject::invokeMethod(first, "reject");
    m_screen.until([&] { return m_choice.has_value(); });
    EXPECT_THAT(*m_choice, IsEmpty());
    m_screen.until([&] { return m_panels.current().message == "Two"; });
    QObject* second = dialog();
    ASSERT_TRUE(second);
    m_screen.until([&] { return dialog()->property("title") == "Two"; });
}

/// Whether a request for a file is declined with the reason in an alert while a module of Qt's is broken.
bool isDeclinedWithout(const char* module) {
    const test::BrokenModule broken(module);
    Alerts alerts;
    FilePanels panels(alerts);
    QObject receiver;
    std::optional<FilePanels::Choice> choice;
    test::QmlScreen screen("FilePanelHost {}", {{"panels", QVariant::fromValue(&panels)}});

    panels.show({.kind = FilePanel::Kind::openFiles}, &receiver,
                [&](const auto& chosen) { choice = chosen; });

    screen.until([&] { return choice.has_value(); });
    EXPECT_THAT(choice, testing::Optional(IsEmpty()));
    EXPECT_FALSE(panels.isShowing());
    EXPECT_TRUE(alerts.current().isWarning());
    EXPECT_TRUE(alerts.current().text.contains(broken.missingPart)) << qPrintable(alerts.current().text);
    return !testing::Test::HasFailure();
}

TEST(FilePanelHostDeathTest, declinesWithTheReasonInAnAlertWhenAPartOfQtIsMissing) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process that hasn't loaded the modules yet
    for (const char* module :
         {"QtQuick.Dialogs", "QtQuick.Controls", "QtQuick.Window", "Qt.labs.folderlistmodel"})
        EXPECT_EXIT(std::_Exit(isDeclinedWithout(module) ? 0 : 1), testing::ExitedWithCode(0), "") << module;
}

} // namespace
} // namespace tallyglass
