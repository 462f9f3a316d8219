// The small mill with orders and rolls as the write-off leaves them, written row by row, and ways to damage them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "app/books/check.h"
#include "support/mill.h"

namespace test {

struct YarnTaken {
  std::string yarn;
  std::string lot;
  double quantity = 0;
  double crumb = 0;  // what the last of a reservation takes along
};

struct WovenRoll {
  std::string order = "000001";
  int number = 1;
  std::string fabric = "F1";
  std::string colour = "01";
  double quantity = 20;  // as recorded, in kilograms
  double stocked = 0;    // in the fabric's unit; the same when 0
  std::string lot = {};  // order and number when empty
  std::vector<YarnTaken> yarns = {{"Y1", "L1", 12}, {"Y2", "L1", 8}};
};

class BooksTest : public ::testing::Test {
 protected:
  void SetUp() override;

  /// An order with one item and 500 kg of each yarn reserved.
  void Order(std::string_view number, std::string_view fabric = "F1", std::string_view colour = "01");
  void Roll(const WovenRoll& roll);
  void Move(std::string_view order, std::string_view material, std::string_view colour, std::string_view deposit,
            std::string_view lot, double quantity, bool out, std::string_view kind = "BT");
  std::vector<std::string> Check() { return app::books::CheckBooks(mill_.Db()); }

  Mill mill_;
};

}  // namespace test
