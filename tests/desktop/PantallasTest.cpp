#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTabWidget>

#include "Banco.h"
#include "core/frm01_Inicio.h"
#include "core/frm02_Matricula.h"
#include "core/frm03_Principal.h"
#include "desktop/DataLabel.h"
#include "exchange/frm04_ActualizarLocalidades.h"
#include "exchange/frm05_ActualizarEspecies.h"
#include "exchange/frm09_ImportarDatos.h"
#include "exchange/frm10_ExportarDatos.h"
#include "queries/frm11_Consultas.h"
#include "queries/frm12_OpcionesConsulta.h"
#include "queries/frm14_ContadorRegistros.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"
#include "sheets/frm08_ImprimirHojas.h"
#include "sheets/frm13_BorrarRegistrosAnteriores.h"
#include "store/frm15_AlmacenAnillas.h"
#include "store/frm16_ConsultaAnillas.h"
#include "store/frm17_GestionAnillas.h"
#include "store/frm18_SeleccionAnillas.h"

namespace tarmel::desktop {
namespace {

/// What the main window leaves to a screen on the smallest display: menu, toolbar, tabs and status bar are
/// taken off 1366 x 768.
constexpr QSize kPage(1366, 768 - 140);

struct Screen {
    QString name;
    std::shared_ptr<forms::Form> (*make)();
};

template <typename T>
std::shared_ptr<forms::Form> make() {
    return std::make_shared<T>();
}

void PrintTo(const Screen& screen, std::ostream* out) {
    *out << screen.name.toStdString();
}

/// The real windows over the real screens, not loaded: no database is needed to see how they fit.
class PantallasTest : public DesktopTest, public testing::WithParamInterface<Screen> {
 protected:
    PantallasTest() {
        const ViewKind* kind = viewKind(GetParam().name);
        view = std::make_unique<FormView>(escritorio, *form, kind->build(), kind->place);
        QWidget& surface = view->surface();
        if (kind->place == Place::Page) surface.resize(kPage);
        surface.show();
        QApplication::processEvents();
    }

    template <typename Check>
    void eachWidget(Check check) {
        for (const forms::Control* control : form->Controls()) {
            QWidget* widget = view->widgetOf(*control);
            if (widget && widget != &view->surface()) check(*control, *widget);
        }
    }

    std::shared_ptr<forms::Form> form = GetParam().make();
    std::unique_ptr<FormView> view;
};

TEST_P(PantallasTest, EveryEditableControlIsNamedForReadersOfTheScreen) {
    using forms::Kind;
    eachWidget([](const forms::Control& control, const QWidget& widget) {
        const Kind kind = control.kind();
        const bool editable = kind == Kind::TextBox || kind == Kind::ComboBox || kind == Kind::DataCombo ||
                              kind == Kind::DatePicker || kind == Kind::ListView;
        if (!editable) return;
        EXPECT_FALSE(widget.accessibleName().isEmpty()) << control.Name().toStdString();
    });
}

TEST_P(PantallasTest, TheOrderOfTabsIsTheOrderOfTyping) {
    QList<const QWidget*> expected;
    eachWidget([&](const forms::Control& control, const QWidget& widget) {
        if (control.IsFocusable()) expected << &widget;
    });
    if (expected.isEmpty()) return;
    QList<const QWidget*> chain;
    const QWidget* at = expected.constFirst();
    do {
        if (expected.contains(at)) chain << at;
        at = at->nextInFocusChain();
    } while (at != expected.constFirst());
    EXPECT_EQ(chain, expected);
}

TEST_P(PantallasTest, NothingIsClippedOnTheSmallestDisplay) {
    QWidget& surface = view->surface();
    EXPECT_LE(surface.minimumSizeHint().width(), 1366);
    EXPECT_LE(surface.minimumSizeHint().height(), surface.height());
    // One layer after the other comes in front, as the screen's states do.
    int checked = 0;
    const auto check = [&] {
        QApplication::processEvents();
        for (const auto* widget : surface.findChildren<QWidget*>()) {
            if (!widget->isVisible() || dynamic_cast<const DataLabel*>(widget)) continue;
            if (widget->objectName() == QLatin1String("decoDibujo")) continue;
            const bool caption =
                qobject_cast<const QLabel*>(widget) || qobject_cast<const QAbstractButton*>(widget);
            const bool field =
                qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QComboBox*>(widget);
            if ((!caption && !field) || widget->objectName().isEmpty()) continue;
            ++checked;
            const QSize wanted = widget->minimumSizeHint();
            if (caption) {
                EXPECT_GE(widget->width(), wanted.width()) << widget->objectName().toStdString();
            }
            EXPECT_GE(widget->height(), wanted.height()) << widget->objectName().toStdString();
            EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry()))
                << widget->objectName().toStdString();
        }
    };
    const auto stacks = surface.findChildren<QStackedWidget*>(QStringLiteral("decoCapas"));
    if (stacks.isEmpty()) check();
    for (auto* tabs : surface.findChildren<QTabWidget*>()) {
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentIndex(i);
            check();
        }
    }
    for (auto* stack : stacks) {
        for (int i = 0; i < stack->count(); ++i) {
            stack->setCurrentIndex(i);
            check();
        }
    }
    EXPECT_GT(checked, 0);
}

TEST_F(DesktopTest, PagesTurnByControlAndTabAndNotByAPressBetweenTheirFields) {
    frm11_Consultas form;
    FormView view(escritorio, form, viewKind(frm11_Consultas::kName)->build(), Place::Dialog);
    view.surface().show();
    form.UserGoTo(form.dbcboEspecie);
    QTest::mouseClick(view.widgetOf(form.fraEspecies), Qt::LeftButton, {}, {3, 3});
    EXPECT_EQ(form.ActiveControl(), &form.dbcboEspecie);
    QTest::keyClick(view.widgetOf(form.dbcboEspecie), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(form.SSTab1.Tab(), 1);
    form.UserKey(forms::key::Tab);
    EXPECT_EQ(form.ActiveControl(), &form.DesdeAnillamiento);
}

INSTANTIATE_TEST_SUITE_P(
    Screens, PantallasTest,
    testing::Values(Screen{frm01_Inicio::kName, &make<frm01_Inicio>},
                    Screen{frm02_Matricula::kName, &make<frm02_Matricula>},
                    Screen{frm03_Principal::kName, &make<frm03_Principal>},
                    Screen{frm04_ActualizarLocalidades::kName, &make<frm04_ActualizarLocalidades>},
                    Screen{frm05_ActualizarEspecies::kName, &make<frm05_ActualizarEspecies>},
                    Screen{frm06_HojasCampo::kName, &make<frm06_HojasCampo>},
                    Screen{frm07_DetallesHojasCampo::kName, &make<frm07_DetallesHojasCampo>},
                    Screen{frm08_ImprimirHojas::kName, &make<frm08_ImprimirHojas>},
                    Screen{frm09_ImportarDatos::kName, &make<frm09_ImportarDatos>},
                    Screen{frm10_ExportarDatos::kName, &make<frm10_ExportarDatos>},
                    Screen{frm13_BorrarRegistrosAnteriores::kName, &make<frm13_BorrarRegistrosAnteriores>},
                    Screen{frm14_ContadorRegistros::kName, &make<frm14_ContadorRegistros>},
                    Screen{frm11_Consultas::kName, &make<frm11_Consultas>},
                    Screen{frm12_OpcionesConsulta::kName, &make<frm12_OpcionesConsulta>},
                    Screen{frm15_AlmacenAnillas::kName, &make<frm15_AlmacenAnillas>},
                    Screen{frm16_ConsultaAnillas::kName, &make<frm16_ConsultaAnillas>},
                    Screen{frm17_GestionAnillas::kName, &make<frm17_GestionAnillas>},
                    Screen{frm18_SeleccionAnillas::kName, &make<frm18_SeleccionAnillas>}),
    [](const auto& row) { return row.param.name.toStdString(); });

}  // namespace
}  // namespace tarmel::desktop
