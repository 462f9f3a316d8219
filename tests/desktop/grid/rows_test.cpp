// Sorting and filtering of a list, without a window.
#include <gtest/gtest.h>

#include "app/desktop/grid/folded_text.h"
#include "app/desktop/grid/grid_rows.h"

namespace {

using app::desktop::Folded;
using app::desktop::GridRows;
using app::desktop::RowOrder;
using host::Date;
using host::Value;

class Rows : public app::desktop::RowSource {
 public:
  std::size_t Count() const override { return rows.size(); }
  bool Inserting() const override { return inserting; }
  std::size_t Edited() const override { return edited; }
  std::size_t Id(std::size_t rec_no) const override { return inserting && rec_no == rows.size() ? 0 : rec_no + shift; }
  std::size_t Columns() const override { return rows.empty() ? 0 : rows[0].size(); }
  const Value& At(std::size_t rec_no, std::size_t column) const override { return rows[rec_no - 1][column]; }
  std::string Text(std::size_t rec_no, std::size_t column) const override {
    ++texts_read;
    return At(rec_no, column).AsText();
  }
  std::size_t Changes() const override { return changes; }

  std::vector<std::vector<Value>> rows;
  bool inserting = false;
  std::size_t edited = 0;
  std::size_t shift = 100;
  std::size_t changes = 1;
  mutable int texts_read = 0;
};

std::string Order(const GridRows& rows) {
  std::string order;
  for (std::size_t row = 0; row < rows.Count(); ++row) order += std::to_string(rows.RecNo(row));
  return order;
}

Value Day(const char* text) { return *Date::FromDisplay(text); }

TEST(GridRowsTest, WithoutSortingOrFilterTheListIsTheDataset) {
  Rows source;
  source.rows = {{"b"}, {"a"}, {"c"}};
  GridRows rows;
  rows.Arrange(source, {});
  EXPECT_FALSE(rows.Mapped());
  EXPECT_EQ(Order(rows), "123");
  EXPECT_EQ(rows.RowOf(3), 2u);
  EXPECT_EQ(rows.RowOf(4), std::nullopt);
  EXPECT_EQ(rows.RowOf(0), std::nullopt);
}

TEST(GridRowsTest, NumbersSortByValueAndNothingComesFirst) {
  Rows source;
  source.rows = {{10.0}, {9.5}, {Value()}, {-3}, {100}};
  GridRows rows;
  rows.Arrange(source, {.column = 0});
  EXPECT_EQ(Order(rows), "34215");
  rows.Arrange(source, {.column = 0, .descending = true});
  EXPECT_EQ(Order(rows), "51243");
  EXPECT_EQ(rows.RowOf(5), 0u);
  EXPECT_EQ(rows.RowOf(3), 4u);
}

TEST(GridRowsTest, DatesSortByDate) {
  Rows source;
  source.rows = {{Day("01/02/2026")}, {Day("15/01/2026")}, {Day("31/12/2025")}};
  GridRows rows;
  rows.Arrange(source, {.column = 0});
  EXPECT_EQ(Order(rows), "321");
}

TEST(GridRowsTest, TextSortsWithoutCaseAndAccentsAndEqualsKeepTheirOrder) {
  Rows source;
  source.rows = {{"Verde", 1}, {"azul", 2}, {"Âmbar", 3}, {"AZUL", 4}, {"", 5}};
  GridRows rows;
  rows.Arrange(source, {.column = 0});
  EXPECT_EQ(Order(rows), "53241");
  rows.Arrange(source, {.column = 0, .descending = true});
  EXPECT_EQ(Order(rows), "12435");
}

TEST(GridRowsTest, ARowBeingInsertedStaysLast) {
  Rows source;
  source.rows = {{"b"}, {"c"}, {"a"}};
  source.inserting = true;
  source.edited = 3;
  GridRows rows;
  rows.Arrange(source, {.column = 0});
  EXPECT_EQ(Order(rows), "123");
  rows.Arrange(source, {.column = 0, .descending = true});
  EXPECT_EQ(Order(rows), "213");
}

TEST(GridRowsTest, ARowBeingEditedStaysWhereItIsUntilItIsPosted) {
  Rows source;
  source.rows = {{"b"}, {"c"}, {"a"}};
  GridRows rows;
  rows.Arrange(source, {.column = 0});
  EXPECT_EQ(Order(rows), "312");
  source.edited = 3;
  source.rows[2][0] = "z";
  ++source.changes;
  rows.Arrange(source, {.column = 0});
  EXPECT_EQ(Order(rows), "312");
  source.edited = 0;
  rows.Arrange(source, {.column = 0});
  EXPECT_EQ(Order(rows), "123");
}

TEST(GridRowsTest, RowsThatCameOrWentDuringTheEditAreArrangedAtOnce) {
  Rows source;
  source.rows = {{"b"}, {"c"}, {"a"}};
  GridRows rows;
  rows.Arrange(source, {.column = 0});
  source.edited = 1;
  source.rows = {{"d"}, {"a"}};
  rows.Arrange(source, {.column = 0});
  EXPECT_EQ(Order(rows), "21");
  source.rows = {{"a"}, {"b"}};
  source.shift = 200;
  rows.Arrange(source, {.column = 0});
  EXPECT_EQ(Order(rows), "12");
}

TEST(GridRowsTest, EveryWordMustBeSomewhereInTheRow) {
  Rows source;
  source.rows = {{"Malha Algodão", "AZUL"}, {"Malha poliéster", "azul"}, {"Ribana algodao", "Verde"}};
  GridRows rows;
  rows.Arrange(source, {.filter = "ALGODÃO"});
  EXPECT_EQ(Order(rows), "13");
  rows.Arrange(source, {.filter = "  azul algod "});
  EXPECT_EQ(Order(rows), "1");
  EXPECT_EQ(rows.RowOf(2), std::nullopt);
  rows.Arrange(source, {.filter = "algodãoazul"});
  EXPECT_EQ(rows.Count(), 0u);
  rows.Arrange(source, {.filter = "   "});
  EXPECT_FALSE(rows.Mapped());
  EXPECT_EQ(rows.Count(), 3u);
}

TEST(GridRowsTest, TheFilterAndTheSortingWorkTogether) {
  Rows source;
  source.rows = {{"a", 3}, {"b", 9}, {"a", 1}, {"a", 2}};
  GridRows rows;
  rows.Arrange(source, {.column = 1, .filter = "a"});
  EXPECT_EQ(Order(rows), "341");
}

TEST(GridRowsTest, ARowBeingEditedIsShownWhateverTheFilter) {
  Rows source;
  source.rows = {{"a"}, {"b"}, {""}};
  source.inserting = true;
  source.edited = 3;
  GridRows rows;
  rows.Arrange(source, {.filter = "b"});
  EXPECT_EQ(Order(rows), "23");
}

TEST(GridRowsTest, TextsAreReadOnceUntilSomethingChanges) {
  Rows source;
  source.rows = {{"a"}, {"b"}};
  GridRows rows;
  rows.Arrange(source, {.filter = "a"});
  rows.Arrange(source, {.filter = "ab"});
  EXPECT_EQ(source.texts_read, 2);
  source.rows[1][0] = "ab";
  ++source.changes;
  rows.Arrange(source, {.filter = "ab"});
  EXPECT_EQ(source.texts_read, 4);
  EXPECT_EQ(Order(rows), "2");
}

TEST(FoldedTextTest, LettersLoseCaseAndAccents) {
  EXPECT_EQ(Folded("ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÑÒÓÔÕÖØÙÚÛÜÝ"), "aaaaaaceeeeiiiinoooooouuuuy");
  EXPECT_EQ(Folded("àáâãäåçèéêëìíîïñòóôõöøùúûüýÿ"), "aaaaaaceeeeiiiinoooooouuuuyy");
  EXPECT_EQ(Folded("Œuvre Æsir Straße Šž"), "oeuvre aesir strasse sz");
  EXPECT_EQ(Folded("3×4÷2 €"), "3×4÷2 €");
  // What is cut in the middle of a letter stays as it is.
  EXPECT_EQ(Folded("a\xC3"), "a\xC3");
}

}  // namespace
