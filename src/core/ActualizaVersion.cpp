#include "core/ActualizaVersion.h"

#include "core/CopiasSeguridad.h"
#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "database/Esquema.h"
#include "database/FilasFijas.h"
#include "database/Tablas.h"
#include "platform/forms/Host.h"
#include "platform/system/Files.h"
#include "platform/system/Ini.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

QString rutaIni() {
    return RutaEnAplicacion(u"Tarmel.INI"_s);
}

/// One statement of the upgrade.
void ejecutar(const QString& sentencia) {
    gSQL = sentencia;
    gRS.Open(gSQL, gConexion);
}

/// The rows that the program itself gives a table, in their order; a number stands without quotes.
void insertarFilas(const QString& tabla) {
    const std::vector<access_sql::ColumnDef> columnas = gConexion.schema().table(tabla)->columns;
    for (const std::vector<QString>& fila : filasFijas(tabla)) {
        QStringList valores;
        for (std::size_t i = 0; i < fila.size(); ++i) {
            const bool esTexto = columnas.at(i).type == access_sql::Type::Text;
            valores << (esTexto ? u'\'' + fila[i] + u'\'' : fila[i]);
        }
        ejecutar(u"INSERT INTO %1 VALUES (%2)"_s.arg(tabla, valores.join(u", ")));
    }
}

void rehacerDireccionesDeViento() {
    ejecutar(u"DROP TABLE ANIDVI"_s);
    ejecutar(u"CREATE TABLE ANIDVI (CodigoDireccion VARCHAR(3) PRIMARY KEY, NombreDireccion VARCHAR(50))"_s);
    insertarFilas(u"ANIDVI"_s);
}

void cambiarSexos() {
    insertarFilas(u"ICASEX"_s);
    ejecutar(u"ALTER TABLE ICASEX DROP CONSTRAINT ICASEXANIAHO"_s);
    ejecutar(u"ALTER TABLE ANIAHO ALTER COLUMN CodigoSexo TEXT(1)"_s);
    ejecutar(u"ALTER TABLE ANIAHO ADD CONSTRAINT ICASEXIANIAHO FOREIGN KEY (CodigoSexo) REFERENCES ICASEX"_s);
    ejecutar(u"UPDATE ANIAHO SET CodigoSexo='U' WHERE CodigoSexo='0'"_s);
    ejecutar(u"UPDATE ANIAHO SET CodigoSexo='M' WHERE CodigoSexo='1'"_s);
    ejecutar(u"UPDATE ANIAHO SET CodigoSexo='F' WHERE CodigoSexo='2'"_s);
    ejecutar(u"DELETE FROM ICASEX WHERE CodigoSexo='0' or CodigoSexo='1' or CodigoSexo='2'"_s);
}

void ponerCodigosDeEspecie() {
    ejecutar(u"ALTER TABLE ANIBRD DROP CONSTRAINT ANIBRDANIAHO"_s);
    ejecutar(u"ALTER TABLE ANIAHO ADD COLUMN CodigoEspecie TEXT(5)"_s);
    ejecutar(
        u"UPDATE ANIAHO inner join ANIBRD on ANIAHO.IdEspecie =ANIBRD.IdEspecie SET "
        "ANIAHO.CodigoEspecie=ANIBRD.CodigoEspecie"_s);
    ejecutar(
        u"ALTER TABLE ANIAHO ADD CONSTRAINT ANIBRDANIAHO FOREIGN KEY (CodigoEspecie) REFERENCES ANIBRD "
        "(CodigoEspecie)"_s);
}

void apagarEspecies() {
    QStringList condiciones;
    for (const QString& codigo : especiesApagadas())
        condiciones << u"CodigoEspecie='%1'"_s.arg(codigo);
    ejecutar(u"UPDATE ANIBRD SET Iberica=0 WHERE "_s + condiciones.join(u" OR "));
}

void hacerAlmacen() {
    ejecutar(u"CREATE TABLE MOVIMIENTOS (IdMov VARCHAR(1) PRIMARY KEY, Descripcion VARCHAR(25))"_s);
    insertarFilas(u"MOVIMIENTOS"_s);
    ejecutar(
        u"CREATE TABLE ALMACEN (NumMov INTEGER PRIMARY KEY, Modelo VARCHAR(2), Inscripcion VARCHAR(2), "
        "NumInicial VARCHAR(6), NumFinal VARCHAR(6), Cantidad INTEGER, Fecha DATE, TipoMovimiento "
        "VARCHAR(1))"_s);
    ejecutar(
        u"ALTER TABLE ALMACEN ADD CONSTRAINT MOVIMIENTOSALMACEN FOREIGN KEY (TipoMovimiento) REFERENCES "
        "MOVIMIENTOS"_s);
    ejecutar(
        u"CREATE TABLE TIPOANILLAS (Modelo VARCHAR(2), Inscripcion VARCHAR(2), Total INTEGER, PRIMARY KEY "
        "(Modelo, Inscripcion))"_s);
    insertarFilas(u"TIPOANILLAS"_s);
}

}  // namespace

double LeerIniEntero(const QString& seccion, const QString& clave) {
    return sys::readInt(rutaIni(), seccion, clave, -1);
}

void EscribirIni(const QString& seccion, const QString& clave, const QString& valor) {
    sys::writeText(rutaIni(), seccion, clave, valor);
}

void BorrarTemporales() {
    basic::resumeNext([] { sys::removeMatching(ObtenerRutaAplicacion(), u"*.TMP"_s); });
}

bool ActualizacionPedida() {
    const double valor = LeerIniEntero(kSeccionIni, kClaveActualizacion);
    return valor != -1 && valor != 0;
}

bool ActualizarVersion() {
    if (!ActualizacionPedida()) return true;
    try {
        forms::host().SetPointer(forms::Pointer::Hourglass);
        gRS = ado::Recordset();
        copiarAntesDe(u"la actualización"_s);
        rehacerDireccionesDeViento();
        cambiarSexos();
        ponerCodigosDeEspecie();
        apagarEspecies();
        ejecutar(u"ALTER TABLE ANICHO ADD COLUMN Anillador INT"_s);
        ejecutar(u"ALTER TABLE ANICHO ADD COLUMN Grupo INT"_s);
        RellenarAnilladorGrupo();
        hacerAlmacen();
        for (const Vista& vista : vistasDelEsquema())
            ejecutar(u"CREATE VIEW %1 AS %2"_s.arg(vista.nombre, vista.consulta));
        completarEsquema(gConexion);
        EscribirIni(kSeccionIni, kClaveActualizacion, u"0"_s);
        forms::host().SetPointer(forms::Pointer::Default);
        gRS = ado::Recordset();
    } catch (const basic::RuntimeError& error) {
        MostrarErrorActualizacion(error);
    }
    return true;
}

bool NecesitaActualizar() {
    ado::Recordset rs;
    rs.Open(u"SELECT * FROM ICASEX order by codigosexo"_s, gConexion, ado::Cursor::Keyset,
            ado::Lock::Optimistic);
    return rs.Text(u"CodigoSexo"_s) != u"F";
}

void RellenarAnilladorGrupo() {
    ado::Recordset hojas;
    hojas.Open(u"SELECT IdCabecera, CodAnillador FROM ANICHO"_s, gConexion, ado::Cursor::Keyset,
               ado::Lock::Optimistic);
    for (; !hojas.Eof(); hojas.MoveNext()) {
        const QString codigo = hojas.Text(u"CodAnillador"_s);
        const QString columna = codigo.startsWith(u'9') ? u"Grupo"_s : u"Anillador"_s;
        ado::Recordset orden;
        orden.Open(u"UPDATE ANICHO set %1='%2' WHERE IdCabecera=%3"_s.arg(columna, codigo,
                                                                          hojas.Text(u"IdCabecera"_s)),
                   gConexion);
    }
    hojas.Close();
}

void MostrarErrorActualizacion(const basic::RuntimeError& error) {
    forms::host().SetPointer(forms::Pointer::Default);
    if (error.number() == 0) return;
    forms::MsgBox(u"Error %1: %2"_s.arg(error.number()).arg(error.description()), forms::box::OK, u"ERROR"_s);
    forms::host().EndProgram();
}

}  // namespace tarmel
