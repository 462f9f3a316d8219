#include "shift_plan.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

#include "host/decimal.h"
#include "host/text.h"

namespace test {
namespace {

constexpr double kTareOfF1 = 0.3;
constexpr int kBeforeTheNextOrder = 10;  // rolls, then those of another order come
constexpr int kOrders = 4;

std::string Padded(int number, std::size_t width) {
  std::string text = std::to_string(number);
  return text.insert(0, width - std::min(width, text.size()), '0');
}

// Codes for packages begin with a digit that says how much is in one; 9 says that it is to be weighed.
std::string ScanOf(const std::string& article) { return "9" + article.substr(0, 12) + "7"; }

class Planner {
 public:
  explicit Planner(int rolls) {
    for (int at = 0; at < kOrders; ++at) {
      const int each = rolls / kOrders + (at < rolls % kOrders ? 1 : 0);
      const int labelled = each / 3;
      plan_.orders.push_back({Padded(at + 1, 6),
                              {{"F1", "01", "7891234567895", each - 2 * labelled},
                               {"F1", "02", {}, labelled},
                               {"F3", "01", {}, labelled}}});
      coming_.push_back({labelled, labelled});
      left_.push_back(each);
    }
    for (int order = 0; static_cast<int>(plan_.steps.size()) < rolls; order = (order + 1) % kOrders) WorkOn(order);
  }

  void AddDefects() {
    plan_.steps[plan_.steps.size() / 3].defects = {"FURO", "MANCHA"};
    plan_.steps[plan_.steps.size() / 2].defects = {"MANCHA"};
  }

  void TakeBack() {
    const std::size_t all = plan_.steps.size();
    // One in the middle, one of the first, the newest; the first of them with its label once more.
    std::size_t labelled = all / 2 + 1;
    while (plan_.steps[labelled].lot.size() != 9) ++labelled;
    PlannedStep again = plan_.steps[labelled];
    for (const std::size_t at : {labelled, std::size_t{1}, all - 1}) {
      PlannedStep reversal = plan_.steps[at];
      reversal.reverses = true;
      plan_.steps.push_back(reversal);
    }
    again.number = NextNumber(again.order);
    Weigh(again, 31.4);
    plan_.steps.push_back(again);
  }

  ShiftPlan Take() { return plan_; }

 private:
  void WorkOn(int order) {
    const auto at = static_cast<std::size_t>(order);
    for (int roll = 0; roll < kBeforeTheNextOrder && left_[at] > 0; ++roll, --left_[at]) AddRoll(at);
  }

  // The items take turns until the labels of one are used up.
  void AddRoll(std::size_t order) {
    const PlannedOrder& from = plan_.orders[order];
    PlannedStep roll;
    roll.order = from.number;
    roll.number = NextNumber(from.number);
    std::size_t item = plan_.steps.size() % 3;
    if (item > 0 && coming_[order][item - 1] == 0) item = 0;
    roll.code = from.items[item].code;
    roll.colour = from.items[item].colour;
    if (item == 0) {
      roll.scan = ScanOf(from.items[0].article);
      roll.lot = from.items[0].article;
    } else {
      // The labels of the second item were made before those of the third.
      const int made = item == 1 ? 0 : from.items[1].rolls;
      roll.lot = roll.scan = from.number + Padded(made + from.items[item].rolls - --coming_[order][item - 1], 3);
    }
    Weigh(roll, 18 + static_cast<double>(plan_.steps.size() * 37 % 101) * 0.05);
    plan_.steps.push_back(roll);
  }

  static void Weigh(PlannedStep& roll, double gross) {
    roll.gross = host::RoundTo(gross, 3);
    roll.net = roll.code == "F1" ? host::RoundTo(roll.gross - kTareOfF1, 3) : roll.gross;
  }

  // One more than the highest of the order that is there.
  int NextNumber(const std::string& order) const {
    int highest = 0;
    for (const PlannedStep& roll : plan_.Remaining()) {
      if (roll.order == order) highest = std::max(highest, roll.number);
    }
    return highest + 1;
  }

  ShiftPlan plan_;
  std::vector<std::array<int, 2>> coming_;  // labels of an order's items that are not used yet
  std::vector<int> left_;                   // rolls of an order to come
};

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

template <typename List, typename Write>
std::string JsonList(const List& list, const Write& write) {
  std::string text;
  for (const auto& one : list) text += (text.empty() ? "" : ",") + write(one);
  return '[' + text + ']';
}

std::string JsonOrder(const PlannedOrder& order) {
  const std::string items = JsonList(order.items, [](const PlannedItem& item) {
    return R"({"code":)" + Quoted(item.code) + R"(,"colour":)" + Quoted(item.colour) + R"(,"quantity":)" +
           std::to_string(item.rolls * 25) + R"(,"labels":)" + std::to_string(item.article.empty() ? item.rolls : 0) +
           '}';
  });
  return R"({"number":)" + Quoted(order.number) + R"(,"lots":["T1","T2"],"items":)" + items + '}';
}

std::string JsonStep(const PlannedStep& step) {
  return R"({"reverses":)" + std::string(step.reverses ? "true" : "false") + R"(,"order":)" + Quoted(step.order) +
         R"(,"number":)" + std::to_string(step.number) + R"(,"code":)" + Quoted(step.code) + R"(,"colour":)" +
         Quoted(step.colour) + R"(,"scan":)" + Quoted(step.scan) + R"(,"lot":)" + Quoted(step.lot) + R"(,"net":)" +
         host::PointText(step.net) + R"(,"defects":)" + JsonList(step.defects, Quoted) + '}';
}

}  // namespace

std::vector<PlannedStep> ShiftPlan::Remaining() const {
  std::vector<PlannedStep> rolls;
  for (const PlannedStep& step : steps) {
    if (!step.reverses) {
      rolls.push_back(step);
      continue;
    }
    std::erase_if(rolls,
                  [&](const PlannedStep& roll) { return roll.order == step.order && roll.number == step.number; });
  }
  std::sort(rolls.begin(), rolls.end(), [](const PlannedStep& a, const PlannedStep& b) {
    return a.order != b.order ? a.order < b.order : a.number < b.number;
  });
  return rolls;
}

std::string ShiftPlan::AsJson() const {
  return R"({"orders":)" + JsonList(orders, JsonOrder) + R"(,"steps":)" + JsonList(steps, JsonStep) + '}';
}

ShiftPlan PlanShift(int rolls) {
  Planner planner(rolls);
  planner.AddDefects();
  planner.TakeBack();
  return planner.Take();
}

std::string FrameOf(int turn, double kilograms) {
  const std::string point = host::FormatNumber("0000.000", kilograms, '.');
  switch (turn % 4) {
    case 0:
      return point + '\r';
    case 1:
      return "\x02" + point + "\x03\r";
    case 2:
      return "ST,GS,+" + point + "kg\r\n";
    default:
      return "S S " + host::FormatNumber("0.000", kilograms, '.') + " kg\r\n";
  }
}

}  // namespace test
