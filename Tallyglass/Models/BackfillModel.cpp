#include "Tallyglass/Models/BackfillModel.h"

#include "TallyglassKit/Comparison/CacheSession.h"
#include "TallyglassKit/Comparison/ComparisonProgress.h"

#include <algorithm>
#include <utility>

namespace tallyglass {

namespace {

constexpr double tickInterval = 1; // seconds

} // namespace

struct BackfillModel::Reading {
    std::vector<std::string> roots;
    std::vector<AdjacentPair> pairs;
};

BackfillModel::BackfillModel(AppEnvironment environment, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)) {}

BackfillModel::~BackfillModel() = default;

const CompareOptions& BackfillModel::options() const {
    return isRunning() ? m_runOptions : m_chosenOptions;
}

std::optional<double> BackfillModel::secondsLeft() const {
    if (!isRunning() || progress()->completed <= progress()->skipped)
        return std::nullopt;
    const std::chrono::duration<double> elapsed = m_environment.clock() - m_started;
    return elapsed.count() / static_cast<double>(progress()->completed - progress()->skipped) *
           static_cast<double>(progress()->total - progress()->completed);
}

void BackfillModel::setPreparesNewBackups(bool prepares) {
    m_preparesNewBackups.setValue(prepares);
    const std::vector<std::string> value(prepares ? 1 : 0, "on");
    m_settingsTask = startTask(
        this,
        [defaults = m_environment.defaults, value](TaskContext&) {
            defaults.setStringArray(preparesNewBackupsKey, value);
        },
        [] {}, [](const std::exception_ptr&) {}); // it then lasts as long as the program
    m_settingsTask.letFinish();
}

void BackfillModel::readSettings(std::function<void()> then) {
    m_settingsTask = startTask(
        this,
        [defaults = m_environment.defaults](TaskContext&) {
            const auto value = defaults.stringArray(preparesNewBackupsKey);
            return value && !value->empty();
        },
        [this, then = std::move(then)](bool prepares) {
            m_preparesNewBackups.setValue(prepares);
            then();
        },
        [](const std::exception_ptr&) {});
}

void BackfillModel::prepare() {
    readSettings([this] { read(true); });
}

void BackfillModel::setOptions(const CompareOptions& options) {
    if (std::exchange(m_chosenOptions, options) != options && !isRunning() && !m_roots.empty())
        read(false);
}

void BackfillModel::reload() {
    if (m_readTask.isActive())
        m_readsAgain = true;
    else if (!m_roots.empty())
        read(false);
}

void BackfillModel::takeNewBackup() {
    readSettings([this] {
        m_startsForNewBackup = preparesNewBackups();
        if (preparesNewBackups() || !m_roots.empty())
            read(true);
    });
}

/// Reads the pairs of the known backups, or first lists these. If they can't be listed there are none, and
/// the compare screen says why.
void BackfillModel::read(bool lists) {
    m_readsAgain = false;
    m_isListing = lists || (m_isListing && m_readTask.isActive());
    m_readTask = startTask(
        this,
        [cache = m_environment.cache, runner = m_environment.runner,
         known = m_isListing ? std::nullopt : std::optional(m_roots), options = options(),
         since = isRunning() ? std::optional(m_started) : std::nullopt](TaskContext& task) {
            auto roots = known ? *known : runner.backupPathsThrowing(task.stopToken());
            auto pairs =
                adjacentPairs(cache->open(task.stopToken()).store(), roots, options, since, task.stopToken());
            return Reading{std::move(roots), std::move(pairs)};
        },
        [this](Reading reading) { take(std::move(reading)); },
        [this](const std::exception_ptr&) {
            take(m_isListing ? Reading() : Reading{m_roots, pairs()});
        });
}

void BackfillModel::take(Reading reading) {
    m_roots = std::move(reading.roots);
    m_pairs.setValue(std::move(reading.pairs));
    if (m_readsAgain)
        reload();
    if (isRunning() && !m_backfillTask.isActive())
        end();
    if (std::exchange(m_startsForNewBackup, false) && isOnlyNewestMissing())
        start();
}

/// The run is over, and its last pairs have been read.
void BackfillModel::end() {
    m_isPausing.setValue(false);
    m_progress.setValue(std::nullopt);
    if (m_runOptions != m_chosenOptions)
        read(false);
}

bool BackfillModel::isOnlyNewestMissing() const {
    const auto isReady = [](const AdjacentPair& pair) { return pair.state == AdjacentPair::State::ready; };
    return !pairs().empty() && !isReady(pairs().back()) &&
           std::all_of(pairs().begin(), pairs().end() - 1, isReady);
}

void BackfillModel::start() {
    if (isRunning())
        return;
    m_runOptions = m_chosenOptions;
    m_started = m_environment.clock();
    m_error.setValue(std::nullopt);
    m_progress.setValue(DiffEngine::BackfillProgress{.currentLabel = "Listing backups…"});
    m_backfillTask = startTask(
        this,
        [cache = m_environment.cache, options = m_runOptions,
         concurrency = concurrency()](TaskContext& task) {
            const DiffEngine& engine = cache->open(task.stopToken()).engine();
            engine.backfillAdjacentPairs(concurrency, options, task.post(&BackfillModel::apply),
                                         task.stopToken());
        },
        [this] { finish(); },
        [this](const std::exception_ptr& failure) {
            if (!isCancellation(failure))
                m_error.setValue(cacheFailure(failure));
            finish();
        });
    read(true);
    if (!m_ticker) {
        m_ticker = m_environment.makeTimer();
        connect(m_ticker.get(), &Timer::timeout, this, &BackfillModel::tick);
    }
    m_ticker->start(tickInterval);
}

void BackfillModel::pause() {
    if (!isRunning())
        return;
    m_isPausing.setValue(true);
    m_backfillTask.stop();
}

/// The events of pairs that end together may come in any order.
void BackfillModel::apply(const DiffEngine::BackfillProgress& progress) {
    if (!isRunning() || progress.completed < this->progress()->completed)
        return;
    m_progress.setValue(progress);
    reload();
}

void BackfillModel::finish() {
    m_ticker->stop();
    read(false);
}

void BackfillModel::tick() {
    m_ticker->start(tickInterval);
    emit progressChanged(); // the time left
    reload();
}

} // namespace tallyglass
