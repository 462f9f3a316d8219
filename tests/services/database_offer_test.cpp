// What a lookup offers: the columns, the rows that fit a text, one whole row.
#include "app/services/database_offer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "host/errors.h"
#include "host/kit/screen.h"
#include "support/mill.h"

namespace {

using app::LookupOffer;
using app::OfferColumn;

class Offer : public testing::Test {
 protected:
  Offer() { test::FillSmallMill(mill_); }

  LookupOffer& Over(const std::string& table, const std::string& key, const std::string& filter = {},
                    const std::string& statement = {}) {
    host::Screen screen(mill_.App(), "TfmTeste", "fmTeste", "Teste");
    host::TPesquisa lookup(screen, "PqTeste", table, key);
    lookup.SetFilter(filter);
    lookup.SetStatement(statement);
    offer_ = app::services::NewLookupOffer(mill_.Db(), lookup);
    return *offer_;
  }
  std::string Found(const std::string& text, std::size_t skip = 0, std::size_t count = 100) {
    std::string keys;
    for (const auto& row : offer_->Search(text, skip, count)) {
      keys += (keys.empty() ? "" : " ") + row.at(offer_->Columns().front().name).AsText();
    }
    return keys;
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const OfferColumn& column : offer_->Columns()) names.push_back(column.name);
    return names;
  }
  const OfferColumn& Column(const std::string& name) const {
    return *std::find_if(offer_->Columns().begin(), offer_->Columns().end(),
                         [&](const OfferColumn& column) { return column.name == name; });
  }

  test::Mill mill_;
  std::unique_ptr<LookupOffer> offer_;
};

// --- columns
// ----------------------------------------------------------------------------------------------------------

TEST_F(Offer, ShowsTheKeyTheDescriptionAndWhatHelpsToChoose) {
  Over("MATERIAL", "CODIGO");
  const auto names = Names();
  ASSERT_GE(names.size(), 3u);
  EXPECT_EQ(names[0], "CODIGO");
  EXPECT_EQ(names[1], "DESCRICAO");
  EXPECT_EQ(offer_->Columns()[0].caption, "Código");
  EXPECT_EQ(offer_->Columns()[1].caption, "Descrição");
  EXPECT_NE(std::find(names.begin(), names.end(), "UNIDADE"), names.end());
  EXPECT_EQ(std::find(names.begin(), names.end(), "OBSERVACAO"), names.end());
}

TEST_F(Offer, NamesTheMillOfAnOrderAndTellsItsDate) {
  mill_.Insert("TECEL", {{"NUMERO", "000001"}, {"MALHARIA", "M00001"}, {"DT_EMISSAO", "2026-03-10"}});
  const auto rows = Over("TECEL", "NUMERO").Search("", 0, 10);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].at("NOME_MALHARIA").AsText(), "Malharia Aurora");
  EXPECT_EQ(rows[0].at("DT_EMISSAO").AsText(), "10/03/2026");
  EXPECT_EQ(rows[0].at("SITUACAO").AsText(), "Aberta");
  EXPECT_EQ(Column("NOME_MALHARIA").caption, "Nome da malharia");
}

TEST_F(Offer, PutsNumbersToTheRight) {
  Over("MAT_ITEN", "LOTE");
  EXPECT_EQ(Column("QTDE").align, host::Align::kRight);
  EXPECT_EQ(Column("QTDE").format, "0.000");
  EXPECT_EQ(Column("LOTE").align, host::Align::kLeft);
}

TEST_F(Offer, TakesEitherNameOfAMachinesKey) {
  for (const char* key : {"CODIGO", "MAQUINA"}) {
    Over("MAQUINA", key);
    EXPECT_EQ(Names(), (std::vector<std::string>{key, "DESCRICAO", "TIPO"}));
    EXPECT_EQ(Found("mq1"), "MQ1");
  }
}

TEST_F(Offer, OfATableThatNobodyDescribedShowsTheFirstColumns) {
  mill_.Insert("COMP_MATERIAL", {{"MATERIAL", "ZZ"}, {"CODIGO", "Y1"}});
  Over("COMP_MATERIAL", "MATERIAL");
  EXPECT_EQ(Names().front(), "MATERIAL");
  EXPECT_EQ(Names().size(), 6u);
  EXPECT_EQ(Column("ORDEM").align, host::Align::kRight);
  EXPECT_EQ(Found("zz"), "ZZ");
}

// --- what fits
// --------------------------------------------------------------------------------------------------------

TEST_F(Offer, FindsByCodeAndDescriptionWithoutRegardToCaseAndAccents) {
  mill_.Insert("CADCOR", {{"COR", "é9"}, {"DESCRICAO", "Ação de São João"}});
  Over("CADCOR", "COR");
  EXPECT_EQ(Found("ACAO"), "é9");
  EXPECT_EQ(Found("são"), "é9");
  EXPECT_EQ(Found("E9"), "é9");
  EXPECT_EQ(Found("azul"), "02");
  EXPECT_EQ(Found("cr"), "CR");
  EXPECT_EQ(Found("0"), "01 02 03");
  EXPECT_EQ(Found("nada disso"), "");
}

TEST_F(Offer, WantsEveryWordInWhateverOrder) {
  Over("CADCOR", "COR");
  EXPECT_EQ(Found("marinho azul"), "02");
  EXPECT_EQ(Found("02 azul"), "02");
  EXPECT_EQ(Found("  azul   02 "), "02");
  EXPECT_EQ(Found("01 azul"), "");
}

TEST_F(Offer, TakesSpecialCharactersAsLetters) {
  mill_.Insert("CADCOR", {{"COR", "A%B"}, {"DESCRICAO", "50% d'água"}});
  mill_.Insert("CADCOR", {{"COR", "A_B"}, {"DESCRICAO", "\"Crua\""}});
  Over("CADCOR", "COR");
  EXPECT_EQ(Found("%"), "A%B");
  EXPECT_EQ(Found("_"), "A_B");
  EXPECT_EQ(Found("d'a"), "A%B");
  EXPECT_EQ(Found("'"), "A%B");
  EXPECT_EQ(Found("\"crua"), "A_B");
  EXPECT_EQ(Found("a?b"), "");
  EXPECT_EQ(Found("{CADCOR}"), "");
}

TEST_F(Offer, FindsNothingForATextThatNoColumnCanHold) {
  Over("CADCOR", "COR");
  EXPECT_EQ(Found("Ω"), "");
  EXPECT_EQ(Found("azul Ω"), "");
  EXPECT_EQ(Found(std::string(200, 'a')), "");
  EXPECT_EQ(Found(std::string(2000, 'a')), "");
  EXPECT_EQ(Found("\xff"), "");
  EXPECT_FALSE(offer_->Find("Ω").has_value());
  EXPECT_FALSE(offer_->Find(std::string(2000, '0')).has_value());
  EXPECT_FALSE(offer_->Find("0000000001").has_value());
}

TEST_F(Offer, FindsARowWithoutDescriptionByItsCode) {
  mill_.Insert("CADCOR", {{"COR", "ZZ"}});
  Over("CADCOR", "COR");
  EXPECT_EQ(Found("zz"), "ZZ");
}

TEST_F(Offer, GoesPageByPageInTheOrderOfTheKey) {
  for (int i = 0; i < 250; ++i) {
    mill_.Insert("CADCOR", {{"COR", "P" + std::to_string(1000 + (i * 37) % 250)}, {"DESCRICAO", "página"}});
  }
  Over("CADCOR", "COR");
  std::vector<std::string> keys;
  for (std::size_t skip = 0; skip < 300; skip += 100) {
    for (const auto& row : offer_->Search("pagina", skip, 100)) keys.push_back(row.at("COR").AsText());
  }
  ASSERT_EQ(keys.size(), 250u);
  EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
  EXPECT_EQ(keys.front(), "P1000");
  EXPECT_EQ(keys.back(), "P1249");
}

TEST_F(Offer, ShowsTheNewestOrdersFirst) {
  for (const char* number : {"000001", "000003", "000002"}) mill_.Insert("TECEL", {{"NUMERO", number}});
  mill_.Exec("UPDATE {TECEL} SET MALHARIA = 'M00001' WHERE NUMERO = '000002'");
  Over("TECEL", "NUMERO");
  EXPECT_EQ(Found(""), "000003 000002 000001");
  EXPECT_EQ(Found("aurora"), "000002");
}

// --- the filter and the statement
// -------------------------------------------------------------------------------------

TEST_F(Offer, KeepsToTheFiltersOfTheOrderScreen) {
  host::Screen& order = mill_.Open("TfmCadLoteTec");
  const auto filter = [&](const char* name) {
    return dynamic_cast<host::TPesquisa&>(*order.FindComponent(name)).FilterText();
  };
  ASSERT_FALSE(filter("PqMalharia").empty());
  Over("ENTIDADE", "CODCLI", filter("PqMalharia"));
  EXPECT_EQ(Found(""), "M00001");
  EXPECT_EQ(Found("malharia"), "M00001");
  EXPECT_TRUE(offer_->Find("M00001").has_value());
  EXPECT_FALSE(offer_->Find("M00002").has_value());

  ASSERT_FALSE(filter("PqMaterial").empty());
  Over("MATERIAL", "CODIGO", filter("PqMaterial"));
  EXPECT_EQ(Found(""), "F1 F2 F3 FM FP");
  EXPECT_FALSE(offer_->Find("Y1").has_value());
}

TEST_F(Offer, OffersOrdersUnderAFilterOverTheirColumns) {
  mill_.Insert("TECEL", {{"NUMERO", "000001"}, {"MALHARIA", "M00001"}, {"SITUACAO", "A"}});
  mill_.Insert("TECEL", {{"NUMERO", "000002"}, {"MALHARIA", "M00001"}, {"SITUACAO", "B"}});
  Over("TECEL", "NUMERO", " SITUACAO = 'B' OR NUMERO = 'x' ");
  EXPECT_EQ(Found("malharia"), "000002");
  EXPECT_FALSE(offer_->Find("000001").has_value());
}

TEST_F(Offer, OffersAWholeStatement) {
  Over("CADCOR", "COR", "", "SELECT DESCRICAO, CODIGO AS COR, REPOSICAO FROM MATERIAL_001 WHERE CODIGO LIKE 'Y%'");
  EXPECT_EQ(Names(), (std::vector<std::string>{"COR", "DESCRICAO", "REPOSICAO"}));
  EXPECT_EQ(Column("COR").caption, "Código");
  EXPECT_EQ(Column("REPOSICAO").align, host::Align::kRight);
  EXPECT_EQ(Found(""), "Y1 Y2 Y3");
  EXPECT_EQ(Found("POLIESTER"), "Y2");
  EXPECT_EQ(Found("y3"), "Y3");
  EXPECT_EQ(offer_->Find("Y2")->at("DESCRICAO").AsText(), "Fio 24/1 poliéster");
  EXPECT_FALSE(offer_->Find("F1").has_value());
}

TEST_F(Offer, OffersAStatementWithItsOwnOrderAndNumbersAsKeys) {
  Over("X", "N", "", "SELECT ORDEM * 10 AS N, MATERIAL FROM COMP_MATERIAL_001 WHERE COR = '02' ORDER BY MATERIAL");
  EXPECT_EQ(Column("N").align, host::Align::kRight);
  EXPECT_FALSE(Found("").empty());
  EXPECT_FALSE(Found("f1").empty());
  EXPECT_FALSE(offer_->Find("abc").has_value());
}

TEST_F(Offer, OfAStatementWithoutRowsStillTellsTheColumns) {
  Over("CADCOR", "COR", "", "SELECT COR, DESCRICAO FROM CADCOR_001 WHERE 1 = 2");
  EXPECT_EQ(Names(), (std::vector<std::string>{"COR", "DESCRICAO"}));
  EXPECT_EQ(Found("x"), "");
}

TEST_F(Offer, PassesOnWhatTheDatabaseRefuses) {
  Over("CADCOR", "COR", "NADA = 1");
  EXPECT_THROW(offer_->Search("", 0, 10), host::DatabaseError);
  EXPECT_THROW(offer_->Find("01"), host::DatabaseError);
  EXPECT_THROW(Over("CADCOR", "COR", "", "SELECT NADA FROM CADCOR_001"), host::DatabaseError);
  Over("NENHUMA", "COR");
  EXPECT_THROW(offer_->Search("", 0, 10), host::DatabaseError);
}

// --- the whole row
// ----------------------------------------------------------------------------------------------------

TEST_F(Offer, HandsBackAllColumnsOfTheRowPicked) {
  mill_.Exec("UPDATE {MATERIAL} SET OBSERVACAO = 'Longa história' WHERE CODIGO = 'F1'");
  Over("MATERIAL", "CODIGO");
  const auto shown = offer_->Search("f1", 0, 10);
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_FALSE(shown[0].contains("OBSERVACAO"));
  const auto row = offer_->Whole(shown[0]);
  ASSERT_TRUE(row.has_value());
  EXPECT_EQ(row->at("OBSERVACAO").AsText(), "Longa história");
  EXPECT_EQ(row->at("MAXIMO").AsFloat(), 0.3);
  EXPECT_FALSE(offer_->Find("f1").has_value());
}

TEST_F(Offer, TellsApartRowsThatShareTheirKey) {
  Over("MAT_ITEN", "LOTE", "CODIGO = 'Y1'");
  const auto shown = offer_->Search("L1", 0, 10);
  ASSERT_EQ(shown.size(), 2u);
  for (const auto& each : shown) {
    const auto row = offer_->Whole(each);
    ASSERT_TRUE(row.has_value());
    EXPECT_EQ(row->at("DEPOSITO").AsText(), each.at("DEPOSITO").AsText());
    EXPECT_EQ(row->at("QTDE").AsFloat(), each.at("QTDE").AsFloat());
  }
}

TEST_F(Offer, HandsBackARowThatAnotherStationChangedMeanwhile) {
  Over("CADCOR", "COR");
  const auto shown = offer_->Search("02", 0, 10);
  mill_.Exec("UPDATE {CADCOR} SET DESCRICAO = 'Marinho' WHERE COR = '02'");
  EXPECT_EQ(offer_->Whole(shown.front())->at("DESCRICAO").AsText(), "Marinho");
  mill_.Exec("DELETE FROM {CADCOR} WHERE COR = '02'");
  EXPECT_FALSE(offer_->Whole(shown.front()).has_value());
}

// --- rows that share their key
// ----------------------------------------------------------------------------------------

class Prices : public Offer {
 protected:
  /// Of one fabric: mills times colours, stored in an order of their own.
  void Fill(int mills, int colours) {
    const int count = mills * colours;
    for (int i = 0; i < count; ++i) {
      const int at = i * 7 % count;
      mill_.Insert("CADCORTI", {{"TIPO", "C"},
                                {"CODIGO", "M1"},
                                {"CODCLI", "T" + std::to_string(100 + at / colours)},
                                {"COR", std::to_string(100 + at % colours)},
                                {"CUSTO", "1.5"}});
    }
  }
  void Price(const std::string& kind, const std::string& supplier, const std::string& colour, const std::string& cost) {
    mill_.Insert("CADCORTI",
                 {{"TIPO", kind}, {"CODIGO", "F1"}, {"CODCLI", supplier}, {"COR", colour}, {"CUSTO", cost}});
  }
  LookupOffer& OverPrices() { return Over("CADCORTI", "CODIGO;CODCLI;COR"); }
  std::string Picked(const host::LookupRow& wanted) {
    const auto row = offer_->FindRow(wanted);
    return row ? row->at("TIPO").AsText() + " " + row->at("CODCLI").AsText() + " " + row->at("COR").AsText() : "none";
  }
};

TEST_F(Prices, GivesEveryRowOnceOverAllPages) {
  Fill(11, 23);
  OverPrices();
  std::vector<std::string> seen;
  for (std::size_t skip = 0; skip < 300; skip += 50) {
    for (const auto& row : offer_->Search("m1", skip, 50)) {
      seen.push_back(row.at("CODCLI").AsText() + row.at("COR").AsText());
    }
  }
  EXPECT_EQ(seen.size(), 11u * 23u);
  EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
  EXPECT_EQ(std::adjacent_find(seen.begin(), seen.end()), seen.end());
}

TEST_F(Prices, WhatTheLookupDoesNotOrderIsOrderedByThePrimaryKey) {
  mill_.Exec("DELETE FROM {MAT_ITEN}");
  for (int i = 0; i < 120; ++i) {
    const int at = i * 7 % 120;
    mill_.Insert(
        "MAT_ITEN",
        {{"LOTE", at % 2 == 0 ? "L1" : "L2"}, {"CODIGO", "Y1"}, {"COR", std::to_string(100 + at)}, {"DEPOSITO", "DF"}});
  }
  Over("MAT_ITEN", "LOTE");
  std::vector<std::string> seen;
  for (std::size_t skip = 0; skip < 120; skip += 10) {
    for (const auto& row : offer_->Search("", skip, 10)) {
      seen.push_back(row.at("LOTE").AsText() + row.at("COR").AsText());
    }
  }
  EXPECT_EQ(seen.size(), 120u);
  EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
  EXPECT_EQ(std::adjacent_find(seen.begin(), seen.end()), seen.end());
  EXPECT_EQ(offer_->Find("L1")->at("COR").AsText(), "100");
}

TEST_F(Prices, AStatementsRowsAreToldApartByAllTheirColumns) {
  Fill(3, 40);
  Over("CADCORTI", "CODIGO", "", "SELECT CODIGO, CODCLI, COR FROM CADCORTI_001 WHERE CODIGO = 'M1'");
  std::vector<std::string> seen;
  for (std::size_t skip = 0; skip < 120; skip += 10) {
    for (const auto& row : offer_->Search("", skip, 10)) {
      seen.push_back(row.at("CODCLI").AsText() + row.at("COR").AsText());
    }
  }
  EXPECT_EQ(seen.size(), 120u);
  EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
  EXPECT_EQ(std::adjacent_find(seen.begin(), seen.end()), seen.end());
}

TEST_F(Prices, ShowWhatHelpsToChooseAPrice) {
  mill_.Exec("DELETE FROM {CADCORTI}");
  Price("C", "M00001", "0", "5.125");
  const auto rows = OverPrices().Search("F1", 0, 10);
  EXPECT_EQ(Names(),
            (std::vector<std::string>{"CODIGO", "DESC_MATERIAL", "CODCLI", "NOME_FORNECEDOR", "COR", "CUSTO", "OBS"}));
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].at("DESC_MATERIAL").AsText(),
            mill_.Scalar("SELECT DESCRICAO FROM {MATERIAL} WHERE CODIGO = 'F1'").AsText());
  EXPECT_EQ(rows[0].at("NOME_FORNECEDOR").AsText(), "Malharia Aurora");
  EXPECT_EQ(Column("CUSTO").format, "0.00##");
}

TEST_F(Prices, AreFoundByAnyOfTheirColumns) {
  mill_.Exec("DELETE FROM {CADCORTI}");
  Price("C", "M00001", "0", "5.1");
  Price("C", "M00001", "02", "5.2");
  Price("C", "M00002", "0", "5.3");
  Price("T", "M00001", "0", "5.4");
  OverPrices();
  EXPECT_EQ(Picked({{"CODIGO", "F1"}, {"CODCLI", "M00001"}, {"COR", "02"}}), "C M00001 02");
  EXPECT_EQ(Picked({{"codigo", "F1"}, {"codcli", "M00002"}}), "C M00002 0");
  EXPECT_EQ(Picked({{"TIPO", "T"}}), "T M00001 0");
  EXPECT_EQ(Picked({{"CUSTO", 5.3}}), "C M00002 0");
  EXPECT_EQ(Picked({{"CUSTO", "5,2"}}), "C M00001 02");
  EXPECT_EQ(Picked({{"NOME_FORNECEDOR", "Malharia Aurora"}, {"COR", "02"}}), "C M00001 02");
  EXPECT_EQ(Picked({{"OBS", host::Value()}, {"COR", "02"}}), "C M00001 02");
  EXPECT_EQ(Picked({{"OBS", ""}, {"COR", "02"}}), "C M00001 02");
  EXPECT_EQ(Picked({{"CODIGO", "F1"}}), "C M00001 0");  // the first in the list's order
  EXPECT_EQ(Picked({{"CODIGO", "F1"}, {"COR", "2"}}), "none");
  EXPECT_EQ(Picked({{"CUSTO", "caro"}}), "none");
  EXPECT_EQ(Picked({{"COR", "Ω"}}), "none");
  EXPECT_THROW(offer_->FindRow({{"PRECO", "5"}}), host::InputError);
}

// Descriptions are searched whatever the letters, and found as they are stored.
TEST_F(Prices, ATextIsFoundAsItIsStored) {
  mill_.Exec("UPDATE {MATERIAL} SET DESCRICAO = 'Malha lisa' WHERE CODIGO = 'F1'");
  mill_.Exec("UPDATE {MATERIAL} SET DESCRICAO = 'MALHA LISA' WHERE CODIGO = 'F2'");
  Over("MATERIAL", "CODIGO");
  const auto found = [this](const char* description) {
    const auto row = offer_->FindRow({{"DESCRICAO", description}});
    return row ? row->at("CODIGO").AsText() : "none";
  };
  EXPECT_EQ(found("Malha lisa"), "F1");
  EXPECT_EQ(found("MALHA LISA"), "F2");
  EXPECT_EQ(found("malha lisa"), "none");
  EXPECT_EQ(found("Malha lísa"), "none");
}

TEST_F(Prices, KeepToTheLookupsFilterHoweverTheyAreFound) {
  mill_.Exec("DELETE FROM {CADCORTI}");
  Price("C", "M00001", "0", "5.1");
  Price("T", "M00001", "02", "5.2");
  Over("CADCORTI", "CODIGO;CODCLI;COR", "TIPO = 'C'");
  EXPECT_EQ(Picked({{"CODIGO", "F1"}}), "C M00001 0");
  EXPECT_EQ(Picked({{"COR", "02"}}), "none");
}

TEST_F(Prices, OfOneLookAreStillTwoRows) {
  mill_.Exec("DELETE FROM {CADCORTI}");
  Price("C", "M00001", "0", "5");
  Price("T", "M00001", "0", "5");
  const auto shown = OverPrices().Search("", 0, 10);
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(offer_->Whole(shown[0])->at("TIPO").AsText(), "C");
  EXPECT_EQ(offer_->Whole(shown[1])->at("TIPO").AsText(), "T");
  mill_.Exec("DELETE FROM {CADCORTI} WHERE TIPO = 'T'");
  EXPECT_FALSE(offer_->Whole(shown[1]).has_value());
}

TEST_F(Offer, FindsADateAsPeopleWriteItOrAsProgramsDo) {
  mill_.Insert("TECEL", {{"NUMERO", "000001"}, {"DT_EMISSAO", "2026-03-10"}});
  mill_.Insert("TECEL", {{"NUMERO", "000002"}});
  Over("TECEL", "NUMERO");
  for (const char* date : {"2026-03-10", "10/03/2026"}) {
    EXPECT_EQ(offer_->FindRow({{"DT_EMISSAO", date}})->at("NUMERO").AsText(), "000001") << date;
  }
  EXPECT_EQ(offer_->FindRow({{"DT_EMISSAO", host::Value()}})->at("NUMERO").AsText(), "000002");
  EXPECT_FALSE(offer_->FindRow({{"DT_EMISSAO", "ontem"}}).has_value());
}

// --- while the dialog waits
// -------------------------------------------------------------------------------------------

TEST_F(Offer, HoldsNothingBackWhileAPersonThinks) {
  Over("MATERIAL", "CODIGO");
  Found("malha");
  offer_->Find("F1");
  const auto open = mill_.Db().Query(
      "SELECT COUNT(*) AS N FROM MON$TRANSACTIONS WHERE MON$ATTACHMENT_ID = CURRENT_CONNECTION AND MON$READ_ONLY = 0",
      {});
  EXPECT_EQ(open->FieldByName("N").AsInteger(), 0);
  const auto other = [&] {
    app::firebird::ConnectOptions options;
    options.database = mill_.Path();
    return app::firebird::Database::Open(options);
  }();
  const auto gap = [&] {
    return other->Query("SELECT MON$NEXT_TRANSACTION - MON$OLDEST_SNAPSHOT AS N FROM MON$DATABASE", {})
        ->FieldByName("N")
        .AsInteger();
  };
  for (int i = 0; i < 20; ++i) {
    other->Execute("UPDATE {CADCOR} SET DESCRICAO = ? WHERE COR = '01'", {std::to_string(i)});
    other->MakeDurable();
  }
  EXPECT_LT(gap(), 10);
  EXPECT_EQ(Over("CADCOR", "COR").Search("01", 0, 1)[0].at("DESCRICAO").AsText(), "19");
}

}  // namespace
