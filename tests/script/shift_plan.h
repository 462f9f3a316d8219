// What comes in a shift at the weighing station, and what must be in the books when it is over.
#pragma once

#include <string>
#include <vector>

namespace test {

struct PlannedItem {
  std::string code;
  std::string colour;
  std::string article;  // its number of 13 digits, scanned from the fabric; empty where rolls have labels made before
  int rolls = 0;
};

struct PlannedOrder {
  std::string number;
  std::vector<PlannedItem> items;
};

struct PlannedStep {
  bool reverses = false;
  std::string order;
  int number = 0;  // of the roll within the order
  std::string code;
  std::string colour;
  std::string scan;
  std::string lot;
  double gross = 0;  // on the scale
  double net = 0;
  std::vector<std::string> defects;
};

struct ShiftPlan {
  std::vector<PlannedOrder> orders;
  std::vector<PlannedStep> steps;

  /// The rolls that are there at the end, by order and number.
  std::vector<PlannedStep> Remaining() const;
  std::string AsJson() const;
};

/// So many rolls over four orders of three items each, some changing the order on the screen; two of them have defects.
/// Then three are taken back, not in the order in which they came, and one of them is weighed anew with its label.
ShiftPlan PlanShift(int rolls);

/// What the scale sends for a weight, in the formats of several makers in turn.
std::string FrameOf(int turn, double kilograms);

}  // namespace test
