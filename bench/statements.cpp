// What the dialect and the recordset cost, each figure beside the same work in plain SQLite calls over the
// same file in the same run: 10,000 statements of one shape, and a statement never seen before. With
// synchronous=FULL the disk's wait hides the rest, so the ratios with OFF are the ones that count: at
// most 1.5 for the loops, 3.0 for the unseen one.

#include "Figures.h"

#include <QDir>
#include <QTemporaryDir>

#include "database/Esquema.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"

namespace {

using namespace Qt::StringLiterals;
using namespace tarmel::bench;
using tarmel::ado::Connection;
using tarmel::ado::Cursor;
using tarmel::ado::Lock;
using tarmel::ado::Recordset;
using tarmel::bench::readAll;

constexpr int kStatements = 10000;
constexpr int kSheets = 1000;
constexpr int kCaptures = 20;  // of a sheet
constexpr int kNewSheet = 500000;

QString ring(int n) {
    return u"AC.."_s + QString::number(1000 + n % 9000);
}

// --- the statements, as the screens join them, and as plain SQLite has them
// ------------------------------------------

QString search(int n) {
    return u"SELECT * FROM ANIAHO WHERE Anilla='"_s + ring(n) +
           u"' AND TipoRegistro='A' AND CodigoCentro='ESI'"_s;
}
constexpr const char* kSearch =
    "SELECT * FROM ANIAHO WHERE Anilla=?1 AND TipoRegistro=?2 AND CodigoCentro=?3";

QString renumber(int n) {
    return u"UPDATE ANIAHO SET NumRegistro="_s + QString::number(n % kCaptures + 1) +
           u" WHERE IdCabecera ="_s + QString::number(n % kSheets + 1) + u" AND NumRegistro="_s +
           QString::number(n % kCaptures + 1);
}
constexpr const char* kRenumber = "UPDATE ANIAHO SET NumRegistro=?1 WHERE IdCabecera=?2 AND NumRegistro=?3";

constexpr const char16_t* kColumns =
    u"IdCabecera,NumRegistro,TipoRegistro,CodigoCentro,NumeroAnilla,InfoAnilla,AnillaSustituida,IdEspecie,"
    u"CodigoEdad,"
    "TamañoNidada,CodigoSexo,CodigoManipulacion,CodigoTransporte,CodigoCircunstancia,CodigoCondicion,Ala,F8,"
    "Peso,Tarso,"
    "CodigoPlaca,CodigoGrasa,CodigoMusculo,HoraCaptura,PrecisionFecha,CodigoEstado,CodigoEstatus,CodigoMuda,"
    "CodigoReclamo,"
    "IniAnillador,Parentesco,Observaciones,Dato1,Dato2,Dato3,Anilla,Dato4,Dato5,Dato6,CodigoEspecie";
constexpr int kColumnCount = 39;

QString insertion(int sheet, int number, int n) {
    const QString id = QString::number(sheet);
    const QString num = QString::number(number);
    return u"INSERT INTO ANIAHO ("_s + QString::fromUtf16(kColumns) + u") VALUES ('"_s + id + u"','"_s + num +
           u"','A','ESI','AC"_s + QString::number(1000 + n % 9000) +
           u"','2','','70','4','--','M','N','0','20','8','85,5','62','18,25','23,1','9','3','2','7:30','0','"
           u"B','U','2','N',"
           "'BMI','','Sin novedad','','','','"_s +
           ring(n) + u"','','','','12440')"_s;
}

qsizetype readAll(Recordset& rs) {
    qsizetype characters = 0;
    for (const int end = rs.FieldCount(); !rs.Eof(); rs.MoveNext()) {
        for (int c = 0; c < end; ++c)
            characters += rs.Text(c).size();
    }
    return characters;
}

// --- the file
// ----------------------------------------------------------------------------------------------------------

QString base() {
    static const QTemporaryDir folder(QDir::current().filePath(u"bench-XXXXXX"_s));
    static const QString path = [] {
        const QString file = folder.filePath(u"Tarmel_11.mdb"_s);
        Connection connection;
        connection.OpenFile(file, true);
        tarmel::crearEsquema(connection);
        Connection::Batch batch(connection);
        connection.Execute(u"INSERT INTO ICASEX VALUES ('M', 'Macho')"_s);
        connection.Execute(
            u"INSERT INTO ANIBRD (IdEspecie, CodigoEspecie, NombreEspecie) VALUES (70, '12440', 'A')"_s);
        for (int n = 0; n < kSheets * kCaptures; ++n) {
            connection.Execute(insertion(n / kCaptures + 1, n % kCaptures + 1, n));
        }
        batch.commit();
        return file;
    }();
    return path;
}

struct Ours {
    explicit Ours(const char* synchronous) {
        connection.OpenFile(base());
        connection.ExecutePlain(QByteArray("PRAGMA synchronous=") + synchronous);
    }
    Connection connection;
};

// --- the figures
// -------------------------------------------------------------------------------------------------------

void searchOurs(benchmark::State& state, const char* synchronous) {
    Ours ours(synchronous);
    for (auto _ : state) {
        for (int n = 0; n < kStatements; ++n) {
            Recordset rs;
            rs.Open(search(n), ours.connection, Cursor::Keyset, Lock::Optimistic);
            benchmark::DoNotOptimize(readAll(rs));
        }
    }
}

void searchPlain(benchmark::State& state, const char* synchronous) {
    Plain plain(base(), synchronous);
    sqlite3_stmt* statement = plain.prepare(kSearch);
    for (auto _ : state) {
        for (int n = 0; n < kStatements; ++n) {
            bind(statement, 1, ring(n));
            bind(statement, 2, u"A"_s);
            bind(statement, 3, u"ESI"_s);
            benchmark::DoNotOptimize(readAll(statement));
        }
    }
}

void updateOurs(benchmark::State& state, const char* synchronous) {
    Ours ours(synchronous);
    for (auto _ : state) {
        for (int n = 0; n < kStatements; ++n)
            ours.connection.Execute(renumber(n));
    }
}

void updatePlain(benchmark::State& state, const char* synchronous) {
    Plain plain(base(), synchronous);
    sqlite3_stmt* statement = plain.prepare(kRenumber);
    for (auto _ : state) {
        for (int n = 0; n < kStatements; ++n) {
            sqlite3_bind_int(statement, 1, n % kCaptures + 1);
            sqlite3_bind_int(statement, 2, n % kSheets + 1);
            sqlite3_bind_int(statement, 3, n % kCaptures + 1);
            plain.step(statement);
        }
    }
}

void insertOurs(benchmark::State& state, const char* synchronous) {
    Ours ours(synchronous);
    for (auto _ : state) {
        for (int n = 0; n < kStatements; ++n)
            ours.connection.Execute(insertion(kNewSheet, n + 1, n));
        state.PauseTiming();
        ours.connection.Execute(u"DELETE FROM ANIAHO WHERE IdCabecera = %1"_s.arg(kNewSheet));
        state.ResumeTiming();
    }
}

void insertPlain(benchmark::State& state, const char* synchronous) {
    Plain plain(base(), synchronous);
    QByteArray sql = "INSERT INTO ANIAHO (" + QString::fromUtf16(kColumns).toUtf8() + ") VALUES (?";
    for (int c = 1; c < kColumnCount; ++c)
        sql += ",?";
    sqlite3_stmt* statement = plain.prepare(sql + ")");
    static constexpr const char* kTexts[] = {nullptr,
                                             nullptr,
                                             "A",
                                             "ESI",
                                             nullptr,
                                             "2",
                                             "",
                                             nullptr,
                                             "4",
                                             "--",
                                             "M",
                                             "N",
                                             "0",
                                             "20",
                                             "8",
                                             nullptr,
                                             nullptr,
                                             nullptr,
                                             nullptr,
                                             "9",
                                             "3",
                                             "2",
                                             "1899-12-30 07:30:00",
                                             "0",
                                             "B",
                                             "U",
                                             nullptr,
                                             "N",
                                             "BMI",
                                             "",
                                             "Sin novedad",
                                             "",
                                             "",
                                             "",
                                             nullptr,
                                             "",
                                             "",
                                             "",
                                             "12440"};
    for (auto _ : state) {
        for (int n = 0; n < kStatements; ++n) {
            for (int c = 0; c < kColumnCount; ++c) {
                if (kTexts[c]) sqlite3_bind_text(statement, c + 1, kTexts[c], -1, SQLITE_TRANSIENT);
            }
            sqlite3_bind_int(statement, 1, kNewSheet);
            sqlite3_bind_int(statement, 2, n + 1);
            bind(statement, 5, u"AC"_s + QString::number(1000 + n % 9000));
            sqlite3_bind_int(statement, 8, 70);
            sqlite3_bind_double(statement, 16, 85.5);
            sqlite3_bind_double(statement, 17, 62);
            sqlite3_bind_double(statement, 18, 18.25);
            sqlite3_bind_double(statement, 19, 23.1);
            sqlite3_bind_int(statement, 27, 2);
            bind(statement, 35, ring(n));
            plain.step(statement);
        }
        state.PauseTiming();
        plain.run("DELETE FROM ANIAHO WHERE IdCabecera = 500000");
        state.ResumeTiming();
    }
}

/// Another column name makes another shape.
int unseen = 0;

constexpr const char16_t* const kShort =
    u"SELECT ANIAHO.Anilla AS A%1, ANIAHO.NumRegistro, ANIBRD.NombreEspecie FROM ANIAHO INNER JOIN ANIBRD ON "
    "ANIAHO.IdEspecie = ANIBRD.IdEspecie WHERE ANIAHO.IdCabecera = %2 AND ANIAHO.TipoRegistro = %3 AND "
    "ANIAHO.NumRegistro = %4 ORDER BY ANIAHO.NumRegistro";
constexpr const char16_t* const kWide =
    u"SELECT ANIAHO.IdCabecera AS A%1, ANIAHO.NumRegistro, ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, "
    "ANIAHO.NumeroAnilla, ANIAHO.IdEspecie, ANIBRD.CodigoEspecie, ANIBRD.NombreEspecie, ANIAHO.Parentesco, "
    "ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, "
    "ANIAHO.CodigoReclamo, "
    "ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, "
    "ANIAHO.CodigoMusculo, "
    "ANIAHO.CodigoEstado, ANIAHO.CodigoEstatus, ANIAHO.CodigoMuda, ANIAHO.IniAnillador, ANIAHO.Observaciones "
    "FROM ANIBRD "
    "INNER JOIN ANIAHO ON ANIBRD.IdEspecie = ANIAHO.IdEspecie WHERE ANIAHO.IdCabecera = %2 AND "
    "ANIAHO.TipoRegistro = %3 "
    "AND ANIAHO.NumRegistro = %4";

template <const char16_t* const& Statement>
void unseenOurs(benchmark::State& state, const char* synchronous) {
    Ours ours(synchronous);
    for (auto _ : state) {
        Recordset rs;
        rs.Open(QString::fromUtf16(Statement).arg(++unseen).arg(u"7"_s, u"'A'"_s, u"3"_s), ours.connection,
                Cursor::Keyset, Lock::Optimistic);
        benchmark::DoNotOptimize(readAll(rs));
    }
}

template <const char16_t* const& Statement>
void unseenPlain(benchmark::State& state, const char* synchronous) {
    Plain plain(base(), synchronous);
    for (auto _ : state) {
        sqlite3_stmt* statement = plain.prepare(
            QString::fromUtf16(Statement).arg(++unseen).arg(u"?1"_s, u"?2"_s, u"?3"_s).toUtf8());
        sqlite3_bind_int(statement, 1, 7);
        bind(statement, 2, u"A"_s);
        sqlite3_bind_int(statement, 3, 3);
        benchmark::DoNotOptimize(readAll(statement));
        plain.drop();
    }
}

const std::vector<Pair> kPairs{
    {"10000_searches", searchOurs, searchPlain, 1.5},
    {"10000_updates", updateOurs, updatePlain, 1.5},
    {"10000_insertions", insertOurs, insertPlain, 1.5},
    {"unseen_statement", unseenOurs<kShort>, unseenPlain<kShort>, 3.0},
    {"unseen_wide_statement", unseenOurs<kWide>, unseenPlain<kWide>, 3.0},
};

}  // namespace

void tarmel::bench::addStatements() {
    add(kPairs);
}
