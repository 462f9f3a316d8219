#include "app/cli/arguments.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "app/cli/scale_simulator.h"
#include "app/reports.h"

namespace app::cli {
namespace {

constexpr const char* kPasswordVariable = "TECELAGEM_PASSWORD";
constexpr const char* kSeeHelp = " (veja tecelagem --help)";
// The arguments of the reports. The help tells them report by report; a group without name would hide them from it too,
// but their names as well from what is said about them.
constexpr const char* kOfReports = "Argumentos dos relatórios";

// The library's words in the language of the program.
class Formatter : public CLI::Formatter {
 public:
  Formatter() {
    label("Positionals", "Argumentos");
    label("REQUIRED", "");
    column_width(26);
  }

  std::string make_usage(const CLI::App* app, std::string name) const override {
    std::string text = "Uso: " + name;
    if (app->get_parent() == nullptr) return text + " [COMANDO] [OPÇÕES]\n";
    for (const CLI::Option* option : app->get_options()) {
      if (option->get_positional()) text += " " + option->get_name(true, false);
    }
    return text + " [OPÇÕES]\n";
  }

  std::string make_group(std::string group, bool positional, std::vector<const CLI::Option*> options) const override {
    return group == kOfReports ? std::string() : CLI::Formatter::make_group(std::move(group), positional, options);
  }

  std::string make_footer(const CLI::App* app) const override { return app->get_footer(); }
};

void AddHelp(CLI::App& app) { app.set_help_flag("-h,--help", "Mostra esta ajuda e termina")->group("Opções"); }

CLI::App* AddCommand(CLI::App& app, const char* name, const char* description) {
  CLI::App* command = app.add_subcommand(name, description);
  command->group("Comandos");
  AddHelp(*command);
  return command;
}

void AddArgument(CLI::App& command, const char* name, std::string& value, const char* description) {
  command.add_option(name, value, description)->required()->option_text(" ");
}

// Windows ask for what a command has to be told.
void AddOptions(CLI::App& command, Arguments& arguments, std::string& password, bool windows) {
  command.option_defaults()->group("Opções");
  command
      .add_option("--database", arguments.database,
                  std::string("Arquivo do banco de dados, ou servidor/porta:caminho de um servidor") +
                      (windows ? " (padrão: o último)" : ""))
      ->required(!windows)
      ->option_text("BANCO");
  command
      .add_option("--user", arguments.user,
                  windows ? "Usuário que trabalha (padrão: o último)" : "Usuário que trabalha (padrão ADMIN)")
      ->option_text("NOME");
  command
      .add_option("--password", password,
                  std::string("Senha do usuário; na falta, vale a variável ") + kPasswordVariable)
      ->envname(kPasswordVariable)
      ->option_text("SENHA");
  command.add_option("--company", arguments.company, "Empresa, sufixo das tabelas (padrão 001)")->option_text("NNN");
  command.add_flag(
      "--no-statement-cache", [&arguments](std::int64_t) { arguments.statement_cache = false; },
      "Envia os comandos ao banco como foram escritos, sem reaproveitá-los");
}

void AddPrintOptions(CLI::App& print, Arguments& arguments) {
  AddArgument(print, "RELATORIO", arguments.report, "Nome do relatório, com os argumentos dele: veja no fim");
  print.option_defaults()->group("Opções");
  print.add_flag(
      "--text", [&arguments](std::int64_t) { arguments.text = true; },
      "Em texto, para impressora de etiquetas ou matricial, em vez de páginas");
  print.add_option("--pdf", arguments.pdf, "Grava as páginas neste arquivo PDF")->option_text("ARQUIVO");
  print.add_option("--output", arguments.output, "Grava o que sai neste arquivo: páginas em PDF, ou o texto como é")
      ->option_text("ARQUIVO");
  print
      .add_option("--to", arguments.to,
                  "Imprime em: uma impressora pelo nome, fila:NOME, dispositivo:/dev/usb/lp0, rede:HOST:9100")
      ->option_text("DESTINO");
}

// What any of the reports takes; whether the one that is printed takes it is seen when its name is known, which may
// stand behind. The help tells them report by report.
void AddReportArguments(CLI::App& print, std::span<const host::ListedReport> reports, Arguments& arguments) {
  for (const host::ListedReport& report : reports) {
    for (const host::ReportArgument& argument : ArgumentsOf(report)) {
      const std::string name = argument.name;
      if (arguments.given.contains(name)) continue;
      print.add_option("--" + name, arguments.given[name])->group(kOfReports);
    }
  }
  print.footer(HelpOnReports(reports));
}

void KeepGiven(const CLI::App& print, Arguments& arguments) {
  std::erase_if(arguments.given, [&print](const auto& entry) { return print.count("--" + entry.first) == 0; });
}

void AddSimulatorOptions(CLI::App& simulator, Arguments& arguments) {
  simulator.option_defaults()->group("Opções");
  simulator.add_option("--protocol", arguments.protocol, "Protocolo da balança: 0, 1 ou 2 (padrão 0)")
      ->option_text("N");
  simulator
      .add_option("--behaviour", arguments.behaviour,
                  "steady (padrão), wavering, garbage, silent, slow, cut, unstable, negative ou overload")
      ->option_text("QUAL");
  simulator.add_option("--weight", arguments.weight, "Peso em kg, com ponto (padrão 20.5)")->option_text("KG");
  simulator.add_option("--link", arguments.link, "Outro nome para a porta, fácil de digitar")->option_text("CAMINHO");
  simulator.add_option("--decimals", arguments.decimals, "\"Decimais\" da estação, no protocolo 2 (padrão 2)")
      ->option_text("N");
  simulator.add_option("--interval", arguments.interval, "Tempo entre dois pesos, protocolos 0 e 2 (padrão 100)")
      ->option_text("MS");
  simulator.add_option("--seconds", arguments.seconds, "Termina depois deste tempo (padrão: Ctrl+C)")
      ->option_text("SEGUNDOS");
}

void CheckOneTarget(const Arguments& arguments) {
  int targets = 0;
  for (const std::string* target : {&arguments.pdf, &arguments.output, &arguments.to})
    targets += target->empty() ? 0 : 1;
  if (targets == 0) throw UsageError{std::string("falta dizer para onde: --pdf, --output ou --to") + kSeeHelp};
  if (targets > 1) throw UsageError{std::string("--pdf, --output e --to não andam juntos") + kSeeHelp};
}

// What the library says in English, told as one Portuguese line.
std::string Explain(const CLI::ParseError& error) {
  std::string text = error.what();
  const auto after = [&text](std::string_view mark) {
    const auto at = text.find(mark);
    return at == std::string::npos ? text : text.substr(at + mark.size());
  };
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) return "argumento desconhecido: " + after("expected: ");
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
    return "falta o argumento " + text.substr(0, text.find(" is required"));
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    const std::string name = text.substr(0, text.find(':'));
    return text.find("At Most") == std::string::npos ? "falta o valor de " + name : name + " está repetido";
  }
  if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr) {
    return "valor inválido: " + after("Could not convert: ");
  }
  return text;
}

// A word that is no command, before any command was recognised; the library would only speak of an argument.
std::string UnknownCommand(const CLI::App& app, int count, const char* const* values) {
  if (count < 2 || values[1][0] == '-') return {};
  for (const CLI::App* command : app.get_subcommands({})) {
    if (command->get_name() == values[1]) return {};
  }
  return values[1];
}

}  // namespace

std::optional<Arguments> ReadArguments(int count, const char* const* values,
                                       const std::function<const host::Module&()>& module) {
  Arguments arguments;
  std::string password;
  CLI::App app(
      "Tecelagem: ordens, reservas de fio, baixas e estoque de malha de uma tecelagem.\n"
      "Sem comando, abre as janelas do programa.",
      "tecelagem");
  app.formatter(std::make_shared<Formatter>());
  AddHelp(app);
  app.require_subcommand(0, 1);

  struct Entry {
    CLI::App* command;
    Command kind;
  };
  CLI::App* desktop = AddCommand(app, "desktop", "Abre as janelas do programa; com usuário e senha, sem perguntar");
  CLI::App* init = AddCommand(app, "init", "Cria um banco de dados vazio, pronto para uma empresa");
  CLI::App* demo = AddCommand(app, "demo", "Cria um banco de dados com uma tecelagem de demonstração");
  CLI::App* import = AddCommand(app, "import", "Lê um arquivo CSV para uma tabela: tudo ou nada");
  CLI::App* script = AddCommand(app, "script", "Faz o trabalho de uma pessoa nas telas, escrito em JavaScript");
  CLI::App* print = AddCommand(app, "print", "Imprime um relatório sem janelas: PDF, arquivo ou impressora");
  CLI::App* check = AddCommand(app, "check", "Confere os livros e nomeia cada linha que não fecha");
  CLI::App* simulator =
      AddCommand(app, "scale-simulator", "Faz as vezes de uma balança, em uma porta serial de mentira");
  CLI::App* version = AddCommand(app, "version", "Mostra a versão do programa e do módulo das telas");
  AddArgument(*import, "TABELA", arguments.table, "Nome da tabela, sem o sufixo da empresa (MATERIAL)");
  AddArgument(*import, "ARQUIVO", arguments.file, "Arquivo .csv, com os nomes das colunas na primeira linha");
  AddArgument(*script, "ARQUIVO", arguments.file, "Arquivo .js");
  AddOptions(*desktop, arguments, password, true);
  desktop->add_flag(
      "--ask", [&arguments](std::int64_t) { arguments.ask = true; }, "Usuário e senha são só propostos");
  AddPrintOptions(*print, arguments);
  // The module is not loaded for the other commands: some work without it.
  print->preparse_callback([&](std::size_t) { AddReportArguments(*print, ReportsOf(module()), arguments); });
  AddSimulatorOptions(*simulator, arguments);
  for (CLI::App* command : {init, demo, import, script, print, check}) AddOptions(*command, arguments, password, false);
  script->add_option("--timeout", arguments.timeout, "Termina o script que passar deste tempo (padrão: sem limite)")
      ->option_text("SEGUNDOS");
  script->add_option("--jobs", arguments.jobs, "Pasta que fica com o que o script imprime (padrão: some no fim)")
      ->option_text("PASTA");

  const std::string unknown = UnknownCommand(app, count, values);
  if (!unknown.empty()) throw UsageError{"comando desconhecido: " + unknown + kSeeHelp};
  try {
    app.parse(count, values);
  } catch (const CLI::CallForHelp&) {
    std::cout << app.help();
    return std::nullopt;
  } catch (const CLI::ParseError& error) {
    throw UsageError{Explain(error) + kSeeHelp};
  }
  if (app.get_subcommands().empty()) return arguments;  // the windows

  if (!(arguments.timeout >= 0)) throw UsageError{std::string("valor inválido: --timeout") + kSeeHelp};

  const CLI::App* chosen = app.get_subcommands().front();
  for (const Entry& entry :
       {Entry{desktop, Command::kDesktop}, Entry{init, Command::kInit}, Entry{demo, Command::kDemo},
        Entry{import, Command::kImport}, Entry{script, Command::kScript}, Entry{print, Command::kPrint},
        Entry{check, Command::kCheck}, Entry{simulator, Command::kScaleSimulator}, Entry{version, Command::kVersion}}) {
    if (entry.command == chosen) arguments.command = entry.kind;
  }
  if (arguments.command == Command::kPrint) {
    KeepGiven(*print, arguments);
    CheckOneTarget(arguments);
  }
  if (arguments.command == Command::kScaleSimulator) CheckSimulator(arguments);
  for (CLI::App* command : {desktop, init, demo, import, script, print, check}) {
    if (command != chosen) continue;
    if (command->count("--password") > 0) arguments.password = password;
    arguments.user_given = command->count("--user") > 0;
  }
  return arguments;
}

}  // namespace app::cli
