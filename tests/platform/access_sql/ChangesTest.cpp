#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/access_sql/TestEngine.h"

/// INSERT, UPDATE and DELETE: what is converted on the way into a column, what is refused, which rows are
/// written.
namespace tarmel::access_sql {
namespace {

class Changes : public testing::Test {
 protected:
    Changes() {
        for (const char* statement : {
                 "CREATE TABLE Todo (Id COUNTER, Texto VARCHAR(5), Memoria MEMO, Largo LONG, Entero "
                 "SMALLINT, Octeto BYTE, "
                 "Doble DOUBLE, Sencillo SINGLE, Moneda CURRENCY, Exacto DECIMAL(5,2), Hoja DECIMAL(15,0), "
                 "Fecha DATETIME, "
                 "Si YESNO)",
                 "CREATE TABLE A (Id LONG PRIMARY KEY, Valor LONG, Nombre VARCHAR(10))",
                 "CREATE TABLE B (IdA LONG, Valor LONG, Nombre VARCHAR(10))",
                 "INSERT INTO A VALUES (1, 10, 'uno')",
                 "INSERT INTO A VALUES (2, 20, 'dos')",
                 "INSERT INTO A VALUES (3, 30, 'tres')",
                 "INSERT INTO B VALUES (1, 5, 'x')",
                 "INSERT INTO B VALUES (1, 5, 'y')",
                 "INSERT INTO B VALUES (3, 6, 'z')",
             }) {
            engine.run(statement);
        }
    }
    /// What the column holds after this expression was stored in it, by INSERT and by UPDATE.
    std::string stored(const std::string& column, const std::string& value) {
        const QString name = QString::fromStdString(column), text = QString::fromStdString(value);
        engine.run("DELETE FROM Todo");
        engine.run("INSERT INTO Todo (" + name + ") VALUES (" + text + ")");
        const std::string inserted = engine.value("SELECT " + name + " FROM Todo");
        engine.run("UPDATE Todo SET " + name + " = " + text);
        EXPECT_EQ(engine.value("SELECT " + name + " FROM Todo"), inserted) << column << " = " << value;
        return inserted;
    }

    TestEngine engine;
};

struct Storing {
    const char* column;
    const char* value;
    const char* held;
};

TEST_F(Changes, ConvertValuesForTheirColumn) {
    for (const Storing& row : {
             Storing{"Doble", "'85,0'", "85.0"},
             {"Doble", "'1.234,5'", "1234.5"},
             {"Doble", "''", "Null"},
             {"Doble", "Null", "Null"},
             {"Doble", "' 7 '", "7.0"},
             {"Doble", "1=1", "-1.0"},
             {"Largo", "'2,5'", "2"},
             {"Largo", "3.5", "4"},
             {"Largo", "1.5+1", "2"},
             {"Largo", "-1", "-1"},
             {"Largo", "''", "Null"},
             {"Largo", "'12' & '3'", "123"},
             {"Largo", "True", "-1"},
             {"Largo", "#1/1/1900#", "2"},
             {"Octeto", "'255'", "255"},
             {"Exacto", "1.239", "1.24"},
             {"Exacto", "'999,99'", "999.99"},
             {"Exacto", "1.2/3", "0.4"},
             {"Moneda", "1.00004", "1"},
             {"Hoja", "123456000001", "123456000001"},
             {"Hoja", "'123456000001'", "123456000001"},
             {"Hoja", "123456000000+1", "123456000001"},
             {"Fecha", "'15/03/2010'", "2010-03-15 00:00:00"},
             {"Fecha", "'15/03/2010 7:30'", "2010-03-15 07:30:00"},
             {"Fecha", "'7:30:00'", "1899-12-30 07:30:00"},
             {"Fecha", "#3/15/2010#+1", "2010-03-16 00:00:00"},
             {"Fecha", "40252", "2010-03-15 00:00:00"},
             {"Fecha", "'15/03/' & 2010", "2010-03-15 00:00:00"},
             {"Fecha", "''", "Null"},
             {"Si", "'Verdadero'", "-1"},
             {"Si", "'True'", "-1"},
             {"Si", "'-1'", "-1"},
             {"Si", "1", "-1"},
             {"Si", "'0'", "0"},
             {"Si", "'Falso'", "0"},
             {"Si", "''", "Null"},
             {"Si", "2-2", "0"},
             {"Texto", "''", ""},
             {"Texto", "'ñandú'", "ñandú"},
             {"Texto", "2.5", "2,5"},
             {"Texto", "12", "12"},
             {"Texto", "1.5+1", "2,5"},
             {"Memoria", "#3/15/2010#", "15/03/2010"},
             {"Memoria", "'it''s'", "it's"},
         }) {
        EXPECT_EQ(stored(row.column, row.value), row.held) << row.column << " = " << row.value;
    }
}

TEST_F(Changes, RefuseWhatDoesNotFitAndNameTheColumn) {
    for (const auto& [column, value] : std::vector<std::pair<const char*, const char*>>{
             {"Largo", "'abc'"},
             {"Largo", "2147483648"},
             {"Largo", "'-2147483649'"},
             {"Entero", "32768"},
             {"Octeto", "'256'"},
             {"Octeto", "-1"},
             {"Doble", "'1,2,3'"},
             {"Sencillo", "1e39"},
             {"Exacto", "1000"},
             {"Hoja", "1234567890123456"},
             {"Fecha", "'31/02/2010'"},
             {"Fecha", "'pronto'"},
             {"Si", "'quizá'"},
             {"Texto", "'seis!!'"},
             {"Texto", "'tres' & 'mas'"},
             {"Largo", "2147483647+1"},
             {"Largo", "'a' & 'b'"},
         }) {
        const QString insert = QString("INSERT INTO Todo (%1) VALUES (%2)").arg(column, value);
        EXPECT_THAT(engine.refusal(insert), testing::HasSubstr(column)) << insert.toStdString();
        EXPECT_EQ(engine.value("SELECT Count(*) FROM Todo"), "0");
    }
}

TEST_F(Changes, InsertByPositionByNameAndFromRows) {
    engine.run("INSERT INTO A VALUES ('4', '40', 'cuatro')");
    engine.run("INSERT INTO A (Nombre, Id) VALUES ('cinco', 5)");
    engine.run("INSERT INTO A SELECT 'seis' AS Nombre, 6 AS Id");
    engine.run("INSERT INTO A (Id, Nombre) SELECT DISTINCT IdA+10 & '', Valor FROM B ORDER BY 1");
    engine.run("INSERT INTO A SELECT Max(Id)+1 AS id, Sum(Valor) AS VALOR FROM A");
    EXPECT_EQ(engine.rows("SELECT * FROM A WHERE Id>3 ORDER BY Id"),
              "4|40|cuatro;5|Null|cinco;6|Null|seis;11|Null|5;13|Null|6;14|100|Null");
    EXPECT_NE(engine.refusal("INSERT INTO A VALUES (9, 9)").find("no coinciden"), std::string::npos);
    EXPECT_NE(engine.refusal("INSERT INTO A SELECT Id, Valor AS Otro FROM A").find("'Otro'"),
              std::string::npos);
    EXPECT_NE(engine.refusal("INSERT INTO A (Id, Otro) VALUES (9, 9)").find("'Otro'"), std::string::npos);
    EXPECT_NE(engine.refusal("INSERT INTO A (Id, ID) VALUES (9, 9)").find("duplicado"), std::string::npos);
}

TEST_F(Changes, UpdateOneTable) {
    engine.run("UPDATE A SET Valor=Valor+Id, Nombre='' WHERE Id<3");
    EXPECT_EQ(engine.rows("SELECT * FROM A ORDER BY Id"), "1|11|;2|22|;3|30|tres");
    engine.run("UPDATE A AS x SET x.Valor=x.Id");
    EXPECT_EQ(engine.rows("SELECT Valor FROM A ORDER BY Id"), "1;2;3");
}

TEST_F(Changes, UpdateWithPartnersWritesEachRowOnce) {
    engine.run("UPDATE A, B SET A.Valor = A.Valor+B.Valor WHERE A.Id=B.IdA");
    EXPECT_EQ(engine.changes(), 2);
    EXPECT_EQ(engine.rows("SELECT Valor FROM A ORDER BY Id"), "15;20;36");
    engine.run("UPDATE B INNER JOIN A ON A.Id=B.IdA SET B.Nombre=A.Nombre, B.Valor='7' WHERE A.Id=1");
    EXPECT_EQ(engine.rows("SELECT Nombre, Valor FROM B"), "uno|7;uno|7;z|6");
    engine.run("UPDATE A AS x LEFT JOIN B AS y ON x.Id=y.IdA SET x.Valor=0 WHERE y.IdA Is Null");
    EXPECT_EQ(engine.rows("SELECT Id FROM A WHERE Valor=0"), "2");
    EXPECT_NE(engine.refusal("UPDATE A, B SET A.Valor=1, B.Valor=2 WHERE A.Id=B.IdA"), "");
}

TEST_F(Changes, Delete) {
    engine.run("DELETE FROM A WHERE Id=1 OR Nombre='DOS'");
    EXPECT_EQ(engine.changes(), 2);
    engine.run("DELETE B.* FROM B LEFT JOIN A ON B.IdA=A.Id WHERE A.Id Is Null");
    EXPECT_EQ(engine.rows("SELECT Nombre FROM B"), "z");
    engine.run("DELETE * FROM B");
    EXPECT_EQ(engine.value("SELECT Count(*) FROM B"), "0");
}

TEST_F(Changes, ViewsKeepRepeatedNamesApart) {
    engine.run("CREATE VIEW Ambas AS SELECT *, A.Valor-B.Valor AS Resto FROM A INNER JOIN B ON A.Id=B.IdA;");
    EXPECT_EQ(engine.rows("SELECT Valor, [B.Valor], Resto FROM Ambas WHERE Nombre='TRES'"), "30|6|24");
    engine.run("CREATE VIEW Corta (Clave, Texto) AS SELECT Id, Nombre & ' (' & Valor & ')' FROM A");
    EXPECT_EQ(engine.rows("SELECT Texto FROM Corta WHERE Clave=2"), "dos (20)");
    EXPECT_NE(engine.refusal("CREATE VIEW Mala AS SELECT Format(Id, '0') FROM A"), "");
    EXPECT_NE(engine.refusal("UPDATE Corta SET Clave=1"), "");
}

}  // namespace
}  // namespace tarmel::access_sql
