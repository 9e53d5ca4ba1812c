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
        u"frm04_ActualizarLocalidades"_s,
        u"frm05_ActualizarEspecies"_s,
        u"frm08_ImprimirHojas"_s,
        u"frm09_ImportarDatos"_s,
        u"frm10_ExportarDatos"_s,
        u"frm11_Consultas"_s,
        u"frm13_BorrarRegistrosAnteriores"_s,
        u"frm14_ContadorRegistros"_s,
        u"frm16_ConsultaAnillas"_s,
        u"frm17_GestionAnillas"_s,
        u"frm18_SeleccionAnillas"_s,
        // Commands that have no screen of their own: the lists of rings, and the maintenance of the database.
        u"mnuListadoAnillasTodas"_s,
        u"mnuListadoAnillasSeleccion"_s,
        u"mnuAnillasDuplicadas"_s,
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
