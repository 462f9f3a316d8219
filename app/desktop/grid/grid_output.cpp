#include "app/desktop/grid/grid_output.h"

#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QStandardPaths>
#include <algorithm>

#include "app/desktop/basics/busy_cursor.h"
#include "app/desktop/grid/grid_table.h"
#include "app/desktop/grid/table_paste.h"
#include "host/errors.h"
#include "host/kit/screen.h"
#include "host/text.h"

namespace app::desktop {
namespace {

constexpr std::string_view kKey = "Grades";
constexpr std::string_view kSection = "Exportar";
constexpr std::string_view kName = "Pasta";

// A caption as the name of a file.
QString FileName(QString title) {
  for (QChar& c : title) {
    if (QStringLiteral("\\/:*?\"<>|").contains(c)) c = u'-';
  }
  return title;
}

}  // namespace

GridOutput::GridOutput(GridModel& model, GridView& view, host::UserSettings& settings)
    : model_(model), view_(view), settings_(settings) {}

QString GridOutput::Title() const { return QString::fromStdString(model_.GetGrid().Owner().Caption()); }

void GridOutput::Copy() const {
  const Block block = view_.Marked();
  if (block.Empty()) return;
  const Table table = TableOf(model_, view_, block, Title());
  std::string text = ToClipboardText(table);
  // One cell goes into the middle of something else: no caption, no line end.
  if (block.OneCell()) text = text.substr(text.find('\n') + 1, text.size() - text.find('\n') - 2);
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

void GridOutput::Tell(const std::string& sentence) {
  Station& station = view_.Actor().GetStation();
  host::Screen& screen = model_.GetGrid().Owner();
  station.Do([&] { return station.Desk().Run(screen.Caption(), [&] { screen.Warn(sentence); }); });
}

void GridOutput::PasteHere() {
  if (!view_.Actor().Live()) return;
  const std::string text = QGuiApplication::clipboard()->text().toStdString();
  Station& station = view_.Actor().GetStation();
  if (text.empty() || !station.GetTyping().Settle()) return;
  station.Do([&] { return PasteRows(text); });
}

host::ActResult GridOutput::PasteRows(const std::string& text) {
  host::Desk& desk = view_.Actor().GetStation().Desk();
  host::Grid& grid = model_.GetGrid();
  host::Screen& screen = grid.Owner();
  const auto refuse = [&](const std::string& sentence) {
    return desk.Run(screen.Caption(), [&] { screen.Refuse(sentence); });
  };
  Paste paste;
  try {
    std::vector<int> columns;
    std::vector<std::string> captions;
    const int first = view_.Header().visualIndex(grid.SelectedColumn());
    for (int place = std::max(0, first); place < view_.Header().count(); ++place) {
      columns.push_back(view_.Header().logicalIndex(place));
      captions.push_back(model_.Caption(columns.back()).toStdString());
    }
    paste = PlanPaste(grid, columns, captions, ReadPasted(text));
  } catch (const host::InputError& error) {
    return refuse(error.what());
  }
  if (paste.rows.empty()) return host::ActResult::kDone;
  // One cell is as if typed: the person goes on from it himself.
  if (paste.rows.size() == 1 && paste.fields.size() == 1) {
    const host::GridColumn& column = model_.ColumnAt(grid.SelectedColumn());
    if (column.check_box) return desk.TickCell(grid, paste.rows[0][0] == "S");
    return desk.TypeCell(grid, host::Trim(paste.rows[0][0]));
  }
  std::vector<std::size_t> ids;
  for (int row = model_.CursorRow(); row >= 0 && row < model_.rowCount(); ++row) {
    if (model_.IdAt(row) != 0) ids.push_back(model_.IdAt(row));
  }
  const Pasted pasted = TypePaste(desk, grid, paste, ids);
  if (!pasted.stopped) return host::ActResult::kDone;
  return refuse("A colagem parou na linha " + std::to_string(pasted.rows + 1) + " de " +
                std::to_string(paste.rows.size()) + "; as anteriores foram aceitas.");
}

QString GridOutput::Folder() const {
  const auto kept = settings_.Read(kKey, kSection, kName);
  QString last = QString::fromStdString(kept.value_or(""));
  if (!last.isEmpty() && QDir(last).exists()) return last;
  return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

void GridOutput::Export(Format format) {
  const bool xlsx = format == Format::kXlsx;
  const QString ending = xlsx ? QStringLiteral("xlsx") : QStringLiteral("csv");
  const QString kinds = xlsx ? QStringLiteral("Planilha (*.xlsx)") : QStringLiteral("Texto separado (*.csv)");
  const Table table = TableOf(model_, view_, WholeList(model_, view_), Title());
  QFileDialog dialog(view_.window(), QStringLiteral("Exportar"), Folder(), kinds);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(ending);
  dialog.selectFile(FileName(Title()) + u'.' + ending);
  const QPointer<GridView> alive(&view_);
  if (dialog.exec() != QDialog::Accepted || !alive || model_.Released()) return;
  const QString path = dialog.selectedFiles().value(0);
  try {
    const BusyCursor busy;
    xlsx ? WriteXlsx(table, path.toStdString()) : WriteCsv(table, path.toStdString());
    settings_.Write(kKey, kSection, kName, QFileInfo(path).absolutePath().toStdString());
  } catch (const host::InputError& error) {
    Tell(error.what());
  }
}

}  // namespace app::desktop
