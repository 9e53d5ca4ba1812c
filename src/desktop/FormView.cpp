#include "desktop/FormView.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QStackedWidget>
#include <QTabBar>
#include <algorithm>
#include <set>

#include "desktop/Escritorio.h"
#include "desktop/Keys.h"
#include "desktop/Surface.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Pantallas.h"

namespace tarmel::desktop {

using forms::Control;
using forms::Kind;
using forms::Property;

namespace {

/// The toolkit names its own parts so; ours begin with "deco" where no control stands behind them.
bool isDecoration(const QWidget& widget) {
    const QString name = widget.objectName();
    // The arrows of a row of tabs bear names of their own.
    const bool ofTabs = qobject_cast<const QTabBar*>(widget.parentWidget());
    return ofTabs || name.isEmpty() || name.startsWith(QLatin1String("qt_")) ||
           name.startsWith(QLatin1String("deco"));
}

QWidget* find(const QWidget& surface, const QString& name) {
    return surface.findChild<QWidget*>(name);
}

bool needsWidget(const Control& control) {
    return control.kind() != Kind::MenuItem;
}

QChar mnemonicOf(const QString& caption) {
    for (qsizetype at = caption.indexOf(u'&'); at >= 0 && at + 1 < caption.size();
         at = caption.indexOf(u'&', at + 2)) {
        if (caption.at(at + 1) != u'&') return caption.at(at + 1).toUpper();
    }
    return {};
}

QString withoutMnemonic(QString caption) {
    caption.replace(QLatin1String("&&"), QStringLiteral("\x01"));
    caption.remove(u'&');
    caption.replace(QLatin1Char('\x01'), u'&');
    while (caption.endsWith(u':'))
        caption.chop(1);
    return caption.trimmed();
}

/// The letter of Alt and a letter; null for any other key.
QChar commandLetter(const QKeyEvent& event) {
    if (event.modifiers() != Qt::AltModifier || event.key() <= 0x20 || event.key() > 0xFFFF) return {};
    const QChar letter(static_cast<char16_t>(event.key()));
    return letter.isLetterOrNumber() ? letter.toUpper() : QChar();
}

}  // namespace

FormView::FormView(Escritorio& escritorio, forms::Form& form, std::unique_ptr<QWidget> surface, Place where)
    : escritorio_(escritorio), form_(&form), place_(where), surface_(std::move(surface)) {
    bindAll();
    const auto key = [this](QKeyEvent& event) { return keyFromWindow(event); };
    const auto close = [this] { act([](forms::Form& f) { f.UserClose(); }); };
    if (auto* frame = dynamic_cast<FrameSurface*>(surface_.get())) {
        frame->closeAsked = close;
    } else if (auto* plain = dynamic_cast<Surface*>(surface_.get())) {
        plain->closeAsked = close;
        plain->keyPressed = key;
    }
    orderTabs();
    nameForReaders();
    form.setObserver(this);
    captionChanged();
    for (const auto& binding : bindings_) {
        binding->showAll();
    }
    for (auto* stack : surface_->findChildren<QStackedWidget*>()) {
        arrange(*stack);
    }
}

FormView::~FormView() {
    if (form_) form_->setObserver(nullptr);
}

QStringList FormView::mismatches(const forms::Form& form, const QWidget& surface) {
    QStringList found;
    std::set<QString> controls;
    for (const Control* control : form.Controls()) {
        controls.insert(control->Name());
        if (needsWidget(*control) && !find(surface, control->Name())) {
            found << QStringLiteral("%1.%2 no tiene ventana").arg(form.Name(), control->Name());
        }
    }
    for (const auto* widget : surface.findChildren<QWidget*>()) {
        if (isDecoration(*widget) || controls.contains(widget->objectName())) continue;
        found << QStringLiteral("%1.%2 no tiene control").arg(form.Name(), widget->objectName());
    }
    return found;
}

void FormView::bindAll() {
    QStringList faults = mismatches(*form_, *surface_);
    for (Control* control : form_->Controls()) {
        QWidget* widget = needsWidget(*control) ? find(*surface_, control->Name()) : surface_.get();
        if (!widget) continue;
        auto binding = makeBinding(*this, *control, *widget);
        if (!binding) {
            faults << QStringLiteral("%1.%2: una ventana de clase %3 no sirve")
                          .arg(form_->Name(), control->Name(),
                               QString::fromLatin1(widget->metaObject()->className()));
            continue;
        }
        byControl_[control] = binding.get();
        bindings_.push_back(std::move(binding));
    }
    if (faults.isEmpty()) return;
    throw basic::RuntimeError(basic::error::ObjectNotSet, faults.join(u'\n'), QStringLiteral("Tarmel"));
}

/// The order of typing, for assistive tools that walk the window themselves.
void FormView::orderTabs() {
    QWidget* before = nullptr;
    for (const Control* control : form_->Controls()) {
        QWidget* widget = widgetOf(*control);
        if (!widget || widget == surface_.get() || !control->IsFocusable()) continue;
        if (before) QWidget::setTabOrder(before, widget);
        before = widget;
    }
}

void FormView::nameForReaders() {
    for (const auto& binding : bindings_) {
        QWidget& widget = binding->widget();
        if (&widget == surface_.get()) continue;
        QString name = binding->control().AccessibleName();
        if (name.isEmpty() && widget.accessibleName().isEmpty()) {
            for (const auto* label : surface_->findChildren<QLabel*>()) {
                if (label->buddy() == &widget) name = withoutMnemonic(label->text());
            }
        }
        if (!name.isEmpty()) widget.setAccessibleName(name);
    }
}

Binding* FormView::bindingOf(const Control* control) const {
    const auto found = byControl_.find(control);
    return found == byControl_.end() ? nullptr : found->second;
}

QWidget* FormView::widgetOf(const Control& control) const {
    if (control.kind() == Kind::MenuItem) return nullptr;
    const Binding* binding = bindingOf(&control);
    return binding ? &binding->widget() : nullptr;
}

void FormView::detach() {
    form_ = nullptr;
}

// --- What the user does

void FormView::act(const std::function<void(forms::Form&)>& action) {
    if (!form_) return;
    escritorio_.guard([&] {
        // A hand that works in a window has brought it to the front first.
        if (!form_->IsFrameWindow && forms::pantallas().Active() != form_) form_->UserActivate();
        if (form_) action(*form_);
    });
}

bool FormView::goTo(Control& control) {
    if (form_ && form_->ActiveControl() == &control) {
        showFocus();
        return true;
    }
    const int boxes = escritorio_.boxesShown();
    bool there = false;
    act([&](forms::Form& form) { there = form.UserGoTo(control); });
    if (form_) showFocus();
    return there && isLive() && escritorio_.boxesShown() == boxes;
}

bool FormView::claims(const QKeyEvent& event) const {
    if (!form_) return false;
    if (const QChar letter = commandLetter(event); !letter.isNull()) return shortcutTarget(letter) != nullptr;
    return isFormKey(keyCode(event)) || isTyping(event);
}

bool FormView::formKey(QKeyEvent& event) {
    if (!form_) return false;
    if (const QChar letter = commandLetter(event); !letter.isNull()) {
        Control* target = shortcutTarget(letter);
        if (!target) return false;
        const Kind kind = target->kind();
        const bool clicks =
            kind == Kind::CommandButton || kind == Kind::CheckBox || kind == Kind::OptionButton;
        act([&](forms::Form& form) { clicks ? form.UserClick(*target) : void(form.UserGoTo(*target)); });
        return true;
    }
    const int code = keyCode(event);
    if (!isFormKey(code)) return false;
    if (Binding* binding = bindingOf(form_->ActiveControl())) binding->commit();
    const bool back = event.key() == Qt::Key_Backtab || (event.modifiers() & Qt::ShiftModifier);
    const QPointer<FormView> self(this);
    tabbing_ = code == forms::key::Tab || code == forms::key::Enter;
    act([&](forms::Form& form) { form.UserKey(code, back); });
    if (self) tabbing_ = false;
    return true;
}

bool FormView::keyFromWindow(QKeyEvent& event) {
    if (!form_) return false;
    if (formKey(event)) return true;
    const int code = keyCode(event);
    if (!code && !isTyping(event)) return false;
    act([&](forms::Form& form) {
        if (code) return form.UserKey(code, event.modifiers() & Qt::ShiftModifier);
        for (const QChar character : event.text()) {
            form.UserChar(character);
        }
    });
    return true;
}

/// The next control behind the one that has the focus whose caption, or whose label's, bears the letter.
Control* FormView::shortcutTarget(QChar letter) const {
    std::vector<Control*> candidates;
    for (const auto& binding : bindings_) {
        Control& control = binding->control();
        if (&binding->widget() == surface_.get() || !control.CanAct()) continue;
        if (const auto* button = qobject_cast<const QAbstractButton*>(&binding->widget())) {
            if (mnemonicOf(button->text()) == letter) candidates.push_back(&control);
        }
    }
    for (const auto* label : surface_->findChildren<QLabel*>()) {
        if (!label->buddy() || !label->isVisible() || mnemonicOf(label->text()) != letter) continue;
        for (const auto& binding : bindings_) {
            if (&binding->widget() == label->buddy() && binding->control().CanAct()) {
                candidates.push_back(&binding->control());
            }
        }
    }
    if (candidates.empty()) return nullptr;
    const auto active = std::find(candidates.begin(), candidates.end(), form_->ActiveControl());
    if (active == candidates.end() || active + 1 == candidates.end()) return candidates.front();
    return *(active + 1);
}

// --- What the screen reports

void FormView::controlChanged(Control& control, Property property, int row) {
    if (!form_) return;
    if (Binding* binding = bindingOf(&control)) binding->show(property, row);
}

void FormView::captionChanged() {
    if (!form_) return;
    const QString caption = form_->Caption().isEmpty() ? forms::kProgramName : form_->Caption();
    surface_->setWindowTitle(caption);
}

void FormView::refreshed() {
    surface_->repaint();
    escritorio_.paintNow();
}

void FormView::showFocus() {
    if (!form_) return;
    Binding* binding = bindingOf(form_->ActiveControl());
    if (!binding || &binding->widget() == surface_.get()) return;
    QWidget& widget = binding->widget();
    if (!widget.hasFocus()) widget.setFocus(Qt::OtherFocusReason);
}

void FormView::broughtForward(QWidget& page) {
    cameForward_[&page] = ++forwardCount_;
    if (auto* stack = qobject_cast<QStackedWidget*>(page.parentWidget())) arrange(*stack);
    page.raise();
}

void FormView::arrange(QStackedWidget& stack) {
    int front = -1;
    int frontRank = -1;
    for (int i = 0; i < stack.count(); ++i) {
        const QWidget* page = stack.widget(i);
        const auto bound = std::find_if(bindings_.begin(), bindings_.end(),
                                        [&](const auto& b) { return &b->widget() == page; });
        if (bound == bindings_.end() || !(*bound)->control().Visible()) continue;
        const auto forward = cameForward_.find(page);
        const int rank = forward == cameForward_.end() ? 0 : forward->second;
        if (rank < frontRank) continue;
        front = i;
        frontRank = rank;
    }
    if (front >= 0) stack.setCurrentIndex(front);
    for (auto& [page, rank] : cameForward_) {
        if (page->parentWidget() == &stack && stack.currentWidget() != page) rank = 0;
    }
    showFocus();
}

}  // namespace tarmel::desktop
