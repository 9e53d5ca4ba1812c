#include "support/Interrupcion.h"
#include "exchange/Intercambio.h"

/// A process that imports is killed at its changes of files. Every row is there, wholly as it was or wholly
/// as it came, and importing once more completes it.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

constexpr int kHojas = 10;
constexpr int kCapturasPorHoja = 250;  // together more than one group of rows
constexpr int kCapturas = kHojas * kCapturasPorHoja;

class InterrupcionImportacion : public Intercambio {
 protected:
    void SetUp() override { arrancarComo(kAnillador, true); }

    /// The same rows in another version of theirs.
    void ponerFicheros(int version) const {
        const QByteArray v = QByteArray::number(version);
        QByteArray hojas =
            "IdCabecera;NumHoja;CodAnillador;CodLocalidad;FechaCaptura;Campanna;Anillador;Grupo\r\n";
        QByteArray capturas =
            "IdCabecera;NumRegistro;TipoRegistro;Anilla;IdEspecie;CodigoEspecie;IniAnillador;"
            "Observaciones\r\n";
        for (int hoja = 1; hoja <= kHojas; ++hoja) {
            const QByteArray id = QByteArray::number(800 + hoja);
            hojas += id + ";1;123456;01002;15/03/2010;" + v + ";123456;900001\r\n";
            for (int i = 1; i <= kCapturasPorHoja; ++i)
                capturas +=
                    id + ';' + QByteArray::number(i) + ";A;" + v + "2L;2;00010;" + v + ';' + v + "\r\n";
        }
        escribir(u"Datos/ANICHO.TXT"_s, hojas);
        escribir(u"Datos/ANIAHO.TXT"_s, capturas);
    }
    static void parar() {
        forms::pantallas().Reset();
        reiniciarSesion();
    }
    static int contar(const QString& tablaYCondicion) {
        return filas(u"SELECT Count(*) FROM "_s + tablaYCondicion).toInt();
    }
};

TEST_F(InterrupcionImportacion, FilasEnterasYOtraVezLasCompleta) {
    int version = 0;
    const auto importar = [](const Avisar& avisar) {
        Main();
        identificar(kAnillador, true);
        avisar("empieza");
        if (!ImportarTablas(tablasDeIntercambio())) throw basic::RuntimeError(1);
    };
    ponerFicheros(version);
    parar();
    const Corrida entera = correr(importar);
    ASSERT_EQ(entera.codigo, 0);

    int mezclas = 0;
    repartirMuertes("import", entera.escrituras, [&](int momento) {
        ponerFicheros(++version);
        // How many groups the rows make hangs on the clock: a run may end before the last moments.
        const Corrida corrida = correr(importar, momento);
        EXPECT_TRUE(corrida.muerto || corrida.codigo == 0) << corrida.codigo;
        arrancarComo(kAnillador, true);
        EXPECT_EQ(contar(u"ANICHO WHERE CodLocalidad='01002' AND Anillador=123456 AND (NumHoja=-1 OR NumHoja "
                         "BETWEEN 123456000001 AND 123456000999)"_s),
                  kHojas);
        EXPECT_EQ(contar(u"ANIAHO WHERE Anilla=IniAnillador & '2L' AND Observaciones=IniAnillador"_s),
                  kCapturas)
            << "no row of two versions";
        const int nuevas = contar(u"ANIAHO WHERE IniAnillador='%1'"_s.arg(version));
        if (nuevas > 0 && nuevas < kCapturas) ++mezclas;
        parar();
    });
    EXPECT_GE(mezclas, 3) << "killed in the middle, not before or behind it";

    ponerFicheros(++version);
    arrancarComo(kAnillador, true);
    ASSERT_TRUE(ImportarTablas(tablasDeIntercambio()));
    EXPECT_EQ(contar(u"ANIAHO WHERE Anilla='%1' & '2L' AND IniAnillador='%1' AND Observaciones='%1'"_s.arg(
                  version)),
              kCapturas);
    EXPECT_EQ(contar(u"ANIAHO"_s), kCapturas);
    EXPECT_EQ(contar(u"ANICHO WHERE Campanna='%1' AND NumHoja BETWEEN 123456000001 AND 123456000999"_s.arg(
                  version)),
              kHojas);
    EXPECT_EQ(filas(u"SELECT NumHoja FROM ANICHO GROUP BY NumHoja HAVING Count(*) > 1"_s), QString());
    EXPECT_EQ(mundo.textosDeCajas(), QString());
}

}  // namespace
}  // namespace tarmel
