// A query over a hundred thousand captures: the refill of the work table with all ringings, the listing
// written from it, and its report, each beside plain SQLite doing the same to the same file.

#include "queries/Consultas.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <utility>

#include "Figures.h"
#include "Host.h"
#include "database/Esquema.h"
#include "platform/report/Document.h"
#include "populate/Poblacion.h"
#include "queries/Informes.h"

namespace {

using namespace Qt::StringLiterals;
using namespace tarmel::bench;

constexpr int kCaptures = 100000;

QString base() {
    static const QTemporaryDir folder(QDir::current().filePath(u"bench-XXXXXX"_s));
    static const QString path = [] {
        const QString file = folder.filePath(u"Tarmel_11.mdb"_s);
        tarmel::prepararBase(file, QStringLiteral(TARMEL_DATA_DIR "/tables"));
        tarmel::ado::Connection connection;
        connection.OpenFile(file);
        tarmel::muestra::poblar(connection, kCaptures, 1);
        return file;
    }();
    return path;
}

int rowsOfSelection() {
    QString where;
    return tarmel::EjecutarConsulta(where, true, false);
}

constexpr const char* kPlainSelection =
    "INSERT INTO Consultas SELECT DISTINCT h.NumHoja, h.CodigoHabitat, h.CodigoMetodo, l.CodigoLocalidad, "
    "l.NombreLocalidad || ', ' || l.Municipio || '. ' || p.NombreProvincia, l.Municipio, h.FechaCaptura, "
    "h.NumRedes, h.LongitudRed, h.HoraDesde, h.HoraHasta, h.Campanna, h.CodigoEstacion, "
    "h.MannanaCodigoFuerza, h.MannanaCodigoDireccion, h.MannanaCodigoNubosidad, h.MannanaCodigoLluvia, "
    "h.TardeCodigoFuerza, h.TardeCodigoDireccion, h.TardeCodigoNubosidad, h.TardeCodigoLluvia, "
    "h.Observaciones, h.Dato1, h.Dato2, h.Dato3, h.Dato4, h.Dato5, h.Dato6, h.Estado, c.NumRegistro, "
    "c.TipoRegistro, c.CodigoCentro, c.NumeroAnilla, c.IdEspecie, e.CodigoEspecie, e.NombreEspecie, "
    "c.Parentesco, c.CodigoCondicion, c.CodigoCircunstancia, c.CodigoEdad, c.CodigoSexo, c.CodigoReclamo, "
    "c.Ala, c.F8, c.Peso, c.Tarso, c.CodigoPlaca, c.CodigoGrasa, c.CodigoMusculo, c.PrecisionFecha, "
    "c.CodigoEstado, c.CodigoEstatus, c.CodigoMuda, c.IniAnillador, c.Observaciones, c.Dato1, c.Dato2, "
    "c.Dato3, c.Dato4, c.Dato5, c.Dato6 FROM ANICHO h JOIN ANIAHO c ON h.IdCabecera = c.IdCabecera JOIN "
    "ANILOC l ON l.CodigoLocalidad = h.CodLocalidad JOIN ANIMAT m ON m.CodigoAnillador = h.CodAnillador OR "
    "m.CodigoGrupo = h.CodAnillador JOIN ANIBRD e ON e.IdEspecie = c.IdEspecie JOIN ICAPRO p ON "
    "p.CodigoProvincia = l.CodigoProvincia WHERE c.TipoRegistro = 'A'";

void selectionOurs(benchmark::State& state, const char* synchronous) {
    const Host host;
    tarmel::gConexion.OpenFile(base());
    tarmel::gConexion.ExecutePlain(QByteArray("PRAGMA synchronous=") + synchronous);
    for (auto _ : state) {
        if (rowsOfSelection() < kCaptures / 2) state.SkipWithError("captures are missing");
    }
    tarmel::reiniciarSesion();
}

void selectionPlain(benchmark::State& state, const char* synchronous) {
    Plain plain(base(), synchronous);
    for (auto _ : state) {
        plain.run("DELETE FROM Consultas");
        plain.run(kPlainSelection);
    }
}

void listingOurs(benchmark::State& state, const char*) {
    const Host host;
    QDir().mkpath(u"Consultas"_s);
    tarmel::gConexion.OpenFile(base());
    rowsOfSelection();
    for (auto _ : state)
        tarmel::EscribirListado(u"bench"_s);
    tarmel::reiniciarSesion();
    QDir(u"Consultas"_s).removeRecursively();
}

/// Everything in the work table, read and written out as text.
void listingPlain(benchmark::State& state, const char* synchronous) {
    Plain plain(base(), synchronous);
    sqlite3_stmt* const rows = plain.prepare("SELECT * FROM Consultas ORDER BY NumHoja, NumRegistro");
    for (auto _ : state) {
        QFile file(u"bench.txt"_s);
        if (!file.open(QIODevice::WriteOnly)) state.SkipWithError("no file");
        while (sqlite3_step(rows) == SQLITE_ROW) {
            for (int c = 0; c < sqlite3_column_count(rows); ++c) {
                file.write(reinterpret_cast<const char*>(sqlite3_column_text(rows, c)),
                           sqlite3_column_bytes(rows, c));
                file.write(";");
            }
            file.write("\r\n");
        }
        sqlite3_reset(rows);
        file.remove();
    }
}

/// Stands in for the preview.
class ReportHost : public Host {
 public:
    explicit ReportHost(std::function<void(tarmel::report::Document&)> look) : look_(std::move(look)) {}
    void ShowReport(const std::shared_ptr<tarmel::report::Document>& document,
                    tarmel::forms::Modality) override {
        look_(*document);
    }

 private:
    std::function<void(tarmel::report::Document&)> look_;
};

void showReport(benchmark::State& state, const std::function<void(tarmel::report::Document&)>& look) {
    const ReportHost host(look);
    tarmel::gConexion.OpenFile(base());
    rowsOfSelection();
    for (auto _ : state)
        tarmel::mostrarRepHojCamC();
    tarmel::reiniciarSesion();
}

/// What stands on the screen when the preview opens.
void firstPageOurs(benchmark::State& state, const char*) {
    showReport(state, [](tarmel::report::Document& document) {
        benchmark::DoNotOptimize(document.page(0).items.size());
    });
}

/// What a print of the whole needs.
void allPagesOurs(benchmark::State& state, const char*) {
    showReport(state, [](tarmel::report::Document& document) {
        const int pages = document.pageCount();
        for (int i = 0; i < pages; ++i)
            benchmark::DoNotOptimize(document.page(i).items.size());
    });
}

void allRowsPlain(benchmark::State& state, const char* synchronous) {
    Plain plain(base(), synchronous);
    sqlite3_stmt* const rows = plain.prepare("SELECT * FROM Consultas ORDER BY NumHoja, NumRegistro");
    for (auto _ : state)
        benchmark::DoNotOptimize(readAll(rows));
}

}  // namespace

void tarmel::bench::addConsultas() {
    add({{"selection_of_100000", selectionOurs, selectionPlain, 2.0},
         {"listing_of_100000", listingOurs, listingPlain, 3.0},
         {"report_first_page_of_100000", firstPageOurs, allRowsPlain, 0.1},
         {"report_all_pages_of_100000", allPagesOurs, allRowsPlain, 3.0}});
}
