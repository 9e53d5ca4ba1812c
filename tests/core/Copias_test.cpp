#include "database/Copias.h"

#include <QFileInfo>
#include <QRegularExpression>

#include "core/CopiasSeguridad.h"
#include "core/Programa.h"
#include "core/frm03_Principal.h"
#include "platform/ado/FileCheck.h"
#include "support/DiscoAveriado.h"
#include "support/Interrupcion.h"

/// The copies of the database: when they are made, what they hold, which of them stay, and what cannot spoil
/// them.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

class Copias : public Programa {
 protected:
    [[nodiscard]] QStringList copias() const {
        return QDir(ruta(u"Copias"_s)).entryList(QDir::Files, QDir::Name);
    }
    void ponerCopia(const QString& fecha) const {
        QDir(ruta({})).mkpath(u"Copias"_s);
        ASSERT_TRUE(QFile::copy(basePreparada(), ruta(u"Copias/Tarmel_11_"_s + fecha + u".mdb"_s)));
    }
    /// Lets the user pause until the program has nothing left to do.
    void pausa() {
        ASSERT_TRUE(host.enPausa);
        while (host.enPausa()) {
        }
    }
    static void anadir(int numero) {
        sql(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador, NombreAnillador) VALUES (%1, %1, 'X')"_s.arg(
            numero));
    }
    static QString anadidos() { return filas(u"SELECT Count(*) FROM ANIMAT WHERE CodigoAnillador < 1000"_s); }
    static QString anadidosEn(const QString& copia) {
        ado::Connection conexion;
        conexion.OpenFile(copia);
        ado::Recordset rs;
        rs.Open(u"SELECT Count(*) FROM ANIMAT WHERE CodigoAnillador < 1000"_s, conexion);
        return rs.Text(0);
    }
    [[nodiscard]] QString mensaje() const {
        return forms::pantallas().Get<frm03_Principal>().staStatusBar.PanelText(u"Messages"_s);
    }
};

TEST_F(Copias, UnaAlDiaEnUnaPausa) {
    arrancarComo(u"123456"_s);
    EXPECT_FALSE(QFileInfo::exists(ruta(u"Copias"_s))) << "nothing before the user pauses";
    anadir(1);
    pausa();
    ASSERT_EQ(copias().size(), 1);
    const QString copia = ruta(u"Copias/"_s + copias()[0]);
    EXPECT_TRUE(ado::isWhole(copia));
    EXPECT_TRUE(copias()[0].startsWith(u"Tarmel_11_"_s + QDate::currentDate().toString(Qt::ISODate)));
    EXPECT_EQ(anadidosEn(copia), u"1"_s);
    EXPECT_EQ(mensaje(), QString());
    anadir(500);
    pausa();
    EXPECT_EQ(copias().size(), 1) << "once a day";
}

TEST_F(Copias, AntesDeUnaOperacionSalvoQueNadaHayaCambiado) {
    arrancarComo(u"123456"_s);
    anadir(1);
    copiarAntesDe(u"la importación"_s);
    ASSERT_EQ(copias().size(), 1);
    copiarAntesDe(u"la importación"_s);
    EXPECT_EQ(copias().size(), 1) << "the last one holds the very same";
    anadir(2);
    copiarAntesDe(u"la importación"_s);
    ASSERT_EQ(copias().size(), 2);
    EXPECT_EQ(anadidosEn(ruta(u"Copias/"_s + copias()[0])), u"1"_s);
    EXPECT_EQ(anadidosEn(ruta(u"Copias/"_s + copias()[1])), u"2"_s);
    EXPECT_TRUE(host.cajas.empty());
    QFile::remove(ruta(u"Copias/"_s + copias()[1]));
    copiarAntesDe(u"la importación"_s);
    EXPECT_EQ(copias().size(), 2) << "a copy that somebody removed does not count";
}

TEST_F(Copias, QuedanDiezYLaUltimaDeCadaMes) {
    for (const char16_t* fecha :
         {u"2010-01-05_080000", u"2010-01-20_080000", u"2010-02-28_080000", u"2010-04-01_080000",
          u"2010-04-02_080000", u"2010-04-03_080000", u"2010-04-04_080000", u"2010-04-05_080000",
          u"2010-04-06_080000", u"2010-04-07_080000", u"2010-04-08_080000", u"2010-04-09_080000",
          u"2010-04-10_080000"})
        ponerCopia(QString::fromUtf16(fecha));
    escribir(u"Copias/Tarmel_11_notas.mdb"_s, "mine");
    escribir(u"Copias/Tarmel_11_2010-01-01_080000.mdb.parcial"_s, "left by a program that died");
    arrancarComo(u"123456"_s);
    pausa();
    QStringList quedan = copias();
    EXPECT_EQ(quedan.removeAll(u"Tarmel_11_notas.mdb"_s), 1);
    ASSERT_EQ(quedan.size(), 13);
    EXPECT_EQ(quedan.mid(0, 4),
              (QStringList{u"Tarmel_11_2010-01-20_080000.mdb"_s, u"Tarmel_11_2010-02-28_080000.mdb"_s,
                           u"Tarmel_11_2010-04-01_080000.mdb"_s, u"Tarmel_11_2010-04-02_080000.mdb"_s}));
    pausa();
    EXPECT_EQ(copias().size(), 14);
}

TEST_F(Copias, LaQueFallaSeDiceYNoDetieneNada) {
    escribir(u"Copias"_s, "a file where the folder should be");
    arrancarComo(u"123456"_s);
    pausa();
    EXPECT_TRUE(mensaje().startsWith(u"No se ha podido guardar la copia de seguridad: "_s))
        << mensaje().toStdString();
    MostrarMensajeEstado({});
    pausa();
    EXPECT_EQ(mensaje(), QString()) << "not again at once";
    copiarAntesDe(u"la importación"_s);
    EXPECT_NE(mensaje(), QString());
    MostrarMensajeEstado({});
    pausa();
    EXPECT_NE(mensaje(), QString()) << "still there when the command has cleared its own";
    EXPECT_TRUE(host.cajas.empty());
}

TEST_F(Copias, CerrarLaBaseAbandonaLaQueEstaEnMarcha) {
    arrancarComo(u"123456"_s);
    ASSERT_TRUE(host.enPausa());
    gConexion.Close();
    EXPECT_FALSE(host.enPausa());
    AbrirConexion();
    pausa();
    EXPECT_EQ(copias().size(), 1);
    EXPECT_EQ(mensaje(), QString());
}

TEST_F(Copias, DiscoAveriadoEnCadaEscritura) {
    DiscoAveriado disco;
    ponerCopia(u"2010-04-01_080000"_s);
    arrancarComo(u"123456"_s);
    anadir(1);
    for (const auto averia : {DiscoAveriado::Averia::Lleno, DiscoAveriado::Averia::Error}) {
        disco.reparar();
        const int antes = static_cast<int>(copias().size());
        copiarAntesDe(u"la prueba"_s);
        ASSERT_EQ(copias().size(), antes + 1);
        const int operaciones = disco.operaciones(averia);
        ASSERT_GT(operaciones, 20);
        anadir(antes + 1);
        const QStringList buenas = copias();
        for (const int momento : momentos(operaciones, muertes())) {
            disco.averiar(averia, momento);
            copiarAntesDe(u"la prueba"_s);
            ASSERT_TRUE(disco.haFallado()) << momento;
            EXPECT_TRUE(mensaje().startsWith(u"No se ha podido guardar la copia de seguridad: "_s))
                << momento;
            EXPECT_EQ(copias(), buenas) << momento;
        }
        disco.reparar();
        anadir(100 + antes);
    }
    EXPECT_EQ(anadidos(), u"5"_s);
    EXPECT_TRUE(host.cajas.empty());
    gConexion.Close();
    EXPECT_TRUE(ado::isWhole(base()));
}

TEST_F(Copias, MuerteEnMedioDeUnaCopia) {
    ponerCopia(u"2010-04-01_080000"_s);
    const auto copiarYTeclear = [this](const Avisar& avisar) {
        arrancarComo(u"123456"_s);
        avisar("empieza");
        CopiaEnCurso copia(gConexion, base());
        // Some pages and a row in turn, so that every run changes the files alike.
        for (int i = 0; i < 5; ++i) {
            (void)copia.paso({});
            const int numero = anadidos().toInt() + 1;
            anadir(numero);
            avisar(QByteArray::number(numero));
        }
        while (copia.paso(std::chrono::milliseconds(5))) {
        }
        copiarAntesDe(u"la importación"_s);
    };
    const QByteArray limpia = leer(u"Tarmel_11.mdb"_s);
    const auto empezarDeNuevo = [&] {
        for (const QString& nombre : copias().mid(1))
            QFile::remove(ruta(u"Copias/"_s + nombre));
        for (const char* lado : {"-wal", "-shm"})
            QFile::remove(base() + QLatin1String(lado));
        escribir(u"Tarmel_11.mdb"_s, limpia);
    };
    const Corrida entera = correr(copiarYTeclear);
    ASSERT_EQ(entera.codigo, 0);
    repartirMuertes("copying", entera.escrituras, [&](int momento) {
        empezarDeNuevo();
        const Corrida corrida = correr(copiarYTeclear, momento);
        EXPECT_TRUE(corrida.muerto) << "it stopped by itself, code " << corrida.codigo;
        EXPECT_TRUE(ado::isWhole(base())) << momento;
        for (const QString& nombre : copias().filter(QRegularExpression(u"mdb$"_s)))
            EXPECT_TRUE(ado::isWhole(ruta(u"Copias/"_s + nombre))) << momento;
        EXPECT_EQ(copias().value(0), u"Tarmel_11_2010-04-01_080000.mdb"_s);
        arrancarComo(u"123456"_s);
        EXPECT_GE(anadidos().toInt(), static_cast<int>(corrida.avisos.size()) - 1) << momento;
        pausa();
        copiarAntesDe(u"la importación"_s);
        for (const QString& nombre : copias())
            EXPECT_TRUE(nombre.endsWith(u".mdb"_s)) << nombre.toStdString() << momento;
        EXPECT_GE(copias().size(), 2);
        forms::pantallas().Reset();
        reiniciarSesion();
    });
}

}  // namespace
}  // namespace tarmel
