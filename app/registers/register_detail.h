// The rows that belong to a record, as a small grid with one line for each: the hours of a shift per weekday.
#pragma once

#include <vector>

#include "app/registers/register_store.h"
#include "host/kit/dataset.h"
#include "host/kit/grid.h"
#include "host/kit/screen.h"

namespace app::registers {

class RegisterDetail {
 public:
  /// All outlive the object; the store's description has a detail.
  RegisterDetail(host::Screen& screen, const RegisterStore& store, const tables::DetailDescription& description);

  host::Grid& Grid() { return grid_; }
  /// Shows the rows of Record::detail; none at all for a new record.
  void Show(const std::vector<std::vector<host::Value>>& rows);
  bool Changed() const;
  /// The rows to store. A line half filled in is refused with a message, and the grid gets the focus.
  std::vector<std::vector<host::Value>> Read();

 private:
  using Rows = std::vector<std::vector<std::string>>;
  void CheckCell(host::Field& field, std::size_t column) const;
  void BeforePost();
  void BeforeDelete();
  void Fill(const Rows& rows);
  Rows Texts() const;

  host::Screen& screen_;
  const RegisterStore& store_;
  const tables::DetailDescription& description_;
  std::vector<std::vector<host::Value>> stored_;
  Rows shown_;
  bool filling_ = false;

  host::Dataset detail_;
  host::Grid grid_;
};

}  // namespace app::registers
