#include "paper_station.h"

#include <QProcess>
#include <QTest>

#include "host/errors.h"

namespace test {
namespace {

constexpr int kRows = 200;

// Four pages or so of rows, and a label per row.
constexpr const char* kList = R"js(
report({
  title: "Lista de São João",
  page: { size: "A4" },
  body: [table({ rows: TbItens.rows, columns: [
    { caption: "Código", field: "Codigo", width: 40 },
    { caption: "Quantidade", field: "Qtde", width: 40, align: "right", format: "0.000", total: true },
  ] })]
});
)js";
constexpr const char* kLabels = R"js(
text({ encoding: "cp850", rows: TbItens.rows.slice(0, 3), write: row => "^XA" + row.Codigo + "^XZ\r\n" });
)js";

}  // namespace

PaperStation::PaperStation() {
  std::vector<FieldsOfRow> rows;
  for (int i = 1; i <= kRows; ++i) {
    rows.push_back({{"Codigo", "M" + std::to_string(i)}, {"Qtde", host::Value(i * 0.5)}});
  }
  screen_.Add("TbItens", {"Codigo", "Qtde"}, rows);
  WriteLayout(QStringLiteral("Lista.js"), kList);
  WriteLayout(QStringLiteral("Etiqueta.text.js"), kLabels);
  window_.resize(1100, 700);
  window_.show();
  window_.activateWindow();
  if (!QTest::qWaitForWindowActive(&window_)) ADD_FAILURE() << "the window does not become active";
}

void PaperStation::WriteLayout(const QString& file, const QByteArray& text) {
  QDir(folder_.path()).mkpath(QStringLiteral("layouts"));
  QFile out(In(QStringLiteral("layouts/") + file));
  ASSERT_TRUE(out.open(QIODevice::WriteOnly));
  out.write(text);
}

std::optional<app::PrintJob> PaperStation::Print(const std::string& report, char kind, const host::ReportFlags& flags,
                                                 const host::ListedReport* listed) {
  return equipment_.Print({.report = report,
                           .kind = kind,
                           .unknown_functions = nullptr,
                           .listed = listed,
                           .owner = screen_.Screen(),
                           .flags = flags,
                           .user = "ADMIN",
                           .company = "001",
                           .moment = host::DateTime::FromIso("2026-03-10 22:15:00").value(),
                           .layouts_folder = In(QStringLiteral("layouts")).toStdString(),
                           .settings = settings_});
}

std::string PaperStation::WhyRefused(const std::string& report, char kind, const host::ReportFlags& flags) {
  try {
    Print(report, kind, flags);
  } catch (const host::InputError& error) {
    return error.what();
  }
  return {};
}

QByteArray PaperStation::Whole(const QString& file) {
  QFile in(file);
  return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

std::string PaperStation::OutputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  if (!process.waitForFinished(20'000)) ADD_FAILURE() << program.toStdString() << " does not end";
  return process.readAllStandardOutput().toStdString();
}

}  // namespace test
