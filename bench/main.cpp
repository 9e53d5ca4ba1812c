#include "Figures.h"

int main(int argc, char** argv) {
    tarmel::bench::addStatements();
    tarmel::bench::addCapture();
    tarmel::bench::addAccess();
    tarmel::bench::addLista();
    tarmel::bench::addConsultas();
    return tarmel::bench::runAll(argc, argv);
}
