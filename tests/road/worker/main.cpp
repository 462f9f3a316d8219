// A station in a process of its own, for the tests that need two at once or one that dies.
//
//   road_worker rolls DATABASE ORDER DEPOSIT COUNT QUANTITY    writes COUNT rolls on an order
//   road_worker orders DATABASE COUNT                          saves COUNT new orders, prints their numbers
//   road_worker die ACTION DATABASE ORDER DEPOSIT N            is killed before statement N of ACTION
//                                                              (roll, order, composition)
//
// Exit code 0 when all of it was done, 3 when a box was shown that says otherwise; the boxes go to standard error.
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "support/mill.h"
#include "support/road.h"

namespace {

constexpr const char* kMoment = "2026-03-10 10:00:00";

test::OrderPlan Plan(double quantity) { return {"M00001", "DF", "F1", "01", quantity, {}}; }

int Told(test::Mill& mill) {
  const auto boxes = mill.Messages();
  for (const auto& text : boxes) std::cerr << text << '\n';
  return boxes.empty() ? 0 : 3;
}

int Rolls(test::Mill& mill, const std::vector<std::string>& arguments) {
  host::Screen& screen = test::OpenWriteOff(mill, arguments.at(2), arguments.at(3));
  const int count = std::atoi(arguments.at(4).c_str());
  const double quantity = std::atof(arguments.at(5).c_str());
  for (int roll = 0; roll < count; ++roll) {
    // Alternating weights: the same weight twice in a row is taken for one weighing confirmed twice.
    test::ConfirmRoll(mill, screen, quantity + (roll % 2) * 0.001);
    if (Told(mill) != 0) return 3;
  }
  return 0;
}

int Orders(test::Mill& mill, const std::vector<std::string>& arguments) {
  const int count = std::atoi(arguments.at(2).c_str());
  for (int order = 0; order < count; ++order) std::cout << test::SaveBareOrder(mill, Plan(100)) << '\n';
  return Told(mill);
}

// Brings the screen to the point where one click does the action, and hands back that click.
std::function<host::ActResult()> Prepare(test::Mill& mill, const std::string& action, const std::string& order,
                                         const std::string& deposit) {
  if (action == "roll") {
    host::Screen& screen = test::OpenWriteOff(mill, order, deposit);
    test::TypeRoll(mill, screen, 21.5);
    return [&mill, &screen] { return mill.Click(screen, "BtnConfirma"); };
  }
  if (action == "order") {
    host::Screen& screen = mill.Open("TfmCadLoteTec");
    mill.Type(screen, "EdtNumero", order);
    mill.Set(screen, "TbItens", {{"Qtde", "321"}});
    mill.Type(screen, "EdtFicha", "F-77");
    return [&mill, &screen] { return mill.Click(screen, "BtnGravar"); };
  }
  host::Screen& screen = mill.Open("TFmCadComposi");
  mill.Type(screen, "EdtCodMat", "F1");
  mill.Type(screen, "EdtLargura", "1,77");
  return [&mill, &screen] { return mill.Click(screen, "btnGravar"); };
}

int Die(test::Mill& mill, const std::vector<std::string>& arguments) {
  const auto click = Prepare(mill, arguments.at(1), arguments.at(3), arguments.at(4));
  mill.Messages();
  int left = std::atoi(arguments.at(5).c_str());
  auto listener = mill.Db().BeforeStatement;
  mill.Db().BeforeStatement = [&left, listener](std::string_view sql) {
    if (--left == 0) kill(getpid(), SIGKILL);
    if (listener) listener(sql);
  };
  const host::ActResult result = click();
  mill.Db().BeforeStatement = listener;
  const int told = Told(mill);
  return result == host::ActResult::kDone ? told : 3;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  try {
    const std::string& job = arguments.at(0);
    test::Mill::Options options;
    options.database = job == "die" ? arguments.at(2) : arguments.at(1);
    test::Mill mill(options);
    mill.SetClock(kMoment);
    if (job == "rolls") return Rolls(mill, arguments);
    if (job == "orders") return Orders(mill, arguments);
    return Die(mill, arguments);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 3;
  }
}
