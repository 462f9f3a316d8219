// The parts a screen is made of. They hold what is shown and what a person may do; a window, a script or a test
// drives them through the Desk and never needs to know the screen's class.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/date.h"

namespace host {

class PageControl;
class PopupMenu;
class Screen;
class TPesquisa;

enum class Key {
  kNone,
  kTab,
  kEnter,
  kEscape,
  kInsert,
  kDelete,
  kUp,
  kDown,
  kF1,
  kF2,
  kF3,
  kF4,
  kF5,
  kF6,
  kF7,
  kF8,
  kF9,
  kF10,
  kF11,
  kF12
};

using Handler = std::function<void()>;
using KeyHandler = std::function<void(Key)>;

/// A named part of a screen; registers itself with the screen on construction and lives as long as the screen.
class Component {
 public:
  Component(Screen& owner, std::string name);
  virtual ~Component() = default;
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  const std::string& Name() const { return name_; }
  Screen& Owner() const { return owner_; }

  /// Called after anything that a view shows has changed; set by whoever shows the component.
  Handler OnViewChange;
  void NotifyView() const {
    if (OnViewChange) OnViewChange();
  }

 private:
  Screen& owner_;
  std::string name_;
};

/// A component that a person sees and, when enabled and visible, can act on.
class Control : public Component {
 public:
  Control(Screen& owner, std::string name, std::string caption);

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  /// Can take the focus; labels, panels and page controls cannot.
  virtual bool Focusable() const { return true; }

  /// Puts the control on a page: it is in sight only while that page is the active one.
  void StandOn(PageControl& pages, int page);
  /// The page control it stands on; null when it is always in sight.
  PageControl* Pages() const { return pages_; }
  int Page() const { return page_; }
  /// In sight: visible, on an active page of a page control that is itself in sight.
  bool InSight() const;
  /// Makes the pages active that it stands on, the outermost first.
  void Reveal();

  /// Asks for the focus. Inside an event it takes effect when the event ends; see Desk.
  void SetFocus();

  Handler OnEnter;
  Handler OnExit;  // may throw Abort: the focus then stays
  KeyHandler OnKeyDown;
  PopupMenu* Popup = nullptr;  // its context menu
  /// Where Tab and Enter lead from here instead of to the next control, which they do all the same while that one
  /// cannot take the focus; null for the next one. Of the same screen. A click goes where it was aimed and Shift+Tab to
  /// the control before.
  Control* GoesOnTo = nullptr;

 private:
  std::string caption_;
  bool enabled_ = true;
  bool visible_ = true;
  PageControl* pages_ = nullptr;
  int page_ = 0;
};

/// Text that the program shows: a description beside a code, a caption that changes.
class Label : public Control {
 public:
  Label(Screen& owner, std::string name, std::string text = {});
  const std::string& Text() const { return text_; }
  void SetText(std::string_view text);
  bool Focusable() const override { return false; }

 private:
  std::string text_;
};

enum class EditKind { kText, kMemo, kNumber, kInteger, kDate };

/// An input of one line, or of several (kMemo).
class Edit : public Control {
 public:
  /// `max_length` in characters, 0 for no limit. `format` is the display format of a number ("0.000").
  Edit(Screen& owner, std::string name, std::string caption, EditKind kind = EditKind::kText,
       std::size_t max_length = 0, std::string format = {});

  EditKind Kind() const { return kind_; }
  std::size_t MaxLength() const { return max_length_; }
  const std::string& Format() const { return format_; }
  bool ReadOnly() const { return read_only_; }
  void SetReadOnly(bool read_only) { read_only_ = read_only; }

  /// What is shown: text, "DD/MM/YYYY", or the number in its format with a decimal comma.
  const std::string& Text() const { return text_; }
  /// Puts a text in and fires OnChange when it differs; neither OnEnter nor OnExit. No check: what a person types is
  /// checked by the Desk.
  void SetText(std::string_view text);
  void Clear() { SetText(""); }

  /// The number: what was typed or set, to its full precision; 0 when the text is empty or none.
  double Number() const;
  int Integer() const;
  /// Shows the number in the input's format and keeps its full precision.
  void SetNumber(double number);
  /// The date; the zero date when empty.
  Date GetDate() const;
  void SetDate(Date date);

  Handler OnChange;
  /// Opens by F4, and by the button that a window shows beside the input; null when there is none.
  TPesquisa* Lookup = nullptr;
  /// Nobody may read over the person's shoulder what is typed (a password).
  bool Secret = false;

 private:
  EditKind kind_;
  std::size_t max_length_;
  std::string format_;
  bool read_only_ = false;
  std::string text_;
  double number_ = 0;
  std::string number_text_;  // the text number_ belongs to
};

class CheckBox : public Control {
 public:
  CheckBox(Screen& owner, std::string name, std::string caption, bool checked = false);
  bool Checked() const { return checked_; }
  /// Fires OnClick when the state differs.
  void SetChecked(bool checked);
  Handler OnClick;

 private:
  bool checked_;
};

/// One of several captions: a radio group or a drop-down list.
class Choice : public Control {
 public:
  Choice(Screen& owner, std::string name, std::string caption, std::vector<std::string> items, int selected = 0);
  const std::vector<std::string>& Items() const { return items_; }
  int Selected() const { return selected_; }  // -1 for none
  std::string SelectedText() const;
  /// Fires OnClick when the choice differs. Out of range is none.
  void SetSelected(int index);
  Handler OnClick;

 private:
  std::vector<std::string> items_;
  int selected_;
};

class RadioGroup : public Choice {
 public:
  using Choice::Choice;
};

class ComboBox : public Choice {
 public:
  using Choice::Choice;
};

/// A right on the screen's own class, as Funcoes::Acessa asks for it: "A" includes and alters, "E" deletes.
struct NeededRight {
  std::string operation;
  std::string option = "0";
};

class Button : public Control {
 public:
  /// An "&" in the caption marks its mnemonic.
  Button(Screen& owner, std::string name, std::string caption, Handler on_click = {});
  Handler OnClick;
  /// A function key that presses it wherever the focus is on the screen, while it is enabled and in sight. The focused
  /// input's lookup and FormKeyDown come first; an OnKeyDown that uses the same key ends with Abort.
  Key Shortcut = Key::kNone;
  /// The right that its operation asks for, so that whoever shows the button can show a person without it that there is
  /// nothing to be had here; nothing when it asks for none. Looks only: the button stays enabled, and what a press
  /// comes to is the screen's decision. Set while the screen is created.
  std::optional<NeededRight> Right;
};

/// Tabs; the controls that stand on a page are in sight only while it is the active one.
class PageControl : public Control {
 public:
  PageControl(Screen& owner, std::string name, std::vector<std::string> pages);
  /// Each of these stands on the page.
  void Place(int page, std::initializer_list<Control*> controls);
  const std::vector<std::string>& Pages() const { return pages_; }
  int ActivePage() const { return active_; }
  void SetActivePage(int index);
  bool Focusable() const override { return false; }
  Handler OnClick;

 private:
  std::vector<std::string> pages_;
  int active_ = 0;
};

/// An entry of a pop-up menu.
struct MenuItem {
  std::string name;
  std::string caption;
  Handler on_click;
  bool visible = true;
};

class PopupMenu : public Component {
 public:
  PopupMenu(Screen& owner, std::string name);
  MenuItem& Add(std::string name, std::string caption, Handler on_click);
  /// The entry with that caption ("&" ignored) or name; null when there is none.
  MenuItem* Find(std::string_view caption_or_name);
  const std::deque<MenuItem>& Items() const { return items_; }
  Handler OnPopup;  // sets what is visible; throws Abort when the menu must not open

 private:
  std::deque<MenuItem> items_;  // entries stay where they are when another is added
};

}  // namespace host
