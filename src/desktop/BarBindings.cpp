#include "desktop/BarBindings.h"

#include <QDateTime>
#include <QIcon>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QStatusBar>
#include <algorithm>

#include "desktop/FormView.h"
#include "platform/forms/Form.h"

namespace tarmel::desktop {

using forms::Property;
using PanelKind = forms::StatusBar::PanelKind;

namespace {

bool hasEntriesBelow(const forms::MenuItem& item) {
    const auto& controls = item.form().Controls();
    return std::any_of(controls.begin(), controls.end(), [&](const forms::Control* control) {
        return control->kind() == forms::Kind::MenuItem &&
               static_cast<const forms::MenuItem*>(control)->Parent() == &item;
    });
}

}  // namespace

MenuBinding::MenuBinding(FormView& view, forms::MenuItem& item, QMainWindow& window)
    : Binding(view, item, window), item_(item) {
    auto* menu = item.Parent() ? window.findChild<QMenu*>(item.Parent()->Name()) : nullptr;
    if (item.IsSeparator()) {
        action_ = menu ? menu->addSeparator() : nullptr;
        return;
    }
    if (hasEntriesBelow(item)) {
        QMenu* below = menu ? menu->addMenu(item.Caption()) : window.menuBar()->addMenu(item.Caption());
        below->setObjectName(item.Name());
        action_ = below->menuAction();
        return;
    }
    action_ = menu ? menu->addAction(item.Caption()) : window.menuBar()->addAction(item.Caption());
    action_->setObjectName(item.Name());
    action_->setMenuRole(QAction::NoRole);
    connect(action_, &QAction::triggered, this,
            [this] { view_.act([this](forms::Form& form) { form.UserClick(item_); }); });
}

void MenuBinding::showAll() {
    show(Property::Enabled, -1);
    show(Property::Visible, -1);
}

void MenuBinding::show(Property property, int) {
    if (!action_) return;
    if (property == Property::Enabled) action_->setEnabled(item_.Enabled());
    if (property == Property::Visible) action_->setVisible(item_.Visible());
}

ToolbarBinding::ToolbarBinding(FormView& view, forms::Toolbar& toolbar, QToolBar& widget)
    : Binding(view, toolbar, widget) {
    widget.setContextMenuPolicy(Qt::PreventContextMenu);
    // What the window's description put into the bar stands behind the buttons.
    QAction* behind = widget.actions().isEmpty() ? nullptr : widget.actions().constFirst();
    for (const auto& button : toolbar.Buttons()) {
        auto* action =
            new QAction(QIcon(QStringLiteral(":/iconos/%1.svg").arg(button.key)), button.tip, &widget);
        widget.insertAction(behind, action);
        if (QWidget* seen = widget.widgetForAction(action)) {
            seen->setFocusPolicy(Qt::NoFocus);
            seen->setAccessibleName(button.tip);
        }
        connect(action, &QAction::triggered, this, [this, &toolbar, key = button.key] {
            view_.act([&](forms::Form& form) { form.UserToolbar(toolbar, key); });
        });
        actions_[button.key] = action;
    }
}

QAction* ToolbarBinding::action(const QString& key) const {
    const auto found = actions_.find(key);
    return found == actions_.end() ? nullptr : found->second;
}

StatusBinding::StatusBinding(FormView& view, forms::StatusBar& bar, QWidget& widget)
    : Binding(view, bar, widget), bar_(bar) {
    auto* status = qobject_cast<QStatusBar*>(&widget);
    if (!status) return;
    status->setSizeGripEnabled(false);
    for (const auto& panel : bar.Panels()) {
        auto* label = new QLabel(status);
        label->setObjectName(QStringLiteral("deco") + panel.key);
        label->setToolTip(panel.tip);
        label->setTextFormat(Qt::PlainText);
        label->setProperty("panel", panel.key);
        panel.kind == PanelKind::Text ? status->addWidget(label, 1) : status->addPermanentWidget(label);
        if (panel.kind != PanelKind::Text) label->setCursor(Qt::PointingHandCursor);
        watch(*label);
        labels_.push_back(label);
    }
    clock_.setInterval(1000);
    connect(&clock_, &QTimer::timeout, this, &StatusBinding::showPanels);
    clock_.start();
}

void StatusBinding::showAll() {
    Binding::showAll();
    showPanels();
}

void StatusBinding::show(Property property, int row) {
    if (property == Property::Text) {
        showPanels();
        // A command that takes long has just said so: it is to be read while it runs.
        for (QLabel* label : labels_) {
            label->repaint();
        }
        return;
    }
    Binding::show(property, row);
}

void StatusBinding::showPanels() {
    if (!view_.isLive()) return;
    const QDateTime now = QDateTime::currentDateTime();
    for (size_t i = 0; i < labels_.size(); ++i) {
        const auto& panel = bar_.Panels()[i];
        QString text = panel.text;
        if (panel.kind == PanelKind::Date) text = now.toString(QStringLiteral("dd/MM/yyyy"));
        if (panel.kind == PanelKind::Time) text = now.toString(QStringLiteral("H:mm"));
        if (labels_[i]->text() != text) labels_[i]->setText(text);
    }
}

bool StatusBinding::eventFilter(QObject* watched, QEvent* event) {
    if (!view_.isLive() || event->type() != QEvent::MouseButtonRelease) return false;
    if (static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) return false;
    const QString key = watched->property("panel").toString();
    view_.act([&](forms::Form& form) { form.UserPanel(bar_, key); });
    return true;
}

}  // namespace tarmel::desktop
