// The base of the C++ types beside the screens: it watches the model and has its content made anew when
// something changed, once for all that changed in one turn of the event loop, and with each full minute,
// since contents hold times relative to the present.
//
// Main thread only. Requires: the model outlives the view or goes with the same owner.

#pragma once

#include "Tallyglass/Models/AppModel.h"

#include <qqmlintegration.h>

#include <QObject>
#include <QPointer>
#include <QQmlParserStatus>
#include <QTimer>

namespace tallyglass {

class ModelView : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(tallyglass::AppModel* model READ model WRITE setModel NOTIFY modelChanged REQUIRED)
    QML_ANONYMOUS

public:
    explicit ModelView(QObject* parent = nullptr);

    [[nodiscard]] AppModel* model() const { return m_model; }
    void setModel(AppModel* model);

    void classBegin() override { m_isComplete = false; }
    void componentComplete() override;

signals:
    void modelChanged();

protected:
    /// Makes the content from the model, which is there. Emits a signal only for what differs.
    virtual void update() = 0;

    /// Has update() called at the end of this turn of the event loop.
    void scheduleUpdate();

private:
    void updateNow();
    void awaitMinute();

    QPointer<AppModel> m_model;
    QTimer m_minute;
    bool m_isComplete = true; ///< all properties that QML gives have been set
    bool m_isScheduled = false;
};

} // namespace tallyglass
