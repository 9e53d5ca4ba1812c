#include "engine/Banco.h"

/// The side of clsClassMantenimientos that talks to the controls.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;
using Campo = clsClassMantenimientos::Campo;

class Controles : public Banco {
 protected:
    Controles() {
        formulario.cboEdad.AddItem(u"3 .-. Joven"_s);
        formulario.cboEdad.AddItem(u"4 .-. Adulto"_s);
        formulario.cboSimple.AddItem(u" 41000 "_s);
        formulario.dbcboEspecie.SetRows({{u"Turdus merula"_s, u"1"_s}, {u"Turdus philomelos"_s, u"2"_s}});
        m.Formulario(formulario);
    }
    /// One descriptor for the control, beside the empty slot.
    Campo& describir(forms::Control& control, Campo campo = {}) {
        campo.ControlRelacionado = &control;
        m.Describir({campo});
        return m.campo(0);
    }
    QString leer(forms::Control& control, const Campo& campo = {}) {
        describir(control, campo).ValorCampo = u"(antes)"_s;
        m.ObtenerDatosControles();
        return m.campo(0).ValorCampo;
    }
    void mostrar(forms::Control& control, const QString& valor, const Campo& campo = {}) {
        describir(control, campo).ValorCampo = valor;
        m.MostrarDatosControles();
    }

    clsClassMantenimientos m;
};

TEST_F(Controles, LeerTomaElTextoDeCadaClase) {
    formulario.lblId.SetCaption(u"17"_s);
    formulario.txtCodigo.SetText(u" a "_s);
    formulario.dtpFecha.SetValue(basic::Date::of(2010, 3, 5));
    formulario.dtpHora.SetValue(basic::Date::timeOfDay(7, 5));
    EXPECT_EQ(leer(formulario.lblId), u"17"_s);
    EXPECT_EQ(leer(formulario.txtCodigo), u" a "_s) << "untrimmed";
    EXPECT_EQ(leer(formulario.dtpFecha), u"05/03/2010"_s);
    EXPECT_EQ(leer(formulario.dtpHora), u"07:05"_s);
    EXPECT_EQ(leer(formulario.ckDato), u"(antes)"_s) << "other kinds are no fields";
}

TEST_F(Controles, LeerUnComboTomaLaParteQueDiceElCampo) {
    formulario.cboEdad.SetListIndex(1);
    formulario.cboSimple.SetListIndex(0);
    EXPECT_EQ(leer(formulario.cboEdad), u"4"_s);
    EXPECT_EQ(leer(formulario.cboEdad, {.CampoRelacionado = u"Nombre"_s}), u"Adulto"_s);
    EXPECT_EQ(leer(formulario.cboSimple, {.ComboSimple = true}), u"41000"_s);
    EXPECT_EQ(errorOf([this] { leer(formulario.cboSimple); }), 5) << "no separator";
}

TEST_F(Controles, UnComboSinSeleccionDaElValorVacio) {
    EXPECT_EQ(leer(formulario.cboEdad), u""_s);
    EXPECT_EQ(leer(formulario.cboEdad, {.ComboSimple = true}), u""_s);
    EXPECT_EQ(leer(formulario.dbcboEspecie, {.CampoRelacionado = u"Nombre"_s}), u""_s);
}

TEST_F(Controles, MostrarPoneElValorEnCadaClase) {
    mostrar(formulario.lblId, u"17"_s);
    EXPECT_EQ(formulario.lblId.Caption(), u"17"_s);
    mostrar(formulario.txtCodigo, u"abc"_s);
    EXPECT_EQ(formulario.txtCodigo.Text(), u"abc"_s);
    mostrar(formulario.cboEdad, u"4"_s);
    EXPECT_EQ(formulario.cboEdad.ListIndex(), 1);
    mostrar(formulario.cboEdad, u"9"_s);
    EXPECT_EQ(formulario.cboEdad.ListIndex(), -1) << "no item begins so";
    mostrar(formulario.cboEdad, u""_s);
    EXPECT_EQ(formulario.cboEdad.ListIndex(), 0) << "every item begins with the empty text";
    mostrar(formulario.dbcboEspecie, u"turdus P"_s);
    EXPECT_EQ(formulario.dbcboEspecie.BoundText(), u"2"_s);
    mostrar(formulario.dtpFecha, u"05/03/2010"_s);
    EXPECT_EQ(formulario.dtpFecha.Value(), basic::Date::of(2010, 3, 5));
    mostrar(formulario.dtpHora, u"7:05:00"_s);
    EXPECT_EQ(formulario.dtpHora.Value().timePart(), basic::Date::timeOfDay(7, 5));
    EXPECT_EQ(errorOf([this] { mostrar(formulario.dtpFecha, u"ayer"_s); }), 13);
}

TEST_F(Controles, UnaFechaQueFaltaVaciaElSelector) {
    formulario.dtpHora.SetValue(basic::Date::timeOfDay(7, 5));
    mostrar(formulario.dtpHora, u""_s);
    EXPECT_EQ(formulario.dtpHora.Value().timePart(), basic::Date::timeOfDay(0, 0));
    formulario.dtpFecha.SetValue(basic::Date::of(2010, 3, 5));
    mostrar(formulario.dtpFecha, u""_s);
    EXPECT_EQ(formulario.dtpFecha.Value(), basic::Date::today());
}

TEST_F(Controles, MostrarBuscaElNombreDelCodigo) {
    sql(u"CREATE TABLE SITIOS (Codigo VARCHAR(5), Numero INTEGER, Pueblo VARCHAR(20), Lugar VARCHAR(20))"_s);
    sql(u"INSERT INTO SITIOS VALUES ('007', 7, 'Adulto  ', 'Río')"_s);
    formulario.cboEdad.AddItem(u"Adulto     Río"_s);
    formulario.cboEdad.AddItem(u"Adulto"_s);
    Campo campo{.NombreCampo = u"Codigo"_s, .CampoRelacionado = u"Pueblo"_s, .NombreTablaCampo = u"SITIOS"_s};
    mostrar(formulario.cboEdad, u"007"_s, campo);
    EXPECT_EQ(formulario.cboEdad.Text(), u"Adulto     Río"_s) << "the first that begins so";
    campo.ValorCampo = u"007"_s;
    EXPECT_EQ(m.ObtenerPrimerCampo(0, campo), u"Adulto"_s);
    campo.CampoRelacionado2 = u"Lugar"_s;
    EXPECT_EQ(m.ObtenerPrimerCampo(0, campo), u"Adulto     Río"_s);
    campo.NombreCampo = u"Numero"_s;
    campo.TipoDatos = u"Numerico"_s;
    EXPECT_EQ(m.ObtenerPrimerCampo(0, campo), u"Adulto     Río"_s);
    campo.ValorCampo = u"8"_s;
    EXPECT_EQ(errorOf([&] { (void)m.ObtenerPrimerCampo(0, campo); }), basic::error::NoCurrentRecord);
}

TEST_F(Controles, UnaEtiquetaDeDosCamposNoSeBorra) {
    const Campo dueño{
        .NombreCampo = u"CodAnillador"_s, .ValorCampo = u"123456"_s, .ControlRelacionado = &formulario.lblId};
    const Campo anillador{.NombreCampo = u"Anillador"_s, .ControlRelacionado = &formulario.lblId};
    m.Describir({dueño, anillador});
    m.MostrarDatosControles();
    EXPECT_EQ(formulario.lblId.Caption(), u"123456"_s);
    m.campo(1).ValorCampo = u"654321"_s;
    m.MostrarDatosControles();
    EXPECT_EQ(formulario.lblId.Caption(), u"654321"_s);
    m.ObtenerDatosControles();
    EXPECT_EQ(m.campo(0).ValorCampo, u"654321"_s) << "both take the caption on reading";
    m.BorrarDatos();
    m.MostrarDatosControles();
    EXPECT_EQ(formulario.lblId.Caption(), u""_s);
}

TEST_F(Controles, BorrarVaciaCadaClase) {
    formulario.lblId.SetCaption(u"17"_s);
    formulario.txtCodigo.SetText(u"a"_s);
    formulario.cboEdad.SetListIndex(1);
    formulario.dbcboEspecie.SetText(u"Otra especie"_s);
    formulario.dtpFecha.SetValue(basic::Date::of(2010, 3, 5));
    formulario.dtpHora.SetValue(basic::Date::timeOfDay(7, 5));
    std::vector<Campo> campos;
    for (forms::Control* control : formulario.Controls())
        campos.push_back({.ControlRelacionado = control});
    m.Describir(campos);
    m.BorrarDatosControles();
    EXPECT_EQ(formulario.lblId.Caption() + formulario.txtCodigo.Text() + formulario.cboEdad.Text(), u""_s);
    EXPECT_EQ(formulario.dbcboEspecie.Text(), u""_s);
    EXPECT_EQ(formulario.dtpFecha.Value(), basic::Date::today());
    EXPECT_EQ(formulario.dtpHora.Text(), u"00:00"_s);
}

TEST_F(Controles, LongitudesYSoloNumerosVanALosTextos) {
    m.Describir({Campo{.TipoDatos = u"Numerico"_s, .Tamaño = 3, .ControlRelacionado = &formulario.txtCodigo},
                 Campo{.TipoDatos = u"Decimal"_s, .ControlRelacionado = &formulario.txtPeso},
                 Campo{.TipoDatos = u"Numerico"_s, .Tamaño = 3, .ControlRelacionado = &formulario.cboEdad}});
    m.EstablecerLongitudControles();
    m.SoloNumeros();
    EXPECT_EQ(formulario.txtCodigo.MaxLength(), 3);
    EXPECT_TRUE(formulario.txtCodigo.DigitsOnly());
    EXPECT_EQ(formulario.txtPeso.MaxLength(), 0);
    EXPECT_FALSE(formulario.txtPeso.DigitsOnly());
}

TEST_F(Controles, CadaCampoObligatorioQueFaltaEnseñaSuCaja) {
    m.Describir({Campo{.NombreCampo = u"A"_s, .Obligatorio = true}, Campo{.NombreCampo = u"B"_s},
                 Campo{.NombreCampo = u"C"_s, .ValorCampo = u" "_s, .Obligatorio = true},
                 Campo{.NombreCampo = u"D"_s, .Obligatorio = true}});
    m.campo(4) = Campo{.NombreCampo = u"E"_s, .Obligatorio = true};
    EXPECT_FALSE(m.ComprobarDatos());
    ASSERT_EQ(host.cajas.size(), 3u);
    EXPECT_EQ(host.cajas[0].title, u"Faltan datos"_s);
    EXPECT_EQ(host.cajas[0].buttons, 48);
    EXPECT_EQ(host.textosDeCajas(),
              u"El campo A es obligatorio.|El campo D es obligatorio.|El campo E es obligatorio."_s);
    for (const int i : {0, 3, 4})
        m.campo(i).ValorCampo = u"x"_s;
    EXPECT_TRUE(m.ComprobarDatos());
    EXPECT_TRUE(host.cajas.empty());
}

TEST_F(Controles, ActivarTocaLosCamposYLosBotonesAparte) {
    formulario.cmdGrabar.SetEnabled(false);
    m.ControlesEnabledDisable(false);
    for (const forms::Control* campo : std::initializer_list<const forms::Control*>{
             &formulario.txtCodigo, &formulario.cboEdad, &formulario.dbcboEspecie, &formulario.dtpHora}) {
        EXPECT_FALSE(campo->Enabled()) << campo->Name().toStdString();
    }
    EXPECT_TRUE(formulario.lista.Enabled() && formulario.ckDato.Enabled() && formulario.lblId.Enabled());
    m.ControlesEnabledDisable(true);
    EXPECT_TRUE(formulario.txtCodigo.Enabled() && formulario.dbcboEspecie.Enabled());
    EXPECT_FALSE(formulario.cmdGrabar.Enabled());
    m.HabilitarBotones();
    EXPECT_TRUE(formulario.cmdGrabar.Enabled());
    EXPECT_EQ(errorOf([] { clsClassMantenimientos().HabilitarBotones(); }), 91);
}

}  // namespace
}  // namespace tarmel
