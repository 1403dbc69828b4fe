// Waits for the helper to be granted access: asks it for a new export every few seconds and reads the
// manifest, until there is one. A manifest is the only proof of the grant that this program can see.
//
// Main thread only. Model and helper outlive it.

#pragma once

#include "Tallyglass/Models/Task.h"

#include <QObject>
#include <memory>

namespace tallyglass {

class AppModel;
class HelperSetup;
class Timer;

class HelperWait : public QObject {
    Q_OBJECT

public:
    static constexpr double interval = 3; ///< seconds, of the continuous clock

    HelperWait(AppModel& model, HelperSetup& helper, QObject* parent = nullptr);
    ~HelperWait() override;

    /// Starts waiting, unless it waits already or there is a manifest.
    void start();
    void stop();
    [[nodiscard]] bool isWaiting() const { return m_isWaiting; }

private:
    void waitOn();
    void ask();

    AppModel& m_model;
    HelperSetup& m_helper;
    const std::unique_ptr<Timer> m_timer;
    TaskHandle m_reading;
    bool m_isWaiting = false;
};

} // namespace tallyglass
