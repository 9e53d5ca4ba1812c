#include "core/Programa.h"
#include "store/frm17_GestionAnillas.h"
#include "store/frm18_SeleccionAnillas.h"

/// The inscriptions of the ring models, and the condition for the list of rings.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

class ModelosAnillas : public Programa {
 protected:
    void SetUp() override {
        arrancarComo(u"123456"_s);
        forms::pantallas().Register(frm17_GestionAnillas::kName,
                                    [] { return std::make_shared<frm17_GestionAnillas>(); });
        forms::pantallas().Register(frm18_SeleccionAnillas::kName,
                                    [] { return std::make_shared<frm18_SeleccionAnillas>(); });
    }
    template <typename Pantalla>
    static Pantalla& abrir() {
        auto& pantalla = forms::pantallas().Get<Pantalla>();
        pantalla.Show();
        return pantalla;
    }
};

TEST_F(ModelosAnillas, SeAnadenYSeVenEnseguida) {
    auto& pantalla = abrir<frm17_GestionAnillas>();
    ASSERT_EQ(pantalla.TablaTipoAnillas.Count(), 204);
    EXPECT_EQ(pantalla.Modelo.ListCount(), 27);
    const auto agregar = [&](const QString& modelo, const QString& inscripcion) {
        pantalla.UserChoose(pantalla.Modelo, pantalla.Modelo.Find(modelo));
        pantalla.Inscripcion.SetText(inscripcion);
        pantalla.UserClick(pantalla.cmdAgregar);
    };
    agregar(u"L"_s, u"9L"_s);
    EXPECT_EQ(host.textosDeCajas(), QString());
    EXPECT_EQ(pantalla.TablaTipoAnillas.Count(), 205);
    EXPECT_EQ(filas(u"SELECT Total FROM TIPOANILLAS WHERE Modelo='L' AND Inscripcion='9L'"_s), u"0"_s);
    EXPECT_EQ(pantalla.Modelo.ListIndex(), -1);
    EXPECT_EQ(pantalla.Inscripcion.Text(), QString());

    // Whatever the failure, these words; what was typed stays.
    for (const QString& inscripcion : {u"9L"_s, u"L'"_s, u"LARGA"_s}) {
        agregar(u"L"_s, inscripcion);
        EXPECT_EQ(host.cajas.back().buttons, forms::box::OK);
        EXPECT_EQ(host.textosDeCajas(),
                  u"Es posible que esos valores ya estén incluidos en la base de datos"_s);
        EXPECT_EQ(pantalla.Inscripcion.Text(), inscripcion);
        EXPECT_EQ(pantalla.Modelo.Text(), u"L"_s);
    }
    pantalla.UserChoose(pantalla.Modelo, -1);
    pantalla.Inscripcion.SetText(QString());
    pantalla.UserClick(pantalla.cmdAgregar);
    EXPECT_EQ(host.textosDeCajas(), QString()) << "empty texts are a pair like another";
    EXPECT_EQ(filas(u"SELECT Count(*) FROM TIPOANILLAS"_s), u"206"_s);
    pantalla.UserClick(pantalla.cmdSalir);
    EXPECT_EQ(forms::pantallas().Loaded<frm17_GestionAnillas>(), nullptr);
}

TEST_F(ModelosAnillas, LaSeleccionComponeElFiltro) {
    sql(u"INSERT INTO ANICHO (IdCabecera, NumHoja, CodAnillador, CodLocalidad, FechaCaptura) VALUES (7, "
        "123456000001, 123456, '01002', '15/03/2010')"_s);
    const auto filtro = [](const std::vector<int>& marcas, bool elegir) {
        auto& pantalla = abrir<frm18_SeleccionAnillas>();
        const std::array casillas{&pantalla.optAnillador, &pantalla.optLocalidad, &pantalla.optAño};
        for (const int i : marcas)
            pantalla.UserClick(*casillas.at(static_cast<size_t>(i)));
        for (forms::ComboBox* combo : {&pantalla.cboAnillador, &pantalla.cboLocalidad, &pantalla.cboAño})
            if (elegir) pantalla.UserChoose(*combo, 0);
        pantalla.UserClick(pantalla.cmdMostrar);
        EXPECT_EQ(forms::pantallas().Loaded<frm18_SeleccionAnillas>(), nullptr);
        return gFiltroAnillas;
    };
    EXPECT_EQ(
        filtro({0, 1, 2}, true),
        u"(ANICHO.CodAnillador=123456 OR ANICHO.Anillador=123456) AND (ANICHO.CodLocalidad='01002') AND "
        "(YEAR(ANICHO.FechaCaptura)='2010')"_s);
    EXPECT_EQ(filas(u"SELECT IdCabecera FROM ANICHO WHERE "_s + gFiltroAnillas), u"7"_s);
    EXPECT_EQ(filtro({1, 2}, true),
              u"(ANICHO.CodLocalidad='01002') AND (YEAR(ANICHO.FechaCaptura)='2010')"_s);
    EXPECT_EQ(filtro({2}, true), u"(YEAR(ANICHO.FechaCaptura)='2010')"_s);
    EXPECT_EQ(filtro({0}, false), u"(ANICHO.CodAnillador= OR ANICHO.Anillador=)"_s);
    EXPECT_EQ(filtro({1}, false), u"(ANICHO.CodLocalidad='')"_s);
    EXPECT_EQ(filtro({}, true), QString()) << "nothing ticked";

    gFiltroAnillas = u"(antes)"_s;
    auto& pantalla = abrir<frm18_SeleccionAnillas>();
    EXPECT_EQ(pantalla.cboAnillador.List(0), u"123456 .-. ANILLADOR 123456 (A)"_s);
    EXPECT_EQ(pantalla.cboAnillador.List(1), u"900001 .-. GRUPO (G)"_s);
    EXPECT_EQ(pantalla.cboLocalidad.List(0), u"Amurrio,   Amurrio .-. 01002"_s);
    pantalla.UserClick(pantalla.cmdSalir);
    EXPECT_EQ(gFiltroAnillas, u"(antes)"_s) << "leaving composes nothing";
}

}  // namespace
}  // namespace tarmel
