#include "platform/ado/Errors.h"

#include <sqlite3.h>

#include <QStringList>

#include "platform/access_sql/Errors.h"
#include "platform/access_sql/Translator.h"

namespace tarmel::ado::detail {

using basic::RuntimeError;
using namespace Qt::StringLiterals;

namespace {

/// "ANIAHO.IdCabecera, ANIAHO.NumRegistro" as "ANIAHO (IdCabecera, NumRegistro)".
QString tableAndColumns(const QString& list) {
    QString table;
    QStringList columns;
    for (const QString& item : list.split(u", "_s)) {
        const qsizetype dot = item.indexOf(u'.');
        if (dot < 0) return list;
        table = item.left(dot);
        columns << item.mid(dot + 1);
    }
    return table + u" ("_s + columns.join(u", "_s) + u")"_s;
}

/// What the database says behind the colon of its message.
QString detail(const QString& message) {
    const qsizetype colon = message.indexOf(u": ");
    return colon < 0 ? QString() : message.mid(colon + 2);
}

QString description(int extendedCode, const QString& message) {
    switch (extendedCode) {
        case SQLITE_CONSTRAINT_UNIQUE:
        case SQLITE_CONSTRAINT_PRIMARYKEY:
        case SQLITE_CONSTRAINT_ROWID:
            return u"Los datos repetirían la clave o el índice sin duplicados de la tabla %1."_s.arg(
                tableAndColumns(detail(message)));
        case SQLITE_CONSTRAINT_NOTNULL:
            return u"La columna obligatoria de la tabla %1 no tiene valor."_s.arg(
                tableAndColumns(detail(message)));
        case SQLITE_CONSTRAINT_CHECK:
            return u"El valor de la columna %1 es demasiado largo, está fuera de su intervalo o no es de su tipo."_s
                .arg(detail(message));
        case SQLITE_CONSTRAINT_FOREIGNKEY:
            return u"Falta una fila relacionada, o hay filas relacionadas con la que se quita."_s;
        case SQLITE_MISMATCH:
            return u"No coinciden los tipos de datos."_s;
        case SQLITE_TOOBIG:
            return u"El texto o la instrucción es demasiado larga."_s;
        default:
            break;
    }
    if (message == u"parser stack overflow") return access_sql::tooComplex().description();
    const QString trouble = troubleOfFile(extendedCode);
    return trouble.isEmpty() ? message : trouble;
}

}  // namespace

RuntimeError openError(const QString& description) {
    return {kOpenFailed, description, u"Motor de base de datos"_s};
}

RuntimeError noCurrentRow() {
    return {
        basic::error::NoCurrentRecord,
        u"El valor de BOF o EOF es True, o el registro actual se eliminó; la operación necesita un registro actual."_s,
        u"ADODB.Field"_s};
}

RuntimeError noSuchField(const QString& name) {
    return {
        basic::error::ItemNotFound,
        u"No se ha encontrado el elemento «%1» en la colección que corresponde con el nombre o el ordinal pedido."_s
            .arg(name),
        u"ADODB.Recordset"_s};
}

RuntimeError recordsetClosed() {
    return {basic::error::ObjectClosed, u"La operación no está permitida si el objeto está cerrado."_s,
            u"ADODB.Recordset"_s};
}

RuntimeError connectionClosed() {
    return {
        basic::error::ConnectionClosed,
        u"No se puede usar la conexión para realizar esta operación. Está cerrada o no es válida en este contexto."_s,
        u"ADODB.Recordset"_s};
}

QString troubleOfFile(int resultCode) {
    switch (resultCode & 0xff) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return u"La base de datos está en uso por otro programa."_s;
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return u"La base de datos es de sólo lectura."_s;
        case SQLITE_FULL:
            return u"No hay espacio en el disco para la base de datos."_s;
        case SQLITE_CORRUPT:
            return u"El archivo de la base de datos está dañado."_s;
        case SQLITE_NOTADB:
            return u"El archivo no es una base de datos de este programa."_s;
        case SQLITE_CANTOPEN:
            return u"No se puede abrir el archivo de la base de datos."_s;
        case SQLITE_IOERR:
            return u"Error del disco al leer o escribir la base de datos."_s;
        case SQLITE_NOMEM:
            return u"No hay memoria suficiente."_s;
        default:
            return {};
    }
}

RuntimeError lastError(sqlite3* db) {
    return access_sql::statementError(
        description(sqlite3_extended_errcode(db), QString::fromUtf8(sqlite3_errmsg(db))));
}

}  // namespace tarmel::ado::detail
