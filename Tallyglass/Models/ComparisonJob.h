// A comparison as a screen sees it: its progress and for how long it has been under way, its result with the
// rows to show, its failure, and how to stop it. One after another, each in place of the one before it; the
// last result stays until there is another.
//
// Main thread only; the comparison runs on the pool.

#pragma once

#include "Tallyglass/Models/JobProgress.h"
#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Comparison/CacheSession.h"

#include <QObject>
#include <QProperty>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

struct AppEnvironment;
struct CompareOptions;

class ComparisonJob : public QObject {
    Q_OBJECT

public:
    /// The comparison itself. Called on the pool.
    using Work =
        std::function<Comparison(const DiffEngine&, const DiffEngine::OnProgress&, const std::stop_token&)>;

    explicit ComparisonJob(const AppEnvironment& environment, QObject* parent = nullptr);
    ~ComparisonJob() override;

    [[nodiscard]] bool isRunning() const { return progressText().has_value(); }
    /// Present exactly while it runs.
    [[nodiscard]] const std::optional<std::string>& progressText() const { return m_progress.text(); }
    /// Bytes that tmutil has printed so far.
    [[nodiscard]] std::int64_t bytesReceived() const { return m_bytesReceived.value(); }
    /// Seconds for which it has run.
    [[nodiscard]] std::int64_t elapsed() const { return m_progress.elapsed(); }
    [[nodiscard]] std::string elapsedText() const {
        return m_progress.elapsedText();
    } ///< "1:15"; hours are minutes too

    [[nodiscard]] const std::optional<Comparison>& comparison() const { return m_comparison; }
    [[nodiscard]] const std::vector<ChangeRecord>& rows() const { return m_rows; }
    [[nodiscard]] const std::optional<std::string>& error() const { return m_error.value(); }

    /// Says what is done before the operands are known, and counts the time from here. Stops and drops what
    /// runs.
    void begin(const std::string& progressText);
    /// Compares two backups. Goes on with what began; stops and drops any other run.
    void start(const std::string& from, const std::string& to, const CompareOptions& options, bool useCache);
    void start(Work work);
    /// Ends what began, without a comparison.
    void end();
    /// Drops what runs and forgets its progress and the last error.
    void reset();

    /// Stops the comparison. It runs until tmutil has ended, and then fails as cancelled.
    void cancel();
    /// Stops the comparison and drops it at once. It counts as cancelled; what merely began just ends.
    void abandon();

signals:
    void progressChanged(); ///< progressText, bytesReceived
    void elapsedChanged();
    void resultChanged(); ///< comparison, rows
    void errorChanged();
    void succeeded(); ///< with another result or the same once more

private:
    using Self = ComparisonJob;

    void apply(const DiffEngine::Progress& progress);
    void take(LoadedComparison result);

    const std::shared_ptr<CacheSession> m_cache;
    JobProgress m_progress;
    TaskHandle m_task;
    std::optional<Comparison> m_comparison;
    std::vector<ChangeRecord> m_rows;

    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, std::int64_t, m_bytesReceived, 0, &Self::progressChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_error, &Self::errorChanged)
};

} // namespace tallyglass
