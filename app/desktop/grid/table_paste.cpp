#include "app/desktop/grid/table_paste.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "app/desktop/grid/folded_text.h"
#include "host/errors.h"
#include "host/kit/screen.h"
#include "host/text.h"

namespace app::desktop {
namespace {

using host::ActResult;
using Cells = std::vector<std::pair<std::string, std::string>>;

// Reads one cell from `at` on; `at` is then on what ends it.
std::string ReadCell(std::string_view text, std::size_t& at) {
  std::string cell;
  if (at < text.size() && text[at] == '"') {
    for (++at; at < text.size(); ++at) {
      if (text[at] != '"') {
        cell += text[at];
      } else if (at + 1 < text.size() && text[at + 1] == '"') {
        cell += text[++at];
      } else {
        ++at;
        break;
      }
    }
  }
  for (; at < text.size() && text[at] != '\t' && text[at] != '\n' && text[at] != '\r'; ++at) cell += text[at];
  return cell;
}

std::optional<std::string> TickOf(std::string_view cell) {
  const std::string said = Folded(host::Trim(cell));
  for (const char* yes : {"s", "sim", "x", "1", "verdadeiro", "true"}) {
    if (said == yes) return "S";
  }
  for (const char* no : {"", "n", "nao", "0", "falso", "false"}) {
    if (said == no) return "N";
  }
  return std::nullopt;
}

bool RepeatsCaptions(const std::vector<std::string>& cells, const std::vector<std::string>& captions) {
  if (cells.size() > captions.size()) return false;
  for (std::size_t at = 0; at < cells.size(); ++at) {
    if (Folded(host::Trim(cells[at])) != Folded(host::Trim(captions[at]))) return false;
  }
  return true;
}

std::size_t RecNoOf(const host::Dataset& dataset, std::size_t id) {
  for (std::size_t rec_no = 1; rec_no <= dataset.RecordCount(); ++rec_no) {
    if (dataset.IdAt(rec_no) == id) return rec_no;
  }
  return 0;
}

}  // namespace

PastedRows ReadPasted(std::string_view text) {
  PastedRows rows;
  std::size_t at = 0;
  while (at < text.size()) {
    std::vector<std::string> cells = {ReadCell(text, at)};
    while (at < text.size() && text[at] == '\t') cells.push_back(ReadCell(text, ++at));
    rows.push_back(std::move(cells));
    if (at < text.size() && text[at] == '\r') ++at;
    if (at < text.size() && text[at] == '\n') ++at;
  }
  const auto empty = [](const std::vector<std::string>& cells) {
    return std::all_of(cells.begin(), cells.end(), [](const std::string& cell) { return host::Trim(cell).empty(); });
  };
  while (!rows.empty() && empty(rows.back())) rows.pop_back();
  return rows;
}

Paste PlanPaste(const host::Grid& grid, const std::vector<int>& columns, const std::vector<std::string>& captions,
                PastedRows rows) {
  Paste paste;
  if (rows.size() > 1 && RepeatsCaptions(rows.front(), captions)) rows.erase(rows.begin());
  std::size_t width = 0;
  for (const auto& cells : rows) width = std::max(width, cells.size());
  if (width > columns.size()) {
    throw host::InputError("A tabela a colar tem " + std::to_string(width) +
                           " colunas, e da célula escolhida em diante há " + std::to_string(columns.size()) + ".");
  }
  for (std::size_t at = 0; at < width; ++at) {
    const host::GridColumn& column = grid.Columns()[static_cast<std::size_t>(columns[at])];
    if (grid.ReadOnly() || column.read_only || grid.GetDataset().FindField(column.field) == nullptr) {
      throw host::InputError("A coluna \"" + captions[at] + "\" não pode ser digitada; nada foi colado.");
    }
    paste.fields.push_back(column.field);
    if (!column.check_box) continue;
    for (std::size_t row = 0; row < rows.size(); ++row) {
      if (at >= rows[row].size()) continue;
      const auto tick = TickOf(rows[row][at]);
      if (!tick) {
        throw host::InputError("Linha " + std::to_string(row + 1) + ": \"" + rows[row][at] + "\" não serve para \"" +
                               captions[at] + "\", que aceita S ou N; nada foi colado.");
      }
      rows[row][at] = *tick;
    }
  }
  paste.rows = std::move(rows);
  return paste;
}

Pasted TypePaste(host::Desk& desk, host::Grid& grid, const Paste& paste, const std::vector<std::size_t>& ids) {
  const host::Dataset& dataset = grid.GetDataset();
  Pasted pasted;
  for (std::size_t row = 0; row < paste.rows.size(); ++row) {
    Cells cells;
    for (std::size_t at = 0; at < paste.rows[row].size(); ++at) {
      cells.emplace_back(paste.fields[at], host::Trim(paste.rows[row][at]));
    }
    const bool begun = row == 0 && dataset.State() == host::DatasetState::kInsert;
    const bool there = begun || row < ids.size();
    const std::size_t before = dataset.RecordCount();
    ActResult result = ActResult::kDone;
    if (there && !begun) {
      const std::size_t rec_no = RecNoOf(dataset, ids[row]);
      result = rec_no == 0 ? ActResult::kRefused : desk.SelectRow(grid, rec_no);
    }
    if (result == ActResult::kDone) result = there ? desk.SetRow(grid, cells) : desk.AppendRow(grid, cells);
    // An incomplete new row gives itself up without a word.
    const bool kept = (there && !begun) || dataset.RecordCount() > before;
    pasted.stopped = result != ActResult::kDone || !kept;
    if (pasted.stopped) return pasted;
    ++pasted.rows;
  }
  return pasted;
}

}  // namespace app::desktop
