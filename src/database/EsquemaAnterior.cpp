#include "database/EsquemaAnterior.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <algorithm>

#include "database/Esquema.h"
#include "database/FilasFijas.h"

namespace tarmel {

using access_sql::ColumnDef;
using access_sql::CreateTable;
using access_sql::ForeignKey;
using namespace Qt::StringLiterals;

namespace {

/// Columns that came with the upgrade.
const QSet<QString>& columnasNuevas() {
    static const QSet<QString> columnas{u"ANIAHO.CodigoEspecie"_s, u"ANICHO.Anillador"_s, u"ANICHO.Grupo"_s};
    return columnas;
}

bool esNueva(const QString& tabla, const QString& columna) {
    return columnasNuevas().contains(tabla + u'.' + columna);
}

CreateTable anterior(CreateTable creada) {
    access_sql::TableDef& tabla = creada.table;
    std::erase_if(tabla.columns, [&](const ColumnDef& c) { return esNueva(tabla.name, c.name); });
    // The upgrade narrows it.
    if (const int sexo = tabla.indexOf(u"CodigoSexo"); tabla.name == u"ANIAHO" && sexo >= 0)
        tabla.columns[static_cast<std::size_t>(sexo)].width = 2;
    return creada;
}

}  // namespace

std::vector<CreateTable> tablasAnteriores() {
    static const QSet<QString> nuevas{u"MOVIMIENTOS"_s, u"ALMACEN"_s, u"TIPOANILLAS"_s};
    std::vector<CreateTable> tablas;
    for (const CreateTable& creada : tablasDelEsquema()) {
        if (!nuevas.contains(creada.table.name)) tablas.push_back(anterior(creada));
    }
    return tablas;
}

const std::vector<ForeignKey>& relacionesAnteriores() {
    static const std::vector<ForeignKey> relaciones{
        {u"ICASEXANIAHO"_s, u"ANIAHO"_s, u"CodigoSexo"_s, u"ICASEX"_s, u"CodigoSexo"_s},
        {u"ANIBRDANIAHO"_s, u"ANIAHO"_s, u"IdEspecie"_s, u"ANIBRD"_s, u"IdEspecie"_s},
    };
    return relaciones;
}

const std::vector<Indice>& indicesAnteriores() {
    static const std::vector<Indice> indices{{u"ANIBRD"_s, {u"IdEspecie"_s}, true}};
    return indices;
}

void prepararBaseAnterior(const QString& archivo, const QStringList& carpetas) {
    ado::Connection conexion;
    conexion.OpenFile(archivo, true);
    conexion.ExecutePlain("PRAGMA synchronous=OFF");  // a file that was only begun is thrown away
    const std::vector<CreateTable> tablas = tablasAnteriores();
    for (const CreateTable& tabla : tablas)
        conexion.Define(tabla);
    for (const Indice& indice : indicesAnteriores())
        crearIndice(conexion, indice);
    for (const Indice& indice : indicesDelEsquema()) {
        const auto falta = [&](const QString& columna) { return esNueva(indice.tabla, columna); };
        const bool tieneTabla = conexion.schema().table(indice.tabla) != nullptr;
        // The stricter index on the species' identifier goes by the same name.
        if (tieneTabla && std::ranges::none_of(indice.columnas, falta) && !indice.salvoProvisional)
            crearIndice(conexion, indice);
    }
    for (const ForeignKey& relacion : relacionesAnteriores())
        conexion.Define(access_sql::AddForeignKey{relacion});
    crearContadores(conexion);
    ado::Connection::Batch lote(conexion);
    for (const CreateTable& tabla : tablas) {
        const QString& nombre = tabla.table.name;
        if (empiezaVacia(nombre)) continue;
        const auto tiene = [&](const QString& carpeta) {
            return QFileInfo::exists(QDir(carpeta).filePath(nombre + u".csv"_s));
        };
        const auto carpeta = std::ranges::find_if(carpetas, tiene);
        llenarTabla(
            conexion, tabla.table,
            QDir(carpeta == carpetas.end() ? carpetas.last() : *carpeta).filePath(nombre + u".csv"_s));
    }
    for (const QString& codigo : especiesApagadas())
        conexion.Execute(u"UPDATE ANIBRD SET Iberica=1 WHERE CodigoEspecie='%1'"_s.arg(codigo));
    lote.commit();
    conexion.Close();
}

}  // namespace tarmel
