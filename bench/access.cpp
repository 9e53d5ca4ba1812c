// Captures out of an Access file: what its reader tells becomes a database with all our rules, beside plain
// SQLite that inserts the same values, already taken apart, into a table without any.

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <bit>
#include <vector>

#include "Figures.h"
#include "database/CargaAccess.h"

namespace {

using namespace Qt::StringLiterals;
using namespace tarmel::bench;

constexpr int kCaptures = 50000;
constexpr int kOfSheet = 20;

enum class Kind { Whole, Double, Date, Text };
struct Column {
    const char* name;
    Kind kind;
    const char* value;  ///< of a text; empty: Null
};

// The last four are the counters and what differs from row to row.
constexpr Column kColumns[] = {
    {"TipoRegistro", Kind::Text, "A"},
    {"CodigoCentro", Kind::Text, "ESI"},
    {"InfoAnilla", Kind::Text, "2"},
    {"AnillaSustituida", Kind::Text, ""},
    {"IdEspecie", Kind::Whole, "12"},
    {"CodigoEdad", Kind::Text, "4"},
    {"TamañoNidada", Kind::Text, "--"},
    {"CodigoSexo", Kind::Text, "M"},
    {"CodigoManipulacion", Kind::Text, "N"},
    {"CodigoTransporte", Kind::Text, "0"},
    {"CodigoCircunstancia", Kind::Text, "20"},
    {"CodigoCondicion", Kind::Text, "8"},
    {"Ala", Kind::Double, "85.5"},
    {"F8", Kind::Double, "62"},
    {"Peso", Kind::Double, "18.25"},
    {"Tarso", Kind::Double, "23.1"},
    {"CodigoPlaca", Kind::Text, "9"},
    {"CodigoGrasa", Kind::Text, "3"},
    {"CodigoMusculo", Kind::Text, "2"},
    {"HoraCaptura", Kind::Date, "0.3125"},
    {"PrecisionFecha", Kind::Text, "0"},
    {"CodigoEstado", Kind::Text, "B"},
    {"CodigoEstatus", Kind::Text, "U"},
    {"CodigoMuda", Kind::Whole, "2"},
    {"CodigoReclamo", Kind::Text, "N"},
    {"IniAnillador", Kind::Text, "BMI"},
    {"Parentesco", Kind::Text, ""},
    {"Observaciones", Kind::Text, "Sin novedad"},
    {"Dato1", Kind::Text, ""},
    {"Dato2", Kind::Text, ""},
    {"Dato3", Kind::Text, ""},
    {"Dato4", Kind::Text, ""},
    {"Dato5", Kind::Text, ""},
    {"Dato6", Kind::Text, ""},
    {"CodigoEspecie", Kind::Text, "12440"},
    {"NumeroAnilla", Kind::Text, nullptr},
    {"Anilla", Kind::Text, nullptr},
    {"IdCabecera", Kind::Whole, nullptr},
    {"NumRegistro", Kind::Whole, nullptr},
};

QByteArray valueOf(const Column& column, int n) {
    const QByteArray name(column.name);
    if (column.value) return column.value;
    if (name == "IdCabecera") return QByteArray::number(1 + n / kOfSheet);
    if (name == "NumRegistro") return QByteArray::number(1 + n % kOfSheet);
    return "AC..1" + QByteArray::number(100 + n % 900);
}

QByteArray typeOf(Kind kind) {
    constexpr const char* kNames[] = {"long\t4", "double\t8", "date\t8", "text\t500"};
    return kNames[static_cast<int>(kind)];
}

/// As the reader tells it.
QByteArray told(const Column& column, const QByteArray& value) {
    if (value.isEmpty()) return "-";
    if (column.kind == Kind::Whole) return "#" + value;
    if (column.kind == Kind::Text) return "\"" + value;
    return "=" + QByteArray::number(std::bit_cast<quint64>(value.toDouble()), 16).rightJustified(16, '0');
}

const QByteArray& stream() {
    static const QByteArray text = [] {
        QByteArray lines = "A\t1\nT\tANICHO\t0\t0\nC\tIdCabecera\tlong\t4\t0\t0\t0\n";
        lines += "C\tAnillador\tlong\t4\t0\t0\t0\nC\tGrupo\tlong\t4\t0\t0\t0\n";
        lines += "T\tANIAHO\t" + QByteArray::number(kCaptures) + "\t0\n";
        for (const Column& column : kColumns)
            lines += "C\t" + QByteArray(column.name) + "\t" + typeOf(column.kind) + "\t0\t0\t0\n";
        lines += "D\tANICHO\nE\t0\nD\tANIAHO\n";
        for (int n = 0; n < kCaptures; ++n) {
            lines += 'W';
            for (const Column& column : kColumns)
                lines += "\t" + told(column, valueOf(column, n));
            lines += '\n';
        }
        const QByteArray rows = QByteArray::number(kCaptures);
        return lines + "E\t" + rows + "\nZ\t2\t" + rows + "\n";
    }();
    return text;
}

void ours(benchmark::State& state, const char*) {
    const QTemporaryDir folder(QDir::current().filePath(u"bench-XXXXXX"_s));
    const QString file = folder.filePath(u"nueva"_s);
    (void)stream();
    for (auto _ : state) {
        tarmel::CargaAccess load(file, [](const QString&) {});
        tarmel::FlujoAccess lines(load);
        constexpr qsizetype kPiece = 1 << 16;
        for (qsizetype from = 0; from < stream().size(); from += kPiece)
            lines.recibir(QByteArrayView(stream()).sliced(from, std::min(kPiece, stream().size() - from)));
        lines.terminar();
        load.acabar();
        state.PauseTiming();
        if (load.filas() != kCaptures) state.SkipWithError("captures are missing");
        QFile::remove(file);
        state.ResumeTiming();
    }
}

void plain(benchmark::State& state, const char*) {
    const QTemporaryDir folder(QDir::current().filePath(u"bench-XXXXXX"_s));
    const QString file = folder.filePath(u"plana"_s);
    QByteArrayList names;
    QByteArrayList marks;
    for (const Column& column : kColumns) {
        names << "\"" + QByteArray(column.name) + "\"";
        marks << "?";
    }
    for (auto _ : state) {
        sqlite3* db = nullptr;
        sqlite3_open(file.toUtf8().constData(), &db);
        const QByteArray table =
            "PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF; PRAGMA cache_size=-64000; CREATE TABLE "
            "ANIAHO (" +
            names.join(", ") + ", PRIMARY KEY (IdCabecera, NumRegistro)); BEGIN";
        sqlite3_exec(db, table.constData(), nullptr, nullptr, nullptr);
        sqlite3_stmt* row = nullptr;
        sqlite3_prepare_v2(db, ("INSERT INTO ANIAHO VALUES (" + marks.join(", ") + ")").constData(), -1, &row,
                           nullptr);
        for (int n = 0; n < kCaptures; ++n) {
            int place = 0;
            for (const Column& column : kColumns) {
                const QByteArray value = valueOf(column, n);
                ++place;
                if (value.isEmpty())
                    sqlite3_bind_null(row, place);
                else if (column.kind == Kind::Text)
                    sqlite3_bind_text(row, place, value.constData(), static_cast<int>(value.size()),
                                      SQLITE_TRANSIENT);
                else
                    sqlite3_bind_double(row, place, value.toDouble());
            }
            sqlite3_step(row);
            sqlite3_reset(row);
        }
        sqlite3_finalize(row);
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(db);
        state.PauseTiming();
        QFile::remove(file);
        state.ResumeTiming();
    }
}

}  // namespace

namespace tarmel::bench {

void addAccess() {
    add({{"captures out of Access", ours, plain, 3.0}});
}

}  // namespace tarmel::bench
