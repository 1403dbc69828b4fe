#include <QtQml/qqmlextensionplugin.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>

Q_IMPORT_QML_PLUGIN(TallyglassPlugin)

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/"));
    engine.load(QUrl(QStringLiteral("qrc:/Tallyglass/Main.qml")));
    return engine.rootObjects().isEmpty() ? 1 : application.exec();
}
