#include "app/desktop/bindings/binding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcutEvent>
#include <QTabWidget>
#include <QToolButton>

#include "app/desktop/basics/text.h"
#include "app/desktop/bindings/choice_bindings.h"
#include "app/desktop/bindings/edit_bindings.h"
#include "app/desktop/bindings/keys.h"
#include "app/desktop/bindings/plain_bindings.h"
#include "app/desktop/bindings/screen_bindings.h"

namespace app::desktop {
namespace {

bool IsMenuKey(const QKeyEvent& event) { return event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier; }

}  // namespace

Binding::Binding(ScreenBindings& window, host::Control& control, QWidget& widget)
    : window_(window), control_(control), widget_(widget) {}

void Binding::Watch(QWidget& part) { part.installEventFilter(this); }

void Binding::LetGo() {
  widget_.disconnect(this);
  widget_.removeEventFilter(this);
}

void Binding::Show() {
  widget_.setEnabled(control_.Enabled() || !Greys());
  widget_.setVisible(control_.Visible());
  for (QLabel* caption : window_.CaptionsOf(widget_)) {
    const QString text = ToQt(control_.Caption());
    // A grid has no caption of its own; what the form writes above it stays.
    const bool named = dynamic_cast<const host::Grid*>(&control_) == nullptr;
    if (named && caption->text() != text) caption->setText(text);
    caption->setVisible(control_.Visible());
  }
}

void Binding::TakeKeyboard() { widget_.setFocus(); }

bool Binding::HasKeyboard() const { return widget_.hasFocus(); }

bool Binding::CanTakeKeyboard() const { return control_.Enabled() && widget_.isEnabled() && widget_.isVisible(); }

void Binding::Mnemonic(QObject* /*part*/) { window_.Enter(control_); }

bool Binding::eventFilter(QObject* watched, QEvent* event) {
  if (window_.Gone()) return false;
  switch (event->type()) {
    case QEvent::ShortcutOverride: {
      const host::Key key = ScreenKey(*static_cast<QKeyEvent*>(event));
      if (key == host::Key::kNone || Keeps(key)) return false;
      event->accept();
      return true;
    }
    case QEvent::KeyPress:
      // Not every window system makes this key ask for the menu.
      if (IsMenuKey(*static_cast<QKeyEvent*>(event)) && ShowMenu(widget_.mapToGlobal(widget_.rect().bottomLeft()))) {
        event->accept();
        return true;
      }
      if (!window_.PressKey(this, *static_cast<QKeyEvent*>(event))) return false;
      event->accept();
      return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
      return EntersByPress() && OnMouse(*event);
    case QEvent::Wheel:
      // A list that is only being passed over by the wheel must not change.
      if (HasKeyboard()) return false;
      event->ignore();
      return true;
    case QEvent::Shortcut:
      // Two of one letter: a mistake of the form, and nobody knows which was meant.
      if (!static_cast<QShortcutEvent*>(event)->isAmbiguous()) Mnemonic(watched);
      return true;
    case QEvent::ContextMenu:
      return ShowMenu(static_cast<QContextMenuEvent*>(event)->globalPos());
    case QEvent::FocusIn:
      window_.KeyboardCame(*this);
      return false;
    default:
      return false;
  }
}

// A press that was refused is nobody's, and so is what belongs to it.
bool Binding::OnMouse(QEvent& event) {
  const bool press = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
  if (!press) {
    const bool dead = dead_press_;
    if (event.type() == QEvent::MouseButtonRelease) dead_press_ = false;
    if (dead) event.accept();
    return dead;
  }
  const int interruptions = window_.Interruptions();
  const bool entered = window_.Enter(control_);
  // A box that was shown on the way has swallowed the release of this press.
  dead_press_ = !entered || window_.Interruptions() != interruptions;
  if (!dead_press_ && !window_.Gone() && !HasKeyboard()) TakeKeyboard();
  if (dead_press_) event.accept();
  return dead_press_;
}

bool Binding::ShowMenu(QPoint at) {
  host::PopupMenu* const popup = control_.Popup;
  if (popup == nullptr) return false;
  const bool opens = window_.Do([this] {
    const host::ActResult entered = window_.Desk().Enter(control_);
    if (entered != host::ActResult::kDone || window_.Gone()) return entered;
    return window_.Desk().OpenMenu(control_);
  });
  if (!opens || window_.Gone()) return true;
  auto* menu = new QMenu(&widget_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const host::MenuItem& item : popup->Items()) {
    if (!item.visible) continue;
    const std::string name = item.name;
    QAction* entry = menu->addAction(ToQt(item.caption));
    entry->setObjectName(ToQt(name));
    connect(entry, &QAction::triggered, this,
            [this, name] { window_.Do([&] { return window_.Desk().PickMenu(window_.GetScreen(), name); }); });
  }
  AddStandardEntries(*menu);
  if (menu->isEmpty()) {
    delete menu;
  } else {
    menu->popup(at);
  }
  return true;
}

std::unique_ptr<Binding> NewBinding(ScreenBindings& window, host::Control& control, QWidget& widget) {
  if (auto* edit = dynamic_cast<host::Edit*>(&control)) {
    auto* memo = qobject_cast<QPlainTextEdit*>(&widget);
    auto* line = qobject_cast<QLineEdit*>(&widget);
    const bool lines = edit->Kind() == host::EditKind::kMemo;
    if (lines && memo != nullptr) return std::make_unique<MemoBinding>(window, *edit, *memo);
    if (!lines && line != nullptr) return std::make_unique<LineBinding>(window, *edit, *line);
  } else if (auto* label = dynamic_cast<host::Label*>(&control)) {
    if (auto* shown = qobject_cast<QLabel*>(&widget)) return std::make_unique<LabelBinding>(window, *label, *shown);
  } else if (auto* box = dynamic_cast<host::CheckBox*>(&control)) {
    if (auto* tick = qobject_cast<QCheckBox*>(&widget)) return std::make_unique<CheckBinding>(window, *box, *tick);
  } else if (auto* radios = dynamic_cast<host::RadioGroup*>(&control)) {
    if (auto* group = qobject_cast<QGroupBox*>(&widget)) return std::make_unique<RadioBinding>(window, *radios, *group);
  } else if (auto* choice = dynamic_cast<host::Choice*>(&control)) {
    if (auto* list = qobject_cast<QComboBox*>(&widget)) return std::make_unique<ListBinding>(window, *choice, *list);
  } else if (auto* button = dynamic_cast<host::Button*>(&control)) {
    auto* shown = qobject_cast<QAbstractButton*>(&widget);
    const bool pushes =
        qobject_cast<QPushButton*>(&widget) != nullptr || qobject_cast<QToolButton*>(&widget) != nullptr;
    if (pushes) return std::make_unique<ButtonBinding>(window, *button, *shown);
  } else if (auto* pages = dynamic_cast<host::PageControl*>(&control)) {
    if (auto* tabs = qobject_cast<QTabWidget*>(&widget)) return std::make_unique<PageBinding>(window, *pages, *tabs);
  } else if (auto* grid = dynamic_cast<host::Grid*>(&control)) {
    if (auto* panel = qobject_cast<GridPanel*>(&widget)) return std::make_unique<GridBinding>(window, *grid, *panel);
  }
  return nullptr;
}

}  // namespace app::desktop
