// A person's side of the screens. Every window, script and test acts through the Desk, so that the order of events is
// the same for all of them.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/kit/screen.h"

namespace host {

/// What the Desk needs of the program around it.
class DeskEnvironment {
 public:
  virtual ~DeskEnvironment() = default;

  /// A new screen of that class; throws InputError for an unknown class.
  virtual std::unique_ptr<Screen> CreateScreen(std::string_view screen_class) = 0;

  /// Brackets of an action of the person: a click, an exit, a double click. They nest: an act in a modal screen is a
  /// bracket inside that of the action which opened the screen, and begins with everything durable since the screen
  /// waited for it.
  /// kOk: the outermost bracket makes pending work durable; an inner one leaves it to the next wait or the outer one.
  /// kAborted: what was asked to be durable stays as with kOk, the rest is undone. kFailed: everything since the last
  /// durable point is undone. EndAction(kOk) and EndAction(kAborted) may throw (the commit failed); everything since
  /// the last durable point has been undone then. EndAction(kFailed) does not throw.
  virtual void BeginAction() = 0;
  enum class Outcome { kOk, kAborted, kFailed };
  virtual void EndAction(Outcome outcome) = 0;
  /// The program is about to wait for a person: pending work is made durable now.
  virtual void BeforeWait() = 0;

  /// Tells an error that nobody caught, as one sentence; `error` is the exception being told.
  virtual void TellError(std::string_view title, const std::exception& error) = 0;
  /// Shows a lookup dialog.
  virtual std::optional<LookupRow> ShowLookup(TPesquisa& lookup) = 0;
  /// Runs a screen modally: lets the person act on it through the Desk until it asks to be closed.
  virtual void RunModal(Screen& screen) = 0;
  /// A screen came to the front or was asked for again; modal ones are shown by RunModal instead.
  virtual void ScreenShown(Screen& /*screen*/) {}
  /// A screen is about to be destroyed: whoever shows it lets go of it now.
  virtual void ScreenGone(Screen& /*screen*/) {}
  /// The person closes the screen, or it asked to be closed: false keeps it open. Not asked for a modal screen that
  /// closes itself, nor for one that the program frees.
  virtual bool MayClose(Screen& /*screen*/) { return true; }
  /// An act of the person has ended, focus and all; what is shown can follow.
  virtual void Settled() {}
  /// Why this text cannot be stored, as one sentence that names the character; nothing when it can.
  virtual std::optional<std::string> CheckStorable(std::string_view text) = 0;
};

/// How an act of a person ended.
enum class ActResult {
  kDone,
  kRefused,  // the screen refused it (Abort), or the value cannot be taken: the message was shown
  kFailed,   // an error nobody caught; it was told and the work undone
};

/// Thrown when an act is not possible for a person: no such component, disabled, hidden, read only, blocked by a modal
/// screen. A mistake of whoever drives the Desk; nothing happened.
class ActError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Desk : public ScreenSite {
 public:
  explicit Desk(DeskEnvironment& environment);
  /// The program ends: destroys the screens still open, the last opened first, without their FormClose.
  ~Desk() override;

  // --- screens -----------------------------------------------------------------------------------------------
  /// From the menu: creates the screen (FormCreate, FormShow) or brings the open one forward. Null when the creation
  /// failed; the error was told.
  Screen* Open(std::string_view screen_class);
  /// The same inside a running action, errors going on to the caller (Funcoes::Carrega_Form). Not shown yet.
  Screen& Load(std::string_view screen_class);
  /// By component name ("fmMovBaiFio") or class name; null when it is not open.
  Screen* Find(std::string_view name) const;
  const std::vector<std::unique_ptr<Screen>>& Screens() const { return screens_; }
  /// The person closes the screen: leaves the focused input, asks whether it may close, FormClose, destroyed.
  ActResult CloseScreen(Screen& screen);
  /// Closes from program code; destroyed at once or, inside an action, when the outermost action ends.
  void Free(Screen& screen);
  /// Waits (making pending work durable), lets the person act, returns when the screen asked to be closed.
  void ShowModal(Screen& screen);
  /// The innermost modal screen; null when none is. Acts on other screens are then ActErrors.
  Screen* Modal() const;

  // --- inputs ------------------------------------------------------------------------------------------------
  /// Enter, put the text in, leave.
  ActResult Type(Edit& edit, std::string_view text);
  /// Gives a control the focus: the one that has it is left first (kRefused keeps it there), then OnEnter.
  ActResult Enter(Control& control);
  /// What is typed into the focused input replaces its text (OnChange). Text too long, no number, no such date, or not
  /// storable: the reason is shown, the old text stays, kRefused.
  ActResult TypeInto(Edit& edit, std::string_view text);
  /// Leaves the focused control: OnExit, with the grid's cell and row rules for a grid. kRefused keeps the focus.
  ActResult Leave();
  /// The same for a named control; nothing happens when it does not have the focus.
  ActResult Leave(Control& control);
  ActResult PressKey(Screen& screen, Key key);  // a key where the focus is
  /// Moves the focus to the next input in tab order, or with `back` to the one before; inside a running action when its
  /// event ends.
  ActResult MoveFocus(Screen& screen, bool back);
  ActResult Check(CheckBox& box, bool checked);
  ActResult Choose(Choice& choice, std::string_view caption);
  ActResult ChoosePage(PageControl& pages, std::string_view caption);
  /// Leaves the focused control (refused: no click), focuses the button, OnClick.
  ActResult Click(Button& button);
  /// Opens the control's menu without picking: OnPopup, which sets what is visible. kRefused: it must not open.
  ActResult OpenMenu(Control& control);
  /// Opens the menu that belongs to the control with the focus, or to any other of the screen, and picks the
  /// entry. ActError when it is not visible.
  ActResult PickMenu(Screen& screen, std::string_view caption);
  ActResult OpenLookup(TPesquisa& lookup);

  // --- grids -------------------------------------------------------------------------------------------------
  /// Stands on a row by 1-based position: leaves the cell and posts the row being edited first.
  ActResult SelectRow(Grid& grid, std::size_t rec_no);
  ActResult SelectCell(Grid& grid, std::string_view field);
  /// Types into the selected cell: the row goes into edit (or a first row is appended) and the field takes the value.
  /// A check-box cell takes "S" or "N".
  ActResult TypeCell(Grid& grid, std::string_view text);
  /// A key in the grid: OnKeyDown; then Tab and Enter leave the cell for the next one (a read-only grid for the next
  /// control), Down and Up change the row (Down on the last row appends), Escape cancels the row, Delete deletes it.
  ActResult GridKey(Grid& grid, Key key);
  /// A new row: leaves the row being edited, appends, types cell by cell in the order given (each typed, Tab), posts.
  /// Stops at the first refusal with the row still in edit.
  ActResult AppendRow(Grid& grid, const std::vector<std::pair<std::string, std::string>>& cells);
  /// The current row, likewise.
  ActResult SetRow(Grid& grid, const std::vector<std::pair<std::string, std::string>>& cells);
  ActResult DeleteRow(Grid& grid);
  ActResult CancelRow(Grid& grid);
  ActResult DblClick(Grid& grid);
  ActResult ClickRow(Grid& grid, std::size_t rec_no);
  /// The same on a cell: the cell that the person was in is left once, wherever the click went.
  ActResult ClickCell(Grid& grid, std::size_t rec_no, std::string_view field);
  /// Ticks the selected check-box cell or takes the tick away, and leaves the cell without going elsewhere. The row is
  /// posted, unless it is a new one that the person is still filling in.
  ActResult TickCell(Grid& grid, bool ticked);

  // --- ScreenSite --------------------------------------------------------------------------------------------
  void RequestFocus(Control& control) override;
  Control* Focused() const override { return focused_; }
  std::optional<LookupRow> Pick(TPesquisa& lookup) override;
  void Press(Button& button) override;

  /// Runs `act` as one action of a person: brackets, Abort, errors told. An action inside an action belongs to it: what
  /// it throws goes on to the caller. Only where a modal screen waits for the person does an inner action end by
  /// itself; the work it did becomes durable with the next wait, or with the outer action when it closed the screen.
  /// After the outermost action the screens that asked to be closed go, and the focus asked for last moves; each is an
  /// action of its own and does not change the result. Throws ActError on, everything undone.
  ActResult Run(std::string_view title, const std::function<void()>& act);
  bool InAction() const { return depth_ > 0; }

 private:
  struct Impl;

  void MustAllow(const Screen& screen) const;
  void MustAllow(const Control& control) const;
  void MustAllowGrid(const Grid& grid, int column, bool writing) const;
  bool IsOpen(const Screen* screen) const;
  bool IsDoomed(const Screen* screen) const;
  bool IsModal(const Screen* screen) const;

  Screen& Create(std::string_view screen_class);
  ActResult RunBracketed(std::string_view title, const std::function<void()>& act);
  void Tell(std::string_view title, const std::exception& error);
  void Finish();
  bool CloseAsked();
  bool SettleFocus();
  ActResult CloseForm(Screen& screen);
  void Destroy(Screen& screen);

  ActResult LeaveFocused();
  ActResult Focus(Control& control);
  Control* NextFocus(Screen& screen, bool back) const;
  /// The button that this key presses; null when there is none that can be pressed.
  static Button* ShortcutOf(const Screen& screen, Key key);

  void EnterCell(Grid& grid);
  void SyncCell(Grid& grid);
  void LeaveCell(Grid& grid, Key key);
  void LeaveRow(Grid& grid);
  void NextCell(Grid& grid, Key key);
  void UpRow(Grid& grid);
  void DownRow(Grid& grid);
  ActResult LeaveReadOnly(Grid& grid, Key key);
  ActResult FocusGrid(Grid& grid);
  ActResult PutIntoCell(Grid& grid, std::string_view text);
  ActResult TypeCells(Grid& grid, const std::vector<std::pair<std::string, std::string>>& cells);

  DeskEnvironment& environment_;
  std::vector<std::unique_ptr<Screen>> screens_;
  std::vector<Screen*> modals_;
  std::vector<Screen*> doomed_;
  Control* focused_ = nullptr;
  Control* requested_ = nullptr;
  int depth_ = 0;
  std::unique_ptr<Impl> impl_;
};

}  // namespace host
