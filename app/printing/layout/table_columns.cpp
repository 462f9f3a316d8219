#include "app/printing/layout/table_columns.h"

#include <numeric>

#include "app/printing/layout/datasets_in_script.h"
#include "app/printing/layout/number_text.h"
#include "app/printing/page/mistake.h"
#include "host/decimal.h"

namespace app::printing {
namespace {

constexpr double kNarrowest = 3;  // of a column that takes what the others leave
constexpr double kTolerance = 0.01;

bool IsNumeric(const host::Field& field) {
  return field.Def().type == host::FieldType::kInteger || field.Def().type == host::FieldType::kFloat;
}

bool IsNumberFormat(const std::string& format) { return !format.empty() && format != "date" && format != "time"; }

}  // namespace

TableColumns::TableColumns(const Table& table, int line, FlowContext& context)
    : table_(table), line_(line), engine_(context.engine) {
  for (const Column& column : table.columns) {
    fields_.push_back(column.field.empty() ? RowSource::FieldRef() : table.rows->Find(column.field));
  }
  Spread(context.left, context.width);
}

TextAlign TableColumns::DefaultAlign(std::size_t at) const {
  const Column& column = table_.columns[at];
  const host::Field* field = fields_[at].field;
  const bool number = column.total || IsNumberFormat(column.format) || (field != nullptr && IsNumeric(*field));
  return number ? TextAlign::kRight : TextAlign::kLeft;
}

void TableColumns::Spread(double left, double width) {
  double fixed = 0;
  double shares = 0;
  for (const Column& column : table_.columns) {
    fixed += column.width.value_or(0);
    shares += column.width ? 0 : column.share;
  }
  const double rest = width - fixed;
  if (rest < -kTolerance) {
    throw Mistake("as colunas da tabela somam " + NumberText(fixed, "0.#") + " mm e a página tem " +
                  NumberText(width, "0.#") + " mm");
  }
  double x = left;
  for (std::size_t at = 0; at < table_.columns.size(); ++at) {
    const Column& column = table_.columns[at];
    const double wide = column.width.value_or(rest * column.share / (shares > 0 ? shares : 1));
    if (!column.width && wide < kNarrowest) {
      throw Mistake("não sobra lugar para a coluna " + Quoted(column.caption.toStdString()) + " da tabela");
    }
    const double air = std::min(kColumnAir, wide / 4);
    places_.push_back({x + air, wide - 2 * air, column.align.value_or(DefaultAlign(at)), column.wrap, column.total});
    x += wide;
  }
}

std::string TableColumns::Format(std::size_t column) const {
  const std::string& own = table_.columns[column].format;
  if (!own.empty() || fields_[column].field == nullptr) return own;
  return fields_[column].field->Def().format;
}

std::string TableColumns::Shown(std::size_t column, const host::Value& value) const {
  return ShownText(value, Format(column));
}

Cell TableColumns::CellOf(std::size_t column, std::size_t row) const {
  const Column& what = table_.columns[column];
  Cell cell;
  if (!what.field.empty()) {
    cell.value = table_.rows->At(row, fields_[column]);
  } else {
    const QJSValue value =
        engine_.Call(what.value, {table_.rows->ScriptRow(row), QJSValue(static_cast<int>(row))}, line_);
    cell.value = ValueFromScript(value, nullptr, "o valor da coluna " + Quoted(what.caption.toStdString()));
  }
  cell.text = Shown(column, cell.value);
  return cell;
}

void Totals::Add(std::size_t column, const host::Value& value, const std::string& caption) {
  if (value.IsNull()) return;
  if (!value.IsNumber()) {
    throw Mistake("a coluna " + Quoted(caption) + " tem total e o valor " + Quoted(value.AsText()) +
                  ", que não é um número");
  }
  sums_[column] += value.AsFloat();
}

double Totals::Sum(std::size_t column) const { return host::WithoutNoise(sums_[column]); }

}  // namespace app::printing
