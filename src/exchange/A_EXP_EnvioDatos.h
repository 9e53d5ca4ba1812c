#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// The dispatch of a ringer's or a group's data: the exchange files, one a table, and their archive.
namespace tarmel {

extern qint16 gNumEnvio;     ///< number of the last dispatch
extern QString gEmailEnvio;  ///< the ringer's address; nothing uses it further

/// The tables of a dispatch, in the order of their files.
[[nodiscard]] const QStringList& tablasDeIntercambio();

/// What a dispatch covers. Which of the fields matter depends on the first.
struct SeleccionEnvio {
    QString Seleccion;  ///< "RangoHojas", "Año", "Campaña", "RangoFechas"
    double HojaInicial = 0;
    double HojaFinal = 0;
    qint16 Año = 0;
    QString Campaña;
    QString FechaInicial;  ///< dd/mm/yyyy
    QString FechaFinal;
};
/// The condition for a span of dates, in the dialect's literals.
[[nodiscard]] QString condicionRangoFechas(const SeleccionEnvio& seleccion);

/// Writes <table>.txt in Datos for each table: the rows of the selection, of a plain ringer only his own.
/// What fails is passed over, but for a full disk (61); a table without rows, or whose file could not be
/// written whole, leaves no file. The export screen, if it is open, shows how far it is.
void ExportarTablas(int NumeroEnvio, const SeleccionEnvio& seleccion, const QStringList& Tablas);
/// Position of a table in the catalog's list; 0 when it is not there.
[[nodiscard]] int PosicionTabla(const QString& Nombre, const std::vector<QString>& Catalogo);
/// Removes the files of 0 bytes.
void BorrarFicherosVacios(const QString& Carpeta);

/// Today's date and the number of this sender's next archive of the day: YYMMDDnn.
[[nodiscard]] QString NombreSiguienteEnvio();
/// Packs the exchange files in Datos as <sender>-<Nombre>.ZIP. 53 when no archive came to be.
void ComprimirEnvio(const QString& Nombre);
/// Removes what fits the pattern; errors are ignored.
void BorrarFichero(const QString& Carpeta, const QString& Fichero);

/// Takes the last number and the address from the first ringer.
void LeerDatosEnvio();

}  // namespace tarmel
