#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Desktop/FilePanels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Alerts, areShownOneAfterTheOther) {
    Alerts alerts;
    QObject receiver;
    QStringList answers;
    QSignalSpy changed(&alerts, &Alerts::currentChanged);

    alerts.show({.title = "one"}, &receiver, [&](bool yes) { answers.append(yes ? "one yes" : "one no"); });
    alerts.show({.title = "two"}, &receiver, [&](bool yes) { answers.append(yes ? "two yes" : "two no"); });
    EXPECT_EQ(alerts.current().title, "one");
    alerts.answer(true);
    EXPECT_EQ(alerts.current().title, "two");
    alerts.answer(false);

    EXPECT_FALSE(alerts.isShowing());
    EXPECT_EQ(alerts.current(), Alert());
    EXPECT_EQ(answers, QStringList({"one yes", "two no"}));
    EXPECT_EQ(changed.count(), 3);
    alerts.answer(true);
    EXPECT_EQ(changed.count(), 3);
}

TEST(Alerts, mayLeadToTheNext) {
    Alerts alerts;
    QObject receiver;

    alerts.show({.title = "one"}, &receiver, [&](bool) { alerts.show({.title = "two"}); });
    alerts.answer(true);

    EXPECT_EQ(alerts.current().title, "two");
}

TEST(Alerts, areAnsweredToNobodyWhenTheirReceiverHasGone) {
    Alerts alerts;
    auto receiver = std::make_unique<QObject>();
    bool isAnswered = false;

    alerts.show({.title = "one"}, receiver.get(), [&](bool) { isAnswered = true; });
    receiver.reset();
    alerts.answer(true);

    EXPECT_FALSE(isAnswered);
}

TEST(Alerts, sayByTheirSymbolAndButtonsWhatTheyAre) {
    const Alert message{.title = "t"};
    const Alert warning{.kind = Alert::Kind::warning, .title = "t", .confirmText = "Remove"};

    EXPECT_EQ(message.symbol(), "info.circle");
    EXPECT_EQ(message.confirmLabel(), "OK");
    EXPECT_EQ(warning.symbol(), "exclamationmark.triangle.fill");
    EXPECT_EQ(warning.confirmLabel(), "Remove");
}

TEST(FilePanels, giveTheChosenFilesAndNothingThatIsNone) {
    Alerts alerts;
    FilePanels panels(alerts);
    QObject receiver;
    FilePanels::Choice choice;

    panels.show({.kind = FilePanel::Kind::openFiles, .message = "m"}, &receiver,
                [&](const auto& chosen) { choice = chosen; });
    EXPECT_EQ(panels.current().message, "m");
    panels.answer({QUrl("file:///tmp/50%25%20%C3%A4"), QUrl("https://example.org/x"), QUrl("file:///b")});

    EXPECT_THAT(choice, ElementsAre("/tmp/50% \xC3\xA4", "/b"));
    EXPECT_EQ(panels.current().kind, FilePanel::Kind::none);
}

TEST(FilePanels, giveAFileWhoseNameWasTypedIntoTheDialog) {
    const QList<QUrl> typed{QUrl("/home/a/new name.txt"), QUrl("/home/a/50% #1?.txt"), QUrl("relative"),
                            QUrl()};
    EXPECT_THAT(FilePanels::localFiles(typed), ElementsAre("/home/a/new name.txt", "/home/a/50% #1?.txt"));
}

TEST(FilePanels, giveNothingWhenTheUserDeclines) {
    Alerts alerts;
    FilePanels panels(alerts);
    QObject receiver;
    FilePanels::Choice choice{"/before"};

    panels.show({.kind = FilePanel::Kind::save, .name = "a.txt"}, &receiver,
                [&](const auto& chosen) { choice = chosen; });
    EXPECT_TRUE(panels.current().suggestion().toLocalFile().endsWith("/a.txt"));
    panels.answer({});

    EXPECT_THAT(choice, IsEmpty());
}

} // namespace
} // namespace tallyglass
