#include "desktop/scenario/hands.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableView>
#include <stdexcept>

#include "app/desktop/basics/text.h"
#include "host/text.h"
#include "support/road.h"

namespace test {
namespace {

constexpr int kMostSteps = 80;  // of the keyboard on one screen

DesktopMill::Options MillOf(const std::function<void(Mill&)>& prepare) {
  DesktopMill::Options options;
  options.prepare = [prepare](Mill& mill) {
    mill.SetClock(kAfternoon);
    FillSmallMill(mill);
    if (prepare) prepare(mill);
  };
  return options;
}

// In the order in which Tab goes through the screen.
bool LiesBefore(const host::Control& here, std::string_view control) {
  for (const host::Component* component : here.Owner().Components()) {
    if (component == &here) return false;
    if (component->Name() == control) return true;
  }
  return false;
}

}  // namespace

// --- where the person is ---------------------------------------------------------------------------------------------

std::string Hands::Focused() const {
  const host::Control* focused = desktop_.Desk().Focused();
  if (focused == nullptr) return {};
  const QWidget& widget = desktop_.WidgetOf(focused->Owner(), focused->Name());
  const QWidget* keyboard = QApplication::focusWidget();
  const bool there = keyboard != nullptr && (keyboard == &widget || widget.isAncestorOf(keyboard));
  if (there) return focused->Name();
  const std::string where = keyboard != nullptr ? keyboard->objectName().toStdString() : "nowhere";
  return focused->Name() + ", but the keyboard is at " + where;
}

host::Screen& Hands::Screen() const {
  const host::Control* focused = desktop_.Desk().Focused();
  if (focused == nullptr) throw std::runtime_error("no control has the focus");
  return focused->Owner();
}

void Hands::GoTo(std::string_view control) {
  for (int step = 0; step < kMostSteps; ++step) {
    const host::Control* focused = desktop_.Desk().Focused();
    if (focused != nullptr && focused->Name() == control) return;
    const bool in_grid = dynamic_cast<const host::Grid*>(focused) != nullptr;
    const bool back = focused != nullptr && LiesBefore(*focused, control);
    if (in_grid) {
      Press(Qt::Key_Return, back ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier);
    } else {
      Press(back ? Qt::Key_Backtab : Qt::Key_Tab, back ? Qt::ShiftModifier : Qt::NoModifier);
    }
  }
  throw std::runtime_error("the keyboard does not come to " + std::string(control) + ", it is at " + Focused());
}

void Hands::Fill(std::string_view input, const QString& text) {
  GoTo(input);
  if (text.isEmpty()) {
    Press(Qt::Key_Delete);
  } else {
    TypeText(text);
  }
}

void Hands::Enter(std::string_view input, const QString& text) {
  Fill(input, text);
  Press(Qt::Key_Return);
}

// --- grids -----------------------------------------------------------------------------------------------------------

host::Grid& Hands::Grid() const {
  auto* grid = dynamic_cast<host::Grid*>(desktop_.Desk().Focused());
  if (grid == nullptr) throw std::runtime_error("no grid has the focus, but " + Focused());
  return *grid;
}

void Hands::Cell(std::string_view field) {
  host::Grid& grid = Grid();
  if (grid.SelectedColumn() > grid.ColumnOf(field)) {
    // Home belongs to the text while a cell is being typed.
    const bool typing = qobject_cast<const QLineEdit*>(QApplication::focusWidget()) != nullptr;
    if (typing) Press(Qt::Key_Backtab, Qt::ShiftModifier);
    if (grid.SelectedColumn() > grid.ColumnOf(field)) Press(Qt::Key_Home);
  }
  for (int step = 0; step < kMostSteps && !host::SameName(grid.SelectedField(), field); ++step) Press(Qt::Key_Return);
  if (!host::SameName(grid.SelectedField(), field)) {
    throw std::runtime_error("the keyboard does not come to the cell " + std::string(field) + ", it is in " +
                             grid.SelectedField());
  }
}

void Hands::Type(std::string_view field, const QString& text) {
  Cell(field);
  if (text.isEmpty()) {
    Press(Qt::Key_Delete);
  } else {
    TypeText(text);
  }
}

void Hands::Row(const std::vector<std::pair<std::string, std::string>>& values) {
  const host::Dataset& rows = Grid().GetDataset();
  const auto stands = [&] {
    for (const auto& [field, text] : values) {
      if (rows[field].AsText() != text) return false;
    }
    return !rows.IsEmpty();
  };
  for (int step = 0; step < kMostSteps && rows.RecNo() > 1; ++step) Press(Qt::Key_Up);
  for (std::size_t row = 1; row < rows.RecordCount() && !stands(); ++row) Press(Qt::Key_Down);
  if (!stands()) throw std::runtime_error("no such row: " + values.front().second);
}

std::string Hands::Shown(std::string_view field) const { return Grid().GetDataset()[field].DisplayText(); }

std::vector<std::string> Hands::Rows(const host::Screen& screen, std::string_view grid,
                                     const std::vector<std::string>& fields) const {
  const QTableView* table = desktop_.GridOf(screen, grid).findChild<QTableView*>();
  const host::Grid& shown = *desktop_.GridOf(screen, grid).GetGrid();
  std::vector<std::string> rows;
  for (int row = 0; row < table->model()->rowCount(); ++row) {
    std::string line;
    for (const std::string& field : fields) {
      const QModelIndex cell = table->model()->index(row, shown.ColumnOf(field));
      line += (line.empty() ? "" : "; ") + cell.data().toString().toStdString();
    }
    rows.push_back(line);
  }
  return rows;
}

std::string Hands::Text(const host::Screen& screen, std::string_view name) const {
  QWidget& widget = desktop_.WidgetOf(screen, name);
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) return line->text().toStdString();
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text().toStdString();
  if (const auto* memo = qobject_cast<const QPlainTextEdit*>(&widget)) return memo->toPlainText().toStdString();
  if (const auto* box = qobject_cast<const QCheckBox*>(&widget)) return box->isChecked() ? "S" : "N";
  throw std::runtime_error("shows no text: " + std::string(name));
}

// --- the mill --------------------------------------------------------------------------------------------------------

Scenario::Scenario(const std::function<void(Mill&)>& prepare) : desktop_(MillOf(prepare)) {}

host::Screen& Scenario::StartOrder() {
  host::Screen& screen = OpenOrders();
  hands_.Fill("EdtNumero", QString());
  Press(Qt::Key_Return);  // the next one
  hands_.Enter("EdtMalharia", QStringLiteral("M00001"));
  hands_.Enter("EdtDeposito", QStringLiteral("DF"));
  hands_.GoTo("DBGrid6");
  return screen;
}

Mill& Scenario::Elsewhere() {
  if (elsewhere_ == nullptr) {
    Mill::Options options;
    options.database = desktop_.GetMill().Path();
    elsewhere_ = std::make_unique<Mill>(options);
    elsewhere_->SetClock(kAfternoon);
  }
  return *elsewhere_;
}

std::string Scenario::OrderFromElsewhere(double quantity) {
  return SaveBareOrder(Elsewhere(), SmallMillOrder(quantity));
}

void Scenario::TypeItem(const QString& code, const QString& colour, const QString& quantity) {
  hands_.Type("Codigo", code);
  hands_.Type("Cor", colour);
  hands_.Type("Qtde", quantity);
}

void Scenario::ExpectRefused(const QString& title, const QString& text, const std::function<void()>& act,
                             host::Icon icon) {
  desktop_.GetBoxes().Take();
  desktop_.ExpectBox(text);
  act();
  EXPECT_TRUE(WaitFor([this] { return desktop_.GetBoxes().Met(); })) << text.toStdString();
  Settle();
  const std::vector<ShownBox> boxes = desktop_.GetBoxes().Take();
  ASSERT_EQ(boxes.size(), 1U) << text.toStdString();
  EXPECT_EQ(boxes[0].text.toStdString(), text.toStdString());
  EXPECT_EQ(boxes[0].title.toStdString(), title.toStdString());
  EXPECT_EQ(boxes[0].icon, icon);
}

}  // namespace test
