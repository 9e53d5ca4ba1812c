#include "database/PlanAccess.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>

#include "database/EsquemaAnterior.h"
#include "database/Tablas.h"
#include "platform/access_sql/Types.h"

namespace tarmel {

using access_sql::ColumnDef;
using access_sql::ForeignKey;
using access_sql::Kind;
using access_sql::kindOf;
using access_sql::TableDef;
using access_sql::Type;
using namespace Qt::StringLiterals;

namespace {

constexpr int kBytesPorCaracter = 2;

bool iguales(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

template <typename Elemento>
const Elemento* conNombre(const std::vector<Elemento>& todos, const QString& nombre) {
    const auto esta =
        std::ranges::find_if(todos, [&](const Elemento& uno) { return iguales(uno.nombre, nombre); });
    return esta == todos.end() ? nullptr : &*esta;
}

bool tiene(const std::vector<TablaAccess>& tablas, const QString& tabla, const QString& columna) {
    const TablaAccess* una = conNombre(tablas, tabla);
    return una && conNombre(una->columnas, columna);
}

Type tipoDe(const ColumnaAccess& columna) {
    switch (columna.tipo) {
        case TipoAccess::Bool:
            return Type::Boolean;
        case TipoAccess::Byte:
            return Type::Byte;
        case TipoAccess::Int:
            return Type::Integer;
        case TipoAccess::Long:
            return columna.contador ? Type::Counter : Type::Long;
        case TipoAccess::Money:
            return Type::Currency;
        case TipoAccess::Single:
            return Type::Single;
        case TipoAccess::Double:
            return Type::Double;
        case TipoAccess::Date:
            return Type::Date;
        case TipoAccess::Binary:
        case TipoAccess::Ole:
            return Type::Binary;
        case TipoAccess::Text:
            return Type::Text;
        case TipoAccess::Memo:
            return Type::Memo;
        case TipoAccess::Guid:
            return Type::Guid;
        case TipoAccess::Numeric:
            return Type::Decimal;
    }
    return Type::Unknown;
}

ColumnDef columnaDe(const ColumnaAccess& columna) {
    ColumnDef def;
    def.name = columna.nombre;
    def.type = tipoDe(columna);
    if (def.type == Type::Text) def.width = std::max(1, columna.bytes / kBytesPorCaracter);
    if (def.type == Type::Binary)
        def.width = columna.tipo == TipoAccess::Ole ? std::numeric_limits<int>::max() : columna.bytes;
    if (def.type == Type::Decimal) {
        def.width = columna.cifras;
        def.scale = columna.decimales;
    }
    return def;
}

/// How many digits stand before the point in the greatest number of a whole type.
int cifrasEnteras(const ColumnDef& columna) {
    return columna.type == Type::Decimal ? columna.width - columna.scale : 10;
}

bool esEntero(Type tipo) {
    return access_sql::isWholeType(tipo);
}

/// Whole types from the narrowest. A counter holds what a Long does.
int anchura(Type tipo) {
    static constexpr std::array kOrden{Type::Boolean, Type::Byte, Type::Integer, Type::Long, Type::Counter};
    return static_cast<int>(std::ranges::find(kOrden, tipo) - kOrden.begin());
}

void unirNumeros(ColumnDef& unida, const ColumnDef& a, const ColumnDef& b) {
    if (esEntero(a.type) && esEntero(b.type)) {
        const auto& [estrecha, ancha] = std::minmax(
            a, b, [](const ColumnDef& x, const ColumnDef& y) { return anchura(x.type) < anchura(y.type); });
        const bool conSigno = estrecha.type == Type::Boolean && ancha.type == Type::Byte;  // yes is -1
        unida.type = conSigno ? Type::Integer : ancha.type;
        return;
    }
    const auto es = [&](Type tipo) { return a.type == tipo || b.type == tipo; };
    if (es(Type::Double) || es(Type::Single)) {
        unida.type = a.type == b.type ? a.type : Type::Double;
        return;
    }
    if (a.type == Type::Currency || b.type == Type::Currency) {
        const ColumnDef& otra = a.type == Type::Currency ? b : a;
        unida.type = otra.type == Type::Decimal ? Type::Double : Type::Currency;
        return;
    }
    unida.type = Type::Decimal;
    unida.scale = std::max(a.type == Type::Decimal ? a.scale : 0, b.type == Type::Decimal ? b.scale : 0);
    unida.width = std::max(cifrasEnteras(a), cifrasEnteras(b)) + unida.scale;
}

/// Only the counter that a table of ours has numbers its rows; another automatic number is a number.
ColumnDef sinContador(ColumnDef columna) {
    if (columna.type == Type::Counter) columna.type = Type::Long;
    return columna;
}

bool parecidos(Type a, Type b) {
    const auto clase = [](Type tipo) { return kindOf(tipo) == Kind::Boolean ? Kind::Number : kindOf(tipo); };
    return clase(a) == clase(b) && (a == b || (a != Type::Guid && b != Type::Guid));
}

TablaTraida tablaNuestra(const TableDef& nuestra, const TablaAccess& suya, QStringList& avisos) {
    TablaTraida traida{nuestra, {}, suya.ultimoNumero};
    for (const ColumnaAccess& columna : suya.columnas) {
        const int lugar = nuestra.indexOf(columna.nombre);
        if (lugar < 0) {
            traida.definicion.columns.push_back(sinContador(columnaDe(columna)));
            traida.columnas.push_back(columna.nombre);
            continue;
        }
        ColumnDef& unida = traida.definicion.columns[static_cast<std::size_t>(lugar)];
        const ColumnDef suyaDef = columnaDe(columna);
        if (!parecidos(unida.type, suyaDef.type)) {
            avisos
                << u"La columna %1 de %2 es de otra clase que la del programa; queda como estaba en Access."_s
                       .arg(unida.name, nuestra.name);
        }
        unida = columnaUnida(unida, suyaDef);
        traida.columnas.push_back(unida.name);
    }
    return traida;
}

/// A name that SQLite or this program keeps for itself gets a sign in front.
QString nombreLibre(const QString& nombre) {
    const bool reservado = nombre.startsWith(u"sqlite_"_s, Qt::CaseInsensitive) ||
                           nombre.startsWith(u"tarmel_"_s, Qt::CaseInsensitive);
    return reservado ? u'_' + nombre : nombre;
}

TablaTraida tablaAjena(const TablaAccess& suya) {
    TablaTraida traida{{nombreLibre(suya.nombre), {}, {}, false}, {}, suya.ultimoNumero};
    bool contador = false;
    for (const ColumnaAccess& columna : suya.columnas) {
        ColumnDef def = columnaDe(columna);
        if (def.type == Type::Counter && contador) def.type = Type::Long;
        contador = contador || def.type == Type::Counter;
        if (def.type == Type::Counter) traida.definicion.primaryKey = {def.name};
        traida.definicion.columns.push_back(std::move(def));
        traida.columnas.push_back(columna.nombre);
    }
    return traida;
}

/// Both sides are there and can be compared.
bool esPosible(const ForeignKey& relacion, const std::map<QString, const TableDef*>& tablas) {
    const auto columna = [&](const QString& tabla, const QString& nombre) -> const ColumnDef* {
        const auto esta = tablas.find(tabla);
        const int lugar = esta == tablas.end() ? -1 : esta->second->indexOf(nombre);
        return lugar < 0 ? nullptr : &esta->second->columns[static_cast<std::size_t>(lugar)];
    };
    const ColumnDef* una = columna(relacion.table, relacion.column);
    const ColumnDef* otra = columna(relacion.targetTable, relacion.targetColumn);
    return una && otra && kindOf(una->type) == kindOf(otra->type);
}

/// The upgrade drops the former relations by their names, whatever columns the file joins by them.
ForeignKey comoEnElFichero(ForeignKey relacion, const std::vector<RelacionAccess>& suyas) {
    const auto mismo = [&](const RelacionAccess& una) { return iguales(una.nombre, relacion.name); };
    if (std::ranges::count_if(suyas, mismo) != 1) return relacion;
    const RelacionAccess& suya = *std::ranges::find_if(suyas, mismo);
    return {relacion.name, suya.tabla, suya.columna, suya.otraTabla, suya.otraColumna};
}

void ponerRelaciones(PlanAccess& plan, const std::vector<RelacionAccess>& suyas) {
    std::map<QString, const TableDef*> tablas;
    for (const TablaTraida& tabla : plan.tablas)
        tablas.emplace(tabla.definicion.name, &tabla.definicion);
    for (const TableDef& tabla : plan.ausentes)
        tablas.emplace(tabla.name, &tabla);
    std::vector<ForeignKey> relaciones = relacionesDelEsquema();
    if (plan.anterior) {
        relaciones = relacionesAnteriores();
        for (ForeignKey& relacion : relaciones)
            relacion = comoEnElFichero(relacion, suyas);
    }
    for (const ForeignKey& relacion : relaciones) {
        if (esPosible(relacion, tablas))
            plan.relaciones.push_back(relacion);
        else
            plan.avisos << u"La relación %1 no se ha podido crear."_s.arg(relacion.name);
    }
}

/// The tables that the program works with for a file of this schema.
std::vector<TableDef> tablasPropias(bool anterior, const std::vector<TablaAccess>& suyas) {
    std::vector<TableDef> propias;
    for (const access_sql::CreateTable& creada : anterior ? tablasAnteriores() : tablasDelEsquema())
        propias.push_back(creada.table);
    for (const access_sql::CreateTable& creada : tablasDelEsquema()) {
        const bool esta = std::ranges::any_of(
            propias, [&](const TableDef& propia) { return iguales(propia.name, creada.table.name); });
        if (!esta && conNombre(suyas, creada.table.name)) propias.push_back(creada.table);
    }
    return propias;
}

bool esDelEsquemaAnterior(const std::vector<TablaAccess>& tablas) {
    return !tiene(tablas, u"ANIAHO"_s, u"CodigoEspecie"_s) || !tiene(tablas, u"ANICHO"_s, u"Anillador"_s) ||
           !tiene(tablas, u"ANICHO"_s, u"Grupo"_s);
}

}  // namespace

ColumnDef columnaUnida(const ColumnDef& nuestra, const ColumnDef& suya) {
    ColumnDef unida = nuestra;
    const auto esNumero = [](Type tipo) {
        return kindOf(tipo) == Kind::Number || kindOf(tipo) == Kind::Boolean;
    };
    if (!parecidos(nuestra.type, suya.type)) {
        unida.type = sinContador(suya).type;
        unida.width = suya.width;
        unida.scale = suya.scale;
        unida.defaultValue.reset();
    } else if (nuestra.type == Type::Counter && esEntero(suya.type)) {
        return unida;
    } else if (esNumero(nuestra.type)) {
        unirNumeros(unida, sinContador(nuestra), sinContador(suya));
    } else if (nuestra.type == Type::Memo || suya.type == Type::Memo) {
        unida.type = Type::Memo;
    } else {
        unida.width = std::max(nuestra.width, suya.width);
    }
    return unida;
}

PlanAccess planear(const std::vector<TablaAccess>& tablas, const std::vector<RelacionAccess>& relaciones) {
    if (!conNombre(tablas, u"ANICHO"_s) || !conNombre(tablas, u"ANIAHO"_s))
        throw errorAccess(u"No tiene las tablas de Tarmel: faltan las hojas de campo o las capturas."_s);
    PlanAccess plan;
    plan.anterior = esDelEsquemaAnterior(tablas);
    const std::vector<TableDef> propias = tablasPropias(plan.anterior, tablas);
    for (const TablaAccess& suya : tablas) {
        const auto nuestra = std::ranges::find_if(
            propias, [&](const TableDef& propia) { return iguales(propia.name, suya.nombre); });
        plan.tablas.push_back(nuestra == propias.end() ? tablaAjena(suya)
                                                       : tablaNuestra(*nuestra, suya, plan.avisos));
    }
    for (const TableDef& propia : propias) {
        if (conNombre(tablas, propia.name)) continue;
        plan.ausentes.push_back(propia);
        if (!empiezaVacia(propia.name))
            plan.avisos << u"La tabla %1 no está en el archivo de Access; queda vacía."_s.arg(propia.name);
    }
    ponerRelaciones(plan, relaciones);
    return plan;
}

}  // namespace tarmel
