#include "Comparison.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

namespace tarmel::bench {

namespace {

constexpr const char* kSynchronous[] = {"OFF", "FULL"};

std::vector<Pair>& pairs() {
    static std::vector<Pair> all;
    return all;
}

/// Prints as usual and keeps the medians, from which the ratios come.
class Ratios : public benchmark::ConsoleReporter {
 public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.aggregate_name == "median") {
                medians_[run.run_name.function_name] = {run.GetAdjustedRealTime(), run.GetAdjustedCPUTime()};
            }
        }
    }
    void print() const {
        // The processor's time tells more on a busy machine; both hold the same work.
        std::printf("\n%-24s %-5s %8s %8s %6s\n", "ours / plain SQLite", "sync", "by clock", "by CPU", "bar");
        for (const Pair& pair : pairs()) {
            for (const char* synchronous : kSynchronous) {
                const std::string name = std::string(pair.name) + "/" + synchronous;
                const auto ours = medians_.find(name + "/ours");
                const auto plain = medians_.find(name + "/plain");
                if (ours == medians_.end() || plain == medians_.end()) continue;
                const bool counts = std::string_view(synchronous) == "OFF";
                std::printf("%-24s %-5s %8.2f %8.2f %6s\n", pair.name, synchronous,
                            ours->second.clock / plain->second.clock, ours->second.cpu / plain->second.cpu,
                            counts ? std::to_string(pair.bar).substr(0, 3).c_str() : "-");
            }
        }
    }

 private:
    struct Times {
        double clock = 0;
        double cpu = 0;
    };
    std::map<std::string, Times> medians_;
};

void registerFigures() {
    for (const Pair& pair : pairs()) {
        for (const char* synchronous : kSynchronous) {
            const std::string name = std::string(pair.name) + "/" + synchronous;
            for (const auto& [who, figure] : {std::pair{"/ours", pair.ours}, {"/plain", pair.plain}}) {
                benchmark::RegisterBenchmark(
                    (name + who).c_str(),
                    [figure = figure, synchronous](benchmark::State& state) { figure(state, synchronous); })
                    ->Unit(benchmark::kMillisecond)
                    ->UseRealTime()
                    ->Repetitions(5)
                    ->ReportAggregatesOnly(true);
            }
        }
    }
}

}  // namespace

Plain::Plain(const QString& path, const char* synchronous) {
    sqlite3_open_v2(path.toUtf8().constData(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    run("PRAGMA journal_mode=WAL");
    run("PRAGMA foreign_keys=ON; PRAGMA temp_store=MEMORY; PRAGMA cache_size=-16000");
    run(QByteArray("PRAGMA synchronous=") + synchronous);
}

Plain::~Plain() {
    for (sqlite3_stmt* statement : statements_)
        sqlite3_finalize(statement);
    run("PRAGMA wal_checkpoint(TRUNCATE)");
    sqlite3_close(db_);
}

void Plain::run(const QByteArray& sql) {
    sqlite3_exec(db_, sql.constData(), nullptr, nullptr, nullptr);
}

sqlite3_stmt* Plain::prepare(const QByteArray& sql) {
    statements_.push_back(nullptr);
    if (sqlite3_prepare_v3(db_, sql.constData(), -1, SQLITE_PREPARE_PERSISTENT, &statements_.back(),
                           nullptr)) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(db_));
        std::exit(1);
    }
    return statements_.back();
}

void Plain::drop() {
    sqlite3_finalize(statements_.back());
    statements_.pop_back();
}

void Plain::step(sqlite3_stmt* statement) {
    if (sqlite3_step(statement) != SQLITE_DONE) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(db_));
        std::exit(1);
    }
    sqlite3_reset(statement);
}

void bind(sqlite3_stmt* statement, int place, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    sqlite3_bind_text(statement, place, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
}

qsizetype readAll(sqlite3_stmt* statement) {
    qsizetype characters = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int c = 0, end = sqlite3_column_count(statement); c < end; ++c) {
            characters += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, c)),
                                            sqlite3_column_bytes(statement, c))
                              .size();
        }
    }
    sqlite3_reset(statement);
    return characters;
}

void add(const std::vector<Pair>& more) {
    pairs().insert(pairs().end(), more.begin(), more.end());
}

int runAll(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    registerFigures();
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    ratios.print();
    return 0;
}

}  // namespace tarmel::bench
