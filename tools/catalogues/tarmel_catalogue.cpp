// tarmel_catalogue LIST.csv TEXT: a sample catalogue as the text file that the program's update commands
// read.

#include <QCoreApplication>
#include <cstdio>

#include "database/Csv.h"
#include "exchange/FicheroIntercambio.h"

int main(int count, char** words) {
    const QCoreApplication application(count, words);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("tarmel_catalogue LIST.csv TEXT\n", stderr);
        return 2;
    }
    try {
        tarmel::EscritorFichero text(arguments[2]);
        for (const std::vector<QString>& row : tarmel::leerCsv(arguments[1]))
            text.escribir(QStringList(row.begin(), row.end()));
        text.cerrar();
    } catch (const tarmel::basic::RuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
