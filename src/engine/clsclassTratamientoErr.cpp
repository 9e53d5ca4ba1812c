#include "engine/clsclassTratamientoErr.h"

#include "platform/forms/Host.h"

namespace tarmel {

using namespace Qt::StringLiterals;

namespace box = forms::box;

int clsclassTratamientoErr::MostrarError(int numero, int tipo, const QString& texto) {
    mensaje_.clear();
    // Without its rows the message stays as far as it came: the box is shown all the same.
    basic::resumeNext([&] { buscarMensaje(numero, texto); });
    basic::resumeNext([this] { errores_.Close(); });
    const int botones = tipo == 1 ? box::Exclamation + box::OK : box::Exclamation + box::OKCancel;
    return forms::MsgBox(mensaje_, botones, u"Error en la aplicación"_s);
}

void clsclassTratamientoErr::buscarMensaje(int numero, const QString& texto) {
    const bool deConexion = numero < 0 || numero == basic::error::ConnectionClosed;
    for (; !errores_.Eof(); errores_.MoveNext()) {
        if (testsEqual(errores_.Value(u"CodigoError"_s), numero)) {
            mensaje_ = errores_.Text(u"DescCorta"_s) + u'\r' + texto;
            return;
        }
        mensaje_ = deConexion ? u"Error de conexión"_s : u"Error: %1 \rError no definido"_s.arg(numero);
    }
}

int clsclassTratamientoErr::PreguntaBorrar(const QString& codigo, const QString& nombre, int tipo,
                                           const QString& titulo) {
    const QString texto = u"Atención eliminará el registro:\r\rCódigo:  "_s + codigo + u"\rNombre: "_s +
                          nombre + u"\r\r¿Desea continuar?"_s;
    const int pregunta = box::OKCancel + box::DefaultButton2;
    const int botones = tipo == 1 ? pregunta + box::Critical : tipo == 2 ? pregunta : box::OK;
    return forms::MsgBox(texto, botones, titulo);
}

void MostrarErrorSQL(const basic::RuntimeError& error) {
    forms::MsgBox(u"Error nº: [%1] "_s.arg(error.number()) + error.source() + u'\r' + error.description(),
                  box::Exclamation, u"¡ERROR al ejecutar SQL!"_s);
}

}  // namespace tarmel
