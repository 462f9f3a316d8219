#include "tests/printing/paper_screen.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <cmath>

#include "app/printing/layout/make_printout.h"
#include "app/printing/page/page_painter.h"
#include "host/date.h"

namespace test {
namespace {

host::FieldType TypeOf(const std::string& field, const std::vector<FieldsOfRow>& rows) {
  for (const FieldsOfRow& row : rows) {
    for (const auto& [name, value] : row) {
      if (name != field || value.IsNull()) continue;
      if (value.IsDate()) return host::FieldType::kDate;
      return value.IsNumber() ? host::FieldType::kFloat : host::FieldType::kText;
    }
  }
  return host::FieldType::kText;
}

// Where the ink of a text stands: its room is wider, and lower letters leave the upper part of a line empty.
QRectF InkOf(const app::printing::Printout& printout, const app::printing::TextItem& item) {
  constexpr double kPoint = 25.4 / 72;
  constexpr int kPixels = 1000;  // hinting does not count at this size
  const auto& style = printout.styles.at(item.style);
  QFont font(QString::fromStdString(style.family));
  font.setPixelSize(kPixels);
  font.setBold(style.bold);
  font.setItalic(style.italic);
  const double scale = style.size * kPoint / kPixels;
  const QFontMetricsF metrics(font);
  const QString text = QString::fromStdString(item.text);
  const QRectF ink = metrics.tightBoundingRect(text);
  const double room = item.width - metrics.horizontalAdvance(text) * scale;
  const double left = item.align == app::printing::TextAlign::kLeft    ? item.x
                      : item.align == app::printing::TextAlign::kRight ? item.x + room
                                                                       : item.x + room / 2;
  return {left + ink.left() * scale, item.baseline + ink.top() * scale, ink.width() * scale, ink.height() * scale};
}

}  // namespace

host::Dataset& PaperScreen::Add(const std::string& name, const std::vector<std::string>& fields,
                                const std::vector<FieldsOfRow>& rows) {
  std::vector<host::FieldDef> defs;
  defs.reserve(fields.size());
  for (const std::string& field : fields) defs.push_back({.name = field, .type = TypeOf(field, rows)});
  auto& dataset = datasets_[name];
  if (!dataset) dataset = std::make_unique<host::Dataset>(screen_, name);
  dataset->CreateFields(std::move(defs));
  for (const FieldsOfRow& row : rows) {
    dataset->Append();
    for (const auto& [field, value] : row) (*dataset)[field].Set(value);
    dataset->Post();
  }
  dataset->First();
  return *dataset;
}

app::printing::Printout PaperScreen::Print(const std::string& report, char kind, const std::string& layouts_folder,
                                           std::chrono::milliseconds limit) {
  return app::printing::MakePrintout({.report = report,
                                      .kind = kind,
                                      .unknown_functions = &functions_,
                                      .owner = screen_,
                                      .flags = {},
                                      .user = "ADMIN",
                                      .company = "TECELAGEM SÃO JOSÉ LTDA",
                                      .moment = host::DateTime::FromIso("2026-03-10 22:15:00").value(),
                                      .layouts_folder = layouts_folder,
                                      .settings = settings_},
                                     limit);
}

std::string TextOf(const app::printing::Printout& printout, std::size_t page) {
  std::string all;
  for (const auto& item : printout.pages.at(page).texts) all += item.text + "\n";
  return all;
}

std::string TextOf(const app::printing::Printout& printout) {
  std::string all;
  for (std::size_t page = 0; page < printout.pages.size(); ++page) all += TextOf(printout, page);
  return all;
}

void WritePage(const app::printing::Printout& printout, std::size_t page, int dpi, const std::string& file) {
  constexpr double kInch = 25.4;
  const auto dots = [dpi](double length) { return static_cast<int>(std::lround(length / kInch * dpi)); };
  QImage image(dots(printout.width), dots(printout.height), QImage::Format_RGB32);
  image.setDotsPerMeterX(static_cast<int>(std::lround(dpi / kInch * 1000)));
  image.setDotsPerMeterY(static_cast<int>(std::lround(dpi / kInch * 1000)));
  image.fill(Qt::white);
  QPainter painter(&image);
  app::printing::PaintPage(painter, printout, page, dpi);
  painter.end();
  ASSERT_TRUE(image.save(QString::fromStdString(file))) << file;
}

std::string Collisions(const app::printing::Printout& printout, std::size_t page) {
  const QRectF paper(0, 0, printout.width, printout.height);
  const auto& texts = printout.pages.at(page).texts;
  std::vector<QRectF> inks;
  inks.reserve(texts.size());
  for (const auto& text : texts) inks.push_back(InkOf(printout, text));
  std::string found;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (inks[i].isEmpty()) continue;
    if (!paper.contains(inks[i])) found += "outside the paper: " + texts[i].text + "\n";
    for (std::size_t j = i + 1; j < texts.size(); ++j) {
      if (inks[i].intersects(inks[j])) found += texts[i].text + " | " + texts[j].text + "\n";
    }
  }
  return found;
}

}  // namespace test
