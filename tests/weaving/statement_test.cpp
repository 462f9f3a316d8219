// Statements as the module writes them: what becomes of the names in a text, and what is refused.
#include "weaving/statement.h"

#include <gtest/gtest.h>

#include <limits>

#include "app/application.h"
#include "host/errors.h"
#include "support/mill.h"
#include "weaving/reservations.h"

namespace test {
namespace {

using weaving::Sql;

class StatementText : public ::testing::Test {
 protected:
  StatementText() : statements_(mill_.App()) {}
  std::string Write(std::string_view text, weaving::Values values = {}) const {
    return statements_.Write(text, values).Text();
  }

  Mill mill_;
  weaving::Statements statements_;
};

TEST_F(StatementText, TablesAreTheCompanysAndLinesStay) {
  EXPECT_EQ(Write("\nSELECT A \nFROM {TECEL} TECEL\n  WHERE 1 = 1"), "SELECT A \nFROM TECEL_001 TECEL\n  WHERE 1 = 1");
}

TEST_F(StatementText, ValuesAreWrittenByTheirKind) {
  EXPECT_EQ(Write(":text, :number, :whole, :day, :piece", {{"text", "d'água"},
                                                           {"number", 0.125},
                                                           {"whole", 7},
                                                           {"day", host::Date::FromIso("2026-12-31").value()},
                                                           {"piece", Sql("NULL")}}),
            "'d''água', 0.125, 7, '12/31/2026', NULL");
  EXPECT_EQ(Write(":day", {{"day", host::Date()}}), "'12/30/1899'");
  EXPECT_EQ(Write(":text", {{"text", ""}}), "''");
}

TEST_F(StatementText, AValueServesEveryPlaceThatNamesIt) {
  EXPECT_EQ(Write("(:order, :order, :order_2)", {{"order", "1"}, {"order_2", "2"}}), "('1', '1', '2')");
}

TEST_F(StatementText, NothingInsideAValueIsReadAgain) {
  EXPECT_EQ(Write("A = :text AND B = :other", {{"text", ":other {TECEL}"}, {"other", "'"}}),
            "A = ':other {TECEL}' AND B = ''''");
  EXPECT_EQ(Write(":piece", {{"piece", Sql(":name {TABLE}")}}), ":name {TABLE}");
}

TEST_F(StatementText, QuotedTextAndParametersOfABatchStay) {
  EXPECT_EQ(Write("SELECT ':name', '{TECEL}', 'it''s :one' FROM {TECEL} WHERE A = :CODIGO"),
            "SELECT ':name', '{TECEL}', 'it''s :one' FROM TECEL_001 WHERE A = :CODIGO");
}

TEST_F(StatementText, ANameWithoutValueAndAValueWithoutNameAreMistakesOfOurs) {
  EXPECT_THROW(Write("A = :order"), std::logic_error);
  EXPECT_THROW(Write("A = 1", {{"order", "1"}}), std::logic_error);
  EXPECT_THROW(Write("A = :ord", {{"order", "1"}}), std::logic_error);
}

TEST_F(StatementText, ANumberThatIsNoneIsRefused) {
  EXPECT_THROW(Write(":n", {{"n", std::numeric_limits<double>::quiet_NaN()}}), host::InputError);
  EXPECT_THROW(Write(":n", {{"n", std::numeric_limits<double>::infinity()}}), host::InputError);
}

TEST_F(StatementText, LinesAreAddedToAStatement) {
  Sql sql;
  sql.Add(Sql("SELECT 1")).Add(Sql("FROM X"));
  EXPECT_EQ(sql.Text(), "SELECT 1\nFROM X");
}

class StatementsRun : public StatementText {
 protected:
  StatementsRun() { mill_.Insert("CADCOR", {{"COR", "01"}, {"DESCRICAO", "CRU"}}); }
  std::string Colour() { return mill_.Scalar("SELECT DESCRICAO FROM {CADCOR} WHERE COR = '01'").AsText(); }
  Sql Rename(std::string_view name) const {
    return statements_.Write("UPDATE {CADCOR} SET DESCRICAO = :name WHERE COR = '01'", {{"name", name}});
  }
};

TEST_F(StatementsRun, OpenReadsAndExecuteWrites) {
  statements_.Execute(Rename("AZUL"));
  const auto row = statements_.Open("SELECT DESCRICAO FROM {CADCOR} WHERE COR = :colour", {{"colour", "01"}});
  EXPECT_EQ(row->FieldByName("DESCRICAO").AsText(), "AZUL");
  EXPECT_TRUE(statements_.Open("SELECT 1 FROM {CADCOR} WHERE COR = :colour", {{"colour", "99"}})->IsEmpty());
}

TEST_F(StatementsRun, TogetherInTheirOrder) {
  statements_.ExecuteTogether({Rename("AZUL"), Rename("VERDE")});
  EXPECT_EQ(Colour(), "VERDE");
}

TEST_F(StatementsRun, AFailureTogetherNamesItsStatementAndKeepsThoseBefore) {
  const Sql wrong("UPDATE TECEL_001 SET NADA = 1");
  try {
    statements_.ExecuteTogether({Rename("AZUL"), wrong, Rename("VERDE")});
    FAIL() << "nothing was refused";
  } catch (const host::DatabaseError& error) {
    EXPECT_EQ(error.Sql(), wrong.Text());
  }
  EXPECT_EQ(Colour(), "AZUL");
}

TEST_F(StatementText, ReservationsOfOtherModulesAreOutOfSight) {
  mill_.Exec("DELETE FROM {MAT_RESERVA}");
  for (const char* kind : {"T", "F", "X"}) {
    mill_.Insert("MAT_RESERVA", {{"NUMERO", "1"},
                                 {"CODIGO", "Y"},
                                 {"COR", "0"},
                                 {"LOTE", kind},
                                 {"DEPOSITO", "1"},
                                 {"QTDE", 1},
                                 {"TIPO", kind}});
  }
  mill_.Insert("MAT_RESERVA",
               {{"NUMERO", "1"}, {"CODIGO", "Y"}, {"COR", "0"}, {"LOTE", "N"}, {"DEPOSITO", "1"}, {"QTDE", 1}});
  const auto lots = [this](const std::string& condition) {
    std::string found;
    for (const Row& row : mill_.Rows("SELECT R.LOTE FROM {MAT_RESERVA} R WHERE " + condition + " ORDER BY R.LOTE")) {
      found += row.at("LOTE").AsText();
    }
    return found;
  };
  EXPECT_EQ(lots(weaving::YarnReservations().Text()), "NTX");
  EXPECT_EQ(lots(weaving::YarnReservations("R.").Text()), "NTX");
}

}  // namespace
}  // namespace test
