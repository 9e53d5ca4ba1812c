#pragma once

#include <QElapsedTimer>

#include "database/FlujoAccess.h"
#include "database/PlanAccess.h"
#include "database/Salud.h"
#include "database/Tablas.h"
#include "platform/ado/BulkFile.h"

namespace tarmel {

/// Fills a new database with the rows of an Access file as they come. A row that breaks a key is kept and the
/// key given up; a value that cannot be kept as it is raises errorAccess with its table and row.
class CargaAccess : public ReceptorAccess {
 public:
    CargaAccess(const QString& archivo, Avance avance);

    void definido(const std::vector<TablaAccess>& tablas,
                  const std::vector<RelacionAccess>& relaciones) override;
    void empiezaTabla(std::size_t tabla) override;
    void fila(std::span<const ValorAccess> valores) override;
    void acabaTabla() override;

    /// Relations and counters; the file is closed behind it.
    void acabar();

    [[nodiscard]] const PlanAccess& plan() const { return plan_; }
    [[nodiscard]] qint64 filas() const { return cargadas_; }
    [[nodiscard]] const QStringList& avisos() const { return avisos_; }
    /// Keys that were given up: their columns want a plain index.
    [[nodiscard]] const std::vector<Indice>& clavesPerdidas() const { return clavesPerdidas_; }

 private:
    void abrirFilas();
    void hacerSitio(std::span<const ValorAccess> valores);
    void enlazar(std::span<const ValorAccess> valores);
    void enlazarValor(int columna, const ValorAccess& valor, std::span<const ValorAccess> valores);
    void perderClave();
    void pasarATexto(access_sql::ColumnDef& columna);
    void comprobarRelacion(const access_sql::ForeignKey& relacion);
    void ponerContadores();
    void avisarAvance();
    [[nodiscard]] access_sql::ColumnDef& columna(std::size_t lugar);
    [[nodiscard]] access_sql::TableDef* definicionDe(const QString& tabla);
    [[nodiscard]] std::vector<access_sql::ForeignKey> relacionesDe(const QString& tabla) const;
    [[noreturn]] void fallar(std::span<const ValorAccess> valores, const QString& palabras);

    ado::BulkFile fichero_;
    Avance avance_;
    QElapsedTimer desdeAviso_;
    std::vector<TablaAccess> suyas_;
    PlanAccess plan_;
    QStringList avisos_;
    std::vector<Indice> clavesPerdidas_;
    std::size_t actual_ = 0;
    std::vector<int> lugares_;         ///< of the file's columns in the table's definition
    std::vector<QByteArray> propios_;  ///< texts made here, until their row is stored
    qint64 deTabla_ = 0;
    qint64 cargadas_ = 0;
    qint64 total_ = 0;
};

}  // namespace tarmel
