// Loading an order, its grids, and what is done there by hand.
#include "host/errors.h"
#include "write_off_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

const Box kRemove = {"Baixa de Ordem de Tecelagem", "Deseja remover as reservas deste lote?", host::Icon::kQuestion};
const Box kGiveUp = {"Baixa de Ordem de Tecelagem",
                     "Este procedimento irá zerar o saldo da reserva desse item. Deseja continuar?",
                     host::Icon::kQuestion};
constexpr const char* kCleared = "BAIXA TOTAL DA RESERVA - USUARIO: ADMIN";

class LoadedOrder : public WriteOffMill {
 protected:
  host::Dataset& Items() { return mill_.Data(Screen(), "TbItens"); }
  host::Grid& ItemGrid() { return mill_.GridOf(Screen(), "TbItens"); }
  ActResult Tick(const char* flag) { return mill_.Set(Screen(), "TbItens", {{"Baixada", flag}}); }
  std::string Closed(std::string_view colour = "01") {
    return Value("SELECT BAIXADA FROM {TECEL_ITEN} WHERE COR = '" + std::string(colour) + "'").AsText();
  }
};

TEST_F(LoadedOrder, OpensMaximisedWithTodaysDate) {
  host::Screen& screen = mill_.Open("TfmMovBaiTec");
  EXPECT_TRUE(screen.Maximised());
  EXPECT_EQ(screen.Caption(), "Baixa de Ordem de Tecelagem");
  EXPECT_EQ(Text("EdtData"), "10/03/2026");
  EXPECT_EQ(&mill_.Open("TfmMovBaiTec"), &screen);
  EXPECT_EQ(mill_.Click(screen, "BtnFechar"), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().Find("fmMovBaiTec"), nullptr);
}

TEST_F(LoadedOrder, ShowsTheOrder) {
  Order(kOrder, {{"F1", "01", 100, "PV0001"}});
  mill_.Insert("TECELB",
               {{"NUMERO", kOrder}, {"CODIGO", "F1"}, {"COR", "01"}, {"ORDEM", 1}, {"QTDE", 20}, {"QTDE_R", 3}});
  mill_.Insert("TECELB",
               {{"NUMERO", kOrder}, {"CODIGO", "F1"}, {"COR", "01"}, {"ORDEM", 2}, {"QTDE", 20}, {"QTDE_R", 0}});
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 40");
  mill_.Open("TfmMovBaiTec");
  Type("EdtLote", kOrder);
  EXPECT_EQ(Text("EdtFornecedor"), "M00001");
  EXPECT_EQ(Text("LblFornecedor"), "Malharia Aurora");
  EXPECT_EQ(Text("EdtDeposito"), "DF");
  EXPECT_EQ(Text("LblDeposito"), "Depósito de malha");
  EXPECT_EQ(Text("EdtMaquina"), "MQ1");
  EXPECT_EQ(Text("EdtCodigo"), "F1");
  EXPECT_EQ(Text("LblCodigo"), "Meia malha 30/1 PV");
  EXPECT_EQ(Text("EdtCor"), "01");
  EXPECT_EQ(Text("EdtTara"), "0,30");
  ASSERT_EQ(Items().RecordCount(), 1u);
  EXPECT_EQ(Items()["Unidade"].AsText(), "KG");
  EXPECT_EQ(Items()["Pedido"].AsText(), "PV0001");
  EXPECT_EQ(Items()["Desc_Cor"].AsText(), "Branco");
  EXPECT_EQ(Items()["Qtde"].AsFloat(), 100);
  EXPECT_EQ(Items()["Qtde_B"].AsFloat(), 40);
  EXPECT_EQ(Items()["Baixada"].AsText(), "N");
  EXPECT_EQ(Items()["KgRolo"].AsFloat(), 22);
  EXPECT_EQ(Items()["Qtde_Rolo"].AsInteger(), 5);
  EXPECT_EQ(Items()["Qtde_Rolo_B"].AsInteger(), 4);  // a roll without piece count is one piece
  EXPECT_EQ(mill_.Data(Screen(), "TbRolos").RecordCount(), 2u);
  EXPECT_EQ(Boxes(), BoxList());
}

TEST_F(LoadedOrder, FromTheLookup) {
  ReservedOrder();
  mill_.Open("TfmMovBaiTec");
  mill_.Person().Pick("PqLote", kOrder);
  ASSERT_EQ(mill_.Desk().OpenLookup(dynamic_cast<host::TPesquisa&>(*Screen().FindComponent("PqLote"))),
            ActResult::kDone);
  EXPECT_EQ(Text("EdtLote"), kOrder);
  EXPECT_EQ(Text("EdtCodigo"), "F1");
}

TEST_F(LoadedOrder, AnUnknownOneEmptiesTheScreen) {
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  Type("EdtLote", "000009");
  EXPECT_EQ(Items().RecordCount(), 0u);
  EXPECT_EQ(mill_.Data(Screen(), "TbRolos").RecordCount(), 0u);
  EXPECT_EQ(Text("EdtFornecedor"), "");
  EXPECT_EQ(Text("LblFornecedor"), "");
  EXPECT_EQ(Text("EdtCodigo"), "");
  EXPECT_EQ(Text("EdtCor"), "");
}

TEST_F(LoadedOrder, UnitComesInCapitals) {
  mill_.Exec("UPDATE {MATERIAL} SET UNIDADE = 'mt' WHERE CODIGO = 'FM'");
  Order(kOrder, {{"FM", "01", 100, ""}});
  Load();
  EXPECT_EQ(Items()["Unidade"].AsText(), "MT");
}

TEST_F(LoadedOrder, MovingToAnItemBringsItsTareAClickDoesNot) {
  Order(kOrder, {{"F1", "01", 100, ""}, {"F2", "01", 50, ""}});
  Load();
  ASSERT_EQ(mill_.Desk().SelectRow(ItemGrid(), 2), ActResult::kDone);
  EXPECT_EQ(Text("EdtCodigo"), "F2");
  EXPECT_EQ(Text("LblCodigo"), "Moletom sem composição");
  EXPECT_EQ(Text("EdtTara"), "0,00");
  Type("EdtTara", "0,7");
  ASSERT_EQ(mill_.Desk().ClickRow(ItemGrid(), 2), ActResult::kDone);
  EXPECT_EQ(Text("EdtTara"), "0,70");
  ASSERT_EQ(mill_.Desk().ClickRow(ItemGrid(), 1), ActResult::kDone);
  EXPECT_EQ(Text("EdtCodigo"), "F1");
  EXPECT_EQ(Text("EdtTara"), "0,30");
}

TEST_F(LoadedOrder, ItemsAreNeitherAddedNorDeleted) {
  ReservedOrder();
  Load();
  EXPECT_EQ(mill_.Desk().DeleteRow(ItemGrid()), ActResult::kRefused);
  mill_.Desk().GridKey(ItemGrid(), host::Key::kDown);
  mill_.Desk().GridKey(ItemGrid(), host::Key::kUp);
  EXPECT_EQ(Items().RecordCount(), 1u);
  EXPECT_EQ(Text("EdtCodigo"), "F1");
  EXPECT_THROW(mill_.Set(Screen(), "TbItens", {{"Qtde", "5"}}), host::ActError);
}

TEST_F(LoadedOrder, EmployeeBringsNameAndShift) {
  ReservedOrder();
  Load();
  mill_.TakeStatements();
  Type("EdtFunc", "P2");
  EXPECT_EQ(mill_.TakeStatements("PESSOAL"),
            std::vector<std::string>{"SELECT NOME, TURNO FROM PESSOAL WHERE CODIGO = 'P2'"});
  EXPECT_EQ(Text("LblFunc"), "João Lima");
  EXPECT_EQ(Text("EdtTurno"), "3");
  Type("EdtTurno", "1");
  Type("EdtFunc", "");
  EXPECT_EQ(Text("LblFunc"), "");
  EXPECT_EQ(Text("EdtTurno"), "1");
  mill_.Person().Pick("PqFunc", "P1");
  ASSERT_EQ(mill_.Desk().OpenLookup(dynamic_cast<host::TPesquisa&>(*Screen().FindComponent("PqFunc"))),
            ActResult::kDone);
  EXPECT_EQ(Text("LblFunc"), "Ana Souza");
}

TEST_F(LoadedOrder, BarCodeFieldComesAndGoesWithItsTick) {
  ReservedOrder();
  host::Screen& screen = Load();
  auto& box = dynamic_cast<host::CheckBox&>(*screen.FindComponent("CbBarra"));
  auto& field = dynamic_cast<host::Edit&>(*screen.FindComponent("EdtBarra"));
  EXPECT_FALSE(field.Visible());
  ASSERT_EQ(mill_.Desk().Check(box, true), ActResult::kDone);
  EXPECT_TRUE(field.Visible());
  Type("EdtBarra", "123");
  ASSERT_EQ(mill_.Desk().Check(box, false), ActResult::kDone);
  EXPECT_FALSE(field.Visible());
  EXPECT_EQ(Text("EdtBarra"), "");
}

TEST_F(LoadedOrder, FieldsTakeWhatTheRollsRowHolds) {
  const std::vector<std::pair<const char*, std::size_t>> widths = {{"EdtLote", 6},    {"EdtNFRet", 6}, {"EdtNFCob", 6},
                                                                   {"EdtLocal", 100}, {"EdtTurno", 2}, {"EdtFunc", 5},
                                                                   {"EdtBarra", 30}};
  ReservedOrder();
  host::Screen& screen = Load();
  for (const auto& [name, width] : widths) {
    EXPECT_EQ(dynamic_cast<host::Edit&>(*screen.FindComponent(name)).MaxLength(), width) << name;
  }
}

// --- closing an item by hand -------------------------------------------------------------------------------------

TEST_F(LoadedOrder, LoadingClosesNothingAndAsksNothing) {
  ReservedOrder();
  mill_.Exec("UPDATE {TECEL_ITEN} SET BAIXADA = 'S'");
  mill_.TakeStatements();
  Load();
  EXPECT_TRUE(mill_.TakeStatements("UPDATE").empty());
  EXPECT_EQ(Items()["Baixada"].AsText(), "S");
  EXPECT_EQ(Boxes(), BoxList());
}

TEST_F(LoadedOrder, ClosingAnItemWithReservationsAsksAboutThem) {
  ReservedOrder();
  Load();
  mill_.TakeStatements();
  mill_.Person().Answer("remover as reservas", "no");
  ASSERT_EQ(Tick("S"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList{kRemove});
  const auto sent = mill_.TakeStatements();
  ASSERT_EQ(sent.size(), 2u);
  EXPECT_EQ(sent[0], "UPDATE TECEL_ITEN SET BAIXADA = 'S' WHERE CODIGO = 'F1' AND NUMERO = '000001'");
  EXPECT_EQ(sent[1],
            "SELECT COALESCE(QTDE,0) AS QTDE FROM MAT_RESERVA WHERE NUMERO = '000001' AND QTDE > 0 AND (TIPO = 'T' OR "
            "TIPO <> 'F' OR TIPO IS NULL)");
  // The closing stands whatever the answer.
  EXPECT_EQ(Closed(), "S");
  EXPECT_EQ(Left("Y1", "D1", "L1"), 60);
  EXPECT_EQ(Log(), std::vector<std::string>());
}

TEST_F(LoadedOrder, ClosingAnItemMayGiveTheOrdersReservationsUp) {
  ReservedOrder();
  Reserve("Y3", "D1", "L1", 5, kOrder, "F");
  mill_.Exec("UPDATE {MAT_RESERVA} SET QTDE_B = 7 WHERE CODIGO = 'Y1'");
  Load();
  mill_.Person().Answer("remover as reservas", "yes");
  mill_.TakeStatements();
  ASSERT_EQ(Tick("S"), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements("UPDATE MAT_RESERVA"),
            std::vector<std::string>{"UPDATE MAT_RESERVA SET QTDE = 0 WHERE NUMERO = '000001' AND QTDE > 0 AND (TIPO = "
                                     "'T' OR TIPO <> 'F' OR TIPO IS NULL)"});
  EXPECT_EQ(Closed(), "S");
  EXPECT_EQ(Left("Y1", "D1", "L1"), 0);
  EXPECT_EQ(Consumed("Y1", "D1", "L1"), 7);
  EXPECT_EQ(Left("Y2", "D1", "L1"), 0);
  EXPECT_EQ(Left("Y3", "D1", "L1"), 5);
  EXPECT_EQ(Log(), std::vector<std::string>{kCleared});
}

TEST_F(LoadedOrder, ClosingReachesEveryColourOfTheFabric) {
  Order(kOrder, {{"F1", "01", 100, ""}, {"F1", "02", 50, ""}});
  Load();
  ASSERT_EQ(Tick("S"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());  // nothing reserved, nothing asked
  EXPECT_EQ(Closed("01"), "S");
  EXPECT_EQ(Closed("02"), "S");
}

TEST_F(LoadedOrder, OpeningAnItemAgainAsksNothing) {
  ReservedOrder();
  mill_.Exec("UPDATE {TECEL_ITEN} SET BAIXADA = 'S'");
  Load();
  ASSERT_EQ(Tick("N"), ActResult::kDone);
  EXPECT_EQ(Closed(), "N");
  EXPECT_EQ(Boxes(), BoxList());
}

TEST_F(LoadedOrder, ClosingThatFailsTakesTheTickBack) {
  ReservedOrder();
  Load();
  for (int place = 1; place <= 2; ++place) {
    SCOPED_TRACE(place);
    mill_.FailStatement(place);
    EXPECT_EQ(Tick("S"), ActResult::kFailed);
    EXPECT_TRUE(mill_.StopFailing());
    EXPECT_EQ(Items()["Baixada"].AsText(), "N");
    EXPECT_EQ(Closed(), "N");
    ASSERT_EQ(Boxes().size(), 1u);
  }
}

TEST_F(LoadedOrder, ClosingThatCannotBeMadeDurableTakesTheTickBack) {
  ReservedOrder();
  mill_.Exec("UPDATE {MAT_RESERVA} SET QTDE = 0");
  Load();
  const auto heard = mill_.Db().BeforeStatement;
  mill_.Db().BeforeStatement = [heard](std::string_view sql) {
    heard(sql);
    if (sql == "COMMIT") throw host::DatabaseError("falha provocada", 0, "");
  };
  EXPECT_EQ(Tick("S"), ActResult::kFailed);
  mill_.Db().BeforeStatement = heard;
  EXPECT_EQ(Items()["Baixada"].AsText(), "N");
  EXPECT_EQ(Closed(), "N");
  EXPECT_EQ(Boxes().size(), 1u);
}

// The other station's save falls between two readings here; within one it can leave any mixture of both orders.
TEST_F(LoadedOrder, IsReadUntilTwoReadingsAgree) {
  ReservedOrder();
  mill_.Open("TfmMovBaiTec");
  const auto heard = mill_.Db().BeforeStatement;
  int readings = 0;
  mill_.Db().BeforeStatement = [&](std::string_view sql) {
    heard(sql);
    if (sql.find("AS QTDE_R_B") != std::string_view::npos && ++readings == 2) {
      mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE = 120");
    }
  };
  Load();
  mill_.Db().BeforeStatement = heard;
  EXPECT_EQ(readings, 3);
  EXPECT_EQ(Items().RecordCount(), 1u);
  EXPECT_EQ(Items()["Qtde"].AsFloat(), 120);
}

// An order that changes with every reading is shown as it was read last.
TEST_F(LoadedOrder, IsNotReadForEver) {
  ReservedOrder();
  mill_.Open("TfmMovBaiTec");
  const auto heard = mill_.Db().BeforeStatement;
  int readings = 0;
  mill_.Db().BeforeStatement = [&](std::string_view sql) {
    heard(sql);
    if (sql.find("AS QTDE_R_B") != std::string_view::npos) {
      mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE = " + std::to_string(100 + ++readings));
    }
  };
  Load();
  mill_.Db().BeforeStatement = heard;
  EXPECT_EQ(readings, 5);
  EXPECT_EQ(Items()["Qtde"].AsFloat(), 105);
}

TEST_F(LoadedOrder, PopUpGivesTheReservationsUp) {
  ReservedOrder();
  Reserve("Y3", "D1", "L1", 5, kOrder, "F");
  Order("000002", {{}});
  Reserve("Y1", "D2", "L1", 9, "000002");
  Load();
  mill_.Person().Answer("zerar o saldo", "no");
  ASSERT_EQ(mill_.Desk().PickMenu(Screen(), "Considerar Reserva como baixada"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList{kGiveUp});
  EXPECT_EQ(Left("Y1", "D1", "L1"), 60);
  EXPECT_EQ(Log(), std::vector<std::string>());

  mill_.Person().Answer("zerar o saldo", "yes");
  mill_.TakeStatements();
  ASSERT_EQ(mill_.Desk().PickMenu(Screen(), "Considerar Reserva como baixada"), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements("UPDATE"),
            std::vector<std::string>{"UPDATE MAT_RESERVA SET QTDE = 0 WHERE NUMERO = '000001' AND (TIPO = 'T' OR TIPO "
                                     "<> 'F' OR TIPO IS NULL)"});
  EXPECT_EQ(Left("Y1", "D1", "L1"), 0);
  EXPECT_EQ(Left("Y2", "D1", "L1"), 0);
  EXPECT_EQ(Left("Y3", "D1", "L1"), 5);
  EXPECT_EQ(Left("Y1", "D2", "L1", "000002"), 9);
  EXPECT_EQ(Closed(), "N");
  EXPECT_EQ(Log(), std::vector<std::string>{kCleared});
}

TEST_F(LoadedOrder, PopUpWithoutOrderAsksNothing) {
  mill_.Open("TfmMovBaiTec");
  ASSERT_EQ(mill_.Desk().PickMenu(Screen(), "Considerar Reserva como baixada"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
}

// --- aids for the quantity ---------------------------------------------------------------------------------------

TEST_F(LoadedOrder, DoubleClickProposesWhatIsLeftAndForgetsTheLastWeighing) {
  ReservedOrder();
  host::Screen& screen = Load();
  ASSERT_EQ(Roll("50"), ActResult::kDone);
  ASSERT_EQ(mill_.Desk().DblClick(mill_.GridOf(screen, "TbItens")), ActResult::kDone);
  EXPECT_EQ(Text("EdtQtde"), " 50,000");
  EXPECT_EQ(Confirm(), ActResult::kDone);  // the same weight as the roll before
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Rolls().size(), 2u);
  EXPECT_EQ(Closed(), "S");
}

TEST_F(LoadedOrder, ConversionMultipliesByTheUnitWeight) {
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 0.35 WHERE CODIGO = 'F1'");
  ReservedOrder();
  Load();
  mill_.Person().Answer("Informe a quantidade:", "25");
  ASSERT_EQ(mill_.Desk().PickMenu(Screen(), "Conversão de unidade"), ActResult::kDone);
  EXPECT_EQ(Text("EdtQtde"), " 8,750");
}

TEST_F(LoadedOrder, ConversionOfNothingDoesNothing) {
  ReservedOrder();
  Load();
  Type("EdtQtde", "7");
  for (const char* typed : {"abc", "0", "-3", ""}) {
    mill_.Person().Answer("Informe a quantidade:", typed);
    ASSERT_EQ(mill_.Desk().PickMenu(Screen(), "Conversão de unidade"), ActResult::kDone);
    EXPECT_EQ(Text("EdtQtde"), " 7,000") << typed;
  }
}

TEST_F(LoadedOrder, ConversionWithoutUnitWeightGivesZero) {
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 0 WHERE CODIGO = 'F1'");
  ReservedOrder();
  Load();
  Type("EdtQtde", "7");
  mill_.Person().Answer("Informe a quantidade:", "2,5");
  ASSERT_EQ(mill_.Desk().PickMenu(Screen(), "Conversão de unidade"), ActResult::kDone);
  EXPECT_EQ(Text("EdtQtde"), " 0,000");
}

}  // namespace
}  // namespace test
