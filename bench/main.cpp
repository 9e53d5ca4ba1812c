#include "Figures.h"

int main(int argc, char** argv) {
    tarmel::bench::addStatements();
    tarmel::bench::addCapture();
    tarmel::bench::addLista();
    return tarmel::bench::runAll(argc, argv);
}
