#include "app/desktop/grid/column_memory.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "host/errors.h"
#include "host/kit/screen.h"

namespace app::desktop {
namespace {

constexpr std::string_view kKey = "Grades";
constexpr std::string_view kName = "Colunas";
constexpr int kWidest = 4000;

QString Qt8(const std::string& text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QJsonObject ToJson(const ColumnLayout& layout) {
  QJsonArray columns;
  for (const auto& column : layout.columns) columns.append(QJsonArray{column.field, column.width});
  QJsonObject object{{QStringLiteral("columns"), columns}};
  if (!layout.sorted_by.isEmpty()) {
    object[QStringLiteral("sort")] = layout.sorted_by;
    object[QStringLiteral("descending")] = layout.descending;
  }
  return object;
}

ColumnLayout FromJson(const QJsonObject& object) {
  ColumnLayout layout;
  const QJsonArray columns = object[QStringLiteral("columns")].toArray();
  for (const auto& column : columns) {
    const int width = std::clamp(column.toArray().at(1).toInt(), 0, kWidest);
    layout.columns.push_back({column.toArray().at(0).toString(), width});
  }
  layout.sorted_by = object[QStringLiteral("sort")].toString();
  layout.descending = object[QStringLiteral("descending")].toBool();
  return layout;
}

bool SameColumns(const ColumnLayout& layout, const host::Grid& grid) {
  QStringList kept;
  QStringList now;
  for (const auto& column : layout.columns) kept << column.field;
  for (const auto& column : grid.Columns()) now << Qt8(column.field);
  kept.sort();
  now.sort();
  return kept == now;
}

}  // namespace

ColumnMemory::ColumnMemory(host::UserSettings& settings, const host::Grid& grid)
    : settings_(settings), grid_(grid), section_(grid.Owner().ClassName() + "." + grid.Name()) {}

std::optional<ColumnLayout> ColumnMemory::Read() const {
  const auto text = settings_.Read(kKey, section_, kName);
  if (!text || text->empty()) return std::nullopt;
  const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(*text));
  if (!document.isObject()) return std::nullopt;
  ColumnLayout layout = FromJson(document.object());
  if (!SameColumns(layout, grid_)) return std::nullopt;
  return layout;
}

void ColumnMemory::Write(const ColumnLayout& layout) {
  Put(QJsonDocument(ToJson(layout)).toJson(QJsonDocument::Compact).toStdString());
}

void ColumnMemory::Forget() { Put(""); }

void ColumnMemory::Put(std::string_view text) {
  if (settings_.Read(kKey, section_, kName).value_or("") == text) return;
  try {
    settings_.Write(kKey, section_, kName, text);
  } catch (const host::InputError&) {
    // It holds for this run.
  }
}

}  // namespace app::desktop
