// Every register does the same things in the same way.
#include <gtest/gtest.h>

#include <set>

#include "app/assembly/own_screens.h"
#include "app/tables/table_shape.h"
#include "registers/register_mill.h"

namespace {

using app::tables::RegisterDescription;
using host::ActResult;

/// A record that each register takes, besides key and text.
test::Inputs Others(std::string_view screen_class) {
  if (screen_class == "TfmMateriais") return {{"EdtUnidade", "KG"}};
  if (screen_class == "TfmRegras") return {{"EdtFormula", "MIN(9; GRAMATURA * 0,02 + 3)"}};
  if (screen_class == "TfmPessoal") return {{"EdtTurno", "1"}};
  if (screen_class == "TfmDepositos") return {{"EdtCodcli", "M00001"}, {"EdtPrioridade", "5"}};
  if (screen_class == "TfmEmbalagens") return {{"EdtQtde", "12,5"}};
  return {};
}

class EveryRegister : public test::RegisterMill, public ::testing::WithParamInterface<RegisterDescription> {
 protected:
  const RegisterDescription& Description() const { return GetParam(); }
  std::string Key() const { return app::registers::ComponentName("Edt", Description().Key()); }
  std::string TextInput() const { return app::registers::ComponentName("Edt", Description().text_column); }
  std::string Stored(std::string_view column) {
    return Text("SELECT " + std::string(column) + " FROM {" + std::string(Description().table) + "} WHERE " +
                std::string(Description().Key()) + " = 'Zé'");
  }
};

TEST_P(EveryRegister, IncludesAltersAndDeletes) {
  auto& screen = Open(Description().class_name);
  const std::string subject = app::tables::LogSubject(Description());
  EXPECT_EQ(mill.Click(screen, "BtnIncluir"), ActResult::kDone);
  EXPECT_EQ(Focused(), Key());
  Type(screen, {{Key(), "Zé"}, {TextInput(), "Descrição à mão"}});
  Type(screen, Others(Description().class_name));
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Said(), "");
  EXPECT_EQ(Stored(Description().text_column), "Descrição à mão");
  EXPECT_EQ(LastLog(), subject + "|INCLUSAO DE Zé|0|Zé|ADMIN");

  Type(screen, {{TextInput(), "Ação"}});
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored(Description().text_column), "Ação");
  EXPECT_EQ(LastLog(), subject + "|ALTERACAO DE Zé|1|Zé|ADMIN");

  mill.Person().Answer("Deseja excluir " + app::tables::RecordName(Description(), "Zé") + "?", "yes");
  EXPECT_EQ(mill.Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(Stored("COUNT(*)"), "0");
  EXPECT_EQ(LastLog(), subject + "|EXCLUSAO DE Zé|2|Zé|ADMIN");
  EXPECT_TRUE(mill.Person().Unused().empty());
  EXPECT_TRUE(mill.Person().TakeErrors().empty());
}

TEST_P(EveryRegister, RefusesAKeyTakenAndATextMissing) {
  auto& screen = Open(Description().class_name);
  mill.Click(screen, "BtnIncluir");
  Type(screen, {{Key(), "Zé"}, {TextInput(), "Um"}});
  Type(screen, Others(Description().class_name));
  mill.Click(screen, "BtnGravar");
  mill.Click(screen, "BtnIncluir");
  Type(screen, {{Key(), "Zé"}, {TextInput(), "Outro"}});
  Type(screen, Others(Description().class_name));
  Said();
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(Said(), app::tables::RecordName(Description(), "Zé", true) + " já está " +
                        app::tables::Agreeing(Description(), "cadastrad") + ".");
  EXPECT_EQ(Focused(), Key());
  Type(screen, {{Key(), "Z"}, {TextInput(), "  "}});
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(Focused(), TextInput());
  EXPECT_EQ(Stored(Description().text_column), "Um");
}

TEST_P(EveryRegister, HasWhatTheDatabaseHas) {
  const auto shape = app::tables::ReadTableShape(mill.Db(), Description().table);
  ASSERT_EQ(shape.key_columns, std::vector<std::string>{std::string(Description().Key())});
  ASSERT_NE(Description().Find(Description().text_column), nullptr);
  for (const auto& column : shape.columns) {
    EXPECT_EQ(Description().Find(column.name) == nullptr, column.filled_by_database) << column.name;
  }
  for (const auto& column : Description().columns) {
    EXPECT_NE(shape.Find(column.name), nullptr) << column.name;
    EXPECT_FALSE(column.caption.empty()) << column.name;
  }
}

TEST_P(EveryRegister, TabGoesFromTheSearchThroughListAndRecordToTheButtons) {
  auto& screen = Open(Description().class_name);
  std::vector<std::string> stops = {"EdtBusca", "GrdLista"};
  for (const auto& input : screen.Inputs()) stops.push_back(input->Control().Name());
  if (!ListKeys(screen).empty()) stops.erase(stops.begin() + 2);  // the key of a stored record cannot be typed
  if (Description().detail) stops.emplace_back("GrdDetalhe");
  stops.emplace_back("BtnIncluir");
  mill.Desk().Enter(screen.EdtBusca);
  std::vector<std::string> visited = {Focused()};
  while (visited.back() != "BtnIncluir" && visited.size() < 40) {
    mill.Desk().MoveFocus(screen, false);
    visited.push_back(Focused());
  }
  EXPECT_EQ(visited, stops);
}

TEST_P(EveryRegister, ItsScreenIsInTheMenu) {
  std::vector<std::string> entries;
  for (const app::MenuScreen& screen : mill.App().MenuScreens()) {
    if (screen.class_name == Description().class_name) entries.push_back(screen.menu + "/" + screen.caption);
  }
  EXPECT_EQ(entries, std::vector<std::string>{"Cadastros/" + std::string(Description().caption)});
}

std::string NameOfCase(const ::testing::TestParamInfo<RegisterDescription>& info) {
  return std::string(info.param.class_name);
}

INSTANTIATE_TEST_SUITE_P(Registers, EveryRegister,
                         ::testing::ValuesIn(app::tables::Registers().begin(), app::tables::Registers().end()),
                         NameOfCase);

TEST(Registers, StandInTheMenuInTheirOrder) {
  std::vector<std::string> captions;
  for (const auto& screen : app::OwnScreens()) {
    if (screen.menu == "Cadastros") captions.emplace_back(screen.caption);
  }
  EXPECT_EQ(captions,
            (std::vector<std::string>{"Materiais", "Cores", "Clientes e Fornecedores", "Depósitos", "Máquinas",
                                      "Pessoal", "Turnos", "Prazos", "Fluxos", "Defeitos", "Qualidades", "Embalagens",
                                      "Linhas", "Classes fiscais", "Grupos", "Regras de composição"}));
}

TEST(Registers, LogSubjectsAreCapitalsAndFitTheLog) {
  const auto subject = [](std::string_view table) {
    return app::tables::LogSubject(*app::tables::FindRegister(table));
  };
  EXPECT_EQ(subject("MATERIAL"), "CADASTRO DE MATERIAIS");
  EXPECT_EQ(subject("DEPOSITO"), "CADASTRO DE DEPÓSITOS");
  EXPECT_EQ(subject("TNG_REGRA"), "CADASTRO DE REGRAS DE COMPOSIÇÃO");
  for (const auto& description : app::tables::Registers()) {
    EXPECT_LE(app::tables::LogSubject(description).size(), 40u) << description.table;
  }
}

TEST(Registers, ColumnsHaveTheirCaptions) {
  EXPECT_EQ(app::tables::CaptionOf("MATERIAL", "NE"), "Título Ne");
  EXPECT_EQ(app::tables::CaptionOf("MATERIAL", "NADA"), "");
  EXPECT_EQ(app::tables::CaptionOf("TECEL", "NUMERO"), "");
}

class SomeRegisters : public test::RegisterMill {};

TEST_F(SomeRegisters, AFormulaIsCheckedByItsLanguage) {
  auto& screen = Open("TfmRegras");
  Type(screen, {{"EdtFormula", "ALTURA / 4"}});
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(Said(), "Campo \"Fórmula\": Fórmula inválida na posição 1: \"ALTURA\" não é um dado do material.");
  EXPECT_EQ(Focused(), "EdtFormula");
  EXPECT_EQ(Text("SELECT FORMULA FROM {TNG_REGRA} WHERE CODIGO = 'R1'"), "35");
}

TEST_F(SomeRegisters, ThePartnersFlagsBeginAsTheyShould) {
  auto& screen = Open("TfmEntidades");
  mill.Click(screen, "BtnIncluir");
  Type(screen, {{"EdtCodcli", "N00001"}, {"EdtNome", "Malharia Nova"}, {"EdtUf", "SC"}});
  Check(screen, "ChkSimples", true);
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Text("SELECT ATIVO || BLOQUEIO || SIMPLES FROM {ENTIDADE} WHERE CODCLI = 'N00001'"), "SNS");
}

class Shifts : public test::RegisterMill {
 protected:
  app::registers::TfmRegister& screen = Open("TfmTurnos");
  host::Grid& hours = mill.GridOf(screen, "TbDetalhe");
  std::string Hours(int day) {
    const auto rows =
        mill.Rows("SELECT ENTRADA, SAIDA FROM {TURNO_HORARIOS} WHERE TURNO = '1' AND DIA = " + std::to_string(day));
    return rows.empty() ? "" : rows[0].at("ENTRADA").AsText() + " " + rows[0].at("SAIDA").AsText();
  }
};

TEST_F(Shifts, HaveTheirHoursPerWeekday) {
  const host::Dataset& data = hours.GetDataset();
  ASSERT_EQ(data.RecordCount(), 7u);
  EXPECT_EQ(data.ValueAt(1, 0).AsText(), "Domingo");
  EXPECT_EQ(data.ValueAt(7, 0).AsText(), "Sábado");
  EXPECT_EQ(data.ValueAt(7, 1).AsText(), "06:00");
  EXPECT_EQ(data.ValueAt(7, 2).AsText(), "14:00");
}

TEST_F(Shifts, StoreTheHoursOfEachDay) {
  mill.Desk().SelectRow(hours, 7);
  EXPECT_EQ(mill.Desk().SetRow(hours, {{"ENTRADA", "5:15"}, {"SAIDA", "12:00"}}), ActResult::kDone);
  mill.Desk().SelectRow(hours, 1);
  EXPECT_EQ(mill.Desk().GridKey(hours, host::Key::kDelete), ActResult::kRefused);  // the line stays, emptied
  EXPECT_TRUE(screen.HasUnsavedWork());
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Said(), "");
  EXPECT_EQ(Hours(7), "05:15:00 12:00:00");
  EXPECT_EQ(Hours(1), "");
  EXPECT_EQ(Hours(2), "06:00:00 14:00:00");
  EXPECT_EQ(hours.GetDataset().ValueAt(7, 1).AsText(), "05:15");
  EXPECT_FALSE(screen.HasUnsavedWork());
}

TEST_F(Shifts, RefuseWhatIsNoTimeAndALineHalfFilledIn) {
  mill.Desk().SelectRow(hours, 3);
  EXPECT_EQ(mill.Desk().SetRow(hours, {{"ENTRADA", "25:00"}}), ActResult::kRefused);
  EXPECT_EQ(Said(), "Entrada: \"25:00\" não é uma hora (HH:MM).");
  EXPECT_EQ(mill.Desk().SetRow(hours, {{"ENTRADA", ""}}), ActResult::kDone);
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(Said(), "Terça-feira: falta o campo \"Entrada\".");
  EXPECT_EQ(Focused(), "GrdDetalhe");
  EXPECT_EQ(hours.GetDataset().RecNo(), 3u);
  EXPECT_EQ(Hours(3), "06:00:00 14:00:00");
}

TEST_F(Shifts, ALineBelowTheLastVanishes) {
  mill.Desk().SelectRow(hours, 7);
  mill.Desk().GridKey(hours, host::Key::kDown);
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(hours.GetDataset().RecordCount(), 7u);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {TURNO_HORARIOS} WHERE TURNO = '1'").AsInteger(), 7);
}

TEST_F(Shifts, HoursChangedElsewhereAreAConflict) {
  Type(screen, {{"EdtDescricao", "Manhã"}});
  mill.Exec("UPDATE {TURNO_HORARIOS} SET SAIDA = '15:00' WHERE TURNO = '1' AND DIA = 2");
  mill.Person().Answer("O turno 1 foi alterado depois de aberto aqui", "yes");
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(hours.GetDataset().ValueAt(2, 2).AsText(), "15:00");
  EXPECT_EQ(mill.Text(screen, "EdtDescricao"), "Dia");
}

TEST_F(Shifts, TheHoursGoWithTheirShift) {
  mill.Exec("UPDATE {PESSOAL} SET TURNO = NULL");
  mill.Person().Answer("Deseja excluir o turno 1?", "yes");
  EXPECT_EQ(mill.Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {TURNO_HORARIOS} WHERE TURNO = '1'").AsInteger(), 0);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {TURNO_HORARIOS} WHERE TURNO = '3'").AsInteger(), 7);
}

}  // namespace
