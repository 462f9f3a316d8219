// The Bridge's acts on inputs and grids.
#include <cmath>

#include "app/script/bridge.h"
#include "app/script/screen_parts.h"
#include "app/script/values.h"
#include "host/errors.h"
#include "host/kit/desk.h"

namespace app::script {
namespace {

constexpr const char* kEdit = "um campo de digitação";

bool WantsDate(const host::Edit& edit) { return edit.Kind() == host::EditKind::kDate; }

bool WantsDate(const host::Grid& grid, const std::string& field) {
  const host::Field* found = grid.GetDataset().FindField(field);
  return found != nullptr && found->Def().type == host::FieldType::kDate;
}

QJSValue EditValue(const host::Edit& edit) {
  switch (edit.Kind()) {
    case host::EditKind::kNumber:
      return QJSValue(edit.Number());
    case host::EditKind::kInteger:
      return QJSValue(edit.Integer());
    case host::EditKind::kDate:
      return edit.GetDate().IsZero() ? QJSValue(QJSValue::NullValue) : ToScript(edit.GetDate().ToIso());
    case host::EditKind::kText:
    case host::EditKind::kMemo:
      break;
  }
  return ToScript(edit.Text());
}

QJSValue RowObject(QJSEngine& engine, const host::Grid& grid, std::size_t rec_no) {
  QJSValue row = engine.newObject();
  for (const auto& column : grid.Columns()) {
    row.setProperty(QString::fromStdString(column.field), ToScript(CellValue(grid, rec_no, column)));
  }
  return row;
}

bool RowMatches(const host::Grid& grid, std::size_t rec_no, const QJSValue& wanted) {
  const auto count = wanted.property("length").toUInt();
  for (quint32 at = 0; at < count; ++at) {
    const QJSValue pair = wanted.property(at);
    const int column = FindColumn(grid, Utf8(pair.property(0).toString()));
    const auto& shown = CellValue(grid, rec_no, grid.Columns()[static_cast<std::size_t>(column)]);
    if (!SameValue(shown, pair.property(1))) return false;
  }
  return true;
}

// The 1-based position of a row that the script counts from 0.
std::size_t RecNo(const host::Grid& grid, double row) {
  if (!(row >= 0) || row >= static_cast<double>(RowCount(grid)) || row != std::floor(row)) {
    throw host::InputError("a grade de \"" + grid.GetDataset().Name() + "\" não tem a linha " +
                           Utf8(QString::number(row)));
  }
  return static_cast<std::size_t>(row) + 1;
}

// "{Codigo: M1, Cor: 01}", for messages.
std::string Criteria(const QJSValue& wanted) {
  std::string text = "{";
  const auto count = wanted.property("length").toUInt();
  for (quint32 at = 0; at < count; ++at) {
    const QJSValue pair = wanted.property(at);
    text += (at == 0 ? "" : ", ") + Utf8(pair.property(0).toString()) + ": " + Utf8(pair.property(1).toString());
  }
  return text + "}";
}

}  // namespace

// --- inputs ------------------------------------------------------------------------------------------------------

QJSValue Bridge::type(int id, const QString& name, const QJSValue& value) {
  return Act([&] {
    auto& edit = Find<host::Edit>(At(id), Utf8(name), kEdit);
    return Desk().Type(edit, TypedText(value, WantsDate(edit)));
  });
}

QJSValue Bridge::enter(int id, const QString& name) {
  return Act([&] { return Desk().Enter(FindControl(At(id), Utf8(name))); });
}

QJSValue Bridge::leave(int id, const QString& name) {
  return Act([&] { return name.isEmpty() ? Desk().Leave() : Desk().Leave(FindControl(At(id), Utf8(name))); });
}

QJSValue Bridge::key(int id, const QString& name) {
  return Act([&] {
    const auto key = KeyByName(Utf8(name));
    if (!key) throw host::InputError("tecla desconhecida: " + Utf8(name));
    return Desk().PressKey(At(id), *key);
  });
}

QJSValue Bridge::check(int id, const QString& name, bool on) {
  return Act([&] { return Desk().Check(Find<host::CheckBox>(At(id), Utf8(name), "uma caixa de marcar"), on); });
}

QJSValue Bridge::choose(int id, const QString& name, const QString& caption) {
  return Act([&] {
    host::Screen& screen = At(id);
    if (auto* pages = dynamic_cast<host::PageControl*>(screen.FindComponent(Utf8(name)))) {
      return Desk().ChoosePage(*pages, Utf8(caption));
    }
    return Desk().Choose(Find<host::Choice>(screen, Utf8(name), "uma lista de opções"), Utf8(caption));
  });
}

QJSValue Bridge::click(int id, const QString& name) {
  return Act([&] { return Desk().Click(Find<host::Button>(At(id), Utf8(name), "um botão")); });
}

QJSValue Bridge::menu(int id, const QString& caption) {
  return Act([&] { return Desk().PickMenu(At(id), Utf8(caption)); });
}

QJSValue Bridge::search(int id, const QString& name) {
  return Act([&] { return Desk().OpenLookup(Find<host::TPesquisa>(At(id), Utf8(name), "uma pesquisa")); });
}

QJSValue Bridge::text(int id, const QString& name) {
  return Guard([&] { return ToScript(ShownText(At(id), Utf8(name))); });
}

QJSValue Bridge::value(int id, const QString& name) {
  return Guard([&] {
    host::Component& found = FindAny(At(id), Utf8(name));
    if (const auto* edit = dynamic_cast<host::Edit*>(&found)) return EditValue(*edit);
    if (const auto* box = dynamic_cast<host::CheckBox*>(&found)) return QJSValue(box->Checked());
    return ToScript(ShownText(At(id), Utf8(name)));
  });
}

QJSValue Bridge::checked(int id, const QString& name) {
  return Guard([&] { return QJSValue(Find<host::CheckBox>(At(id), Utf8(name), "uma caixa de marcar").Checked()); });
}

QJSValue Bridge::enabled(int id, const QString& name) {
  return Guard([&] { return QJSValue(FindControl(At(id), Utf8(name)).Enabled()); });
}

QJSValue Bridge::visible(int id, const QString& name) {
  return Guard([&] { return QJSValue(FindControl(At(id), Utf8(name)).Visible()); });
}

QJSValue Bridge::focused(int id) {
  return Guard([&] {
    host::Screen& screen = At(id);
    const host::Control* control = Desk().Focused();
    if (control == nullptr || &control->Owner() != &screen) return QJSValue(QJSValue::NullValue);
    return ToScript(control->Name());
  });
}

// --- grids -------------------------------------------------------------------------------------------------------

QJSValue Bridge::rows(int id, const QString& dataset) {
  return Guard([&] {
    const host::Grid& grid = GridAt(id, dataset);
    const std::size_t count = RowCount(grid);
    QJSValue list = engine_.newArray(static_cast<uint>(count));
    for (std::size_t rec_no = 1; rec_no <= count; ++rec_no) {
      list.setProperty(static_cast<quint32>(rec_no - 1), RowObject(engine_, grid, rec_no));
    }
    return list;
  });
}

QJSValue Bridge::selectRow(int id, const QString& dataset, double row) {
  return Act([&] {
    host::Grid& grid = GridAt(id, dataset);
    return Desk().SelectRow(grid, RecNo(grid, row));
  });
}

QJSValue Bridge::clickRow(int id, const QString& dataset, double row) {
  return Act([&] {
    host::Grid& grid = GridAt(id, dataset);
    return Desk().ClickRow(grid, RecNo(grid, row));
  });
}

QJSValue Bridge::selectWhere(int id, const QString& dataset, const QJSValue& wanted) {
  return Act([&] {
    host::Grid& grid = GridAt(id, dataset);
    const std::size_t count = RowCount(grid);
    for (std::size_t rec_no = 1; rec_no <= count; ++rec_no) {
      if (RowMatches(grid, rec_no, wanted)) return Desk().SelectRow(grid, rec_no);
    }
    throw host::InputError("a grade de \"" + Utf8(dataset) + "\" não tem linha " + Criteria(wanted));
  });
}

QJSValue Bridge::cell(int id, const QString& dataset, const QString& field, const QJSValue& typed) {
  return Act([&] {
    host::Grid& grid = GridAt(id, dataset);
    const std::string name = Utf8(field);
    FindColumn(grid, name);
    const host::ActResult selected = Desk().SelectCell(grid, name);
    if (selected != host::ActResult::kDone || typed.property("length").toUInt() == 0) return selected;
    return Desk().TypeCell(grid, TypedText(typed.property(0), WantsDate(grid, name)));
  });
}

Bridge::Cells Bridge::CellsOf(const host::Grid& grid, const QJSValue& row) const {
  Cells cells;
  const auto count = row.property("length").toUInt();
  for (quint32 at = 0; at < count; ++at) {
    const QJSValue pair = row.property(at);
    const std::string field = Utf8(pair.property(0).toString());
    FindColumn(grid, field);
    cells.emplace_back(field, TypedText(pair.property(1), WantsDate(grid, field)));
  }
  return cells;
}

QJSValue Bridge::append(int id, const QString& dataset, const QJSValue& row) {
  return Act([&] {
    host::Grid& grid = GridAt(id, dataset);
    return Desk().AppendRow(grid, CellsOf(grid, row));
  });
}

QJSValue Bridge::set(int id, const QString& dataset, const QJSValue& row) {
  return Act([&] {
    host::Grid& grid = GridAt(id, dataset);
    return Desk().SetRow(grid, CellsOf(grid, row));
  });
}

QJSValue Bridge::remove(int id, const QString& dataset) {
  return Act([&] { return Desk().DeleteRow(GridAt(id, dataset)); });
}

QJSValue Bridge::dblclick(int id, const QString& dataset) {
  return Act([&] { return Desk().DblClick(GridAt(id, dataset)); });
}

}  // namespace app::script
