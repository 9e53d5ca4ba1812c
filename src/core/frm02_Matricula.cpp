#include "core/frm02_Matricula.h"

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "core/frm03_Principal.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

constexpr int kCifrasCodigo = 6;

/// Leaving a code that is neither whole nor empty is refused. True when it may be left.
bool comprobarCodigo(forms::TextBox& caja, const QString& mensaje) {
    const qsizetype longitud = caja.Text().size();
    if (longitud == kCifrasCodigo || longitud == 0) return true;
    forms::MsgBox(mensaje, forms::box::Exclamation, u"Dato Incompleto"_s);
    caja.SetFocus();
    return false;
}

void enMayusculas(forms::TextBox& caja) {
    caja.SetText(basic::UCase(caja.Text()));
}

/// Runs a command on a recordset of its own.
void ejecutar(const QString& sentencia) {
    gSQL = sentencia;
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion);
}

}  // namespace

frm02_Matricula::frm02_Matricula() : Form(kName, u"Datos Anillador"_s) {
    lblTitulo.SetCaption(u"Registro de usuarios"_s);
    lblAnillador.SetCaption(u"Anillador"_s);
    lblGrupo.SetCaption(u"Grupo de anillamiento"_s);
    lblEntidad.SetCaption(u"Entidad avaladora"_s);

    const auto preparar = [](forms::TextBox& caja, const QString& nombre) {
        caja.SetAccessibleName(nombre);
        caja.SetTint(forms::Tint::Mandatory);
    };
    preparar(txtCodAnillador, u"Código de anillador"_s);
    preparar(txtAnillador, u"Nombre de anillador"_s);
    preparar(txtCodGrupo, u"Código del grupo de anillamiento"_s);
    preparar(txtGrupo, u"Nombre del grupo de anillamiento"_s);
    preparar(txtCodEntidad, u"Código de la entidad avaladora"_s);
    preparar(txtEntidad, u"Nombre de la entidad avaladora"_s);
    for (forms::TextBox* codigo : {&txtCodAnillador, &txtCodGrupo, &txtCodEntidad})
        codigo->SetMaxLength(kCifrasCodigo);

    txtCodAnillador.Change = [this] { txtCodAnillador.SetDigitsOnly(true); };
    txtCodAnillador.KeyPress = [this](int&) { gCodigoTecleado = true; };
    txtCodAnillador.LostFocus = [this] { txtCodAnillador_LostFocus(); };
    for (forms::TextBox* codigo : {&txtCodGrupo, &txtCodEntidad})
        codigo->GotFocus = [codigo] { codigo->SetDigitsOnly(true); };
    txtCodGrupo.LostFocus = [this] { txtCodGrupo_LostFocus(); };
    txtCodEntidad.LostFocus = [this] { txtCodEntidad_LostFocus(); };
    for (forms::TextBox* nombre : {&txtAnillador, &txtGrupo, &txtEntidad})
        nombre->LostFocus = [nombre] { enMayusculas(*nombre); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

void frm02_Matricula::Load() {
    CentrarFormulario(*this);
    gCodigoTecleado = false;
    // No open screen may keep the data of the ringer before.
    for (const QString& pantalla :
         {u"frm07_DetallesHojasCampo"_s, u"frm05_ActualizarEspecies"_s, u"frm06_HojasCampo"_s,
          u"frm04_ActualizarLocalidades"_s, u"frm08_ImprimirHojas"_s})
        forms::pantallas().Unload(pantalla);
    mostrarSesion();
}

void frm02_Matricula::mostrarSesion() {
    const bool identificado = !gAnillador[0].isEmpty();
    if (!identificado) gCodAnillador = 0;
    const auto mostrar = [identificado](forms::TextBox& caja, const QString& valor) {
        caja.SetText(identificado ? valor : QString());
    };
    mostrar(txtCodAnillador, gAnillador[0]);
    mostrar(txtAnillador, gAnillador[1]);
    mostrar(txtCodGrupo, gGrupo[0]);
    mostrar(txtGrupo, gGrupo[1]);
    mostrar(txtCodEntidad, gEntidad[0]);
    mostrar(txtEntidad, gEntidad[1]);
    chkCoordinador.SetValue(identificado ? gCoordinador : 0);
}

void frm02_Matricula::FormKeyPress(int& character) {
    if (!EnterComoTab(*this, character)) return;
    if (!txtCodAnillador.Text().isEmpty()) return;
    forms::MsgBox(u"Debe introducir el código de un anillador"_s);
    txtCodAnillador.SetFocus();
    // Leaving the code of a group or entity has sent the focus on to its name.
    if (ActiveControl() != &txtCodAnillador) txtCodAnillador.SetFocus();
}

void frm02_Matricula::txtCodAnillador_LostFocus() {
    if (!comprobarCodigo(txtCodAnillador, u"El Código de Anillador debe tener 6 dígitos"_s)) return;
    if (txtCodAnillador.Text().size() == kCifrasCodigo) CargarDatosAnillador();
}

void frm02_Matricula::txtCodGrupo_LostFocus() {
    if (comprobarCodigo(txtCodGrupo, u"El Código de Grupo debe tener 6 dígitos"_s)) txtGrupo.SetFocus();
}

void frm02_Matricula::txtCodEntidad_LostFocus() {
    if (comprobarCodigo(txtCodEntidad, u"El Código de Entidad debe tener 6 dígitos"_s)) txtEntidad.SetFocus();
}

void frm02_Matricula::CargarDatosAnillador() {
    gExisteAnillador = false;
    gSQL = u"SELECT * FROM ANIMAT WHERE CodigoAnillador = "_s + txtCodAnillador.Text();
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion, ado::Cursor::Keyset, ado::Lock::Optimistic);
    if (gRS.RecordCount() != 0) {
        gExisteAnillador = true;
        const basic::Variant coordinador = gRS.Value(u"CoordinadorGrupo"_s);
        gCoordinador = !coordinador.isNull() && basic::testsTrue(basic::Trim(coordinador.toText())) ? 1 : 0;
        gCodAnillador = gRS.Value(u"CodigoAnillador"_s);
        txtAnillador.SetText(gRS.Text(u"NombreAnillador"_s));
        txtCodGrupo.SetText(gRS.Text(u"CodigoGrupo"_s));
        txtGrupo.SetText(gRS.Text(u"NombreGrupo"_s));
        txtCodEntidad.SetText(gRS.Text(u"CodigoEntidad"_s));
        txtEntidad.SetText(gRS.Text(u"NombreEntidad"_s));
        chkCoordinador.SetValue(gCoordinador);
        if (gCodigoTecleado) cmdAceptar.SetFocus();
    } else {
        txtAnillador.SetFocus();
        gCodAnillador = 0;
        for (forms::TextBox* caja : {&txtAnillador, &txtCodGrupo, &txtGrupo, &txtCodEntidad, &txtEntidad})
            caja->SetText(QString());
    }
    guardarSesion();
    gRS = ado::Recordset();
}

void frm02_Matricula::guardarSesion() {
    gAnillador = {basic::Trim(txtCodAnillador.Text()), basic::Trim(txtAnillador.Text())};
    gGrupo = {basic::Trim(txtCodGrupo.Text()), basic::Trim(txtGrupo.Text())};
    gEntidad = {basic::Trim(txtCodEntidad.Text()), basic::Trim(txtEntidad.Text())};
    gCoordinador = chkCoordinador.Value();
    gEsCoordinador = gCoordinador == 1;
}

void frm02_Matricula::cmdAceptar_Click() {
    if (!comprobarObligatorios()) return;
    if (gExisteAnillador) {
        ejecutar(sentenciaModificar());
    } else {
        ejecutar(sentenciaInsertar());
        ejecutar(u"UPDATE ANIMAT SET IdAnillador=IdAni WHERE CodigoAnillador="_s + txtCodAnillador.Text());
    }
    CargarDatosAnillador();
    gIdentificacionInicial = false;
    Unload();
}

bool frm02_Matricula::comprobarObligatorios() {
    struct Obligatorio {
        forms::TextBox* caja;
        QString campo;
    };
    const std::array<Obligatorio, 6> obligatorios{{{&txtCodAnillador, u"Código de Anillador"_s},
                                                   {&txtCodGrupo, u"Código de Grupo"_s},
                                                   {&txtCodEntidad, u"Código de Entidad"_s},
                                                   {&txtAnillador, u"Nombre de Anillador"_s},
                                                   {&txtGrupo, u"Nombre de Grupo"_s},
                                                   {&txtEntidad, u"Nombre de Entidad"_s}}};
    for (const auto& [caja, campo] : obligatorios) {
        if (!caja->Text().isEmpty()) continue;
        forms::MsgBox(u"El campo "_s + campo + u" es obligatorio"_s, forms::box::Exclamation,
                      u"Faltan datos"_s);
        caja->SetFocus();
        return false;
    }
    return true;
}

QString frm02_Matricula::sentenciaModificar() const {
    return u"UPDATE ANIMAT SET NombreAnillador='"_s + txtAnillador.Text() + u"', CoordinadorGrupo="_s +
           basic::CStr(chkCoordinador.Value()) + u", CodigoGrupo='"_s + txtCodGrupo.Text() +
           u"', NombreGrupo='"_s + txtGrupo.Text() + u"',  CodigoEntidad='"_s + txtCodEntidad.Text() +
           u"', NombreEntidad='"_s + txtEntidad.Text() + u"' WHERE CodigoAnillador="_s +
           txtCodAnillador.Text();
}

QString frm02_Matricula::sentenciaInsertar() const {
    return u"INSERT INTO ANIMAT (IdAnillador,  CodigoAnillador, NombreAnillador, CoordinadorGrupo, "
           u"CodigoGrupo, "
           "NombreGrupo, CodigoEntidad, NombreEntidad) VALUES (-1, '"_s +
           txtCodAnillador.Text() + u"','"_s + txtAnillador.Text() + u"',"_s +
           basic::CStr(chkCoordinador.Value()) + u", '"_s + txtCodGrupo.Text() + u"','"_s + txtGrupo.Text() +
           u"',  '"_s + txtCodEntidad.Text() + u"','"_s + txtEntidad.Text() + u"') "_s;
}

void frm02_Matricula::cmdCancelar_Click() {
    if (gIdentificacionInicial) forms::host().EndProgram();
    Hide();
    Unload();
    gIdentificacionInicial = false;
}

void frm02_Matricula::UnloadEvent() {
    forms::pantallas().Get<frm03_Principal>().Show();
}

}  // namespace tarmel
