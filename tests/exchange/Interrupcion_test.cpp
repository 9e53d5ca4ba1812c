#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "exchange/Intercambio.h"

/// A process that imports is killed in the middle of it. Every row is there, wholly as it was or wholly as it
/// came, and importing once more completes it.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

constexpr int kMuertes = 12;
constexpr int kHojas = 30;
constexpr int kCapturasPorHoja = 500;
constexpr int kAvisos = 3;   // each round dies behind another of the groups of rows
constexpr int kPaso = 2300;  // microseconds more in each round

class InterrupcionImportacion : public Intercambio {
 protected:
    void SetUp() override { arrancarComo(kAnillador, true); }

    /// The same rows in another version of theirs.
    void ponerFicheros(const QByteArray& version) const {
        QByteArray hojas =
            "IdCabecera;NumHoja;CodAnillador;CodLocalidad;FechaCaptura;Campanna;Anillador;Grupo\r\n";
        QByteArray capturas =
            "IdCabecera;NumRegistro;TipoRegistro;Anilla;IdEspecie;CodigoEspecie;IniAnillador;"
            "Observaciones\r\n";
        for (int hoja = 1; hoja <= kHojas; ++hoja) {
            const QByteArray id = QByteArray::number(800 + hoja);
            hojas += id + ";1;123456;01002;15/03/2010;" + version + ";123456;900001\r\n";
            for (int i = 1; i <= kCapturasPorHoja; ++i)
                capturas += id + ';' + QByteArray::number(i) + ";A;" + version + "2L;2;00010;" + version +
                            ';' + version + "\r\n";
        }
        escribir(u"Datos/ANICHO.TXT"_s, hojas);
        escribir(u"Datos/ANIAHO.TXT"_s, capturas);
    }

    /// Imports, and tells whenever a group of captures has been closed.
    [[noreturn]] void importar(int aviso) {
        const auto avisar = [aviso] {
            if (::write(aviso, ".", 1) != 1) ::_exit(3);
        };
        try {
            Main();
            identificar(kAnillador, true);
            mundo.alCederEventos = [&] {
                if (gFicheroImportado.contains(u"ANIAHO"_s) && gLineaFichero.contains(u"2L;"_s)) avisar();
            };
            avisar();
            (void)ImportarTablas(tablasDeIntercambio());
            ::close(aviso);
            for (;;)
                ::pause();
        } catch (...) {
            ::_exit(4);
        }
    }

    void matarTras(int avisos, int microsegundos) {
        int tubo[2];
        ASSERT_EQ(::pipe2(tubo, O_CLOEXEC), 0);
        const pid_t hijo = ::fork();
        if (hijo == 0) importar(tubo[1]);
        ::close(tubo[1]);
        char punto = 0;
        for (int i = 0; i < avisos && ::read(tubo[0], &punto, 1) == 1; ++i) {
        }
        ::usleep(static_cast<useconds_t>(microsegundos));
        ::kill(hijo, SIGKILL);
        ::close(tubo[0]);
        int estado = 0;
        ::waitpid(hijo, &estado, 0);
        EXPECT_TRUE(WIFSIGNALED(estado)) << "it stopped by itself, code " << WEXITSTATUS(estado);
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
    ponerFicheros("A");
    ASSERT_TRUE(ImportarTablas(tablasDeIntercambio()));
    const int capturas = contar(u"ANIAHO"_s);
    ASSERT_EQ(capturas, kHojas * kCapturasPorHoja);
    parar();

    int mezclas = 0;
    for (int muerte = 0; muerte < kMuertes; ++muerte) {
        const auto version = static_cast<char>('B' + muerte);
        ponerFicheros(QByteArray(1, version));
        matarTras(1 + muerte % kAvisos, muerte * kPaso);
        arrancarComo(kAnillador, true);
        EXPECT_EQ(contar(u"ANICHO"_s), kHojas) << muerte;
        EXPECT_EQ(contar(u"ANIAHO"_s), capturas) << muerte;
        EXPECT_EQ(contar(u"ANICHO WHERE CodLocalidad='01002' AND Anillador=123456 AND (NumHoja=-1 OR NumHoja "
                         "BETWEEN 123456000001 AND 123456000999)"_s),
                  kHojas);
        EXPECT_EQ(contar(u"ANIAHO WHERE Anilla=IniAnillador & '2L' AND Observaciones=IniAnillador"_s),
                  capturas)
            << "no row of two versions";
        const int nuevas = contar(u"ANIAHO WHERE IniAnillador='%1'"_s.arg(QLatin1Char(version)));
        if (nuevas > 0 && nuevas < capturas) ++mezclas;
        parar();
    }
    EXPECT_GE(mezclas, 3) << "killed in the middle, not before or behind it";

    ponerFicheros("Z");
    arrancarComo(kAnillador, true);
    ASSERT_TRUE(ImportarTablas(tablasDeIntercambio()));
    EXPECT_EQ(contar(u"ANIAHO WHERE Anilla='Z2L' AND IniAnillador='Z' AND Observaciones='Z'"_s), capturas);
    EXPECT_EQ(contar(u"ANIAHO"_s), capturas);
    EXPECT_EQ(contar(u"ANICHO WHERE Campanna='Z' AND NumHoja BETWEEN 123456000001 AND 123456000999"_s),
              kHojas);
    EXPECT_EQ(filas(u"SELECT NumHoja FROM ANICHO GROUP BY NumHoja HAVING Count(*) > 1"_s), QString());
    EXPECT_EQ(mundo.textosDeCajas(), QString());
}

}  // namespace
}  // namespace tarmel
