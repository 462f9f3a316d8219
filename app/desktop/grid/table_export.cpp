#include "app/desktop/grid/table_export.h"

#include <QSaveFile>
#include <QString>

#include "host/decimal.h"
#include "host/errors.h"

namespace app::desktop {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string NumberText(double number, const std::string& format) {
  if (!format.empty()) return host::FormatNumber(format, number, ',');
  std::string text = host::PointText(number);
  for (char& c : text) {
    if (c == '.') c = ',';
  }
  return text;
}

std::string TextOf(const Table::Cell& cell, const Table::Column& column) {
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  if (const auto* number = std::get_if<double>(&cell)) return NumberText(*number, column.format);
  if (const auto* date = std::get_if<host::Date>(&cell)) return date->ToDisplay();
  return {};
}

// A cell is one piece of one line.
std::string WithoutBreaks(std::string text) {
  for (char& c : text) {
    if (c == '\t' || c == '\n' || c == '\r') c = ' ';
  }
  return text;
}

std::string CsvCell(const std::string& text) {
  if (text.find_first_of(";\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

template <typename Cell>
std::string Joined(const Table& table, std::string_view separator, std::string_view line_end, const Cell& cell) {
  std::string text;
  const auto line = [&](const auto& piece) {
    for (std::size_t at = 0; at < table.columns.size(); ++at) {
      if (at > 0) text += separator;
      text += cell(piece(at));
    }
    text += line_end;
  };
  line([&](std::size_t at) { return table.columns[at].caption; });
  for (const auto& row : table.rows) {
    line([&](std::size_t at) { return TextOf(row.at(at), table.columns[at]); });
  }
  return text;
}

}  // namespace

std::string ToClipboardText(const Table& table) { return Joined(table, "\t", "\n", WithoutBreaks); }

std::string ToCsv(const Table& table) { return std::string(kByteOrderMark) + Joined(table, ";", "\r\n", CsvCell); }

void WriteCsv(const Table& table, const std::string& path) {
  const std::string text = ToCsv(table);
  // Written under another name first: what stood there before is lost only when the new file is whole.
  QSaveFile file(QString::fromStdString(path));
  const auto size = static_cast<qint64>(text.size());
  if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), size) != size || !file.commit()) {
    throw host::InputError("Não foi possível gravar o arquivo \"" + path + "\": " + file.errorString().toStdString());
  }
}

}  // namespace app::desktop
