// The columns that grids are put together from.
#include "host/kit/columns.h"

#include <gtest/gtest.h>

namespace {

using host::Align;

TEST(Columns, ThatAreOnlyReadAreMarkedSoAndNumbersStandAtTheRight) {
  const host::GridColumn text = host::ShownColumn("Nome", "Nome do cliente", 24);
  EXPECT_EQ(text.field, "Nome");
  EXPECT_EQ(text.caption, "Nome do cliente");
  EXPECT_EQ(text.width, 24);
  EXPECT_TRUE(text.read_only);
  EXPECT_EQ(text.align, Align::kLeft);

  const host::GridColumn number = host::NumberColumn("LFA", "LFA", 7);
  EXPECT_TRUE(number.read_only);
  EXPECT_EQ(number.align, Align::kRight);
  EXPECT_FALSE(number.total);

  const host::GridColumn quantity = host::QuantityColumn("Qtde", "Estoque", 10);
  EXPECT_TRUE(quantity.read_only);
  EXPECT_EQ(quantity.align, Align::kRight);
  EXPECT_TRUE(quantity.total);
}

TEST(Columns, ThatAreTypedTakeWhatAPersonGives) {
  const host::GridColumn text = host::TypedColumn("Obs", "Observação", 30);
  EXPECT_FALSE(text.read_only);
  EXPECT_FALSE(text.check_box);
  EXPECT_EQ(text.align, Align::kLeft);

  const host::GridColumn number = host::TypedNumberColumn("Custo", "Custo", 10);
  EXPECT_FALSE(number.read_only);
  EXPECT_EQ(number.align, Align::kRight);

  const host::GridColumn box = host::TickedColumn("Sel", "Sel.", 4);
  EXPECT_FALSE(box.read_only);
  EXPECT_TRUE(box.check_box);
  EXPECT_EQ(box.align, Align::kCenter);
}

TEST(Columns, KeepWhatTheyAreBesideALookupAndATotal) {
  const host::GridColumn column = host::WithLookup(host::WithTotal(host::TypedNumberColumn("Qtde", "Qtde.", 12)));
  EXPECT_TRUE(column.lookup);
  EXPECT_TRUE(column.total);
  EXPECT_EQ(column.field, "Qtde");
  EXPECT_EQ(column.align, Align::kRight);
  EXPECT_FALSE(column.read_only);
}

}  // namespace
