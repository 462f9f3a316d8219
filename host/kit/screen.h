// What every screen is.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialogs.h"
#include "host/host.h"
#include "host/kit/component.h"
#include "host/kit/dataset.h"
#include "host/kit/grid.h"
#include "host/kit/lookup.h"

namespace host {

/// What the person's side of a screen can do for it. Implemented by the Desk.
class ScreenSite {
 public:
  virtual ~ScreenSite() = default;
  virtual void RequestFocus(Control& control) = 0;
  /// The control that has the focus; null when none has.
  virtual Control* Focused() const = 0;
  /// Shows a lookup and hands back the row picked; nothing when the person gave up.
  virtual std::optional<LookupRow> Pick(TPesquisa& lookup) = 0;
  /// The program presses a button: fires its OnClick when it is enabled, inside the running action.
  virtual void Press(Button& button) = 0;
};

/// A key that does something on a screen, in a word or two ("Captura Peso").
struct KeyHint {
  Key key;
  std::string text;
};

class Screen {
 public:
  /// `class_name` as the menu and the rights know it ("TfmCadLoteTec"), `name` as other screens find it
  /// ("fmCadLoteTec").
  Screen(Host& host, std::string class_name, std::string name, std::string caption);
  virtual ~Screen() = default;
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  const std::string& ClassName() const { return class_name_; }
  const std::string& Name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  Host& GetHost() const { return host_; }

  /// Life of a screen, called by the Desk: FormCreate once after construction, FormShow each time it is shown,
  /// FormClose once before it is destroyed.
  virtual void FormCreate() {}
  virtual void FormShow() {}
  virtual void FormClose() {}
  /// A key that the focused control did not use; true when the screen used it. Enter moves on unless used here.
  virtual bool FormKeyDown(Key key);
  /// Something typed would be lost if the screen closed now.
  virtual bool HasUnsavedWork() const { return false; }
  /// Keys of the screen's own, for a person to see; those of lookups and of buttons are known without.
  virtual std::vector<KeyHint> KeyHints() const { return {}; }
  /// Opens maximised.
  virtual bool Maximised() const { return false; }

  /// Asks to be closed; a modal screen then gives control back to its opener.
  void Close() { close_requested_ = true; }
  bool CloseRequested() const { return close_requested_; }
  void ClearCloseRequest() { close_requested_ = false; }

  /// Components in the order of their creation, which is the tab order.
  const std::vector<Component*>& Components() const { return components_; }
  /// By name, without regard to case; null when there is none.
  Component* FindComponent(std::string_view name) const;

  void SetSite(ScreenSite* site) { site_ = site; }
  ScreenSite* Site() const { return site_; }

  // Shorthands of all screens: boxes titled with the caption.
  void Inform(std::string_view text) const;                                 // information icon
  void Warn(std::string_view text) const;                                   // exclamation icon
  bool Confirm(std::string_view text) const;                                // Yes/No, No by default
  [[noreturn]] void Refuse(std::string_view text) const;                    // Inform, then Abort
  [[noreturn]] void Refuse(std::string_view text, Control& back_to) const;  // and the focus goes there

 private:
  friend class Component;
  Host& host_;
  std::string class_name_;
  std::string name_;
  std::string caption_;
  std::vector<Component*> components_;
  ScreenSite* site_ = nullptr;
  bool close_requested_ = false;
};

}  // namespace host
