#include "core/Programa.h"
#include "core/frm03_Principal.h"

/// What the identification leaves in the session. What the ringer sees of it stands in the scenarios.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

class Identificacion : public Programa {
 protected:
    void SetUp() override {
        arrancar();
        sql(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador, NombreAnillador, CoordinadorGrupo, "
            u"CodigoGrupo, "
            "NombreGrupo, CodigoEntidad, NombreEntidad) VALUES (1, 111111, ' ANA ', -1, '900001', 'GRUPO', "
            "'000007', "
            "'ENTIDAD')"_s);
        sql(u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador, NombreAnillador) VALUES (2, 222222, 'LUIS')"_s);
    }
    frm02_Matricula& pantalla() { return forms::pantallas().Get<frm02_Matricula>(); }
    /// Types the code and leaves the field.
    void teclearCodigo(const QString& codigo) {
        pantalla().txtCodAnillador.SetText(QString());
        escribirEn(pantalla(), pantalla().txtCodAnillador, codigo);
        pantalla().UserGoTo(pantalla().txtAnillador);
    }
};

TEST_F(Identificacion, UnCodigoConocidoCambiaLaSesionAlDejarElCampo) {
    teclearCodigo(u"111111"_s);
    EXPECT_EQ(gAnillador[0], u"111111"_s);
    EXPECT_EQ(gAnillador[1], u"ANA"_s) << "trimmed in the session";
    EXPECT_EQ(pantalla().txtAnillador.Text(), u" ANA "_s);
    EXPECT_EQ(gGrupo[0] + gGrupo[1] + gEntidad[0] + gEntidad[1], u"900001GRUPO000007ENTIDAD"_s);
    EXPECT_EQ(gCodAnillador.toLong(), 111111);
    EXPECT_TRUE(gEsCoordinador) << "before Aceptar is pressed";
    EXPECT_EQ(pantalla().ActiveControl(), &pantalla().cmdAceptar);

    teclearCodigo(u"222222"_s);
    EXPECT_FALSE(gEsCoordinador) << "a Null is no coordinator";
    EXPECT_EQ(pantalla().txtCodGrupo.Text(), QString());
}

TEST_F(Identificacion, UnCodigoNuevoVaciaLosCamposYDejaElRolComoEstaba) {
    teclearCodigo(u"111111"_s);
    teclearCodigo(u"333333"_s);
    EXPECT_EQ(pantalla().txtAnillador.Text() + pantalla().txtEntidad.Text(), QString());
    EXPECT_EQ(pantalla().chkCoordinador.Value(), 1);
    EXPECT_TRUE(gEsCoordinador);
    EXPECT_EQ(gCodAnillador, basic::Variant(0));
    EXPECT_EQ(pantalla().ActiveControl(), &pantalla().txtAnillador);
}

TEST_F(Identificacion, LaVentanaPrincipalTomaLosNombresSinRecortar) {
    teclearCodigo(u"111111"_s);
    pantalla().UserClick(pantalla().cmdAceptar);
    ASSERT_NE(forms::pantallas().Loaded<frm03_Principal>(), nullptr);
    EXPECT_EQ(gAnillador[1], u" ANA "_s);
    EXPECT_FALSE(gIdentificacionInicial);
    EXPECT_EQ(forms::pantallas().Loaded(frm02_Matricula::kName), nullptr);
}

TEST_F(Identificacion, AceptarReescribeLaFilaDeUnConocido) {
    teclearCodigo(u"222222"_s);
    for (forms::TextBox* codigo : {&pantalla().txtCodGrupo, &pantalla().txtCodEntidad})
        codigo->SetText(u"900002"_s);
    pantalla().txtGrupo.SetText(u"NORTE"_s);
    pantalla().txtEntidad.SetText(u"SUR"_s);
    pantalla().chkCoordinador.SetValue(1);
    pantalla().UserClick(pantalla().cmdAceptar);
    EXPECT_EQ(filas(u"SELECT IdAnillador, NombreAnillador, CoordinadorGrupo, CodigoGrupo, NombreGrupo, "
                    u"CodigoEntidad, "
                    "NombreEntidad FROM ANIMAT WHERE CodigoAnillador=222222"_s),
              u"2;LUIS;Verdadero;900002;NORTE;900002;SUR"_s);
    EXPECT_TRUE(gEsCoordinador);
}

TEST_F(Identificacion, CambiarDeAnilladorCierraLasPantallasDeDatos) {
    teclearCodigo(u"111111"_s);
    pantalla().UserClick(pantalla().cmdAceptar);
    auto& principal = forms::pantallas().Get<frm03_Principal>();
    principal.UserClick(*principal.Find(u"mnuNuevaHoja"_s));
    ASSERT_NE(forms::pantallas().Loaded(u"frm06_HojasCampo"_s), nullptr);

    principal.UserClick(*principal.Find(u"mnuUsuario"_s));
    EXPECT_EQ(forms::pantallas().Loaded(u"frm06_HojasCampo"_s), nullptr);
    EXPECT_EQ(pantalla().txtCodAnillador.Text(), u"111111"_s);
    EXPECT_EQ(pantalla().chkCoordinador.Value(), 1);

    teclearCodigo(u"222222"_s);
    pantalla().UserClick(pantalla().cmdCancelar);
    EXPECT_EQ(gAnillador[0], u"222222"_s) << "the session stays as the code left it";
    EXPECT_EQ(forms::pantallas().Active(), &principal);
}

TEST_F(Identificacion, UnApostrofoTerminaElProgramaSinEscribirNada) {
    teclearCodigo(u"333333"_s);
    for (forms::TextBox* codigo : {&pantalla().txtCodGrupo, &pantalla().txtCodEntidad})
        codigo->SetText(u"900002"_s);
    for (forms::TextBox* nombre : {&pantalla().txtAnillador, &pantalla().txtGrupo, &pantalla().txtEntidad})
        nombre->SetText(u"O'NEILL"_s);
    EXPECT_TRUE(termina([&] { pantalla().UserClick(pantalla().cmdAceptar); }));
    EXPECT_TRUE(host.textosDeCajas().startsWith(u"Error nº -2147217900\r"_s));
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIMAT"_s), u"2"_s);
}

}  // namespace
}  // namespace tarmel
