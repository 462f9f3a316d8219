// A small program with two toy screens, so that the script driver can be tested without a mill or a database.
#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/application.h"
#include "app/operator/scripted_person.h"
#include "app/script/driver.h"
#include "host/kit/desk.h"
#include "host/kit/screen.h"

namespace test {

/// A box, a number, a date, a tick, choices, tabs, a lookup, a menu, a grid of parts and buttons for every way an
/// action can end.
class ToyScreen : public host::Screen {
 public:
  explicit ToyScreen(host::Host& host);

  host::Edit EdtNome{*this, "EdtNome", "Nome", host::EditKind::kText, 10};
  host::Edit EdtPeso{*this, "EdtPeso", "Peso", host::EditKind::kNumber, 0, "0.000"};
  host::Edit EdtRolos{*this, "EdtRolos", "Rolos", host::EditKind::kInteger};
  host::Edit EdtData{*this, "EdtData", "Data", host::EditKind::kDate};
  host::Label LblNome{*this, "LblNome", "sem nome"};
  host::CheckBox CbTodos{*this, "CbTodos", "Todos"};
  host::RadioGroup RgSituacao{*this, "RgSituacao", "Situação", {"Pendentes", "Baixados"}};
  host::PageControl PgAbas{*this, "PgAbas", {"Acesso", "Manutenção"}};
  host::TPesquisa PqNome{*this, "PqNome", "PESSOAL", "CODIGO"};
  host::PopupMenu Menu{*this, "Menu"};
  host::Dataset TbItens{*this, "TbItens"};
  host::Grid GrdItens{*this, "GrdItens", TbItens, {}};
  host::Button BtnDobra{*this, "BtnDobra", "Dobrar"};
  host::Button BtnRecusa{*this, "BtnRecusa", "Recusar"};
  host::Button BtnFalha{*this, "BtnFalha", "Falhar"};
  host::Button BtnPergunta{*this, "BtnPergunta", "Perguntar"};
  host::Button BtnAjuda{*this, "BtnAjuda", "Ajuda"};
  host::Button BtnFechado{*this, "BtnFechado", "Fechado"};
  host::TPesquisa PqPreco{*this, "PqPreco", "CADCORTI", "CODIGO;CODCLI;COR"};
  host::Edit EdtObs{*this, "EdtObs", "Observação"};
  host::Button BtnNota{*this, "BtnNota", "Nota"};
  host::Button BtnArquivo{*this, "BtnArquivo", "Importar"};
  host::Button BtnConfirma{*this, "BtnConfirma", "Confirmar"};
};

/// Opened modally by the ToyScreen; its button writes into the opener.
class ToyHelp : public host::Screen {
 public:
  explicit ToyHelp(host::Host& host);
  host::Edit EdtResposta{*this, "EdtResposta", "Resposta"};
  host::Button BtnOk{*this, "BtnOk", "OK"};
};

class ToyApplication : public app::Application, private host::DeskEnvironment {
 public:
  explicit ToyApplication(app::Person& person);
  ~ToyApplication() override;

  host::Desk& GetDesk() override { return *desk_; }
  app::firebird::Database& GetDatabase() override;
  app::ProgramClock& GetProgramClock() override { return clock_; }
  std::vector<app::MenuScreen> MenuScreens() override { return {}; }
  std::optional<std::string> AskFile(const app::FileQuestion& question) override { return person_.AskFile(question); }
  void WriteParameter(std::string_view group, int number, std::string_view value) override;
  std::vector<app::PrintJob> TakeJobs() override { return std::exchange(jobs, {}); }
  std::vector<app::PrintJob> jobs;  // that the next TakeJobs hands back

  host::Funcoes& GetFuncoes() override;
  host::Tabela& GetTabela() override;
  host::Contabil& GetContabil() override;
  host::Dialogs& GetDialogs() override { return person_; }
  host::Clock& GetClock() override { return clock_; }
  host::UserSettings& GetUserSettings() override;
  std::unique_ptr<host::TEstoque> NewEstoque() override;
  std::unique_ptr<host::SerialPort> NewSerialPort(host::Screen& owner) override;
  void ShowModal(host::Screen& screen) override { desk_->ShowModal(screen); }
  void Free(host::Screen& screen) override { desk_->Free(screen); }

 private:
  std::unique_ptr<host::Screen> CreateScreen(std::string_view screen_class) override;
  void BeginAction() override {}
  void EndAction(Outcome) override {}
  void BeforeWait() override {}
  void TellError(std::string_view title, const std::exception& error) override { person_.TellError(title, error); }
  std::optional<host::LookupRow> ShowLookup(host::TPesquisa& lookup) override;
  void RunModal(host::Screen& screen) override { person_.ActOnModal(screen, *desk_); }
  std::optional<std::string> CheckStorable(std::string_view) override { return std::nullopt; }

  app::Person& person_;
  app::ProgramClock clock_;
  std::unique_ptr<host::Desk> desk_;
};

/// The toy program, a person, and what a script printed.
class ToyDesk {
 public:
  /// Runs a script that calls itself "teste.js".
  app::script::RunResult Run(std::string_view source, std::chrono::milliseconds timeout = {});

  app::ScriptedPerson person;
  ToyApplication application{person};
  std::ostringstream output;
  std::ostringstream notes;
};

}  // namespace test
