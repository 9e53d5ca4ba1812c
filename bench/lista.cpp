// The lists of rings with a hundred thousand captures, all and the duplicates among them: the time of the
// fill beside plain SQLite reading the same rows, and with it what its users notice: the longest wait between
// two turns of the event loop (bar: 100 ms), the slowest sort by a head (bar: 1000 ms) and the memory of a
// row (bar: 1536 bytes, also while the list fills).

#include <malloc.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "Figures.h"
#include "Host.h"
#include "core/DefinicionesGlobales.h"
#include "core/RegistroPantallas.h"
#include "database/Esquema.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "populate/Poblacion.h"
#include "sheets/frm07_DetallesHojasCampo.h"

namespace {

using namespace Qt::StringLiterals;
using namespace tarmel::bench;
using tarmel::frm07_DetallesHojasCampo;
namespace forms = tarmel::forms;

constexpr int kCaptures = 100000;
constexpr int kDuplicates = 2000;           // rings put on a second time
constexpr int kHeads[] = {1, 4, 6, 9, 15};  // number, date (by a hidden key), ring, species, wing

std::size_t bytesInUse() {
    const auto now = mallinfo2();
    return now.uordblks + now.hblkhd;
}

/// A program without windows that looks at the clock, and now and then at the memory, whenever events may
/// run.
class Watch : public tarmel::bench::Host {
 public:
    void start() {
        longestGap_ = 0;
        turns_ = 0;
        mostBytes_ = bytesInUse();
        clock_.start();
    }
    void turn() {
        longestGap_ = std::max(longestGap_, clock_.nsecsElapsed());
        clock_.start();
    }
    [[nodiscard]] double longestGap() const { return static_cast<double>(longestGap_) / 1e6; }
    [[nodiscard]] std::size_t mostBytes() const { return mostBytes_; }

    void DoEvents() override {
        turn();
        constexpr int kLook = 5000;  // reading the counters takes time
        if (++turns_ % kLook == 0) mostBytes_ = std::max(mostBytes_, bytesInUse());
    }

 private:
    QElapsedTimer clock_;
    qint64 longestGap_ = 0;
    int turns_ = 0;
    std::size_t mostBytes_ = 0;
};

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

/// The same captures, and some of the rings a second time, behind the captures of their sheets.
QString baseWithDuplicates() {
    static const QString path = [] {
        const QString file = QFileInfo(base()).dir().filePath(u"Duplicados.mdb"_s);
        QFile::copy(base(), file);
        tarmel::ado::Connection connection;
        connection.OpenFile(file);
        QStringList columns;
        for (const auto& column : connection.schema().table(u"ANIAHO"_s)->columns)
            columns << column.name;
        QString values = columns.join(u',');
        values.replace(u"NumRegistro"_s, u"10000 + NumRegistro"_s);
        connection.ExecutePlain(
            u"INSERT INTO ANIAHO (%1) SELECT %2 FROM ANIAHO WHERE TipoRegistro = 'A' LIMIT %3"_s
                .arg(columns.join(u','), values)
                .arg(kDuplicates)
                .toUtf8());
        return file;
    }();
    return path;
}

double slowestSort(frm07_DetallesHojasCampo& screen) {
    qint64 slowest = 0;
    for (const int head : kHeads) {
        QElapsedTimer clock;
        clock.start();
        screen.UserColumnClick(screen.lstDetallesCabecerasHoja, head);
        slowest = std::max(slowest, clock.nsecsElapsed());
    }
    return static_cast<double>(slowest) / 1e6;
}

/// The screen in one of its modes, on a file where its list has so many rows.
void fill(benchmark::State& state, const char* synchronous, const QString& file, bool duplicates,
          int rowsThere) {
    Watch host;
    tarmel::gConexion.OpenFile(file);
    tarmel::gConexion.ExecutePlain(QByteArray("PRAGMA synchronous=") + synchronous);
    double gap = 0;
    double sort = 0;
    std::size_t most = 0;
    for (auto _ : state) {
        state.PauseTiming();
        tarmel::registrarPantallas();
        tarmel::gCodAnillador = tarmel::muestra::kPrimerAnillador;
        tarmel::gEsCoordinador = true;  // sees the rings of all
        tarmel::gListaAnillas = true;
        tarmel::gListaDuplicados = duplicates;
        auto& screen = forms::pantallas().Get<frm07_DetallesHojasCampo>();
        const std::size_t before = bytesInUse();
        state.ResumeTiming();
        host.start();
        screen.Show();
        host.turn();
        state.PauseTiming();
        const int rows = screen.lstDetallesCabecerasHoja.Count();
        if (rows != rowsThere) state.SkipWithError("captures are missing");
        most = std::max({most, host.mostBytes() - before, bytesInUse() - before});
        gap = std::max(gap, host.longestGap());
        sort = std::max(sort, slowestSort(screen));
        forms::pantallas().Reset();
        state.ResumeTiming();
    }
    tarmel::reiniciarSesion();
    state.counters["gap_ms"] = gap;
    state.counters["sort_ms"] = sort;
    // Of a short list the screen itself would be the larger part.
    if (rowsThere == kCaptures) state.counters["bytes_row"] = static_cast<double>(most) / rowsThere;
}

void listOurs(benchmark::State& state, const char* synchronous) {
    fill(state, synchronous, base(), false, kCaptures);
}

void duplicatesOurs(benchmark::State& state, const char* synchronous) {
    fill(state, synchronous, baseWithDuplicates(), true, 2 * kDuplicates);
}

void readPlain(benchmark::State& state, const char* synchronous, const QString& file, const char* sql) {
    Plain plain(file, synchronous);
    sqlite3_stmt* const rows = plain.prepare(sql);
    for (auto _ : state)
        benchmark::DoNotOptimize(readAll(rows));
}

void listPlain(benchmark::State& state, const char* synchronous) {
    readPlain(
        state, synchronous, base(),
        "SELECT BRD.NombreEspecie, ANICHO.FechaCaptura, ANICHO.*, ANIAHO.*, BRD.*, "
        "julianday(ANICHO.FechaCaptura) - julianday('1900-01-01') FROM ANICHO INNER JOIN ANIAHO ON "
        "ANICHO.IdCabecera = ANIAHO.IdCabecera INNER JOIN ANIBRD AS BRD ON ANIAHO.IdEspecie = BRD.IdEspecie");
}

void duplicatesPlain(benchmark::State& state, const char* synchronous) {
    readPlain(state, synchronous, baseWithDuplicates(), "SELECT * FROM Datos_Duplicados");
}

}  // namespace

void tarmel::bench::addLista() {
    add({{"list_of_100000", listOurs, listPlain, 3.0},
         {"duplicates_in_100000", duplicatesOurs, duplicatesPlain, 2.0}});
}
