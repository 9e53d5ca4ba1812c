#include "platform/ado/FileCheck.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

#include "Support.h"
#include "platform/ado/Backup.h"

namespace tarmel::ado::test {

using namespace Qt::StringLiterals;

namespace {

/// The base as a program leaves it that is killed behind a write.
void leaveLog(const QString& path) {
    if (::fork() == 0) {
        Connection connection;
        connection.OpenFile(path);
        connection.Execute(u"INSERT INTO T VALUES (100000, 'última')"_s);
        ::kill(::getpid(), SIGKILL);
    }
    int status = 0;
    ::wait(&status);
    ASSERT_TRUE(WIFSIGNALED(status));
}

/// The base as a program leaves it that is killed in the middle of a write with a rollback journal.
void leaveJournal(const QString& path) {
    if (::fork() == 0) {
        Plain other(path);
        other.run("PRAGMA cache_spill=1; PRAGMA cache_size=1; BEGIN; UPDATE T SET Texto = 'a medias'");
        ::kill(::getpid(), SIGKILL);
    }
    int status = 0;
    ::wait(&status);
    ASSERT_TRUE(QFileInfo(path + u"-journal"_s).size() > 0);
}

struct Spoilt {
    const char* name;
    std::function<void(const QString&)> spoil;
    bool atAGlance;  ///< found without reading the whole file
};
std::ostream& operator<<(std::ostream& out, const Spoilt& spoilt) {
    return out << spoilt.name;
}

const Spoilt kSpoilt[] = {
    {"Empty", [](const QString& p) { write(p, {}); }, true},
    {"Random", [](const QString& p) { write(p, QByteArray(40000, '\x5a')); }, true},
    {"HeaderOnly", [](const QString& p) { write(p, bytesOf(p).left(60)); }, true},
    {"Catalog", [](const QString& p) { replaceBytes(p, 100, 3000); }, true},
    {"RootOfATable", [](const QString& p) { replaceBytes(p, 4096, 4096); }, true},
    {"RootOfAnIndex",
     [](const QString& p) {
         Plain(p).run("PRAGMA wal_checkpoint(TRUNCATE)");
         const auto root = static_cast<int>(QFileInfo(p).size());  // the next page
         Plain(p).run("CREATE INDEX I ON T (N, Texto)");
         replaceBytes(p, root, 4096);
     },
     true},
    {"PageInside", [](const QString& p) { replaceBytes(p, 9 * 4096, 4096); }, false},
    {"CellInside", [](const QString& p) { replaceBytes(p, 9 * 4096 + 8, 30); }, false},
    {"ForgottenByAnIndex",
     [](const QString& p) {
         Plain other(p);
         other.run(
             "PRAGMA writable_schema=ON; CREATE INDEX I ON T (Texto, N); "
             "UPDATE sqlite_master SET sql = 'CREATE INDEX I ON T (N, Texto)' WHERE name = 'I'");
     },
     false},
};

class SpoiltFile : public FolderTest, public ::testing::WithParamInterface<Spoilt> {};

TEST_P(SpoiltFile, IsFoundAndStaysAsItIs) {
    for (const auto& leave : {std::function<void(const QString&)>([](const QString&) {}),
                              std::function<void(const QString&)>(leaveLog)}) {
        QFile::remove(path());
        makeBase(path());
        leave(path());
        GetParam().spoil(path());
        const QString log = path() + u"-wal"_s;
        const QByteArray before = bytesOf(path());
        const QByteArray logBefore = bytesOf(log);
        const QStringList names = QDir(folder_.path()).entryList(QDir::Files);

        EXPECT_EQ(!glanceAt(path()).damage.isEmpty(), GetParam().atAGlance);
        WholeCheck check(path());
        ASSERT_TRUE(check.finished(std::chrono::minutes(1)));
        EXPECT_FALSE(check.damage().isEmpty());
        EXPECT_FALSE(check.isGood());
        EXPECT_EQ(bytesOf(path()), before);
        EXPECT_EQ(bytesOf(log), logBefore);
        EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), names);
        for (const QString& side : {u"-wal"_s, u"-shm"_s})
            QFile::remove(path() + side);
    }
}

INSTANTIATE_TEST_SUITE_P(FileCheck, SpoiltFile, ::testing::ValuesIn(kSpoilt),
                         [](const auto& row) { return std::string(row.param.name); });

class FileCheckTest : public FolderTest {};

TEST_F(FileCheckTest, AGoodFileIsGoodHoweverItWasLeft) {
    for (const bool journal : {false, true}) {
        makeBase(path());
        EXPECT_TRUE(wasClosed(path()));
        EXPECT_TRUE(isWhole(path()));
        EXPECT_TRUE(wasClosed(path())) << "the check leaves nothing beside the file";
        EXPECT_EQ(glanceAt(path()).tables, QStringList{u"T"_s});

        journal ? leaveJournal(path()) : leaveLog(path());
        const QByteArray before = bytesOf(path());
        EXPECT_FALSE(wasClosed(path()));
        EXPECT_TRUE(isWhole(path()));
        EXPECT_TRUE(glanceAt(path()).readable);
        EXPECT_EQ(bytesOf(path()), before);
        EXPECT_FALSE(wasClosed(path())) << "what the dead program left is still there to be taken up";

        Connection connection;
        connection.OpenFile(path());
        EXPECT_EQ(rowsOf(connection, u"SELECT Count(*) FROM T WHERE Texto = 'última'"_s),
                  journal ? u"0" : u"1");
        EXPECT_EQ(rowsOf(connection, u"SELECT Count(*) FROM T WHERE Texto = 'a medias'"_s), u"0");
        connection.Close();
        QFile::remove(path());
    }
}

TEST_F(FileCheckTest, RowsThatBreakARuleAreNoDamage) {
    makeBase(path());
    Plain(path()).run(
        "PRAGMA ignore_check_constraints=ON; UPDATE T SET Texto = hex(zeroblob(300)) WHERE N < 300");
    EXPECT_TRUE(isWhole(path()));
    replaceBytes(path(), 9 * 4096, 4096);
    EXPECT_FALSE(isWhole(path())) << "nor do they hide any";
}

TEST_F(FileCheckTest, AFileThatIsHeldIsNeitherDamagedNorGood) {
    makeBase(path());
    Plain other(path());
    ASSERT_EQ(other.run("BEGIN EXCLUSIVE"), SQLITE_OK);
    EXPECT_EQ(glanceAt(path()).damage, QString());
    EXPECT_FALSE(glanceAt(path()).readable);
    EXPECT_FALSE(isWhole(path()));
}

TEST_F(FileCheckTest, KnowsALogThatBelongsToAnotherFile) {
    makeBase(path());
    leaveLog(path());
    EXPECT_FALSE(hasStrayLog(path()));
    makeBase(path(u"copia.mdb"_s));
    QFile::remove(path());
    QFile::rename(path(u"copia.mdb"_s), path());  // as a copy is put back
    EXPECT_TRUE(hasStrayLog(path()));
}

// --- Backup

class BackupTest : public FolderTest {
 protected:
    void SetUp() override {
        makeBase(path());
        connection.OpenFile(path());
    }
    Connection connection;
    QString copy = path(u"copia.mdb"_s);
};

TEST_F(BackupTest, HoldsWhatIsWrittenWhileItIsMade) {
    Backup backup(connection, copy);
    int steps = 0;
    for (; backup.step(2) == Backup::Step::More; ++steps) {
        connection.Execute(u"INSERT INTO T VALUES (%1, 'durante la copia')"_s.arg(1000 + steps));
        connection.Execute(u"UPDATE T SET Texto = 'cambiada' WHERE N = %1"_s.arg(1 + steps * 3));
        ASSERT_LT(steps, 1000) << "it begins again with every write";
    }
    ASSERT_GT(steps, 3);
    EXPECT_EQ(backup.mark(), connection.changeMark());
    EXPECT_TRUE(isWhole(copy));
    EXPECT_EQ(bytesOf(copy)[18], 1) << "without a log";
    EXPECT_TRUE(wasClosed(copy));
    Plain plain(copy);
    const QString all = u"SELECT N, Texto FROM T ORDER BY N"_s;
    Connection made;
    made.OpenFile(copy);
    EXPECT_EQ(rowsOf(made, all), rowsOf(connection, all));
    connection.Execute(u"DELETE FROM T WHERE N = 7"_s);
    EXPECT_NE(backup.mark(), connection.changeMark());
}

TEST_F(BackupTest, WaitsForATransactionAndEndsWithItsConnection) {
    Backup backup(connection, copy);
    {
        Connection::Batch batch(connection);
        connection.Execute(u"INSERT INTO T VALUES (1000, 'x')"_s);
        EXPECT_EQ(backup.step(1), Backup::Step::Busy);
        batch.commit();
    }
    EXPECT_EQ(backup.step(1), Backup::Step::More);
    connection.Close();
    EXPECT_TRUE(wasClosed(path())) << "the copy holds nothing of the file back";
    EXPECT_EQ(errorOf([&] { (void)backup.step(1); })->number(), 3709);
    EXPECT_TRUE(errorOf([&] { Backup(connection, path(u"otra.mdb"_s)); }));
}

TEST_F(BackupTest, NeverReplacesAFile) {
    write(copy, "mine");
    EXPECT_TRUE(errorOf([&] { Backup(connection, copy); }));
    EXPECT_EQ(bytesOf(copy), "mine");
}

}  // namespace
}  // namespace tarmel::ado::test
