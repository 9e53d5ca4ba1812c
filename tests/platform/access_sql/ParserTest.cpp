#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/access_sql/Parser.h"
#include "platform/access_sql/TestEngine.h"

/// What the dialect refuses and how it says so, the shapes that statements share, and definitions.
namespace tarmel::access_sql {
namespace {

using testing::HasSubstr;

class Statements : public testing::Test {
 protected:
    Statements() {
        engine.run(
            "CREATE TABLE T (Id LONG PRIMARY KEY, Nombre VARCHAR(20), Anilla VARCHAR(10), Fecha DATETIME)");
        engine.run("CREATE TABLE U (Id LONG, Nombre VARCHAR(20))");
        engine.plain("CREATE INDEX PorAnilla ON T (Anilla)");
        engine.plain("CREATE INDEX PorFecha ON T (Fecha)");
    }
    TestEngine engine;
};

struct Refused {
    const char* sql;
    const char* says;
};

TEST_F(Statements, AreRefusedWhenTheyAreNotUnderstood) {
    for (const Refused& row : {
             Refused{"", "no válida"},
             {"  ;", "no válida"},
             {"SHAPE {SELECT * FROM T} AS x", "«{"},
             {"EXEC algo", "no válida"},
             {"SELECT", "termina"},
             {"SELECT FROM T", "«FROM T»"},
             {"SELECT * FROM", "termina"},
             {"SELECT * FROM T WHERE", "termina"},
             {"SELECT * FROM T WHERE ", "termina"},
             {"SELECT * FROM T WHERE Id=1 AND ", "termina"},
             {"SELECT * FROM T WHERE Nombre='O'Brien'", "«'»"},
             {"SELECT * FROM T WHERE Nombre='abc", "«'abc»"},
             {"SELECT * FROM T WHERE Fecha=#1/1/2010", "«#1/1/2010»"},
             {"SELECT * FROM T WHERE Fecha=#31/31/2010#", "fecha"},
             {"SELECT * FROM T WHERE Fecha=##", "fecha"},
             {"SELECT * FROM T WHERE Id=1e999", "Desbordamiento"},
             {"SELECT [Id FROM T", "«[Id FROM T»"},
             {"SELECT * FROM T; SELECT * FROM T", "después del final"},
             {"SELECT * FROM T)", "«)»"},
             {"SELECT (Id FROM T", "«FROM T»"},
             {"SELECT Id Id2 FROM T", "«Id2 FROM T»"},
             {"SELECT * FROM T WHERE Id = = 1", "«= 1»"},
             {"SELECT * FROM T WHERE Id BETWEEN 1", "termina"},
             {"SELECT * FROM T WHERE Id IN ()", "«)»"},
             {"SELECT * FROM T INNER JOIN U", "termina"},
             {"SELECT * FROM T JOIN U ON T.Id=U.Id", "«JOIN U"},
             {"SELECT * FROM T ORDER Id", "«Id»"},
             {"SELECT Id FROM T GROUP BY Id ORDER BY 2", "'2'"},
             {"SELECT Id @ 1 FROM T", "«@ 1"},
             {"SELECT Id FROM T LIMIT 5", "«5»"},
             {"SELECT NoHay(Id) FROM T", "'NoHay'"},
             {"SELECT Left(Nombre) FROM T", "'Left'"},
             {"SELECT random() FROM T", "'random'"},
             {"PRAGMA user_version", "no válida"},
             {"SELECT Id FROM Nada", "'Nada'"},
             {"SELECT X.* FROM T", "'X'"},
             {"SELECT Nada FROM T", "Pocos parámetros. Se esperaba 1."},
             {"SELECT Nada, T.Nada, NADA, Otro FROM T WHERE Id=Otro", "Pocos parámetros. Se esperaba 3."},
             {"SELECT * FROM T WHERE Id=abc", "Pocos parámetros. Se esperaba 1."},
             {"INSERT INTO T (Id) VALUES (abc)", "Pocos parámetros. Se esperaba 1."},
             {"UPDATE T SET Nada=1", "Pocos parámetros. Se esperaba 1."},
             {"UPDATE T SET ", "termina"},
             {"UPDATE T SET Id=1,", "termina"},
             {"DELETE FROM T WHERE ", "termina"},
             {"DELETE T", "termina"},
             {"SELECT Nombre FROM T, U", "más de una"},
             {"SELECT 1 FROM T, T", "dos veces"},
             {"SELECT Nombre, Count(*) FROM T", "'Nombre'"},
             {"SELECT Id FROM T WHERE Count(*)>1", "'COUNT'"},
             {"SELECT Sum(Count(*)) FROM T", "'COUNT'"},
             {"SELECT Id FROM T UNION SELECT Id, Nombre FROM T", "no coincide"},
             {"SELECT Id FROM T WHERE Id IN (SELECT * FROM T)", "un solo campo"},
             {"INSERT INTO T VALUES (1, 'a', 'b')", "no coinciden"},
             {"INSERT INTO T (Id) VALUES (1),(2)", "«,(2)»"},
             {"CREATE TABLE", "termina"},
             {"CREATE TABLE N (a)", "«)»"},
             {"CREATE TABLE N (a COSA)", "«COSA)»"},
             {"CREATE TABLE N (a LONG, A LONG)", "'A'"},
             {"CREATE TABLE N (a VARCHAR(300))", "'a'"},
             {"CREATE TABLE N (a VARCHAR(0))", "'a'"},
             {"CREATE TABLE N (a LONG PRIMARY KEY, PRIMARY KEY (a))", "«("},
             {"ALTER TABLE T DROP COLUMN Id", "«COLUMN Id»"},
             {"CREATE INDEX i ON T (Id)", "«INDEX"},
             {"CREATE VIEW V AS SELECT ? AS a FROM T", "'?'"},
         }) {
        EXPECT_THAT(engine.refusal(row.sql), HasSubstr(row.says)) << row.sql;
    }
}

TEST_F(Statements, OfAnyDepthEndInAnAnswer) {
    const auto nested = [](int n, const char* open, const char* inside, const char* close) {
        return QString("SELECT ") + QString(open).repeated(n) + inside + QString(close).repeated(n) +
               " FROM T";
    };
    EXPECT_EQ(engine.refusal(nested(20, "(", "Id", ")")), "");
    EXPECT_EQ(engine.refusal(nested(12, "Trim(", "Nombre", ")")), "");
    EXPECT_EQ(engine.refusal("SELECT Id FROM T WHERE " + QString("Id=1 OR ").repeated(300) + "Id=2"), "");
    EXPECT_EQ(engine.refusal("SELECT " + QString("'a' & ").repeated(300) + "Nombre FROM T"), "");
    const QString complex = QStringLiteral("demasiado compleja");
    for (const QString& sql :
         {nested(100000, "(", "Id", ")"), nested(5000, "-", "Id", ""), nested(5000, "Not ", "Id", ""),
          nested(3000, "IIf(1=1,", "Id", ",2)"), nested(500, "(SELECT ", "1", ")"),
          "SELECT Id FROM T WHERE " + QString("Id=1 OR ").repeated(5000) + "Id=2",
          "SELECT Id FROM " + QString("(").repeated(5000) + "T",
          "SELECT Id" + QString("+1").repeated(5000) + " FROM T",
          "SELECT 1" + QString(" UNION SELECT 1").repeated(5000),
          "SELECT 1 FROM T" + QString(",U").repeated(5000), QString(2'000'000, u' ')}) {
        EXPECT_THAT(engine.refusal(sql), HasSubstr(complex.toStdString())) << sql.left(60).toStdString();
    }
}

TEST_F(Statements, ShareAShapeWhenOnlyLiteralsDiffer) {
    const auto key = [](const char* sql) { return lift(sql).key; };
    EXPECT_EQ(key("SELECT * FROM T WHERE Id=1 AND Nombre='a'"),
              key("SELECT  *  FROM T WHERE Id=22  AND Nombre='12'"));
    EXPECT_EQ(key("SELECT * FROM T WHERE Fecha=#1/1/2010#"), key("SELECT * FROM T WHERE Fecha=#7:30#"));
    EXPECT_EQ(key("INSERT INTO T VALUES ('1','a')"), key("INSERT INTO T VALUES ('ñ','')"));
    EXPECT_EQ(key("UPDATE T SET Nombre='a' WHERE Id=1"), key("UPDATE T SET Nombre='ñ' WHERE Id=2"));
    const std::vector<std::pair<const char*, const char*>> apart = {
        {"SELECT * FROM T WHERE Nombre='n'", "SELECT * FROM T WHERE Nombre='ñ'"},
        {"UPDATE T SET Id=1 WHERE Nombre='n'", "UPDATE T SET Id=1 WHERE Nombre='ñ'"},
        {"SELECT * FROM T WHERE Id=1", "SELECT * FROM T WHERE Id=1.5"},
        {"SELECT * FROM T WHERE Id=1", "SELECT * FROM T WHERE Id='1'"},
        {"SELECT Id FROM T ORDER BY 1", "SELECT Id FROM T ORDER BY 2"},
        {"SELECT TOP 1 Id FROM T", "SELECT TOP 2 Id FROM T"},
        {"SELECT Id FROM T WHERE Nombre Like 'a%'", "SELECT Id FROM T WHERE Nombre Like 'b%'"},
        {"SELECT a b FROM T", "SELECT ab FROM T"},
        {"SELECT 1 AS a", "SELECT 1 AS b"},
        {"SELECT Id FROM T WHERE Id=?", "SELECT Id FROM T WHERE Id=1"},
        {"SELECT Id FROM T WHERE Id < = 1", "SELECT Id FROM T WHERE Id <= 1"},
        {"SELECT [a b] FROM T", "SELECT a b FROM T"},
        {"SELECT Id FROM T GROUP BY Id, 1", "SELECT Id FROM T GROUP BY Id, 2"},
        {"CREATE TABLE a (b VARCHAR(1))", "CREATE TABLE a (b VARCHAR(2))"},
        {"SELECT 99999999999999999999", "SELECT 1"},
    };
    for (const auto& [one, other] : apart)
        EXPECT_NE(key(one), key(other)) << one;
    const Shape shape =
        lift("SELECT 'it''s', 12, 1.5, #3/15/2010# FROM T WHERE Nombre Like 'x%' AND Id=7 ORDER BY 1");
    ASSERT_EQ(shape.literals.size(), 5U);
    EXPECT_EQ(shape.literals[0], basic::Variant(u"it's"));
    EXPECT_EQ(shape.literals[1], basic::Variant(12));
    EXPECT_EQ(shape.literals[2], basic::Variant(1.5));
    EXPECT_EQ(shape.literals[3].toDate().iso(), QString("2010-03-15 00:00:00"));
    EXPECT_EQ(shape.literals[4], basic::Variant(7));
}

TEST_F(Statements, UseTheIndexes) {
    for (const char* sql :
         {"SELECT * FROM T WHERE Anilla='AB..1234'", "SELECT * FROM T WHERE Anilla Like 'AB..%'",
          "SELECT * FROM T WHERE Anilla IN ('A','B')",
          "SELECT U.Id FROM U INNER JOIN T ON T.Anilla=U.Nombre"}) {
        EXPECT_THAT(engine.plan(sql), HasSubstr("PorAnilla")) << sql;
    }
    for (const char* sql : {"SELECT * FROM T WHERE Fecha=#1/1/2010#",
                            "SELECT * FROM T WHERE Fecha BETWEEN #1/1/2010# AND #2/1/2010#",
                            "SELECT * FROM T WHERE Fecha BETWEEN CDate('01/01/2010') AND CDate('31/12/2010')",
                            "SELECT * FROM T WHERE Fecha>='15/03/2010'"}) {
        EXPECT_THAT(engine.plan(sql), HasSubstr("PorFecha")) << sql;
    }
    EXPECT_THAT(engine.plan("SELECT * FROM T WHERE Id='12'"), HasSubstr("SEARCH"));
}

TEST_F(Statements, DefineTables) {
    const Translation made = translate(
        "CREATE TABLE N (Código COUNTER, Texto TEXT(12) NOT NULL DEFAULT 'a''b', Nº LONG, Corto SHORT "
        "DEFAULT -1, "
        "Exacto DECIMAL(7,2), CONSTRAINT Clave PRIMARY KEY (Código, Texto));",
        engine);
    const auto& table = std::get<CreateTable>(made.definition);
    EXPECT_EQ(made.kind, Translation::Kind::Define);
    EXPECT_EQ(table.primaryKeyName, QString("Clave"));
    EXPECT_EQ(table.table.primaryKey, (std::vector<QString>{"Código", "Texto"}));
    ASSERT_EQ(table.table.columns.size(), 5U);
    EXPECT_EQ(table.table.columns[0].type, Type::Counter);
    EXPECT_EQ(table.table.columns[1].width, 12);
    EXPECT_TRUE(table.table.columns[1].notNull);
    EXPECT_EQ(table.table.columns[1].defaultValue, QString("'a''b'"));
    EXPECT_EQ(table.table.columns[3].defaultValue, QString("-1"));
    EXPECT_EQ(table.table.columns[4].scale, 2);
    const auto named = translate("CREATE TABLE N (a LONG CONSTRAINT K PRIMARY KEY, b LONG)", engine);
    EXPECT_EQ(std::get<CreateTable>(named.definition).primaryKeyName, QString("K"));
    const auto key = translate("ALTER TABLE T ADD CONSTRAINT r FOREIGN KEY (Id) REFERENCES U (Id)", engine);
    EXPECT_EQ(std::get<AddForeignKey>(key.definition).key.targetColumn, QString("Id"));
    const auto altered = translate("ALTER TABLE T ALTER COLUMN Nombre TEXT(1)", engine);
    EXPECT_EQ(std::get<AlterColumn>(altered.definition).column.width, 1);
    const auto added = translate("ALTER TABLE T ADD Otro INT", engine);
    EXPECT_EQ(std::get<AddColumn>(added.definition).column.type, Type::Long);
    EXPECT_EQ(std::get<DropConstraint>(translate("ALTER TABLE T DROP CONSTRAINT r", engine).definition).name,
              QString("r"));
    EXPECT_EQ(std::get<DropView>(translate("DROP VIEW V", engine).definition).name, QString("V"));
    const auto view = translate("CREATE VIEW V AS  SELECT Id, #1/1/1900# AS F FROM T ; ", engine);
    EXPECT_EQ(std::get<CreateView>(view.definition).dialectText,
              QString("SELECT Id, #1/1/1900# AS F FROM T"));
    EXPECT_EQ(std::get<CreateView>(view.definition).columns[1].type, Type::Date);
}

/// The file refuses what the dialect would: another program writes through its checks.
TEST_F(Statements, ColumnsAreCheckedByTheFile) {
    engine.run("CREATE TABLE C (b YESNO, o BYTE, d DATETIME, e DECIMAL(3,0), v VARCHAR(2), n DOUBLE)");
    for (const char* wrong :
         {"b) VALUES (1", "o) VALUES (256", "o) VALUES ('x'", "d) VALUES ('2010-02-30 00:00:00'",
          "d) VALUES ('15/03/2010'", "e) VALUES (1000", "e) VALUES (1.5", "v) VALUES ('abc'",
          "v) VALUES (x'00'", "n) VALUES ('uno'"}) {
        EXPECT_THROW(engine.plain((QByteArray("INSERT INTO C (") + wrong + ")").constData()),
                     basic::RuntimeError)
            << wrong;
    }
    engine.plain("INSERT INTO C VALUES (-1, 255, '2010-02-28 23:59:59', -999, 'ñú', 1)");
}

}  // namespace
}  // namespace tarmel::access_sql
