#include "app/desktop/grid/column_widths.h"

#include <algorithm>
#include <numeric>

namespace app::desktop {
namespace {

constexpr int kLongText = 20;  // characters from which a text gains from more room
constexpr int kWidestText = 32;
constexpr int kShortenedText = 22;  // still tells most texts apart
constexpr int kNumber = 11;
constexpr int kInteger = 7;
constexpr int kDate = 10;
constexpr int kCheckBox = 4;

int CharactersOf(const GridModel& model, int column) {
  const host::GridColumn& shown = model.ColumnAt(column);
  if (shown.width > 0) return shown.width;
  if (shown.check_box) return kCheckBox;
  const host::Field* field = model.FieldAt(column);
  if (field == nullptr) return kNumber;
  switch (field->Def().type) {
    case host::FieldType::kInteger:
      return kInteger;
    case host::FieldType::kFloat:
      return kNumber;
    case host::FieldType::kDate:
      return kDate;
    case host::FieldType::kMemo:
      return kWidestText;
    case host::FieldType::kText:
      break;
  }
  const int width = static_cast<int>(std::min<std::size_t>(field->Def().width, kWidestText));
  return width == 0 ? kLongText : width;
}

bool IsLongText(const GridModel& model, int column) {
  return !model.IsNumber(column) && !model.ColumnAt(column).check_box && CharactersOf(model, column) >= kLongText;
}

// Long texts are shortened, none below `least`, when that brings every column into sight.
void GiveWay(std::vector<int>& widths, const std::vector<std::size_t>& long_texts, int missing, int least) {
  int can_give = 0;
  for (const std::size_t column : long_texts) can_give += std::max(0, widths[column] - least);
  if (can_give < missing) return;
  for (const std::size_t column : long_texts) {
    const int mine = std::max(0, widths[column] - least);
    const int given = can_give == 0 ? 0 : (missing * mine + can_give - 1) / can_give;
    widths[column] -= given;
    missing -= given;
    can_give -= mine;
  }
}

}  // namespace

int NaturalWidth(const GridModel& model, int column, const QFontMetrics& metrics) {
  const int padding = metrics.averageCharWidth() * 2;
  int caption = 0;
  const QString heading = model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  for (const QString& line : heading.split(u'\n')) caption = std::max(caption, metrics.horizontalAdvance(line));
  // Digits and capitals, which codes are made of, are wider than the average letter.
  const int characters = CharactersOf(model, column) * metrics.horizontalAdvance(u'0');
  const bool asked = model.ColumnAt(column).width > 0;
  const int least = asked ? std::min(caption, 2 * characters) : caption;
  return std::max(characters, least) + padding;
}

std::vector<int> NaturalWidths(const GridModel& model, const QFontMetrics& metrics, int room) {
  std::vector<int> widths;
  std::vector<std::size_t> growing;
  for (int column = 0; column < model.columnCount(); ++column) {
    if (IsLongText(model, column)) growing.push_back(widths.size());
    widths.push_back(NaturalWidth(model, column, metrics));
  }
  const int left = room - std::accumulate(widths.begin(), widths.end(), 0);
  if (left < 0) GiveWay(widths, growing, -left, kShortenedText * metrics.horizontalAdvance(u'0'));
  if (left <= 0 || growing.empty()) return widths;
  const int share = left / static_cast<int>(growing.size());
  for (const std::size_t column : growing) widths[column] += share;
  return widths;
}

}  // namespace app::desktop
