#include "Tallyglass/Screens/Dashboard/HealthCardContent.h"
#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Health/BackupHealth.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

const Date now = dateSince1970(1'790'000'000);
constexpr std::chrono::duration<double> hour{3600};

HealthCardContent cardOf(const BackupHealth& health, const TMDestination& destination = {.id = "A"}) {
    return healthCardContent(health, destination, now);
}

TEST(HealthCard, saysOfAHealthyDestinationOnlyTheVerdictAndTheCadence) {
    const TMDestination destination{.id = "A", .snapshotDates = {now - 3 * hour, now - 2 * hour}};

    const HealthCardContent card = cardOf({.medianInterval = 3600}, destination);

    EXPECT_EQ(card.symbol, "checkmark.circle.fill");
    EXPECT_EQ(card.role, Theme::Role::healthy);
    EXPECT_EQ(card.summary, "Backups healthy");
    EXPECT_EQ(card.cadence, "Last backup 2 hours ago · typically every 1h");
    EXPECT_EQ(card.resultHeading, "");
    EXPECT_TRUE(card.failures.isEmpty());
    EXPECT_TRUE(card.gaps.isEmpty());
}

TEST(HealthCard, hasWordsForADestinationWithoutBackups) {
    EXPECT_EQ(cardOf({}).cadence, "Last backup Never · typically every —");
}

TEST(HealthCard, showsTheLevel) {
    EXPECT_EQ(cardOf({.usedFraction = 0.96}).symbol, "exclamationmark.octagon.fill");
    EXPECT_EQ(cardOf({.usedFraction = 0.96}).role, Theme::Role::critical);
    EXPECT_EQ(cardOf({.usedFraction = 0.9}).symbol, "exclamationmark.triangle.fill");
    EXPECT_EQ(cardOf({.usedFraction = 0.9}).role, Theme::Role::warning);
}

TEST(HealthCard, tellsADeferralFromAFailure) {
    const HealthCardContent deferral = cardOf({.lastBackupResult = 1009});
    EXPECT_EQ(deferral.resultHeading, "Last backup was skipped");
    EXPECT_EQ(deferral.resultSymbol, "pause.circle.fill");
    EXPECT_EQ(deferral.resultRole, Theme::Role::warning);
    EXPECT_EQ(deferral.resultCaption,
              "The backup will continue when connected to a power source. (result code 1009)");

    const HealthCardContent failure = cardOf({.lastBackupResult = 1005});
    EXPECT_EQ(failure.resultHeading, "Last backup didn't complete");
    EXPECT_EQ(failure.resultSymbol, "exclamationmark.triangle.fill");
    EXPECT_EQ(failure.resultRole, Theme::Role::critical);
    EXPECT_EQ(failure.resultCaption,
              "Time Machine recorded result code 1005 for the most recent backup to this destination. This "
              "code isn't in our catalogue, so it confirms a problem without naming the cause.");

    EXPECT_EQ(cardOf({.lastBackupResult = 0}).resultHeading, "");
}

TEST(HealthCard, canSkipTheLastBackupAndStillSuspectAnEarlierOne) {
    const HealthCardContent card = cardOf({.suspectedFailedAttempts = {now - hour}, .lastBackupResult = 100});

    EXPECT_EQ(card.summary, "1 backup may have failed");
    EXPECT_EQ(card.resultHeading, "Last backup was skipped");
}

TEST(HealthCard, listsEverySuspectedAttempt) {
    BackupHealth health;
    for (int hoursAgo = 40; hoursAgo > 0; --hoursAgo)
        health.suspectedFailedAttempts.push_back(now - hoursAgo * hour);

    const HealthCardContent card = cardOf(health);

    EXPECT_EQ(card.failures.size(), 40);
    EXPECT_EQ(card.failures.last(), (HealthRow{"Sep 21, 2026 at 1:13\u202FPM", "· 1 hour ago"}));
}

TEST(HealthCard, listsTheFirstSixGaps) {
    BackupHealth health;
    const auto addGap = [&](int hoursAgo) {
        health.gaps.push_back({now - hoursAgo * hour, now - (hoursAgo - 9) * hour});
    };
    for (int i = 0; i < 6; ++i)
        addGap(100 - i * 10);
    EXPECT_EQ(cardOf(health).gaps.size(), 6);
    EXPECT_EQ(cardOf(health).moreGaps, "");

    addGap(40);
    EXPECT_EQ(cardOf(health).gaps.size(), 6);
    EXPECT_EQ(cardOf(health).moreGaps, "and 1 more");
    EXPECT_EQ(cardOf(health).gaps.first(),
              (HealthRow{"9h", "· Sep 17, 2026 at 10:13\u202FAM → Sep 17, 2026 at 7:13\u202FPM"}));
}

} // namespace
} // namespace tallyglass
