// A list of 50,000 rows. The limits are generous, for a busy machine; what a person feels is measured by the benchmark.
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include "app/desktop/grid/grid_table.h"
#include "grid_fixture.h"

namespace {

using test::Press;
using test::Settle;

class LargeTest : public test::GridTest {
 protected:
  void SetUp() override {
    for (int row = 0; row < 50000; ++row) {
      items_->Append();
      (*items_)["Codigo"].Set(std::to_string(row));
      (*items_)["Descricao"].Set("Malha de algodão número " + std::to_string((row * 7919) % 50000));
      (*items_)["Cor"].Set("Cor " + std::to_string(row % 97));
      (*items_)["Qtde"].Set((row * 31 % 1000) / 8.0);
      (*items_)["Ciclos"].Set(row % 12);
      items_->Post();
    }
    items_->First();
    toy_.notes.clear();
  }
  template <typename Act>
  qint64 Took(const char* what, const Act& act) {
    QElapsedTimer timer;
    timer.start();
    act();
    const qint64 spent = timer.elapsed();
    RecordProperty(what, static_cast<int>(spent));
    printf("%s: %lld ms\n", what, static_cast<long long>(spent));
    return spent;
  }
};

TEST_F(LargeTest, OpensScrollsSortsAndFiltersQuickly) {
  EXPECT_LT(Took("open", [this] { Show(); }), 2000);
  View().repaint();
  EXPECT_LT(Took("scroll 50 pages",
                 [this] {
                   for (int page = 0; page < 50; ++page) {
                     View().verticalScrollBar()->setValue(page * 997);
                     View().repaint();
                   }
                 }),
            4000);
  EXPECT_LT(Took("20 rows down",
                 [] {
                   for (int row = 0; row < 20; ++row) Press(Qt::Key_Down);
                 }),
            3000);
  EXPECT_EQ(items_->RecNo(), 21u);
  EXPECT_LT(Took("sort by text", [this] { ClickHeader("Descricao"); }), 2000);
  EXPECT_EQ(Cell(0, "Codigo"), "0");
  EXPECT_EQ(Cell(49999, "Descricao"), "Malha de algodão número 9999");
  EXPECT_LT(Took("20 rows down in a sorted list",
                 [] {
                   for (int row = 0; row < 20; ++row) Press(Qt::Key_Down);
                 }),
            3000);
  EXPECT_LT(Took("first word of the filter",
                 [this] {
                   static_cast<app::desktop::GridModel*>(View().model())->SetFilter(QStringLiteral("algodao 4999"));
                 }),
            3000);
  EXPECT_GT(View().model()->rowCount(), 10);
  EXPECT_LT(View().model()->rowCount(), 60);
  EXPECT_LT(Took("another word",
                 [this] {
                   static_cast<app::desktop::GridModel*>(View().model())->SetFilter(QStringLiteral("algodao 49999"));
                 }),
            1000);
}

TEST_F(LargeTest, IsExportedWhole) {
  Show();
  QTemporaryDir folder;
  const std::string path = folder.filePath(QStringLiteral("lista.xlsx")).toStdString();
  const auto& model = *static_cast<app::desktop::GridModel*>(View().model());
  app::desktop::Table table;
  EXPECT_LT(Took("table of 50,000 rows",
                 [&] { table = TableOf(model, View(), WholeList(model, View()), QStringLiteral("Lista")); }),
            3000);
  ASSERT_EQ(table.rows.size(), 50000u);
  EXPECT_EQ(std::get<std::string>(table.rows.back()[0]), "49999");
  EXPECT_LT(Took("spreadsheet of 50,000 rows", [&] { WriteXlsx(table, path); }), 20000);
  EXPECT_LT(Took("CSV of 50,000 rows", [&] { WriteCsv(table, path + ".csv"); }), 10000);
}

}  // namespace
