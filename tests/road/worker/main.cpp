// A station in a process of its own, for the tests that need two at once or one that dies.
//
//   road_worker rolls DATABASE ORDER DEPOSIT COUNT QUANTITY    writes COUNT rolls on an order
//   road_worker orders DATABASE COUNT                          saves COUNT new orders, prints their numbers
//   road_worker reverse DATABASE ORDER DEPOSIT COUNT SEED      takes COUNT rolls of an order back, or as many as there
//                                                              are, in any order; prints how many it took back
//   road_worker undo DATABASE ORDER DEPOSIT COUNT              writes a roll and takes it back, COUNT times
//   road_worker die ACTION DATABASE ORDER DEPOSIT N            is killed before statement N of ACTION
//                                                              (roll, order, composition, reversal, defects)
//
// Exit code 0 when all of it was done, 3 when a box was shown that says otherwise; the boxes go to standard error.
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <random>
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

// Stands on a roll of the list, counted from the newest, and takes it back.
host::ActResult ReverseAt(test::Mill& mill, host::Screen& screen, std::size_t row) {
  mill.Desk().SelectRow(mill.GridOf(screen, "TbRolos"), row);
  mill.Person().Answer("Deseja estornar", "yes");
  return mill.Click(screen, "BtnExtorna");
}

// The list is as old as the last roll taken back here: the other station's work is met in it.
int Reverse(test::Mill& mill, const std::vector<std::string>& arguments) {
  host::Screen& screen = test::OpenWriteOff(mill, arguments.at(2), arguments.at(3));
  const int count = std::atoi(arguments.at(4).c_str());
  std::minstd_rand random(static_cast<unsigned>(std::atoi(arguments.at(5).c_str())));
  int reversed = 0;
  while (reversed < count) {
    const std::size_t rolls = mill.Data(screen, "TbRolos").RecordCount();
    if (rolls == 0) break;
    const bool done = ReverseAt(mill, screen, 1 + random() % rolls) == host::ActResult::kDone;
    if (done) ++reversed;
    for (const auto& text : mill.Messages()) {
      const bool faster = !done && text.find("já foi estornada por outro usuário") != std::string::npos;
      if (faster || text == "Deseja estornar este Movimento?") continue;
      std::cerr << text << '\n';
      return 3;
    }
  }
  std::cout << reversed << '\n';
  return 0;
}

int Undo(test::Mill& mill, const std::vector<std::string>& arguments) {
  host::Screen& screen = test::OpenWriteOff(mill, arguments.at(2), arguments.at(3));
  const int count = std::atoi(arguments.at(4).c_str());
  for (int roll = 0; roll < count; ++roll) {
    test::ConfirmRoll(mill, screen, 0.5 + (roll % 2) * 0.001);
    if (Told(mill) != 0) return 3;
    const host::ActResult reversed = ReverseAt(mill, screen, 1);
    const auto boxes = mill.Messages();
    if (reversed == host::ActResult::kDone && boxes.size() == 1) continue;
    for (const auto& text : boxes) std::cerr << text << '\n';
    return 3;
  }
  return 0;
}

// While one lives, the process is killed before the statement of that number.
class Death {
 public:
  Death(test::Mill& mill, int left) : mill_(mill), heard_(mill.Db().BeforeStatement), left_(left) {
    mill.Db().BeforeStatement = [this](std::string_view sql) {
      if (--left_ == 0) kill(getpid(), SIGKILL);
      if (heard_) heard_(sql);
    };
  }
  ~Death() { mill_.Db().BeforeStatement = heard_; }
  Death(const Death&) = delete;
  Death& operator=(const Death&) = delete;

 private:
  test::Mill& mill_;
  std::function<void(std::string_view)> heard_;
  int left_;
};

// Registers two defects of the newest roll; the save is the action.
host::ActResult SaveDefects(test::Mill& mill, host::Screen& screen, int left) {
  host::ActResult saved = host::ActResult::kRefused;
  mill.Person().OnModal("TfmCadDefTec", [&](host::Screen& defects, host::Desk&) {
    mill.Append(defects, "TbDef", {{"Defeito", "FURO"}, {"Peso", "1,5"}});
    mill.Append(defects, "TbDef", {{"Defeito", "FURO"}, {"Peso", "2"}, {"Data", "08/03/2026"}});
    const Death death(mill, left);
    saved = mill.Click(defects, "BitBtn1");
  });
  mill.Click(screen, "BtnDefeitos");
  return saved;
}

// Brings the screen to the point where one click does the action, and hands back that click.
std::function<host::ActResult()> Prepare(test::Mill& mill, const std::string& action, const std::string& order,
                                         const std::string& deposit) {
  if (action == "roll") {
    host::Screen& screen = test::OpenWriteOff(mill, order, deposit);
    test::TypeRoll(mill, screen, 21.5);
    return [&mill, &screen] { return mill.Click(screen, "BtnConfirma"); };
  }
  if (action == "reversal") {
    host::Screen& screen = test::OpenWriteOff(mill, order, deposit);
    mill.Person().Answer("Deseja estornar", "yes");
    return [&mill, &screen] { return mill.Click(screen, "BtnExtorna"); };
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
  const std::string& action = arguments.at(1);
  const int left = std::atoi(arguments.at(5).c_str());
  host::ActResult result = host::ActResult::kRefused;
  if (action == "defects") {
    result = SaveDefects(mill, test::OpenWriteOff(mill, arguments.at(3), arguments.at(4)), left);
  } else {
    const auto click = Prepare(mill, action, arguments.at(3), arguments.at(4));
    mill.Messages();
    const Death death(mill, left);
    result = click();
  }
  auto boxes = mill.Messages();
  std::erase(boxes, "Deseja estornar este Movimento?");
  for (const auto& text : boxes) std::cerr << text << '\n';
  return result == host::ActResult::kDone && boxes.empty() ? 0 : 3;
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
    if (job == "reverse") return Reverse(mill, arguments);
    if (job == "undo") return Undo(mill, arguments);
    return Die(mill, arguments);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 3;
  }
}
