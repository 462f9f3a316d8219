// What becomes durable when, and what is undone.
#include "host/errors.h"
#include "tests/firebird/fresh_database.h"

namespace test {
namespace {

using app::firebird::Database;
using Outcome = app::firebird::Database::Outcome;

class Durability : public FreshDatabase {
 protected:
  void Set(int value) { Exec("UPDATE {T} SET CURTO = " + std::to_string(value) + " WHERE NUMERO = 'A'"); }
  void Add(const std::string& number) { Exec("INSERT INTO {T} (NUMERO) VALUES ('" + number + "')"); }
  std::string Numbers() { return Get("SELECT LIST(NUMERO, '') FROM {T}"); }
  std::string DurableNumbers() { return Durable("SELECT LIST(NUMERO, '') FROM {T}"); }
  std::uint64_t Commits() { return Db().Stats().commits; }
  void FailAt(const std::string& beginning) {
    Db().BeforeStatement = [beginning](std::string_view sql) {
      if (sql.starts_with(beginning)) throw host::DatabaseError("falha provocada", 0, std::string(sql));
    };
  }
  void StopFailing() { Db().BeforeStatement = nullptr; }
};

TEST_F(Durability, RequestsInOneActionAreMerged) {
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  Add("2");
  Db().CommitRetaining();
  EXPECT_EQ(DurableNumbers(), "AB");
  EXPECT_EQ(Commits(), 0u);
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB12");
  EXPECT_EQ(Commits(), 1u);
}

TEST_F(Durability, AnActionThatEndsWellLeavesNothingPending) {
  Db().BeginAction();
  Add("1");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB1");
}

TEST_F(Durability, OutsideAnActionARequestIsCarriedOutAtOnce) {
  Add("1");
  EXPECT_EQ(DurableNumbers(), "AB");
  Db().CommitRetaining();
  EXPECT_EQ(DurableNumbers(), "AB1");
}

TEST_F(Durability, AnAbortKeepsWhatWasAskedFor) {
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  EXPECT_EQ(Numbers(), "AB1");
  Add("2");
  Add("3");
  Db().EndAction(Outcome::kAborted);
  EXPECT_EQ(DurableNumbers(), "AB1");
  EXPECT_EQ(Numbers(), "AB1");
}

TEST_F(Durability, AnAbortAfterSeveralRequestsGoesBackToTheLast) {
  Db().BeginAction();
  for (const std::string number : {"1", "2", "3"}) {
    Add(number);
    Db().CommitRetaining();
  }
  Add("4");
  Db().EndAction(Outcome::kAborted);
  EXPECT_EQ(DurableNumbers(), "AB123");
}

TEST_F(Durability, AnAbortWithoutRequestUndoesAll) {
  Db().BeginAction();
  Db().CommitRetaining();  // nothing to keep yet
  Add("1");
  Db().EndAction(Outcome::kAborted);
  EXPECT_EQ(DurableNumbers(), "AB");
  EXPECT_EQ(Commits(), 0u);
}

TEST_F(Durability, AFailureUndoesToTheLastDurablePoint) {
  Db().BeginAction();
  Add("1");
  Db().MakeDurable();
  Add("2");
  Db().CommitRetaining();
  Add("3");
  Db().EndAction(Outcome::kFailed);
  EXPECT_EQ(DurableNumbers(), "AB1");
}

TEST_F(Durability, AnInnerActionBelongsToTheOuter) {
  Db().BeginAction();
  Add("1");
  Db().BeginAction();
  Add("2");
  Db().CommitRetaining();
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB");
  Add("3");
  Db().EndAction(Outcome::kAborted);
  EXPECT_EQ(DurableNumbers(), "AB12");
}

TEST_F(Durability, AnActionThatOnlyReadsCostsNoCommit) {
  Get("SELECT COUNT(*) FROM {T}");
  const auto before = Db().Stats();
  for (int i = 0; i < 10; ++i) {
    Db().BeginAction();
    Get("SELECT COUNT(*) FROM {T}");
    Db().SetSavepoint("ANTES");
    Db().CommitRetaining();
    Db().MakeDurable();
    Db().EndAction(Outcome::kOk);
  }
  EXPECT_EQ(Db().Stats().commits, before.commits);
  EXPECT_EQ(Db().Stats().round_trips, before.round_trips + 10);
}

TEST_F(Durability, AFailedStatementKeepsEarlierWork) {
  Db().BeginAction();
  Add("1");
  EXPECT_NE(Refusal("INSERT INTO {T} (NUMERO) VALUES ('A')"), "");
  Add("2");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB12");
}

TEST_F(Durability, ClosingUndoesWhatIsPending) {
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  Close();
  EXPECT_EQ(DurableNumbers(), "AB");
}

TEST_F(Durability, ARefusedCommitUndoesAll) {
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  FailAt("COMMIT");
  EXPECT_THROW(Db().EndAction(Outcome::kOk), host::DatabaseError);
  StopFailing();
  EXPECT_EQ(Numbers(), "AB");
  EXPECT_EQ(DurableNumbers(), "AB");
  Db().BeginAction();
  Add("2");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB2");
}

TEST_F(Durability, ARefusedUndoingOfAnAbortUndoesAll) {
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  Add("2");
  FailAt("ROLLBACK TO");
  EXPECT_THROW(Db().EndAction(Outcome::kAborted), host::DatabaseError);
  StopFailing();
  EXPECT_EQ(DurableNumbers(), "AB");
}

TEST_F(Durability, ARefusedStatementIsNotSent) {
  Db().BeginAction();
  FailAt("INSERT");
  EXPECT_EQ(Refusal("INSERT INTO {T} (NUMERO) VALUES ('1')"), "falha provocada");
  StopFailing();
  Add("2");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB2");
}

TEST_F(Durability, EveryStatementIsTold) {
  std::vector<std::string> told;
  Db().BeforeStatement = [&](std::string_view sql) { told.emplace_back(sql); };
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  Db().SetSavepoint("ANTES");
  Add("2");
  Db().RollbackTo("ANTES");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(told, (std::vector<std::string>{"INSERT INTO T_001 (NUMERO) VALUES ('1')", "SAVEPOINT ANTES",
                                            "INSERT INTO T_001 (NUMERO) VALUES ('2')", "SAVEPOINT TEC_MARCA_2",
                                            "ROLLBACK TO ANTES", "COMMIT"}));
}

// --- savepoints -----------------------------------------------------------------------------------------------------

TEST_F(Durability, GoingBackToASavepointUndoesWhatCameAfter) {
  Db().BeginAction();
  Add("1");
  Db().SetSavepoint("ANTES");
  Add("2");
  Db().RollbackTo("ANTES");
  EXPECT_EQ(Numbers(), "AB1");
  Add("3");
  Db().RollbackTo("ANTES");  // the mark stays
  Add("4");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB14");
}

TEST_F(Durability, ASavepointAtTheBeginning) {
  Db().BeginAction();
  Db().SetSavepoint("ANTES");
  Add("1");
  Db().RollbackTo("ANTES");
  EXPECT_EQ(Numbers(), "AB");
  Add("2");
  Db().RollbackTo("ANTES");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB");
  EXPECT_EQ(Commits(), 0u);
}

TEST_F(Durability, ASecondMarkOfTheSameNameReplacesTheFirst) {
  Db().BeginAction();
  Add("1");
  Db().SetSavepoint("P");
  Add("2");
  Db().SetSavepoint("P");
  Add("3");
  Db().RollbackTo("P");
  EXPECT_EQ(Numbers(), "AB12");
  Db().EndAction(Outcome::kOk);
}

TEST_F(Durability, NestedSavepoints) {
  Db().BeginAction();
  Add("1");
  Db().SetSavepoint("FORA");
  Add("2");
  Db().SetSavepoint("DENTRO");
  Add("3");
  Db().RollbackTo("DENTRO");
  EXPECT_EQ(Numbers(), "AB12");
  Db().RollbackTo("FORA");
  EXPECT_EQ(Numbers(), "AB1");
  EXPECT_THROW(Db().RollbackTo("DENTRO"), host::DatabaseError);
  EXPECT_THROW(Db().RollbackTo("NUNCA"), host::DatabaseError);
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB1");
}

TEST_F(Durability, GoingBackTakesRequestsBack) {
  Db().BeginAction();
  Add("1");
  Db().SetSavepoint("P");
  Add("2");
  Db().CommitRetaining();
  Db().RollbackTo("P");
  Add("3");
  Db().EndAction(Outcome::kAborted);
  EXPECT_EQ(DurableNumbers(), "AB");  // nothing is asked for any more
}

TEST_F(Durability, GoingBackRestoresAnEarlierRequest) {
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  Add("2");
  Db().SetSavepoint("P");
  Add("3");
  Db().CommitRetaining();
  Add("4");
  Db().RollbackTo("P");
  EXPECT_EQ(Numbers(), "AB12");
  Add("5");
  Db().EndAction(Outcome::kAborted);
  EXPECT_EQ(DurableNumbers(), "AB1");
}

TEST_F(Durability, AMarkSetWithTheRequestStillHoldsAfterGoingBack) {
  Db().BeginAction();
  Add("1");
  Db().CommitRetaining();
  Db().SetSavepoint("P");
  Add("2");
  Db().CommitRetaining();
  Db().RollbackTo("P");
  Add("3");
  Db().EndAction(Outcome::kAborted);
  EXPECT_EQ(DurableNumbers(), "AB1");
}

TEST_F(Durability, AfterADurablePointASavepointGoesBackToThatPoint) {
  Db().BeginAction();
  Add("1");
  Db().SetSavepoint("P");
  Add("2");
  Db().MakeDurable();
  Add("3");
  Db().RollbackTo("P");
  EXPECT_EQ(Numbers(), "AB12");
  Add("4");
  Db().RollbackTo("P");
  Add("5");
  Db().EndAction(Outcome::kOk);
  EXPECT_EQ(DurableNumbers(), "AB125");
}

TEST_F(Durability, ManyRequestsInOneAction) {
  Db().BeginAction();
  for (int i = 0; i < 300; ++i) {
    Set(i);
    Db().CommitRetaining();
  }
  Set(1000);
  Db().EndAction(Outcome::kAborted);
  EXPECT_EQ(Durable("SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "299");
}

TEST_F(Durability, OldTransactionsDoNotPileUp) {
  for (int i = 0; i < 1000; ++i) {
    Db().BeginAction();
    Get("SELECT COUNT(*) FROM {T}");
    Set(i);
    Db().CommitRetaining();
    Db().EndAction(Outcome::kOk);
  }
  EXPECT_EQ(Commits(), 1000u);
  const auto another = OpenAnother();
  const std::string gap = Get(*another, "SELECT MON$NEXT_TRANSACTION - MON$OLDEST_SNAPSHOT FROM MON$DATABASE");
  EXPECT_LT(std::stoi(gap), 10) << gap;
  const std::string active = Get(*another, "SELECT MON$NEXT_TRANSACTION - MON$OLDEST_ACTIVE FROM MON$DATABASE");
  EXPECT_LT(std::stoi(active), 10) << active;
}

}  // namespace
}  // namespace test
