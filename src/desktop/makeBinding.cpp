#include <QMainWindow>
#include <QStatusBar>

#include "desktop/BarBindings.h"
#include "desktop/Binding.h"
#include "desktop/ChoiceBindings.h"
#include "desktop/ListBinding.h"
#include "desktop/PlainBindings.h"
#include "desktop/TextBindings.h"

namespace tarmel::desktop {

using forms::Control;
using forms::Kind;

namespace {

/// The binding of one kind, when the widget is of the class that shows it.
template <typename BindingType, typename ControlType, typename WidgetType>
std::unique_ptr<Binding> join(FormView& view, Control& control, QWidget& widget) {
    auto* shown = qobject_cast<WidgetType*>(&widget);
    if (!shown) return nullptr;
    return std::make_unique<BindingType>(view, static_cast<ControlType&>(control), *shown);
}

}  // namespace

std::unique_ptr<Binding> makeBinding(FormView& view, Control& control, QWidget& widget) {
    switch (control.kind()) {
        case Kind::TextBox:
            if (auto line = join<LineBinding, forms::TextBox, QLineEdit>(view, control, widget)) return line;
            return join<MemoBinding, forms::TextBox, QPlainTextEdit>(view, control, widget);
        case Kind::ComboBox:
        case Kind::DataCombo:
            return join<ComboBinding, forms::ComboBox, QComboBox>(view, control, widget);
        case Kind::DatePicker:
            return join<DateBinding, forms::DatePicker, QDateTimeEdit>(view, control, widget);
        case Kind::Label:
            return join<LabelBinding, forms::Label, QLabel>(view, control, widget);
        case Kind::CommandButton:
        case Kind::OptionButton:
        case Kind::CheckBox:
            return join<ButtonBinding, Control, QAbstractButton>(view, control, widget);
        case Kind::ListView:
            return join<ListBinding, forms::ListView, QTreeView>(view, control, widget);
        case Kind::Frame:
            return join<FrameBinding, forms::Frame, QWidget>(view, control, widget);
        case Kind::TabStrip:
            return join<TabBinding, forms::TabStrip, QTabWidget>(view, control, widget);
        case Kind::MenuItem:
            return join<MenuBinding, forms::MenuItem, QMainWindow>(view, control, widget);
        case Kind::Toolbar:
            return join<ToolbarBinding, forms::Toolbar, QToolBar>(view, control, widget);
        case Kind::StatusBar:
            return join<StatusBinding, forms::StatusBar, QStatusBar>(view, control, widget);
        case Kind::ProgressBar:
            return join<ProgressBinding, forms::ProgressBar, QProgressBar>(view, control, widget);
    }
    return nullptr;
}

}  // namespace tarmel::desktop
