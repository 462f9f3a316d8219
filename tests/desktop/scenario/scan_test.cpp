// The weighing station without a hand on the mouse: the scanner types a code and Enter, F5 takes the weight.
#include "desktop/scenario/hands.h"
#include "support/road.h"

namespace test {
namespace {

using std::chrono::milliseconds;

const QString kTitle = QStringLiteral("Baixa de Ordem de Tecelagem");
const QString kScanTitle = QStringLiteral("Movimentos Baixas");

class Scan : public Scenario {
 protected:
  explicit Scan(int protocol = 0)
      : Scenario([protocol](Mill& mill) {
          host::UserSettings& settings = mill.App().GetUserSettings();
          settings.Write("Venda", "Parametros", "ProtocoloBal", std::to_string(protocol));
          settings.Write("Venda", "Parametros", "Decimal", "2");
          mill.SetParameter("MAL", 50, "S");
          mill.Exec("UPDATE {MAT_ITEN} SET BARRA = '7891234567895' WHERE CODIGO = 'F1' AND COR = '01'");
          mill.Insert("CADTAG", {{"CODIGO", "1"}, {"QTDE", 20}});
        }) {}

  /// An order on the screen, bar codes ticked by the space bar, the keyboard where the scanner types.
  host::Screen& Station() {
    number_ = SaveOrder(Elsewhere(), SmallMillOrder(100));
    host::Screen& screen = desktop_.Open("TfmMovBaiTec");
    hands_.Enter("EdtLote", QString::fromStdString(number_));
    hands_.Enter("EdtTara", QStringLiteral("0"));
    hands_.GoTo("CbBarra");
    ::test::Press(Qt::Key_Space);
    hands_.GoTo("EdtBarra");
    return screen;
  }
  void ScanCode(const QString& code) {
    TypeText(code);
    ::test::Press(Qt::Key_Return);
  }
  FakeScale& Scale() { return desktop_.GetMill().Equipment().Scale(); }
  std::size_t Labels() { return desktop_.GetMill().Equipment().TakePrints().size(); }
  std::string Weights() {
    std::string weights;
    for (const Row& roll : desktop_.GetMill().Rows("SELECT QTDE FROM {TECELB} ORDER BY ORDEM")) {
      weights += roll.at("QTDE").AsText() + " ";
    }
    return weights;
  }
  void Label(int sequence) {
    desktop_.GetMill().Insert(
        "MAT_ITEN",
        {{"CODIGO", "F1"}, {"COR", "01"}, {"DEPOSITO", "DF"}, {"LOTE", number_ + "00" + std::to_string(sequence)}});
  }
  std::string number_;
};

TEST_F(Scan, OfWeighedCodesOneAfterTheOther) {
  const host::Screen& screen = Station();
  for (const char* code : {"7891234567895012345", "7891234567895010500", "17891234567899"}) {
    ScanCode(QString::fromLatin1(code));
    EXPECT_EQ(Focused(), "EdtBarra");
    EXPECT_EQ(hands_.Text(screen, "EdtBarra"), "");
    EXPECT_EQ(Labels(), 1u);
  }
  EXPECT_EQ(Weights(), "12.345 10.5 20 ");
  EXPECT_EQ(hands_.Rows(screen, "GrdRolos", {"Ordem", "Qtde"}),
            (std::vector<std::string>{"3; 20,000", "2; 10,500", "1; 12,345"}));
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
}

TEST_F(Scan, LabelThenScaleRollAfterRoll) {
  const host::Screen& screen = Station();
  for (int roll = 1; roll <= 3; ++roll) {
    Label(roll);
    ScanCode(QString::fromStdString(number_ + "00" + std::to_string(roll)));
    EXPECT_EQ(Focused(), "EdtQtde");
    Scale().AfterOpening({{"1" + std::to_string(roll) + ".500 kg\r", milliseconds(120)}});
    ::test::Press(Qt::Key_F5);
    EXPECT_EQ(Focused(), "EdtBarra");
    EXPECT_EQ(Labels(), 1u);
  }
  EXPECT_EQ(Weights(), "11.5 12.5 13.5 ");
  EXPECT_EQ(hands_.Text(screen, "EdtQtde"), " 0,000");
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
}

TEST_F(Scan, ARefusedCodeIsOverwrittenByTheNextOne) {
  const host::Screen& screen = Station();
  ExpectRefused(kScanTitle, QStringLiteral("Lote inválido."), [this] { ScanCode(QStringLiteral("999999001")); });
  EXPECT_EQ(Focused(), "EdtBarra");
  EXPECT_EQ(hands_.Text(screen, "EdtBarra"), "999999001");
  ScanCode(QStringLiteral("7891234567895012345"));
  EXPECT_EQ(Weights(), "12.345 ");
  EXPECT_EQ(Focused(), "EdtBarra");
}

TEST_F(Scan, TheSameWeightTwiceIsSaidAndConfirmedByF8) {
  Station();
  ScanCode(QStringLiteral("7891234567895012345"));
  ExpectRefused(kTitle, QStringLiteral("Baixa já Realizada."),
                [this] { ScanCode(QStringLiteral("7891234567895012345")); });
  EXPECT_EQ(Focused(), "EdtQtde");
  ::test::Press(Qt::Key_F8);
  EXPECT_EQ(Weights(), "12.345 12.345 ");
  EXPECT_EQ(Focused(), "EdtBarra");
}

TEST_F(Scan, ASilentScaleIsSaidOnceAndTheTypedWeightIsConfirmedByF8) {
  const host::Screen& screen = Station();
  desktop_.ExpectBox(QStringLiteral("A balança não respondeu."));
  ::test::Press(Qt::Key_F5);
  EXPECT_EQ(hands_.Text(screen, "EdtQtde"), "");
  EXPECT_EQ(Focused(), "EdtBarra");
  hands_.Fill("EdtQtde", QStringLiteral("10,5"));
  ::test::Press(Qt::Key_F8);
  EXPECT_EQ(Weights(), "10.5 ");
  EXPECT_EQ(Focused(), "EdtBarra");
}

TEST_F(Scan, F5WhileTheQuantityIsBeingTypedTakesTheScalesWeight) {
  Station();
  hands_.Fill("EdtQtde", QStringLiteral("99"));
  Scale().AfterOpening({{"10.250\r"}});
  ::test::Press(Qt::Key_F5);
  EXPECT_EQ(Weights(), "10.25 ");
}

TEST_F(Scan, TheStatusBarAndThePanelTellOfF5) {
  host::Screen& screen = Station();
  const auto keys = [this] { return desktop_.Status("StatusKeys").toStdString(); };
  EXPECT_NE(keys().find("F5 Captura Peso"), std::string::npos) << keys();
  EXPECT_NE(keys().find("F10 Balança"), std::string::npos) << keys();
  EXPECT_TRUE(desktop_.WidgetOf(screen, "LblCaptura").isEnabled());
  hands_.GoTo("CbBarra");
  ::test::Press(Qt::Key_Space);
  EXPECT_EQ(keys().find("F5"), std::string::npos) << keys();
  EXPECT_FALSE(desktop_.WidgetOf(screen, "LblCaptura").isEnabled());
}

TEST_F(Scan, ALabelThatIsNotPrintedIsToldAndTheNextRollGoesOn) {
  Station();
  desktop_.GetMill().Equipment().fail_next = "a impressora está desligada.";
  ExpectRefused(
      kTitle, QStringLiteral("A baixa foi gravada, mas a etiqueta não foi impressa: a impressora está desligada."),
      [this] { ScanCode(QStringLiteral("7891234567895012345")); }, host::Icon::kExclamation);
  EXPECT_EQ(Focused(), "EdtBarra");
  ScanCode(QStringLiteral("7891234567895011000"));
  EXPECT_EQ(Weights(), "12.345 11 ");
  EXPECT_EQ(Labels(), 1u);
}

// The person has not seen the box and scans on: the box stays, the code is not read, nothing is written twice.
TEST_F(Scan, ACodeScannedWhileABoxIsOpenClosesItNot) {
  const host::Screen& screen = Station();
  ScanCode(QStringLiteral("7891234567895012345"));
  desktop_.GetBoxes().ExpectDialog(kTitle, [this](QWidget& box) {
    for (int times = 0; times < 3; ++times) {
      ScanCode(QStringLiteral("7891234567895011000"));
      EXPECT_TRUE(box.isVisible());
    }
    EXPECT_EQ(Weights(), "12.345 ");
    ::test::Press(Qt::Key_Return);
  });
  ScanCode(QStringLiteral("7891234567895012345"));
  EXPECT_EQ(Weights(), "12.345 ");
  EXPECT_EQ(hands_.Text(screen, "EdtQtde"), " 12,345");
  hands_.GoTo("EdtBarra");
  // A quantity that is not zero is confirmed with the code that is read.
  ScanCode(QStringLiteral("7891234567895011000"));
  EXPECT_EQ(Weights(), "12.345 11 ");
}

// A label is scanned and, before its roll is weighed, another one: the cursor is not where codes are read.
TEST_F(Scan, ACodeScannedIntoTheQuantityIsNoQuantity) {
  const host::Screen& screen = Station();
  Label(1);
  Label(2);
  ScanCode(QString::fromStdString(number_ + "001"));
  ASSERT_EQ(Focused(), "EdtQtde");
  const QString told =
      QStringLiteral("O campo \"Quantidade\" aceita somente números; isto parece um código de barras.");
  for (const char* code : {"002", "002"}) {
    ExpectRefused(kTitle, told, [&] { ScanCode(QString::fromStdString(number_ + code)); });
    EXPECT_EQ(Focused(), "EdtQtde");
  }
  // Nor is the roll weighed under the label before.
  Scale().AfterOpening({{"10.250\r"}});
  ExpectRefused(kTitle, told, [] { ::test::Press(Qt::Key_F5); });
  EXPECT_EQ(Weights(), "");
  TypeText(QStringLiteral("0"));
  hands_.GoTo("EdtBarra");
  ScanCode(QString::fromStdString(number_ + "002"));
  ::test::Press(Qt::Key_F5);
  EXPECT_EQ(Weights(), "10.25 ");
  EXPECT_EQ(hands_.Text(screen, "EdtBarra"), "");
}

class ScanAndAsk : public Scan {
 protected:
  ScanAndAsk() : Scan(1) {}
};

TEST_F(ScanAndAsk, TheScaleAnswers) {
  Station();
  Scale().Answer({{"\x02"
                   "12.",
                   milliseconds(40)},
                  {"345\x03\r", milliseconds(90)}});
  ::test::Press(Qt::Key_F5);
  EXPECT_EQ(Weights(), "12.345 ");
  EXPECT_EQ(Focused(), "EdtBarra");
}

class ScanContinuously : public Scan {
 protected:
  ScanContinuously() : Scan(2) {}
};

TEST_F(ScanContinuously, EveryWeightIsARoll) {
  const host::Screen& screen = Station();
  EXPECT_FALSE(desktop_.WidgetOf(screen, "LblCaptura").isEnabled());
  EXPECT_TRUE(Scale().Send("012345\r"));
  EXPECT_EQ(Weights(), "12.345 ");
  EXPECT_EQ(Focused(), "EdtBarra");
  // What lies on the scale while a box waits for the person is weighed for nobody.
  bool heard = true;
  desktop_.GetBoxes().ExpectDialog(kTitle, [&](QWidget&) {
    heard = Scale().Send("099999\r");
    ::test::Press(Qt::Key_Return);
  });
  EXPECT_TRUE(Scale().Send("012345\r"));
  EXPECT_FALSE(heard);
  EXPECT_EQ(Weights(), "12.345 ");
}

}  // namespace
}  // namespace test
