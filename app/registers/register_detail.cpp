#include "app/registers/register_detail.h"

#include <algorithm>
#include <utility>

#include "app/mill/cell.h"
#include "host/errors.h"
#include "host/restored.h"
#include "host/text.h"

namespace app::registers {
namespace {

constexpr std::string_view kWholeMinute = ":00";
constexpr std::size_t kTimeWidth = 8;  // HH:MM:SS

std::vector<host::FieldDef> Fields(const RegisterStore& store, const tables::DetailDescription& description) {
  std::vector<host::FieldDef> fields = {
      {std::string(description.key.name), host::FieldType::kText, 0, "", std::string(description.key.caption)}};
  for (const tables::ColumnDescription& column : description.columns) {
    const tables::Column& stored = store.DetailColumnOf(column);
    const std::size_t width =
        stored.kind == tables::ColumnKind::kTime ? kTimeWidth : static_cast<std::size_t>(stored.width);
    fields.push_back({std::string(column.name), host::FieldType::kText, width, "", std::string(column.caption)});
  }
  return fields;
}

std::vector<host::GridColumn> Columns(const tables::DetailDescription& description) {
  std::vector<host::GridColumn> columns = {
      {.field = std::string(description.key.name), .width = description.key.list_width, .read_only = true}};
  for (const tables::ColumnDescription& column : description.columns) {
    columns.push_back({.field = std::string(column.name), .width = column.list_width, .align = host::Align::kCenter});
  }
  return columns;
}

/// Times without their seconds where these are none.
std::string Shown(const tables::Column& column, const host::Value& value) {
  std::string text = value.AsText();
  if (column.kind == tables::ColumnKind::kTime && text.size() == kTimeWidth && text.ends_with(kWholeMinute)) {
    text.resize(text.size() - kWholeMinute.size());
  }
  return text;
}

bool IsEmptyLine(const std::vector<std::string>& line) {
  return std::all_of(line.begin(), line.end(), [](const std::string& text) { return text.empty(); });
}

}  // namespace

RegisterDetail::RegisterDetail(host::Screen& screen, const RegisterStore& store,
                               const tables::DetailDescription& description)
    : screen_(screen),
      store_(store),
      description_(description),
      detail_(screen, "TbDetalhe", Fields(store, description)),
      grid_(screen, "GrdDetalhe", detail_, Columns(description)) {
  grid_.SetCaption(description.caption);
  for (std::size_t i = 0; i < description.columns.size(); ++i) {
    detail_.FieldAt(i + 1).OnValidate = [this, i](host::Field& field) { CheckCell(field, i); };
  }
  detail_.BeforePost = [this] { BeforePost(); };
  detail_.BeforeDelete = [this] { BeforeDelete(); };
}

// --- what the grid keeps to -----------------------------------------------------------------------------------------

void RegisterDetail::CheckCell(host::Field& field, std::size_t column) const {
  const std::string text = host::Trim(field.AsText());
  if (filling_ || text.empty()) return;
  const tables::ColumnDescription& described = description_.columns[column];
  const mill::Cell cell =
      mill::ReadCell(store_.DetailShape(), store_.DetailColumnOf(described), text, mill::CheckRuleFormula);
  if (cell.objection) screen_.Refuse(std::string(described.caption) + ": " + *cell.objection);
}

// The lines are given: one more, begun below the last, vanishes.
void RegisterDetail::BeforePost() {
  if (!filling_ && detail_.State() == host::DatasetState::kInsert) detail_.Cancel();
}

// A line is never gone, only empty.
void RegisterDetail::BeforeDelete() {
  if (detail_.State() == host::DatasetState::kInsert) return;
  detail_.Edit();
  for (std::size_t i = 0; i < description_.columns.size(); ++i) detail_.FieldAt(i + 1).Set("");
  detail_.Post();
  throw host::Abort();
}

// --- rows -----------------------------------------------------------------------------------------------------------

void RegisterDetail::Fill(const Rows& rows) {
  const host::Restored<bool> filling(filling_, true);
  detail_.Cancel();
  detail_.Empty();
  for (std::size_t row = 0; row < rows.size(); ++row) {
    detail_.Append();
    detail_.FieldAt(0).Set(description_.key_texts[row]);
    for (std::size_t i = 0; i < rows[row].size(); ++i) detail_.FieldAt(i + 1).Set(rows[row][i]);
    detail_.Post();
  }
  detail_.First();
}

RegisterDetail::Rows RegisterDetail::Texts() const {
  Rows rows(description_.key_texts.size());
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t i = 0; i < description_.columns.size(); ++i) {
      rows[row].push_back(host::Trim(detail_.ValueAt(row + 1, i + 1).AsText()));
    }
  }
  return rows;
}

void RegisterDetail::Show(const std::vector<std::vector<host::Value>>& rows) {
  stored_ = rows;
  stored_.resize(description_.key_texts.size());
  Rows texts;
  for (const auto& row : stored_) {
    auto& line = texts.emplace_back(description_.columns.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
      line[i] = Shown(store_.DetailColumnOf(description_.columns[i]), row[i]);
    }
  }
  Fill(texts);
  shown_ = std::move(texts);
}

bool RegisterDetail::Changed() const { return Texts() != shown_; }

std::vector<std::vector<host::Value>> RegisterDetail::Read() {
  if (detail_.InEdit()) detail_.Post();
  const Rows lines = Texts();
  std::vector<std::vector<host::Value>> rows(lines.size());
  for (std::size_t row = 0; row < lines.size(); ++row) {
    if (lines[row] == shown_[row]) {
      rows[row] = stored_[row];
      continue;
    }
    if (IsEmptyLine(lines[row])) continue;
    for (std::size_t i = 0; i < lines[row].size(); ++i) {
      const tables::ColumnDescription& column = description_.columns[i];
      if (lines[row][i].empty()) {
        detail_.GoTo(row + 1);
        screen_.Refuse(
            std::string(description_.key_texts[row]) + ": falta o campo \"" + std::string(column.caption) + "\".",
            grid_);
      }
      rows[row].push_back(lines[row][i]);
    }
  }
  return rows;
}

}  // namespace app::registers
