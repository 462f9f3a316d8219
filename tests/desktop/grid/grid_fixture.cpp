#include "grid_fixture.h"

#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <stdexcept>

namespace test {

using host::FieldType;
using host::Key;

std::optional<std::string> MemorySettings::Read(std::string_view key, std::string_view section, std::string_view name) {
  const auto found = values.find(std::string(key) + "/" + std::string(section) + "/" + std::string(name));
  if (found == values.end()) return std::nullopt;
  return found->second;
}

void MemorySettings::Write(std::string_view key, std::string_view section, std::string_view name,
                           std::string_view value) {
  values[std::string(key) + "/" + std::string(section) + "/" + std::string(name)] = value;
}

GridTest::GridTest() {
  screen_ = &toy_.Open("TfmOrdem", [this](ToyScreen& s) {
    number_ = &s.Add<host::Edit>("EdtNumero", "Número");
    items_ = &s.Add<host::Dataset>("TbItens", std::vector<host::FieldDef>{{"Sel", FieldType::kText, 1},
                                                                          {"Codigo", FieldType::kText, 5, "", "Código"},
                                                                          {"Descricao", FieldType::kText, 40},
                                                                          {"Cor", FieldType::kText, 10},
                                                                          {"Qtde", FieldType::kFloat, 0, "0.00"},
                                                                          {"Ciclos", FieldType::kInteger},
                                                                          {"Data", FieldType::kDate}});
    grid_ = &s.Add<host::Grid>("GrdItens", *items_,
                               std::vector<host::GridColumn>{{.field = "Codigo", .lookup = true},
                                                             {.field = "Descricao", .read_only = true},
                                                             {.field = "Cor"},
                                                             {.field = "Qtde", .total = true},
                                                             {.field = "Ciclos", .total = true},
                                                             {.field = "Data"},
                                                             {.field = "Sel", .check_box = true}});
    save_ = &s.Add<host::Button>("BtnGravar", "Gravar");
    popup_ = &s.Add<host::PopupMenu>("PopItens");
    s.Watch(*number_);
  });
  items_->BeforePost = [this] {
    if ((*items_)["Cor"].AsText().empty()) items_->Cancel();
  };
  grid_->OnColExit = [this] {
    toy_.notes.push_back("left " + grid_->SelectedField());
    if (grid_->SelectedField() == "Codigo" && (*items_)["Codigo"].AsText() == "X") {
      screen_->Refuse("Material não cadastrado.");
    }
  };
  grid_->OnKeyDown = [this](Key key) {
    if (key == Key::kF4) toy_.notes.push_back("F4 " + grid_->SelectedField());
  };
}

GridTest::~GridTest() { window_.reset(); }

void GridTest::Add(const std::string& code, const std::string& colour, double quantity, int cycles,
                   const std::string& date) {
  items_->Append();
  (*items_)["Codigo"].Set(code);
  (*items_)["Descricao"].Set("Malha " + code);
  (*items_)["Cor"].Set(colour);
  (*items_)["Qtde"].Set(quantity);
  (*items_)["Ciclos"].Set(cycles);
  if (!date.empty()) (*items_)["Data"].Set(*host::Date::FromDisplay(date));
  items_->Post();
}

void GridTest::Three() {
  Add("A", "Verde", 30, 3, "01/02/2026");
  Add("B", "azul", 10, 1, "15/01/2026");
  Add("C", "Âmbar", 20, 2);
  items_->First();
  toy_.notes.clear();
}

void GridTest::Rebuild() {
  window_ = std::make_unique<QWidget>();
  panel_ = new app::desktop::GridPanel(window_.get());
  panel_->setObjectName(QStringLiteral("GrdItens"));
  panel_->Bind(station_, *grid_, settings_);
  auto* column = new QVBoxLayout(window_.get());
  column->addWidget(panel_);
  // What the binder of a screen does for its grids.
  QObject::connect(panel_, &app::desktop::GridPanel::KeyboardWanted, panel_,
                   [this] { station_.Do([this] { return toy_.desk.Enter(*grid_); }); });
  QObject::connect(&station_, &app::desktop::Station::Settled, panel_, [this] {
    if (toy_.desk.Focused() == grid_ && !panel_->HasKeyboard()) panel_->TakeFocus();
  });
  window_->resize(1000, 400);
  window_->show();
  window_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get(), 3000));
}

void GridTest::Show() {
  Rebuild();
  ASSERT_TRUE(station_.Do([this] { return toy_.desk.Enter(*grid_); }));
  Settle();
  toy_.notes.clear();
}

app::desktop::GridView& GridTest::View() const {
  auto* view = panel_->findChild<app::desktop::GridView*>();
  if (view == nullptr) throw std::logic_error("the panel has no table");
  return *view;
}

app::desktop::TotalsRow& GridTest::Totals() const {
  auto* totals = panel_->findChild<app::desktop::TotalsRow*>();
  if (totals == nullptr) throw std::logic_error("the panel has no totals");
  return *totals;
}

std::string GridTest::Cell(int row, std::string_view field) const {
  return View().model()->index(row, Column(field)).data().toString().toStdString();
}

std::string GridTest::Codes() const {
  std::string codes;
  for (int row = 0; row < View().model()->rowCount(); ++row) codes += Cell(row, "Codigo");
  return codes;
}

std::string GridTest::Cursor() const {
  const QModelIndex index = View().currentIndex();
  if (!index.isValid()) return "-";
  return Cell(index.row(), "Codigo") + " " + grid_->Columns()[static_cast<std::size_t>(index.column())].field;
}

std::string GridTest::Stands() const { return (*items_)["Codigo"].AsText() + " " + grid_->SelectedField(); }

QPoint GridTest::Middle(int row, std::string_view field) const {
  return View().visualRect(View().model()->index(row, Column(field))).center();
}

void GridTest::Click(int row, std::string_view field, Qt::KeyboardModifiers modifiers) {
  QTest::mouseClick(View().viewport(), Qt::LeftButton, modifiers, Middle(row, field));
  Settle();
}

void GridTest::DoubleClick(int row, std::string_view field) {
  QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, Middle(row, field));
  QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, Middle(row, field));
  Settle();
}

void GridTest::ClickHeader(std::string_view field) {
  QHeaderView* header = View().horizontalHeader();
  const int section = Column(field);
  const QPoint at(header->sectionViewportPosition(section) + header->sectionSize(section) / 2, header->height() / 2);
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
  Settle();
}

std::string GridTest::Menu(const QString& pick) {
  QString entries;
  int looks = 0;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) {
      if (++looks > 100) look.stop();
      return;
    }
    look.stop();
    QAction* chosen = nullptr;
    for (QAction* action : menu->actions()) {
      const QString text = action->text().section(u'\t', 0, 0);
      if (!action->isSeparator() && action->isEnabled()) entries += QString(entries.isEmpty() ? 0 : 1, u'|') + text;
      if (!pick.isEmpty() && text == pick) chosen = action;
    }
    if (chosen == nullptr) {
      menu->close();
      return;
    }
    menu->setActiveAction(chosen);
    QTest::keyClick(menu, Qt::Key_Return);
  });
  look.start(20);
  QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), View().viewport()->mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(View().viewport(), &event);
  Settle();
  return entries.toStdString();
}

}  // namespace test
