// The operations that every screen calls.
#include <gtest/gtest.h>

#include <limits>

#include "host/errors.h"
#include "host/funcoes.h"
#include "host/kit/screen.h"
#include "support/mill.h"

namespace {

class GeneralServices : public testing::Test {
 protected:
  GeneralServices() { test::FillSmallMill(mill_); }
  host::Funcoes& Services() { return mill_.App().GetFuncoes(); }
  std::string Quoted(std::string_view text) { return Services().Aspas(text); }
  bool Exists(std::string_view table, std::string_view columns, const std::string& quoted) {
    return Services().Existe(table, columns, quoted, mill_.App().GetTabela().IBDatabase());
  }
  host::Value Find(std::string_view table, std::string_view columns, std::string_view result,
                   const std::string& quoted) {
    return Services().Busca_Valor(table, columns, result, quoted, true, true);
  }

  test::Mill mill_;
};

TEST_F(GeneralServices, QuotesTextAsLiteral) {
  EXPECT_EQ(Quoted(""), "''");
  EXPECT_EQ(Quoted("F1"), "'F1'");
  EXPECT_EQ(Quoted("d'água"), "'d''água'");
  EXPECT_EQ(Quoted("'"), "''''");
  EXPECT_EQ(Quoted("a;b,c"), "'a;b,c'");
}

TEST_F(GeneralServices, WritesNumbersWithPoint) {
  EXPECT_EQ(Services().PermanecePonto(10.5), "10.5");
  EXPECT_EQ(Services().PermanecePonto(0), "0");
  EXPECT_EQ(Services().PermanecePonto(-0.000001), "-0.000001");
  EXPECT_THROW(Services().PermanecePonto(std::numeric_limits<double>::quiet_NaN()), host::InputError);
  EXPECT_THROW(Services().PermanecePonto(std::numeric_limits<double>::infinity()), host::InputError);
}

TEST_F(GeneralServices, NamesTablesOfTheCompany) {
  EXPECT_EQ(Services().DBLocal("TECEL", true), "TECEL_001");
  EXPECT_EQ(Services().DBLocal("TEC_LOG", false), "TEC_LOG");
  EXPECT_EQ(Services().DBLocal_SQL("FROM {CADCORTI} CADCORTI JOIN {MATERIAL} M"),
            "FROM CADCORTI_001 CADCORTI JOIN MATERIAL_001 M");
}

TEST_F(GeneralServices, TellsWhetherRowsExist) {
  EXPECT_TRUE(Exists("MATERIAL", "CODIGO", Quoted("F1")));
  EXPECT_FALSE(Exists("MATERIAL", "CODIGO", Quoted("f1")));
  EXPECT_FALSE(Exists("MATERIAL", "CODIGO", Quoted("")));
  EXPECT_TRUE(Exists("MAT_ITEN", "CODIGO,COR", Quoted("F1") + "," + Quoted("02")));
  EXPECT_FALSE(Exists("MAT_ITEN", "CODIGO,COR", Quoted("F3") + "," + Quoted("02")));
}

TEST_F(GeneralServices, SeparatorsInsideQuotesAreText) {
  mill_.Insert("CADCOR", {{"COR", "a,b;'c"}, {"DESCRICAO", "Estranha"}});
  EXPECT_TRUE(Exists("CADCOR", "COR,DESCRICAO", Quoted("a,b;'c") + "," + Quoted("Estranha")));
  EXPECT_FALSE(Exists("CADCOR", "COR,DESCRICAO", Quoted("a,b;c") + "," + Quoted("Estranha")));
  EXPECT_EQ(Find("CADCOR", "COR;DESCRICAO", "DESCRICAO", Quoted("a,b;'c") + ";" + Quoted("Estranha")).AsText(),
            "Estranha");
}

TEST_F(GeneralServices, FindsOneValueByItsKeys) {
  EXPECT_EQ(Find("ENTIDADE", "CODCLI", "NOME", Quoted("M00001")).AsText(), "Malharia Aurora");
  EXPECT_DOUBLE_EQ(Find("CADCORTI", "CODCLI;CODIGO", "CUSTO", Quoted("M00001") + ";" + Quoted("F2")).AsFloat(), 4);
  EXPECT_DOUBLE_EQ(
      Find("CADCORTI", "CODCLI;CODIGO;COR", "CUSTO", Quoted("M00001") + ";" + Quoted("F1") + ";" + Quoted("02"))
          .AsFloat(),
      6.5);
}

TEST_F(GeneralServices, OfSeveralRowsTheFirstByTheTablesKeySpeaks) {
  for (const char* code : {"Z9", "A1", "K5"}) {
    mill_.Insert("DEPOSITO", {{"CODIGO", code}, {"DESCRICAO", code}, {"PRIORIDADE", "7"}});
  }
  EXPECT_EQ(Find("DEPOSITO", "PRIORIDADE", "DESCRICAO", Quoted("7")).AsText(), "A1");
  mill_.TakeStatements();
  Find("DEPOSITO", "PRIORIDADE", "DESCRICAO", Quoted("7"));
  Find("DEPOSITO", "CODIGO", "DESCRICAO", Quoted("A1"));
  EXPECT_EQ(mill_.TakeStatements(),
            std::vector<std::string>({"SELECT FIRST 1 DESCRICAO FROM DEPOSITO WHERE PRIORIDADE = '7' ORDER BY CODIGO",
                                      "SELECT FIRST 1 DESCRICAO FROM DEPOSITO WHERE CODIGO = 'A1'"}));
}

TEST_F(GeneralServices, NothingFoundIsNull) {
  const host::Value none = Find("CADCORTI", "CODCLI;CODIGO", "CUSTO", Quoted("M00004") + ";" + Quoted("F1"));
  EXPECT_TRUE(none.IsNull());
  EXPECT_EQ(none.AsText(), "");
  EXPECT_EQ(none.AsFloat(), 0);
}

TEST_F(GeneralServices, TrimsOnlyWhenAsked) {
  mill_.Insert("CADCOR", {{"COR", "X"}, {"DESCRICAO", " Cinza  "}});
  EXPECT_EQ(Services().Busca_Valor("CADCOR", "COR", "DESCRICAO", Quoted("X"), true, true).AsText(), "Cinza");
  EXPECT_EQ(Services().Busca_Valor("CADCOR", "COR", "DESCRICAO", Quoted("X"), true, false).AsText(), " Cinza  ");
}

TEST_F(GeneralServices, FindsInTablesOfTheHost) {
  EXPECT_EQ(Services().Busca_Valor("TEC_USUARIO", "CODIGO", "ADMINISTRADOR", Quoted("ADMIN"), false, true).AsText(),
            "S");
}

TEST_F(GeneralServices, RefusedStatementsAreDatabaseErrors) {
  EXPECT_THROW(Exists("NADA", "CODIGO", Quoted("F1")), host::DatabaseError);
  EXPECT_THROW(Find("MATERIAL", "CODIGO", "NADA", Quoted("F1")), host::DatabaseError);
  EXPECT_TRUE(Exists("MATERIAL", "CODIGO", Quoted("F1")));
}

TEST_F(GeneralServices, KeysAndValuesMustMatch) {
  EXPECT_THROW(Exists("MATERIAL", "CODIGO,COR", Quoted("F1")), std::invalid_argument);
  EXPECT_THROW(Exists("MATERIAL", "CODIGO", ""), std::invalid_argument);
}

// --- rights
// -----------------------------------------------------------------------------------------------------------

TEST_F(GeneralServices, AdministratorMayDoEverything) {
  EXPECT_TRUE(Services().Acessa("TfmCadLoteTec", "A", "0"));
  EXPECT_TRUE(Services().Acessa("TfmQualquer", "E", "0"));
}

TEST_F(GeneralServices, OthersNeedTheirRight) {
  mill_.Exec("INSERT INTO TEC_USUARIO (CODIGO, NOME) VALUES ('ANA', 'Ana Souza')");
  mill_.Insert("TEC_DIREITO", {{"USUARIO", "ANA"}, {"TELA", "TfmCadLoteTec"}, {"OPERACAO", "A"}});
  test::Mill::Options options;
  options.database = mill_.Path();
  options.user = "ANA";
  test::Mill station(options);
  host::Funcoes& ana = station.App().GetFuncoes();
  EXPECT_EQ(ana.vUsuario(), "Ana Souza");
  EXPECT_EQ(ana.vUsuarioCodigo(), "ANA");
  EXPECT_TRUE(ana.Acessa("TfmCadLoteTec", "A", "0"));
  EXPECT_FALSE(ana.Acessa("TfmCadLoteTec", "E", "0"));
  EXPECT_FALSE(ana.Acessa("TfmMovBaiTec", "A", "0"));
}

TEST_F(GeneralServices, ARightTakenAwayCountsAtOnce) {
  mill_.TakeRight("TfmTiny", "E");
  EXPECT_TRUE(Services().Acessa("TfmTiny", "A", "0"));
  EXPECT_FALSE(Services().Acessa("TfmTiny", "E", "0"));
  mill_.TakeRight("TfmTiny", "");
  EXPECT_FALSE(Services().Acessa("TfmTiny", "A", "0"));
  EXPECT_TRUE(Services().Acessa("TfmMateriais", "A", "0"));
}

// --- log
// --------------------------------------------------------------------------------------------------------------

TEST_F(GeneralServices, LogsWhoWhenAndWhat) {
  mill_.SetClock("2026-03-10 22:15:07");
  Services().GeraLog("ORDEM DE TECELAGEM", "INCLUSAO DA ORDEM NR. 000001", host::LogOperation::kInclusion, "000001",
                     nullptr);
  const auto rows = mill_.Rows(
      "SELECT USUARIO, CAST(DATA_HORA AS VARCHAR(30)) AS MOMENTO, ASSUNTO, TEXTO, OPERACAO, CHAVE FROM TEC_LOG");
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].at("USUARIO").AsText(), "ADMIN");
  EXPECT_EQ(rows[0].at("MOMENTO").AsText().substr(0, 19), "2026-03-10 22:15:07");
  EXPECT_EQ(rows[0].at("ASSUNTO").AsText(), "ORDEM DE TECELAGEM");
  EXPECT_EQ(rows[0].at("TEXTO").AsText(), "INCLUSAO DA ORDEM NR. 000001");
  EXPECT_EQ(rows[0].at("OPERACAO").AsInteger(), 0);
  EXPECT_EQ(rows[0].at("CHAVE").AsText(), "000001");
}

TEST_F(GeneralServices, LogCutsLongTextAndTakesAnyCharacter) {
  const std::string long_text(149, 'x');
  Services().GeraLog("BAIXAS DA TECELAGEM", long_text + "éé", host::LogOperation::kOther, std::string(60, '9'),
                     nullptr);
  Services().GeraLog("BAIXAS DA TECELAGEM", "Ω e 'aspas'", host::LogOperation::kDeletion, "1", nullptr);
  const auto rows = mill_.Rows("SELECT TEXTO, CHAVE, OPERACAO FROM TEC_LOG ORDER BY ID");
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].at("TEXTO").AsText(), long_text + "é");
  EXPECT_EQ(rows[0].at("CHAVE").AsText().size(), 40u);
  EXPECT_EQ(rows[0].at("OPERACAO").AsInteger(), 3);
  EXPECT_EQ(rows[1].at("TEXTO").AsText(), "? e 'aspas'");
}

TEST_F(GeneralServices, TellsTheNewestLogRowsOfAKey) {
  const auto log = [&](const char* moment, const char* subject, const char* text, host::LogOperation operation,
                       const char* key) {
    mill_.SetClock(moment);
    Services().GeraLog(subject, text, operation, key, nullptr);
  };
  log("2026-03-10 08:00:00", "PRECO", "INCLUSAO", host::LogOperation::kInclusion, "F1");
  log("2026-03-11 09:30:00", "PRECO", "CUSTO DE: 1 PARA: 2", host::LogOperation::kAlteration, "F1");
  log("2026-03-11 09:31:00", "PRECO", "de outro", host::LogOperation::kAlteration, "F2");
  log("2026-03-11 09:32:00", "ORDEM", "de outro assunto", host::LogOperation::kAlteration, "F1");
  // The clock of a station was put back: the row written last is the newest all the same.
  log("2026-03-09 07:00:00", "PRECO", "EXCLUSAO", host::LogOperation::kDeletion, "F1");

  const auto rows = Services().UltimosLogs("PRECO", "F1", 2);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].text, "EXCLUSAO");
  EXPECT_EQ(rows[0].operation, host::LogOperation::kDeletion);
  EXPECT_EQ(rows[0].moment.ToIso(), "2026-03-09 07:00:00");
  EXPECT_EQ(rows[0].user, "ADMIN");
  EXPECT_EQ(rows[1].text, "CUSTO DE: 1 PARA: 2");
  EXPECT_EQ(rows[1].operation, host::LogOperation::kAlteration);
  EXPECT_EQ(Services().UltimosLogs("PRECO", "F1", 100).size(), 3u);
  EXPECT_EQ(Services().UltimosLogs("PRECO", "F1", std::numeric_limits<std::size_t>::max()).size(), 3u);
  EXPECT_TRUE(Services().UltimosLogs("PRECO", "F1", 0).empty());
  EXPECT_TRUE(Services().UltimosLogs("PRECO", "F3", 10).empty());
  EXPECT_EQ(Services().UltimoLog("PRECO", "F1")->moment, rows[0].moment);
  // As long a key as the log keeps.
  Services().GeraLog("PRECO", "longa", host::LogOperation::kOther, std::string(60, '9'), nullptr);
  EXPECT_EQ(Services().UltimosLogs("PRECO", std::string(60, '9'), 10).size(), 1u);
}

// --- screens and person
// -------------------------------------------------------------------------------------------------

TEST_F(GeneralServices, AsksForADate) {
  mill_.Person().Answer("Qual a data", "10/03/2026");
  EXPECT_EQ(Services().InputBoxData("Baixa", "Qual a data?"), "10/03/2026");
  EXPECT_EQ(Services().InputBoxData("Baixa", "Outra data?"), "");
}

TEST_F(GeneralServices, MovesTheFocusRoundTheInputs) {
  host::Screen& screen = mill_.Open("TfmTiny");
  auto& first = dynamic_cast<host::Control&>(*screen.FindComponent("EdtTexto"));
  ASSERT_EQ(mill_.Desk().Enter(first), host::ActResult::kDone);
  const auto move = [&](bool back) {
    mill_.Desk().Run("foco", [&] { Services().pSetFocus(screen, back); });
    return mill_.Desk().Focused() == nullptr ? std::string() : mill_.Desk().Focused()->Name();
  };
  EXPECT_EQ(move(false), "EdtOutro");
  EXPECT_EQ(move(false), "BtnAgir");
  EXPECT_EQ(move(false), "EdtTexto");
  EXPECT_EQ(move(true), "BtnAgir");
  dynamic_cast<host::Control&>(*screen.FindComponent("EdtOutro")).SetEnabled(false);
  EXPECT_EQ(move(true), "EdtTexto");
}

TEST_F(GeneralServices, LoadsAScreenOnceAndRefusesUnknownOnes) {
  host::Screen& screen = Services().Carrega_Form("TfmTiny");
  EXPECT_EQ(&Services().Carrega_Form("TfmTiny"), &screen);
  EXPECT_THROW(Services().Carrega_Form("TfmNada"), host::InputError);
}

TEST_F(GeneralServices, AReportGoesToThePrintersOfTheStation) {
  host::Screen& screen = mill_.Open("TfmTiny");
  host::ReportFlags flags;
  flags.preview = false;
  Services().Chama_Relatorio(nullptr, nullptr, "WEtqTecRolo", screen, "T", flags);
  const auto printed = mill_.Equipment().TakePrints();
  ASSERT_EQ(printed.size(), 1u);
  EXPECT_EQ(printed[0].report, "WEtqTecRolo");
  EXPECT_EQ(printed[0].kind, 'T');
  EXPECT_FALSE(printed[0].flags.preview);
  const auto jobs = mill_.App().TakeJobs();
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_EQ(jobs[0].report, "WEtqTecRolo");
  EXPECT_TRUE(mill_.App().TakeJobs().empty());
}

TEST_F(GeneralServices, AnUnknownPrintTypeIsRefused) {
  host::Screen& screen = mill_.Open("TfmTiny");
  EXPECT_THROW(Services().Chama_Relatorio(nullptr, nullptr, "WEtqTecRolo", screen, "X", {}), host::InputError);
  EXPECT_TRUE(mill_.Equipment().TakePrints().empty());
}

TEST_F(GeneralServices, NothingReceivedIsNoWeight) {
  EXPECT_THROW(Services().PegaPesoBalanca("", '\r'), host::InputError);
}

}  // namespace
