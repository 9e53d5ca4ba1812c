#include "scenario/Dialogues.h"

#include <QDir>
#include <QRegularExpression>
#include <utility>

using namespace Qt::StringLiterals;

namespace tarmel::scenario {

namespace box = forms::box;

namespace {
constexpr int kButtonsMask = 0x0F;
constexpr int kIconMask = 0xF0;

bool offers(int buttons, int answer) {
    switch (buttons & kButtonsMask) {
        case box::OKCancel:
            return answer == box::AnswerOK || answer == box::AnswerCancel;
        case box::YesNo:
            return answer == box::AnswerYes || answer == box::AnswerNo;
        default:
            return answer == box::AnswerOK;
    }
}
}  // namespace

QString iconName(int buttons) {
    switch (buttons & kIconMask) {
        case box::Critical:
            return u"critical"_s;
        case box::Question:
            return u"question"_s;
        case box::Exclamation:
            return u"exclamation"_s;
        case box::Information:
            return u"information"_s;
        default:
            return u"none"_s;
    }
}

QString buttonsName(int buttons) {
    switch (buttons & kButtonsMask) {
        case box::OKCancel:
            return u"OKCancel"_s;
        case box::YesNo:
            return u"YesNo"_s;
        default:
            return u"OK"_s;
    }
}

QString answerName(int answer) {
    switch (answer) {
        case box::AnswerCancel:
            return u"Cancel"_s;
        case box::AnswerYes:
            return u"Yes"_s;
        case box::AnswerNo:
            return u"No"_s;
        default:
            return u"OK"_s;
    }
}

int defaultAnswer(int buttons) {
    const bool second = buttons & box::DefaultButton2;
    switch (buttons & kButtonsMask) {
        case box::OKCancel:
            return second ? box::AnswerCancel : box::AnswerOK;
        case box::YesNo:
            return second ? box::AnswerNo : box::AnswerYes;
        default:
            return box::AnswerOK;
    }
}

QString onOneLine(const QString& text) {
    QString line = text;
    line.replace(u"\\"_s, u"\\\\"_s)
        .replace(u"\""_s, u"\\\""_s)
        .replace(u"\r"_s, u"\\r"_s)
        .replace(u"\n"_s, u"\\n"_s);
    return u'"' + line + u'"';
}

Dialogues::Dialogues(QString folder, std::function<void(const QString&)> tell,
                     std::function<void(const QString&)> refuse)
    : folder_(std::move(folder)), tell_(std::move(tell)), refuse_(std::move(refuse)) {}

int Dialogues::answer(const forms::MessageBox& message) {
    int given = defaultAnswer(message.buttons);
    QString refused;
    if (!answers_.empty()) {
        const int queued = std::exchange(answers_.front(), 0);
        answers_.pop_front();
        if (offers(message.buttons, queued)) {
            given = queued;
        } else {
            refused = u"the box has no button "_s + answerName(queued);
        }
    }
    tell_(u"box [%1] title %2 text %3 buttons %4 -> %5"_s.arg(
        iconName(message.buttons), onOneLine(message.title), onOneLine(message.text),
        buttonsName(message.buttons), answerName(given)));
    if (!refused.isEmpty()) refuse_(refused);
    boxes_.push_back(message);
    static const QRegularExpression errorBox(u"^Error nº (-?\\d+)\\r"_s);
    const auto match = errorBox.match(message.text);
    lastError_.reset();
    if (match.hasMatch() && message.title == forms::kProgramName) lastError_ = match.captured(1).toInt();
    return given;
}

std::optional<QString> Dialogues::pick(const forms::FileDialogue& dialogue) {
    QString picked;
    if (!picks_.empty()) {
        picked = std::exchange(picks_.front(), {});
        picks_.pop_front();
    }
    tell_(u"file dialogue title %1 -> %2"_s.arg(onOneLine(dialogue.title),
                                                picked.isEmpty() ? u"cancel"_s : onOneLine(picked)));
    if (picked.isEmpty()) return std::nullopt;
    return QDir(folder_).absoluteFilePath(picked);
}

void Dialogues::takeErrorBox() {
    if (lastError_ && !boxes_.empty()) boxes_.pop_back();
    lastError_.reset();
}

void Dialogues::clear() {
    answers_.clear();
    picks_.clear();
    boxes_.clear();
    lastError_.reset();
}

}  // namespace tarmel::scenario
