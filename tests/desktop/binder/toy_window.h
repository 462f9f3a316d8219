// A toy screen in a real window: every kind of input, a form drawn by code, keys and mouse as a person uses them.
#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QWidget>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/application.h"
#include "app/desktop/basics/station.h"
#include "app/desktop/screens/screen_window.h"
#include "tests/host/toy.h"

namespace test {

/// Only the desk and the settings are there.
class ToyApplication : public app::Application, public host::UserSettings {
 public:
  explicit ToyApplication(Toy& toy) : toy_(toy) {}

  host::Funcoes& GetFuncoes() override { throw std::logic_error("not in the toy"); }
  host::Tabela& GetTabela() override { throw std::logic_error("not in the toy"); }
  host::Contabil& GetContabil() override { throw std::logic_error("not in the toy"); }
  host::Dialogs& GetDialogs() override { return toy_.host; }
  host::Clock& GetClock() override { throw std::logic_error("not in the toy"); }
  host::UserSettings& GetUserSettings() override { return *this; }
  std::unique_ptr<host::TEstoque> NewEstoque() override { return nullptr; }
  std::unique_ptr<host::SerialPort> NewSerialPort(host::Screen& /*owner*/) override { return nullptr; }
  void ShowModal(host::Screen& screen) override { toy_.desk.ShowModal(screen); }
  void Free(host::Screen& screen) override { toy_.desk.Free(screen); }

  host::Desk& GetDesk() override { return toy_.desk; }
  app::firebird::Database& GetDatabase() override { throw std::logic_error("not in the toy"); }
  app::ProgramClock& GetProgramClock() override { throw std::logic_error("not in the toy"); }
  std::vector<app::MenuScreen> MenuScreens() override { return {}; }
  std::vector<app::PrintJob> TakeJobs() override { return {}; }
  void WriteParameter(std::string_view /*group*/, int /*number*/, std::string_view /*value*/) override {}
  std::optional<std::string> AskFile(const app::FileQuestion& /*question*/) override { return std::nullopt; }
  bool Lacks(const host::Button& button) override { return lacks.contains(button.Name()); }
  std::set<std::string> lacks;  // buttons that the person has no right to use

  std::optional<std::string> Read(std::string_view key, std::string_view section, std::string_view name) override;
  void Write(std::string_view key, std::string_view section, std::string_view name, std::string_view value) override;

 private:
  Toy& toy_;
  std::map<std::string, std::string> settings_;
};

/// A widget of the right kind for every control of the screen, one below the other, on the pages that the screen says;
/// every input has a caption.
std::unique_ptr<QWidget> DrawForm(const host::Screen& screen);

/// The screen "Tear": EdtCodigo (text of 6, with the lookup PqCodigo), LblDescricao (follows it), EdtQtde (number,
/// "0.00"), EdtVoltas (integer), EdtData, EdtObs (memo), ChkAtivo, RgTipo (A, B, C), CbSituacao (Aberta, Fechada),
/// PgAbas (Itens: EdtUm; Notas: EdtDois), BtnGravar (&Gravar, F2), BtnFechar (&Fechar, closes the screen). Every
/// control that takes the focus notes its enter and exit, every button its click.
class WindowTest : public testing::Test {
 protected:
  WindowTest();
  ~WindowTest() override;

  /// Opens the screen, what `more` adds included, and shows it; the keyboard is in the first input.
  void OpenTear(const std::function<void(ToyScreen&)>& more = {});
  void Show(std::unique_ptr<QWidget> form);

  template <typename T = QWidget>
  T* Find(const char* name) const {
    T* found = top_->findChild<T*>(QString::fromLatin1(name));
    if (found == nullptr) throw std::logic_error(std::string("no widget ") + name);
    return found;
  }
  template <typename T>
  T& Part(const char* name) const {
    return dynamic_cast<T&>(*screen_->FindComponent(name));
  }
  /// What stands in a line.
  std::string Shown(const char* name) const;
  /// Name of the component whose widget has the keyboard, and of the one that the desk says; both must agree.
  std::string Focus() const;

  /// A key where the keyboard is.
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Character by character, accents included.
  void Type(std::string_view text);
  /// The left button on the middle of the widget.
  void Click(const char* name);
  void ClickTab(const char* name, int page);
  void Click(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton);
  /// Refuses to be left, with a message.
  void RefuseExit(const char* name);
  /// Refuses to be left and shows a real box, which goes after a moment.
  void RefuseWithBox(const char* name, bool refuse = true);
  /// Enters, exits, clicks and boxes since the last call.
  std::string Events() { return toy_.TakeEvents(); }
  /// The events that wait, those of deferred deletion included.
  static void Settle();

  Toy toy_;
  ToyApplication application_{toy_};
  app::desktop::Station station_{application_};
  std::unique_ptr<QWidget> top_;
  app::desktop::ScreenWindow* window_ = nullptr;
  ToyScreen* screen_ = nullptr;
  int boxes_ = 0;
};

}  // namespace test
