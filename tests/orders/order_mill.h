// The order screen on the small mill, and a person working on it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orders/cad_lote_tec.h"
#include "support/mill.h"

namespace test {

using Lines = std::vector<std::string>;
using Cells = std::vector<std::pair<std::string, std::string>>;
using host::ActResult;

class OrderTest : public ::testing::Test {
 protected:
  void SetUp() override;

  orders::TfmCadLoteTec& Screen() { return *screen_; }
  Mill& TheMill() { return mill_; }

  // --- acting ---------------------------------------------------------------------------------------------------
  ActResult Type(std::string_view input, std::string_view text) { return mill_.Type(*screen_, input, text); }
  ActResult Click(std::string_view button) { return mill_.Click(*screen_, button); }
  ActResult AddItem(std::string_view code, std::string_view colour, std::string_view quantity);
  /// Stands on the first row of the grid whose columns hold these texts.
  void Stand(std::string_view dataset, const Cells& values);
  /// Incluir and the mill M00001; the new number.
  std::string NewOrder();
  /// A new order of M00001 with these items (code, colour, quantity), saved; its number.
  std::string SavedOrder(const std::vector<std::vector<std::string>>& items);
  void Load(std::string_view number);
  /// A roll of the order as the write-off leaves it behind.
  void Roll(std::string_view order, std::string_view code, std::string_view colour, int sequence, double quantity);

  // --- looking --------------------------------------------------------------------------------------------------
  std::string Text(std::string_view input_or_label) { return mill_.Text(*screen_, input_or_label); }
  std::string FocusedName();
  /// The fields of each visible row, joined by " | ".
  Lines Shown(std::string_view dataset, const Lines& fields);
  /// The columns of each row that the statement finds, joined by " | ".
  Lines Stored(std::string_view sql, const Lines& columns);
  Lines Items(std::string_view order);
  Lines Reservations(std::string_view order);
  Lines Log();
  Lines Errors() { return mill_.Person().TakeErrors(); }
  /// Every row of the tables that a save or delete touches, in a comparable form.
  Lines Everything();

  Mill mill_;
  orders::TfmCadLoteTec* screen_ = nullptr;
};

}  // namespace test
