// The lines that the reader of Access files tells, as arbitrary bytes: whatever comes is taken whole or
// refused by an error of ours, wherever the pieces are cut; what is handed on keeps what was announced.

#include <QStringDecoder>
#include <cstdint>

#include "Expect.h"
#include "database/FlujoAccess.h"
#include "database/PlanAccess.h"

namespace {

using namespace tarmel;

/// Looks at all that is handed over.
class Receptor : public ReceptorAccess {
 public:
    QString dicho;  ///< what has been told, to be compared

    void definido(const std::vector<TablaAccess>& tablas,
                  const std::vector<RelacionAccess>& relaciones) override {
        expect(tablas_.empty() && filas_ == 0, "tables are told once, in front of the rows");
        tablas_ = tablas;
        for (const TablaAccess& tabla : tablas)
            expect(!tabla.nombre.isEmpty() && !tabla.columnas.empty(), "a table has a name and columns",
                   tabla.nombre);
        try {
            const PlanAccess plan = planear(tablas, relaciones);
            expect(plan.tablas.size() == tablas.size(), "every table comes along");
            for (std::size_t i = 0; i < tablas.size(); ++i)
                comprobar(plan.tablas[i], tablas[i]);
        } catch (const basic::RuntimeError& error) {
            expect(error.number() == kErrorAccess, "a refusal is ours", error.description());
        }
    }
    void empiezaTabla(std::size_t tabla) override {
        expect(tabla < tablas_.size() && (primera_ || tabla == actual_ + 1), "tables come in their order");
        primera_ = false;
        actual_ = tabla;
        filas_ = 0;
    }
    void fila(std::span<const ValorAccess> valores) override {
        expect(valores.size() == tablas_[actual_].columnas.size(), "a row has a value for each column");
        for (std::size_t i = 0; i < valores.size(); ++i)
            comprobar(valores[i], tablas_[actual_].columnas[i]);
        dicho += QString::number(actual_) + u';';
        ++filas_;
    }
    void acabaTabla() override {
        expect(filas_ == tablas_[actual_].filas, "as many rows as the definition says");
    }

 private:
    /// The columns of a table of ours are found by name, each once.
    static void comprobar(const TablaTraida& traida, const TablaAccess& suya) {
        expect(traida.columnas.size() == suya.columnas.size(), "every column comes along", suya.nombre);
        for (std::size_t i = 0; i < traida.columnas.size(); ++i) {
            const int lugar = traida.definicion.indexOf(traida.columnas[i]);
            expect(lugar >= 0, "a column has its place", traida.columnas[i]);
            if (suya.columnas[i].tipo != TipoAccess::Text) continue;
            const access_sql::ColumnDef& def = traida.definicion.columns[static_cast<std::size_t>(lugar)];
            const bool cabe = def.type == access_sql::Type::Memo || def.width >= suya.columnas[i].bytes / 2;
            expect(cabe, "a text is as wide as it was", def.name);
        }
    }
    static void comprobar(const ValorAccess& valor, const ColumnaAccess& columna) {
        if (valor.clase != ValorAccess::Clase::Texto) return;
        QStringDecoder decodificador(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString texto = decodificador(valor.bytes);
        expect(!decodificador.hasError(), "a text is UTF-8");
        expect(columna.tipo == TipoAccess::Memo || texto.size() * 2 <= columna.bytes, "a text fits", texto);
    }

    std::vector<TablaAccess> tablas_;
    std::size_t actual_ = 0;
    bool primera_ = true;
    qint64 filas_ = 0;
};

/// What comes of the bytes, handed over in pieces of so many.
QString resultado(QByteArrayView bytes, qsizetype trozo) {
    Receptor receptor;
    FlujoAccess flujo(receptor);
    try {
        for (qsizetype desde = 0; desde < bytes.size(); desde += trozo)
            flujo.recibir(bytes.sliced(desde, std::min(trozo, bytes.size() - desde)));
        flujo.terminar();
        return receptor.dicho + QStringLiteral("bien");
    } catch (const basic::RuntimeError& error) {
        expect(error.number() == kErrorAccess, "a refusal is ours", error.description());
        return receptor.dicho + error.description();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    const QString entero = resultado(bytes, std::max<qsizetype>(1, bytes.size()));
    expect(resultado(bytes, 7) == entero, "it matters not where the pieces are cut", entero);
    return entero.endsWith(u"bien") ? 0 : -1;
}
