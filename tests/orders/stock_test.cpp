// The stock lots of the yarns, and what the person sees of them.
#include <algorithm>

#include "order_mill.h"

namespace test {
namespace {

constexpr const char* kKind = " AND (TIPO = 'T' OR TIPO <> 'F' OR TIPO IS NULL)";

class Stock : public OrderTest {
 protected:
  Lines Lots(const Lines& fields = {"Codigo", "Lote", "Deposito"}) {
    Lines rows = Shown("TbEstoque", fields);
    std::sort(rows.begin(), rows.end());
    return rows;
  }

  void Reserve(const char* order, const char* lot, double quantity, double consumed, const host::Value& kind) {
    mill_.Insert("MAT_RESERVA", {{"NUMERO", order},
                                 {"CODIGO", "Y1"},
                                 {"COR", "CR"},
                                 {"DEPOSITO", "D1"},
                                 {"LOTE", lot},
                                 {"QTDE", quantity},
                                 {"QTDE_B", consumed},
                                 {"OBS", "nota"},
                                 {"TIPO", kind}});
  }

  void Lot(const char* lot, double quantity) {
    mill_.Insert("MAT_ITEN", {{"CODIGO", "Y1"}, {"COR", "CR"}, {"DEPOSITO", "D1"}, {"LOTE", lot}, {"QTDE", quantity}});
  }
};

TEST_F(Stock, TheStatements) {
  const std::string number = SavedOrder({{"F3", "01", "100"}});
  Load(number);
  const Lines sent = mill_.TakeStatements();
  EXPECT_NE(
      std::find(
          sent.begin(), sent.end(),
          std::string("SELECT MAT_ITEN.CODIGO, MAT_ITEN.COR, MAT_ITEN.LOTE, MAT_ITEN.DEPOSITO, MAT_ITEN.QTDE, "
                      "DEPOSITO.DESCRICAO AS DESC_DEP, MAT_RESERVA.QTDE AS QTDE_RES, FORN.NOME, MAT_RESERVA.OBS, "
                      "MAT_ITEN.LOCAL, MAT_RESERVA.QTDE_B, MAT_RESERVA.QTDE AS SALDO, MAT_LOTE.PARTIDA, "
                      "MAT_LOTE.SEQUENCIA, MAT_LOTE.TONALIDADE, MAT_ITEN.LARGURA FROM MAT_ITEN MAT_ITEN LEFT JOIN "
                      "DEPOSITO DEPOSITO ON (MAT_ITEN.DEPOSITO = DEPOSITO.CODIGO) LEFT JOIN MATERIAL MATERIAL ON "
                      "(MATERIAL.CODIGO = MAT_ITEN.CODIGO) LEFT JOIN ENTIDADE FORN ON (MATERIAL.CODCLI = FORN.CODCLI) "
                      "LEFT JOIN MAT_RESERVA MAT_RESERVA ON (MAT_RESERVA.NUMERO = '000001' AND MAT_RESERVA.CODIGO = "
                      "MAT_ITEN.CODIGO AND MAT_RESERVA.COR = MAT_ITEN.COR AND MAT_RESERVA.DEPOSITO = MAT_ITEN.DEPOSITO "
                      "AND MAT_RESERVA.LOTE = MAT_ITEN.LOTE)") +
              kKind +
              " LEFT JOIN MAT_LOTE MAT_LOTE ON (MAT_LOTE.CODIGO = MAT_ITEN.CODIGO AND MAT_LOTE.COR = "
              "MAT_ITEN.COR AND MAT_LOTE.LOTE = MAT_ITEN.LOTE) WHERE MAT_ITEN.CODIGO = 'Y1' AND MAT_ITEN.COR = "
              "'CR' AND (MAT_ITEN.QTDE > 0.01 OR (MAT_RESERVA.QTDE + MAT_RESERVA.QTDE_B) > 0)"),
      sent.end());
  EXPECT_NE(std::find(sent.begin(), sent.end(),
                      std::string("SELECT SUM(QTDE) AS QTDE FROM MAT_RESERVA WHERE NUMERO <> '000001' AND CODIGO = "
                                  "'Y1' AND COR = 'CR' AND DEPOSITO = 'D1' AND LOTE = 'L2'") +
                          kKind),
            sent.end());
  EXPECT_NE(std::find(sent.begin(), sent.end(),
                      "SELECT ENTIDADE.NOME, NF.DT_ENTRADA FROM NF_ENTRA_ITEN NFI LEFT JOIN NOTA_ENTRA NF ON "
                      "(NF.NOTAFISCAL = NFI.NUMERO AND NF.CREDOR = NFI.CODCRE AND NF.SERIE = NFI.SERIE) LEFT JOIN "
                      "ENTIDADE ENTIDADE ON (ENTIDADE.CODCLI = NFI.CODCRE) WHERE NFI.CODIGO = 'Y1' AND NFI.LOTE = "
                      "'L2' ORDER BY NF.DT_ENTRADA DESC"),
            sent.end());
}

TEST_F(Stock, AllColumnsOfALot) {
  mill_.Exec("UPDATE {MATERIAL} SET CODCLI = 'F0001' WHERE CODIGO = 'Y1'");
  mill_.Exec("UPDATE {MAT_ITEN} SET LARGURA = 0.5 WHERE CODIGO = 'Y1' AND LOTE = 'L2'");
  mill_.Insert("MAT_LOTE", {{"CODIGO", "Y1"},
                            {"COR", "CR"},
                            {"LOTE", "L2"},
                            {"PARTIDA", "P9"},
                            {"SEQUENCIA", "007"},
                            {"TONALIDADE", "CLARO"}});
  const std::string number = SavedOrder({{"F3", "01", "100"}});
  Reserve("000001", "L2", 12, 3, "T");
  Reserve("000077", "L2", 9, 0, host::Value());
  Load(number);
  Stand("TbEstoque", {{"Lote", "L2"}});
  Lines row;
  for (const char* name : {"Sel", "Lote", "Deposito", "Desc_Dep", "Qtde", "Qtde_Res", "Qtde_Reservado", "Qtde_B",
                           "Saldo_Reserva", "Fornecedor", "Fornecedor_NF", "Local", "Obs", "Partida", "Sequencia",
                           "Tonalidade", "Largura", "Codigo", "Cor"}) {
    row.push_back(Screen().TbEstoque[name].AsText());
  }
  EXPECT_EQ(row, (Lines{"S", "L2", "D1", "Depósito de fios", "50", "12", "9", "3", "15", "Fiação Serra", "", "A1",
                        "nota", "P9", "007", "CLARO", "0.5", "Y1", "CR"}));
  Stand("TbEstoque", {{"Lote", "L1"}, {"Deposito", "D2"}});
  EXPECT_EQ(Screen().TbEstoque["Sel"].AsText(), "N");
  EXPECT_EQ(Screen().TbEstoque["Saldo_Reserva"].AsFloat(), 0);
}

TEST_F(Stock, LotsThatAreEmptyShowOnlyWithAReservation) {
  Lot("E1", 0.01);
  Lot("E2", 0.010001);
  Lot("E3", 0);
  Lot("E4", 0);
  Lot("E5", 0);
  const std::string number = SavedOrder({{"F3", "01", "100"}});
  Reserve("000001", "E3", 1, 0, "T");
  Reserve("000001", "E4", 0, 2, "T");
  Reserve("000099", "E5", 5, 0, "T");
  Load(number);
  EXPECT_EQ(Lots(),
            (Lines{"Y1 | E2 | D1", "Y1 | E3 | D1", "Y1 | E4 | D1", "Y1 | L1 | D1", "Y1 | L1 | D2", "Y1 | L2 | D1"}));
}

TEST_F(Stock, ReservationsOfKindFAreNotSeen) {
  Lot("E1", 0);
  const std::string number = SavedOrder({{"F3", "01", "100"}});
  Reserve("000001", "E1", 5, 0, "F");
  Reserve("000001", "L1", 5, 0, "F");
  Reserve("000099", "L1", 7, 0, "F");
  Reserve("000099", "L2", 7, 0, "X");
  Load(number);
  EXPECT_EQ(Lots({"Lote", "Deposito", "Sel", "Qtde_Res", "Qtde_Reservado"}),
            (Lines{"L1 | D1 | N |  | 0", "L1 | D2 | N |  | 0", "L2 | D1 | N |  | 7"}));
}

TEST_F(Stock, FBesideTGivesOneRow) {
  const std::string number = SavedOrder({{"F3", "01", "100"}});
  Reserve("000001", "L1", 5, 0, "F");
  Reserve("000001", "L1", 6, 0, "T");
  Load(number);
  EXPECT_EQ(Lots({"Lote", "Deposito", "Qtde_Res"}), (Lines{"L1 | D1 | 6", "L1 | D2 | ", "L2 | D1 | "}));
}

TEST_F(Stock, TwoReservationsOfOneLotGiveOneRow) {
  const std::string number = SavedOrder({{"F3", "01", "100"}});
  Reserve("000001", "L1", 6, 0, "T");
  Reserve("000001", "L1", 6, 0, host::Value());
  Load(number);
  EXPECT_EQ(Lots({"Lote", "Deposito", "Qtde_Res"}), (Lines{"L1 | D1 | 6", "L1 | D2 | ", "L2 | D1 | "}));
}

TEST_F(Stock, AYarnThatStandsTwiceShowsItsLotsOnce) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET LFA = 2 WHERE MATERIAL = 'F3' AND CODIGO = 'Y1'");
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F3", "01", "100"}});
  Load(number);
  EXPECT_EQ(Shown("TbFios", {"Codigo"}), (Lines{"Y1", "Y1", "Y2"}));
  EXPECT_EQ(mill_.TakeStatements("QTDE_RES").size(), 2u);
  EXPECT_EQ(Lots(), (Lines{"Y1 | L1 | D1", "Y1 | L1 | D2", "Y1 | L2 | D1"}));
}

TEST_F(Stock, TheLastEntryNoteNamesTheSupplier) {
  const auto note = [&](const char* number, const char* partner, const char* day) {
    mill_.Insert("NOTA_ENTRA", {{"NOTAFISCAL", number},
                                {"CREDOR", partner},
                                {"SERIE", "1"},
                                {"DT_ENTRADA", host::Date::FromIso(day).value()}});
    mill_.Insert("NF_ENTRA_ITEN", {{"NUMERO", number},
                                   {"CODCRE", partner},
                                   {"SERIE", "1"},
                                   {"ITEM", 1},
                                   {"CODIGO", "Y1"},
                                   {"COR", "CR"},
                                   {"LOTE", "L1"}});
  };
  note("10", "M00001", "2026-01-10");
  note("11", "F0001", "2026-02-10");
  note("12", "M00004", "2026-01-20");
  const std::string number = SavedOrder({{"F3", "01", "100"}});
  Load(number);
  EXPECT_EQ(Lots({"Lote", "Deposito", "Fornecedor_NF"}),
            (Lines{"L1 | D1 | Fiação Serra", "L1 | D2 | Fiação Serra", "L2 | D1 | "}));
  // One lot in two deposits is asked for once.
  EXPECT_EQ(mill_.TakeStatements("NF_ENTRA_ITEN").size(), 2u);
}

TEST_F(Stock, TheMillsOwnWarehouseFiltersAtOnce) {
  mill_.Exec("UPDATE {DEPOSITO} SET CODCLI = 'M00001', PRIORIDADE = '5' WHERE CODIGO = 'D2'");
  const std::string number = SavedOrder({{"F3", "01", "100"}});
  Load(number);
  EXPECT_EQ(Text("EdtFilDeposito"), "D2");
  EXPECT_EQ(Lots(), Lines{"Y1 | L1 | D2"});
  EXPECT_EQ(Type("EdtFilDeposito", ""), ActResult::kDone);
  EXPECT_EQ(Lots().size(), 3u);
}

TEST_F(Stock, WithoutSuchAWarehouseTheFilterIsEmptied) {
  const std::string number = SavedOrder({{"F3", "01", "100"}});
  Type("EdtFilDeposito", "D1");
  Load(number);
  EXPECT_EQ(Text("EdtFilDeposito"), "");
}

TEST_F(Stock, TheLotsOfTheCurrentYarn) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  EXPECT_EQ(Lots(), (Lines{"Y1 | L1 | D1", "Y1 | L1 | D2", "Y1 | L2 | D1"}));
  EXPECT_EQ(Screen().TbEstoque.FilterText(), "Codigo = 'Y1' and Cor = 'CR'");
  Stand("TbFios", {{"Codigo", "Y2"}});
  EXPECT_EQ(Lots(), (Lines{"Y2 | L1 | D1", "Y2 | L3 | D2"}));
}

TEST_F(Stock, FilterInputsNarrowTheView) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  mill_.Exec("UPDATE {MAT_ITEN} SET LOCAL = 'B7' WHERE CODIGO = 'Y1' AND DEPOSITO = 'D2'");
  Load(number);
  Type("EdtFilDeposito", "D1");
  EXPECT_EQ(Lots(), (Lines{"Y1 | L1 | D1", "Y1 | L2 | D1"}));
  Type("EdtFilLote", "L2");
  EXPECT_EQ(Lots(), Lines{"Y1 | L2 | D1"});
  EXPECT_EQ(Screen().TbEstoque.FilterText(), "Codigo = 'Y1' and Cor = 'CR' and Deposito = 'D1' and Lote like 'L2%'");
  Type("EdtFilDeposito", "");
  Type("EdtFilLote", "L");
  Type("EdtFilLocal", "B");
  EXPECT_EQ(Lots(), Lines{"Y1 | L1 | D2"});
  EXPECT_EQ(Screen().TbEstoque.FilterText(), "Codigo = 'Y1' and Cor = 'CR' and Lote like 'L%' and Local like 'B%'");
  Type("EdtFilLocal", "x'y; \"");
  EXPECT_EQ(Lots(), Lines());
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(Stock, WithoutYarnNoFilterIsOn) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  EXPECT_TRUE(Screen().TbEstoque.Filtered());
  Click("BtnIncluir");
  EXPECT_FALSE(Screen().TbEstoque.Filtered());
  Type("EdtFilLote", "L1");
  EXPECT_FALSE(Screen().TbEstoque.Filtered());
}

TEST_F(Stock, ALongLotIsNotTakenForAnother) {
  Lot("FORNECEDOR-LOTE-0001", 10);
  Lot("FORNECEDOR-LOTE-0002", 20);
  const std::string number = SavedOrder({{"F3", "01", "100"}});
  Load(number);
  Type("EdtFilLote", "FORN");
  EXPECT_EQ(Lots({"Lote", "Qtde"}), (Lines{"FORNECEDOR-LOTE-0001 | 10", "FORNECEDOR-LOTE-0002 | 20"}));
}

TEST_F(Stock, NobodyAddsOrDeletesALotHere) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  EXPECT_EQ(mill_.Append(Screen(), "TbEstoque", {{"Qtde_Res", "5"}}), ActResult::kRefused);
  EXPECT_EQ(mill_.Desk().DeleteRow(Screen().GrdEstoque), ActResult::kRefused);
  EXPECT_EQ(mill_.Desk().SelectRow(Screen().GrdEstoque, 3), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().GridKey(Screen().GrdEstoque, host::Key::kDown), ActResult::kRefused);
  EXPECT_EQ(Lots().size(), 3u);
  EXPECT_FALSE(Screen().TbEstoque.InEdit());
}

}  // namespace
}  // namespace test
