#include "database/Esquema.h"

#include <QDir>
#include <QStringList>

#include "database/Csv.h"
#include "database/EsquemaAnterior.h"
#include "database/Tablas.h"

namespace tarmel {

using access_sql::quoted;
using namespace Qt::StringLiterals;

namespace {

QByteArray nombreDeIndice(const Indice& indice) {
    QString nombre = indice.tabla;
    for (const QString& columna : indice.columnas)
        nombre += u'_' + columna;
    return quoted(nombre + (indice.unico ? u"_Unico"_s : QString()));
}

/// An index that is there already stays.
QByteArray textoDeIndice(const Indice& indice) {
    QByteArrayList columnas;
    for (const QString& columna : indice.columnas)
        columnas << quoted(columna);
    QByteArray texto = "CREATE " + QByteArray(indice.unico ? "UNIQUE " : "") + "INDEX IF NOT EXISTS " +
                       nombreDeIndice(indice) + " ON " + quoted(indice.tabla) + " (" + columnas.join(", ") +
                       ")";
    if (indice.salvoProvisional) {
        texto += " WHERE " + quoted(indice.columnas.front()) + " <> " + QByteArray::number(kIdProvisional);
    }
    return texto;
}

/// The two triggers that stand by a counter; see the header.
QByteArray textoDeContador(const Identificador& id) {
    QByteArray texto =
        "CREATE TRIGGER IF NOT EXISTS %tabla_sortea AFTER INSERT ON %tabla WHEN NEW.%publico = %provisional "
        "AND EXISTS "
        "(SELECT 1 FROM %tabla WHERE %publico = NEW.%contador) BEGIN "
        "UPDATE %tabla SET %contador = (SELECT a.%publico + 1 FROM %tabla a WHERE a.%publico >= "
        "NEW.%contador AND NOT "
        "EXISTS (SELECT 1 FROM %tabla b WHERE b.%publico = a.%publico + 1) ORDER BY a.%publico LIMIT 1) "
        "WHERE %contador = NEW.%contador; END;\n"
        "CREATE TRIGGER IF NOT EXISTS %tabla_recuerda BEFORE DELETE ON %tabla BEGIN "
        "UPDATE sqlite_sequence SET seq = OLD.%contador WHERE name = '%tabla' AND seq < OLD.%contador; END;";
    texto.replace("%tabla", id.tabla.toUtf8());
    texto.replace("%publico", id.publico.toUtf8());
    texto.replace("%contador", id.contador.toUtf8());
    texto.replace("%provisional", QByteArray::number(kIdProvisional));
    return texto;
}

}  // namespace

void crearTablas(ado::Connection& conexion) {
    for (const access_sql::CreateTable& tabla : tablasDelEsquema())
        conexion.Define(tabla);
}

void crearIndices(ado::Connection& conexion) {
    QByteArrayList textos;
    for (const Indice& indice : indicesDelEsquema())
        textos << textoDeIndice(indice);
    conexion.ExecutePlain(textos.join(";\n"));
}

void crearIndice(ado::Connection& conexion, const Indice& indice) {
    conexion.ExecutePlain(textoDeIndice(indice));
}

void crearContadores(ado::Connection& conexion) {
    QByteArrayList textos;
    for (const Identificador& id : identificadoresDelEsquema())
        textos << textoDeContador(id);
    conexion.ExecutePlain(textos.join('\n'));
}

void crearVistas(ado::Connection& conexion) {
    for (const Vista& vista : vistasDelEsquema()) {
        conexion.Execute(u"CREATE VIEW %1 AS %2"_s.arg(vista.nombre, vista.consulta));
    }
}

void crearEsquema(ado::Connection& conexion) {
    crearTablas(conexion);
    crearIndices(conexion);
    for (const access_sql::ForeignKey& relacion : relacionesDelEsquema()) {
        conexion.Define(access_sql::AddForeignKey{relacion});
    }
    crearContadores(conexion);
    crearVistas(conexion);
}

void completarEsquema(ado::Connection& conexion) {
    for (const Indice& indice : indicesAnteriores())
        conexion.ExecutePlain("DROP INDEX IF EXISTS " + nombreDeIndice(indice));
    for (const Indice& indice : indicesDelEsquema()) {
        if (basic::resumeNext([&] { crearIndice(conexion, indice); })) continue;
        // Rows of long ago need not keep our keys: then the index serves searches alone.
        crearIndice(conexion, {indice.tabla, indice.columnas});
    }
    crearContadores(conexion);
}

void sanarIdentificadores(ado::Connection& conexion) {
    for (const Identificador& id : identificadoresDelEsquema()) {
        if (!conexion.schema().table(id.tabla)) continue;
        // A number that another row's identifier bears stays out: the update would fail as a whole.
        conexion.Execute(u"UPDATE %1 SET %2 = %3 WHERE %2 = %4 AND %3 NOT IN (SELECT %2 FROM %1)"_s
                             .arg(id.tabla, id.publico, id.contador)
                             .arg(kIdProvisional));
    }
}

void llenarTabla(ado::Connection& conexion, const access_sql::TableDef& tabla, const QString& archivo) {
    const std::vector<std::vector<QString>> filas = leerCsv(archivo);
    QStringList columnas;
    QStringList marcas;
    for (const QString& columna : filas.front()) {
        columnas << u'[' + columna + u']';
        marcas << u"?"_s;
    }
    const QString insercion =
        u"INSERT INTO [%1] (%2) VALUES (%3)"_s.arg(tabla.name, columnas.join(u", "), marcas.join(u", "));
    for (std::size_t fila = 1; fila < filas.size(); ++fila) {
        conexion.Execute(insercion, {filas[fila].begin(), filas[fila].end()});
    }
}

void prepararBase(const QString& archivo, const QString& carpeta) {
    ado::Connection conexion;
    conexion.OpenFile(archivo, true);
    conexion.ExecutePlain("PRAGMA synchronous=OFF");  // a file that was only begun is thrown away
    crearEsquema(conexion);
    ado::Connection::Batch lote(conexion);
    for (const access_sql::CreateTable& creada : tablasDelEsquema()) {
        const QString& nombre = creada.table.name;
        if (!empiezaVacia(nombre))
            llenarTabla(conexion, creada.table, QDir(carpeta).filePath(nombre + u".csv"_s));
    }
    lote.commit();
    conexion.Close();
}

}  // namespace tarmel
