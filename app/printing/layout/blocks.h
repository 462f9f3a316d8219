// What a layout asks for, before anything has its place.
#pragma once

#include <QJSValue>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "app/printing/page/items.h"

namespace app::printing {

class RowSource;

// --- blocks: what flows down the pages -------------------------------------------------------------------------------

struct Block;
using BlockPtr = std::shared_ptr<const Block>;

struct Band {
  std::vector<Item> items;
  std::optional<double> height;  // as high as its items without one
  bool keep_with_next = false;
};

/// A heading or a paragraph.
struct Paragraph {
  QString text;
  StyleDraft style;
  TextAlign align = TextAlign::kLeft;
  double space_before = 0;
  double space_after = 0;
  bool keep_with_next = false;
};

/// Captions with their values.
struct Fields {
  std::vector<std::pair<QString, QString>> pairs;
  int columns = 2;
  std::optional<double> caption_width;  // as wide as the widest caption without one
  StyleDraft style;
};

struct Space {
  double height = 0;
};

struct Rule {
  double width = 0.2;
};

struct NewPage {};

struct KeepTogether {
  std::vector<BlockPtr> blocks;
};

/// What rows are broken into groups by: neighbours with the same key are one group.
struct Grouping {
  std::string field;                      // empty: `key` tells
  QJSValue key;                           // row => key
  QJSValue header;                        // row => text or items; undefined for none
  std::optional<QString> totals_caption;  // totals below each group
};

struct Column {
  QString caption;
  std::string field;            // empty: `value` tells
  QJSValue value;               // row => any
  std::optional<double> width;  // millimetres; without one `share` of what the others leave
  double share = 1;
  std::optional<TextAlign> align;
  std::string format;
  bool wrap = false;
  bool total = false;
};

struct Table {
  std::string title;  // of its data
  std::shared_ptr<RowSource> rows;
  std::vector<Column> columns;
  std::optional<Grouping> group;
  std::optional<QString> totals_caption;
  QString empty;
  bool zebra = false;
  StyleDraft style;
};

/// Rows that are drawn as blocks of their own.
struct Detail {
  std::shared_ptr<RowSource> rows;
  QJSValue band;  // row => block or blocks
  std::optional<Grouping> group;
};

struct Block {
  std::variant<Band, Paragraph, Fields, Space, Rule, NewPage, KeepTogether, Table, Detail> content;
  int line = 0;  // of the layout file, where the block was made; 0 when unknown
};

// --- roots -----------------------------------------------------------------------------------------------------------

struct ReportRoot {
  std::string title;
  double width = 210;
  double height = 297;
  double left = 10;
  double top = 10;
  double right = 10;
  double bottom = 10;
  TextStyle style;
  QJSValue header;  // p => blocks; undefined for none
  QJSValue footer;  // p => blocks; undefined for the usual one
  bool has_footer = true;
  std::vector<BlockPtr> body;
};

struct LabelRoot {
  std::string title;
  double width = 100;
  double height = 60;
  int dpi = 203;
  TextStyle style;
  std::shared_ptr<RowSource> rows;  // null for one label without a row
  QJSValue draw;                    // (row, index) => items
};

struct TextRoot {
  std::string title;
  std::string encoding;
  std::shared_ptr<RowSource> rows;  // null for one text without a row
  QJSValue write;                   // (row, index) => text
};

struct Root {
  std::variant<ReportRoot, LabelRoot, TextRoot> content;
  int line = 0;
};

}  // namespace app::printing
