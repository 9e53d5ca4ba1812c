#include <sys/resource.h>

#include <csignal>

#include "exchange/Archivador.h"
#include "exchange/FicheroIntercambio.h"
#include "exchange/Intercambio.h"

/// What a dispatch writes, marks and packs.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

SeleccionEnvio todoElAño(qint16 año) {
    SeleccionEnvio seleccion;
    seleccion.Seleccion = u"Año"_s;
    seleccion.Año = año;
    return seleccion;
}

class Exportacion : public Intercambio {
 protected:
    void SetUp() override {
        Intercambio::SetUp();
        anillador(77, u"654321"_s, u"BEA"_s, u"900001"_s);
        hoja(11, u"123456000001"_s, kAnillador, u"15/03/2010"_s, u"Primavera"_s);
        hoja(12, u"123456000002"_s, kAnillador, u"02/11/2010"_s, u"Otoño"_s);
        hoja(13, u"123456000003"_s, kAnillador, u"05/03/2011"_s, u"Primavera"_s);
        hoja(14, u"654321000001"_s, u"654321"_s, u"15/03/2010"_s);
        for (const int id : {11, 12, 13, 14})
            captura(id, 1, u"AB..%1"_s.arg(1000 + id));
    }

    /// The lines of an exchange file behind its header, each as fields; the columns by name.
    struct Fichero {
        QStringList columnas;
        std::vector<QStringList> filas;
        [[nodiscard]] QString campo(size_t fila, const QString& columna) const {
            return filas.at(fila).value(columnas.indexOf(columna));
        }
        [[nodiscard]] QString todos(const QString& columna) const {
            QStringList valores;
            for (size_t i = 0; i < filas.size(); ++i)
                valores << campo(i, columna);
            valores.sort();
            return valores.join(u',');
        }
    };
    [[nodiscard]] Fichero leido(const QString& nombre) const {
        const QString texto = basic::fromAnsi(leer(enDatos(nombre)));
        Fichero fichero;
        EXPECT_TRUE(texto.isEmpty() || texto.endsWith(u"\r\n"_s));
        for (const QString& linea : texto.split(u"\r\n"_s, Qt::SkipEmptyParts)) {
            if (fichero.columnas.isEmpty()) {
                fichero.columnas = linea.split(u';');
            } else {
                fichero.filas.push_back(linea.split(u';'));
            }
        }
        return fichero;
    }
};

TEST_F(Exportacion, UnFicheroByteAByte) {
    sql(u"UPDATE ANIMAT SET NombreAnillador='ÁNGEL Łuna €', Email=Null, CodigoEntidad='' WHERE "
        "CodigoAnillador=123456"_s);
    ExportarTablas(1, todoElAño(2010), {u"ANIMAT"_s});
    EXPECT_EQ(leer(u"Datos/ANIMAT.txt"_s),
              QByteArray("IdAnillador;IdAni;CodigoAnillador;NombreAnillador;CoordinadorGrupo;CodigoGrupo;"
                         "NombreGrupo;CodigoEntidad;NombreEntidad;UltimoEnvio;Email\r\n"
                         "1;1;123456;\xC1NGEL ?una \x80;0;900001;GRUPO;;ENTIDAD;0;\r\n"));
}

TEST_F(Exportacion, CadaTipoDeValorEnSuForma) {
    captura(11, 2, u"AB..2000"_s, u", Peso, Ala, HoraCaptura, Observaciones"_s,
            u", '12,25', '60', '8:05:00', 'con; punto y coma'"_s);
    ExportarTablas(1, todoElAño(2010), tablasDeIntercambio());
    const Fichero hojas = leido(u"ANICHO.txt"_s);
    EXPECT_EQ(hojas.campo(0, u"FechaCaptura"_s), u"15/03/2010"_s);
    EXPECT_EQ(hojas.campo(0, u"HoraDesde"_s), u"7:30:00"_s);
    EXPECT_EQ(hojas.campo(0, u"LongitudRed"_s), u"36,5"_s);
    EXPECT_EQ(hojas.campo(0, u"NumHoja"_s), u"123456000001"_s);
    EXPECT_EQ(hojas.campo(0, u"HoraHasta"_s), QString());
    const Fichero capturas = leido(u"ANIAHO.txt"_s);
    EXPECT_EQ(capturas.columnas.size(), 41);
    EXPECT_EQ(capturas.columnas.at(11), u"IdEspecie"_s);
    EXPECT_EQ(capturas.columnas.last(), u"CodigoEspecie"_s);
    const size_t fila = capturas.campo(0, u"NumRegistro"_s) == u"2"_s ? 0 : 1;
    EXPECT_EQ(capturas.campo(fila, u"Peso"_s), u"12,25"_s);
    EXPECT_EQ(capturas.campo(fila, u"Ala"_s), u"60"_s);
    EXPECT_EQ(capturas.campo(fila, u"HoraCaptura"_s), u"8:05:00"_s);
    EXPECT_EQ(capturas.filas[fila].size(), 42) << "a separator in a value is written as it stands";
    EXPECT_EQ(leido(u"ANIMAT.txt"_s).campo(0, u"CoordinadorGrupo"_s), u"0"_s);
    sql(u"UPDATE ANIMAT SET CoordinadorGrupo=-1"_s);
    ExportarTablas(1, todoElAño(2010), {u"ANIMAT"_s});
    EXPECT_EQ(leido(u"ANIMAT.txt"_s).campo(0, u"CoordinadorGrupo"_s), u"-1"_s);
}

struct CasoSeleccion {
    const char* nombre;
    SeleccionEnvio seleccion;
    bool coordinador;
    QString hojas;
};

class ExportacionSeleccion : public Exportacion, public testing::WithParamInterface<CasoSeleccion> {};

TEST_P(ExportacionSeleccion, SoloViajaLoElegidoYLoPropio) {
    cambiarPapel(GetParam().coordinador);
    ExportarTablas(1, GetParam().seleccion, tablasDeIntercambio());
    const Fichero hojas = leido(u"ANICHO.txt"_s);
    EXPECT_EQ(hojas.todos(u"IdCabecera"_s), GetParam().hojas);
    EXPECT_EQ(leido(u"ANIAHO.txt"_s).todos(u"IdCabecera"_s), GetParam().hojas);
    EXPECT_EQ(QFile::exists(ruta(u"Datos/ANICHO.txt"_s)), !GetParam().hojas.isEmpty());
    for (size_t i = 0; i < hojas.filas.size(); ++i) {
        EXPECT_EQ(hojas.campo(i, u"Anillador"_s), kAnillador);
        EXPECT_EQ(hojas.campo(i, u"CodAnillador"_s), GetParam().coordinador ? u"900001"_s : kAnillador);
    }
}

SeleccionEnvio rango(double primera, double ultima) {
    return {u"RangoHojas"_s, primera, ultima, 0, {}, {}, {}};
}
SeleccionEnvio campaña(const QString& nombre) {
    return {u"Campaña"_s, 0, 0, 0, nombre, {}, {}};
}
SeleccionEnvio fechas(const QString& primera, const QString& ultima) {
    return {u"RangoFechas"_s, 0, 0, 0, {}, primera, ultima};
}

INSTANTIATE_TEST_SUITE_P(
    Casos, ExportacionSeleccion,
    testing::Values(CasoSeleccion{"Ano", todoElAño(2010), false, u"11,12"_s},
                    CasoSeleccion{"AnoDelGrupo", todoElAño(2010), true, u"11,12,14"_s},
                    CasoSeleccion{"AnoSinHojas", todoElAño(1999), true, QString()},
                    CasoSeleccion{"Hojas", rango(123456000002.0, 123456000003.0), false, u"12,13"_s},
                    CasoSeleccion{"HojaAjena", rango(654321000001.0, 654321000001.0), false, QString()},
                    CasoSeleccion{"HojaAjenaDelGrupo", rango(654321000001.0, 654321000001.0), true, u"14"_s},
                    CasoSeleccion{"Campana", campaña(u"Primavera"_s), false, u"11,13"_s},
                    CasoSeleccion{"FechasDiaAntesQueMes", fechas(u"02/11/2010"_s, u"05/03/2011"_s), false,
                                  u"12,13"_s}),
    [](const auto& caso) { return caso.param.nombre; });

TEST_F(Exportacion, SinSusParejasNadaViaja) {
    sql(u"UPDATE ANIAHO SET IdEspecie=99999, CodigoEspecie=Null WHERE IdCabecera=12"_s);
    sql(u"UPDATE ANICHO SET CodLocalidad='NINGUNA' WHERE IdCabecera=14"_s);
    cambiarPapel(true);
    ExportarTablas(1, todoElAño(2010), tablasDeIntercambio());
    EXPECT_EQ(leido(u"ANICHO.txt"_s).todos(u"IdCabecera"_s), u"11"_s);
    EXPECT_EQ(leido(u"ANIAHO.txt"_s).todos(u"IdCabecera"_s), u"11"_s);
}

TEST_F(Exportacion, LosFicherosVaciosDesaparecen) {
    escribir(u"Datos/otro.txt"_s, {});
    escribir(u"Datos/*"_s, {});
    escribir(u"Datos/ANICHO.txt"_s, "de antes");
    ExportarTablas(1, todoElAño(1999), tablasDeIntercambio());
    EXPECT_EQ(ficherosDeDatos(), QStringList());
    // Without the folder the routine goes on to its end.
    QDir(ruta(u"Datos"_s)).removeRecursively();
    EXPECT_EQ(errorOf([] { ExportarTablas(1, todoElAño(2010), tablasDeIntercambio()); }), 0);
}

// --- The archive

struct CasoNombre {
    const char* nombre;
    QStringList ficheros;  ///< HOY stands for today's date
    bool coordinador;
    QString numero;
};

class NombreDelEnvio : public Intercambio, public testing::WithParamInterface<CasoNombre> {};

TEST_P(NombreDelEnvio, CuentaLosDelDiaDeEsteRemitente) {
    cambiarPapel(GetParam().coordinador);
    for (QString fichero : GetParam().ficheros)
        escribir(enDatos(fichero.replace(u"HOY"_s, FechaActualAAMMDD())), "x");
    EXPECT_EQ(NombreSiguienteEnvio(), FechaActualAAMMDD() + GetParam().numero);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, NombreDelEnvio,
    testing::Values(CasoNombre{"Primero", {}, false, u"01"_s},
                    CasoNombre{"Segundo", {u"123456-HOY01.ZIP"_s}, false, u"02"_s},
                    CasoNombre{"ElMayorCuenta",
                               {u"123456-HOY09.ZIP"_s, u"123456-HOY11.zip"_s, u"123456-HOY02.ZIP"_s},
                               false,
                               u"12"_s},
                    CasoNombre{"Vuelve", {u"123456-HOY99.ZIP"_s}, false, u"00"_s},
                    CasoNombre{"OtroDia", {u"123456-99123105.ZIP"_s}, false, u"01"_s},
                    CasoNombre{
                        "OtroRemitente", {u"654321-HOY05.ZIP"_s, u"12345-HOY07.ZIP"_s}, false, u"01"_s},
                    CasoNombre{"CoordinadorAparte", {u"123456-HOY05.ZIP"_s}, true, u"01"_s},
                    CasoNombre{"DelGrupo", {u"900001-HOY05.ZIP"_s}, true, u"06"_s},
                    CasoNombre{"SinPunto", {u"123456-HOY05"_s}, false, u"01"_s}),
    [](const auto& caso) { return caso.param.nombre; });

TEST_F(Intercambio, ElArchivadorEsSiempreElPropio) {
    escribir(u"Datos/ANIMAT.txt"_s, "a;b\r\n");
    escribir(u"Datos/7za"_s, "#!/bin/sh\ntouch intruso\n");
    QFile::setPermissions(ruta(u"Datos/7za"_s), QFile::ExeOwner | QFile::ReadOwner | QFile::WriteOwner);
    ComprimirEnvio(u"26010101"_s);
    EXPECT_FALSE(QFile::exists(ruta(u"Datos/intruso"_s)));
    EXPECT_EQ(leer(u"Datos/7za"_s), leer(u"7za"_s));
    EXPECT_TRUE(QFile::exists(ruta(u"Datos/123456-26010101.ZIP"_s)));
}

TEST_F(Intercambio, SinArchivadorOSinFicherosNoHayArchivo) {
    EXPECT_EQ(errorOf([] { ComprimirEnvio(u"26010101"_s); }), basic::error::FileNotFound)
        << "nothing to pack";
    EXPECT_EQ(ficherosDeDatos(), QStringList{u"7za"_s});

    escribir(u"Datos/ANIMAT.txt"_s, "a;b\r\n");
    QFile::remove(ruta(u"7za"_s));
    escribir(u"7za"_s, "#!/bin/sh\necho roto > \"$2\"\nexit 2\n");
    QFile::setPermissions(ruta(u"7za"_s), QFile::ExeOwner | QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_EQ(errorOf([] { ComprimirEnvio(u"26010101"_s); }), basic::error::FileNotFound) << "it fails";
    EXPECT_FALSE(QFile::exists(ruta(u"Datos/26010101.ZIP"_s)));

    QFile::remove(ruta(u"7za"_s));
    EXPECT_EQ(errorOf([] { ComprimirEnvio(u"26010101"_s); }), basic::error::FileNotFound) << "there is none";

    QDir(ruta(u"Datos"_s)).removeRecursively();
    QFile::link(QStandardPaths::findExecutable(u"7za"_s), ruta(u"7za"_s));
    EXPECT_EQ(errorOf([] { ComprimirEnvio(u"26010101"_s); }), basic::error::PathNotFound) << "no folder";
}

TEST_F(Intercambio, LaEsperaDejaCorrerLosSucesosMientrasElArchivadorTrabaja) {
    QFile::remove(ruta(u"7za"_s));
    escribir(u"7za"_s, "#!/bin/sh\nsleep 0.3\ncp ANIMAT.txt \"$2\"\n");
    QFile::setPermissions(ruta(u"7za"_s), QFile::ExeOwner | QFile::ReadOwner | QFile::WriteOwner);
    escribir(u"Datos/ANIMAT.txt"_s, "a;b\r\n");
    int turnos = 0;
    mundo.alCederEventos = [&] { ++turnos; };
    ComprimirEnvio(u"26010101"_s);
    EXPECT_GT(turnos, 100) << "two seconds of pause in short steps, and the archiver's own time";
    EXPECT_TRUE(QFile::exists(ruta(u"Datos/123456-26010101.ZIP"_s)));
}

// --- The screen

class PantallaExportar : public Exportacion {
 protected:
    static frm10_ExportarDatos& abrir() {
        auto& pantalla = forms::pantallas().Get<frm10_ExportarDatos>();
        pantalla.Show();
        return pantalla;
    }
    static bool abierta() { return forms::pantallas().Loaded<frm10_ExportarDatos>() != nullptr; }
    static void elegir(frm10_ExportarDatos& pantalla, forms::ComboBox& combo, const QString& principio) {
        pantalla.UserChoose(combo, combo.Find(principio));
    }
    /// Runs a dispatch of a whole year.
    void enviar(const QString& año) {
        auto& pantalla = abrir();
        elegir(pantalla, pantalla.cboAño, año);
        pantalla.UserClick(pantalla.cmdExportar);
    }
    void SetUp() override {
        Exportacion::SetUp();
        forms::pantallas().Register(frm10_ExportarDatos::kName,
                                    [] { return std::make_shared<frm10_ExportarDatos>(); });
    }
};

TEST_F(PantallaExportar, ElNumeroQuedaSubidoAunqueNoSePuedaEmpaquetar) {
    QFile::remove(ruta(u"7za"_s));
    EXPECT_TRUE(termina([this] { enviar(u"2010"_s); }));
    EXPECT_TRUE(mundo.textosDeCajas().startsWith(u"Error nº 53"_s));
    EXPECT_EQ(filas(u"SELECT DISTINCT NumEAnillador FROM ANICHO WHERE CodAnillador=123456"_s), u"1"_s);
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIAHO"_s), u"4"_s);
}

TEST_F(PantallaExportar, SinSitioEnElDiscoNoHayEnvioAMedias) {
    for (int i = 2; i <= 400; ++i)
        captura(11, i, u"AB..%1"_s.arg(2000 + i), u", Observaciones"_s,
                u", '"_s + QString(250, u'x') + u'\'');
    gConexion.ExecutePlain("PRAGMA wal_checkpoint(TRUNCATE)");  // the log begins at the front again
    std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit antes {};
    ::getrlimit(RLIMIT_FSIZE, &antes);
    struct rlimit estrecho = antes;
    estrecho.rlim_cur = 100 * 1024;
    ::setrlimit(RLIMIT_FSIZE, &estrecho);
    enviar(u"2010"_s);
    ::setrlimit(RLIMIT_FSIZE, &antes);
    EXPECT_EQ(mundo.textosDeCajas(),
              u"No hay sitio en el disco para los ficheros del envío, que no se ha preparado."_s);
    EXPECT_FALSE(abierta());
    EXPECT_EQ(ficherosDeDatos(), QStringList());
    enviar(u"2010"_s);
    EXPECT_EQ(mundo.textosDeCajas(), u"Los datos han sido preparados correctamente."_s);
}

TEST_F(PantallaExportar, MientrasDuraNoSeCierra) {
    bool siempreAbierta = true;
    mundo.alCederEventos = [&] {
        auto* pantalla = forms::pantallas().Loaded<frm10_ExportarDatos>();
        siempreAbierta = siempreAbierta && pantalla;
        if (!pantalla) return;
        pantalla->UserClick(pantalla->cmdSalir);
        pantalla->UserClose();
    };
    enviar(u"2010"_s);
    EXPECT_TRUE(siempreAbierta);
    EXPECT_FALSE(abierta());
    EXPECT_EQ(mundo.textosDeCajas(), u"Los datos han sido preparados correctamente."_s);
}

TEST_F(PantallaExportar, UnaBaseAnteriorSinNumerosTambienEnvia) {
    sql(u"UPDATE ANICHO SET NumEAnillador=Null"_s);
    sql(u"UPDATE ANIMAT SET UltimoEnvio=Null, Email=Null"_s);
    escribir(u"Datos/ANIVIEJO.txt"_s, "de antes");
    enviar(u"2010"_s);
    EXPECT_EQ(mundo.textosDeCajas(), u"Los datos han sido preparados correctamente."_s);
    EXPECT_EQ(filas(u"SELECT NumEAnillador FROM ANICHO ORDER BY IdCabecera"_s), u"1|1|1|"_s)
        << "all sheets of the ringer take the number, the selection plays no part";
    EXPECT_EQ(filas(u"SELECT UltimoEnvio FROM ANIMAT ORDER BY CodigoAnillador"_s), u"1|"_s);
    EXPECT_EQ(ficherosDeDatos(), (QStringList{u"123456-"_s + FechaActualAAMMDD() + u"01.ZIP"_s, u"7za"_s}));
    cambiarPapel(true);
    enviar(u"2010"_s);
    EXPECT_EQ(mundo.textosDeCajas(), u"Los datos han sido preparados correctamente."_s);
    EXPECT_EQ(filas(u"SELECT UltimoEnvio FROM ANIMAT"_s), u"1|1"_s);
    EXPECT_EQ(filas(u"SELECT DISTINCT NumEGrupo FROM ANICHO"_s), u"1"_s);
    EXPECT_TRUE(QFile::exists(ruta(u"Datos/900001-"_s + FechaActualAAMMDD() + u"01.ZIP"_s)));
    cambiarPapel(false);
    sql(u"UPDATE ANICHO SET NumEAnillador=32767"_s);
    EXPECT_TRUE(termina([this] { enviar(u"2010"_s); }));
    EXPECT_TRUE(mundo.textosDeCajas().startsWith(u"Error nº 6"_s));
}

}  // namespace
}  // namespace tarmel
