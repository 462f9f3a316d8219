// What paper costs: the printout of an order of 200 items, from the click to the PDF file, and a list of 30,000 rows
// and twelve columns, with the memory that each needs.
//
//   bench_report [ROWS]    rows of the list, 30,000 without it
#include <sys/resource.h>

#include <QGuiApplication>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "app/printing/layout/make_printout.h"
#include "app/printing/page/pdf.h"
#include "app/printing/page/printout.h"
#include "bench/large_order.h"
#include "bench/timing.h"
#include "host/kit/dataset.h"
#include "host/kit/screen.h"
#include "support/mill.h"

namespace {

namespace fs = std::filesystem;
namespace printing = app::printing;

double PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

// Times of the two halves of every printout that is asked for.
class PdfEquipment : public app::Equipment {
 public:
  explicit PdfEquipment(fs::path folder) : folder_(std::move(folder)) {}

  std::unique_ptr<host::SerialPort> NewSerialPort(app::PortUse) override { return nullptr; }
  std::optional<app::PrintJob> Print(const app::PrintRequest& request) override {
    const std::string file = (folder_ / (request.report + ".pdf")).string();
    printing::Printout printout;
    placed_ms = bench::Milliseconds([&] { printout = printing::MakePrintout(request); });
    drawn_ms = bench::Milliseconds([&] { printing::WritePdf(printout, file); });
    pages = printout.pages.size();
    return app::PrintJob{request.report, request.kind, file, ""};
  }

  void Tell(const std::string& what) const {
    std::cout << what << ": placed " << placed_ms / 1000 << " s, PDF " << drawn_ms / 1000 << " s, " << pages
              << " pages, peak memory of the program " << PeakMegabytes() << " MB\n";
  }

  double placed_ms = 0;
  double drawn_ms = 0;
  std::size_t pages = 0;

 private:
  fs::path folder_;
};

void MeasureOrder(PdfEquipment& equipment) {
  test::Mill::Options options;
  options.equipment = &equipment;
  test::Mill mill(options);
  bench::FillLargeOrder(mill, 200);
  host::Screen& screen = mill.Open("TfmCadLoteTec");
  mill.Type(screen, "EdtNumero", bench::kLargeOrder);
  const double before = PeakMegabytes();
  std::vector<double> times;
  for (int run = 0; run < 6; ++run) {
    const double time = bench::Milliseconds([&] { mill.Click(screen, "BtnImprimir"); });
    if (run > 0) times.push_back(time);
  }
  if (equipment.pages == 0) throw std::runtime_error("the order was not printed");
  std::cout << "order of 200 items, click to PDF: median " << bench::Quantile(times, 0.5) / 1000 << " s (before it "
            << before << " MB)\n";
  equipment.Tell("  of the last one");
}

constexpr const char* kListLayout = R"js(report({
  title: "Lista",
  page: { size: "A4", landscape: true },
  font: { size: 8 },
  body: [table({
    rows: TbLista,
    columns: ["NUMERO", "CODIGO", "DESCRICAO", "COR", "LOTE", "DATA", "QTDE", "CUSTO", "TOTAL", "MAQUINA", "TURNO",
              "OBS"].map(field => ({ field, total: field === "QTDE" || field === "TOTAL" })),
    totals: true,
  })],
});
)js";

void FillList(host::Dataset& list, int rows) {
  using host::FieldType;
  list.CreateFields({{"NUMERO"},
                     {"CODIGO"},
                     {"DESCRICAO"},
                     {"COR"},
                     {"LOTE"},
                     {"DATA", FieldType::kDate},
                     {"QTDE", FieldType::kFloat, 0, "0.000"},
                     {"CUSTO", FieldType::kFloat, 0, "0.00"},
                     {"TOTAL", FieldType::kFloat, 0, "0.00"},
                     {"MAQUINA"},
                     {"TURNO"},
                     {"OBS"}});
  const host::Date first = host::Date::FromParts(2025, 1, 1).value();
  for (int row = 0; row < rows; ++row) {
    const double quantity = 18 + row % 700 * 0.013;
    const double price = 31 + row % 90 * 0.17;
    const std::vector<host::Value> values = {std::to_string(100000 + row / 40),
                                             "M" + std::to_string(1000 + row % 300),
                                             "MEIA MALHA 30/1 PENTEADA",
                                             std::to_string(row % 60),
                                             std::to_string(100000000 + row),
                                             first.AddDays(row / 90),
                                             quantity,
                                             price,
                                             quantity * price,
                                             std::to_string(row % 12),
                                             std::to_string(1 + row % 3),
                                             row % 7 == 0 ? "Conferir tensão" : ""};
    list.Append();
    for (std::size_t field = 0; field < values.size(); ++field) list.FieldAt(field).Set(values[field]);
    list.Post();
  }
  list.First();
}

void MeasureList(PdfEquipment& equipment, const fs::path& folder, int rows) {
  std::ofstream(folder / "Lista.js") << kListLayout;
  test::Mill mill;
  host::Screen screen(mill.App(), "TfmLista", "fmLista", "Lista");
  host::Dataset list(screen, "TbLista");
  FillList(list, rows);
  std::cout << "list of " << rows << " rows (before it " << PeakMegabytes() << " MB)\n";
  equipment.Print({.report = "Lista",
                   .kind = 'W',
                   .unknown_functions = nullptr,
                   .owner = screen,
                   .flags = {},
                   .user = "ADMIN",
                   .company = "",
                   .moment = host::DateTime::FromIso("2026-03-10 22:15:00").value(),
                   .layouts_folder = folder.string(),
                   .settings = mill.App().GetUserSettings()});
  equipment.Tell("  12 columns");
}

}  // namespace

int main(int count, char** values) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(count, values);
  const int rows = count > 1 ? std::atoi(values[1]) : 30'000;
  const fs::path folder = fs::temp_directory_path() / "tecelagem_bench_report";
  fs::create_directories(folder);
  try {
    PdfEquipment equipment(folder);
    MeasureOrder(equipment);
    MeasureList(equipment, folder, rows);
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 1;
  }
  fs::remove_all(folder);
  return 0;
}
