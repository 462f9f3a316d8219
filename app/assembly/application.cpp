#include "app/application.h"

#include <filesystem>
#include <utility>
#include <vector>

#include "app/assembly/own_screens.h"
#include "app/embedded.h"
#include "app/firebird/attachment.h"
#include "app/firebird/migrations.h"
#include "app/firebird/storable_text.h"
#include "app/reports.h"
#include "app/services/database_offer.h"
#include "app/services/general_services.h"
#include "app/services/parameters.h"
#include "app/services/periods.h"
#include "app/services/stock.h"
#include "app/services/tables.h"
#include "app/services/user_settings.h"
#include "app/services/users.h"
#include "host/errors.h"
#include "host/restored.h"
#include "host/text.h"

namespace app {
namespace {

std::vector<firebird::Migration> Migrations() {
  std::vector<firebird::Migration> migrations;
  for (const EmbeddedFile& file : SchemaFiles()) {
    migrations.push_back({std::string(file.name), std::string(file.text)});
  }
  return migrations;
}

/// The person's boxes as the screens see them: whatever is pending is made durable before the program waits.
class WaitingDialogs : public host::Dialogs {
 public:
  WaitingDialogs(firebird::Database& database, Person& person) : database_(database), person_(person) {}

  void Message(std::string_view title, std::string_view text, host::Icon icon) override {
    database_.MakeDurable();
    person_.Message(title, text, icon);
  }
  bool Question(std::string_view title, std::string_view text) override {
    database_.MakeDurable();
    return person_.Question(title, text);
  }
  std::optional<std::string> InputBox(std::string_view title, std::string_view prompt, std::string_view proposed,
                                      std::size_t longest) override {
    database_.MakeDurable();
    return person_.InputBox(title, prompt, proposed, longest);
  }
  std::optional<host::ChosenFile> ChooseFile(std::string_view title, std::string_view kinds,
                                             std::size_t most_bytes) override {
    database_.MakeDurable();
    return person_.ChooseFile(title, kinds, most_bytes);
  }

 private:
  firebird::Database& database_;
  Person& person_;
};

// A station that nobody told of any device.
class NoEquipment : public Equipment {
 public:
  std::unique_ptr<host::SerialPort> NewSerialPort(PortUse /*use*/) override {
    throw host::InputError("Esta estação não tem balança.");
  }
  std::optional<PrintJob> Print(const PrintRequest& request) override {
    throw host::InputError("O relatório \"" + request.report + "\" não pode ser impresso: esta estação não imprime.");
  }
};

std::string FolderOfLayouts(const ApplicationOptions& options, const std::string& settings_file) {
  if (!options.layouts_folder.empty()) return options.layouts_folder;
  const std::string& beside = firebird::IsServerPath(options.connect.database) || options.connect.database.empty()
                                  ? settings_file
                                  : options.connect.database;
  return (std::filesystem::path(beside).parent_path() / "layouts").string();
}

std::string SettingsFile(const ApplicationOptions& options) {
  return options.settings_file.empty() ? services::FileUserSettings::DefaultPath() : options.settings_file;
}

class ReferenceApplication : public Application, public host::DeskEnvironment, private services::Windows {
 public:
  ReferenceApplication(std::unique_ptr<firebird::Database> database, const ApplicationOptions& options,
                       const host::Module& module, Person& person)
      : database_(std::move(database)),
        module_(module),
        person_(person),
        parameters_(*database_),
        tables_(*database_),
        periods_(*database_),
        settings_(services::OpenUserSettings(options.settings_file)),
        company_(options.connect.company),
        layouts_folder_(FolderOfLayouts(options, SettingsFile(options))),
        equipment_(options.equipment != nullptr ? *options.equipment : no_equipment_),
        dialogs_(*database_, person),
        general_({*database_, parameters_, clock_, *this}, services::FindUser(*database_, options.user)),
        desk_(*this) {
    database_->MakeDurable();  // no transaction stays open while the first screen is awaited
  }

  ~ReferenceApplication() override { CloseScreens(); }

  // --- Application -----------------------------------------------------------------------------------------------
  host::Desk& GetDesk() override { return desk_; }
  firebird::Database& GetDatabase() override { return *database_; }
  ProgramClock& GetProgramClock() override { return clock_; }
  std::vector<MenuScreen> MenuScreens() override;
  void WriteParameter(std::string_view group, int number, std::string_view value) override {
    parameters_.Write(group, number, value);
    database_->CommitRetaining();
  }

  std::span<const host::ListedReport> Reports() const override { return ReportsOf(module_); }
  bool Lacks(const host::Button& button) override;
  std::vector<PrintJob> TakeJobs() override { return std::exchange(jobs_, {}); }
  std::string LayoutsFolder() const override { return layouts_folder_; }

  std::optional<std::string> AskFile(const FileQuestion& question) override {
    database_->MakeDurable();
    return person_.AskFile(question);
  }

  // --- host::Host ------------------------------------------------------------------------------------------------
  host::Funcoes& GetFuncoes() override { return general_; }
  host::Tabela& GetTabela() override { return tables_; }
  host::Contabil& GetContabil() override { return periods_; }
  host::Dialogs& GetDialogs() override { return dialogs_; }
  host::Clock& GetClock() override { return clock_; }
  host::UserSettings& GetUserSettings() override { return *settings_; }
  std::unique_ptr<host::TEstoque> NewEstoque() override {
    return std::make_unique<services::StockMovement>(*database_);
  }
  std::unique_ptr<host::SerialPort> NewSerialPort(host::Screen& owner) override;
  void ShowModal(host::Screen& screen) override { desk_.ShowModal(screen); }
  void Free(host::Screen& screen) override { desk_.Free(screen); }

  // --- host::DeskEnvironment -------------------------------------------------------------------------------------
  std::unique_ptr<host::Screen> CreateScreen(std::string_view screen_class) override;
  void BeginAction() override { database_->BeginAction(); }
  void EndAction(host::DeskEnvironment::Outcome outcome) override;
  void BeforeWait() override { database_->MakeDurable(); }
  void TellError(std::string_view title, const std::exception& error) override;
  std::optional<host::LookupRow> ShowLookup(host::TPesquisa& lookup) override;
  void RunModal(host::Screen& screen) override;
  void ScreenShown(host::Screen& screen) override { person_.ScreenShown(screen); }
  void ScreenGone(host::Screen& screen) override {
    person_.ScreenGone(screen);
    tables_.ScreenGone(screen);
  }
  bool MayClose(host::Screen& screen) override { return person_.MayClose(screen); }
  void Settled() override { person_.Settled(); }
  std::optional<std::string> CheckStorable(std::string_view text) override { return firebird::WhyNotStorable(text); }

 private:
  // --- services::Windows -----------------------------------------------------------------------------------------
  host::Screen& LoadScreen(std::string_view screen_class) override;
  void MoveFocus(host::Screen& screen, bool back) override { desk_.MoveFocus(screen, back); }
  std::string AskDate(std::string_view caption, std::string_view prompt) override;
  void ShowBusy(bool on, std::string_view text) override { person_.ShowBusy(on, text); }
  void Print(std::string_view report, char kind, services::AskedOfScreen functions, host::Screen& owner,
             const host::ReportFlags& flags) override;

  void CloseScreens() noexcept;

  std::unique_ptr<firebird::Database> database_;
  const host::Module& module_;
  Person& person_;
  ProgramClock clock_;
  services::Parameters parameters_;
  services::Tables tables_;
  services::Periods periods_;
  std::unique_ptr<host::UserSettings> settings_;
  std::string company_;
  std::string layouts_folder_;
  NoEquipment no_equipment_;
  Equipment& equipment_;
  std::vector<PrintJob> jobs_;
  WaitingDialogs dialogs_;
  services::GeneralServices general_;
  host::Desk desk_;
  bool loading_from_program_ = false;
};

std::unique_ptr<host::Screen> ReferenceApplication::CreateScreen(std::string_view screen_class) {
  // Another station may have changed the installation's parameters. A screen that the program itself loads in the
  // middle of an action goes on with those the action began with.
  if (!loading_from_program_) parameters_.Forget();
  for (const OwnScreenClass& own : OwnScreens()) {
    if (host::SameName(own.class_name, screen_class)) return own.create(*this);
  }
  for (std::size_t i = 0; i < module_.screen_count; ++i) {
    const host::ScreenClass& known = module_.screens[i];
    if (host::SameName(known.class_name, screen_class)) return known.create(*this);
  }
  throw host::InputError("A tela \"" + std::string(screen_class) + "\" não existe neste módulo.");
}

std::vector<MenuScreen> ReferenceApplication::MenuScreens() {
  std::vector<MenuScreen> screens;
  for (std::size_t i = 0; i < module_.screen_count; ++i) {
    const host::ScreenClass& known = module_.screens[i];
    screens.push_back({known.class_name, known.menu, known.caption});
  }
  const bool administrator = services::IsAdministrator(*database_, general_.vUsuarioCodigo());
  database_->MakeDurable();
  for (const OwnScreenClass& own : OwnScreens()) {
    if (own.for_administrator && !administrator) continue;
    screens.push_back({std::string(own.class_name), std::string(own.menu), std::string(own.caption)});
  }
  return screens;
}

bool ReferenceApplication::Lacks(const host::Button& button) {
  if (!button.Right) return false;
  try {
    const bool held = general_.Acessa(button.Owner().ClassName(), button.Right->operation, button.Right->option);
    if (!desk_.InAction()) database_->MakeDurable();  // nothing stays open for the sake of a look
    return !held;
  } catch (const host::DatabaseError&) {
    return false;
  }
}

void ReferenceApplication::EndAction(host::DeskEnvironment::Outcome outcome) {
  switch (outcome) {
    case host::DeskEnvironment::Outcome::kOk:
      database_->EndAction(firebird::Database::Outcome::kOk);
      break;
    case host::DeskEnvironment::Outcome::kAborted:
      database_->EndAction(firebird::Database::Outcome::kAborted);
      break;
    case host::DeskEnvironment::Outcome::kFailed:
      database_->EndAction(firebird::Database::Outcome::kFailed);
      break;
  }
}

void ReferenceApplication::TellError(std::string_view title, const std::exception& error) {
  const bool worded = dynamic_cast<const host::DatabaseError*>(&error) != nullptr ||
                      dynamic_cast<const host::InputError*>(&error) != nullptr;
  if (worded) {
    person_.TellError(title, error);
  } else {
    person_.TellError(title, host::InputError(std::string("Erro inesperado do programa: ") + error.what()));
  }
}

std::optional<host::LookupRow> ReferenceApplication::ShowLookup(host::TPesquisa& lookup) {
  const std::unique_ptr<LookupOffer> offer = services::NewLookupOffer(*database_, lookup);
  database_->MakeDurable();
  std::optional<host::LookupRow> picked = person_.PickRow(lookup, *offer);
  database_->MakeDurable();  // what the search read is over; nothing stays open
  return picked;
}

void ReferenceApplication::RunModal(host::Screen& screen) {
  person_.ActOnModal(screen, desk_);
  // Whoever turned away from the screen without closing it has given up.
  if (!screen.CloseRequested()) screen.Close();
}

host::Screen& ReferenceApplication::LoadScreen(std::string_view screen_class) {
  const host::Restored<bool> loading(loading_from_program_, true);
  return desk_.Load(screen_class);
}

std::string ReferenceApplication::AskDate(std::string_view caption, std::string_view prompt) {
  database_->MakeDurable();
  return person_.AskDate(caption, prompt);
}

std::unique_ptr<host::SerialPort> ReferenceApplication::NewSerialPort(host::Screen& owner) {
  PortUse use{*settings_, {}, {}};
  use.set_up = [this](scale::ScaleSettings& settings) {
    database_->MakeDurable();
    return person_.SetUpScale(settings);
  };
  use.run = [this, &owner](const std::function<void()>& act) {
    if (desk_.InAction()) return false;
    bool ran = false;
    person_.ActForDevice([&] {
      ran = true;
      desk_.Run(owner.Caption(), act);
    });
    return ran;
  };
  return equipment_.NewSerialPort(std::move(use));
}

void ReferenceApplication::Print(std::string_view report, char kind, services::AskedOfScreen functions,
                                 host::Screen& owner, const host::ReportFlags& flags) {
  database_->MakeDurable();  // paper cannot be taken back
  const std::string name = general_.BuscaParametro("SIS", 10);
  const PrintRequest request{.report = std::string(report),
                             .kind = kind,
                             .unknown_functions = kind == 'T' ? functions.text : functions.graphic,
                             .text_functions = functions.text,
                             .listed = FindReport(Reports(), report),
                             .owner = owner,
                             .flags = flags,
                             .user = general_.vUsuario(),
                             .company = name.empty() ? company_ : name,
                             .moment = clock_.Now(),
                             .layouts_folder = layouts_folder_,
                             .settings = *settings_};
  if (auto job = equipment_.Print(request)) jobs_.push_back(std::move(*job));
}

void ReferenceApplication::CloseScreens() noexcept {
  try {
    while (!desk_.Screens().empty()) desk_.Free(*desk_.Screens().back());
    database_->MakeDurable();
  } catch (const std::exception&) {
    // The program is ending and the person has left: what a screen could not finish is undone with the connection.
  }
}

}  // namespace

std::unique_ptr<Application> Application::Start(const ApplicationOptions& options, const host::Module& module,
                                                Person& person) {
  return Start(firebird::Database::Open(options.connect), options, module, person);
}

std::unique_ptr<Application> Application::Start(std::unique_ptr<firebird::Database> database,
                                                const ApplicationOptions& options, const host::Module& module,
                                                Person& person) {
  firebird::Migrate(*database, Migrations());
  return std::make_unique<ReferenceApplication>(std::move(database), options, module, person);
}

}  // namespace app
