// What comes out: a PDF file read back, and dots on a printer.
#include "app/printing/page/pdf.h"

#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/printing/page/page_painter.h"
#include "tests/printing/layout_fixture.h"

namespace {

using app::printing::PaintPage;
using app::printing::PaperOf;
using app::printing::Printout;
using app::printing::WritePdf;
using test::OutputOf;
using testing::HasSubstr;
using testing::Not;

class OnPaper : public test::LayoutTest {
 protected:
  std::string Pdf(const Printout& printout) {
    const std::string file = folder_.File("out.pdf");
    WritePdf(printout, file);
    return file;
  }
  std::string TextOfPdf(const Printout& printout) { return OutputOf("pdftotext -layout '" + Pdf(printout) + "' -"); }
  // A page of the file in shades of grey.
  QImage Raster(const Printout& printout, int dpi) {
    const std::string picture = folder_.File("page");
    OutputOf("pdftoppm -gray -r " + std::to_string(dpi) + " -f 1 -l 1 -singlefile '" + Pdf(printout) + "' '" + picture +
             "'");
    return QImage(QString::fromStdString(picture + ".pgm"));
  }
};

// The dark part of a picture.
struct Dark {
  int left = 1 << 20;
  int top = 1 << 20;
  int right = -1;  // the last dark dot
  int bottom = -1;
};

Dark DarkPart(const QImage& image) {
  Dark part;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qGray(image.pixel(x, y)) > 127) continue;
      part = {std::min(part.left, x), std::min(part.top, y), std::max(part.right, x), std::max(part.bottom, y)};
    }
  }
  return part;
}

double Dots(double millimetres, int dpi) { return millimetres / 25.4 * dpi; }

QImage Sheet(const Printout& printout, int dpi) {
  QImage image(static_cast<int>(std::lround(Dots(printout.width, dpi))),
               static_cast<int>(std::lround(Dots(printout.height, dpi))), QImage::Format_RGB32);
  image.setDotsPerMeterX(static_cast<int>(std::lround(dpi / 0.0254)));
  image.setDotsPerMeterY(static_cast<int>(std::lround(dpi / 0.0254)));
  image.fill(Qt::white);
  return image;
}

constexpr const char* kBox =
    "label({ width: 100, height: 60, draw: () => [{ box: [10, 20, 50, 30], fill: 'black' }] });";

TEST_F(OnPaper, TextIsFoundWithItsAccents) {
  const Printout printout = Blocks(
      "heading('Ordem de Tecelagem nº 123'), paragraph('AÇÃO ÁÉÍÓÚ àâãéêíóôõúç ÀÂÃÊÔÕÇ fio ficha afluente «€» – 19 "
      "µm²'),"
      "fields([['Malharia', 'São José']]), table({ rows: [['Açaí', 1.5]], columns: ["
      "{ caption: 'Descrição', value: r => r[0] }, { caption: 'Peso', format: '0.000', value: r => r[1] }] })");
  const std::string text = TextOfPdf(printout);
  EXPECT_THAT(text, HasSubstr("Ordem de Tecelagem nº 123"));
  EXPECT_THAT(text, HasSubstr("AÇÃO ÁÉÍÓÚ àâãéêíóôõúç ÀÂÃÊÔÕÇ fio ficha afluente «€» – 19 µm²"));
  EXPECT_THAT(text, HasSubstr("São José"));
  EXPECT_THAT(text, HasSubstr("Descrição"));
  EXPECT_THAT(text, HasSubstr("1,500"));
  EXPECT_THAT(text, HasSubstr("Página 1 de 1"));
}

TEST_F(OnPaper, TitlePagesPaperAndFonts) {
  AddRows(100);
  const Printout printout =
      Blocks("table({ rows: TbLista, columns: [{ field: 'NOME' }] }), paragraph('x', { bold: true, italic: true })",
             "page: { landscape: true },");
  ASSERT_GT(printout.pages.size(), 1u);
  const std::string file = Pdf(printout);
  const std::string facts = OutputOf("pdfinfo '" + file + "'");
  EXPECT_THAT(facts, testing::ContainsRegex("Title: +Teste"));
  EXPECT_THAT(facts, testing::ContainsRegex("Pages: +" + std::to_string(printout.pages.size())));
  EXPECT_THAT(facts, testing::ContainsRegex("Page size: +842 x 595 pts \\(A4\\)"));
  std::istringstream fonts(OutputOf("pdffonts '" + file + "'"));
  std::string line;
  std::getline(fonts, line);  // head: name, type, encoding, embedded, subset, unicode
  std::getline(fonts, line);
  int count = 0;
  while (std::getline(fonts, line)) {
    EXPECT_THAT(line, testing::ContainsRegex("yes +(yes|no) +yes"));
    ++count;
  }
  EXPECT_GE(count, 3);
}

TEST_F(OnPaper, ALabelIsALabelsSize) {
  const std::string facts = OutputOf("pdfinfo '" + Pdf(Printed(kBox)) + "'");
  EXPECT_THAT(facts, testing::ContainsRegex("Page size: +283(\\.[0-9]+)? x 170(\\.[0-9]+)? pts"));
}

TEST_F(OnPaper, MillimetresAreExactInAPdf) {
  const QImage image = Raster(Printed(kBox), 600);
  const Dark part = DarkPart(image);
  EXPECT_NEAR(part.left, Dots(10, 600), 1.1);
  EXPECT_NEAR(part.top, Dots(20, 600), 1.1);
  EXPECT_NEAR(part.right + 1, Dots(60, 600), 1.1);
  EXPECT_NEAR(part.bottom + 1, Dots(50, 600), 1.1);
}

TEST_F(OnPaper, MillimetresAreExactAtTheDotsOfALabelPrinter) {
  const Printout label = Printed(kBox);
  for (const int dpi : {203, 300, 600}) {
    QImage image = Sheet(label, dpi);
    QPainter painter(&image);
    PaintPage(painter, label, 0);
    painter.end();
    const Dark part = DarkPart(image);
    EXPECT_EQ(part.left, std::lround(Dots(10, dpi))) << dpi;
    EXPECT_EQ(part.top, std::lround(Dots(20, dpi))) << dpi;
    EXPECT_EQ(part.right + 1, std::lround(Dots(60, dpi))) << dpi;
    EXPECT_EQ(part.bottom + 1, std::lround(Dots(50, dpi))) << dpi;
  }
}

TEST_F(OnPaper, AZoomedViewIsTheSamePageLarger) {
  const Printout label = Printed(kBox);
  QImage image = Sheet(label, 192);
  image.setDotsPerMeterX(3780);  // a screen of 96 dpi
  image.setDotsPerMeterY(3780);
  QPainter painter(&image);
  PaintPage(painter, label, 0, 192);
  EXPECT_EQ(painter.transform(), QTransform()) << "the painter is as it was";
  painter.end();
  EXPECT_EQ(DarkPart(image).left, std::lround(Dots(10, 192)));
  EXPECT_EQ(DarkPart(image).bottom + 1, std::lround(Dots(50, 192)));
}

TEST_F(OnPaper, ABarCodesBarsAreWholeDots) {
  const Printout label = Printed(
      "label({ width: 100, height: 60, draw: () => ["
      "{ barcode: 'code128', value: '000123', x: 10.3, y: 5.7, w: 80.1, h: 20, text: false }] });");
  QImage image = Sheet(label, 203);
  QPainter painter(&image);
  PaintPage(painter, label, 0);
  painter.end();
  const auto& symbol = label.pages.at(0).barcodes.at(0).symbol;
  const int y = symbol.y + symbol.height / 2;
  std::vector<bool> dark(static_cast<std::size_t>(image.width()), false);
  for (const auto& bar : symbol.bars) {
    for (int x = bar.x; x < bar.x + bar.width; ++x) dark[static_cast<std::size_t>(x)] = true;
  }
  for (int x = 0; x < image.width(); ++x) {
    const int grey = qGray(image.pixel(x, y));
    EXPECT_EQ(grey, dark[static_cast<std::size_t>(x)] ? 0 : 255) << "dot " << x;
  }
}

// The last dark dot of right-aligned text and the first of left-aligned text, whatever draws them.
TEST_F(OnPaper, TextStandsAtTheSamePlaceOnScreenPrinterAndPdf) {
  const Printout label = Printed(
      "label({ width: 100, height: 60, draw: () => ["
      "{ text: 'HHHHHHHHHHHHHHHHHHHH', x: 5, y: 10, w: 90, size: 12 }] });");
  const double expected_right = 5 + [&] {
    const Dark part = DarkPart(Raster(label, 600));
    return part.right / 600.0 * 25.4 - 5;
  }();
  for (const int dpi : {96, 203, 300}) {
    QImage image = Sheet(label, dpi);
    QPainter painter(&image);
    PaintPage(painter, label, 0);
    painter.end();
    EXPECT_NEAR(DarkPart(image).right / double(dpi) * 25.4, expected_right, 1.5 * 25.4 / dpi) << dpi;
  }
  const Printout right = Printed(
      "label({ width: 100, height: 60, draw: () => ["
      "{ text: 'HHHHHHHHHHHHHHHHHHHH', x: 5, y: 10, w: 90, size: 12, align: 'right' }] });");
  EXPECT_NEAR(DarkPart(Raster(right, 600)).right / 600.0 * 25.4, 95, 0.6) << "the letter's own air is left";
}

TEST_F(OnPaper, WrappedLinesKeepToTheirRoomOnEveryDevice) {
  const Printout label = Printed(
      "label({ width: 100, height: 60, draw: () => ["
      "{ text: 'Malha dupla com elastano, extra larga, tinta em fio '.repeat(6), x: 10, y: 2, w: 60, wrap: true }] "
      "});");
  ASSERT_GT(label.pages[0].texts.size(), 4u);
  for (const int dpi : {96, 203}) {
    QImage image = Sheet(label, dpi);
    QPainter painter(&image);
    PaintPage(painter, label, 0);
    painter.end();
    EXPECT_LE(DarkPart(image).right, Dots(70, dpi) + 1) << dpi;
    EXPECT_GE(DarkPart(image).left, Dots(10, dpi) - 1) << dpi;
  }
}

TEST_F(OnPaper, SomePagesOfMany) {
  AddRows(200);
  const Printout printout = Blocks("table({ rows: TbLista, columns: [{ field: 'NOME' }] })");
  ASSERT_GE(printout.pages.size(), 3u);
  const std::string file = folder_.File("some.pdf");
  {
    QPdfWriter writer(QString::fromStdString(file));
    app::printing::PaintPages(writer, printout, 1, 2);
  }
  EXPECT_THAT(OutputOf("pdfinfo '" + file + "'"), testing::ContainsRegex("Pages: +2"));
  const std::string text = OutputOf("pdftotext '" + file + "' -");
  EXPECT_THAT(text, HasSubstr("Página 2 de "));
  EXPECT_THAT(text, Not(HasSubstr("Página 1 de ")));
  EXPECT_THROW(
      {
        QImage image(10, 10, QImage::Format_RGB32);
        QPainter painter(&image);
        PaintPage(painter, printout, printout.pages.size());
      },
      std::out_of_range);
}

TEST_F(OnPaper, AFileThatCannotBeWritten) {
  const Printout printout = Blocks("paragraph('a')");
  EXPECT_THROW(WritePdf(printout, folder_.File("nowhere/out.pdf")), host::InputError);
  std::ofstream(folder_.File("old.pdf")) << "old";
  EXPECT_THROW(WritePdf(Printed("text({ write: () => 'a' });", 'T'), folder_.File("old.pdf")), host::InputError);
  EXPECT_EQ(std::filesystem::file_size(folder_.File("old.pdf")), 3u) << "what was there is left alone";
}

TEST_F(OnPaper, TwoThousandRowsInAFile) {
  AddRows(999);
  const Printout printout = Blocks(
      "table({ rows: TbLista.rows.concat(TbLista.rows), columns: [{ field: 'NOME' },"
      " { field: 'QTDE', total: true }], totals: true })");
  const std::string text = TextOfPdf(printout);
  EXPECT_THAT(text, HasSubstr("R999"));
  EXPECT_THAT(text, HasSubstr("999000"));
}

}  // namespace
