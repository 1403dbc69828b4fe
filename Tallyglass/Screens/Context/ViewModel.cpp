#include "Tallyglass/Screens/Context/ViewModel.h"

#include <cmath>

namespace tallyglass {

ViewModel::ViewModel(QObject* parent) : QObject(parent) {
    m_minute.setSingleShot(true);
    m_minute.setTimerType(Qt::VeryCoarseTimer); // a second early or late shows nobody a wrong word
    connect(&m_minute, &QTimer::timeout, this, [this] {
        updateNow();
        awaitMinute();
    });
}

void ViewModel::setContext(ScreenContext* context) {
    if (context == m_context)
        return;
    if (m_context)
        model()->disconnect(this);
    m_context = context;
    if (m_context) {
        for (const auto topic :
             {&AppModel::statusChanged, &AppModel::errorChanged, &AppModel::settingsChanged,
              &AppModel::manifestChanged, &AppModel::permissionChanged})
            connect(model(), topic, this, &ViewModel::scheduleUpdate);
        awaitMinute();
    }
    emit contextChanged();
    updateNow();
}

void ViewModel::componentComplete() {
    m_isComplete = true;
    updateNow();
}

void ViewModel::scheduleUpdate() {
    if (m_isScheduled)
        return;
    m_isScheduled = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            updateNow();
        },
        Qt::QueuedConnection);
}

void ViewModel::updateNow() {
    if (m_context && m_isComplete)
        update();
}

void ViewModel::awaitMinute() {
    if (!m_context)
        return;
    const double seconds = secondsSince1970(model()->now());
    const double rest = 60 - (seconds - std::floor(seconds / 60) * 60);
    m_minute.start(static_cast<int>(rest * 1000) + 1);
}

} // namespace tallyglass
