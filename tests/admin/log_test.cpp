// The log: what is found in it, and that finding it does not read all of it.
#include <gtest/gtest.h>

#include "admin/admin_mill.h"
#include "app/admin/log_search.h"

namespace {

using host::ActResult;
using test::Lines;

class LogScreen : public test::AdminMill {
 protected:
  LogScreen() {
    Add("Maria Conceição", "2026-03-10 08:00:00", "BAIXA", "Peça 7 baixada", 0, "000123/7");
    Add("ADMIN", "2026-03-09 23:59:59", "ORDEM", "Ordem alterada: AÇÃO", 1, "000123");
    Add("ADMIN", "2026-03-10 08:00:00", "ORDEM", "Item excluído", 2, "000124");
    Add("Maria Conceição", "2026-01-05 10:00:00", "PARAMETROS", "MAL 40", 3, "MAL 40");
  }
  void Add(const char* user, const char* moment, const char* subject, const char* text, int operation,
           const char* key) {
    mill_.Insert("TEC_LOG", {{"USUARIO", user},
                             {"DATA_HORA", moment},
                             {"ASSUNTO", subject},
                             {"TEXTO", text},
                             {"OPERACAO", operation},
                             {"CHAVE", key}});
  }
  // So many more rows of a day, one a second.
  void AddMany(int count, const char* from) {
    mill_.Exec("EXECUTE BLOCK AS DECLARE N INTEGER = 0; BEGIN WHILE (N < " + std::to_string(count) +
               ") DO BEGIN INSERT INTO TEC_LOG (USUARIO, DATA_HORA, ASSUNTO, TEXTO, OPERACAO, CHAVE) VALUES ('U' || "
               "MOD(:N, 50), DATEADD(:N SECOND TO TIMESTAMP '" +
               from + "'), 'ASSUNTO ' || MOD(:N, 20), 'texto ' || :N, 3, 'K' || :N); N = N + 1; END END");
  }
  host::Screen& Open() { return mill_.Open("TfmLog"); }
  void Choose(host::Screen& screen, std::string_view box, std::string_view entry) {
    ASSERT_EQ(mill_.Desk().Choose(Part<host::ComboBox>(screen, box), entry), ActResult::kDone);
  }
  Lines Found(host::Screen& screen) {
    EXPECT_EQ(mill_.Click(screen, "BtnPesquisar"), ActResult::kDone);
    Lines lines;
    for (host::DatasetCursor rows(mill_.Data(screen, "TbLog")); !rows.Eof(); rows.Next()) {
      lines.push_back(rows.FieldByName("TEXTO").AsText());
    }
    return lines;
  }

  test::Mill::Options there_;
};

TEST_F(LogScreen, ShowsTheLastThirtyDaysNewestFirst) {
  host::Screen& screen = Open();
  EXPECT_EQ(mill_.Text(screen, "EdtDe"), "08/02/2026");
  EXPECT_EQ(mill_.Text(screen, "EdtAte"), "10/03/2026");
  host::Dataset& rows = mill_.Data(screen, "TbLog");
  ASSERT_EQ(rows.RecordCount(), 3u);
  EXPECT_EQ(rows["TEXTO"].AsText(), "Item excluído") << "of two in one second the later one";
  EXPECT_EQ(rows["DATA"].DisplayText(), "10/03/2026");
  EXPECT_EQ(rows["HORA"].AsText(), "08:00:00");
  EXPECT_EQ(rows["OPERACAO"].AsText(), "Exclusão");
  EXPECT_EQ(rows["USUARIO"].AsText(), "ADMIN");
  EXPECT_EQ(mill_.Text(screen, "LblAviso"), "3 operações.");
  EXPECT_TRUE(mill_.GridOf(screen, "TbLog").ReadOnly());
}

TEST_F(LogScreen, EachFilterNarrows) {
  host::Screen& screen = Open();
  mill_.Type(screen, "EdtDe", "");
  EXPECT_EQ(Found(screen).size(), 4u);
  mill_.Type(screen, "EdtAte", "09/03/2026");
  EXPECT_EQ(Found(screen), (Lines{"Ordem alterada: AÇÃO", "MAL 40"})) << "the last day to its end";
  mill_.Type(screen, "EdtDe", "09/03/2026");
  EXPECT_EQ(Found(screen), Lines{"Ordem alterada: AÇÃO"});
  mill_.Type(screen, "EdtDe", "");
  mill_.Type(screen, "EdtAte", "");
  Choose(screen, "CbUsuario", "Maria Conceição");
  EXPECT_EQ(Found(screen), (Lines{"Peça 7 baixada", "MAL 40"}));
  Choose(screen, "CbOperacao", "Inclusão");
  EXPECT_EQ(Found(screen), Lines{"Peça 7 baixada"});
  EXPECT_EQ(mill_.Text(screen, "LblAviso"), "1 operação.");
  Choose(screen, "CbOperacao", "Outra");
  EXPECT_EQ(Found(screen), Lines{"MAL 40"});
  Choose(screen, "CbOperacao", "Todas");
  Choose(screen, "CbUsuario", "Todos");
  Choose(screen, "CbAssunto", "ORDEM");
  EXPECT_EQ(Found(screen).size(), 2u);
  mill_.Type(screen, "EdtChave", "000123");
  EXPECT_EQ(Found(screen), Lines{"Ordem alterada: AÇÃO"});
  Choose(screen, "CbAssunto", "Todos");
  EXPECT_EQ(Found(screen), (Lines{"Peça 7 baixada", "Ordem alterada: AÇÃO"})) << "the beginning of the key will do";
}

TEST_F(LogScreen, TextIsFoundWithoutRegardToCaseAndAccents) {
  host::Screen& screen = Open();
  for (const char* text : {"acao", "AÇÃO", "Alterada", "ordem alt"}) {
    mill_.Type(screen, "EdtTexto", text);
    EXPECT_EQ(Found(screen), Lines{"Ordem alterada: AÇÃO"}) << text;
  }
  mill_.Type(screen, "EdtTexto", "excluido");
  EXPECT_EQ(Found(screen), Lines{"Item excluído"});
  mill_.Type(screen, "EdtTexto", "100%' OR");
  EXPECT_EQ(Found(screen), Lines{});
  EXPECT_EQ(mill_.Text(screen, "LblAviso"), "0 operações.");
}

TEST_F(LogScreen, SubjectsAndUsersAreThoseThatTheLogHas) {
  for (const char* subject : {"ORDEM DE COMPRA", "ORDEM!", "ORDEMA", "BAIXA"}) {
    Add("ADMINISTRADOR", "2026-03-10 08:00:00", subject, "", 0, "");
  }
  host::Screen& screen = Open();
  EXPECT_EQ(Part<host::ComboBox>(screen, "CbAssunto").Items(),
            (Lines{"Todos", "BAIXA", "ORDEM", "ORDEM DE COMPRA", "ORDEM!", "ORDEMA", "PARAMETROS"}));
  EXPECT_EQ(Part<host::ComboBox>(screen, "CbUsuario").Items(),
            (Lines{"Todos", "ADMIN", "ADMINISTRADOR", "Maria Conceição"}));
}

TEST_F(LogScreen, FiveHundredAreShownAndThatThereAreMoreIsTold) {
  AddMany(497, "2026-03-10 10:00:00");
  host::Screen& screen = Open();
  EXPECT_EQ(mill_.Data(screen, "TbLog").RecordCount(), 500u);
  EXPECT_EQ(mill_.Text(screen, "LblAviso"), "500 operações.");
  AddMany(1, "2026-03-10 12:00:00");
  EXPECT_EQ(Found(screen).size(), 500u);
  EXPECT_EQ(mill_.Text(screen, "LblAviso"),
            "São mostradas as 500 operações mais novas; há mais. Restrinja a pesquisa para ver as outras.");
  EXPECT_EQ(mill_.Data(screen, "TbLog").ValueAt(1, 1).AsText(), "12:00:00");
}

TEST_F(LogScreen, AnEmptyLogIsNoReasonToFail) {
  mill_.Exec("DELETE FROM TEC_LOG");
  host::Screen& screen = Open();
  EXPECT_TRUE(mill_.Data(screen, "TbLog").IsEmpty());
  EXPECT_EQ(mill_.Messages(), Lines{});
}

TEST_F(LogScreen, DatesTheWrongWayRoundAreRefused) {
  host::Screen& screen = Open();
  mill_.Type(screen, "EdtAte", "01/02/2026");
  EXPECT_EQ(mill_.Click(screen, "BtnPesquisar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines{"A data final vem antes da inicial."});
  EXPECT_EQ(mill_.Desk().Focused()->Name(), "EdtAte");
}

TEST_F(LogScreen, AFailingStatementIsToldAndWhatWasShownStays) {
  host::Screen& screen = Open();
  mill_.Type(screen, "EdtDe", "");
  for (int n = 1; n <= 2; ++n) {
    mill_.FailStatement(n);
    EXPECT_EQ(mill_.Click(screen, "BtnPesquisar"), ActResult::kFailed) << n;
    ASSERT_TRUE(mill_.StopFailing()) << n;
    EXPECT_EQ(mill_.Messages(), Lines{"falha provocada"});
    EXPECT_EQ(mill_.Data(screen, "TbLog").RecordCount(), 3u);
  }
  EXPECT_EQ(Found(screen).size(), 4u);
}

TEST_F(LogScreen, F5SearchesAgain) {
  host::Screen& screen = Open();
  Add("ADMIN", "2026-03-10 09:00:00", "ORDEM", "Nova", 0, "1");
  mill_.Desk().PressKey(screen, host::Key::kF5);
  EXPECT_EQ(mill_.Data(screen, "TbLog").RecordCount(), 4u);
}

// --- how it is found ------------------------------------------------------------------------------------------------

class LogPlans : public LogScreen {
 protected:
  LogPlans() {
    AddMany(5000, "2026-02-01 00:00:00");
    mill_.Exec("SET STATISTICS INDEX TEC_LOG_RECENTE");
    mill_.Exec("SET STATISTICS INDEX TEC_LOG_USUARIO");
    mill_.Exec("SET STATISTICS INDEX TEC_LOG_CHAVE");
    mill_.Exec("SET STATISTICS INDEX TEC_LOG_ASSUNTO");
  }
  // The plans of the statements over the log that were prepared since the watch began; another connection sees them.
  Lines PlansOf(const std::function<void()>& act) {
    act();
    app::firebird::ConnectOptions options;
    options.database = mill_.Path();
    const auto watcher = app::firebird::Database::Open(options);
    const auto rows = watcher->Query(
        "SELECT MON$EXPLAINED_PLAN AS PLANO FROM MON$STATEMENTS WHERE MON$SQL_TEXT CONTAINING 'FROM TEC_LOG' AND "
        "MON$SQL_TEXT NOT CONTAINING 'MON$'",
        {});
    Lines plans;
    for (; !rows->Eof(); rows->Next()) plans.push_back(rows->FieldByName("PLANO").AsText());
    return plans;
  }
};

TEST_F(LogPlans, NothingIsReadFromEndToEndNorSorted) {
  const auto day = host::Date::FromIso("2026-02-01").value();
  std::vector<app::admin::LogFilter> filters(6);
  filters[1] = {.from = day, .to = day};
  filters[2] = {.user = "U7"};
  filters[3] = {.subject = "ORDEM"};
  filters[4] = {.key = "K77"};
  filters[5] = {.from = day, .to = day, .user = "U7", .subject = "ASSUNTO 7", .text = "texto"};
  const Lines plans = PlansOf([&] {
    for (const auto& filter : filters) app::admin::FindLogRows(mill_.Db(), filter, 501);
    app::admin::LogSubjects(mill_.Db());
    app::admin::LogUsers(mill_.Db());
  });
  ASSERT_EQ(plans.size(), filters.size() + 2);
  for (const std::string& plan : plans) {
    EXPECT_NE(plan.find("Index"), std::string::npos) << plan;
    // The index of the moments may be walked from its newest end: the walk stops at the last row that is shown.
    EXPECT_EQ(plan.find("Table \"TEC_LOG\" Full Scan"), std::string::npos) << plan;
    EXPECT_EQ(plan.find("Sort"), std::string::npos) << plan;
  }
}

}  // namespace
