// Statements in the form in which tests compare them.
#include "support/statement_text.h"

#include <gtest/gtest.h>

#include "support/mill.h"

namespace {

TEST(StatementText, OneLineWithLogicalNames) {
  EXPECT_EQ(test::OneLine("SELECT *\n  FROM TECEL_001 TECEL\nWHERE  NUMERO = 'a  b'"),
            "SELECT * FROM TECEL TECEL WHERE NUMERO = 'a  b'");
  EXPECT_EQ(test::OneLine("FROM {TECEL} T, TECEL_0012 X"), "FROM TECEL T, TECEL_0012 X");
  EXPECT_EQ(test::OneLine("'TECEL_001'"), "'TECEL_001'");
}

TEST(StatementText, AMillRecordsScreensAndNotTheTest) {
  test::Mill mill;
  test::FillSmallMill(mill);
  EXPECT_TRUE(mill.TakeStatements().empty());
  mill.Rows("SELECT * FROM {CADCOR}");
  mill.App().GetFuncoes().Existe("CADCOR", "COR", "'01'", mill.Db());
  EXPECT_EQ(mill.TakeStatements(), std::vector<std::string>{"SELECT FIRST 1 1 FROM CADCOR WHERE COR = '01'"});
}

TEST(StatementText, AMillFailsTheStatementAskedFor) {
  test::Mill mill;
  test::FillSmallMill(mill);
  const auto look = [&] { mill.App().GetFuncoes().Existe("CADCOR", "COR", "'01'", mill.Db()); };
  mill.FailStatement(2, "sem rede");
  EXPECT_NO_THROW(look());
  EXPECT_ANY_THROW(look());
  EXPECT_NO_THROW(look());
  EXPECT_TRUE(mill.StopFailing());
  mill.FailStatement(9);
  EXPECT_NO_THROW(look());
  EXPECT_FALSE(mill.StopFailing());
}

}  // namespace
