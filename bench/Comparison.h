#pragma once

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QString>
#include <vector>

/// What the benchmarks share: plain SQLite as a yardstick, and figures in pairs, ours beside the yardstick's.
/// With synchronous=FULL the disk's wait hides the rest, so the ratios with OFF are the ones that count.
namespace tarmel::bench {

/// A connection as any program would have it that talks to SQLite itself, set up as ours is.
class Plain {
 public:
    Plain(const QString& path, const char* synchronous);
    ~Plain();
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;

    void run(const QByteArray& sql);
    /// Kept to the end of the connection; ends the program when the text is refused.
    sqlite3_stmt* prepare(const QByteArray& sql);
    /// Gives the last prepared statement up.
    void drop();
    void step(sqlite3_stmt* statement);

 private:
    sqlite3* db_ = nullptr;
    std::vector<sqlite3_stmt*> statements_;
};

void bind(sqlite3_stmt* statement, int place, const QString& text);
/// All fields of all rows, as text; the characters read.
qsizetype readAll(sqlite3_stmt* statement);

/// One figure: the same work done by ours and by the yardstick. The argument is the synchronous setting.
using Figure = void (*)(benchmark::State&, const char*);
struct Pair {
    const char* name;
    Figure ours;
    Figure plain;
    double bar;  ///< the highest ratio that is well
};

void add(const std::vector<Pair>& pairs);
/// Runs all that was added and prints the ratios of the medians.
int runAll(int argc, char** argv);

}  // namespace tarmel::bench
