#include <sys/stat.h>

#include "core/Programa.h"
#include "core/frm03_Principal.h"
#include "platform/ado/Support.h"
#include "support/DiscoAveriado.h"
#include "support/Interrupcion.h"
#include "support/OtroProceso.h"

/// The database is rewritten and the former file kept, whatever happens meanwhile; exported files are
/// deleted.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;
using Averia = DiscoAveriado::Averia;
using ado::test::Plain;

class Compactacion : public Programa {
 protected:
    /// A database with holes in it.
    void SetUp() override {
        arrancarComo(u"123456"_s);
        for (int hoja = 1; hoja <= 40; ++hoja) {
            sql(u"INSERT INTO ANICHO (IdCabecera, NumHoja, CodAnillador, Observaciones) VALUES (-1, %1, "
                u"123456, "
                "'%2')"_s.arg(QString::number(123456000000 + hoja), QString(200, u'ñ')));
            sql(u"UPDATE ANICHO SET IdCabecera = IdCab WHERE IdCabecera = -1 "_s);
        }
        sql(u"DELETE FROM ANICHO WHERE IdCabecera > 10"_s);
        sql(u"DELETE FROM ANILOC WHERE IdLoc > 2000"_s);
        contenido_ = contenido();
    }
    static void parar() {
        forms::pantallas().Reset();
        reiniciarSesion();
    }
    static void pulsarCompactar() {
        forms::runAction([] { forms::pantallas().Get<frm03_Principal>().mnuCompactar_Click(); });
    }
    /// All rows of all tables, the counters' last numbers, and what the file says of itself.
    static QString contenido() {
        QString todo;
        for (const QString& tabla : gConexion.tableNames())
            todo += tabla + u'\n' + filas(u"SELECT * FROM [%1]"_s.arg(tabla)) + u'\n';
        return todo;
    }
    [[nodiscard]] QString esquema() const {
        return Plain(base()).value(
            "SELECT group_concat(x, char(10)) FROM (SELECT type || name || coalesce(sql, '') AS x FROM "
            "sqlite_schema UNION SELECT name || seq FROM sqlite_sequence UNION SELECT Nombre || Texto || "
            "Columnas FROM tarmel_vistas ORDER BY x)");
    }
    /// The program starts, and everything is there.
    void comprobarQueEstaTodo() {
        parar();
        host.cajas.clear();
        ASSERT_FALSE(termina([] { Main(); })) << host.textosDeCajas().toStdString();
        EXPECT_EQ(contenido(), contenido_);
        EXPECT_EQ(Plain(base()).value("PRAGMA integrity_check"), u"ok");
        parar();
    }
    [[nodiscard]] QString anterior() const { return ruta(u"Tarmel_11.bak"_s); }
    [[nodiscard]] QString copia() const { return ruta(u"Tarmel_11.999"_s); }

    QString contenido_;
    OtroPrograma otro_;
};

TEST_F(Compactacion, ReescribeLaBaseYGuardaLaAnterior) {
    parar();
    const QString esquemaAntes = esquema();
    const QByteArray antes = leer(u"Tarmel_11.mdb"_s);
    escribir(u"Tarmel_11.999"_s, "de otra vez");
    escribir(u"Tarmel_11.bak"_s, "de la vez anterior");
    arrancarComo(u"123456"_s);
    forms::pantallas().Get<frm03_Principal>().mnuListadoHojas_Click();
    host.cajas.clear();
    pulsarCompactar();

    ASSERT_EQ(host.cajas.size(), 2u) << host.textosDeCajas().toStdString();
    EXPECT_EQ(host.cajas[1].text, u"El proceso de compactación ha terminado correctamente."_s);
    EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);
    EXPECT_EQ(forms::pantallas().Loaded(u"frm06_HojasCampo"_s), nullptr);
    EXPECT_EQ(gAnillador[0], u"123456"_s) << "the session goes on";
    EXPECT_EQ(contenido(), contenido_);
    EXPECT_LT(QFileInfo(base()).size(), antes.size());
    EXPECT_EQ(QFileInfo(anterior()).size(), antes.size());
    EXPECT_FALSE(QFile::exists(copia()));
    sql(u"INSERT INTO ANICHO (IdCabecera, NumHoja) VALUES (-1, -1)"_s);
    EXPECT_EQ(filas(u"SELECT IdCab FROM ANICHO WHERE IdCabecera = -1"_s), u"41"_s) << "no number twice";
    sql(u"DELETE FROM ANICHO WHERE IdCabecera = -1"_s);
    parar();
    EXPECT_EQ(esquema(), QString(esquemaAntes).replace(u"ANICHO40"_s, u"ANICHO41"_s));

    const QByteArray primera = leer(u"Tarmel_11.mdb"_s);
    arrancarComo(u"123456"_s);
    pulsarCompactar();
    EXPECT_EQ(QFileInfo(anterior()).size(), primera.size()) << "the file of that moment";
}

TEST_F(Compactacion, OtroProgramaTieneLaBase) {
    for (const char* sentencias :
         {"BEGIN; SELECT * FROM ANIMAT", "PRAGMA query_only=ON; SELECT 1 FROM ANIMAT"}) {
        otro_.abrir(base(), sentencias);
        host.cajas.clear();
        pulsarCompactar();
        ASSERT_EQ(host.cajas.size(), 2u);
        EXPECT_EQ(host.cajas[1].title, u"¡ERROR al ejecutar SQL!"_s);
        EXPECT_EQ(host.cajas[1].buttons, forms::box::Exclamation);
        EXPECT_EQ(host.cajas[1].text,
                  u"Error nº: [-2147467259] Motor de base de datos\rLa base de datos está en "
                  u"uso por otro programa."_s);
        EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);
        EXPECT_FALSE(QFile::exists(anterior()) || QFile::exists(copia()));
        EXPECT_EQ(contenido(), contenido_) << "the connection is open again";
    }
    otro_.cerrar();
    pulsarCompactar();
    EXPECT_EQ(host.cajas.back().buttons, forms::box::Information);
    comprobarQueEstaTodo();
}

TEST_F(Compactacion, LaCopiaAnteriorNoSePuedeQuitar) {
    escribir(u"Tarmel_11.bak"_s, "x");
    QFile::setPermissions(anterior(), QFile::ReadOwner);
    pulsarCompactar();
    ASSERT_EQ(host.cajas.size(), 2u);
    EXPECT_TRUE(host.cajas[1].text.startsWith(u"Error nº: [75] "_s));
    EXPECT_EQ(leer(u"Tarmel_11.bak"_s), "x");
    comprobarQueEstaTodo();
}

TEST_F(Compactacion, CarpetaDeSoloLectura) {
    parar();
    const Corrida corrida = correrComoUsuario(ruta({}), [this](const Avisar& avisar) {
        Main();
        identificar(u"123456"_s);
        host.cajas.clear();
        ::chmod(ruta({}).toUtf8().constData(), 0555);
        try {
            pulsarCompactar();
        } catch (const forms::ProgramEnd&) {
        }
        avisar(host.textosDeCajas().replace(u'\r', u' ').toUtf8());
    });
    ::chmod(ruta({}).toUtf8().constData(), 0755);
    ASSERT_EQ(corrida.codigo, 0);
    EXPECT_TRUE(corrida.avisos.value(0).contains("Error n")) << corrida.avisos.value(0).toStdString();
    EXPECT_FALSE(QFile::exists(anterior()) || QFile::exists(copia()));
    comprobarQueEstaTodo();
}

// --- Died between the renames

struct ResteDeOtraVez {
    const char* nombre;
    bool copia;       ///< a .999 is there
    bool copiaBuena;  ///< and whole
    bool anterior;    ///< a .bak is there
    bool terminada;   ///< the program starts with all that was there
};

class CompactacionAMedias : public Compactacion, public testing::WithParamInterface<ResteDeOtraVez> {};

TEST_P(CompactacionAMedias, SeTerminaAlArrancar) {
    const ResteDeOtraVez& caso = GetParam();
    parar();
    QByteArray buena = leer(u"Tarmel_11.mdb"_s);
    ASSERT_TRUE(QFile::remove(base()));
    if (caso.anterior) escribir(u"Tarmel_11.bak"_s, buena);
    if (caso.copia)
        escribir(u"Tarmel_11.999"_s,
                 caso.copiaBuena ? buena : buena.replace(4096, 40960, QByteArray(40960, 'x')));
    escribir(u"Tarmel_11.mdb-wal"_s, "of another file");
    host.cajas.clear();
    EXPECT_EQ(termina([] { Main(); }), !caso.terminada);
    if (!caso.terminada) {
        EXPECT_TRUE(host.textosDeCajas().startsWith(u"El fichero de base de datos TARMEL.MDB no existe."_s));
        EXPECT_EQ(QFile::exists(copia()), caso.copia);
        return;
    }
    EXPECT_TRUE(host.cajas.empty()) << host.textosDeCajas().toStdString();
    EXPECT_EQ(contenido(), contenido_);
    EXPECT_TRUE(QFile::exists(anterior()));
    EXPECT_EQ(QFile::exists(copia()), !caso.copiaBuena);
}

INSTANTIATE_TEST_SUITE_P(, CompactacionAMedias,
                         testing::Values(ResteDeOtraVez{"CopiaBuena", true, true, true, true},
                                         ResteDeOtraVez{"CopiaMala", true, false, true, true},
                                         ResteDeOtraVez{"SoloAnterior", false, false, true, false},
                                         ResteDeOtraVez{"SoloCopia", true, true, false, false}),
                         [](const auto& caso) { return std::string(caso.param.nombre); });

TEST_F(Compactacion, MuertaEnCualquierMomentoNoPierdeNada) {
    parar();
    const auto compactar = [this](const Avisar& avisar) {
        Main();
        identificar(u"123456"_s);
        avisar("empieza");
        pulsarCompactar();
    };
    const Corrida entera = correr(compactar);
    ASSERT_EQ(entera.codigo, 0);
    comprobarQueEstaTodo();
    int sinBase = 0;
    repartirMuertes(
        "compaction", entera.escrituras,
        [&](int momento) {
            EXPECT_TRUE(correr(compactar, momento).muerto);
            if (!QFile::exists(base())) ++sinBase;
            comprobarQueEstaTodo();
        },
        40);
    EXPECT_GT(sinBase, 0) << "died between the renames, too";
}

TEST_F(Compactacion, DiscoLlenoOAveriadoNoPierdeNada) {
    parar();
    DiscoAveriado disco;
    const auto compactar = [&] {
        arrancarComo(u"123456"_s);
        host.cajas.clear();
    };
    compactar();
    disco.reparar();
    pulsarCompactar();
    const int conSitio = disco.operaciones(Averia::Lleno);
    const int todas = disco.operaciones(Averia::Error);
    for (const Averia averia : {Averia::Lleno, Averia::Error}) {
        const int operaciones = averia == Averia::Lleno ? conSitio : todas;
        int fallos = 0;
        for (const int momento : momentos(operaciones, muertes() / 2, 5)) {
            SCOPED_TRACE(momento);
            parar();
            compactar();
            // One refusal alone lets the program go on, and may not matter; a disk that stays full may end
            // it.
            const bool unaSola = momento % 2 == 0;
            disco.averiar(averia, momento, unaSola);
            (void)termina([] { pulsarCompactar(); });
            fallos += disco.haFallado() ? 1 : 0;
            if (disco.haFallado() && !unaSola) {
                EXPECT_NE(host.cajas.back().buttons, forms::box::Information) << "a message";
            }
            disco.reparar();
            comprobarQueEstaTodo();
        }
        std::printf("compaction: %d failures of the disk over %d operations\n", fallos, operaciones);
        EXPECT_GT(fallos, 0);
    }
}

TEST_F(Compactacion, BorraLosFicherosExportados) {
    QDir(ruta({})).mkdir(u"Datos"_s);
    for (const auto* nombre : {"Datos/a.zip", "Datos/b.ZIP", "Datos/c.txt", "Datos/d.csv", "x.BAK", "y.zip"})
        escribir(QLatin1StringView(nombre), "x");
    escribir(u"Datos/z.txt"_s, "x");
    QFile::setPermissions(ruta(u"Datos/z.txt"_s), QFile::ReadOwner);
    for (int vez = 0; vez < 2; ++vez) {  // also without the folder
        forms::pantallas().Get<frm03_Principal>().mnuBorrarFicherosExportados_Click();
        EXPECT_TRUE(host.textosDeCajas().endsWith(u"|Se han borrado los ficheros."_s));
        EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);
        if (vez == 0) {
            EXPECT_EQ(QDir(ruta(u"Datos"_s)).entryList(QDir::Files), (QStringList{u"d.csv"_s, u"z.txt"_s}));
        }
        QDir(ruta(u"Datos"_s)).removeRecursively();
    }
    EXPECT_TRUE(QFile::exists(ruta(u"x.BAK"_s)) && QFile::exists(ruta(u"y.zip"_s)));
}

}  // namespace
}  // namespace tarmel
