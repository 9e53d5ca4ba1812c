#pragma once

#include <QElapsedTimer>

#include "platform/forms/Pantallas.h"
#include "queries/frm11_Consultas.h"

namespace tarmel {

/// Keeps the screen of the queries painted, if it is open, while one takes long.
class Repintado {
 public:
    Repintado() { reloj_.start(); }
    /// Repaints when some time has gone by: each time would take longer than the work.
    void aVeces() {
        if (!pantalla_ || reloj_.elapsed() < kMilisegundosEntreRepintados) return;
        pantalla_->Refresh();
        reloj_.start();
    }

 private:
    static constexpr int kMilisegundosEntreRepintados = 100;
    forms::Form* pantalla_ = forms::pantallas().Loaded(frm11_Consultas::kName);
    QElapsedTimer reloj_;
};

}  // namespace tarmel
