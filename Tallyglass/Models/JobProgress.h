// What a job that the user waits for is doing, and for how long it has been under way.
//
// Main thread only.

#pragma once

#include "Tallyglass/Models/Timer.h"

#include <QObject>
#include <QProperty>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tallyglass {

class JobProgress : public QObject {
    Q_OBJECT

public:
    explicit JobProgress(TimerFactory makeTimer, QObject* parent = nullptr);
    ~JobProgress() override;

    /// Present exactly while the job runs.
    [[nodiscard]] const std::optional<std::string>& text() const { return m_text.value(); }
    /// Seconds for which it has run, or did until its end.
    [[nodiscard]] std::int64_t elapsed() const { return m_elapsed.value(); }
    [[nodiscard]] std::string elapsedText() const; ///< "1:15"; hours are minutes too

    /// Counts the time from here.
    void begin(const std::string& text);
    /// Requires: it runs.
    void setText(const std::string& text) { m_text.setValue(text); }
    void end();
    /// Ends it and forgets its time.
    void reset();

signals:
    void textChanged();
    void elapsedChanged();

private:
    void tick();

    const TimerFactory m_makeTimer;
    std::unique_ptr<Timer> m_ticker; ///< absent until a job begins

    Q_OBJECT_BINDABLE_PROPERTY(JobProgress, std::optional<std::string>, m_text, &JobProgress::textChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(JobProgress, std::int64_t, m_elapsed, 0,
                                         &JobProgress::elapsedChanged)
};

} // namespace tallyglass
