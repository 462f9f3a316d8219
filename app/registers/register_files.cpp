// A register in and out of files.
#include <algorithm>
#include <fstream>

#include "app/file_content.h"
#include "app/mill/csv.h"
#include "app/mill/export.h"
#include "app/mill/import.h"
#include "app/registers/register_screen.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::registers {
namespace {

constexpr std::size_t kErrorsTold = 20;
constexpr std::string_view kKind = "Arquivos CSV (*.csv)";

void WriteFile(const std::string& path, const std::string& text) {
  std::ofstream out(PathOf(path), std::ios::binary | std::ios::trunc);
  out << text;
  out.close();
  if (!out) throw host::InputError("O arquivo \"" + path + "\" não pôde ser gravado.");
}

std::string Count(std::size_t rows) { return std::to_string(rows) + (rows == 1 ? " registro" : " registros"); }

std::string ErrorText(const std::vector<std::string>& errors) {
  std::string text = "Nada foi importado.";
  for (std::size_t i = 0; i < errors.size() && i < kErrorsTold; ++i) text += "\n" + errors[i];
  if (errors.size() > kErrorsTold) text += "\nE mais " + std::to_string(errors.size() - kErrorsTold) + ".";
  return text;
}

/// The busy indicator, for as long as this lives.
class Working {
 public:
  Working(const host::Screen& screen, std::string_view text) : screen_(screen) {
    screen_.GetHost().GetFuncoes().Ocupado(true, screen_, text);
  }
  ~Working() { screen_.GetHost().GetFuncoes().Ocupado(false, screen_, ""); }
  Working(const Working&) = delete;
  Working& operator=(const Working&) = delete;

 private:
  const host::Screen& screen_;
};

}  // namespace

void TfmRegister::BtnImportarClick() {
  RequireRight("A");
  if (!MayLeaveRecord()) throw host::Abort();
  const auto path = application_.AskFile({.save = false,
                                          .title = "Importar " + std::string(description_.caption),
                                          .kind = std::string(kKind),
                                          .proposed = ""});
  if (path) ImportFile(*path);
}

void TfmRegister::ImportFile(const std::string& path) {
  const std::string text = ReadFile(path);
  mill::ImportResult result;
  {
    const Working working(*this, "Importando...");
    result = mill::Import(application_.GetDatabase(), TableOf(text), text);
  }
  if (!result.Ok()) Refuse(ErrorText(result.errors));
  GetHost().GetFuncoes().GeraLog(tables::LogSubject(description_),
                                 "IMPORTACAO DE " + std::to_string(result.rows) + " REGISTROS",
                                 host::LogOperation::kInclusion, "", nullptr);
  application_.GetDatabase().MakeDurable();
  BuscaLista();
  Inform("Importação concluída: " + Count(result.rows) + ".");
}

// A file with the detail's own key column holds the rows of the detail.
std::string_view TfmRegister::TableOf(std::string_view csv_text) const {
  if (!description_.detail) return description_.table;
  try {
    const mill::CsvFile file = mill::ReadCsv(csv_text);
    const bool of_detail =
        std::find(file.header.begin(), file.header.end(), description_.detail->key.name) != file.header.end();
    return of_detail ? description_.detail->table : description_.table;
  } catch (const host::InputError&) {
    return description_.table;  // the import says what is wrong with the file
  }
}

void TfmRegister::BtnExportarClick() {
  const std::string caption(description_.caption);
  std::string told;
  if (const auto rows = ExportTable(description_.table, caption)) told = caption + ": " + Count(*rows) + ".";
  if (!told.empty() && description_.detail) {
    const std::string of_detail = caption + " - " + std::string(description_.detail->caption);
    if (const auto rows = ExportTable(description_.detail->table, of_detail)) {
      told += "\n" + of_detail + ": " + Count(*rows) + ".";
    }
  }
  if (!told.empty()) Inform("Exportação concluída.\n" + told);
}

std::optional<std::size_t> TfmRegister::ExportTable(std::string_view table, std::string_view caption) {
  const auto path = application_.AskFile({.save = true,
                                          .title = "Exportar " + std::string(caption),
                                          .kind = std::string(kKind),
                                          .proposed = std::string(table) + ".csv"});
  if (!path) return std::nullopt;
  const Working working(*this, "Exportando...");
  const mill::ExportedTable exported = mill::Export(application_.GetDatabase(), table);
  WriteFile(*path, exported.csv);
  return exported.rows;
}

}  // namespace app::registers
