#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "Banco.h"
#include "FormaPrueba.h"

namespace tarmel::desktop {
namespace {

using forms::key::Enter;

/// What hands do on real widgets, and what the screen's model makes of it.
class TecladoTest : public DesktopTest {
 protected:
    /// A key to the widget that has the toolkit's focus, which must be the model's too.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(focused(), key, modifiers);
    }
    void type(const QString& text) {
        for (const QChar character : text) {
            QTest::keyEvent(QTest::Click, focused(), character.toLatin1());
        }
    }
    QWidget* focused() {
        EXPECT_NE(form.ActiveControl(), nullptr);
        QWidget* widget = escritorio.widgetOf(*form.ActiveControl());
        EXPECT_EQ(widget->window()->focusWidget(), widget) << form.ActiveControl()->Name().toStdString();
        return widget;
    }
    void goTo(const forms::Control& control) { QTest::mouseClick(&widget(control), Qt::LeftButton); }
    void compose(const QString& preedit, const QString& commit) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QApplication::sendEvent(focused(), &event);
    }

    FormaPrueba& form = showFormaPrueba(escritorio);
};

TEST_F(TecladoTest, WhatIsTypedReachesTheModelKeyByKeyAndComesBackToTheWidget) {
    goTo(form.txtTexto);
    form.log.clear();
    type(QStringLiteral("a;b.c"));
    press(Qt::Key_Left);
    press(Qt::Key_Backspace);
    press(Qt::Key_Home);
    press(Qt::Key_Delete);
    const QStringList expected{"cambia a",    "cambia ab",  "cambia ab,",
                               "cambia ab,c", "cambia abc", "cambia bc"};
    EXPECT_EQ(form.log, expected);
    EXPECT_EQ(widget<QLineEdit>(form.txtTexto).text(), QStringLiteral("bc"));
    EXPECT_EQ(widget<QLineEdit>(form.txtTexto).cursorPosition(), 0);
}

TEST_F(TecladoTest, ASelectionMadeInTheWidgetIsReplacedByTyping) {
    goTo(form.txtTexto);
    type(QStringLiteral("abcd"));
    press(Qt::Key_Left, Qt::ShiftModifier);
    press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(form.txtTexto.SelStart(), 2);
    EXPECT_EQ(form.txtTexto.SelLength(), 2);
    type(QStringLiteral("x"));
    EXPECT_EQ(form.txtTexto.Text(), QStringLiteral("abx"));
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(form.txtTexto.Text(), QString());
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("abx"));
}

TEST_F(TecladoTest, TheWidgetsOwnEditingCommandsDoNotGoBehindTheModel) {
    goTo(form.txtTexto);
    type(QStringLiteral("abc"));
    press(Qt::Key_Home);
    press(Qt::Key_K, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(widget<QLineEdit>(form.txtTexto).text(), QStringLiteral("abc"));
    EXPECT_EQ(form.txtTexto.Text(), QStringLiteral("abc"));
}

TEST_F(TecladoTest, ComposedCharactersGoTheWayOfTypedOnes) {
    goTo(form.txtTexto);
    form.log.clear();
    compose(QStringLiteral("´"), {});
    EXPECT_EQ(form.txtTexto.Text(), QString());
    compose({}, QStringLiteral("áñ;"));
    const QStringList expected{QStringLiteral("cambia á"), QStringLiteral("cambia áñ")};
    EXPECT_EQ(form.log, expected);
    EXPECT_EQ(widget<QLineEdit>(form.txtTexto).text(), QStringLiteral("áñ"));
}

TEST_F(TecladoTest, PastedTextIsFilteredCharacterByCharacter) {
    QApplication::clipboard()->setText(QStringLiteral("1a2\n34"));
    goTo(form.txtCifras);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.txtCifras.Text(), QStringLiteral("123"));
    EXPECT_EQ(widget<QLineEdit>(form.txtCifras).text(), QStringLiteral("123"));
    QApplication::clipboard()->setText(QStringLiteral("dos\nlíneas"));
    goTo(form.TxtNotas);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.TxtNotas.Text(), QStringLiteral("dos líneas"));
}

TEST_F(TecladoTest, WhatTheModelSetsIsShownAndNotTypedAgain) {
    escritorio.guard([&] { form.txtTexto.SetText(QStringLiteral("de fuera")); });
    EXPECT_EQ(widget<QLineEdit>(form.txtTexto).text(), QStringLiteral("de fuera"));
    EXPECT_EQ(form.log, QStringList{QStringLiteral("cambia de fuera")});
    escritorio.guard([&] { form.TxtNotas.SetText(QStringLiteral("notas")); });
    EXPECT_EQ(widget<QPlainTextEdit>(form.TxtNotas).toPlainText(), QStringLiteral("notas"));
}

TEST_F(TecladoTest, EnterAndTabGoFromFieldToFieldInTheOrderOfTheModel) {
    goTo(form.txtTexto);
    QStringList passed;
    for (int i = 0; i < 9; ++i) {
        // On a button Enter is a click.
        press(i % 2 || i == 8 ? Qt::Key_Tab : Qt::Key_Return);
        passed << form.ActiveControl()->Name();
    }
    const QStringList expected{"txtCifras", "TxtNotas", "cboLista", "dtpDia",  "dtpHora",
                               "chkMarca",  "optUna",   "cmdHacer", "cmdSalir"};
    EXPECT_EQ(passed, expected);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(form.ActiveControl(), &form.cmdHacer);
}

TEST_F(TecladoTest, ATextReachedByTabIsSelectedWholeSoThatTypingReplacesIt) {
    escritorio.guard([&] { form.txtCifras.SetText(QStringLiteral("12")); });
    goTo(form.txtTexto);
    press(Qt::Key_Tab);
    type(QStringLiteral("7"));
    EXPECT_EQ(form.txtCifras.Text(), QStringLiteral("7"));
}

TEST_F(TecladoTest, KeysInAComboFindByPrefixAndTheWidgetFollows) {
    goTo(form.cboLista);
    widget<QComboBox>(form.cboLista).hidePopup();
    type(QStringLiteral("r"));
    QApplication::processEvents();
    EXPECT_EQ(form.cboLista.ListIndex(), 1);
    EXPECT_EQ(widget<QComboBox>(form.cboLista).currentText(), QStringLiteral("R .-. Recuperación"));
    compose({}, QStringLiteral("ñ"));
    EXPECT_EQ(widget<QComboBox>(form.cboLista).currentIndex(), 2);
    press(Qt::Key_Up);
    EXPECT_EQ(form.cboLista.ListIndex(), 1);
    escritorio.guard([&] { form.cboLista.SetListIndex(-1); });
    EXPECT_EQ(widget<QComboBox>(form.cboLista).currentIndex(), -1);
}

TEST_F(TecladoTest, AnItemTakenFromTheDroppedListIsChosenAndTabGoesOn) {
    goTo(form.cboLista);
    auto& combo = widget<QComboBox>(form.cboLista);
    combo.showPopup();
    QTest::keyClick(combo.view(), Qt::Key_Down);
    QTest::keyClick(combo.view(), Qt::Key_Down);
    QTest::keyClick(combo.view(), Qt::Key_Tab);
    EXPECT_EQ(form.cboLista.ListIndex(), combo.currentIndex());
    EXPECT_GE(form.cboLista.ListIndex(), 0);
    EXPECT_EQ(form.ActiveControl(), &form.dtpDia);
}

TEST_F(TecladoTest, DatesAndHoursAreTypedWithDigitsAlone) {
    goTo(form.cboLista);
    widget<QComboBox>(form.cboLista).hidePopup();
    press(Qt::Key_Tab);
    type(QStringLiteral("15032010"));
    press(Qt::Key_Tab);
    type(QStringLiteral("0730"));
    press(Qt::Key_Return);
    EXPECT_EQ(form.dtpDia.Text(), QStringLiteral("15/03/2010"));
    EXPECT_EQ(form.dtpHora.Text(), QStringLiteral("07:30"));
    EXPECT_EQ(form.ActiveControl(), &form.chkMarca);
    escritorio.guard([&] { form.dtpHora.SetValue(basic::Date::timeOfDay(21, 5)); });
    EXPECT_EQ(widget<QDateTimeEdit>(form.dtpHora).text(), QStringLiteral("21:05"));
}

TEST_F(TecladoTest, FunctionKeysAndAltLettersReachTheScreenFromAnyField) {
    goTo(form.txtTexto);
    form.log.clear();
    press(Qt::Key_F3);
    press(Qt::Key_H, Qt::AltModifier);
    EXPECT_EQ(form.log, (QStringList{"F3", "-txtTexto", "+cmdHacer", "cmdHacer click"}));
    press(Qt::Key_X, Qt::AltModifier);
    EXPECT_EQ(form.ActiveControl(), &form.txtTexto) << "a label's letter goes to its field";
    EXPECT_EQ(form.txtTexto.Text(), QString());
}

TEST_F(TecladoTest, BlankWorksButtonsAndMarks) {
    goTo(form.txtTexto);
    form.log.clear();
    for (const forms::Control* control :
         {static_cast<forms::Control*>(&form.chkMarca), static_cast<forms::Control*>(&form.optUna)}) {
        while (form.ActiveControl() != control)
            press(Qt::Key_Tab);
        press(Qt::Key_Space);
    }
    EXPECT_EQ(form.chkMarca.Value(), 1);
    EXPECT_TRUE(form.optUna.Value());
    press(Qt::Key_Down);
    EXPECT_TRUE(form.optOtra.Value());
    EXPECT_FALSE(form.optUna.Value());
}

}  // namespace
}  // namespace tarmel::desktop
