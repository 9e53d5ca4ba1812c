#include "core/Pendientes.h"

#include <QSet>

#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

const QSet<QString>& pendientes() {
    static const QSet<QString> nombres{
        // Screens.
        u"frm08_ImprimirHojas"_s,
        u"frm11_Consultas"_s,
        u"frm13_BorrarRegistrosAnteriores"_s,
        u"frm14_ContadorRegistros"_s,
        u"frm16_ConsultaAnillas"_s,
        // Commands that have no screen of their own: the maintenance of the database.
        u"mnuCompactar"_s,
        u"mnuBorrarFicherosExportados"_s,
        u"mnuActualizarBD"_s,
    };
    return nombres;
}

}  // namespace

bool avisarSiPendiente(const QString& nombre) {
    if (!pendientes().contains(nombre)) return false;
    forms::MsgBox(u"Esta orden todavía no está disponible."_s, forms::box::Information);
    return true;
}

bool mostrarPantalla(const QString& nombre, forms::Modality modo) {
    if (avisarSiPendiente(nombre)) return false;
    forms::pantallas().Get(nombre).Show(modo);
    return true;
}

}  // namespace tarmel
