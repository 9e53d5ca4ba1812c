#include "core/Programa.h"
#include "platform/report/Document.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"
#include "sheets/frm08_ImprimirHojas.h"
#include "sheets/frm13_BorrarRegistrosAnteriores.h"

/// Ranges of sheets: what is deleted and what is printed.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

const QString kBorradas = u"Se han borrado todas las hojas seleccionadas."_s;
const QString kPregunta =
    u"Va a eliminar las hojas de campo seleccionadas.\r                ¿Desea continuar?"_s;
const QString kAlReves = u"La hoja 'Inicial' debe ser menor que la 'Final'"_s;

/// Sheets 2 and 3 are of the ringer, 1 is another's that he took over as ringer, 4 of someone else.
constexpr qint64 kHojas[] = {9000, 123456000002, 123456000003, 999999000004};

struct Caso {
    const char* que;
    bool coordinador;
    int inicial;  ///< sheet from 1; 0 is left blank
    int final;
    int respuesta;
    QString quedan;  ///< sheets, by their place above
    QString cajas;
};

void PrintTo(const Caso& caso, std::ostream* os) {
    *os << caso.que;
}

class RangosDeHojas : public Programa, public testing::WithParamInterface<Caso> {
 protected:
    void hojas() {
        const char16_t* const dueños[] = {u"111111", u"123456", u"123456", u"999999"};
        sql(u"INSERT INTO ANIMAT (IdAnillador,CodigoAnillador,NombreAnillador) VALUES (7,111111,'OTRO')"_s);
        sql(u"INSERT INTO ANIMAT (IdAnillador,CodigoAnillador,NombreAnillador) VALUES (8,999999,'AJENO')"_s);
        for (int i = 0; i < 4; ++i) {
            sql(u"INSERT INTO ANICHO (IdCabecera,NumHoja,CodAnillador,FechaCaptura,Anillador) VALUES "
                "(%1,%2,%3,'15/03/2010',%4)"_s.arg(QString::number(i + 1), QString::number(kHojas[i]),
                                                   QString::fromUtf16(dueños[i]),
                                                   i == 3 ? u"999999"_s : u"123456"_s));
            sql(u"INSERT INTO ANIAHO (IdCabecera,NumRegistro,TipoRegistro) VALUES (%1,1,'A')"_s.arg(i + 1));
        }
    }
    template <typename Pantalla>
    static Pantalla& abrir() {
        auto& pantalla = forms::pantallas().Get<Pantalla>();
        pantalla.Show();
        return pantalla;
    }
    static void elegir(RangoHojas& p, int inicial, int final) {
        const auto poner = [&](forms::ComboBox& combo, int hoja) {
            if (hoja == 0) return;
            p.UserChoose(combo, combo.Find(QString::number(kHojas[hoja - 1]) + u' '));
            ASSERT_FALSE(combo.Text().isEmpty());
        };
        poner(p.cboIni, inicial);
        poner(p.cboFin, final);
    }
    static QString quedan() {
        QString cuales;
        for (const QString& numero : filas(u"SELECT NumHoja FROM ANICHO ORDER BY NumHoja"_s).split(u'|')) {
            const auto sitio = std::ranges::find(kHojas, numero.toLongLong());
            if (sitio != std::end(kHojas)) cuales += QString::number(sitio - std::begin(kHojas) + 1);
        }
        return cuales;
    }
};

TEST_P(RangosDeHojas, BorraLoPedidoYNadaMas) {
    const Caso& caso = GetParam();
    arrancarComo(u"123456"_s, caso.coordinador);
    hojas();
    forms::pantallas().Get<frm06_HojasCampo>().Show();
    auto& p = abrir<frm13_BorrarRegistrosAnteriores>();
    EXPECT_EQ(forms::pantallas().Loaded<frm06_HojasCampo>(), nullptr);
    EXPECT_EQ(p.cboIni.ListCount(), caso.coordinador ? 4 : 3);
    EXPECT_EQ(p.cboIni.List(1), u"123456000002 .-. ANILLADOR 123456 (15/03/2010)"_s);
    elegir(p, caso.inicial, caso.final);
    host.respuestas = {caso.respuesta};
    p.UserClick(p.cmdAceptar);
    EXPECT_EQ(quedan(), caso.quedan);
    for (const forms::MessageBox& caja : host.cajas) {
        if (caja.text != kPregunta) continue;
        EXPECT_EQ(caja.buttons, forms::box::YesNo + forms::box::Critical);
        EXPECT_EQ(caja.title, u"Borrar Hojas"_s);
    }
    EXPECT_EQ(host.textosDeCajas(), caso.cajas);
    EXPECT_EQ(forms::pantallas().Loaded<frm13_BorrarRegistrosAnteriores>() != nullptr,
              caso.cajas == kAlReves);
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIAHO"_s), u"4"_s) << "captures stay";
}

constexpr int kSi = forms::box::AnswerYes;
const QString kTodo = kPregunta + u'|' + kBorradas;

INSTANTIATE_TEST_SUITE_P(
    Borrar, RangosDeHojas,
    testing::Values(Caso{"las suyas", false, 0, 0, kSi, u"14"_s, kTodo},
                    Caso{"las de todos", true, 0, 0, kSi, QString(), kTodo},
                    Caso{"dice que no", true, 0, 0, forms::box::AnswerNo, u"1234"_s, kTodo},
                    Caso{"una sola", false, 2, 2, kSi, u"134"_s, kTodo},
                    Caso{"entre otras, de quien sean", true, 2, 4, kSi, u"1"_s, kTodo},
                    Caso{"al revés", true, 3, 2, kSi, u"1234"_s, kAlReves},
                    // Both are texts, compared letter by letter.
                    Caso{"9000 tras 123456000003", true, 1, 3, kSi, u"1234"_s, kAlReves},
                    // A chosen number is a text, and greater than any number: so is a first without a last.
                    Caso{"sin la final", true, 1, 0, kSi, u"1234"_s, kAlReves},
                    Caso{"sin la inicial", true, 0, 2, kSi, u"34"_s, kTodo}));

using Rangos = RangosDeHojas;
TEST_F(Rangos, SinHojasSuyasNoPreguntaPeroLoDice) {
    arrancarComo(u"555555"_s);
    hojas();
    auto& p = abrir<frm13_BorrarRegistrosAnteriores>();
    EXPECT_EQ(p.cboIni.ListCount(), 0);
    p.UserClick(p.cmdAceptar);
    EXPECT_EQ(host.cajas.at(0).title, u"Borrar hojas"_s);
    EXPECT_EQ(host.cajas.at(0).buttons, forms::box::Information);
    EXPECT_EQ(host.textosDeCajas(), kBorradas);
    EXPECT_EQ(quedan(), u"1234"_s);
}

/// Whoever prints: any sheet can be chosen, what is left blank is his own, a coordinator's too.
TEST_F(Rangos, SeImprimenConSuTexto) {
    arrancarComo(u"123456"_s, true);
    hojas();
    gFiltroTexto = u"\rUn filtro"_s;
    auto* p = &abrir<frm08_ImprimirHojas>();
    EXPECT_EQ(p->cboIni.ListCount(), 4);
    EXPECT_EQ(p->cboIni.List(3), u"999999000004 .-. (15/03/2010)"_s);
    p->UserClick(p->cmdAceptar);
    EXPECT_EQ(gFiltroTexto, u"\rHojas de Campo: de 123456000002 a 123456000003"_s);
    ASSERT_EQ(host.informes.size(), 1U);
    EXPECT_EQ(host.informes[0]->report().name, u"repHojCam"_s);
    EXPECT_EQ(forms::pantallas().Loaded<frm08_ImprimirHojas>(), nullptr);

    p = &abrir<frm08_ImprimirHojas>();
    elegir(*p, 1, 4);
    p->UserClick(p->cmdAceptar);
    EXPECT_EQ(gFiltroTexto, u"\rHojas de Campo: de 9000 a 999999000004"_s);
    ASSERT_EQ(host.informes.size(), 2U);

    sql(u"DELETE FROM ANICHO WHERE CodAnillador=123456"_s);
    p = &abrir<frm08_ImprimirHojas>();
    p->UserClick(p->cmdAceptar);
    EXPECT_EQ(host.informes.size(), 2U) << "nothing to print, and nothing is said";
    EXPECT_EQ(gFiltroTexto, QString());
    EXPECT_EQ(host.textosDeCajas(), QString());
    EXPECT_EQ(forms::pantallas().Loaded<frm08_ImprimirHojas>(), nullptr);
}

}  // namespace
}  // namespace tarmel
