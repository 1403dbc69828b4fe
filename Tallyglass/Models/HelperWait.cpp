#include "Tallyglass/Models/HelperWait.h"

#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/HelperSetup.h"

namespace tallyglass {

HelperWait::HelperWait(AppModel& model, HelperSetup& helper, QObject* parent)
    : QObject(parent), m_model(model), m_helper(helper), m_timer(model.makeTimer()) {
    connect(m_timer.get(), &Timer::timeout, this, &HelperWait::ask);
}

HelperWait::~HelperWait() = default;

void HelperWait::start() {
    if (!m_isWaiting)
        waitOn();
}

void HelperWait::stop() {
    m_isWaiting = false;
    m_timer->stop();
    m_reading.cancel();
}

void HelperWait::waitOn() {
    m_isWaiting = m_model.manifest().empty();
    if (m_isWaiting)
        m_timer->start(interval);
}

void HelperWait::ask() {
    m_helper.requestHelperRun();
    const auto store = [this](const std::vector<BackupManifestEntry>& entries) {
        m_model.setManifest(entries);
        waitOn();
    };
    m_reading = startTask(
        this,
        [reader = m_model.manifestReader()](TaskContext& task) { return reader.read(task.stopToken()); },
        store, [store](const std::exception_ptr&) { store({}); });
}

} // namespace tallyglass
