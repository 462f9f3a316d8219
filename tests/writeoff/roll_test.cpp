// A confirmed roll: what it writes, what it leaves on the screen.
#include "write_off_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

class ConfirmedRoll : public WriteOffMill {};

TEST_F(ConfirmedRoll, WritesTheWholeRoadOfARoll) {
  ReservedOrder();
  Load();
  Type("EdtNFRet", "NR1");
  Type("EdtNFCob", "NC1");
  Type("EdtLocal", "Rua 5");
  Type("EdtFunc", "P1");
  Type("EdtPecas", "1");
  Type("EdtTara", "0,3");
  ASSERT_EQ(Roll("20,3"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());

  const auto rolls = Rolls();
  ASSERT_EQ(rolls.size(), 1u);
  const Row& roll = rolls.front();
  EXPECT_EQ(roll.at("CODIGO"), host::Value("F1"));
  EXPECT_EQ(roll.at("COR"), host::Value("01"));
  EXPECT_EQ(roll.at("ORDEM").AsInteger(), 1);
  EXPECT_EQ(roll.at("QTDE"), host::Value(20.0));
  EXPECT_EQ(roll.at("QTDE_R"), host::Value(1.0));
  EXPECT_EQ(roll.at("DT_LAN").AsText(), "10/03/2026");
  EXPECT_EQ(roll.at("NF_RET"), host::Value("NR1"));
  EXPECT_EQ(roll.at("NF_COB"), host::Value("NC1"));
  EXPECT_EQ(roll.at("DEPOSITO"), host::Value("DF"));
  EXPECT_EQ(roll.at("MAQUINA"), host::Value("MQ1"));
  EXPECT_EQ(roll.at("FUNCIONARIO"), host::Value("P1"));
  EXPECT_EQ(roll.at("TURNO"), host::Value("1"));
  EXPECT_EQ(roll.at("LOTE"), host::Value("0000011"));
  EXPECT_EQ(roll.at("LOCAL"), host::Value("Rua 5"));
  EXPECT_TRUE(roll.at("PAGO").IsNull());

  EXPECT_EQ(Stock("Y1", "D1", "L1"), 88);
  EXPECT_EQ(Stock("Y2", "D1", "L1"), 72);
  EXPECT_EQ(Stock("F1", "DF", "0000011"), 20);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 48);
  EXPECT_EQ(Consumed("Y1", "D1", "L1"), 12);
  EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 20);
  EXPECT_EQ(Value("SELECT BAIXADA FROM {TECEL_ITEN}"), host::Value("N"));
  EXPECT_EQ(Log(), std::vector<std::string>{"BAIXA DE LOTE NR.: 000001 CODIGO: F1 QUANT: 20"});
  ExpectBooksBalance();
}

TEST_F(ConfirmedRoll, ConsumptionNamesTheOrderTwiceAndTheFabric) {
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  const auto taken = Consumption();
  ASSERT_EQ(taken.size(), 2u);
  for (const Row& row : taken) {
    EXPECT_EQ(row.at("NUMERO"), host::Value("000001"));
    EXPECT_EQ(row.at("DOCTO"), host::Value("000001"));
    EXPECT_EQ(row.at("MATERIAL"), host::Value("F1"));
    EXPECT_EQ(row.at("ORDEM").AsInteger(), 1);
    EXPECT_EQ(row.at("COR"), host::Value("CR"));
    EXPECT_EQ(row.at("DEPOSITO"), host::Value("D1"));
    EXPECT_EQ(row.at("LOTE"), host::Value("L1"));
  }
  EXPECT_EQ(taken[0].at("QTDE"), host::Value(6.0));
  EXPECT_EQ(taken[1].at("QTDE"), host::Value(4.0));
}

TEST_F(ConfirmedRoll, MovementsCarryTheScreen) {
  ReservedOrder();
  Load();
  Type("EdtLocal", "Rua 5");
  Type("EdtFunc", "P2");
  Type("EdtData", "09/03/2026");
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  const auto moves = mill_.Rows("SELECT * FROM {MAT_MOV} WHERE TIPO_DOC = 'BT' ORDER BY ID");
  ASSERT_EQ(moves.size(), 3u);
  for (const Row& move : moves) {
    EXPECT_EQ(move.at("DOCUMENTO"), host::Value("000001"));
    EXPECT_EQ(move.at("CLIENTE"), host::Value("M00001"));
    EXPECT_EQ(move.at("MAQUINA"), host::Value("MQ1"));
    EXPECT_EQ(move.at("FUNCIONARIO"), host::Value("P2"));
    EXPECT_EQ(move.at("DATA").AsText(), "09/03/2026");
    EXPECT_EQ(move.at("USUARIO"), host::Value("ADMIN"));
    EXPECT_EQ(move.at("LOCAL"), host::Value("Rua 5"));
    EXPECT_EQ(move.at("BAIXADO"), host::Value("0"));
    EXPECT_EQ(move.at("ATIVO"), host::Value("1"));
    EXPECT_EQ(move.at("COMPLEMENTO").AsText(), "");
  }
  EXPECT_EQ(moves[0].at("SAIDA"), host::Value("S"));
  EXPECT_EQ(moves[0].at("PRECO"), host::Value(20.0));
  EXPECT_EQ(moves[0].at("CUSTO"), host::Value(20.0));
  EXPECT_EQ(moves[0].at("TIPO_MOV"), moves[1].at("TIPO_MOV"));
  EXPECT_EQ(moves[2].at("SAIDA"), host::Value("N"));
  EXPECT_NE(moves[2].at("TIPO_MOV"), moves[0].at("TIPO_MOV"));
  // An issue leaves the place of the yarn alone; the new lot of fabric gets the one typed.
  EXPECT_EQ(Value("SELECT LOCAL FROM {MAT_ITEN} WHERE CODIGO = 'Y1' AND LOTE = 'L1' AND DEPOSITO = 'D1'"),
            host::Value("A1"));
  EXPECT_EQ(Value("SELECT LOCAL FROM {MAT_ITEN} WHERE CODIGO = 'F1' AND LOTE = '0000011'"), host::Value("Rua 5"));
}

TEST_F(ConfirmedRoll, IsOneDurableWrite) {
  ReservedOrder();
  Load();
  Type("EdtQtde", "10");
  const auto before = mill_.Db().Stats().commits;
  ASSERT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(mill_.Db().Stats().commits, before + 1);
}

TEST_F(ConfirmedRoll, SendsTheStatementsOfARoll) {
  ReservedOrder();
  Load();
  Type("EdtTurno", "3");
  Type("EdtQtde", "10");
  mill_.TakeStatements();
  ASSERT_EQ(Confirm(), ActResult::kDone);
  const auto sent = mill_.TakeStatements();
  const auto expect = [&](std::string_view text) { EXPECT_EQ(std::count(sent.begin(), sent.end(), text), 1) << text; };
  expect("SELECT CODIGO FROM TECEL_ITEN WHERE NUMERO = '000001'");
  expect(
      "SELECT CODIGO, DESCRICAO, COR, (QTDE_RESERVADA / (QTDE_ORDEM * PESO_MALHA)) * 100.00 AS PERC, "
      "((QTDE_RESERVADA / (QTDE_ORDEM * PESO_MALHA))) * 10 AS QTDE FROM ( SELECT MAT_RESERVA.CODIGO, "
      "MATERIAL.DESCRICAO, MAT_RESERVA.COR, SUM(MAT_RESERVA.QTDE) AS QTDE_RESERVADA, (TECEL_ITEN.QTDE - "
      "TECEL_ITEN.QTDE_B) AS QTDE_ORDEM, CASE WHEN MALHA.UNIDADE = 'MT' THEN MALHA.PESO ELSE 1 END AS PESO_MALHA FROM "
      "MAT_RESERVA MAT_RESERVA INNER JOIN TECEL_ITEN TECEL_ITEN ON (TECEL_ITEN.NUMERO = MAT_RESERVA.NUMERO) LEFT JOIN "
      "MATERIAL MATERIAL ON (MAT_RESERVA.CODIGO = MATERIAL.CODIGO) LEFT JOIN MATERIAL MALHA ON (MALHA.CODIGO = "
      "TECEL_ITEN.CODIGO) WHERE MAT_RESERVA.NUMERO = '000001' AND MAT_RESERVA.QTDE > 0 AND (MAT_RESERVA.TIPO = 'T' OR "
      "MAT_RESERVA.TIPO <> 'F' OR MAT_RESERVA.TIPO IS NULL) GROUP BY MAT_RESERVA.CODIGO, MATERIAL.DESCRICAO, "
      "MAT_RESERVA.COR, (TECEL_ITEN.QTDE - TECEL_ITEN.QTDE_B), CASE WHEN MALHA.UNIDADE = 'MT' THEN MALHA.PESO ELSE 1 "
      "END ) WHERE ((QTDE_RESERVADA / (QTDE_ORDEM * PESO_MALHA))) * 10 > 0");
  expect(
      "SELECT MAT_ITEN.CODIGO, MATERIAL.DESCRICAO, MAT_ITEN.COR, DEPOSITO.DESCRICAO AS DESCDEP, MAT_ITEN.DEPOSITO, "
      "MAT_ITEN.LOTE, MAT_ITEN.QTDE, MAT_ITEN.PRECO_MED, MAT_ITEN.LOCAL, MATERIAL.CUSTO_IMP AS CUSTO, (SELECT "
      "SUM(QTDE) AS QTDE FROM MAT_RESERVA WHERE NUMERO <> '000001' AND CODIGO = MAT_ITEN.CODIGO AND COR = MAT_ITEN.COR "
      "AND DEPOSITO = MAT_ITEN.DEPOSITO AND LOTE = MAT_ITEN.LOTE) AS RESERVADAS FROM MAT_ITEN MAT_ITEN LEFT JOIN "
      "MATERIAL MATERIAL ON (MATERIAL.CODIGO = MAT_ITEN.CODIGO) INNER JOIN DEPOSITO DEPOSITO ON (MAT_ITEN.DEPOSITO = "
      "DEPOSITO.CODIGO) WHERE MAT_ITEN.CODIGO = 'Y1' AND MAT_ITEN.COR = 'CR' AND MAT_ITEN.QTDE > 0");
  expect("SELECT MAX(ORDEM) ORDEM FROM TECELB WHERE NUMERO = '000001'");
  expect(
      "INSERT INTO BAIXA_FIO (CODIGO, DOCTO, NUMERO, QTDE, LOTE, COR, DEPOSITO, ORDEM, MATERIAL) VALUES ('Y1', "
      "'000001', '000001', 6, 'L1', 'CR', 'D1', 1, 'F1')");
  expect(
      "UPDATE MAT_RESERVA SET QTDE = QTDE - 6 ,QTDE_B = QTDE_B + 6 WHERE NUMERO = '000001' AND CODIGO = 'Y1' AND COR = "
      "'CR' AND DEPOSITO = 'D1' AND LOTE = 'L1' AND (TIPO = 'T' OR TIPO <> 'F' OR TIPO IS NULL)");
  expect(
      "UPDATE MAT_RESERVA SET QTDE = 0 WHERE NUMERO = '000001' AND CODIGO = 'Y1' AND COR = 'CR' AND DEPOSITO = 'D1' "
      "AND LOTE = 'L1' AND (TIPO = 'T' OR TIPO <> 'F' OR TIPO IS NULL) AND QTDE < 0");
  expect("SELECT CUSTO FROM CADCORTI WHERE CODIGO = 'F1' AND CODCLI = 'M00001' ORDER BY TIPO, COR");
  expect("UPDATE MATERIAL SET PRECO = 28.54 ,CUSTO_IMP = 6 WHERE CODIGO = 'F1'");
  expect("UPDATE TECEL_ITEN SET QTDE_B = QTDE_B + 10 WHERE NUMERO = '000001' AND CODIGO = 'F1' AND COR = '01'");
  expect(
      "SELECT T.TURNO, T.NOTURNO, TH.SAIDA, TH.DIA, CURRENT_DATE FROM TURNO T INNER JOIN TURNO_HORARIOS TH ON (T.TURNO "
      "= TH.TURNO) WHERE T.TURNO = '3' AND UDF_WEEKDAY(CURRENT_DATE)+1 = TH.DIA AND TH.SAIDA < CURRENT_TIME AND "
      "T.NOTURNO = 'S'");
  EXPECT_EQ(std::count_if(sent.begin(), sent.end(),
                          [](const std::string& text) {
                            return text.starts_with(
                                "INSERT INTO TECELB (NUMERO, CODIGO, ORDEM, DT_LAN, QTDE, NF_RET, DEPOSITO, MAQUINA, "
                                "FUNCIONARIO, COR, TURNO, NF_COB, QTDE_R, LOTE, LOCAL, PEDIDO) VALUES (");
                          }),
            1);
}

TEST_F(ConfirmedRoll, ClearsTheWeighingAndGoesOnAtTheQuantity) {
  ReservedOrder();
  Load();
  Type("EdtTara", "0,5");
  Type("EdtPecas", "2");
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Text("EdtQtde"), " 0,000");
  EXPECT_EQ(Text("EdtPecas"), "0");
  EXPECT_EQ(Text("EdtTara"), "0,50");
  EXPECT_EQ(Focused(), "EdtQtde");
}

TEST_F(ConfirmedRoll, GoesOnAtTheBarCodeWhenThatIsTicked) {
  ReservedOrder();
  host::Screen& screen = Load();
  auto& box = dynamic_cast<host::CheckBox&>(*screen.FindComponent("CbBarra"));
  ASSERT_EQ(mill_.Desk().Check(box, true), ActResult::kDone);
  Type("EdtBarra", "ABC");
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Text("EdtBarra"), "");
  EXPECT_EQ(Focused(), "EdtBarra");
}

TEST_F(ConfirmedRoll, ReloadKeepsItemDepositAndMachine) {
  Order(kOrder, {{"F1", "01", 100, ""}, {"F1", "02", 50, ""}});
  Reserve("Y1", "D1", "L1", 60);
  Reserve("Y2", "D1", "L1", 40);
  host::Screen& screen = Load();
  ASSERT_EQ(mill_.Desk().SelectRow(mill_.GridOf(screen, "TbItens"), 2), ActResult::kDone);
  Type("EdtDeposito", "D2");
  Type("EdtMaquina", "MQ2");
  Type("EdtTara", "0,1");
  ASSERT_EQ(Roll("10,1"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Text("EdtCor"), "02");
  EXPECT_EQ(mill_.Data(screen, "TbItens")["Cor"].AsText(), "02");
  EXPECT_EQ(mill_.Data(screen, "TbItens")["Qtde_B"].AsFloat(), 10);
  EXPECT_EQ(Text("EdtDeposito"), "D2");
  EXPECT_EQ(Text("EdtMaquina"), "MQ2");
  EXPECT_EQ(Text("EdtTara"), "0,10");
  ExpectBooksBalance();
}

TEST_F(ConfirmedRoll, ClosesTheItemWhenItsQuantityIsReachedExactly) {
  // In binary arithmetic 15.2 + 16.9 + 17.9 stays below 50.
  Order(kOrder, {{"F1", "01", 50, ""}});
  Reserve("Y1", "D1", "L1", 30);
  Reserve("Y2", "D1", "L1", 20);
  Load();
  ASSERT_EQ(Roll("15,2"), ActResult::kDone);
  ASSERT_EQ(Roll("16,9"), ActResult::kDone);
  EXPECT_EQ(Value("SELECT BAIXADA FROM {TECEL_ITEN}"), host::Value("N"));
  ASSERT_EQ(Roll("17,9"), ActResult::kDone);
  EXPECT_EQ(Value("SELECT BAIXADA FROM {TECEL_ITEN}"), host::Value("S"));
  EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 50);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 0);
  EXPECT_EQ(Left("Y2", "D1", "L1"), 0);
  EXPECT_EQ(Boxes(), BoxList());
  ExpectBooksBalance();
}

TEST_F(ConfirmedRoll, ClosesByWhatIsStoredAndNotByTheGrid) {
  mill_.SetParameter("MAL", 70, "N");
  Order(kOrder, {{"F1", "01", 30, ""}});
  Load();
  // Another station has written a roll of 20 since the grid was loaded.
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 20");
  AtYarnScreen([this](host::Screen& yarn) { TakeAll(yarn); });
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Value("SELECT BAIXADA FROM {TECEL_ITEN}"), host::Value("S"));
}

TEST_F(ConfirmedRoll, OnlyEverWritesClosed) {
  ReservedOrder();
  mill_.Exec("UPDATE {TECEL_ITEN} SET BAIXADA = 'S'");
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Value("SELECT BAIXADA FROM {TECEL_ITEN}"), host::Value("S"));
}

TEST_F(ConfirmedRoll, RaisesTheItemOfItsSalesOrder) {
  Order(kOrder, {{"F1", "01", 100, "PV0001"}});
  Reserve("Y1", "D1", "L1", 60);
  Reserve("Y2", "D1", "L1", 40);
  Load();
  Type("EdtQtde", "10");
  mill_.TakeStatements();
  ASSERT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements("UPDATE TECEL_ITEN"),
            std::vector<std::string>{"UPDATE TECEL_ITEN SET QTDE_B = QTDE_B + 10 WHERE NUMERO = '000001' AND CODIGO = "
                                     "'F1' AND COR = '01' AND PEDIDO = 'PV0001'"});
  EXPECT_EQ(Rolls().front().at("PEDIDO"), host::Value("PV0001"));
}

TEST_F(ConfirmedRoll, OfAnItemThatWasTakenOutMeanwhileIsNotWritten) {
  ReservedOrder();
  Load();
  mill_.Exec("DELETE FROM {TECEL_ITEN}");
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList{Refusal(
                         "Erro na Gravação da Baixa\nO item F1 cor 01 foi alterado por outro usuário. Carregue a ordem "
                         "novamente.")});
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 60);
  ExpectBooksBalance();
}

TEST_F(ConfirmedRoll, NumbersCountWithinTheOrder) {
  ReservedOrder();
  Order("000002", {{}});
  Reserve("Y1", "D1", "L2", 30, "000002");
  Reserve("Y2", "D2", "L3", 20, "000002");
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  ASSERT_EQ(Roll("11"), ActResult::kDone);
  Load("000002");
  ASSERT_EQ(Roll("12"), ActResult::kDone);
  EXPECT_EQ(Rolls().back().at("ORDEM").AsInteger(), 2);
  EXPECT_EQ(Rolls("000002").back().at("ORDEM").AsInteger(), 1);
  ExpectBooksBalance();
}

TEST_F(ConfirmedRoll, ShowsInTheRollGridNewestFirst) {
  ReservedOrder();
  host::Screen& screen = Load();
  Type("EdtFunc", "P2");
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  ASSERT_EQ(Roll("11"), ActResult::kDone);
  host::Dataset& rolls = mill_.Data(screen, "TbRolos");
  ASSERT_EQ(rolls.RecordCount(), 2u);
  EXPECT_EQ(rolls["ORDEM"].AsInteger(), 2);
  EXPECT_EQ(rolls["DESCRICAO"].AsText(), "Meia malha 30/1 PV");
  EXPECT_EQ(rolls["NOME"].AsText(), "João Lima");
  EXPECT_EQ(rolls["DESC_MAQUINA"].AsText(), "Circular 30\" 28");
  EXPECT_EQ(rolls["FICHA"].AsText(), "FICHA 1");
  std::vector<std::string> captions;
  for (const auto& column : mill_.GridOf(screen, "TbRolos").Columns()) captions.push_back(column.caption);
  EXPECT_EQ(captions, (std::vector<std::string>{"Ord.", "Data", "Codigo", "Descrição do Material", "Cor", "Qtde",
                                                "Qtde_Rolo", "Nota Retorno", "Nota Cobrança", "Deposito", "Turno",
                                                "Lote", "Local", "Responsável", "Pedido", "Máquina", "Desc. Máquina"}));
}

TEST_F(ConfirmedRoll, QuantityHasThreeDecimalsAndPiecesOne) {
  ReservedOrder();
  Load();
  Type("EdtPecas", "1,26");
  ASSERT_EQ(Roll("10,1236"), ActResult::kDone);
  ASSERT_EQ(Rolls().size(), 1u);
  EXPECT_EQ(Rolls().front().at("QTDE"), host::Value(10.124));
  EXPECT_EQ(Rolls().front().at("QTDE_R"), host::Value(1.3));
  Type("EdtQtde", "0,0004");
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(Rolls().size(), 1u);
  ExpectBooksBalance();
}

TEST_F(ConfirmedRoll, SendsFewStatements) {
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("9"), ActResult::kDone);
  Type("EdtQtde", "10");
  const auto before = mill_.Db().Stats().statements;
  ASSERT_EQ(Confirm(), ActResult::kDone);
  // Two yarns; checks, savepoints and the reload included.
  EXPECT_LE(mill_.Db().Stats().statements - before, 45u);
}

}  // namespace
}  // namespace test
