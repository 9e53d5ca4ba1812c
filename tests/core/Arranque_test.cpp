#include <sqlite3.h>

#include <functional>

#include "core/ActualizaVersion.h"
#include "core/Programa.h"
#include "core/frm01_Inicio.h"
#include "core/frm03_Principal.h"
#include "support/Interrupcion.h"

/// The run of the program from its start to the identification, and what can stop it.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

class Arranque : public Programa {};

TEST_F(Arranque, LlegaALaIdentificacion) {
    escribir(u"a.TMP"_s, "x");
    escribir(u"b.tmp"_s, "x");
    escribir(u"notas.txt"_s, "x");
    arrancar();

    EXPECT_EQ(forms::pantallas().Loaded(frm01_Inicio::kName), nullptr);
    ASSERT_NE(forms::pantallas().Loaded<frm02_Matricula>(), nullptr);
    EXPECT_TRUE(forms::pantallas().Loaded<frm02_Matricula>()->IsShown());
    EXPECT_EQ(forms::pantallas().Loaded(frm03_Principal::kName), nullptr);
    EXPECT_TRUE(gConexion.IsOpen());
    EXPECT_TRUE(gIdentificacionInicial);
    EXPECT_EQ(gVersion.joined(), u"Versión 3.0"_s);
    EXPECT_EQ(gRutaBD, base());
    EXPECT_FALSE(QFile::exists(ruta(u"a.TMP"_s)) || QFile::exists(ruta(u"b.tmp"_s)));
    EXPECT_TRUE(QFile::exists(ruta(u"notas.txt"_s)));
    EXPECT_FALSE(QFile::exists(ruta(u"Tarmel.INI"_s))) << "only an upgrade makes the file";
    EXPECT_TRUE(host.cajas.empty());
}

TEST_F(Arranque, LaPortadaSeVeDuranteElTrabajo) {
    registrarPantallas();
    auto& portada = forms::pantallas().Get<frm01_Inicio>();
    EXPECT_TRUE(portada.IsShown());
    EXPECT_EQ(portada.lblProductName.Caption(), u"Tarmel - Anilladores"_s);
    EXPECT_EQ(portada.Label1.Caption(), u"Cargando la aplicación, espere un momento..."_s);
    EXPECT_EQ(portada.lblVersion.Caption(), u"Versión 3.0"_s);
}

TEST_F(Arranque, OtraCopiaTerminaAntesDeTocarLaBase) {
    host.otraCopia = true;
    const QByteArray antes = leer(u"Tarmel_11.mdb"_s);
    EXPECT_TRUE(termina([] { Main(); }));
    ASSERT_EQ(host.cajas.size(), 1u);
    EXPECT_EQ(host.cajas[0].text, u"Ya se esta ejecutando la aplicación en este PC"_s);
    EXPECT_EQ(host.cajas[0].buttons, forms::box::Critical);
    EXPECT_EQ(host.cajas[0].title, u"Tarmel"_s);
    EXPECT_FALSE(gConexion.IsOpen());
    EXPECT_EQ(leer(u"Tarmel_11.mdb"_s), antes);
}

TEST_F(Arranque, SinBaseDeDatos) {
    ASSERT_TRUE(QFile::rename(base(), ruta(u"Otra.mdb"_s)));
    EXPECT_TRUE(termina([] { Main(); }));
    ASSERT_EQ(host.cajas.size(), 1u);
    EXPECT_EQ(host.cajas[0].text,
              u"El fichero de base de datos TARMEL.MDB no existe.\r  No se puede cargar la aplicación."_s);
    EXPECT_EQ(host.cajas[0].buttons, forms::box::Critical);
    EXPECT_EQ(host.cajas[0].title, u"Error"_s);
    EXPECT_EQ(ficheros(), QStringList{u"Otra.mdb"_s}) << "no empty database comes to be";
}

TEST_F(Arranque, ElNombreDeLaBaseSeBuscaSinDistinguirMayusculas) {
    ASSERT_TRUE(QFile::rename(base(), ruta(u"TARMEL_11.MDB"_s)));
    arrancar();
    EXPECT_EQ(filas(u"SELECT Count(*) FROM TIPOANILLAS"_s), u"204"_s);
    EXPECT_FALSE(QFile::exists(base()));
}

TEST_F(Arranque, SanaLosIdentificadoresProvisionales) {
    arrancar();
    sql(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador, NombreAnillador) VALUES (-1, 123456, 'X')"_s);
    forms::pantallas().Reset();
    reiniciarSesion();
    arrancar();
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIMAT WHERE IdAnillador = IdAni"_s), u"1"_s);
}

TEST_F(Arranque, CancelarLaPrimeraIdentificacionTermina) {
    arrancar();
    auto& pantalla = forms::pantallas().Get<frm02_Matricula>();
    EXPECT_TRUE(termina([&] { pantalla.UserClick(pantalla.cmdCancelar); }));
    EXPECT_TRUE(host.cajas.empty());
    EXPECT_EQ(forms::pantallas().Loaded(frm03_Principal::kName), nullptr);
}

TEST_F(Arranque, LaFechaDelDiaComoSeisCifras) {
    const basic::Date hoy = basic::Date::today();
    EXPECT_EQ(FechaActualAAMMDD(), basic::Format(hoy, u"yymmdd"_s));
}

// --- A database that cannot be opened

struct Averia {
    const char* nombre;
    std::function<void(const QString& base)> causar;
    const char16_t* dice;  ///< the box, in part
};

void sobrescribir(const QString& ruta, const QByteArray& contenido, qint64 desde = -1) {
    QFile fichero(ruta);
    ASSERT_TRUE(fichero.open(desde < 0 ? QIODevice::WriteOnly : QIODevice::ReadWrite));
    fichero.seek(std::max<qint64>(0, desde));
    fichero.write(contenido);
}

void cortar(const QString& base) {
    QFile fichero(base);
    ASSERT_TRUE(fichero.resize(fichero.size() / 2));
}

/// Damage that only a whole check finds, and what a program leaves that was not closed.
void dañarPorDentro(const QString& base) {
    sobrescribir(base, QByteArray(4096, '\xee'), QFileInfo(base).size() / 2 / 4096 * 4096);
    sobrescribir(base + u"-wal"_s, {});
}

void ponerBaseAjena(const QString& base) {
    QFile::remove(base);
    ado::Connection ajena;
    ajena.OpenFile(base, true);
    ajena.Execute(u"CREATE TABLE Discos (Titulo VARCHAR(50))"_s);
}

const Averia kAverias[] = {
    {"NoEsBase", [](const QString& base) { sobrescribir(base, QByteArray(8192, 'x')); },
     u"no es una base de datos"},
    {"Vacia", [](const QString& base) { sobrescribir(base, {}); }, u"no es una base de datos"},
    {"Cortada", cortar, u"está incompleto"},
    {"PaginaSobrescrita", dañarPorDentro, u"está dañado"},
    {"Ajena", ponerBaseAjena, u"es una base de datos de otro programa"},
    {"SoloLectura", [](const QString& base) { QFile::setPermissions(base, QFile::ReadOwner); }, u"Error nº "},
};

class BaseAveriada : public Programa, public testing::WithParamInterface<Averia> {
 protected:
    void ponerCopia(const QString& nombre, bool buena) const {
        ASSERT_TRUE(QDir().mkpath(ruta(u"Copias"_s)));
        const QString copia = ruta(u"Copias/"_s + nombre);
        ASSERT_TRUE(QFile::copy(base(), copia));
        if (!buena) cortar(copia);
    }
};

TEST_P(BaseAveriada, CajaFinYFicheroIntacto) {
    ponerCopia(u"Tarmel_11_2010-05-01_080000.mdb"_s, true);
    ponerCopia(u"Tarmel_11_2010-05-02_081502.mdb"_s, true);
    ponerCopia(u"Tarmel_11_2010-05-03_080000.mdb"_s, false);
    GetParam().causar(base());
    const QByteArray antes = leer(u"Tarmel_11.mdb"_s);
    const QStringList ficherosAntes = ficheros();

    EXPECT_TRUE(termina([] { Main(); }));
    ASSERT_EQ(host.cajas.size(), 1u);
    const QString texto = host.cajas[0].text;
    EXPECT_EQ(host.cajas[0].buttons, forms::box::Critical);
    EXPECT_TRUE(texto.contains(QString::fromUtf16(GetParam().dice))) << texto.toStdString();
    EXPECT_EQ(texto.contains(u"es Tarmel_11_2010-05-02_081502.mdb, del 02/05/2010 a las 08:15,"_s),
              !texto.startsWith(u"Error nº "_s))
        << texto.toStdString();
    EXPECT_EQ(leer(u"Tarmel_11.mdb"_s), antes);
    EXPECT_EQ(ficheros(), ficherosAntes);
}

INSTANTIATE_TEST_SUITE_P(, BaseAveriada, testing::ValuesIn(kAverias),
                         [](const auto& caso) { return std::string(caso.param.nombre); });

TEST_F(Arranque, RevisaLaBaseTrasUnCierreInesperadoYSigue) {
    escribir(u"Tarmel_11.mdb-wal"_s, {});
    registrarPantallas();
    auto& portada = forms::pantallas().Get<frm01_Inicio>();  // its load has run
    EXPECT_TRUE(gConexion.IsOpen());
    EXPECT_EQ(portada.Label1.Caption(), u"Cargando la aplicación, espere un momento..."_s);
    EXPECT_TRUE(host.cajas.empty());
}

TEST_F(Arranque, UnaCopiaPuestaTrasUnaCaidaNoRecibeElDiarioDeOtra) {
    const Corrida caida = correr(
        [](const Avisar& avisar) {
            Main();
            avisar("empieza");
            for (int i = 1;; ++i)
                sql(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador, NombreAnillador) VALUES (%1, %1, 'X')"_s
                        .arg(i));
        },
        40);
    ASSERT_TRUE(caida.muerto);
    ASSERT_GT(QFileInfo(base() + u"-wal"_s).size(), 0);
    QFile::remove(base());
    ASSERT_TRUE(QFile::copy(basePreparada(), base()));
    arrancar();
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIMAT"_s), u"0"_s);
    EXPECT_GT(QFileInfo(base() + u"-wal.anterior"_s).size(), 0) << "put aside, not removed";
}

TEST_F(Arranque, BaseBloqueadaPorOtroPrograma) {
    sqlite3* otro = nullptr;
    ASSERT_EQ(sqlite3_open(base().toUtf8().constData(), &otro), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(otro, "BEGIN EXCLUSIVE; SELECT * FROM ANIMAT", nullptr, nullptr, nullptr),
              SQLITE_OK);
    EXPECT_TRUE(termina([] { Main(); }));
    sqlite3_close(otro);
    ASSERT_EQ(host.cajas.size(), 1u);
    EXPECT_EQ(host.cajas[0].buttons, forms::box::Critical);
    EXPECT_FALSE(gConexion.IsOpen());
}

// --- Tarmel.INI

struct CasoIni {
    const char* contenido;  ///< in the ANSI code page; null: no file
    double leido;
    bool pideActualizar;
};

class Ini : public Programa, public testing::WithParamInterface<CasoIni> {};

TEST_P(Ini, PideLaActualizacion) {
    if (GetParam().contenido) escribir(u"Tarmel.INI"_s, GetParam().contenido);
    EXPECT_EQ(LeerIniEntero(kSeccionIni, kClaveActualizacion), GetParam().leido);
    EXPECT_EQ(ActualizacionPedida(), GetParam().pideActualizar);
}

INSTANTIATE_TEST_SUITE_P(, Ini,
                         testing::Values(CasoIni{nullptr, -1, false}, CasoIni{"[Tarmel]\r\n", -1, false},
                                         CasoIni{"[Otra]\r\nActualizaci\xf3n=1\r\n", -1, false},
                                         CasoIni{"[Tarmel]\r\nActualizaci\xf3n=-1\r\n", -1, false},
                                         CasoIni{"[Tarmel]\r\nActualizaci\xf3n=0\r\n", 0, false},
                                         CasoIni{"[Tarmel]\r\nActualizaci\xf3n=nada\r\n", 0, false},
                                         CasoIni{"[Tarmel]\r\nActualizaci\xf3n=1\r\n", 1, true},
                                         CasoIni{"[tarmel]\r\nACTUALIZACI\xd3N=7\r\n", 7, true}));

TEST_F(Arranque, LaClaveSeEscribeEnAnsi) {
    EscribirIni(kSeccionIni, kClaveActualizacion, u"1"_s);
    EXPECT_EQ(leer(u"Tarmel.INI"_s), QByteArray("[Tarmel]\r\nActualizaci\xf3n=1\r\n"));
}

}  // namespace
}  // namespace tarmel
