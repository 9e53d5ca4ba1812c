#include "core/RegistroPantallas.h"

#include "core/frm01_Inicio.h"
#include "core/frm02_Matricula.h"
#include "core/frm03_Principal.h"
#include "exchange/frm04_ActualizarLocalidades.h"
#include "exchange/frm05_ActualizarEspecies.h"
#include "exchange/frm09_ImportarDatos.h"
#include "exchange/frm10_ExportarDatos.h"
#include "platform/forms/Pantallas.h"
#include "queries/frm11_Consultas.h"
#include "queries/frm12_OpcionesConsulta.h"
#include "queries/frm14_ContadorRegistros.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"
#include "sheets/frm08_ImprimirHojas.h"
#include "sheets/frm13_BorrarRegistrosAnteriores.h"
#include "store/frm15_AlmacenAnillas.h"
#include "store/frm16_ConsultaAnillas.h"
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
    registrar<frm08_ImprimirHojas>();
    registrar<frm09_ImportarDatos>();
    registrar<frm10_ExportarDatos>();
    registrar<frm11_Consultas>();
    registrar<frm12_OpcionesConsulta>();
    registrar<frm13_BorrarRegistrosAnteriores>();
    registrar<frm14_ContadorRegistros>();
    registrar<frm15_AlmacenAnillas>();
    registrar<frm16_ConsultaAnillas>();
    registrar<frm17_GestionAnillas>();
    registrar<frm18_SeleccionAnillas>();
}

}  // namespace tarmel
