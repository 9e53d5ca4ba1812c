#include "exchange/Lote.h"

#include "platform/basic/RuntimeError.h"

namespace tarmel {

namespace {
constexpr int kMilisegundosDelGrupo = 100;
}

Lote::Lote(ado::Connection& conexion) : conexion_(conexion) {
    reloj_.start();
}

Lote::~Lote() {
    basic::resumeNext([this] { cerrar(); });
}

void Lote::abrir() {
    if (!grupo_) grupo_.emplace(conexion_);
}

void Lote::cerrar() {
    if (!grupo_) return;
    grupo_->commit();
    grupo_.reset();
}

bool Lote::entreFilas() {
    if (reloj_.elapsed() < kMilisegundosDelGrupo) return false;
    cerrar();
    reloj_.start();
    return true;
}

}  // namespace tarmel
