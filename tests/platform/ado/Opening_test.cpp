#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <ostream>

#include "Support.h"
#include "platform/system/DataSource.h"

namespace tarmel::ado::test {

using namespace Qt::StringLiterals;

namespace {

struct BadFile {
    const char* name;
    std::function<void(const QString&)> spoil;  ///< makes a good base a bad one
    const char16_t* words;                      ///< that the description holds
};
std::ostream& operator<<(std::ostream& out, const BadFile& bad) {
    return out << bad.name;
}

const BadFile kBadFiles[] = {
    {"Missing", [](const QString& p) { QFile::remove(p); }, u"No se ha encontrado"},
    {"Folder", [](const QString& p) { QFile::remove(p), QDir().mkpath(p); }, u"no es un archivo"},
    {"Empty", [](const QString& p) { write(p, {}); }, u"no es una base de datos"},
    {"Text", [](const QString& p) { write(p, QByteArray(5000, 'a')); }, u"no es una base de datos"},
    {"HeaderOnly", [](const QString& p) { write(p, bytesOf(p).left(60)); }, u"incompleto"},
    {"CutShort", [](const QString& p) { write(p, bytesOf(p).left(bytesOf(p).size() / 2)); }, u"incompleto"},
    {"LastPageMissing", [](const QString& p) { write(p, bytesOf(p).chopped(4096)); }, u"incompleto"},
    {"DamagedCatalog", [](const QString& p) { replaceBytes(p, 100, 3000); }, u"dañado"},
    {"ReadOnly", [](const QString& p) { ::chmod(QFile::encodeName(p).constData(), 0444); }, u"sólo lectura"},
};

class BadFileTest : public FolderTest, public ::testing::WithParamInterface<BadFile> {};

TEST_P(BadFileTest, IsRefusedAndStaysAsItIs) {
    makeBase(path());
    GetParam().spoil(path());
    const QByteArray before = bytesOf(path());
    Connection connection;
    const auto error = errorOf([&] { connection.OpenFile(path()); });
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->description().contains(QString::fromUtf16(GetParam().words))) << error->what();
    EXPECT_FALSE(connection.IsOpen());
    EXPECT_EQ(bytesOf(path()), before);
}

INSTANTIATE_TEST_SUITE_P(Opening, BadFileTest, ::testing::ValuesIn(kBadFiles),
                         [](const auto& row) { return std::string(row.param.name); });

class OpeningTest : public FolderTest {};

TEST_F(OpeningTest, RefusesAReadOnlyFolder) {
    makeBase(path());
    const QByteArray folder = QFile::encodeName(folder_.path());
    ::chmod(folder.constData(), 0555);
    Connection connection;
    const auto error = errorOf([&] { connection.OpenFile(path()); });
    ::chmod(folder.constData(), 0755);
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->description().contains(u"sólo lectura"_s)) << error->what();
}

TEST_F(OpeningTest, RefusesAFileThatAnotherProgramHolds) {
    makeBase(path());
    for (const char* hold :
         {"BEGIN EXCLUSIVE", "BEGIN IMMEDIATE", "PRAGMA journal_mode=WAL; BEGIN IMMEDIATE"}) {
        Plain other(path());
        ASSERT_EQ(other.run(hold), SQLITE_OK);
        const QByteArray before = bytesOf(path());
        Connection connection;
        const auto error = errorOf([&] { connection.OpenFile(path()); });
        ASSERT_TRUE(error) << hold;
        EXPECT_TRUE(error->description().contains(u"otro programa"_s)) << error->what();
        EXPECT_EQ(bytesOf(path()), before) << hold;
        EXPECT_EQ(other.run("ROLLBACK"), SQLITE_OK);
    }
    Connection connection;
    connection.OpenFile(path());
    EXPECT_EQ(rowsOf(connection, u"SELECT Count(*) FROM T"_s), u"400");
}

TEST_F(OpeningTest, CloseLeavesOneFileThatAnyProgramReads) {
    makeBase(path());
    Connection connection;
    connection.OpenFile(path());
    Recordset live;
    live.Open(u"SELECT * FROM T ORDER BY N"_s, connection, Cursor::Keyset);
    connection.Execute(u"DELETE FROM T WHERE N > 300"_s);
    EXPECT_TRUE(QFileInfo::exists(path() + u"-wal"_s));
    Recordset second;
    second.Open(u"SELECT * FROM T ORDER BY N"_s, connection, Cursor::Keyset);
    connection.Close();
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList{u"base.mdb"_s});
    Plain other(path());
    EXPECT_EQ(other.value("PRAGMA journal_mode"), u"delete");
    EXPECT_EQ(other.value("SELECT COUNT(*) FROM T"), u"300");
    EXPECT_EQ(live.RecordCount(), 400);
    EXPECT_EQ(second.RecordCount(), 300);
    EXPECT_EQ(errorOf([&] { second.Requery(); })->number(), 3709);
}

TEST_F(OpeningTest, ClosesWhileAnotherProgramReads) {
    makeBase(path(), 10);
    Plain other(path());
    {
        Connection connection;
        connection.OpenFile(path());
        ASSERT_EQ(other.run("BEGIN; SELECT COUNT(*) FROM T"), SQLITE_OK);
        connection.Execute(u"INSERT INTO T VALUES (11, 'once')"_s);
    }
    EXPECT_EQ(other.value("SELECT COUNT(*) FROM T"), u"10");
    ASSERT_EQ(other.run("COMMIT"), SQLITE_OK);
    EXPECT_EQ(other.value("SELECT COUNT(*) FROM T"), u"11");
}

TEST_F(OpeningTest, FindsTheFileThroughTheDataSource) {
    makeBase(path(), 3);
    Connection connection;
    EXPECT_TRUE(errorOf([&] { connection.Open(u"DSN=NoHayTal;UID=admin;PWD="_s); }));
    ASSERT_TRUE(sys::configure(u"AccessDSN"_s, u"Microsoft Access Driver (*.mdb)"_s, path()));
    connection.Open(u"DSN=AccessDSN;UID=admin;PWD="_s);
    EXPECT_EQ(rowsOf(connection, u"SELECT Count(*) FROM T"_s), u"3");
    connection.Close();
    EXPECT_EQ(errorOf([&] { connection.Execute(u"DELETE FROM T"_s); })->number(), 3709);
}

TEST_F(OpeningTest, TakesUpTheLogOfAProgramThatDied) {
    makeBase(path(), 10);
    if (::fork() == 0) {
        Connection connection;
        connection.OpenFile(path());
        connection.Execute(u"INSERT INTO T VALUES (11, 'última')"_s);
        ::kill(::getpid(), SIGKILL);
    }
    int status = 0;
    ::wait(&status);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(QFileInfo::exists(path() + u"-wal"_s));
    Connection connection;
    connection.OpenFile(path());
    EXPECT_EQ(rowsOf(connection, u"SELECT Texto FROM T WHERE N = 11"_s), u"última");
}

/// Two rows a round in one batch, one by itself: killed anywhere, the pair is whole or not there, and what
/// was reported as written is there.
TEST_F(OpeningTest, HoldsOnlyWholeWritesAfterBeingKilled) {
    makeBase(path(), 1);
    for (int round = 0; round < 6; ++round) {
        int pipe[2];
        ASSERT_EQ(::pipe(pipe), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(pipe[0]);
            Connection connection;
            connection.OpenFile(path());
            for (int n = 1000 * (round + 1);; n += 2) {
                Connection::Batch pair(connection);
                connection.Execute(u"INSERT INTO T VALUES (%1, 'par')"_s.arg(n));
                connection.Execute(u"INSERT INTO T VALUES (%1, 'impar')"_s.arg(n + 1));
                pair.commit();
                if (::write(pipe[1], &n, sizeof n) != sizeof n) ::_exit(1);
            }
        }
        ::close(pipe[1]);
        int last = 0;
        for (int n = 0, seen = 0; seen < 5 + round * 3 && ::read(pipe[0], &n, sizeof n) == sizeof n; ++seen)
            last = n;
        ::kill(child, SIGKILL);
        for (int n = 0; ::read(pipe[0], &n, sizeof n) == sizeof n;)
            last = n;
        ::close(pipe[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        ASSERT_GT(last, 0);
        Connection connection;
        connection.OpenFile(path());
        EXPECT_EQ(rowsOf(connection, u"SELECT Count(*) FROM T WHERE Texto = 'par'"_s),
                  rowsOf(connection, u"SELECT Count(*) FROM T WHERE Texto = 'impar'"_s));
        EXPECT_EQ(rowsOf(connection, u"SELECT Texto FROM T WHERE N = %1"_s.arg(last + 1)), u"impar");
    }
}

TEST_F(OpeningTest, SearchesOfASnapshotSeeOneStateAndAChangeEndsIt) {
    const QString count = u"SELECT Count(*) FROM T"_s;
    makeBase(path());
    Connection mine;
    mine.OpenFile(path());
    Connection other;
    other.OpenFile(path());
    const Connection::Snapshot searches(mine);
    const QString before = rowsOf(mine, count);
    other.Execute(u"INSERT INTO T VALUES (900, 'otro')"_s);
    EXPECT_EQ(rowsOf(mine, count), before);
    mine.Execute(u"INSERT INTO T VALUES (901, 'propio')"_s);
    EXPECT_NE(rowsOf(mine, count), before);
    EXPECT_EQ(rowsOf(other, count), rowsOf(mine, count)) << "what was written is there at once";
}

}  // namespace
}  // namespace tarmel::ado::test
