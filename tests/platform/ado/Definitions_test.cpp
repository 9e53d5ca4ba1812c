#include <ostream>

#include "Support.h"

namespace tarmel::ado::test {

using namespace Qt::StringLiterals;

namespace {

class DefinitionsTest : public MemoryTest {
 protected:
    /// Refused, with words that name it, and nothing changed.
    void refused(const QString& sql, const QString& words) {
        const auto error = errorOf([&] { run(sql); });
        ASSERT_TRUE(error) << sql.toStdString();
        EXPECT_EQ(error->number(), -2147217900);
        EXPECT_EQ(error->source(), u"Motor de base de datos");
        EXPECT_TRUE(error->description().contains(words)) << error->what();
    }
    void sexes() {
        run(u"CREATE TABLE ICASEX (CodigoSexo TEXT(5) PRIMARY KEY, NombreSexo TEXT(30))"_s);
        run(u"INSERT INTO ICASEX VALUES ('0', 'Desconocido')"_s);
        run(u"INSERT INTO ICASEX VALUES ('1', 'Macho')"_s);
        run(u"CREATE TABLE ANIAHO (Id COUNTER PRIMARY KEY, CodigoSexo TEXT(5), Peso TEXT(10), IdCabecera LONG)"_s);
        connection.ExecutePlain("CREATE UNIQUE INDEX uno ON ANIAHO (IdCabecera)");
        run(u"ALTER TABLE ANIAHO ADD CONSTRAINT ICASEXANIAHO FOREIGN KEY (CodigoSexo) REFERENCES ICASEX"_s);
        run(u"INSERT INTO ANIAHO (CodigoSexo, Peso, IdCabecera) VALUES ('1', '85,5', 10)"_s);
        run(u"INSERT INTO ANIAHO (CodigoSexo, Peso, IdCabecera) VALUES ('0', '', 11)"_s);
    }
};

TEST_F(DefinitionsTest, KeepsEverythingWhenATableIsRebuilt) {
    sexes();
    run(u"CREATE VIEW Pesos AS SELECT ANIAHO.Peso FROM ANIAHO WHERE ANIAHO.CodigoSexo = '1'"_s);
    run(u"DELETE FROM ANIAHO WHERE IdCabecera = 11"_s);
    run(u"ALTER TABLE ANIAHO ALTER COLUMN CodigoSexo TEXT(1)"_s);
    run(u"ALTER TABLE ANIAHO ALTER COLUMN Peso DOUBLE"_s);
    EXPECT_EQ(rows(u"SELECT * FROM ANIAHO"_s), u"1;1;85,5;10");
    EXPECT_EQ(rows(u"SELECT Peso FROM Pesos"_s), u"85,5");
    run(u"INSERT INTO ANIAHO (CodigoSexo, Peso, IdCabecera) VALUES ('0', '1,25', 12)"_s);
    EXPECT_EQ(rows(u"SELECT Id, Peso FROM ANIAHO WHERE IdCabecera = 12"_s), u"3;1,25");
    refused(u"INSERT INTO ANIAHO (CodigoSexo) VALUES ('M')"_s, u"ICASEX"_s);
    refused(u"INSERT INTO ANIAHO (CodigoSexo) VALUES ('00')"_s, u"CodigoSexo"_s);
    refused(u"INSERT INTO ANIAHO (IdCabecera) VALUES (12)"_s, u"IdCabecera"_s);
    refused(u"DELETE FROM ICASEX WHERE CodigoSexo = '1'"_s, u"ANIAHO"_s);
    refused(u"DROP TABLE ICASEX"_s, u"ICASEXANIAHO"_s);
    ASSERT_EQ(connection.foreignKeys().size(), 1U);
    EXPECT_EQ(connection.foreignKeys().front().targetColumn, u"CodigoSexo");
}

TEST_F(DefinitionsTest, DropsARelationFromEitherOfItsTables) {
    sexes();
    refused(u"ALTER TABLE ICASEX DROP CONSTRAINT NoHayTal"_s, u"NoHayTal"_s);
    run(u"ALTER TABLE ICASEX DROP CONSTRAINT ICASEXANIAHO"_s);
    EXPECT_TRUE(connection.foreignKeys().empty());
    run(u"INSERT INTO ANIAHO (CodigoSexo, IdCabecera) VALUES ('x', 40)"_s);
    refused(u"ALTER TABLE ANIAHO ADD CONSTRAINT R FOREIGN KEY (CodigoSexo) REFERENCES ICASEX (CodigoSexo)"_s,
            u"pareja"_s);
    run(u"DELETE FROM ANIAHO WHERE IdCabecera = 40"_s);
    run(u"ALTER TABLE ANIAHO ADD CONSTRAINT ICASEXIANIAHO FOREIGN KEY (CodigoSexo) REFERENCES ICASEX (CodigoSexo)"_s);
    refused(u"ALTER TABLE ANIAHO ADD CONSTRAINT icasexianiaho FOREIGN KEY (CodigoSexo) REFERENCES ICASEX"_s,
            u"Ya existe"_s);
    run(u"ALTER TABLE ANIAHO DROP CONSTRAINT ICASEXIANIAHO"_s);
    EXPECT_TRUE(connection.foreignKeys().empty());
}

TEST_F(DefinitionsTest, RefusesWhatCannotBe) {
    sexes();
    refused(u"CREATE TABLE ICASEX (A LONG)"_s, u"ya existe"_s);
    refused(u"ALTER TABLE ANIAHO ADD COLUMN peso LONG"_s, u"ya existe"_s);
    refused(u"ALTER TABLE ANIAHO ALTER COLUMN NoEsta LONG"_s, u"no existe"_s);
    refused(u"DROP TABLE NoEsta"_s, u"NoEsta"_s);
    refused(u"DROP VIEW NoEsta"_s, u"NoEsta"_s);
    refused(u"ALTER TABLE ANIAHO ADD CONSTRAINT R FOREIGN KEY (Peso) REFERENCES ICASEX (NombreSexo)"_s,
            u"duplicados"_s);
    refused(u"ALTER TABLE ANIAHO ADD CONSTRAINT R FOREIGN KEY (IdCabecera) REFERENCES ICASEX"_s,
            u"tipo de datos"_s);
    run(u"UPDATE ANIAHO SET Peso = 'pesado' WHERE IdCabecera = 11"_s);
    refused(u"ALTER TABLE ANIAHO ALTER COLUMN Peso DOUBLE"_s, u"Peso"_s);
    refused(u"ALTER TABLE ANIAHO ALTER COLUMN Peso TEXT(3)"_s, u"Peso"_s);
    EXPECT_EQ(rows(u"SELECT CodigoSexo, Peso, IdCabecera FROM ANIAHO"_s), u"1;85,5;10|0;pesado;11");
}

TEST_F(DefinitionsTest, DropsAKeyByItsName) {
    run(u"CREATE TABLE T (A LONG, B TEXT(5), CONSTRAINT ClaveT PRIMARY KEY (A, B))"_s);
    run(u"INSERT INTO T VALUES (1, 'x')"_s);
    refused(u"INSERT INTO T VALUES (1, 'X')"_s, u"T (A, B)"_s);
    refused(u"INSERT INTO T (A) VALUES (2)"_s, u"T (B)"_s);
    run(u"ALTER TABLE T DROP CONSTRAINT ClaveT"_s);
    run(u"INSERT INTO T VALUES (1, 'X')"_s);
    EXPECT_EQ(rows(u"SELECT Count(*) FROM T"_s), u"2");
}

TEST_F(DefinitionsTest, NeverGivesACountersNumberTwice) {
    run(u"CREATE TABLE T (Id COUNTER, Texto TEXT(5) PRIMARY KEY)"_s);
    for (const QString& text : {u"a"_s, u"b"_s, u"c"_s})
        run(u"INSERT INTO T (Texto) VALUES ('%1')"_s.arg(text));
    run(u"DELETE FROM T WHERE Id >= 2"_s);
    run(u"INSERT INTO T (Texto) VALUES ('d')"_s);
    run(u"DELETE FROM T"_s);
    run(u"ALTER TABLE T ALTER COLUMN Texto TEXT(20)"_s);
    run(u"INSERT INTO T (Texto) VALUES ('e')"_s);
    EXPECT_EQ(rows(u"SELECT Id FROM T"_s), u"5");
    refused(u"INSERT INTO T (Texto) VALUES ('E')"_s, u"Texto"_s);
    run(u"CREATE TABLE SinContador (Texto TEXT(5))"_s);
    run(u"INSERT INTO SinContador VALUES ('x')"_s);
    run(u"ALTER TABLE SinContador ADD COLUMN Id COUNTER"_s);
    EXPECT_EQ(rows(u"SELECT Id, Texto FROM SinContador"_s), u"1;x");
}

class ReopenedTest : public FolderTest {};

TEST_F(ReopenedTest, KnowsTablesAndViewsAsBefore) {
    {
        Connection connection;
        connection.OpenFile(path(), true);
        connection.Execute(
            u"CREATE TABLE ANICHO (IdCabecera LONG, FechaCaptura DATE, NumHoja DECIMAL(15,0), Viva YESNO, "
            "Notas MEMO, Guia GUID, Peso SINGLE, Precio CURRENCY, Corto SMALLINT, B BYTE, "
            "[Código viejo nº] TEXT(9))"_s);
        connection.Execute(
            u"CREATE VIEW Dias AS SELECT NumHoja, FechaCaptura, FechaCaptura-#1/1/1900# AS Dif, Viva FROM "
            "ANICHO"_s);
        connection.Execute(
            u"INSERT INTO ANICHO (IdCabecera, FechaCaptura, NumHoja, Viva) VALUES (1, '15/03/2010', "
            "'123456000001', '-1')"_s);
    }
    Connection connection;
    connection.OpenFile(path());
    using access_sql::Type;
    const Type types[] = {Type::Long,   Type::Date,     Type::Decimal, Type::Boolean, Type::Memo, Type::Guid,
                          Type::Single, Type::Currency, Type::Integer, Type::Byte,    Type::Text};
    const access_sql::TableDef* table = connection.schema().table(u"anicho");
    ASSERT_TRUE(table);
    ASSERT_EQ(table->columns.size(), std::size(types));
    for (std::size_t i = 0; i < std::size(types); ++i)
        EXPECT_EQ(table->columns[i].type, types[i]) << i;
    EXPECT_EQ(table->columns[2].width, 15);
    EXPECT_EQ(table->columns[10].name, u"Código viejo nº");
    EXPECT_EQ(table->columns[10].width, 9);
    EXPECT_EQ(rowsOf(connection, u"SELECT * FROM Dias WHERE FechaCaptura = #3/15/2010#"_s),
              u"123456000001;15/03/2010;40250;Verdadero");
    EXPECT_EQ(connection.tableNames(), (std::vector<QString>{u"ANICHO"_s, u"Dias"_s}));
    connection.Execute(u"DROP VIEW Dias"_s);
    EXPECT_EQ(connection.tableNames(), std::vector<QString>{u"ANICHO"_s});
    EXPECT_TRUE(errorOf([&] { rowsOf(connection, u"SELECT * FROM Dias"_s); }));
}

/// The rules of the columns hold for every program, not for ours alone.
struct Refused {
    const char* column;
    const char* value;  ///< in SQLite
    bool fits;
};
std::ostream& operator<<(std::ostream& out, const Refused& row) {
    return out << row.column << " " << row.value;
}

const Refused kValues[] = {
    {"Corto", "'abcde'", true},
    {"Corto", "'abcdef'", false},
    {"Corto", "'ñüéá€'", true},
    {"Corto", "X'00'", false},
    {"Entero", "2147483647", true},
    {"Entero", "2147483648", false},
    {"Entero", "1.5", false},
    {"Entero", "'doce'", false},
    {"Breve", "32768", false},
    {"Breve", "-32768", true},
    {"B", "-1", false},
    {"B", "255", true},
    {"Sino", "-1", true},
    {"Sino", "1", false},
    {"Dia", "'2010-03-15 07:30:00'", true},
    {"Dia", "'2010-03-15'", false},
    {"Dia", "'2010-02-30 00:00:00'", false},
    {"Dia", "'1899-12-30 07:30:00'", true},
    {"Dia", "'ayer'", false},
    {"Hoja", "123456789012345", true},
    {"Hoja", "1234567890123456", false},
    {"Hoja", "1.5", false},
    {"Doble", "'85,5'", false},
    {"Doble", "85.5", true},
};

class RuleTest : public ::testing::TestWithParam<Refused> {
 protected:
    /// The file is made once; each case leaves it empty.
    static QString table() {
        static const QTemporaryDir folder;
        static const QString path = [] {
            Connection connection;
            connection.OpenFile(folder.filePath(u"base.mdb"_s), true);
            connection.Execute(
                u"CREATE TABLE T (Corto TEXT(5), Entero LONG, Breve SMALLINT, B BYTE, Sino YESNO, Dia "
                "DATE, Hoja DECIMAL(15,0), Doble DOUBLE)"_s);
            return folder.filePath(u"base.mdb"_s);
        }();
        return path;
    }
};

TEST_P(RuleTest, HoldsForOtherPrograms) {
    Plain other(table());
    const Refused& row = GetParam();
    const QByteArray sql = QByteArray("INSERT INTO T (") + row.column + ") VALUES (" + row.value + ")";
    EXPECT_EQ(other.run(sql.constData()), row.fits ? SQLITE_OK : SQLITE_CONSTRAINT);
    EXPECT_EQ(other.value("SELECT COUNT(*) FROM T"), row.fits ? u"1" : u"0");
    EXPECT_EQ(other.run("DELETE FROM T"), SQLITE_OK);
}

INSTANTIATE_TEST_SUITE_P(Columns, RuleTest, ::testing::ValuesIn(kValues));

}  // namespace
}  // namespace tarmel::ado::test
