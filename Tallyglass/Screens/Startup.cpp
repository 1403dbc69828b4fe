#include "Tallyglass/Screens/Startup.h"

#include <QQmlEngine>

namespace tallyglass {

Startup* Startup::of(QQmlEngine& engine) {
    return engine.singletonInstance<Startup*>(qmlTypeId("Tallyglass", 1, 0, "Startup"));
}

void Startup::fail(const QString& reason) {
    if (!m_failure.isEmpty())
        return;
    m_failure = reason.trimmed();
    emit failureChanged();
}

} // namespace tallyglass
