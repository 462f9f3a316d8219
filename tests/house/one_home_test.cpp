// What the module's ground floor is the one home of is written nowhere else in the module.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "tests/house/sources.h"

namespace {

struct Home {
  const char* what;
  const char* pattern;
  std::vector<std::string> files;  // where it may stand
};

const std::vector<Home>& Homes() {
  static const std::vector<Home> homes = {
      {"a statement put together by hand", R"(SQL\.(Add|Clear)|\bDBLocal)", {"weaving/statement.cpp"}},
      {"an installation parameter by its number",
       R"(\bBuscaParametro\()",
       {"weaving/parameters.h", "weaving/parameters.cpp"}},
      {"the condition of reservations", R"(<> ?'F')", {"weaving/reservations.h"}},
      {"the condition of a yarn colour", R"(LIKE '%\*%')", {"weaving/yarn_colour.h"}},
      {"a savepoint's name", R"("ANTES_D|"PESAGEM_)", {"weaving/savepoints.h"}},
      {"a log subject", R"x("(ORDEM DE TECELAGEM|BAIXAS DA TECELAGEM|CADASTRO DE COMPOSICAO)")x", {"weaving/audit.h"}},
      {"how an order is held", R"(\bLockRow\("TECEL")", {"weaving/hold.h"}},
      {"the price of weaving", R"(Busca_Valor\("CADCORTI")", {"weaving/mill_price.cpp"}},
  };
  return homes;
}

std::string Strays(const std::string& file, const std::string& text) {
  std::string found;
  for (const Home& home : Homes()) {
    const bool at_home = std::find(home.files.begin(), home.files.end(), file) != home.files.end();
    if (!at_home && std::regex_search(text, std::regex(home.pattern))) {
      found += file + " has " + home.what + ", whose home is " + home.files.front() + "\n";
    }
  }
  return found;
}

TEST(OneHome, FactsOfTheGroundFloorAreCopiedNowhere) {
  std::string strays;
  std::size_t seen = 0;
  for (const char* folder : {"weaving", "orders", "writeoff", "yarn", "composition", "module"}) {
    for (const auto& path : house::Sources(folder)) {
      ++seen;
      strays += Strays(std::filesystem::relative(path, house::kRoot).string(), house::Read(path));
    }
  }
  EXPECT_GT(seen, 50u);
  EXPECT_EQ(strays, "");
}

TEST(OneHome, EachHomeHasWhatItIsTheHomeOf) {
  for (const Home& home : Homes()) {
    bool there = false;
    for (const std::string& file : home.files) {
      there = there || std::regex_search(house::Read(house::kRoot / file), std::regex(home.pattern));
    }
    EXPECT_TRUE(there) << home.what;
  }
}

TEST(OneHome, TheRuleItselfFindsACopy) {
  EXPECT_NE(Strays("orders/x.cpp", "query->SQL.Add(\"SELECT 1\");"), "");
  EXPECT_NE(Strays("yarn/x.cpp", "funcoes.BuscaParametro(\"MAL\", 40)"), "");
  EXPECT_NE(Strays("yarn/x.cpp", "AND TIPO <> 'F'"), "");
  EXPECT_EQ(Strays("weaving/reservations.h", "AND TIPO <> 'F'"), "");
  EXPECT_EQ(Strays("orders/x.cpp", "statements_.Open(\"SELECT 1\");"), "");
}

}  // namespace
