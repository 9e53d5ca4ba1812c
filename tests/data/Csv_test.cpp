#include "database/Csv.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "platform/basic/RuntimeError.h"

namespace {

using tarmel::analizarCsv;
using tarmel::leerCsv;
using tarmel::basic::RuntimeError;
using Rows = std::vector<std::vector<QString>>;

struct Accepted {
    const char* name;
    QString text;
    Rows rows;
};

class CsvAccepts : public testing::TestWithParam<Accepted> {};

TEST_P(CsvAccepts, Text) {
    EXPECT_EQ(analizarCsv(GetParam().text, "t.csv"), GetParam().rows);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CsvAccepts,
    testing::Values(Accepted{"Nothing", "", {}},
                    Accepted{"LastLineEnd", "a,b\n1,2\n", {{"a", "b"}, {"1", "2"}}},
                    Accepted{"NoLastLineEnd", "a,b\r\n1,2", {{"a", "b"}, {"1", "2"}}},
                    Accepted{"EmptyFields", "a,b\n,\n", {{"a", "b"}, {"", ""}}},
                    Accepted{"EmptyLineOfOneColumn", "a\n\n", {{"a"}, {""}}},
                    Accepted{"Quoted", "a,b\n\"x, \"\"y\"\"\",\"\"\n", {{"a", "b"}, {"x, \"y\"", ""}}},
                    Accepted{"LineEndInside", "a\n\"x\r\ny\"\n", {{"a"}, {"x\r\ny"}}},
                    Accepted{"BlanksStay", "a\n  x \n", {{"a"}, {"  x "}}}),
    [](const auto& tested) { return tested.param.name; });

struct Refused {
    const char* name;
    QString text;
    QString place;
};

class CsvRefuses : public testing::TestWithParam<Refused> {};

TEST_P(CsvRefuses, Text) {
    try {
        const Rows rows = analizarCsv(GetParam().text, "t.csv");
        FAIL() << "read " << rows.size() << " rows";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 5);
        EXPECT_TRUE(e.description().startsWith(GetParam().place)) << e.what();
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, CsvRefuses,
                         testing::Values(Refused{"OpenQuote", "a\n1\n\"x\ny\n", "t.csv, línea 3:"},
                                         Refused{"QuoteInside", "a\nx\"y\n", "t.csv, línea 2:"},
                                         Refused{"TextBehindQuote", "a\n\"x\"y\n", "t.csv, línea 2:"},
                                         Refused{"FieldMissing", "a,b\n1,2\n3\n", "t.csv, línea 3:"},
                                         Refused{"FieldTooMany", "a,b\n\"1\n\",2\n3,4,5\n",
                                                 "t.csv, línea 4:"}),
                         [](const auto& tested) { return tested.param.name; });

class CsvFile : public testing::Test {
 protected:
    QString write(const QByteArray& bytes) {
        const QString path = folder_.filePath("t.csv");
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return path;
    }

    static int errorOf(const QString& path) {
        try {
            const Rows rows = leerCsv(path);
            return 0;
        } catch (const RuntimeError& e) {
            return e.number();
        }
    }

    QTemporaryDir folder_;
};

TEST_F(CsvFile, ReadsUtf8WithOrWithoutByteOrderMark) {
    const Rows expected{{"Tamaño"}, {"Ñandú"}};
    EXPECT_EQ(leerCsv(write("Tamaño\nÑandú\n")), expected);
    EXPECT_EQ(leerCsv(write("\xEF\xBB\xBFTamaño\nÑandú\n")), expected);
}

TEST_F(CsvFile, RefusesWhatItCannotRead) {
    EXPECT_EQ(errorOf(folder_.filePath("absent.csv")), 53);
    EXPECT_EQ(errorOf(folder_.path()), 75);
    EXPECT_EQ(errorOf(write("a\n\xF1"
                            "andu\n")),
              5)
        << "an ANSI file is no UTF-8";
    EXPECT_EQ(errorOf(write("a\nx\xC3")), 5) << "cut off inside a character";
}

}  // namespace
