// What it costs to bring a year's report into a dataset: 100,000 rows of 35 columns read by a query, then copied or
// handed over. One way for each run of the program, so that none finds the memory that another gave back.
#include "host/kit/dataset.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>
#include <utility>

#include "app/application.h"
#include "app/operator/scripted_person.h"
#include "bench/timing.h"
#include "host/kit/screen.h"

namespace {

using Load = std::function<void(host::Dataset&, std::unique_ptr<host::TTIQuery>)>;

/// A file of its own with the rows in it, gone with the object.
class ReportFile {
 public:
  ReportFile()
      : path_(std::filesystem::temp_directory_path() / ("tecelagem-bench-" + std::to_string(::getpid()) + ".fdb")) {
    std::filesystem::remove(path_);
    const auto database = app::firebird::Database::Create(Options());
    std::string columns;
    std::string values;
    // As a list of rolls has them: codes, names, remarks, quantities, counts and days.
    for (int n = 1; n <= 7; ++n) {
      for (const char* kind : {"CODIGO? VARCHAR(15), ", "NOME? VARCHAR(60), ", "QTDE? DOUBLE PRECISION, ",
                               "CONTA? INTEGER, ", "DIA? DATE, "}) {
        std::string column = kind;
        column.replace(column.find('?'), 1, std::to_string(n));
        columns += column;
      }
      values += "'M' || :N, 'MEIA MALHA PENTEADA 30/1 ' || :N, :N / 7e0, :N, DATE '2026-01-01' + MOD(:N, 365), ";
    }
    database->Execute("CREATE TABLE RELATORIO (" + columns.substr(0, columns.size() - 2) + ")", {});
    database->CommitRetaining();
    database->Execute(
        "EXECUTE BLOCK (LINHAS INTEGER = ?) AS DECLARE N INTEGER = 0; BEGIN WHILE (N < LINHAS) DO BEGIN "
        "N = N + 1; INSERT INTO RELATORIO VALUES (" +
            values.substr(0, values.size() - 2) + "); END END",
        {100000});
    database->CommitRetaining();
  }
  ~ReportFile() {
    for (const char* end : {"", ".settings"}) std::filesystem::remove(path_.string() + end);
    std::filesystem::remove_all(path_.string() + ".lock");
  }
  ReportFile(const ReportFile&) = delete;
  ReportFile& operator=(const ReportFile&) = delete;

  app::firebird::ConnectOptions Options() const {
    app::firebird::ConnectOptions options;
    options.database = path_.string();
    return options;
  }

 private:
  std::filesystem::path path_;
};

/// Megabytes that the system tells of this process: "VmRSS" what it has, "VmHWM" the most that it had.
double Memory(const std::string& what) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == what + ":" && status >> kilobytes) return kilobytes / 1024;
  }
  return 0;
}

void Measure(const ReportFile& file, const std::string& way, const Load& load) {
  const host::Module no_module{host::kContractVersion, nullptr, 0};
  app::ScriptedPerson person;
  app::ApplicationOptions options;
  options.connect = file.Options();
  options.settings_file = options.connect.database + ".settings";
  const auto application = app::Application::Start(options, no_module, person);
  host::Screen screen(*application, "TfmLista", "fmLista", "Lista");
  host::Dataset dataset(screen, "QryRelatorio");
  auto query = application->GetTabela().IBDatabase().NewQuery();
  query->SQL.Add("SELECT * FROM RELATORIO");
  std::ofstream("/proc/self/clear_refs") << 5;  // the most that it had counts from here
  const double before = Memory("VmRSS");
  const double read = bench::Milliseconds([&] { query->Open(); });
  const double after_read = Memory("VmHWM");
  const double loaded = bench::Milliseconds([&] { load(dataset, std::move(query)); });
  std::cout << std::left << std::setw(14) << way << std::right << std::fixed << std::setprecision(0)
            << dataset.RecordCount() << " linhas x " << dataset.FieldCount() << " colunas: leitura " << read
            << " ms, no máximo " << after_read - before << " MB; carga " << loaded << " ms, no máximo "
            << Memory("VmHWM") - before << " MB, ficam " << Memory("VmRSS") - before << " MB\n";
}

}  // namespace

int main(int count, char** values) {
  const std::string way = count > 1 ? values[1] : "";
  if (way != "copiar" && way != "entregar") {
    std::cerr << "bench_dataset copiar | entregar\n";
    return 1;
  }
  try {
    const ReportFile file;
    Measure(file, way, [&](host::Dataset& dataset, std::unique_ptr<host::TTIQuery> query) {
      if (way == "copiar") {
        dataset.LoadFrom(*query);
      } else {
        dataset.LoadFrom(std::move(query));
      }
    });
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
