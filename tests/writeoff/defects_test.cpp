// The defects register: what it shows, what may be typed, what is stored.
#include <algorithm>
#include <tuple>

#include "defects_mill.h"
#include "writeoff/roll_defects.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;
using Briefs = std::vector<std::string>;

class Defects : public DefectsMill {};

TEST_F(Defects, OpensForTheRollSelected) {
  ReservedOrder();
  Load();
  Type("EdtFunc", "P2");
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  ASSERT_EQ(Roll("11"), ActResult::kDone);
  Type("EdtFunc", "P1");
  ASSERT_EQ(Register(1,
                     [this](host::Screen& screen) {
                       EXPECT_EQ(screen.Caption(), "Cadastro de Defeitos");
                       EXPECT_EQ(mill_.Text(screen, "EdtOF"), kOrder);
                       EXPECT_EQ(mill_.Text(screen, "EdtArtigo"), "F1");
                       EXPECT_EQ(mill_.Text(screen, "LblArtigo"), "Meia malha 30/1 PV");
                       EXPECT_EQ(mill_.Text(screen, "EdtFunc"), "P2");
                       EXPECT_EQ(mill_.Text(screen, "LblFunc"), "João Lima");
                       EXPECT_EQ(mill_.Text(screen, "LblTurno"), "Turno 3");
                       EXPECT_EQ(mill_.Text(screen, "EdtOrdem"), "1");
                       EXPECT_EQ(mill_.Text(screen, "EdtTipo"), "T");
                       EXPECT_EQ(mill_.Text(screen, "EdtCor"), "");
                       EXPECT_EQ(mill_.Text(screen, "EdtLote"), "");
                       EXPECT_EQ(Focused(), "DBGrid1");
                       EXPECT_THROW(mill_.Type(screen, "EdtOrdem", "2"), host::ActError);
                     }),
            ActResult::kDone);
  EXPECT_EQ(mill_.Desk().Find("TfmCadDefTec"), nullptr);
}

TEST_F(Defects, AreStoredWithTheRoll) {
  RollsOf({"10"});
  mill_.TakeStatements();
  ASSERT_EQ(Register(1,
                     [this](host::Screen& screen) {
                       EXPECT_EQ(
                           mill_.TakeStatements("FROM DEF_MOV"),
                           Briefs{"SELECT * FROM DEF_MOV WHERE NUMERO = '000001' AND ARTIGO = 'F1' AND TIPO = 'T' "
                                  "ORDER BY DT_LAN, MOV"});
                       ASSERT_EQ(Add(screen, {{"Defeito", "FURO"},
                                              {"Peso", "2,5"},
                                              {"Funcionario", "P1"},
                                              {"Turno", "1"},
                                              {"Qualidade", "B"},
                                              {"Data", "09/03/2026"}}),
                                 ActResult::kDone);
                       EXPECT_EQ(List(screen)["Desc_Def"].AsText(), "Furo");
                       EXPECT_EQ(List(screen)["Desc_Func"].AsText(), "Ana Souza");
                       EXPECT_EQ(Save(screen), ActResult::kDone);
                       EXPECT_TRUE(screen.CloseRequested());
                     }),
            ActResult::kDone);
  const auto sent = mill_.TakeStatements("DEF_MOV");
  EXPECT_EQ(std::ranges::count(sent, "DELETE FROM DEF_MOV WHERE NUMERO = '000001' AND ARTIGO = 'F1' AND TIPO = 'T'"),
            1);
  EXPECT_EQ(std::ranges::count(sent,
                               "INSERT INTO DEF_MOV (CODIGO, ARTIGO, QUANT, NUMERO, REVISOR, DT_LAN, QUALIDADE, TIPO, "
                               "TURNO, ROLO, LOTE, COR, LANCAMENTO) VALUES ('FURO', 'F1', 2.5, '000001', 'P1', "
                               "'03/09/2026', 'B', 'T', '1', 1, '', '', '0000000001')"),
            1);
  ASSERT_EQ(Stored().size(), 1u);
  EXPECT_EQ(Stored().front().at("DT_LAN").AsText(), "09/03/2026");
  EXPECT_EQ(Stored().front().at("LOTE"), host::Value(""));
  EXPECT_EQ(Boxes(), BoxList());
  ExpectBooksBalance();
}

TEST_F(Defects, ANewRowIsOfTodayAndNothingElse) {
  RollsOf({"10"});
  Register(1, [this](host::Screen& screen) {
    ASSERT_EQ(mill_.Desk().GridKey(mill_.GridOf(screen, "TbDef"), host::Key::kDown), ActResult::kDone);
    const host::Dataset& list = List(screen);
    ASSERT_EQ(list.State(), host::DatasetState::kInsert);
    EXPECT_EQ(list["Data"].AsText(), "10/03/2026");
    for (const char* field :
         {"Defeito", "Desc_Def", "Peso", "Funcionario", "Desc_Func", "Turno", "Qualidade", "Rolo"}) {
      EXPECT_TRUE(list[field].IsNull()) << field;
    }
    // One that stays blank is none.
    EXPECT_FALSE(screen.HasUnsavedWork());
    ASSERT_EQ(Save(screen), ActResult::kDone);
  });
  EXPECT_TRUE(Stored().empty());
}

TEST_F(Defects, TheDateTakenOutIsTodayAgain) {
  RollsOf({"10"});
  Store(1, {{"Defeito", "FURO"}, {"Peso", "1"}, {"Data", ""}});
  EXPECT_EQ(Stored().front().at("DT_LAN").AsText(), "10/03/2026");
}

TEST_F(Defects, OfQuantityNothingAreNotStored) {
  RollsOf({"10"});
  Register(1, [this](host::Screen& screen) {
    EXPECT_EQ(Add(screen, {{"Defeito", "FURO"}, {"Peso", "0"}}), ActResult::kDone);
    EXPECT_EQ(Add(screen, {{"Defeito", "RISCO"}}), ActResult::kDone);
    EXPECT_EQ(Add(screen, {{"Defeito", "MANCHA"}, {"Peso", "0,001"}}), ActResult::kDone);
    EXPECT_EQ(Save(screen), ActResult::kDone);
  });
  EXPECT_EQ(Brief(), Briefs{"MANCHA 1: 0.001"});
}

TEST_F(Defects, AnEmptyListRemovesThem) {
  RollsOf({"10"});
  Store(1, {{"Defeito", "FURO"}, {"Peso", "1"}});
  ASSERT_EQ(Stored().size(), 1u);
  Register(1, [this](host::Screen& screen) {
    ASSERT_EQ(List(screen).RecordCount(), 1u);
    ASSERT_EQ(mill_.Desk().DeleteRow(mill_.GridOf(screen, "TbDef")), ActResult::kDone);
    EXPECT_TRUE(screen.HasUnsavedWork());
    ASSERT_EQ(Save(screen), ActResult::kDone);
  });
  EXPECT_TRUE(Stored().empty());
}

TEST_F(Defects, OfAllRollsOfTheFabricAreListedOldestFirstAndKeepTheirRolls) {
  RollsOf({"10", "11", "12"});
  Store(1, {{"Defeito", "FURO"}, {"Peso", "1"}});
  Store(3, {{"Defeito", "RISCO"}, {"Peso", "3"}, {"Data", "01/03/2026"}});
  Register(2, [this](host::Screen& screen) {
    host::Dataset& list = List(screen);
    ASSERT_EQ(list.RecordCount(), 2u);
    EXPECT_EQ(list["Defeito"].AsText(), "RISCO");
    EXPECT_EQ(list["Desc_Def"].AsText(), "Risco");
    EXPECT_EQ(list["Rolo"].AsInteger(), 3);
    EXPECT_FALSE(screen.HasUnsavedWork());
    EXPECT_EQ(Add(screen, {{"Defeito", "MANCHA"}, {"Peso", "2"}}), ActResult::kDone);
    EXPECT_EQ(Add(screen, {{"Defeito", "FURO"}, {"Peso", "4"}, {"Rolo", "3"}}), ActResult::kDone);
    EXPECT_EQ(Save(screen), ActResult::kDone);
  });
  EXPECT_EQ(Brief(), (Briefs{"RISCO 3: 3", "FURO 1: 1", "MANCHA 2: 2", "FURO 3: 4"}));
  ExpectBooksBalance();
}

TEST_F(Defects, OfOtherFabricsOrdersAndKindsAreNotTouched) {
  RollsOf({"10"});
  for (const auto& [order, fabric, kind] :
       {std::tuple{"000002", "F1", "T"}, {"000001", "F2", "T"}, {"000001", "F1", "D"}}) {
    mill_.Insert("DEF_MOV", {{"NUMERO", order}, {"ARTIGO", fabric}, {"TIPO", kind}, {"ROLO", 1}, {"QUANT", 9}});
  }
  Register(1, [this](host::Screen& screen) {
    EXPECT_TRUE(List(screen).IsEmpty());
    EXPECT_EQ(Save(screen), ActResult::kDone);
  });
  EXPECT_EQ(Stored().size(), 3u);
}

TEST_F(Defects, OfALotAreThoseOfItsColour) {
  ReservedOrder();
  const auto defect = [this](const char* lot, const char* colour) {
    mill_.Insert("DEF_MOV", {{"NUMERO", kOrder},
                             {"ARTIGO", "F1"},
                             {"TIPO", "D"},
                             {"LOTE", lot},
                             {"COR", colour},
                             {"CODIGO", "FURO"},
                             {"QUANT", 9}});
  };
  defect("L9", "01");
  defect("L9", "02");
  defect("L8", "01");
  host::Screen& screen = mill_.App().GetFuncoes().Carrega_Form("TfmCadDefTec");
  for (const auto& [edit, text] :
       {std::pair{"EdtOF", kOrder}, {"EdtArtigo", "F1"}, {"EdtTipo", "D"}, {"EdtLote", "L9"}, {"EdtCor", "01"}}) {
    dynamic_cast<host::Edit&>(*screen.FindComponent(edit)).SetText(text);
  }
  mill_.TakeStatements();
  AtRegister([this](host::Screen& shown) {
    EXPECT_TRUE(dynamic_cast<host::Edit&>(*shown.FindComponent("EdtLote")).Visible());
    EXPECT_EQ(List(shown).RecordCount(), 1u);
    EXPECT_EQ(mill_.Set(shown, "TbDef", {{"Peso", "5"}, {"Rolo", "77"}}), ActResult::kDone);
    EXPECT_EQ(Save(shown), ActResult::kDone);
  });
  mill_.App().ShowModal(screen);
  EXPECT_EQ(mill_.TakeStatements("DELETE"), Briefs{"DELETE FROM DEF_MOV WHERE NUMERO = '000001' AND ARTIGO = 'F1' AND "
                                                   "TIPO = 'D' AND LOTE = 'L9' AND COR = '01'"});
  ASSERT_EQ(Stored().size(), 3u);
  EXPECT_EQ(Stored().back().at("QUANT"), host::Value(5.0));
  EXPECT_EQ(Stored().back().at("LOTE"), host::Value("L9"));
  EXPECT_EQ(Stored().back().at("COR"), host::Value("01"));
}

TEST_F(Defects, AreLookedUp) {
  RollsOf({"10"});
  Register(1, [this](host::Screen& screen) {
    host::Grid& grid = mill_.GridOf(screen, "TbDef");
    const auto look_up = [&](const char* field, const char* lookup, const char* key) {
      mill_.Person().Pick(lookup, key);
      EXPECT_EQ(mill_.Desk().SelectCell(grid, field), ActResult::kDone);
      EXPECT_EQ(mill_.Desk().GridKey(grid, host::Key::kF4), ActResult::kDone);
    };
    look_up("Defeito", "PqDefeito", "MANCHA");
    look_up("Funcionario", "PqFunc", "P2");
    look_up("Turno", "PqTurno", "3");
    look_up("Qualidade", "PqQualidade", "A");
    const host::Dataset& list = List(screen);
    EXPECT_EQ(list["Defeito"].AsText(), "MANCHA");
    EXPECT_EQ(list["Desc_Def"].AsText(), "Mancha de óleo");
    EXPECT_EQ(list["Desc_Func"].AsText(), "João Lima");
    EXPECT_EQ(list["Turno"].AsText(), "3");
    EXPECT_EQ(list["Qualidade"].AsText(), "A");
    // Any other column has none.
    EXPECT_EQ(mill_.Desk().SelectCell(grid, "Peso"), ActResult::kDone);
    EXPECT_EQ(mill_.Desk().GridKey(grid, host::Key::kF4), ActResult::kDone);
    GiveUp(screen);
  });
  EXPECT_TRUE(Stored().empty());
}

TEST_F(Defects, WhatIsWrongIsRefusedInItsCell) {
  RollsOf({"10"});
  Order("000002", {{}});
  mill_.Insert("TECELB", {{"NUMERO", kOrder}, {"CODIGO", "F2"}, {"COR", "01"}, {"ORDEM", 7}, {"QTDE", 0}});
  struct Wrong {
    const char* field;
    const char* text;
    const char* told;
  };
  const Wrong wrong[] = {
      {"Defeito", "NADA", "Defeito não cadastrado."},
      {"Defeito", "furo", "Defeito não cadastrado."},
      {"Funcionario", "P9", "Funcionário não cadastrado."},
      {"Turno", "9", "Turno não cadastrado."},
      {"Qualidade", "Z", "Qualidade não cadastrada."},
      {"Peso", "-1", "A quantidade do defeito não pode ser negativa."},
      {"Peso", "100000", "A quantidade do defeito não pode passar de 99.999,999."},
      {"Peso", "999999999999999", "A quantidade do defeito não pode passar de 99.999,999."},
      {"Rolo", "2", "A ordem 000001 não tem a peça 2 do artigo F1."},
      {"Rolo", "7", "A ordem 000001 não tem a peça 7 do artigo F1."},
      {"Rolo", "0", "A ordem 000001 não tem a peça 0 do artigo F1."},
      {"Rolo", "-1", "A ordem 000001 não tem a peça -1 do artigo F1."},
  };
  Register(1, [&](host::Screen& screen) {
    ASSERT_EQ(Add(screen, {{"Defeito", "FURO"},
                           {"Peso", "1"},
                           {"Funcionario", "P1"},
                           {"Turno", "1"},
                           {"Qualidade", "A"},
                           {"Rolo", "1"}}),
              ActResult::kDone);
    for (const Wrong& tried : wrong) {
      SCOPED_TRACE(std::string(tried.field) + " " + tried.text);
      const std::string before = List(screen)[tried.field].AsText();
      EXPECT_EQ(mill_.Set(screen, "TbDef", {{tried.field, tried.text}}), ActResult::kRefused);
      EXPECT_EQ(Boxes(), BoxList{DefectNotice(tried.told)});
      EXPECT_EQ(List(screen)[tried.field].AsText(), before);
      EXPECT_EQ(List(screen)["Desc_Def"].AsText(), "Furo");
      EXPECT_EQ(List(screen)["Desc_Func"].AsText(), "Ana Souza");
    }
    // Taken out again, the code takes its description with it.
    EXPECT_EQ(mill_.Set(screen, "TbDef", {{"Funcionario", ""}, {"Turno", ""}, {"Qualidade", ""}, {"Rolo", ""}}),
              ActResult::kDone);
    EXPECT_EQ(List(screen)["Desc_Func"].AsText(), "");
    ASSERT_EQ(Save(screen), ActResult::kDone);
  });
  EXPECT_EQ(Brief(), Briefs{"FURO 1: 1"});
}

TEST_F(Defects, AQuantityWithoutItsDefectIsRefused) {
  RollsOf({"10"});
  Register(1, [this](host::Screen& screen) {
    EXPECT_EQ(Add(screen, {{"Peso", "1"}}), ActResult::kRefused);
    EXPECT_EQ(Boxes(), BoxList{DefectNotice("Informe o código do defeito.")});
    EXPECT_EQ(Save(screen), ActResult::kRefused);
    EXPECT_EQ(Boxes(), BoxList{DefectNotice("Informe o código do defeito.")});
    EXPECT_EQ(mill_.Set(screen, "TbDef", {{"Defeito", "FURO"}}), ActResult::kDone);
    EXPECT_EQ(Save(screen), ActResult::kDone);
  });
  EXPECT_EQ(Brief(), Briefs{"FURO 1: 1"});
}

// What a column cannot hold never reaches it.
TEST_F(Defects, ACodeLongerThanItsColumnIsRefused) {
  RollsOf({"10"});
  Register(1, [this](host::Screen& screen) {
    EXPECT_EQ(Add(screen, {{"Defeito", "1234567"}}), ActResult::kRefused);
    EXPECT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(mill_.Desk().CancelRow(mill_.GridOf(screen, "TbDef")), ActResult::kDone);
    GiveUp(screen);
  });
}

TEST_F(Defects, WithoutARollNothingCanBeTyped) {
  ReservedOrder();
  Load();
  for (const bool from_menu : {false, true}) {
    const auto look = [this](host::Screen& screen) {
      EXPECT_TRUE(mill_.GridOf(screen, "TbDef").ReadOnly());
      EXPECT_THROW(Save(screen), host::ActError);
      EXPECT_TRUE(dynamic_cast<host::Label&>(*screen.FindComponent("LblAviso")).Visible());
      EXPECT_EQ(mill_.Text(screen, "LblAviso"),
                "Nenhuma peça escolhida. Os defeitos são registrados pela baixa da ordem.");
    };
    if (from_menu) {
      look(mill_.Open("TfmCadDefTec"));
    } else {
      AtRegister(look);
      EXPECT_EQ(mill_.Click(Screen(), "BtnDefeitos"), ActResult::kDone);
    }
  }
  // The one left open serves a roll, and goes with it.
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  Store(1, {{"Defeito", "FURO"}, {"Peso", "1"}});
  EXPECT_EQ(Brief(), Briefs{"FURO 1: 1"});
  EXPECT_EQ(mill_.Desk().Find("TfmCadDefTec"), nullptr);
}

TEST_F(Defects, GoWithTheirRollAndAreListedForLabels) {
  RollsOf({"10", "11"});
  Store(1, {{"Defeito", "FURO"}, {"Peso", "1"}});
  Store(2, {{"Defeito", "RISCO"}, {"Peso", "2"}});
  // Those of a roll that is not there, of a lot, and of no register's code.
  mill_.Insert("DEF_MOV", {{"NUMERO", kOrder}, {"ARTIGO", "F1"}, {"ROLO", 9}, {"TIPO", "T"}, {"CODIGO", "FURO"}});
  mill_.Insert("DEF_MOV", {{"NUMERO", kOrder}, {"ARTIGO", "F1"}, {"ROLO", 1}, {"TIPO", "D"}, {"CODIGO", "FURO"}});
  mill_.Insert("DEF_MOV", {{"NUMERO", kOrder}, {"ARTIGO", "F1"}, {"ROLO", 2}, {"TIPO", "T"}, {"CODIGO", "X"}});
  host::Dataset& listed = mill_.Data(Screen(), "QryDefeitos");
  writeoff::LoadDefects(mill_.App(), kOrder, listed);
  Briefs rows;
  for (listed.First(); !listed.Eof(); listed.Next()) {
    rows.push_back(listed["ROLO"].AsText() + " " + listed["CODIGO"].AsText() + " " + listed["DESCRICAO"].AsText());
  }
  std::ranges::sort(rows);
  EXPECT_EQ(rows, (Briefs{"1 FURO Furo", "2 RISCO Risco", "2 X "}));
  mill_.Exec("DELETE FROM {DEF_MOV} WHERE ROLO = 9 OR TIPO = 'D' OR CODIGO = 'X'");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Brief(), Briefs{"RISCO 2: 2"});
  ExpectBooksBalance();
}

}  // namespace
}  // namespace test
