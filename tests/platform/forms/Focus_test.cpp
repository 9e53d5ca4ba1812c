#include <gtest/gtest.h>

#include "FakeHost.h"

namespace tarmel::forms {
namespace {

/// Three fields, a button, a list and a label; all focus events go to a log.
struct FocusForm : Form {
    FocusForm() : Form(QStringLiteral("f")) {
        for (Control* control : Controls()) {
            const QString name = control->Name();
            control->GotFocus = [this, name] { log << "+" + name; };
            control->LostFocus = [this, name] {
                log << "-" + name;
                if (name == onLeaving && leaving) leaving();
            };
        }
        button.Click = [this] { log << "click"; };
        list.KeyPress = [this](int& code) { log << QStringLiteral("list key %1").arg(code); };
    }
    void FormKeyPress(int& character) override {
        if (character != key::Enter) return;
        log << "enter";
        character = 0;
        SendTab();
        log << "sent";
    }
    void FormKeyDown(int& code) override {
        if (code == key::F1) log << "F1";
    }
    void whenLeaving(const QString& name, std::function<void()> what) {
        onLeaving = name;
        leaving = std::move(what);
    }
    QString take() { return std::exchange(log, {}).join(' '); }

    TextBox a{*this, QStringLiteral("a")};
    Label label{*this, QStringLiteral("label")};
    TextBox b{*this, QStringLiteral("b")};
    TextBox c{*this, QStringLiteral("c")};
    CommandButton button{*this, QStringLiteral("button")};
    ListView list{*this, QStringLiteral("list")};
    QStringList log;
    QString onLeaving;
    std::function<void()> leaving;
};

class Focus : public ::testing::Test {
 protected:
    void SetUp() override {
        form.Show();
        form.take();
    }
    FakeHost host;
    FocusForm form;
};

TEST_F(Focus, FirstControlGetsItWhenShown) {
    EXPECT_EQ(form.ActiveControl(), &form.a);
}

TEST_F(Focus, OldLosesItBeforeNewGetsIt) {
    form.whenLeaving("a", [&] { EXPECT_TRUE(form.b.HasFocus()); });
    EXPECT_TRUE(form.UserGoTo(form.b));
    EXPECT_EQ(form.take(), "-a +b");
}

TEST_F(Focus, LeavingHandlerDivertsIt) {
    struct Row {
        const char* name;
        Control* to;
        const char* events;
    };
    const Row rows[] = {{"elsewhere", &form.c, "-a +c"},
                        {"back", &form.a, "-a +a"},
                        {"where it was going", &form.b, "-a +b"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        form.whenLeaving({}, {});
        form.UserGoTo(form.a);
        form.take();
        form.whenLeaving("a", [&] { row.to->SetFocus(); });
        EXPECT_EQ(form.UserGoTo(form.b), row.to == &form.b);
        EXPECT_EQ(form.ActiveControl(), row.to);
        EXPECT_EQ(form.take(), row.events);
    }
}

TEST_F(Focus, ControlThatCannotActIsIgnored) {
    form.b.SetEnabled(false);
    form.c.SetVisible(false);
    for (Control* control : {static_cast<Control*>(&form.b), static_cast<Control*>(&form.c),
                             static_cast<Control*>(&form.label)}) {
        control->SetFocus();
        EXPECT_FALSE(form.UserGoTo(*control)) << control->Name().toStdString();
    }
    EXPECT_EQ(form.take(), "");
    form.UserKey(key::Tab);
    EXPECT_EQ(form.ActiveControl(), &form.button);
}

TEST_F(Focus, TabGoesRoundBothWays) {
    QStringList way;
    for (const bool back : {false, false, false, false, false, true, true}) {
        form.UserKey(key::Tab, back);
        way << form.ActiveControl()->Name();
    }
    EXPECT_EQ(way.join(' '), "b c button list a list button");
}

TEST_F(Focus, DisabledWithTheFocusPassesItOnOnceWhenTheActionEnds) {
    form.button.Click = [&] {
        form.a.SetFocus();
        for (TextBox* field : {&form.a, &form.b, &form.c}) {
            field->SetEnabled(false);
        }
        form.log << "done";
    };
    form.UserClick(form.button);
    EXPECT_EQ(form.take(), "-a +button -button +a done -a +button");
}

TEST_F(Focus, DisabledThenSentElsewhereDoesNotHop) {
    form.button.Click = [&] {
        form.b.SetFocus();
        form.b.SetEnabled(false);
        form.c.SetFocus();
    };
    form.UserClick(form.button);
    EXPECT_EQ(form.take(), "-a +button -button +b -b +c");
}

TEST_F(Focus, HandlersThatSendItToEachOtherEnd) {
    form.a.GotFocus = [&] { form.b.SetFocus(); };
    form.b.GotFocus = [&] { form.a.SetFocus(); };
    form.UserGoTo(form.b);
    EXPECT_NE(form.ActiveControl(), nullptr);
}

TEST_F(Focus, SetWhileLoadingIsToldWhenShown) {
    struct Late : FocusForm {
        void Load() override {
            c.SetFocus();
            log << "loaded";
        }
        void Activate() override { log << "activate"; }
    } late;
    late.Show();
    EXPECT_EQ(late.take(), "loaded activate +c");
}

TEST_F(Focus, ClickIsLostOnlyWhenLeavingWasRefused) {
    form.whenLeaving("a", [&] { form.a.SetFocus(); });
    form.UserClick(form.button);
    EXPECT_EQ(form.take(), "-a +a");

    form.whenLeaving("a", [&] { form.c.SetFocus(); });
    form.UserClick(form.button);
    EXPECT_EQ(form.take(), "-a +c click");

    form.whenLeaving("c", [&] { form.button.SetEnabled(false); });
    form.UserClick(form.button);
    EXPECT_EQ(form.take(), "-c +list");
}

TEST_F(Focus, EnterByKindOfControl) {
    form.UserKey(key::Enter);
    EXPECT_EQ(form.take(), "enter -a +b sent");
    form.UserGoTo(form.button);
    form.take();
    form.UserKey(key::Enter);
    EXPECT_EQ(form.take(), "click");
    form.UserGoTo(form.list);
    form.take();
    form.UserKey(key::Enter);
    EXPECT_EQ(form.take(), "list key 13");
    form.UserKey(key::Esc);
    EXPECT_EQ(form.take(), "list key 27");
}

TEST_F(Focus, DefaultAndCancelButtonsTakeEnterAndEsc) {
    form.button.Default = form.button.Cancel = true;
    form.UserKey(key::Enter);
    form.UserKey(key::Esc);
    EXPECT_EQ(form.take(), "click click");
    form.button.SetEnabled(false);
    form.UserKey(key::Enter);
    EXPECT_EQ(form.take(), "enter -a +b sent");
}

TEST_F(Focus, FunctionKeysReachTheFormAndLettersDoNot) {
    form.UserKey(key::F1);
    EXPECT_EQ(form.take(), "F1");
    form.UserChar(u'p');  // the code of F1
    EXPECT_EQ(form.take(), "");
    EXPECT_EQ(form.a.Text(), "p");
}

TEST_F(Focus, BlankClicksAButtonAndIsTypedIntoAText) {
    form.UserKey(key::Blank);
    EXPECT_EQ(form.a.Text(), " ");
    form.UserGoTo(form.button);
    form.take();
    form.UserChar(u' ');
    EXPECT_EQ(form.take(), "click");
}

}  // namespace
}  // namespace tarmel::forms
