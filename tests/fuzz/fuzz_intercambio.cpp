// Any bytes as a received file: lines and fields within their bounds, or one of the errors that callers
// expect.

#include <QTemporaryDir>
#include <optional>

#include "exchange/Catalogos.h"
#include "exchange/FicheroIntercambio.h"
#include "fuzz/Expect.h"

namespace {

using tarmel::basic::RuntimeError;

template <typename Read>
auto unlessRefused(const Read& read) -> std::optional<decltype(read())> {
    try {
        return read();
    } catch (const RuntimeError& error) {
        expect(error.number() == tarmel::kFormatoNoValido, "a refusal is that of the format",
               error.description());
        expect(!error.description().isEmpty(), "a refusal says why");
        return std::nullopt;
    }
}

QStringList lineasDe(const QString& ruta) {
    tarmel::LectorFichero lector(ruta);
    QStringList lineas;
    while (!lector.fin())
        lineas << lector.leerLinea();
    return lineas;
}

void comprobarLineas(const QStringList& lineas, const QString& copia) {
    QFile::remove(copia);
    tarmel::EscritorFichero escritor(copia);
    for (const QString& linea : lineas) {
        expect(linea.size() <= tarmel::kMaxLineaFichero, "no line is longer than the bound");
        expect(!linea.contains(u'\r') && !linea.contains(u'\0'), "a line holds no end of a line and no NUL",
               linea);
        escritor.escribir({linea});
    }
    escritor.cerrar();
    expect(lineasDe(copia) == lineas, "what was read is read again once it has been written");
}

void comprobarTabla(const std::vector<QStringList>& filas) {
    expect(!filas.empty(), "the first line is there, even if empty");
    for (std::size_t i = 0; i < filas.size(); ++i) {
        expect(filas[i].size() <= tarmel::kMaxCamposFichero, "no line has more fields than the bound");
        expect(i == 0 || filas[i].size() > 1 || !filas[i].front().isEmpty(), "no empty line is a row");
        for (const QString& campo : filas[i])
            expect(!campo.contains(tarmel::kSeparadorFichero) && !campo.contains(QStringLiteral("\r\n")),
                   "a field holds no separator and no end of a line", campo);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir carpeta;
    static const QString ruta = carpeta.filePath(QStringLiteral("recibido.txt"));
    static const QString copia = carpeta.filePath(QStringLiteral("copia.txt"));
    QFile fichero(ruta);
    fichero.remove();  // much faster than emptying it, which waits for the disk
    expect(fichero.open(QIODevice::WriteOnly), "the file can be made");
    fichero.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    fichero.close();

    const auto lineas = unlessRefused([] { return lineasDe(ruta); });
    if (lineas) comprobarLineas(*lineas, copia);
    const auto filas = unlessRefused([] { return tarmel::LeerTablaTexto(ruta, tarmel::kSeparadorFichero); });
    if (filas) comprobarTabla(*filas);
    return lineas && filas ? 0 : -1;
}
