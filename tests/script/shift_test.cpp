// A shift at the weighing station by script, end to end: code and scale in, rows, books and labels out.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/books/check.h"
#include "app/printing/delivery/delivery.h"
#include "app/printing/layout/make_printout.h"
#include "app/printing/page/printout.h"
#include "app/script/driver.h"
#include "host/decimal.h"
#include "host/raw_bytes.h"
#include "shift_plan.h"
#include "support/mill.h"
#include "support/road.h"
#include "support/zpl_label.h"

namespace test {
namespace {

namespace fs = std::filesystem;

constexpr int kRollsOfShift = 500;
constexpr int kRollsOfSuite = 60;

std::string FileText(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string Kilograms(double weight) { return host::FormatNumber("0.000", weight, ','); }

// The prepared scale, and real labels on a strip of paper that never ends.
class StationEquipment : public app::Equipment {
 public:
  explicit StationEquipment(std::string paper) : paper_(std::move(paper)) { std::ofstream{paper_}; }
  ~StationEquipment() override { fs::remove(paper_); }
  StationEquipment(const StationEquipment&) = delete;
  StationEquipment& operator=(const StationEquipment&) = delete;

  std::unique_ptr<host::SerialPort> NewSerialPort(app::PortUse use) override { return scale_.NewPort(std::move(use)); }
  std::optional<app::PrintJob> Print(const app::PrintRequest& request) override {
    const auto printout = app::printing::MakePrintout(request);
    return app::printing::Deliver(printout, {{app::printing::Destination::Kind::kDevice, paper_}, 1});
  }
  FakeScale& Scale() { return scale_; }
  std::vector<ZplLabel> Labels() const { return ReadZplLabels(FileText(paper_)); }

 private:
  std::string paper_;
  FakeScale scale_;
};

class Shift : public ::testing::Test {
 protected:
  Shift() {
    FillSmallMill(mill_);
    mill_.SetParameter("MAL", 40, "4");  // rolls lie in the lot that was scanned
    mill_.SetParameter("MAL", 50, "S");
    mill_.SetParameter("SIS", 20, "S");
    mill_.SetClock("2026-03-10 10:00:00");
    mill_.Exec("UPDATE {MAT_ITEN} SET BARRA = '7891234567895' WHERE CODIGO = 'F1' AND COR = '01'");
    for (const auto& [code, text] : {std::pair{"FURO", "Furo"}, {"MANCHA", "Mancha de óleo"}}) {
      mill_.Insert("DEFEITO", {{"CODIGO", code}, {"DESCRICAO", text}});
    }
    for (const char* yarn : {"Y1", "Y2"}) {
      for (const char* lot : {"T1", "T2"}) ReceiveYarn(mill_, yarn, lot, kYarn);
    }
  }

  static constexpr double kYarn = 20000;

  static Mill::Options With(app::Equipment& equipment) {
    Mill::Options options;
    options.equipment = &equipment;
    return options;
  }

  void Work(const ShiftPlan& plan) {
    for (const PlannedStep& step : plan.steps) {
      if (step.reverses) continue;
      frames_.push_back(FrameOf(static_cast<int>(frames_.size()), step.gross));
      // As a line brings it: in two pieces, within the half second that the station waits.
      const std::size_t half = frames_.back().size() / 2;
      equipment_.Scale().AfterOpening({{frames_.back().substr(0, half), std::chrono::milliseconds(60)},
                                       {frames_.back().substr(half), std::chrono::milliseconds(90)}});
    }
    std::ostringstream output;
    std::ostringstream notes;
    const std::string script = std::string(TECELAGEM_SOURCE_DIR) + "/tests/script/shift.js";
    const auto result =
        app::script::Run(mill_.App(), mill_.Person(), FileText(script),
                         {"shift.js", std::chrono::milliseconds(0), output, notes, {{"plan", plan.AsJson()}}});
    ASSERT_TRUE(result.ok) << result.error;
    EXPECT_EQ(notes.str(), "");
  }

  void ExpectRows(const ShiftPlan& plan) {
    std::vector<std::string> expected;
    for (const PlannedStep& roll : plan.Remaining()) {
      expected.push_back(roll.order + " " + std::to_string(roll.number) + " " + roll.code + " " + roll.colour + " " +
                         roll.lot + " " + Kilograms(roll.net));
    }
    std::vector<std::string> actual;
    for (const Row& row : mill_.Rows("SELECT * FROM {TECELB} ORDER BY NUMERO, ORDEM")) {
      actual.push_back(row.at("NUMERO").AsText() + " " + row.at("ORDEM").AsText() + " " + row.at("CODIGO").AsText() +
                       " " + row.at("COR").AsText() + " " + row.at("LOTE").AsText() + " " +
                       Kilograms(row.at("QTDE").AsFloat()));
    }
    EXPECT_EQ(actual, expected);
  }

  // The fabric by lot, and the yarn that went into it.
  void ExpectStock(const ShiftPlan& plan) {
    std::map<std::string, double> fabric;
    double first_yarn = 0;
    double second_yarn = 0;
    for (const PlannedStep& roll : plan.Remaining()) {
      fabric[roll.code + " " + roll.colour + " " + roll.lot] += roll.net;
      first_yarn += roll.net * (roll.code == "F1" ? 0.6 : 0.7);
      second_yarn += roll.net * (roll.code == "F1" ? 0.4 : 0);
    }
    std::map<std::string, std::string> expected;
    for (const auto& [lot, weight] : fabric) expected[lot] = Kilograms(weight);
    std::map<std::string, std::string> actual;
    for (const Row& row : mill_.Rows("SELECT * FROM {MAT_ITEN} WHERE DEPOSITO = 'DF' AND QTDE <> 0")) {
      actual[row.at("CODIGO").AsText() + " " + row.at("COR").AsText() + " " + row.at("LOTE").AsText()] =
          Kilograms(row.at("QTDE").AsFloat());
    }
    EXPECT_EQ(actual, expected);
    EXPECT_NEAR(Used("Y1"), first_yarn, kCrumbs * first_yarn);
    EXPECT_NEAR(Used("Y2"), second_yarn, kCrumbs * second_yarn);
    EXPECT_EQ(mill_.Scalar("SELECT CAST(SUM(QTDE_B) AS NUMERIC(12,3)) FROM {TECEL_ITEN}").AsFloat(),
              mill_.Scalar("SELECT CAST(SUM(QTDE) AS NUMERIC(12,3)) FROM {TECELB}").AsFloat());
  }
  double Used(const std::string& yarn) {
    return 2 * kYarn -
           mill_.Scalar("SELECT SUM(QTDE) FROM {MAT_ITEN} WHERE LOTE IN ('T1', 'T2') AND CODIGO = '" + yarn + "'")
               .AsFloat();
  }

  // One for each roll as it came, one more where defects were registered.
  void ExpectLabels(const ShiftPlan& plan) {
    const std::vector<ZplLabel> labels = equipment_.Labels();
    std::size_t at = 0;
    for (const PlannedStep& step : plan.steps) {
      if (step.reverses) continue;
      for (int time = 0; time < (step.defects.empty() ? 1 : 2); ++time, ++at) {
        ASSERT_LT(at, labels.size());
        ExpectLabel(labels[at], step);
        std::string defects;
        if (time > 0) defects = step.defects.size() == 2 ? "Furo, Mancha de óleo" : "Mancha de óleo";
        EXPECT_EQ(labels[at].defects, defects.empty() ? std::vector<std::string>() : std::vector{defects});
      }
    }
    EXPECT_EQ(at, labels.size());
  }
  static void ExpectLabel(const ZplLabel& label, const PlannedStep& roll) {
    EXPECT_EQ(label.order, roll.order);
    EXPECT_EQ(std::stoi(label.roll), roll.number);
    EXPECT_EQ(label.code, roll.code);
    EXPECT_EQ(label.lot, roll.lot);
    EXPECT_EQ(label.bars, roll.lot);
    EXPECT_EQ(label.weight, Kilograms(roll.net) + " kg");
    EXPECT_EQ(label.scanned, "LOTE " + roll.lot + " PESO " + host::FormatNumber("0.000", roll.net, '.') + " KG");
  }

  // Every frame that gave a weight, with its bytes, in the order in which they came.
  void ExpectFramesLogged(const ShiftPlan& plan) {
    std::vector<std::string> expected;
    for (const PlannedStep& step : plan.steps) {
      if (step.reverses) continue;
      expected.push_back("PESO DA BALANCA: " + host::PointText(step.gross) +
                         " RECEBIDO: " + host::RawBytes(frames_[expected.size()]));
    }
    std::vector<std::string> actual;
    for (const Row& row :
         mill_.Rows("SELECT TEXTO FROM TEC_LOG WHERE TEXTO STARTING WITH 'PESO DA BALANCA' ORDER BY ID")) {
      actual.push_back(row.at("TEXTO").AsText());
    }
    EXPECT_EQ(actual, expected);
    EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM TEC_LOG WHERE TEXTO STARTING WITH 'ERRO'").AsInteger(), 0);
    EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM TEC_LOG WHERE TEXTO STARTING WITH 'ESTORNO MOVIMENTO'").AsInteger(),
              3);
  }

  void ExpectAll(const ShiftPlan& plan) {
    ExpectRows(plan);
    ExpectStock(plan);
    ExpectLabels(plan);
    ExpectFramesLogged(plan);
    EXPECT_EQ(app::books::CheckBooks(mill_.Db()), std::vector<std::string>());
  }

  // A roll may take the last crumb of a reservation with it.
  static constexpr double kCrumbs = 0.0001;

  StationEquipment equipment_{(fs::temp_directory_path() / ("shift-" + std::to_string(::getpid()) + ".zpl")).string()};
  Mill mill_{With(equipment_)};
  std::vector<std::string> frames_;
};

// All 500 rolls with TECELAGEM_SOAK=1: their checks take longer than a suite that is run at every change should.
TEST_F(Shift, TheBooksBalanceAfterEveryStep) {
  const char* const soak = std::getenv("TECELAGEM_SOAK");
  const ShiftPlan plan = PlanShift(soak != nullptr && std::string_view(soak) == "1" ? kRollsOfShift : kRollsOfSuite);
  Work(plan);
  if (!HasFatalFailure()) ExpectAll(plan);
}

}  // namespace
}  // namespace test
