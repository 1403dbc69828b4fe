#include "Tallyglass/Screens/ModelView.h"

#include <cmath>

namespace tallyglass {

ModelView::ModelView(QObject* parent) : QObject(parent) {
    m_minute.setSingleShot(true);
    m_minute.setTimerType(Qt::VeryCoarseTimer); // a second early or late shows nobody a wrong word
    connect(&m_minute, &QTimer::timeout, this, [this] {
        updateNow();
        awaitMinute();
    });
}

void ModelView::setModel(AppModel* model) {
    if (model == m_model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (m_model) {
        for (const auto topic :
             {&AppModel::statusChanged, &AppModel::errorChanged, &AppModel::settingsChanged,
              &AppModel::manifestChanged, &AppModel::permissionChanged})
            connect(m_model, topic, this, &ModelView::scheduleUpdate);
        awaitMinute();
    }
    emit modelChanged();
    updateNow();
}

void ModelView::componentComplete() {
    m_isComplete = true;
    updateNow();
}

void ModelView::scheduleUpdate() {
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

void ModelView::updateNow() {
    if (m_model && m_isComplete)
        update();
}

void ModelView::awaitMinute() {
    if (!m_model)
        return;
    const double seconds = secondsSince1970(m_model->now());
    const double rest = 60 - (seconds - std::floor(seconds / 60) * 60);
    m_minute.start(static_cast<int>(rest * 1000) + 1);
}

} // namespace tallyglass
