#include <gtest/gtest.h>

#include "FakeHost.h"
#include "platform/basic/RuntimeError.h"

namespace tarmel::forms {
namespace {

/// A screen that logs its life; what it does meanwhile comes from the test.
struct Screen : Form {
    Screen(const QString& name, QStringList& events) : Form(name), log(events) {
        button.Click = [this] {
            if (onClick) onClick();
            log << Name() + " clicked";
        };
    }
    ~Screen() override { log << "~" + Name(); }
    void Load() override {
        log << "load " + Name();
        if (onLoad) onLoad();
    }
    void Activate() override {
        log << "activate " + Name();
        if (onActivate) onActivate();
    }
    bool QueryUnload() override { return staysOpen; }
    void UnloadEvent() override {
        log << "unload " + Name();
        if (onUnload) onUnload();
    }
    CommandButton button{*this, QStringLiteral("button")};
    QStringList& log;
    bool staysOpen = false;
    std::function<void()> onLoad, onActivate, onUnload, onClick;
};

class Registry : public ::testing::Test {
 protected:
    void SetUp() override {
        for (const char* name : {"a", "b", "c", "frame"}) {
            pantallas().Register(name, [this, name] {
                auto form = std::make_shared<Screen>(name, host.log);
                form->IsFrameWindow = QLatin1String(name) == QLatin1String("frame");
                if (prepare) prepare(*form);
                return form;
            });
        }
    }
    static Screen& get(const char* name) { return static_cast<Screen&>(pantallas().Get(QString(name))); }
    QString take() { return std::exchange(host.log, {}).join(", "); }

    FakeHost host;
    std::function<void(Screen&)> prepare;
};

TEST_F(Registry, LoadsOnceWhenFirstNamed) {
    EXPECT_EQ(pantallas().Loaded("a"), nullptr);
    EXPECT_EQ(&get("a"), &get("a"));
    EXPECT_EQ(take(), "load a");
    try {
        (void)pantallas().Get("nobody");
        ADD_FAILURE() << "an unknown name was loaded";
    } catch (const basic::RuntimeError& error) {
        EXPECT_EQ(error.number(), 91);
    }
}

TEST_F(Registry, ActivateComesOnlyWhenAnotherWasActive) {
    get("a").Show();
    EXPECT_EQ(take(), "load a, shown a, activate a");
    get("a").Show();
    EXPECT_EQ(take(), "");
    get("b").Show();
    EXPECT_EQ(take(), "load b, shown b, activate b");
    get("a").Show();
    EXPECT_EQ(take(), "activate a");
    get("b").UserActivate();
    EXPECT_EQ(take(), "activate b");
    EXPECT_EQ(pantallas().Active(), &get("b"));
}

TEST_F(Registry, TheFrameWindowCountsOnlyAlone) {
    get("frame").Show();
    get("a").Show();
    take();
    get("frame").Show();
    get("frame").UserActivate();
    EXPECT_EQ(take(), "");
    EXPECT_EQ(pantallas().Active(), &get("a"));
    get("a").UserClose();
    EXPECT_EQ(take(), "unload a, gone a, activate frame, ~a");
}

TEST_F(Registry, UnloadInItsOwnHandlerKeepsTheObjectAndFreesTheName) {
    get("b").Show();
    Screen& first = get("a");
    first.Show();
    take();
    first.onClick = [&] {
        first.Unload();
        EXPECT_EQ(pantallas().Loaded("a"), nullptr);
        first.button.SetEnabled(false);  // the object still lives
        first.Show();                    // but it does not come back
        get("a").Show();
        EXPECT_NE(&get("a"), &first);
    };
    first.UserClick(first.button);
    EXPECT_EQ(take(), "unload a, gone a, load a, shown a, activate a, a clicked, ~a");
}

TEST_F(Registry, ItIsFoundUnderItsNameWhileItsUnloadEventRuns) {
    Screen& a = get("a");
    a.onUnload = [&] {
        EXPECT_EQ(&get("a"), &a);
        pantallas().Unload("a");
        get("frame").Show();
    };
    a.Show();
    take();
    a.UserClose();
    EXPECT_EQ(take(), "unload a, load frame, shown frame, gone a, activate frame, ~a");
}

TEST_F(Registry, QueryUnloadKeepsItOpen) {
    get("a").Show();
    get("a").staysOpen = true;
    take();
    get("a").UserClose();
    EXPECT_EQ(take(), "");
    EXPECT_TRUE(get("a").IsShown());
}

TEST_F(Registry, UnloadedWhileEventsRunInItsFill) {
    Screen& a = get("a");
    host.events = [&] { a.UserClose(); };
    a.onActivate = [&] {
        tarmel::forms::host().DoEvents();
        EXPECT_EQ(pantallas().Loaded("a"), nullptr);
        host.log << "fill ends";
    };
    runAction([] { get("a").Show(); });
    EXPECT_EQ(take(), "load a, shown a, activate a, unload a, gone a, fill ends, ~a");
}

TEST_F(Registry, TheOneUnderAModalIsActivatedWhenTheCommandHasEnded) {
    get("a").Show();
    take();
    host.modal = [](Form& form) { static_cast<Screen&>(form).UserClick(static_cast<Screen&>(form).button); };
    prepare = [](Screen& b) { b.onClick = [&b] { b.Unload(); }; };
    get("a").onClick = [&] {
        get("b").Show(Modality::Modal);
        host.log << "back in a";
    };
    get("a").UserClick(get("a").button);
    EXPECT_EQ(take(),
              "load b, shown b, activate b, modal b, unload b, gone b, b clicked, modal ends, back in a, a "
              "clicked, "
              "activate a, ~b");
}

TEST_F(Registry, TheOneUnderAModalIsNotActivatedWhenItWasClosedMeanwhile) {
    get("a").Show();
    take();
    host.modal = [](Form& form) { form.UserClose(); };
    get("a").onClick = [&] {
        get("b").Show(Modality::Modal);
        get("a").Unload();
    };
    get("a").UserClick(get("a").button);
    EXPECT_FALSE(take().contains("activate a"));
}

TEST_F(Registry, AModalBlocksWhatLiesUnderItAndSettlesItsOwnForms) {
    get("a").Show();
    take();
    host.modal = [&](Form& b) {
        get("a").UserClick(get("a").button);
        get("c").Show();
        get("c").UserClose();
        b.Hide();
    };
    runAction([] { get("b").Show(Modality::Modal); });
    EXPECT_EQ(
        take(),
        "load b, shown b, activate b, modal b, load c, shown c, activate c, unload c, gone c, activate b, "
        "hidden b, modal ends, activate a, ~c");
}

TEST_F(Registry, AnActionOnOneFormThatDisablesTheFocusOfAnotherMovesItOn) {
    get("a").Show();
    get("b").Show();
    TextBox field(get("b"), "field");
    get("b").onActivate = [] { get("a").button.SetEnabled(false); };
    TextBox next(get("a"), "next");
    get("a").UserActivate();
    EXPECT_EQ(get("a").ActiveControl(), &get("a").button);
    get("b").UserActivate();
    EXPECT_EQ(get("a").ActiveControl(), &next);
    EXPECT_EQ(get("b").ActiveControl(), &get("b").button);
}

TEST_F(Registry, AnErrorThatNobodyCatchesIsShownAndEndsTheProgram) {
    get("a").Show();
    get("a").onClick = [] { throw basic::RuntimeError(13); };
    EXPECT_THROW(get("a").UserClick(get("a").button), ProgramEnd);
    ASSERT_EQ(host.boxes.size(), 1U);
    EXPECT_EQ(host.boxes[0].text, "Error nº 13\rTarmel\rNo coinciden los tipos");
    EXPECT_EQ(host.boxes[0].title, "Tarmel");
    EXPECT_EQ(host.boxes[0].buttons, box::Critical);
}

TEST_F(Registry, EndingInsideAModalFormPassesEveryLevel) {
    get("a").Show();
    host.modal = [&](Form&) { host.EndProgram(); };
    get("a").onClick = [&] { get("b").Show(Modality::Modal); };
    EXPECT_THROW(get("a").UserClick(get("a").button), ProgramEnd);
    pantallas().Reset();
    EXPECT_TRUE(pantallas().All().empty());
    SetUp();
    get("a").Show();
    get("a").UserClick(get("a").button);
    EXPECT_TRUE(take().endsWith("activate a, a clicked"));
}

TEST_F(Registry, BoxesWithoutATitleBearTheProgramsName) {
    EXPECT_EQ(MsgBox("x", box::Critical), box::AnswerOK);
    MsgBox("x", box::OK, "Otro");
    EXPECT_EQ(host.boxes[0].title, "Tarmel");
    EXPECT_EQ(host.boxes[1].title, "Otro");
}

}  // namespace
}  // namespace tarmel::forms
