#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "platform/basic/Date.h"

/// The language in which a scenario is written: one step a line. This is its shape once read; what a step
/// does is the runner's business.
namespace tarmel::scenario {

enum class Verb {
    Start,
    Type,
    Clear,
    Key,
    Leave,
    Choose,
    Date,
    Time,
    Click,
    Check,
    Uncheck,
    Row,
    DoubleRow,
    Column,
    Menu,
    Tool,
    Panel,
    Close,
    Answer,
    Pick,
    Shot,
    Sql,
    Folder,
    Copy,
    Unpack,
    Expect,
};

/// "screen.control"; the control is empty where a screen alone is named.
struct Target {
    QString screen;
    QString control;
    [[nodiscard]] QString text() const { return control.isEmpty() ? screen : screen + u'.' + control; }
};

enum class Subject { Box, NoBox, Property, Focus, Open, NotOpen, Status, Report, Sql, File, Ended };

/// One demand of an expectation, as "title", "lines" or "contains", with its word or text and, for "line",
/// the number in front of it.
struct Clause {
    QString name;
    QString value;
    int number = 0;
};

struct Expectation {
    Subject subject = Subject::NoBox;
    Target target;             ///< of Property, Focus, Open
    QString property;          ///< Text, Caption ...
    std::vector<int> indexes;  ///< in brackets behind the property
    QString name;              ///< the statement, the file, the report
    QString value;             ///< what is to be there
    std::vector<Clause> clauses;
};

struct Step {
    int line = 0;
    QString source;  ///< the line as it is written
    Verb verb = Verb::Start;
    Target target;
    QString text;              ///< what is typed, chosen, picked, run or named
    QString destination;       ///< the folder that files are copied or unpacked into
    std::optional<int> index;  ///< of an item from 0, of a row or column from 1
    int key = 0;               ///< forms::key code
    bool shift = false;
    int answer = 0;  ///< forms::box answer
    basic::Date date;
    Expectation expectation;
};

/// A line that cannot be read.
struct Fault {
    int line = 0;
    QString text;
};

struct Script {
    std::vector<Step> steps;
    std::vector<Fault> faults;
};

[[nodiscard]] Script parse(const QString& text);

}  // namespace tarmel::scenario
