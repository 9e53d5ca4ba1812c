#pragma once

#include <QElapsedTimer>
#include <optional>

#include "platform/ado/Connection.h"

namespace tarmel {

/// Groups the statements of a long job by whole rows, since each transaction has to wait for the disk. What
/// was done stays done, however the job ends: after a failure the rows are as single statements would have
/// left them. Only a process that is killed loses the rows of the open group, and those whole.
class Lote {
 public:
    explicit Lote(ado::Connection& conexion);
    ~Lote();
    Lote(const Lote&) = delete;
    Lote& operator=(const Lote&) = delete;

    /// To be called between two rows. True when a group has just been closed: now events may run and boxes be
    /// shown; the next group begins with the next row.
    [[nodiscard]] bool entreFilas();
    /// Closes the group at once, before something else is done than the rows.
    void cerrar();
    /// Begins a group if none is open.
    void abrir();

 private:
    ado::Connection& conexion_;
    std::optional<ado::Connection::Batch> grupo_;
    QElapsedTimer reloj_;
    int filas_ = 0;  ///< of the group
};

}  // namespace tarmel
