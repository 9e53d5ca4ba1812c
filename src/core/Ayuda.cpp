#include "core/Ayuda.h"

#include "platform/forms/Host.h"

using namespace Qt::StringLiterals;

namespace tarmel {

void MostrarAyuda() {
    forms::host().ShowHelp(u"ayuda/index.html"_s);
}

}  // namespace tarmel
