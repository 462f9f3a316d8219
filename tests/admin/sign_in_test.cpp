// Who comes in, who does not, and what guessing costs.
#include "app/services/sign_in.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "app/services/passwords.h"
#include "host/errors.h"
#include "support/mill.h"

namespace {

using app::services::SignIn;

host::DateTime At(std::string_view iso) { return host::DateTime::FromIso(iso).value(); }

/// The sentence of a refusal; the user's code when the person came in.
std::string Answer(test::Mill& mill, std::string_view name, std::string_view password, std::string_view moment) {
  try {
    return SignIn(mill.Db(), name, password, At(moment)).code;
  } catch (const host::InputError& error) {
    return error.what();
  }
}

constexpr const char* kWrong = "Usuário ou senha incorretos.";

class SignInTest : public testing::Test {
 protected:
  SignInTest() {
    mill_.Insert("TEC_USUARIO", {{"CODIGO", "MARIA"}, {"NOME", "Maria Conceição"}});
    app::services::SetPassword(mill_.Db(), "MARIA", "Tear 32 à noite");
  }
  std::string Try(std::string_view name, std::string_view password, std::string_view time = "08:00:00") {
    return Answer(mill_, name, password, "2026-03-10 " + std::string(time));
  }
  void TryWrong(int times, std::string_view time = "08:00:00") {
    for (int i = 0; i < times; ++i) EXPECT_EQ(Try("MARIA", "errada", time), kWrong);
  }
  std::vector<std::string> Log() {
    std::vector<std::string> lines;
    for (auto& row : mill_.Rows("SELECT * FROM TEC_LOG WHERE ASSUNTO = 'ACESSO' ORDER BY ID")) {
      lines.push_back(row["USUARIO"].AsText() + "|" + row["CHAVE"].AsText() + "|" + row["OPERACAO"].AsText() + "|" +
                      row["TEXTO"].AsText());
    }
    return lines;
  }

  test::Mill mill_;
};

TEST_F(SignInTest, TheRightPasswordOpensByCodeAndByNameInAnyCase) {
  EXPECT_EQ(Try("MARIA", "Tear 32 à noite"), "MARIA");
  EXPECT_EQ(Try("maria", "Tear 32 à noite"), "MARIA");
  EXPECT_EQ(Try("  Maria Conceição ", "Tear 32 à noite"), "MARIA");
  EXPECT_EQ(Try("MARIA CONCEIÇÃO", "Tear 32 à noite"), "MARIA");
  const app::services::User user = SignIn(mill_.Db(), "maria conceição", "Tear 32 à noite", At("2026-03-10 08:00:00"));
  EXPECT_EQ(user.name, "Maria Conceição");
}

TEST_F(SignInTest, ARefusalDoesNotTellWhetherNameOrPasswordWasWrong) {
  EXPECT_EQ(Try("MARIA", "tear 32 à noite"), kWrong);
  EXPECT_EQ(Try("MARIA", ""), kWrong);
  EXPECT_EQ(Try("MARIO", "Tear 32 à noite"), kWrong);
  EXPECT_EQ(Try("", ""), kWrong);
  EXPECT_EQ(Try("ADMIN", ""), kWrong) << "a user without password does not come in";
  EXPECT_EQ(Try("MARIA' OR 'A' = 'A", "x"), kWrong);
  EXPECT_EQ(Try("мария", "x"), kWrong) << "letters that the database cannot hold";
  EXPECT_EQ(Try(std::string(300, 'M'), "x"), kWrong);
}

TEST_F(SignInTest, ACodeGoesBeforeAnotherPersonsName) {
  mill_.Insert("TEC_USUARIO", {{"CODIGO", "OUTRO"}, {"NOME", "maria"}});
  app::services::SetPassword(mill_.Db(), "OUTRO", "outra");
  EXPECT_EQ(Try("Maria", "Tear 32 à noite"), "MARIA");
  EXPECT_EQ(Try("Maria", "outra"), kWrong);
  EXPECT_EQ(Try("outro", "outra"), "OUTRO");
}

TEST_F(SignInTest, OnlyWhoKnowsThePasswordHearsThatTheUserIsInactive) {
  mill_.Exec("UPDATE TEC_USUARIO SET ATIVO = 'N' WHERE CODIGO = 'MARIA'");
  EXPECT_EQ(Try("MARIA", "Tear 32 à noite"), "Usuário inativo.");
  EXPECT_EQ(Try("MARIA", "errada"), kWrong);
}

TEST_F(SignInTest, FourWrongTriesCostNothing) {
  TryWrong(4);
  EXPECT_EQ(Try("MARIA", "Tear 32 à noite"), "MARIA");
}

TEST_F(SignInTest, FromTheFifthOnTheWaitDoublesUpToAQuarterOfAnHour) {
  TryWrong(5);
  EXPECT_EQ(Try("MARIA", "Tear 32 à noite"), "Muitas tentativas erradas: aguarde 30 segundos e tente de novo.");
  EXPECT_EQ(Try("MARIA", "errada", "08:00:29"), "Muitas tentativas erradas: aguarde 1 segundo e tente de novo.");
  TryWrong(1, "08:00:30");
  EXPECT_EQ(Try("MARIA", "x", "08:00:30"), "Muitas tentativas erradas: aguarde 60 segundos e tente de novo.");
  TryWrong(1, "08:01:30");
  EXPECT_EQ(Try("MARIA", "x", "08:01:30"), "Muitas tentativas erradas: aguarde 2 minutos e tente de novo.");
  TryWrong(1, "08:03:30");
  TryWrong(1, "08:07:30");
  EXPECT_EQ(Try("MARIA", "x", "08:07:31"), "Muitas tentativas erradas: aguarde 8 minutos e tente de novo.");
  TryWrong(1, "08:15:30");
  EXPECT_EQ(Try("MARIA", "x", "08:15:30"), "Muitas tentativas erradas: aguarde 15 minutos e tente de novo.");
  TryWrong(1, "08:30:30");
  EXPECT_EQ(Try("MARIA", "x", "08:30:30"), "Muitas tentativas erradas: aguarde 15 minutos e tente de novo.");
}

TEST_F(SignInTest, ATryDuringTheWaitIsNeitherHeardNorCounted) {
  TryWrong(5);
  for (int i = 0; i < 3; ++i) EXPECT_NE(Try("MARIA", "Tear 32 à noite", "08:00:10"), "MARIA");
  EXPECT_EQ(Try("MARIA", "Tear 32 à noite", "08:00:30"), "MARIA");
}

TEST_F(SignInTest, TheRightPasswordClearsTheCount) {
  TryWrong(5);
  EXPECT_EQ(Try("MARIA", "Tear 32 à noite", "08:01:00"), "MARIA");
  TryWrong(4, "08:01:01");
  EXPECT_EQ(Try("MARIA", "Tear 32 à noite", "08:01:02"), "MARIA");
}

TEST_F(SignInTest, TheWaitGoesOnOverMidnight) {
  for (int i = 0; i < 5; ++i) Answer(mill_, "MARIA", "errada", "2026-02-28 23:59:50");
  EXPECT_EQ(Answer(mill_, "MARIA", "Tear 32 à noite", "2026-03-01 00:00:19"),
            "Muitas tentativas erradas: aguarde 1 segundo e tente de novo.");
  EXPECT_EQ(Answer(mill_, "MARIA", "Tear 32 à noite", "2026-03-01 00:00:20"), "MARIA");
}

TEST_F(SignInTest, AClockThatIsBehindNeitherShortensTheWaitNorMakesItEndless) {
  TryWrong(5, "08:10:00");
  EXPECT_EQ(Try("MARIA", "Tear 32 à noite", "08:09:45"),
            "Muitas tentativas erradas: aguarde 30 segundos e tente de novo.");
  EXPECT_EQ(Answer(mill_, "MARIA", "Tear 32 à noite", "2024-03-10 08:10:00"), "MARIA");
}

TEST_F(SignInTest, TriesAtAnotherStationCountAsWell) {
  test::Mill::Options there;
  there.database = mill_.Path();
  test::Mill other(there);
  TryWrong(3);
  for (int i = 0; i < 2; ++i) EXPECT_EQ(Answer(other, "MARIA", "errada", "2026-03-10 08:00:00"), kWrong);
  EXPECT_EQ(Try("MARIA", "Tear 32 à noite"), "Muitas tentativas erradas: aguarde 30 segundos e tente de novo.");
  EXPECT_EQ(Answer(other, "ADMIN", "x", "2026-03-10 08:00:00"), kWrong) << "another user is not held back";
}

TEST_F(SignInTest, StationsThatTryAtTheSameMomentTakeTurns) {
  std::vector<std::string> answers(8);
  std::vector<std::thread> stations;
  for (std::size_t i = 0; i < 2; ++i) {
    stations.emplace_back([&, i] {
      app::firebird::ConnectOptions options;
      options.database = mill_.Path();
      const auto database = app::firebird::Database::Open(options);
      for (std::size_t j = 0; j < 4; ++j) {
        try {
          answers[i * 4 + j] = SignIn(*database, "MARIA", "errada", At("2026-03-10 08:00:00")).code;
        } catch (const std::exception& error) {
          answers[i * 4 + j] = error.what();
        }
      }
    });
  }
  for (auto& station : stations) station.join();
  EXPECT_EQ(std::count(answers.begin(), answers.end(), kWrong), 5);
  EXPECT_EQ(
      std::count(answers.begin(), answers.end(), "Muitas tentativas erradas: aguarde 30 segundos e tente de novo."), 3);
  EXPECT_EQ(mill_.Scalar("SELECT FALHAS FROM TEC_TENTATIVA WHERE QUEM = 'MARIA'").AsInteger(), 5);
}

TEST_F(SignInTest, ANameOfNobodyIsSlowedAsWellAndNotKept) {
  for (int i = 0; i < 5; ++i) EXPECT_EQ(Try("minha senha", "x"), kWrong);
  EXPECT_EQ(Try("Minha Senha", "x"), "Muitas tentativas erradas: aguarde 30 segundos e tente de novo.");
  for (const char* sql :
       {"SELECT LIST(QUEM) FROM TEC_TENTATIVA",
        "SELECT LIST(COALESCE(USUARIO, '') || COALESCE(TEXTO, '') || COALESCE(CHAVE, '')) FROM TEC_LOG"}) {
    EXPECT_EQ(mill_.Scalar(sql).AsText().find("inha"), std::string::npos) << sql;
  }
}

TEST_F(SignInTest, ANameOfNobodyTakesAsLongAsAWrongPassword) {
  const auto fastest = [this](std::string_view name) {
    double least = 1e9;
    for (int i = 0; i < 4; ++i) {
      const auto start = std::chrono::steady_clock::now();
      EXPECT_EQ(Try(name, "x"), kWrong);
      least = std::min(least, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return least;
  };
  const double known = fastest("MARIA");
  const double unknown = fastest("NINGUEM");
  const double without_password = fastest("ADMIN");
  EXPECT_GT(unknown, known / 3);
  EXPECT_GT(without_password, known / 3);
}

TEST_F(SignInTest, EveryEntryAndEveryRefusalIsInTheLog) {
  Try("maria", "Tear 32 à noite");
  TryWrong(5);
  Try("MARIA", "x");
  Try("ninguém", "x");
  std::vector<std::string> expected = {"Maria Conceição|MARIA|3|Entrada no sistema"};
  for (int i = 0; i < 5; ++i) expected.push_back("Maria Conceição|MARIA|3|Entrada recusada: senha incorreta");
  expected.push_back("Maria Conceição|MARIA|3|Entrada recusada: muitas tentativas erradas");
  expected.push_back("||3|Entrada recusada: usuário desconhecido");
  EXPECT_EQ(Log(), expected);
}

TEST_F(SignInTest, ARefusalIsDurableWhateverBecomesOfTheAction) {
  mill_.Db().BeginAction();
  EXPECT_EQ(Try("MARIA", "errada"), kWrong);
  mill_.Db().EndAction(app::firebird::Database::Outcome::kFailed);
  EXPECT_EQ(mill_.Scalar("SELECT FALHAS FROM TEC_TENTATIVA WHERE QUEM = 'MARIA'").AsInteger(), 1);
}

TEST_F(SignInTest, AFailingStatementLetsNobodyInAndLeavesNothingHalf) {
  int failures = 0;
  for (int n = 1;; ++n) {
    mill_.FailStatement(n);
    EXPECT_THROW({ SignIn(mill_.Db(), "MARIA", "errada", At("2026-03-10 08:00:00")); }, std::exception);
    if (!mill_.StopFailing()) break;
    ++failures;
    EXPECT_TRUE(Log().empty()) << n;
    EXPECT_EQ(mill_.Scalar("SELECT SUM(FALHAS) FROM TEC_TENTATIVA").AsInteger(), 0) << n;
  }
  EXPECT_GE(failures, 6);
  EXPECT_EQ(Log().size(), 1u);
}

TEST_F(SignInTest, ConfirmingThePasswordCountsLikeSigningIn) {
  const app::services::User maria = {"MARIA", "Maria Conceição"};
  const auto confirm = [&](std::string_view password, std::string_view time) -> std::string {
    try {
      app::services::ConfirmPassword(mill_.Db(), maria, password, At("2026-03-10 " + std::string(time)));
      return "ok";
    } catch (const host::InputError& error) {
      return error.what();
    }
  };
  EXPECT_EQ(confirm("Tear 32 à noite", "08:00:00"), "ok");
  EXPECT_TRUE(Log().empty());
  for (int i = 0; i < 5; ++i) confirm("x", "08:00:00");
  EXPECT_EQ(confirm("Tear 32 à noite", "08:00:01"), "Muitas tentativas erradas: aguarde 29 segundos e tente de novo.");
  EXPECT_EQ(Try("MARIA", "Tear 32 à noite", "08:00:02"),
            "Muitas tentativas erradas: aguarde 28 segundos e tente de novo.");
}

}  // namespace
