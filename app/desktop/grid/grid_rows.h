// Which rows a list shows and in which order: its own sorting and filter line over the order of the dataset.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/value.h"

namespace app::desktop {

/// The rows of a dataset as a list reads them. Rows by 1-based position, columns from 0.
class RowSource {
 public:
  virtual ~RowSource() = default;
  /// A row being inserted is the last and counts.
  virtual std::size_t Count() const = 0;
  virtual bool Inserting() const = 0;
  /// The row being edited or inserted; 0 when none is.
  virtual std::size_t Edited() const = 0;
  /// Identity of a row, stable while it lives; 0 for one being inserted.
  virtual std::size_t Id(std::size_t rec_no) const = 0;
  virtual std::size_t Columns() const = 0;
  virtual const host::Value& At(std::size_t rec_no, std::size_t column) const = 0;
  /// As shown.
  virtual std::string Text(std::size_t rec_no, std::size_t column) const = 0;
  /// Grows with every change of the rows.
  virtual std::size_t Changes() const = 0;
};

struct RowOrder {
  int column = -1;  // that it is sorted by; -1 for the dataset's order
  bool descending = false;
  std::string filter = {};  // words, all of which a row must contain

  bool operator==(const RowOrder&) const = default;
};

/// Row of the list (from 0) to position in the dataset (from 1) and back.
class GridRows {
 public:
  /// Numbers sort by value, dates by date, text without regard to case and accents, nothing first; equals keep the
  /// dataset's order. A row being inserted stays last and one being edited stays where it is, shown whether or not
  /// the filter would let it through.
  void Arrange(const RowSource& source, const RowOrder& order);

  std::size_t Count() const { return count_; }
  /// The list has an order or a choice of rows of its own.
  bool Mapped() const { return mapped_; }
  std::size_t RecNo(std::size_t row) const { return mapped_ ? rec_nos_.at(row) : row + 1; }
  /// Nothing for a row that is not shown.
  std::optional<std::size_t> RowOf(std::size_t rec_no) const;

 private:
  bool KeepsOrder(const RowSource& source, const RowOrder& order) const;
  void Choose(const RowSource& source, const RowOrder& order);
  void Sort(const RowSource& source, const RowOrder& order);
  const std::vector<std::string>& Texts(const RowSource& source);

  bool mapped_ = false;
  std::size_t count_ = 0;
  RowOrder order_;
  std::vector<std::size_t> rec_nos_;
  std::vector<std::size_t> rows_;   // by position - 1, row + 1; 0 for one that is not shown
  std::vector<std::size_t> ids_;    // of the dataset's rows when they were arranged
  std::vector<std::string> texts_;  // of the rows, folded, for the filter
  std::size_t texts_of_ = 0;        // the changes that they were read at
  std::size_t texts_columns_ = 0;
};

}  // namespace app::desktop
