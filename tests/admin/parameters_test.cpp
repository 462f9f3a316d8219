// The installation's parameters: what they take, and from when on it counts.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "admin/admin_mill.h"
#include "app/admin/parameter_list.h"

namespace {

using host::ActResult;
using test::Lines;

class ParametersScreen : public test::AdminMill {
 protected:
  host::Screen& Open() { return mill_.Open("TfmParametros"); }
  void StandOn(host::Screen& screen, std::string_view group, int number) { StandAt(mill_, screen, group, number); }
  static void StandAt(test::Mill& mill, host::Screen& screen, std::string_view group, int number) {
    host::Dataset& rows = mill.Data(screen, "TbParametros");
    for (std::size_t row = 1; row <= rows.RecordCount(); ++row) {
      if (rows.ValueAt(row, 0).AsText() == group && rows.ValueAt(row, 1).AsInteger() == number) {
        ASSERT_EQ(mill.Desk().SelectRow(mill.GridOf(screen, "TbParametros"), row), ActResult::kDone);
        return;
      }
    }
    FAIL() << group << number;
  }
  ActResult Put(host::Screen& screen, std::string_view group, int number, std::string_view value) {
    StandOn(screen, group, number);
    return mill_.Set(screen, "TbParametros", {{"VALOR", std::string(value)}});
  }
  std::string Stored(std::string_view group, int number) {
    return mill_
        .Scalar("SELECT VALOR FROM TEC_PARAMETRO WHERE GRUPO = '" + std::string(group) +
                "' AND NUMERO = " + std::to_string(number))
        .AsText();
  }
};

TEST_F(ParametersScreen, ShowsEveryParameterWithItsMeaningAndTheValuesItTakes) {
  host::Screen& screen = Open();
  host::Dataset& rows = mill_.Data(screen, "TbParametros");
  EXPECT_EQ(rows.RecordCount(), app::admin::KnownParameters().size());
  StandOn(screen, "MAL", 40);
  EXPECT_EQ(rows["VALOR"].AsText(), "3");
  EXPECT_EQ(rows["SIGNIFICADO"].AsText(), "Formação do lote da peça");
  EXPECT_EQ(mill_.Text(screen, "LblValores"), "Valores aceitos em \"MAL\" 40");
  host::Dataset& allowed = mill_.Data(screen, "TbValores");
  EXPECT_EQ(allowed.RecordCount(), 6u);
  EXPECT_TRUE(allowed.Locate("VALOR;SIGNIFICADO", {"6", "número da ordem e da nota de retorno"}));
  EXPECT_FALSE(screen.HasUnsavedWork());
}

TEST_F(ParametersScreen, TheCompanysNameIsAnyText) {
  host::Screen& screen = Open();
  StandOn(screen, "SIS", 10);
  EXPECT_EQ(mill_.Text(screen, "LblValores"), "Valores aceitos em \"SIS\" 10: qualquer texto");
  EXPECT_EQ(mill_.Data(screen, "TbValores").RecordCount(), 0u);
  ASSERT_EQ(Put(screen, "SIS", 10, "Malhas São José & Filhos Ltda."), ActResult::kDone);
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored("SIS", 10), "Malhas São José & Filhos Ltda.");
}

TEST_F(ParametersScreen, AFreshInstallationHasOnlyValuesThatAreAllowed) {
  const auto rows = mill_.Rows("SELECT GRUPO, NUMERO, VALOR FROM TEC_PARAMETRO");
  EXPECT_FALSE(rows.empty());
  for (const auto& row : rows) {
    const auto* known =
        app::admin::FindParameter(row.at("GRUPO").AsText(), static_cast<int>(row.at("NUMERO").AsInteger()));
    ASSERT_NE(known, nullptr) << row.at("GRUPO").AsText();
    EXPECT_EQ(app::admin::ParameterObjection(*known, row.at("VALOR").AsText()), std::nullopt);
  }
}

TEST(ParameterList, TheGuideNamesEveryParameterAndValue) {
  std::ifstream guide(TECELAGEM_SOURCE_DIR "/docs/administration.md");
  std::vector<std::string> lines;
  for (std::string line; std::getline(guide, line);) lines.push_back(line);
  for (const auto& known : app::admin::KnownParameters()) {
    const std::string name = "| `" + std::string(known.group) + "` " + std::to_string(known.number) + " |";
    const auto row =
        std::find_if(lines.begin(), lines.end(), [&](const std::string& line) { return line.starts_with(name); });
    ASSERT_NE(row, lines.end()) << name;
    for (const auto& allowed : known.allowed) {
      const std::string value = allowed.value.empty() ? "empty" : "`" + std::string(allowed.value) + "`";
      EXPECT_NE(row->find(value, name.size()), std::string::npos) << name << " " << value;
    }
  }
}

TEST_F(ParametersScreen, StoresAndTheScreensOpenedAfterwardsSeeIt) {
  EXPECT_EQ(mill_.App().GetFuncoes().BuscaParametro("MAL", 40), "3");
  host::Screen& screen = Open();
  ASSERT_EQ(Put(screen, "MAL", 40, "5"), ActResult::kDone);
  ASSERT_EQ(Put(screen, "COM", 80, ""), ActResult::kDone);
  EXPECT_TRUE(screen.HasUnsavedWork());
  EXPECT_EQ(Stored("MAL", 40), "3");
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored("MAL", 40), "5");
  EXPECT_EQ(Stored("COM", 80), "");
  EXPECT_FALSE(screen.HasUnsavedWork());
  EXPECT_EQ(mill_.App().GetFuncoes().BuscaParametro("MAL", 40), "5");
  EXPECT_EQ(Log("PARAMETROS"), (Lines{"1|COM 80|COM 80: \"F\" -> \"\"", "1|MAL 40|MAL 40: \"3\" -> \"5\""}));
  EXPECT_EQ(mill_.Messages(), Lines{});
}

TEST_F(ParametersScreen, AnotherStationSeesItInTheScreensItOpensNext) {
  test::Mill::Options there;
  there.database = mill_.Path();
  test::Mill other(there);
  EXPECT_EQ(other.App().GetFuncoes().BuscaParametro("MAL", 70), "S");
  host::Screen& screen = Open();
  Put(screen, "MAL", 70, "N");
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  other.Open("TfmCadLoteTec");
  EXPECT_EQ(other.App().GetFuncoes().BuscaParametro("MAL", 70), "N");
}

TEST_F(ParametersScreen, AValueThatIsNotAllowedIsRefusedWithThoseThatAre) {
  host::Screen& screen = Open();
  const auto refusal = [&](std::string_view group, int number, std::string_view value) {
    mill_.Messages();
    EXPECT_EQ(Put(screen, group, number, value), ActResult::kRefused);
    const Lines said = mill_.Messages();
    mill_.Desk().CancelRow(mill_.GridOf(screen, "TbParametros"));
    return said.size() == 1 ? said.front() : "?";
  };
  EXPECT_EQ(refusal("MAL", 40, "7"), "O parâmetro \"MAL\" 40 aceita 1, 2, 3, 4, 5 ou 6.");
  EXPECT_EQ(refusal("MAL", 40, ""), "O parâmetro \"MAL\" 40 aceita 1, 2, 3, 4, 5 ou 6.");
  EXPECT_EQ(refusal("MAL", 50, "s"), "O parâmetro \"MAL\" 50 aceita S ou N.");
  EXPECT_EQ(refusal("COM", 80, "N"), "O parâmetro \"COM\" 80 aceita F ou vazio.");
  EXPECT_EQ(refusal("SIS", 20, "ção"), "O parâmetro \"SIS\" 20 aceita S ou N.");
  EXPECT_FALSE(screen.HasUnsavedWork());
  EXPECT_EQ(Log("PARAMETROS"), Lines{});
}

TEST_F(ParametersScreen, ADoubleClickOnAnAllowedValueTakesIt) {
  host::Screen& screen = Open();
  StandOn(screen, "MAL", 40);
  mill_.Data(screen, "TbValores").Locate("VALOR", {"2"});
  ASSERT_EQ(mill_.Desk().DblClick(mill_.GridOf(screen, "TbValores")), ActResult::kDone);
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored("MAL", 40), "2");
}

TEST_F(ParametersScreen, CancellingShowsWhatIsStored) {
  host::Screen& screen = Open();
  Put(screen, "MAL", 40, "1");
  ASSERT_EQ(mill_.Click(screen, "BtnCancelar"), ActResult::kDone);
  EXPECT_FALSE(screen.HasUnsavedWork());
  StandOn(screen, "MAL", 40);
  EXPECT_EQ(mill_.Data(screen, "TbParametros")["VALOR"].AsText(), "3");
}

TEST_F(ParametersScreen, AParameterChangedElsewhereIsNotOverwritten) {
  test::Mill::Options there;
  there.database = mill_.Path();
  test::Mill other(there);
  host::Screen& screen = Open();
  Put(screen, "MAL", 40, "1");
  host::Screen& others = other.Open("TfmParametros");
  StandAt(other, others, "MAL", 40);
  other.Set(others, "TbParametros", {{"VALOR", "6"}});
  StandAt(other, others, "MAL", 50);
  other.Set(others, "TbParametros", {{"VALOR", "S"}});
  ASSERT_EQ(other.Click(others, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kFailed);
  EXPECT_EQ(mill_.Messages(),
            Lines{"O parâmetro MAL 40 foi alterado em outra estação (último a alterar: ADMIN). Cancele para ver como "
                  "está agora e altere de novo."});
  EXPECT_EQ(Stored("MAL", 40), "6");
  mill_.Click(screen, "BtnCancelar");
  Put(screen, "MAL", 90, "N");
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored("MAL", 50), "S") << "what was not changed here stays as the other station left it";
}

TEST_F(ParametersScreen, ParametersOfOtherProgramsTakeAnything) {
  mill_.Insert("TEC_PARAMETRO", {{"GRUPO", "FAT"}, {"NUMERO", 7}, {"VALOR", "ação"}});
  host::Screen& screen = Open();
  StandOn(screen, "FAT", 7);
  EXPECT_EQ(mill_.Data(screen, "TbParametros")["SIGNIFICADO"].AsText(), "(de outro programa)");
  EXPECT_TRUE(mill_.Data(screen, "TbValores").IsEmpty());
  ASSERT_EQ(Put(screen, "FAT", 7, "São João"), ActResult::kDone);
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored("FAT", 7), "São João");
}

TEST_F(ParametersScreen, AValueThatWasNeverAllowedIsShownAndCanBeMended) {
  mill_.Exec("UPDATE TEC_PARAMETRO SET VALOR = '9' WHERE GRUPO = 'MAL' AND NUMERO = 40");
  mill_.Exec("DELETE FROM TEC_PARAMETRO WHERE GRUPO = 'SIS'");
  host::Screen& screen = Open();
  EXPECT_EQ(mill_.Messages(), Lines{});
  Put(screen, "MAL", 40, "2");
  Put(screen, "SIS", 20, "N");
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored("MAL", 40), "2");
  EXPECT_EQ(Stored("SIS", 20), "N");
}

TEST_F(ParametersScreen, AFailingStatementStoresNothing) {
  host::Screen& screen = Open();
  Put(screen, "MAL", 40, "1");
  Put(screen, "MAL", 50, "S");
  FailOnceAtEach(screen, 7, [&] { return mill_.Click(screen, "BtnGravar"); });
  EXPECT_EQ(Stored("MAL", 40), "1");
  EXPECT_EQ(Stored("MAL", 50), "S");
}

TEST_F(ParametersScreen, WithoutTheRightNothingIsStored) {
  host::Screen& screen = Open();
  Put(screen, "MAL", 40, "1");
  mill_.Exec("UPDATE TEC_USUARIO SET ADMINISTRADOR = 'N' WHERE CODIGO = 'ADMIN'");
  EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kFailed);
  EXPECT_EQ(mill_.Messages(), Lines{"Somente um administrador pode usar a tela \"Parâmetros\"."});
  EXPECT_EQ(Stored("MAL", 40), "3");
}

}  // namespace
