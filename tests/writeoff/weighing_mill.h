// The write-off at a weighing station: scanner, scale, label printer.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "write_off_mill.h"

namespace test {

using Calls = std::vector<std::string>;

class WeighingMill : public WriteOffMill {
 protected:
  FakeScale& Scale() { return mill_.Equipment().Scale(); }
  /// Of the user who sits there; a screen takes the protocol when it opens.
  void Protocol(int protocol, int decimals = 0) {
    host::UserSettings& settings = mill_.App().GetUserSettings();
    settings.Write("Venda", "Parametros", "ProtocoloBal", std::to_string(protocol));
    settings.Write("Venda", "Parametros", "Decimal", std::to_string(decimals));
  }
  /// The reserved order stands on the screen, bar codes are read, the cursor waits for one.
  void Ready() {
    ReservedOrder();
    Load();
    TickBarCode();
    Enter("EdtBarra");
    mill_.TakeStatements();
    Scale().TakeCalls();
  }
  void TickBarCode(bool ticked = true) {
    ASSERT_EQ(mill_.Desk().Check(dynamic_cast<host::CheckBox&>(*Screen().FindComponent("CbBarra")), ticked),
              host::ActResult::kDone);
  }
  void Enter(const char* control) {
    ASSERT_EQ(mill_.Desk().Enter(dynamic_cast<host::Control&>(*Screen().FindComponent(control))),
              host::ActResult::kDone);
  }
  host::ActResult Press(host::Key key) { return mill_.Desk().PressKey(Screen(), key); }
  host::ActResult F5() { return Press(host::Key::kF5); }
  /// The scanner: types into the input that has the cursor, and Enter.
  host::ActResult Scan(std::string_view code) {
    EXPECT_EQ(mill_.Desk().TypeInto(dynamic_cast<host::Edit&>(*mill_.Desk().Focused()), code), host::ActResult::kDone);
    return Press(host::Key::kEnter);
  }
  /// No quantity, no roll, nothing logged, the port closed.
  void ExpectNothingTaken() {
    EXPECT_EQ(Text("EdtQtde"), "");
    EXPECT_TRUE(Rolls().empty());
    EXPECT_FALSE(Scale().Connected());
    EXPECT_EQ(Log(), std::vector<std::string>());
  }
  /// Typed and not left.
  void TypeQuantity(const char* text) {
    Enter("EdtQtde");
    ASSERT_EQ(mill_.Desk().TypeInto(dynamic_cast<host::Edit&>(*mill_.Desk().Focused()), text), host::ActResult::kDone);
  }
  /// Quantities of the order's rolls, in the order they were written.
  std::vector<double> Weights() {
    std::vector<double> weights;
    for (const Row& roll : Rolls()) weights.push_back(roll.at("QTDE").AsFloat());
    return weights;
  }
};

}  // namespace test
