#include "Tests/Screens/Compare/CompareScreen.h"
#include "Tests/Support/ProcessResources.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>

namespace tallyglass {
namespace {

using test::CompareScreen;
using testing::ElementsAre;
using Role = QAccessible::Role;

constexpr QChar thinSpace(0x202F);

class CompareOnScreen : public testing::Test {
protected:
    CompareScreen& open(QSize size = {900, 720}) {
        screen = std::make_unique<CompareScreen>(stage, size);
        screen->until(
            [this] { return !screen->diff().backups().empty() || screen->diff().unavailableReason(); });
        screen->settle();
        return *screen;
    }
    /// With two backups on the machine, listed.
    CompareScreen& openWithBackups() {
        roots = stage.machine.setBackups(3);
        open();
        screen->until([this] { return button("Compare").isEnabled(); });
        return *screen;
    }
    [[nodiscard]] test::Element get(Role role, const char* name) const {
        return screen->tree().get(role, QString::fromUtf8(name));
    }
    [[nodiscard]] bool has(Role role, const char* name) const {
        return screen->tree().find(role, QString::fromUtf8(name)).has_value();
    }
    [[nodiscard]] test::Element button(const char* name) const { return get(Role::Button, name); }
    [[nodiscard]] bool hasText(const char* text) const {
        return screen->tree().hasText(QString::fromUtf8(text));
    }
    void waitForText(const char* text) const {
        screen->until([&] { return hasText(text); });
    }
    /// The changes that the list has made elements for.
    [[nodiscard]] std::vector<std::string> rows() const {
        std::vector<std::string> names;
        for (const auto& text : screen->tree().texts())
            if (text.startsWith(QStringLiteral("Added, ")))
                names.push_back(text.mid(7).toStdString());
        std::ranges::sort(names);
        return names;
    }
    [[nodiscard]] auto compareRuns() const {
        const auto calls = stage.machine.calls();
        return std::ranges::count(calls, "compare");
    }
    void search(const char* text) const {
        screen->viewModel().setSearchText(QString::fromUtf8(text));
        screen->settle();
    }

    test::CompareStage stage;
    std::vector<std::string> roots;
    std::unique_ptr<CompareScreen> screen;
};

TEST_F(CompareOnScreen, isLockedWithoutFullDiskAccess) {
    for (const auto status : {FDAStatus::denied, FDAStatus::indeterminate}) {
        stage.model.setFdaStatus(status);
        open();
        EXPECT_THAT(
            screen->tree().texts(),
            ElementsAre("Comparing backups needs Full Disk Access",
                        "tmutil cannot read backup contents without it, so there is nothing to diff."));
        EXPECT_FALSE(has(Role::Button, "Compare"));
    }
    button("Show me how").press();
    EXPECT_THAT(stage.sheets, ElementsAre(ScreenContext::AppAccessGuide));

    roots = stage.machine.setBackups(2);
    stage.model.setFdaStatus(FDAStatus::granted);
    screen->until([&] { return has(Role::Button, "Compare") && button("Compare").isEnabled(); });
}

TEST_F(CompareOnScreen, offersTheBackupsByDate) {
    openWithBackups();

    EXPECT_TRUE(has(Role::Heading, "Compare"));
    EXPECT_TRUE(has(Role::Heading, "Compare two backups"));
    EXPECT_EQ(get(Role::ComboBox, "To").value(), QStringLiteral("Nov 23, 2025 at 4:00%1PM").arg(thinSpace));
    EXPECT_EQ(get(Role::ComboBox, "From").value(), QStringLiteral("Nov 22, 2025 at 4:00%1PM").arg(thinSpace));

    get(Role::ComboBox, "From").invoke(QAccessibleActionInterface::decreaseAction());
    EXPECT_EQ(screen->diff().fromPath(), roots[0]);
    get(Role::ComboBox, "From").press();
    const QString newest = QStringLiteral("Nov 23, 2025 at 4:00%1PM").arg(thinSpace);
    screen->until([&] { return screen->tree().find(Role::ListItem, newest).has_value(); });
    screen->tree().get(Role::ListItem, newest).press();
    screen->settle();
    EXPECT_EQ(screen->diff().fromPath(), roots[2]);
    EXPECT_FALSE(button("Compare").isEnabled()) << "a backup can't be compared with itself";
}

TEST_F(CompareOnScreen, picksABackupByKeyboard) {
    openWithBackups();
    auto* from = qobject_cast<QQuickItem*>(get(Role::ComboBox, "From").object());
    from->forceActiveFocus(Qt::TabFocusReason);

    screen->key(Qt::Key_Up);
    EXPECT_EQ(screen->diff().fromPath(), roots[0]);
    screen->key(Qt::Key_End);
    EXPECT_EQ(screen->diff().fromPath(), roots[2]);
    screen->settle();
    screen->key(Qt::Key_Home);
    EXPECT_EQ(screen->diff().fromPath(), roots[0]);
}

TEST_F(CompareOnScreen, setsTheOptions) {
    openWithBackups();
    EXPECT_TRUE(hasText("Off by default. tmutil normally compares extended attributes, which costs an extra "
                        "round-trip per file and reports churn nobody acts on."));
    EXPECT_TRUE(hasText("Each level is a network round-trip — deeper is slower."));

    get(Role::CheckBox, "Also compare extended attributes and ownership").press();
    EXPECT_TRUE(screen->diff().compareExtendedAttributes());
    screen->settle();
    EXPECT_TRUE(get(Role::CheckBox, "Also compare extended attributes and ownership").isChecked());

    for (int step = 3; step < 14; ++step) {
        get(Role::SpinBox, fmt::format("Depth: {}", std::min(step, 12)).c_str())
            .invoke(QAccessibleActionInterface::increaseAction());
        screen->settle();
    }
    EXPECT_EQ(screen->diff().depth(), 12);
    get(Role::CheckBox, "No limit").press();
    screen->settle();
    EXPECT_TRUE(screen->diff().unlimitedDepth());
    EXPECT_FALSE(get(Role::SpinBox, "Depth: 12").isEnabled());
}

TEST_F(CompareOnScreen, stepsTheDepthByKeyboard) {
    openWithBackups();
    qobject_cast<QQuickItem*>(get(Role::SpinBox, "Depth: 3").object())->forceActiveFocus(Qt::TabFocusReason);
    for (int times = 0; times < 5; ++times) {
        screen->key(Qt::Key_Down);
        screen->settle();
    }
    EXPECT_EQ(screen->diff().depth(), 1);
    screen->key(Qt::Key_Up);
    EXPECT_EQ(screen->diff().depth(), 2);
}

TEST_F(CompareOnScreen, saysWhyThereIsNothingToCompare) {
    stage.machine.fail("listbackups", "tmutil: no");
    open();
    EXPECT_TRUE(screen->tree().hasText(QString::fromStdString(*screen->diff().unavailableReason())));
    EXPECT_FALSE(button("Compare").isEnabled());
}

TEST_F(CompareOnScreen, comparesAndShowsWhatChanged) {
    openWithBackups();
    EXPECT_FALSE(has(Role::Button, "Re-run"));
    stage.machine.setAdded(roots[2], {"apple.txt", "banana.txt"});

    button("Compare").press();

    waitForText("2 shown");
    screen->settle();
    EXPECT_EQ(screen->tree().value("Added"), "2, 20 bytes");
    EXPECT_EQ(screen->tree().value("Net"), "+20 bytes, size change");
    EXPECT_TRUE(hasText("Limited to depth 3 — changes nested deeper are not listed."));
    EXPECT_EQ(screen->tree().value("Added, apple.txt"), "10 bytes, in /");
    EXPECT_FALSE(hasText("This comparison did not finish, so the results below are incomplete."));

    stage.machine.setAdded(roots[2], {"banana.txt", "cherry.txt"});
    button("Re-run").press();
    screen->until([&] { return rows() == std::vector<std::string>{"banana.txt", "cherry.txt"}; });
    EXPECT_EQ(compareRuns(), 2);
}

TEST_F(CompareOnScreen, tellsWhatItWaitsForAndForHowLongAndStops) {
    openWithBackups();
    stage.machine.hold("compare");
    button("Compare").press();
    waitForText("Running tmutil compare…");
    EXPECT_TRUE(hasText("Running for 0:00"));
    EXPECT_FALSE(has(Role::Button, "Compare"));
    for (const auto& [role, name] : {std::pair(Role::ComboBox, "From"),
                                     {Role::ComboBox, "To"},
                                     {Role::SpinBox, "Depth: 3"},
                                     {Role::CheckBox, "No limit"}})
        EXPECT_FALSE(get(role, name).isEnabled()) << name;

    for (int second = 0; second < 75; ++second)
        stage.machine.timer->fire();
    screen->settle();
    EXPECT_TRUE(hasText("Running for 1:15"));

    button("Cancel").press();
    screen->until([&] { return has(Role::AlertMessage, "Comparison cancelled."); });
    EXPECT_TRUE(button("Compare").isEnabled());
    EXPECT_FALSE(stage.machine.timer->remaining);
    EXPECT_EQ(test::ProcessResources::now().children, 0u);
}

TEST_F(CompareOnScreen, filters) {
    open();
    screen->showResult({"apple", "banana", "cherry"});

    search("AN");
    EXPECT_THAT(rows(), ElementsAre("banana"));
    EXPECT_TRUE(hasText("1 shown"));
    search("");
    get(Role::CheckBox, "Added").press();
    screen->settle();
    EXPECT_FALSE(get(Role::CheckBox, "Added").isChecked());
    EXPECT_TRUE(hasText("No changes match the current filters."));
    EXPECT_TRUE(hasText("0 shown"));
    get(Role::CheckBox, "Added").press();
    get(Role::CheckBox, "Content changes only").press();
    EXPECT_TRUE(screen->diff().showContentChangesOnly());
    screen->settle();
    EXPECT_THAT(rows(), ElementsAre("apple", "banana", "cherry"));
}

TEST_F(CompareOnScreen, countsTheRowsThatAreMetadataAlone) {
    openWithBackups();
    stage.machine.setTouched(roots[1], roots[2], {"a"});
    button("Compare").press();
    waitForText("1 of 1 changes are metadata only (timestamps, extended attributes).");
    waitForText("Modified, a");
}

std::vector<std::string> numbered(int count) {
    std::vector<std::string> names;
    for (int number = 0; number < count; ++number)
        names.push_back(fmt::format("{:04}{}", number, number % 2 == 0 ? " even" : ""));
    return names;
}

TEST_F(CompareOnScreen, listsTheFirstThousandRowsOfWhichFewExist) {
    open();
    screen->showResult(numbered(1001));
    EXPECT_EQ(screen->viewModel().rows()->count(), 1000);
    EXPECT_LT(rows().size(), 40u);
    EXPECT_TRUE(hasText("Showing the first 1,000 of 1,001. Narrow the filter to see more."));

    screen->scrollTo(999);
    EXPECT_EQ(rows().back(), "0999");
    EXPECT_LT(rows().size(), 40u);

    screen->showResult(numbered(1000));
    EXPECT_FALSE(hasText("Showing the first 1,000 of 1,000. Narrow the filter to see more."));
}

TEST_F(CompareOnScreen, keepsTheSelectedRowWhereItIsWhenTheFilterChanges) {
    open();
    screen->showResult(numbered(900));
    screen->scrollTo(500);
    screen->viewModel().rows()->setCurrentRow(502);
    const double position = screen->boxOf(502).y();

    search("even");
    EXPECT_EQ(screen->viewModel().rows()->currentRow(), 251);
    EXPECT_NEAR(screen->boxOf(251).y(), position, 0.5);
    search("");
    EXPECT_NEAR(screen->boxOf(502).y(), position, 0.5);
    EXPECT_THAT(rows(), testing::Contains("0502 even"));
}

TEST_F(CompareOnScreen, keepsTheTopmostRowInPlaceWithoutASelection) {
    open();
    screen->showResult(numbered(900));
    screen->scrollTo(500);
    const double position = screen->boxOf(500).y();

    screen->showResult([] {
        auto names = numbered(900);
        names.erase(names.begin(), names.begin() + 200);
        return names;
    }());

    EXPECT_THAT(rows(), testing::Contains("0500 even"));
    EXPECT_NEAR(screen->boxOf(300).y(), position, 0.5);
}

TEST_F(CompareOnScreen, movesThroughTheListByKeyboard) {
    open();
    screen->showResult(numbered(1000));
    const auto* list = screen->viewModel().rows();
    screen->list().forceActiveFocus(Qt::TabFocusReason);
    EXPECT_EQ(list->currentRow(), 0);
    screen->key(Qt::Key_Down);
    EXPECT_EQ(list->currentRow(), 1);
    screen->key(Qt::Key_End);
    screen->settle();
    EXPECT_EQ(list->currentRow(), 999);
    EXPECT_THAT(rows(), testing::Contains("0999"));
    screen->key(Qt::Key_PageUp);
    EXPECT_LT(list->currentRow(), 995);
    screen->key(Qt::Key_Home);
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_TRUE(get(Role::StaticText, "Added, 0000 even").isFocused());
}

TEST_F(CompareOnScreen, bringsFilterAndRowsIntoASmallWindowAtTwiceTheSizeOfText) {
    open({720, 440}); // what the frame of the smallest window leaves
    screen->theme().setTextScale(2);
    screen->showResult(numbered(1000));
    const QRectF window({0, 0}, screen->window()->size());

    screen->list().forceActiveFocus(Qt::TabFocusReason);
    screen->settle();
    EXPECT_TRUE(window.contains(screen->boxOf(0)));
    screen->key(Qt::Key_End);
    screen->settle();
    EXPECT_TRUE(window.contains(screen->boxOf(999)));
    auto* field = qobject_cast<QQuickItem*>(get(Role::EditableText, "Filter paths").object());
    field->forceActiveFocus(Qt::BacktabFocusReason);
    screen->settle();
    EXPECT_TRUE(window.contains(field->mapRectToScene(field->boundingRect())));
}

TEST_F(CompareOnScreen, takesTheKeyboardToTheRowThatIsClicked) {
    open();
    screen->showResult(numbered(5));
    screen->scrollTo(0);
    screen->list().forceActiveFocus(Qt::TabFocusReason); // which brings the list into view
    screen->settle();

    screen->click(screen->boxOf(3).center());
    EXPECT_EQ(screen->viewModel().rows()->currentRow(), 3);
    EXPECT_EQ(screen->focusedName(), "Added, 0003");
    screen->key(Qt::Key_Up);
    EXPECT_EQ(screen->focusedName(), "Added, 0002 even");
}

TEST_F(CompareOnScreen, copiesThePathOfARow) {
    open();
    screen->showResult({"apple", "banana"});
    screen->list().forceActiveFocus(Qt::TabFocusReason);
    screen->key(Qt::Key_Down);
    screen->key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(stage.clipboard.text, "/Users/banana");

    screen->key(Qt::Key_Up);
    screen->key(Qt::Key_F10, Qt::ShiftModifier);
    screen->until([&] { return has(Role::MenuItem, "Copy Path"); });
    get(Role::MenuItem, "Copy Path").press();
    EXPECT_EQ(stage.clipboard.text, "/Users/apple");
}

TEST_F(CompareOnScreen, showsARowsItemInTheBackupThatHasIt) {
    openWithBackups();
    stage.machine.setAdded(roots[2], {"apple.txt"});
    stage.machine.folder().write(
        roots[2].substr(stage.machine.folder().path().string().size() + 1) + "/Data/apple.txt", "");
    button("Compare").press();
    waitForText("1 shown");
    screen->list().forceActiveFocus(Qt::TabFocusReason);
    screen->key(Qt::Key_Menu);
    screen->until([&] {
        return has(Role::MenuItem, "Show in Newer Backup") &&
               get(Role::MenuItem, "Show in Newer Backup").isEnabled();
    });
    EXPECT_FALSE(get(Role::MenuItem, "Show in Older Backup").isEnabled());
    get(Role::MenuItem, "Show in Newer Backup").press();
    EXPECT_THAT(stage.workspace.requests, ElementsAre(fmt::format("reveal {}/Data/apple.txt", roots[2])));
}

} // namespace
} // namespace tallyglass
