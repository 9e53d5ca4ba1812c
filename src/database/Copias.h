#pragma once

#include <QDateTime>
#include <QString>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "platform/ado/Backup.h"
#include "platform/ado/FileCheck.h"

/// The copies of the database, in the folder Copias beside it, each a whole database by itself:
/// Tarmel_11_2026-05-04_081502.mdb. The newest ten are kept, and of the older ones the last of each month.
namespace tarmel {

struct CopiaGuardada {
    QString ruta;
    QDateTime momento;
};

/// The finished copies of a database, newest first. Whatever else lies in the folder is not ours.
[[nodiscard]] std::vector<CopiaGuardada> copiasGuardadas(const QString& base);

/// Those of them (newest first) that have had their time.
[[nodiscard]] std::vector<CopiaGuardada> copiasSobrantes(const std::vector<CopiaGuardada>& copias);

/// A copy in the making: pages under a temporary name, a whole check, the disk, the name. Only then do older
/// copies go. One that is given up leaves its temporary file to the next one.
class CopiaEnCurso {
 public:
    /// RuntimeError when there is no folder, no room, or no file can be made.
    CopiaEnCurso(ado::Connection& conexion, const QString& base);
    ~CopiaEnCurso();
    CopiaEnCurso(const CopiaEnCurso&) = delete;
    CopiaEnCurso& operator=(const CopiaEnCurso&) = delete;

    /// Works or waits for about so long; false once the copy stands. RuntimeError when it cannot be made;
    /// what was begun is then gone.
    [[nodiscard]] bool paso(std::chrono::milliseconds rato);
    [[nodiscard]] const QString& ruta() const { return ruta_; }
    /// Of a copy that stands: Connection::changeMark of what it holds.
    [[nodiscard]] const QByteArray& marca() const { return marca_; }

 private:
    [[nodiscard]] bool pasoSinQuitar(std::chrono::milliseconds rato);
    void copiarPaginas(std::chrono::milliseconds rato);
    void darNombre();

    QString base_;
    QString ruta_;
    QString provisional_;
    QByteArray marca_;
    std::chrono::steady_clock::time_point ultimoAvance_;
    std::unique_ptr<ado::Backup> copia_;
    std::optional<ado::WholeCheck> comprobacion_;
};

}  // namespace tarmel
