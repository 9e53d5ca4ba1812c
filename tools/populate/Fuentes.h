#pragma once

#include <QString>
#include <vector>

#include "platform/ado/Connection.h"

/// What invented captures are made of: our own lists (data/muestra) and the codes of the database.
namespace tarmel::muestra {

struct Especie {
    int id = 0;
    QString codigo;
    QString clase;  ///< of ring
    bool verano = true;
    bool invierno = true;
    int frecuencia = 0;
    double ala = 0;    ///< mm
    double peso = 0;   ///< g
    double tarso = 0;  ///< mm
    bool sexable = false;
};

struct Serie {
    QString clase;
    QString modelo;
    QString inscripcion;
    QString prefijo;
    int cifras = 0;
    int lote = 0;  ///< rings received at once
};

struct Persona {
    QString nombre;
    QString apellido;
};

/// The codes of one table, in stored order.
using Codigos = std::vector<QString>;

struct Fuentes {
    std::vector<Especie> especies;
    std::vector<Serie> series;
    std::vector<Persona> personas;
    Codigos localidades;
    Codigos habitats;
    Codigos fuerzas, direcciones, nubosidades, lluvias;
    Codigos centrosAjenos;
};

/// Raises 5 where the database lacks what the lists ask for: it has not been prepared.
[[nodiscard]] Fuentes leerFuentes(ado::Connection& conexion);

}  // namespace tarmel::muestra
