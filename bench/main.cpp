#include "Figures.h"

int main(int argc, char** argv) {
    tarmel::bench::addStatements();
    tarmel::bench::addCapture();
    return tarmel::bench::runAll(argc, argv);
}
