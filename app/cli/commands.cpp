#include "app/cli/commands.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/application.h"
#include "app/books/check.h"
#include "app/cli/jobs_folder.h"
#include "app/cli/module_loader.h"
#include "app/cli/print.h"
#include "app/cli/scale_simulator.h"
#include "app/cli/terminal.h"
#include "app/cli/windows_library.h"
#include "app/desktop/shell/desktop.h"
#include "app/firebird/attachment.h"
#include "app/mill/import.h"
#include "app/mill/mill.h"
#include "app/operator/scripted_person.h"
#include "app/script/driver.h"
#include "app/services/passwords.h"
#include "app/windows/windows.h"
#include "host/errors.h"

namespace app::cli {
namespace {

// The demonstration mill is for everyone to try.
constexpr const char* kDemoPassword = "demo";
// A longer limit than this is none; more milliseconds could not be counted.
constexpr double kLongestTimeout = 1e9;

firebird::ConnectOptions Connection(const Arguments& arguments) {
  firebird::ConnectOptions options;
  options.database = arguments.database;
  options.user = arguments.user;
  options.password = arguments.password.value_or("");
  options.company = arguments.company;
  options.statement_cache = arguments.statement_cache;
  return options;
}

std::string ReadFile(const std::string& file) {
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) throw host::InputError(file + " é uma pasta.");
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw host::InputError("O arquivo " + file + " não existe ou não pode ser lido.");
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::unique_ptr<firebird::Database> OpenCurrent(const Arguments& arguments) {
  auto database = firebird::Database::Open(Connection(arguments));
  mill::MigrateToCurrent(*database);
  return database;
}

// Whoever can open the file of an embedded database can already read and write all of it: there, a password is checked
// when one is given. A server has asked for it before.
void CheckPerson(firebird::Database& database, const Arguments& arguments) {
  if (firebird::IsServerPath(arguments.database) || !arguments.password) return;
  if (!services::CheckPassword(database, arguments.user, *arguments.password)) {
    throw host::InputError("Senha errada para o usuário " + arguments.user + ".");
  }
}

int Init(const Arguments& arguments) {
  std::optional<std::string> password = arguments.password;
  if (!password) password = AskPassword("Senha do administrador ADMIN: ");
  if (!password) throw host::InputError("Falta a senha do administrador: use --password ou TECELAGEM_PASSWORD.");
  mill::InitDatabase(Connection(arguments), *password);
  std::cout << "Banco de dados " << arguments.database << " criado. Usuário: ADMIN." << std::endl;
  return 0;
}

int Demo(const Arguments& arguments) {
  const std::string password = arguments.password.value_or(kDemoPassword);
  mill::CreateDemo(Connection(arguments), password);
  std::cout << "Tecelagem de demonstração criada em " << arguments.database << ". Usuário: ADMIN";
  if (!arguments.password) std::cout << ", senha: " << kDemoPassword;
  std::cout << "." << std::endl;
  return 0;
}

int Import(const Arguments& arguments) {
  const std::string text = ReadFile(arguments.file);
  const auto database = OpenCurrent(arguments);
  CheckPerson(*database, arguments);
  const mill::ImportResult result = mill::Import(*database, arguments.table, text);
  for (const std::string& error : result.errors) std::cerr << arguments.file << ": " << error << std::endl;
  if (!result.Ok()) return 1;
  std::cout << result.rows << " linha(s) de " << arguments.file << " em " << arguments.table << "." << std::endl;
  return 0;
}

std::unique_ptr<Application> StartFor(const Arguments& arguments, const host::Module& module, Equipment& equipment,
                                      ScriptedPerson& person) {
  ApplicationOptions options;
  options.connect = Connection(arguments);
  options.user = arguments.user;
  options.equipment = &equipment;
  auto application = Application::Start(options, module, person);
  CheckPerson(application->GetDatabase(), arguments);
  return application;
}

int Script(const Arguments& arguments) {
  const std::string source = ReadFile(arguments.file);
  // The module first: without screens the database is not even opened.
  const host::Module& module = ProgramModule();
  const JobsFolder jobs(arguments.jobs);
  const auto equipment = NewCommandEquipment("arquivo:" + jobs.Path(), false);
  ScriptedPerson person;
  const auto application = StartFor(arguments, module, *equipment, person);
  const double seconds = std::min(arguments.timeout, kLongestTimeout);
  const std::chrono::milliseconds timeout(static_cast<std::int64_t>(std::ceil(seconds * 1000)));
  const auto result = script::Run(*application, person, source, {arguments.file, timeout, std::cout, std::cerr});
  if (!result.ok) std::cerr << result.error << std::endl;
  return result.ok ? 0 : 1;
}

int PrintReport(const Arguments& arguments) {
  const host::Module& module = ProgramModule();
  const ReportToPrint report = Printable(module, arguments);
  const auto equipment = NewCommandEquipment(PrintTo(arguments), arguments.text);
  ScriptedPerson person;
  const auto application = StartFor(arguments, module, *equipment, person);
  for (const PrintJob& job : Print(*application, person, report)) {
    std::cout << job.report << ": " << (job.file.empty() ? job.destination : job.file) << std::endl;
  }
  return 0;
}

int Check(const Arguments& arguments) {
  const auto database = OpenCurrent(arguments);
  CheckPerson(*database, arguments);
  const std::vector<std::string> off = books::CheckBooks(*database);
  for (const std::string& line : off) std::cout << line << std::endl;
  if (!off.empty()) {
    throw host::InputError("os livros de " + arguments.database + " não fecham: " + std::to_string(off.size()) +
                           (off.size() == 1 ? " diferença." : " diferenças."));
  }
  std::cout << "Os livros de " << arguments.database << " fecham." << std::endl;
  return 0;
}

// The toolkit would end the program without a word for people.
void CheckDisplay() {
#if defined(__unix__) && !defined(__APPLE__)
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return;
  }
  throw host::InputError(desktop::kNoWindows);
#endif
}

int Desktop(const Arguments& arguments) {
  CheckDisplay();
  const host::Module& module = ProgramModule();
  desktop::DesktopOptions options;
  options.connect = Connection(arguments);
  if (arguments.user_given) options.user = arguments.user;
  options.signed_in = arguments.user_given && arguments.password.has_value() && !arguments.ask;
  options.version = TECELAGEM_VERSION;
  const auto run = reinterpret_cast<windows::Entry>(WindowsLibrary().Find(windows::kEntry));
  return run(&options, &module);
}

int Version() {
  std::cout << "tecelagem " << TECELAGEM_VERSION << std::endl;
  const host::Module& module = ProgramModule();
  std::cout << "módulo das telas: contrato " << module.contract_version << ", " << module.screen_count << " telas"
            << std::endl;
  return 0;
}

}  // namespace

int Carry(const Arguments& arguments) {
  switch (arguments.command) {
    case Command::kDesktop:
      return Desktop(arguments);
    case Command::kInit:
      return Init(arguments);
    case Command::kDemo:
      return Demo(arguments);
    case Command::kImport:
      return Import(arguments);
    case Command::kScript:
      return Script(arguments);
    case Command::kPrint:
      return PrintReport(arguments);
    case Command::kCheck:
      return Check(arguments);
    case Command::kScaleSimulator:
      return SimulateScale(arguments);
    case Command::kVersion:
      return Version();
  }
  return 2;
}

}  // namespace app::cli
