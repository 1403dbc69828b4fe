#include "Tallyglass/Screens/Shell/Application.h"

int main(int argc, char** argv) {
    return tallyglass::Application::run(argc, argv);
}
