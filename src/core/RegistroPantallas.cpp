#include "core/RegistroPantallas.h"

#include "core/frm01_Inicio.h"
#include "core/frm02_Matricula.h"
#include "core/frm03_Principal.h"
#include "platform/forms/Pantallas.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"
#include "store/frm15_AlmacenAnillas.h"

namespace tarmel {

namespace {

template <typename Pantalla>
void registrar() {
    if (forms::pantallas().Knows(Pantalla::kName)) return;
    forms::pantallas().Register(Pantalla::kName, [] { return std::make_shared<Pantalla>(); });
}

}  // namespace

void registrarPantallas() {
    registrar<frm01_Inicio>();
    registrar<frm02_Matricula>();
    registrar<frm03_Principal>();
    registrar<frm06_HojasCampo>();
    registrar<frm07_DetallesHojasCampo>();
    registrar<frm15_AlmacenAnillas>();
}

}  // namespace tarmel
