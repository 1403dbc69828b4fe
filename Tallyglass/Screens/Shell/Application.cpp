#include "Tallyglass/Screens/Shell/Application.h"

#include "Tallyglass/Desktop/SingleInstance.h"
#include "Tallyglass/Screens/Shell/ApplicationOptions.h"
#include "Tallyglass/Screens/Shell/TallyglassApp.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <fmt/format.h>

#include <QCryptographicHash>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTranslator>
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

/// Where the program listens for a second start on the same machine.
QString socketPath() {
    const QString standard = SingleInstance::standardSocketPath();
    if (standard.isEmpty())
        return {};
    const auto root = QByteArray::fromStdString(SystemPaths::standard().root().string());
    const QByteArray digest = QCryptographicHash::hash(root, QCryptographicHash::Sha1).toHex();
    return standard + QLatin1Char('.') + QString::fromLatin1(digest.first(8));
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

    QTranslator translator;
    if (translator.load(QLocale(), QStringLiteral("tallyglass"), QStringLiteral("_"),
                        QStringLiteral(":/i18n")))
        QGuiApplication::installTranslator(&translator);

    if (options.screenshots) {
        TallyglassApp app(options);
        return savePictures(app, *options.screenshots);
    }
    SingleInstance instance(socketPath());
    // A made-up session is an instance of its own: the first one shows something else.
    if (!options.fixture && !instance.claim(QGuiApplication::arguments().mid(1)))
        return success;
    TallyglassApp app(options);
    QObject::connect(&instance, &SingleInstance::reopened, &app, &TallyglassApp::reopen);
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
