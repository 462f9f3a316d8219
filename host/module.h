// The entry of the loadable module.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace host {

class Host;
class Screen;

/// Raised with every change that an older host or module would not survive.
inline constexpr std::uint32_t kContractVersion = 4;

struct ScreenClass {
  const char* class_name;  // "TfmCadLoteTec"
  const char* menu;        // menu heading, Portuguese; empty when only another screen opens it
  const char* caption;     // menu entry
  std::unique_ptr<Screen> (*create)(Host&);
};

/// Which layouts a report has: drawn (print type "W"), text ("T") or both.
enum class ReportLayouts {
  kDrawn,
  kText,
  kBothByScreen,      // a person chooses the print type at the screen
  kBothByDestination  // the screen asks for "W"; where it goes decides whether the text is printed instead
};
constexpr bool HasDrawn(ReportLayouts layouts) { return layouts != ReportLayouts::kText; }
constexpr bool HasText(ReportLayouts layouts) { return layouts != ReportLayouts::kDrawn; }

/// What a value on the command line must be.
enum class ArgumentKind {
  kText,    // anything but nothing: a code, the number of an order
  kNumber,  // whole, from 1
  kDate     // DD/MM/YYYY
};

/// What a report has to be told when it is printed without a person.
struct ReportArgument {
  const char* name;     // "order": --order on the command line
  const char* value;    // stands for the value in the help: "NUMERO"
  const char* caption;  // what it is, Portuguese
  ArgumentKind kind;
  bool required;
};

struct ListedReport {
  const char* name;     // "WTecLoteCad", which its layouts bear too
  const char* caption;  // for people: "Ordem de tecelagem"
  ReportLayouts layouts;
  const ReportArgument* arguments;  // null where there are none
  std::size_t argument_count;
  // An operator script: what a person does at the screens to print it. It finds the arguments by name in `given`, as
  // text, those left out undefined, and the print type wanted, "W" or "T", in `given.type`.
  const char* print_script;
};

struct Module {
  std::uint32_t contract_version;
  const ScreenClass* screens;
  std::size_t screen_count;
  const ListedReport* reports = nullptr;  // null where there are none
  std::size_t report_count = 0;
};

/// Name and type of the module's one exported function. It hands back the lists of screens and reports, which live as
/// long as the module is loaded, or null when it does not speak the version asked for; nothing is created before that.
inline constexpr const char* kModuleEntry = "tecelagem_module";
using ModuleEntry = const Module* (*)(std::uint32_t contract_version);

}  // namespace host
