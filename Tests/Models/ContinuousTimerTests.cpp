#include "Tallyglass/Models/ContinuousTimer.h"
#include "TallyglassKit/Platform/ContinuousClock.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

using test::waitUntil;

TEST(ContinuousTimer, firesOnceForEachStartAndNotEarly) {
    ContinuousTimer timer;
    int fired = 0;
    QObject::connect(&timer, &Timer::timeout, [&] { ++fired; });
    const auto start = ContinuousClock::now();

    timer.start(100);
    timer.start(0.05); // in its place
    waitUntil([&] { return fired > 0; });
    const auto elapsed = ContinuousClock::now() - start;
    timer.start(0);
    waitUntil([&] { return fired > 1; });

    EXPECT_GE(elapsed, std::chrono::milliseconds(50));
    EXPECT_EQ(fired, 2);
}

TEST(ContinuousTimer, isSilentOnceStoppedAndLeavesNoDescriptor) {
    const test::ResourceGuard guard;
    ContinuousTimer stopped;
    ContinuousTimer other;
    bool stoppedFired = false;
    bool otherFired = false;
    QObject::connect(&stopped, &Timer::timeout, [&] { stoppedFired = true; });
    QObject::connect(&other, &Timer::timeout, [&] { otherFired = true; });

    stopped.start(0.001);
    stopped.stop();
    other.start(0.02);
    waitUntil([&] { return otherFired; });

    EXPECT_FALSE(stoppedFired);
}

} // namespace
} // namespace tallyglass
