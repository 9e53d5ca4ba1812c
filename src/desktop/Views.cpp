#include "desktop/Views.h"

#include <algorithm>

#include "desktop/FrameWindow.h"
#include "desktop/Surface.h"
#include "ui_frm01_Inicio.h"
#include "ui_frm02_Matricula.h"
#include "ui_frm04_ActualizarLocalidades.h"
#include "ui_frm05_ActualizarEspecies.h"
#include "ui_frm06_HojasCampo.h"
#include "ui_frm07_DetallesHojasCampo.h"
#include "ui_frm08_ImprimirHojas.h"
#include "ui_frm09_ImportarDatos.h"
#include "ui_frm10_ExportarDatos.h"
#include "ui_frm11_Consultas.h"
#include "ui_frm12_OpcionesConsulta.h"
#include "ui_frm13_BorrarRegistrosAnteriores.h"
#include "ui_frm14_ContadorRegistros.h"
#include "ui_frm15_AlmacenAnillas.h"
#include "ui_frm16_ConsultaAnillas.h"
#include "ui_frm17_GestionAnillas.h"
#include "ui_frm18_SeleccionAnillas.h"

namespace tarmel::desktop {

namespace {

/// A window as its description in ui/ lays it out.
template <typename Description>
std::unique_ptr<QWidget> described() {
    auto surface = std::make_unique<Surface>();
    Description ui;
    ui.setupUi(surface.get());
    return surface;
}

std::unique_ptr<QWidget> frameWindow() {
    return std::make_unique<FrameWindow>();
}

}  // namespace

std::vector<ViewKind>& viewKinds() {
    static std::vector<ViewKind> kinds{
        {QStringLiteral("frm01_Inicio"), Place::Splash, &described<Ui::frm01_Inicio>},
        {QStringLiteral("frm02_Matricula"), Place::Dialog, &described<Ui::frm02_Matricula>},
        {QStringLiteral("frm03_Principal"), Place::Frame, &frameWindow},
        {QStringLiteral("frm04_ActualizarLocalidades"), Place::Page,
         &described<Ui::frm04_ActualizarLocalidades>},
        {QStringLiteral("frm05_ActualizarEspecies"), Place::Page, &described<Ui::frm05_ActualizarEspecies>},
        {QStringLiteral("frm06_HojasCampo"), Place::Page, &described<Ui::frm06_HojasCampo>},
        {QStringLiteral("frm07_DetallesHojasCampo"), Place::Page, &described<Ui::frm07_DetallesHojasCampo>},
        {QStringLiteral("frm08_ImprimirHojas"), Place::Dialog, &described<Ui::frm08_ImprimirHojas>},
        {QStringLiteral("frm09_ImportarDatos"), Place::Dialog, &described<Ui::frm09_ImportarDatos>},
        {QStringLiteral("frm10_ExportarDatos"), Place::Dialog, &described<Ui::frm10_ExportarDatos>},
        {QStringLiteral("frm13_BorrarRegistrosAnteriores"), Place::Dialog,
         &described<Ui::frm13_BorrarRegistrosAnteriores>},
        {QStringLiteral("frm14_ContadorRegistros"), Place::Page, &described<Ui::frm14_ContadorRegistros>},
        {QStringLiteral("frm11_Consultas"), Place::Dialog, &described<Ui::frm11_Consultas>},
        {QStringLiteral("frm12_OpcionesConsulta"), Place::Dialog, &described<Ui::frm12_OpcionesConsulta>},
        {QStringLiteral("frm15_AlmacenAnillas"), Place::Page, &described<Ui::frm15_AlmacenAnillas>},
        {QStringLiteral("frm16_ConsultaAnillas"), Place::Dialog, &described<Ui::frm16_ConsultaAnillas>},
        {QStringLiteral("frm17_GestionAnillas"), Place::Page, &described<Ui::frm17_GestionAnillas>},
        {QStringLiteral("frm18_SeleccionAnillas"), Place::Dialog, &described<Ui::frm18_SeleccionAnillas>},
    };
    return kinds;
}

const ViewKind* viewKind(const QString& form) {
    const auto& kinds = viewKinds();
    const auto found =
        std::find_if(kinds.begin(), kinds.end(), [&](const ViewKind& k) { return k.form == form; });
    return found == kinds.end() ? nullptr : &*found;
}

}  // namespace tarmel::desktop
