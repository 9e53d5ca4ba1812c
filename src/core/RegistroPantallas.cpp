#include "core/RegistroPantallas.h"

#include "core/frm01_Inicio.h"
#include "core/frm02_Matricula.h"
#include "core/frm03_Principal.h"
#include "exchange/frm04_ActualizarLocalidades.h"
#include "exchange/frm05_ActualizarEspecies.h"
#include "exchange/frm09_ImportarDatos.h"
#include "exchange/frm10_ExportarDatos.h"
#include "platform/forms/Pantallas.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"
#include "store/frm15_AlmacenAnillas.h"
#include "store/frm17_GestionAnillas.h"
#include "store/frm18_SeleccionAnillas.h"

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
    registrar<frm04_ActualizarLocalidades>();
    registrar<frm05_ActualizarEspecies>();
    registrar<frm06_HojasCampo>();
    registrar<frm07_DetallesHojasCampo>();
    registrar<frm09_ImportarDatos>();
    registrar<frm10_ExportarDatos>();
    registrar<frm15_AlmacenAnillas>();
    registrar<frm17_GestionAnillas>();
    registrar<frm18_SeleccionAnillas>();
}

}  // namespace tarmel
