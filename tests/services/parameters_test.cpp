// Installation parameters, user rights aside.
#include <gtest/gtest.h>

#include "host/kit/screen.h"
#include "support/mill.h"

namespace {

class InstallationParameters : public testing::Test {
 protected:
  std::string Read(std::string_view group, int number) {
    return mill_.App().GetFuncoes().BuscaParametro(group, number);
  }
  test::Mill mill_;
};

TEST_F(InstallationParameters, NeverSetIsEmpty) {
  EXPECT_EQ(Read("MAL", 999), "");
  EXPECT_EQ(Read("NAO", 40), "");
}

TEST_F(InstallationParameters, WrittenIsSeenAtOnce) {
  mill_.SetParameter("MAL", 40, "3");
  EXPECT_EQ(Read("MAL", 40), "3");
  mill_.SetParameter("MAL", 40, "5 - por pedido");
  EXPECT_EQ(Read("MAL", 40), "5 - por pedido");
  mill_.SetParameter("MAL", 70, "");
  EXPECT_EQ(Read("MAL", 70), "");
}

TEST_F(InstallationParameters, ManyReadsCostOneStatement) {
  Read("MAL", 40);
  mill_.TakeStatements();
  for (int i = 0; i < 20; ++i) {
    Read("MAL", 70);
    Read("COM", 80);
  }
  EXPECT_TRUE(mill_.TakeStatements().empty());
}

TEST_F(InstallationParameters, AnotherStationsChangeIsSeenWhenAScreenOpens) {
  mill_.SetParameter("MAL", 40, "1");
  EXPECT_EQ(Read("MAL", 40), "1");
  test::Mill::Options options;
  options.database = mill_.Path();
  test::Mill other(options);
  other.SetParameter("MAL", 40, "2");
  EXPECT_EQ(Read("MAL", 40), "1");
  mill_.Open("TfmTiny");
  EXPECT_EQ(Read("MAL", 40), "2");
}

// A roll loads the yarn screen for itself; that alone must not read the parameters again.
TEST_F(InstallationParameters, AScreenLoadedByTheProgramKeepsThem) {
  Read("MAL", 40);
  mill_.TakeStatements();
  mill_.App().GetFuncoes().Carrega_Form("TfmTiny");
  Read("MAL", 40);
  EXPECT_TRUE(mill_.TakeStatements("TEC_PARAMETRO").empty());
}

TEST_F(InstallationParameters, AFailedWriteLeavesTheOldValue) {
  mill_.SetParameter("MAL", 40, "1");
  EXPECT_ANY_THROW(mill_.SetParameter("MAL", 40, std::string(5000, 'x')));
  EXPECT_EQ(Read("MAL", 40), "1");
}

// --- accounting periods
// -----------------------------------------------------------------------------------------------

TEST(Periods, OnlyAReconciledPeriodOfTheAreaCloses) {
  test::Mill mill;
  const auto period = [&](const char* area, const char* from, const char* to, const char* reconciled) {
    mill.Insert("TEC_PERIODO", {{"AREA", area}, {"DT_INICIO", from}, {"DT_FIM", to}, {"CONCILIADO", reconciled}});
  };
  period("IV", "2026-01-01", "2026-01-31", "S");
  period("IV", "2026-02-01", "2026-02-28", "N");
  period("FI", "2026-03-01", "2026-03-31", "S");
  const auto closed = [&](int month, int day) {
    return mill.App().GetContabil().PeriodoConciliado(host::Date::FromParts(2026, month, day).value(), "IV");
  };
  EXPECT_TRUE(closed(1, 1));
  EXPECT_TRUE(closed(1, 31));
  EXPECT_FALSE(closed(2, 1));
  EXPECT_FALSE(closed(3, 15));
  EXPECT_FALSE(mill.App().GetContabil().PeriodoConciliado(host::Date(), "IV"));
}

}  // namespace
