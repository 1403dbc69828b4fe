// The base of what screens bind: it watches the application's model and updates its content when something
// changed, once for all that changed in one turn of the event loop, and at each full minute, since contents
// hold times relative to the present.
//
// Derived classes name this base with its namespace, since Qt's QML tools find it by its full name only.
//
// Main thread only. Requires: the context outlives the view model or goes with the same owner.

#pragma once

#include "Tallyglass/Screens/Context/ScreenContext.h"

#include <qqmlintegration.h>

#include <QObject>
#include <QPointer>
#include <QQmlParserStatus>
#include <QTimer>

namespace tallyglass {

class ViewModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(
        tallyglass::ScreenContext* context READ context WRITE setContext NOTIFY contextChanged REQUIRED)
    QML_ANONYMOUS

public:
    explicit ViewModel(QObject* parent = nullptr);

    [[nodiscard]] ScreenContext* context() const { return m_context; }
    void setContext(ScreenContext* context);
    /// The application's model; null without a context.
    [[nodiscard]] AppModel* model() const { return m_context ? m_context->model() : nullptr; }

    void classBegin() override { m_isComplete = false; }
    void componentComplete() override;

signals:
    void contextChanged();

protected:
    /// Makes the content from the model, which is there. Emits a signal only for what differs.
    virtual void update() = 0;

    /// Has update() called at the end of this turn of the event loop.
    void scheduleUpdate();

private:
    void updateNow();
    void awaitMinute();

    QPointer<ScreenContext> m_context;
    QTimer m_minute;
    bool m_isComplete = true; ///< all properties that QML gives have been set
    bool m_isScheduled = false;
};

} // namespace tallyglass
