#pragma once

#include <QString>
#include <QTextStream>
#include <functional>
#include <optional>

#include "platform/forms/Form.h"
#include "scenario/Dialogues.h"
#include "scenario/Driver.h"
#include "scenario/Script.h"

namespace tarmel::scenario {

struct Tally {
    int passed = 0;
    int failed = 0;
    int refused = 0;    ///< steps that could not be done, and lines that could not be read
    int brokenOff = 0;  ///< run-time errors that ended the program and that nothing expected
    [[nodiscard]] bool isClean() const { return failed == 0 && refused == 0 && brokenOff == 0; }
};

/// Plays scenarios: takes the steps one by one, does them through the driver, meets the expectations, and
/// writes the transcript.
class Runner {
 public:
    /// The application folder as it stands; `out` takes the transcript.
    Runner(QString applicationFolder, QTextStream& out);

    void setDriver(Driver* driver) { driver_ = driver; }
    [[nodiscard]] Dialogues& dialogues() { return dialogues_; }
    [[nodiscard]] const Tally& tally() const { return tally_; }

    /// Plays one file from a program that has not been started to its end.
    void play(const QString& file);
    /// A modal screen or report has opened within a step: plays the lines that follow until it closes, the
    /// program has ended, or the file is at its end, in which case the program is abandoned.
    void modalRuns(const std::function<bool()>& isOpen);

 private:
    bool runNext();
    void run(const Step& step);
    void act(const Step& step);
    void type(const Step& step);
    void clear(const Step& step);
    void key(const Step& step);
    void choose(const Step& step);
    void set(const Step& step, bool checked);
    void row(const Step& step);
    void runSql(const QString& statement);
    void setFolder(const QString& folder);
    void goToFolder(const QString& name);
    void copy(const Step& step);
    void unpack(const Step& step);
    void meet(const Expectation& expectation);
    void meetBox(const Expectation& expectation);
    void meetProperty(const Expectation& expectation);
    void meetReport(const Expectation& expectation);
    void meetFile(const Expectation& expectation);
    void meetEnded(const Expectation& expectation);
    void compare(const QString& what, const QString& expected, const QString& is);
    void noteEnd();
    void countUnexpectedEnd();
    [[nodiscard]] bool isRunning() const { return program_ == Program::Running; }

    void closeReport();
    [[nodiscard]] forms::Form& openForm(const QString& name) const;
    forms::Form& actingForm(const QString& name);
    /// The main window, to act on it; and to look at it alone.
    [[nodiscard]] forms::Form& frame();
    [[nodiscard]] forms::Form& frameWindow() const;
    [[nodiscard]] forms::Control& namedControl(const Target& target) const;
    /// The control, in front and able to act.
    [[nodiscard]] forms::Control& actingControl(const Target& target);
    /// The same with the focus.
    forms::Control& goTo(const Target& target);
    template <typename T>
    T& only(forms::Control& control, std::initializer_list<forms::Kind> kinds) const;
    template <typename T>
    T& barOf(forms::Form& form, forms::Kind kind) const;
    /// A path of the application folder; a pattern stands for the first file that fits it.
    [[nodiscard]] QString pathOf(const QString& name) const;
    /// The same for a file that must be there, and for a folder, which is made.
    [[nodiscard]] QString existingFile(const QString& name) const;
    [[nodiscard]] QString madeFolder(const QString& name) const;
    [[nodiscard]] QString rowsOf(const QString& statement) const;

    void tell(const QString& line);
    void refuse(const QString& why);
    void pass();
    void fail(const QString& why);

    QString home_;    ///< the application folder that the stories begin in
    QString folder_;  ///< the one that the story is in
    QTextStream& out_;
    Dialogues dialogues_;
    Driver* driver_ = nullptr;
    Tally tally_;
    Script script_;
    size_t next_ = 0;
    enum class Program { NotStarted, Running, Ended };
    Program program_ = Program::NotStarted;
    std::optional<int> endError_;  ///< it ended with this run-time error
    bool endErrorExpected_ = false;
};

}  // namespace tarmel::scenario
