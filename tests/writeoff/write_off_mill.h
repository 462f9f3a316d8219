// The small mill with weaving orders to write rolls off, for the tests of the write-off and of the yarn screen.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "support/mill.h"

namespace test {

struct OrderItem {
  std::string code = "F1";
  std::string colour = "01";
  double quantity = 100;
  std::string sales_order;
};

/// A box as the person saw it, comparable and printable.
struct Box {
  std::string title;
  std::string text;
  host::Icon icon = host::Icon::kInformation;
  bool operator==(const Box&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Box& box);

/// A box of the write-off screen that refuses (exclamation) or tells (information), and one of the yarn screen.
Box Refusal(std::string text);
Box Notice(std::string text);
Box YarnNotice(std::string text);

/// Order "000001" is there: mill M00001, deposit DF, machine MQ1. What a test prepares and nobody asks for, and what
/// is asked without having been prepared, fails the test.
class WriteOffMill : public ::testing::Test {
 protected:
  WriteOffMill();
  void TearDown() override;

  static constexpr const char* kOrder = "000001";

  void Order(std::string_view number, const std::vector<OrderItem>& items, std::string_view client = "M00001");
  void Reserve(std::string_view yarn, std::string_view deposit, std::string_view lot, double quantity,
               std::string_view order = kOrder, const host::Value& kind = "T");
  /// The order with one item of 100 kg of F1 and both yarns reserved for it: Y1 60 kg of D1/L1, Y2 40 kg of D1/L1.
  void ReservedOrder();
  /// The order with one item of F1 and nothing reserved; rolls may be written off without reservation.
  void FreeOrder();

  /// Opens the screen on an order, the tare set to 0.
  host::Screen& Load(std::string_view order = kOrder);
  host::Screen& Screen();
  host::ActResult Roll(std::string_view quantity);
  host::ActResult Confirm() { return mill_.Click(Screen(), "BtnConfirma"); }
  void Type(std::string_view edit, std::string_view text);
  std::string Text(std::string_view edit) { return mill_.Text(Screen(), edit); }
  std::string Focused();
  /// Has the person act on the yarn screen when it opens next.
  void AtYarnScreen(std::function<void(host::Screen&)> act);
  /// On the yarn screen: stands on a lot of the current yarn and takes it.
  void Take(host::Screen& yarn, std::string_view lot, std::string_view deposit);
  void TakeAll(host::Screen& yarn);

  std::vector<Box> Boxes();
  host::Value Value(std::string_view sql) { return mill_.Scalar(sql); }
  double Number(std::string_view sql) { return mill_.Scalar(sql).AsFloat(); }
  double Stock(std::string_view code, std::string_view deposit, std::string_view lot);
  /// Reserved and consumed of the order's reservation on a lot.
  double Left(std::string_view yarn, std::string_view deposit, std::string_view lot, std::string_view order = kOrder);
  double Consumed(std::string_view yarn, std::string_view deposit, std::string_view lot,
                  std::string_view order = kOrder);
  std::vector<Row> Rolls(std::string_view order = kOrder);
  std::vector<Row> Consumption(std::string_view order = kOrder);
  std::vector<std::string> Log();
  void ExpectBooksBalance();

  Mill mill_;
};

}  // namespace test
