#include "database/Esquema.h"

#include <QSet>
#include <ostream>

#include "database/Tablas.h"
#include "platform/ado/Support.h"

namespace tarmel {

using ado::Connection;
using ado::test::bytesOf;
using ado::test::errorOf;
using ado::test::Plain;
using ado::test::rowsOf;
using namespace Qt::StringLiterals;

namespace {

class EsquemaTest : public ado::test::MemoryTest {
 protected:
    void SetUp() override {
        MemoryTest::SetUp();
        crearEsquema(connection);
        run(u"INSERT INTO ICASEX VALUES ('M', 'Macho')"_s);
        run(u"INSERT INTO ANIBRD (IdEspecie, CodigoEspecie, NombreEspecie, Iberica) VALUES (1, '12440', "
            u"'Acrocephalus', "
            "'1')"_s);
    }
    QStringList columns(const QString& table) {
        QStringList names;
        for (const auto& column : connection.schema().table(table)->columns)
            names << column.name;
        return names;
    }
    /// A new row as the screens make it: at the placeholder, then its number.
    void newSheet() {
        run(u"INSERT INTO ANICHO (IdCabecera, NumHoja, CodAnillador) VALUES (-1, 123456000001, 123456)"_s);
        run(u"UPDATE ANICHO SET IdCabecera = IdCab WHERE IdCabecera = -1 "_s);
    }
    void importedSheet(int id) {
        run(u"DELETE FROM ANICHO WHERE IdCabecera=%1 "_s.arg(id));
        run(u"INSERT INTO ANICHO (IdCabecera ,NumHoja ) VALUES ('%1' ,'-1' )"_s.arg(id));
    }
};

TEST_F(EsquemaTest, KeepsTheOrderOfCapturesForTheExchange) {
    const QStringList captures = columns(u"ANIAHO"_s);
    EXPECT_EQ(captures.size(), 41);
    EXPECT_EQ(captures.at(11), u"IdEspecie");
    EXPECT_EQ(captures.last(), u"CodigoEspecie");
    EXPECT_EQ(QSet<QString>(captures.begin(), captures.end()).size(), 41);
    EXPECT_EQ(columns(u"ANICHO"_s).size(), 34);
    EXPECT_EQ(columns(u"Consultas"_s).size(), 61);
    EXPECT_EQ(columns(u"Datos_Excel"_s).size(), 59);
    EXPECT_EQ(connection.tableNames().size(), 14U + 21U + 4U);
}

TEST_F(EsquemaTest, HasItsRelationsByName) {
    QStringList names;
    for (const auto& key : connection.foreignKeys())
        names << key.name + u' ' + key.table + u' ' + key.targetTable;
    names.sort();
    EXPECT_EQ(names, (QStringList{u"ANIBRDANIAHO ANIAHO ANIBRD"_s, u"ICASEXIANIAHO ANIAHO ICASEX"_s,
                                  u"MOVIMIENTOSALMACEN ALMACEN MOVIMIENTOS"_s}));
}

struct RefusedRow {
    const char* name;
    const char16_t* sql;
    const char16_t* words;
};
std::ostream& operator<<(std::ostream& out, const RefusedRow& row) {
    return out << row.name;
}

const RefusedRow kRefused[] = {
    {"SecondCaptureOfANumber", u"INSERT INTO ANIAHO (IdCabecera, NumRegistro) VALUES ('1','1')",
     u"ANIAHO (IdCabecera, NumRegistro)"},
    {"CaptureWithoutNumber", u"INSERT INTO ANIAHO (IdCabecera, NumRegistro) VALUES ('1','')", u"NumRegistro"},
    {"UnknownSex", u"INSERT INTO ANIAHO (IdCabecera, NumRegistro, CodigoSexo) VALUES ('1','2','X')",
     u"ICASEX"},
    {"UnknownSpecies",
     u"INSERT INTO ANIAHO (IdCabecera, NumRegistro, CodigoEspecie) VALUES ('1','2','99999')", u"ANIBRD"},
    {"SpeciesInUse", u"DELETE FROM ANIBRD WHERE CodigoEspecie='12440'", u"ANIAHO"},
    {"RepeatedSpecies", u"INSERT INTO ANIBRD (IdEspecie, CodigoEspecie) VALUES (-1, '12440')",
     u"ANIBRD (CodigoEspecie)"},
    {"RepeatedIdentifier", u"INSERT INTO ANIBRD (IdEspecie, CodigoEspecie) VALUES (1, '12441')",
     u"ANIBRD (IdEspecie)"},
    {"RepeatedRinger", u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador) VALUES (9, '123456')",
     u"CodigoAnillador"},
    {"FreeDataTooLong", u"UPDATE ANIAHO SET Dato1='123456' WHERE IdCabecera=1", u"Dato1"},
    {"DispatchOutOfRange", u"UPDATE ANIMAT SET UltimoEnvio=32768", u"UltimoEnvio"},
    {"WingNoNumber", u"UPDATE ANIAHO SET Ala='larga'", u"Ala"},
    {"UnknownMovement",
     u"INSERT INTO Almacen VALUES (1, '2', '2A', '000001', '000100', 100, '15/03/2010', 'Z')",
     u"MOVIMIENTOS"},
    {"RepeatedRingType", u"INSERT INTO TIPOANILLAS VALUES ('l','n', 0)",
     u"TIPOANILLAS (Modelo, Inscripcion)"},
    {"Apostrophe", u"UPDATE ANIMAT SET NombreAnillador='O'NEILL' WHERE CodigoAnillador=123456", u""},
};

class RefusedTest : public EsquemaTest, public ::testing::WithParamInterface<RefusedRow> {};

TEST_P(RefusedTest, ChangesNothingAndNamesWhatWasRefused) {
    run(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador, NombreAnillador) VALUES (-1, '123456', 'UNA')"_s);
    run(u"INSERT INTO ANIAHO (IdCabecera, NumRegistro, CodigoSexo, CodigoEspecie, Dato1) VALUES "
        "('1','1','M','12440','abc')"_s);
    run(u"INSERT INTO TIPOANILLAS VALUES ('L','N', 0)"_s);
    const auto contents = [&] {
        QString all;
        for (const QString& table : connection.tableNames())
            all += rows(u"SELECT * FROM ["_s + table + u']') + u'\n';
        return all;
    };
    const QString before = contents();
    const auto error = errorOf([&] { run(QString::fromUtf16(GetParam().sql)); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number(), -2147217900);
    EXPECT_TRUE(error->description().contains(QString::fromUtf16(GetParam().words))) << error->what();
    EXPECT_EQ(contents(), before);
}

INSTANTIATE_TEST_SUITE_P(Statements, RefusedTest, ::testing::ValuesIn(kRefused),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(EsquemaTest, GivesTheDefaultsThatTheDispatchReads) {
    run(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador, NombreAnillador) VALUES (-1, '123456', 'UNA')"_s);
    newSheet();
    EXPECT_EQ(rows(u"SELECT UltimoEnvio, Email, CoordinadorGrupo FROM ANIMAT"_s), u"0;;Falso");
    EXPECT_EQ(rows(u"SELECT NumEAnillador, NumEGrupo, Anillador, NumHoja FROM ANICHO"_s),
              u"0;0;;123456000001");
}

TEST_F(EsquemaTest, NeverGivesAnIdentifierThatARowBears) {
    for (const int id : {2, 3, 5, 2147483647})
        importedSheet(id);  // they take the numbers 1 to 4
    for (int n = 0; n < 3; ++n)
        newSheet();
    EXPECT_EQ(rows(u"SELECT IdCabecera FROM ANICHO WHERE NumHoja > 0 ORDER BY IdCabecera"_s), u"6|7|8");
    importedSheet(9);
    importedSheet(10);
    importedSheet(12);
    newSheet();
    EXPECT_EQ(rows(u"SELECT Max(IdCab) FROM ANICHO"_s), u"13");
    run(u"DELETE FROM ANICHO WHERE IdCabecera >= 6 AND IdCabecera < 100"_s);
    newSheet();
    EXPECT_EQ(rows(u"SELECT IdCabecera FROM ANICHO WHERE NumHoja > 0"_s), u"14");
    EXPECT_EQ(rows(u"SELECT Count(*) FROM ANICHO WHERE IdCabecera = 2147483647"_s), u"1");
}

TEST_F(EsquemaTest, LetsImportedRingersKeepTheirNumberOne) {
    run(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador) VALUES (-1, '111111')"_s);
    run(u"UPDATE ANIMAT SET IdAnillador=IdAni WHERE CodigoAnillador=111111"_s);
    run(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador) VALUES ('1', '222222')"_s);
    EXPECT_EQ(rows(u"SELECT IdAnillador FROM ANIMAT"_s), u"1|1");
}

TEST_F(EsquemaTest, HealsRowsLeftAtThePlaceholder) {
    run(u"INSERT INTO ANICHO (IdCabecera, NumHoja) VALUES (-1, 123456000001)"_s);
    run(u"INSERT INTO ANILOC (IdLocalidad, CodigoLocalidad) VALUES (-1, '28001')"_s);
    run(u"INSERT INTO ANICHO (IdCabecera, NumHoja) VALUES (77, -1)"_s);
    sanarIdentificadores(connection);
    EXPECT_EQ(rows(u"SELECT IdCabecera, IdCab, NumHoja FROM ANICHO ORDER BY IdCab"_s),
              u"1;1;123456000001|77;2;-1");
    EXPECT_EQ(rows(u"SELECT IdLocalidad FROM ANILOC"_s), u"1");
}

class ArchivoTest : public ado::test::FolderTest {
 protected:
    void prepare(const QString& name) { prepararBase(path(name), QStringLiteral(TARMEL_DATA_DIR "/tables")); }
};

TEST_F(ArchivoTest, IsPreparedTheSameEveryTime) {
    prepare(u"una.mdb"_s);
    prepare(u"otra.mdb"_s);
    EXPECT_TRUE(bytesOf(path(u"una.mdb"_s)) == bytesOf(path(u"otra.mdb"_s)));
    Connection connection;
    connection.OpenFile(path(u"una.mdb"_s));
    EXPECT_EQ(rowsOf(connection, u"SELECT Count(*) FROM TIPOANILLAS"_s), u"204");
    EXPECT_EQ(rowsOf(connection, u"SELECT Count(*) FROM ANIBRD WHERE IdEsp <> IdEspecie"_s), u"0");
    EXPECT_EQ(rowsOf(connection, u"SELECT Count(*) FROM ANIMAT"_s), u"0");
    EXPECT_TRUE(rowsOf(connection, u"SELECT * FROM ICASEX"_s).startsWith(u"U;"));
}

TEST_F(ArchivoTest, RefusesToBePreparedWithoutATable) {
    EXPECT_EQ(errorOf([&] { prepararBase(path(), folder_.path()); })->number(), 53);
}

/// What a spreadsheet does: plain SQLite, without a function or collation of ours.
TEST_F(ArchivoTest, ServesOtherPrograms) {
    prepare(u"base.mdb"_s);
    {
        Connection connection;
        connection.OpenFile(path());
        connection.Execute(
            u"INSERT INTO ANICHO (IdCabecera, NumHoja, CodAnillador, FechaCaptura, CodLocalidad) VALUES (-1, "
            "123456000001, 123456, '15/03/2010', '28079')"_s);
        connection.Execute(u"UPDATE ANICHO SET IdCabecera = IdCab WHERE IdCabecera = -1 "_s);
        for (int n = 1; n <= 4; ++n) {
            connection.Execute(
                u"INSERT INTO ANIAHO (IdCabecera, NumRegistro, TipoRegistro, CodigoCentro, NumeroAnilla, "
                u"Anilla, IdEspecie, "
                "HoraCaptura, CodigoSexo, CodigoEspecie) VALUES "
                "('1','%1','%2','ESI','AC0002','AC..0002','70','7:30','M', "
                "'12440')"_s.arg(n)
                    .arg(n <= 2 ? u"A"_s : u"R"_s));
        }
    }
    Plain other(path());
    EXPECT_EQ(other.value("SELECT TotAnillas FROM Anillamientos_Dup"), u"2");
    EXPECT_EQ(other.value("SELECT FechaCaptura || TotAnillas FROM Recuperaciones_Dup"),
              u"2010-03-15 00:00:002");
    EXPECT_EQ(other.value("SELECT COUNT(*) FROM Datos_Duplicados"), u"4");
    EXPECT_EQ(other.value("SELECT DISTINCT DifFecha FROM Datos_Duplicados"), u"40250.0");
    EXPECT_EQ(other.value("SELECT DISTINCT MUNICIPIO FROM Datos_Excel WHERE TipoRegistro = 'A'"), u"Madrid");
    EXPECT_EQ(other.run("INSERT INTO ANIAHO (IdCabecera, NumRegistro, Dato1) VALUES (1, 9, 'seis..')"),
              SQLITE_CONSTRAINT);
    EXPECT_EQ(other.run("INSERT INTO ANICHO (IdCabecera, NumHoja) VALUES (2, -1), (4, -1), (-1, 5)"),
              SQLITE_OK);
    EXPECT_EQ(other.value("SELECT IdCab FROM ANICHO WHERE IdCabecera = -1"), u"5");
    EXPECT_EQ(other.value("PRAGMA integrity_check"), u"ok");
}

/// The statements by which a sheet is found, listed and its captures read must not walk through the whole
/// table.
TEST_F(ArchivoTest, FindsWhatScreensAskForByIndex) {
    prepare(u"base.mdb"_s);
    Plain other(path());
    for (const char* condition :
         {"ANICHO WHERE IdCabecera = 5", "ANICHO WHERE NumHoja = 123456000001",
          "ANICHO WHERE CodAnillador = 123456", "ANICHO WHERE FechaCaptura = '2010-03-15 00:00:00'",
          "ANIAHO WHERE IdCabecera = 5 AND NumRegistro = 3",
          "ANIAHO WHERE Anilla = 'AC..0002' AND TipoRegistro = 'A' AND CodigoCentro = 'ESI'",
          "ANIAHO WHERE IdEspecie = 4", "ANILOC WHERE CodigoLocalidad = '28079'",
          "ANIBRD WHERE IdEspecie = 4", "ANIMAT WHERE CodigoAnillador = 123456"}) {
        const QByteArray plan = QByteArray("EXPLAIN QUERY PLAN SELECT * FROM ") + condition;
        EXPECT_TRUE(other.value(plan.constData(), 3).startsWith(u"SEARCH"_s)) << condition;
    }
    // Duplicates are counted along the index, without a look at the rows.
    for (const char* view : {"Anillamientos_Dup", "Recuperaciones_Dup"}) {
        const QByteArray plan = QByteArray("EXPLAIN QUERY PLAN SELECT * FROM ") + view;
        EXPECT_TRUE(other.value(plan.constData(), 3).contains(u"SEARCH ANIAHO USING COVERING INDEX"_s))
            << view;
    }
}

}  // namespace
}  // namespace tarmel
