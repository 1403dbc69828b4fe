#include "Tallyglass/Screens/Diagnostics/Support.h"
#include "Tests/Screens/QmlScreen.h"
#include "Tests/Screens/ScreenStage.h"
#include "Tests/Support/Models/ScriptedMachine.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Role = QAccessible::Role;

constexpr auto accessNote = "Without Full Disk Access most probes will record a permission error.";

/// The machine has to be there first.
struct DiagnosedMachine {
    test::ScriptedMachine machine;
};

struct DiagnosticsStage : DiagnosedMachine, test::ScreenStage {
    DiagnosticsStage() : ScreenStage(machine.environment()) {}
};

class DiagnosticsCardOnScreen : public testing::Test {
protected:
    DiagnosticsCardOnScreen() {
        stage.model.setFdaStatus(FDAStatus::granted);
        screen = std::make_unique<test::QmlScreen>(
            "ScrollPage { id: page; required property ScreenContext context\n"
            "DiagnosticsCard { width: parent.width; context: page.context } }",
            stage.properties());
        screen->theme().setReduceMotion(true);
    }
    [[nodiscard]] bool has(Role role, const char* name) const {
        return screen->tree().find(role, QString::fromUtf8(name)).has_value();
    }
    [[nodiscard]] bool hasText(const char* text) const {
        return screen->tree().hasText(QString::fromUtf8(text));
    }
    void press(const char* name) const { screen->tree().get(Role::Button, QString::fromUtf8(name)).press(); }
    void until(Role role, const char* name) const {
        screen->until([&] { return has(role, name); });
    }

    DiagnosticsStage stage;
    std::unique_ptr<test::QmlScreen> screen;
};

TEST_F(DiagnosticsCardOnScreen, capturesAndShowsEachProbe) {
    stage.machine.setBackups(2);
    stage.machine.fail("status", "denied");
    EXPECT_FALSE(has(Role::Button, "Reveal Folder"));
    EXPECT_FALSE(hasText(accessNote));

    press("Capture Diagnostics");
    until(Role::Button, "Reveal Folder");

    EXPECT_TRUE(hasText("6 of 8 probes succeeded"));
    EXPECT_EQ(screen->tree().value("Destination info"), "Succeeded");
    EXPECT_EQ(screen->tree().value("Engine status"), "Failed, Exit code 1");
    EXPECT_EQ(screen->tree().value("Backup manifest"), "Failed, machinedirectory returned nothing.");
    const auto folder = (stage.machine.folder() / "Desktop/Tallyglass Diagnostics").string();
    stage.workspace.requests.clear();
    press("Reveal Folder");
    EXPECT_THAT(stage.workspace.requests, ElementsAre("reveal " + folder));

    stage.model.setFdaStatus(FDAStatus::denied);
    screen->until([this] { return hasText(accessNote); });
}

TEST_F(DiagnosticsCardOnScreen, keepsTheKeyboardWhileAJobRunsAndIsCancelled) {
    stage.machine.hold("latestbackup");
    while (screen->focusedName() != "Capture Diagnostics")
        screen->key(Qt::Key_Tab);

    screen->key(Qt::Key_Return);
    screen->until([this] { return hasText("Latest backup"); });
    EXPECT_TRUE(hasText("Running for 0:00"));
    EXPECT_FALSE(has(Role::Button, "Capture Diagnostics"));
    EXPECT_EQ(screen->focusedName(), "Cancel");
    stage.machine.timer->fire();
    screen->until([this] { return hasText("Running for 0:01"); });

    screen->key(Qt::Key_Return);
    until(Role::Button, "Capture Diagnostics");
    EXPECT_EQ(screen->focusedName(), "Capture Diagnostics");
    EXPECT_FALSE(has(Role::Button, "Cancel"));
    EXPECT_FALSE(stage.model.lastError());
}

TEST_F(DiagnosticsCardOnScreen, measuresAndCopiesTheReport) {
    const auto roots = stage.machine.setBackups(4);
    stage.machine.setAdded(roots.back(), {"a"});
    EXPECT_TRUE(has(Role::Heading, "Benchmark comparison strategies"));
    EXPECT_FALSE(has(Role::Button, "Copy report"));

    press("Run Benchmark");
    until(Role::Button, "Copy report");

    const auto value = screen->tree().value("size only (-s)");
    EXPECT_TRUE(value && value->endsWith("s/pair, 1 pairs")) << value->toStdString();
    EXPECT_TRUE(hasText("Saved to the diagnostics folder as benchmark.txt."));
    press("Copy report");
    EXPECT_EQ(stage.clipboard.text.toStdString(), CompareBenchmark::report(stage.model.benchmarkResults()));
}

TEST_F(DiagnosticsCardOnScreen, saysWhyABenchmarkFailedUntilItRunsAgain) {
    press("Run Benchmark");
    screen->until([this] { return hasText("Need at least two backups to benchmark."); });
    stage.model.setLastError(std::nullopt); // as the next reading of the status does
    EXPECT_TRUE(hasText("Need at least two backups to benchmark."));

    stage.machine.setBackups(4);
    stage.machine.hold("compare");

    press("Run Benchmark");
    screen->until([this] { return hasText("Timing tmutil default (-@gmstu) over 1 pairs…"); });
    EXPECT_FALSE(hasText("Need at least two backups to benchmark."));
    press("Cancel");

    until(Role::Button, "Run Benchmark");
    EXPECT_FALSE(hasText("Saved to the diagnostics folder as benchmark.txt."));
}

TEST(SupportCardOnScreen, opensOnlyARealLink) {
    test::ScreenStage stage;
    const auto open = [&](const char* link) {
        auto properties = stage.properties();
        properties["link"] = QString::fromUtf8(link);
        const test::QmlScreen screen("SupportCard {}", properties);
        const auto button = screen.tree().get(Role::Button, "Support development");
        button.press();
        return button.value().toStdString();
    };

    EXPECT_EQ(open("https://example.org/your-payment-link"), "Set your Stripe Payment Link in Support");
    EXPECT_THAT(stage.workspace.requests, IsEmpty());
    EXPECT_EQ(open("https://example.org/pay"), "Opens a secure Stripe checkout in your browser");
    EXPECT_THAT(stage.workspace.requests, ElementsAre("open https://example.org/pay"));
}

} // namespace
} // namespace tallyglass
