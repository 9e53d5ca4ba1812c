#pragma once

#include <QStringList>
#include <vector>

#include "database/FlujoAccess.h"
#include "platform/access_sql/Translator.h"

/// How the tables of an Access file become tables of ours.
namespace tarmel {

/// A table of the Access file as it is made here.
struct TablaTraida {
    access_sql::TableDef definicion;
    std::vector<QString> columnas;  ///< by the name that it has here, for each column of the file
    qint64 ultimoNumero = 0;
};

struct PlanAccess {
    bool anterior = false;            ///< the schema of the former version, which waits for the upgrade
    std::vector<TablaTraida> tablas;  ///< in the order of the file
    std::vector<access_sql::TableDef> ausentes;  ///< of ours that the file lacks
    std::vector<access_sql::ForeignKey> relaciones;
    QStringList avisos;  ///< what the user should know of it
};

/// Columns that we know come in our order, with the type and width that hold both what the file may have and
/// what the program may write; those that we do not know come behind them. Keys and relations are ours.
/// Raises errorAccess for a file without field sheets and captures.
[[nodiscard]] PlanAccess planear(const std::vector<TablaAccess>& tablas,
                                 const std::vector<RelacionAccess>& relaciones);

/// The type that holds every value of both. Kinds that have nothing in common stay as the file has them.
[[nodiscard]] access_sql::ColumnDef columnaUnida(const access_sql::ColumnDef& nuestra,
                                                 const access_sql::ColumnDef& suya);

}  // namespace tarmel
