#include "Tallyglass/Models/ComparisonJob.h"

#include "Tallyglass/Models/AppEnvironment.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/ComparisonProgress.h"

#include <utility>
#include <variant>

namespace tallyglass {

ComparisonJob::ComparisonJob(const AppEnvironment& environment, QObject* parent)
    : QObject(parent), m_cache(environment.cache), m_progress(environment.makeTimer) {
    connect(&m_progress, &JobProgress::textChanged, this, &ComparisonJob::progressChanged);
    connect(&m_progress, &JobProgress::elapsedChanged, this, &ComparisonJob::elapsedChanged);
}

ComparisonJob::~ComparisonJob() = default;

void ComparisonJob::begin(const std::string& progressText) {
    m_task.cancel();
    m_error.setValue(std::nullopt);
    m_bytesReceived.setValue(0);
    m_progress.begin(progressText);
}

void ComparisonJob::start(const std::string& from, const std::string& to, const CompareOptions& options,
                          bool useCache) {
    start([=](const DiffEngine& engine, const DiffEngine::OnProgress& progress, const std::stop_token& stop) {
        return engine.compare(from, to, options, useCache, progress, stop);
    });
}

void ComparisonJob::start(Work work) {
    static constexpr const char* text = "Comparing…";
    if (isRunning() && !m_task.isActive())
        m_progress.setText(text);
    else
        begin(text);
    m_task = startTask(
        this,
        [cache = m_cache, work = std::move(work)](TaskContext& task) -> std::optional<LoadedComparison> {
            // The result itself tells that the comparison is finished, once its rows are there.
            const auto unlessFinished = [post = task.post(&ComparisonJob::apply)](const auto& progress) {
                if (!std::holds_alternative<Comparison>(progress))
                    post(progress);
            };
            auto& open = cache->open(task.stopToken());
            Comparison comparison = work(open.engine(), unlessFinished, task.stopToken());
            if (task.stopToken().stop_requested())
                return std::nullopt; // it ended at the very moment of the cancellation: it stays in the cache
            return open.load(std::move(comparison), task.stopToken());
        },
        [this](std::optional<LoadedComparison> result) {
            if (result)
                take(std::move(*result));
            end();
        },
        [this](const std::exception_ptr& failure) {
            m_error.setValue(comparisonFailure(failure));
            end();
        });
}

void ComparisonJob::apply(const DiffEngine::Progress& progress) {
    if (const auto* running = std::get_if<DiffEngine::Running>(&progress))
        m_bytesReceived.setValue(running->bytesReceived);
    if (const auto text = tallyglass::progressText(progress))
        m_progress.setText(*text);
}

void ComparisonJob::take(LoadedComparison result) {
    if (m_comparison != result.comparison || m_rows != result.rows) {
        m_comparison = std::move(result.comparison);
        m_rows = std::move(result.rows);
        emit resultChanged();
    }
    emit succeeded();
}

void ComparisonJob::end() {
    m_progress.end();
}

void ComparisonJob::reset() {
    m_task.cancel();
    m_error.setValue(std::nullopt);
    m_bytesReceived.setValue(0);
    m_progress.reset();
}

void ComparisonJob::cancel() {
    m_task.stop();
}

void ComparisonJob::abandon() {
    if (m_task.isActive())
        m_error.setValue("Comparison cancelled.");
    m_task.cancel();
    end();
}

} // namespace tallyglass
