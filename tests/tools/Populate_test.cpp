// Invented captures: everything that the screens would have checked on saving holds for each of them.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QFile>
#include <QTemporaryDir>

#include "core/DefinicionesGlobales.h"
#include "database/Esquema.h"
#include "platform/ado/Recordset.h"
#include "populate/Poblacion.h"
#include "sheets/Anillas.h"
#include "store/AlmacenAnillas.h"

namespace tarmel::muestra {
namespace {

using namespace Qt::StringLiterals;

constexpr int kCapturas = 700;

const QTemporaryDir& carpeta() {
    static const QTemporaryDir folder;
    return folder;
}

QString poblada(const QString& nombre, quint64 semilla, Resumen* resumen = nullptr) {
    const QString base = carpeta().filePath(u"base.mdb"_s);
    if (!QFile::exists(base)) prepararBase(base, QStringLiteral(TARMEL_DATA_DIR "/tables"));
    const QString archivo = carpeta().filePath(nombre);
    QFile::remove(archivo);
    QFile::copy(base, archivo);
    ado::Connection conexion;
    conexion.OpenFile(archivo);
    const Resumen hecho = poblar(conexion, kCapturas, semilla);
    if (resumen != nullptr) *resumen = hecho;
    return archivo;
}

/// All rows as one text: fields joined by ";", rows by line ends.
QString filasDe(ado::Connection& conexion, const QString& sql) {
    QString texto;
    ado::Recordset filas;
    for (filas.Open(sql, conexion); !filas.Eof(); filas.MoveNext()) {
        for (int i = 0; i < filas.FieldCount(); ++i)
            texto += filas.Text(i) + u';';
        texto += u'\n';
    }
    return texto;
}

/// The program's own connection on one filled database.
class Muestra : public ::testing::Test {
 protected:
    static void SetUpTestSuite() { gConexion.OpenFile(poblada(u"una.mdb"_s, 1, &resumen())); }
    static void TearDownTestSuite() { reiniciarSesion(); }
    static Resumen& resumen() {
        static Resumen hecho;
        return hecho;
    }
    static int cuenta(const QString& deDonde) {
        ado::Recordset filas;
        filas.Open(u"SELECT Count(*) FROM "_s + deDonde, gConexion);
        return filas.Value(0).toLong();
    }
};

TEST_F(Muestra, HasTheCapturesAndAboutATenthAreRecoveries) {
    EXPECT_EQ(cuenta(u"ANIAHO"_s), kCapturas);
    EXPECT_EQ(resumen().capturas, kCapturas);
    EXPECT_EQ(cuenta(u"ANICHO"_s), resumen().hojas);
    EXPECT_EQ(cuenta(u"ANIMAT"_s), resumen().anilladores);
    EXPECT_NEAR(resumen().hojas, kCapturas / 40.0, 6);
    const int recuperaciones = cuenta(u"ANIAHO WHERE TipoRegistro='R'"_s);
    EXPECT_EQ(recuperaciones, resumen().recuperaciones);
    EXPECT_GT(recuperaciones, kCapturas / 20);
    EXPECT_LT(recuperaciones, kCapturas * 3 / 20);
    EXPECT_EQ(cuenta(u"ANIAHO WHERE TipoRegistro<>'R' AND TipoRegistro<>'A'"_s), 0);
}

TEST_F(Muestra, HasNoDuplicates) {
    EXPECT_EQ(cuenta(u"Datos_Duplicados"_s), 0);
    // The view joins on species and sheet: it would hide rings whose references fail.
    EXPECT_EQ(cuenta(u"Anillamientos_Dup"_s), 0);
    EXPECT_EQ(cuenta(u"Recuperaciones_Dup"_s), 0);
}

TEST_F(Muestra, EveryReferenceHolds) {
    EXPECT_EQ(cuenta(u"ANIAHO INNER JOIN ANICHO ON ANIAHO.IdCabecera = ANICHO.IdCabecera"_s), kCapturas);
    EXPECT_EQ(cuenta(u"ANIAHO INNER JOIN ANIBRD ON ANIAHO.IdEspecie = ANIBRD.IdEspecie WHERE "
                     "ANIAHO.CodigoEspecie = ANIBRD.CodigoEspecie AND ANIBRD.Iberica = 1"_s),
              kCapturas);
    EXPECT_EQ(cuenta(u"ANICHO INNER JOIN ANIMAT ON ANICHO.Anillador = ANIMAT.CodigoAnillador WHERE "
                     "ANICHO.Grupo = Val(ANIMAT.CodigoGrupo)"_s),
              resumen().hojas);
    EXPECT_EQ(cuenta(u"ANICHO WHERE IdCabecera <> IdCab OR NumHoja < 0"_s), 0);
    EXPECT_EQ(cuenta(u"ANIMAT WHERE IdAnillador <> IdAni"_s), 0);
}

/// A column that holds codes, and the table that they come from; empty is allowed where the screen allows it.
struct Codigo {
    const char* tabla;
    const char* columna;
    const char* lista;
    const char* codigo;
    bool opcional = false;
};

class MuestraCodigos : public Muestra, public ::testing::WithParamInterface<Codigo> {};

TEST_P(MuestraCodigos, ComeOutOfTheirTables) {
    const Codigo& c = GetParam();
    const QString columna = QString::fromUtf8(c.columna);
    const QString fuera = u"%1 WHERE %2 NOT IN (SELECT %4 FROM %3)"_s.arg(
        QString::fromUtf8(c.tabla), columna, QString::fromUtf8(c.lista), QString::fromUtf8(c.codigo));
    EXPECT_EQ(cuenta(c.opcional ? fuera + u" AND %1 <> ''"_s.arg(columna) : fuera), 0);
    EXPECT_EQ(cuenta(u"%1 WHERE %2 IS NULL"_s.arg(QString::fromUtf8(c.tabla), columna)), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Muestra, MuestraCodigos,
    ::testing::Values(Codigo{"ANICHO", "CodLocalidad", "ANILOC", "CodigoLocalidad"},
                      Codigo{"ANICHO", "CodigoHabitat", "ICAHAB", "CodigoHabitat"},
                      Codigo{"ANICHO", "CodigoMetodo", "ANIMCA", "CodigoMetodo"},
                      Codigo{"ANICHO", "MannanaCodigoFuerza", "ANIFVE", "CodigoFuerza"},
                      Codigo{"ANICHO", "TardeCodigoDireccion", "ANIDVI", "CodigoDireccion"},
                      Codigo{"ANICHO", "MannanaCodigoNubosidad", "ANINUB", "CodigoNubosidad"},
                      Codigo{"ANICHO", "TardeCodigoLluvia", "ANILLU", "CodigoLluvia"},
                      Codigo{"ANIAHO", "CodigoCentro", "ICAFRO", "CodigoCentro"},
                      Codigo{"ANIAHO", "InfoAnilla", "ICAINFORNG", "InfoAnilla"},
                      Codigo{"ANIAHO", "CodigoEdad", "ICAAGE", "CodigoEdad"},
                      Codigo{"ANIAHO", "CodigoSexo", "ICASEX", "CodigoSexo"},
                      Codigo{"ANIAHO", "TamañoNidada", "ICATAM", "CodigoTamañoNidada"},
                      Codigo{"ANIAHO", "CodigoManipulacion", "ICAMANIP", "CodigoManipulacion"},
                      Codigo{"ANIAHO", "CodigoTransporte", "ICATRANS", "CodigoTransporte"},
                      Codigo{"ANIAHO", "CodigoCircunstancia", "ICACIR", "CodigoCircunstancia", true},
                      Codigo{"ANIAHO", "CodigoCondicion", "ICACON", "CodigoCondicion", true},
                      Codigo{"ANIAHO", "CodigoPlaca", "ANIPLACA", "CodigoPlaca"},
                      Codigo{"ANIAHO", "CodigoGrasa", "ANIGRA", "CodigoGrasa"},
                      Codigo{"ANIAHO", "CodigoMusculo", "ANIMUS", "CodigoMusculo"},
                      Codigo{"ANIAHO", "PrecisionFecha", "ICAPRECISION", "CodigoPrecision"},
                      Codigo{"ANIAHO", "CodigoEstado", "ANIESTADO", "CodigoEstado"},
                      Codigo{"ANIAHO", "CodigoEstatus", "ICASTA", "CodigoEstatus"},
                      Codigo{"ANIAHO", "CodigoMuda", "ICAMUDA", "CodigoMuda"},
                      Codigo{"ANIAHO", "CodigoReclamo", "ANIRECLAMO", "CodigoReclamo"}),
    [](const auto& caso) { return caso.param.tabla + std::to_string(caso.index); });

TEST_F(Muestra, RingsAreNormalAndThoseThatWerePutOnAreInTheStore) {
    ado::Recordset filas;
    filas.Open(u"SELECT TipoRegistro, NumeroAnilla, Anilla FROM ANIAHO"_s, gConexion);
    for (; !filas.Eof(); filas.MoveNext()) {
        QString leida = filas.Text(1);
        const QString anilla = filas.Text(2);
        EXPECT_EQ(anilla, NormalizarAnilla(leida));
        QString modelo;
        QString inscripcion;
        qint32 numero = 0;
        bool error = false;
        DescomponerAnilla(anilla, modelo, inscripcion, numero, error);
        ASSERT_FALSE(error) << qPrintable(anilla);
        const bool puesta = filas.Text(0) == u"A"_s;
        EXPECT_TRUE(!puesta || AnillaEnAlmacen(modelo, inscripcion, numero)) << qPrintable(anilla);
    }
}

TEST_F(Muestra, RecoveriesOfOwnRingsComeAfterTheRinging) {
    const QString propias = u"ANIAHO WHERE TipoRegistro='R' AND CodigoCentro='ESI'"_s;
    EXPECT_GT(cuenta(propias), 0);
    EXPECT_EQ(
        cuenta(u"((ANIAHO AS R INNER JOIN ANICHO AS HR ON R.IdCabecera = HR.IdCabecera) INNER JOIN ANIAHO AS "
               u"A ON "
               "R.Anilla = A.Anilla) INNER JOIN ANICHO AS HA ON A.IdCabecera = HA.IdCabecera WHERE "
               "R.TipoRegistro='R' AND A.TipoRegistro='A' AND R.CodigoCentro='ESI' AND R.CodigoEspecie = "
               "A.CodigoEspecie AND R.CodigoSexo = A.CodigoSexo AND HA.FechaCaptura < HR.FechaCaptura"_s),
        cuenta(propias));
}

TEST_F(Muestra, SheetsAreNumberedByTheirOwnerAndCapturesWithoutGaps) {
    ado::Recordset hojas;
    hojas.Open(
        u"SELECT CodAnillador, Count(*), Min(NumHoja), Max(NumHoja) FROM ANICHO GROUP BY CodAnillador"_s,
        gConexion);
    for (; !hojas.Eof(); hojas.MoveNext()) {
        const double primera = hojas.Value(0).toDouble() * 1000000 + 1;
        EXPECT_EQ(hojas.Value(2).toDouble(), primera);
        EXPECT_EQ(hojas.Value(3).toDouble(), primera + hojas.Value(1).toLong() - 1);
    }
    ado::Recordset capturas;
    capturas.Open(u"SELECT Count(*), Min(NumRegistro), Max(NumRegistro) FROM ANIAHO GROUP BY IdCabecera"_s,
                  gConexion);
    for (; !capturas.Eof(); capturas.MoveNext()) {
        EXPECT_EQ(capturas.Value(1).toLong(), 1);
        EXPECT_EQ(capturas.Value(2).toLong(), capturas.Value(0).toLong());
    }
    EXPECT_EQ(cuenta(u"ANIAHO INNER JOIN ANICHO ON ANIAHO.IdCabecera = ANICHO.IdCabecera WHERE "
                     "ANIAHO.HoraCaptura < ANICHO.HoraDesde OR ANIAHO.HoraCaptura > ANICHO.HoraHasta"_s),
              0);
}

TEST_F(Muestra, MeasuresLieAroundThoseOfTheSpecies) {
    ado::Recordset filas;
    filas.Open(
        u"SELECT Min(Ala), Max(Ala), Min(Peso), Max(Peso), Min(F8), Max(F8) FROM ANIAHO WHERE "
        "CodigoEspecie='12770'"_s,
        gConexion);
    EXPECT_GT(filas.Value(0).toDouble(), 66);
    EXPECT_LT(filas.Value(1).toDouble(), 82);
    EXPECT_GT(filas.Value(2).toDouble(), 13);
    EXPECT_LT(filas.Value(3).toDouble(), 24);
    EXPECT_GT(filas.Value(4).toDouble(), 48);
    EXPECT_LT(filas.Value(5).toDouble(), 64);
}

TEST_F(Muestra, FileIsWhole) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open_v2(carpeta().filePath(u"una.mdb"_s).toUtf8().constData(), &db,
                              SQLITE_OPEN_READONLY, nullptr),
              SQLITE_OK);
    QStringList faltas;
    const auto anotar = [](void* lista, int, char** textos, char**) {
        static_cast<QStringList*>(lista)->append(QString::fromUtf8(textos[0]));
        return 0;
    };
    for (const char* examen : {"PRAGMA integrity_check", "PRAGMA foreign_key_check"})
        EXPECT_EQ(sqlite3_exec(db, examen, anotar, &faltas, nullptr), SQLITE_OK);
    sqlite3_close(db);
    EXPECT_EQ(faltas, QStringList{u"ok"_s});
}

TEST(MuestraSemilla, TheSameSeedMakesTheSameRows) {
    const auto todo = [](const QString& archivo) {
        ado::Connection conexion;
        conexion.OpenFile(archivo);
        QString filas;
        for (const char16_t* tabla : {u"ANIMAT", u"ANICHO", u"ANIAHO", u"ALMACEN"})
            filas += filasDe(conexion, u"SELECT * FROM "_s + QString::fromUtf16(tabla));
        return filas;
    };
    const QString una = todo(poblada(u"a.mdb"_s, 5));
    EXPECT_EQ(una, todo(poblada(u"b.mdb"_s, 5)));
    EXPECT_NE(una, todo(poblada(u"c.mdb"_s, 6)));
}

TEST(MuestraSemilla, FilledDatabaseIsRefused) {
    ado::Connection conexion;
    conexion.OpenFile(poblada(u"llena.mdb"_s, 1));
    EXPECT_THROW(poblar(conexion, 1, 2), basic::RuntimeError);
    EXPECT_EQ(filasDe(conexion, u"SELECT Count(*) FROM ANIAHO"_s), QString::number(kCapturas) + u";\n"_s);
}

}  // namespace
}  // namespace tarmel::muestra
