// Questions and messages that the user has to answer before anything else. Whoever has one shows it here; the
// window shows the current one and answers it.
//
// Main thread only.

#pragma once

#include "Tallyglass/Desktop/RequestQueue.h"

#include <QObject>
#include <QString>

namespace tallyglass {

struct Alert {
    Q_GADGET
    Q_PROPERTY(QString symbol READ symbol)
    Q_PROPERTY(bool isWarning READ isWarning)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString confirmText READ confirmLabel)
    Q_PROPERTY(QString cancelText MEMBER cancelText)

public:
    enum class Kind { information, warning };
    Q_ENUM(Kind)

    Kind kind = Kind::information;
    QString title = {};
    QString text = {};
    QString confirmText = {}; ///< empty for "OK"
    QString cancelText = {};  ///< empty for no such button

    [[nodiscard]] bool isWarning() const { return kind == Kind::warning; }
    [[nodiscard]] QString symbol() const;
    [[nodiscard]] QString confirmLabel() const;

    friend bool operator==(const Alert&, const Alert&) = default;
};

class Alerts : public QObject {
    Q_OBJECT
    Q_PROPERTY(tallyglass::Alert current READ current NOTIFY currentChanged)
    Q_PROPERTY(bool isShowing READ isShowing NOTIFY currentChanged)

public:
    using QObject::QObject;

    /// Shows the alert when those before it are answered. `answered` gets whether it was confirmed.
    void show(const Alert& alert, QObject* receiver = nullptr, std::function<void(bool)> answered = {});

    [[nodiscard]] Alert current() const { return m_queue.current(); }
    [[nodiscard]] bool isShowing() const { return !m_queue.isEmpty(); }

    /// Answers the current alert, if there is one.
    Q_INVOKABLE void answer(bool confirmed);

signals:
    void currentChanged();

private:
    RequestQueue<Alert, bool> m_queue;
};

} // namespace tallyglass
