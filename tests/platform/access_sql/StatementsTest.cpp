#include <gtest/gtest.h>

#include "platform/access_sql/TestEngine.h"

/// Every statement that the program runs, on tables of the former version: the file begins with the upgrade.
namespace tarmel::access_sql {
namespace {

const QString kFolder = QStringLiteral(TARMEL_TESTS_DIR "/platform/access_sql/");

class ProgramStatements : public testing::Test {
 protected:
    static void SetUpTestSuite() {
        engine = std::make_unique<TestEngine>();
        engine->runFile(kFolder + "schema.sql");
        for (const QString& statement : statementsOf(kFolder + "statements.sql")) {
            const std::vector<basic::Variant> range{1.0, 9e14};
            try {
                const auto rows = engine->run(statement, range);
                counts[statement] = static_cast<int>(rows.size());
            } catch (const std::exception& error) {
                ADD_FAILURE() << statement.toStdString() << "\n" << error.what();
            }
        }
    }
    static void TearDownTestSuite() { engine.reset(); }

    static std::unique_ptr<TestEngine> engine;
    static std::map<QString, int> counts;  ///< rows of each statement when the whole file ran
};

std::unique_ptr<TestEngine> ProgramStatements::engine;
std::map<QString, int> ProgramStatements::counts;

/// Statements with a join, a comparison of unlike types or a view must find their rows, not only run.
TEST_F(ProgramStatements, FindRows) {
    int queries = 0;
    for (const auto& [statement, count] : counts) {
        if (!statement.startsWith("select", Qt::CaseInsensitive)) continue;
        ++queries;
        const bool joined = statement.contains("JOIN", Qt::CaseInsensitive) &&
                            !statement.contains("OrigenDatos<>0") && !statement.contains("='R'") &&
                            !statement.contains("'1234' and") && !statement.contains("NumInicial <=") &&
                            !statement.contains("MOVIMIENTOS.IdMov = ");
        if (joined) {
            EXPECT_GT(count, 0) << statement.toStdString();
        }
    }
    EXPECT_GT(queries, 100);
}

TEST_F(ProgramStatements, LeaveWhatTheyShould) {
    EXPECT_EQ(engine->rows("SELECT CodigoSexo FROM ICASEX ORDER BY CodigoSexo"), "F;M;U");
    EXPECT_EQ(
        engine->rows("SELECT DISTINCT CodigoSexo, CodigoEspecie FROM ANIAHO WHERE IdCabecera=2 ORDER BY 1"),
        "F|16360");
    EXPECT_EQ(
        engine->rows("SELECT Anillador, Grupo FROM ANICHO WHERE IdCabecera IN (1,2) ORDER BY IdCabecera"),
        "123456|Null;Null|900123");
    EXPECT_EQ(engine->rows("SELECT CodigoAnillador, UltimoEnvio FROM ANIMAT ORDER BY CodigoAnillador"),
              "123456|8;234567|7;345678|3");
    EXPECT_EQ(engine->rows("SELECT NumHoja, NumEAnillador, NumEGrupo FROM ANICHO WHERE IdCabecera IN (1,2)"),
              "123456000001|8|7;900123000001|0|7");
    EXPECT_EQ(engine->rows("SELECT CoordinadorGrupo FROM ANIMAT WHERE CodigoAnillador=345678"), "-1");
    EXPECT_EQ(engine->rows("SELECT * FROM ICABAL"), "101|1|2;205|0|1");
    EXPECT_EQ(engine->rows("SELECT Fecha, Cantidad FROM ALMACEN"), "2010-03-15 00:00:00|1000");
}

/// Other programs read the views: nothing of ours may stand in them.
TEST_F(ProgramStatements, ViewsArePlain) {
    int views = 0;
    for (const QString& statement : statementsOf(kFolder + "statements.sql")) {
        if (!statement.startsWith("CREATE VIEW")) continue;
        ++views;
        const QByteArray text = std::get<CreateView>(translate(statement, *engine).definition).sqliteText;
        EXPECT_FALSE(text.contains("tarmel_") || text.contains("COLLATE ES")) << text.toStdString();
    }
    EXPECT_EQ(views, 4);
}

TEST_F(ProgramStatements, ViewsFindDuplicates) {
    EXPECT_EQ(engine->rows("SELECT Anilla, TotAnillas FROM Anillamientos_Dup"), "AB..1234|2");
    EXPECT_EQ(engine->rows("SELECT IdCabecera, NumRegistro, NombreEspecie, DifFecha FROM Datos_Duplicados "
                           "ORDER BY IdCabecera"),
              "1|1|Sylvia atricapilla|40250.0;2|1|Fringilla coelebs|40251.0");
    EXPECT_EQ(engine->rows("SELECT CodigoGrupo, Anilla, MUNICIPIO FROM Datos_Excel WHERE TipoRegistro='R'"),
              "Null|AB..1235|Ávila");
}

}  // namespace
}  // namespace tarmel::access_sql
