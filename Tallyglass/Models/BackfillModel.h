// The comparisons of all neighbouring backups under the options of the compare screen: which of them are
// ready, and a run that makes the others. A run keeps the options with which it began.
//
// Main thread only; tmutil and the cache work on the pool. The cache remembers what was finished, so a run
// that is paused or killed goes on where it was.

#pragma once

#include "Tallyglass/Models/AppEnvironment.h"
#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Comparison/AdjacentPairs.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Platform/Date.h"

#include <QObject>
#include <QProperty>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

class BackfillModel : public QObject {
    Q_OBJECT

public:
    /// The key of the user defaults that is set to any text if new backups are prepared.
    static constexpr const char* preparesNewBackupsKey = "preparesNewBackups";

    explicit BackfillModel(AppEnvironment environment, QObject* parent = nullptr);
    ~BackfillModel() override;

    /// Oldest first; none until they have been read.
    [[nodiscard]] const std::vector<AdjacentPair>& pairs() const { return m_pairs.value(); }
    /// What `pairs` are compared by.
    [[nodiscard]] const CompareOptions& options() const;

    /// Present while a run is under way, and until its outcome has been read.
    [[nodiscard]] const std::optional<DiffEngine::BackfillProgress>& progress() const {
        return m_progress.value();
    }
    [[nodiscard]] bool isRunning() const { return progress().has_value(); }
    /// The run was told to stop, and its children haven't ended yet.
    [[nodiscard]] bool isPausing() const { return m_isPausing.value(); }
    /// Seconds until the run will have finished, going by the pairs that it has compared.
    [[nodiscard]] std::optional<double> secondsLeft() const;
    /// Why the last run couldn't begin.
    [[nodiscard]] const std::optional<std::string>& error() const { return m_error.value(); }

    /// Pairs that are compared at the same time.
    [[nodiscard]] std::int64_t concurrency() const { return m_concurrency.value(); }
    void setConcurrency(std::int64_t pairs) { m_concurrency.setValue(pairs); }

    /// Whether the comparison with a new backup is made on its own, where all earlier ones are ready.
    [[nodiscard]] bool preparesNewBackups() const { return m_preparesNewBackups.value(); }
    void setPreparesNewBackups(bool prepares);

    /// Lists the backups and reads which pairs are ready.
    void prepare();
    /// Reads which pairs are ready, under other options or after a comparison.
    void setOptions(const CompareOptions& options);
    void reload();
    /// Compares the pairs that aren't ready. Does nothing while a run is under way.
    void start();
    /// Stops what runs; what is finished stays.
    void pause();
    /// A backup has ended.
    void takeNewBackup();

signals:
    void pairsChanged();    ///< pairs, options
    void progressChanged(); ///< progress, isPausing, secondsLeft
    void errorChanged();
    void concurrencyChanged();
    void preparesNewBackupsChanged();

private:
    using Self = BackfillModel;
    struct Reading;

    void readSettings(std::function<void()> then);
    void read(bool lists);
    void take(Reading reading);
    void apply(const DiffEngine::BackfillProgress& progress);
    void finish();
    void end();
    void tick();
    [[nodiscard]] bool isOnlyNewestMissing() const;

    const AppEnvironment m_environment;
    std::unique_ptr<Timer> m_ticker; ///< absent until the first run
    CompareOptions m_chosenOptions;
    CompareOptions m_runOptions;
    Date m_started;
    std::vector<std::string> m_roots;
    bool m_readsAgain = false;         ///< the states, once they are read
    bool m_isListing = false;          ///< the read task lists the backups first
    bool m_startsForNewBackup = false; ///< as soon as the pairs are read
    TaskHandle m_settingsTask;
    TaskHandle m_readTask;
    TaskHandle m_backfillTask;

    Q_OBJECT_BINDABLE_PROPERTY(Self, std::vector<AdjacentPair>, m_pairs, &Self::pairsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<DiffEngine::BackfillProgress>, m_progress,
                               &Self::progressChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_isPausing, false, &Self::progressChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_error, &Self::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, std::int64_t, m_concurrency, 4, &Self::concurrencyChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_preparesNewBackups, false,
                                         &Self::preparesNewBackupsChanged)
};

} // namespace tallyglass
