#include "core/DSN.h"

#include "platform/forms/Host.h"
#include "platform/system/DataSource.h"

using namespace Qt::StringLiterals;

namespace tarmel {

void CrearDSN(const QString& ruta) {
    if (sys::configure(u"AccessDSN"_s, u"Microsoft Access Driver (*.mdb)"_s, ruta)) return;
    forms::MsgBox(u"Fallo en la creación del DSN, no se puede cargar la aplicación"_s, forms::box::Critical,
                  u"Fallo al cargar"_s);
    forms::host().EndProgram();
}

}  // namespace tarmel
