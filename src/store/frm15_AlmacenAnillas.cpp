#include "store/frm15_AlmacenAnillas.h"

#include <array>

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "engine/CargarListaGenerica.h"
#include "engine/FuncionesCombo.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "store/AlmacenAnillas.h"
#include "store/ModelosAnillas.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

const QStringList kTiposMovimiento{u"A.- Anillas recibidas"_s, u"D.- Devolución"_s,
                                   u"T.- Traspaso a otro grupo"_s};
constexpr int kPosicionDescripcion = 5;  ///< of the description in such a text

constexpr int kAnchoRelleno = 8;

const std::vector<ColumnaLista>& columnas() {
    static const std::vector<ColumnaLista> lista{{u"Nº Movimiento"_s, 1000, u"NumMov"_s},
                                                 {u"Modelo"_s, 1000, u"Modelo"_s},
                                                 {u"Inscripción"_s, 1000, u"Inscripcion"_s},
                                                 {u"Nº Inicial"_s, 1500, u"NumInicial"_s},
                                                 {u"Nº Final"_s, 1500, u"NumFinal"_s},
                                                 {u"Cantidad"_s, 1200, u"Cantidad"_s},
                                                 {u"Fecha"_s, 1200, u"Fecha"_s},
                                                 {u"Tipo Movimiento"_s, 2550, u"Descripcion"_s}};
    return lista;
}

void llenarInscripciones(forms::ComboBox& inscripciones, const QString& modelo) {
    gSQL = u"SELECT * FROM TIPOANILLAS where modelo ='"_s + modelo + u"'"_s;
    LlenarCombo(inscripciones, gConexion, gSQL, u"Inscripcion"_s, QString());
}

void soloCifras(int& caracter) {
    if ((caracter >= u'0' && caracter <= u'9') || caracter == forms::key::Backspace) return;
    caracter = 0;
    forms::MsgBox(u"Este campo sólo admite datos numéricos"_s);
}

/// Runs a command on the shared recordset.
void ejecutar(const QString& sentencia) {
    gSQL = sentencia;
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion);
    gRS = ado::Recordset();
}

/// Each condition joins those in front of it.
void añadirCondicion(QString& filtro, const QString& condicion) {
    filtro += (filtro.isEmpty() ? u"WHERE "_s : u" AND "_s) + condicion;
}

}  // namespace

frm15_AlmacenAnillas::frm15_AlmacenAnillas() : Form(kName, u"Almacén de anillas"_s) {
    prepararFiltros();
    prepararEntrada();

    lstAlmacenAnillas.SetAccessibleName(u"Movimientos de anillas"_s);
    for (forms::CommandButton* boton : {&cmdBorrar, &cmdNuevo, &cmdEliminar, &cmdConsultas, &cmdSalir})
        boton->SetToolTip(u"Tecla rápida (F1)"_s);
    cmdNuevo.Click = [this] { cmdNuevo_Click(); };
    cmdEliminar.Click = [this] { cmdEliminar_Click(); };
    cmdConsultas.Click = [this] { cmdConsultas_Click(); };
    cmdSalir.Click = [this] { cmdSalir_Click(); };
}

void frm15_AlmacenAnillas::prepararFiltros() {
    fraFiltros.Holds(
        {&lblModelo, &Modelo, &lblInscripcion, &Inscripcion, &lblSerie, &txtSerie, &B_Buscar, &cmdBorrar});
    Modelo.SetAccessibleName(u"Filtro por modelo"_s);
    Inscripcion.SetAccessibleName(u"Filtro por inscripción"_s);
    txtSerie.SetAccessibleName(u"Filtro por serie"_s);
    B_Buscar.SetToolTip(u"Pulse este botón para buscar por el código. (F8)"_s);
    Modelo.LostFocus = [this] { Modelo_LostFocus(); };
    B_Buscar.Click = [this] { B_Buscar_Click(); };
    cmdBorrar.Click = [this] { cmdBorrar_Click(); };
}

void frm15_AlmacenAnillas::prepararEntrada() {
    frmNuevoMovimiento.Holds({&lblModeloMov, &cboModelo, &lblInscripcionMov, &cboInscripcion, &lblNumInicial,
                              &txtNumInicial, &lblNumFinal, &txtNumFinal, &lblCantidad, &txtCantidad,
                              &lblFecha, &dtFecha, &lblTipoMov, &cboTipoMov, &cmdAceptar, &cmdCancelar});
    cboModelo.SetAccessibleName(u"Modelo"_s);
    cboInscripcion.SetAccessibleName(u"Inscripción"_s);
    txtNumInicial.SetAccessibleName(u"Número inicial"_s);
    txtNumFinal.SetAccessibleName(u"Número final"_s);
    txtCantidad.SetAccessibleName(u"Cantidad"_s);
    dtFecha.SetAccessibleName(u"Fecha"_s);
    cboTipoMov.SetAccessibleName(u"Tipo de movimiento"_s);
    for (forms::Control* obligatorio :
         std::initializer_list<forms::Control*>{&cboModelo, &txtNumInicial, &txtNumFinal, &cboTipoMov})
        obligatorio->SetTint(forms::Tint::Mandatory);
    txtCantidad.SetLocked(true);
    txtCantidad.SetTabStop(false);
    txtCantidad.SetTint(forms::Tint::Greyed);

    cboModelo.LostFocus = [this] { cboModelo_LostFocus(); };
    txtNumInicial.KeyPress = soloCifras;
    txtNumFinal.KeyPress = soloCifras;
    txtNumInicial.LostFocus = [this] { txtNumInicial_LostFocus(); };
    txtNumFinal.LostFocus = [this] { txtNumFinal_LostFocus(); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

void frm15_AlmacenAnillas::Load() {
    CentrarFormulario(*this);
    Modelo.AddItem(QString());
    for (const QString& modelo : modelosDeAnillas()) {
        Modelo.AddItem(modelo);
        cboModelo.AddItem(modelo);
    }
    for (const QString& tipo : kTiposMovimiento)
        cboTipoMov.AddItem(tipo);
    frmNuevoMovimiento.SetVisible(false);
    dtFecha.SetValue(basic::Date::today());
}

void frm15_AlmacenAnillas::Activate() {
    cargarLista(
        u"SELECT * FROM MOVIMIENTOS INNER JOIN ALMACEN ON MOVIMIENTOS.IdMov = ALMACEN.TipoMovimiento"_s);
}

void frm15_AlmacenAnillas::cargarLista(const QString& sql) {
    MostrarMensajeEstado(u"Cargando Almacén de Anillas..."_s);
    gSQL = sql;
    const int filas =
        CargarListaGenerica(*this, lstAlmacenAnillas, gConexion, gSQL, columnas(),
                            {.anchoRelleno = kAnchoRelleno, .marcarFechas = false}, gCargandoLista);
    if (filas == -1) {
        Unload();
        return;
    }
    gSQL.clear();
    MostrarMensajeEstado({});
}

void frm15_AlmacenAnillas::FormKeyDown(int& key) {
    if (key != forms::key::F8 || !B_Buscar.CanAct()) return;
    key = 0;
    B_Buscar_Click();
}

void frm15_AlmacenAnillas::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

void frm15_AlmacenAnillas::UnloadEvent() {
    gCargandoLista = false;
}

// --- Filter

void frm15_AlmacenAnillas::Modelo_LostFocus() {
    if (Modelo.Text().isEmpty()) return;
    llenarInscripciones(Inscripcion, Modelo.Text());
    Inscripcion.AddItem(QString());
}

void frm15_AlmacenAnillas::B_Buscar_Click() {
    if (Modelo.Text().isEmpty() && Inscripcion.Text().isEmpty() && txtSerie.Text().isEmpty()) {
        forms::MsgBox(u"Debe rellenar al menos uno de los campos"_s);
        return;
    }
    BuscarMovimientos();
}

void frm15_AlmacenAnillas::cmdBorrar_Click() {
    Modelo.SetListIndex(-1);
    Inscripcion.Clear();
    txtSerie.SetText(QString());
    BuscarMovimientos();
}

void frm15_AlmacenAnillas::BuscarMovimientos() {
    QString filtro;
    if (!Modelo.Text().isEmpty()) añadirCondicion(filtro, u"Modelo='"_s + Modelo.Text() + u"'"_s);
    if (!Inscripcion.Text().isEmpty())
        añadirCondicion(filtro, u"Inscripcion='"_s + Inscripcion.Text() + u"'"_s);
    if (!txtSerie.Text().isEmpty()) {
        // The series is compared as text with what was typed into the movements.
        const QString serie = basic::CStr(basic::Val(basic::Trim(txtSerie.Text())));
        añadirCondicion(filtro, u"(NumInicial <= '"_s + serie + u"' and NumFinal >= '"_s + serie + u"')"_s);
    }
    cargarLista(
        u"SELECT * FROM MOVIMIENTOS INNER JOIN ALMACEN ON MOVIMIENTOS.IdMov=ALMACEN.TipoMovimiento "_s +
        filtro);
}

// --- New movement

void frm15_AlmacenAnillas::modoEntrada(bool entrada) {
    lstAlmacenAnillas.SetVisible(!entrada);
    for (forms::CommandButton* boton : {&cmdNuevo, &cmdEliminar, &cmdConsultas, &cmdSalir})
        boton->SetVisible(!entrada);
    frmNuevoMovimiento.SetVisible(entrada);
}

void frm15_AlmacenAnillas::cmdNuevo_Click() {
    modoEntrada(true);
    for (forms::ComboBox* combo : {&cboModelo, &cboInscripcion, &cboTipoMov})
        combo->SetListIndex(-1);
    for (forms::TextBox* caja : {&txtNumInicial, &txtNumFinal, &txtCantidad})
        caja->SetText(QString());
    cboModelo.SetFocus();
}

void frm15_AlmacenAnillas::cmdCancelar_Click() {
    modoEntrada(false);
    cmdNuevo.SetFocus();
}

void frm15_AlmacenAnillas::cboModelo_LostFocus() {
    if (!cboModelo.Text().isEmpty()) llenarInscripciones(cboInscripcion, cboModelo.Text());
}

std::optional<frm15_AlmacenAnillas::Rango> frm15_AlmacenAnillas::rangoTecleado() const {
    if (txtNumInicial.Text().isEmpty() || txtNumFinal.Text().isEmpty()) return std::nullopt;
    return Rango{basic::CLng(txtNumInicial.Text()), basic::CLng(txtNumFinal.Text())};
}

void frm15_AlmacenAnillas::ponerCantidad(bool aceptado, qint64 cantidad) {
    if (aceptado) {
        txtCantidad.SetText(basic::CStr(cantidad));
    } else {
        forms::MsgBox(u"El número inicial debe ser menor que el número final"_s);
    }
}

// The two fields count differently: whoever goes back to the initial number and leaves it by another field
// stores one ring less than the range holds.

void frm15_AlmacenAnillas::txtNumInicial_LostFocus() {
    if (const auto rango = rangoTecleado())
        ponerCantidad(rango->numFinal > rango->numInicial, rango->numFinal - rango->numInicial);
}

void frm15_AlmacenAnillas::txtNumFinal_LostFocus() {
    if (const auto rango = rangoTecleado())
        ponerCantidad(rango->numFinal >= rango->numInicial, rango->numFinal - rango->numInicial + 1);
}

void frm15_AlmacenAnillas::cmdAceptar_Click() {
    const RelojDeArena reloj;
    const QString tipo = basic::Left(cboTipoMov.Text(), 1);
    if (!puedeGrabarse(tipo)) return;

    const qint16 numMov = siguienteNumMov();
    ejecutar(u"INSERT INTO Almacen VALUES ("_s + basic::CStr(numMov) + u", '"_s + cboModelo.Text() +
             u"', '"_s + cboInscripcion.Text() + u"', '"_s + txtNumInicial.Text() + u"', '"_s +
             txtNumFinal.Text() + u"', "_s + txtCantidad.Text() + u", '"_s + basic::CStr(dtFecha.Value()) +
             u"', '"_s + tipo + u"')"_s);
    AgregarALista(numMov);
    modoEntrada(false);
    cmdNuevo.SetFocus();
}

bool frm15_AlmacenAnillas::puedeGrabarse(const QString& tipo) {
    for (const QString& texto : {cboModelo.Text(), txtNumInicial.Text(), txtNumFinal.Text(),
                                 txtCantidad.Text(), cboTipoMov.Text()}) {
        if (!texto.isEmpty()) continue;
        forms::MsgBox(u"No se han rellenado todos los campos"_s);
        return false;
    }
    const qint32 numInicial = basic::CLng(txtNumInicial.Text());
    const qint32 numFinal = basic::CLng(txtNumFinal.Text());
    const bool salenAnillas = tipo == u"D"_s || tipo == u"T"_s;
    if (salenAnillas && !ComprobarDevolucion(cboModelo.Text(), numInicial, numFinal)) return false;
    return ComprobarMovimiento(cboModelo.Text(), cboInscripcion.Text(), numInicial, numFinal, tipo);
}

/// Held in 16 bits: an overflow is a run-time error.
qint16 frm15_AlmacenAnillas::siguienteNumMov() {
    gSQL = u"SELECT MAX(NumMov) as Maximo from ALMACEN"_s;
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion);
    const basic::Variant maximo = gRS.Value(u"Maximo"_s);
    gRS = ado::Recordset();
    if (maximo.isNull()) return 1;
    return basic::Variant(qint64{maximo.toLong()} + 1).toInteger();
}

void frm15_AlmacenAnillas::AgregarALista(qint16 numMov) {
    const std::array<QString, 8> fila{
        basic::CStr(numMov),          cboModelo.Text(),
        cboInscripcion.Text(),        txtNumInicial.Text(),
        txtNumFinal.Text(),           txtCantidad.Text(),
        basic::CStr(dtFecha.Value()), basic::Mid(cboTipoMov.Text(), kPosicionDescripcion)};
    lstAlmacenAnillas.Add(fila);
    Refresh();
    lstAlmacenAnillas.SetSorted(true);
}

// --- Deletion and the rest

void frm15_AlmacenAnillas::cmdEliminar_Click() {
    if (lstAlmacenAnillas.Selected() < 0) {
        forms::MsgBox(u"No hay ningún movimiento seleccionado"_s);
        return;
    }
    const int respuesta = forms::MsgBox(
        u"Eliminará el movimiento de anillas seleccionado.\r¿Desea continuar?"_s,
        forms::box::YesNo + forms::box::Critical + forms::box::DefaultButton2, u"¡ELIMINAR MOVIMIENTO!"_s);
    if (respuesta != forms::box::AnswerYes) return;
    const QString numMov = basic::LTrim(lstAlmacenAnillas.SelectedText());
    ejecutar(u"DELETE FROM ALMACEN WHERE NumMov="_s + numMov);
    QuitarDeLista(numMov);
}

void frm15_AlmacenAnillas::QuitarDeLista(const QString& numMov) {
    // A loaded row has blanks in front of its number and is not found; it is the selected one.
    const int fila = lstAlmacenAnillas.FindItem(numMov);
    if (fila >= 0) lstAlmacenAnillas.Select(fila);
    basic::resumeNext([this] { lstAlmacenAnillas.Remove(lstAlmacenAnillas.Selected()); });
    Refresh();
}

void frm15_AlmacenAnillas::cmdConsultas_Click() {
    forms::pantallas().Get(u"frm16_ConsultaAnillas"_s).Show(forms::Modality::Modal);
}

void frm15_AlmacenAnillas::cmdSalir_Click() {
    Unload();
}

}  // namespace tarmel
