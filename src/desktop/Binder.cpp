#include "desktop/Binder.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <algorithm>
#include <string_view>

#include "desktop/Keys.h"
#include "desktop/Looks.h"

namespace {

constexpr double paintsPerSecond = 15;
constexpr double burst = 5;
constexpr qint64 overdueMs = 30;
// What was put off waits this much longer for the next turn, which is behind a send and so costs the antenna nothing; a
// timer alone might paint just when the antenna answers.
constexpr int patienceMs = 30;

/// The name of the array to which a control belongs; empty when it stands alone.
std::string_view ArrayOf(std::string_view name)
{
    const std::size_t bar = name.rfind('_');
    if (bar == std::string_view::npos || bar + 1 == name.size()) return {};
    const bool numbered = name.find_first_not_of("0123456789", bar + 1) == std::string_view::npos;
    return numbered ? name.substr(0, bar) : std::string_view();
}

/// An option of an array that was loaded while the program runs: a button like the first one of the array, below the
/// one before it. Null for any other control.
QRadioButton* MakeOption(const QWidget& window, const Control& control)
{
    const QString name = Words(control.Name), array = Words(ArrayOf(control.Name));
    const auto option = [&](int index) {
        return window.findChild<QRadioButton*>(array + u'_' + QString::number(index));
    };
    const int index = array.isEmpty() ? 0 : name.mid(array.size() + 1).toInt();
    QRadioButton* const before = index > 0 ? option(index - 1) : nullptr;
    auto* place = before ? qobject_cast<QBoxLayout*>(before->parentWidget()->layout()) : nullptr;
    if (!place) return nullptr;
    auto* made = new QRadioButton(before->parentWidget());
    made->setObjectName(name);
    made->setAutoExclusive(before->autoExclusive());
    place->insertWidget(place->indexOf(before) + 1, made);
    QWidget::setTabOrder(before, made);
    return made;
}

/// The character that a key types; 0 for one that types none, as Delete or Ctrl+A.
int Typed(const QKeyEvent& key)
{
    constexpr int enter = 13, backspace = 8;
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) return enter;
    if (key.key() == Qt::Key_Backspace) return backspace;
    // Ctrl and Alt together are the AltGr of some keyboards, which types.
    const bool command = (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == Qt::ControlModifier;
    if (command || key.text().isEmpty() || !key.text().at(0).isPrint()) return 0;
    return key.text().at(0).unicode();
}

}  // namespace

Binder::Binder(CaughtFailure& caught) : caught_(caught), paintsLeft_(burst)
{
    sincePaint_.start();
    later_.setSingleShot(true);
    later_.setTimerType(Qt::PreciseTimer);
    connect(&later_, &QTimer::timeout, this, &Binder::Paint);
}

void Binder::Attach(Form& form, QWidget& window)
{
    Bound& bound = bound_.emplace_back(Bound{&form, &window, 0, {}});
    BindNew(bound);
    if (auto* dialog = qobject_cast<QDialog*>(&window)) {
        // Closing a dialog is its Cancel button, or the one that puts it away.
        connect(dialog, &QDialog::rejected, this, [this, &form] {
            const auto cancel = std::find_if(form.Controls.begin(), form.Controls.end(), [](const Control* control) {
                return control->Name == "cmdCancel" || control->Name == "cmdDismiss" || control->Name == "cmdClose";
            });
            form.Changed = true;
            ++FormsRevision;
            if (cancel != form.Controls.end() && form.Visible) Click(**cancel);
        });
    }
    ++FormsRevision;
}

QWidget* Binder::WindowOf(const Form& form) const
{
    for (const Bound& bound : bound_)
        if (bound.form == &form) return bound.window;
    return nullptr;
}

void Binder::BindNew(Bound& bound)
{
    while (bound.controls < bound.form->Controls.size()) {
        Control& control = *bound.form->Controls[bound.controls++];
        Bind(bound, control);
        control.Changed = true;  // a widget that is new shows nothing yet
    }
}

void Binder::Bind(Bound& bound, Control& control)
{
    const QString name = Words(control.Name);
    if (auto* widget = bound.window->findChild<QWidget*>(name)) return Bind(bound, control, *widget);
    if (auto* option = MakeOption(*bound.window, control)) return Bind(bound, control, *option);
    auto* action = bound.window->findChild<QAction*>(name);
    if (!action) {
        // Items of an array under a menu come and go while the program runs.
        const QString array = Words(ArrayOf(control.Name));
        auto* menu = array.endsWith(u"_Item") ? bound.window->findChild<QMenu*>(array.chopped(5)) : nullptr;
        if (!menu) return;
        action = menu->addAction(QString());
        action->setObjectName(name);
        action->setCheckable(true);
        menu->setToolTipsVisible(true);
    }
    bound.shown.emplace_back(control, *action);
    connect(action, &QAction::triggered, this, [this, &control] { Click(control); });
}

void Binder::Bind(Bound& bound, Control& control, QWidget& widget)
{
    bound.shown.emplace_back(control, widget);
    ConnectWidget(bound, control, widget);
}

void Binder::ConnectWidget(Bound& bound, Control& control, QWidget& widget)
{
    if (qobject_cast<QRadioButton*>(&widget)) {
        ConnectOption(bound, control, widget);
    } else if (auto* button = qobject_cast<QAbstractButton*>(&widget)) {
        connect(button, &QAbstractButton::clicked, this, [this, &control, button] {
            if (button->isCheckable()) control.Value = button->isChecked() ? 1 : 0;
            Click(control);
        });
    } else if (auto* choice = qobject_cast<QComboBox*>(&widget)) {
        choice->setFocusPolicy(Qt::StrongFocus);
        choice->installEventFilter(this);
        connect(choice, &QComboBox::activated, this, [this, &control](int index) {
            control.ListIndex = index;
            Click(control);
        });
    } else if (auto* tabs = qobject_cast<QTabWidget*>(&widget)) {
        connect(tabs, &QTabWidget::currentChanged, this, [this, &control](int tab) {
            control.ListIndex = tab;
            Click(control);
        });
    } else if (auto* list = qobject_cast<QListWidget*>(&widget)) {
        ConnectList(control, *list);
    } else if (auto* line = qobject_cast<QLineEdit*>(&widget)) {
        lines_[line] = &control;
        line->installEventFilter(this);
        connect(line, &QLineEdit::textEdited, this, [this, &control](const QString& words) {
            control.Text = words.toStdString();
            if (control.Change) Act(control.Change);
        });
    }
}

void Binder::ConnectOption(Bound& bound, Control& control, QWidget& option)
{
    Form& form = *bound.form;
    auto* button = qobject_cast<QRadioButton*>(&option);
    if (!control.Group.empty()) GroupOf(bound, control)->addButton(button);
    connect(button, &QAbstractButton::clicked, this, [this, &form, &control] {
        Touch(control);
        Act([&form, &control] { SelectOption(form, control); });
    });
}

/// The toolkit's own group of the options that exclude each other, so that the arrow keys walk through them.
QButtonGroup* Binder::GroupOf(Bound& bound, const Control& option)
{
    const QString name = u"group "_qs + Words(option.Group);
    if (auto* group = bound.window->findChild<QButtonGroup*>(name)) return group;
    auto* group = new QButtonGroup(bound.window);
    group->setObjectName(name);
    return group;
}

void Binder::ConnectList(Control& control, QListWidget& list)
{
    // The entry that has the keyboard isn't chosen by that: a list that gets the focus puts it on its first one.
    connect(&list, &QListWidget::itemSelectionChanged, this, [this, &control, &list] {
        control.ListIndex = list.selectedItems().isEmpty() ? -1 : list.row(list.selectedItems().front());
        Click(control);
    });
    // Twice is chosen and done: the button that Enter presses too.
    connect(&list, &QListWidget::itemDoubleClicked, this, [&list] {
        for (QPushButton* button : list.window()->findChildren<QPushButton*>())
            if (button->isDefault()) return button->click();
    });
}

/// The toolkit may have toggled the widget by itself; whatever the handler does, it shows the control's state.
void Binder::Touch(Control& control)
{
    control.Changed = true;
    ++FormsRevision;
}

void Binder::Click(Control& control)
{
    Touch(control);
    Act([&control] {
        // The second press of a double click may come ahead of the painting that shows the button as disabled.
        if (control.Click && control.Enabled) control.Click();
    });
}

void Binder::Act(const std::function<void()>& handler)
{
    caught_.Run(handler);
    Paint();
}

void Binder::Paint()
{
    later_.stop();
    if (paintedRevision_ == FormsRevision) return;
    paintedRevision_ = FormsRevision;
    paintsLeft_ =
        std::min(burst, paintsLeft_ + static_cast<double>(sincePaint_.restart()) * paintsPerSecond / 1000) - 1;
    paintsLeft_ = std::max(paintsLeft_, 0.0);
    for (Bound& bound : bound_) {
        BindNew(bound);
        for (ShownControl& shown : bound.shown) {
            if (!shown.control.Changed) continue;
            shown.control.Changed = false;
            shown.Apply();
        }
        PaintForm(*bound.form, *bound.window);
    }
    if (Painted) Painted();
}

void Binder::PaintForm(Form& form, QWidget& window)
{
    if (!form.Changed) return;
    form.Changed = false;
    window.setWindowTitle(Words(form.Caption()));
    window.setEnabled(form.Enabled);
    window.setVisible(form.Visible);
}

void Binder::PaintInTurn()
{
    if (paintedRevision_ == FormsRevision) return;
    const double left = paintsLeft_ + static_cast<double>(sincePaint_.elapsed()) * paintsPerSecond / 1000;
    if (left >= 1)
        Paint();
    else if (!later_.isActive())
        later_.start(static_cast<int>((1 - left) * 1000 / paintsPerSecond) + patienceMs);
}

void Binder::PaintOverdue()
{
    if (sincePaint_.elapsed() >= overdueMs) PaintInTurn();
}

bool Binder::eventFilter(QObject* watched, QEvent* event)
{
    // A wheel that scrolls the page must not choose another board on its way.
    if (event->type() == QEvent::Wheel && qobject_cast<QComboBox*>(watched)) {
        event->ignore();
        return true;
    }
    if (event->type() != QEvent::KeyPress || !lines_.contains(watched)) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const int code = Typed(*key);
    Control& control = *lines_.at(watched);
    const auto& handler = code == 0 ? control.KeyDown : control.KeyPress;
    const int pressed = code == 0 && key->modifiers() == Qt::NoModifier ? KeyCode(key->key()) : code;
    if (pressed == 0 || !handler) return false;
    bool swallowed = false;
    Act([&] { swallowed = handler(pressed); });
    return swallowed;
}
