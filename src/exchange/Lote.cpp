#include "exchange/Lote.h"

#include "platform/basic/RuntimeError.h"

namespace tarmel {

namespace {
constexpr int kMilisegundosDelGrupo = 100;
constexpr int kFilasDelGrupo = 1000;
}  // namespace

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
    if (++filas_ < kFilasDelGrupo && reloj_.elapsed() < kMilisegundosDelGrupo) return false;
    cerrar();
    filas_ = 0;
    reloj_.start();
    return true;
}

}  // namespace tarmel
