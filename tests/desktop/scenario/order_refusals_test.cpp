// An order typed by keyboard: everything that is refused, in which words, and where the keyboard then is.
#include <QLineEdit>

#include "desktop/scenario/hands.h"

namespace test {
namespace {

const QString kTitle = QStringLiteral("Ordens de Tecelagem");

class OrderRefusals : public Scenario {
 protected:
  using Scenario::Scenario;

  void Refused(const QString& text, Qt::Key key = Qt::Key_Return) {
    ExpectRefused(kTitle, text, [key] { Press(key); });
  }
  /// A stored order of F1 in two colours, the first with a roll of 10 kg, on the screen and in its items.
  std::string OrderWithRoll() {
    const std::string number = OrderFromElsewhere(100);
    Mill& other = Elsewhere();
    host::Screen& screen = other.Open("TfmCadLoteTec");
    EXPECT_EQ(other.Type(screen, "EdtNumero", number), host::ActResult::kDone);
    EXPECT_EQ(other.Append(screen, "TbItens", {{"Codigo", "F1"}, {"Cor", "02"}, {"Qtde", "50"}}),
              host::ActResult::kDone);
    EXPECT_EQ(other.Click(screen, "BtnGravar"), host::ActResult::kDone);
    other.Insert("TECELB", {{"NUMERO", number}, {"CODIGO", "F1"}, {"ORDEM", 1}, {"COR", "01"}, {"QTDE", 10}});
    other.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 10 WHERE COR = '01'");
    OpenOrders();
    hands_.Enter("EdtNumero", QString::fromStdString(number));
    hands_.GoTo("DBGrid6");
    hands_.Row({{"Cor", "01"}});
    return number;
  }
};

// --- the number ------------------------------------------------------------------------------------------------------

TEST_F(OrderRefusals, AnEmptyNumberIsTheNextOneAndTodayIsProposed) {
  const host::Screen& screen = OpenOrders();
  EXPECT_EQ(Focused(), "EdtNumero");
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "000001");
  EXPECT_EQ(hands_.Text(screen, "EdtData"), "10/03/2026");
  EXPECT_EQ(Focused(), "EdtMalharia");
}

TEST_F(OrderRefusals, AnUnknownNumberIsThatOfANewOrderAndAKnownOneLoadsIt) {
  const std::string number = OrderFromElsewhere(100);
  const host::Screen& screen = OpenOrders();
  hands_.Enter("EdtNumero", QStringLiteral("A77"));
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "A77");
  EXPECT_EQ(hands_.Text(screen, "EdtMalharia"), "");
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo"}), std::vector<std::string>());
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  hands_.Enter("EdtNumero", QString::fromStdString(number));
  EXPECT_EQ(hands_.Text(screen, "EdtMalharia"), "M00001");
  EXPECT_EQ(hands_.Text(screen, "LblMalharia"), "Malharia Aurora");
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo", "Cor", "Qtde"}), std::vector<std::string>{"F1; 01; 100,000"});
  EXPECT_EQ(hands_.Rows(screen, "GrdFios", {"Codigo", "Consumo"}), (std::vector<std::string>{"Y1; 60", "Y2; 40"}));
}

TEST_F(OrderRefusals, WithoutTheRightNoOrderIsBegun) {
  desktop_.GetMill().TakeRight("TfmCadLoteTec", "A");
  const host::Screen& screen = OpenOrders();
  Press(Qt::Key_Return);
  EXPECT_EQ(Focused(), "EdtNumero");
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "");
  TypeText(QStringLiteral("A77"));
  Press(Qt::Key_Return);
  EXPECT_EQ(Focused(), "EdtNumero");
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "");
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
}

// --- inputs ----------------------------------------------------------------------------------------------------------

// In each of them: the refusal, the keyboard stays with the text ready to be typed over, what is right is taken, and
// an empty one passes.
TEST_F(OrderRefusals, OfEachInput) {
  struct Case {
    const char* input;
    const char* wrong;
    const char* message;
    const char* right;
    const char* label;
    const char* described;
  };
  const Case cases[] = {
      {"EdtMalharia", "NADA", "Cliente não encontrado.", "M00001", "LblMalharia", "Malharia Aurora"},
      {"EdtMalharia", "M00002", "Malharia inativa ou bloqueada. Impossível continuar.", "M00001", "LblMalharia",
       "Malharia Aurora"},
      {"EdtMalharia", "M00003", "Malharia inativa ou bloqueada. Impossível continuar.", "M00001", "LblMalharia",
       "Malharia Aurora"},
      {"EdtPrazo", "31", "Prazo não encontrado.", "30", "LblPrazo", "30 dias"},
      {"EdtMaquina", "MQ9", "Máquina não encontrada.", "MQ1", "LblMaquina", "Circular 30\" 28"},
      {"EdtFluxo", "FL9", "Fluxo Inválido.", "FL1", "LblFluxo", "Malha crua"},
      {"EdtDeposito", "D9", "Depósito não encontrado.", "DF", "LblDeposito", "Depósito de malha"},
  };
  const host::Screen& screen = OpenOrders();
  Press(Qt::Key_Return);
  for (const Case& tried : cases) {
    SCOPED_TRACE(std::string(tried.input) + " " + tried.wrong);
    const auto& line = desktop_.WidgetOf<QLineEdit>(screen, tried.input);
    hands_.Fill(tried.input, QString::fromUtf8(tried.wrong));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab}) {
      Refused(QString::fromUtf8(tried.message), key);
      EXPECT_EQ(Focused(), tried.input);
      EXPECT_EQ(line.selectedText().toStdString(), tried.wrong);
    }
    // No other way out: neither the mouse, nor a button's letter, nor a function key.
    ExpectRefused(kTitle, QString::fromUtf8(tried.message), [&] { desktop_.ClickOn(screen, "EdtFicha"); });
    EXPECT_EQ(Focused(), tried.input);
    ExpectRefused(kTitle, QString::fromUtf8(tried.message), [] { Press(Qt::Key_G, Qt::AltModifier); });
    EXPECT_EQ(Focused(), tried.input);
    ExpectRefused(kTitle, QString::fromUtf8(tried.message), [] { Press(Qt::Key_F2); });
    EXPECT_EQ(Focused(), tried.input);
    EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "000001");

    TypeText(QString::fromUtf8(tried.right));
    EXPECT_EQ(hands_.Text(screen, tried.label), tried.described);
    Press(Qt::Key_Return);
    EXPECT_NE(Focused(), tried.input);
    hands_.Fill(tried.input, QString());
    EXPECT_EQ(hands_.Text(screen, tried.label), "");
    Press(Qt::Key_Return);
    EXPECT_NE(Focused(), tried.input);
  }
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {TECEL}"), "0");
}

TEST_F(OrderRefusals, EscPutsBackWhatStoodThere) {
  const host::Screen& screen = OpenOrders();
  Press(Qt::Key_Return);
  hands_.Enter("EdtMalharia", QStringLiteral("M00001"));
  hands_.Fill("EdtMalharia", QStringLiteral("M00003"));
  Press(Qt::Key_Escape);
  EXPECT_EQ(hands_.Text(screen, "EdtMalharia"), "M00001");
  EXPECT_EQ(hands_.Text(screen, "LblMalharia"), "Malharia Aurora");
  EXPECT_EQ(Focused(), "EdtMalharia");
  Press(Qt::Key_Return);
  EXPECT_NE(Focused(), "EdtMalharia");
}

TEST_F(OrderRefusals, WhatIsNoNumberOrDateIsSaidAndMayBeTypedAnew) {
  const host::Screen& screen = OpenOrders();
  Press(Qt::Key_Return);
  hands_.Fill("EdtData", QStringLiteral("31/02/2026"));
  desktop_.ExpectBox(QStringLiteral("Data"));
  Press(Qt::Key_Return);
  EXPECT_EQ(Focused(), "EdtData");
  TypeText(QStringLiteral("28/02/2026"));
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Text(screen, "EdtData"), "28/02/2026");
  hands_.Fill("EdtPonto", QStringLiteral("x"));
  desktop_.ExpectBox(QStringLiteral("Tam. Ponto"));
  Press(Qt::Key_Return);
  EXPECT_EQ(Focused(), "EdtPonto");
  TypeText(QStringLiteral("3,6"));
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Text(screen, "EdtPonto"), "3,600");
}

// --- cells -----------------------------------------------------------------------------------------------------------

TEST_F(OrderRefusals, OfTheCodeCell) {
  const host::Screen& screen = StartOrder();
  EXPECT_EQ(Focused(), "DBGrid6");
  hands_.Type("Codigo", QStringLiteral("NADA"));
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Up}) {
    Refused(QStringLiteral("Material não cadastrado."), key);
    EXPECT_EQ(Focused(), "DBGrid6");
    EXPECT_EQ(hands_.Grid().SelectedField(), "Codigo");
    TypeText(QStringLiteral("NADA"));
  }
  Press(Qt::Key_Escape);  // the text
  Press(Qt::Key_Escape);  // the row
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo"}), std::vector<std::string>());

  hands_.Type("Codigo", QStringLiteral("F9"));
  Refused(QStringLiteral("Material Inativo."));
  EXPECT_EQ(hands_.Grid().SelectedField(), "Codigo");
  desktop_.GetMill().Exec("DELETE FROM {CADCORTI} WHERE CODIGO = 'F2'");
  TypeText(QStringLiteral("F2"));
  Refused(QStringLiteral("Não é possível continuar.\nCadastre o custo da malha primeiro para continuar."));
  EXPECT_EQ(hands_.Grid().SelectedField(), "Codigo");
  EXPECT_EQ(hands_.Shown("Descricao"), "");

  TypeText(QStringLiteral("F1"));
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Shown("Descricao"), "Meia malha 30/1 PV");
  EXPECT_EQ(hands_.Shown("Custo"), "5,0000");
}

TEST_F(OrderRefusals, OfTheColourCell) {
  StartOrder();
  hands_.Type("Codigo", QStringLiteral("F1"));
  hands_.Type("Cor", QStringLiteral("03"));  // a colour that the fabric is not in
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Down}) {
    Refused(QStringLiteral("Cor não cadastrada."), key);
    EXPECT_EQ(Focused(), "DBGrid6");
    EXPECT_EQ(hands_.Grid().SelectedField(), "Cor");
    TypeText(QStringLiteral("03"));
  }
  // Leaving the grid leaves the cell.
  ExpectRefused(kTitle, QStringLiteral("Cor não cadastrada."), [] { Press(Qt::Key_Return, Qt::ControlModifier); });
  EXPECT_EQ(Focused(), "DBGrid6");
  TypeText(QStringLiteral("03"));
  ExpectRefused(kTitle, QStringLiteral("Cor não cadastrada."), [] { Press(Qt::Key_G, Qt::AltModifier); });
  EXPECT_EQ(Focused(), "DBGrid6");
  TypeText(QStringLiteral("02"));
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Shown("DescCor"), "Azul-marinho");
  EXPECT_EQ(hands_.Shown("Custo"), "6,5000");
  // An empty colour is refused as well.
  hands_.Type("Cor", QString());
  Refused(QStringLiteral("Cor não cadastrada."));
  EXPECT_EQ(hands_.Shown("Cor"), "02");
}

TEST_F(OrderRefusals, ARowLeftWithoutColourVanishes) {
  const host::Screen& screen = StartOrder();
  TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("100"));
  Press(Qt::Key_Down);
  hands_.Type("Codigo", QStringLiteral("F2"));
  Press(Qt::Key_Return);  // away from the code, not yet at the colour
  EXPECT_EQ(hands_.Grid().SelectedField(), "Descricao");
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo", "Cor"}), (std::vector<std::string>{"F1; 01", "F2; "}));
  Press(Qt::Key_Up);
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo", "Cor"}), std::vector<std::string>{"F1; 01"});
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
}

// The next row begins at its code, so that nobody is caught in an empty colour cell.
TEST_F(OrderRefusals, ANewRowBeginsAtItsFirstCell) {
  StartOrder();
  hands_.Type("Codigo", QStringLiteral("F1"));
  hands_.Type("Cor", QStringLiteral("01"));
  Press(Qt::Key_Down);
  EXPECT_EQ(hands_.Grid().SelectedField(), "Codigo");
  EXPECT_EQ(hands_.Grid().GetDataset().RecNo(), 2U);
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
}

TEST_F(OrderRefusals, TheKeyOfAWrittenOffItemStays) {
  OrderWithRoll();
  const QString said = QStringLiteral("Produto já possui quantidade baixada. Impossível Continuar.");
  hands_.Type("Qtde", QStringLiteral("120"));
  hands_.Type("Cor", QStringLiteral("02"));
  Refused(said);
  EXPECT_EQ(Focused(), "DBGrid6");
  EXPECT_EQ(hands_.Shown("Cor"), "01");
  EXPECT_EQ(hands_.Shown("Qtde"), "100,000");  // what was typed into the row goes with it
  hands_.Type("Codigo", QStringLiteral("F2"));
  Refused(said);
  EXPECT_EQ(hands_.Shown("Codigo"), "F1");
}

TEST_F(OrderRefusals, AWrittenOffItemIsNotDeleted) {
  const std::string number = OrderWithRoll();
  const QString said = QStringLiteral("Lote com baixas. Impossível excluir.");
  ExpectRefused(kTitle, said, [] { Press(Qt::Key_Delete, Qt::ControlModifier); });
  EXPECT_EQ(hands_.Rows(hands_.Screen(), "DBGrid6", {"Cor"}), (std::vector<std::string>{"01", "02"}));
  hands_.Row({{"Cor", "02"}});
  Press(Qt::Key_Delete, Qt::ControlModifier);
  EXPECT_EQ(hands_.Rows(hands_.Screen(), "DBGrid6", {"Cor"}), std::vector<std::string>{"01"});
  // Nor the order that it stands in.
  ExpectRefused(kTitle, said, [] { Press(Qt::Key_E, Qt::AltModifier); });
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {TECEL_ITEN} WHERE NUMERO = '" + number + "'"), "2");
}

// --- save and delete
// ---------------------------------------------------------------------------------------------------

TEST_F(OrderRefusals, OfASave) {
  const host::Screen& screen = StartOrder();
  TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("100"));
  desktop_.GetMill().Exec("DELETE FROM {CADCORTI} WHERE CODIGO = 'F1'");
  ExpectRefused(kTitle,
                QStringLiteral("Custo da malha não cadastrado para a malharia selecionada. Impossível continuar."),
                [] { Press(Qt::Key_G, Qt::AltModifier); });
  desktop_.GetMill().Exec("DELETE FROM {COMP_MATERIAL} WHERE MATERIAL = 'F1' AND COR = '01'");
  ExpectRefused(kTitle,
                QStringLiteral("Cor inválida na composição do material F1 cor 01.\nImpossível continuar a gravação."),
                [] { Press(Qt::Key_G, Qt::AltModifier); });
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "000001");
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo", "Qtde"}), std::vector<std::string>{"F1; 100,000"});
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {TECEL}"), "0");
}

TEST_F(OrderRefusals, DeletingAsksAndNoIsTheDefault) {
  const std::string number = OrderFromElsewhere(100);
  OpenOrders();
  hands_.Enter("EdtNumero", QString::fromStdString(number));
  const QString question = QStringLiteral("Deseja excluir totalmente a Ordem de Tecelagem?");
  for (const Reply reply : {Reply::kOk, Reply::kNo, Reply::kEscape}) {
    desktop_.ExpectBox(question, reply);
    Press(Qt::Key_E, Qt::AltModifier);
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {TECEL}"), "1");
  }
  for (const ShownBox& box : desktop_.GetBoxes().Take()) {
    EXPECT_EQ(box.title, kTitle);
    EXPECT_EQ(box.icon, host::Icon::kQuestion);
    EXPECT_EQ(box.default_button, "Não");
  }
  desktop_.ExpectBox(question, Reply::kYes);
  Press(Qt::Key_E, Qt::AltModifier);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {TECEL}"), "0");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {TECEL_ITEN}"), "0");
}

// "B" is set by others; here it locks the items.
TEST_F(OrderRefusals, ALockedOrderIsShownAndNotSaved) {
  const std::string number = OrderFromElsewhere(100);
  desktop_.GetMill().Exec("UPDATE {TECEL} SET SITUACAO = 'B'");
  const host::Screen& screen = OpenOrders();
  hands_.Enter("EdtNumero", QString::fromStdString(number));
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo", "Qtde"}), std::vector<std::string>{"F1; 100,000"});
  const host::Grid& items = *desktop_.GridOf(screen, "DBGrid6").GetGrid();
  EXPECT_FALSE(items.Enabled());
  hands_.Enter("EdtFicha", QStringLiteral("OUTRA"));
  EXPECT_THROW(hands_.GoTo("DBGrid6"), std::runtime_error);
  hands_.GoTo("EdtFicha");
  ExpectRefused(kTitle, QStringLiteral("Ordem de Tecelagem já impressa. Impossível Gravar."),
                [] { Press(Qt::Key_G, Qt::AltModifier); });
  EXPECT_EQ(Scalar("SELECT SITUACAO FROM {TECEL}"), "B");
  EXPECT_EQ(Scalar("SELECT FICHA FROM {TECEL}"), "");
}

}  // namespace
}  // namespace test
