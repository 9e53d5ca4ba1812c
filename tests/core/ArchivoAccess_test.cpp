#include <QFile>

#include "core/Programa.h"
#include "support/ArchivoJet.h"
#include "support/BaseSuelta.h"
#include "support/Interrupcion.h"

/// A start on a user's own Access file.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

class ArchivoAccess : public Programa {
 protected:
    ArchivoAccess() {
        QFile::link(QStringLiteral(TARMEL_BUILD_DIR "/tools/tarmel_access"), ruta(u"tarmel_access"_s));
        ponerMuestra();
    }
    void ponerMuestra() const {
        QFile::remove(base());
        QFile::copy(QStringLiteral(TARMEL_TESTS_DIR "/data/access/present.mdb"), base());
    }
    void cerrar() {
        forms::pantallas().Reset();
        reiniciarSesion();
        host.cajas.clear();
    }
};

TEST_F(ArchivoAccess, UnoDanadoSeDiceYElProgramaTermina) {
    ArchivoJet jet(leer(u"Tarmel_11.mdb"_s));
    jet.vaciarPagina(jet.paginasDe(jet.definicionCon("AC..0002", 150)).at(0));
    escribir(u"Tarmel_11.mdb"_s, jet.bytes);
    EXPECT_TRUE(termina([] { Main(); }));
    ASSERT_EQ(host.cajas.size(), 1u);
    EXPECT_EQ(host.cajas[0].title, u"Base de datos de Access"_s);
    EXPECT_EQ(host.cajas[0].buttons, forms::box::Critical);
    EXPECT_TRUE(
        host.cajas[0].text.startsWith(u"No se han podido traer los datos del archivo de Access "
                                      u"Tarmel_11.mdb.\r\rTabla ANIAHO: según el archivo "
                                      "tiene 150 filas, y se han leído"_s));
    EXPECT_TRUE(host.cajas[0].text.endsWith(u"El archivo queda como estaba."_s));
    EXPECT_EQ(leer(u"Tarmel_11.mdb"_s), jet.bytes);
    EXPECT_FALSE(gConexion.IsOpen());
}

/// What no count would tell: a column that is read from another's place, and a table that the catalogue tells
/// as something else.
TEST_F(ArchivoAccess, DescripcionesDanadasNoVacianColumnasNiTablas) {
    ArchivoJet jet(leer(u"Tarmel_11.mdb"_s));
    const QByteArray sano = jet.bytes;
    const quint32 capturas = jet.definicionCon("AC..0002", 150);
    int variables = 0;
    const auto rechazado = [&](qsizetype lugar, char bits) {
        jet.bytes = sano;
        jet.bytes[lugar] = static_cast<char>(jet.bytes[lugar] ^ bits);
        escribir(u"Tarmel_11.mdb"_s, jet.bytes);
        host.cajas.clear();
        const bool dicho = termina([] { Main(); }) && host.cajas.size() == 1 &&
                           host.cajas[0].text.contains(u"dañad"_s) && leer(u"Tarmel_11.mdb"_s) == jet.bytes;
        cerrar();
        return dicho;
    };
    for (const int columna : {0, 3, 20, 30}) {
        const qsizetype lugar = jet.lugarDeColumna(capturas, columna);
        EXPECT_TRUE(rechazado(lugar + ArchivoJet::kNumeroDeColumna, 0x40)) << columna;
        // A column of fixed length has no use for the other number.
        if ((sano[lugar + ArchivoJet::kMarcasDeColumna] & ArchivoJet::kEsFija) != 0) continue;
        EXPECT_TRUE(rechazado(lugar + ArchivoJet::kLugarVariable, 0x40)) << columna;
        ++variables;
    }
    EXPECT_GT(variables, 0);
    EXPECT_TRUE(rechazado(jet.lugarEnCatalogo(capturas) + ArchivoJet::kTipoDeObjeto, 0x40));
}

/// Whenever it dies, the next start finds the Access file untouched, or the finished database and the Access
/// file beside it.
TEST_F(ArchivoAccess, MuereMientrasSeTrae) {
    const QByteArray original = leer(u"Tarmel_11.mdb"_s);
    const auto traer = [this](const Avisar& avisar) {
        avisar("empieza");
        Main();
    };
    const Corrida entera = correr(traer);
    ASSERT_EQ(entera.codigo, 0);
    int traidas = 0;
    repartirMuertes(
        "traer un archivo de Access", entera.escrituras,
        [&](int momento) {
            for (const QString& resto : ficheros())
                QFile::remove(ruta(resto));
            QFile::link(QStringLiteral(TARMEL_BUILD_DIR "/tools/tarmel_access"), ruta(u"tarmel_access"_s));
            ponerMuestra();
            EXPECT_TRUE(correr(traer, momento).muerto) << momento;
            const bool hecha = leer(u"Tarmel_11.mdb"_s) != original;
            traidas += hecha ? 1 : 0;
            EXPECT_TRUE(!hecha || leer(u"Tarmel_11.access.mdb"_s) == original) << momento;
            arrancar();
            EXPECT_EQ(host.cajas.size(), hecha ? 0u : 1u) << momento;
            EXPECT_EQ(
                filas(u"SELECT Count(*) FROM ANIAHO"_s) + u' ' + filas(u"SELECT Count(*) FROM ANICHO"_s),
                u"150 12"_s);
            cerrar();
            EXPECT_EQ(BaseSuelta(base()).valor(u"PRAGMA integrity_check"_s), u"ok"_s) << momento;
            EXPECT_EQ(leer(u"Tarmel_11.access.mdb"_s), original) << momento;
            EXPECT_EQ(ficheros().filter(u"access"_s).join(u' '), u"Tarmel_11.access.mdb tarmel_access"_s);
        },
        8);
    EXPECT_GT(traidas, 0) << "the deaths behind the change of names are among them";
}

}  // namespace
}  // namespace tarmel
