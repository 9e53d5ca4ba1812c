#include "platform/system/Process.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QElapsedTimer>

#include "platform/basic/ErrorOf.h"
#include "platform/basic/Printers.h"
#include "platform/system/DataSource.h"
#include "platform/system/SingleInstance.h"
#include "platform/system/TemporaryFolder.h"

namespace tarmel::sys {
using namespace Qt::StringLiterals;
namespace {

constexpr int longEnough = 20000;

Process shell(const QString& command, const QString& folder, const Bounds& bounds = {}) {
    return Process::start(u"sh"_s, {u"-c"_s, command}, folder, bounds);
}

TEST(Process, RunsInItsFolderWithoutInput) {
    const TemporaryFolder folder;
    Process process = shell(u"cat; pwd > out; exit 7"_s, folder.path());
    ASSERT_TRUE(process.wait(longEnough));
    EXPECT_EQ(process.exitCode(), 7);
    EXPECT_FALSE(process.isRunning());
    EXPECT_TRUE(folder.read(u"out"_s).trimmed().endsWith(folder.path().toUtf8()));
}

TEST(Process, WaitGivesUpInTimeAndTheProgramGoesOn) {
    const TemporaryFolder folder;
    Process process = shell(u"while [ ! -e go ]; do sleep 0.01; done; kill -KILL $$"_s, folder.path());
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(process.wait(60));
    EXPECT_LT(clock.elapsed(), longEnough);
    EXPECT_TRUE(process.isRunning());
    EXPECT_EQ(process.exitCode(), std::nullopt);
    folder.write(u"go"_s);
    ASSERT_TRUE(process.wait(longEnough));
    EXPECT_EQ(process.exitCode(), kSignalBase + SIGKILL);
}

TEST(Process, IsEndedBeyondItsBounds) {
    const TemporaryFolder folder;
    Process writer =
        shell(u"sleep 0.2; exec head -c 100000 /dev/zero > out"_s, folder.path(), {.fileBytes = 1000});
    Process worker = shell(u"while :; do :; done"_s, folder.path(), {.cpuSeconds = 1});
    ASSERT_TRUE(writer.wait(longEnough));
    EXPECT_EQ(writer.exitCode(), kSignalBase + SIGXFSZ);
    EXPECT_EQ(folder.read(u"out"_s).size(), 1000);
    ASSERT_TRUE(worker.wait(longEnough));
    EXPECT_GE(worker.exitCode(), kSignalBase);
}

TEST(Process, WhatCannotBeStartedRaises) {
    const TemporaryFolder folder;
    const QString text = folder.write(u"text"_s);
    const auto start = [](const QString& program, const QString& in) {
        return errorOf([&] { (void)Process::start(program, {}, in); });
    };
    EXPECT_EQ(start(folder.path(u"none"_s), folder.path()), 53);
    EXPECT_EQ(start(folder.path(u"none/none"_s), folder.path()), 76);
    EXPECT_EQ(start(text, folder.path()), 75);
    EXPECT_EQ(start(u"true"_s, folder.path(u"none"_s)), 76);
}

TEST(SingleInstance, SeesOneOfTheSameFileOnly) {
    const TemporaryFolder folder;
    const QString program = folder.write(u"Tarmel"_s);
    const QString other = folder.write(u"Otro"_s);
    const QString link = folder.path(u"link"_s);
    ASSERT_TRUE(QFile::link(program, link));
    {
        const SingleInstance first(program);
        EXPECT_FALSE(first.anotherIsRunning());
        EXPECT_TRUE(SingleInstance(program).anotherIsRunning());
        EXPECT_TRUE(SingleInstance(link).anotherIsRunning());
        EXPECT_FALSE(SingleInstance(other).anotherIsRunning());
    }
    EXPECT_FALSE(SingleInstance(program).anotherIsRunning());
}

TEST(SingleInstance, AKilledCopyLeavesNothingBehind) {
    const TemporaryFolder folder;
    const QString program = folder.write(u"Tarmel"_s);
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t copy = ::fork();
    if (copy == 0) {
        const SingleInstance first(program);
        const char state = first.anotherIsRunning() ? 'n' : 'y';
        if (::write(ready[1], &state, 1) == 1) ::pause();
        ::_exit(0);
    }
    char state = 0;
    ASSERT_EQ(::read(ready[0], &state, 1), 1);
    EXPECT_EQ(state, 'y');
    EXPECT_TRUE(SingleInstance(program).anotherIsRunning());
    ::kill(copy, SIGKILL);
    ::waitpid(copy, nullptr, 0);
    EXPECT_FALSE(SingleInstance(program).anotherIsRunning());
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST(DataSources, AreFoundByNameAndReplaced) {
    const QString driver = u"Microsoft Access Driver (*.mdb)"_s;
    EXPECT_EQ(dataSourcePath(u"AccessDSN"_s), std::nullopt);
    EXPECT_TRUE(configure(u"AccessDSN"_s, driver, u"/a.mdb"_s));
    EXPECT_TRUE(configure(u"accessdsn"_s, driver, u"/b.mdb"_s));
    EXPECT_EQ(dataSourcePath(u"ACCESSDSN"_s), u"/b.mdb"_s);
    EXPECT_FALSE(configure(u""_s, driver, u"/c"_s));
    EXPECT_FALSE(configure(u"x"_s, u""_s, u"/c"_s));
    EXPECT_FALSE(configure(u"AccessDSN"_s, driver, u""_s));
    EXPECT_EQ(dataSourcePath(u"AccessDSN"_s), u"/b.mdb"_s);
}

}  // namespace
}  // namespace tarmel::sys
