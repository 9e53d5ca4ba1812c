#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>
#include <cstdio>

#include "core/General.h"
#include "scenario/ModelDriver.h"
#include "scenario/Runner.h"
#ifdef TARMEL_WITH_WINDOWS
#include <QApplication>

#include "scenario/DesktopDriver.h"
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr int kClean = 0, kNotClean = 1, kWrongCall = 2;

int wrongCall(const QString& why) {
    QTextStream(stderr) << "tarmel_scenario: " << why << "\n"
                        << "tarmel_scenario [--desktop] [--shots FOLDER] --app FOLDER FILE...\n";
    return kWrongCall;
}

void play(tarmel::scenario::Runner& runner, tarmel::scenario::Driver& driver, const QStringList& files) {
    runner.setDriver(&driver);
    for (const QString& file : files) {
        runner.play(file);
    }
}

int conclude(const tarmel::scenario::Tally& tally, QTextStream& out) {
    if (tally.refused > 0) out << tally.refused << " refused\n";
    if (tally.brokenOff > 0) out << tally.brokenOff << " ended by an unexpected run-time error\n";
    out << tally.passed << " passed, " << tally.failed << " failed\n";
    return tally.isClean() ? kClean : kNotClean;
}

}  // namespace

int main(int argc, char** argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    QCommandLineParser parser;
    const QCommandLineOption desktop(u"desktop"_s);
    const QCommandLineOption shots(u"shots"_s, {}, u"FOLDER"_s);
    const QCommandLineOption app(u"app"_s, {}, u"FOLDER"_s);
    parser.addOptions({desktop, shots, app});
    if (!parser.parse(arguments)) return wrongCall(parser.errorText());
    const QStringList files = parser.positionalArguments();
    if (!parser.isSet(app) || files.isEmpty())
        return wrongCall(u"an application folder and a file are needed"_s);
    const QFileInfo folder(parser.value(app));
    if (!folder.isDir()) return wrongCall(u"no such folder: "_s + parser.value(app));

    QTextStream out(stdout);
    tarmel::scenario::Runner runner(folder.canonicalFilePath(), out);
    if (!parser.isSet(desktop)) {
        const QCoreApplication application(argc, argv);
        tarmel::scenario::ModelDriver driver(runner, folder.canonicalFilePath(), tarmel::Main);
        play(runner, driver, files);
        return conclude(runner.tally(), out);
    }
#ifdef TARMEL_WITH_WINDOWS
    const auto application = tarmel::scenario::makeApplication(argc, argv);
    {
        // Gone before the last line is written, so that nothing of the windows is said behind it.
        tarmel::scenario::DesktopDriver driver(runner, folder.canonicalFilePath(), parser.value(shots));
        play(runner, driver, files);
    }
    return conclude(runner.tally(), out);
#else
    return wrongCall(u"built without windows"_s);
#endif
}
