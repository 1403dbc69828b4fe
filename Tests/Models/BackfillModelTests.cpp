#include "Tallyglass/Models/BackfillModel.h"
#include "TallyglassKit/Platform/UserDefaults.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace tallyglass {
namespace {

using test::waitUntil;
using testing::Each;
using testing::ElementsAre;
using State = AdjacentPair::State;

class Backfill : public testing::Test {
protected:
    Backfill() { machine.setAdded("/new", {"file"}); } // what every comparison finds

    [[nodiscard]] std::unique_ptr<BackfillModel> makeModel() const {
        auto made = std::make_unique<BackfillModel>(machine.environment());
        made->setOptions(CompareOptions::fast(3));
        return made;
    }
    void prepare(std::size_t pairs) {
        model->prepare();
        waitUntil([&] { return model->pairs().size() == pairs; });
    }
    void awaitEnd() {
        waitUntil([this] { return !model->isRunning(); });
    }
    void run() {
        model->start();
        awaitEnd();
    }
    /// Has it read the states once more, as it does each second.
    void awaitStates(const std::vector<State>& expected) {
        waitUntil([&] {
            if (machine.timer->remaining)
                machine.timer->fire();
            return states() == expected;
        });
    }
    [[nodiscard]] std::vector<State> states() const {
        std::vector<State> states;
        for (const AdjacentPair& pair : model->pairs())
            states.push_back(pair.state);
        return states;
    }
    [[nodiscard]] auto compareRuns() const {
        const auto calls = machine.calls();
        return std::ranges::count(calls, "compare");
    }

    const test::ScriptedMachine machine;
    std::unique_ptr<BackfillModel> model = makeModel();
};

TEST_F(Backfill, comparesWhatIsMissingAndNothingTwice) {
    machine.setBackups(4);
    prepare(3);
    EXPECT_THAT(states(), Each(State::missing));

    run();
    EXPECT_THAT(states(), Each(State::ready));
    EXPECT_EQ(compareRuns(), 3);

    machine.setBackups(6);
    run();
    EXPECT_THAT(states(), Each(State::ready));
    EXPECT_EQ(compareRuns(), 3 + 2);
    run();
    EXPECT_EQ(compareRuns(), 3 + 2);
}

TEST_F(Backfill, tellsTheProgressAndTheTimeLeft) {
    machine.setBackups(5);
    prepare(4);
    model->setConcurrency(1);
    std::vector<std::int64_t> completed;
    std::optional<double> left;
    QObject::connect(model.get(), &BackfillModel::progressChanged, model.get(), [&] {
        if (!model->isRunning() || (!completed.empty() && completed.back() == model->progress()->completed))
            return;
        *machine.now += std::chrono::seconds(10);
        completed.push_back(model->progress()->completed);
        if (completed.back() == 1)
            left = model->secondsLeft();
    });
    EXPECT_FALSE(model->secondsLeft());

    run();
    EXPECT_THAT(completed, ElementsAre(0, 1, 2, 3, 4));
    ASSERT_TRUE(left);
    EXPECT_DOUBLE_EQ(*left, 3 * 20) << "20 seconds for the first pair";
    EXPECT_FALSE(model->secondsLeft());
}

TEST_F(Backfill, pausesAndGoesOnWhereItWas) {
    machine.setBackups(4);
    prepare(3);
    model->setConcurrency(1);
    machine.hold("compare");
    model->start();
    awaitStates({State::missing, State::missing, State::running});

    model->pause();
    EXPECT_TRUE(model->isPausing());
    awaitEnd();
    EXPECT_FALSE(model->isPausing());
    EXPECT_THAT(states(), Each(State::missing));
    EXPECT_EQ(model->error(), std::nullopt);

    machine.setAdded("/new", {"file"});
    run();
    EXPECT_THAT(states(), Each(State::ready));
}

TEST_F(Backfill, tellsWhyPairsFailed) {
    machine.setBackups(3);
    prepare(2);
    machine.fail("compare", "The disk was disconnected.");
    run();
    EXPECT_THAT(states(), Each(State::failed));
    EXPECT_THAT(model->pairs().front().failure.value_or(""),
                testing::HasSubstr("The disk was disconnected."));

    machine.setAdded("/new", {"file"});
    run();
    EXPECT_THAT(states(), Each(State::ready));
}

TEST_F(Backfill, keepsTheOptionsOfARunUntilItEnds) {
    machine.setBackups(2);
    prepare(1);
    machine.hold("compare");
    model->start();
    awaitStates({State::running});
    model->setOptions(CompareOptions::fast(5));
    EXPECT_EQ(model->options(), CompareOptions::fast(3));

    machine.setAdded("/new", {"file"});
    awaitEnd();
    EXPECT_EQ(model->options(), CompareOptions::fast(5));
    awaitStates({State::missing});
    model->setOptions(CompareOptions::fast(3));
    awaitStates({State::ready});
}

TEST_F(Backfill, preparesANewBackupIfItIsToldTo) {
    const auto roots = machine.setBackups(4);
    const auto list = [&](std::size_t count) {
        std::string listing;
        for (std::size_t index = 0; index < count; ++index)
            listing += roots[index] + "\n";
        machine.answer("listbackups", listing);
    };
    list(3);
    prepare(2);
    list(4);
    model->setPreparesNewBackups(true);
    waitUntil([this] { return std::filesystem::exists(machine.defaultsFile()); });
    model->takeNewBackup();
    waitUntil([this] { return model->pairs().size() == 3; });
    EXPECT_FALSE(model->isRunning()) << "the others aren't ready";

    list(3);
    run();
    model = makeModel(); // which hasn't looked at anything yet
    list(4);
    model->takeNewBackup();
    awaitStates({State::ready, State::ready, State::ready});
    awaitEnd();
    EXPECT_EQ(compareRuns(), 3);

    model->setPreparesNewBackups(false);
    waitUntil([this] {
        return machine.environment().defaults.stringArray(BackfillModel::preparesNewBackupsKey)->empty();
    });
    model = makeModel();
    model->takeNewBackup();
    model->prepare();
    waitUntil([this] { return model->pairs().size() == 3; });
    EXPECT_FALSE(model->preparesNewBackups());
    EXPECT_EQ(compareRuns(), 3);
}

TEST_F(Backfill, leavesNothingBehindWhenItGoesWhileItRuns) {
    machine.setBackups(4);
    prepare(3);
    machine.hold("compare");
    model->start();
    awaitStates({State::running, State::running, State::running});
    model.reset();
    waitUntil([] { return test::ProcessResources::now().children == 0; });
}

TEST_F(Backfill, saysThatTheCacheCannotBeOpened) {
    machine.setBackups(3);
    machine.folder().write("data/Tallyglass/cache.sqlite", std::string(4096, 'x'));
    model->start();
    awaitEnd();
    EXPECT_THAT(model->error().value_or(""), testing::StartsWith("Could not open the diff cache"));
}

} // namespace
} // namespace tallyglass
