#include "Support.h"
#include "platform/ado/RowBuffer.h"

namespace tarmel::ado::test {

using namespace Qt::StringLiterals;

namespace {

class RecordsetTest : public MemoryTest {
 protected:
    void SetUp() override {
        MemoryTest::SetUp();
        run(u"CREATE TABLE Hoja (IdCabecera LONG PRIMARY KEY, NumHoja DECIMAL(15,0), Observaciones TEXT(250))"_s);
        run(u"CREATE TABLE Captura (IdCabecera LONG, N LONG, Peso DOUBLE, Fecha DATE, Viva YESNO, "
            u"Observaciones TEXT(250), "
            "PRIMARY KEY (IdCabecera, N))"_s);
        run(u"INSERT INTO Hoja VALUES (7, 123456000001, 'de la hoja')"_s);
        for (int n = 1; n <= 100; ++n) {
            run(u"INSERT INTO Captura VALUES (7, %1, '%1,5', #03/15/2010#, -1, 'captura %1')"_s.arg(n));
        }
    }
    void open(Recordset& rs, const QString& sql, Cursor cursor = Cursor::Keyset) {
        rs.Open(sql, connection, cursor, Lock::Optimistic);
    }
};

TEST_F(RecordsetTest, GivesValuesByTheTypeOfTheColumn) {
    Recordset rs;
    open(rs,
         u"SELECT NumHoja, N, Peso, Fecha, Viva, Captura.Observaciones, Null AS Nada, MAX(Peso) AS M FROM "
         u"Hoja INNER "
         "JOIN Captura ON Hoja.IdCabecera = Captura.IdCabecera GROUP BY NumHoja, N, Peso, Fecha, Viva, "
         "Captura.Observaciones ORDER BY N"_s);
    EXPECT_EQ(rs.Value(u"NumHoja"_s), Variant(qint64{123456000001}));
    EXPECT_EQ(rs.Value(u"n"_s), Variant(1));
    EXPECT_EQ(rs.Value(u"PESO"_s), Variant(1.5));
    EXPECT_EQ(rs.Value(u"Fecha"_s), Variant(basic::Date::of(2010, 3, 15)));
    EXPECT_EQ(rs.Value(u"Viva"_s), Variant(true));
    EXPECT_EQ(rs.Value(5), Variant(u"captura 1"_s));
    EXPECT_TRUE(rs.Value(u"Nada"_s).isNull());
    EXPECT_EQ(rs.Text(u"NumHoja"_s), u"123456000001");
    EXPECT_EQ(rs.Text(u"Fecha"_s), u"15/03/2010");
    EXPECT_EQ(rs.Text(u"M"_s), u"1,5");
}

TEST_F(RecordsetTest, FindsFieldsByNameTableAndPosition) {
    Recordset rs;
    open(rs, u"SELECT * FROM Hoja INNER JOIN Captura ON Hoja.IdCabecera = Captura.IdCabecera ORDER BY N"_s);
    EXPECT_EQ(rs.Text(u"observaciones"_s), u"de la hoja");
    EXPECT_EQ(rs.Text(u"Captura.Observaciones"_s), u"captura 1");
    EXPECT_EQ(rs.Text(u"CAPTURA.OBSERVACIONES"_s), u"captura 1");
    EXPECT_EQ(rs.Text(u"NoEsta.N"_s), u"1");
    EXPECT_EQ(rs.FieldCount(), 9);
    EXPECT_EQ(rs.FieldAt(8).name, u"Observaciones");
    for (const QString& name : {u"NoEsta"_s, u"Captura.NumHoja"_s, u""_s}) {
        EXPECT_EQ(errorOf([&] { (void)rs.Value(name); })->number(), 3265) << name.toStdString();
    }
    EXPECT_EQ(errorOf([&] { (void)rs.Value(9); })->number(), 3265);
}

TEST_F(RecordsetTest, MovesBetweenItsEnds) {
    Recordset rs;
    open(rs, u"SELECT N FROM Captura WHERE N > 98 ORDER BY N"_s);
    EXPECT_FALSE(rs.Eof() || rs.Bof());
    rs.MoveNext();
    EXPECT_EQ(rs.Text(0), u"100");
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(errorOf([&] { (void)rs.Value(0); })->number(), 3021);
    EXPECT_EQ(errorOf([&] { rs.MoveNext(); })->number(), 3021);
    rs.MoveFirst();
    EXPECT_EQ(rs.Text(0), u"99");
    open(rs, u"SELECT N FROM Captura WHERE N > 100"_s);
    EXPECT_TRUE(rs.Eof() && rs.Bof());
    EXPECT_EQ(rs.RecordCount(), 0);
    EXPECT_EQ(errorOf([&] { rs.MoveFirst(); })->number(), 3021);
}

TEST_F(RecordsetTest, CountsForKeysetAndStaticOnly) {
    for (const auto& [cursor, count] : {std::pair{Cursor::Keyset, 100},
                                        {Cursor::Static, 100},
                                        {Cursor::ForwardOnly, -1},
                                        {Cursor::Unspecified, -1},
                                        {Cursor::Dynamic, -1}}) {
        Recordset rs;
        open(rs, u"SELECT * FROM Captura"_s, cursor);
        EXPECT_EQ(rs.RecordCount(), count);
        EXPECT_EQ(rs.Text(u"Observaciones"_s), u"captura 1");
    }
}

TEST_F(RecordsetTest, StaysClosedForACommandAndSaysWhatItChanged) {
    Recordset rs;
    open(rs, u"DELETE FROM Captura WHERE N <= 30"_s);
    EXPECT_FALSE(rs.IsOpen());
    EXPECT_EQ(rs.RecordsAffected(), 30);
    EXPECT_EQ(errorOf([&] { (void)rs.Eof(); })->number(), 3704);
    EXPECT_EQ(errorOf([&] { rs.Close(); })->number(), 3704);
    EXPECT_EQ(rows(u"SELECT Count(*) FROM Captura"_s), u"70");
    Connection closed;
    EXPECT_EQ(errorOf([&] { rs.Open(u"SELECT 1"_s, closed); })->number(), 3709);
}

/// Lists fill while events run: whatever writes in between, the list shows what was there.
TEST_F(RecordsetTest, ShowsTheRowsAsTheyWereWhenItWasOpened) {
    const QString query = u"SELECT N, Observaciones FROM Captura ORDER BY N"_s;
    const auto check = [&](const QString& interference) {
        Recordset rs;
        open(rs, query, Cursor::ForwardOnly);
        Recordset twin;  // the same shape while the first one reads
        open(twin, query, Cursor::ForwardOnly);
        twin.MoveNext();
        run(interference);
        int seen = 0;
        for (; !rs.Eof(); rs.MoveNext(), ++seen) {
            EXPECT_EQ(rs.Value(0), Variant(seen + 1));
            EXPECT_EQ(rs.Text(1), u"captura %1"_s.arg(seen + 1));
        }
        EXPECT_EQ(seen, 100) << interference.toStdString();
        EXPECT_EQ(twin.Text(0), u"2");
    };
    check(u"UPDATE Captura SET Peso = 0"_s);
    check(u"ALTER TABLE Captura ADD COLUMN Nueva TEXT(5)"_s);
    check(u"ALTER TABLE Captura ALTER COLUMN Peso TEXT(20)"_s);
    {
        Connection::Batch batch(connection);
        check(u"DELETE FROM Captura WHERE N < 50"_s);
    }
    check(u"DELETE FROM Captura"_s);
}

TEST_F(RecordsetTest, RunsAgainOnRequery) {
    Recordset rs;
    rs.Open(u"SELECT Count(*) FROM Captura WHERE N > ?"_s, connection, Cursor::Keyset, Lock::Optimistic, -1,
            {Variant(90)});
    EXPECT_EQ(rs.Text(0), u"10");
    run(u"DELETE FROM Captura WHERE N > 95"_s);
    EXPECT_EQ(rs.Text(0), u"10");
    rs.Requery();
    EXPECT_EQ(rs.Text(0), u"5");
}

TEST_F(RecordsetTest, TakesValuesByPositionAndMissesThoseThatAreNotGiven) {
    EXPECT_EQ(rowsOf(connection, u"SELECT N FROM Captura WHERE N BETWEEN ? AND ? ORDER BY N"_s,
                     {Variant(3), Variant(5)}),
              u"3|4|5");
    const auto error = errorOf([&] { rows(u"SELECT N FROM Captura WHERE N = ?"_s); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number(), -2147217900);
    EXPECT_EQ(error->description(), u"Pocos parámetros. Se esperaba 1.");
}

/// One shape with other values, and the same text after the table has changed.
TEST_F(RecordsetTest, BindsAnewAndTranslatesAnewAfterDefinitions) {
    for (int n = 1; n <= 3; ++n)
        EXPECT_EQ(rows(u"SELECT N FROM Captura WHERE N = %1"_s.arg(n)), QString::number(n));
    EXPECT_EQ(rows(u"SELECT * FROM Hoja"_s), u"7;123456000001;de la hoja");
    run(u"ALTER TABLE Hoja ADD COLUMN Grupo INT"_s);
    run(u"UPDATE Hoja SET Grupo = '900123'"_s);
    EXPECT_EQ(rows(u"SELECT * FROM Hoja"_s), u"7;123456000001;de la hoja;900123");
    run(u"DROP TABLE Hoja"_s);
    EXPECT_TRUE(errorOf([&] { rows(u"SELECT * FROM Hoja"_s); }));
}

/// More shapes than the cache keeps, each used again later.
TEST_F(RecordsetTest, OutlivesItsCache) {
    const auto shape = [](int n) { return u"SELECT Max(N) AS M%1 FROM Captura"_s.arg(n); };
    for (int pass = 0; pass < 2; ++pass) {
        for (int n = 0; n < 900; ++n)
            ASSERT_EQ(rows(shape(n)), u"100");
    }
}

TEST_F(RecordsetTest, RollsABatchBackUnlessItIsCommitted) {
    {
        Connection::Batch outer(connection);
        run(u"DELETE FROM Captura WHERE N <= 10"_s);
        {
            Connection::Batch inner(connection);
            run(u"DELETE FROM Captura WHERE N <= 50"_s);
        }
        EXPECT_TRUE(errorOf([&] { run(u"INSERT INTO Captura (IdCabecera, N) VALUES (7, 11)"_s); }));
        EXPECT_EQ(rows(u"SELECT Count(*) FROM Captura"_s), u"90");
        outer.commit();
    }
    {
        Connection::Batch lost(connection);
        run(u"DELETE FROM Captura"_s);
        run(u"CREATE TABLE Perdida (A LONG)"_s);
        EXPECT_EQ(rows(u"SELECT Count(*) FROM Perdida"_s), u"0");
    }
    EXPECT_FALSE(connection.schema().table(u"Perdida"));
    EXPECT_TRUE(errorOf([&] { rows(u"SELECT Count(*) FROM Perdida"_s); }));
    EXPECT_EQ(rows(u"SELECT Count(*) FROM Captura"_s), u"90");
}

/// A conversion can fail far behind the first rows: what stands before it is there, and the failure is told
/// once reached.
TEST_F(RecordsetTest, TellsOfTheTimeThatALongStatementTakes) {
    const QString slow = u"SELECT Count(*) FROM x AS a, x AS b, x AS c, x AS d"_s;
    connection.Execute(u"CREATE TABLE x (n INTEGER)"_s);
    for (int n = 0; n < 20; ++n)
        connection.Execute(u"INSERT INTO x VALUES (%1)"_s.arg(n));
    int turns = 0;
    {
        const Connection::Interlude interlude(connection, [&turns] { ++turns; });
        EXPECT_EQ(rowsOf(connection, slow), u"160000"_s);
    }
    EXPECT_GT(turns, 0);
    const int before = turns;
    EXPECT_EQ(rowsOf(connection, slow), u"160000"_s);
    EXPECT_EQ(turns, before);
}

TEST_F(RecordsetTest, MeetsAFailureAtItsRow) {
    run(u"UPDATE Captura SET Observaciones = '80' WHERE N < 80"_s);
    Recordset rs;
    open(rs, u"SELECT CLng(Observaciones) AS V FROM Captura"_s);
    run(u"DELETE FROM Hoja"_s);
    int read = 0;
    const auto error = errorOf([&] {
        for (; !rs.Eof(); rs.MoveNext())
            ++read;
    });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number(), -2147217900);
    EXPECT_EQ(read, 79);
}

TEST_F(RecordsetTest, TellsThatTheDiskIsFull) {
    connection.ExecutePlain("PRAGMA max_page_count=20");
    const auto error = errorOf([&] {
        for (int n = 0; n < 2000; ++n)
            run(u"INSERT INTO Hoja VALUES (%1, 1, '%2')"_s.arg(n + 100).arg(QString(200, u'x')));
    });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number(), -2147217900);
    EXPECT_TRUE(error->description().contains(u"disco"_s)) << error->what();
    EXPECT_EQ(rows(u"SELECT Count(*) FROM Captura"_s), u"100");
}

/// A capture of 41 columns, as full as they are typed, in a few hundred bytes.
TEST(RowBufferTest, KeepsRowsSmallAndValuesExact) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &db), SQLITE_OK);
    const QByteArray sql = "SELECT n, -n, 2147483647, n / 8.0, NULL, 'AC..' || n, '2010-03-15 07:30:00', -1" +
                           QByteArray(", 'E'").repeated(33) +
                           " FROM (WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < "
                           "5000) SELECT n FROM c)";
    sqlite3_stmt* statement = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(db, sql.constData(), -1, &statement, nullptr), SQLITE_OK);
    detail::RowBuffer rows;
    while (sqlite3_step(statement) == SQLITE_ROW)
        rows.append(statement);
    using access_sql::Type;
    ASSERT_EQ(rows.size(), 5000U);
    EXPECT_LT(rows.bytes() / rows.size(), 300U);
    for (const std::size_t row : {std::size_t{4999}, std::size_t{0}, std::size_t{128}}) {
        const auto n = static_cast<qint64>(row) + 1;
        EXPECT_EQ(rows.value(row, 40, Type::Text), Variant(u"E"_s));
        EXPECT_EQ(rows.value(row, 0, Type::Long), Variant(n));
        EXPECT_EQ(rows.value(row, 1, Type::Long), Variant(-n));
        EXPECT_EQ(rows.value(row, 2, Type::Long), Variant(qint64{2147483647}));
        EXPECT_EQ(rows.value(row, 3, Type::Double), Variant(static_cast<double>(n) / 8));
        EXPECT_TRUE(rows.value(row, 4, Type::Text).isNull());
        EXPECT_EQ(rows.value(row, 5, Type::Text), Variant(u"AC..%1"_s.arg(n)));
        EXPECT_EQ(rows.value(row, 6, Type::Date), Variant(basic::Date::of(2010, 3, 15, 7, 30)));
        EXPECT_EQ(rows.value(row, 7, Type::Boolean), Variant(true));
    }
    sqlite3_finalize(statement);
    sqlite3_close(db);
}

}  // namespace
}  // namespace tarmel::ado::test
