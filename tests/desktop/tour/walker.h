// The hands on the keyboard, and the camera.
#pragma once

#include <Qt>
#include <functional>
#include <string>
#include <string_view>

#include "desktop/support/desktop_mill.h"
#include "desktop/tour/camera.h"

namespace tour {

/// Somebody who does by keyboard what the manual tells. What does not go as told throws std::runtime_error.
class Walker {
 public:
  Walker(test::DesktopMill& mill, const Camera& camera) : mill_(mill), camera_(camera) {}

  test::DesktopMill& Mill() { return mill_; }
  const Camera& GetCamera() const { return camera_; }

  /// A picture of the main window.
  void Take(const char* name);
  void Type(const char* text);
  void TypeAndEnter(const char* text);
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1);
  void Alt(Qt::Key letter) { Press(letter, Qt::AltModifier); }

  /// A screen by the underlined letters of its menu and its entry, and nothing else.
  void OpenByMenu(Qt::Key menu, Qt::Key entry, std::string_view screen_class);
  /// Insists that the keyboard is where the manual says: the name of an input, a grid or a button.
  void At(const char* component) const;
  /// Insists on what an input, a label or the cell of a column shows.
  void Shows(const char* name, const char* text) const;
  void CellShows(const char* field, const char* text) const;
  /// To a column of the grid that has the keyboard, by Enter from cell to cell.
  void ToCell(const char* field);
  /// To a control of the screen: Enter in an input, Ctrl+Enter in a grid, Tab on a button.
  void ToControl(const char* name);

  /// What comes up while `act` runs, a picture of it, and the key that answers it.
  void Box(const char* title, const char* name, const std::function<void()>& act, Qt::Key answer = Qt::Key_Return);
  /// The same for a box that gets no picture: its text, and "Sim".
  void Yes(const char* question, const std::function<void()>& act);
  /// F4, what is typed into the search line, a picture, Enter.
  void Lookup(const char* title, const char* typed, const char* name);
  /// Something modal comes up while `act` runs; `inside` acts there.
  void Inside(const char* title, const std::function<void(QWidget&)>& inside, const std::function<void()>& act);
  /// The same without an act: it comes up while the next act runs, after what is awaited already.
  void Await(const char* title, const std::function<void(QWidget&)>& inside);
  /// Shift+F10 and an entry of the menu that comes up; `await` says what the entry leads to.
  void Pick(const char* entry, const std::function<void()>& await);
  /// Ctrl+W on a screen that has nothing unsaved.
  void CloseScreen();

 private:
  std::string Here() const;
  std::string Cell() const;
  void Until(const std::string& where, const std::function<bool()>& there, const std::function<void()>& step) const;

  test::DesktopMill& mill_;
  const Camera& camera_;
};

}  // namespace tour
