// Makes the models known to QML by name. They are created in C++.

#pragma once

#include "Tallyglass/Models/AppModel.h"

#include <qqmlintegration.h>

namespace tallyglass {

struct AppModelType {
    Q_GADGET
    QML_FOREIGN(tallyglass::AppModel)
    QML_NAMED_ELEMENT(AppModel)
    QML_UNCREATABLE("made by the application")
};

} // namespace tallyglass
