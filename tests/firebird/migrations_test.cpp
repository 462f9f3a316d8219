// Bringing a database's structure up to date.
#include "app/firebird/migrations.h"

#include <thread>

#include "app/firebird/sql_script.h"
#include "host/errors.h"
#include "tests/firebird/fresh_database.h"

namespace test {
namespace {

using app::firebird::Database;
using app::firebird::Migrate;
using app::firebird::Migration;
using app::firebird::SchemaVersion;
using app::firebird::SplitScript;

TEST(Script, IsTakenApart) {
  EXPECT_EQ(SplitScript("-- only a comment; nothing\n;;"), std::vector<std::string>());
  EXPECT_EQ(SplitScript("A 'x;y' -- z;\n; /* a;b */ B \"c;d\";\nC"),
            (std::vector<std::string>{"A 'x;y' -- z;", "B \"c;d\"", "C"}));
  EXPECT_EQ(SplitScript("A;\nSET TERM ^ ;\nCREATE TRIGGER X AS BEGIN A = ';^'; B; END^\nset term ; ^\nB;"),
            (std::vector<std::string>{"A", "CREATE TRIGGER X AS BEGIN A = ';^'; B; END", "B"}));
  EXPECT_EQ(SplitScript("SET TERM !! ; A; B!! SET TERM ;!! C;"), (std::vector<std::string>{"A; B", "C"}));
}

class Migrations : public FreshDatabase {
 protected:
  std::vector<Migration> known_ = {{"0001_t.sql", ""}, {"0002_linhas.sql", ""}};

  std::string Failure(std::vector<Migration> migrations) {
    try {
      Migrate(Db(), migrations);
    } catch (const host::DatabaseError& error) {
      return error.what();
    }
    return {};
  }
  std::vector<Migration> With(std::vector<Migration> more) const {
    std::vector<Migration> all = known_;
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }
  std::string Table(const std::string& name) {
    return Get("SELECT COUNT(*) FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = '" + name + "'");
  }
};

TEST_F(Migrations, AreAppliedOnceInOrderAndRecorded) {
  EXPECT_EQ(SchemaVersion(Db()), 2);
  const auto all = With({{"0010_c.sql", "INSERT INTO {N} VALUES ('c');"},
                         {"0003_a.sql", "CREATE TABLE {N} (A VARCHAR(5));"},
                         {"0004_b.sql", "INSERT INTO {N} VALUES ('b');"}});
  Migrate(Db(), all);
  Migrate(Db(), all);
  EXPECT_EQ(SchemaVersion(Db()), 10);
  EXPECT_EQ(Durable("SELECT LIST(A, '') FROM {N}"), "bc");
  EXPECT_EQ(Durable("SELECT NOME FROM TEC_MIGRACAO WHERE NUMERO = 10 AND APLICADA_EM IS NOT NULL"), "0010_c.sql");
}

TEST_F(Migrations, DefineTablesIndexesTriggersAndFunctionsInOne) {
  Migrate(Db(), With({{"0003_x.sql", R"(
-- it's all one
CREATE TABLE {N} (A VARCHAR(5) NOT NULL, Q DOUBLE PRECISION, D DATE);
ALTER TABLE {N} ADD CONSTRAINT PK_N PRIMARY KEY (A);
CREATE DESCENDING INDEX IX_N ON {N} (Q);
SET TERM ^ ;
CREATE FUNCTION DIA (D DATE) RETURNS INTEGER DETERMINISTIC AS BEGIN RETURN EXTRACT(WEEKDAY FROM D); END^
CREATE TRIGGER {N}_BI FOR {N} BEFORE INSERT OR UPDATE AS
BEGIN
  NEW.Q = ROUND(NEW.Q, 6); -- keeps 3.6e-15 away; always
END^
SET TERM ; ^
CREATE INDEX IX_N_DIA ON {N} COMPUTED BY (DIA(D));
)"}}));
  Exec("INSERT INTO {N} VALUES ('a', 0.12345678, '03/10/2026')");
  EXPECT_EQ(Get("SELECT Q FROM {N} WHERE DIA(D) = 2"), "0.123457");
}

TEST_F(Migrations, AFailedOneLeavesNoTraceAndStopsTheRest) {
  const auto all = With({{"0003_a.sql", "CREATE TABLE A1 (A INTEGER);"},
                         {"0004_b.sql", "CREATE TABLE B1 (A INTEGER); CREATE TABLE B2 (A NADA);"},
                         {"0005_c.sql", "CREATE TABLE C1 (A INTEGER);"}});
  EXPECT_TRUE(Failure(all).starts_with("A migração 0004_b.sql falhou: ")) << Failure(all);
  EXPECT_EQ(SchemaVersion(Db()), 3);
  EXPECT_EQ(Table("A1"), "1");
  EXPECT_EQ(Table("B1"), "0");
  EXPECT_EQ(Table("C1"), "0");
  EXPECT_EQ(Failure(With({{"0003_a.sql", ""}, {"0004_b.sql", "CREATE TABLE B1 (A INTEGER);"}})), "");
  EXPECT_EQ(SchemaVersion(Db()), 4);
}

TEST_F(Migrations, OneThatFailsOnlyWhenItIsMadeDurableLeavesNoTrace) {
  Exec("INSERT INTO {T} (NUMERO, COR) VALUES ('C', '01')");
  Db().CommitRetaining();
  EXPECT_NE(Failure(With({{"0003_a.sql", "CREATE TABLE A1 (A INTEGER); CREATE UNIQUE INDEX IX_U ON {T} (COR);"}})), "");
  EXPECT_EQ(SchemaVersion(Db()), 2);
  EXPECT_EQ(Table("A1"), "0");
}

TEST_F(Migrations, ADatabaseOfANewerProgramIsRefused) {
  Migrate(Db(), With({{"0007_a.sql", "CREATE TABLE A1 (A INTEGER);"}}));
  EXPECT_EQ(Failure(known_),
            "O banco de dados é de uma versão mais nova deste programa (estrutura 7, o programa conhece até 2).");
}

TEST_F(Migrations, AFileWithoutNumberIsRefused) {
  EXPECT_EQ(Failure(With({{"nome.sql", ""}})), "A migração \"nome.sql\" não começa por um número.");
}

TEST_F(Migrations, TwoProgramsAtOnceApplyEachOnce) {
  std::vector<Migration> more = {{"0003_n.sql", "CREATE TABLE {N} (A INTEGER);"}};
  for (int i = 4; i < 20; ++i) {
    more.push_back({(i < 10 ? "000" : "00") + std::to_string(i) + "_x.sql", "INSERT INTO {N} VALUES (1);"});
  }
  const auto all = With(more);
  const auto one = OpenAnother();
  const auto two = OpenAnother();
  std::string failure;
  std::thread thread([&] {
    try {
      Migrate(*one, all);
    } catch (const std::exception& error) {
      failure = error.what();
    }
  });
  Migrate(*two, all);
  thread.join();
  EXPECT_EQ(failure, "");
  EXPECT_EQ(Durable("SELECT COUNT(*) FROM {N}"), "16");
  EXPECT_EQ(Durable("SELECT COUNT(*) FROM TEC_MIGRACAO"), "19");
}

}  // namespace
}  // namespace test
