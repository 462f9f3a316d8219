// Tables and details out of what a layout writes.
#include "app/printing/layout/block_reader.h"
#include "app/printing/layout/datasets_in_script.h"
#include "app/printing/layout/script_options.h"

namespace app::printing {
namespace {

constexpr double kWidest = 5'000;  // millimetres

// `totals: true` or `totals: "Total geral"`.
std::optional<QString> ReadTotals(Options& options) {
  const QJSValue value = options.Value("totals");
  if (value.isUndefined() || value.isNull() || (value.isBool() && !value.toBool())) return std::nullopt;
  if (value.isBool()) return QStringLiteral("Total");
  if (!value.isString()) options.Refuse("totals", "um texto, true ou false");
  return value.toString();
}

std::optional<Grouping> ReadGrouping(Options& owner, bool may_total) {
  const QJSValue value = owner.Value("group");
  if (value.isUndefined() || value.isNull()) return std::nullopt;
  Options options(value, "\"group\" de " + owner.What());
  Grouping group;
  const QJSValue by = options.Value("by");
  if (by.isCallable()) {
    group.key = by;
  } else if (by.isString() && !by.toString().isEmpty()) {
    group.field = by.toString().toStdString();
  } else {
    options.Refuse("by", "o nome de um campo ou uma função");
  }
  group.header = options.Function("header");
  if (may_total) group.totals_caption = ReadTotals(options);
  options.Done();
  return group;
}

void ReadWidth(Options& options, Column& column) {
  constexpr double kMostShare = 1'000;
  const QJSValue width = options.Value("width");
  if (width.isUndefined()) return;
  if (width.isNumber() && width.toNumber() > 0 && width.toNumber() <= kWidest) {
    column.width = width.toNumber();
    return;
  }
  const QString text = width.isString() ? width.toString() : QString();
  bool known = text == QLatin1String("*");
  if (!known && text.endsWith(u'*')) {
    column.share = text.chopped(1).toDouble(&known);
    known = known && column.share > 0 && column.share <= kMostShare;
  }
  if (!known) options.Refuse("width", "um número de milímetros, \"*\" ou uma parte como \"2*\"");
}

Column ReadColumn(const QJSValue& value, std::size_t number, const RowSource& rows) {
  Options options(value, "a coluna " + std::to_string(number) + " de table()");
  Column column;
  column.field = options.Text("field").toStdString();
  column.value = options.Function("value");
  if (column.field.empty() == column.value.isUndefined()) {
    throw Mistake(options.What() + " precisa de \"field\" ou de \"value\", um dos dois");
  }
  const host::Field* field = column.field.empty() ? nullptr : rows.Find(column.field).field;
  QString caption = QString::fromStdString(column.field);
  if (field != nullptr && !field->Def().caption.empty()) caption = QString::fromStdString(field->Def().caption);
  column.caption = options.Text("caption", caption);
  ReadWidth(options, column);
  if (options.Has("align")) column.align = ReadAlign(options);
  column.format = options.Text("format").toStdString();
  column.wrap = options.Flag("wrap", false);
  column.total = options.Flag("total", false);
  options.Done();
  return column;
}

std::shared_ptr<RowSource> ReadRows(Options& options, DatasetsInScript& datasets) {
  if (!options.Has("rows")) options.Refuse("rows", "um conjunto de dados ou uma lista de linhas");
  return datasets.SourceOf(options.Value("rows"));
}

}  // namespace

Table ReadTable(const QJSValue& value, DatasetsInScript& datasets) {
  Options options(value, "table()");
  Table table;
  table.title = options.Text("title").toStdString();
  table.rows = ReadRows(options, datasets);
  const std::vector<QJSValue> columns = Flattened(options.Value("columns"));
  if (columns.empty()) options.Refuse("columns", "uma lista de colunas");
  for (const QJSValue& column : columns) {
    table.columns.push_back(ReadColumn(column, table.columns.size() + 1, *table.rows));
  }
  table.group = ReadGrouping(options, true);
  table.totals_caption = ReadTotals(options);
  table.empty = options.Text("empty");
  table.zebra = options.Flag("zebra", false);
  table.style = ReadStyle(options);
  options.Done();
  if (table.group && !table.group->field.empty()) (void)table.rows->Find(table.group->field);
  return table;
}

Detail ReadDetail(const QJSValue& value, DatasetsInScript& datasets) {
  Options options(value, "detail()");
  Detail detail;
  detail.rows = ReadRows(options, datasets);
  detail.band = options.Function("band");
  if (detail.band.isUndefined()) options.Refuse("band", "uma função");
  detail.group = ReadGrouping(options, false);
  options.Done();
  if (detail.group && !detail.group->field.empty()) (void)detail.rows->Find(detail.group->field);
  return detail;
}

}  // namespace app::printing
