// The server goes away while a station works, and comes back.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "app/firebird/migrations.h"
#include "host/errors.h"
#include "tests/firebird/fresh_database.h"
#include "tests/firebird/private_server.h"

namespace test {
namespace {

using app::firebird::ConnectOptions;
using app::firebird::Database;
using Outcome = app::firebird::Database::Outcome;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr unsigned kLongestTest = 60;  // seconds, after which the test dies and the server with it
constexpr const char* kLost =
    "A conexão com o banco de dados caiu. Nada desta operação foi gravado; o que já estava gravado está a salvo. Tente "
    "de novo quando o servidor voltar.";
constexpr const char* kUnknown =
    "A conexão com o banco de dados caiu enquanto a operação era gravada. Não se sabe se ela foi gravada: confira "
    "antes "
    "de repetir.";

std::string Refusal(const std::function<void()>& act) {
  try {
    act();
  } catch (const host::DatabaseError& error) {
    return error.what();
  }
  return {};
}

class Reconnection : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { server_ = std::make_unique<PrivateServer>(); }
  static void TearDownTestSuite() { server_.reset(); }

  Reconnection() {
    alarm(kLongestTest);
    static int number = 0;
    name_ = "volta" + std::to_string(++number) + ".fdb";
    database_ = Database::Create(server_->Options(name_));
    Migrate(*database_, {{"0001_t.sql",
                          "CREATE TABLE {T} (NUMERO VARCHAR(6) NOT NULL PRIMARY KEY, NOME VARCHAR(40), "
                          "OBS BLOB SUB_TYPE TEXT CHARACTER SET WIN1252);\n" +
                              SchemaText("0011_locks.sql")},
                         {"0002_linhas.sql", SchemaText("0012_lock_rows.sql")}});
    Add("A");
    Db().MakeDurable();
  }
  ~Reconnection() override {
    database_.reset();
    alarm(0);
  }

  static PrivateServer& TheServer() { return *server_; }
  Database& Db() { return *database_; }
  void Leave() { database_.reset(); }
  ConnectOptions Options(const std::string& user = "ADMIN", const std::string& password = "demo") const {
    return server_->Options(name_, user, password);
  }
  static void PowerCut() {
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
  std::string DurableNumbers() { return Get(*Database::Open(Options()), "SELECT LIST(NUMERO, '') FROM {T}"); }
  /// Somebody ends all connections of the station; the server stays.
  void CutConnections() {
    const auto other = Database::Open(Options("SYSDBA", "chave"));
    other->Execute("DELETE FROM MON$ATTACHMENTS WHERE MON$ATTACHMENT_ID <> CURRENT_CONNECTION AND MON$USER = 'ADMIN'",
                   {});
    other->MakeDurable();
  }

 private:
  static std::unique_ptr<PrivateServer> server_;

  std::string name_;
  std::unique_ptr<Database> database_;
};

std::unique_ptr<PrivateServer> Reconnection::server_;

TEST_F(Reconnection, TheNextActionAfterTheOneThatFailedGoesOn) {
  Db().BeginAction();
  Add("1");
  PowerCut();
  EXPECT_TRUE(Db().Connected());  // nobody has noticed yet
  EXPECT_EQ(Refusal([&] { Add("2"); }), kLost);
  EXPECT_FALSE(Db().Connected());
  Db().EndAction(Outcome::kFailed);

  Db().BeginAction();
  EXPECT_EQ(Numbers(), "A");
  EXPECT_TRUE(Db().Connected());
  Add("3");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "A3");
}

TEST_F(Reconnection, OutsideAnActionTheNextStatementGoesOn) {
  Numbers();
  PowerCut();
  EXPECT_EQ(Refusal([&] { Numbers(); }), kLost);
  EXPECT_EQ(Numbers(), "A");
  Add("1");
  Db().CommitRetaining();
  EXPECT_EQ(DurableNumbers(), "A1");
}

TEST_F(Reconnection, AnActionThatLostWorkGetsNowhereAnyMore) {
  Db().BeginAction();
  Add("1");
  Db().SetSavepoint("ROLO");
  PowerCut();
  EXPECT_EQ(Refusal([&] { Add("2"); }), kLost);
  // The server is back, but half an action must not be stored.
  EXPECT_EQ(Refusal([&] { Add("3"); }), kLost);
  EXPECT_EQ(Refusal([&] { Numbers(); }), kLost);
  EXPECT_EQ(Refusal([&] { Db().RollbackTo("ROLO"); }), kLost);
  EXPECT_EQ(Refusal([&] { Db().SetSavepoint("OUTRO"); }), kLost);
  EXPECT_EQ(Refusal([&] { Db().LockRow("T", "NUMERO", "A"); }), kLost);
  EXPECT_EQ(Refusal([&] { Db().MakeDurable(); }), kLost);
  EXPECT_EQ(Refusal([&] { Db().EndAction(Outcome::kOk); }), kLost);
  EXPECT_EQ(DurableNumbers(), "A");
  EXPECT_EQ(Numbers(), "A");
}

TEST_F(Reconnection, WorkThatWasDurableBeforeTheLossStays) {
  Db().BeginAction();
  Add("1");
  Db().MakeDurable();
  PowerCut();
  EXPECT_EQ(Refusal([&] { Add("2"); }), kLost);
  EXPECT_EQ(Refusal([&] { Db().EndAction(Outcome::kOk); }), "");  // the statement told it, and no other work is lost
  EXPECT_EQ(Numbers(), "A1");
}

TEST_F(Reconnection, AnAbortedActionThatLostWhatItAskedForSaysSo) {
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  PowerCut();
  EXPECT_EQ(Refusal([&] { Numbers(); }), kLost);
  EXPECT_EQ(Refusal([&] { Db().EndAction(Outcome::kAborted); }), kLost);
  EXPECT_EQ(Numbers(), "A");
}

TEST_F(Reconnection, ALossAtTheActionsEndIsToldAsUnknown) {
  Db().BeginAction();
  Add("1");
  PowerCut();
  EXPECT_EQ(Refusal([&] { Db().EndAction(Outcome::kOk); }), kUnknown);
  EXPECT_FALSE(Db().Connected());
  EXPECT_EQ(Numbers(), "A");
}

TEST_F(Reconnection, ALossInTheMiddleOfTheCommitIsToldAsUnknown) {
  Db().BeginAction();
  Add("1");
  std::thread death;
  Db().BeforeStatement = [&](std::string_view sql) {
    if (sql != "COMMIT") return;
    TheServer().Pause();
    death = std::thread([] {
      std::this_thread::sleep_for(milliseconds(300));
      TheServer().Kill();
    });
  };
  EXPECT_EQ(Refusal([&] { Db().MakeDurable(); }), kUnknown);
  Db().BeforeStatement = nullptr;
  death.join();
  EXPECT_EQ(Refusal([&] { Add("2"); }), kUnknown);
  EXPECT_EQ(Refusal([&] { Db().EndAction(Outcome::kOk); }), kUnknown);
  TheServer().Start();
  EXPECT_EQ(Numbers(), "A");
}

TEST_F(Reconnection, ALossInTheMiddleOfAStatementFailsTheAction) {
  Db().BeginAction();
  Add("1");
  std::thread death([] {
    std::this_thread::sleep_for(milliseconds(300));
    TheServer().Kill();
  });
  EXPECT_EQ(Refusal([&] {
              Exec(Db(), "EXECUTE BLOCK AS DECLARE I INTEGER = 0; BEGIN WHILE (I < 2000000000) DO I = I + 1; END");
            }),
            kLost);
  death.join();
  Db().EndAction(Outcome::kFailed);
  TheServer().Start();
  Db().BeginAction();
  Add("2");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "A2");
}

TEST_F(Reconnection, WhileTheServerIsDownItIsSaidAtOnceEveryTime) {
  TheServer().Kill();
  EXPECT_EQ(Refusal([&] { Numbers(); }), kLost);
  const std::string down = "O servidor do banco de dados \"" + Options().database + "\" não responde.";
  const auto begin = Clock::now();
  for (int time = 0; time < 3; ++time) {
    Db().BeginAction();
    EXPECT_EQ(Refusal([&] { Numbers(); }), down);
    EXPECT_EQ(Refusal([&] { Add("1"); }), down);
    Db().EndAction(Outcome::kFailed);
    EXPECT_EQ(Refusal([&] { Numbers(); }), down);
    EXPECT_FALSE(Db().Connected());
  }
  EXPECT_LT(Clock::now() - begin, seconds(2));
  TheServer().Start();
  EXPECT_EQ(Numbers(), "A");
  EXPECT_TRUE(Db().Connected());
}

TEST_F(Reconnection, AServerThatHangsIsWaitedForOnceInAnAction) {
  PowerCut();
  EXPECT_EQ(Refusal([&] { Numbers(); }), kLost);
  TheServer().Pause();
  Db().BeginAction();
  const auto begin = Clock::now();
  const std::string down = "O servidor do banco de dados \"" + Options().database + "\" não responde.";
  EXPECT_EQ(Refusal([&] { Numbers(); }), down);
  EXPECT_EQ(Refusal([&] { Numbers(); }), down);
  EXPECT_EQ(Refusal([&] { Add("1"); }), down);
  EXPECT_LT(Clock::now() - begin, seconds(8));
  Db().EndAction(Outcome::kFailed);
  TheServer().Continue();
  EXPECT_EQ(Numbers(), "A");
}

// Whoever asks for a connection hears nothing at all, as from a computer that is switched off.
class Silence {
 public:
  explicit Silence(int port) : ear_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto* place = reinterpret_cast<const sockaddr*>(&address);
    const int at_once = 1;
    setsockopt(ear_, SOL_SOCKET, SO_REUSEADDR, &at_once, sizeof(at_once));
    taken_ = bind(ear_, place, sizeof(address)) == 0 && listen(ear_, 0) == 0;
    // Nobody takes these calls; with the queue full the computer drops what else comes.
    for (int& call : calls_) {
      call = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
      connect(call, place, sizeof(address));
    }
    std::this_thread::sleep_for(milliseconds(50));
  }
  ~Silence() {
    for (const int call : calls_) close(call);
    close(ear_);
  }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;
  bool Taken() const { return taken_; }

 private:
  int ear_;
  bool taken_ = false;
  std::array<int, 4> calls_{};
};

TEST_F(Reconnection, AComputerThatSaysNothingIsWaitedForOnceInAnAction) {
  TheServer().Kill();
  EXPECT_EQ(Refusal([&] { Numbers(); }), kLost);
  {
    const std::string database = Options().database;
    const std::size_t slash = database.find('/');
    const Silence silence(std::stoi(database.substr(slash + 1, database.find(':') - slash - 1)));
    ASSERT_TRUE(silence.Taken());
    Db().BeginAction();
    const auto begin = Clock::now();
    const std::string down = "O servidor do banco de dados \"" + database + "\" não responde.";
    EXPECT_EQ(Refusal([&] { Numbers(); }), down);
    EXPECT_EQ(Refusal([&] { Add("1"); }), down);
    EXPECT_GT(Clock::now() - begin, seconds(1));
    EXPECT_LT(Clock::now() - begin, seconds(8));
    Db().EndAction(Outcome::kFailed);
  }
  TheServer().Start();
  EXPECT_EQ(Numbers(), "A");
}

TEST_F(Reconnection, AModalScreenGoesOnInsideTheActionThatOpenedIt) {
  Db().BeginAction();
  Add("1");
  Db().MakeDurable();  // the program waits for the person at the modal screen
  Db().BeginAction();
  PowerCut();
  EXPECT_EQ(Refusal([&] { Add("2"); }), kLost);
  Db().EndAction(Outcome::kFailed);
  Db().BeginAction();
  Add("3");
  Db().EndAction(Outcome::kOk);
  Add("4");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "A134");
}

TEST_F(Reconnection, ConnectionsThatTheAdministratorEndsComeBack) {
  const std::string count = "SELECT COUNT(*) FROM MON$ATTACHMENTS WHERE MON$USER = 'ADMIN' AND MON$SYSTEM_FLAG = 0";
  for (int time = 0; time < 5; ++time) {
    Db().BeginAction();
    Exec(Db(), "UPDATE {T} SET NOME = 'vez " + std::to_string(time) + "', OBS = 'longa' WHERE NUMERO = 'A'");
    EXPECT_EQ(Get(Db(), "SELECT OBS FROM {T} WHERE NUMERO = 'A'"), "longa");
    CutConnections();
    EXPECT_EQ(Refusal([&] { Add("1"); }), kLost);
    Db().EndAction(Outcome::kFailed);
    EXPECT_EQ(Get(Db(), "SELECT NOME FROM {T} WHERE NUMERO = 'A'"), "");
    EXPECT_EQ(Get(Db(), count), "1");
  }
}

TEST_F(Reconnection, AQueryThatWasReadBeforeStillShowsItsRows) {
  const auto query = Db().Query("SELECT NUMERO FROM {T}", {});
  const auto again = Db().NewQuery();
  again->SQL.Add(Db().ReplaceNames("SELECT NUMERO FROM {T} WHERE NUMERO = 'A'"));
  again->Open();
  PowerCut();
  EXPECT_EQ(Refusal([&] { again->Open(); }), kLost);
  EXPECT_EQ(query->FieldByName("NUMERO").AsText(), "A");
  again->Open();
  EXPECT_EQ(again->FieldByName("NUMERO").AsText(), "A");
}

TEST_F(Reconnection, AUserWorksWithTheRoleAgain) {
  app::firebird::ConnectOptions options = Options("MARIA", "maria");
  Exec(Db(), "GRANT TECELAGEM TO MARIA");
  Db().MakeDurable();
  const auto maria = Database::Open(options);
  EXPECT_EQ(Get(*maria, "SELECT NUMERO FROM {T}"), "A");
  PowerCut();
  EXPECT_EQ(Refusal([&] { Get(*maria, "SELECT NUMERO FROM {T}"); }), kLost);
  EXPECT_EQ(Get(*maria, "SELECT NUMERO FROM {T}"), "A");
  EXPECT_EQ(Get(*maria, "SELECT CURRENT_ROLE FROM RDB$DATABASE"), "TECELAGEM");
}

TEST_F(Reconnection, TwoStationsTakeTurnsAgain) {
  PowerCut();
  EXPECT_EQ(Refusal([&] { Numbers(); }), kLost);
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
}

TEST_F(Reconnection, AProgramThatEndsWithoutItsServerEndsQuietly) {
  Db().BeginAction();
  Add("1");
  TheServer().Kill();
  const auto begin = Clock::now();
  Leave();
  EXPECT_LT(Clock::now() - begin, seconds(2));
  TheServer().Start();
  EXPECT_EQ(DurableNumbers(), "A");
}

}  // namespace
}  // namespace test
