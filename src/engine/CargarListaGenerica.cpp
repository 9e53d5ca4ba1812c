#include "engine/CargarListaGenerica.h"

#include <map>

#include "platform/ado/Recordset.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"

namespace tarmel {

using namespace Qt::StringLiterals;

namespace {

/// The hourglass, for as long as the object lives.
class RelojDeArena {
 public:
    RelojDeArena() { forms::host().SetPointer(forms::Pointer::Hourglass); }
    ~RelojDeArena() { forms::host().SetPointer(forms::Pointer::Default); }
    RelojDeArena(const RelojDeArena&) = delete;
    RelojDeArena& operator=(const RelojDeArena&) = delete;
};

/// Events run while a list fills, and one of them may fill the same list anew: the earlier fill then has to
/// stop, or its rows would come a second time. Each fill takes a turn; the last one is the list's.
class Turno {
 public:
    explicit Turno(const forms::ListView& lista) : lista_(&lista), numero_(++ultimos()[lista_]) {}
    ~Turno() {
        if (esElUltimo()) ultimos().erase(lista_);
    }
    Turno(const Turno&) = delete;
    Turno& operator=(const Turno&) = delete;

    [[nodiscard]] bool esElUltimo() const {
        const auto hallado = ultimos().find(lista_);
        return hallado != ultimos().end() && hallado->second == numero_;
    }

 private:
    static std::map<const forms::ListView*, int>& ultimos() {
        static std::map<const forms::ListView*, int> porLista;
        return porLista;
    }
    const forms::ListView* lista_;
    int numero_;
};

void ponerCabeceras(forms::ListView& lista, const std::vector<ColumnaLista>& columnas, bool marcarFechas) {
    const QString fecha = u"Date"_s;
    lista.ClearColumns();
    lista.Clear();
    for (const ColumnaLista& columna : columnas) {
        const bool esFecha = marcarFechas && columna.titulo.startsWith(fecha);
        lista.AddColumn(columna.titulo, columna.ancho, esFecha ? fecha : QString());
    }
}

std::vector<int> posicionesDe(const ado::Recordset& filas, const std::vector<ColumnaLista>& columnas) {
    std::vector<int> posiciones;
    for (const ColumnaLista& columna : columnas)
        posiciones.push_back(filas.FieldIndex(columna.campo));
    return posiciones;
}

/// Blanks in front make numbers sort by value in a sort by text.
void leerFila(const ado::Recordset& filas, const std::vector<int>& posiciones, int anchoRelleno,
              std::vector<QString>& textos) {
    textos.clear();
    for (const int posicion : posiciones) {
        const QString texto = filas.Text(posicion);
        textos.push_back(textos.empty() ? texto.rightJustified(anchoRelleno) : basic::Trim(texto));
    }
}

}  // namespace

int CargarListaGenerica(forms::Form& formulario, forms::ListView& lista, ado::Connection& conexion,
                        const QString& sql, const std::vector<ColumnaLista>& columnas,
                        const OpcionesLista& opciones, bool& seguir) {
    try {
        const Turno turno(lista);
        seguir = true;
        ado::Recordset filas;
        {
            const RelojDeArena reloj;
            filas.Open(sql, conexion);
            ponerCabeceras(lista, columnas, opciones.marcarFechas);
        }
        const bool cargado = formulario.IsLoaded();
        const auto puedeSeguir = [&] {
            return seguir && turno.esElUltimo() && formulario.IsLoaded() == cargado;
        };

        std::vector<int> posiciones;
        if (!filas.Eof()) posiciones = posicionesDe(filas, columnas);
        std::vector<QString> textos;
        int cuenta = 0;
        while (!filas.Eof() && puedeSeguir()) {
            leerFila(filas, posiciones, opciones.anchoRelleno, textos);
            lista.Add(textos);
            ++cuenta;
            filas.MoveNext();
            forms::host().DoEvents();
        }
        if (cuenta > 0 && puedeSeguir()) {
            lista.Select(0);
            if (lista.Visible()) lista.SetFocus();
        }
        return cuenta;
    } catch (const basic::RuntimeError&) {
        seguir = false;
        return -1;
    }
}

}  // namespace tarmel
