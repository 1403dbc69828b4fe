#include "Tallyglass/Screens/Application.h"

#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(TallyglassPlugin)

int main(int argc, char** argv) {
    return tallyglass::Application::run(argc, argv);
}
