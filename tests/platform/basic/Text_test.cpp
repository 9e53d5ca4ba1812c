#include "platform/basic/Text.h"

#include <gtest/gtest.h>

#include "platform/basic/ErrorOf.h"
#include "platform/basic/Printers.h"

namespace tarmel::basic {
using namespace Qt::StringLiterals;
namespace {

const QString word = u"Ñandú"_s;

TEST(TextParts, PositionsCountCharacters) {
    EXPECT_EQ(Left(word, 2), u"Ña"_s);
    EXPECT_EQ(Left(word, 99), word);
    EXPECT_EQ(Right(word, 2), u"dú"_s);
    EXPECT_EQ(Right(word, 99), word);
    EXPECT_EQ(Left(word, 0), u""_s);
    EXPECT_EQ(Mid(word, 5), u"ú"_s);
    EXPECT_EQ(Mid(word, 2, 3), u"and"_s);
    EXPECT_EQ(Mid(word, 4, 99), u"dú"_s);
    EXPECT_EQ(Mid(word, 6), u""_s);
    EXPECT_EQ(Mid(word, 60, 2), u""_s);
    EXPECT_EQ(Space(3), u"   "_s);
}

TEST(TextParts, ImpossiblePositionsRaise) {
    EXPECT_EQ(errorOf([] { (void)Left(word, -1); }), 5);
    EXPECT_EQ(errorOf([] { (void)Right(word, -1); }), 5);
    EXPECT_EQ(errorOf([] { (void)Mid(word, 0); }), 5);
    EXPECT_EQ(errorOf([] { (void)Mid(word, 1, -1); }), 5);
    EXPECT_EQ(errorOf([] { (void)InStr(0, word, u"a"_s); }), 5);
    EXPECT_EQ(errorOf([] { (void)Space(-1); }), 5);
}

TEST(TextSearch, FindsPlacesFromOne) {
    EXPECT_EQ(InStr(u"1 - A - B"_s, u" - "_s), 2);
    EXPECT_EQ(InStr(3, u"1 - A - B"_s, u" - "_s), 6);
    EXPECT_EQ(InStr(u"Anilla"_s, u"a"_s), 6) << "capitals differ";
    EXPECT_EQ(InStr(u"Anilla"_s, u"x"_s), 0);
    EXPECT_EQ(InStr(u""_s, u""_s), 0);
    EXPECT_EQ(InStr(2, u"abc"_s, u""_s), 2);
    EXPECT_EQ(InStr(9, u"abc"_s, u"c"_s), 0);
    EXPECT_EQ(InStrRev(u"a\\b\\c"_s, u"\\"_s), 4);
    EXPECT_EQ(InStrRev(u"abc"_s, u"\\"_s), 0);
}

TEST(TextTrim, CutsBlanksOnly) {
    EXPECT_EQ(Trim(u"  a b  "_s), u"a b"_s);
    EXPECT_EQ(LTrim(u"  a "_s), u"a "_s);
    EXPECT_EQ(RTrim(u" a  "_s), u" a"_s);
    EXPECT_EQ(Trim(u"\ta\u00A0"_s), u"\ta\u00A0"_s);
    EXPECT_EQ(Trim(u"   "_s), u""_s);
}

TEST(TextCase, LetterByLetter) {
    EXPECT_EQ(UCase(u"cigüeña ß"_s), u"CIGÜEÑA ß"_s);
    EXPECT_EQ(LCase(u"ÑANDÚ"_s), u"ñandú"_s);
}

TEST(TextAnsi, TheWholeCodePageGoesThereAndBack) {
    QByteArray all;
    for (int code = 0; code < 256; ++code)
        all.append(static_cast<char>(code));
    const QString text = fromAnsi(all);
    EXPECT_EQ(text[0x80], QChar(u'€'));
    EXPECT_EQ(text[0xF3], QChar(u'ó'));
    EXPECT_EQ(toAnsi(text), all);
    EXPECT_EQ(toAnsi(u"Año €Ω"_s), QByteArray("A\xF1o \x80?"));
}

struct NumberRow {
    QString text;
    int error;
    double value = 0;
};

class TextToNumber : public testing::TestWithParam<NumberRow> {};

TEST_P(TextToNumber, ReadsSpanishNumbers) {
    const NumberRow& row = GetParam();
    double value = 0;
    EXPECT_EQ(errorOf([&] { value = CDbl(row.text); }), row.error);
    EXPECT_EQ(value, row.value);
    EXPECT_EQ(IsNumeric(row.text), row.error == 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TextToNumber,
    testing::Values(NumberRow{u"12"_s, 0, 12}, NumberRow{u" -7 "_s, 0, -7}, NumberRow{u"+3"_s, 0, 3},
                    NumberRow{u"85,5"_s, 0, 85.5}, NumberRow{u",5"_s, 0, 0.5}, NumberRow{u"5,"_s, 0, 5},
                    NumberRow{u"1.234.567,25"_s, 0, 1234567.25}, NumberRow{u"85.5"_s, 0, 855},
                    NumberRow{u"1.2.3"_s, 0, 123}, NumberRow{u"1E3"_s, 0, 1000},
                    NumberRow{u"2,5e-1"_s, 0, 0.25}, NumberRow{u"1E-400"_s, 0, 0}, NumberRow{u"1E400"_s, 6},
                    NumberRow{u"0,001E400"_s, 6}, NumberRow{u"-1E99999999999999999999"_s, 6},
                    NumberRow{u"1E-99999999999999999999"_s, 0, 0}, NumberRow{u""_s, 13},
                    NumberRow{u" "_s, 13}, NumberRow{u"."_s, 13}, NumberRow{u","_s, 13},
                    NumberRow{u"-"_s, 13}, NumberRow{u"1,2,3"_s, 13}, NumberRow{u"1 2"_s, 13},
                    NumberRow{u"12a"_s, 13}, NumberRow{u"--1"_s, 13}, NumberRow{u"1E"_s, 13},
                    NumberRow{u"1\t"_s, 13}, NumberRow{u"inf"_s, 13}, NumberRow{u"nan"_s, 13},
                    NumberRow{u"0x10"_s, 13}, NumberRow{u"1 OR 1=1"_s, 13}, NumberRow{u"\u0663"_s, 13}));

TEST(TextToWhole, RoundsHalvesToEvenAndKnowsItsRange) {
    EXPECT_EQ(CInt(u"2,5"_s), 2);
    EXPECT_EQ(CInt(u"3,5"_s), 4);
    EXPECT_EQ(CInt(u"-2,5"_s), -2);
    EXPECT_EQ(CLng(-0.5), 0);
    EXPECT_EQ(CLng(u"1,5000001"_s), 2);
    EXPECT_EQ(CInt(u"32767,4"_s), 32767);
    EXPECT_EQ(errorOf([] { (void)CInt(u"32767,5"_s); }), 6);
    EXPECT_EQ(CInt(u"-32768"_s), -32768);
    EXPECT_EQ(errorOf([] { (void)CInt(u"-32769"_s); }), 6);
    EXPECT_EQ(CLng(u"2147483647"_s), 2147483647);
    EXPECT_EQ(errorOf([] { (void)CLng(u"2147483648"_s); }), 6);
    EXPECT_EQ(errorOf([] { (void)CLng(u""_s); }), 13);
}

struct ValRow {
    QString text;
    double value;
};

class TextVal : public testing::TestWithParam<ValRow> {};

TEST_P(TextVal, ReadsTheLongestLeadingNumber) {
    EXPECT_EQ(Val(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Rows, TextVal,
                         testing::Values(ValRow{u""_s, 0}, ValRow{u"abc"_s, 0}, ValRow{u"12abc"_s, 12},
                                         ValRow{u" 1 2\t3\n4"_s, 1234}, ValRow{u"1,5"_s, 1},
                                         ValRow{u"1.5.2"_s, 1.5}, ValRow{u".5"_s, 0.5},
                                         ValRow{u"-3 - 4"_s, -3}, ValRow{u"-"_s, 0}, ValRow{u"1E3"_s, 1000},
                                         ValRow{u"1E"_s, 1}, ValRow{u"1 - Zaragoza"_s, 1},
                                         ValRow{u"007"_s, 7}));

TEST(TextVal, NeverFails) {
    EXPECT_GT(Val(QString(400, u'9')), 1e308);
    EXPECT_LT(Val(u'-' + QString(400, u'9')), -1e308);
}

struct DoubleRow {
    double value;
    QString text;
};

class NumberToText : public testing::TestWithParam<DoubleRow> {};

TEST_P(NumberToText, ShortestFormOfFifteenDigits) {
    EXPECT_EQ(CStr(GetParam().value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, NumberToText,
    testing::Values(DoubleRow{0, u"0"_s}, DoubleRow{-0.0, u"0"_s}, DoubleRow{85, u"85"_s},
                    DoubleRow{-1.5, u"-1,5"_s}, DoubleRow{0.1 + 0.2, u"0,3"_s},
                    DoubleRow{1.0 / 3, u"0,333333333333333"_s}, DoubleRow{100000000, u"100000000"_s},
                    DoubleRow{999999999999999, u"999999999999999"_s}, DoubleRow{1e15, u"1E+15"_s},
                    DoubleRow{1234567.891, u"1234567,891"_s}));

}  // namespace
}  // namespace tarmel::basic
