#include "platform/system/Files.h"

#include <gtest/gtest.h>

#include <QDir>

#include "platform/basic/ErrorOf.h"
#include "platform/basic/Printers.h"
#include "platform/system/TemporaryFolder.h"

namespace tarmel::sys {
using namespace Qt::StringLiterals;
namespace {

class Files : public testing::Test {
 protected:
    TemporaryFolder folder;
    QString in(const QString& name) const { return folder.path(name); }
};

TEST_F(Files, LastNameIsFoundWithoutRegardToCase) {
    folder.write(u"AnimÁt.TXT"_s);
    QDir(folder.path()).mkdir(u"Datos"_s);
    EXPECT_TRUE(exists(in(u"ANIMáT.txt"_s)));
    EXPECT_EQ(actualPath(in(u"animát.txt"_s)), in(u"AnimÁt.TXT"_s));
    EXPECT_FALSE(exists(in(u"ANIMAT.txt"_s))) << "an accent is a letter of its own";
    EXPECT_FALSE(exists(in(u"Datos"_s))) << "a folder is no file";
    EXPECT_FALSE(exists(in(u"none/ANIMAT.txt"_s)));
    EXPECT_FALSE(exists(u""_s));
    EXPECT_TRUE(isFolder(in(u"Datos"_s)));
}

TEST_F(Files, ExactSpellingGoesFirst) {
    folder.write(u"a.txt"_s);
    folder.write(u"A.TXT"_s);
    EXPECT_EQ(actualPath(in(u"a.txt"_s)), in(u"a.txt"_s));
    EXPECT_EQ(actualPath(in(u"A.TXT"_s)), in(u"A.TXT"_s));
}

TEST_F(Files, PatternsFindNamesInOrder) {
    for (const QString& name :
         {u"aniaho.txt"_s, u"ANIMAT.TXT"_s, u"Anicho.Txt"_s, u"x.zip"_s, u"LEEME"_s, u"[a].zip"_s}) {
        folder.write(name);
    }
    QDir(folder.path()).mkdir(u"ANIX.TXT"_s);
    EXPECT_EQ(find(folder.path(), u"ANI*.TXT"_s),
              (QStringList{u"aniaho.txt"_s, u"Anicho.Txt"_s, u"ANIMAT.TXT"_s}));
    EXPECT_EQ(find(folder.path(), u"*a*o*.txt"_s), (QStringList{u"aniaho.txt"_s, u"Anicho.Txt"_s}));
    EXPECT_EQ(find(folder.path(), u"?.ZIP"_s), QStringList{u"x.zip"_s});
    EXPECT_EQ(find(folder.path(), u"[a]*"_s), QStringList{u"[a].zip"_s});
    EXPECT_EQ(find(folder.path(), u"*.*"_s).size(), 6);
    EXPECT_TRUE(find(in(u"none"_s), u"*"_s).isEmpty());
}

TEST_F(Files, RemoveMatchingTakesAllOrRaises) {
    folder.write(u"1.TMP"_s);
    folder.write(u"2.tmp"_s);
    folder.write(u"keep.txt"_s);
    removeMatching(folder.path(), u"*.tmp"_s);
    EXPECT_EQ(find(folder.path(), u"*"_s), QStringList{u"keep.txt"_s});
    EXPECT_EQ(errorOf([&] { removeMatching(folder.path(), u"*.tmp"_s); }), 53);
    EXPECT_EQ(errorOf([&] { removeMatching(in(u"none"_s), u"*.tmp"_s); }), 76);
}

TEST_F(Files, WriteProtectedFilesStay) {
    QFile(folder.write(u"a.bak"_s)).setPermissions(QFile::ReadOwner);
    EXPECT_EQ(errorOf([&] { remove(in(u"A.BAK"_s)); }), 75);
    EXPECT_EQ(errorOf([&] { removeMatching(folder.path(), u"*.bak"_s); }), 75);
    EXPECT_TRUE(exists(in(u"a.bak"_s)));
}

TEST_F(Files, RenameNeverReplaces) {
    folder.write(u"new.zip"_s, "new");
    folder.write(u"old.zip"_s, "old");
    EXPECT_EQ(errorOf([&] { rename(in(u"new.zip"_s), in(u"OLD.ZIP"_s)); }), 58);
    EXPECT_EQ(folder.read(u"old.zip"_s), "old");
    EXPECT_EQ(errorOf([&] { rename(in(u"none"_s), in(u"x"_s)); }), 53);
    EXPECT_EQ(errorOf([&] { rename(in(u"new.zip"_s), in(u"none/x"_s)); }), 76);
    EXPECT_EQ(errorOf([&] { rename(in(u"new.zip"_s), in(QString(300, u'x'))); }), 75);
    rename(in(u"NEW.zip"_s), in(u"New.ZIP"_s));
    EXPECT_EQ(folder.read(u"New.ZIP"_s), "new");
    EXPECT_EQ(find(folder.path(), u"new*"_s).size(), 1);
}

TEST_F(Files, CopyReplacesWithPermissions) {
    QFile(folder.write(u"7za"_s, "tool"))
        .setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    folder.write(u"copy"_s, "something longer");
    copy(in(u"7ZA"_s), in(u"copy"_s));
    EXPECT_EQ(folder.read(u"copy"_s), "tool");
    EXPECT_TRUE(QFile(in(u"copy"_s)).permissions() & QFile::ExeOwner);
    EXPECT_EQ(find(folder.path(), u"*"_s).size(), 2) << "no temporary file is left";
    EXPECT_EQ(errorOf([&] { copy(in(u"none"_s), in(u"x"_s)); }), 53);
    EXPECT_EQ(errorOf([&] { copy(in(u"7za"_s), in(u"none/x"_s)); }), 76);
    EXPECT_EQ(errorOf([&] { remove(in(u"none"_s)); }), 53);
}

TEST_F(Files, WriteWholeReplacesTheFileOrNothing) {
    folder.write(u"a"_s, "old");
    QDir(folder.path()).mkdir(u"taken"_s);
    EXPECT_EQ(errorOf([&] { writeWhole(in(u"taken"_s), "x"); }), 75);
    EXPECT_TRUE(isFolder(in(u"taken"_s)));
    writeWhole(in(u"A"_s), "new");
    EXPECT_EQ(folder.read(u"a"_s), "new");
    EXPECT_EQ(find(folder.path(), u"*"_s).size(), 1) << "no temporary file is left";
    EXPECT_EQ(fileError(in(u"a"_s), ENOSPC).number(), 61);
}

}  // namespace
}  // namespace tarmel::sys
