// Deposits found by what they are for.
#include "weaving/deposits.h"

#include <gtest/gtest.h>

#include "app/application.h"
#include "support/mill.h"

namespace test {
namespace {

TEST(Deposits, AreFoundByWhatTheyAreFor) {
  Mill mill;
  host::Funcoes& funcoes = mill.App().GetFuncoes();
  EXPECT_EQ(weaving::FirstDeposit(funcoes), "");
  EXPECT_EQ(weaving::YarnDepositOf(funcoes, "M00001"), "");

  mill.Insert("DEPOSITO", {{"CODIGO", "D0"}, {"PRIORIDADE", "2"}});
  mill.Insert("DEPOSITO", {{"CODIGO", "D1"}, {"PRIORIDADE", "1"}});
  mill.Insert("DEPOSITO", {{"CODIGO", "D2"}, {"CODCLI", "M00001"}, {"PRIORIDADE", "4"}});
  mill.Insert("DEPOSITO", {{"CODIGO", "D3"}, {"CODCLI", "M00002"}, {"PRIORIDADE", "5"}});
  mill.Insert("DEPOSITO", {{"CODIGO", "D4"}, {"CODCLI", "M00001"}, {"PRIORIDADE", "5"}});
  EXPECT_EQ(weaving::FirstDeposit(funcoes), "D1");
  EXPECT_EQ(weaving::YarnDepositOf(funcoes, "M00001"), "D4");
  EXPECT_EQ(weaving::YarnDepositOf(funcoes, "M00003"), "");
}

}  // namespace
}  // namespace test
