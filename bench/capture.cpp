// The save of one capture, from the click to the committed row: the checks' searches, the insertion, the row
// of the list and the preparation of the next capture. Beside it the same searches and the same insertion in
// plain SQLite, prepared once, over the same file.

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

#include "Figures.h"
#include "Host.h"
#include "core/DefinicionesGlobales.h"
#include "core/RegistroPantallas.h"
#include "database/Esquema.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "sheets/frm07_DetallesHojasCampo.h"

namespace {

using namespace Qt::StringLiterals;
using namespace tarmel::bench;
using tarmel::frm07_DetallesHojasCampo;
namespace forms = tarmel::forms;

constexpr int kSheet = 1;
constexpr int kOldSheets = 1000;  // with their captures: the indexes have some depth
constexpr int kOldCaptures = 20;
constexpr int kFirstRing = 100000;
constexpr int kSaves = 1000;

/// A prepared database with a ringer's store, many old captures and one sheet of today.
QString base() {
    static const QTemporaryDir folder(QDir::current().filePath(u"bench-XXXXXX"_s));
    static const QString path = [] {
        const QString file = folder.filePath(u"Tarmel_11.mdb"_s);
        tarmel::prepararBase(file, QStringLiteral(TARMEL_DATA_DIR "/tables"));
        tarmel::ado::Connection connection;
        connection.OpenFile(file);
        tarmel::ado::Connection::Batch batch(connection);
        connection.Execute(
            u"INSERT INTO ALMACEN VALUES (1, 'N', 'N', '100000', '999999', 900000, '01/01/2010', 'A')"_s);
        connection.Execute(
            u"INSERT INTO ALMACEN VALUES (2, 'L', 'L', '100000', '999999', 900000, '01/01/2010', 'A')"_s);
        for (int sheet = 1; sheet <= kOldSheets; ++sheet) {
            connection.Execute(
                u"INSERT INTO ANICHO (IdCabecera, NumHoja, CodAnillador, CodLocalidad, FechaCaptura) "
                "VALUES (%1, %2, 123456, '01002', '12/09/2010')"_s.arg(sheet)
                    .arg(123456000000 + sheet));
            for (int number = 1; sheet != kSheet && number <= kOldCaptures; ++number) {
                const int ring = 1000 + (sheet * kOldCaptures + number) % 9000;
                connection.Execute(
                    u"INSERT INTO ANIAHO (IdCabecera, NumRegistro, TipoRegistro, CodigoCentro, NumeroAnilla, "
                    "Anilla, IdEspecie, HoraCaptura, CodigoEspecie) VALUES (%1, %2, 'A', 'ESI', 'AC%3', "
                    "'AC..%3', "
                    "1397, '7:30', '10990')"_s.arg(sheet)
                        .arg(number)
                        .arg(ring));
            }
        }
        batch.commit();
        return file;
    }();
    return path;
}

/// The capture screen with its first capture typed; every save prepares the next one.
class Screen {
 public:
    explicit Screen(const char* synchronous) {
        tarmel::registrarPantallas();
        tarmel::gConexion.OpenFile(base());
        tarmel::gConexion.ExecutePlain(QByteArray("PRAGMA synchronous=") + synchronous);
        tarmel::gConexion.Execute(u"DELETE FROM ANIAHO WHERE IdCabecera = 1"_s);
        tarmel::gAnillador = {u"123456"_s, u"ANA"_s};
        tarmel::gCodAnillador = 123456;
        tarmel::gNuevaHoja = true;  // the screen is to show its fields, not its list
        screen().TomarHoja(QString::number(kSheet), u"123456000001"_s);
        screen().Show();
        screen().cmdNuevo_Click();
        choose(screen().dbcboEspecie, u"Erithacus rubecula"_s);
        choose(screen().cboEdad, u"3"_s);
        choose(screen().cboSexo, u"U"_s);
        screen().UserGoTo(screen().txtNumAnilla);
        for (const QChar c : u"L%1"_s.arg(kFirstRing))
            screen().UserChar(c);
        screen().UserGoTo(screen().cboEdad);
    }
    ~Screen() {
        forms::pantallas().Reset();
        tarmel::reiniciarSesion();
    }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    void save() { screen().UserClick(screen().cmdGrabar); }

 private:
    static frm07_DetallesHojasCampo& screen() { return forms::pantallas().Get<frm07_DetallesHojasCampo>(); }
    static void choose(forms::ComboBox& combo, const QString& text) {
        screen().UserChoose(combo, combo.Find(text));
    }
    Host host_;
};

void saveOurs(benchmark::State& state, const char* synchronous) {
    Screen screen(synchronous);
    for (auto _ : state) {
        for (int n = 0; n < kSaves; ++n)
            screen.save();
    }
    tarmel::ado::Recordset rows;
    rows.Open(u"SELECT Count(*) AS n FROM ANIAHO WHERE IdCabecera = 1"_s, tarmel::gConexion);
    if (rows.Value(0).toLong() != kSaves * state.iterations()) state.SkipWithError("captures are missing");
}

constexpr const char* kInStore =
    "SELECT * FROM ALMACEN WHERE Modelo=?1 AND Inscripcion=?2 AND CAST(NumInicial AS REAL)<=?3 AND "
    "CAST(NumFinal AS REAL)>=?3 AND TipoMovimiento='A'";
constexpr const char* kGivenAway =
    "SELECT * FROM ALMACEN WHERE Modelo=?1 AND Inscripcion=?2 AND CAST(NumInicial AS REAL)<=?3 AND "
    "CAST(NumFinal AS REAL)>=?3 AND (TipoMovimiento='D' OR TipoMovimiento='T')";
constexpr const char* kRinged =
    "SELECT * FROM ANIAHO WHERE CodigoCentro=?1 AND Anilla=?2 AND TipoRegistro='A'";
constexpr const char* kMet =
    "SELECT ANIAHO.* FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE "
    "ANIAHO.CodigoCentro=?1 AND ANIAHO.Anilla=?2 AND ANICHO.FechaCaptura=?3 AND ANIAHO.HoraCaptura=?4 AND "
    "ANIAHO.TipoRegistro='R'";
constexpr const char* kColumns =
    "IdCabecera,NumRegistro,TipoRegistro,CodigoCentro,NumeroAnilla,InfoAnilla,AnillaSustituida,IdEspecie,"
    "CodigoEdad,"
    "TamañoNidada,CodigoSexo,CodigoManipulacion,CodigoTransporte,CodigoCircunstancia,CodigoCondicion,Ala,F8,"
    "Peso,"
    "Tarso,CodigoPlaca,CodigoGrasa,CodigoMusculo,HoraCaptura,PrecisionFecha,CodigoEstado,CodigoEstatus,"
    "CodigoMuda,"
    "CodigoReclamo,IniAnillador,Parentesco,Observaciones,Dato1,Dato2,Dato3,Anilla,Dato4,Dato5,Dato6,"
    "CodigoEspecie";

void savePlain(benchmark::State& state, const char* synchronous) {
    Plain plain(base(), synchronous);
    plain.run("DELETE FROM ANIAHO WHERE IdCabecera = 1");
    sqlite3_stmt* const inStore = plain.prepare(kInStore);
    sqlite3_stmt* const givenAway = plain.prepare(kGivenAway);
    sqlite3_stmt* const ringed = plain.prepare(kRinged);
    sqlite3_stmt* const met = plain.prepare(kMet);
    sqlite3_stmt* const known = plain.prepare("SELECT " + QByteArray(kColumns) +
                                              " FROM ANIAHO WHERE IdCabecera=?1 AND NumRegistro=?2");
    QByteArray insertion = "INSERT INTO ANIAHO (" + QByteArray(kColumns) + ") VALUES (?";
    for (int c = 1; c < 39; ++c)
        insertion += ",?";
    sqlite3_stmt* const insert = plain.prepare(insertion + ")");
    static constexpr const char* kTexts[] = {nullptr,
                                             nullptr,
                                             "A",
                                             "ESI",
                                             nullptr,
                                             "2",
                                             "",
                                             nullptr,
                                             "3",
                                             "",
                                             "U",
                                             "N",
                                             "0",
                                             "",
                                             "",
                                             nullptr,
                                             nullptr,
                                             nullptr,
                                             nullptr,
                                             "9",
                                             "9",
                                             "9",
                                             "1899-12-30 00:00:00",
                                             "0",
                                             "B",
                                             "U",
                                             nullptr,
                                             "N",
                                             "",
                                             "",
                                             "",
                                             "",
                                             "",
                                             "",
                                             nullptr,
                                             "",
                                             "",
                                             "",
                                             "10990"};
    int saved = 0;
    for (auto _ : state) {
        for (int n = 0; n < kSaves; ++n, ++saved) {
            const QString number = QString::number(kFirstRing + saved);
            const QString ring = u"L."_s + number;
            for (sqlite3_stmt* const store : {inStore, givenAway}) {
                bind(store, 1, u"L"_s);
                bind(store, 2, u"L"_s);
                sqlite3_bind_int(store, 3, kFirstRing + saved);
                benchmark::DoNotOptimize(readAll(store));
            }
            for (sqlite3_stmt* const search : {ringed, met}) {
                bind(search, 1, u"ESI"_s);
                bind(search, 2, ring);
            }
            bind(met, 3, u"2010-09-12 00:00:00"_s);
            bind(met, 4, u"1899-12-30 00:00:00"_s);
            benchmark::DoNotOptimize(readAll(ringed));
            benchmark::DoNotOptimize(readAll(met));
            sqlite3_bind_int(known, 1, kSheet);
            sqlite3_bind_int(known, 2, saved + 1);
            benchmark::DoNotOptimize(readAll(known));
            for (int c = 0; c < 39; ++c) {
                if (kTexts[c]) sqlite3_bind_text(insert, c + 1, kTexts[c], -1, SQLITE_TRANSIENT);
            }
            sqlite3_bind_int(insert, 1, kSheet);
            sqlite3_bind_int(insert, 2, saved + 1);
            bind(insert, 5, u"L"_s + number);
            sqlite3_bind_int(insert, 8, 1397);
            sqlite3_bind_int(insert, 27, 0);
            bind(insert, 35, ring);
            plain.step(insert);
        }
    }
}

}  // namespace

void tarmel::bench::addCapture() {
    add({{"1000_captures_saved", saveOurs, savePlain, 1.5}});
}
