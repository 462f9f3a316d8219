// A mill with a few fabrics, yarns and colours, and the composition screen open on it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "composition/cad_composi.h"
#include "support/mill.h"

namespace test {

/// One row to put into COMP_MATERIAL without the screen.
struct StoredRow {
  std::string yarn;
  int position = 1;
  std::string colour = "01";
  std::string yarn_colour = "CRU";
  double lfa = 250;
  double roca = 4;
  double percentage = 100;
};

class CompositionTest : public ::testing::Test {
 protected:
  /// Fabrics M1 (colours 01, 02), M2 (colour 01), M0 (no colours); yarns F1 (count 30), F2 (count 20), F0 (count 0);
  /// F1 belongs to client 00001, M1 and F2 to client 00002. Yarn colours CRU and BCO of F1, CRU of F2.
  void SetUp() override;

  composition::TFmCadComposi& Screen() { return *screen_; }
  host::Dataset& Rows() { return screen_->TbComposi; }

  void Store(std::string_view fabric, const StoredRow& row);
  /// Types the fabric's code and leaves the input.
  host::ActResult Load(std::string_view fabric);
  host::ActResult Save() { return mill_.Click(*screen_, "btnGravar"); }
  host::ActResult AppendYarn(const std::vector<std::pair<std::string, std::string>>& cells) {
    return mill_.Append(*screen_, "TbComposi", cells);
  }
  /// Types into a cell of the current row and leaves it with Tab.
  host::ActResult TypeCell(std::string_view field, std::string_view text);
  /// A cell as the grid shows it.
  std::string Cell(std::size_t row, std::string_view field);
  /// COMP_MATERIAL of a fabric, one line per row: yarn, position, colour, yarn colour, percentage.
  std::vector<std::string> Composition(std::string_view fabric);
  std::vector<std::string> Log();
  std::string Error();

  Mill mill_;
  composition::TFmCadComposi* screen_ = nullptr;
};

}  // namespace test
