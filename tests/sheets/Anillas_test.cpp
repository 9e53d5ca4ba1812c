#include "sheets/Anillas.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "HostDePrueba.h"

namespace {

using namespace Qt::StringLiterals;

const QString kTodoLetras = u"No pueden ser todo letras"_s;
const QString kIncorrecto =
    u"El número de anilla es incorrecto. Ponga todos los dígitos que aparecen en la anilla (incluidos los ceros)"_s;

QString normalizada(QString anilla) {
    return tarmel::NormalizarAnilla(anilla);
}

QString siguiente(QString anilla) {
    return tarmel::SiguienteAnilla(anilla);
}

/// "modelo inscripción número", or "falla".
QString descompuesta(const QString& anilla) {
    QString modelo;
    QString inscripcion;
    qint32 numero = 0;
    bool error = false;
    tarmel::DescomponerAnilla(anilla, modelo, inscripcion, numero, error);
    return error ? u"falla"_s : QStringList{modelo, inscripcion, QString::number(numero)}.join(u' ');
}

struct DeLaAnilla {
    const char* tecleada;
    const char* normalizada;
    const char* partes;
};

class LecturaDeAnillas : public testing::TestWithParam<DeLaAnilla> {
 protected:
    HostDePrueba host;
};

TEST_P(LecturaDeAnillas, NormalizaYDescompone) {
    const auto& fila = GetParam();
    const QString anilla = normalizada(QString(fila.tecleada));
    EXPECT_EQ(anilla, QString(fila.normalizada));
    EXPECT_EQ(host.textosDeCajas(), QString());

    const QString partes = descompuesta(anilla);
    EXPECT_EQ(partes, QString(fila.partes));
    EXPECT_EQ(host.textosDeCajas(), partes == u"falla" ? kIncorrecto : QString());
}

INSTANTIATE_TEST_SUITE_P(
    ModelosDelEsquema, LecturaDeAnillas,
    testing::Values(
        DeLaAnilla{"123456", "..123456", "0 0 123456"}, DeLaAnilla{"6123456", ".6123456", "6 6 123456"},
        DeLaAnilla{"1012345", ".1012345", "10 10 12345"}, DeLaAnilla{"1112345", ".1112345", "11 11 12345"},
        DeLaAnilla{"A12345", "A..12345", "A A 12345"}, DeLaAnilla{"Y00001", "Y..00001", "Y Y 1"},
        DeLaAnilla{"L12345", "L..12345", "L L 12345"}, DeLaAnilla{"L123456", "L.123456", "L L 123456"},
        DeLaAnilla{"V123456", "V.123456", "V V 123456"}, DeLaAnilla{"N12345", "N..12345", "N N 12345"},
        DeLaAnilla{"N123456", "N.123456", "L N 123456"}, DeLaAnilla{"1L12345", "1L.12345", "L 1L 12345"},
        DeLaAnilla{"3N12345", "3N.12345", "L 3N 12345"}, DeLaAnilla{"AB1234", "AB..1234", "0 AB 1234"},
        DeLaAnilla{"2A123456", "2A123456", "2 2A 123456"}, DeLaAnilla{"1V123456", "1V123456", "1V 1V 123456"},
        DeLaAnilla{"3M123456", "3M123456", "3M 3M 123456"}, DeLaAnilla{"9000000", ".9000000", "9 9 0"}));

// Dots group digits, so that a short number reads as it is; a number of too many digits loses the first ones
// silently.
INSTANTIATE_TEST_SUITE_P(NumerosDeOtraLongitud, LecturaDeAnillas,
                         testing::Values(DeLaAnilla{"A1234", "A...1234", "A A 1234"},
                                         DeLaAnilla{"A5", "A......5", "A A 5"},
                                         DeLaAnilla{"AB12345", "AB.12345", "0 AB 2345"}));

INSTANTIATE_TEST_SUITE_P(
    SinModelo, LecturaDeAnillas,
    testing::Values(DeLaAnilla{"12345", "...12345", "falla"}, DeLaAnilla{"12345678", "12345678", "falla"},
                    DeLaAnilla{"1712345", ".1712345", "falla"}, DeLaAnilla{"Z12345", "Z..12345", "falla"},
                    DeLaAnilla{"4L12345", "4L.12345", "falla"}, DeLaAnilla{"1234A", "...1234A", "falla"},
                    DeLaAnilla{"A1B2", "A1B....2", "falla"}, DeLaAnilla{"1V12A456", "1V12A456", "falla"},
                    DeLaAnilla{"1V0001E4", "1V0001E4", "falla"}, DeLaAnilla{"", "", "falla"}));

struct Paso {
    const char* anilla;
    const char* siguiente;
};

class PasoDeAnillas : public testing::TestWithParam<Paso> {
 protected:
    HostDePrueba host;
};

TEST_P(PasoDeAnillas, SigueLaSerie) {
    EXPECT_EQ(siguiente(QString(GetParam().anilla)), QString(GetParam().siguiente));
    EXPECT_EQ(host.textosDeCajas(), QString());
}

INSTANTIATE_TEST_SUITE_P(Series, PasoDeAnillas,
                         testing::Values(Paso{"000123", "000124"}, Paso{"999", "1000"},
                                         Paso{"AB0999", "AB1000"}, Paso{"AB9999", "AB10000"},
                                         Paso{"A12345", "A12346"}, Paso{"A0012", "A0013"},
                                         Paso{"A..12345", "A..12346"}, Paso{"AB..1234", "AB..1235"},
                                         Paso{"1235AB", "1236AB"}, Paso{"0999A", "1000A"},
                                         Paso{"A1B2", "A1B3"}, Paso{"", ""}));

INSTANTIATE_TEST_SUITE_P(
    // Two of the letters at the end stay, whatever their number; what is no number, or the last one, stays as
    // it is.
    Rarezas, PasoDeAnillas,
    testing::Values(Paso{"12ABC", "13BC"}, Paso{"1A2B", "022B"}, Paso{"1L.12345", "1LL.12345"},
                    Paso{"2147483647", "2147483647"}, Paso{"A0999", "A1000"}, Paso{"A09999", "A10000"}));

TEST(Anillas, SoloLetrasSeRechazaConSuAviso) {
    HostDePrueba host;
    QString anilla = u"ABC"_s;
    EXPECT_EQ(tarmel::NormalizarAnilla(anilla), QString());
    EXPECT_EQ(anilla, QString());
    EXPECT_EQ(siguiente(u"ABC"_s), QString());
    ASSERT_EQ(host.cajas.size(), 2u);
    for (const auto& caja : host.cajas) {
        EXPECT_EQ(caja.text, kTodoLetras);
        EXPECT_EQ(caja.title, u"Error");
        EXPECT_EQ(caja.buttons, tarmel::forms::box::Critical);
    }
}

TEST(Anillas, NormalizarDejaElTextoRellenoEnSuArgumento) {
    HostDePrueba host;
    QString vacia;
    EXPECT_EQ(tarmel::NormalizarAnilla(vacia), QString());
    EXPECT_EQ(vacia, u"........");
    // The store's check of a range can hand over more than a ring holds.
    EXPECT_EQ(normalizada(u"102147483647"_s), u"102147483647");
    EXPECT_EQ(host.textosDeCajas(), QString());
}

TEST(Anillas, ElFalloDeLaDescomposicionAvisaConTituloEIcono) {
    HostDePrueba host;
    EXPECT_EQ(descompuesta(u"Z..12345"_s), u"falla");
    ASSERT_EQ(host.cajas.size(), 1u);
    EXPECT_EQ(host.cajas[0].text, kIncorrecto);
    EXPECT_EQ(host.cajas[0].title, u"Error en el número de anilla");
    EXPECT_EQ(host.cajas[0].buttons, tarmel::forms::box::Critical);
}

}  // namespace
