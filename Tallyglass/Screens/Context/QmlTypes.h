// Makes the models known to QML by name. They are created in C++.

#pragma once

#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Desktop/Clipboard.h"
#include "Tallyglass/Desktop/FilePanels.h"
#include "Tallyglass/Desktop/UpdaterController.h"
#include "Tallyglass/Desktop/Workspace.h"
#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/HelperSetup.h"

#include <QtQml/qqml.h> // QML_FOREIGN

namespace tallyglass {

struct AppModelType {
    Q_GADGET
    QML_FOREIGN(tallyglass::AppModel)
    QML_NAMED_ELEMENT(AppModel)
    QML_UNCREATABLE("made by the application")
};

struct AlertType {
    Q_GADGET
    QML_FOREIGN(tallyglass::Alert)
    QML_VALUE_TYPE(alert)
};

struct AlertsType {
    Q_GADGET
    QML_FOREIGN(tallyglass::Alerts)
    QML_NAMED_ELEMENT(Alerts)
    QML_UNCREATABLE("made by the application")
};

struct FilePanelType {
    Q_GADGET
    QML_FOREIGN(tallyglass::FilePanel)
    QML_VALUE_TYPE(filePanel)
};

struct FilePanelsType {
    Q_GADGET
    QML_FOREIGN(tallyglass::FilePanels)
    QML_NAMED_ELEMENT(FilePanels)
    QML_UNCREATABLE("made by the application")
};

struct HelperSetupType {
    Q_GADGET
    QML_FOREIGN(tallyglass::HelperSetup)
    QML_NAMED_ELEMENT(HelperSetup)
    QML_UNCREATABLE("made by the application")
};

struct ClipboardType {
    Q_GADGET
    QML_FOREIGN(tallyglass::Clipboard)
    QML_NAMED_ELEMENT(Clipboard)
    QML_UNCREATABLE("made by the application")
};

struct UpdaterControllerType {
    Q_GADGET
    QML_FOREIGN(tallyglass::UpdaterController)
    QML_NAMED_ELEMENT(UpdaterController)
    QML_UNCREATABLE("made by the application")
};

struct WorkspaceType {
    Q_GADGET
    QML_FOREIGN(tallyglass::Workspace)
    QML_NAMED_ELEMENT(Workspace)
    QML_UNCREATABLE("made by the application")
};

} // namespace tallyglass
