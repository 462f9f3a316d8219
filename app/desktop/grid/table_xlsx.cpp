// A table as a spreadsheet.
#include <xlsxwriter.h>

#include <QFile>
#include <QFileInfo>
#include <QString>
#include <algorithm>
#include <map>
#include <memory>

#include "app/desktop/grid/table_export.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::desktop {
namespace {

constexpr std::size_t kSheetNameLength = 31;
constexpr std::size_t kCellLength = 32767;
constexpr std::size_t kSheetRows = 1048575;  // without the headings
constexpr int kFirstYear = 1900;             // a sheet knows no day before it

[[noreturn]] void Fail(const std::string& path, const std::string& reason) {
  throw host::InputError("Não foi possível gravar o arquivo \"" + path + "\": " + reason);
}

std::string SheetName(const std::string& title) {
  std::string name;
  for (const char c : title) name += std::string_view("[]:*?/\\'").find(c) == std::string_view::npos ? c : ' ';
  name = host::Trim(host::Left(host::Trim(name), kSheetNameLength));
  return name.empty() ? "Lista" : name;
}

// A book closes itself, whatever happens while it is filled.
class Book {
 public:
  explicit Book(const std::string& path) : book_(workbook_new(path.c_str())) {
    if (book_ == nullptr) Fail(path, "memória insuficiente");
  }
  ~Book() {
    if (book_ != nullptr) workbook_close(book_);
  }
  Book(const Book&) = delete;
  Book& operator=(const Book&) = delete;

  lxw_workbook* Get() const { return book_; }
  /// A sheet of that name, or where there is one already, or the name is impossible, of one that the book gives.
  lxw_worksheet* Add(const std::string& name) const {
    lxw_worksheet* sheet = workbook_add_worksheet(book_, name.c_str());
    return sheet != nullptr ? sheet : workbook_add_worksheet(book_, nullptr);
  }
  /// What went wrong, empty when the file is whole.
  std::string Close() {
    const lxw_error error = workbook_close(std::exchange(book_, nullptr));
    return error == LXW_NO_ERROR ? std::string() : std::string(lxw_strerror(error));
  }

 private:
  lxw_workbook* book_;
};

class Sheet {
 public:
  Sheet(const Book& book, const Table& table)
      : table_(table), book_(book.Get()), sheet_(book.Add(SheetName(table.title))) {}

  void Fill() {
    Headings();
    for (std::size_t row = 0; row < table_.rows.size(); ++row) {
      for (std::size_t column = 0; column < table_.columns.size(); ++column) {
        Put(static_cast<lxw_row_t>(row + 1), static_cast<lxw_col_t>(column), table_.rows[row].at(column));
      }
    }
    worksheet_freeze_panes(sheet_, 1, 0);
  }

 private:
  void Headings() {
    lxw_format* bold = workbook_add_format(book_);
    format_set_bold(bold);
    format_set_bottom(bold, LXW_BORDER_THIN);
    for (std::size_t at = 0; at < table_.columns.size(); ++at) {
      const Table::Column& column = table_.columns[at];
      const auto place = static_cast<lxw_col_t>(at);
      const int width = std::clamp(column.width, 4, 100);
      worksheet_set_column(sheet_, place, place, width, FormatOf(column, false));
      worksheet_write_string(sheet_, 0, place, column.caption.c_str(), bold);
    }
  }

  // One format per look, shared by all its cells.
  lxw_format* FormatOf(const Table::Column& column, bool date) {
    const std::string pattern = date ? "dd/mm/yyyy" : host::Trim(column.format);
    lxw_format*& format = formats_[{pattern, column.align}];
    if (format != nullptr) return format;
    format = workbook_add_format(book_);
    if (!pattern.empty()) format_set_num_format(format, pattern.c_str());
    if (column.align == host::Align::kRight) format_set_align(format, LXW_ALIGN_RIGHT);
    if (column.align == host::Align::kCenter) format_set_align(format, LXW_ALIGN_CENTER);
    return format;
  }

  void Put(lxw_row_t row, lxw_col_t place, const Table::Cell& cell) {
    const Table::Column& column = table_.columns[place];
    if (const auto* text = std::get_if<std::string>(&cell)) {
      PutText(row, place, *text);
    } else if (const auto* number = std::get_if<double>(&cell)) {
      worksheet_write_number(sheet_, row, place, *number, FormatOf(column, false));
    } else if (const auto* date = std::get_if<host::Date>(&cell)) {
      if (date->IsZero()) return;
      if (date->Year() < kFirstYear) return PutText(row, place, date->ToDisplay());
      lxw_datetime moment = {date->Year(), date->Month(), date->Day(), 0, 0, 0};
      worksheet_write_datetime(sheet_, row, place, &moment, FormatOf(column, true));
    }
  }

  void PutText(lxw_row_t row, lxw_col_t place, const std::string& text) {
    if (text.empty()) return;
    worksheet_write_string(sheet_, row, place, host::Left(text, kCellLength).c_str(),
                           FormatOf(table_.columns[place], false));
  }

  const Table& table_;
  lxw_workbook* book_;
  lxw_worksheet* sheet_;
  std::map<std::pair<std::string, host::Align>, lxw_format*> formats_;
};

}  // namespace

void WriteXlsx(const Table& table, const std::string& path) { WriteXlsx(std::span(&table, 1), path); }

void WriteXlsx(std::span<const Table> tables, const std::string& path) {
  for (const Table& table : tables) {
    if (table.rows.size() > kSheetRows) Fail(path, "a lista tem mais linhas do que uma planilha");
  }
  // Written under another name first: what stood there before is lost only when the new file is whole.
  const QString whole = QString::fromStdString(path);
  const QString part = whole + QStringLiteral(".part");
  std::string reason;
  {
    Book book(part.toStdString());
    for (const Table& table : tables) Sheet(book, table).Fill();
    reason = book.Close();
  }
  if (reason.empty() && QFile::exists(whole) && !QFile::remove(whole)) reason = "o arquivo não pode ser substituído";
  if (reason.empty() && !QFile::rename(part, whole)) reason = "o arquivo não pode ser criado";
  if (reason.empty()) return;
  QFile::remove(part);
  Fail(path, reason);
}

}  // namespace app::desktop
