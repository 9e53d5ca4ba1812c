#include "scenario/Script.h"

#include <QRegularExpression>
#include <map>

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Control.h"
#include "platform/forms/Host.h"

using namespace Qt::StringLiterals;

namespace tarmel::scenario {

namespace {

/// What a line is refused for.
struct Refused {
    QString text;
};

struct Word {
    QString text;
    bool quoted = false;
};

// --- Words
// --------------------------------------------------------------------------------------------------------

class Reader {
 public:
    explicit Reader(const QString& line) : line_(line) {}

    std::vector<Word> words() {
        std::vector<Word> words;
        while (skipBlanks(), at_ < line_.size()) {
            if (line_[at_] == u'#' && !isIndex(words)) break;
            words.push_back(line_[at_] == u'"' ? quoted() : bare());
        }
        return words;
    }

 private:
    void skipBlanks() {
        while (at_ < line_.size() && line_[at_].isSpace())
            ++at_;
    }

    /// "#3" names an item where an item can stand; elsewhere "#" begins a comment.
    [[nodiscard]] bool isIndex(const std::vector<Word>& before) const {
        return before.size() == 2 && before[0].text == "choose"_L1 && at_ + 1 < line_.size() &&
               line_[at_ + 1].isDigit();
    }

    Word quoted() {
        Word word{{}, true};
        for (++at_; at_ < line_.size(); ++at_) {
            QChar c = line_[at_];
            if (c == u'"') {
                ++at_;
                return word;
            }
            if (c == u'\\') c = escaped();
            word.text += c;
        }
        throw Refused{u"the quote is not closed"_s};
    }

    QChar escaped() {
        if (++at_ < line_.size()) {
            switch (line_[at_].unicode()) {
                case u'"':
                    return u'"';
                case u'\\':
                    return u'\\';
                case u'r':
                    return u'\r';
                case u'n':
                    return u'\n';
                default:
                    throw Refused{u"\\%1 means nothing"_s.arg(line_[at_])};
            }
        }
        throw Refused{u"a \\ at the end of the line"_s};
    }

    Word bare() {
        const qsizetype start = at_;
        int depth = 0;  // blanks within brackets do not part: Cell(2, 5)
        for (; at_ < line_.size() && (depth > 0 || !line_[at_].isSpace()) && line_[at_] != u'"'; ++at_) {
            if (line_[at_] == u'(') ++depth;
            if (line_[at_] == u')') --depth;
        }
        return {line_.mid(start, at_ - start), false};
    }

    const QString& line_;
    qsizetype at_ = 0;
};

/// The words of a line, taken one after the other.
class Words {
 public:
    explicit Words(std::vector<Word> words) : words_(std::move(words)) {}

    [[nodiscard]] bool atEnd() const { return at_ == words_.size(); }
    [[nodiscard]] bool nextIs(const QString& word) const {
        return !atEnd() && !words_[at_].quoted && words_[at_].text == word;
    }
    [[nodiscard]] bool nextIsQuoted() const { return !atEnd() && words_[at_].quoted; }
    bool skip(const QString& word) {
        const bool is = nextIs(word);
        if (is) ++at_;
        return is;
    }
    QString any(const QString& what) {
        if (atEnd()) throw Refused{what + u" is missing"_s};
        return words_[at_++].text;
    }
    QString bare(const QString& what) {
        if (nextIsQuoted()) throw Refused{what + u" stands without quotes"_s};
        return any(what);
    }
    QString quoted(const QString& what) {
        if (!atEnd() && !nextIsQuoted()) throw Refused{what + u" stands in quotes"_s};
        return any(what);
    }
    int number(const QString& what, int least) {
        const QString word = any(what);
        bool ok = false;
        const int number = word.toInt(&ok);
        if (!ok || number < least)
            throw Refused{u"%1 is no number from %2 on: %3"_s.arg(what).arg(least).arg(word)};
        return number;
    }
    void end() const {
        if (!atEnd()) throw Refused{u"too much: "_s + words_[at_].text};
    }

 private:
    std::vector<Word> words_;
    size_t at_ = 0;
};

// --- Parts of a step
// ----------------------------------------------------------------------------------------------

const std::map<QString, Verb> kVerbs = {
    {u"start"_s, Verb::Start},         {u"type"_s, Verb::Type},
    {u"clear"_s, Verb::Clear},         {u"key"_s, Verb::Key},
    {u"leave"_s, Verb::Leave},         {u"choose"_s, Verb::Choose},
    {u"date"_s, Verb::Date},           {u"time"_s, Verb::Time},
    {u"click"_s, Verb::Click},         {u"check"_s, Verb::Check},
    {u"uncheck"_s, Verb::Uncheck},     {u"row"_s, Verb::Row},
    {u"doublerow"_s, Verb::DoubleRow}, {u"column"_s, Verb::Column},
    {u"menu"_s, Verb::Menu},           {u"tool"_s, Verb::Tool},
    {u"panel"_s, Verb::Panel},         {u"close"_s, Verb::Close},
    {u"answer"_s, Verb::Answer},       {u"pick"_s, Verb::Pick},
    {u"shot"_s, Verb::Shot},           {u"sql"_s, Verb::Sql},
    {u"folder"_s, Verb::Folder},       {u"copy"_s, Verb::Copy},
    {u"unpack"_s, Verb::Unpack},       {u"expect"_s, Verb::Expect},
};

const std::map<QString, int> kKeys = {
    {u"Enter"_s, forms::key::Enter},   {u"Esc"_s, forms::key::Esc},
    {u"Tab"_s, forms::key::Tab},       {u"Backspace"_s, forms::key::Backspace},
    {u"Up"_s, forms::key::Up},         {u"Down"_s, forms::key::Down},
    {u"Left"_s, forms::key::Left},     {u"Right"_s, forms::key::Right},
    {u"Home"_s, forms::key::Home},     {u"End"_s, forms::key::End},
    {u"PageUp"_s, forms::key::PageUp}, {u"PageDown"_s, forms::key::PageDown},
    {u"Delete"_s, forms::key::Delete}, {u"Space"_s, forms::key::Blank},
};

const std::map<QString, int> kAnswers = {
    {u"OK"_s, forms::box::AnswerOK},
    {u"Cancel"_s, forms::box::AnswerCancel},
    {u"Yes"_s, forms::box::AnswerYes},
    {u"No"_s, forms::box::AnswerNo},
};

Target target(Words& words) {
    const QString name = words.bare(u"a screen or control"_s);
    const qsizetype dot = name.indexOf(u'.');
    if (dot < 0) return {name, {}};
    if (dot == 0 || dot == name.size() - 1) throw Refused{u"no screen.control: "_s + name};
    return {name.left(dot), name.mid(dot + 1)};
}

Target control(Words& words) {
    Target found = target(words);
    if (found.control.isEmpty()) throw Refused{u"no screen.control: "_s + found.screen};
    return found;
}

QString screen(Words& words) {
    const Target found = target(words);
    if (!found.control.isEmpty()) throw Refused{u"a screen is wanted, not the control "_s + found.text()};
    return found.screen;
}

void readKey(Words& words, Step& step) {
    QString name = words.bare(u"a key"_s);
    step.shift = name.startsWith("Shift+"_L1);
    if (step.shift) name = name.mid(6);
    if (const auto found = kKeys.find(name); found != kKeys.end()) {
        step.key = found->second;
        return;
    }
    bool ok = false;
    const int number = name.startsWith(u'F') ? name.mid(1).toInt(&ok) : 0;
    if (!ok || number < 1 || number > 12) throw Refused{u"no such key: "_s + name};
    step.key = forms::key::F1 + number - 1;
}

basic::Date readDate(const QString& text) {
    static const QRegularExpression form(u"^(\\d{1,2})/(\\d{1,2})/(\\d{4})$"_s);
    const auto match = form.match(text);
    if (!match.hasMatch()) throw Refused{u"no date dd/mm/yyyy: "_s + text};
    try {
        return basic::Date::of(match.captured(3).toInt(), match.captured(2).toInt(),
                               match.captured(1).toInt());
    } catch (const basic::RuntimeError&) {
        throw Refused{u"no such day: "_s + text};
    }
}

basic::Date readTime(const QString& text) {
    static const QRegularExpression form(u"^(\\d{1,2}):(\\d{2})$"_s);
    const auto match = form.match(text);
    const int hour = match.captured(1).toInt();
    const int minute = match.captured(2).toInt();
    if (!match.hasMatch() || hour > 23 || minute > 59) throw Refused{u"no time hh:mm: "_s + text};
    return basic::Date::timeOfDay(hour, minute);
}

// --- Expectations
// -------------------------------------------------------------------------------------------------

/// What may follow an expectation, and what each demand takes.
enum class Takes { Nothing, Word, Text, Number, NumberAndText };
using Demands = std::map<QString, Takes>;

const Demands kOfBox = {{u"title"_s, Takes::Text},
                        {u"icon"_s, Takes::Word},
                        {u"buttons"_s, Takes::Word},
                        {u"default"_s, Takes::Word}};
const Demands kOfReport = {
    {u"contains"_s, Takes::Text}, {u"rows"_s, Takes::Number}, {u"pages"_s, Takes::Number}};
const Demands kOfFile = {{u"exists"_s, Takes::Nothing},
                         {u"absent"_s, Takes::Nothing},
                         {u"bytes"_s, Takes::Text},
                         {u"lines"_s, Takes::Number},
                         {u"line"_s, Takes::NumberAndText}};

const QStringList kIcons = {u"none"_s, u"critical"_s, u"question"_s, u"exclamation"_s, u"information"_s};
const std::map<QString, QString> kOtherIconNames = {{u"stop"_s, u"critical"_s},
                                                    {u"warning"_s, u"exclamation"_s}};
const QStringList kButtons = {u"OK"_s, u"OKCancel"_s, u"YesNo"_s};

std::vector<Clause> clauses(Words& words, const Demands& allowed) {
    std::vector<Clause> found;
    while (!words.atEnd()) {
        Clause clause{words.bare(u"a demand"_s), {}, 0};
        const auto demand = allowed.find(clause.name);
        if (demand == allowed.end()) throw Refused{u"not understood: "_s + clause.name};
        const QString what = u"what follows "_s + clause.name;
        switch (demand->second) {
            case Takes::Nothing:
                break;
            case Takes::Word:
                clause.value = words.bare(what);
                break;
            case Takes::Text:
                clause.value = words.quoted(what);
                break;
            case Takes::Number:
                clause.number = words.number(what, 0);
                break;
            case Takes::NumberAndText:
                clause.number = words.number(what, 1);
                clause.value = words.quoted(what);
                break;
        }
        if (const auto other = kOtherIconNames.find(clause.value);
            clause.name == "icon"_L1 && other != kOtherIconNames.end()) {
            clause.value = other->second;
        }
        if (clause.name == "icon"_L1 && !kIcons.contains(clause.value)) {
            throw Refused{u"no such icon: "_s + clause.value};
        }
        if (clause.name == "buttons"_L1 && !kButtons.contains(clause.value)) {
            throw Refused{u"no such buttons: "_s + clause.value};
        }
        if (clause.name == "default"_L1 && !kAnswers.contains(clause.value)) {
            throw Refused{u"no such button: "_s + clause.value};
        }
        found.push_back(clause);
    }
    return found;
}

/// "screen.control.Prop", "screen.Caption", "screen.control.Cell(2,5)".
void readProperty(Words& words, Expectation& expectation) {
    expectation.subject = Subject::Property;
    const QString name = words.bare(u"a property"_s);
    static const QRegularExpression form(
        u"^([^.()]+)(?:\\.([^.()]+))?\\.([^.()]+)(?:\\((\\d+)(?:\\s*,\\s*(\\d+))?\\s*\\))?$"_s);
    const auto match = form.match(name);
    if (!match.hasMatch()) throw Refused{u"not understood: "_s + name};
    expectation.target = {match.captured(1), match.captured(2)};
    expectation.property = match.captured(3);
    for (const int group : {4, 5}) {
        if (!match.captured(group).isEmpty()) expectation.indexes.push_back(match.captured(group).toInt());
    }
    const bool isCell = expectation.property == "Cell"_L1;
    const bool isItem = expectation.property == "Item"_L1 || expectation.property == "Column"_L1;
    const size_t wanted = isCell ? 2 : isItem ? 1 : 0;
    if (expectation.indexes.size() != wanted) throw Refused{u"%1 takes %2 numbers"_s.arg(name).arg(wanted)};
    expectation.value = words.any(u"the value"_s);
}

Expectation expectation(Words& words) {
    Expectation read;
    if (words.skip(u"no"_s)) {
        if (!words.skip(u"box"_s)) throw Refused{u"only 'no box' can be expected"_s};
        read.subject = Subject::NoBox;
    } else if (words.skip(u"box"_s)) {
        read.subject = Subject::Box;
        if (words.nextIsQuoted()) read.clauses.push_back({u"text"_s, words.quoted(u"the text"_s), 0});
        for (const Clause& clause : clauses(words, kOfBox)) {
            read.clauses.push_back(clause);
        }
        if (read.clauses.empty()) throw Refused{u"the box's text is missing"_s};
    } else if (words.skip(u"focus"_s)) {
        read.subject = Subject::Focus;
        read.target = control(words);
    } else if (words.skip(u"not"_s)) {
        if (!words.skip(u"open"_s)) throw Refused{u"only 'not open' can be expected"_s};
        read.subject = Subject::NotOpen;
        read.target.screen = screen(words);
    } else if (words.skip(u"open"_s)) {
        read.subject = Subject::Open;
        read.target.screen = screen(words);
    } else if (words.skip(u"status"_s)) {
        read.subject = Subject::Status;
        read.value = words.quoted(u"the text"_s);
    } else if (words.skip(u"report"_s)) {
        read.subject = Subject::Report;
        bool named = !words.atEnd();
        for (const auto& [demand, takes] : kOfReport) {
            named = named && !words.nextIs(demand);
        }
        if (named) read.name = words.bare(u"the report"_s);
        read.clauses = clauses(words, kOfReport);
        if (!named && read.clauses.empty()) throw Refused{u"the report is missing"_s};
    } else if (words.skip(u"sql"_s)) {
        read.subject = Subject::Sql;
        read.name = words.quoted(u"the statement"_s);
        read.value = words.quoted(u"the rows"_s);
    } else if (words.skip(u"file"_s)) {
        read.subject = Subject::File;
        read.name = words.quoted(u"the file"_s);
        read.clauses = clauses(words, kOfFile);
        if (read.clauses.empty()) throw Refused{u"what is expected of the file is missing"_s};
    } else if (words.skip(u"ended"_s)) {
        read.subject = Subject::Ended;
        if (words.skip(u"error"_s)) {
            read.name = u"error"_s;
            read.value = words.any(u"the error's number"_s);
        }
    } else {
        readProperty(words, read);
    }
    return read;
}

Step readStep(Words words) {
    Step step;
    const QString verb = words.bare(u"a step"_s);
    const auto found = kVerbs.find(verb);
    if (found == kVerbs.end()) throw Refused{u"no such step: "_s + verb};
    step.verb = found->second;
    switch (step.verb) {
        case Verb::Start:
            break;
        case Verb::Type:
            step.target = control(words);
            step.text = words.quoted(u"the text"_s);
            break;
        case Verb::Clear:
        case Verb::Leave:
        case Verb::Click:
        case Verb::Check:
        case Verb::Uncheck:
            step.target = control(words);
            break;
        case Verb::Key:
            step.target = target(words);
            readKey(words, step);
            break;
        case Verb::Choose:
            step.target = control(words);
            if (words.nextIsQuoted()) {
                step.text = words.quoted(u"the beginning"_s);
            } else {
                const QString word = words.bare(u"the item"_s);
                bool ok = false;
                step.index = word.mid(1).toInt(&ok);
                if (!word.startsWith(u'#') || !ok) throw Refused{u"neither \"text\" nor #number: "_s + word};
            }
            break;
        case Verb::Date:
            step.target = control(words);
            step.date = readDate(words.any(u"the date"_s));
            break;
        case Verb::Time:
            step.target = control(words);
            step.date = readTime(words.any(u"the time"_s));
            break;
        case Verb::Row:
        case Verb::DoubleRow:
        case Verb::Column:
            step.target = control(words);
            step.index = words.number(u"the number"_s, 1);
            break;
        case Verb::Menu:
        case Verb::Tool:
        case Verb::Panel:
            step.text = words.bare(u"the name"_s);
            break;
        case Verb::Close:
            step.target.screen = screen(words);
            break;
        case Verb::Answer: {
            const QString name = words.bare(u"the answer"_s);
            const auto answer = kAnswers.find(name);
            if (answer == kAnswers.end()) throw Refused{u"no such answer: "_s + name};
            step.answer = answer->second;
            break;
        }
        case Verb::Pick:
            // Nothing picked is the empty path.
            if (!words.skip(u"cancel"_s)) {
                step.text = words.quoted(u"the path"_s);
                if (step.text.isEmpty()) throw Refused{u"the path is empty"_s};
            }
            break;
        case Verb::Shot:
            step.text = words.any(u"the name"_s);
            break;
        case Verb::Sql:
            step.text = words.quoted(u"the statement"_s);
            break;
        case Verb::Folder:
            step.text = words.quoted(u"the folder"_s);
            break;
        case Verb::Copy:
        case Verb::Unpack:
            step.text = words.quoted(u"the file"_s);
            step.destination = words.quoted(u"the folder"_s);
            break;
        case Verb::Expect:
            step.expectation = expectation(words);
            break;
    }
    words.end();
    return step;
}

}  // namespace

Script parse(const QString& text) {
    Script script;
    int number = 0;
    QString rest = text;
    rest.remove(QChar(u'\uFEFF')).remove(u'\r');
    for (const QString& line : rest.split(u'\n')) {
        ++number;
        try {
            std::vector<Word> words = Reader(line).words();
            if (words.empty()) continue;
            Step step = readStep(Words(std::move(words)));
            step.line = number;
            step.source = line.trimmed();
            script.steps.push_back(std::move(step));
        } catch (const Refused& refused) {
            script.faults.push_back({number, refused.text});
        }
    }
    return script;
}

}  // namespace tarmel::scenario
