#include <QAction>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBrowser>

#include "Banco.h"
#include "FormaPrueba.h"
#include "core/frm02_Matricula.h"
#include "core/frm03_Principal.h"
#include "desktop/FrameWindow.h"

namespace tarmel::desktop {
namespace {

class VentanaPrincipalTest : public DesktopTest {
 protected:
    VentanaPrincipalTest() {
        auto& registry = forms::pantallas();
        registry.Register(frm02_Matricula::kName, [] { return std::make_shared<frm02_Matricula>(); });
        registry.Register(frm03_Principal::kName, [] { return std::make_shared<frm03_Principal>(); });
        escritorio.guard([] { forms::pantallas().Get<frm03_Principal>().Show(); });
    }

    QTabWidget& tabs() { return *escritorio.frame()->findChild<QTabWidget*>(QStringLiteral("decoPestanas")); }
    frm03_Principal& principal() { return forms::pantallas().Get<frm03_Principal>(); }
    QAction* menu(const char* name) {
        return escritorio.actionOf(
            *static_cast<forms::MenuItem*>(principal().Find(QString::fromLatin1(name))));
    }
};

TEST_F(VentanaPrincipalTest, TheMenuIsTheModels) {
    QStringList bar;
    for (const QAction* action : escritorio.frame()->menuBar()->actions())
        bar << action->text();
    EXPECT_EQ(bar, (QStringList{"&Actualización de tablas", "&Hojas de campo", "A&nillas", "&Imprimir",
                                "&Datos", "&Consultar Datos", "&Utilidades", "&Salir"}));
    for (const forms::Control* control : principal().Controls()) {
        if (control->kind() != forms::Kind::MenuItem) continue;
        const auto& item = static_cast<const forms::MenuItem&>(*control);
        const QAction* action = escritorio.actionOf(item);
        ASSERT_NE(action, nullptr) << item.Name().toStdString();
        EXPECT_EQ(action->isSeparator(), item.IsSeparator());
    }
    for (const auto& button : principal().tlbBarraHerramientas.Buttons()) {
        const QAction* action = escritorio.actionOf(principal().tlbBarraHerramientas, button.key);
        ASSERT_NE(action, nullptr);
        EXPECT_FALSE(action->icon().pixmap(28).isNull()) << button.key.toStdString();
        EXPECT_EQ(action->toolTip(), button.tip);
    }
}

TEST_F(VentanaPrincipalTest, ScreensOpenAsTabsUnderTheirCaptionAndCloseByTheirCross) {
    FormaPrueba& form = showFormaPrueba(escritorio, Place::Page);
    ASSERT_EQ(tabs().count(), 1);
    escritorio.guard([&] { form.SetCaption(QStringLiteral("Uno & dos")); });
    EXPECT_EQ(tabs().tabText(0), QStringLiteral("Uno && dos"));
    EXPECT_EQ(escritorio.frame()->windowTitle(), QStringLiteral("Captura de datos de campo"));
    escritorio.guard([] { forms::pantallas().Get<FormaPrueba>().Show(); });
    EXPECT_EQ(tabs().count(), 1) << "a second time brings the same one forward";
    QTest::mouseClick(tabs().tabBar()->tabButton(0, QTabBar::RightSide), Qt::LeftButton);
    EXPECT_EQ(tabs().count(), 0);
    EXPECT_EQ(forms::pantallas().Loaded(FormaPrueba::kName), nullptr);
    EXPECT_FALSE(escritorio.ended());
}

TEST_F(VentanaPrincipalTest, AScreensLetterGoesBeforeTheMenus) {
    FormaPrueba& form = showFormaPrueba(escritorio, Place::Page);
    QTest::mouseClick(&widget(form.txtTexto), Qt::LeftButton);
    form.log.clear();
    // Through the window, as the platform sends it: the menu bar has an entry with the same letter, which
    // ends the program.
    QTest::keyClick(escritorio.frame()->windowHandle(), Qt::Key_S, Qt::AltModifier);
    EXPECT_FALSE(escritorio.ended());
    EXPECT_TRUE(form.log.contains(QStringLiteral("cmdSalir click"))) << form.log.join(' ').toStdString();
}

TEST_F(VentanaPrincipalTest, TheStatusBarSaysWhatTheProgramDoes) {
    escritorio.guard([&] {
        principal().staStatusBar.SetPanelText(QStringLiteral("Messages"),
                                              QStringLiteral("Cargando Vista..."));
    });
    QStringList texts;
    for (const auto* label : widget(principal().staStatusBar).findChildren<QLabel*>())
        texts << label->text();
    ASSERT_EQ(texts.size(), 3);
    EXPECT_EQ(texts.at(0), QStringLiteral("Cargando Vista..."));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d\\d/\\d\\d/\\d{4}$")).match(texts.at(1)).hasMatch());
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d{1,2}:\\d\\d$")).match(texts.at(2)).hasMatch());
}

TEST_F(VentanaPrincipalTest, TheHelpOpensInAWindowOfTheProgram) {
    QDir(folder.path()).mkdir(QStringLiteral("ayuda"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(TARMEL_DATA_DIR "/../docs/manual/index.html"),
                            folder.filePath(QStringLiteral("ayuda/index.html"))));
    menu("mnuAyuda")->trigger();
    const QTextBrowser* shown = nullptr;
    for (const QWidget* top : QApplication::topLevelWidgets()) {
        if (top->isVisible() && !shown) shown = top->findChild<QTextBrowser*>();
    }
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(shown->toPlainText().contains(QStringLiteral("código de anillador")));
}

TEST_F(VentanaPrincipalTest, ClosingTheMainWindowEndsTheProgram) {
    escritorio.frame()->close();
    EXPECT_TRUE(escritorio.ended());
}

}  // namespace
}  // namespace tarmel::desktop
