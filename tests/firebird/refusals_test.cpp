// Every refusal is one sentence.
#include <fstream>

#include "host/errors.h"
#include "tests/firebird/fresh_database.h"

namespace test {
namespace {

using app::firebird::ConnectOptions;
using app::firebird::Database;

std::string RefusalOfOpen(const std::string& database, bool create = false) {
  ConnectOptions options;
  options.database = database;
  options.user = "SYSDBA";
  options.password = "nada";
  try {
    create ? Database::Create(options) : Database::Open(options);
  } catch (const host::DatabaseError& error) {
    return error.what();
  }
  return {};
}

TEST(Opening, AMissingFile) {
  const Folder folder;
  const std::string file = (folder / "nada.fdb").string();
  EXPECT_EQ(RefusalOfOpen(file), "O banco de dados \"" + file + "\" não existe.");
  EXPECT_FALSE(std::filesystem::exists(file + ".lock"));
}

TEST(Opening, AFileThatIsNoDatabase) {
  const Folder folder;
  const std::string file = (folder / "texto.fdb").string();
  const std::string sentence = "O arquivo \"" + file + "\" não é um banco de dados.";
  std::ofstream(file) << "isto não é um banco de dados";
  EXPECT_EQ(RefusalOfOpen(file), sentence);
  std::ofstream(file) << std::string(100000, 'x');
  EXPECT_EQ(RefusalOfOpen(file), sentence);
  std::ofstream(file).flush();
  EXPECT_EQ(RefusalOfOpen(file), sentence);
  EXPECT_FALSE(std::filesystem::exists(file + ".lock"));
  EXPECT_EQ(RefusalOfOpen(folder.Path().string()),
            "O arquivo \"" + folder.Path().string() + "\" não é um banco de dados.");
}

TEST(Opening, AFileThatIsThereIsNotCreatedAgain) {
  const Folder folder;
  const std::string file = (folder / "x.fdb").string();
  EXPECT_EQ(RefusalOfOpen(file, true), "");
  EXPECT_EQ(RefusalOfOpen(file, true), "O arquivo \"" + file + "\" já existe.");
  EXPECT_EQ(RefusalOfOpen(file), "");
  EXPECT_EQ(RefusalOfOpen((folder / "sem/x.fdb").string(), true),
            "A pasta \"" + (folder / "sem").string() + "\" não existe.");
}

TEST(Opening, AServerThatDoesNotAnswer) {
  EXPECT_EQ(RefusalOfOpen("127.0.0.1/1:x.fdb"), "O servidor do banco de dados \"127.0.0.1/1:x.fdb\" não responde.");
}

TEST(Opening, AFreshDatabaseIsAsTheHouseWantsIt) {
  const Folder folder;
  ConnectOptions options;
  options.database = (folder / "x.fdb").string();
  const auto database = Database::Create(options);
  const auto row = database->Query(
      "SELECT MON$PAGE_SIZE P, MON$FORCED_WRITES F, MON$SQL_DIALECT D, RDB$CHARACTER_SET_NAME C FROM MON$DATABASE, "
      "RDB$DATABASE",
      {});
  EXPECT_EQ(row->FieldByName("P").AsInteger(), 8192);
  EXPECT_EQ(row->FieldByName("F").AsInteger(), 1);
  EXPECT_EQ(row->FieldByName("D").AsInteger(), 3);
  EXPECT_EQ(row->FieldByName("C").AsText(), "WIN1252");
}

class Refusals : public FreshDatabase {};

TEST_F(Refusals, OfStatements) {
  EXPECT_EQ(Refusal("INSERT INTO {T} (NUMERO) VALUES ('A')"), "Já existe um registro com estes dados.");
  EXPECT_EQ(Refusal("INSERT INTO {T} (NOME) VALUES ('x')"),
            "Um campo obrigatório ficou sem valor ou recebeu um valor inválido.");
  EXPECT_EQ(Refusal("UPDATE NENHUMA SET A = 1"), "A tabela não existe no banco de dados: NENHUMA.");
  EXPECT_EQ(Refusal("UPDATE {T} SET NENHUMA = 1"), "A coluna não existe no banco de dados: NENHUMA.");
  EXPECT_EQ(Refusal("UPDATE {T} SET NOME = 'um nome longo demais'"), "Um texto é mais longo do que o campo permite.");
  EXPECT_EQ(Refusal("UPDATE {T} SET NOME = 'あ'"), "O texto tem um caractere que o banco de dados não sabe guardar.");
  EXPECT_EQ(Refusal("UPDATE {T} SET CURTO = 70000"), "Um número é grande demais para o campo.");
  EXPECT_EQ(Refusal("UPDATE {T} SET INTEIRO = 1 / (INTEIRO - INTEIRO)"), "O cálculo divide por zero.");
  EXPECT_EQ(Refusal("UPDATE {T} SET DATA = '31/12/2026x'"),
            "Um valor não tem a forma que o campo espera: 31/12/2026x.");
  EXPECT_EQ(Get("SELECT COUNT(*) FROM {T}"), "2");
}

TEST_F(Refusals, ATooLongTextBehindACachedStatement) {
  Exec("UPDATE {T} SET NOME = 'curto'");
  EXPECT_EQ(Refusal("UPDATE {T} SET NOME = 'um nome longo demais'"), "Um texto é mais longo do que o campo permite.");
  EXPECT_THROW(Db().Execute("UPDATE {T} SET NOME = ?", {"um nome longo demais"}), host::DatabaseError);
  EXPECT_EQ(Get("SELECT NOME FROM {T} WHERE NUMERO = 'A'"), "curto");
}

TEST_F(Refusals, CarryTheEnginesNumberAndTheStatement) {
  try {
    Exec("INSERT INTO {T}  (NUMERO)\nVALUES ('A')");
    FAIL() << "the key is there already";
  } catch (const host::DatabaseError& error) {
    EXPECT_EQ(error.Code(), 335544665);
    EXPECT_EQ(error.Sql(), "INSERT INTO T_001  (NUMERO)\nVALUES ('A')");
  }
  EXPECT_NE(Refusal("SELECT FROM WHERE").find("O banco de dados recusou a operação: "), std::string::npos);
  EXPECT_EQ(Refusal("SELECT FROM WHERE").find('\n'), std::string::npos);
}

}  // namespace
}  // namespace test
