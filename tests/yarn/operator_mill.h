// The yarn screen in the operator's hands: the fixture of its tests.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "writeoff/write_off_mill.h"

namespace test {

class Operator : public WriteOffMill {
 protected:
  // Confirms a roll of 10 kg (Y1 6, Y2 4) and acts on the yarn screen.
  host::ActResult RollOfTen(std::function<void(host::Screen&)> act) {
    AtYarnScreen(std::move(act));
    return Roll("10");
  }
  host::Dataset& Wanted(host::Screen& yarn) { return mill_.Data(yarn, "TbBaixa"); }
  host::Dataset& Lots(host::Screen& yarn) { return mill_.Data(yarn, "TbEst"); }
  bool CanTake(host::Screen& yarn) { return dynamic_cast<host::Button&>(*yarn.FindComponent("BitBtn1")).Enabled(); }
  host::CheckBox& ForAll(host::Screen& yarn) { return dynamic_cast<host::CheckBox&>(*yarn.FindComponent("CbTodos")); }
  host::Dataset& Remembered() { return mill_.Data(Screen(), "TbBaixas"); }
  std::vector<std::string> Offered(host::Screen& yarn) {
    std::vector<std::string> lots;
    for (std::size_t row = 1; row <= Lots(yarn).RecordCount(); ++row) {
      lots.push_back(Lots(yarn).ValueAt(row, 0).AsText() + " " + Lots(yarn).ValueAt(row, 3).AsText() + " " +
                     Lots(yarn).ValueAt(row, 4).AsText());
    }
    return lots;
  }
  host::ActResult TypeWanted(host::Screen& yarn, std::string_view quantity) {
    return mill_.Set(yarn, "TbBaixa", {{"Qtde", std::string(quantity)}});
  }
  host::ActResult Enter(host::Screen& yarn) { return mill_.Desk().Enter(mill_.GridOf(yarn, "TbEst")); }
};

}  // namespace test
