#include "Tallyglass/Screens/Shell/BackupButtonViewModel.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "Tests/Screens/QmlScreen.h"
#include "Tests/Screens/ScreenStage.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

TEST(BackupButtonContent, startsOrStopsByWhatRuns) {
    EXPECT_EQ(backupButtonContent({}), (BackupButtonContent{"Back Up Now", "arrow.clockwise.circle", false}));
    EXPECT_EQ(backupButtonContent({.isRunning = true}),
              (BackupButtonContent{"Stop Backup", "stop.circle", true}));
}

TEST(BackupButton, followsTheStatus) {
    test::ScreenStage stage;
    test::QmlScreen screen("BackupButton {}", stage.properties());
    EXPECT_TRUE(screen.tree().find(QAccessible::Button, "Back Up Now"));

    stage.model.setStatus({.isRunning = true});
    screen.until([&] { return screen.tree().find(QAccessible::Button, "Stop Backup").has_value(); });

    screen.tree().get(QAccessible::Button, "Stop Backup").press();
    screen.until([&] { return stage.model.lastError().has_value(); }); // there is no tmutil to ask
}

} // namespace
} // namespace tallyglass
