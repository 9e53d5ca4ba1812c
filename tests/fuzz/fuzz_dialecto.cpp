// Any text as a statement: it is refused with the statement error, or its translation is one that SQLite
// prepares.

#include <gtest/gtest.h>

#include "fuzz/Expect.h"
#include "platform/access_sql/Functions.h"
#include "platform/access_sql/TestEngine.h"

namespace {

using namespace tarmel::access_sql;
using tarmel::basic::RuntimeError;
using tarmel::basic::Variant;

/// More steps of SQLite's machine than any honest statement takes on tables of a few rows. A mutation may
/// well ask for the product of ten tables.
constexpr int kSteps = 200000;

int interrupt(void*) {
    return 1;
}

/// The tables once with all that the program registers, and once as any other program sees them.
struct Bench {
    Bench() {
        testing::FLAGS_gtest_break_on_failure = true;  // what the engine expects of every translation
        engine.runFile(QStringLiteral(TARMEL_TESTS_DIR "/platform/access_sql/schema.sql"));
        sqlite3_open(":memory:", &plain);
        sqlite3_backup* copy = sqlite3_backup_init(plain, "main", engine.handle(), "main");
        expect(copy != nullptr && sqlite3_backup_step(copy, -1) == SQLITE_DONE, "the tables can be copied");
        sqlite3_backup_finish(copy);
    }
    ~Bench() { sqlite3_close(plain); }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    TestEngine engine;
    sqlite3* plain = nullptr;
};

template <typename Step>
bool accepts(const Step& step) {
    try {
        step();
        return true;
    } catch (const RuntimeError& error) {
        expect(error.number() == tarmel::basic::error::Statement, "a refusal is the statement error",
               error.description());
        expect(!error.description().isEmpty(), "a refusal says why");
        return false;
    }
}

/// False where a statement is deeper than SQLite's own parser, which the connection tells as a refusal: how
/// deep a text becomes depends on the types of its operands, and no count of ours foresees it.
bool prepares(sqlite3* db, const QByteArray& text) {
    sqlite3_stmt* statement = nullptr;
    const int result =
        sqlite3_prepare_v2(db, text.constData(), static_cast<int>(text.size()), &statement, nullptr);
    sqlite3_finalize(statement);
    const QByteArray message = sqlite3_errmsg(db);
    if (result == SQLITE_ERROR && message == "parser stack overflow") return false;
    expect(result == SQLITE_OK, "what is accepted prepares", QString::fromUtf8(message + '\n' + text));
    return true;
}

void checkDefinition(const Bench& bench, const Definition& definition) {
    if (const auto* view = std::get_if<CreateView>(&definition)) prepares(bench.plain, view->sqliteText);
    const auto column = [&](const ColumnDef& made) {
        prepares(bench.plain, "CREATE TABLE temp.Probe (" + quoted(made.name) + " " + declaredType(made) +
                                  " CHECK (" + columnCheck(made) + "))");
    };
    if (const auto* added = std::get_if<AddColumn>(&definition)) column(added->column);
    if (const auto* altered = std::get_if<AlterColumn>(&definition)) column(altered->column);
    if (const auto* table = std::get_if<CreateTable>(&definition)) {
        for (const ColumnDef& made : table->table.columns)
            column(made);
    }
}

/// Prepares (the engine expects it), binds and runs it. What fails at that is the data's fault, not the
/// text's.
void runAndUndo(TestEngine& engine, const QString& sql, const Translation& translation) {
    int parameters = 0;
    for (const Binding& binding : translation.bindings) {
        if (binding.source == Binding::Source::Parameter)
            parameters = std::max(parameters, binding.index + 1);
    }
    engine.plain("BEGIN");
    sqlite3_progress_handler(engine.handle(), kSteps, interrupt, nullptr);
    accepts([&] { engine.run(sql, std::vector<Variant>(static_cast<std::size_t>(parameters), Variant(1))); });
    sqlite3_progress_handler(engine.handle(), 0, nullptr, nullptr);
    // A statement that was interrupted may have undone the transaction itself.
    if (sqlite3_get_autocommit(engine.handle()) == 0) engine.plain("ROLLBACK");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Bench bench;
    const QString sql = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    Translation translation;
    const bool lifted = accepts([&] { return lift(sql); });
    if (!accepts([&] { translation = translate(sql, bench.engine); })) return -1;
    if (translation.kind == Translation::Kind::Define) {
        checkDefinition(bench, translation.definition);
        return 0;
    }
    const bool prepared = prepares(bench.engine.handle(), translation.text);
    // A literal that is no value, such as a thirteenth month, is told by the lift alone.
    if (lifted && prepared) runAndUndo(bench.engine, sql, translation);
    return 0;
}
