#include "TallyglassKit/Platform/Deadline.h"
#include "Tests/Support/ProcessResources.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

using namespace std::chrono_literals;

namespace tallyglass::test {
namespace {

void waitFor(const std::stop_token& stop) {
    std::mutex mutex;
    std::condition_variable_any stopped;
    std::unique_lock lock(mutex);
    stopped.wait(lock, stop, [] { return false; });
}

TEST(Deadline, stopsItsTokenWhenTheTimeIsOver) {
    const ResourceGuard guard;
    const std::stop_source source;
    const Deadline deadline(1ms, source.get_token());

    waitFor(deadline.token());

    EXPECT_TRUE(deadline.token().stop_requested());
    EXPECT_FALSE(source.stop_requested());
}

TEST(Deadline, stopsItsTokenWithTheOtherAndEndsBeforeItsTime) {
    const ResourceGuard guard;
    std::stop_source source;
    const Deadline deadline(24h, source.get_token());
    EXPECT_FALSE(deadline.token().stop_requested());

    source.request_stop();

    EXPECT_TRUE(deadline.token().stop_requested());
    EXPECT_TRUE(Deadline(24h, source.get_token()).token().stop_requested());
}

} // namespace
} // namespace tallyglass::test
