// A table: its head on every page, its rows, groups and totals.
#include <algorithm>
#include <memory>
#include <utility>

#include "app/printing/layout/flow.h"
#include "app/printing/layout/group_walk.h"
#include "app/printing/layout/table_columns.h"
#include "app/printing/page/fonts.h"

namespace app::printing {
namespace {

constexpr double kAir = 0.5;  // millimetres above and below the text of a row
constexpr double kHeadLine = 0.25;
constexpr double kTotalLine = 0.2;
constexpr std::uint32_t kHeadFill = 0xE4E4E4;
constexpr std::uint32_t kZebraFill = 0xF3F3F3;

class TableFlow {
 public:
  TableFlow(const Table& table, int line, FlowContext& context)
      : table_(table),
        line_(line),
        context_(context),
        columns_(table, line, context),
        style_(Resolved(table.style, context.base)),
        plain_(context.measure.StyleIndex(style_)),
        bold_(context.measure.StyleIndex(Bold(style_))),
        line_height_(LineHeight(style_.size)),
        group_totals_(table.columns.size()),
        totals_(table.columns.size()) {}

  void Run() {
    BeginData();
    const std::size_t count = table_.rows->Size();
    Strip head = HeadStrip();
    const auto repeated = std::make_shared<const Strip>(head);
    context_.sink.Add(std::move(head));
    context_.sink.SetRepeated(repeated);
    GroupWalk walk(table_.group, *table_.rows, context_.engine, line_);
    for (std::size_t row = 0; row < count; ++row) {
      walk.GoTo(row);
      if (table_.group && walk.Begins()) BeginGroup(row, repeated);
      const bool group_totals = table_.group && walk.Ends() && table_.group->totals_caption;
      const bool last = row + 1 == count;
      const bool totals_follow = last && table_.totals_caption;
      AddRow(row, walk, group_totals || totals_follow);
      if (group_totals) {
        context_.sink.Add(TotalsStrip(*table_.group->totals_caption, group_totals_, totals_follow));
      }
    }
    if (count == 0) {
      AddEmpty();
    } else if (table_.totals_caption) {
      context_.sink.Add(TotalsStrip(*table_.totals_caption, totals_, false));
    }
    context_.sink.SetRepeated(nullptr);
    if (context_.tables != nullptr) context_.tables->push_back(std::move(data_));
  }

 private:
  static TextStyle Bold(TextStyle style) {
    style.bold = true;
    return style;
  }

  // A column of the group's own comes first: its key stands in no other column.
  void BeginData() {
    data_.title = table_.title;
    if (table_.group) {
      const RowSource::FieldRef field =
          table_.group->field.empty() ? RowSource::FieldRef() : table_.rows->Find(table_.group->field);
      std::string caption = table_.group->field.empty() ? "Grupo" : table_.group->field;
      if (field.field != nullptr && !field.field->Def().caption.empty()) caption = field.field->Def().caption;
      data_.columns.push_back({caption, ""});
    }
    for (std::size_t at = 0; at < table_.columns.size(); ++at) {
      data_.columns.push_back({columns_.Caption(at), columns_.Format(at)});
    }
  }

  // The lines of a text in a column, cut to its width; where it does not wrap, one line.
  std::vector<QString> LinesOf(std::uint32_t style, const std::string& text, double width, bool wrap) const {
    QString whole = QString::fromStdString(text);
    if (wrap) return context_.measure.Lines(style, whole, width);
    whole.replace(u'\n', u' ');
    return {context_.measure.Cut(style, whole, width)};
  }

  void PutLines(const std::vector<QString>& lines, std::uint32_t style, const TableColumns::Place& place, double y,
                Strip& strip) const {
    for (const QString& line : lines) {
      if (!line.isEmpty()) {
        strip.items.texts.push_back(
            LineOfText(context_.measure, style, line.toStdString(), place.x, y, place.width, place.align));
      }
      y += line_height_;
    }
  }

  Strip HeadStrip() const {
    std::vector<std::vector<QString>> captions;
    std::size_t most = 1;
    const auto& places = columns_.Places();
    for (std::size_t at = 0; at < places.size(); ++at) {
      captions.push_back(LinesOf(bold_, columns_.Caption(at), places[at].width, true));
      most = std::max(most, captions.back().size());
    }
    Strip strip;
    strip.keep_with_next = true;
    strip.height = static_cast<double>(most) * line_height_ + 2 * kAir;
    for (std::size_t at = 0; at < places.size(); ++at) {
      const double above = static_cast<double>(most - captions[at].size()) * line_height_;
      PutLines(captions[at], bold_, places[at], kAir + above, strip);
    }
    BoxItem fill{context_.left, 0, context_.width, strip.height, 0, true, kHeadFill, 0};
    strip.items.boxes.push_back(fill);
    strip.items.lines.push_back({context_.left, strip.height, context_.left + context_.width, strip.height, kHeadLine});
    return strip;
  }

  void BeginGroup(std::size_t row, const std::shared_ptr<const Strip>& head) {
    group_totals_.Clear();
    rows_of_group_ = 0;
    Strip header = GroupHeader(*table_.group, row, *table_.rows, {style_, kColumnAir}, line_, context_);
    context_.sink.SetRepeated(head);
    if (header.height <= 0) return;
    // On a page that begins in the middle of the group its header stands again below the table's.
    Strip both = *head;
    Strip copy = header;
    MoveItems(std::move(copy.items), both.height, both.items);
    both.height += header.height;
    context_.sink.Add(std::move(header));
    context_.sink.SetRepeated(std::make_shared<const Strip>(std::move(both)));
  }

  void AddRow(std::size_t row, const GroupWalk& walk, bool keep_with_next) {
    Strip strip;
    std::size_t most = 1;
    std::vector<host::Value> values;
    if (table_.group) values.emplace_back(walk.Key());
    const auto& places = columns_.Places();
    for (std::size_t at = 0; at < places.size(); ++at) {
      Cell cell = columns_.CellOf(at, row);
      if (places[at].total) {
        totals_.Add(at, cell.value, columns_.Caption(at));
        group_totals_.Add(at, cell.value, columns_.Caption(at));
      }
      const std::vector<QString> lines = LinesOf(plain_, cell.text, places[at].width, places[at].wrap);
      most = std::max(most, lines.size());
      PutLines(lines, plain_, places[at], kAir, strip);
      values.push_back(std::move(cell.value));
    }
    strip.height = static_cast<double>(most) * line_height_ + 2 * kAir;
    strip.keep_with_next = keep_with_next;
    if (table_.zebra && rows_of_group_ % 2 == 1) {
      strip.items.boxes.push_back({context_.left, 0, context_.width, strip.height, 0, true, kZebraFill, 0});
    }
    ++rows_of_group_;
    if (context_.tables != nullptr) data_.rows.push_back(std::move(values));
    context_.sink.Add(std::move(strip));
  }

  Strip TotalsStrip(const QString& caption, const Totals& totals, bool keep_with_next) const {
    Strip strip;
    strip.height = line_height_ + 2 * kAir;
    strip.keep_with_next = keep_with_next;
    const auto& places = columns_.Places();
    double first_total = context_.left + context_.width;
    for (std::size_t at = 0; at < places.size(); ++at) {
      if (!places[at].total) continue;
      first_total = std::min(first_total, places[at].x - kColumnAir);
      const std::string text = columns_.Shown(at, host::Value(totals.Sum(at)));
      PutLines(LinesOf(bold_, text, places[at].width, false), bold_, places[at], kAir, strip);
    }
    const TableColumns::Place room{places.front().x, first_total - places.front().x, TextAlign::kLeft, false, false};
    if (room.width > 0) PutLines(LinesOf(bold_, caption.toStdString(), room.width, false), bold_, room, kAir, strip);
    strip.items.lines.push_back({context_.left, 0, context_.left + context_.width, 0, kTotalLine});
    return strip;
  }

  void AddEmpty() {
    if (table_.empty.isEmpty()) return;
    Strip strip;
    const TableColumns::Place room{columns_.Places().front().x, context_.width - 2 * kColumnAir, TextAlign::kLeft,
                                   false, false};
    const std::vector<QString> lines = LinesOf(plain_, table_.empty.toStdString(), room.width, true);
    PutLines(lines, plain_, room, kAir, strip);
    strip.height = static_cast<double>(lines.size()) * line_height_ + 2 * kAir;
    context_.sink.Add(std::move(strip));
  }

  const Table& table_;
  int line_;
  FlowContext& context_;
  TableColumns columns_;
  TextStyle style_;
  std::uint32_t plain_;
  std::uint32_t bold_;
  double line_height_;
  Totals group_totals_;
  Totals totals_;
  std::size_t rows_of_group_ = 0;
  DataTable data_;
};

}  // namespace

void FlowTable(const Table& table, int line, FlowContext& context) { TableFlow(table, line, context).Run(); }

}  // namespace app::printing
