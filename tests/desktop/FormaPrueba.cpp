#include "FormaPrueba.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>

#include "desktop/Surface.h"
#include "platform/forms/Pantallas.h"

namespace tarmel::desktop {

FormaPrueba::FormaPrueba() : Form(kName, QStringLiteral("Prueba")) {
    fraCampos.Holds(
        {&txtTexto, &txtCifras, &TxtNotas, &cboLista, &dtpDia, &dtpHora, &chkMarca, &optUna, &optOtra});
    txtCifras.SetDigitsOnly(true);
    txtCifras.SetMaxLength(3);
    for (const char* text : {"A .-. Anillamiento", "R .-. Recuperación", "Ñ .-. Ninguno"}) {
        cboLista.AddItem(QString::fromUtf8(text));
    }
    for (const char* title : {"Nº", "DifFecha", "Anilla"}) {
        lstFilas.AddColumn(QString::fromUtf8(title), QByteArray(title) == "DifFecha" ? 0 : 1000);
    }
    lstFilas.SetVisible(false);
    for (forms::Control* control : Controls()) {
        const QString name = control->Name();
        control->GotFocus = [this, name] { log << QLatin1Char('+') + name; };
        control->LostFocus = [this, name] { log << QLatin1Char('-') + name; };
        control->Click = [this, name] { log << name + QLatin1String(" click"); };
    }
    txtTexto.Change = [this] { log << QLatin1String("cambia ") + txtTexto.Text(); };
    txtTexto.KeyPress = [](int& character) {
        if (character == u';') character = 0;
        if (character == u'.') character = u',';
    };
    lstFilas.DblClick = [this] { log << QStringLiteral("doble"); };
    lstFilas.ColumnClick = [this](int column) { log << QStringLiteral("columna %1").arg(column); };
}

void FormaPrueba::FormKeyDown(int& key) {
    if (key >= forms::key::F1) log << QStringLiteral("F%1").arg(key - forms::key::F1 + 1);
}

void FormaPrueba::FormKeyPress(int& character) {
    if (character != forms::key::Enter) return;
    character = 0;
    SendTab();
}

namespace {

template <typename WidgetType>
WidgetType* named(const char* name, QWidget* parent) {
    auto* widget = new WidgetType(parent);
    widget->setObjectName(QString::fromUtf8(name));
    return widget;
}

std::unique_ptr<QWidget> buildSurface() {
    auto surface = std::make_unique<Surface>();
    auto* outer = new QVBoxLayout(surface.get());
    auto* stack = named<QStackedWidget>("decoCapas", surface.get());
    auto* fields = named<QWidget>("fraCampos", stack);
    auto* rows = new QFormLayout(fields);
    auto* label = named<QLabel>("lblTexto", fields);
    auto* text = named<QLineEdit>("txtTexto", fields);
    label->setBuddy(text);
    rows->addRow(label, text);
    rows->addRow(named<QLineEdit>("txtCifras", fields));
    rows->addRow(named<QPlainTextEdit>("TxtNotas", fields));
    rows->addRow(named<QComboBox>("cboLista", fields));
    rows->addRow(named<QDateTimeEdit>("dtpDia", fields));
    rows->addRow(named<QDateTimeEdit>("dtpHora", fields));
    rows->addRow(named<QCheckBox>("chkMarca", fields));
    rows->addRow(named<QRadioButton>("optUna", fields));
    rows->addRow(named<QRadioButton>("optOtra", fields));
    stack->addWidget(fields);
    stack->addWidget(named<QTreeView>("lstFilas", stack));
    outer->addWidget(stack);
    outer->addWidget(named<QPushButton>("cmdHacer", surface.get()));
    outer->addWidget(named<QPushButton>("cmdSalir", surface.get()));
    return surface;
}

}  // namespace

FormaPrueba& showFormaPrueba(Escritorio& escritorio, Place place) {
    forms::pantallas().Register(FormaPrueba::kName, [] { return std::make_shared<FormaPrueba>(); });
    std::erase_if(viewKinds(), [](const ViewKind& kind) { return kind.form == FormaPrueba::kName; });
    viewKinds().push_back({FormaPrueba::kName, place, &buildSurface});
    escritorio.guard([] { forms::pantallas().Get<FormaPrueba>().Show(); });
    auto& form = forms::pantallas().Get<FormaPrueba>();
    form.log.clear();
    return form;
}

}  // namespace tarmel::desktop
