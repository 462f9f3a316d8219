// Numbers that never come twice.
#include "app/services/numbering.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <thread>

#include "host/errors.h"
#include "host/kit/screen.h"
#include "support/mill.h"

namespace {

class Numbers : public testing::Test {
 protected:
  host::Funcoes& Services() { return mill_.App().GetFuncoes(); }
  std::string Next() { return Services().Proximo("TECEL", "NUMERO", 6, true); }
  void Save(const std::string& number) { mill_.Insert("TECEL", {{"NUMERO", number}}); }

  test::Mill mill_;
};

TEST_F(Numbers, StartAtOneAndGoOn) {
  EXPECT_EQ(Next(), "000001");
  EXPECT_EQ(Next(), "000002");
}

TEST_F(Numbers, StartAfterTheHighestThatExists) {
  Save("000041");
  Save("7");
  Save("AB12");
  EXPECT_EQ(Next(), "000042");
}

TEST_F(Numbers, PassOverNumbersTypedByHand) {
  EXPECT_EQ(Next(), "000001");
  Save("000002");
  Save("000003");
  EXPECT_EQ(Next(), "000004");
}

// A whole range that was imported after the counter had started.
TEST_F(Numbers, StepOverALongRunAtOnce) {
  EXPECT_EQ(Next(), "000001");
  mill_.Exec(R"(EXECUTE BLOCK AS DECLARE N INTEGER = 2; BEGIN
    WHILE (N <= 3000) DO BEGIN
      IF (N <> 2500) THEN INSERT INTO {TECEL} (NUMERO) VALUES (LPAD(:N, 6, '0'));
      N = N + 1;
    END END)");
  mill_.TakeStatements();
  EXPECT_EQ(Next(), "002500");
  EXPECT_LT(mill_.TakeStatements().size(), 30u);
  EXPECT_EQ(Next(), "003001");
}

TEST_F(Numbers, ATypedLastNumberDoesNotEndTheNumbering) {
  Save("999999");
  Save("000001");
  EXPECT_EQ(Next(), "000002");
}

TEST_F(Numbers, SaySoWhenNoneIsLeft) {
  EXPECT_EQ(Services().Proximo("TECEL", "NUMERO", 1, true), "1");
  mill_.Exec("UPDATE TEC_CONTADOR SET ULTIMO = 9");
  EXPECT_THROW(Services().Proximo("TECEL", "NUMERO", 1, true), host::InputError);
}

TEST_F(Numbers, ColumnsCountApart) {
  EXPECT_EQ(Next(), "000001");
  EXPECT_EQ(Services().Proximo("DEF_MOV", "LANCAMENTO", 10, true), "0000000001");
  EXPECT_EQ(Next(), "000002");
}

// The number stands on the screen when the action that fetched it fails; it must not come to another station too.
TEST_F(Numbers, SurviveTheUndoingOfTheirAction) {
  std::string shown;
  const auto result = mill_.Desk().Run("ação", [&] {
    shown = Next();
    throw host::InputError("falha depois do número");
  });
  EXPECT_EQ(result, host::ActResult::kFailed);
  EXPECT_EQ(shown, "000001");
  EXPECT_EQ(Next(), "000002");
}

TEST_F(Numbers, RollsOfAnOrderCountFromOne) {
  EXPECT_EQ(Services().ProximaOrdemTecelB("000001"), "1");
  EXPECT_EQ(Services().ProximaOrdemTecelB("000001"), "2");
  EXPECT_EQ(Services().ProximaOrdemTecelB("000002"), "1");
}

TEST_F(Numbers, RollsGoOnAfterThoseOfTheOrder) {
  mill_.Insert("TECELB", {{"NUMERO", "000001"}, {"ORDEM", 12}, {"CODIGO", "F1"}, {"COR", "01"}});
  EXPECT_EQ(Services().ProximaOrdemTecelB("000001"), "13");
}

TEST_F(Numbers, ARollsNumberIsUndoneWithItsRoll) {
  mill_.Desk().Run("ação", [&] {
    Services().ProximaOrdemTecelB("000001");
    throw host::InputError("falha no rolo");
  });
  EXPECT_EQ(Services().ProximaOrdemTecelB("000001"), "1");
}

// Two stations at once, each on a connection of its own.
template <typename Take>
std::multiset<std::string> TakeOnTwoStations(const std::string& path, int each, const Take& take) {
  std::vector<std::string> taken[2];
  std::string failures[2];
  std::vector<std::thread> stations;
  for (std::size_t station = 0; station < 2; ++station) {
    stations.emplace_back([&, station] {
      try {
        app::firebird::ConnectOptions options;
        options.database = path;
        const auto database = app::firebird::Database::Open(options);
        app::services::Numbering numbering(*database);
        for (int i = 0; i < each; ++i) taken[station].push_back(take(*database, numbering));
      } catch (const std::exception& error) {
        failures[station] = error.what();
      }
    });
  }
  for (auto& station : stations) station.join();
  EXPECT_EQ(failures[0], "");
  EXPECT_EQ(failures[1], "");
  std::multiset<std::string> all;
  for (const auto& numbers : taken) all.insert(numbers.begin(), numbers.end());
  return all;
}

TEST_F(Numbers, NeverTwiceOnTwoStations) {
  const auto all = TakeOnTwoStations(mill_.Path(), 100, [](auto&, app::services::Numbering& numbering) {
    return numbering.Next("TECEL_001", "NUMERO", 6);
  });
  EXPECT_EQ(all.size(), 200u);
  EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), 200u);
}

TEST_F(Numbers, RollsNeverTwiceOnTwoStations) {
  const auto all =
      TakeOnTwoStations(mill_.Path(), 50, [](app::firebird::Database& database, app::services::Numbering& numbering) {
        database.BeginAction();
        std::string number = numbering.NextRoll("000001");
        database.EndAction(app::firebird::Database::Outcome::kOk);
        return number;
      });
  EXPECT_EQ(all.size(), 100u);
  EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), 100u);
  EXPECT_EQ(Services().ProximaOrdemTecelB("000001"), "101");
}

TEST_F(Numbers, CostTwoStatementsOnceStarted) {
  Next();
  mill_.TakeStatements();
  Next();
  EXPECT_EQ(mill_.TakeStatements().size(), 2u);
}

}  // namespace
