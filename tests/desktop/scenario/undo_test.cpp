// Defects registered and rolls taken back, with the keyboard and the mouse.
#include <QTableView>
#include <QTest>

#include "app/books/check.h"
#include "desktop/scenario/hands.h"
#include "support/road.h"

namespace test {
namespace {

const QString kRollTitle = QStringLiteral("Baixa de Ordem de Tecelagem");
const QString kDefectsTitle = QStringLiteral("Cadastro de Defeitos");
const QString kQuestion = QStringLiteral("Deseja estornar este Movimento?");

class Undo : public Scenario {
 protected:
  explicit Undo(const char* after_each_roll = "N")
      : Scenario([after_each_roll](Mill& mill) {
          mill.SetParameter("MAL", 60, after_each_roll);
          mill.Insert("DEFEITO", {{"CODIGO", "FURO"}, {"DESCRICAO", "Furo"}});
          mill.Insert("DEFEITO", {{"CODIGO", "MANCHA"}, {"DESCRICAO", "Mancha de óleo"}});
          mill.Insert("TABQUL", {{"CODIGO", "A"}, {"DESCRICAO", "Primeira"}});
        }) {}

  void ExpectBooksBalance() { EXPECT_EQ(app::books::CheckBooks(desktop_.GetMill().Db()), std::vector<std::string>()); }
  host::Screen& Load() {
    const std::string number = SaveOrder(Elsewhere(), SmallMillOrder(100));
    host::Screen& screen = desktop_.Open("TfmMovBaiTec");
    hands_.Enter("EdtLote", QString::fromStdString(number));
    hands_.GoTo("EdtQtde");
    return screen;
  }
  /// Weights with the tare of 0,3.
  void Confirm(const QString& weight) {
    hands_.Fill("EdtQtde", weight);
    Press(Qt::Key_F8);
  }
  void ClickRoll(const host::Screen& screen, int number) {
    auto& table = *desktop_.GridOf(screen, "GrdRolos").findChild<QTableView*>();
    for (int row = 0; row < table.model()->rowCount(); ++row) {
      const QModelIndex cell = table.model()->index(row, 0);
      if (cell.data().toInt() != number) continue;
      QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, table.visualRect(cell).center());
      Settle();
      return;
    }
    FAIL() << "no roll " << number;
  }
  std::vector<std::string> Listed(const host::Screen& screen) {
    return hands_.Rows(screen, "GrdRolos", {"Ordem", "Qtde"});
  }
  std::string YarnsLeft() {
    return Scalar("SELECT LIST(CODIGO || LOTE || ' ' || CAST(QTDE AS INTEGER), ', ') FROM {MAT_RESERVA}");
  }
};

class UndoWithRegister : public Undo {
 protected:
  UndoWithRegister() : Undo("S") {}
};

TEST_F(Undo, TwoDefectsAndThreeRollsInAnotherOrder) {
  const host::Screen& screen = Load();
  const std::string yarns = YarnsLeft();
  for (const char* weight : {"20,3", "18,3", "15,3"}) Confirm(QString::fromUtf8(weight));
  ASSERT_EQ(Listed(screen), (std::vector<std::string>{"3; 15,000", "2; 18,000", "1; 20,000"}));

  ClickRoll(screen, 2);
  desktop_.GetBoxes().ExpectDialog(kDefectsTitle, [this](QWidget&) {
    const host::Screen& defects = *desktop_.Desk().Modal();
    EXPECT_EQ(Focused(), "DBGrid1");
    EXPECT_EQ(hands_.Text(defects, "EdtOrdem"), "2");
    EXPECT_EQ(hands_.Text(defects, "LblArtigo"), "Meia malha 30/1 PV");
    hands_.Type("Defeito", QStringLiteral("FURO"));
    hands_.Type("Peso", QStringLiteral("1,5"));
    hands_.Cell("Funcionario");
    EXPECT_EQ(hands_.Shown("Desc_Def"), "Furo");
    Press(Qt::Key_Down);
    // The second one is looked up.
    hands_.Cell("Defeito");
    desktop_.GetBoxes().ExpectDialog(QStringLiteral("Pesquisa"), [](QWidget&) {
      TypeText(QStringLiteral("manch"));
      Press(Qt::Key_Return);
    });
    Press(Qt::Key_F4);
    EXPECT_EQ(hands_.Shown("Desc_Def"), "Mancha de óleo");
    hands_.Type("Peso", QStringLiteral("2"));
    Press(Qt::Key_Return);
    hands_.Type("Qualidade", QStringLiteral("A"));
    Press(Qt::Key_F8);
  });
  desktop_.ClickOn(screen, "BtnDefeitos");
  EXPECT_TRUE(desktop_.GetBoxes().Met());
  EXPECT_EQ(desktop_.Desk().Find("TfmCadDefTec"), nullptr);
  EXPECT_EQ(Scalar("SELECT LIST(CODIGO || ' ' || ROLO || ' ' || CAST(QUANT AS NUMERIC(9,1)), ', ') FROM {DEF_MOV}"),
            "FURO 2 1.5, MANCHA 2 2.0");
  ExpectBooksBalance();

  // The oldest by the keyboard alone, the one with the defects by the mouse, the newest by both.
  hands_.GoTo("GrdRolos");
  hands_.Row({{"Ordem", "1"}});
  desktop_.ExpectBox(kQuestion, Reply::kYes);
  Press(Qt::Key_E, Qt::AltModifier);
  EXPECT_EQ(Listed(screen), (std::vector<std::string>{"3; 15,000", "2; 18,000"}));
  ExpectBooksBalance();

  ClickRoll(screen, 2);
  desktop_.ExpectBox(kQuestion, Reply::kOk);  // "Não" is what Enter presses
  desktop_.ClickOn(screen, "BtnExtorna");
  EXPECT_EQ(Listed(screen).size(), 2U);
  desktop_.ExpectBox(kQuestion, Reply::kYes);
  desktop_.ClickOn(screen, "BtnExtorna");
  EXPECT_EQ(Listed(screen), std::vector<std::string>{"3; 15,000"});
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {DEF_MOV}"), "0");
  ExpectBooksBalance();

  desktop_.ExpectBox(kQuestion, Reply::kYes);
  Press(Qt::Key_E, Qt::AltModifier);
  EXPECT_TRUE(Listed(screen).empty());
  EXPECT_EQ(YarnsLeft(), yarns);
  EXPECT_EQ(Scalar("SELECT QTDE_B FROM {TECEL_ITEN}"), "0");
  ExpectBooksBalance();
  ExpectRefused(
      kRollTitle, QStringLiteral("Sem baixas para estornar."), [] { Press(Qt::Key_E, Qt::AltModifier); },
      host::Icon::kExclamation);
}

TEST_F(UndoWithRegister, EveryRollAsksForItsDefects) {
  desktop_.Open("TfmCadDefTec");  // somebody left it open; the roll takes it for itself
  const host::Screen& screen = Load();
  hands_.Fill("EdtQtde", QStringLiteral("20,3"));
  desktop_.GetBoxes().ExpectDialog(kDefectsTitle, [this](QWidget&) {
    EXPECT_EQ(hands_.Text(*desktop_.Desk().Modal(), "EdtOrdem"), "1");
    ExpectRefused(kDefectsTitle, QStringLiteral("Defeito não cadastrado."), [this] {
      hands_.Type("Defeito", QStringLiteral("NADA"));
      Press(Qt::Key_Return);
    });
    hands_.Type("Defeito", QStringLiteral("FURO"));
    hands_.Type("Peso", QStringLiteral("1"));
    Press(Qt::Key_F8);
  });
  Press(Qt::Key_F8);
  EXPECT_TRUE(desktop_.GetBoxes().Met());
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(Scalar("SELECT ROLO FROM {DEF_MOV}"), "1");

  // The next one has none: Esc, and on to the scale.
  hands_.Fill("EdtQtde", QStringLiteral("18,3"));
  desktop_.GetBoxes().ExpectDialog(kDefectsTitle, [this](QWidget&) {
    EXPECT_EQ(hands_.Text(*desktop_.Desk().Modal(), "EdtOrdem"), "2");
    EXPECT_EQ(hands_.Rows(*desktop_.Desk().Modal(), "DBGrid1", {"Defeito", "Rolo"}),
              std::vector<std::string>{"FURO; 1"});
    Press(Qt::Key_F, Qt::AltModifier);
  });
  Press(Qt::Key_F8);
  EXPECT_TRUE(desktop_.GetBoxes().Met());
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(Listed(screen).size(), 2U);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {DEF_MOV}"), "1");
  ExpectBooksBalance();
}

TEST_F(Undo, TheRegisterFromTheMenuRefersToTheWriteOff) {
  const host::Screen& screen = desktop_.Open("TfmCadDefTec");
  EXPECT_EQ(hands_.Text(screen, "LblAviso"),
            "Nenhuma peça escolhida. Os defeitos são registrados pela baixa da ordem.");
  EXPECT_FALSE(desktop_.WidgetOf(screen, "BitBtn1").isEnabled());
  EXPECT_FALSE(desktop_.WidgetOf(screen, "EdtLote").isVisible());
}

}  // namespace
}  // namespace test
