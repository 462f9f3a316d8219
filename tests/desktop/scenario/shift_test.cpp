// A shift at the weighing station as it is in life: the real windows, keys only, a scale at the serial port, a label
// printer in the network.
#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/books/check.h"
#include "app/desktop/printing/desktop_equipment.h"
#include "desktop/scenario/hands.h"
#include "host/decimal.h"
#include "scale/simulated_scale.h"
#include "support/label_printer.h"
#include "support/road.h"
#include "support/zpl_label.h"

namespace test {
namespace {

using app::scale::Behaviour;
using std::chrono::milliseconds;

constexpr int kRollsOfShift = 500;
constexpr int kContinuous = static_cast<int>(host::ScaleProtocol::kContinuous);
constexpr int kBeforeTheNextOrder = 5;
constexpr double kTare = 0.3;
constexpr const char* kArticle = "7891234567895";

const QString kTitle = QStringLiteral("Baixa de Ordem de Tecelagem");

// With TECELAGEM_SOAK=1 a whole shift: half a second and more for each roll.
int RollsOfShift(int in_suite) {
  const char* const soak = std::getenv("TECELAGEM_SOAK");
  return soak != nullptr && std::string_view(soak) == "1" ? kRollsOfShift : in_suite;
}

std::string Kilograms(double weight) { return host::FormatNumber("0.000", weight, ','); }

class StationShift : public ::testing::Test {
 protected:
  explicit StationShift(int protocol) : protocol_(protocol), desktop_(Options(protocol)) {
    PlugIn();
    printing_to_ = printer_.Destination();
    app::printing::StoreChoice(desktop_.GetMill().App().GetUserSettings(), {"WEtqTecRolo", 'T'},
                               {app::printing::ParseDestination(printing_to_, 'T'), 1});
    Mill other(SameMill());
    other.SetClock(kAfternoon);
    for (const char* colour : {"01", "02"}) {
      orders_.push_back(SaveOrder(
          other,
          {"M00001", "DF", "F1", colour, 7000, {{"Y1", "CR", "D1", "T1", 4200}, {"Y2", "CR", "D1", "T1", 2800}}}));
    }
  }
  ~StationShift() override { QDir().remove(Port()); }

  DesktopMill::Options Options(int protocol) {
    DesktopMill::Options options;
    options.mill.equipment = &equipment_;
    options.prepare = [this, protocol](Mill& mill) {
      mill.SetClock(kAfternoon);
      FillSmallMill(mill);
      for (const char* yarn : {"Y1", "Y2"}) ReceiveYarn(mill, yarn, "T1", 20000);
      mill.SetParameter("MAL", 40, "4");
      mill.SetParameter("MAL", 50, "S");
      mill.SetParameter("SIS", 20, "S");
      mill.Exec("UPDATE {MAT_ITEN} SET BARRA = '" + std::string(kArticle) + "' WHERE CODIGO = 'F1' AND COR = '01'");
      host::UserSettings& settings = mill.App().GetUserSettings();
      const auto write = [&](const char* name, const std::string& value) {
        settings.Write("Venda", "Parametros", name, value);
      };
      write("Port", Port().toStdString());
      write("ProtocoloBal", std::to_string(protocol));
      write("Decimal", "2");
    };
    return options;
  }
  Mill::Options SameMill() {
    Mill::Options options;
    options.database = desktop_.GetMill().Path();
    return options;
  }

  // --- the scale ---------------------------------------------------------------------------------------------------

  QString Port() const { return folder_.filePath(QStringLiteral("balanca")); }
  void PlugIn() {
    scale_.reset();  // its link goes with it
    app::scale::SimulatorOptions options;
    options.protocol = static_cast<host::ScaleProtocol>(protocol_);
    options.interval = milliseconds(40);
    options.link = Port().toStdString();
    if (protocol_ == kContinuous) options.behaviour = Behaviour::kSilent;
    scale_ = std::make_unique<SimulatedScale>(options);
  }
  // Not twice the same one after the other.
  double NextGross() { return host::RoundTo(18 + (++weighed_ * 37 % 101) * 0.05, 3); }

  // --- the person --------------------------------------------------------------------------------------------------

  /// The station waits for a code.
  void SitDown() {
    screen_ = &desktop_.Open("TfmMovBaiTec");
    TakeOrder(0);
    hands_.GoTo("CbBarra");
    ::test::Press(Qt::Key_Space);
    hands_.GoTo("EdtBarra");
  }
  void TakeOrder(std::size_t order) {
    order_ = order;
    hands_.Enter("EdtLote", QString::fromStdString(orders_[order]));
  }
  static void Scan(const std::string& code) {
    TypeText(QString::fromStdString(code));
    ::test::Press(Qt::Key_Return);
  }

  struct Roll {
    std::string order;
    int number = 0;
    std::string lot;
    double net = 0;
  };

  /// Scans what the next roll of the order bears and says what is to come of it.
  Roll ScanNext() {
    Roll roll;
    roll.order = orders_[order_];
    roll.number = ++numbers_[order_];
    if (order_ == 0) {
      roll.lot = kArticle;  // its fabric's number; nine for a package that is to be weighed
      Scan("9" + roll.lot.substr(0, 12) + "4");
    } else {
      roll.lot = host::FormatNumber("000000000", std::stod(roll.order) * 1000 + roll.number);
      desktop_.GetMill().Insert("MAT_ITEN", {{"CODIGO", "F1"}, {"COR", "02"}, {"DEPOSITO", "DF"}, {"LOTE", roll.lot}});
      Scan(roll.lot);
    }
    EXPECT_EQ(Focused(), "EdtQtde");
    return roll;
  }
  void PutOnScale(Roll& roll) {
    const double gross = NextGross();
    roll.net = host::RoundTo(gross - kTare, 3);
    (*scale_)->SetWeight(gross);
  }
  /// F5, or what a scale that sends by itself does when the roll lies still.
  void Weigh() {
    if (protocol_ != kContinuous) {
      ::test::Press(Qt::Key_F5);
      return;
    }
    (*scale_)->SetBehaviour(Behaviour::kSteady);
    scale_->AwaitFrame();
    (*scale_)->SetBehaviour(Behaviour::kSilent);
    WaitFor([this] { return Focused() == "EdtBarra"; }, 5000);
  }
  void ExpectWritten(const Roll& roll) {
    rolls_.push_back(roll);
    EXPECT_EQ(Focused(), "EdtBarra");
    EXPECT_EQ(hands_.Text(*screen_, "EdtBarra"), "");
    EXPECT_EQ(hands_.Text(*screen_, "EdtQtde"), " 0,000");
    EXPECT_EQ(hands_.Rows(*screen_, "GrdRolos", {"Ordem", "Lote", "Qtde"}).front(),
              std::to_string(roll.number) + "; " + roll.lot + "; " + Kilograms(roll.net));
    EXPECT_EQ(app::books::CheckBooks(desktop_.GetMill().Db()), std::vector<std::string>());
  }
  void NextRoll() {
    if (static_cast<int>(rolls_.size()) % kBeforeTheNextOrder == kBeforeTheNextOrder - 1) {
      TakeOrder(1 - order_);
      hands_.GoTo("EdtBarra");
    }
    Roll roll = ScanNext();
    PutOnScale(roll);
    Weigh();
    ExpectWritten(roll);
  }
  /// Nothing comes of it but that one sentence.
  void ExpectTold(const QString& part, const std::function<void()>& act) {
    desktop_.GetBoxes().Take();
    desktop_.ExpectBox(part);
    act();
    EXPECT_TRUE(WaitFor([this] { return desktop_.GetBoxes().Met(); }, 5000));
    Settle();
    EXPECT_EQ(desktop_.GetBoxes().Take().size(), 1U);
    EXPECT_EQ(desktop_.GetMill().Scalar("SELECT COUNT(*) FROM {TECELB}").AsInteger(),
              static_cast<std::int64_t>(rolls_.size()));
  }
  std::string Focused() const { return hands_.Focused(); }

  // --- in the end --------------------------------------------------------------------------------------------------

  static std::string Told(const Roll& roll) {
    return roll.order + " " + std::to_string(roll.number) + " " + roll.lot + " " + Kilograms(roll.net);
  }
  void ExpectRolls() {
    std::vector<std::string> expected;
    for (const Roll& roll : rolls_) expected.push_back(Told(roll));
    std::vector<std::string> rows;
    for (const Row& row : desktop_.GetMill().Rows("SELECT * FROM {TECELB} ORDER BY NUMERO, ORDEM")) {
      rows.push_back(Told({row.at("NUMERO").AsText(), static_cast<int>(row.at("ORDEM").AsInteger()),
                           row.at("LOTE").AsText(), row.at("QTDE").AsFloat()}));
    }
    std::vector<std::string> by_number = expected;
    std::stable_sort(by_number.begin(), by_number.end(),
                     [](const auto& a, const auto& b) { return a.substr(0, 6) < b.substr(0, 6); });
    EXPECT_EQ(rows, by_number);
    EXPECT_EQ(desktop_.GetMill()
                  .Scalar("SELECT COUNT(*) FROM TEC_LOG WHERE TEXTO STARTING WITH 'PESO DA BALANCA: '")
                  .AsInteger(),
              weighings_);
  }
  void ExpectLabels() {
    EXPECT_TRUE(WaitFor([this] { return printer_.Received().size() >= rolls_.size(); }));
    std::vector<std::string> expected;
    for (const Roll& roll : rolls_) expected.push_back(Told(roll) + " kg");
    std::vector<std::string> printed;
    for (const ZplLabel& label : ReadZplLabels(printer_.Paper())) {
      EXPECT_EQ(label.bars, label.lot);
      printed.push_back(label.order + " " + std::to_string(std::stoi(label.roll)) + " " + label.lot + " " +
                        label.weight);
    }
    EXPECT_EQ(printed, expected);
  }
  void ExpectAll() {
    weighings_ += static_cast<std::int64_t>(rolls_.size());
    ExpectRolls();
    ExpectLabels();
    EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
  }

  int protocol_;
  QTemporaryDir folder_;
  std::unique_ptr<SimulatedScale> scale_;
  app::desktop::DesktopEquipment equipment_;
  LabelPrinter printer_;
  std::string printing_to_;
  DesktopMill desktop_;
  Hands hands_{desktop_};
  host::Screen* screen_ = nullptr;
  std::vector<std::string> orders_;
  std::size_t order_ = 0;
  int numbers_[2] = {0, 0};
  int weighed_ = 0;
  std::int64_t weighings_ = 0;  // that no roll came of
  std::vector<Roll> rolls_;
};

/// The scale fails in every way that it has, and the roll is weighed once more.
class FailingScale : public StationShift {
 protected:
  using StationShift::StationShift;

  void Fail(int roll) {
    if (roll % 8 == 1) FailOnce(Behaviour::kSilent, QStringLiteral("A balança não respondeu."));
    if (roll % 8 == 3) FailOnce(Behaviour::kCut, QStringLiteral("cortad"));
    if (roll % 8 == 5) FailOnce(Behaviour::kUnstable, QStringLiteral("não está estável"));
    if (roll % 8 == 6) Unplug();
  }
  void FailOnce(Behaviour behaviour, const QString& told) {
    Roll roll = ScanNext();
    PutOnScale(roll);
    (*scale_)->SetBehaviour(behaviour);
    ExpectTold(told, [this] { Weigh(); });
    (*scale_)->SetBehaviour(Behaviour::kSteady);
    Weigh();
    ExpectWritten(roll);
  }
  void Unplug() {
    Roll roll = ScanNext();
    scale_->PullOut();
    ExpectTold(Port(), [this] { Weigh(); });
    PlugIn();
    PutOnScale(roll);
    Weigh();
    ExpectWritten(roll);
  }
  void Work(int rolls) {
    SitDown();
    for (int roll = 0; roll < rolls; ++roll) {
      if (static_cast<int>(rolls_.size()) < rolls) NextRoll();
      if (static_cast<int>(rolls_.size()) < rolls) Fail(roll);
      if (HasFailure()) return;
    }
    ExpectAll();
  }
};

class ShiftWithPrintingScale : public FailingScale {
 protected:
  ShiftWithPrintingScale() : FailingScale(0) {}
};

TEST_F(ShiftWithPrintingScale, RollsComeOutOfScanAndF5) { Work(RollsOfShift(12)); }

TEST_F(ShiftWithPrintingScale, F5PressedTwiceIsOneRoll) {
  SitDown();
  NextRoll();
  Roll roll = ScanNext();
  PutOnScale(roll);
  bool pressed = false;
  QTimer::singleShot(200, [&pressed] {
    QTest::keyClick(&Keyboard(), Qt::Key_F5);
    QTest::keyClick(&Keyboard(), Qt::Key_F8);
    pressed = true;
  });
  Weigh();
  EXPECT_TRUE(pressed);
  ExpectWritten(roll);
  // Once more, when the roll is written and still lies there.
  weighings_ = 1;
  ExpectTold(QStringLiteral("Baixa já Realizada."), [this] { Weigh(); });
  hands_.GoTo("EdtBarra");
  ExpectAll();
}

TEST_F(ShiftWithPrintingScale, RollsGoOnWhileTheLabelPrinterIsOff) {
  SitDown();
  NextRoll();
  printer_.SwitchOff();
  Roll roll = ScanNext();
  PutOnScale(roll);
  rolls_.push_back(roll);  // it is written all the same
  ExpectTold(QStringLiteral("A baixa foi gravada, mas a etiqueta não foi impressa: A impressora 127.0.0.1:"),
             [this] { Weigh(); });
  rolls_.pop_back();
  ExpectWritten(roll);
  printer_.SwitchOn();
  // Its label comes by the keyboard alone.
  hands_.GoTo("GrdRolos");
  hands_.Row({{"Ordem", "2"}});
  desktop_.GetBoxes().ExpectMenu(QStringLiteral("Imprimir Etiqueta"));
  ::test::Press(Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(WaitFor([this] { return desktop_.GetBoxes().Met(); }));
  Settle();
  desktop_.Window().activateWindow();  // offscreen a menu that closes hands the keyboard to nobody
  hands_.GoTo("EdtBarra");
  NextRoll();
  desktop_.GetBoxes().Take();
  ExpectAll();
}

class ShiftWithAskedScale : public FailingScale {
 protected:
  ShiftWithAskedScale() : FailingScale(1) {}
};

TEST_F(ShiftWithAskedScale, RollsComeOutOfScanAndF5) { Work(RollsOfShift(12)); }

class ShiftWithContinuousScale : public StationShift {
 protected:
  ShiftWithContinuousScale() : StationShift(kContinuous) {}
};

TEST_F(ShiftWithContinuousScale, RollsComeOutOfTheScan) {
  SitDown();
  for (int rolls = RollsOfShift(6); rolls > 0 && !HasFailure(); --rolls) NextRoll();
  ExpectAll();
}

// What a scale that sends by itself cuts off is not there, until the next frame.
TEST_F(ShiftWithContinuousScale, ACutFrameIsNoRoll) {
  SitDown();
  Roll roll = ScanNext();
  PutOnScale(roll);
  (*scale_)->SetBehaviour(Behaviour::kCut);
  scale_->AwaitFrame();
  (*scale_)->SetBehaviour(Behaviour::kSilent);
  EXPECT_FALSE(WaitFor([this] { return Focused() == "EdtBarra"; }, 1500));
  Weigh();
  ExpectWritten(roll);
  ExpectAll();
}

TEST_F(ShiftWithContinuousScale, ACableThatIsOutIsTold) {
  SitDown();
  NextRoll();
  Roll roll = ScanNext();
  ExpectTold(QStringLiteral("F10"), [this] { scale_->PullOut(); });
  PlugIn();
  desktop_.GetBoxes().ExpectDialog(QStringLiteral("Configuração da balança"),
                                   [](QWidget&) { ::test::Press(Qt::Key_Return); });
  ::test::Press(Qt::Key_F10);
  EXPECT_EQ(Focused(), "EdtQtde");
  PutOnScale(roll);
  desktop_.GetBoxes().Take();
  Weigh();
  ExpectWritten(roll);
  NextRoll();
  ExpectAll();
}

}  // namespace
}  // namespace test
