#include "core/ActualizaVersion.h"
#include "core/Programa.h"
#include "core/frm03_Principal.h"
#include "database/EsquemaAnterior.h"
#include "platform/ado/Support.h"
#include "support/Interrupcion.h"

/// A database of the former version becomes one of the present version, in place.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

constexpr int kHojas = 4;
constexpr int kCapturas = 3;  // of a sheet, one of each former sex

class Actualizacion : public Programa {
 protected:
    Actualizacion() {
        QFile::remove(base());
        QFile::copy(baseAnterior(), base());
    }
    void pedirla() const { escribir(u"Tarmel.INI"_s, "[Tarmel]\r\nActualizaci\xf3n=1\r\n"); }
    [[nodiscard]] QByteArray clave() const { return leer(u"Tarmel.INI"_s).trimmed().right(1); }
    static void parar() {
        forms::pantallas().Reset();
        reiniciarSesion();
    }
    static void pulsarActualizarBD() {
        forms::runAction([] { forms::pantallas().Get<frm03_Principal>().mnuActualizarBD_Click(); });
    }

    /// Everything that the file says of tables, keys, indexes, triggers and views, and the program's own
    /// rows.
    static QStringList contenidoDe(const QString& archivo) {
        ado::test::Plain otro(archivo);
        QStringList todo;
        for (const char* consulta :
             {"SELECT group_concat(x, char(10)) FROM (SELECT type || ' ' || name || ' ' || "
              "replace(replace(coalesce(sql, ''), ' ', ''), char(10), '') AS x FROM sqlite_schema ORDER BY "
              "x)",
              "SELECT group_concat(Nombre || Texto || Columnas) FROM tarmel_vistas",
              "SELECT group_concat(Modelo || '.' || Inscripcion || Total) FROM TIPOANILLAS",
              "SELECT group_concat(CodigoDireccion || NombreDireccion) FROM ANIDVI",
              "SELECT group_concat(CodigoSexo || NombreSexo) FROM ICASEX",
              "SELECT group_concat(IdMov || Descripcion) FROM MOVIMIENTOS",
              "SELECT group_concat(CodigoEspecie || Iberica) FROM ANIBRD",
              "SELECT group_concat(x) FROM (SELECT name || seq AS x FROM sqlite_sequence ORDER BY x)"})
            todo += otro.value(consulta).split(u'\n');
        return todo;
    }

    /// Sheets of a ringer and of a group in turn, and a capture of each of the former sexes.
    void ponerHojas() const {
        ado::Connection conexion;
        conexion.OpenFile(base());
        for (int hoja = 1; hoja <= kHojas; ++hoja) {
            conexion.Execute(
                u"INSERT INTO ANICHO (IdCabecera, NumHoja, CodAnillador) VALUES (%1, 12345600000%1, %2)"_s
                    .arg(QString::number(hoja), hoja % 2 == 0 ? u"900123"_s : u"123456"_s));
            for (int n = 0; n < kCapturas; ++n)
                conexion.Execute(
                    u"INSERT INTO ANIAHO (IdCabecera, NumRegistro, TipoRegistro, Anilla, IdEspecie, "
                    "CodigoSexo) VALUES (%1, %2, 'A', 'AC..%1%2', %3, '%4')"_s.arg(hoja)
                        .arg(n + 1)
                        .arg(n + 2)
                        .arg(n));
        }
    }

    /// Whatever happened: sound, and every sheet and capture is there with what was typed.
    void comprobarDatos() const {
        ado::test::Plain otro(base());
        EXPECT_EQ(otro.value("PRAGMA integrity_check"), u"ok");
        EXPECT_EQ(otro.value("PRAGMA foreign_key_check"), QString());
        EXPECT_EQ(otro.value("SELECT COUNT(*) FROM ANICHO WHERE NumHoja = 123456000000 + IdCabecera AND "
                             "CodAnillador IN (123456, 900123)"),
                  QString::number(kHojas));
        EXPECT_EQ(otro.value("SELECT COUNT(*) FROM ANIAHO WHERE Anilla = 'AC..' || IdCabecera || NumRegistro "
                             "AND IdEspecie = NumRegistro + 1 AND CodigoSexo IN (NumRegistro - 1, "
                             "substr('UMF', NumRegistro, 1))"),
                  QString::number(kHojas * kCapturas));
    }

 private:
    static QString baseAnterior() {
        static const QTemporaryDir carpeta;
        static const QString base = [] {
            const QString ruta = carpeta.filePath(u"anterior.mdb"_s);
            prepararBaseAnterior(ruta, {QStringLiteral(TARMEL_DATA_DIR "/anterior"),
                                        QStringLiteral(TARMEL_DATA_DIR "/tables")});
            return ruta;
        }();
        return base;
    }
};

TEST_F(Actualizacion, TerminaEnElEsquemaActual) {
    prepararBase(ruta(u"actual.mdb"_s), QStringLiteral(TARMEL_DATA_DIR "/tables"));
    pedirla();
    arrancar();
    EXPECT_FALSE(NecesitaActualizar());
    parar();
    EXPECT_EQ(contenidoDe(base()), contenidoDe(ruta(u"actual.mdb"_s)));
    EXPECT_EQ(clave(), "0");
    EXPECT_TRUE(host.cajas.empty());
    EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);
}

TEST_F(Actualizacion, PorElMenuConvierteLosDatos) {
    ponerHojas();
    arrancarComo(u"123456"_s);
    EXPECT_TRUE(NecesitaActualizar()) << "without the key, the old schema stays";
    pulsarActualizarBD();
    ASSERT_EQ(host.cajas.size(), 1u);
    EXPECT_EQ(host.cajas[0].text, u"La base de datos ya ha sido actualizada"_s);
    EXPECT_EQ(clave(), "0");
    EXPECT_EQ(filas(u"SELECT Anillador, Grupo FROM ANICHO"_s), u"123456;|;900123|123456;|;900123"_s);
    EXPECT_EQ(filas(u"SELECT CodigoSexo, CodigoEspecie FROM ANIAHO WHERE IdCabecera=1"_s),
              u"U;00010|M;00020|F;00021"_s);
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIBRD WHERE CodigoEspecie='12470' AND Iberica=0"_s), u"1"_s);
    parar();
    comprobarDatos();
}

TEST_F(Actualizacion, OtraVezFallaYTerminaMientrasEsteLaClave) {
    pedirla();
    arrancar();
    parar();
    pedirla();
    for (int vez = 0; vez < 2; ++vez) {
        EXPECT_TRUE(termina([] { Main(); }));
        ASSERT_EQ(host.cajas.size(), 1u);
        EXPECT_TRUE(host.cajas[0].text.startsWith(u"Error -2147217900: "_s))
            << host.cajas[0].text.toStdString();
        EXPECT_TRUE(host.cajas[0].text.contains(u"ICASEX"_s));
        EXPECT_EQ(host.cajas[0].title, u"ERROR"_s);
        EXPECT_EQ(host.cajas[0].buttons, forms::box::OK);
        EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);
        EXPECT_EQ(clave(), "1");
        EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIDVI"_s), u"18"_s) << "made anew before";
        host.cajas.clear();
        parar();
    }
}

TEST_F(Actualizacion, SinSexosNoSePuedeSaber) {
    arrancarComo(u"123456"_s);
    sql(u"DELETE FROM ICASEX"_s);
    const auto error = ado::test::errorOf([] { (void)NecesitaActualizar(); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number(), basic::error::NoCurrentRecord);
}

TEST_F(Actualizacion, ClavesRotasNoLaDetienen) {
    ponerHojas();
    arrancar();
    gConexion.ExecutePlain("DROP INDEX ANIMAT_CodigoAnillador_Unico");
    sql(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador) VALUES (1, 123456)"_s);
    sql(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador) VALUES (2, 123456)"_s);
    sql(u"INSERT INTO ANICHO (IdCabecera, NumHoja) VALUES (9, -1)"_s);  // without an owner
    pedirla();
    EXPECT_TRUE(ActualizarVersion());
    EXPECT_EQ(clave(), "0");
    EXPECT_EQ(filas(u"SELECT Anillador, Grupo FROM ANICHO WHERE IdCabecera=9"_s), u";"_s);
    parar();
    EXPECT_EQ(
        ado::test::Plain(base()).value(
            "SELECT group_concat(name) FROM pragma_index_list('ANIMAT') WHERE name LIKE '%Codigo%Ani%'"),
        u"ANIMAT_CodigoAnillador"_s);
}

// --- Ends in the middle

class ActualizacionAMedias : public Actualizacion {
 protected:
    /// The file as it was before, without what a dead process has left beside it.
    void reponer(const QByteArray& antes) const {
        for (const auto* otro : {"-wal", "-shm", "-journal"})
            QFile::remove(base() + QLatin1StringView(otro));
        escribir(u"Tarmel_11.mdb"_s, antes);
        pedirla();
    }
};

TEST_F(ActualizacionAMedias, MuertaEnCualquierMomentoNoPierdeNada) {
    ponerHojas();
    pedirla();
    const QByteArray antes = leer(u"Tarmel_11.mdb"_s);
    const auto actualizar = [](const Avisar& avisar) {
        registrarPantallas();
        avisar("empieza");
        Main();
    };
    const Corrida entera = correr(actualizar);
    ASSERT_EQ(entera.codigo, 0);
    comprobarDatos();
    repartirMuertes("upgrade", entera.escrituras, [&](int momento) {
        reponer(antes);
        EXPECT_TRUE(correr(actualizar, momento).muerto);
        // What is done stays done; the key still asks, unless the run had come to its end.
        comprobarDatos();
        const bool hecha =
            ado::test::Plain(base()).value("SELECT COUNT(*) FROM sqlite_schema WHERE type = 'view'") == u"4";
        EXPECT_TRUE(clave() == "1" || hecha);
    });
}

}  // namespace
}  // namespace tarmel
