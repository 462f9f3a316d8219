#include "desktop/tour/walker.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <stdexcept>

#include "host/kit/grid.h"

namespace tour {

using test::Settle;

namespace {

constexpr int kMostSteps = 40;

[[noreturn]] void Complain(const std::string& what) { throw std::runtime_error(what); }

}  // namespace

void Walker::Take(const char* name) {
  Settle();
  camera_.Take(mill_.Window(), QString::fromUtf8(name));
}

void Walker::Type(const char* text) { test::TypeText(QString::fromUtf8(text)); }

void Walker::TypeAndEnter(const char* text) {
  Type(text);
  Press(Qt::Key_Return);
}

void Walker::Press(Qt::Key key, Qt::KeyboardModifiers modifiers, int times) {
  for (int time = 0; time < times; ++time) test::Press(key, modifiers);
}

void Walker::OpenByMenu(Qt::Key menu, Qt::Key entry, std::string_view screen_class) {
  Alt(menu);
  if (!test::WaitFor([] { return QApplication::activePopupWidget() != nullptr; })) Complain("the menu does not open");
  Press(entry);
  // Offscreen no window manager gives the keyboard back when a menu has gone.
  mill_.Window().activateWindow();
  Settle();
  const host::Control* focused = mill_.Desk().Focused();
  if (focused == nullptr || focused->Owner().ClassName() != screen_class) {
    Complain("the menu leads to " + Here() + ", not to " + std::string(screen_class));
  }
}

std::string Walker::Here() const {
  const host::Control* focused = mill_.Desk().Focused();
  return focused == nullptr ? "nowhere" : focused->Name();
}

void Walker::At(const char* component) const {
  if (Here() != component) Complain("the keyboard is in " + Here() + ", not in " + component);
}

void Walker::Shows(const char* name, const char* text) const {
  const QWidget& widget = mill_.WidgetOf(mill_.Desk().Focused()->Owner(), name);
  QString shown;
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) shown = line->text();
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) shown = label->text();
  if (shown != QString::fromUtf8(text)) Complain(std::string(name) + " shows " + shown.toStdString() + ", not " + text);
}

std::string Walker::Cell() const {
  const auto* grid = dynamic_cast<const host::Grid*>(mill_.Desk().Focused());
  return grid == nullptr ? std::string() : grid->SelectedField();
}

void Walker::CellShows(const char* field, const char* text) const {
  const auto* grid = dynamic_cast<const host::Grid*>(mill_.Desk().Focused());
  if (grid == nullptr) Complain("the keyboard is in no list, but in " + Here());
  const std::string shown = grid->GetDataset()[field].DisplayText();
  if (shown != text) Complain(std::string(field) + " shows " + shown + ", not " + text);
}

void Walker::Until(const std::string& where, const std::function<bool()>& there,
                   const std::function<void()>& step) const {
  for (int steps = 0; !there(); ++steps) {
    if (steps == kMostSteps) Complain("no way to " + where + "; the keyboard is in " + Here());
    step();
  }
}

void Walker::ToCell(const char* field) {
  Until(
      field, [&] { return Cell() == field; }, [this] { Press(Qt::Key_Return); });
}

void Walker::ToControl(const char* name) {
  Until(
      name, [&] { return Here() == name; },
      [this] {
        const host::Control* focused = mill_.Desk().Focused();
        if (dynamic_cast<const host::Grid*>(focused) != nullptr) {
          Press(Qt::Key_Return, Qt::ControlModifier);
        } else {
          Press(dynamic_cast<const host::Button*>(focused) != nullptr ? Qt::Key_Tab : Qt::Key_Return);
        }
      });
}

void Walker::Inside(const char* title, const std::function<void(QWidget&)>& inside, const std::function<void()>& act) {
  Await(title, inside);
  act();
  // A button of a dialog that is pressed by its letter acts a moment later.
  if (!test::WaitFor([this] { return mill_.GetBoxes().Met(); })) Complain(std::string("did not come up: ") + title);
  Settle();
}

void Walker::Await(const char* title, const std::function<void(QWidget&)>& inside) {
  mill_.GetBoxes().ExpectDialog(QString::fromUtf8(title), inside);
}

void Walker::Pick(const char* entry, const std::function<void()>& await) {
  mill_.GetBoxes().ExpectMenu(QString::fromUtf8(entry));
  await();
  Press(Qt::Key_F10, Qt::ShiftModifier);
  if (!test::WaitFor([this] { return mill_.GetBoxes().Met(); })) Complain(std::string("does not lead on: ") + entry);
  mill_.Window().activateWindow();
  Settle();
}

void Walker::Box(const char* title, const char* name, const std::function<void()>& act, Qt::Key answer) {
  Inside(
      title,
      [this, name, answer](QWidget& box) {
        camera_.Take(box, QString::fromUtf8(name));
        Press(answer);
      },
      act);
}

void Walker::Yes(const char* question, const std::function<void()>& act) {
  mill_.ExpectBox(QString::fromUtf8(question), test::Reply::kYes);
  act();
  Settle();
  if (!mill_.GetBoxes().Met()) Complain(std::string("was not asked: ") + question);
}

void Walker::Lookup(const char* title, const char* typed, const char* name) {
  Inside(
      title,
      [this, typed, name](QWidget& dialog) {
        Type(typed);
        // The list follows a moment after the last letter.
        test::WaitFor([] { return false; }, 300);
        camera_.Take(dialog, QString::fromUtf8(name));
        Press(Qt::Key_Return);
      },
      [this] { Press(Qt::Key_F4); });
}

void Walker::CloseScreen() {
  const std::size_t open = mill_.Desk().Screens().size();
  Press(Qt::Key_W, Qt::ControlModifier);
  if (mill_.Desk().Screens().size() + 1 != open) Complain("the screen of " + Here() + " does not close");
}

}  // namespace tour
