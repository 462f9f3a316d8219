// The same database behind a server: every promise holds over the wire too.
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <thread>

#include "app/firebird/migrations.h"
#include "host/errors.h"
#include "tests/firebird/fresh_database.h"
#include "tests/firebird/private_server.h"

namespace test {
namespace {

using app::firebird::ConnectOptions;
using app::firebird::Database;
using app::firebird::Migrate;
using Outcome = app::firebird::Database::Outcome;

constexpr unsigned kLongestTest = 60;  // seconds, after which the test dies and the server with it
constexpr const char* kLost =
    "A conexão com o banco de dados caiu. Nada desta operação foi gravado; o que já estava gravado está a salvo. Tente "
    "de novo quando o servidor voltar.";

std::vector<app::firebird::Migration> Migrations() {
  return {
      {"0001_t.sql", "CREATE TABLE {T} (NUMERO VARCHAR(6) NOT NULL PRIMARY KEY, NOME VARCHAR(40) COLLATE WIN_PTBR);\n" +
                         SchemaText("0011_locks.sql")},
      {"0002_f.sql",
       "SET TERM ^ ;\nCREATE FUNCTION DOBRO (N INTEGER) RETURNS INTEGER AS BEGIN RETURN N * 2; END^\nSET TERM ; ^"},
      {"0003_linhas.sql", "INSERT INTO {T} VALUES ('A', 'Ação'); INSERT INTO {T} VALUES ('B', NULL);\n" +
                              SchemaText("0012_lock_rows.sql")}};
}

std::string Refusal(const std::function<void()>& act) {
  try {
    act();
  } catch (const host::DatabaseError& error) {
    return error.what();
  }
  return {};
}

std::string RefusalOfOpen(const ConnectOptions& options) {
  return Refusal([&] { Database::Open(options); });
}

class Server : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { server_ = std::make_unique<PrivateServer>(); }
  static void TearDownTestSuite() { server_.reset(); }

  Server() {
    alarm(kLongestTest);
    static int number = 0;
    name_ = "fiacao" + std::to_string(++number) + ".fdb";
    database_ = Database::Create(server_->Options(name_));
    Migrate(*database_, Migrations());
  }
  ~Server() override {
    database_.reset();
    alarm(0);
  }

  static PrivateServer& TheServer() { return *server_; }
  ConnectOptions Options(const std::string& user = "ADMIN", const std::string& password = "demo") const {
    return server_->Options(name_, user, password);
  }
  Database& Db() { return *database_; }
  std::unique_ptr<Database> Another() const { return Database::Open(Options()); }
  void Leave() { database_.reset(); }
  void PowerCut() {
    server_->Kill();
    server_->Start();
  }

  static void Exec(Database& database, const std::string& sql) {
    const auto query = database.NewQuery();
    query->SQL.Add(database.ReplaceNames(sql));
    query->ExecSQL();
  }
  static std::string Get(Database& database, const std::string& sql) {
    const auto query = database.NewQuery();
    query->SQL.Add(database.ReplaceNames(sql));
    query->Open();
    return query->IsEmpty() ? "no row" : query->FieldByName(query->FieldName(0)).AsText();
  }
  void Add(const std::string& number) { Exec(Db(), "INSERT INTO {T} (NUMERO) VALUES ('" + number + "')"); }
  std::string Numbers() { return Get(Db(), "SELECT LIST(NUMERO, '') FROM {T}"); }
  std::string DurableNumbers() { return Get(*Another(), "SELECT LIST(NUMERO, '') FROM {T}"); }

 private:
  static std::unique_ptr<PrivateServer> server_;

  std::string name_;
  std::unique_ptr<Database> database_;
};

std::unique_ptr<PrivateServer> Server::server_;

TEST_F(Server, MakesTheDatabaseAsTheHouseWantsIt) {
  const auto row = Db().Query(
      "SELECT MON$PAGE_SIZE P, MON$FORCED_WRITES F, RDB$CHARACTER_SET_NAME C, MON$OWNER O FROM MON$DATABASE, "
      "RDB$DATABASE",
      {});
  EXPECT_EQ(row->FieldByName("P").AsInteger(), 8192);
  EXPECT_EQ(row->FieldByName("F").AsInteger(), 1);
  EXPECT_EQ(row->FieldByName("C").AsText(), "WIN1252");
  EXPECT_EQ(row->FieldByName("O").AsText(), "ADMIN");
  EXPECT_EQ(app::firebird::SchemaVersion(Db()), 3);
  Migrate(*Another(), Migrations());
}

TEST_F(Server, AnswersInTheProgramsCharacters) {
  EXPECT_EQ(Get(Db(), "SELECT NOME FROM {T} WHERE NUMERO = 'A'"), "Ação");
  EXPECT_EQ(Get(Db(), "SELECT NUMERO FROM {T} WHERE NOME = 'acao'"), "A");
  EXPECT_EQ(Get(Db(), "SELECT UPPER(NOME) FROM {T} WHERE NUMERO = 'A'"), "AÇÃO");
  EXPECT_EQ(Refusal([&] { Add("A"); }), "Já existe um registro com estes dados.");
}

TEST_F(Server, RequestsInOneActionAreMerged) {
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  Add("2");
  EXPECT_EQ(DurableNumbers(), "AB");
  const auto before = Db().Stats().commits;
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(Db().Stats().commits, before + 1);
  EXPECT_EQ(DurableNumbers(), "AB12");
}

TEST_F(Server, AnAbortKeepsWhatWasAskedForAndAFailureNothing) {
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  Add("2");
  Db().EndAction(Outcome::kAborted);
  EXPECT_EQ(DurableNumbers(), "AB1");

  Db().BeginAction();
  Add("3");
  Db().CommitRetaining();
  Db().EndAction(Outcome::kFailed);
  EXPECT_EQ(DurableNumbers(), "AB1");
}

TEST_F(Server, ASavepointBringsBackWhatWasThere) {
  Db().BeginAction();
  Add("1");
  Db().SetSavepoint("ROLO");
  Add("2");
  Db().RollbackTo("ROLO");
  EXPECT_EQ(Numbers(), "AB1");
  Add("3");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB13");
}

TEST_F(Server, TwoStationsTakeTurnsAtARow) {
  Db().BeginAction();
  Db().LockRow("T", "NUMERO", "A");
  Exec(Db(), "UPDATE {T} SET NOME = 'primeira' WHERE NUMERO = 'A'");

  std::atomic<bool> ended = false;
  bool waited = false;
  auto second = std::async(std::launch::async, [&] {
    const auto other = Another();
    other->BeginAction();
    other->LockRow("T", "NUMERO", "A");
    waited = ended;
    std::string seen = Get(*other, "SELECT NOME FROM {T} WHERE NUMERO = 'A'");
    other->EndAction(Outcome::kOk);
    return seen;
  });
  EXPECT_EQ(second.wait_for(std::chrono::milliseconds(500)), std::future_status::timeout);
  ended = true;
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(second.get(), "primeira");
  EXPECT_TRUE(waited);
}

TEST_F(Server, AStationWaitsForARowNoLongerThanItsTime) {
  Db().BeginAction();
  Db().LockRow("T", "NUMERO", "A");
  ConnectOptions hasty = Options();
  hasty.lock_timeout_seconds = 1;
  const auto other = Database::Open(hasty);
  other->BeginAction();
  EXPECT_EQ(Refusal([&] { other->LockRow("T", "NUMERO", "A"); }),
            "Outra estação está usando estes dados. Tente novamente.");
  other->EndAction(Outcome::kFailed);
  Db().EndAction(Outcome::kOk);
  other->LockRow("T", "NUMERO", "A");
}

TEST_F(Server, RefusesInOneSentence) {
  EXPECT_EQ(RefusalOfOpen(Options("ADMIN", "errada")), "Usuário ou senha do banco de dados inválidos.");
  EXPECT_EQ(RefusalOfOpen(Options("NINGUEM", "demo")), "Usuário ou senha do banco de dados inválidos.");
  EXPECT_EQ(RefusalOfOpen(TheServer().Options("nada.fdb")),
            "O banco de dados \"" + TheServer().Database("nada.fdb") + "\" não existe ou não pode ser aberto.");
  EXPECT_EQ(Refusal([&] { Database::Create(TheServer().Options("novo.fdb", "MARIA", "maria")); }),
            "O usuário não tem permissão para criar bancos de dados no servidor.");
  EXPECT_EQ(Numbers(), "AB");
}

TEST_F(Server, WhatIsThereIsNotCreatedAgain) {
  const std::string sentence = "O banco de dados \"" + Options().database +
                               "\" não pôde ser criado: ele já existe, ou a pasta não existe ou não permite gravação.";
  EXPECT_EQ(Refusal([&] { Database::Create(Options()); }), sentence);  // while a station works on it
  Leave();
  EXPECT_EQ(Refusal([&] { Database::Create(Options()); }), sentence);
  EXPECT_EQ(DurableNumbers(), "AB");
}

TEST_F(Server, AUserWorksWithTheRoleAndNotWithoutIt) {
  const std::string no_right = "O usuário do banco de dados não tem permissão para esta operação.";
  EXPECT_EQ(Refusal([&] { Get(*Database::Open(Options("MARIA", "maria")), "SELECT COUNT(*) FROM {T}"); }), no_right);

  Exec(Db(), "GRANT TECELAGEM TO MARIA");
  Db().MakeDurable();
  const auto maria = Database::Open(Options("MARIA", "maria"));
  Migrate(*maria, Migrations());
  Exec(*maria, "INSERT INTO {T} (NUMERO) VALUES ('M')");
  maria->MakeDurable();
  EXPECT_EQ(DurableNumbers(), "ABM");
  EXPECT_EQ(Get(*maria, "SELECT DOBRO(21) AS D FROM RDB$DATABASE"), "42");
  EXPECT_EQ(Refusal([&] { Exec(*maria, "DROP TABLE {T}"); }), no_right);
}

TEST_F(Server, ATableOfALaterMigrationBelongsToTheRoleToo) {
  Exec(Db(), "GRANT TECELAGEM TO MARIA");
  Db().MakeDurable();
  auto more = Migrations();
  more.push_back({"0004_n.sql", "CREATE TABLE {N} (A VARCHAR(5));"});
  Migrate(Db(), more);
  const auto maria = Database::Open(Options("MARIA", "maria"));
  Exec(*maria, "INSERT INTO {N} VALUES ('x')");
  EXPECT_EQ(Get(*maria, "SELECT A FROM {N}"), "x");
}

TEST_F(Server, ThatDiesInAnActionLeavesNothingOfIt) {
  Db().BeginAction();
  Add("1");
  Db().MakeDurable();
  Add("2");
  Db().CommitRetaining();
  Db().SetSavepoint("ROLO");
  Add("3");
  PowerCut();
  EXPECT_EQ(Refusal([&] { Add("4"); }), kLost);
  EXPECT_EQ(Refusal([&] { Db().RollbackTo("ROLO"); }), kLost);
  EXPECT_EQ(Refusal([&] { Db().EndAction(Outcome::kOk); }), kLost);
  EXPECT_EQ(DurableNumbers(), "AB1");
}

TEST_F(Server, ThatIsGoneDoesNotAnswer) {
  TheServer().Kill();
  const std::string told = RefusalOfOpen(Options());
  TheServer().Start();
  EXPECT_EQ(told, "O servidor do banco de dados \"" + Options().database + "\" não responde.");
}

TEST_F(Server, ThatHangsIsNotWaitedForLong) {
  TheServer().Pause();
  const auto begin = std::chrono::steady_clock::now();
  const std::string told = RefusalOfOpen(Options());
  const auto took = std::chrono::steady_clock::now() - begin;
  TheServer().Continue();
  EXPECT_EQ(told, "O servidor do banco de dados \"" + Options().database + "\" não responde.");
  EXPECT_LT(took, std::chrono::seconds(30));
  EXPECT_EQ(Numbers(), "AB");
}

}  // namespace
}  // namespace test
