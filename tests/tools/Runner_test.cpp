#include "scenario/Runner.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Pantallas.h"
#include "scenario/ModelDriver.h"

namespace tarmel::scenario {
namespace {

using namespace Qt::StringLiterals;

/// A screen of a small program: a field that may refuse to be left, and commands that show what can happen.
struct Main : forms::Form {
    Main() : Form(u"main"_s, u"Principal"_s) {
        for (const char* item : {"a", "bb", "bc"}) {
            combo.AddItem(QString::fromLatin1(item));
        }
        list.AddColumn(u"uno"_s, 100);
        list.AddColumn(u"dos"_s, 100);
        list.Add(std::vector<QString>{u"x"_s, u"1"_s});
        list.Add(std::vector<QString>{u"y"_s, u"2"_s});
        field.LostFocus = [this] {
            if (field.Text() == "mal"_L1) field.SetFocus();
        };
        ask.Click = [] {
            const int answer = forms::MsgBox(u"¿Sí?"_s, forms::box::YesNo + forms::box::Question, u"T"_s);
            forms::MsgBox(answer == forms::box::AnswerYes ? u"sí"_s : u"no"_s);
        };
        open.Click = [this] {
            forms::pantallas().Get(u"modal"_s).Show(forms::Modality::Modal);
            label.SetCaption(u"cerrado"_s);
        };
        fail.Click = [] { throw basic::RuntimeError(13); };
        end.Click = [] { forms::host().EndProgram(); };
        hidden.SetVisible(false);
        disabled.SetEnabled(false);
    }
    forms::TextBox field{*this, u"field"_s};
    forms::ComboBox combo{*this, u"combo"_s};
    forms::DatePicker date{*this, u"date"_s, u"dd/MM/yyyy"_s};
    forms::CheckBox check{*this, u"check"_s};
    forms::ListView list{*this, u"list"_s};
    forms::Label label{*this, u"label"_s};
    forms::CommandButton ask{*this, u"ask"_s}, open{*this, u"open"_s}, fail{*this, u"fail"_s},
        end{*this, u"end"_s}, hidden{*this, u"hidden"_s}, disabled{*this, u"disabled"_s};
};

struct Modal : forms::Form {
    Modal() : Form(u"modal"_s) {
        close.Click = [this] { Unload(); };
    }
    forms::TextBox field{*this, u"field"_s};
    forms::CommandButton close{*this, u"close"_s};
};

void startProgram() {
    forms::pantallas().Register(u"main"_s, [] { return std::make_shared<Main>(); });
    forms::pantallas().Register(u"modal"_s, [] { return std::make_shared<Modal>(); });
    forms::runAction([] { forms::pantallas().Get(u"main"_s).Show(); });
}

class Play : public ::testing::Test {
 protected:
    Tally play(const QString& story) {
        QFile file(folder.filePath(u"story.scn"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(story.toUtf8());
        file.close();
        QTextStream out(&transcript);
        Runner runner(folder.path(), out);
        ModelDriver driver(runner, folder.path(), startProgram);
        runner.setDriver(&driver);
        runner.play(file.fileName());
        return runner.tally();
    }
    QTemporaryDir folder;
    QString transcript;
};

TEST_F(Play, WhatHoldsAndWhatDoesNotIsCounted) {
    const Tally tally = play(
        u"start\nexpect open main\nexpect main.Caption \"Principal\"\nexpect main.Caption \"x\"\n"
        "expect not open main\nexpect main.field.Nothing \"\"\nexpect main.nobody.Text \"\"\n"
        "expect focus main.field\nexpect focus main.combo\n"_s);
    EXPECT_EQ(tally.passed, 3) << transcript.toStdString();
    EXPECT_EQ(tally.failed, 5);
    EXPECT_EQ(tally.refused, 0);
}

TEST_F(Play, TheUsersStepsReachTheControls) {
    const Tally tally = play(
        u"start\ntype main.field \"ab\"\ntype main.field \"ñ\"\nexpect main.field.Text \"abñ\"\n"
        "clear main.field\nexpect main.field.Text \"\"\nleave main.field\nexpect focus main.combo\n"
        "choose main.combo \"B\"\nexpect main.combo.ListIndex \"1\"\nchoose main.combo #2\nexpect "
        "main.combo.Text \"bc\"\n"
        "expect main.combo.Item(0) \"a\"\nexpect main.combo.Count \"3\"\n"
        "date main.date 15/03/2010\nexpect main.date.Value \"15/03/2010\"\n"
        "check main.check\ncheck main.check\nexpect main.check.Checked \"True\"\nuncheck main.check\n"
        "expect main.check.Value \"0\"\nrow main.list 2\nexpect main.list.Text \"y\"\nexpect "
        "main.list.Cell(2,2) \"2\"\n"
        "choose main.list \"x\"\nexpect main.list.Selected \"1\"\nexpect main.hidden.Visible \"False\"\n"
        "expect main.disabled.Enabled \"False\"\nexpect no box\n"_s);
    EXPECT_TRUE(tally.isClean()) << transcript.toStdString();
    EXPECT_EQ(tally.passed, 16);
}

TEST_F(Play, WhatNoHandCouldDoIsRefused) {
    for (const char* step :
         {"click main.hidden", "click main.disabled", "click main.nobody", "click modal.close",
          "choose main.combo \"z\"", "choose main.combo #3", "row main.list 3", "column main.list 3",
          "type main.label \"x\"", "date main.field 01/01/2010", "start", "menu mnuSalir", "close report",
          "sql \"SELECT\""}) {
        const Tally tally = play(u"start\n"_s + QString::fromUtf8(step));
        EXPECT_EQ(tally.refused, 1) << step;
    }
    EXPECT_EQ(play(u"click main.ask"_s).refused, 1);
    EXPECT_EQ(play(u"start\nfly\nexpect open main"_s).refused, 1);
}

TEST_F(Play, AFieldThatIsNotLeftKeepsTheFocus) {
    const Tally tally = play(
        u"start\ntype main.field \"mal\"\ntype main.combo \"a\"\nexpect focus main.field\n"
        "click main.ask\nexpect no box\n"_s);
    EXPECT_EQ(tally.refused, 1) << transcript.toStdString();
    EXPECT_EQ(tally.passed, 2);
}

TEST_F(Play, BoxesAreAnsweredAndMet) {
    const Tally tally = play(
        u"start\nclick main.ask\nanswer No\nclick main.ask\n"
        "expect box \"¿Sí?\" title \"T\" icon question buttons YesNo default Yes\nexpect box \"sí\" title "
        "\"Tarmel\"\n"
        "expect box \"other\"\nexpect box \"no\" icon critical\nexpect box \"x\"\nexpect no box\n"_s);
    EXPECT_EQ(tally.passed, 3) << transcript.toStdString();
    EXPECT_EQ(tally.failed, 3);
    EXPECT_EQ(play(u"start\nanswer Cancel\nclick main.ask"_s).refused, 1);
}

TEST_F(Play, AModalScreenRunsTheLinesThatFollow) {
    const Tally tally = play(
        u"start\nclick main.open\nexpect open modal\nexpect main.label.Caption \"\"\n"
        "click main.ask\ntype modal.field \"x\"\nclick modal.close\nexpect not open modal\n"
        "expect main.label.Caption \"cerrado\"\n"_s);
    EXPECT_EQ(tally.passed, 4) << transcript.toStdString();
    EXPECT_EQ(tally.refused, 1);  // what lies under the modal screen cannot be clicked
    EXPECT_TRUE(play(u"start\nclick main.open\nexpect open modal"_s).isClean());
}

TEST_F(Play, EndsAreToldApart) {
    EXPECT_TRUE(
        play(u"start\nclick main.end\nexpect ended\nexpect no box\nstart\nexpect open main"_s).isClean());
    EXPECT_TRUE(play(u"start\nclick main.fail\nexpect ended error 13\nexpect no box"_s).isClean());
    EXPECT_EQ(play(u"start\nclick main.fail\nstart"_s).brokenOff, 1);
    EXPECT_EQ(play(u"start\nclick main.fail\nexpect ended error 5"_s).brokenOff, 1);
    EXPECT_EQ(play(u"start\nclick main.fail\nexpect ended error 5"_s).failed, 1);
    EXPECT_EQ(play(u"start\nexpect ended"_s).failed, 1);
    EXPECT_EQ(play(u"start\nclick main.end\nexpect ended error 13"_s).failed, 1);
    EXPECT_EQ(play(u"start\nclick main.end\nclick main.ask"_s).refused, 1);
    EXPECT_TRUE(play(u"start\nclick main.open\nclick modal.close\nclick main.end\nexpect ended"_s).isClean());
}

TEST_F(Play, FilesAreReadInTheAnsiCodePage) {
    QFile file(folder.filePath(u"x.txt"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a\xf1o\r\nb\r\n");
    file.close();
    EXPECT_EQ(play(u"expect file \"x.txt\" exists lines 2 line 1 \"año\" bytes \"año\\r\\nb\\r\\n\"\n"
                   "expect file \"y.txt\" absent\n"_s)
                  .passed,
              2);
    EXPECT_EQ(
        play(u"expect file \"x.txt\" lines 3\nexpect file \"x.txt\" line 2 \"c\"\nexpect file \"x.txt\" line "
             u"3 "
             "\"\"\nexpect file \"x.txt\" absent\nexpect file \"y.txt\" exists\nexpect file \"x.txt\" bytes "
             "\"año\"\n"_s)
            .failed,
        6);
}

TEST_F(Play, AStoryGoesOnInAnotherFolder) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"Otra/Datos"_s));
    QFile file(folder.filePath(u"hoy-26010101.txt"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a");
    file.close();
    EXPECT_TRUE(play(u"copy \"hoy-??????01.txt\" \"Otra/Datos\"\n"
                     "start\nclick main.end\nfolder \"Otra\"\nstart\nclick main.end\n"
                     "expect file \"Datos/hoy-*.txt\" bytes \"a\"\nexpect file \"hoy-*.txt\" absent\n"
                     "folder \"\"\nexpect file \"hoy-26010101.txt\" exists"_s)
                    .isClean())
        << transcript.toStdString();
    EXPECT_EQ(play(u"folder \"Otra\""_s).refused + play(u"expect file \"Otra\" exists"_s).passed, 1)
        << "the next story begins at home";
    EXPECT_EQ(play(u"copy \"no-*.txt\" \"Otra\"\nfolder \"Ninguna\"\nunpack \"hoy-*.txt\" \"Otra\"\n"
                   "start\nfolder \"Otra\""_s)
                  .refused,
              4);
}

}  // namespace
}  // namespace tarmel::scenario
