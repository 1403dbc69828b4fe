#include "Tallyglass/Desktop/Alerts.h"

#include <QCoreApplication>

namespace tallyglass {

QString Alert::symbol() const {
    return isWarning() ? QStringLiteral("exclamationmark.triangle.fill") : QStringLiteral("info.circle");
}

QString Alert::confirmLabel() const {
    return confirmText.isEmpty() ? QCoreApplication::translate("Alert", "OK") : confirmText;
}

void Alerts::show(const Alert& alert, QObject* receiver, std::function<void(bool)> answered) {
    const bool isNext = !isShowing();
    m_queue.add(alert, receiver, std::move(answered));
    if (isNext)
        emit currentChanged();
}

void Alerts::answer(bool confirmed) {
    if (!isShowing())
        return;
    const auto passOn = m_queue.take();
    emit currentChanged();
    passOn(confirmed);
}

} // namespace tallyglass
