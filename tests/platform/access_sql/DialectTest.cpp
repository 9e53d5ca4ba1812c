#include <gtest/gtest.h>

#include "platform/access_sql/TestEngine.h"

/// What the dialect's expressions and queries mean, as the real engine answers them.
namespace tarmel::access_sql {
namespace {

struct Row {
    const char* sql;
    const char* expected;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.sql;
}

/// A table of birds and one of places, with what is awkward: Null, ñ, accents, numbers as text.
class Dialect : public testing::TestWithParam<Row> {
 protected:
    static void SetUpTestSuite() {
        engine = std::make_unique<TestEngine>();
        for (const char* statement : {
                 "CREATE TABLE Aves (Id COUNTER, Nombre VARCHAR(20), Codigo VARCHAR(5), Peso DOUBLE, Fecha "
                 "DATETIME, "
                 "Hora DATETIME, Anillada YESNO, Lugar LONG, Nota MEMO)",
                 "CREATE TABLE Lugares (Lugar LONG PRIMARY KEY, Nombre VARCHAR(20), Codigo LONG)",
                 "INSERT INTO Aves (Nombre, Codigo, Peso, Fecha, Hora, Anillada, Lugar, Nota) VALUES "
                 "('Águila', '012', "
                 "'85,5', '15/03/2010', '7:30', -1, 1, 'a')",
                 "INSERT INTO Aves (Nombre, Codigo, Peso, Fecha, Hora, Anillada, Lugar, Nota) VALUES "
                 "('aguja', '12', 10, "
                 "#12/31/2010#, #10:00:00#, 0, 2, Null)",
                 "INSERT INTO Aves (Nombre, Codigo, Peso, Fecha, Hora, Anillada, Lugar, Nota) VALUES "
                 "('NANDU', 'x', Null, "
                 "Null, Null, False, 1, '')",
                 "INSERT INTO Aves (Nombre, Codigo, Peso, Fecha, Hora, Anillada, Lugar, Nota) VALUES "
                 "('Ñandú', Null, 2.5, "
                 "#2011-01-02 06:00:00#, #06:00#, True, 9, 'Ñ')",
                 "INSERT INTO Lugares VALUES (1, 'Soto', 12)",
                 "INSERT INTO Lugares VALUES (2, 'Ávila', 99)",
                 "INSERT INTO Lugares VALUES (3, 'Zuera', Null)",
             }) {
            engine->run(statement);
        }
    }
    static void TearDownTestSuite() { engine.reset(); }
    static std::unique_ptr<TestEngine> engine;
};
std::unique_ptr<TestEngine> Dialect::engine;

TEST_P(Dialect, Answers) {
    EXPECT_EQ(engine->rows(GetParam().sql), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Precedence, Dialect,
    testing::Values(Row{"SELECT 10-3-2", "5"}, Row{"SELECT 2^3^2", "64"}, Row{"SELECT -2^2", "-4"},
                    Row{"SELECT 2^-1", "0.5"}, Row{"SELECT 2*-3", "-6"}, Row{"SELECT 7-(3-2)", "6"},
                    Row{"SELECT 12/2/3", "2"}, Row{"SELECT 7\\2*2", "1"}, Row{"SELECT 10 Mod 7\\2", "1"},
                    Row{"SELECT 1+2*3 Mod 4", "3"}, Row{"SELECT 1+2 & 3+4", "37"},
                    Row{"SELECT 'a' & 1+1 & 'b'", "a2b"}, Row{"SELECT 1+1=2", "-1"},
                    Row{"SELECT 1=1=-1", "-1"}, Row{"SELECT Not 1=2 And 3=4", "0"},
                    Row{"SELECT Not (1=2 And 3=4)", "-1"}, Row{"SELECT 1=1 Or 1=2 And 1=2", "-1"},
                    Row{"SELECT (1=1 Or 1=2) And 1=2", "0"}, Row{"SELECT 5 Between 1 And 4+1 And 1=2", "0"},
                    Row{"SELECT 2 In (1,2) And 1=1", "-1"}, Row{"SELECT - - 3", "3"},
                    Row{"SELECT 2-1=1 And Not 'a' Like 'b%'", "-1"}, Row{"SELECT 1 - -1", "2"},
                    Row{"SELECT 3-2*1-1", "0"}, Row{"SELECT 8-(4-2)-1", "5"}, Row{"SELECT (1+2)*3", "9"},
                    Row{"SELECT Not Null Is Null", "0"}));

INSTANTIATE_TEST_SUITE_P(Arithmetic, Dialect,
                         testing::Values(Row{"SELECT 1/4", "0.25"}, Row{"SELECT 7.6\\2", "4"},
                                         Row{"SELECT 2.5\\1", "2"}, Row{"SELECT 7.5 Mod 5", "3"},
                                         Row{"SELECT -7\\2", "-3"}, Row{"SELECT 1+Null", "Null"},
                                         Row{"SELECT '2'*3", "6"}, Row{"SELECT '1,5'+1", "2.5"},
                                         Row{"SELECT 'a'+'b'", "ab"}, Row{"SELECT 'a'+Null", "Null"},
                                         Row{"SELECT 'a' & Null", "a"}, Row{"SELECT Null & Null", "Null"},
                                         Row{"SELECT 2.0 & ''", "2"}, Row{"SELECT 2.5 & '.'", "2,5."},
                                         Row{"SELECT Peso & Codigo FROM Aves WHERE Id=1", "85,5012"},
                                         Row{"SELECT Nota & Codigo FROM Aves WHERE Id=2", "12"},
                                         Row{"SELECT Peso & Fecha FROM Aves WHERE Id=3", "Null"},
                                         Row{"SELECT '(' & Fecha & ')' FROM Aves WHERE Id=1", "(15/03/2010)"},
                                         Row{"SELECT Fecha & '' FROM Aves WHERE Id=4", "02/01/2011 6:00:00"},
                                         Row{"SELECT Hora & '' FROM Aves WHERE Id=1", "7:30:00"},
                                         Row{"SELECT True & ''", "Verdadero"}, Row{"SELECT (1=1) & ''", "-1"},
                                         Row{"SELECT #3/15/2010# & ''", "15/03/2010"},
                                         Row{"SELECT #15/3/2010# & ''", "15/03/2010"},
                                         Row{"SELECT #7:05 PM# & ''", "19:05:00"},
                                         Row{"SELECT #1/2/29# & #1/2/30#", "02/01/202902/01/1930"}));

INSTANTIATE_TEST_SUITE_P(
    Dates, Dialect,
    testing::Values(
        Row{"SELECT Fecha-#1/1/1900# FROM Aves WHERE Id=1", "40250.0"},
        Row{"SELECT #10:00#-#7:30#", "0.104166666666667"}, Row{"SELECT #1/31/2010#+1", "2010-02-01 00:00:00"},
        Row{"SELECT Fecha-0.5 FROM Aves WHERE Id=1", "2010-03-14 12:00:00"},
        Row{"SELECT Id FROM Aves WHERE Fecha=#3/15/2010#", "1"},
        Row{"SELECT Id FROM Aves WHERE Fecha='15/03/2010'", "1"},
        Row{"SELECT Id FROM Aves WHERE Fecha=40252", "1"},
        Row{"SELECT Id FROM Aves WHERE Fecha='nunca' OR Fecha<>'nunca'", "1;2;4"},
        Row{"SELECT Id FROM Aves WHERE Fecha BETWEEN #12/31/2010# AND #1/1/2010#", "1;2"},
        Row{"SELECT Id FROM Aves WHERE Fecha BETWEEN CDate('01/01/2010') AND CDate('31/12/2010')", "1;2"},
        Row{"SELECT Id FROM Aves WHERE YEAR(Fecha)='2010'", "1;2"},
        Row{"SELECT Id FROM Aves WHERE Year(Fecha)='MMX'", ""},
        Row{"SELECT Year(Fecha), Month(Fecha), Day(Fecha), Hour(Hora), Minute(Hora) FROM Aves WHERE Id=1",
            "2010|3|15|7|30"},
        Row{"SELECT Year('15/03/2010'), Month(40252)", "2010|3"},
        Row{"SELECT Id FROM Aves WHERE Hora<#8:00#", "1;4"},
        Row{"SELECT Max(Fecha) FROM Aves", "2011-01-02 06:00:00"},
        Row{"SELECT CDate('1/2/2010')", "2010-02-01 00:00:00"},
        Row{"SELECT Format(Fecha, 'yyyy/mm') FROM Aves WHERE Id=1", "2010/03"}));

INSTANTIATE_TEST_SUITE_P(
    Texts, Dialect,
    testing::Values(Row{"SELECT Id FROM Aves WHERE Nombre='AGUJA'", "2"},
                    Row{"SELECT Id FROM Aves WHERE Nombre='ÁGUILA'", "1"},
                    Row{"SELECT Id FROM Aves WHERE Nombre='Aguila'", ""},
                    Row{"SELECT Id FROM Aves WHERE Nombre='ñANDÚ'", "4"},
                    Row{"SELECT Id FROM Aves WHERE Nombre='nandu'", "3"},
                    Row{"SELECT Id FROM Aves WHERE Nombre<>'aguja'", "1;3;4"},
                    Row{"SELECT Id FROM Aves WHERE RTrim(Nombre)='aguja'", "2"},
                    Row{"SELECT Id FROM Aves WHERE UCase(Nombre)='ñandú'", "4"},
                    Row{"SELECT Id FROM Aves WHERE Nombre IN ('aguja','ÑANDÚ')", "2;4"},
                    Row{"SELECT Id FROM Aves WHERE Nombre NOT IN ('aguja','nandu')", "1;4"},
                    Row{"SELECT Id FROM Aves WHERE Nombre>'nz' ORDER BY Id", "4"},
                    Row{"SELECT Id FROM Aves WHERE Nombre BETWEEN 'b' AND 'ag'", "1;2"},
                    Row{"SELECT Nombre FROM Aves ORDER BY Nombre", "Águila;aguja;NANDU;Ñandú"},
                    Row{"SELECT Nombre FROM Aves ORDER BY Nombre DESC", "Ñandú;NANDU;aguja;Águila"},
                    Row{"SELECT Codigo FROM Aves ORDER BY 1", "Null;012;12;x"},
                    Row{"SELECT Id FROM Aves WHERE Nombre Like 'AG%'", "2"},
                    Row{"SELECT Id FROM Aves WHERE Nombre Like 'ág%'", "1"},
                    Row{"SELECT Id FROM Aves WHERE Nombre Like '_and_'", "3;4"},
                    Row{"SELECT Id FROM Aves WHERE Nombre Not Like '%a'", "3;4"},
                    Row{"SELECT Id FROM Aves WHERE Nombre Like '%' & 'Ú'", "4"},
                    Row{"SELECT Id FROM Aves WHERE Nota=''", "3"},
                    Row{"SELECT Id FROM Aves WHERE Nota Is Null", "2"},
                    Row{"SELECT Id FROM Aves WHERE Nota=Null", ""},
                    Row{"SELECT Id FROM Aves WHERE Fecha Like '15/03/%'", "1"},
                    Row{"SELECT \"it's\", 'it''s', \"\"\"\"", "it's|it's|\""}));

INSTANTIATE_TEST_SUITE_P(
    TextsAndNumbers, Dialect,
    testing::Values(Row{"SELECT Id FROM Aves WHERE Codigo=12", "1;2"},
                    Row{"SELECT Id FROM Aves WHERE Codigo='12'", "2"},
                    Row{"SELECT Id FROM Aves WHERE Lugar='1'", "1;3"},
                    Row{"SELECT Id FROM Aves WHERE Lugar='uno'", ""},
                    Row{"SELECT Id FROM Aves WHERE Lugar<>'uno'", "1;2;3;4"},
                    Row{"SELECT Id FROM Aves WHERE Lugar=''", ""},
                    Row{"SELECT Id FROM Aves WHERE Lugar<'uno' ORDER BY Id", "1;2;3;4"},
                    Row{"SELECT Id FROM Aves WHERE Peso='85,5'", "1"},
                    Row{"SELECT Id FROM Aves WHERE Lugar IN ('1','2','x')", "1;2;3"},
                    Row{"SELECT Id FROM Aves WHERE Lugar IN (1,'2')", "1;2;3"},
                    Row{"SELECT Id FROM Aves WHERE Codigo IN (12,'x')", "1;2;3"},
                    Row{"SELECT Id FROM Aves WHERE Codigo NOT IN (12,'x')", ""},
                    Row{"SELECT Id FROM Aves WHERE Lugar BETWEEN '1' AND '2'", "1;2;3"},
                    Row{"SELECT Aves.Id FROM Aves INNER JOIN Lugares ON Aves.Codigo=Lugares.Codigo", "1;2"},
                    Row{"SELECT Id FROM Aves WHERE Codigo IN (SELECT Codigo FROM Lugares)", "1;2"},
                    Row{"SELECT Nombre FROM Lugares WHERE Codigo IN (SELECT Codigo FROM Aves)", "Soto"},
                    Row{"SELECT Id FROM Aves WHERE Val(Codigo)>=12 ORDER BY Id", "1;2"},
                    Row{"SELECT '012'=12, '12'='012', 'x'=1", "-1|0|0"}, Row{"SELECT '1.234'=1234", "-1"}));

INSTANTIATE_TEST_SUITE_P(YesNo, Dialect,
                         testing::Values(Row{"SELECT Id FROM Aves WHERE Anillada", "1;4"},
                                         Row{"SELECT Id FROM Aves WHERE Not Anillada", "2;3"},
                                         Row{"SELECT Id FROM Aves WHERE Anillada=True", "1;4"},
                                         Row{"SELECT Id FROM Aves WHERE Anillada=-1", "1;4"},
                                         Row{"SELECT Id FROM Aves WHERE Anillada=1", ""},
                                         Row{"SELECT Id FROM Aves WHERE Anillada='Verdadero'", "1;4"},
                                         Row{"SELECT Id FROM Aves WHERE Anillada='-1'", "1;4"},
                                         Row{"SELECT Id FROM Aves WHERE Anillada='quizá'", ""},
                                         Row{"SELECT Anillada, Peso>9 FROM Aves", "-1|-1;0|-1;0|Null;-1|0"},
                                         Row{"SELECT Sum(Peso>9) FROM Aves", "-2"},
                                         Row{"SELECT True, False, Yes, No", "-1|0|-1|0"}));

INSTANTIATE_TEST_SUITE_P(
    Functions, Dialect,
    testing::Values(
        Row{"SELECT IIf(Null,1,2), IIf(1=1,'a','b')", "2|a"},
        Row{"SELECT Nz(Peso,0), Nz(Codigo) FROM Aves WHERE Id=3", "0|x"},
        Row{"SELECT Nz(Codigo), Nz(Null,7) FROM Aves WHERE Id=4", "|7"},
        Row{"SELECT IsNull(Null), IsNull(1)", "-1|0"}, Row{"SELECT Id FROM Aves WHERE IsNull(Peso)", "3"},
        Row{"SELECT Val('12abc'), Val(' 1 2'), Val('1.5'), Val('')", "12|12|1.5|0"},
        Row{"SELECT Left('ñandú',2), Right('ñandú',2), Mid('ñandú',2,3), Mid('abc',9)", "ña|dú|and|"},
        Row{"SELECT Len('ñú'), Len(Null), UCase('ñú'), LCase('ÑÚ')", "2|Null|ÑÚ|ñú"},
        Row{"SELECT Trim('  a '), LTrim('  a ') & '.', RTrim('  a ') & '.'", "a|a .|  a."},
        Row{"SELECT InStr('abcb','b'), InStr(3,'abcb','b'), InStr('abc','B')", "2|4|0"},
        Row{"SELECT Abs(-3), Int(-2.5), Int(2.5), CLng(2.5), CLng('3,5'), CInt('1.000')", "3|-3|2|2|4|1000"},
        Row{"SELECT CDbl('85,0')+1, CStr(1.5), CStr(#3/15/2010#)", "86|1,5|15/03/2010"},
        Row{"SELECT Format(1234.5,'#,##0.00'), Format(7,'000000'), Format(0.5,'#.#')", "1.234,50|000007|,5"},
        Row{"SELECT Count(*), Count(Peso), Sum(Peso), Min(Nombre), Max(Nombre) FROM Aves",
            "4|3|98.0|Águila|Ñandú"},
        Row{"SELECT Sum(Peso), Avg(Peso), Max(Peso) FROM Aves WHERE Id=0", "Null|Null|Null"},
        Row{"SELECT Trim(2.5), Len(12)", "2,5|2"}));

INSTANTIATE_TEST_SUITE_P(
    Queries, Dialect,
    testing::Values(
        Row{"SELECT a.Id, b.Nombre FROM Aves AS a INNER JOIN Lugares AS b ON a.Lugar=b.Lugar ORDER BY 1",
            "1|Soto;2|Ávila;3|Soto"},
        Row{"SELECT a.Id, b.Nombre FROM Aves a LEFT JOIN Lugares b ON a.Lugar=b.Lugar ORDER BY a.Id",
            "1|Soto;2|Ávila;3|Soto;4|Null"},
        Row{"SELECT a.Id, b.Nombre FROM Aves a RIGHT JOIN Lugares b ON a.Lugar=b.Lugar ORDER BY b.Nombre, "
            "a.Id",
            "2|Ávila;1|Soto;3|Soto;Null|Zuera"},
        Row{"SELECT a.Id, b.Nombre, c.Id FROM (Aves a RIGHT JOIN Lugares b ON a.Lugar=b.Lugar) LEFT JOIN "
            "Aves c ON "
            "(a.Id=c.Id And c.Anillada) ORDER BY b.Nombre, a.Id",
            "2|Ávila|Null;1|Soto|1;3|Soto|Null;Null|Zuera|Null"},
        Row{"SELECT a.Id FROM Aves a LEFT JOIN (Lugares b INNER JOIN Aves c ON b.Lugar=c.Lugar) ON a.Id=c.Id "
            "WHERE c.Id Is Null",
            "4"},
        Row{"SELECT b.Nombre, Count(a.Id) FROM Lugares b LEFT JOIN Aves a ON a.Lugar=b.Lugar GROUP BY "
            "b.Nombre ORDER BY b.Nombre",
            "Ávila|1;Soto|2;Zuera|0"},
        Row{"SELECT a.Id FROM Aves a, Lugares b WHERE a.Lugar=b.Lugar AND b.Nombre='SOTO'", "1;3"},
        Row{"SELECT DISTINCT Lugar FROM Aves ORDER BY Lugar", "1;2;9"},
        Row{"SELECT DISTINCT UCase(Nota) & LCase(Nota) FROM Aves WHERE Nota<>''", "Aa;Ññ"},
        Row{"SELECT DISTINCTROW Lugares.Nombre FROM Lugares, Aves WHERE Aves.Lugar=Lugares.Lugar ORDER BY "
            "Aves.Peso DESC",
            "Soto;Ávila"},
        Row{"SELECT DISTINCTROW Lugares.Codigo-Lugares.Codigo FROM Lugares INNER JOIN Aves ON "
            "Aves.Lugar=Lugares.Lugar",
            "0;0"},
        Row{"SELECT DISTINCTROW b.Nombre FROM Aves a LEFT JOIN (Lugares b INNER JOIN Aves c ON "
            "b.Lugar=c.Lugar) ON "
            "a.Lugar=b.Lugar ORDER BY b.Nombre",
            "Null;Ávila;Soto"},
        Row{"SELECT Id FROM Aves ORDER BY 'x', True, -1, Id DESC", "4;3;2;1"},
        Row{"SELECT Null AS f FROM Lugares WHERE Lugar=1 UNION ALL SELECT Fecha FROM Aves WHERE Id=1",
            "Null;2010-03-15 00:00:00"},
        Row{"SELECT TOP 1 Lugar FROM Aves ORDER BY Lugar", "1;1"}, Row{"SELECT TOP 2 Id FROM Aves", "1;2"},
        Row{"SELECT TOP 50 PERCENT Id FROM Aves ORDER BY Peso DESC, Id", "1;2"},
        Row{"SELECT TOP 2 Nombre FROM Aves ORDER BY Len(Nombre), Nombre", "aguja;NANDU"},
        Row{"SELECT Lugar, Sum(Peso) AS Total FROM Aves GROUP BY Lugar HAVING Count(*)>1 ORDER BY Total",
            "1|85.5"},
        Row{"SELECT Nombre FROM Lugares UNION SELECT 'ávila' FROM Lugares WHERE Lugar=3 UNION SELECT 'avila' "
            "FROM "
            "Lugares ORDER BY Nombre DESC",
            "Zuera;Soto;ávila;avila"},
        Row{"SELECT Lugar FROM Lugares UNION ALL SELECT Lugar FROM Aves ORDER BY 1 DESC", "9;3;2;2;1;1;1"},
        Row{"SELECT x.Total FROM (SELECT Lugar, Count(*) AS Total FROM Aves GROUP BY Lugar) AS x WHERE "
            "x.Lugar=1",
            "2"},
        Row{"SELECT Id FROM Aves WHERE Peso=(SELECT Max(Peso) FROM Aves)", "1"},
        Row{"SELECT Nombre FROM Lugares WHERE EXISTS (SELECT * FROM Aves WHERE Aves.Lugar=Lugares.Lugar AND "
            "Peso>50)",
            "Soto"},
        Row{"SELECT Nombre FROM Lugares WHERE Lugar NOT IN (SELECT Lugar FROM Aves)", "Zuera"},
        Row{"SELECT Left(Nombre,1), Count(*) FROM Lugares GROUP BY Left(Nombre,1) ORDER BY 1", "Á|1;S|1;Z|1"},
        Row{"SELECT [Id] FROM [Aves] WHERE [Aves].[Id] = 2;", "2"},
        Row{"select ID from AVES where aves.ID=1", "1"},
        Row{"SELECT *, Peso*2 AS Doble FROM Aves WHERE Id=2",
            "2|aguja|12|10.0|2010-12-31 00:00:00|1899-12-30 10:00:00|0|2|Null|20.0"},
        Row{"SELECT Lugares.*, Id FROM Aves INNER JOIN Lugares ON Aves.Lugar = Lugares.Lugar WHERE Id=2",
            "2|Ávila|99|2"}));

TEST_F(Dialect, NamesItsColumns) {
    engine->run("SELECT *, Peso+1, Peso AS p FROM Aves a INNER JOIN Lugares ON a.Lugar=Lugares.Lugar");
    const auto& columns = engine->columns();
    ASSERT_EQ(columns.size(), 14U);
    EXPECT_EQ(columns[1].name, QString("Nombre"));
    EXPECT_EQ(columns[1].table, QString("a"));
    EXPECT_EQ(columns[10].name, QString("Nombre"));
    EXPECT_EQ(columns[10].table, QString("Lugares"));
    EXPECT_EQ(columns[12].name, QString("Expr1012"));
    EXPECT_EQ(columns[13].name, QString("p"));
    EXPECT_EQ(columns[3].type, Type::Double);
    EXPECT_EQ(columns[4].type, Type::Date);
}

TEST_F(Dialect, TakesParameters) {
    EXPECT_EQ(engine->rows("SELECT Id FROM Aves WHERE Lugar>=? AND Lugar<=?",
                           {basic::Variant(2.0), basic::Variant(u"9")}),
              "2;4");
    EXPECT_EQ(engine->rows("SELECT Id FROM Aves WHERE Nombre=?", {basic::Variant(u"ÑANDÚ")}), "4");
}

}  // namespace
}  // namespace tarmel::access_sql
