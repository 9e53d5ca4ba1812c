#include <fcntl.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "core/Programa.h"
#include "core/frm03_Principal.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"

/// A process that types sheets and captures is killed in the middle of it. Whatever it has told the ringer to
/// be saved is there afterwards, and nothing is there by halves.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

constexpr int kMuertes = 20;
constexpr int kCapturasPorHoja = 3;
/// Each round dies behind another of so many answers: the start, a sheet, its captures, the next sheet ...
constexpr int kRespuestas = 7;
/// Microseconds more in each round, from right behind an answer into the save that follows.
constexpr int kPaso = 700;

class Interrupcion : public Programa {
 protected:
    static void elegir(forms::ComboBox& combo, const QString& comienzo) {
        combo.form().UserChoose(combo, combo.Find(comienzo));
    }

    /// Types sheet after sheet until it is killed, and tells what the screens have confirmed.
    [[noreturn]] void teclear(int aviso) {
        const auto avisar = [aviso](const QString& linea) {
            const QByteArray bytes = linea.toUtf8() + '\n';
            if (::write(aviso, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
                ::_exit(3);
        };
        try {
            Main();
            identificar(u"123456"_s);
            avisar(u"empieza"_s);
            for (;;) {
                teclearHoja(avisar);
                if (!host.cajas.empty()) ::_exit(2);
            }
        } catch (...) {
            ::_exit(4);
        }
    }

    template <typename Avisar>
    void teclearHoja(const Avisar& avisar) {
        forms::runAction([] { forms::pantallas().Get<frm03_Principal>().mnuNuevaHoja_Click(); });
        auto& hoja = forms::pantallas().Get<frm06_HojasCampo>();
        elegir(hoja.dbcboLocalidad, u"amurrio"_s);
        elegir(hoja.cboHabitat, u"D5"_s);
        elegir(hoja.cboMetodo, u"H"_s);
        hoja.UserClick(hoja.cmdGrabar);
        const QString numHoja = hoja.txtNumHoja.Text();
        if (!host.cajas.empty()) return;
        avisar(u"hoja;"_s + numHoja);

        hoja.UserKey(forms::key::F6);
        auto& captura = forms::pantallas().Get<frm07_DetallesHojasCampo>();
        escribirEn(captura, captura.txtNumAnilla, QString::number(siguienteAnilla_));
        for (int i = 0; i < kCapturasPorHoja; ++i, ++siguienteAnilla_) {
            elegir(captura.dbcboEspecie, u"parus maj"_s);
            elegir(captura.cboEdad, u"4"_s);
            elegir(captura.cboSexo, u"M"_s);
            captura.UserClick(captura.cmdGrabar);
            if (!host.cajas.empty()) return;
            avisar(u"captura;"_s + numHoja + u';' + QString::number(siguienteAnilla_));
        }
        captura.UserKey(forms::key::F7);
    }

    /// Lets a process type until so many lines have come, kills it a moment later, and gives all that it
    /// sent.
    QStringList matarTras(int lineas, int microsegundos) {
        int tubo[2];
        if (::pipe2(tubo, O_CLOEXEC) != 0) return {};
        const pid_t hijo = ::fork();
        if (hijo == 0) teclear(tubo[1]);
        ::close(tubo[1]);
        QByteArray recibido;
        const auto leer = [&] {
            char trozo[4096];
            const ssize_t leidos = ::read(tubo[0], trozo, sizeof trozo);
            if (leidos > 0) recibido.append(trozo, leidos);
            return leidos > 0;
        };
        while (recibido.count('\n') < lineas && leer()) {
        }
        ::usleep(static_cast<useconds_t>(microsegundos));
        ::kill(hijo, SIGKILL);
        while (leer()) {
        }
        ::close(tubo[0]);
        int estado = 0;
        ::waitpid(hijo, &estado, 0);
        EXPECT_TRUE(WIFSIGNALED(estado)) << "it stopped by itself, code " << WEXITSTATUS(estado);
        const qsizetype fin = recibido.lastIndexOf('\n');
        return QString::fromUtf8(recibido.left(fin < 0 ? 0 : fin)).split(u'\n');
    }

    void comprobarConfirmado(const QString& linea) const {
        const QStringList partes = linea.split(u';');
        if (partes[0] == u"hoja") {
            EXPECT_EQ(filas(u"SELECT Count(*) FROM ANICHO WHERE NumHoja="_s + partes[1]), u"1")
                << linea.toStdString();
        } else if (partes[0] == u"captura") {
            EXPECT_EQ(
                filas(u"SELECT Count(*) FROM ANIAHO INNER JOIN ANICHO ON ANIAHO.IdCabecera=ANICHO.IdCabecera "
                      u"WHERE NumeroAnilla='"_s +
                      partes[2] + u"' AND NumHoja="_s + partes[1]),
                u"1")
                << linea.toStdString();
        }
    }

    void comprobarIntegridad() const {
        sqlite3* otro = nullptr;
        ASSERT_EQ(sqlite3_open(base().toUtf8().constData(), &otro), SQLITE_OK);
        sqlite3_stmt* consulta = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(otro, "PRAGMA integrity_check", -1, &consulta, nullptr), SQLITE_OK);
        ASSERT_EQ(sqlite3_step(consulta), SQLITE_ROW);
        EXPECT_STREQ(reinterpret_cast<const char*>(sqlite3_column_text(consulta, 0)), "ok");
        sqlite3_finalize(consulta);
        sqlite3_close(otro);
    }

    int siguienteAnilla_ = 100001;
};

TEST_F(Interrupcion, LoConfirmadoEstaYNadaQuedaAMedias) {
    arrancar();
    sql(u"INSERT INTO ALMACEN VALUES (1, '0', '0', '100001', '999999', 899999, '01/01/2010', 'A')"_s);
    forms::pantallas().Reset();
    reiniciarSesion();

    QStringList confirmado;
    for (int muerte = 0; muerte < kMuertes; ++muerte) {
        siguienteAnilla_ = 100001 + muerte * 1000;
        confirmado << matarTras(1 + muerte % kRespuestas, muerte * kPaso);
        comprobarIntegridad();
        arrancar();
        for (const QString& linea : confirmado)
            comprobarConfirmado(linea);
        // The last save may have been done without being told any more: one row at most.
        const qsizetype hojas = confirmado.filter(u"hoja;"_s).size();
        const qsizetype capturas = confirmado.filter(u"captura;"_s).size();
        const int deMas = filas(u"SELECT Count(*) FROM ANICHO"_s).toInt() +
                          filas(u"SELECT Count(*) FROM ANIAHO"_s).toInt() -
                          static_cast<int>(hojas + capturas);
        EXPECT_GE(deMas, 0);
        EXPECT_LE(deMas, muerte + 1);
        for (const auto& [tabla, id] :
             {std::pair{u"ANICHO"_s, u"IdCabecera"_s}, {u"ANIMAT"_s, u"IdAnillador"_s}})
            EXPECT_EQ(filas(u"SELECT Count(*) FROM %1 WHERE %2=-1"_s.arg(tabla, id)), u"0") << muerte;
        EXPECT_EQ(
            filas(u"SELECT Count(*) FROM ANIAHO LEFT JOIN ANICHO ON ANIAHO.IdCabecera=ANICHO.IdCabecera "
                  u"WHERE ANICHO.IdCabecera IS NULL"_s),
            u"0");
        EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIAHO WHERE Anilla IS NULL OR CodigoEspecie<>'14640' OR "
                        u"CodigoEdad<>'4' OR CodigoSexo<>'M'"_s),
                  u"0");
        // Without a gap in a sheet's numbers.
        EXPECT_EQ(
            filas(u"SELECT IdCabecera FROM ANIAHO GROUP BY IdCabecera HAVING Max(NumRegistro)<>Count(*)"_s),
            QString());
        forms::pantallas().Reset();
        reiniciarSesion();
    }
    EXPECT_GT(confirmado.filter(u"captura;"_s).size(), kMuertes);
}

}  // namespace
}  // namespace tarmel
