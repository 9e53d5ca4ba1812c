// tarmel_access FILE: tells all that an Access file holds on standard output, line by line, for the program
// that started it. It is a process of its own so that a damaged file can harm no other: whoever reads the
// lines trusts nothing but complete ones. Exit code 0 when the last line was sent; what went wrong is a line
// too.

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "Header.h"
#include "JetFile.h"
#include "Rows.h"
#include "Stream.h"
#include "Values.h"

namespace {

using namespace access_reader;

void tellColumns(const Table& table) {
    for (const MdbColumn* column : table.columns()) {
        const char* type = typeName(*column);
        if (!type)
            throw Failure{table.name(),
                          std::string("La columna ") + column->name + " es de un tipo que no se conoce."};
        Line('C')
            .text(column->name)
            .plain(type)
            .number(column->col_size)
            .number(digits(*column))
            .number(decimalPlaces(*column))
            .number(column->is_long_auto != 0 ? 1 : 0)
            .send();
    }
}

void tellRelations(MdbHandle* file) {
    MdbCatalogEntry* entry = systemTable(file, "MSysRelationships");
    if (!entry) return;
    const Table table(file, entry);
    constexpr const char* kColumns[] = {"szRelationship", "szObject", "szColumn", "szReferencedObject",
                                        "szReferencedColumn"};
    std::vector<std::size_t> places;
    for (const char* column : kColumns) {
        const int place = table.indexOf(column);
        if (place < 0) throw Failure{table.name(), "Las relaciones del archivo no se pueden leer."};
        places.push_back(static_cast<std::size_t>(place));
    }
    Rows rows(table);
    while (const auto* fields = rows.next()) {
        Line line('R');
        for (const std::size_t place : places)
            line.text(shortText((*fields)[place]).value_or(std::string()));
        line.send();
    }
    if (rows.count() != table.statedRows())
        throw Failure{table.name(), "Faltan relaciones: el archivo está dañado."};
}

unsigned long long tellRows(MdbHandle* file, const Table& table) {
    Line('D').text(table.name()).send();
    Rows rows(table);
    std::string row;
    while (const auto* fields = rows.next()) {
        row.assign(1, 'W');
        for (const Field& field : *fields)
            appendValue(row, file, field);
        row += '\n';
        send(row);
    }
    Line('E').number(static_cast<long long>(rows.count())).send();
    return rows.count();
}

void tell(const std::string& path) {
    checkHeader(path);
    const File file = openFile(path);
    const std::vector<MdbCatalogEntry*> entries = userTables(file.get());
    tellRelations(file.get());
    for (MdbCatalogEntry* entry : entries) {
        const Table table(file.get(), entry);
        Line('T').text(table.name()).number(table.statedRows()).number(table.lastNumber()).send();
        tellColumns(table);
    }
    unsigned long long rows = 0;
    for (MdbCatalogEntry* entry : entries)
        rows += tellRows(file.get(), Table(file.get(), entry));
    Line('Z').number(static_cast<long long>(entries.size())).number(static_cast<long long>(rows)).send();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("tarmel_access ARCHIVO\n", stderr);
        return 2;
    }
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);  // a damaged file may end this process; nobody needs its remains
    // A file can make the library go round for ever: who waits for us sees to that, as long as he lives.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (!claimOutput()) return EXIT_FAILURE;
    Line('A').plain("1").send();
    try {
        tell(argv[1]);
    } catch (const Failure& failure) {
        Line('X').text(failure.table).text(failure.words).send();
    }
    return flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
