#include "host/kit/filter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/errors.h"
#include "host/text.h"

namespace {

using host::Filter;
using host::Value;

const std::vector<std::string> kFields = {"Codigo", "Cor", "Lote", "Qtde", "Data", "Deposito"};

int Index(std::string_view name) {
  for (std::size_t at = 0; at < kFields.size(); ++at) {
    if (host::SameName(kFields[at], name)) return static_cast<int>(at);
  }
  return -1;
}

bool Holds(std::string_view text, const std::vector<Value>& row) {
  return Filter::Parse(text, Index).Matches([&row](std::size_t field) -> const Value& { return row[field]; });
}

const std::vector<Value> kRow = {"F1", "01", "AB12", 2.5, *host::Date::FromParts(2026, 3, 10), Value()};

TEST(Filter, ComparesTextsWithCase) {
  EXPECT_TRUE(Holds("Codigo = 'F1' and Cor = '01'", kRow));
  EXPECT_TRUE(Holds("codigo = 'F1'", kRow));
  EXPECT_FALSE(Holds("Codigo = 'f1'", kRow));
  EXPECT_FALSE(Holds("Codigo = 'F1' and Cor = '02'", kRow));
  EXPECT_TRUE(Holds("Codigo <> 'F2'", kRow));
  EXPECT_TRUE(Holds("Codigo<'F2'", kRow));
}

TEST(Filter, FiltersStockByYarnDepositAndLot) {
  const std::vector<Value> lot = {"F1", "01", "AB12", 100.0, Value(), "05"};
  EXPECT_TRUE(Holds("Codigo = 'F1' and Cor = '01' and Deposito = '05' and Lote like 'AB%'", lot));
  EXPECT_FALSE(Holds("Codigo = 'F1' and Cor = '01' and Deposito = '06' and Lote like 'AB%'", lot));
  EXPECT_FALSE(Holds("Codigo = 'F1' and Cor = '01' and Deposito = '05' and Lote like 'B%'", lot));
}

TEST(Filter, ComparesNumbers) {
  EXPECT_TRUE(Holds("qtde > 0", kRow));
  EXPECT_FALSE(Holds("qtde > 2.5", kRow));
  EXPECT_TRUE(Holds("qtde >= 2.5", kRow));
  EXPECT_TRUE(Holds("qtde = '2,5'", kRow));
  EXPECT_TRUE(Holds("qtde > -1", kRow));
  EXPECT_FALSE(Holds("qtde < 2", kRow));
  EXPECT_TRUE(Holds("qtde <= 10", kRow));
}

TEST(Filter, ANullFieldIsEmptyTextAndZero) {
  EXPECT_TRUE(Holds("Deposito = ''", kRow));
  EXPECT_TRUE(Holds("Deposito = 0", kRow));
  EXPECT_FALSE(Holds("Deposito > 0", kRow));
  EXPECT_TRUE(Holds("Deposito like '%'", kRow));
  EXPECT_FALSE(Holds("Deposito like '_%'", kRow));
}

TEST(Filter, ComparesDates) {
  EXPECT_TRUE(Holds("Data = '10/03/2026'", kRow));
  EXPECT_TRUE(Holds("Data > '28/02/2026'", kRow));
  EXPECT_FALSE(Holds("Data > '01/04/2026'", kRow));
}

TEST(Filter, LikePatterns) {
  EXPECT_TRUE(Holds("Lote like 'AB%'", kRow));
  EXPECT_TRUE(Holds("Lote like '%2'", kRow));
  EXPECT_TRUE(Holds("Lote like 'A%1_'", kRow));
  EXPECT_TRUE(Holds("Lote LIKE '%B%'", kRow));
  EXPECT_FALSE(Holds("Lote like 'B%'", kRow));
  EXPECT_FALSE(Holds("Lote like 'ab%'", kRow));
  EXPECT_FALSE(Holds("Lote like 'AB1'", kRow));
  EXPECT_TRUE(Holds("Lote like '%%12'", kRow));
  EXPECT_TRUE(Holds("Codigo like 'aç_o'", {"ação", Value(), Value(), Value(), Value(), Value()}));
  EXPECT_TRUE(Holds("Codigo like '%ab'", {"aaab", Value(), Value(), Value(), Value(), Value()}));
  EXPECT_TRUE(Holds("Codigo like '%a%b%'", {"xaxxbx", Value(), Value(), Value(), Value(), Value()}));
}

TEST(Filter, AndBindsCloserThanOr) {
  EXPECT_TRUE(Holds("Codigo = 'F1' or Codigo = 'F2' and Cor = '99'", kRow));
  EXPECT_FALSE(Holds("(Codigo = 'F1' or Codigo = 'F2') and Cor = '99'", kRow));
  EXPECT_TRUE(Holds("not Codigo = 'F2' and not (Cor = '99' or Qtde > 5)", kRow));
  EXPECT_TRUE(Holds("NOT NOT Codigo = 'F1'", kRow));
}

TEST(Filter, ADoubledQuoteIsOneQuote) {
  EXPECT_TRUE(Holds("Codigo = 'd''água'", {"d'água", Value(), Value(), Value(), Value(), Value()}));
}

TEST(Filter, RefusesWhatIsNoCondition) {
  for (const char* text : {"", "Codigo", "Codigo =", "Codigo = F1", "Codigo = 'F1", "Nome = 'x'", "Codigo = 'F1' and",
                           "(Codigo = 'F1'", "Codigo = 'F1')", "'F1' = Codigo", "Codigo == 'F1'", "Qtde > -",
                           "Qtde > 1.2.3", "Qtde like 5", "Codigo = 'F1' Cor = '01'", "Codigo ! 'x'"}) {
    EXPECT_THROW(Filter::Parse(text, Index), host::InputError) << text;
  }
}

}  // namespace
