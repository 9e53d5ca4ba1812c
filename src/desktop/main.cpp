#include <QApplication>
#include <cstdio>
#include <cstring>

#include "core/General.h"
#include "desktop/Escritorio.h"
#include "platform/forms/Pantallas.h"

int main(int argc, char* argv[]) {
    using namespace tarmel;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--version") != 0) continue;
        std::puts("Tarmel 3.0");
        return 0;
    }
    QApplication application(argc, argv);
    desktop::prepareApplication();
    desktop::Escritorio escritorio;
    forms::setHost(&escritorio);
    escritorio.guard([] { Main(); });
    escritorio.run();
    // The screens let go of their windows before the windows go.
    escritorio.closeAll();
    forms::pantallas().Reset();
    return 0;
}
