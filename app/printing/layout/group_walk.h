// Rows in groups: neighbours with the same key are one group.
#pragma once

#include <cstddef>
#include <string>

#include "app/printing/layout/blocks.h"
#include "app/printing/layout/flow.h"
#include "app/printing/layout/row_source.h"

namespace app::printing {

/// Walks over rows and tells where groups begin and end, one row ahead.
class GroupWalk {
 public:
  GroupWalk(const std::optional<Grouping>& grouping, RowSource& rows, LayoutEngine& engine, int line);

  /// Goes on to a row; rows are walked over in order, from 0. Throws what the key's function throws.
  void GoTo(std::size_t row);
  bool Begins() const { return begins_; }
  bool Ends() const { return ends_; }
  const std::string& Key() const { return key_; }

 private:
  std::string KeyOf(std::size_t row);

  const std::optional<Grouping>& grouping_;
  RowSource& rows_;
  LayoutEngine& engine_;
  int line_;
  RowSource::FieldRef field_;
  std::string key_;
  std::string next_key_;
  bool begins_ = false;
  bool ends_ = false;
};

/// How a group's header is set when it is a text.
struct GroupType {
  const TextStyle& style;  // made bold
  double indent = 0;       // millimetres from the body's left edge
};

/// The strip that begins a group, kept with what follows; without height when the grouping has no header.
Strip GroupHeader(const Grouping& grouping, std::size_t row, RowSource& rows, const GroupType& type, int line,
                  FlowContext& context);

}  // namespace app::printing
