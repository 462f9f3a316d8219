// What a table shows of its rows, and what leaves with it as data.
#include <gmock/gmock.h>

#include "tests/printing/layout_fixture.h"

namespace {

using app::printing::DataTable;
using app::printing::Printout;
using app::printing::TextAlign;
using host::Value;
using test::Item;
using test::TextOf;
using testing::ElementsAre;
using testing::IsEmpty;

class TableOnPaper : public test::LayoutTest {
 protected:
  Printout Table(const std::string& options) { return Blocks("table({ " + options + " })", "pageFooter: null,"); }
};

TEST_F(TableOnPaper, ShowsFieldsAsTheGridDoes) {
  auto& rows = screen_.Add("TbLista", {"Codigo", "Qtde", "Dia"},
                           {{{"Codigo", "M1"}, {"Qtde", 1234.5}, {"Dia", host::Date::FromIso("2026-03-10").value()}},
                            {{"Codigo", "M2"}, {"Qtde", Value()}, {"Dia", Value()}}});
  rows.FieldByName("Qtde").SetFormat("0.000");
  rows.FieldByName("Codigo").SetCaption("Código");
  EXPECT_EQ(TextOf(Table("rows: TbLista, columns: [{ field: 'CODIGO' }, { field: 'QTDE' }, { field: 'DIA' }]")),
            "Código\nQtde\nDia\nM1\n1234,500\n10/03/2026\nM2\n");
}

TEST_F(TableOnPaper, ListsOfRowsKeepTheirDatasetsFormats) {
  auto& rows = screen_.Add("TbLista", {"Qtde", "Dia"},
                           {{{"Qtde", 2}, {"Dia", host::Date::FromIso("2026-03-10").value()}}, {{"Qtde", 1}}});
  rows.FieldByName("Qtde").SetFormat("0.00");
  EXPECT_EQ(TextOf(Table("rows: TbLista.rows.filter(r => r.Qtde > 1), columns: [{ field: 'QTDE' }, { field: 'dia' }]")),
            "Qtde\nDia\n2,00\n10/03/2026\n");
}

TEST_F(TableOnPaper, RowsMayBeTheLayoutsOwn) {
  EXPECT_EQ(TextOf(Table("rows: [['a', 1.5], ['b', null]], columns: [{ caption: 'X', value: r => r[0] },"
                         " { caption: 'Y', value: (r, n) => r[1] === null ? n : r[1] }]")),
            "X\nY\na\n1,5\nb\n1\n");
}

TEST_F(TableOnPaper, FormatsAreTheColumns) {
  EXPECT_EQ(
      TextOf(Table("rows: [{ v: 1234567.125, d: '2026-03-10', t: '2026-03-10 22:15:00' }], columns: ["
                   "{ field: 'v', caption: 'A', format: '#,##0.00' }, { field: 'v', caption: 'B', format: '0' },"
                   "{ field: 'd', caption: 'C', format: 'date' }, { field: 't', caption: 'D', format: 'time' }]")),
      "A\nB\nC\nD\n1.234.567,13\n1234567\n10/03/2026\n22:15\n");
}

TEST_F(TableOnPaper, ColumnsShareWhatTheFixedOnesLeave) {
  const Printout printout = Table(
      "rows: [[1]], columns: ["
      "{ caption: 'A', width: 40, value: r => 'a' }, { caption: 'B', value: r => 'b' },"
      "{ caption: 'C', width: '2*', value: r => 'c' }, { caption: 'D', width: 30, align: 'center', value: r => 1 }]");
  // 190 mm of body from 10; 120 are left for three shares; a millimetre of air at each side.
  EXPECT_NEAR(Item(printout, "A").x, 11, 1e-9);
  EXPECT_NEAR(Item(printout, "A").width, 38, 1e-9);
  EXPECT_NEAR(Item(printout, "b").x, 51, 1e-9);
  EXPECT_NEAR(Item(printout, "b").width, 38, 1e-9);
  EXPECT_NEAR(Item(printout, "c").x, 91, 1e-9);
  EXPECT_NEAR(Item(printout, "c").width, 78, 1e-9);
  EXPECT_NEAR(Item(printout, "1").x, 171, 1e-9);
  EXPECT_EQ(Item(printout, "1").align, TextAlign::kCenter);
}

TEST_F(TableOnPaper, NumbersStandAtTheRight) {
  AddRows(1);
  const Printout printout = Table("rows: TbLista, columns: [{ field: 'NOME' }, { field: 'QTDE' }]");
  EXPECT_EQ(Item(printout, "R001").align, TextAlign::kLeft);
  EXPECT_EQ(Item(printout, "1").align, TextAlign::kRight);
  EXPECT_EQ(Item(printout, "Qtde").align, TextAlign::kRight);
}

TEST_F(TableOnPaper, TextThatDoesNotFitIsCutOrWrapped) {
  const Printout printout = Table(
      "rows: [['Uma descrição comprida']], columns: [{ caption: 'A', width: 20, value: r => r[0] },"
      "{ caption: 'B', width: 20, wrap: true, value: r => r[0] }]");
  const std::string text = TextOf(printout);
  EXPECT_TRUE(text.starts_with("A\nB\nUma desc")) << text;
  EXPECT_TRUE(text.ends_with("…\nUma\ndescrição\ncomprida\n")) << text;
}

TEST_F(TableOnPaper, TotalsAreTheSumAndRoundedAsShown) {
  const Printout printout = Table(
      "rows: [[0.1], [0.2], [0.185], [null]], totals: 'Total geral', columns: ["
      "{ caption: 'Nome', width: 50, value: (r, n) => 'r' + n },"
      "{ caption: 'V', total: true, format: '0.00', value: r => r[0] }]");
  EXPECT_EQ(TextOf(printout), "Nome\nV\nr0\n0,10\nr1\n0,20\nr2\n0,19\nr3\n0,49\nTotal geral\n");
  const auto& total = Item(printout, "0,49");
  EXPECT_TRUE(printout.styles[total.style].bold);
  EXPECT_EQ(total.align, TextAlign::kRight);
  EXPECT_DOUBLE_EQ(Item(printout, "Total geral").y, total.y);
}

TEST_F(TableOnPaper, WhatBinaryArithmeticLeavesIsNotInATotal) {
  const Printout printout = Table(
      "rows: [[0.1], [0.2]], totals: true, columns: [{ caption: 'N', value: r => '' },"
      "{ caption: 'V', total: true, value: r => r[0] }]");
  EXPECT_EQ(TextOf(printout), "N\nV\n0,1\n0,2\n0,3\nTotal\n");
}

TEST_F(TableOnPaper, GroupsHaveTheirOwnTotals) {
  AddRows(5, 2);
  const Printout printout = Table(
      "rows: TbLista, columns: [{ field: 'NOME' }, { field: 'QTDE', total: true }],"
      "group: { by: 'GRUPO', header: r => 'Grupo ' + r.GRUPO, totals: 'do grupo' }, totals: 'geral'");
  EXPECT_EQ(TextOf(printout),
            "Nome\nQtde\nGrupo G1\nR001\n1\nR002\n2\n3\ndo grupo\nGrupo G2\nR003\n3\nR004\n4\n7\ndo grupo\n"
            "Grupo G3\nR005\n5\n5\ndo grupo\n15\ngeral\n");
}

TEST_F(TableOnPaper, AnEmptyTableSaysSo) {
  AddRows(0);
  EXPECT_EQ(TextOf(Table("rows: TbLista, columns: [{ field: 'NOME' }, { field: 'QTDE', total: true }],"
                         "group: { by: 'GRUPO', totals: true }, totals: true, empty: 'Nenhum item.'")),
            "Nome\nQtde\nNenhum item.\n");
  EXPECT_EQ(TextOf(Table("rows: TbLista, columns: [{ field: 'NOME' }]")), "Nome\n");
  EXPECT_EQ(TextOf(Table("rows: [], columns: [{ caption: 'A', value: r => r.x }]")), "A\n");
}

TEST_F(TableOnPaper, AClosedDatasetHasNoRows) {
  AddRows(3).Close();
  EXPECT_EQ(TextOf(Table("rows: TbLista, columns: [{ caption: 'A', field: 'NOME' }], empty: 'Nada'")), "A\nNada\n");
}

TEST_F(TableOnPaper, EverySecondRowIsShaded) {
  AddRows(4);
  const Printout printout = Table("rows: TbLista, zebra: true, columns: [{ field: 'NOME' }]");
  ASSERT_EQ(printout.pages[0].boxes.size(), 3u);  // the head, the second row and the fourth
  EXPECT_TRUE(printout.pages[0].boxes[1].filled);
  EXPECT_LT(printout.pages[0].boxes[1].y, Item(printout, "R002").y);
  EXPECT_GT(printout.pages[0].boxes[1].y + printout.pages[0].boxes[1].height, Item(printout, "R002").baseline);
}

TEST_F(TableOnPaper, ItsDataLeavesAsValues) {
  AddRows(3, 2).FieldByName("Qtde").SetFormat("0.000");
  const Printout printout = Table(
      "title: 'Lista', rows: TbLista, columns: [{ field: 'NOME' }, { field: 'QTDE', total: true },"
      "{ caption: 'Dobro', format: '0.0', value: r => r.Qtde * 2 }], totals: true,"
      "group: { by: 'GRUPO', header: r => r.Grupo }");
  ASSERT_EQ(printout.tables.size(), 1u);
  const DataTable& table = printout.tables[0];
  EXPECT_EQ(table.title, "Lista");
  ASSERT_EQ(table.columns.size(), 4u);
  EXPECT_EQ(table.columns[0].caption, "Grupo");
  EXPECT_EQ(table.columns[2].caption, "Qtde");
  EXPECT_EQ(table.columns[2].format, "0.000");
  EXPECT_EQ(table.columns[3].format, "0.0");
  EXPECT_THAT(table.rows, ElementsAre(ElementsAre(Value("G1"), Value("R001"), Value(1.0), Value(2.0)),
                                      ElementsAre(Value("G1"), Value("R002"), Value(2.0), Value(4.0)),
                                      ElementsAre(Value("G2"), Value("R003"), Value(3.0), Value(6.0))));
}

TEST_F(TableOnPaper, RowsDrawnByAFunctionLeaveWithAllTheirFields) {
  AddRows(2).FieldByName("Nome").SetCaption("Nome da linha");
  const Printout printout = Blocks(
      "detail({ rows: TbLista, band: r => rule() }), detail({ rows: [{ a: 1, b: [] }], band: r => [] }),"
      "detail({ rows: [1, 2], band: r => [] })");
  ASSERT_EQ(printout.tables.size(), 2u);
  EXPECT_EQ(printout.tables[0].columns[1].caption, "Nome da linha");
  EXPECT_THAT(printout.tables[0].rows, ElementsAre(ElementsAre(Value("G1"), Value("R001"), Value(1.0)),
                                                   ElementsAre(Value("G1"), Value("R002"), Value(2.0))));
  EXPECT_THAT(printout.tables[1].rows, ElementsAre(ElementsAre(Value(1.0), Value())));
  const Printout labels = Printed("label({ width: 50, height: 20, rows: TbLista, draw: () => [] })");
  ASSERT_EQ(labels.tables.size(), 1u);
  EXPECT_EQ(labels.tables[0].rows.size(), 2u);
}

TEST_F(TableOnPaper, TheCursorStaysWhereItIs) {
  auto& rows = AddRows(5);
  rows.GoTo(3);
  int moved = 0;
  rows.AfterScroll = [&] { ++moved; };
  Table("rows: TbLista, columns: [{ field: 'NOME' }, { caption: 'X', value: r => TbLista.current.Nome }]");
  EXPECT_EQ(rows.RecNo(), 3u);
  EXPECT_EQ(moved, 0);
}

}  // namespace
