#include "app/mill/csv.h"

#include <algorithm>
#include <utility>

#include "host/errors.h"
#include "host/text.h"

namespace app::mill {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr char kSeparator = ';';

[[noreturn]] void Fail(int line, const std::string& what) {
  throw host::InputError("Linha " + std::to_string(line) + ": " + what);
}

// Length of the UTF-8 sequence at the start of `text`, or 0 when there is none.
std::size_t SequenceLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const std::size_t size = byte(0) < 0x80 ? 1 : byte(0) < 0xC2 ? 0 : byte(0) < 0xE0 ? 2 : byte(0) < 0xF0 ? 3 : 4;
  if (size == 0 || byte(0) > 0xF4 || text.size() < size) return 0;
  for (std::size_t i = 1; i < size; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  return size;
}

void CheckEncoding(std::string_view text) {
  const std::string_view start = text.substr(0, 2);
  if (start == "\xFF\xFE" || start == "\xFE\xFF") Fail(1, "o arquivo está em UTF-16; grave-o em UTF-8.");
  int line = 1;
  while (!text.empty()) {
    const std::size_t size = SequenceLength(text);
    if (size == 0) Fail(line, "o arquivo não está em UTF-8; grave-o em UTF-8.");
    if (text.front() == '\n') ++line;
    text.remove_prefix(size);
  }
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  bool AtEnd() const { return position_ >= text_.size(); }

  CsvRow ReadRow() {
    CsvRow row;
    row.line = line_;
    do {
      row.cells.push_back(ReadCell());
    } while (Take(kSeparator));
    Take('\r');
    if (!AtEnd() && !Take('\n')) Fail(line_, "há texto depois das aspas.");
    ++line_;
    return row;
  }

 private:
  char Next() const { return AtEnd() ? '\0' : text_[position_]; }
  bool Take(char c) {
    if (AtEnd() || text_[position_] != c) return false;
    ++position_;
    return true;
  }
  void SkipBlanks() {
    while (Next() == ' ' || Next() == '\t') ++position_;
  }

  std::string ReadCell() {
    SkipBlanks();
    if (Take('"')) return ReadQuoted();
    const std::size_t start = position_;
    while (!AtEnd() && Next() != kSeparator && Next() != '\n') ++position_;
    return host::Trim(text_.substr(start, position_ - start));
  }

  std::string ReadQuoted() {
    const int opened = line_;
    std::string cell;
    while (!AtEnd()) {
      if (Take('"')) {
        if (!Take('"')) {
          SkipBlanks();
          return cell;
        }
        cell += '"';
        continue;
      }
      if (Next() == '\n') ++line_;
      cell += text_[position_++];
    }
    Fail(opened, "as aspas abertas não foram fechadas.");
  }

  std::string_view text_;
  std::size_t position_ = 0;
  int line_ = 1;
};

bool IsBlank(const CsvRow& row) {
  return std::all_of(row.cells.begin(), row.cells.end(), [](const std::string& cell) { return cell.empty(); });
}

std::string Written(const std::string& cell) {
  const bool plain = cell.find_first_of(";\"\r\n") == std::string::npos && host::Trim(cell) == cell;
  if (plain) return cell;
  std::string quoted = "\"";
  for (const char c : cell) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

void WriteRow(std::string& text, const std::vector<std::string>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) text += kSeparator;
    text += Written(cells[i]);
  }
  text += "\r\n";
}

}  // namespace

CsvFile ReadCsv(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  CheckEncoding(text);

  CsvFile file;
  for (Reader reader(text); !reader.AtEnd();) {
    CsvRow row = reader.ReadRow();
    if (IsBlank(row)) continue;
    if (file.header.empty()) {
      for (const auto& name : row.cells) file.header.push_back(host::UpperAscii(host::Trim(name)));
    } else {
      file.rows.push_back(std::move(row));
    }
  }
  if (file.header.empty()) Fail(1, "o arquivo está vazio; a primeira linha traz os nomes das colunas.");
  return file;
}

std::string WriteCsv(const std::vector<std::string>& header, const std::vector<std::vector<std::string>>& rows) {
  std::string text(kByteOrderMark);
  WriteRow(text, header);
  for (const auto& row : rows) WriteRow(text, row);
  return text;
}

}  // namespace app::mill
