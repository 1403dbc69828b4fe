#include "Tallyglass/Controls/Theme/Symbols.h"
#include "Tallyglass/Screens/Shell/MenuBarContent.h"
#include "Tallyglass/Screens/Shell/ShellContent.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

constexpr double day = 86400;
const Date now{Date::duration(1'800'000'000)};

TMDestination destination() {
    return {.id = "A",
            .volumeName = "Attic",
            .snapshotDates = {now - Date::duration(2 * day), now - Date::duration(3600)}};
}

QStringList texts(const std::vector<MenuEntry>& entries) {
    QStringList texts;
    for (const MenuEntry& entry : entries)
        texts.append(entry.isDivider() ? QStringLiteral("-") : entry.text);
    return texts;
}

TEST(ShellContent, addsLiteModeToTheVerdictUnlessAccessIsGranted) {
    const BackupHealth health = BackupHealth::analyze(destination(), now);
    const QString summary = QString::fromStdString(health.summary());

    EXPECT_EQ(shellContent(health, FDAStatus::granted).subtitle, summary);
    EXPECT_EQ(shellContent(health, FDAStatus::denied).subtitle, summary + " · Lite mode");
    EXPECT_EQ(shellContent({}, FDAStatus::denied).subtitle, "");
    EXPECT_TRUE(shellContent({}, FDAStatus::indeterminate).liteMode);
    EXPECT_FALSE(shellContent({}, FDAStatus::granted).liteMode);
}

TEST(MenuBarContent, beginsAtTheBackupWithoutADestination) {
    EXPECT_EQ(texts(menuBarContent({}, now)), (QStringList{"Back Up Now", "-", "Open Tallyglass", "Refresh",
                                                           "Check for Updates…", "-", "Quit"}));
}

TEST(MenuBarContent, tellsOfTheSelectedDestinationFirst) {
    const BackupHealth health = BackupHealth::analyze(destination(), now);

    const QStringList entries =
        texts(menuBarContent({.selectedDestination = destination(), .health = health}, now));

    EXPECT_EQ(entries.mid(0, 5), (QStringList{"Attic", QString::fromStdString(health.summary()),
                                              "Last backup 1 hour ago", "-", "Back Up Now"}));
}

TEST(MenuBarContent, cutsThePercentOfARunningBackup) {
    const auto first = [](std::optional<double> percent) {
        return menuBarContent({.status = {.isRunning = true, .percent = percent}}, now).front().text;
    };

    EXPECT_EQ(first(0.999), "Backing up… 99%");
    EXPECT_EQ(first(1.0), "Backing up… 100%");
    EXPECT_EQ(first({}), "Backing up… ");
}

TEST(MenuBarContent, enablesTheUpdateCheckOnlyWhileOneIsPossible) {
    const auto check = [](bool possible) {
        const auto entries = menuBarContent({.canCheckForUpdates = possible}, now);
        return std::find_if(entries.begin(), entries.end(),
                            [](const MenuEntry& entry) {
                                return entry.command == MenuEntry::Command::checkForUpdates;
                            })
            ->isEnabled;
    };

    EXPECT_TRUE(check(true));
    EXPECT_FALSE(check(false));
}

TEST(MenuBarContent, offersADonationOnlyWithALink) {
    EXPECT_TRUE(texts(menuBarContent({.offersDonation = true}, now)).contains("Support Tallyglass…"));
    EXPECT_FALSE(texts(menuBarContent({}, now)).contains("Support Tallyglass…"));
}

TEST(MenuBarIcon, saysTheWorstLevel) {
    EXPECT_EQ(
        menuBarIcon(BackupHealth::Level::healthy),
        (MenuBarIcon{"clock.arrow.trianglehead.counterclockwise.rotate.90", "Tallyglass — backups healthy"}));
    EXPECT_EQ(menuBarIcon(BackupHealth::Level::warning),
              (MenuBarIcon{"exclamationmark.triangle", "Tallyglass — backups need attention"}));
    EXPECT_EQ(menuBarIcon(BackupHealth::Level::critical),
              (MenuBarIcon{"exclamationmark.octagon", "Tallyglass — backup problem"}));
}

} // namespace
} // namespace tallyglass
