#include "populate/Fuentes.h"

#include <QFile>

#include "database/Csv.h"
#include "platform/ado/Recordset.h"

// The list is linked from a library, which does not start its resources by itself.
static void abrirListas() {
    Q_INIT_RESOURCE(populate);
}

namespace tarmel::muestra {

using namespace Qt::StringLiterals;

namespace {

std::vector<std::vector<QString>> lista(const QString& nombre) {
    QFile archivo(u":/muestra/"_s + nombre);
    if (!archivo.open(QIODevice::ReadOnly)) throw basic::RuntimeError(53);
    auto filas = analizarCsv(QString::fromUtf8(archivo.readAll()), nombre);
    filas.erase(filas.begin());
    return filas;
}

basic::RuntimeError sinPreparar(const QString& falta) {
    return {5, u"La base de datos no está preparada: falta "_s + falta, u"Muestra"_s};
}

Codigos codigos(ado::Connection& conexion, const QString& consulta) {
    Codigos leidos;
    ado::Recordset filas;
    for (filas.Open(consulta, conexion); !filas.Eof(); filas.MoveNext())
        leidos.push_back(filas.Text(0));
    if (leidos.empty()) throw sinPreparar(consulta.section(u' ', -1));
    return leidos;
}

std::vector<Especie> leerEspecies(ado::Connection& conexion) {
    std::vector<Especie> especies;
    for (const auto& campos : lista(u"especies.csv"_s)) {
        ado::Recordset fila;
        fila.Open(u"SELECT IdEspecie FROM ANIBRD WHERE CodigoEspecie = ?"_s, conexion,
                  ado::Cursor::ForwardOnly, ado::Lock::ReadOnly, -1, {campos[0]});
        if (fila.Eof()) throw sinPreparar(u"la especie "_s + campos[0]);
        especies.push_back({fila.Value(0).toLong(), campos[0], campos[1], campos[2] != u"I"_s,
                            campos[2] != u"V"_s, campos[3].toInt(), campos[4].toDouble(),
                            campos[5].toDouble(), campos[6].toDouble(), campos[7] == u"1"_s});
    }
    return especies;
}

}  // namespace

Fuentes leerFuentes(ado::Connection& conexion) {
    abrirListas();
    Fuentes fuentes;
    fuentes.especies = leerEspecies(conexion);
    for (const auto& campos : lista(u"series.csv"_s)) {
        fuentes.series.push_back(
            {campos[0], campos[1], campos[2], campos[3], campos[4].toInt(), campos[5].toInt()});
    }
    for (const auto& campos : lista(u"personas.csv"_s))
        fuentes.personas.push_back({campos[0], campos[1]});
    fuentes.localidades = codigos(conexion, u"SELECT CodigoLocalidad FROM ANILOC"_s);
    fuentes.habitats = codigos(conexion, u"SELECT CodigoHabitat FROM ICAHAB"_s);
    fuentes.fuerzas = codigos(conexion, u"SELECT CodigoFuerza FROM ANIFVE"_s);
    fuentes.direcciones = codigos(conexion, u"SELECT CodigoDireccion FROM ANIDVI"_s);
    fuentes.nubosidades = codigos(conexion, u"SELECT CodigoNubosidad FROM ANINUB"_s);
    fuentes.lluvias = codigos(conexion, u"SELECT CodigoLluvia FROM ANILLU"_s);
    fuentes.centrosAjenos = {u"FRP"_s, u"BLB"_s, u"GBT"_s, u"POL"_s, u"DEH"_s};
    ado::Recordset centros;
    for (const QString& centro : fuentes.centrosAjenos) {
        centros.Open(u"SELECT CodigoCentro FROM ICAFRO WHERE CodigoCentro = ?"_s, conexion,
                     ado::Cursor::ForwardOnly, ado::Lock::ReadOnly, -1, {centro});
        if (centros.Eof()) throw sinPreparar(u"el centro "_s + centro);
    }
    return fuentes;
}

}  // namespace tarmel::muestra
