#pragma once

#include <QString>

#include "database/Tablas.h"
#include "platform/ado/Connection.h"

/// The database as it is made, filled and looked after. What it consists of stands in Tablas.
///
/// Counters. ANIMAT, ANILOC, ANIBRD and ANICHO number their rows in a helper column (`IdAni`, `IdLoc`,
/// `IdEsp`, `IdCab`), their primary key. A new row enters with the public identifier -1 and then takes the
/// helper's number over. Imported rows keep their sender's identifier, which may lie anywhere. So that a new
/// row never takes the identifier of another, two triggers in the file stand by the counter, in plain SQLite,
/// so that they hold whatever program inserts:
/// - a new row at -1 whose number is the identifier of some row is moved on to the next free number. The
/// search starts at
///   the counter's own number, never at the highest identifier: one imported 2147483647 costs nothing.
/// - a deleted row leaves its number behind as the counter's last, so that the number is not given again.
namespace tarmel {

/// All tables, relations, indexes, counters and views, in an empty database. The tables come in the order of
/// Tablas.
void crearEsquema(ado::Connection& conexion);

/// The parts of it, for whoever fills tables in between (an index made afterwards is made faster).
void crearTablas(ado::Connection& conexion);
void crearIndices(ado::Connection& conexion);
void crearContadores(ado::Connection& conexion);
void crearVistas(ado::Connection& conexion);

/// One of the indexes; one of that name that is there already stays.
void crearIndice(ado::Connection& conexion, const Indice& indice);

/// What the upgrade's own statements do not give: the indexes and counters of this schema in place of the
/// former one's. Where rows break a unique index, a plain one takes its place.
void completarEsquema(ado::Connection& conexion);

/// Fills a table from its file. The counter's column is not in the file: rows are numbered as they stand.
void llenarTabla(ado::Connection& conexion, const access_sql::TableDef& tabla, const QString& archivo);

/// Gives rows that stayed at the placeholder, because the program died between the two statements, their
/// identifier. Whoever opens the database calls it before anything else.
void sanarIdentificadores(ado::Connection& conexion);

/// Makes the prepared database: the schema, and the rows of `carpeta`/<table>.csv in their order. Raises the
/// errors of the file or of the statement; a file that was begun is left to the caller.
void prepararBase(const QString& archivo, const QString& carpeta);

}  // namespace tarmel
