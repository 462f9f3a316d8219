// Percentage rules of compositions.
#include "app/services/rule_formula.h"

#include <gtest/gtest.h>

#include "host/errors.h"
#include "support/mill.h"

namespace {

using app::services::RuleFormula;

double Value(std::string_view text) {
  return RuleFormula::Parse(text).Evaluate([](std::string_view name) { return name == "LARGURA" ? 1.8 : 160.0; });
}

TEST(RuleFormulas, WorkLikeArithmetic) {
  EXPECT_DOUBLE_EQ(Value("35"), 35);
  EXPECT_DOUBLE_EQ(Value(" 1 + 2 * 3 "), 7);
  EXPECT_DOUBLE_EQ(Value("(1 + 2) * 3"), 9);
  EXPECT_DOUBLE_EQ(Value("10 - 3 - 2"), 5);
  EXPECT_DOUBLE_EQ(Value("100 / 4 / 5"), 5);
  EXPECT_DOUBLE_EQ(Value("-2 + 5"), 3);
  EXPECT_DOUBLE_EQ(Value("2 * -3"), -6);
  EXPECT_DOUBLE_EQ(Value("--2"), 2);
  EXPECT_DOUBLE_EQ(Value("1,5 + 1.5"), 3);
}

TEST(RuleFormulas, ReadTheFabricsData) {
  EXPECT_DOUBLE_EQ(Value("GRAMATURA / 4"), 40);
  EXPECT_DOUBLE_EQ(Value("largura * 10"), 18);
  EXPECT_EQ(RuleFormula::Parse("LARGURA + gramatura + Largura").Names(),
            (std::vector<std::string>{"LARGURA", "GRAMATURA"}));
}

TEST(RuleFormulas, ChooseTheSmallestAndTheLargest) {
  EXPECT_DOUBLE_EQ(Value("MIN(3; 1,5; 2)"), 1.5);
  EXPECT_DOUBLE_EQ(Value("max(3; 1 + 7; 2)"), 8);
  EXPECT_DOUBLE_EQ(Value("MIN(100; MAX(0; GRAMATURA))"), 100);
  EXPECT_DOUBLE_EQ(Value("MIN(100; MAX(0; 130 - GRAMATURA / 2))"), 50);
}

TEST(RuleFormulas, RefuseWhatIsNoFormula) {
  for (const char* text : {"",
                           "   ",
                           "1 +",
                           "+ 1",
                           "1 2",
                           "(1",
                           "1)",
                           "()",
                           "MIN",
                           "MIN 1",
                           "MIN(1)",
                           "MIN(1; 2",
                           "MIN(1, 2)",
                           "COR",
                           "PESO PESO",
                           "1 ** 2",
                           "1e5",
                           "nan",
                           "0x10",
                           "1,",
                           "1.2.3",
                           "'x'",
                           "LARGURA; DROP TABLE",
                           "9999999999999999999",
                           "Ω",
                           "1 = 1",
                           "\"a\""}) {
    EXPECT_THROW(RuleFormula::Parse(text), host::InputError) << text;
  }
}

TEST(RuleFormulas, TellWhereTheyAreWrong) {
  try {
    RuleFormula::Parse("10 + ALTURA * 2");
    FAIL() << "taken";
  } catch (const host::InputError& error) {
    EXPECT_EQ(std::string(error.what()), "Fórmula inválida na posição 6: \"ALTURA\" não é um dado do material.");
  }
}

TEST(RuleFormulas, EndlessNestingIsRefusedAndNotFollowed) {
  EXPECT_THROW(RuleFormula::Parse(std::string(100000, '(')), host::InputError);
  EXPECT_THROW(RuleFormula::Parse(std::string(100000, '-') + "1"), host::InputError);
}

TEST(RuleFormulas, HaveNoResultWithoutANumber) {
  EXPECT_THROW(Value("1 / 0"), host::InputError);
  EXPECT_THROW(Value("1 / (GRAMATURA - 160)"), host::InputError);
  std::string huge = "999999999999999";
  for (int i = 0; i < 25; ++i) huge += " * 999999999999999";
  EXPECT_THROW(Value(huge), host::InputError);
}

// --- a stored rule over a stored fabric
// -------------------------------------------------------------------------------------

class StoredRules : public testing::Test {
 protected:
  StoredRules() { test::FillSmallMill(mill_); }
  double Percentage(std::string_view rule, std::string_view fabric) {
    return mill_.App().GetFuncoes().CalculaPercRegra(rule, fabric);
  }
  std::string Refusal(std::string_view rule, std::string_view fabric) {
    try {
      Percentage(rule, fabric);
    } catch (const host::InputError& error) {
      return error.what();
    }
    return "";
  }
  void Store(const char* code, const char* formula) {
    mill_.Insert("TNG_REGRA", {{"CODIGO", code}, {"DESCRICAO", "Teste"}, {"FORMULA", formula}});
  }
  test::Mill mill_;
};

TEST_F(StoredRules, GiveThePercentage) {
  EXPECT_DOUBLE_EQ(Percentage("R1", "F2"), 35);
  EXPECT_DOUBLE_EQ(Percentage("R2", "F1"), 40);
  Store("R3", "100 / 3");
  EXPECT_DOUBLE_EQ(Percentage("R3", "F1"), 33.3333);
}

TEST_F(StoredRules, RefuseWhatCannotBeWorkedOut) {
  EXPECT_EQ(Refusal("R9", "F1"), "Regra de cálculo \"R9\" não cadastrada.");
  EXPECT_EQ(Refusal("R1", "NADA"), "Material \"NADA\" não cadastrado.");
  EXPECT_EQ(Refusal("R2", "F2"), "Regra \"R2\", material \"F2\": O material não tem GRAMATURA.");
  Store("R4", "GRAMATURA");
  EXPECT_EQ(Refusal("R4", "F1"), "Regra \"R4\", material \"F1\": O resultado 160 não é um percentual.");
  Store("R5", "10 - 20");
  EXPECT_NE(Refusal("R5", "F1"), "");
  Store("R6", "1 +");
  EXPECT_NE(Refusal("R6", "F1").find("Fórmula inválida na posição 4"), std::string::npos);
}

}  // namespace
