#include "engine/clsClassMantenimientos.h"

#include <QStringBuilder>
#include <algorithm>

#include "core/DefinicionesGlobales.h"
#include "engine/clsclassTratamientoErr.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"

/// The statements. The side of the class that talks to controls is in ControlesMantenimientos.cpp.
namespace tarmel {

using namespace Qt::StringLiterals;

namespace {

/// Characters that the columns or the values of a capture take, the statement that runs for every row typed.
constexpr qsizetype kFilaDeCaptura = 1024;

QString entreComillas(const QString& valor) {
    return u'\'' + valor + u'\'';
}

/// Runs a statement of the class's own making; a failure is shown and the program goes on. True when it went
/// through.
template <typename Paso>
bool mostrandoErrores(Paso&& paso) {
    try {
        paso();
        return true;
    } catch (const basic::RuntimeError& e) {
        MostrarErrorSQL(e);
        return false;
    }
}

void ejecutar(const QString& sql) {
    ado::Recordset orden;
    orden.Open(sql, gConexion);
}

QString condicionDeClave(const clsClassMantenimientos::Campo& campo) {
    const bool sinComillas = campo.TipoDatos == u"Numerico"_s;
    return campo.NombreCampo + u'=' + (sinComillas ? campo.ValorCampo : entreComillas(campo.ValorCampo));
}

/// The keys among the descriptors, joined by AND.
template <typename Campos>
QString condicionDeClaves(const Campos& campos) {
    QStringList condiciones;
    for (const clsClassMantenimientos::Campo& campo : campos) {
        if (campo.CampoClave) condiciones << condicionDeClave(campo);
    }
    return condiciones.join(u" AND "_s);
}

/// The last slot is no field of the screen; it counts only where it holds a yes or a no.
QString asignacionDelUltimo(const clsClassMantenimientos::Campo& campo) {
    if (campo.ValorCampo == u"Verdadero"_s && !campo.CampoClave) return campo.NombreCampo + u"='1'"_s;
    if (campo.ValorCampo == u"Falso"_s) return campo.NombreCampo + u"='0'"_s;
    return QString();
}

template <typename Clase>
Clase& controlDe(forms::Form& formulario, const QString& nombre) {
    auto* control = dynamic_cast<Clase*>(formulario.Find(nombre));
    if (control == nullptr) throw basic::RuntimeError(basic::error::ObjectNotSet);
    return *control;
}

}  // namespace

void clsClassMantenimientos::Elementos(int n) {
    campos_.assign(static_cast<size_t>(std::max(n, -1) + 1), Campo{});
}

void clsClassMantenimientos::Describir(std::vector<Campo> campos) {
    Elementos(static_cast<int>(campos.size()));
    std::ranges::move(campos, campos_.begin());
}

clsClassMantenimientos::Campo& clsClassMantenimientos::campo(int indice) {
    if (indice < 0 || indice > UBound()) throw basic::RuntimeError(basic::error::Subscript);
    return campos_[static_cast<size_t>(indice)];
}

const clsClassMantenimientos::Campo& clsClassMantenimientos::campo(int indice) const {
    return const_cast<clsClassMantenimientos*>(this)->campo(indice);
}

std::span<const clsClassMantenimientos::Campo> clsClassMantenimientos::sinElUltimo() const {
    return std::span(campos_).first(campos_.empty() ? 0 : campos_.size() - 1);
}

QString clsClassMantenimientos::columnas() const {
    QString nombres;
    nombres.reserve(kFilaDeCaptura);
    for (const Campo& campo : sinElUltimo()) {
        if (!nombres.isEmpty()) nombres += u',';
        nombres += campo.NombreCampo;
    }
    return nombres;
}

bool clsClassMantenimientos::InsertarRegistro() {
    QString valores;
    valores.reserve(kFilaDeCaptura);
    for (const Campo& campo : sinElUltimo()) {
        if (!valores.isEmpty()) valores += u',';
        valores += u'\'';
        valores += campo.ValorCampo;
        valores += u'\'';
    }
    const QString sql =
        u"INSERT INTO "_s % nombreTabla_ % u" (" % columnas() % u") VALUES (" % valores % u')';
    return mostrandoErrores([&] { ejecutar(sql); });
}

bool clsClassMantenimientos::ModificarRegistro() {
    QStringList asignaciones;
    for (const Campo& campo : sinElUltimo()) {
        if (!campo.CampoClave) asignaciones << campo.NombreCampo + u'=' + entreComillas(campo.ValorCampo);
    }
    const QString ultima = campos_.empty() ? QString() : asignacionDelUltimo(campos_.back());
    if (!ultima.isEmpty()) asignaciones << ultima;
    const QString condicion = condicionDeClaves(sinElUltimo());
    QString sql = u"UPDATE "_s + nombreTabla_ + u" SET "_s + asignaciones.join(u',');
    if (!condicion.isEmpty()) sql += u" WHERE "_s + condicion;
    return mostrandoErrores([&] { ejecutar(sql); });
}

bool clsClassMantenimientos::EliminarRegistro(bool sinRenumerar) {
    const QString sql = u"DELETE FROM "_s + nombreTabla_ + u" WHERE "_s + condicionDeClaves(campos_);
    bool borrado = false;
    mostrandoErrores([&] {
        ejecutar(sql);
        borrado = true;
        if (!sinRenumerar) RenumerarNumRegistro();
    });
    return borrado;
}

void clsClassMantenimientos::RenumerarNumRegistro() {
    forms::Form& capturas = forms::pantallas().Get(u"frm07_DetallesHojasCampo"_s);
    const QString id = controlDe<forms::Label>(capturas, u"lblIdCabecera"_s).Caption();
    ado::Recordset ultimo;
    ultimo.Open(u"SELECT MAX(NumRegistro) as maximo from ANIAHO WHERE IdCabecera ="_s + id, gConexion);
    const int limite = ultimo.Value(u"maximo"_s).toInteger() - 1;
    ultimo.Close();
    const int primero = basic::CInt(controlDe<forms::TextBox>(capturas, u"txtNumRegistro"_s).Text());
    const auto bajar = [&] {
        for (int k = primero; k <= limite; ++k) {
            ejecutar(u"UPDATE ANIAHO SET NumRegistro=%1 WHERE IdCabecera =%2 AND NumRegistro=%3"_s.arg(
                QString::number(k), id, QString::number(k + 1)));
        }
    };
    // One wait for the disk instead of one a capture. What was done before a failure stays, as without the
    // grouping.
    ado::Connection::Batch lote(gConexion);
    try {
        bajar();
    } catch (const basic::RuntimeError&) {
        lote.commit();
        throw;
    }
    lote.commit();
}

QString clsClassMantenimientos::condicionDeBusqueda(const Par& par) const {
    const QString valor = basic::Trim(par.valor.joined());
    const QString conComillas = par.columna + u'=' + entreComillas(valor);
    if (!basic::IsNumeric(par.valor)) return conComillas;
    QString condicion;
    for (const Campo& campo : campos_) {
        if (campo.NombreCampo != par.columna) continue;
        condicion += campo.TipoDatos == u"Caracter"_s ? conComillas : par.columna + u'=' + valor;
    }
    return condicion;
}

bool clsClassMantenimientos::BuscarRegistro(const std::vector<Par>& pares) {
    QStringList condiciones;
    for (const Par& par : pares)
        condiciones << condicionDeBusqueda(par);
    const QString sql =
        u"SELECT "_s % columnas() % u" FROM " % nombreTabla_ % u" WHERE " % condiciones.join(u" AND "_s);
    ado::Recordset fila;
    fila.Open(sql, gConexion, ado::Cursor::Keyset, ado::Lock::Optimistic);
    if (fila.RecordCount() == 0) return false;
    for (int i = 0; i < UBound(); ++i) {
        const basic::Variant valor = fila.Value(i);
        if (!valor.isNull()) campos_[static_cast<size_t>(i)].ValorCampo = valor.toText();
    }
    return true;
}

void clsClassMantenimientos::BorrarDatos() {
    for (Campo& campo : campos_)
        campo.ValorCampo.clear();
}

std::optional<ado::Recordset> clsClassMantenimientos::EjecutarSQL(const QString& sql) {
    std::optional<ado::Recordset> filas;
    mostrandoErrores([&] {
        ado::Recordset abiertas;
        abiertas.Open(sql, gConexion, ado::Cursor::Keyset, ado::Lock::Optimistic);
        filas = std::move(abiertas);
    });
    return filas;
}

}  // namespace tarmel
