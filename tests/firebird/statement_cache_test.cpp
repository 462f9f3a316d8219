// With or without the cache a statement gives the same.
#include <array>
#include <random>

#include "app/firebird/literals.h"
#include "host/decimal.h"
#include "host/errors.h"
#include "tests/firebird/fresh_database.h"

namespace test {
namespace {

using app::firebird::Database;
using app::firebird::FindLiterals;
using app::firebird::WithParameters;

std::string Shape(const std::string& sql) { return WithParameters(sql, FindLiterals(sql), {}); }

TEST(Literals, BecomeParametersWhereTheyMeanTheSame) {
  EXPECT_EQ(Shape("SELECT 'x', 5 FROM T WHERE A = 'it''s' AND B <> 5 OR C >= -1.5"),
            "SELECT 'x', 5 FROM T WHERE A = ? AND B <> ? OR C >= ?");
  EXPECT_EQ(Shape("UPDATE T SET Q = Q + 16.35, N = 'x' WHERE NUMERO = '000123' AND D BETWEEN '1' AND '2' AND F = 1"),
            "UPDATE T SET Q = Q + CAST(? AS NUMERIC(18,2)), N = ? WHERE NUMERO = ? AND D BETWEEN ? AND ? AND F = ?");
  EXPECT_EQ(Shape("INSERT INTO T (A, B) VALUES ('a', -3, 1 + 2, NULL, COALESCE('x', 'y'), (SELECT 'q' FROM X WHERE "
                  "A = 'r'))"),
            "INSERT INTO T (A, B) VALUES (?, ?, CAST(? AS BIGINT) + CAST(? AS BIGINT), NULL, COALESCE('x', 'y'), "
            "(SELECT 'q' FROM X WHERE A = ?))");
  EXPECT_EQ(Shape("SELECT A FROM T WHERE COALESCE(X, 'S') <> 'N' AND A IN ('1', '2', -3) AND (B = 5 OR B = 6)"),
            "SELECT A FROM T WHERE COALESCE(X, 'S') <> ? AND A IN (?, ?, ?) AND (B = ? OR B = ?)");
  EXPECT_EQ(Shape("SELECT A FROM T JOIN U ON U.X = 'a' LEFT JOIN V ON V.Y = 5 WHERE Z = 1 ORDER BY 1"),
            "SELECT A FROM T JOIN U ON U.X = ? LEFT JOIN V ON V.Y = ? WHERE Z = ? ORDER BY 1");
}

TEST(Literals, ThatComputeKeepTheirType) {
  EXPECT_EQ(Shape("SELECT A FROM T WHERE A = 5 * B - 1.50 / (C + 2)"),
            "SELECT A FROM T WHERE A = CAST(? AS BIGINT) * B - CAST(? AS NUMERIC(18,2)) / (C + CAST(? AS BIGINT))");
}

TEST(Literals, StayWhereAParameterWouldMeanSomethingElse) {
  for (const std::string sql : {"SELECT FIRST 5 A FROM T ORDER BY 1",
                                "SELECT A FROM T WHERE N LIKE '000123%'",
                                "SELECT A FROM T WHERE N STARTING WITH 'a'",
                                "SELECT CASE WHEN A = 'x' THEN 1 ELSE 2 END FROM T",
                                "SELECT A FROM T WHERE CASE WHEN A = 'x' THEN 1 ELSE 2 END IS NULL",
                                "SELECT A FROM T WHERE 'x' = A",
                                "SELECT A FROM T WHERE A = 'x' COLLATE WIN_PTBR",
                                "SELECT A FROM T WHERE A = 'x' || B",
                                "SELECT A FROM T WHERE A = 5 || B",
                                "SELECT A FROM T WHERE A = q'{x}'",
                                "SELECT A FROM T WHERE A = x'41'",
                                "SELECT A FROM T WHERE A = _WIN1252'a'",
                                "SELECT A FROM T WHERE A = ? AND B = 5",
                                "SELECT A FROM T WHERE D = DATE '2026-01-01'",
                                "SELECT A FROM T WHERE IIF(A = 5, 1, 2) IS NULL",
                                "SELECT A FROM T -- WHERE A = 5",
                                "SELECT A FROM T /* = 5 */",
                                "SELECT A FROM T WHERE A = 1e3",
                                "CREATE TABLE T (A VARCHAR(5) DEFAULT 'x')",
                                "EXECUTE BLOCK AS BEGIN UPDATE T SET A = 5; END",
                                "SELECT A FROM T GROUP BY A, 5 ROWS 3"}) {
    EXPECT_EQ(Shape(sql), sql);
  }
}

class StatementCache : public FreshDatabase {
 protected:
  StatementCache() {
    auto options = Options();
    options.database += ".sem";
    options.statement_cache = false;
    std::filesystem::copy_file(File(), options.database);
    plain_ = Database::Open(options);
  }

  static std::string Describe(const host::Value& value) {
    if (value.IsNull()) return "null";
    const std::string kind = value.IsText() ? "t" : value.IsDate() ? "d" : value.IsInteger() ? "i" : "f";
    return kind + ":" + value.AsText();
  }

  // All that a screen could tell apart: rows, or the refusal.
  static std::string Outcome(Database& database, const std::string& sql) {
    const auto query = database.NewQuery();
    query->SQL.Add(database.ReplaceNames(sql));
    try {
      if (sql.starts_with("SELECT")) {
        query->Open();
      } else {
        query->ExecSQL();
      }
    } catch (const host::DatabaseError& error) {
      return std::string("error ") + std::to_string(error.Code()) + " " + error.what() + " | " + error.Sql();
    }
    std::string text;
    for (; !query->Eof(); query->Next()) {
      for (std::size_t i = 0; i < query->FieldCount(); ++i) {
        text += query->FieldName(i) + "=" + Describe(query->FieldByName(query->FieldName(i))) + " ";
      }
      text += '\n';
    }
    return text;
  }

  void Same(const std::string& sql) {
    const std::string plain = Outcome(*plain_, sql);
    for (int i = 0; i < 2; ++i) {  // prepared, then from the cache
      if (i == 1 && !sql.starts_with("SELECT")) break;
      ASSERT_EQ(Outcome(Db(), sql), plain) << sql;
    }
    if (sql.starts_with("SELECT")) return;
    const std::string all = "SELECT * FROM {T} ORDER BY NUMERO";
    ASSERT_EQ(Outcome(Db(), all), Outcome(*plain_, all)) << sql;
  }

  std::unique_ptr<Database> plain_;
};

const std::vector<std::string> kColumns = {"NUMERO", "NOME", "COR",  "FLAG", "CODIGO", "CURTO", "INTEIRO", "LONGO",
                                           "PRECO",  "FINO", "QTDE", "RASO", "DATA",   "HORA",  "MOMENTO", "ATIVO"};

const std::vector<std::string> kLiterals = {"'A'",
                                            "'a'",
                                            "''",
                                            "' '",
                                            "'A '",
                                            "'acao'",
                                            "'Ação'",
                                            "'AÇÃO'",
                                            "'01'",
                                            "'1'",
                                            "'1.0'",
                                            "' 1'",
                                            "'12,34'",
                                            "'muito longo para tudo'",
                                            "'あ'",
                                            "'it''s'",
                                            "'TODAY'",
                                            "'NOW'",
                                            "'03/10/2026'",
                                            "'3/10/2026'",
                                            "'2026-03-10'",
                                            "'10.03.2026'",
                                            "'10:20:30'",
                                            "'02/30/2026'",
                                            "'03/10/2026 10:20:30'",
                                            "'true'",
                                            "1",
                                            "01",
                                            "-1",
                                            "+1",
                                            "0",
                                            "10",
                                            "1.0",
                                            "1.5",
                                            "0.1",
                                            "0.5",
                                            "12.34",
                                            "12.345",
                                            "1.2345",
                                            "1.23456",
                                            "9000000000",
                                            "70000",
                                            "99999999999999999",
                                            "123456789012345678901",
                                            "0.1234567890123456789",
                                            "16.35",
                                            "3.14159265358979",
                                            "1e0",
                                            "1.00",
                                            "012.340",
                                            ".5",
                                            "5.",
                                            "NULL",
                                            "CURRENT_DATE",
                                            "- 1",
                                            "1 + 1",
                                            "'0.1'",
                                            "'9000000000'",
                                            "'1e1'",
                                            "'-1'",
                                            "TRUE"};

TEST_F(StatementCache, EveryLiteralBesideEveryColumn) {
  for (const std::string& column : kColumns) {
    for (const std::string& literal : kLiterals) {
      for (const std::string op : {"=", "<>", "<", ">="}) {
        Same("SELECT NUMERO FROM {T} WHERE " + column + " " + op + " " + literal + " ORDER BY NUMERO");
      }
    }
  }
}

TEST_F(StatementCache, EveryLiteralStoredInEveryColumn) {
  for (const std::string& column : kColumns) {
    if (column == "NUMERO") continue;
    for (const std::string& literal : kLiterals) {
      if (literal == "'NOW'" || literal == "'TODAY'" || literal == "CURRENT_DATE") continue;  // the clock moves on
      Same("UPDATE {T} SET " + column + " = " + literal + " WHERE NUMERO = 'A'");
      Same("INSERT INTO {T} (NUMERO, " + column + ") VALUES ('Z', " + literal + ")");
      Same("DELETE FROM {T} WHERE NUMERO = 'Z'");
    }
  }
}

TEST_F(StatementCache, ArithmeticBesideEveryColumn) {
  for (const std::string column : {"CURTO", "INTEIRO", "LONGO", "PRECO", "FINO", "QTDE", "RASO"}) {
    for (const std::string op : {"+", "-", "*", "/"}) {
      for (const std::string literal : {"1", "2", "3", "0.1", "16.35", "0.3333", "100", "-2", "7.0"}) {
        Same("UPDATE {T} SET " + column + " = " + column + " " + op + " " + literal);
        Same("UPDATE {T} SET QTDE = " + column + " " + op + " " + literal + ", LONGO = " + column + op + literal);
        Same(
            "UPDATE {T} SET CURTO = 7, INTEIRO = 10, LONGO = 9000000001, PRECO = 12.34, FINO = 1.2345, QTDE = 0.1, "
            "RASO = 0.5 WHERE NUMERO = 'A'");
        Same("SELECT NUMERO FROM {T} WHERE " + column + " " + op + " " + literal + " > 5 - " + literal);
        Same("SELECT NUMERO FROM {T} WHERE QTDE " + op + " " + literal + " = " + column + " " + op + " 2 + 1 - 3");
      }
    }
  }
}

TEST_F(StatementCache, ManyRandomSums) {
  std::mt19937 random(7);
  Same("UPDATE {T} SET QTDE = 0, PRECO = 0, FINO = 1");
  for (int i = 0; i < 400; ++i) {
    const int decimals = static_cast<int>(random() % 7);
    const std::string amount = host::FormatNumber("0." + std::string(static_cast<std::size_t>(decimals), '0'),
                                                  static_cast<double>(random() % 100000000) / 1e5);
    const std::string trimmed = amount.ends_with('.') ? amount.substr(0, amount.size() - 1) : amount;
    Same("UPDATE {T} SET QTDE = QTDE " + std::string(random() % 2 == 0 ? "+ " : "- ") + trimmed + " WHERE NUMERO = '" +
         (random() % 2 == 0 ? "A" : "B") + "'");
  }
}

TEST_F(StatementCache, StatementsOfAMill) {
  for (const std::string sql :
       {"SELECT COUNT(*) FROM {T} WHERE COALESCE(FLAG, 'S') <> 'N' AND COALESCE(QTDE, 0) - COALESCE(RASO, 0) > 0",
        "SELECT COUNT(*) FROM {T} WHERE COALESCE(FLAG, 'S') <> 'NN'",
        "SELECT NUMERO, 'x' AS TIPO FROM {T} WHERE NOME = 'acao' UNION SELECT COR, 'y' FROM {T} WHERE QTDE > 0",
        "SELECT FLAG, SUM(QTDE) FROM {T} WHERE DATA BETWEEN '01/01/2026' AND '12/31/2026' GROUP BY FLAG HAVING "
        "SUM(QTDE) > 0 AND COUNT(*) < 100",
        "SELECT CASE WHEN FLAG = 'S' THEN 'sim' ELSE 'não' END X, COUNT(*) FROM {T} GROUP BY CASE WHEN FLAG = 'S' "
        "THEN 'sim' ELSE 'não' END",
        "SELECT (SELECT COUNT(*) FROM {T} X WHERE X.NUMERO = 'A') N FROM {T} GROUP BY 1",
        "SELECT NUMERO || '-' || NOME FROM {T} WHERE NUMERO || '-' || COR = 'A-01'",
        "SELECT NUMERO FROM {T} WHERE CAST(INTEIRO AS VARCHAR(5)) = '10' OR CAST(COR AS INTEGER) = 1",
        "SELECT NUMERO FROM {T} WHERE EXTRACT(MONTH FROM DATA) = 3 AND EXTRACT(YEAR FROM DATA) IN (2026, 2027)",
        "SELECT NUMERO FROM {T} WHERE COR = 1",
        "SELECT NUMERO FROM {T} WHERE COR IN (1, '01')",
        "SELECT NUMERO FROM {T} WHERE 1 = 1 AND 'a' = 'a' AND 2 > 1",
        "SELECT NUMERO FROM {T} WHERE DATA + 1 = '03/11/2026'",
        "SELECT NUMERO FROM {T} WHERE DATA - 1 < '03/10/2026' AND DATA > '12/30/1899'",
        "SELECT NUMERO FROM {T} WHERE UPPER(NOME) = 'AÇÃO' AND SUBSTRING(NOME FROM 1 FOR 2) = 'Aç'",
        "SELECT NUMERO FROM {T} WHERE NOT NUMERO = 'B' AND NOT (NUMERO = 'C' OR INTEIRO BETWEEN -5 AND -3)",
        "SELECT NUMERO FROM {T} WHERE EXISTS (SELECT 1 FROM {T} X WHERE X.NUMERO = 'B' AND X.NUMERO <> {T}.NUMERO)",
        "SELECT A.NUMERO FROM {T} A LEFT JOIN {T} B ON B.NUMERO = 'B' AND B.COR = '01' WHERE A.INTEIRO = 10 ROWS 1",
        "SELECT FIRST 1 NUMERO FROM {T} WHERE NUMERO > '0' ORDER BY NUMERO DESC",
        "SELECT NUMERO FROM {T} WHERE NOME LIKE 'A%' AND NUMERO STARTING WITH 'A' AND QTDE = 0.1",
        "SELECT NADA FROM {T} WHERE NUMERO = 'A'",
        "SELECT NUMERO FROM NENHUMA WHERE NUMERO = 'A'",
        "SELECT NUMERO FROM {T} WHERE QTDE / 0 = 5",
        "INSERT INTO {T} (NUMERO, NOME) VALUES ('A', 'de novo')",
        "INSERT INTO {T} (NUMERO, OBS) VALUES ('O', 'texto com ç')",
        "INSERT INTO {T} (NUMERO) VALUES (5)",
        "INSERT INTO {T} (NUMERO, COR) SELECT 'S', COR FROM {T} WHERE NUMERO = 'A'",
        "UPDATE {T} SET COR = (SELECT FIRST 1 'k' FROM {T} X WHERE X.NUMERO = 'A'), NOME = 'n' || 'm'",
        "UPDATE OR INSERT INTO {T} (NUMERO, CURTO) VALUES ('A', 8) MATCHING (NUMERO)",
        "UPDATE {T} SET QTDE = CASE WHEN FLAG = 'S' THEN QTDE + 1 ELSE 0 END WHERE NUMERO = 'A'",
        "UPDATE {T} SET NUMERO = NULL WHERE NUMERO = 'A'",
        "DELETE FROM {T} WHERE NUMERO = 'O' AND COR IS NULL"}) {
    Same(sql);
    Same(sql);
  }
}

TEST_F(StatementCache, StatementsOfARollArePreparedOnce) {
  const auto roll = [&](int i) {
    const std::string number = std::to_string(i);
    Exec("UPDATE {T} SET QTDE = QTDE + 16." + number + ", PRECO = 1." + number + " WHERE NUMERO = 'A' AND COR = '0" +
         number + "'");
    Exec("INSERT INTO {T} (NUMERO, NOME, QTDE, DATA, CURTO, FLAG) VALUES ('R" + number + "', 'Nome " + number + "', 1" +
         number + ".5, '03/1" + number + "/2026', " + number + ", 'N')");
    Get("SELECT COUNT(*) FROM {T} WHERE COALESCE(FLAG, 'S') <> 'N' AND DATA >= '03/0" + number + "/2026'");
  };
  roll(1);
  const auto before = Db().Stats();
  for (int i = 2; i < 9; ++i) roll(i);
  EXPECT_EQ(Db().Stats().prepares, before.prepares);
  EXPECT_EQ(Db().Stats().statements, before.statements + 21);
  EXPECT_EQ(Db().Stats().round_trips, before.round_trips + 21);
}

TEST_F(StatementCache, StructureMayChangeBetween) {
  const std::string sql = "SELECT COUNT(*) FROM {T} WHERE COR = '01'";
  EXPECT_EQ(Get(sql), "1");
  Db().Execute("ALTER TABLE {T} ALTER COR TYPE VARCHAR(40)", {});
  Db().CommitRetaining();
  EXPECT_EQ(Get(sql), "1");
  Exec("UPDATE {T} SET COR = 'mais longo do que antes' WHERE NUMERO = 'A'");
  EXPECT_EQ(Get("SELECT NUMERO FROM {T} WHERE COR = 'mais longo do que antes'"), "A");
}

TEST_F(StatementCache, ManyDifferentStatementsDoNotPileUp) {
  for (int i = 0; i < 500; ++i)
    EXPECT_EQ(Get("SELECT " + std::to_string(i) + " FROM {T} WHERE NUMERO = 'A'"), std::to_string(i));
}

}  // namespace
}  // namespace test
