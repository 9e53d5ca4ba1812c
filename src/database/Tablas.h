#pragma once

#include <QString>
#include <vector>

#include "platform/access_sql/Translator.h"

/// What the database consists of, as data: tables with their columns in their fixed order, indexes,
/// relations, views.
namespace tarmel {

struct Indice {
    QString tabla;
    std::vector<QString> columnas;
    bool unico = false;
    /// A unique index leaves this value out: the placeholder of rows whose identifier is still to come.
    bool salvoProvisional = false;
};

/// A table whose rows have, beside their counter, a public identifier that takes the counter's number; see
/// the counters in Esquema.h.
struct Identificador {
    QString tabla;
    QString publico;
    QString contador;
};

struct Vista {
    QString nombre;
    QString consulta;  ///< the SELECT in the dialect
};

/// Value of a public identifier between the two statements that make a row.
inline constexpr int kIdProvisional = -1;

[[nodiscard]] const std::vector<access_sql::CreateTable>& tablasDelEsquema();
/// Tables that hold what ringers enter, and results: a new installation has no rows in them.
[[nodiscard]] bool empiezaVacia(const QString& tabla);
[[nodiscard]] const std::vector<Indice>& indicesDelEsquema();
[[nodiscard]] const std::vector<access_sql::ForeignKey>& relacionesDelEsquema();
[[nodiscard]] const std::vector<Identificador>& identificadoresDelEsquema();
[[nodiscard]] const std::vector<Vista>& vistasDelEsquema();

}  // namespace tarmel
