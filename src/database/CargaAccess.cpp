#include "database/CargaAccess.h"

#include <QLocale>
#include <QUuid>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/basic/Date.h"

namespace tarmel {

using access_sql::ColumnDef;
using access_sql::ForeignKey;
using access_sql::quoted;
using access_sql::TableDef;
using access_sql::Type;
using namespace Qt::StringLiterals;

namespace {

/// Days that the file's own programs tell falsely, in front of day zero and beyond some 2,700 years: what
/// stands there is nobody's date.
constexpr double kPrimerDia = 0;
constexpr double kUltimoDia = 1e6;
/// What a number keeps through every conversion.
constexpr qsizetype kCifrasExactas = 15;
constexpr int kAnchoDeNumero = 40;
constexpr int kColumnasQueNombran = 3;
constexpr qsizetype kLargoQueNombra = 40;
constexpr qint64 kFilasEntreMiradas = 256;
constexpr qint64 kMilisegundosEntreAvisos = 60;

/// Without the zeros that add nothing.
QByteArrayView recortado(QByteArrayView decimal) {
    if (!decimal.contains('.')) return decimal;
    while (decimal.endsWith('0'))
        decimal.chop(1);
    if (decimal.endsWith('.')) decimal.chop(1);
    return decimal;
}

qsizetype cifras(QByteArrayView decimal) {
    qsizetype cuantas = 0;
    bool empezado = false;
    for (const char c : decimal) {
        empezado = empezado || (c >= '1' && c <= '9');
        if (empezado && c != '.') ++cuantas;
    }
    return cuantas;
}

qsizetype cifrasEnteras(QByteArrayView decimal) {
    const qsizetype punto = decimal.indexOf('.');
    return cifras(punto < 0 ? decimal : decimal.first(punto));
}

/// A whole number as it is, or one with so few digits that a double tells it; never more than the column
/// takes.
bool cabeComoNumero(QByteArrayView decimal, const ColumnDef& columna) {
    const bool medida = columna.type == Type::Decimal;
    if (medida && cifrasEnteras(decimal) > columna.width - columna.scale) return false;
    bool entero = false;
    (void)decimal.toByteArray().toLongLong(&entero);
    return entero || cifras(decimal) <= kCifrasExactas;
}

QString identidad(QByteArrayView bytes) {
    const auto b = [&](int i) { return static_cast<uchar>(bytes[i]); };
    const QUuid id(static_cast<uint>(b(0) | b(1) << 8 | b(2) << 16) | static_cast<uint>(b(3)) << 24,
                   static_cast<ushort>(b(4) | b(5) << 8), static_cast<ushort>(b(6) | b(7) << 8), b(8), b(9),
                   b(10), b(11), b(12), b(13), b(14), b(15));
    return id.toString().toUpper();
}

QString textoDe(const ValorAccess& valor, TipoAccess tipo) {
    switch (valor.clase) {
        case ValorAccess::Clase::Nulo:
            return u"Null"_s;
        case ValorAccess::Clase::Texto:
            return u"«"_s + QString::fromUtf8(valor.bytes).left(kLargoQueNombra) + u'»';
        case ValorAccess::Clase::Entero:
            return QString::number(valor.entero);
        case ValorAccess::Clase::Decimal:
            return QString::fromLatin1(recortado(valor.bytes));
        case ValorAccess::Clase::Doble:
            return tipo == TipoAccess::Date && valor.doble >= kPrimerDia && valor.doble < kUltimoDia
                       ? basic::Date(valor.doble).iso()
                       : QString::number(valor.doble, 'g', QLocale::FloatingPointShortest);
        default:
            return u"?"_s;
    }
}

QByteArray condicion(const ForeignKey& relacion) {
    return " FROM " + quoted(relacion.table) + " WHERE " + quoted(relacion.column) + " IS NOT NULL AND " +
           quoted(relacion.column) + " NOT IN (SELECT " + quoted(relacion.targetColumn) + " FROM " +
           quoted(relacion.targetTable) + " WHERE " + quoted(relacion.targetColumn) + " IS NOT NULL)";
}

QByteArray repetidos(const QString& tabla, const QString& columna) {
    return "SELECT COUNT(*) FROM (SELECT 1 FROM " + quoted(tabla) + " WHERE " + quoted(columna) +
           " IS NOT NULL GROUP BY " + quoted(columna) + " HAVING COUNT(*) > 1)";
}

std::vector<ColumnDef>::const_iterator columnaQueNumera(const TableDef& tabla) {
    for (const Identificador& id : identificadoresDelEsquema()) {
        const int lugar = id.tabla == tabla.name ? tabla.indexOf(id.contador) : -1;
        if (lugar >= 0) return tabla.columns.begin() + lugar;
    }
    return tabla.columns.end();
}

}  // namespace

CargaAccess::CargaAccess(const QString& archivo, Avance avance)
    : fichero_(archivo), avance_(std::move(avance)) {
    desdeAviso_.start();
}

void CargaAccess::definido(const std::vector<TablaAccess>& tablas,
                           const std::vector<RelacionAccess>& relaciones) {
    suyas_ = tablas;
    plan_ = planear(tablas, relaciones);
    avisos_ = plan_.avisos;
    for (const TablaTraida& tabla : plan_.tablas)
        fichero_.createTable(tabla.definicion, relacionesDe(tabla.definicion.name));
    for (const TableDef& tabla : plan_.ausentes)
        fichero_.createTable(tabla, relacionesDe(tabla.name));
    for (const TablaAccess& tabla : tablas)
        total_ += tabla.filas;
}

std::vector<ForeignKey> CargaAccess::relacionesDe(const QString& tabla) const {
    std::vector<ForeignKey> suyas;
    for (const ForeignKey& relacion : plan_.relaciones) {
        if (relacion.table == tabla) suyas.push_back(relacion);
    }
    return suyas;
}

ColumnDef& CargaAccess::columna(std::size_t lugar) {
    return plan_.tablas[actual_].definicion.columns[static_cast<std::size_t>(lugares_[lugar])];
}

TableDef* CargaAccess::definicionDe(const QString& tabla) {
    for (TablaTraida& traida : plan_.tablas) {
        if (traida.definicion.name == tabla) return &traida.definicion;
    }
    return nullptr;
}

void CargaAccess::empiezaTabla(std::size_t tabla) {
    actual_ = tabla;
    deTabla_ = 0;
    const TablaTraida& traida = plan_.tablas[actual_];
    lugares_.clear();
    for (const QString& nombre : traida.columnas)
        lugares_.push_back(traida.definicion.indexOf(nombre));
    propios_.assign(traida.columnas.size(), {});
    abrirFilas();
    avisarAvance();
}

void CargaAccess::abrirFilas() {
    fichero_.beginRows(plan_.tablas[actual_].definicion.name, plan_.tablas[actual_].columnas);
}

void CargaAccess::avisarAvance() {
    desdeAviso_.restart();
    const qint64 parte = total_ == 0 ? 100 : cargadas_ * 100 / total_;
    avance_(
        u"Trayendo los datos de Access: %1... %2 %"_s.arg(plan_.tablas[actual_].definicion.name).arg(parte));
}

void CargaAccess::fallar(std::span<const ValorAccess> valores, const QString& palabras) {
    const TablaAccess& suya = suyas_[actual_];
    QStringList nombran;
    for (std::size_t i = 0; i < valores.size() && nombran.size() < kColumnasQueNombran; ++i)
        nombran << suya.columnas[i].nombre + u" = "_s + textoDe(valores[i], suya.columnas[i].tipo);
    throw errorAccess(u"Tabla %1, fila %2 (%3): %4"_s.arg(suya.nombre)
                          .arg(deTabla_ + 1)
                          .arg(nombran.join(u", "_s), palabras));
}

void CargaAccess::fila(std::span<const ValorAccess> valores) {
    try {
        hacerSitio(valores);
        enlazar(valores);
        if (!fichero_.insertRow()) {
            perderClave();
            enlazar(valores);
            if (!fichero_.insertRow()) fallar(valores, u"la fila no se puede guardar."_s);
        }
    } catch (const basic::RuntimeError& error) {
        if (error.number() == kErrorAccess) throw;
        fallar(valores, error.description());
    }
    ++deTabla_;
    ++cargadas_;
    const bool toca = cargadas_ % kFilasEntreMiradas == 0 && desdeAviso_.hasExpired(kMilisegundosEntreAvisos);
    if (toca) avisarAvance();
}

/// What this row holds and its table cannot take yet.
void CargaAccess::hacerSitio(std::span<const ValorAccess> valores) {
    for (std::size_t i = 0; i < valores.size(); ++i) {
        ColumnDef& suya = columna(i);
        // A counter would number a Null.
        if (valores[i].clase == ValorAccess::Clase::Nulo && suya.type == Type::Counter) perderClave();
        const bool inexacto = valores[i].clase == ValorAccess::Clase::Decimal && suya.type != Type::Text &&
                              !cabeComoNumero(recortado(valores[i].bytes), suya);
        if (inexacto) pasarATexto(suya);
    }
}

void CargaAccess::enlazar(std::span<const ValorAccess> valores) {
    for (std::size_t i = 0; i < valores.size(); ++i)
        enlazarValor(static_cast<int>(i), valores[i], valores);
}

void CargaAccess::enlazarValor(int lugar, const ValorAccess& valor, std::span<const ValorAccess> valores) {
    using Clase = ValorAccess::Clase;
    const auto i = static_cast<std::size_t>(lugar);
    const ColumnaAccess& suya = suyas_[actual_].columnas[i];
    switch (valor.clase) {
        case Clase::Ilegible:
            fallar(valores, u"la columna %1 no se puede leer."_s.arg(suya.nombre));
        case Clase::Nulo:
            return fichero_.bindNull(lugar);
        case Clase::Texto:
            return fichero_.bindText(lugar, valor.bytes);
        case Clase::Entero:
            return fichero_.bind(lugar, valor.entero);
        case Clase::Decimal: {
            const QByteArrayView decimal = recortado(valor.bytes);
            if (columna(i).type == Type::Text) return fichero_.bindText(lugar, decimal);
            bool entero = false;
            const qint64 numero = decimal.toByteArray().toLongLong(&entero);
            if (entero) return fichero_.bind(lugar, numero);
            return fichero_.bind(lugar, decimal.toByteArray().toDouble());
        }
        case Clase::Doble:
            break;
        case Clase::Bytes:
            if (suya.tipo != TipoAccess::Guid) return fichero_.bindBytes(lugar, valor.bytes);
            propios_[i] = identidad(valor.bytes).toLatin1();
            return fichero_.bindText(lugar, propios_[i]);
    }
    if (!std::isfinite(valor.doble)) fallar(valores, u"la columna %1 no tiene un número."_s.arg(suya.nombre));
    if (suya.tipo != TipoAccess::Date) return fichero_.bind(lugar, valor.doble);
    if (valor.doble < kPrimerDia || valor.doble >= kUltimoDia)
        fallar(valores, u"la fecha de la columna %1 no se puede leer."_s.arg(suya.nombre));
    propios_[i] = basic::Date(valor.doble).iso().toLatin1();
    fichero_.bindText(lugar, propios_[i]);
}

/// The rows so far and those to come need no key any more; a plain index takes its place.
void CargaAccess::perderClave() {
    TableDef& tabla = plan_.tablas[actual_].definicion;
    if (tabla.primaryKey.empty()) return;
    avisos_ << u"En %1 hay filas que no cumplen la clave (%2); queda como índice sin clave."_s.arg(
        tabla.name, QStringList(tabla.primaryKey.begin(), tabla.primaryKey.end()).join(u", "_s));
    clavesPerdidas_.push_back({tabla.name, std::exchange(tabla.primaryKey, {})});
    for (ColumnDef& columna : tabla.columns) {
        columna.notNull = false;
        if (columna.type == Type::Counter) columna.type = Type::Long;
    }
    fichero_.changeTable(tabla, relacionesDe(tabla.name));
    abrirFilas();
}

/// More digits than a number keeps.
void CargaAccess::pasarATexto(ColumnDef& columna) {
    const TableDef& tabla = plan_.tablas[actual_].definicion;
    columna.type = Type::Text;
    columna.width = kAnchoDeNumero;
    columna.scale = 0;
    avisos_ << u"La columna %1 de %2 tiene números de más de %3 cifras; queda como texto."_s
                   .arg(columna.name, tabla.name)
                   .arg(kCifrasExactas);
    fichero_.changeTable(tabla, relacionesDe(tabla.name));
    abrirFilas();
}

void CargaAccess::acabaTabla() {
    fichero_.endRows();
    const TablaAccess& suya = suyas_[actual_];
    const qint64 guardadas =
        fichero_.number("SELECT COUNT(*) FROM " + quoted(plan_.tablas[actual_].definicion.name));
    if (guardadas != suya.filas) {
        throw errorAccess(
            u"Tabla %1: según el archivo tiene %2 filas, y se han guardado %3."_s.arg(suya.nombre)
                .arg(suya.filas)
                .arg(guardadas));
    }
}

void CargaAccess::acabar() {
    const std::vector<ForeignKey> todas = plan_.relaciones;
    for (const ForeignKey& relacion : todas)
        comprobarRelacion(relacion);
    ponerContadores();
    fichero_.close();
}

/// A counter goes on behind its last number and behind every number in use. One of ours that rows have broken
/// keeps its number too, for the trigger that stands in for it.
void CargaAccess::ponerContadores() {
    for (const TablaTraida& tabla : plan_.tablas) {
        const TableDef& def = tabla.definicion;
        auto contador = std::ranges::find(def.columns, Type::Counter, &ColumnDef::type);
        if (contador == def.columns.end()) contador = columnaQueNumera(def);
        if (contador == def.columns.end()) continue;
        const qint64 mayor =
            fichero_.number("SELECT MAX(" + quoted(contador->name) + ") FROM " + quoted(def.name));
        fichero_.setCounter(def.name, std::max({mayor, tabla.ultimoNumero, qint64{0}}));
    }
}

/// A relation holds only while its other side is unique and no row is without a partner.
void CargaAccess::comprobarRelacion(const ForeignKey& relacion) {
    const bool repetida = fichero_.number(repetidos(relacion.targetTable, relacion.targetColumn)) > 0;
    const qint64 sinPareja = fichero_.number("SELECT COUNT(*)" + condicion(relacion));
    if (!repetida && sinPareja == 0) return;
    avisos_ << (repetida ? u"En %1 se repite %2; la relación %3 queda como índice."_s.arg(
                               relacion.targetTable, relacion.targetColumn, relacion.name)
                         : u"En %1 hay %2 filas cuyo %3 no está en %4; la relación %5 queda como índice."_s
                               .arg(relacion.table)
                               .arg(sinPareja)
                               .arg(relacion.column, relacion.targetTable, relacion.name));
    std::erase_if(plan_.relaciones, [&](const ForeignKey& una) { return una.name == relacion.name; });
    clavesPerdidas_.push_back({relacion.table, {relacion.column}});
    if (const TableDef* tabla = definicionDe(relacion.table))
        fichero_.changeTable(*tabla, relacionesDe(relacion.table));
}

}  // namespace tarmel
