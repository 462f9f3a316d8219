// Values and rows as the query object hands them out.
#include <stdexcept>

#include "host/errors.h"
#include "tests/firebird/fresh_database.h"

namespace test {
namespace {

class Query : public FreshDatabase {
 protected:
  std::unique_ptr<host::TTIQuery> Open(const std::string& sql) {
    auto query = Db().NewQuery();
    query->SQL.Add(Db().ReplaceNames(sql));
    query->Open();
    return query;
  }
};

TEST_F(Query, EveryKindOfColumn) {
  const auto row = Open("SELECT * FROM {T} WHERE NUMERO = 'A'");
  ASSERT_EQ(row->RecordCount(), 1u);
  EXPECT_EQ(row->FieldCount(), 17u);
  EXPECT_EQ(row->FieldByName("NOME"), host::Value("Ação"));
  EXPECT_EQ(row->FieldByName("nome"), host::Value("Ação"));
  EXPECT_EQ(row->FieldByName("FLAG"), host::Value("S"));
  EXPECT_EQ(row->FieldByName("CODIGO"), host::Value("AB"));
  EXPECT_EQ(row->FieldByName("CURTO"), host::Value(1));
  EXPECT_TRUE(row->FieldByName("INTEIRO").IsInteger());
  EXPECT_EQ(row->FieldByName("LONGO"), host::Value(std::int64_t{9000000000}));
  EXPECT_FALSE(row->FieldByName("PRECO").IsInteger());
  EXPECT_EQ(row->FieldByName("PRECO").AsFloat(), 12.34);
  EXPECT_EQ(row->FieldByName("FINO").AsFloat(), 1.2345);
  EXPECT_EQ(row->FieldByName("QTDE").AsFloat(), 0.1);
  EXPECT_EQ(row->FieldByName("RASO").AsFloat(), 0.5);
  EXPECT_EQ(row->FieldByName("DATA"), host::Value(host::Date::FromParts(2026, 3, 10).value()));
  EXPECT_EQ(row->FieldByName("HORA"), host::Value("10:20:30"));
  EXPECT_EQ(row->FieldByName("MOMENTO"), host::Value("2026-03-10 10:20:30"));
  EXPECT_EQ(row->FieldByName("OBS"), host::Value("observação longa"));
  EXPECT_EQ(row->FieldByName("ATIVO"), host::Value(1));
}

TEST_F(Query, NullIsNull) {
  const auto row = Open("SELECT * FROM {T} WHERE NUMERO = 'B'");
  for (std::size_t i = 1; i < row->FieldCount(); ++i) {
    EXPECT_TRUE(row->FieldByName(row->FieldName(i)).IsNull()) << row->FieldName(i);
  }
}

TEST_F(Query, WalksItsRows) {
  const auto rows = Open("SELECT NUMERO, CODIGO AS \"Cod\" FROM {T} ORDER BY NUMERO");
  EXPECT_EQ(rows->RecordCount(), 2u);
  EXPECT_EQ(rows->FieldName(1), "Cod");
  EXPECT_FALSE(rows->Eof());
  EXPECT_EQ(rows->FieldByName("NUMERO").AsText(), "A");
  rows->Next();
  EXPECT_EQ(rows->FieldByName("NUMERO").AsText(), "B");
  rows->Next();
  EXPECT_TRUE(rows->Eof());
  EXPECT_TRUE(rows->FieldByName("NUMERO").IsNull());
  rows->Next();
  rows->First();
  EXPECT_EQ(rows->FieldByName("NUMERO").AsText(), "A");
  EXPECT_TRUE(rows->HasField("cod"));
  EXPECT_FALSE(rows->HasField("NADA"));
  EXPECT_THROW(rows->FieldByName("NADA"), std::out_of_range);
}

TEST_F(Query, TheLaterOfTwoColumnsOfOneNameIsFoundByItsPosition) {
  const auto rows =
      Open("SELECT A.NUMERO, B.NUMERO, A.CODIGO FROM {T} A, {T} B WHERE A.NUMERO = 'A' AND B.NUMERO = 'B'");
  EXPECT_EQ(rows->FieldByName("NUMERO").AsText(), "A");
  EXPECT_EQ(rows->Field(0).AsText(), "A");
  EXPECT_EQ(rows->Field(1).AsText(), "B");
  EXPECT_EQ(rows->Field(2), host::Value("AB"));  // fixed width: without its blanks
  EXPECT_THROW(rows->Field(3), std::out_of_range);
  rows->Next();
  EXPECT_TRUE(rows->Field(1).IsNull());
  EXPECT_THROW(rows->Field(3), std::out_of_range);
}

TEST_F(Query, HandsItsRowsOver) {
  const auto query = Open("SELECT NUMERO, CURTO FROM {T} ORDER BY NUMERO");
  query->Next();
  const host::RowSet taken = query->TakeRows();
  EXPECT_EQ(taken.names, (std::vector<std::string>{"NUMERO", "CURTO"}));
  EXPECT_EQ(taken.rows, (std::vector<std::vector<host::Value>>{{"A", 1}, {"B", host::Value()}}));
  EXPECT_TRUE(query->IsEmpty());
  EXPECT_TRUE(query->Eof());
  EXPECT_TRUE(query->FieldByName("NUMERO").IsNull());
  query->First();
  EXPECT_TRUE(query->Eof());
  query->Open();
  EXPECT_EQ(query->RecordCount(), 2u);
}

TEST_F(Query, AFailedOpenLeavesNoRows) {
  const auto query = Open("SELECT NUMERO FROM {T}");
  query->SQL.Clear();
  query->SQL.Add("SELECT NADA FROM NENHUMA");
  EXPECT_THROW(query->Open(), host::DatabaseError);
  EXPECT_TRUE(query->IsEmpty());
  EXPECT_TRUE(query->Eof());
}

TEST_F(Query, LongBlobsAndLongResults) {
  std::string text;
  while (text.size() < 100000) text += "linha com acentuação ";
  Db().Execute("UPDATE {T} SET OBS = ? WHERE NUMERO = 'B'", {text});
  EXPECT_EQ(Get("SELECT OBS FROM {T} WHERE NUMERO = 'B'"), text);
  const auto rows = Open("SELECT A.RDB$RELATION_NAME FROM RDB$RELATIONS A, RDB$RELATIONS B, {T}");
  EXPECT_GT(rows->RecordCount(), 4000u);
}

TEST_F(Query, BatchBindsByName) {
  const auto batch = Db().NewQuery();
  batch->SQL.Add(Db().ReplaceNames("INSERT INTO {T} (NUMERO, NOME, QTDE, DATA, INTEIRO)"));
  batch->SQL.Add("VALUES (:NUMERO, 'tem :NOME', :qtde, :DATA, :INTEIRO)");
  for (int i = 0; i < 3; ++i) {
    const auto element = static_cast<std::size_t>(i);
    batch->SetParam(element, "numero", "00" + std::to_string(i));
    batch->SetParam(element, "QTDE", 1.5 * i);
    if (i != 1) batch->SetParam(element, "DATA", host::Date::FromParts(2026, 1, i + 1).value());
    batch->SetParam(element, "INTEIRO", i);
  }
  const auto prepares = Db().Stats().prepares;
  batch->ExecBatch(3);
  EXPECT_EQ(Db().Stats().prepares, prepares + 1);
  EXPECT_EQ(Get("SELECT LIST(NUMERO || NOME || QTDE || COALESCE(DATA, '-'), ';') FROM {T} WHERE NUMERO STARTING '00'"),
            "000tem :NOME0.0000000000000002026-01-01;001tem :NOME1.500000000000000-;"
            "002tem :NOME3.0000000000000002026-01-03");
}

TEST_F(Query, BatchStopsAtTheFirstFailureAndKeepsWhatWasBefore) {
  const auto batch = Db().NewQuery();
  batch->SQL.Add(Db().ReplaceNames("INSERT INTO {T} (NUMERO) VALUES (:N)"));
  batch->SetParam(0, "N", "1");
  batch->SetParam(1, "N", "A");
  batch->SetParam(2, "N", "2");
  EXPECT_THROW(batch->ExecBatch(3), host::DatabaseError);
  EXPECT_EQ(Get("SELECT COUNT(*) FROM {T} WHERE NUMERO IN ('1', '2')"), "1");
}

TEST_F(Query, StatementsHandedOverTogetherRunInTheirOrder) {
  Db().ExecTogether({});
  Db().ExecTogether({Db().ReplaceNames("INSERT INTO {T} (NUMERO, CURTO) VALUES ('C', 2)"),
                     Db().ReplaceNames("UPDATE {T} SET CURTO = CURTO * 10 WHERE NUMERO = 'C'"),
                     Db().ReplaceNames("UPDATE {T} SET CURTO = CURTO + 1 WHERE NUMERO = 'C'")});
  EXPECT_EQ(Get("SELECT CURTO FROM {T} WHERE NUMERO = 'C'"), "21");
  EXPECT_EQ(Durable("SELECT COUNT(*) FROM {T} WHERE NUMERO = 'C'"), "0");
}

TEST_F(Query, OfStatementsHandedOverTogetherTheOneThatFailsIsNamed) {
  const std::vector<std::string> statements = {
      Db().ReplaceNames("UPDATE {T} SET CURTO = 7 WHERE NUMERO = 'A'"),
      Db().ReplaceNames("INSERT INTO {T} (NUMERO) VALUES ('B')"),
      Db().ReplaceNames("UPDATE {T} SET CURTO = 8 WHERE NUMERO = 'A'"),
  };
  try {
    Db().ExecTogether(statements);
    FAIL() << "the key is there twice";
  } catch (const host::DatabaseError& error) {
    EXPECT_EQ(error.Sql(), statements[1]);
    EXPECT_NE(error.Code(), 0);
  }
  EXPECT_EQ(Get("SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "7");
}

TEST_F(Query, PositionalParametersOfEveryKind) {
  Db().Execute(
      "INSERT INTO {T} (NUMERO, NOME, CURTO, PRECO, QTDE, DATA, MOMENTO, OBS, ATIVO, COR) VALUES "
      "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
      {"C", "São 'Zé'", 7, 1.25, 16.35, host::Date::FromParts(2026, 12, 31).value(), "2026-01-02 03:04:05", "blob", 1,
       host::Value()});
  const auto row = Db().Query("SELECT * FROM {T} WHERE NUMERO = ?", {"C"});
  EXPECT_EQ(row->FieldByName("NOME"), host::Value("São 'Zé'"));
  EXPECT_EQ(row->FieldByName("CURTO"), host::Value(7));
  EXPECT_EQ(row->FieldByName("PRECO").AsFloat(), 1.25);
  EXPECT_EQ(row->FieldByName("QTDE").AsFloat(), 16.35);
  EXPECT_EQ(row->FieldByName("DATA").AsDate().ToIso(), "2026-12-31");
  EXPECT_EQ(row->FieldByName("MOMENTO").AsText(), "2026-01-02 03:04:05");
  EXPECT_EQ(row->FieldByName("OBS").AsText(), "blob");
  EXPECT_EQ(row->FieldByName("ATIVO"), host::Value(1));
  EXPECT_TRUE(row->FieldByName("COR").IsNull());
  EXPECT_TRUE(Db().Query("SELECT * FROM {T} WHERE NUMERO = ?", {"zz"})->IsEmpty());
  EXPECT_TRUE(Db().Query("SELECT * FROM {T} WHERE INTEIRO = ?", {"10"})->RecordCount() == 1);
  EXPECT_THROW(Db().Execute("UPDATE {T} SET COR = ?", {}), host::DatabaseError);
}

TEST_F(Query, TextThatLooksLikeStatementsStaysText) {
  for (const std::string text : {"'; DROP TABLE T_001; --", "O''Hara", "a:b", "? {T}", "\\", "/* x */"}) {
    std::string quoted;
    for (const char c : text) quoted += c == '\'' ? "''" : std::string(1, c);
    Exec("UPDATE {T} SET OBS = '" + quoted + "', NOME = '" + quoted.substr(0, 0) + "' WHERE NUMERO = 'A'");
    Db().Execute("UPDATE {T} SET OBS = ? WHERE NUMERO = 'B'", {text});
    EXPECT_EQ(Get("SELECT OBS FROM {T} WHERE NUMERO = 'A'"), text);
    EXPECT_EQ(Get("SELECT OBS FROM {T} WHERE NUMERO = 'B'"), text);
  }
}

TEST_F(Query, NamesInBraces) {
  EXPECT_EQ(Db().PhysicalName("TECEL"), "TECEL_001");
  EXPECT_EQ(Db().ReplaceNames("SELECT '{X}' FROM {A} a -- it's {not}\nJOIN {B} b"),
            "SELECT '{X}' FROM A_001 a -- it's {not}\nJOIN B_001 b");
}

TEST_F(Query, ReturningAndBlocks) {
  EXPECT_EQ(Get("INSERT INTO {T} (NUMERO, CURTO) VALUES ('R', 3) RETURNING CURTO"), "3");
  EXPECT_EQ(Get("EXECUTE BLOCK RETURNS (N INTEGER) AS BEGIN UPDATE {T} SET CURTO = 4 WHERE NUMERO = 'R'; N = 8; "
                "SUSPEND; END"),
            "8");
  Db().CommitRetaining();
  EXPECT_EQ(Durable("SELECT CURTO FROM {T} WHERE NUMERO = 'R'"), "4");
}

TEST_F(Query, AStatementMayNotEndTheTransaction) {
  Exec("UPDATE {T} SET CURTO = 5");
  EXPECT_NE(Refusal("COMMIT"), "");
  EXPECT_NE(Refusal("ROLLBACK"), "");
  EXPECT_EQ(Get("SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "5");
  EXPECT_EQ(Durable("SELECT CURTO FROM {T} WHERE NUMERO = 'A'"), "1");
}

// --- what a statement did ------------------------------------------------------------------------------------------

class RowsAffected : public FreshDatabase {
 protected:
  std::size_t Of(const std::string& sql) {
    const auto query = Db().NewQuery();
    query->SQL.Add(Db().ReplaceNames(sql));
    query->ExecSQL();
    return query->RowsAffected();
  }
};

TEST_F(RowsAffected, AreThoseInsertedChangedOrDeleted) {
  EXPECT_EQ(Of("UPDATE {T} SET CURTO = 3"), 2u);
  EXPECT_EQ(Of("UPDATE {T} SET CURTO = 4 WHERE NUMERO = 'A'"), 1u);
  EXPECT_EQ(Of("UPDATE {T} SET CURTO = 4 WHERE NUMERO = 'nenhum'"), 0u);
  EXPECT_EQ(Of("INSERT INTO {T} (NUMERO) VALUES ('C')"), 1u);
  EXPECT_EQ(Of("INSERT INTO {T} (NUMERO, CURTO) SELECT 'x' || NUMERO, 1 FROM {T}"), 3u);
  EXPECT_EQ(Of("DELETE FROM {T}"), 6u);
  EXPECT_EQ(Of("DELETE FROM {T}"), 0u);
}

TEST_F(RowsAffected, AreCountedAnewWhenTheSameTextRunsAgain) {
  const std::string sql = "UPDATE {T} SET CURTO = COALESCE(CURTO, 0) + 1 WHERE CURTO IS NULL";
  EXPECT_EQ(Of(sql), 1u);
  EXPECT_EQ(Of(sql), 0u);
}

TEST_F(RowsAffected, OfAStructureAreNone) { EXPECT_EQ(Of("CREATE TABLE {NOVA} (NUMERO INTEGER)"), 0u); }

TEST_F(RowsAffected, AreAskedAtOnce) {
  const auto query = Db().NewQuery();
  EXPECT_THROW(query->RowsAffected(), std::logic_error);
  query->SQL.Add(Db().ReplaceNames("UPDATE {T} SET CURTO = 3"));
  query->ExecSQL();
  EXPECT_EQ(query->RowsAffected(), 2u);
  EXPECT_EQ(query->RowsAffected(), 2u);
  Get("SELECT COUNT(*) FROM {T}");
  EXPECT_THROW(query->RowsAffected(), std::logic_error);
  query->ExecSQL();
  query->SQL.Clear();
  query->SQL.Add("SELECT NADA FROM NENHUMA");
  EXPECT_THROW(query->Open(), host::DatabaseError);
  EXPECT_THROW(query->RowsAffected(), std::logic_error);
}

TEST_F(RowsAffected, AreToldWithoutTheStatementCacheToo) {
  auto options = Options();
  options.statement_cache = false;
  const auto plain = app::firebird::Database::Open(options);
  const auto query = plain->NewQuery();
  query->SQL.Add(plain->ReplaceNames("DELETE FROM {T} WHERE NUMERO = 'A'"));
  query->ExecSQL();
  EXPECT_EQ(query->RowsAffected(), 1u);
}

}  // namespace
}  // namespace test
