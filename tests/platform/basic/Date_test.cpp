#include "platform/basic/Date.h"

#include <gtest/gtest.h>

#include "platform/basic/ErrorOf.h"
#include "platform/basic/Printers.h"
#include "platform/basic/Text.h"

namespace tarmel::basic {
using namespace Qt::StringLiterals;
namespace {

struct SerialRow {
    double serial;
    QString iso;
};

class DateSerial : public testing::TestWithParam<SerialRow> {};

TEST_P(DateSerial, NamesTheMoment) {
    const auto& [serial, iso] = GetParam();
    EXPECT_EQ(Date(serial).iso(), iso);
    EXPECT_EQ(Date::fromIso(iso), Date(serial));
    EXPECT_NEAR(Date::fromIso(iso).serial(), serial, 1.0 / 86400);
}

INSTANTIATE_TEST_SUITE_P(Rows, DateSerial,
                         testing::Values(SerialRow{0, u"1899-12-30 00:00:00"_s},
                                         SerialRow{1.5, u"1899-12-31 12:00:00"_s},
                                         SerialRow{-1.25, u"1899-12-29 06:00:00"_s},
                                         SerialRow{36585, u"2000-02-29 00:00:00"_s},
                                         SerialRow{40252.75, u"2010-03-15 18:00:00"_s},
                                         SerialRow{40252.9999999, u"2010-03-16 00:00:00"_s},
                                         SerialRow{-657434, u"0100-01-01 00:00:00"_s},
                                         SerialRow{2958465, u"9999-12-31 00:00:00"_s}));

TEST(DateOf, RefusesWhatTheCalendarLacks) {
    EXPECT_EQ(errorOf([] { (void)Date::of(2010, 2, 29); }), 5);
    EXPECT_EQ(errorOf([] { (void)Date::of(1900, 2, 29); }), 5);
    EXPECT_EQ(errorOf([] { (void)Date::of(99, 1, 1); }), 5);
    EXPECT_EQ(errorOf([] { (void)Date::of(10000, 1, 1); }), 5);
    EXPECT_EQ(errorOf([] { (void)Date::of(2010, 13, 1); }), 5);
    EXPECT_EQ(errorOf([] { (void)Date::of(2010, 1, 1, 24); }), 5);
    EXPECT_EQ(errorOf([] { (void)Date::of(2010, 1, 257); }), 5);
}

TEST(DateParts, SplitDayAndTime) {
    for (const Date moment : {Date::of(2010, 3, 15, 7, 5, 9), Date::of(1850, 3, 15, 7, 5, 9)}) {
        EXPECT_EQ(moment.dayPart(), Date::of(moment.year(), 3, 15));
        EXPECT_EQ(moment.timePart(), Date::timeOfDay(7, 5, 9));
        EXPECT_EQ(moment.hour(), 7);
        EXPECT_EQ(moment.minute(), 5);
        EXPECT_EQ(moment.second(), 9);
    }
}

TEST(DateOrder, RunsForwardsBeforeDayZeroToo) {
    EXPECT_LT(Date::of(1899, 12, 28, 6), Date::of(1899, 12, 28, 18));
    EXPECT_LT(Date::of(1899, 12, 28, 18), Date::of(1899, 12, 29, 6));
    EXPECT_EQ(Date::of(2010, 1, 1, 10, 0, 0), Date(Date::of(2010, 1, 1, 10).serial() + 1e-7));
}

TEST(DateIso, RefusesEveryOtherForm) {
    for (const QString& text :
         {u""_s, u"2010-03-15"_s, u"2010-03-15T07:00:00"_s, u"2010-02-30 00:00:00"_s,
          u"2010-03-15 07:00:0x"_s, u"2010-03-15 07:00:000"_s, u"0000-00-00 00:00:00"_s}) {
        EXPECT_EQ(errorOf([text] { (void)Date::fromIso(text); }), 13);
    }
}

struct TextRow {
    QString text;
    QString iso;  // empty: refused
};

class TextToDate : public testing::TestWithParam<TextRow> {};

TEST_P(TextToDate, ReadsTheDayFirst) {
    const auto& [text, iso] = GetParam();
    EXPECT_EQ(IsDate(text), !iso.isEmpty());
    QString read;
    EXPECT_EQ(errorOf([&] { read = CDate(text).iso(); }), iso.isEmpty() ? 13 : 0);
    EXPECT_EQ(read, iso);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TextToDate,
    testing::Values(
        TextRow{u"15/03/2010"_s, u"2010-03-15 00:00:00"_s}, TextRow{u"1/2/2010"_s, u"2010-02-01 00:00:00"_s},
        TextRow{u"03/15/2010"_s, u"2010-03-15 00:00:00"_s}, TextRow{u" 15-3-10 "_s, u"2010-03-15 00:00:00"_s},
        TextRow{u"01/01/29"_s, u"2029-01-01 00:00:00"_s}, TextRow{u"01/01/30"_s, u"1930-01-01 00:00:00"_s},
        TextRow{u"2010-03-15"_s, u"2010-03-15 00:00:00"_s},
        TextRow{u"15/03/2010 7:05"_s, u"2010-03-15 07:05:00"_s},
        TextRow{u"15/03/2010 07:05:09"_s, u"2010-03-15 07:05:09"_s},
        TextRow{u"15/03/1850 6:00"_s, u"1850-03-15 06:00:00"_s}, TextRow{u"7:05"_s, u"1899-12-30 07:05:00"_s},
        TextRow{u"23:59:59"_s, u"1899-12-30 23:59:59"_s}, TextRow{u""_s, u""_s}, TextRow{u"15"_s, u""_s},
        TextRow{u"15/03"_s, u""_s}, TextRow{u"31/02/2010"_s, u""_s}, TextRow{u"13/13/2010"_s, u""_s},
        TextRow{u"15/03-2010"_s, u""_s}, TextRow{u"15/03/20100"_s, u""_s}, TextRow{u"015/03/2010"_s, u""_s},
        TextRow{u"15/03/2010x"_s, u""_s}, TextRow{u"15/03/201007:05"_s, u""_s}, TextRow{u"24:00"_s, u""_s},
        TextRow{u"7:60"_s, u""_s}, TextRow{u"7:"_s, u""_s}, TextRow{u"40252"_s, u""_s},
        TextRow{u"29/02/2009"_s, u""_s}, TextRow{u"01/01/0050"_s, u""_s}));

TEST(DateToText, ShowsTheTimeOnlyWhereThereIsOne) {
    EXPECT_EQ(CStr(Date::of(2010, 3, 5)), u"05/03/2010"_s);
    EXPECT_EQ(CStr(Date::of(2010, 3, 5, 7, 5, 9)), u"05/03/2010 7:05:09"_s);
    EXPECT_EQ(CStr(Date::timeOfDay(17, 30)), u"17:30:00"_s);
    EXPECT_EQ(CStr(Date::timeOfDay(0, 0)), u"0:00:00"_s);
    EXPECT_EQ(CStr(Date::of(1850, 1, 2, 6)), u"02/01/1850 6:00:00"_s);
}

TEST(DateFormat, MinutesStandBehindAnHour) {
    const Date moment = Date::of(2010, 3, 5, 7, 8, 9);
    EXPECT_EQ(Format(moment, u"dd/mm/yyyy"_s), u"05/03/2010"_s);
    EXPECT_EQ(Format(moment, u"MM/dd/yy"_s), u"03/05/10"_s);
    EXPECT_EQ(Format(moment, u"HH:mm"_s), u"07:08"_s);
    EXPECT_EQ(Format(moment, u"hhmmss dd-MM"_s), u"070809 05-03"_s);
    EXPECT_EQ(Format(moment, u"yyyymmddHHmm"_s), u"201003050708"_s);
    EXPECT_EQ(Format(moment, u"hh:mm mm"_s), u"07:08 03"_s);
    EXPECT_EQ(Format(moment, u"#x#"_s), u"#x#"_s);
}

}  // namespace
}  // namespace tarmel::basic
