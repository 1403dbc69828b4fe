// The main of tests that need Qt: off screen, drawn by the software renderer, with a data folder that is
// empty at the start, so that no test finds or touches the user's. A warning from Qt or QML fails the test in
// which it comes.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtGlobal>

namespace {

void failOnWarning(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    const QByteArray text = qFormatLogMessage(type, context, message).toLocal8Bit();
    if (type == QtDebugMsg || type == QtInfoMsg)
        std::fprintf(stderr, "%s\n", text.constData());
    else
        ADD_FAILURE() << text.constData();
}

} // namespace

// Qt's software renderer forgets the textures of pictures that are still cached when the last window goes.
// The leak check knows of it by this name.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:QSGTexture::QSGTexture\n";
}

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false"); // the off-screen platform can't do all that a screen can
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleTest(&argc, argv);
    QGuiApplication application(argc, argv);
    qInstallMessageHandler(failOnWarning);
    const int result = RUN_ALL_TESTS();
    qInstallMessageHandler(nullptr);
    return result;
}
