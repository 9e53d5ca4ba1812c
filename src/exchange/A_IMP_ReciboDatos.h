#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "exchange/Lote.h"
#include "platform/basic/Variant.h"

/// The reading of received exchange files: rows replace those of the database by key. What lies in Datos came
/// from outside and is taken for hostile until read.
namespace tarmel {

/// What the routines of the reader share.
extern QString gFicheroImportado;           ///< full path of the file being read
extern QString gLineaFichero;               ///< the line last read
extern std::vector<QString> gNombresCampo;  ///< column names of the header; element 0 is not used
extern std::vector<QString> gValoresCampo;  ///< values of the line, likewise

/// Starts unpacking the exchange files of Datos/<Nombre>.zip beside it. Does not wait.
void DescomprimirEnvio(const QString& Nombre);
/// The same behaviour as BorrarFichero of the dispatch.
void BorrarFicheroRecibido(const QString& Carpeta, const QString& Fichero);

/// Reads the file of each table, once the archiver has left it, and numbers the sheets that came. False after
/// a row that was refused, an archive that could not be unpacked, or a file that is no exchange file, which
/// has been told in a box; the rows before it stay. The import screen, if it is open, shows how far it is.
/// Errors: 13 for a key that is no number; those of a refused deletion.
bool ImportarTablas(const QStringList& Tablas);

[[nodiscard]] int ContarCampos(const QString& Linea, QChar Separador);
void VaciarCampos(int NumCampos);
/// Cuts a line into so many fields; the last one takes the rest.
void LeerCabeceraCampos(int NumCampos, const QString& Linea, QChar Separador);
void LeerValoresCampos(int NumCampos, const QString& Linea, QChar Separador);

/// Removes the row of the values' key.
void BorrarRegistroFichero(int NumCampos, const QString& Tabla, const QStringList& Claves);
/// Adds the row of the values. False after a refusal, told in a box; the open group of rows is closed before.
bool InsertarRegistroFichero(const QString& Tabla, int NumCampos, Lote& lote);

/// Gives every sheet that waits for its number (-1) the next one of its owner, by date.
void RenumerarHojasImportadas();
void RenumerarHojasPendientes(const basic::Variant& Codigo, Lote& lote);

}  // namespace tarmel
