#include "scenario/Script.h"

#include <gtest/gtest.h>

#include "platform/forms/Control.h"
#include "platform/forms/Host.h"

namespace tarmel::scenario {
namespace {

Step only(const char* line) {
    const Script script = parse(QString::fromUtf8(line));
    EXPECT_TRUE(script.faults.empty()) << line << ": " << script.faults.front().text.toStdString();
    EXPECT_EQ(script.steps.size(), 1U) << line;
    return script.steps.empty() ? Step{} : script.steps.front();
}

TEST(Script, StepsKeepTheirLinesAndCommentsAreNone) {
    const Script script =
        parse(QStringLiteral("# a story\r\n\r\nstart\r\n  click f.a # why\r\nclick f.b#c\n"));
    ASSERT_TRUE(script.faults.empty());
    ASSERT_EQ(script.steps.size(), 3U);
    EXPECT_EQ(script.steps[0].line, 3);
    EXPECT_EQ(script.steps[1].line, 4);
    EXPECT_EQ(script.steps[1].target.text(), "f.a");
    EXPECT_EQ(script.steps[2].target.control, "b#c");
}

TEST(Script, TextsAreUnescaped) {
    EXPECT_EQ(only(R"(type f.a "a \"b\" \\ # \r\n ñ")").text, "a \"b\" \\ # \r\n ñ");
    EXPECT_EQ(only(R"(type f.a "")").text, "");
}

TEST(Script, ItemsAreChosenByTextOrNumber) {
    EXPECT_EQ(only("choose f.a #3").index, 3);
    const Step byText = only(R"(choose f.cboAño "#3")");
    EXPECT_EQ(byText.text, "#3");
    EXPECT_FALSE(byText.index);
    EXPECT_EQ(byText.target.control, "cboAño");
}

TEST(Script, Keys) {
    EXPECT_EQ(only("key f F1").key, forms::key::F1);
    EXPECT_EQ(only("key f.a F12").key, forms::key::F12);
    EXPECT_EQ(only("key f Enter").key, forms::key::Enter);
    EXPECT_TRUE(only("key f Shift+Tab").shift);
}

TEST(Script, DatesAndTimes) {
    EXPECT_EQ(only("date f.a 15/03/2010").date, basic::Date::of(2010, 3, 15));
    EXPECT_EQ(only("time f.a 07:30").date, basic::Date::timeOfDay(7, 30));
}

TEST(Script, BoxesAreAskedForByTheirParts) {
    const auto box = only(R"(expect box "a" title "T" icon exclamation)").expectation;
    ASSERT_EQ(box.clauses.size(), 3U);
    EXPECT_EQ(box.clauses[0].name, "text");
    EXPECT_EQ(box.clauses[1].value, "T");
    EXPECT_EQ(box.clauses[2].value, "exclamation");
    EXPECT_EQ(only(R"(expect box title "T")").expectation.clauses.size(), 1U);
    EXPECT_EQ(only("expect no box").expectation.subject, Subject::NoBox);
}

TEST(Script, PropertiesWithTheirNumbers) {
    const auto cell = only(R"(expect f.lst.Cell(2, 5) "x")").expectation;
    EXPECT_EQ(cell.target.text(), "f.lst");
    EXPECT_EQ(cell.property, "Cell");
    EXPECT_EQ(cell.indexes, (std::vector<int>{2, 5}));
    const auto caption = only(R"(expect frm06_HojasCampo.Caption "x")").expectation;
    EXPECT_EQ(caption.target.control, "");
    EXPECT_EQ(caption.property, "Caption");
    EXPECT_EQ(only("expect f.a.Enabled False").expectation.value, "False");
}

TEST(Script, ReportsFilesAndEnds) {
    const auto report = only(R"(expect report repHojCam contains "a" rows 12 pages 2)").expectation;
    EXPECT_EQ(report.name, "repHojCam");
    EXPECT_EQ(report.clauses.size(), 3U);
    EXPECT_EQ(only("expect report rows 12").expectation.name, "");
    const auto file = only(R"(expect file "Datos/x.txt" lines 3 line 2 "b")").expectation;
    EXPECT_EQ(file.name, "Datos/x.txt");
    EXPECT_EQ(file.clauses[1].number, 2);
    EXPECT_EQ(file.clauses[1].value, "b");
    EXPECT_EQ(only("expect ended error 13").expectation.value, "13");
    EXPECT_EQ(only("pick cancel").text, "");
}

class RefusedLine : public ::testing::TestWithParam<const char*> {};

TEST_P(RefusedLine, IsAFaultWithItsNumber) {
    const Script script = parse(QStringLiteral("start\n") + QString::fromUtf8(GetParam()));
    EXPECT_EQ(script.steps.size(), 1U);
    ASSERT_EQ(script.faults.size(), 1U);
    EXPECT_EQ(script.faults[0].line, 2);
    EXPECT_FALSE(script.faults[0].text.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Script, RefusedLine,
    ::testing::Values("fly f.a", "click", "click f", "click f.a f.b", "type f.a abc", "type f.a \"abc",
                      "type f.a \"a\\x\"", "choose f.a 3", "choose f.a #x", "key f F13", "key f Return",
                      "date f.a 31/02/2010", "date f.a 2010-01-01", "time f.a 24:00", "row f.a 0",
                      "answer Maybe", "expect", "expect f.a", "expect no focus", "expect box",
                      "expect box \"a\" icon blue", "expect f.a.Cell(1) \"x\"", "expect f.a.Text",
                      "expect file \"x\"", "expect file \"x\" line 0 \"a\"", "expect report", "close f.a",
                      "start now", "pick \"\"", "folder Otra", "copy \"a\"", "unpack \"a\" b"));

}  // namespace
}  // namespace tarmel::scenario
