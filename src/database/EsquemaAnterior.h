#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "database/Tablas.h"
#include "platform/ado/Connection.h"

/// The schema of the former version of the system, from which ActualizarVersion starts: no ring store, no
/// views, no `ANIAHO.CodigoEspecie`, no `ANICHO.Anillador` and `Grupo`; sexes 0, 1, 2; captures tied to their
/// species by its identifier.
namespace tarmel {

[[nodiscard]] std::vector<access_sql::CreateTable> tablasAnteriores();
/// Relations by the names under which the upgrade drops them.
[[nodiscard]] const std::vector<access_sql::ForeignKey>& relacionesAnteriores();
/// Indexes that the former relations need and the present schema no longer has.
[[nodiscard]] const std::vector<Indice>& indicesAnteriores();

/// Makes an empty database of the former version, with the code tables. The rows of a table come from the
/// first of the folders that has its file.
void prepararBaseAnterior(const QString& archivo, const QStringList& carpetas);

}  // namespace tarmel
