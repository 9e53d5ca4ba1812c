#include "core/CopiasSeguridad.h"

#include <QDate>
#include <QFile>
#include <chrono>
#include <memory>
#include <optional>
#include <utility>

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "core/frm03_Principal.h"
#include "database/Copias.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarmel {

namespace {

constexpr auto kRatoEnPausa = 8ms;  // less than anybody notices who begins to type
constexpr auto kRatoDeEspera = 40ms;
constexpr auto kEntreIntentos = 10min;

struct Estado {
    std::unique_ptr<CopiaEnCurso> enCurso;  ///< the daily one
    QString ultima;
    QByteArray marca;  ///< of what the last one holds
    QString aviso;     ///< not yet said
    std::optional<std::chrono::steady_clock::time_point> fallida;
};

Estado& estado() {
    static Estado unico;
    return unico;
}

void anotar(const CopiaEnCurso& copia) {
    estado().ultima = copia.ruta();
    estado().marca = copia.marca();
    estado().fallida.reset();
}

void anotarFallo(const basic::RuntimeError& fallo) {
    estado().aviso = u"No se ha podido guardar la copia de seguridad: "_s + fallo.description();
    estado().fallida = std::chrono::steady_clock::now();
}

bool tocaCopia() {
    const auto& fallida = estado().fallida;
    if (fallida && std::chrono::steady_clock::now() - *fallida < kEntreIntentos) return false;
    const std::vector<CopiaGuardada> copias = copiasGuardadas(gRutaBD);
    return copias.empty() || copias.front().momento.date() != QDate::currentDate();
}

/// Some milliseconds of the daily copy; true when more is left to do.
bool trabajarEnPausa() {
    if (!gConexion.IsOpen()) return false;
    // Only now, so that the command that was running does not clear it.
    if (!estado().aviso.isEmpty()) MostrarMensajeEstado(std::exchange(estado().aviso, {}));
    if (!estado().enCurso && !tocaCopia()) return false;
    try {
        if (!estado().enCurso) estado().enCurso = std::make_unique<CopiaEnCurso>(gConexion, gRutaBD);
        if (estado().enCurso->paso(kRatoEnPausa)) return true;
        anotar(*estado().enCurso);
    } catch (const basic::RuntimeError& fallo) {
        // The connection was closed under it, for a compaction: begin again later.
        if (fallo.number() != basic::error::ConnectionClosed) anotarFallo(fallo);
    }
    estado().enCurso.reset();
    return !estado().aviso.isEmpty();
}

QString mensajeEstado() {
    const auto* const principal = forms::pantallas().Loaded<frm03_Principal>();
    return principal ? principal->staStatusBar.PanelText(u"Messages"_s) : QString();
}

bool nadaHaCambiado() {
    return QFile::exists(estado().ultima) && estado().marca == gConexion.changeMark();
}

}  // namespace

void empezarCopiasDiarias() {
    forms::host().WhenIdle(trabajarEnPausa);
}

void copiarAntesDe(const QString& operacion) {
    if (!gConexion.IsOpen()) return;
    estado().enCurso.reset();
    try {
        if (nadaHaCambiado()) return;
        const QString mensaje = mensajeEstado();
        MostrarMensajeEstado(u"Guardando una copia antes de "_s + operacion + u"..."_s);
        CopiaEnCurso copia(gConexion, gRutaBD);
        while (copia.paso(kRatoDeEspera))
            forms::host().Sleep(0);
        anotar(copia);
        MostrarMensajeEstado(mensaje);
    } catch (const basic::RuntimeError& fallo) {
        anotarFallo(fallo);
        MostrarMensajeEstado(estado().aviso);
    }
}

void olvidarCopias() {
    estado() = {};
}

}  // namespace tarmel
