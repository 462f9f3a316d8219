// The person whose answers are prepared: what was asked, what was answered, what was left over.
#include "app/operator/scripted_person.h"

#include <gtest/gtest.h>

#include "host/errors.h"
#include "support/mill.h"
#include "support/row_offer.h"

namespace {

using app::ScriptedPerson;
using host::Icon;
using Lines = std::vector<std::string>;

TEST(ScriptedPerson, AnswersEachQuestionOnce) {
  ScriptedPerson person;
  person.Answer("Deseja excluir", "yes");
  person.Answer("Deseja excluir", "não");
  EXPECT_TRUE(person.Question("Ordens", "Deseja excluir a ordem?"));
  EXPECT_FALSE(person.Question("Ordens", "Deseja excluir a ordem?"));
  EXPECT_TRUE(person.TakeUnexpected().empty());
  EXPECT_FALSE(person.Question("Ordens", "Deseja excluir a ordem?"));
  EXPECT_EQ(person.TakeUnexpected(), (Lines{"pergunta \"Deseja excluir a ordem?\""}));
  const auto shown = person.TakeMessages();
  ASSERT_EQ(shown.size(), 3u);
  EXPECT_EQ(shown[0].icon, Icon::kQuestion);
  EXPECT_EQ(shown[0].title, "Ordens");
  EXPECT_TRUE(person.TakeMessages().empty());
}

TEST(ScriptedPerson, AnAnswerThatIsNeitherYesNorNoIsToldAndMeansNo) {
  ScriptedPerson person;
  person.Answer("continuar", "talvez");
  EXPECT_FALSE(person.Question("t", "Deseja continuar?"));
  EXPECT_EQ(person.TakeUnexpected().size(), 1u);
}

TEST(ScriptedPerson, TypesIntoBoxes) {
  ScriptedPerson person;
  person.Answer("metros", "25");
  person.Answer("data", "10/03/2026");
  EXPECT_EQ(person.AskDate("Baixa", "Informe a data"), "10/03/2026");
  EXPECT_EQ(person.InputBox("Baixa", "Quantos metros?", "0"), "25");
  EXPECT_TRUE(person.TakeUnexpected().empty());
  EXPECT_EQ(person.InputBox("Baixa", "Quantos metros?", "0"), std::nullopt);
  EXPECT_EQ(person.AskDate("Baixa", "Informe a data"), "");
  EXPECT_EQ(person.TakeUnexpected(), (Lines{"entrada \"Quantos metros?\"", "data \"Informe a data\""}));
}

TEST(ScriptedPerson, WhatABoxRefusesIsGivenUpAndTold) {
  ScriptedPerson person;
  person.Answer("Nota", "12345678901234567890");
  EXPECT_EQ(person.InputBox("Pagamento", "Nota", "", 20), "12345678901234567890");
  person.Answer("Nota", "çãõéíóúâêôàüñçãõéíóú");  // characters, not bytes
  EXPECT_TRUE(person.InputBox("Pagamento", "Nota", "", 20).has_value());
  EXPECT_TRUE(person.TakeErrors().empty());
  person.Answer("Nota", "123456789012345678901");
  EXPECT_EQ(person.InputBox("Pagamento", "Nota", "", 20), std::nullopt);
  EXPECT_EQ(person.TakeErrors(), Lines{"No máximo 20 caracteres; o texto tem 21."});
  person.Answer("Nota", "123456789012345678901");
  EXPECT_TRUE(person.InputBox("Pagamento", "Nota", "").has_value());
  person.Answer("Nota", "1 ✓");
  EXPECT_EQ(person.InputBox("Pagamento", "Nota", ""), std::nullopt);
  const auto errors = person.TakeErrors();
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_NE(errors[0].find("✓"), std::string::npos);
  EXPECT_TRUE(person.TakeUnexpected().empty());
}

TEST(ScriptedPerson, NamesTheFileThatItIsAskedFor) {
  const auto ask = [](ScriptedPerson& person) {
    return person.AskFile({.save = false, .title = "Importar preços", .kind = "CSV (*.csv)", .proposed = ""});
  };
  ScriptedPerson person;
  person.Answer("Importar", "b.csv");
  person.Choose("Importar", "a.csv");
  person.Choose("Importar", std::nullopt);
  EXPECT_EQ(ask(person), "a.csv");
  EXPECT_EQ(ask(person), std::nullopt);
  EXPECT_EQ(ask(person), "b.csv");
  EXPECT_TRUE(person.TakeUnexpected().empty());
  EXPECT_EQ(ask(person), std::nullopt);
  EXPECT_EQ(person.TakeUnexpected(), Lines{"arquivo \"Importar preços\""});
  person.Choose("Exportar", "c.csv");
  EXPECT_EQ(person.Unused(), Lines{"arquivo \"c.csv\" a \"Exportar\""});
}

TEST(ScriptedPerson, KeepsBoxesAndErrors) {
  ScriptedPerson person;
  Lines heard;
  person.OnShown = [&heard](const ScriptedPerson::Shown& shown) { heard.push_back(shown.text); };
  person.Message("Ordens", "Prazo não encontrado.", Icon::kInformation);
  person.TellError("Ordens", host::DatabaseError("sem disco", 0, ""));
  EXPECT_EQ(heard, (Lines{"Prazo não encontrado.", "sem disco"}));
  EXPECT_EQ(person.TakeErrors(), Lines{"sem disco"});
  const auto shown = person.TakeMessages();
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(shown[1].icon, Icon::kError);
  EXPECT_TRUE(person.TakeErrors().empty());
}

TEST(ScriptedPerson, TellsWhatWasNeverAskedFor) {
  ScriptedPerson person;
  person.Answer("excluir", "yes");
  person.Pick("PqCor", "000100");
  person.OnModal("TFmMovBaiFio", [](host::Screen&, host::Desk&) {});
  EXPECT_EQ(person.Unused(),
            (Lines{"resposta \"yes\" a \"excluir\"", "escolha \"000100\" em PqCor", "tela TFmMovBaiFio"}));
}

class PickTest : public ::testing::Test {
 protected:
  host::TPesquisa& Lookup() {
    for (host::Component* part : screen.Components()) {
      auto* lookup = dynamic_cast<host::TPesquisa*>(part);
      if (lookup != nullptr && lookup->Name() == "PqCor") return *lookup;
    }
    throw std::runtime_error("no such lookup");
  }

  test::Mill mill;
  host::Screen& screen = mill.Open("TfmTiny");
  ScriptedPerson person;
  test::RowOffer offered{"COR",
                         {{{"COR", "000100"}, {"DESCRICAO", "Sul"}}, {{"COR", "000200"}, {"DESCRICAO", "Norte"}}}};
};

TEST_F(PickTest, PicksTheRowByItsKey) {
  person.Pick("pqcor", "000200");
  const auto picked = person.PickRow(Lookup(), offered);
  ASSERT_TRUE(picked);
  EXPECT_EQ(picked->at("DESCRICAO"), host::Value("Norte"));
  EXPECT_TRUE(person.Unused().empty());
}

TEST_F(PickTest, PicksTheRowByAnyOfItsColumns) {
  person.PickWhere("PqCor", {{"DESCRICAO", "Norte"}});
  EXPECT_EQ(person.PickRow(Lookup(), offered)->at("COR").AsText(), "000200");
  person.PickWhere("PqCor", {{"COR", "000100"}, {"DESCRICAO", "Norte"}});
  EXPECT_EQ(person.Unused(), Lines{"escolha {COR: \"000100\", DESCRICAO: \"Norte\"} em PqCor"});
  EXPECT_EQ(person.PickRow(Lookup(), offered), std::nullopt);
  EXPECT_EQ(person.TakeUnexpected(), Lines{"pesquisa PqCor sem {COR: \"000100\", DESCRICAO: \"Norte\"}"});
  person.PickWhere("PqCor", {{"NADA", "1"}});
  EXPECT_THROW(person.PickRow(Lookup(), offered), host::InputError);
}

TEST_F(PickTest, GivesUpWhatWasNotPreparedOrNotOffered) {
  EXPECT_EQ(person.PickRow(Lookup(), offered), std::nullopt);
  person.Pick("PqCor", "999999");
  EXPECT_EQ(person.PickRow(Lookup(), offered), std::nullopt);
  EXPECT_EQ(person.TakeUnexpected(), (Lines{"pesquisa PqCor", "pesquisa PqCor sem \"999999\""}));
}

TEST_F(PickTest, ClosesAModalScreenThatNothingWasPreparedFor) {
  mill.Desk().ShowModal(screen);
  EXPECT_EQ(mill.Person().TakeUnexpected(), Lines{"tela TfmTiny"});
  EXPECT_EQ(mill.Desk().Modal(), nullptr);
  bool acted = false;
  mill.Person().OnModal("fmTiny", [&acted](host::Screen&, host::Desk&) { acted = true; });
  mill.Desk().ShowModal(screen);
  EXPECT_TRUE(acted);
  EXPECT_TRUE(mill.Person().TakeUnexpected().empty());
}

}  // namespace
