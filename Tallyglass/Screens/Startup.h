// How far the program's start has come. The first frame of the window shows the verdict and the destination;
// what that first look doesn't need, above all what can be operated, is made right after it: `Later` in QML
// asks here. A part that can't be loaded, then or later, is told here too.
//
// Main thread only.

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QProperty>

class QQmlEngine;

namespace tallyglass {

class Startup : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool over READ isOver NOTIFY overChanged)
    Q_PROPERTY(QString failure READ failure NOTIFY failureChanged)

public:
    using QObject::QObject;
    /// The one that the QML of an engine asks.
    [[nodiscard]] static Startup* of(QQmlEngine& engine);

    /// True unless somebody shows a window frame by frame.
    [[nodiscard]] bool isOver() const { return m_over; }
    void setOver(bool over) { m_over = over; }

    /// Why a part of the window can't be loaded; empty as long as each can.
    [[nodiscard]] QString failure() const { return m_failure; }
    /// The first reason is kept, since others follow from it.
    Q_INVOKABLE void fail(const QString& reason);

signals:
    void overChanged();
    void failureChanged();

private:
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Startup, bool, m_over, true, &Startup::overChanged)
    QString m_failure;
};

} // namespace tallyglass
