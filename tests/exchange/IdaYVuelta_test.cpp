#include "exchange/Intercambio.h"

/// A ringer's sheets on their way through three installations: his own, his coordinator's, the central
/// office's. Each begins with a fresh database.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

class IdaYVuelta : public Intercambio {
 protected:
    static inline const QString kGrupo = u"900001"_s;

    void SetUp() override {
        arrancarComo(kAnillador);
        sql(u"UPDATE ANIMAT SET Email='ana@ejemplo.es', NombreAnillador='ANA ÑANDÚ'"_s);
        hoja(7, u"123456000001"_s, kAnillador, u"15/03/2010"_s, u"Paso"_s);
        hoja(8, u"123456000002"_s, kAnillador, u"10/03/2010"_s);
        hoja(9, u"123456000003"_s, kAnillador, u"12/03/2010"_s, {}, u"01006"_s);
        captura(7, 1, u"1L.00100"_s, u", Peso, HoraCaptura, Observaciones"_s,
                u", '12,25', '8:05:00', 'Ñandú | visto'"_s);
        captura(7, 2, u"1L.00101"_s, u", TamañoNidada, CodigoMuda"_s, u", '3', 2"_s);
        captura(8, 1, u"1L.00102"_s);
        captura(9, 4, u"1L.00103"_s);
    }

    /// Another installation of the program, run by a coordinator of the group.
    void instalar(const QString& nombre) {
        forms::pantallas().Reset();
        reiniciarSesion();
        const QDir carpeta(ruta(nombre));
        ASSERT_TRUE(carpeta.mkpath(u"Datos"_s));
        prepararBase(carpeta.filePath(u"Tarmel_11.mdb"_s), QStringLiteral(TARMEL_DATA_DIR "/tables"));
        QFile::link(QStandardPaths::findExecutable(u"7za"_s), carpeta.filePath(u"7za"_s));
        mundo.carpeta = carpeta.path();
        arrancarComo(u"555555"_s, true);
    }

    [[nodiscard]] QString enDatosDeAhora(const QString& nombre) const {
        return mundo.carpeta + u"/Datos/"_s + nombre;
    }

    /// A dispatch of 2010; its archive.
    QString enviar(const QString& remitente) const {
        ExportarTablas(1, {u"Año"_s, 0, 0, 2010, {}, {}, {}}, tablasDeIntercambio());
        ComprimirEnvio(u"26010101"_s);
        BorrarFichero(enDatosDeAhora(QString()), u"ANI*.txt"_s);
        return enDatosDeAhora(remitente + u"-26010101.ZIP"_s);
    }
    void recibir(const QString& archivo) const {
        ASSERT_TRUE(QFile::copy(archivo, enDatosDeAhora(u"ENVIO.ZIP"_s)));
        DescomprimirEnvio(u"ENVIO"_s);
        ASSERT_TRUE(ImportarTablas(tablasDeIntercambio()));
        BorrarFichero(enDatosDeAhora(QString()), u"ANI*.txt"_s);
    }

    /// The rows of a table in an archive, in order, without the columns that change on the way.
    [[nodiscard]] QStringList filasDe(const QString& archivo, const QString& tabla,
                                      const QStringList& sin) const {
        QProcess proceso;
        proceso.start(u"7za"_s, {u"e"_s, u"-so"_s, archivo, tabla + u".txt"_s});
        EXPECT_TRUE(proceso.waitForFinished());
        const QString texto = basic::fromAnsi(proceso.readAllStandardOutput());
        EXPECT_TRUE(texto.endsWith(u"\r\n"_s)) << tabla.toStdString();
        QStringList lineas = texto.chopped(2).split(u"\r\n"_s);
        const QStringList columnas = lineas.takeFirst().split(u';');
        QStringList filas;
        for (const QString& linea : lineas) {
            const QStringList valores = linea.split(u';');
            EXPECT_EQ(valores.size(), columnas.size());
            QStringList fila;
            for (qsizetype i = 0; i < columnas.size(); ++i) {
                if (!sin.contains(columnas[i])) fila << columnas[i] + u'=' + valores.value(i);
            }
            filas << fila.join(u';');
        }
        filas.sort();
        return filas;
    }
};

TEST_F(IdaYVuelta, LasMismasFilasSalvoLoQueElCaminoCambia) {
    const QString deAna = enviar(kAnillador);
    ASSERT_TRUE(QFile::exists(deAna));

    instalar(u"Coordinador"_s);
    recibir(deAna);
    EXPECT_EQ(filas(u"SELECT IdCabecera, NumHoja FROM ANICHO ORDER BY IdCabecera"_s),
              u"7;123456000003|8;123456000001|9;123456000002"_s)
        << "numbered by date in her series";
    const QString delGrupo = enviar(kGrupo);
    ASSERT_TRUE(QFile::exists(delGrupo));

    const QStringList contadores{u"IdAni"_s, u"IdCab"_s};
    EXPECT_EQ(filasDe(delGrupo, u"ANIMAT"_s, contadores), filasDe(deAna, u"ANIMAT"_s, contadores));
    EXPECT_EQ(filasDe(delGrupo, u"ANIAHO"_s, {}), filasDe(deAna, u"ANIAHO"_s, {}));
    EXPECT_EQ(filasDe(deAna, u"ANIAHO"_s, {}).size(), 4);
    const QStringList cambian = contadores + QStringList{u"NumHoja"_s, u"CodAnillador"_s};
    EXPECT_EQ(filasDe(delGrupo, u"ANICHO"_s, cambian), filasDe(deAna, u"ANICHO"_s, cambian));
    for (const QString& fila : filasDe(delGrupo, u"ANICHO"_s, {})) {
        EXPECT_TRUE(fila.contains(u"CodAnillador=900001;"_s)) << fila.toStdString();
        EXPECT_TRUE(fila.contains(u";Anillador=123456;"_s)) << fila.toStdString();
    }
    EXPECT_EQ(filas(u"SELECT DISTINCT CodAnillador FROM ANICHO"_s), kAnillador)
        << "only the file bears the group's code";

    // The central office takes the sheets for the group's.
    instalar(u"Central"_s);
    recibir(delGrupo);
    EXPECT_EQ(filas(u"SELECT IdCabecera, NumHoja, CodAnillador, Anillador FROM ANICHO ORDER BY IdCabecera"_s),
              u"7;900001000003;900001;123456|8;900001000001;900001;123456|9;900001000002;900001;123456"_s);
    const QString deVuelta = enviar(kGrupo);
    EXPECT_EQ(filasDe(deVuelta, u"ANIAHO"_s, {}), filasDe(deAna, u"ANIAHO"_s, {}));
    EXPECT_EQ(mundo.textosDeCajas(), QString());
}

}  // namespace
}  // namespace tarmel
