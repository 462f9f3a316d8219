// Filling a file without its waiting for the disk at every commit.
#include "app/mill/fill.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "host/errors.h"
#include "mill/own_database.h"

namespace {

using app::firebird::Database;
using app::mill::FillAtOnce;
using app::mill::FillStart;
using test::OwnDatabase;

std::int64_t ForcedWrites(Database& database) {
  return database.Query("SELECT MON$FORCED_WRITES AS F FROM MON$DATABASE", {})->FieldByName("F").AsInteger();
}

TEST(Fill, ANewFileWaitsForTheDiskAfterwards) {
  OwnDatabase own(OwnDatabase::Start::kNoFile);
  own.Adopt(FillAtOnce(own.Options(), FillStart::kNewFile, [](Database& database) {
    EXPECT_EQ(ForcedWrites(database), 0);
    database.Execute("CREATE TABLE T (N INTEGER)", {});
    database.CommitRetaining();
    database.Execute("INSERT INTO T (N) VALUES (7)", {});
    database.CommitRetaining();
  }));
  EXPECT_EQ(ForcedWrites(own.Db()), 1);
  EXPECT_EQ(own.Scalar("SELECT N FROM T").AsInteger(), 7);
}

TEST(Fill, ANewFileThatCannotBeFilledIsRemoved) {
  OwnDatabase own(OwnDatabase::Start::kNoFile);
  EXPECT_THROW(FillAtOnce(own.Options(), FillStart::kNewFile,
                          [](Database& database) { database.Execute("INSERT INTO NADA (N) VALUES (1)", {}); }),
               host::DatabaseError);
  EXPECT_FALSE(std::filesystem::exists(own.Path()));
}

TEST(Fill, AnExistingFileKeepsWhatWasDurable) {
  OwnDatabase own;
  EXPECT_THROW(FillAtOnce(own.Options(), FillStart::kExistingFile,
                          [](Database& database) {
                            database.Execute("INSERT INTO {CADCOR} (COR) VALUES ('001')", {});
                            database.CommitRetaining();
                            database.Execute("INSERT INTO {CADCOR} (COR) VALUES ('002')", {});
                            throw host::InputError("basta");
                          }),
               host::InputError);
  EXPECT_EQ(own.Column("SELECT COR FROM {CADCOR}"), std::vector<std::string>{"001"});
  EXPECT_EQ(ForcedWrites(own.Db()), 1);
}

TEST(Fill, AFileThatIsThereIsNotMadeAnew) {
  OwnDatabase own;
  own.Exec("INSERT INTO {CADCOR} (COR) VALUES ('001')");
  own.Close();
  EXPECT_THROW(FillAtOnce(own.Options(), FillStart::kNewFile, [](Database&) {}), host::DatabaseError);
  EXPECT_EQ(own.Column("SELECT COR FROM {CADCOR}"), std::vector<std::string>{"001"});
}

}  // namespace
