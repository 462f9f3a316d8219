// Several stations on one database: waiting, taking turns, dying.
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

#include "app/firebird/file_guard.h"
#include "app/firebird/record_lock.h"
#include "host/errors.h"
#include "tests/firebird/child.h"
#include "tests/firebird/fresh_database.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using app::firebird::ConnectOptions;
using app::firebird::Database;
using Outcome = app::firebird::Database::Outcome;
using std::chrono::milliseconds;

constexpr const char* kBusy = "Outra estação está usando estes dados. Tente novamente.";

ConnectOptions OptionsOf(const std::string& file) {
  ConnectOptions options;
  options.database = file;
  return options;
}

// A station that does work and says so, but is killed before it can finish.
int DieInTheMiddle(const std::vector<std::string>& arguments) {
  const auto database = Database::Open(OptionsOf(arguments.at(0)));
  const auto run = [&](const std::string& sql) { database->Execute(sql, {}); };
  database->BeginAction();
  run("INSERT INTO {T} (NUMERO) VALUES ('1')");
  database->CommitRetaining();
  database->EndAction(Outcome::kOk);
  database->BeginAction();
  run("INSERT INTO {T} (NUMERO) VALUES ('2')");
  database->CommitRetaining();
  run("UPDATE {T} SET CURTO = 99 WHERE NUMERO = 'A'");
  std::printf("pronto\n");
  std::fflush(stdout);
  pause();
  return 0;
}
const RegisterChild kDieInTheMiddle("die-in-the-middle", DieInTheMiddle);

// Raises the number in each of the files so many times, each time durably.
int Raise(const std::vector<std::string>& arguments) {
  const int times = std::stoi(arguments.at(0));
  std::printf("pronto\n");
  std::fflush(stdout);
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const auto database = Database::Open(OptionsOf(arguments[i]));
    for (int n = 0; n < times; ++n) {
      database->BeginAction();
      database->Execute("UPDATE {T} SET INTEIRO = INTEIRO + 1 WHERE NUMERO = 'A'", {});
      database->EndAction(Outcome::kOk);
    }
  }
  return 0;
}
const RegisterChild kRaise("raise", Raise);

int OpenAndSay(const std::vector<std::string>& arguments) {
  if (arguments.size() > 1 && geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) return 2;
  if (arguments.size() > 1) setenv("TECELAGEM_FIREBIRD", arguments[1].c_str(), 1);
  const auto database = Database::Open(OptionsOf(arguments.at(0)));
  const auto query = database->Query("SELECT COUNT(*) AS N FROM {T} WHERE NOME = 'acao'", {});
  std::printf("%s\n", query->FieldByName("N").AsText().c_str());
  return 0;
}
const RegisterChild kOpenAndSay("open-and-say", OpenAndSay);

class Stations : public FreshDatabase {};

TEST_F(Stations, WhatAnotherMadeDurableShowsAtOnce) {
  const auto other = OpenAnother();
  EXPECT_EQ(Get(*other, "SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "1");
  Exec("UPDATE {T} SET CURTO = 2 WHERE NUMERO = 'A'");
  EXPECT_EQ(Get(*other, "SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "1");
  Db().CommitRetaining();
  EXPECT_EQ(Get(*other, "SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "2");
  Exec(*other, "UPDATE {T} SET COR = 'x' WHERE NUMERO = 'B'");
  Exec("UPDATE {T} SET CURTO = 3 WHERE NUMERO = 'A'");
  Db().CommitRetaining();
  EXPECT_EQ(Get(*other, "SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "3");
}

TEST_F(Stations, AStatementWaitsForTheOtherAndThenRuns) {
  const auto other = OpenAnother();
  Exec("UPDATE {T} SET CURTO = CURTO + 1 WHERE NUMERO = 'A'");
  std::thread waiting([&] {
    Exec(*other, "UPDATE {T} SET CURTO = CURTO + 10 WHERE NUMERO = 'A'");
    other->CommitRetaining();
  });
  std::this_thread::sleep_for(milliseconds(100));
  Db().CommitRetaining();
  waiting.join();
  EXPECT_EQ(Durable("SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "12");
  EXPECT_GE(other->Stats().retries, 1u);
}

TEST_F(Stations, WhoWaitsTooLongIsToldAndKeepsItsWork) {
  const auto other = OpenAnother();
  Exec("UPDATE {T} SET CURTO = 5 WHERE NUMERO = 'A'");
  other->BeginAction();
  Exec(*other, "INSERT INTO {T} (NUMERO) VALUES ('1')");
  const auto start = std::chrono::steady_clock::now();
  try {
    Exec(*other, "UPDATE {T} SET CURTO = 6 WHERE NUMERO = 'A'");
    FAIL() << "the row is held";
  } catch (const host::DatabaseError& error) {
    EXPECT_STREQ(error.what(), kBusy);
    EXPECT_EQ(error.Sql(), "UPDATE T_001 SET CURTO = 6 WHERE NUMERO = 'A'");
    EXPECT_NE(error.Code(), 0);
  }
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_GE(waited, milliseconds(900));
  // The engine counts whole seconds: a wait that it ended early is taken for a conflict and tried once more.
  EXPECT_LE(waited, milliseconds(4500));
  other->EndAction(Outcome::kOk);
  EXPECT_EQ(Durable("SELECT COUNT(*) FROM {T} WHERE NUMERO = '1'"), "1");
}

TEST_F(Stations, TwoThatWaitForEachOtherAreTold) {
  const auto other = OpenAnother();
  Exec("UPDATE {T} SET CURTO = 5 WHERE NUMERO = 'A'");
  Exec(*other, "UPDATE {T} SET CURTO = 6 WHERE NUMERO = 'B'");
  std::atomic<int> told = 0;
  const auto attempt = [&](Database& database, const std::string& row) {
    try {
      Exec(database, "UPDATE {T} SET CURTO = 7 WHERE NUMERO = '" + row + "'");
    } catch (const host::DatabaseError& error) {
      EXPECT_STREQ(error.what(), kBusy);
      ++told;
      database.BeginAction();
      database.EndAction(Outcome::kFailed);
    }
  };
  std::thread thread([&] { attempt(*other, "A"); });
  attempt(Db(), "B");
  thread.join();
  EXPECT_GE(told, 1);
}

TEST_F(Stations, LockRowMakesStationsTakeTurns) {
  constexpr int kTimes = 40;
  const auto work = [&](Database& database) {
    for (int i = 0; i < kTimes; ++i) {
      database.BeginAction();
      database.LockRow("T", "NUMERO", "A");
      const int seen = std::stoi(Get(database, "SELECT INTEIRO FROM {T} WHERE NUMERO = 'A'"));
      Exec(database, "UPDATE {T} SET INTEIRO = " + std::to_string(seen + 1) + " WHERE NUMERO = 'A'");
      database.EndAction(Outcome::kOk);
    }
  };
  auto options = Options();
  options.lock_timeout_seconds = 20;
  const auto one = Database::Open(options);
  const auto two = Database::Open(options);
  std::thread thread([&] { work(*one); });
  work(*two);
  thread.join();
  EXPECT_EQ(Durable("SELECT INTEIRO FROM {T} WHERE NUMERO = 'A'"), std::to_string(10 + 2 * kTimes));
}

// An order is stored by deleting its row and inserting it anew, so whoever waits for the row finds another one.
TEST_F(Stations, LockRowHoldsARowThatIsReplacedMeanwhile) {
  constexpr int kTimes = 60;
  const auto work = [&](Database& database) {
    for (int i = 0; i < kTimes; ++i) {
      database.BeginAction();
      database.LockRow("T", "NUMERO", "A");
      const int seen = std::stoi(Get(database, "SELECT INTEIRO FROM {T} WHERE NUMERO = 'A'"));
      Exec(database, "DELETE FROM {T} WHERE NUMERO = 'A'");
      Exec(database, "INSERT INTO {T} (NUMERO, INTEIRO) VALUES ('A', " + std::to_string(seen + 1) + ")");
      database.EndAction(Outcome::kOk);
    }
  };
  auto options = Options();
  options.lock_timeout_seconds = 20;
  const auto one = Database::Open(options);
  const auto two = Database::Open(options);
  std::thread thread([&] { work(*one); });
  work(*two);
  thread.join();
  EXPECT_EQ(Durable("SELECT INTEIRO FROM {T} WHERE NUMERO = 'A'"), std::to_string(10 + 2 * kTimes));
}

TEST_F(Stations, LockRowHoldsUntilTheActionEndsAndNeedsNoRow) {
  const auto other = OpenAnother();
  Db().BeginAction();
  Db().LockRow("T", "NUMERO", "nenhum");
  Db().LockRow("T", "NUMERO", "A");
  EXPECT_THROW(other->LockRow("T", "NUMERO", "A"), host::DatabaseError);
  EXPECT_THROW(other->LockRow("T", "NUMERO", "nenhum"), host::DatabaseError);
  other->LockRow("T", "NUMERO", "B");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(Db().Stats().commits, 0u);
  other->LockRow("T", "NUMERO", "A");
}

// There is a moment in which the row is gone and the one that takes its place is not there yet.
TEST_F(Stations, LockRowHoldsBetweenTheDeleteAndTheInsert) {
  const auto other = OpenAnother();
  Db().BeginAction();
  Db().LockRow("T", "NUMERO", "A");
  Exec("DELETE FROM {T} WHERE NUMERO = 'A'");
  Db().CommitRetaining();
  EXPECT_THROW(other->LockRow("T", "NUMERO", "A"), host::DatabaseError);
  Exec("INSERT INTO {T} (NUMERO, INTEIRO) VALUES ('A', 11)");
  Db().EndAction(Outcome::kOk);
  other->BeginAction();
  other->LockRow("T", "NUMERO", "A");
  EXPECT_EQ(Get(*other, "SELECT INTEIRO FROM {T} WHERE NUMERO = 'A'"), "11");
  other->EndAction(Outcome::kOk);
}

TEST_F(Stations, LockRowIsOneStatementAndKeepsTheRowForOthersToChange) {
  const auto other = OpenAnother();
  Db().BeginAction();
  const auto before = Db().Stats().statements;
  Db().LockRow("T", "NUMERO", "A");
  EXPECT_EQ(Db().Stats().statements, before + 1);
  Exec(*other, "UPDATE {T} SET CURTO = 5 WHERE NUMERO = 'A'");
  other->CommitRetaining();
  EXPECT_EQ(Get("SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "5");
  Db().EndAction(Outcome::kOk);
}

TEST(RecordLock, IsTheSameAtEveryStationAndSpreadsTheKeys) {
  using app::firebird::RecordLock;
  EXPECT_EQ(RecordLock("TECEL_001", "NUMERO", "000001"), 318);
  EXPECT_EQ(RecordLock("MATERIAL_001", "CODIGO", "Malha é 1"), 906);
  EXPECT_EQ(RecordLock("TECEL_001", "NUMERO", "000001  "), RecordLock("TECEL_001", "NUMERO", "000001"));
  EXPECT_NE(RecordLock("TECEL_002", "NUMERO", "000001"), RecordLock("TECEL_001", "NUMERO", "000001"));
  // A thousand orders one after the other, as they stand side by side at the looms.
  std::vector<int> used(app::firebird::kRecordLocks);
  for (int number = 100000; number < 101000; ++number) {
    ++used.at(static_cast<std::size_t>(RecordLock("TECEL_001", "NUMERO", std::to_string(number))));
  }
  EXPECT_LE(*std::max_element(used.begin(), used.end()), 8);
}

TEST_F(Stations, ProcessesDoNotLoseEachOthersWork) {
  const std::string second = File() + ".2";
  fs::copy_file(File(), second);
  {
    Child one("raise", {"100", File(), second});
    Child two("raise", {"100", second, File()});
    const auto mine = OpenAnother();
    for (int i = 0; i < 50; ++i) {
      mine->Execute("UPDATE {T} SET INTEIRO = INTEIRO + 1 WHERE NUMERO = 'A'", {});
      mine->CommitRetaining();
    }
    EXPECT_EQ(one.Wait(), 0);
    EXPECT_EQ(two.Wait(), 0);
  }
  EXPECT_EQ(Durable("SELECT INTEIRO FROM {T} WHERE NUMERO = 'A'"), "260");
  EXPECT_EQ(Get(*Database::Open(OptionsOf(second)), "SELECT INTEIRO FROM {T} WHERE NUMERO = 'A'"), "210");
}

TEST_F(Stations, AKilledProcessLeavesOnlyWhatWasDurable) {
  Child child("die-in-the-middle", {File()});
  ASSERT_EQ(child.Line(), "pronto");
  child.Kill();
  EXPECT_EQ(child.Wait(), -1);
  EXPECT_EQ(Durable("SELECT LIST(NUMERO, '') FROM {T}"), "AB1");
  Exec("UPDATE {T} SET CURTO = 5 WHERE NUMERO = 'A'");  // nothing is held any more
  Close();
  Reopen();
  EXPECT_EQ(Get("SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "1");
}

TEST_F(Stations, TheLockDirectoryGoesWithTheLastStation) {
  const fs::path directory = File() + ".lock";
  EXPECT_TRUE(fs::is_directory(directory));
  auto other = OpenAnother();
  Close();
  EXPECT_TRUE(fs::is_directory(directory));
  other.reset();
  EXPECT_FALSE(fs::exists(directory));
}

TEST_F(Stations, AnotherNameOfTheSameFileIsRefused) {
  const fs::path link = File() + ".outro";
  fs::create_hard_link(File(), link);
  try {
    Database::Open(OptionsOf(link.string()));
    FAIL() << "two lock directories for one file";
  } catch (const host::DatabaseError& error) {
    EXPECT_EQ(std::string(error.what()),
              "O banco de dados \"" + link.string() + "\" está em uso por outro caminho ou por outro computador.");
  }
  Close();
  EXPECT_EQ(Get(*Database::Open(OptionsOf(link.string())), "SELECT COUNT(*) FROM {T}"), "2");
}

TEST_F(Stations, ASymbolicLinkLeadsToTheSameLockDirectory) {
  const fs::path link = File() + ".atalho";
  fs::create_symlink(File(), link);
  const auto other = Database::Open(OptionsOf(link.string()));
  EXPECT_FALSE(fs::exists(link.string() + ".lock"));
  Exec("UPDATE {T} SET CURTO = 2");
  Db().CommitRetaining();
  EXPECT_EQ(Get(*other, "SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "2");
}

TEST_F(Stations, AnOrdinaryUserNeedsNoPreparation) {
  Close();
  const Folder home;
  const Folder data;
  const fs::path file = data / "fiacao.fdb";
  fs::copy_file(File(), file);
  for (const fs::path& path : {home.Path(), data.Path(), file}) {
    fs::permissions(path, fs::perms::all);
    const bool given = geteuid() != 0 || chown(path.c_str(), 65534, 65534) == 0;
    ASSERT_TRUE(given);
  }
  Child child("open-and-say", {file.string(), (home / "motor").string()});
  EXPECT_EQ(child.Line(), "1");
  EXPECT_EQ(child.Wait(), 0);
  EXPECT_TRUE(fs::exists(home / "motor"));
}

TEST_F(Stations, AFileWithoutWritingIsToldSo) {
  Close();
  const Folder home;
  const Folder data;
  const fs::path file = data / "fiacao.fdb";
  fs::copy_file(File(), file);
  fs::permissions(home.Path(), fs::perms::all);
  fs::permissions(data.Path(), fs::perms::all);
  fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  {
    Child child("open-and-say", {file.string(), (home / "motor").string()});
    EXPECT_EQ(child.Line(), "O arquivo \"" + file.string() + "\" não permite gravação.");
    EXPECT_EQ(child.Wait(), 1);
  }
  fs::permissions(file, fs::perms::all);
  fs::permissions(data.Path(),
                  fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
  Child child("open-and-say", {file.string(), (home / "motor").string()});
  EXPECT_EQ(child.Line(),
            "A pasta \"" + data.Path().string() + "\" não permite gravação; o banco de dados precisa dela.");
  EXPECT_EQ(child.Wait(), 1);
  fs::permissions(data.Path(), fs::perms::all);
}

TEST_F(Stations, ManyFirstStartsAtOnce) {
  const Folder home;
  fs::permissions(home.Path(), fs::perms::all);
  fs::permissions(fs::path(File()).parent_path(), fs::perms::all);
  Close();
  fs::permissions(File(), fs::perms::all);
  std::vector<std::unique_ptr<Child>> children;
  for (int i = 0; i < 6; ++i) {
    children.push_back(
        std::make_unique<Child>("open-and-say", std::vector<std::string>{File(), (home / "m").string()}));
  }
  for (const auto& child : children) {
    EXPECT_EQ(child->Line(), "1");
    EXPECT_EQ(child->Wait(), 0);
  }
}

}  // namespace
}  // namespace test
