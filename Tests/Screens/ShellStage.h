// What the screens of the whole window need around them, over a machine of its own.

#pragma once

#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Desktop/Pasteboard.h"
#include "Tallyglass/Desktop/UpdaterController.h"
#include "Tallyglass/Desktop/Workspace.h"
#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/HelperSetup.h"
#include "Tests/Support/TemporaryFolder.h"

#include <QVariantMap>
#include <utility>

namespace tallyglass::test {

/// Remembers what it was asked to open.
class QuietWorkspace : public Workspace {
public:
    QList<QUrl> opened;

    bool openUrl(const QUrl& url) override {
        opened.append(url);
        return true;
    }
    void reveal(const std::filesystem::path&) override {}
};

class QuietPasteboard : public Pasteboard {
public:
    void setText(const QString&) override {}
};

struct ShellStage {
    ShellStage() : model(AppSurroundings(SystemPaths(root.path()))) {}
    explicit ShellStage(AppSurroundings surroundings) : model(std::move(surroundings)) {}

    TemporaryFolder root;
    QuietWorkspace workspace;
    QuietPasteboard pasteboard;
    Alerts alerts;
    AppModel model;
    HelperSetup helperSetup{model.paths(), workspace, alerts};
    UpdaterController updater{UpdaterOptions{}, alerts, workspace};

    /// The required properties of the root view and of the window.
    [[nodiscard]] QVariantMap properties() {
        return {
            {QStringLiteral("model"), QVariant::fromValue(&model)},
            {QStringLiteral("helperSetup"), QVariant::fromValue(&helperSetup)},
            {QStringLiteral("workspace"), QVariant::fromValue<Workspace*>(&workspace)},
            {QStringLiteral("pasteboard"), QVariant::fromValue<Pasteboard*>(&pasteboard)},
            {QStringLiteral("alerts"), QVariant::fromValue(&alerts)},
            {QStringLiteral("updater"), QVariant::fromValue(&updater)},
        };
    }
};

} // namespace tallyglass::test
