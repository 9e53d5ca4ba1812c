#include "platform/system/Ini.h"

#include <gtest/gtest.h>

#include "platform/basic/Printers.h"
#include "platform/system/TemporaryFolder.h"

namespace tarmel::sys {
using namespace Qt::StringLiterals;
namespace {

const QString file = u"Tarmel.INI"_s;
const QString section = u"Tarmel"_s;
const QString key = u"Actualización"_s;

struct ReadRow {
    const char* bytes;
    int value;
};

class IniRead : public testing::TestWithParam<ReadRow> {};

TEST_P(IniRead, GivesTheLeadingNumberOrTheDefault) {
    const TemporaryFolder folder;
    EXPECT_EQ(readInt(folder.write(file, GetParam().bytes), section, key, -1), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Rows, IniRead,
                         testing::Values(ReadRow{"[Tarmel]\r\nActualizaci\xF3n=1\r\n", 1},
                                         ReadRow{"[TARMEL]\nACTUALIZACI\xD3N = 12abc", 12},
                                         ReadRow{" [ Tarmel ] \r\n  actualizaci\xF3n =  -7\r\n", -7},
                                         ReadRow{"[Tarmel]\r\nActualizaci\xF3n=\"3\"\r\n", 3},
                                         ReadRow{"[Tarmel]\r\nActualizaci\xF3n=no\r\n", 0},
                                         ReadRow{"[Tarmel]\r\nActualizaci\xF3n=\r\n", 0},
                                         ReadRow{"[Tarmel]\r\n;Actualizaci\xF3n=1\r\n", -1},
                                         ReadRow{"[Tarmel]\r\nActualizacion=1\r\n", -1},
                                         ReadRow{"[Otro]\r\nActualizaci\xF3n=1\r\n", -1},
                                         ReadRow{"[Tarmel]\r\n[Otro]\r\nActualizaci\xF3n=1\r\n", -1},
                                         ReadRow{"Actualizaci\xF3n=1\r\n[Tarmel]\r\n", -1}, ReadRow{"", -1}));

TEST(IniFile, MissingFileGivesTheDefault) {
    const TemporaryFolder folder;
    EXPECT_EQ(readInt(folder.path(file), section, key, -1), -1);
}

struct WriteRow {
    const char* before;
    const char* after;
};

class IniWrite : public testing::TestWithParam<WriteRow> {};

TEST_P(IniWrite, ChangesOneLine) {
    const TemporaryFolder folder;
    const QString path = folder.write(file, GetParam().before);
    EXPECT_TRUE(writeText(path, section, key, u"0"_s));
    EXPECT_EQ(folder.read(file), GetParam().after);
    EXPECT_EQ(readInt(path, section, key, -1), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, IniWrite,
    testing::Values(WriteRow{"", "[Tarmel]\r\nActualizaci\xF3n=0\r\n"},
                    WriteRow{"; note\n[tarmel]\nACTUALIZACI\xD3N = 1 \nx=\x80\n",
                             "; note\n[tarmel]\nACTUALIZACI\xD3N=0\r\nx=\x80\n"},
                    WriteRow{"[Tarmel]\r\nx=1\r\n\r\n[Otro]\r\nActualizaci\xF3n=1",
                             "[Tarmel]\r\nx=1\r\nActualizaci\xF3n=0\r\n\r\n[Otro]\r\nActualizaci\xF3n=1"},
                    WriteRow{"[Otro]\r\ny=2", "[Otro]\r\ny=2\r\n[Tarmel]\r\nActualizaci\xF3n=0\r\n"},
                    WriteRow{"[Tarmel]", "[Tarmel]\r\nActualizaci\xF3n=0\r\n"}));

TEST(IniFile, IsMadeWhereItLacksAndRefusedWhereItCannotBe) {
    const TemporaryFolder folder;
    EXPECT_TRUE(writeText(folder.path(file), section, key, u"1"_s));
    EXPECT_EQ(folder.read(file), "[Tarmel]\r\nActualizaci\xF3n=1\r\n");
    EXPECT_FALSE(writeText(folder.path(u"none/Tarmel.INI"_s), section, key, u"1"_s));
    EXPECT_FALSE(writeText(folder.path(file), section, key, u"1\r\n[Otro]"_s));
    EXPECT_FALSE(writeText(folder.path(file), u"a]b"_s, key, u"1"_s));
    for (const QString& name : {u""_s, u";x"_s, u"[x"_s, u"x="_s, u" x"_s, u"λ"_s})
        EXPECT_FALSE(writeText(folder.path(file), section, name, u"1"_s)) << name.toStdString();
    EXPECT_EQ(folder.read(file), "[Tarmel]\r\nActualizaci\xF3n=1\r\n");
}

}  // namespace
}  // namespace tarmel::sys
