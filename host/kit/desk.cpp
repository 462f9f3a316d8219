// Actions and screens of the Desk; desk_inputs.cpp has the inputs, desk_grid.cpp the grids.
#include "host/kit/desk.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "host/errors.h"
#include "host/kit/desk_impl.h"
#include "host/text.h"

namespace host {
namespace {

// Handlers that send the focus to and fro must not hang the program.
constexpr int kRounds = 100;

}  // namespace

Desk::Desk(DeskEnvironment& environment) : environment_(environment), impl_(std::make_unique<Impl>()) {}

Desk::~Desk() {
  // The last opened goes first: it may know the ones before it.
  while (!screens_.empty()) {
    environment_.ScreenGone(*screens_.back());
    screens_.pop_back();
  }
}

// --- actions -----------------------------------------------------------------------------------------------------

ActResult Desk::Run(std::string_view title, const std::function<void()>& act) {
  if (depth_ > 0 && !impl_->waiting) {
    act();
    return ActResult::kDone;
  }
  ActResult result = ActResult::kDone;
  try {
    result = RunBracketed(title, act);
  } catch (...) {
    // A mistake of whoever drives the Desk; the screens that were freed go all the same.
    requested_ = nullptr;
    Finish();
    throw;
  }
  if (result == ActResult::kFailed) requested_ = nullptr;
  Finish();
  return result;
}

// One bracket: the outermost action's, or that of an act in a modal screen, which ends and is undone by itself.
ActResult Desk::RunBracketed(std::string_view title, const std::function<void()>& act) {
  using Outcome = DeskEnvironment::Outcome;
  const bool inner = depth_ > 0;
  const Restored<bool> not_waiting(impl_->waiting, false);
  const Restored<int> deeper(depth_, depth_ + 1);
  ActResult result = ActResult::kDone;
  try {
    environment_.BeginAction();
  } catch (const std::exception& error) {
    Tell(title, error);
    return ActResult::kFailed;
  }
  try {
    act();
  } catch (const Abort&) {
    result = ActResult::kRefused;
  } catch (const ActError&) {
    environment_.EndAction(Outcome::kFailed);
    throw;
  } catch (const std::exception& error) {
    // The undoing comes first: telling is a wait and would make half the work durable.
    environment_.EndAction(Outcome::kFailed);
    Tell(title, error);
    return ActResult::kFailed;
  }
  try {
    environment_.EndAction(result == ActResult::kDone ? Outcome::kOk : Outcome::kAborted);
    // A modal screen that stays open waits for the person again.
    if (inner && Modal() != nullptr && !Modal()->CloseRequested()) environment_.BeforeWait();
  } catch (const std::exception& error) {
    Tell(title, error);
    return ActResult::kFailed;
  }
  return result;
}

void Desk::Tell(std::string_view title, const std::exception& error) { environment_.TellError(title, error); }

// What an action leaves to do: screens that asked to be closed or were freed go, then the focus that was asked for
// moves. Each step is an action of its own and may ask for more.
void Desk::Finish() {
  if (impl_->settling || (depth_ > 0 && !impl_->waiting)) return;
  const Restored<bool> settling(impl_->settling, true);
  for (int round = 0; round < kRounds; ++round) {
    const bool closed = depth_ == 0 && CloseAsked();
    const bool moved = SettleFocus();
    if (!closed && !moved) {
      environment_.Settled();
      return;
    }
  }
  requested_ = nullptr;
  environment_.Settled();
}

// --- screens -----------------------------------------------------------------------------------------------------

bool Desk::IsOpen(const Screen* screen) const {
  return std::any_of(screens_.begin(), screens_.end(), [screen](const auto& open) { return open.get() == screen; });
}

bool Desk::IsDoomed(const Screen* screen) const {
  return std::find(doomed_.begin(), doomed_.end(), screen) != doomed_.end();
}

bool Desk::IsModal(const Screen* screen) const {
  return std::find(modals_.begin(), modals_.end(), screen) != modals_.end();
}

Screen* Desk::Find(std::string_view name) const {
  for (const auto& screen : screens_) {
    if (IsDoomed(screen.get())) continue;
    if (SameName(screen->Name(), name) || SameName(screen->ClassName(), name)) return screen.get();
  }
  return nullptr;
}

Screen* Desk::Modal() const { return modals_.empty() ? nullptr : modals_.back(); }

Screen& Desk::Create(std::string_view screen_class) {
  screens_.push_back(environment_.CreateScreen(screen_class));
  Screen& screen = *screens_.back();
  screen.SetSite(this);
  try {
    screen.FormCreate();
  } catch (...) {
    Destroy(screen);
    throw;
  }
  return screen;
}

Screen* Desk::Open(std::string_view screen_class) {
  if (Modal() != nullptr) throw ActError("a tela \"" + Modal()->Caption() + "\" espera ser fechada");
  if (Screen* open = Find(screen_class)) {
    const auto at =
        std::find_if(screens_.begin(), screens_.end(), [open](const auto& screen) { return screen.get() == open; });
    std::rotate(at, at + 1, screens_.end());
    environment_.ScreenShown(*open);
    return open;
  }
  Screen* created = nullptr;
  Run(screen_class, [&] {
    Screen& screen = Create(screen_class);
    created = &screen;
    try {
      screen.FormShow();
    } catch (...) {
      created = nullptr;
      Destroy(screen);
      throw;
    }
  });
  if (!IsOpen(created)) return nullptr;
  environment_.ScreenShown(*created);
  return created;
}

Screen& Desk::Load(std::string_view screen_class) {
  if (Screen* open = Find(screen_class)) return *open;
  return Create(screen_class);
}

ActResult Desk::CloseForm(Screen& screen) {
  return Run(screen.Caption(), [&screen] { screen.FormClose(); });
}

ActResult Desk::CloseScreen(Screen& screen) {
  MustAllow(screen);
  if (depth_ > 0 && !impl_->waiting) {
    Free(screen);
    return ActResult::kDone;
  }
  const std::string title = screen.Caption();
  if (focused_ != nullptr && &focused_->Owner() == &screen) {
    const ActResult left = LeaveFocused();
    if (left != ActResult::kDone) return left;
    if (!IsOpen(&screen)) return ActResult::kDone;
    if (focused_ != nullptr && &focused_->Owner() == &screen) return ActResult::kRefused;
  }
  if (!environment_.MayClose(screen)) return ActResult::kRefused;
  if (IsModal(&screen)) {
    screen.Close();
    return ActResult::kDone;
  }
  const ActResult closed = CloseForm(screen);
  if (closed == ActResult::kRefused) {
    screen.ClearCloseRequest();
  } else if (IsOpen(&screen)) {
    Destroy(screen);
  }
  return closed;
}

void Desk::Free(Screen& screen) {
  if (!IsDoomed(&screen)) doomed_.push_back(&screen);
  if (IsModal(&screen)) screen.Close();
  Finish();
}

// True when a screen went.
bool Desk::CloseAsked() {
  std::vector<Screen*> open;  // a screen's last words may open or close others
  for (const auto& screen : screens_) open.push_back(screen.get());
  for (Screen* candidate : open) {
    if (!IsOpen(candidate)) continue;
    Screen& screen = *candidate;
    const bool doomed = IsDoomed(&screen);
    if (IsModal(&screen) || (!doomed && !screen.CloseRequested())) continue;
    const bool may_close = doomed || environment_.MayClose(screen);
    const ActResult closed = may_close ? CloseForm(screen) : ActResult::kRefused;
    if (closed == ActResult::kRefused && !doomed) {
      screen.ClearCloseRequest();
      continue;
    }
    Destroy(screen);
    return true;
  }
  return false;
}

void Desk::Destroy(Screen& screen) {
  if (focused_ != nullptr && &focused_->Owner() == &screen) focused_ = nullptr;
  if (requested_ != nullptr && &requested_->Owner() == &screen) requested_ = nullptr;
  if (impl_->cell.grid != nullptr && &impl_->cell.grid->Owner() == &screen) impl_->cell = {};
  std::erase(doomed_, &screen);
  environment_.ScreenGone(screen);
  std::erase_if(screens_, [&screen](const auto& open) { return open.get() == &screen; });
}

void Desk::ShowModal(Screen& screen) {
  if (depth_ == 0) {
    Run(screen.Caption(), [this, &screen] { ShowModal(screen); });
    return;
  }
  // The opener's focus stays where it is and nobody leaves it: the person cannot get at it meanwhile.
  const Restored<Control*> focused(focused_, nullptr);
  const Restored<Control*> requested(requested_, nullptr);
  const Restored<Impl::Cell> cell(impl_->cell, {});
  struct Shown {
    std::vector<Screen*>& modals;
    Shown(std::vector<Screen*>& all, Screen& screen_shown) : modals(all) { modals.push_back(&screen_shown); }
    ~Shown() { modals.pop_back(); }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;
  } const shown(modals_, screen);

  screen.ClearCloseRequest();
  screen.FormShow();
  if (!screen.CloseRequested()) {
    environment_.BeforeWait();
    const Restored<bool> waiting(impl_->waiting, true);
    const Restored<bool> settled(impl_->settling, false);
    Finish();
    environment_.RunModal(screen);
  }
  screen.ClearCloseRequest();
}

void Desk::MustAllow(const Screen& screen) const {
  if (!IsOpen(&screen) || IsDoomed(&screen)) throw ActError("a tela não está aberta");
  if (depth_ > 0 && !impl_->waiting) return;
  if (Modal() != nullptr && Modal() != &screen) {
    throw ActError("a tela \"" + Modal()->Caption() + "\" espera ser fechada");
  }
}

void Desk::MustAllow(const Control& control) const {
  MustAllow(control.Owner());
  if (!control.Visible()) throw ActError(control.Name() + " não está visível");
  if (!control.Enabled()) throw ActError(control.Name() + " está desabilitado");
  if (control.Pages() != nullptr) MustAllow(*control.Pages());
}

// --- what a screen asks of its site ------------------------------------------------------------------------------

void Desk::RequestFocus(Control& control) {
  requested_ = &control;
  Finish();
}

std::optional<LookupRow> Desk::Pick(TPesquisa& lookup) {
  environment_.BeforeWait();
  return environment_.ShowLookup(lookup);
}

void Desk::Press(Button& button) {
  if (CanAct(button)) Fire(button.OnClick);
}

}  // namespace host
