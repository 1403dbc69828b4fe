#include "Tallyglass/Models/BackfillModel.h"
#include "Tests/Screens/Compare/CompareScreen.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace tallyglass {
namespace {

using test::CompareScreen;
using Role = QAccessible::Role;

const QString thinSpace = QString(QChar(0x202F));

class BackfillCardOnScreen : public testing::Test {
protected:
    void open(int backups) {
        stage.machine.setAdded("/new", {"file"});
        stage.machine.setBackups(backups);
        screen = std::make_unique<CompareScreen>(stage, QSize(900, 900));
        screen->until([&] { return std::ssize(backfill().pairs()) == backups - 1; });
        screen->settle();
    }
    [[nodiscard]] BackfillModel& backfill() { return stage.diff.backfill(); }
    [[nodiscard]] test::Element get(Role role, const char* name) const {
        return screen->tree().get(role, QString::fromUtf8(name));
    }
    [[nodiscard]] bool has(Role role, const char* name) const {
        return screen->tree().find(role, QString::fromUtf8(name)).has_value();
    }
    [[nodiscard]] bool hasText(const QString& text) const { return screen->tree().hasText(text); }
    [[nodiscard]] test::Element strip() const {
        return get(Role::Slider, "Comparisons of neighbouring backups");
    }
    void press(const char* button) {
        get(Role::Button, button).press();
        screen->settle();
    }
    void awaitEnd() {
        screen->until([this] { return !backfill().isRunning(); });
        screen->settle();
    }
    /// "Nov 22, 2025 at 4:00 PM" of one of three backups.
    [[nodiscard]] QString dateOf(int backup) const {
        return QStringLiteral("Nov %1, 2025 at 4:00%2PM").arg(21 + backup).arg(thinSpace);
    }

    test::CompareStage stage;
    std::unique_ptr<CompareScreen> screen;
};

TEST_F(BackfillCardOnScreen, preparesAllAndThenTheRest) {
    open(3);
    EXPECT_TRUE(hasText("0 of 2 comparisons ready"));
    EXPECT_TRUE(hasText("Down to depth 3, by size and date"));

    stage.machine.fail("compare", "The disk was disconnected.");
    press("Prepare all");
    awaitEnd();
    EXPECT_FALSE(hasText(dateOf(0) + " to " + dateOf(1)));
    get(Role::CheckBox, "2 failed").press();
    screen->until([this] { return hasText(dateOf(0) + " to " + dateOf(1)); });
    EXPECT_FALSE(screen->tree().texts().filter(QStringLiteral("The disk was disconnected.")).isEmpty());

    stage.machine.setAdded("/new", {"file"});
    press("Prepare all");
    awaitEnd();
    EXPECT_TRUE(hasText("All 2 comparisons ready"));
    EXPECT_FALSE(has(Role::CheckBox, "2 failed"));
    EXPECT_FALSE(has(Role::Button, "Prepare all"));

    stage.machine.setBackups(4);
    backfill().prepare();
    screen->until([this] { return backfill().pairs().size() == 3; });
    screen->settle();
    EXPECT_TRUE(hasText("2 of 3 comparisons ready"));
    EXPECT_TRUE(has(Role::Button, "Prepare the rest"));
}

TEST_F(BackfillCardOnScreen, showsWhatIsAtWorkAndPauses) {
    open(3);
    stage.machine.hold("compare");
    press("Prepare all");
    screen->until([this] {
        backfill().reload();
        return std::ranges::count(backfill().pairs(), AdjacentPair::State::running, &AdjacentPair::state) ==
               2;
    });
    screen->settle();
    EXPECT_TRUE(hasText("Comparing " + dateOf(1) + " to " + dateOf(2) + " and 1 more"));
    press("Pause");
    awaitEnd();
    EXPECT_TRUE(has(Role::Button, "Prepare all"));
}

TEST_F(BackfillCardOnScreen, walksThePairsByKeyboardAndOpensOne) {
    open(3);
    auto* item = qobject_cast<QQuickItem*>(strip().object());
    item->forceActiveFocus(Qt::TabFocusReason);
    screen->key(Qt::Key_End);
    screen->settle();
    EXPECT_EQ(strip().description(), dateOf(1) + " to " + dateOf(2) + ": not compared yet");
    EXPECT_TRUE(hasText(strip().description()));
    screen->key(Qt::Key_Left);
    screen->key(Qt::Key_Return);
    screen->until([this] { return stage.diff.comparison().has_value(); });
    EXPECT_EQ(stage.diff.comparison()->fromPath, backfill().pairs().front().from);
    screen->until([this] { return backfill().pairs().front().state == AdjacentPair::State::ready; });
    screen->settle();
    EXPECT_EQ(strip().description(), dateOf(0) + " to " + dateOf(1) + ": ready") << "it stays selected";
    EXPECT_TRUE(hasText("1 of 2 comparisons ready"));
}

TEST_F(BackfillCardOnScreen, switchesThePreparationOfNewBackups) {
    open(2);
    get(Role::CheckBox, "Compare each new backup when it ends, once all others are ready").press();
    EXPECT_TRUE(backfill().preparesNewBackups());
}

} // namespace
} // namespace tallyglass
