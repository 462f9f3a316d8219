// Items of bands and labels: where they stand, to the fraction of a millimetre.
#include <gmock/gmock.h>

#include <cmath>

#include "tests/printing/layout_fixture.h"

namespace {

using app::printing::Printout;
using app::printing::TextAlign;
using test::Item;
using test::TextOf;
using testing::SizeIs;

class ItemPlacement : public test::LayoutTest {
 protected:
  Printout Label(const std::string& items) {
    return Printed("label({ width: 100, height: 60, dpi: 203, draw: () => [" + items + "] });");
  }
};

// Some of the beginning of a text, and "…": how much depends on the font.
bool IsCut(const std::string& shown, const std::string& whole) {
  const std::string ellipsis = "…";
  if (!shown.ends_with(ellipsis) || shown.size() <= ellipsis.size()) return false;
  return whole.starts_with(shown.substr(0, shown.size() - ellipsis.size()));
}

constexpr double kLine9 = 9 * 1.24 / 72 * 25.4;  // height of a line of 9 points

TEST_F(ItemPlacement, ALabelIsAPageWithoutMargins) {
  const Printout label = Label("{ text: 'Rolo', x: 3, y: 4, w: 20 }");
  EXPECT_EQ(label.form, app::printing::PrintoutForm::kLabels);
  EXPECT_DOUBLE_EQ(label.width, 100);
  EXPECT_DOUBLE_EQ(label.height, 60);
  EXPECT_EQ(label.dpi, 203);
  ASSERT_THAT(label.pages, SizeIs(1));
  const auto& text = Item(label, "Rolo");
  EXPECT_DOUBLE_EQ(text.x, 3);
  EXPECT_DOUBLE_EQ(text.y, 4);
  EXPECT_DOUBLE_EQ(text.width, 20);
  EXPECT_NEAR(text.height, kLine9, 1e-9);
  EXPECT_GT(text.baseline, 4 + kLine9 / 2);
  EXPECT_LT(text.baseline, 4 + kLine9);
}

TEST_F(ItemPlacement, ALabelPerRow) {
  AddRows(3);
  const Printout labels = Printed(
      "label({ width: 50, height: 20, rows: TbLista, draw: (r, n) => [{ text: r.NOME + ' ' + n, x: 1, y: 1 }] })");
  ASSERT_THAT(labels.pages, SizeIs(3));
  EXPECT_EQ(TextOf(labels), "R001 0\nR002 1\nR003 2\n");
  AddRows(0);
  EXPECT_THAT(Printed("label({ width: 50, height: 20, rows: TbLista, draw: () => [] })").pages, SizeIs(0));
}

TEST_F(ItemPlacement, TextIsAlignedInItsRoom) {
  const Printout label = Label(
      "{ text: 'a', x: 0, y: 10, w: 30, h: 20, align: 'right', valign: 'middle' },"
      "{ text: 'b', x: 0, y: 10, w: 30, h: 20, align: 'center', valign: 'bottom' },"
      "{ text: 'c', x: 70, y: 0 }");
  EXPECT_EQ(Item(label, "a").align, TextAlign::kRight);
  EXPECT_NEAR(Item(label, "a").y, 20 - kLine9 / 2, 1e-9);
  EXPECT_EQ(Item(label, "b").align, TextAlign::kCenter);
  EXPECT_NEAR(Item(label, "b").y, 30 - kLine9, 1e-9);
  EXPECT_DOUBLE_EQ(Item(label, "c").width, 30) << "to the edge of the label";
}

TEST_F(ItemPlacement, TextThatDoesNotFitIsCutWithAnEllipsis) {
  const Printout label = Label("{ text: 'Malha com elastano', x: 0, y: 0, w: 20 }");
  ASSERT_THAT(label.pages[0].texts, SizeIs(1));
  EXPECT_PRED2(IsCut, label.pages[0].texts[0].text, "Malha com elastano");
  EXPECT_EQ(TextOf(Label("{ text: 'Malha', x: 0, y: 0, w: 20 }")), "Malha\n");
}

TEST_F(ItemPlacement, WrappedTextIsCutAtItsHeight) {
  const Printout label =
      Label("{ text: 'uma palavra e mais outra palavra no fim', x: 5, y: 0, w: 20, h: 9, wrap: true }");
  ASSERT_THAT(label.pages[0].texts, SizeIs(2));
  EXPECT_EQ(label.pages[0].texts[0].text, "uma palavra");
  EXPECT_PRED2(IsCut, label.pages[0].texts[1].text, "e mais outra palavra no fim");
  EXPECT_NEAR(label.pages[0].texts[1].y, kLine9, 1e-9);
}

TEST_F(ItemPlacement, AWordWiderThanItsRoomIsBroken) {
  const Printout label = Label("{ text: 'ABCDEFGHIJKLMNOPQRST', x: 0, y: 0, w: 12, wrap: true }");
  std::string all;
  for (const auto& text : label.pages[0].texts) all += text.text;
  EXPECT_EQ(all, "ABCDEFGHIJKLMNOPQRST");
  EXPECT_GT(label.pages[0].texts.size(), 2u);
}

TEST_F(ItemPlacement, ShrunkTextFitsWholeInSmallerType) {
  const Printout label = Label("{ text: 'Malha com elastano', x: 0, y: 0, w: 20, h: 5, size: 20, shrink: true }");
  ASSERT_EQ(TextOf(label), "Malha com elastano\n");
  const double size = label.styles[Item(label, "Malha com elastano").style].size;
  EXPECT_LT(size, 9);
  EXPECT_GE(size, 4);
  const Printout too_long = Label("{ text: 'Uma descrição que nem pequena cabe', x: 0, y: 0, w: 10, shrink: true }");
  EXPECT_PRED2(IsCut, too_long.pages[0].texts.at(0).text, "Uma descrição que nem pequena cabe");
  EXPECT_EQ(too_long.styles[too_long.pages[0].texts[0].style].size, 4);
}

TEST_F(ItemPlacement, TypeHasItsStyle) {
  const Printout label = Label(
      "{ text: 'a', x: 0, y: 0, size: 12, bold: true, italic: true, color: '#ff8000' }, { text: 'b', x: 0, y: 20 }");
  const auto& style = label.styles[Item(label, "a").style];
  EXPECT_EQ(style.size, 12);
  EXPECT_TRUE(style.bold);
  EXPECT_TRUE(style.italic);
  EXPECT_EQ(style.color, 0xFF8000u);
  const auto& plain = label.styles[Item(label, "b").style];
  EXPECT_EQ(plain.size, 9);
  EXPECT_FALSE(plain.bold);
  EXPECT_EQ(plain.color, 0u);
}

TEST_F(ItemPlacement, LinesAndBoxes) {
  const Printout label = Label(
      "{ line: [1, 2, 30, 2] }, { line: [5, 5, 5, 25], width: 0.5 }, { box: [10, 20, 30, 15], radius: 2 },"
      "{ box: [50, 20, 8, 5], fill: 'black' }, { box: [60, 20, 8, 5], fill: '#eeeeee', width: 0.3 }");
  const auto& page = label.pages.at(0);
  ASSERT_THAT(page.lines, SizeIs(2));
  EXPECT_DOUBLE_EQ(page.lines[0].x2, 30);
  EXPECT_DOUBLE_EQ(page.lines[0].width, 0.2);
  EXPECT_DOUBLE_EQ(page.lines[1].y2, 25);
  EXPECT_DOUBLE_EQ(page.lines[1].width, 0.5);
  ASSERT_THAT(page.boxes, SizeIs(3));
  EXPECT_FALSE(page.boxes[0].filled);
  EXPECT_DOUBLE_EQ(page.boxes[0].pen, 0.2);
  EXPECT_DOUBLE_EQ(page.boxes[0].radius, 2);
  EXPECT_TRUE(page.boxes[1].filled);
  EXPECT_EQ(page.boxes[1].fill, 0u);
  EXPECT_DOUBLE_EQ(page.boxes[1].pen, 0);
  EXPECT_EQ(page.boxes[2].fill, 0xEEEEEEu);
  EXPECT_DOUBLE_EQ(page.boxes[2].pen, 0.3);
}

TEST_F(ItemPlacement, ABarCodeStandsInItsRoomOnWholeDots) {
  const Printout label = Label("{ barcode: 'code128', value: '000123', x: 10, y: 30, w: 50, h: 15 }");
  ASSERT_THAT(label.pages.at(0).barcodes, SizeIs(1));
  const auto& code = label.pages[0].barcodes[0];
  EXPECT_EQ(code.kind, "code128");
  EXPECT_EQ(code.value, "000123");
  const auto& symbol = code.symbol;
  EXPECT_NEAR(symbol.dot, 25.4 / 203, 1e-12);
  EXPECT_GE(symbol.x * symbol.dot, 10 - symbol.dot);
  EXPECT_LE((symbol.x + symbol.width) * symbol.dot, 60 + symbol.dot);
  EXPECT_GE(symbol.y * symbol.dot, 30 - symbol.dot);
  EXPECT_FALSE(symbol.bars.empty());
  const auto& text = Item(label, "000123");
  EXPECT_EQ(text.align, TextAlign::kCenter);
  EXPECT_GE(text.y, 41.9);
  EXPECT_LE(text.y + text.height, 45.01);
  EXPECT_EQ(TextOf(Label("{ barcode: 'code128', value: '1', x: 0, y: 0, w: 50, h: 15, text: false }")), "");
}

TEST_F(ItemPlacement, ABarCodeDownAReportStaysOnWholeDots) {
  const Printout printout =
      Blocks("space(33.33), band({ items: [{ barcode: 'code128', value: '000123', x: 10, y: 1.7, w: 50, h: 15 }] })");
  const auto& symbol = printout.pages.at(0).barcodes.at(0).symbol;
  EXPECT_NEAR(symbol.x * symbol.dot, 20 + (50 - symbol.width * symbol.dot) / 2, symbol.dot);
  EXPECT_NEAR(symbol.y * symbol.dot, 10 + 33.33 + 1.7, symbol.dot);
  EXPECT_NEAR(symbol.bars.front().y * symbol.dot, symbol.y * symbol.dot, symbol.dot);
  EXPECT_NEAR(Item(printout, "000123").y, (symbol.y + symbol.height) * symbol.dot, 1);
}

TEST_F(ItemPlacement, BandsAreAsHighAsTheirItems) {
  const Printout printout = Blocks(
      "band({ items: [{ text: 'a', x: 0, y: 3, h: 7 }, { box: [0, 0, 5, 12] }] }),"
      "band({ height: 4, items: [{ text: 'b', x: 2, y: 1 }] }), band({ items: [{ text: 'c' }] })");
  EXPECT_NEAR(Item(printout, "a").y, 13, 1e-9);
  EXPECT_NEAR(Item(printout, "b").y, 10 + 12 + 1, 1e-9);
  EXPECT_NEAR(Item(printout, "b").x, 12, 1e-9);
  EXPECT_NEAR(Item(printout, "c").y, 10 + 12 + 4, 1e-9);
}

TEST_F(ItemPlacement, FieldsStandInColumns) {
  const Printout printout =
      Blocks("fields([['Um', 'a'], ['Dois', 'b'], ['Vazio', ''], ['Três', 3.5]], { columns: 2, skipEmpty: true })",
             "pageFooter: null,");
  EXPECT_EQ(TextOf(printout), "Um\na\nDois\nb\nTrês\n3,5\n");
  EXPECT_DOUBLE_EQ(Item(printout, "Um").x, 10);
  EXPECT_DOUBLE_EQ(Item(printout, "Dois").x, 105);
  EXPECT_DOUBLE_EQ(Item(printout, "Dois").y, Item(printout, "Um").y);
  EXPECT_DOUBLE_EQ(Item(printout, "a").x, Item(printout, "3,5").x) << "values of a column begin at the same place";
  EXPECT_GT(Item(printout, "Três").y, Item(printout, "Um").y);
}

TEST_F(ItemPlacement, PapersAreAsTheLayoutNamesThem) {
  const auto size = [&](const std::string& page) {
    const Printout printout = Blocks("", "page: { " + page + " },");
    return std::pair(printout.width, printout.height);
  };
  EXPECT_EQ(size(""), std::pair(210.0, 297.0));
  EXPECT_EQ(size("size: 'A5', landscape: true"), std::pair(210.0, 148.0));
  EXPECT_EQ(size("size: [80, 200]"), std::pair(80.0, 200.0));
  EXPECT_NEAR(size("size: 'Letter'").first, 215.9, 0.1);
}

}  // namespace
