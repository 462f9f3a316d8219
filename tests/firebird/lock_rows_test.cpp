// Several records held together by stations that ask for them in any order.
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <random>
#include <thread>

#include "app/firebird/record_lock.h"
#include "host/errors.h"
#include "tests/firebird/fresh_database.h"

namespace test {
namespace {

using app::firebird::Database;
using host::RecordKey;
using Outcome = app::firebird::Database::Outcome;

std::string Number(int number) {
  const std::string digits = std::to_string(number);
  return std::string(6 - digits.size(), '0') + digits;
}

RecordKey Order(const std::string& number) { return {"T", "NUMERO", number}; }

class LockRows : public FreshDatabase {
 protected:
  std::int64_t LockOf(const std::string& number) {
    return app::firebird::RecordLock(Db().PhysicalName("T"), "NUMERO", number);
  }
  /// The next number from `number` on whose lock passes.
  std::string Next(int number, const std::function<bool(std::int64_t)>& passes) {
    while (!passes(LockOf(Number(number)))) ++number;
    return Number(number);
  }
  /// Two pairs of numbers, each in ascending order, that have the same two locks crosswise.
  std::array<std::string, 4> Crossing() {
    const std::string first = Number(1);
    const std::string second = Next(2, [&](std::int64_t lock) { return lock != LockOf(first); });
    const std::string third = Next(1000, [&](std::int64_t lock) { return lock == LockOf(second); });
    const std::string fourth = Next(std::stoi(third), [&](std::int64_t lock) { return lock == LockOf(first); });
    return {first, second, third, fourth};
  }
  std::unique_ptr<Database> Patient() {
    auto options = Options();
    options.lock_timeout_seconds = 30;
    return Database::Open(options);
  }
};

TEST_F(LockRows, HoldsEachUntilTheActionEnds) {
  const auto other = OpenAnother();
  Db().BeginAction();
  Db().LockRows({});
  Db().LockRows({Order("000002"), Order("000001"), Order("000002"), {"T", "CODIGO", "000009"}});
  EXPECT_THROW(other->LockRow("T", "NUMERO", "000001"), host::DatabaseError);
  EXPECT_THROW(other->LockRow("T", "NUMERO", "000002"), host::DatabaseError);
  EXPECT_THROW(other->LockRow("T", "CODIGO", "000009"), host::DatabaseError);
  EXPECT_NO_THROW(other->LockRow("T", "NUMERO", "000003"));
  Db().EndAction(Outcome::kOk);
  EXPECT_NO_THROW(other->LockRow("T", "NUMERO", "000002"));
}

TEST_F(LockRows, ThoseHeldBeforeAnErrorStayHeld) {
  const auto other = OpenAnother();
  const auto third = OpenAnother();
  const std::string low = Next(1, [](std::int64_t lock) { return lock < 100; });
  const std::string high = Next(1, [](std::int64_t lock) { return lock > 900; });
  other->BeginAction();
  other->LockRow("T", "NUMERO", high);
  Db().BeginAction();
  try {
    Db().LockRows({Order(high), Order(low)});
    FAIL() << "one of them is held elsewhere";
  } catch (const host::DatabaseError& error) {
    EXPECT_STREQ(error.what(), "Outra estação está usando estes dados. Tente novamente.");
  }
  EXPECT_THROW(third->LockRow("T", "NUMERO", low), host::DatabaseError);
  Db().EndAction(Outcome::kFailed);
  EXPECT_NO_THROW(third->LockRow("T", "NUMERO", low));
}

// Two stations hold two records each, by their keys: the first waits for a lock that the second has already, and the
// second for one of the first's, though no record is wanted by both.
TEST_F(LockRows, HeldOneByOneInTheOrderOfTheirKeysStationsStandStill) {
  const auto numbers = Crossing();
  ASSERT_LT(numbers[0], numbers[1]);
  ASSERT_LT(numbers[2], numbers[3]);
  const auto other = OpenAnother();
  Db().LockRow("T", "NUMERO", numbers[0]);
  other->LockRow("T", "NUMERO", numbers[2]);
  std::atomic<int> refused = 0;
  const auto go_on = [&](Database& database, const std::string& number) {
    try {
      database.LockRow("T", "NUMERO", number);
    } catch (const host::DatabaseError&) {
      ++refused;
      database.BeginAction();
      database.EndAction(Outcome::kFailed);
    }
  };
  std::thread thread([&] { go_on(*other, numbers[3]); });
  go_on(Db(), numbers[1]);
  thread.join();
  EXPECT_GE(refused, 1);
}

TEST_F(LockRows, HeldTogetherTheyDoNot) {
  const auto numbers = Crossing();
  std::atomic<int> refused = 0;
  const auto work = [&](Database& database, const std::string& one, const std::string& two) {
    for (int i = 0; i < 150 && refused == 0; ++i) {
      database.BeginAction();
      try {
        database.LockRows({Order(one), Order(two)});
      } catch (const host::DatabaseError&) {
        ++refused;
      }
      database.EndAction(Outcome::kOk);
    }
  };
  const auto other = OpenAnother();
  std::thread thread([&] { work(*other, numbers[2], numbers[3]); });
  work(Db(), numbers[0], numbers[1]);
  thread.join();
  EXPECT_EQ(refused, 0);
}

// Notes over many orders, whose rolls the mills send back in any order. Three of these orders share a lock, on average.
TEST_F(LockRows, ManyOverlappingSetsInAnyOrderNeverStandStill) {
  constexpr int kOrders = 60;
  constexpr int kTimes = 200;
  std::vector<std::string> numbers;
  for (int i = 0, number = 1; i < kOrders; ++i, ++number) {
    numbers.push_back(Next(number, [](std::int64_t lock) { return lock < kOrders / 3; }));
    number = std::stoi(numbers.back());
  }
  std::array<std::atomic<int>, kOrders> holders{};
  std::atomic<int> shared = 0;  // moments in which two stations held one order
  std::atomic<int> met = 0;     // and in which one wanted what the other held
  std::array<std::string, 2> failures;
  const auto work = [&](Database& database, unsigned seed, std::string& failure) {
    std::mt19937 random(seed);
    std::vector<int> orders(kOrders);
    for (int i = 0; i < kOrders; ++i) orders[static_cast<std::size_t>(i)] = i;
    try {
      for (int i = 0; i < kTimes; ++i) {
        std::shuffle(orders.begin(), orders.end(), random);
        const auto end = orders.begin() + std::uniform_int_distribution<int>(2, 15)(random);
        std::vector<RecordKey> records;
        for (auto order = orders.begin(); order != end; ++order)
          records.push_back(Order(numbers.at(static_cast<std::size_t>(*order))));
        const auto held = [&](int order) { return holders.at(static_cast<std::size_t>(order)) != 0; };
        if (std::any_of(orders.begin(), end, held)) ++met;
        database.BeginAction();
        database.LockRows(records);
        for (auto order = orders.begin(); order != end; ++order) {
          if (holders.at(static_cast<std::size_t>(*order)).fetch_add(1) != 0) ++shared;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        for (auto order = orders.begin(); order != end; ++order) --holders.at(static_cast<std::size_t>(*order));
        database.EndAction(Outcome::kOk);
      }
    } catch (const std::exception& error) {
      failure = error.what();
    }
  };
  const auto one = Patient();
  const auto two = Patient();
  std::thread thread([&] { work(*one, 1, failures[0]); });
  work(*two, 2, failures[1]);
  thread.join();
  EXPECT_EQ(failures[0], "");
  EXPECT_EQ(failures[1], "");
  EXPECT_EQ(shared, 0);
  EXPECT_GT(met, 0);
}

}  // namespace
}  // namespace test
