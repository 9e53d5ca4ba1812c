#include "queries/frm11_Consultas.h"

#include <algorithm>
#include <array>

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "engine/FuncionesCombo.h"
#include "engine/clsclassTratamientoErr.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "queries/Consultas.h"
#include "queries/Informes.h"
#include "queries/frm12_OpcionesConsulta.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

constexpr int kAnchoEspecies = 8000;

const QString kBorrarTodaLaSeleccion = u"Va a eliminar toda la selección.\r¿Desea continuar?"_s;

const QString kSentenciaEspecies =
    u"SELECT DISTINCTROW RTrim(NombreEspecie)+' .-. '+ANIBRD.CodigoEspecie AS Especie, ANIBRD.IdEspecie FROM "
    "ANIBRD INNER JOIN ANIAHO ON ANIBRD.IdEspecie = ANIAHO.IdEspecie ORDER BY ANIBRD.NombreEspecie"_s;

bool confirma(const QString& pregunta, int icono, const QString& titulo) {
    return forms::MsgBox(pregunta, forms::box::YesNo + icono + forms::box::DefaultButton2, titulo) ==
           forms::box::AnswerYes;
}

/// What stands in front of the separator, without the blank before it.
QString parteIzquierda(const QString& texto) {
    return basic::Left(texto, basic::InStr(texto, kSeparadorCombo) - 2);
}

/// What stands behind the separator, with the blank after it.
QString parteDerecha(const QString& texto) {
    return basic::Mid(texto, basic::InStr(texto, kSeparadorCombo) + 3);
}

}  // namespace

frm11_Consultas::CampoDeCodigo::CampoDeCodigo(forms::Form& pantalla, const CriterioCodigo& elCriterio)
    : criterio(elCriterio),
      rotulo(pantalla, u"rotulo"_s + criterio.combo, criterio.descripcion.trimmed()),
      combo(pantalla, criterio.combo),
      codigo(pantalla, criterio.etiqueta + u"_0"_s),
      nombre(pantalla, criterio.etiqueta + u"_1"_s) {
    combo.SetAccessibleName(rotulo.Caption());
}

std::deque<frm11_Consultas::CampoDeCodigo> frm11_Consultas::camposDeCodigos(forms::Form& pantalla) {
    std::deque<CampoDeCodigo> campos;
    for (const CriterioCodigo& criterio : criteriosDeCodigos())
        campos.emplace_back(pantalla, criterio);
    return campos;
}

const QString& frm11_Consultas::titulo(int opcion) {
    return std::ranges::find(criteriosDeLugar(), opcion, &CriterioLugar::opcion)->titulo;
}

frm11_Consultas::frm11_Consultas() : Form(kName, u"Selección de Datos para consultas"_s) {
    SSTab1.AddPage(u"Especies"_s, fraEspecies);
    SSTab1.AddPage(u"Fechas"_s, fraFechas);
    SSTab1.AddPage(u"Localización"_s, fraLocalizacion);
    SSTab1.AddPage(u"Centro / Anillador / Anilla"_s, fraCentro);
    SSTab1.AddPage(u"Códigos"_s, fraCodigos);

    fraEspecies.Holds(
        {&lblEspecie, &dbcboEspecie, &B_SeleccionarEspecie, &ListaSeleccion, &B_BorrarLinea, &B_BorrarTodo});
    fraFechas.Holds({&fraLimites, &fraFechasElegidas});
    fraLimites.Holds({&lblDesde, &DesdeAnillamiento, &lblHasta, &HastaAnillamiento,
                      &B_SeleccionarAnillamiento, &B_BorrarSeleccion});
    fraFechasElegidas.Holds({&lblHojaCampo, &Anillamiento});
    fraLocalizacion.Holds({&OptionA1, &OptionA4, &OptionA2, &OptionA6, &OptionA3, &OptionA5, &dbcboLocalidad,
                           &dbcboMunicipio, &dbcboProvincia, &cboComunidad, &dbcboPais,
                           &B_SeleccionarLocalizacion, &B_BorrarLocalizacion, &LabelSeleccion, &LabelDatoA1,
                           &LabelDatoA2, &LabelDatoA3});
    fraCentro.Holds({&lblAnilladorGrupo, &cboAnillador, &CodigoAni, &LabelAnillador, &lblCentro, &cboCentro,
                     &CodigoCentro, &LabelCentro, &lblAnilla, &txtAnilla, &LabelAnilla, &B_SeleccionarCentro,
                     &B_BorrarCentro});
    fraCodigos.Holds({&B_SeleccionarCodigosR, &B_BorrarCodigosR});
    for (CampoDeCodigo& campo : Codigos)
        fraCodigos.Holds({&campo.rotulo, &campo.combo, &campo.codigo, &campo.nombre});

    for (const CriterioLugar& criterio : criteriosDeLugar()) {
        auto* opcion = static_cast<forms::OptionButton*>(Find(u"OptionA"_s + basic::CStr(criterio.opcion)));
        lugares_.push_back({criterio, *opcion, static_cast<forms::ComboBox*>(Find(criterio.combo))});
    }
    ListaSeleccion.AddColumn(u"Especies Seleccionadas"_s, kAnchoEspecies);
    ListaSeleccion.AddColumn(u"IdEspecie"_s, 0);
    for (forms::Label* oculto : {&LabelDatoA3, &CodigoAni, &CodigoCentro})
        oculto->SetVisible(false);
    nombrar();
    enlazarEventos();
}

/// What a reader of the screen says, and what the buttons of the same name do.
void frm11_Consultas::nombrar() {
    SSTab1.SetAccessibleName(u"Criterios de la consulta"_s);
    dbcboEspecie.SetAccessibleName(u"Especie"_s);
    ListaSeleccion.SetAccessibleName(u"Especies Seleccionadas"_s);
    DesdeAnillamiento.SetAccessibleName(lblDesde.Caption());
    HastaAnillamiento.SetAccessibleName(lblHasta.Caption());
    for (const OpcionDeLugar& lugar : lugares_) {
        if (lugar.combo) lugar.combo->SetAccessibleName(lugar.criterio.titulo);
    }
    cboAnillador.SetAccessibleName(lblAnilladorGrupo.Caption());
    cboCentro.SetAccessibleName(lblCentro.Caption());
    txtAnilla.SetAccessibleName(lblAnilla.Caption());
    B_SeleccionarEspecie.SetToolTip(u"Añade la especie a la lista."_s);
    B_BorrarLinea.SetToolTip(u"Quita de la lista la especie marcada."_s);
    B_BorrarTodo.SetToolTip(u"Quita de la lista todas las especies."_s);
    for (forms::CommandButton* boton : {&B_SeleccionarAnillamiento, &B_SeleccionarLocalizacion,
                                        &B_SeleccionarCentro, &B_SeleccionarCodigosR})
        boton->SetToolTip(u"Lo elegido en esta pestaña formará parte de la consulta."_s);
    for (forms::CommandButton* boton :
         {&B_BorrarSeleccion, &B_BorrarLocalizacion, &B_BorrarCentro, &B_BorrarCodigosR})
        boton->SetToolTip(u"Lo elegido en esta pestaña deja de formar parte de la consulta."_s);
    B_GenerarConsulta.SetToolTip(u"Busca las capturas que cumplen todo lo seleccionado."_s);
    BorrarTodo.SetToolTip(u"Borra lo seleccionado en todas las pestañas, salvo las fechas."_s);
    B_Salir.SetToolTip(u"Cierra esta pantalla."_s);
}

void frm11_Consultas::enlazarEventos() {
    B_SeleccionarEspecie.Click = [this] { B_SeleccionarEspecie_Click(); };
    B_BorrarLinea.Click = [this] { B_BorrarLinea_Click(); };
    B_BorrarTodo.Click = [this] { B_BorrarTodo_Click(); };
    B_SeleccionarAnillamiento.Click = [this] { B_SeleccionarAnillamiento_Click(); };
    B_BorrarSeleccion.Click = [this] { B_BorrarSeleccion_Click(); };
    for (const OpcionDeLugar& lugar : lugares_) {
        const int opcion = lugar.criterio.opcion;
        // The last option has no event: what was taken stays until it is deleted.
        if (opcion != kCualquierLugar) lugar.opcion.Click = [this, opcion] { ActivarLocalizacion(opcion); };
        if (lugar.combo) lugar.combo->SetEnabled(false);
    }
    B_SeleccionarLocalizacion.Click = [this] { B_SeleccionarLocalizacion_Click(); };
    B_BorrarLocalizacion.Click = [this] { B_BorrarLocalizacion_Click(); };
    B_SeleccionarCentro.Click = [this] { B_SeleccionarCentro_Click(); };
    B_BorrarCentro.Click = [this] { B_BorrarCentro_Click(); };
    B_SeleccionarCodigosR.Click = [this] { B_SeleccionarCodigosR_Click(); };
    B_BorrarCodigosR.Click = [this] { B_BorrarCodigosR_Click(); };
    B_GenerarConsulta.Click = [this] { GenerarConsulta(); };
    BorrarTodo.Click = [this] { BorrarTodo_Click(); };
    B_Salir.Click = [this] { B_Salir_Click(); };
}

void frm11_Consultas::Load() {
    conTrampaSinObjeto([this] {
        const RelojDeArena reloj;
        CentrarFormulario(*this);
        LimpiarLabel();
        OptionA5.SetValue(true);
        llenarListas();
    });
}

void frm11_Consultas::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

void frm11_Consultas::llenarListas() {
    EnlazarDataCombo(dbcboEspecie, gConexion, kSentenciaEspecies, u"Especie"_s, u"IdEspecie"_s);
    for (const OpcionDeLugar& lugar : lugares_) {
        const CriterioLugar& criterio = lugar.criterio;
        if (criterio.sentencia.isEmpty()) continue;
        EnlazarDataCombo(static_cast<forms::DataCombo&>(*lugar.combo), gConexion, criterio.sentencia,
                         criterio.campoLista, criterio.campoEnlazado);
    }
    for (const QString& comunidad : comunidadesAutonomas())
        cboComunidad.AddItem(comunidad);
    for (const CriterioPersona& criterio : criteriosDePersona())
        LlenarCombo(static_cast<forms::ComboBox&>(*Find(criterio.combo)), gConexion, criterio.sentencia,
                    criterio.campoCodigo, u"NOMBRE"_s, true);
    for (CampoDeCodigo& campo : Codigos) {
        for (const QString& sentencia : campo.criterio.sentencias)
            LlenarCombo(campo.combo, gConexion, sentencia, u"Codigo"_s + campo.criterio.columna,
                        u"Nombre"_s + campo.criterio.columna);
        for (const QString& elemento : campo.criterio.elementos)
            campo.combo.AddItem(elemento);
    }
}

void frm11_Consultas::LimpiarLabel() {
    for (forms::Label* etiqueta : {&LabelDatoA1, &LabelDatoA2, &LabelDatoA3})
        etiqueta->SetCaption(QString());
    txtAnilla.SetText(QString());
}

// --- Species

void frm11_Consultas::B_SeleccionarEspecie_Click() {
    const QString especie = dbcboEspecie.Text();
    if (especie.isEmpty()) return;
    for (int i = 0; i < ListaSeleccion.Count(); ++i) {
        ListaSeleccion.Select(i);
        if (ListaSeleccion.Cell(i, 0) == especie) return;
    }
    const QString identificador = basic::CStr(basic::CLng(dbcboEspecie.BoundText()));
    ListaSeleccion.Select(ListaSeleccion.Add(std::array{especie, identificador}));
}

void frm11_Consultas::B_BorrarLinea_Click() {
    if (ListaSeleccion.Count() == 0 || ListaSeleccion.Selected() < 0) return;
    if (confirma(u"Va a eliminar la linea seleccionada.\r¿Desea continuar?"_s, forms::box::Critical,
                 u"Borrar Linea"_s))
        ListaSeleccion.Remove(ListaSeleccion.Selected());
}

void frm11_Consultas::B_BorrarTodo_Click() {
    if (confirma(kBorrarTodaLaSeleccion, forms::box::Information, u"Borrar Selección"_s)) borrarEspecies();
}

void frm11_Consultas::borrarEspecies() {
    ListaSeleccion.Clear();
    dbcboEspecie.SetText(QString());
}

// --- Dates

void frm11_Consultas::B_SeleccionarAnillamiento_Click() {
    if (DesdeAnillamiento.Text().isEmpty() || HastaAnillamiento.Text().isEmpty()) {
        forms::MsgBox(u"La fecha de anillamiento 'Desde' o 'Hasta' no se han rellenado"_s,
                      forms::box::Critical);
        return;
    }
    if (DesdeAnillamiento.Value() > HastaAnillamiento.Value()) {
        forms::MsgBox(u"La fecha de anillamiento 'Desde' debe ser menor que 'Hasta'"_s, forms::box::Critical);
        return;
    }
    Anillamiento.SetCaption(u"Desde "_s + textoDeFecha(DesdeAnillamiento) + u"\r\rHasta "_s +
                            textoDeFecha(HastaAnillamiento));
}

void frm11_Consultas::B_BorrarSeleccion_Click() {
    Anillamiento.SetCaption(kSinFechas);
}

// --- Location

void frm11_Consultas::ActivarLocalizacion(int opcion) {
    for (const OpcionDeLugar& lugar : lugares_) {
        if (lugar.combo) lugar.combo->SetEnabled(lugar.criterio.opcion == opcion);
    }
    LabelSeleccion.SetCaption(titulo(opcion));
    LimpiarLocalizacion();
}

void frm11_Consultas::LimpiarLocalizacion() {
    for (const OpcionDeLugar& lugar : lugares_) {
        if (auto* conFilas = dynamic_cast<forms::DataCombo*>(lugar.combo)) conFilas->SetText(QString());
    }
    cboComunidad.SetListIndex(-1);
    LimpiarLabel();
}

void frm11_Consultas::B_SeleccionarLocalizacion_Click() {
    conTrampaSinObjeto([this] { seleccionarLocalizacion(); });
}

void frm11_Consultas::seleccionarLocalizacion() {
    const auto elegido =
        std::ranges::find_if(lugares_, [](const OpcionDeLugar& lugar) { return lugar.opcion.Value(); });
    if (elegido == lugares_.end()) return;
    QString codigo;
    QString nombre;
    if (const QString texto = elegido->combo ? elegido->combo->Text() : QString(); !texto.isEmpty()) {
        codigo = ExtraerParteCombo(kSeparadorCombo, texto, true);
        nombre = ExtraerParteCombo(kSeparadorCombo, texto, false);
    }
    if (&elegido->opcion == &OptionA1) LabelDatoA3.SetCaption(dbcboLocalidad.BoundText());
    LabelSeleccion.SetCaption(elegido->criterio.titulo);
    LabelDatoA1.SetCaption(codigo);
    LabelDatoA2.SetCaption(nombre);
    if (!codigo.isEmpty() || !nombre.isEmpty()) return;
    LabelSeleccion.SetCaption(titulo(kCualquierLugar));
    OptionA5.SetValue(true);
}

void frm11_Consultas::B_BorrarLocalizacion_Click() {
    OptionA5.SetValue(true);
    ActivarLocalizacion(kCualquierLugar);
}

// --- Centre, ringer, ring

void frm11_Consultas::B_SeleccionarCentro_Click() {
    const auto tomar = [](const forms::ComboBox& combo, forms::Label& codigo, forms::Label& nombre) {
        if (combo.Text().isEmpty()) return;
        codigo.SetCaption(parteIzquierda(combo.Text()));
        nombre.SetCaption(parteDerecha(combo.Text()));
    };
    tomar(cboAnillador, CodigoAni, LabelAnillador);
    tomar(cboCentro, CodigoCentro, LabelCentro);
    if (!txtAnilla.Text().isEmpty()) LabelAnilla.SetCaption(txtAnilla.Text());
}

void frm11_Consultas::B_BorrarCentro_Click() {
    for (forms::Label* etiqueta : {&LabelAnillador, &LabelCentro, &LabelAnilla})
        etiqueta->SetCaption(QString());
    txtAnilla.SetText(QString());
    cboAnillador.SetListIndex(-1);
    cboCentro.SetListIndex(-1);
}

// --- Codes

void frm11_Consultas::B_SeleccionarCodigosR_Click() {
    for (CampoDeCodigo& campo : Codigos) {
        const QString texto = basic::Trim(campo.combo.Text());
        if (texto.isEmpty()) continue;
        campo.codigo.SetCaption(basic::Trim(parteIzquierda(texto)));
        campo.nombre.SetCaption(basic::Trim(parteDerecha(texto)));
    }
}

void frm11_Consultas::B_BorrarCodigosR_Click() {
    for (CampoDeCodigo& campo : Codigos) {
        campo.combo.SetListIndex(-1);
        campo.codigo.SetCaption(QString());
        campo.nombre.SetCaption(QString());
    }
}

// --- The whole

void frm11_Consultas::BorrarTodo_Click() {
    if (!confirma(kBorrarTodaLaSeleccion, forms::box::Exclamation, u"Borrar Selección"_s)) return;
    LimpiarLabel();
    OptionA5.SetValue(true);
    borrarEspecies();
    B_BorrarLocalizacion_Click();
    B_BorrarCentro_Click();
    B_BorrarCodigosR_Click();
}

void frm11_Consultas::B_Salir_Click() {
    Unload();
}

void frm11_Consultas::GenerarConsulta() {
    const auto permitirOrdenes = [this](bool permitir) {
        for (forms::CommandButton* boton : {&B_GenerarConsulta, &BorrarTodo, &B_Salir})
            boton->SetEnabled(permitir);
    };
    permitirOrdenes(false);
    forms::pantallas().Get<frm12_OpcionesConsulta>().Show(forms::Modality::Modal);
    if (!gCancelado) consultar();
    permitirOrdenes(true);
    B_GenerarConsulta.SetFocus();  // the next question is often the same one, asked for another result
}

void frm11_Consultas::consultar() {
    QString where = BuscaFiltro();
    numRegistros_ = EjecutarConsulta(where, gBalanceA, gBalanceR);
    if (numRegistros_ == 0) return;
    const bool deBalance = gBalanceA || gBalanceR;
    if (deBalance) GenerarBalance();
    if (gImpreso) return deBalance ? mostrarRepHojCamB() : mostrarRepHojCamC();
    deBalance ? EscribirBalance(gNombreFichero) : EscribirListado(gNombreFichero);
}

}  // namespace tarmel
