// What screens need around them, over a machine that the test gives or an empty one.
//
// Main thread only.

#pragma once

#include "Tallyglass/Screens/Context/ScreenContext.h"
#include "Tallyglass/Screens/Context/TimelinePoint.h"
#include "Tests/Support/FakeClipboard.h"
#include "Tests/Support/FakeWorkspace.h"
#include "Tests/Support/TemporaryFolder.h"

#include <QVariantMap>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace tallyglass::test {

class ScreenStage {
public:
    TemporaryFolder folder; ///< the root of the empty machine

    ScreenStage() : ScreenStage(emptyMachine) {}
    explicit ScreenStage(AppEnvironment environment)
        : ScreenStage([&environment](const auto&) { return std::move(environment); }) {}
    /// Over what `make` makes of the folder.
    explicit ScreenStage(const std::function<AppEnvironment(const std::filesystem::path&)>& make)
        : model(withWorkspace(make(folder.path()))) {
        QObject::connect(&context, &ScreenContext::sheetRequested, &context,
                         [this](ScreenContext::Sheet sheet, const QVariant& subject) {
                             sheets.push_back(sheet);
                             if (sheet == ScreenContext::BackupChanges)
                                 changesTarget = subject.value<TimelinePoint>();
                         });
    }

    /// The one required property of screens, sheets and the window.
    [[nodiscard]] QVariantMap properties() {
        return {{QStringLiteral("context"), QVariant::fromValue(&context)}};
    }

    FakeWorkspace workspace;
    FakeClipboard clipboard;
    Alerts alerts;
    FilePanels panels{alerts};
    AppModel model;
    DiffModel diff{model.environment()};
    HelperSetup helperSetup{model.paths(), workspace, alerts};
    UpdaterController updater{UpdaterOptions{}, alerts, workspace};
    ScreenContext context{model, diff, helperSetup, workspace, clipboard, alerts, panels, updater};
    std::vector<ScreenContext::Sheet> sheets;   ///< that were asked for
    std::optional<TimelinePoint> changesTarget; ///< of the last request for a backup's changes

private:
    static AppEnvironment emptyMachine(const std::filesystem::path& root) {
        AppEnvironment environment{SystemPaths(root)};
        environment.desktopFolder = [root] { return root / "Desktop"; };
        return environment;
    }
    AppEnvironment withWorkspace(AppEnvironment environment) {
        environment.workspace = &workspace;
        return environment;
    }
};

} // namespace tallyglass::test
