#include "TallyglassKit/Comparison/CacheSession.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/Connection.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

namespace tallyglass {
namespace {

class CacheSessionTest : public testing::Test {
protected:
    const test::TemporaryFolder folder;
    const std::filesystem::path file = folder / "data/cache.sqlite";
    CacheSession session{TMUtilRunner("/nowhere"), file};
};

TEST_F(CacheSessionTest, opensTheCacheWhenItIsFirstNeededAndOnceForAll) {
    EXPECT_FALSE(session.isOpen());
    EXPECT_FALSE(std::filesystem::exists(file));

    CacheSession::Cache* other = nullptr;
    std::thread thread([&] { other = &session.open(); });
    CacheSession::Cache* const cache = &session.open();
    thread.join();

    EXPECT_EQ(cache, other);
    EXPECT_TRUE(session.isOpen());
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(CacheSessionTest, triesAgainAfterAFailure) {
    folder.write("data", "a file where the folder should be");
    EXPECT_THROW(session.open(), Error);
    EXPECT_FALSE(session.isOpen());

    std::filesystem::remove(folder / "data");
    EXPECT_TRUE(session.open().store().allComparisons().empty());
}

TEST_F(CacheSessionTest, isNotOpenedByAJobThatWasStopped) {
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(session.open(stop.get_token()), Cancelled);
    EXPECT_FALSE(session.isOpen());

    session.open();
    EXPECT_NO_THROW(session.open(stop.get_token()));
}

} // namespace
} // namespace tallyglass
