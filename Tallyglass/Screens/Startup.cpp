#include "Tallyglass/Screens/Startup.h"

#include <QQmlEngine>

namespace tallyglass {

Startup* Startup::of(QQmlEngine& engine) {
    return engine.singletonInstance<Startup*>(qmlTypeId("Tallyglass", 1, 0, "Startup"));
}

} // namespace tallyglass
