#pragma once

#include <QString>
#include <deque>
#include <functional>
#include <optional>

#include "platform/forms/Host.h"

namespace tarmel::scenario {

/// "exclamation", "OKCancel" ...: a box's values by the words of the language.
[[nodiscard]] QString iconName(int buttons);
[[nodiscard]] QString buttonsName(int buttons);
[[nodiscard]] QString answerName(int answer);
[[nodiscard]] int defaultAnswer(int buttons);
/// A text on one line, as the language writes it between quotes.
[[nodiscard]] QString onOneLine(const QString& text);

/// The user's part in boxes and file dialogues: the answers that wait, and the boxes that no expectation has
/// met yet.
class Dialogues {
 public:
    /// `folder` is where paths that are picked begin; `tell` takes the lines of the transcript, `refuse` an
    /// answer that its box does not offer.
    Dialogues(QString folder, std::function<void(const QString&)> tell,
              std::function<void(const QString&)> refuse);

    void setFolder(const QString& folder) { folder_ = folder; }
    void queueAnswer(int answer) { answers_.push_back(answer); }
    void queuePick(const QString& path) { picks_.push_back(path); }
    int answer(const forms::MessageBox& message);
    std::optional<QString> pick(const forms::FileDialogue& dialogue);

    [[nodiscard]] bool hasBox() const { return !boxes_.empty(); }
    [[nodiscard]] const forms::MessageBox& oldestBox() const { return boxes_.front(); }
    void takeOldestBox() { boxes_.pop_front(); }

    /// The number of the error that the last box told of, when it was the box of an error that nothing
    /// caught.
    [[nodiscard]] std::optional<int> lastError() const { return lastError_; }
    /// That box counts as expected.
    void takeErrorBox();
    /// What another run of the program must not find.
    void clear();

 private:
    QString folder_;
    std::function<void(const QString&)> tell_;
    std::function<void(const QString&)> refuse_;
    std::deque<int> answers_;
    std::deque<QString> picks_;
    std::deque<forms::MessageBox> boxes_;
    std::optional<int> lastError_;
};

}  // namespace tarmel::scenario
