// A small program around the screen kit: an environment that notes what it is asked, and screens made by the tests.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/errors.h"
#include "host/host.h"
#include "host/kit/desk.h"
#include "host/kit/screen.h"

namespace test {

using Notes = std::vector<std::string>;

/// Only the dialogs and the desk are there; the kit asks for nothing else.
class ToyHost : public host::Host, public host::Dialogs {
 public:
  explicit ToyHost(Notes& notes) : notes_(notes) {}

  host::Funcoes& GetFuncoes() override { throw std::logic_error("not in the toy"); }
  host::Tabela& GetTabela() override { throw std::logic_error("not in the toy"); }
  host::Contabil& GetContabil() override { throw std::logic_error("not in the toy"); }
  host::Dialogs& GetDialogs() override { return *this; }
  host::Clock& GetClock() override { throw std::logic_error("not in the toy"); }
  host::UserSettings& GetUserSettings() override { throw std::logic_error("not in the toy"); }
  std::unique_ptr<host::TEstoque> NewEstoque() override { return nullptr; }
  std::unique_ptr<host::SerialPort> NewSerialPort(host::Screen&) override { return nullptr; }
  void ShowModal(host::Screen& screen) override { desk->ShowModal(screen); }
  void Free(host::Screen& screen) override { desk->Free(screen); }

  void Message(std::string_view title, std::string_view text, host::Icon /*icon*/) override {
    notes_.push_back("box " + std::string(title) + ": " + std::string(text));
  }
  bool Question(std::string_view /*title*/, std::string_view /*text*/) override { return false; }
  std::optional<std::string> InputBox(std::string_view /*title*/, std::string_view /*prompt*/,
                                      std::string_view /*proposed*/, std::size_t /*longest*/) override {
    return std::nullopt;
  }

  host::Desk* desk = nullptr;

 private:
  Notes& notes_;
};

/// A screen whose life and components the test sets up.
class ToyScreen : public host::Screen {
 public:
  ToyScreen(ToyHost& toy, std::string class_name, Notes& notes)
      : Screen(toy, "Tfm" + class_name, "fm" + class_name, class_name), notes_(notes) {}
  ~ToyScreen() override { notes_.push_back("gone " + Caption()); }

  void FormCreate() override { Life("create", on_create); }
  void FormShow() override { Life("show", on_show); }
  void FormClose() override { Life("close", on_close); }
  bool FormKeyDown(host::Key key) override { return on_key && on_key(key); }
  std::vector<host::KeyHint> KeyHints() const override { return hints; }

  template <typename T, typename... Arguments>
  T& Add(std::string name, Arguments&&... arguments) {
    auto part = std::make_unique<T>(*this, std::move(name), std::forward<Arguments>(arguments)...);
    T& added = *part;
    parts_.push_back(std::move(part));
    return added;
  }
  /// Notes "enter NAME" and "exit NAME".
  void Watch(host::Control& control) {
    control.OnEnter = [this, &control] { notes_.push_back("enter " + control.Name()); };
    control.OnExit = [this, &control] { notes_.push_back("exit " + control.Name()); };
  }

  host::Handler on_create;
  host::Handler on_show;
  host::Handler on_close;
  std::function<bool(host::Key)> on_key;
  std::vector<host::KeyHint> hints;

 private:
  void Life(const char* what, const host::Handler& handler) {
    notes_.push_back(std::string(what) + " " + Caption());
    if (handler) handler();
  }

  Notes& notes_;
  std::vector<std::unique_ptr<host::Component>> parts_;
};

/// Notes every bracket; screens come from `setups`, by class name.
class ToyEnvironment : public host::DeskEnvironment {
 public:
  ToyEnvironment(ToyHost& toy, Notes& notes) : host_(toy), notes_(notes) {}

  std::unique_ptr<host::Screen> CreateScreen(std::string_view screen_class) override {
    const auto setup = setups.find(std::string(screen_class));
    if (setup == setups.end()) throw host::InputError("Tela desconhecida: " + std::string(screen_class));
    auto screen = std::make_unique<ToyScreen>(host_, std::string(screen_class.substr(3)), notes_);
    setup->second(*screen);
    return screen;
  }
  void BeginAction() override { notes_.emplace_back("begin"); }
  void EndAction(Outcome outcome) override {
    notes_.emplace_back(outcome == Outcome::kOk ? "end" : outcome == Outcome::kAborted ? "end aborted" : "end failed");
    if (outcome == Outcome::kOk && fail_commit) {
      fail_commit = false;
      throw host::DatabaseError("sem disco", 0, "");
    }
  }
  void BeforeWait() override { notes_.emplace_back("wait"); }
  void TellError(std::string_view title, const std::exception& error) override {
    notes_.push_back("error " + std::string(title) + ": " + error.what());
  }
  std::optional<host::LookupRow> ShowLookup(host::TPesquisa& lookup) override {
    lookups.push_back(lookup.Name());
    return lookup_answer;
  }
  void ScreenShown(host::Screen& screen) override { View("shown " + screen.Caption()); }
  void ScreenGone(host::Screen& screen) override {
    View("let go " + screen.Caption());
    if (on_gone) on_gone(screen);
  }
  void Settled() override { View("settled"); }
  void RunModal(host::Screen& screen) override {
    notes_.push_back("modal " + screen.Caption());
    if (on_modal) on_modal(screen);
  }
  std::optional<std::string> CheckStorable(std::string_view text) override {
    if (text.find("☃") == std::string_view::npos) return std::nullopt;
    return "O caractere \"☃\" não pode ser gravado.";
  }

  std::map<std::string, std::function<void(ToyScreen&)>> setups;
  std::function<void(host::Screen&)> on_modal;
  std::function<void(host::Screen&)> on_gone;
  std::optional<host::LookupRow> lookup_answer;
  std::vector<std::string> lookups;  // names of those that were shown
  bool fail_commit = false;
  bool note_view = false;  // notes also what whoever shows the screens is told

 private:
  void View(std::string note) {
    if (note_view) notes_.push_back(std::move(note));
  }

  ToyHost& host_;
  Notes& notes_;
};

/// Environment, desk and host together.
struct Toy {
  Toy() : host(notes), environment(host, notes), desk(environment) { host.desk = &desk; }

  /// Opens a screen that `setup` fills, and forgets what was noted so far.
  ToyScreen& Open(const std::string& screen_class, std::function<void(ToyScreen&)> setup = {}) {
    environment.setups[screen_class] = [setup](ToyScreen& screen) {
      if (setup) setup(screen);
    };
    auto& screen = dynamic_cast<ToyScreen&>(*desk.Open(screen_class));
    notes.clear();
    return screen;
  }
  /// What was noted since the last call, joined by " | ", without brackets that held nothing.
  std::string Take() {
    std::string text;
    for (std::size_t at = 0; at < notes.size(); ++at) {
      if (notes[at] == "begin" && at + 1 < notes.size() && notes[at + 1] == "end") {
        ++at;
        continue;
      }
      text += (text.empty() ? "" : " | ") + notes[at];
    }
    notes.clear();
    return text;
  }
  /// The same without any brackets.
  std::string TakeEvents() {
    std::erase_if(notes, [](const std::string& note) { return note == "begin" || note == "end"; });
    return Take();
  }

  Notes notes;
  ToyHost host;
  ToyEnvironment environment;
  host::Desk desk;
};

}  // namespace test
