#include "exchange/Catalogos.h"

#include "database/Csv.h"
#include "exchange/FicheroIntercambio.h"
#include "exchange/Intercambio.h"
#include "exchange/Zip.h"

/// The catalogue updates: what is added, what stays, and how a bad file ends.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

class Catalogos : public Intercambio {
 protected:
    void SetUp() override {
        Intercambio::SetUp();
        forms::pantallas().Register(frm04_ActualizarLocalidades::kName,
                                    [] { return std::make_shared<frm04_ActualizarLocalidades>(); });
        forms::pantallas().Register(frm05_ActualizarEspecies::kName,
                                    [] { return std::make_shared<frm05_ActualizarEspecies>(); });
        QDir(ruta(QString())).mkdir(u"descargas"_s);
    }
    template <typename Pantalla>
    static Pantalla& abrir() {
        auto& pantalla = forms::pantallas().Get<Pantalla>();
        pantalla.Show();
        return pantalla;
    }
    template <typename Pantalla>
    static bool abierta() {
        return forms::pantallas().Loaded<Pantalla>() != nullptr;
    }
    /// Chooses an archive that holds one text and imports it.
    template <typename Pantalla>
    Pantalla& importar(const QByteArray& texto) {
        return importarArchivo<Pantalla>(hacerZip({{"catalogo.txt", texto}}));
    }
    template <typename Pantalla>
    Pantalla& importarArchivo(const QByteArray& zip) {
        escribir(u"descargas/CATALOGO.zip"_s, zip);
        mundo.fichero = ruta(u"descargas/CATALOGO.zip"_s);
        auto& pantalla = abrir<Pantalla>();
        pantalla.UserClick(pantalla.cmdExaminar);
        pantalla.UserClick(pantalla.cmdImportar);
        return pantalla;
    }
    [[nodiscard]] QStringList descargas() const {
        return QDir(ruta(u"descargas"_s)).entryList(QDir::Files | QDir::System);
    }
    static inline const QString kExito = u"El Archivo ha sido Importado con Éxito"_s;
};

TEST_F(Catalogos, SeAnadenLasLocalidadesQueFaltan) {
    const QString antes = filas(u"SELECT Count(*) FROM ANILOC"_s);
    importar<frm04_ActualizarLocalidades>(
        "cabecera;que;nadie;lee\r\n\r\n"
        "L1;41;Do\xF1"
        "ana;Almonte;N;W;36;59;6;26\r\n\r\n"
        "01002;01;OTRO NOMBRE;Amurrio;N;W;43;3;3;0\r\n"
        "L2;41;Sin grados;Almonte;N;W;;;;;y lo que sobra\r\n");
    ASSERT_EQ(mundo.cajas.size(), 1u);
    EXPECT_EQ(mundo.cajas[0].title, u"Importación de Datos"_s);
    EXPECT_EQ(mundo.cajas[0].buttons, forms::box::Information);
    EXPECT_EQ(mundo.textosDeCajas(), kExito);
    EXPECT_FALSE(abierta<frm04_ActualizarLocalidades>());
    EXPECT_EQ(
        filas(u"SELECT CodigoProvincia, NombreLocalidad, GradosLatitud, MinutosLongitud, OrigenDatos FROM "
              "ANILOC WHERE CodigoLocalidad LIKE 'L_' ORDER BY CodigoLocalidad"_s),
        u"41;Doñana;36;26;0|41;Sin grados;;;0"_s);
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANILOC WHERE IdLocalidad<>IdLoc OR IdLocalidad=-1"_s), u"0"_s);
    EXPECT_EQ(filas(u"SELECT NombreLocalidad FROM ANILOC WHERE CodigoLocalidad='01002'"_s), u"Amurrio"_s);
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANILOC"_s).toInt(), antes.toInt() + 2);
    EXPECT_EQ(descargas(), QStringList{u"CATALOGO.zip"_s}) << "the text goes, the archive stays";
}

TEST_F(Catalogos, SeAnadenLasEspeciesQueFaltan) {
    importar<frm05_ActualizarEspecies>(
        "codigo;nombre;;iberica\r\n99001;Avis nova;Ave nueva;1\r\n00010;X;X;0\r\n");
    EXPECT_EQ(mundo.textosDeCajas(), kExito);
    EXPECT_EQ(
        filas(u"SELECT NombreEspecie, NombreEspecie2, Iberica FROM ANIBRD WHERE CodigoEspecie='99001'"_s),
        u"Avis nova;;1"_s)
        << "the Spanish name is never read";
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIBRD WHERE IdEspecie<>IdEsp"_s), u"0"_s);
    EXPECT_EQ(filas(u"SELECT NombreEspecie FROM ANIBRD WHERE CodigoEspecie='00010'"_s),
              u"Struthio camelus"_s);
}

/// The lists from which the build packs the archives that come with the program.
TEST_F(Catalogos, LosDeMuestraEntranEnteros) {
    const auto texto = [this](const QString& lista) {
        EscritorFichero fichero(ruta(u"texto"_s));
        for (const std::vector<QString>& fila :
             leerCsv(QStringLiteral(TARMEL_DATA_DIR "/catalogos/") + lista))
            fichero.escribir(QStringList(fila.begin(), fila.end()));
        fichero.cerrar();
        return leer(u"texto"_s);
    };
    const int antes = filas(u"SELECT Count(*) FROM ANILOC"_s).toInt();
    importar<frm04_ActualizarLocalidades>(texto(u"LOCALIDADES.csv"_s));
    EXPECT_EQ(mundo.textosDeCajas(), kExito);
    EXPECT_GT(filas(u"SELECT Count(*) FROM ANILOC"_s).toInt(), antes + 100);
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANILOC WHERE NombreLocalidad LIKE '%?%'"_s), u"0"_s);
    importar<frm05_ActualizarEspecies>(texto(u"ESPECIES.csv"_s));
    EXPECT_EQ(mundo.textosDeCajas(), kExito);
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIBRD WHERE NombreEspecie LIKE 'Especie de ejemplo%'"_s), u"2"_s);
}

TEST_F(Catalogos, SinFilasTambienEsUnExito) {
    importar<frm04_ActualizarLocalidades>("solo la cabecera\r\n");
    EXPECT_EQ(mundo.textosDeCajas(), kExito);
}

TEST_F(Catalogos, UnCodigoQueEsCondicionNoHaceNada) {
    const QString antes = filas(u"SELECT * FROM ANILOC ORDER BY IdLoc"_s);
    importar<frm04_ActualizarLocalidades>("c\r\nx' OR '1'='1;08;X;X;N;E;41;2;2;7\r\n");
    EXPECT_EQ(mundo.textosDeCajas(), kExito) << "it finds rows, as a code that exists does";
    EXPECT_EQ(filas(u"SELECT * FROM ANILOC ORDER BY IdLoc"_s), antes);
}

struct CasoCatalogo {
    const char* nombre;
    QByteArray texto;
    QString cajas;
};
class CatalogoMalo : public Catalogos, public testing::WithParamInterface<CasoCatalogo> {};

TEST_P(CatalogoMalo, SeDiceYQuedanLasFilasAnteriores) {
    const QString antes = filas(u"SELECT * FROM ANILOC ORDER BY IdLoc"_s);
    auto& pantalla = importar<frm04_ActualizarLocalidades>("c\r\nL0;41;Antes;Almonte;N;W;36;59;6;26\r\n" +
                                                           GetParam().texto);
    EXPECT_EQ(mundo.textosDeCajas(), GetParam().cajas);
    ASSERT_TRUE(abierta<frm04_ActualizarLocalidades>());
    EXPECT_FALSE(pantalla.SSPanel1.Visible());
    EXPECT_TRUE(descargas().contains(u"catalogo.txt"_s));
    EXPECT_TRUE(filas(u"SELECT * FROM ANILOC ORDER BY IdLoc"_s).startsWith(antes));
}

const QString kNoImportado = u"|El Archivo no ha sido Importado"_s;

INSTANTIATE_TEST_SUITE_P(
    Casos, CatalogoMalo,
    testing::Values(CasoCatalogo{"Apostrofo", "L1;08;L'Hospitalet;X;N;E;41;2;2;7\r\n",
                                 u"Ya existe un registro con esa clave"_s + kNoImportado},
                    CasoCatalogo{"CodigoQueRompeLaCondicion", "x' OR;08;X;X;N;E;41;2;2;7\r\n",
                                 u"Ya existe un registro con esa clave"_s + kNoImportado},
                    CasoCatalogo{"CamposDeMenos", "L1;08;Corta\r\n",
                                 u"El subíndice está fuera del intervalo 9"_s + kNoImportado},
                    CasoCatalogo{"GradosQueNoSonNumero", "L1;08;X;X;N;E;norte;2;2;7\r\n",
                                 u"Ya existe un registro con esa clave"_s + kNoImportado},
                    CasoCatalogo{"BytesNulos", QByteArray("L1;08;X\0;X;N;E;41;2;2;7\r\n", 25),
                                 u"El fichero no es un fichero de texto 321"_s + kNoImportado},
                    CasoCatalogo{"LineaLarga", QByteArray(70000, 'x') + "\r\n",
                                 u"El fichero tiene una línea demasiado larga 321"_s + kNoImportado},
                    CasoCatalogo{"CamposDeMas", QByteArray(300, ';') + "\r\n",
                                 u"El fichero tiene demasiados campos 321"_s + kNoImportado}),
    [](const auto& caso) { return caso.param.nombre; });

TEST_F(Catalogos, LosFicherosHostilesDeLaImportacion) {
    const QString localidades = filas(u"SELECT * FROM ANILOC ORDER BY IdLoc"_s);
    const QString especies = filas(u"SELECT * FROM ANIBRD ORDER BY IdEsp"_s);
    const QDir carpeta(QStringLiteral(TARMEL_TESTS_DIR "/exchange/hostiles"));
    for (const QString& nombre : carpeta.entryList(QDir::Files)) {
        QFile fichero(carpeta.filePath(nombre));
        ASSERT_TRUE(fichero.open(QIODevice::ReadOnly));
        const QByteArray texto = fichero.readAll();
        importar<frm04_ActualizarLocalidades>(texto);
        importar<frm05_ActualizarEspecies>(texto);
        EXPECT_FALSE(mundo.textosDeCajas().isEmpty()) << nombre.toStdString();
        forms::pantallas().Unload(frm04_ActualizarLocalidades::kName);
        forms::pantallas().Unload(frm05_ActualizarEspecies::kName);
        EXPECT_TRUE(filas(u"SELECT * FROM ANILOC ORDER BY IdLoc"_s).startsWith(localidades))
            << nombre.toStdString();
        EXPECT_TRUE(filas(u"SELECT * FROM ANIBRD ORDER BY IdEsp"_s).startsWith(especies))
            << nombre.toStdString();
    }
}

TEST_F(Catalogos, DelArchivoSoloSaleSuTexto) {
    const QByteArray otra = "export PATH=.\n";
    importarArchivo<frm04_ActualizarLocalidades>(hacerZip(
        {{".bashrc", otra}, {"../fuera.txt", otra}, {"sub/Catalogo.TXT", "c\r\n", 0100444}, {"7za", otra}}));
    EXPECT_EQ(mundo.textosDeCajas(), kExito);
    EXPECT_EQ(QDir(ruta(u"descargas"_s)).entryList(QDir::Files | QDir::Hidden),
              QStringList{u"CATALOGO.zip"_s});
    EXPECT_FALSE(QFile::exists(ruta(u"fuera.txt"_s)));
}

TEST_F(Catalogos, ArchivosQueNoSirven) {
    importarArchivo<frm05_ActualizarEspecies>("esto no es un zip");
    EXPECT_EQ(mundo.textosDeCajas(),
              u"El archivo comprimido no se ha podido descomprimir 321|El Archivo no ha sido Importado"_s);
    QFile enorme(ruta(u"Datos/CATALOGO.txt"_s));
    ASSERT_TRUE(enorme.open(QIODevice::WriteOnly) && enorme.resize(kMaxFicheroEntero + 1));
    empaquetar(u"CATALOGO.zip"_s, {u"CATALOGO.txt"_s});
    EXPECT_LT(leer(u"Datos/CATALOGO.zip"_s).size(), 1024 * 1024) << "small as an archive";
    importarArchivo<frm05_ActualizarEspecies>(leer(u"Datos/CATALOGO.zip"_s));
    EXPECT_EQ(
        mundo.textosDeCajas(),
        u"El archivo comprimido contiene un fichero demasiado grande 321|El Archivo no ha sido Importado"_s);
    QFile::remove(ruta(u"descargas/CATALOGO.txt"_s));
    importarArchivo<frm05_ActualizarEspecies>(hacerZip({{"otro.txt", "c\r\n"}}));
    EXPECT_EQ(mundo.textosDeCajas(), u"No se ha encontrado el archivo 53|El Archivo no ha sido Importado"_s);
    // Laid beside the archive by hand it is read at the next press.
    escribir(u"descargas/CATALOGO.TXT"_s, "c\r\n99002;Avis altera;;1\r\n");
    auto& pantalla = abrir<frm05_ActualizarEspecies>();
    pantalla.UserClick(pantalla.cmdImportar);
    EXPECT_EQ(mundo.textosDeCajas(), kExito);
    EXPECT_EQ(filas(u"SELECT NombreEspecie FROM ANIBRD WHERE CodigoEspecie='99002'"_s), u"Avis altera"_s);
}

TEST_F(Catalogos, SinElegirNadaNoHayQueImportar) {
    auto& pantalla = abrir<frm04_ActualizarLocalidades>();
    EXPECT_FALSE(pantalla.cmdImportar.Enabled());
    EXPECT_FALSE(pantalla.SSPanel1.Visible());
    pantalla.UserClick(pantalla.cmdExaminar);
    EXPECT_EQ(mundo.textosDeCajas(), QString()) << "a dialogue given up says nothing";
    EXPECT_FALSE(pantalla.cmdImportar.Enabled());
    pantalla.cmdImportar_Click();
    EXPECT_EQ(mundo.cajas.back().title, u"Ningún Archivo Seleccionado"_s);
    EXPECT_EQ(mundo.textosDeCajas(), u"Debe seleccionar un archivo de Datos"_s);

    QFile::remove(ruta(u"7za"_s));
    mundo.fichero = ruta(u"descargas/x.zip"_s);
    pantalla.UserClick(pantalla.cmdExaminar);
    EXPECT_EQ(mundo.textosDeCajas(), u"Se ha producido un Error: No se ha encontrado el archivo"_s);
    pantalla.UserClick(pantalla.cmdSalir);
    EXPECT_FALSE(abierta<frm04_ActualizarLocalidades>());
}

}  // namespace
}  // namespace tarmel
