#include "exchange/FicheroIntercambio.h"
#include "exchange/Intercambio.h"
#include "exchange/Zip.h"
#include "platform/forms/Host.h"

/// Received files: rows by key, new sheet numbers, and all that a file can have against it.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

const QByteArray kColumnasHoja =
    "IdCabecera;IdCab;NumHoja;CodAnillador;CodLocalidad;FechaCaptura;Anillador;Grupo";
const QByteArray kColumnasCaptura =
    "IdCabecera;NumRegistro;TipoRegistro;Anilla;IdEspecie;CodigoSexo;CodigoEspecie";

class Importacion : public Intercambio {
 protected:
    void SetUp() override {
        arrancarComo(kAnillador, true);
        anillador(77, u"654321"_s, u"BEA"_s, u"900001"_s);
        hoja(1, u"123456000001"_s, kAnillador, u"01/01/2010"_s);
        captura(1, 1, u"PROPIA01"_s);
        captura(1, 2, u"PROPIA02"_s);
    }
    /// A text file in Datos, of lines.
    void fichero(const QString& tabla, const QByteArrayList& lineas) const {
        escribir(enDatos(tabla + u".TXT"_s), lineas.join("\r\n") + "\r\n");
    }
    static bool importar() { return ImportarTablas(tablasDeIntercambio()); }
    static QString hojas() {
        return filas(
            u"SELECT IdCabecera, NumHoja, CodAnillador, FechaCaptura, Anillador, Grupo FROM ANICHO ORDER BY IdCabecera"_s);
    }
    static QString capturas(int hoja) {
        return filas(
            u"SELECT NumRegistro, Anilla, CodigoSexo, CodigoEspecie FROM ANIAHO WHERE IdCabecera=%1 "
            "ORDER BY NumRegistro"_s.arg(hoja));
    }
    /// The rows that no hostile file may touch.
    static void comprobarLoPropio() {
        EXPECT_EQ(capturas(1), u"1;PROPIA01;M;00010|2;PROPIA02;M;00010"_s);
        EXPECT_EQ(filas(u"SELECT NumHoja FROM ANICHO WHERE IdCabecera=1"_s), u"123456000001"_s);
        EXPECT_EQ(filas(u"SELECT NombreAnillador FROM ANIMAT ORDER BY CodigoAnillador"_s),
                  u"ANILLADOR 123456|BEA"_s);
    }
};

// --- The format

struct CasoCorte {
    const char* nombre;
    int campos;
    QString linea;
    QString resultado;
};
class Corte : public testing::TestWithParam<CasoCorte> {};

TEST_P(Corte, PorElNumeroDeLaCabecera) {
    VaciarCampos(GetParam().campos);
    LeerValoresCampos(GetParam().campos, GetParam().linea, kSeparadorFichero);
    EXPECT_EQ(QStringList(gValoresCampo.begin() + 1, gValoresCampo.end()).join(u'|'), GetParam().resultado);
    EXPECT_EQ(gValoresCampo.size(), static_cast<size_t>(GetParam().campos) + 1);
}
INSTANTIATE_TEST_SUITE_P(Casos, Corte,
                         testing::Values(CasoCorte{"Justos", 3, u"a; b ;c"_s, u"a| b |c"_s},
                                         CasoCorte{"Vacios", 3, u";;"_s, u"||"_s},
                                         CasoCorte{"DeMas", 2, u"a;b;c"_s, u"a|b;c"_s},
                                         CasoCorte{"DeMenos", 4, u"a;b"_s, u"a|b||"_s},
                                         CasoCorte{"Uno", 1, u"a;b"_s, u"a;b"_s}),
                         [](const auto& caso) { return caso.param.nombre; });

TEST_F(Intercambio, LasLineasDeUnFichero) {
    const auto lineas = [this](const QByteArray& bytes) {
        escribir(u"Datos/x.txt"_s, bytes);
        LectorFichero lector(ruta(u"Datos/x.txt"_s));
        QStringList todas;
        while (!lector.fin())
            todas << lector.leerLinea();
        return todas.join(u'|');
    };
    EXPECT_EQ(lineas("uno\r\ndos\r\n"), u"uno|dos"_s);
    EXPECT_EQ(lineas("uno\rdos"), u"uno|dos"_s);
    EXPECT_EQ(lineas("uno\ndos\r\n\r\ntres"), u"uno\ndos||tres"_s) << "a line feed alone ends no line";
    EXPECT_EQ(lineas("\xF1\x80"), u"ñ€"_s);
    EXPECT_EQ(lineas(""), QString());
    // A line end across the reader's blocks.
    const QByteArray largo(65535, 'x');
    EXPECT_EQ(lineas(largo + "\r\ny"), QString::fromLatin1(largo) + u"|y"_s);
    EXPECT_EQ(errorOf([&] { (void)lineas(largo + "xx\r\n"); }), kFormatoNoValido);
    EXPECT_EQ(errorOf([&] { (void)lineas(QByteArray("a\0b", 3)); }), kFormatoNoValido);
    EXPECT_EQ(errorOf([&] { LectorFichero(ruta(u"Datos/falta.txt"_s)); }), basic::error::FileNotFound);
    QFile::link(ruta(u"Datos/x.txt"_s), ruta(u"Datos/enlace.txt"_s));
    EXPECT_EQ(errorOf([&] { LectorFichero(ruta(u"Datos/enlace.txt"_s)); }), basic::error::FileAccess);
}

// --- Rows by key

TEST_F(Importacion, LaFilaDelFicheroSustituyeALaDeSuClave) {
    hoja(500, u"654321000009"_s, u"654321"_s, u"01/02/2009"_s);
    captura(500, 1, u"VIEJA001"_s);
    captura(500, 3, u"VIEJA003"_s);
    fichero(u"ANICHO"_s, {kColumnasHoja, "500;77;123;654321;01002;15/03/2010;;",
                          "501;78;124;654321;01002;10/03/2010;123456;900001"});
    fichero(u"ANIAHO"_s, {kColumnasCaptura, "500;1;A;NUEVA001;2;1;00010", "500;2;R;NUEVA002;2;F;00010"});
    ASSERT_TRUE(importar());
    EXPECT_EQ(hojas(),
              u"1;123456000001;123456;01/01/2010;123456;900001|"
              "500;654321000002;654321;15/03/2010;0;0|501;654321000001;654321;10/03/2010;123456;900001"_s)
        << "numbered anew by date; the numeric codes that were empty are 0";
    EXPECT_EQ(capturas(500), u"1;NUEVA001;M;00010|2;NUEVA002;F;00010|3;VIEJA003;M;00010"_s)
        << "what the sender deleted meanwhile stays";
    EXPECT_EQ(filas(u"SELECT IdCab FROM ANICHO WHERE IdCab=77 OR IdCab=78"_s), QString())
        << "the counter is the receiver's own";
    comprobarLoPropio();
    EXPECT_EQ(mundo.textosDeCajas(), QString());
}

TEST_F(Importacion, UnFicheroDeLaVersionAnterior) {
    const access_sql::TableDef* tabla = gConexion.schema().table(u"ANIAHO");
    QByteArrayList columnas;
    QByteArrayList valores;
    for (const auto& columna : tabla->columns) {
        if (columna.name == u"CodigoEspecie"_s) continue;
        columnas << basic::toAnsi(columna.name);
        valores << (columna.name == u"IdCabecera"_s    ? "600"
                    : columna.name == u"NumRegistro"_s ? "1"
                    : columna.name == u"IdEspecie"_s   ? "3"
                    : columna.name == u"Anilla"_s      ? "AB..1234"
                    : columna.name == u"CodigoSexo"_s  ? "0"
                                                       : "");
    }
    ASSERT_EQ(columnas.size(), 40);
    fichero(u"ANIAHO"_s, {columnas.join(';'), valores.join(';')});
    ASSERT_TRUE(importar());
    EXPECT_EQ(capturas(600),
              u"1;AB..1234;U;"_s + filas(u"SELECT CodigoEspecie FROM ANIBRD WHERE IdEspecie=3"_s));

    valores[11] = "2 OR 1=1";
    fichero(u"ANIAHO"_s, {columnas.join(';'), valores.join(';')});
    EXPECT_FALSE(importar());
    EXPECT_EQ(mundo.textosDeCajas(), u"Problemas con el archivo ANIAHO"_s);
    comprobarLoPropio();
}

TEST_F(Importacion, LaNumeracionSigueLaSerieDeCadaPropietario) {
    for (const auto& [id, propietario, fecha] : {std::tuple{700, u"654321"_s, u"03/03/2010"_s},
                                                 {701, u"900001"_s, u"01/03/2010"_s},
                                                 {702, u"654321"_s, u"02/03/2010"_s},
                                                 {703, u"111111"_s, u"04/03/2010"_s}})
        hoja(id, u"-1"_s, propietario, fecha);
    sql(u"INSERT INTO ANICHO (IdCabecera, NumHoja) VALUES (704, -1)"_s);
    RenumerarHojasImportadas();
    EXPECT_EQ(filas(u"SELECT IdCabecera, NumHoja FROM ANICHO WHERE IdCabecera BETWEEN 700 AND 703 ORDER BY "
                    "IdCabecera"_s),
              u"700;654321000002|701;900001000001|702;654321000001|703;111111000001"_s)
        << "once a code is known all that wait are numbered, each in its owner's series";
    EXPECT_EQ(filas(u"SELECT NumHoja FROM ANICHO WHERE IdCabecera=704"_s), u"-1"_s) << "without an owner";
    hoja(710, u"-1"_s, u"222222"_s, u"01/04/2010"_s);
    RenumerarHojasImportadas();
    EXPECT_EQ(filas(u"SELECT NumHoja FROM ANICHO WHERE IdCabecera=710"_s), u"-1"_s) << "nobody's code";
}

TEST_F(Importacion, UnaFilaRechazadaDejaLasAnteriores) {
    hoja(500, u"654321000009"_s, u"654321"_s, u"01/02/2009"_s);
    fichero(u"ANIMAT"_s, {"CodigoAnillador;NombreAnillador;UltimoEnvio", "777777;EVA;3"});
    fichero(u"ANICHO"_s, {kColumnasHoja, "501;1;1;777777;01002;15/03/2010;;",
                          "500;2;2;777777;L'Hospitalet;15/03/2010;;", "502;3;3;777777;01002;15/03/2010;;"});
    EXPECT_FALSE(importar());
    EXPECT_EQ(mundo.textosDeCajas(), u"Problemas con el archivo ANICHO"_s);
    EXPECT_EQ(filas(u"SELECT IdCabecera, NumHoja FROM ANICHO ORDER BY IdCabecera"_s),
              u"1;123456000001|501;-1"_s)
        << "the refused row's predecessor has gone already";
    EXPECT_EQ(filas(u"SELECT NombreAnillador, UltimoEnvio FROM ANIMAT WHERE CodigoAnillador=777777"_s),
              u"EVA;3"_s);
    // The next import completes it.
    fichero(u"ANICHO"_s, {kColumnasHoja, "500;2;2;777777;08101;16/03/2010;;"});
    ASSERT_TRUE(importar());
    EXPECT_EQ(filas(u"SELECT NumHoja FROM ANICHO WHERE CodAnillador=777777 ORDER BY IdCabecera"_s),
              u"777777000002|777777000001"_s);
}

TEST_F(Importacion, InterrumpidaAMediasSeCompletaAlRepetirla) {
    constexpr int kFilas = 3000;
    QByteArrayList lineas{kColumnasCaptura};
    for (int i = 1; i <= kFilas; ++i)
        lineas << "800;" + QByteArray::number(i) + ";A;AB" + QByteArray::number(100000 + i) + ";2;M;00010";
    fichero(u"ANIAHO"_s, lineas);
    mundo.alCederEventos = [] {
        if (filas(u"SELECT Count(*) FROM ANIAHO WHERE IdCabecera=800"_s) != u"0"_s) throw forms::ProgramEnd{};
    };
    ASSERT_TRUE(termina([] { importar(); })) << "events run between groups of rows";
    const int hechas = filas(u"SELECT Count(*) FROM ANIAHO WHERE IdCabecera=800"_s).toInt();
    EXPECT_GT(hechas, 0);
    EXPECT_LT(hechas, kFilas);
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIAHO WHERE IdCabecera=800 AND Anilla LIKE 'AB1%'"_s).toInt(),
              hechas);
    mundo.alCederEventos = nullptr;
    ASSERT_TRUE(importar());
    EXPECT_EQ(filas(u"SELECT Count(*), Max(NumRegistro) FROM ANIAHO WHERE IdCabecera=800"_s), u"3000;3000"_s);
    comprobarLoPropio();
}

// --- Hostile files

/// How a file of tests/exchange/hostiles ends as a file of sheets: in the box of the problems, in a run-time
/// error, or as a file like another.
struct CasoHostil {
    const char* fichero;
    enum class Fin { Problemas, Error, Bien } fin;
    int numero = 0;
};
class Hostil : public Importacion, public testing::WithParamInterface<CasoHostil> {
 protected:
    static std::optional<QByteArray> contenido(const QString& nombre) {
        QFile fichero(QStringLiteral(TARMEL_TESTS_DIR "/exchange/hostiles/") + nombre);
        if (!fichero.open(QIODevice::ReadOnly)) return std::nullopt;
        return fichero.readAll();
    }
};
using Fin = CasoHostil::Fin;

TEST_P(Hostil, TerminaEnSuMensajeYNoTocaLoDemas) {
    const auto bytes = contenido(QString::fromUtf8(GetParam().fichero));
    ASSERT_TRUE(bytes);
    escribir(u"Datos/ANICHO.TXT"_s, *bytes);
    bool leido = false;
    const int numero = errorOf([&] { leido = importar(); });
    EXPECT_EQ(numero, GetParam().numero);
    EXPECT_EQ(leido, GetParam().fin == Fin::Bien);
    EXPECT_EQ(mundo.textosDeCajas(),
              GetParam().fin == Fin::Problemas ? u"Problemas con el archivo ANICHO"_s : QString());
    comprobarLoPropio();
    // The next file is read as if nothing had been.
    fichero(u"ANICHO"_s, {kColumnasHoja, "999;1;1;654321;01002;15/03/2010;;"});
    EXPECT_TRUE(importar());
    EXPECT_EQ(filas(u"SELECT CodAnillador FROM ANICHO WHERE IdCabecera=999"_s), u"654321"_s);
}

constexpr int kTipos = basic::error::TypeMismatch;
constexpr int kSentencia = basic::error::Statement;

INSTANTIATE_TEST_SUITE_P(
    Ficheros, Hostil,
    testing::Values(CasoHostil{"sin_cabecera.txt", Fin::Error, kSentencia},
                    CasoHostil{"cabecera_sin_clave.txt", Fin::Error, kSentencia},
                    CasoHostil{"vacio.txt", Fin::Error, basic::error::PastEndOfFile},
                    CasoHostil{"solo_cabecera.txt", Fin::Bien}, CasoHostil{"campos_de_menos.txt", Fin::Bien},
                    CasoHostil{"campos_de_mas.txt", Fin::Problemas},
                    CasoHostil{"columna_desconocida.txt", Fin::Problemas},
                    CasoHostil{"columna_repetida.txt", Fin::Problemas},
                    CasoHostil{"cabecera_con_sentencia.txt", Fin::Problemas},
                    CasoHostil{"demasiadas_columnas.txt", Fin::Problemas},
                    CasoHostil{"bytes_nulos.txt", Fin::Problemas},
                    CasoHostil{"utf8_con_marca.txt", Fin::Error, kSentencia},
                    CasoHostil{"utf16.txt", Fin::Problemas},
                    CasoHostil{"solo_avances_de_linea.txt", Fin::Problemas},
                    CasoHostil{"clave_que_es_condicion.txt", Fin::Error, kTipos},
                    CasoHostil{"clave_vacia.txt", Fin::Error, kTipos},
                    CasoHostil{"clave_con_decimales.txt", Fin::Error, kTipos},
                    CasoHostil{"clave_enorme.txt", Fin::Error, basic::error::Overflow},
                    CasoHostil{"apostrofo.txt", Fin::Problemas},
                    CasoHostil{"valor_que_cierra_la_sentencia.txt", Fin::Problemas},
                    CasoHostil{"texto_demasiado_largo.txt", Fin::Problemas},
                    CasoHostil{"fecha_imposible.txt", Fin::Problemas},
                    CasoHostil{"linea_en_blanco.txt", Fin::Error, kTipos},
                    CasoHostil{"barra_y_separador.txt", Fin::Bien}),
    [](const auto& caso) {
        return std::string(caso.param.fichero).substr(0, std::strlen(caso.param.fichero) - 4);
    });

TEST_F(Importacion, UnaLineaDeDiezMegasNoSeLee) {
    escribir(u"Datos/ANICHO.TXT"_s, kColumnasHoja + "\r\n" + QByteArray(10 * 1024 * 1024, '7') + "\r\n");
    EXPECT_FALSE(importar());
    EXPECT_EQ(mundo.textosDeCajas(), u"Problemas con el archivo ANICHO"_s);
    comprobarLoPropio();
}

TEST_F(Importacion, ConMediaClaveNoSeBorraNada) {
    fichero(u"ANIAHO"_s, {"IdCabecera;TipoRegistro;Anilla", "1;A;INTRUSA1"});
    EXPECT_EQ(errorOf([] { importar(); }), kSentencia);
    fichero(u"ANIAHO"_s, {kColumnasCaptura, "1;1 OR 1=1;A;INTRUSA1;2;M;00010"});
    EXPECT_EQ(errorOf([] { importar(); }), kTipos);
    comprobarLoPropio();
}

// --- Archives, through the screen

class PantallaImportar : public Importacion {
 protected:
    void SetUp() override {
        Importacion::SetUp();
        forms::pantallas().Register(frm09_ImportarDatos::kName,
                                    [] { return std::make_shared<frm09_ImportarDatos>(); });
        forms::pantallas().Register(frm10_ExportarDatos::kName,
                                    [] { return std::make_shared<frm10_ExportarDatos>(); });
    }
    static frm09_ImportarDatos& abrir() {
        auto& pantalla = forms::pantallas().Get<frm09_ImportarDatos>();
        pantalla.Show();
        return pantalla;
    }
    static bool abierta() { return forms::pantallas().Loaded<frm09_ImportarDatos>() != nullptr; }
    static void importarArchivo(const QString& nombre) {
        auto& pantalla = abrir();
        escribirEn(pantalla, pantalla.txtFichero, nombre);
        pantalla.UserClick(pantalla.cmdImportar);
    }
    void archivo(const QString& nombre, const std::vector<EntradaZip>& entradas) const {
        escribir(enDatos(nombre), hacerZip(entradas));
    }
    static inline const QString kBien = u"La Base de datos ha sido actualizada correctamente."_s;
    static QByteArray unaHoja(const QByteArray& id) {
        return kColumnasHoja + "\r\n" + id + ";1;1;654321;01002;15/03/2010;;\r\n";
    }
};

TEST_F(PantallaImportar, ElNombreLlegaHastaSuPrimerPunto) {
    archivo(u"a.otro.ZIP"_s, {});
    escribir(u"Datos/c.txt"_s, "x");
    auto& pantalla = abrir();
    ASSERT_EQ(pantalla.FileControl.Count(), 1);
    pantalla.UserDoubleClickRow(pantalla.FileControl, 0);
    EXPECT_EQ(pantalla.txtFichero.Text(), u"a"_s);
}

TEST_F(PantallaImportar, TodosHastaElPrimeroQueFalla) {
    archivo(u"1.zip"_s, {{"ANICHO.txt", unaHoja("901")}});
    archivo(u"2.zip"_s, {{"anicho.TXT", unaHoja("902")}, {"LEEME.txt", "hola"}});
    archivo(u"3.zip"_s, {{"ANICHO.txt", kColumnasHoja + "\r\n903;1;1;654321;01002;ayer;;\r\n"}});
    archivo(u"4.zip"_s, {{"ANICHO.txt", unaHoja("904")}});
    escribir(u"Datos/Temp.zip"_s, "de una importación interrumpida");
    auto& pantalla = abrir();
    pantalla.UserClick(pantalla.optTodos);
    pantalla.UserClick(pantalla.cmdImportar);
    EXPECT_EQ(mundo.textosDeCajas(), u"Problemas con el archivo ANICHO"_s);
    EXPECT_EQ(filas(u"SELECT IdCabecera FROM ANICHO WHERE IdCabecera>900 ORDER BY IdCabecera"_s),
              u"901|902"_s);
    ASSERT_TRUE(abierta());
    EXPECT_TRUE(pantalla.frmBarra.Visible());
    pantalla.UserClick(pantalla.cmdSalir);

    QFile::remove(ruta(u"Datos/3.zip"_s));
    auto& otra = abrir();
    otra.UserClick(otra.optTodos);
    otra.UserClick(otra.cmdImportar);
    EXPECT_EQ(mundo.textosDeCajas(), kBien);
    EXPECT_EQ(filas(u"SELECT IdCabecera FROM ANICHO WHERE IdCabecera>900 ORDER BY IdCabecera"_s),
              u"901|902|904"_s);
}

TEST_F(PantallaImportar, UnArchivoSoloTraeSusFicheros) {
    const QByteArray otra = "#!/bin/sh\ntouch intruso\n";
    std::vector<EntradaZip> entradas{
        {"7za", otra, 0100755},    {"Tarmel_11.mdb", otra},  {"../Tarmel_11.mdb", otra},
        {"../../fuera.txt", otra}, {"/tmp/fuera.txt", otra}, {"carpeta/ANICHO.txt", unaHoja("905"), 0100444},
        {"Temp.zip", otra}};
    constexpr int kMuchos = 50000;
    for (int i = 0; i < kMuchos; ++i)
        entradas.push_back({"n" + QByteArray::number(i), "x"});
    archivo(u"MALO.zip"_s, entradas);
    const QByteArray propio = leer(u"7za"_s);
    const QStringList antes = ficheros();
    importarArchivo(u"MALO"_s);
    EXPECT_EQ(mundo.textosDeCajas(), kBien);
    EXPECT_EQ(filas(u"SELECT CodAnillador FROM ANICHO WHERE IdCabecera=905"_s), u"654321"_s);
    EXPECT_EQ(ficheros(), antes);
    EXPECT_EQ(ficherosDeDatos(), (QStringList{u"7za"_s, u"MALO.zip"_s}))
        << "a write-protected text file goes with the others";
    EXPECT_EQ(leer(u"Datos/7za"_s), propio);
    comprobarLoPropio();
}

TEST_F(PantallaImportar, UnArchivoRotoNoSeImporta) {
    const QByteArray zip = hacerZip({{"ANIMAT.txt", "CodigoAnillador;NombreAnillador\r\n654321;INTRUSA\r\n"},
                                     {"ANICHO.txt", unaHoja("906")}});
    QByteArray dañado = zip;
    dañado.replace("INTRUSA", "INTRUSO");  // its check sum no longer fits
    for (const QByteArray& bytes : {zip.chopped(40), zip.left(60), dañado, QByteArray("no es un zip")}) {
        escribir(u"Datos/ROTO.zip"_s, bytes);
        importarArchivo(u"ROTO"_s);
        EXPECT_EQ(mundo.textosDeCajas(), u"Problemas con el archivo ROTO"_s) << bytes.size();
        comprobarLoPropio();
        EXPECT_EQ(filas(u"SELECT Count(*) FROM ANICHO"_s), u"1"_s);
        EXPECT_EQ(ficherosDeDatos(), (QStringList{u"7za"_s, u"ROTO.zip"_s})) << "nothing is left lying about";
        abrir().UserClick(abrir().cmdSalir);
        ASSERT_FALSE(abierta());
    }
    // A valid archive follows: nothing of the broken one is left to be read with it.
    archivo(u"VACIO.zip"_s, {{"LEEME.txt", "nada"}});
    importarArchivo(u"VACIO"_s);
    EXPECT_EQ(mundo.textosDeCajas(), kBien);
    comprobarLoPropio();
}

TEST_F(PantallaImportar, UnEnlaceNoSeSigue) {
    escribir(u"secreto.txt"_s, unaHoja("907"));
    archivo(u"LINK.zip"_s, {{"ANICHO.txt", ruta(u"secreto.txt"_s).toUtf8(), 0120777}});
    EXPECT_TRUE(termina([] { importarArchivo(u"LINK"_s); }) || !mundo.cajas.empty());
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANICHO"_s), u"1"_s);
    EXPECT_EQ(leer(u"secreto.txt"_s), unaHoja("907"));
}

TEST_F(PantallaImportar, MientrasDuraNoSeCierra) {
    archivo(u"1.zip"_s, {{"ANICHO.txt", unaHoja("908")}});
    bool siempreAbierta = true;
    mundo.alCederEventos = [&] {
        auto* pantalla = forms::pantallas().Loaded<frm09_ImportarDatos>();
        siempreAbierta = siempreAbierta && pantalla;
        if (pantalla) pantalla->UserClick(pantalla->cmdSalir);
        if (pantalla) pantalla->UserClose();
    };
    importarArchivo(u"1"_s);
    EXPECT_TRUE(siempreAbierta);
    EXPECT_EQ(mundo.textosDeCajas(), kBien);
    EXPECT_FALSE(abierta());
}

}  // namespace
}  // namespace tarmel
