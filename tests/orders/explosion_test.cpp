// The yarns that the fabrics of an order need.
#include <algorithm>

#include "host/kit/desk.h"
#include "order_mill.h"

namespace test {
namespace {

class Explosion : public OrderTest {
 protected:
  Lines Yarns(const Lines& fields) { return Shown("TbFios", fields); }
};

TEST_F(Explosion, OnlyALoadedOrderBringsYarn) {
  const std::string number = NewOrder();
  AddItem("F1", "01", "100");
  EXPECT_TRUE(Screen().TbFios.IsEmpty());
  EXPECT_TRUE(Screen().TbEstoque.IsEmpty());
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines());
  Load(number);
  EXPECT_EQ(Yarns({"Codigo", "Cor", "Consumo", "Consumo_Total"}), (Lines{"Y1 | CR | 60 | 60", "Y2 | CR | 40 | 40"}));
}

TEST_F(Explosion, AllColumns) {
  mill_.Exec(
      "UPDATE {COMP_MATERIAL} SET LFA = 2.5, ROCA = 3, COMP_PONTO = 2.8, TENSAO = 4.5 WHERE MATERIAL = 'F1' AND CODIGO "
      "= 'Y1'");
  mill_.Exec("UPDATE {MATERIAL} SET CONCENTRACAO = 11, GRAMATURA = 12, LARGURA = 13 WHERE CODIGO = 'Y1'");
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  EXPECT_EQ(Yarns({"Codigo", "Descricao", "Cor", "DescCor", "Unidade", "Consumo", "Consumo_Total", "LFA", "Roca", "NE",
                   "Ordem"})
                .front(),
            "Y1 | Fio 30/1 algodão | CR | Cru | KG | 60 | 60 | 2.5 | 3 | 30 | 1");
  // On order: 200 less 50 received, matched on the fabric's colour; stock: on the yarn's.
  EXPECT_EQ(Yarns({"Qtde_OC", "Qtde", "Perc", "CodMalha", "CodMalhaCor", "Tensao", "Milimetro", "Diametro", "Finura",
                   "Aliment", "DTex", "Den", "Tex"})
                .front(),
            "150 | 180 | 60 | F1 | 01 | 4.5 | 2.8 | 30 | 28 | 96 | 11 | 12 | 13");
  EXPECT_EQ(Yarns({"Qtde_OC"}).back(), "");  // that order is closed
  EXPECT_EQ(Screen().TbFios["Consumo"].DisplayText(), "60");
  EXPECT_EQ(Screen().TbFios["Consumo_Total"].DisplayText(), "60,000");
  EXPECT_EQ(Screen().TbFios["Qtde_OC"].DisplayText(), "150,00");
}

TEST_F(Explosion, TheStatementForAFabricInKilograms) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  EXPECT_EQ(
      mill_.TakeStatements("CONSUMOTOT"),
      Lines{"SELECT COMP.CODIGO, MATERIAL.DESCRICAO, MATERIAL.UNIDADE, COMP.PERC, COMP.COR_I AS COR, CADCOR.DESCRICAO "
            "AS DESCCOR, COMP.LFA, COMP.ROCA, MATERIAL.NE, COMP.ORDEM, COMP.COMP_PONTO AS MILIMETRO, COMP.TENSAO, "
            "COMP.DIAMETRO, COMP.FINURA, COMP.ALIMENTADORES, MATERIAL.CONCENTRACAO AS DTEX, MATERIAL.GRAMATURA AS "
            "DEN, MATERIAL.LARGURA AS TEX, (SELECT SUM(COI.QTDE - COI.QTDE_B) AS QTDE FROM CO_ITEN COI WHERE "
            "COI.CODIGO = COMP.CODIGO AND COI.COR = COMP.COR AND COI.SITUACAO = 'A' GROUP BY COI.CODIGO) AS QTDE_OC, "
            "(SELECT SUM(MATITEN.QTDE) FROM MAT_ITEN MATITEN WHERE MATITEN.CODIGO = COMP.CODIGO AND MATITEN.COR = "
            "COMP.COR_I) AS QTDE, (SELECT SUM(((TECEL_ITEN.QTDE-TECEL_ITEN.QTDE_B) * COMPM.PERC) /100) FROM "
            "TECEL_ITEN TECEL_ITEN LEFT JOIN COMP_MATERIAL COMPM ON (TECEL_ITEN.CODIGO = COMPM.MATERIAL AND "
            "TECEL_ITEN.COR = COMPM.COR) WHERE TECEL_ITEN.NUMERO = '000001' AND COMPM.CODIGO = COMP.CODIGO AND "
            "COMPM.COR_I = COMP.COR_I) AS CONSUMOTOT FROM COMP_MATERIAL COMP LEFT JOIN CADCOR CADCOR ON (CADCOR.COR = "
            "COMP.COR_I) LEFT JOIN MATERIAL MATERIAL ON (MATERIAL.CODIGO = COMP.CODIGO) WHERE COMP.MATERIAL = 'F1' "
            "AND COMP.COR = '01' AND NOT (COMP.COR_I LIKE '%*%')"});
}

TEST_F(Explosion, TheStatementForAFabricInMetres) {
  const std::string number = SavedOrder({{"FM", "01", "100"}});
  Load(number);
  const Lines sent = mill_.TakeStatements("CONSUMOTOT");
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_NE(
      sent[0].find("(SELECT SUM(((TECEL_ITEN.QTDE-TECEL_ITEN.QTDE_B)) * (COMPM.PERC /100) * CAST(MAT.PESO AS "
                   "NUMERIC(9,5))) FROM TECEL_ITEN TECEL_ITEN LEFT JOIN COMP_MATERIAL COMPM ON (TECEL_ITEN.CODIGO = "
                   "COMPM.MATERIAL AND TECEL_ITEN.COR = COMPM.COR) LEFT JOIN MATERIAL MAT ON (COMPM.MATERIAL = "
                   "MAT.CODIGO) WHERE TECEL_ITEN.NUMERO = '000001' AND COMPM.CODIGO = COMP.CODIGO AND COMPM.COR_I = "
                   "COMP.COR_I) AS CONSUMOTOT FROM COMP_MATERIAL COMP"),
      std::string::npos)
      << sent[0];
}

TEST_F(Explosion, KilogramsAndMetres) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET PERC = 30 WHERE CODIGO = 'Y1' AND MATERIAL IN ('F1', 'FM')");
  Load(SavedOrder({{"F1", "01", "250"}}));
  EXPECT_EQ(Yarns({"Codigo", "Consumo"}).front(), "Y1 | 75");
  Load(SavedOrder({{"FM", "01", "1000"}}));
  EXPECT_EQ(Yarns({"Codigo", "Consumo", "Consumo_Total"}).front(), "Y1 | 75 | 75");
}

TEST_F(Explosion, OnlyExactlyMtAreMetres) {
  for (const char* unit : {"mt", "PC", "UN", "M"}) {
    mill_.Exec(std::string("UPDATE {MATERIAL} SET UNIDADE = '") + unit + "' WHERE CODIGO = 'FM'");
    Load(SavedOrder({{"FM", "01", "100"}}));
    EXPECT_EQ(Yarns({"Codigo", "Consumo", "Consumo_Total"}).front(), "Y1 | 50 | 50") << unit;
  }
}

TEST_F(Explosion, TheWeightIsRoundedOnlyInWhatRemains) {
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 0.1234567 WHERE CODIGO = 'FM'");
  Load(SavedOrder({{"FM", "01", "100000"}}));
  EXPECT_DOUBLE_EQ(Screen().TbFios["Consumo"].AsFloat(), 6172.835);
  EXPECT_DOUBLE_EQ(Screen().TbFios["Consumo_Total"].AsFloat(), 6173);  // 0.12346
}

TEST_F(Explosion, OneYarnOfTwoFabricsIsOneRow) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F3", "01", "200"}});
  Load(number);
  EXPECT_EQ(Yarns({"Codigo", "Cor", "Consumo", "Consumo_Total"}), (Lines{"Y1 | CR | 200 | 200", "Y2 | CR | 40 | 40"}));
}

TEST_F(Explosion, AnotherLfaOrFeederIsAnotherRowEachWithTheWholeRemainder) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET LFA = 2 WHERE MATERIAL = 'F3' AND CODIGO = 'Y1'");
  mill_.Exec("UPDATE {COMP_MATERIAL} SET ROCA = 4 WHERE MATERIAL = 'FP' AND CODIGO = 'Y1'");
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F3", "01", "200"}, {"FP", "01", "10"}});
  Load(number);
  Lines rows = Yarns({"Codigo", "LFA", "Roca", "Consumo", "Consumo_Total"});
  std::sort(rows.begin(), rows.end());
  EXPECT_EQ(rows, (Lines{"Y1 | 0 | 0 | 60 | 210", "Y1 | 0 | 4 | 10 | 210", "Y1 | 2 | 0 | 140 | 210",
                         "Y2 | 0 | 0 | 40 | 40"}));
}

TEST_F(Explosion, FeedersAreComparedAsWholeNumbers) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET ROCA = 2.2 WHERE MATERIAL = 'F1' AND CODIGO = 'Y1'");
  mill_.Exec("UPDATE {COMP_MATERIAL} SET ROCA = 1.9 WHERE MATERIAL = 'F3' AND CODIGO = 'Y1'");
  Load(SavedOrder({{"F1", "01", "100"}, {"F3", "01", "100"}}));
  EXPECT_EQ(Yarns({"Codigo", "Roca", "Consumo"}), (Lines{"Y1 | 2 | 130", "Y2 | 0 | 40"}));
}

TEST_F(Explosion, PlaceholdersAndColourlessRowsAreLeftOut) {
  Load(SavedOrder({{"F3", "01", "100"}}));
  EXPECT_EQ(Yarns({"Codigo"}), Lines{"Y1"});
  mill_.Exec("UPDATE {COMP_MATERIAL} SET COR_I = NULL WHERE MATERIAL = 'F1' AND CODIGO = 'Y2'");
  Load(SavedOrder({{"F1", "01", "100"}}));
  EXPECT_EQ(Yarns({"Codigo"}), Lines{"Y1"});
}

TEST_F(Explosion, AFabricWithoutCompositionAddsNothing) {
  Load(SavedOrder({{"F2", "01", "100"}}));
  EXPECT_EQ(Yarns({"Codigo"}), Lines());
  EXPECT_FALSE(Screen().TbEstoque.Filtered());
}

TEST_F(Explosion, TheRemainderIsThatOfTheStoredOrder) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F1", "02", "50"}});
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 130 WHERE COR = '01'");
  Load(number);
  // 150 ordered, 130 woven: an overwoven item counts negative.
  EXPECT_EQ(Yarns({"Codigo", "Consumo", "Consumo_Total"}), (Lines{"Y1 | 90 | 12", "Y2 | 60 | 8"}));
  // Unsaved changes are not seen by anything until the next load.
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Qtde", "1000"}}), ActResult::kDone);
  EXPECT_EQ(Yarns({"Codigo", "Consumo", "Consumo_Total"}), (Lines{"Y1 | 90 | 12", "Y2 | 60 | 8"}));
}

TEST_F(Explosion, TheRemainderHasThreeDecimalsAndTheFirstFabricsUnit) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET PERC = 33.3333 WHERE MATERIAL = 'F1' AND CODIGO = 'Y1'");
  Load(SavedOrder({{"F1", "01", "0,5"}}));
  EXPECT_EQ(Yarns({"Consumo_Total"}).front(), "0.167");
  // Metres and kilograms in one order: whichever fabric is exploded first decides for the whole sum.
  mill_.Exec("UPDATE {COMP_MATERIAL} SET PERC = 60 WHERE MATERIAL = 'F1' AND CODIGO = 'Y1'");
  Load(SavedOrder({{"F1", "01", "100"}, {"FM", "01", "100"}}));
  const bool metres_first = Shown("TbItens", {"Codigo"}).front() == "FM";
  // In metres: 100 x 60 % x 1 + 100 x 50 % x 0.25; in kilograms: 60 + 50.
  EXPECT_EQ(Yarns({"Codigo", "Consumo", "Consumo_Total"}).front(),
            metres_first ? "Y1 | 72.5 | 72.5" : "Y1 | 72.5 | 110");
}

TEST_F(Explosion, ReloadingDoesNotAddUp) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  Load(number);
  EXPECT_EQ(Yarns({"Codigo", "Consumo"}), (Lines{"Y1 | 60", "Y2 | 40"}));
  EXPECT_EQ(Screen().TbFios["Codigo"].AsText(), "Y1");
}

TEST_F(Explosion, TheYarnGridOnlyShows) {
  Load(SavedOrder({{"F1", "01", "100"}}));
  EXPECT_THROW(mill_.Set(Screen(), "TbFios", {{"Consumo", "1"}}), host::ActError);
  EXPECT_THROW(mill_.Desk().DeleteRow(Screen().GrdFios), host::ActError);
}

// A load asks for the yarns of a fabric only when one of them is not on the list yet.
TEST_F(Explosion, ALoadListsWhatEachFabricAsksForByItself) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET LFA = 3 WHERE MATERIAL = 'FM' AND CODIGO = 'Y2'");
  // The same line twice counts twice.
  mill_.Exec("INSERT INTO {COMP_MATERIAL} SELECT * FROM {COMP_MATERIAL} WHERE MATERIAL = 'FP'");
  const std::string number = SavedOrder({{"F1", "01", "100"},
                                         {"F1", "02", "60"},
                                         {"F2", "01", "5"},
                                         {"F3", "01", "40"},
                                         {"FM", "01", "900"},
                                         {"FP", "01", "30"}});
  Load(number);
  EXPECT_LT(mill_.TakeStatements("CONSUMOTOT").size(), 6u);
  Lines fields;
  for (std::size_t at = 0; at < Screen().TbFios.FieldCount(); ++at)
    fields.push_back(Screen().TbFios.FieldAt(at).Name());
  const Lines loaded = Shown("TbFios", fields);
  EXPECT_EQ(loaded.size(), 3u);  // Y1, Y2, Y2 with its LFA; Y3 stands in no colour
  Screen().TbFios.Empty();
  for (host::DatasetCursor item(Screen().TbItens); !item.Eof(); item.Next()) {
    Screen().Armazena_Explosao_Fios(item.FieldByName("Codigo").AsText(), item.FieldByName("Cor").AsText(),
                                    item.FieldByName("Unidade").AsText(), item.FieldByName("Qtde").AsFloat(),
                                    item.FieldByName("Peso").AsFloat());
  }
  EXPECT_EQ(mill_.TakeStatements("CONSUMOTOT").size(), 6u);
  EXPECT_EQ(Shown("TbFios", fields), loaded);
}

}  // namespace
}  // namespace test
