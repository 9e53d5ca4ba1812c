#include <QCheckBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTreeView>

#include "Banco.h"
#include "FormaPrueba.h"
#include "platform/basic/RuntimeError.h"

namespace tarmel::desktop {
namespace {

namespace box = forms::box;

class RatonTest : public DesktopTest {
 protected:
    void click(const forms::Control& control) {
        QWidget& target = widget(control);
        QTest::mouseClick(&target, Qt::LeftButton, {}, {8, target.height() / 2});
    }
    void showList(int rows) {
        escritorio.guard([&] {
            forms::runAction([&] {
                for (int i = 0; i < rows; ++i) {
                    const QString texts[] = {QStringLiteral("      %1").arg(i), QString::number(-i),
                                             QStringLiteral("AB..%1").arg(i)};
                    form.lstFilas.Add(texts);
                }
                form.lstFilas.SetVisible(true);
            });
        });
        QApplication::processEvents();
    }
    /// Clicks at a cell of the list.
    void clickRow(int row, bool twice = false) {
        auto& tree = widget<QTreeView>(form.lstFilas);
        const QPoint at = tree.visualRect(tree.model()->index(row, 0)).center();
        twice ? QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at)
              : QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, at);
    }

    FormaPrueba& form = showFormaPrueba(escritorio);
};

TEST_F(RatonTest, AClickLeavesOneFieldBeforeItReachesTheNext) {
    click(form.txtTexto);
    form.log.clear();
    click(form.txtCifras);
    click(form.chkMarca);
    click(form.cmdHacer);
    EXPECT_EQ(form.log, (QStringList{"-txtTexto", "+txtCifras", "-txtCifras", "+chkMarca", "chkMarca click",
                                     "-chkMarca", "+cmdHacer", "cmdHacer click"}));
    EXPECT_TRUE(widget<QCheckBox>(form.chkMarca).isChecked());
}

TEST_F(RatonTest, AFieldThatRefusesToBeLeftKeepsTheFocusAndTheClickIsLost) {
    form.txtTexto.LostFocus = [this] {
        forms::MsgBox(QStringLiteral("Falta"));
        form.txtTexto.SetFocus();
    };
    click(form.txtTexto);
    form.log.clear();
    click(form.txtCifras);
    click(form.cmdHacer);
    click(form.chkMarca);
    EXPECT_EQ(answers.asked.size(), 3);
    EXPECT_FALSE(form.log.contains(QStringLiteral("cmdHacer click")));
    EXPECT_EQ(form.chkMarca.Value(), 0);
    EXPECT_FALSE(widget<QCheckBox>(form.chkMarca).isChecked());
    EXPECT_EQ(form.ActiveControl(), &form.txtTexto);
    EXPECT_EQ(escritorio.widgetOf(form)->focusWidget(), escritorio.widgetOf(form.txtTexto));
}

TEST_F(RatonTest, WhatIsDisabledOrHiddenCannotBeUsed) {
    escritorio.guard([&] {
        form.cmdHacer.SetEnabled(false);
        form.txtCifras.SetEnabled(false);
        form.cmdSalir.SetVisible(false);
    });
    click(form.cmdHacer);
    click(form.txtCifras);
    EXPECT_TRUE(form.log.isEmpty()) << form.log.join(' ').toStdString();
    EXPECT_FALSE(widget(form.cmdSalir).isVisible());
    EXPECT_FALSE(widget(form.txtCifras).isEnabled());
}

TEST_F(RatonTest, AListShowsWhatItsModelHoldsAndTellsItWhatWasClicked) {
    showList(30);
    auto& tree = widget<QTreeView>(form.lstFilas);
    ASSERT_TRUE(tree.isVisible()) << "the list lies over the fields";
    EXPECT_EQ(tree.model()->rowCount(), 30);
    EXPECT_EQ(tree.model()->index(3, 0).data().toString(), QStringLiteral("3"));
    EXPECT_TRUE(tree.isColumnHidden(1));
    form.log.clear();
    clickRow(2);
    EXPECT_EQ(form.lstFilas.Selected(), 2);
    clickRow(4, true);
    EXPECT_EQ(form.lstFilas.Selected(), 4);
    QTest::mouseClick(tree.header()->viewport(), Qt::LeftButton, {},
                      {tree.header()->sectionViewportPosition(2) + 5, 5});
    EXPECT_EQ(form.log.mid(form.log.indexOf(QStringLiteral("lstFilas click"))),
              (QStringList{"lstFilas click", "lstFilas click", "doble", "columna 3"}));
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(form.lstFilas.Selected(), 5);
    QTest::keyClick(&tree, Qt::Key_PageDown);
    EXPECT_GT(form.lstFilas.Selected(), 6);
    QApplication::processEvents();
    EXPECT_EQ(tree.currentIndex().row(), form.lstFilas.Selected());
}

TEST_F(RatonTest, AListThatComesInFrontHasTheFocusThatTheScreenGivesIt) {
    click(form.txtTexto);
    showList(3);
    escritorio.guard([&] { forms::runAction([&] { form.lstFilas.SetFocus(); }); });
    EXPECT_TRUE(escritorio.widgetOf(form.lstFilas)->hasFocus());
    escritorio.guard([&] {
        forms::runAction([&] {
            form.lstFilas.SetVisible(false);
            form.txtCifras.SetFocus();
        });
    });
    EXPECT_TRUE(escritorio.widgetOf(form.txtCifras)->hasFocus());
}

TEST_F(RatonTest, RemovedSortedAndClearedRowsAreFollowed) {
    showList(5);
    auto& tree = widget<QTreeView>(form.lstFilas);
    escritorio.guard([&] {
        form.lstFilas.Remove(0);
        form.lstFilas.SetCell(0, 2, QStringLiteral("otra"));
        form.lstFilas.Select(2);
    });
    QApplication::processEvents();
    EXPECT_EQ(tree.model()->rowCount(), 4);
    EXPECT_EQ(tree.model()->index(0, 2).data().toString(), QStringLiteral("otra"));
    EXPECT_EQ(tree.currentIndex().row(), 2);
    escritorio.guard([&] {
        form.lstFilas.SetSortKey(1);
        form.lstFilas.SetSortOrder(1);
        form.lstFilas.SetSorted(true);
    });
    QApplication::processEvents();
    EXPECT_EQ(tree.model()->index(0, 0).data().toString(), form.lstFilas.Cell(0, 0).trimmed());
    EXPECT_EQ(tree.header()->sortIndicatorSection(), 0) << "a hidden key is marked on the column left of it";
    escritorio.guard([&] { form.lstFilas.Clear(); });
    QApplication::processEvents();
    EXPECT_EQ(tree.model()->rowCount(), 0);
}

TEST_F(RatonTest, AHundredThousandRowsAreThereAtOnce) {
    QElapsedTimer timer;
    timer.start();
    showList(100000);
    auto& tree = widget<QTreeView>(form.lstFilas);
    tree.verticalScrollBar()->setValue(tree.verticalScrollBar()->maximum());
    tree.grab();
    EXPECT_EQ(tree.model()->rowCount(), 100000);
    EXPECT_TRUE(tree.viewport()->rect().intersects(tree.visualRect(tree.model()->index(99999, 0))));
    EXPECT_EQ(tree.model()->index(99999, 2).data().toString(), QStringLiteral("AB..99999"));
    EXPECT_LT(timer.elapsed(), 20000);
}

struct BoxCase {
    const char* name;
    int buttons;
    QMessageBox::Icon icon;
    QStringList captions;
    const char* byDefault;
    int answer;  // pressed; 0: none planned
    int result;
};

void PrintTo(const BoxCase& c, std::ostream* out) {
    *out << c.name;
}

class BoxTest : public DesktopTest, public testing::WithParamInterface<BoxCase> {};

TEST_P(BoxTest, ShowsTextIconAndButtonsAndAnswersWhatWasPressed) {
    const BoxCase& c = GetParam();
    QString text, title, byDefault;
    QStringList captions;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    answers.look = [&](QMessageBox& widget) {
        text = widget.text();
        title = widget.windowTitle();
        icon = widget.icon();
        for (const auto* button : widget.buttons())
            captions << button->text();
        if (widget.defaultButton()) byDefault = widget.defaultButton()->text();
    };
    if (c.answer) answers.answers = {c.answer};
    int result = 0;
    escritorio.guard(
        [&] { result = forms::MsgBox(QStringLiteral("Uno\rDos <b>"), c.buttons, QStringLiteral("Título")); });
    EXPECT_EQ(text, QStringLiteral("Uno\nDos <b>"));
    EXPECT_EQ(title, QStringLiteral("Título"));
    EXPECT_EQ(icon, c.icon);
    captions.sort();
    QStringList expected = c.captions;
    expected.sort();
    EXPECT_EQ(captions, expected);
    EXPECT_EQ(byDefault, QString::fromUtf8(c.byDefault));
    EXPECT_EQ(result, c.result);
    EXPECT_EQ(escritorio.boxesShown(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, BoxTest,
    testing::Values(
        BoxCase{"plain", box::OK, QMessageBox::NoIcon, {"Aceptar"}, "Aceptar", 0, box::AnswerOK},
        BoxCase{
            "exclamation", box::Exclamation, QMessageBox::Warning, {"Aceptar"}, "Aceptar", 0, box::AnswerOK},
        BoxCase{"information",
                box::Information,
                QMessageBox::Information,
                {"Aceptar"},
                "Aceptar",
                0,
                box::AnswerOK},
        BoxCase{"cancelled",
                box::OKCancel | box::Question,
                QMessageBox::Question,
                {"Aceptar", "Cancelar"},
                "Aceptar",
                box::AnswerCancel,
                box::AnswerCancel},
        BoxCase{"deletionByDefault",
                box::YesNo | box::Critical | box::DefaultButton2,
                QMessageBox::Critical,
                {"&Sí", "&No"},
                "&No",
                0,
                box::AnswerNo},
        BoxCase{"deletion",
                box::YesNo | box::Critical | box::DefaultButton2,
                QMessageBox::Critical,
                {"&Sí", "&No"},
                "&No",
                box::AnswerYes,
                box::AnswerYes}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(RatonTest, AModalScreenHoldsTheCommandThatOpenedItUntilItCloses) {
    escritorio.guard([&] { form.Unload(); });
    FormaPrueba* modal = nullptr;
    bool visible = false;
    bool held = true;
    answers.inModal = [&](forms::Form& shown) {
        modal = static_cast<FormaPrueba*>(&shown);
        visible = escritorio.widgetOf(shown)->isVisible() && escritorio.widgetOf(shown)->isModal();
        modal->cmdSalir.Click = [modal] { modal->Unload(); };
        QTest::mouseClick(escritorio.widgetOf(modal->cmdSalir), Qt::LeftButton);
    };
    escritorio.guard([&] {
        forms::runAction([&] { forms::pantallas().Get(FormaPrueba::kName).Show(forms::Modality::Modal); });
        held = false;
    });
    ASSERT_NE(modal, nullptr);
    EXPECT_TRUE(visible);
    EXPECT_FALSE(held);
    EXPECT_EQ(forms::pantallas().Loaded(FormaPrueba::kName), nullptr);
}

TEST_F(RatonTest, TheEndOfTheProgramLeavesEveryLoopAndNothingRunsAfterIt) {
    escritorio.guard([&] { form.Unload(); });
    bool after = false;
    answers.inModal = [&](forms::Form& shown) {
        auto& modal = static_cast<FormaPrueba&>(shown);
        modal.cmdHacer.Click = [] { forms::host().EndProgram(); };
        QTest::mouseClick(escritorio.widgetOf(modal.cmdHacer), Qt::LeftButton);
    };
    escritorio.guard([&] {
        forms::runAction([&] { forms::pantallas().Get(FormaPrueba::kName).Show(forms::Modality::Modal); });
        after = true;
    });
    EXPECT_FALSE(after);
    EXPECT_TRUE(escritorio.ended());
    escritorio.guard([&] { after = true; });
    EXPECT_FALSE(after);
    escritorio.run();  // returns at once
}

TEST_F(RatonTest, AnErrorThatNothingCatchesIsShownAndEndsTheProgram) {
    form.cmdHacer.Click = [] { throw basic::RuntimeError(basic::error::TypeMismatch); };
    click(form.cmdHacer);
    ASSERT_EQ(answers.asked.size(), 1);
    EXPECT_TRUE(answers.asked.at(0).startsWith(QStringLiteral("Error nº 13\r")))
        << answers.asked.at(0).toStdString();
    EXPECT_TRUE(escritorio.ended());
}

TEST_F(RatonTest, AScreenThatUnloadsItselfInAHandlerOfItsOwnLeavesNothingOnTheDesktop) {
    QPointer<QWidget> window = escritorio.widgetOf(form);
    form.cmdSalir.Click = [this] { form.Unload(); };
    click(form.cmdSalir);
    EXPECT_FALSE(window && window->isVisible());
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}

TEST_F(RatonTest, TheCloseBoxAsksTheScreen) {
    QWidget* window = escritorio.widgetOf(form);
    window->close();
    EXPECT_EQ(forms::pantallas().Loaded(FormaPrueba::kName), nullptr);
}

TEST_F(RatonTest, AWindowThatDoesNotFitItsScreenIsRefused) {
    Surface surface;
    auto* stray = new QLineEdit(&surface);
    stray->setObjectName(QStringLiteral("txtSobra"));
    auto* wrong = new QLineEdit(&surface);
    wrong->setObjectName(QStringLiteral("chkMarca"));
    const QStringList faults = FormView::mismatches(form, surface);
    EXPECT_TRUE(faults.contains(QStringLiteral("frmPrueba.txtSobra no tiene control")));
    EXPECT_TRUE(faults.contains(QStringLiteral("frmPrueba.cmdHacer no tiene ventana")));
    EXPECT_EQ(faults.size(), 1 + static_cast<qsizetype>(form.Controls().size()) - 1);
}

}  // namespace
}  // namespace tarmel::desktop
