#include "Tallyglass/Screens/Application.h"

#include "Tallyglass/Screens/ApplicationOptions.h"
#include "Tallyglass/Screens/TallyglassApp.h"

#include <fmt/format.h>

#include <QGuiApplication>
#include <QQuickWindow>
#include <cstdio>
#include <exception>

namespace tallyglass {

namespace {

enum ExitCode : int { success = 0, failure = 1, wrongUsage = 2 };

int fail(ExitCode code, const char* description) {
    fmt::print(stderr, "tallyglass: {}\n", description);
    return code;
}

int savePictures(TallyglassApp& app, const std::string& folder) {
    app.savePictures(folder, [](const QString& path) { fmt::print("{}\n", path.toStdString()); });
    return success;
}

int start(int& argc, char** argv, const ApplicationOptions& options) {
    if (options.screenshots) { // drawn the same on every machine, with a display or without
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
        qunsetenv("QT_SCALE_FACTOR");
    }
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Tallyglass"));
    QGuiApplication::setApplicationVersion(QStringLiteral(TALLYGLASS_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("tallyglass"));

    TallyglassApp app(options);
    if (options.screenshots)
        return savePictures(app, *options.screenshots);
    app.showWindow();
    return QGuiApplication::exec();
}

} // namespace

int Application::run(int& argc, char** argv) {
    try {
        const auto options =
            ApplicationOptions::parse({argv + std::min(argc, 1), argv + argc}, TallyglassApp::sessions());
        if (options.answer) {
            fmt::print("{}\n", *options.answer);
            return success;
        }
        return start(argc, argv, options);
    } catch (const UsageError& error) {
        return fail(wrongUsage, error.what());
    } catch (const std::exception& error) {
        return fail(failure, error.what());
    }
}

} // namespace tallyglass
