#include "sheets/HojasComun.h"

#include "engine/FuncionesCombo.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"

namespace tarmel {

using namespace Qt::StringLiterals;
namespace key = forms::key;

namespace {

bool esRetroceso(int tecla) {
    return tecla == key::Backspace;
}

bool esCifra(int tecla) {
    return tecla >= u'0' && tecla <= u'9';
}

/// What a list row shows of a control: text, code, caption, date or time.
QString valorParaLista(const forms::Control& control) {
    switch (control.kind()) {
        case forms::Kind::TextBox:
            return static_cast<const forms::TextBox&>(control).Text();
        case forms::Kind::ComboBox:
        case forms::Kind::DataCombo:
            return CodigoDeCombo(static_cast<const forms::ComboBox&>(control));
        case forms::Kind::DatePicker:
            return basic::CStr(static_cast<const forms::DatePicker&>(control).Value());
        case forms::Kind::Label:
            return static_cast<const forms::Label&>(control).Caption();
        default:
            return {};
    }
}

}  // namespace

QString Rellenar(const QString& texto) {
    return texto.rightJustified(kAnchoRelleno);
}

std::vector<ColumnaLista> ColumnasDeLista(const std::vector<ColumnaDePantalla>& columnas) {
    std::vector<ColumnaLista> lista;
    lista.reserve(columnas.size());
    for (const ColumnaDePantalla& columna : columnas)
        lista.push_back({columna.titulo, columna.ancho, columna.campo});
    return lista;
}

std::vector<QString> FilaDeControles(const forms::Form& formulario,
                                     const std::vector<ColumnaDePantalla>& columnas) {
    std::vector<QString> fila;
    fila.reserve(columnas.size());
    for (const ColumnaDePantalla& columna : columnas) {
        const forms::Control* const control = formulario.Find(columna.control);
        fila.push_back(control ? valorParaLista(*control) : QString());
    }
    return fila;
}

QString TextoDeLocalidad(const ado::Recordset& lugar) {
    return basic::RTrim(lugar.Text(u"Municipio"_s)) + u"   "_s +
           basic::RTrim(lugar.Text(u"NombreLocalidad"_s)) + u" .-. "_s + lugar.Text(u"CodigoLocalidad"_s);
}

QString DiasDesde1900(basic::Date fecha) {
    return basic::CStr(fecha.serial() - basic::Date::of(1900, 1, 1).serial());
}

QString CodigoDeCombo(const forms::ComboBox& combo) {
    const QString texto = combo.Text();
    return texto.isEmpty() ? QString() : ExtraerParteCombo(kSeparadorCombo, texto, false);
}

void OrdenarPorColumna(forms::ListView& lista, int columnaDesde1) {
    const int columna = columnaDesde1 - 1;
    const bool deFecha = lista.ColumnAt(columna).title.contains(u"Fecha"_s);
    lista.SetSorted(false);  // so that the rows are sorted once, when key and order stand
    lista.SetSortKey(deFecha ? columna + 1 : columna);
    lista.SetSortOrder(gOrdenAscendente ? 1 : 0);
    lista.SetSorted(true);
    gOrdenAscendente = !gOrdenAscendente;
}

void TerminarCampoActivo(const forms::Form& formulario) {
    const forms::Control* const activo = formulario.ActiveControl();
    if (activo && activo->CanAct() && activo->LostFocus) activo->LostFocus();
}

void RechazarSeparadores(int& tecla) {
    if (tecla != u';' && tecla != u'|') return;
    tecla = 0;
    forms::MsgBox(u"En los campos de texto no se puede introducir el carácter ; ni el carácter |"_s);
}

void SoloTeclasDeAnilla(int& tecla) {
    const bool letra = (tecla >= u'A' && tecla <= u'Z') || (tecla >= u'a' && tecla <= u'z');
    if (!letra && !esCifra(tecla) && !esRetroceso(tecla)) tecla = 0;
}

void SoloTeclasDeMedida(const forms::TextBox& medida, int& tecla) {
    if (tecla == u'.') tecla = u',';
    const bool otraComa = tecla == u',' && medida.Text().contains(u',');
    const bool admitida = esCifra(tecla) || tecla == u',' || esRetroceso(tecla);
    if (otraComa || !admitida) tecla = 0;
}

void CompletarMedida(forms::TextBox& medida, int decimales) {
    const QString texto = medida.Text();
    // A comma in front of everything does not count as one.
    if (basic::InStr(texto, u","_s) <= 1) medida.SetText(texto + u',' + QString(decimales, u'0'));
}

void DescribirControles(const std::vector<Descripcion>& descripciones) {
    for (const Descripcion& descripcion : descripciones) {
        descripcion.control->SetAccessibleName(descripcion.nombre);
        if (!descripcion.ayuda.isEmpty()) descripcion.control->SetToolTip(descripcion.ayuda);
    }
}

}  // namespace tarmel
