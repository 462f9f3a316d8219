// The program as started from a shell: what it prints, the one line of every error, its exit code.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "host/module.h"
#include "program.h"

namespace {

namespace fs = std::filesystem;
using test::Ended;
using test::ExpectOneLine;
using test::Folder;
using test::Lines;
using test::Start;

// A demonstration mill made once; each test works on its own copy.
class Cli : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    made_ = new Folder;
    const Ended demo = Start({"demo", "--database", *made_ / "demo.fdb"});
    ASSERT_EQ(demo.code, 0) << demo.errors;
    ASSERT_NE(demo.output.find("senha: demo"), std::string::npos) << demo.output;
  }
  static void TearDownTestSuite() {
    delete made_;
    made_ = nullptr;
  }

  std::string Demo() const {
    const std::string copy = folder_ / "mill.fdb";
    fs::copy_file(*made_ / "demo.fdb", copy);
    return copy;
  }
  Ended Script(const std::string& source, const std::vector<std::string>& more = {}) const {
    std::vector<std::string> arguments = {"script", folder_.Write("work.js", source)};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Start(arguments);
  }

  Folder folder_;

 private:
  static inline Folder* made_ = nullptr;
};

// --- usage ---------------------------------------------------------------------------------------------------------

TEST_F(Cli, HelpNamesEveryCommand) {
  const Ended help = Start({"--help"});
  EXPECT_EQ(help.code, 0);
  EXPECT_EQ(help.errors, "");
  for (const char* command :
       {"desktop", "init", "demo", "import", "script", "print", "check", "scale-simulator", "version"}) {
    EXPECT_NE(help.output.find(std::string("\n  ") + command + " "), std::string::npos) << command;
    const Ended own = Start({command, "--help"});
    EXPECT_EQ(own.code, 0) << command;
    EXPECT_EQ(own.output.find("Options"), std::string::npos) << own.output;
  }
}

TEST_F(Cli, VersionTellsProgramAndModule) {
  const Ended version = Start({"version"});
  EXPECT_EQ(version.code, 0) << version.errors;
  EXPECT_EQ(version.output.substr(0, 10), "tecelagem ");
  EXPECT_NE(version.output.find("contrato " + std::to_string(host::kContractVersion)), std::string::npos);
}

TEST_F(Cli, WrongUsageIsTwo) {
  ExpectOneLine(Start({"tecer"}), 2, "comando desconhecido: tecer");
  ExpectOneLine(Start({"check"}), 2, "falta o argumento --database");
  ExpectOneLine(Start({"check", "--database"}), 2, "falta o valor de --database");
  ExpectOneLine(Start({"check", "--database", "x.fdb", "--force"}), 2, "argumento desconhecido: --force");
  ExpectOneLine(Start({"script", "--database", "x.fdb"}), 2, "falta o argumento ARQUIVO");
  ExpectOneLine(Start({"import", "CADCOR", "--database", "x.fdb"}), 2, "falta o argumento ARQUIVO");
  ExpectOneLine(Start({"script", "a.js", "b.js", "--database", "x.fdb"}), 2, "argumento desconhecido: b.js");
  ExpectOneLine(Start({"script", "a.js", "--database", "x.fdb", "--timeout", "logo"}), 2, "valor inválido: --timeout");
  ExpectOneLine(Start({"script", "a.js", "--database", "x.fdb", "--timeout", "-1"}), 2, "valor inválido: --timeout");
}

// --- windows -------------------------------------------------------------------------------------------------------

// Without a display the program says so, whether the windows were asked for by name or by no command at all.
TEST_F(Cli, WindowsNeedADisplay) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{}, {"desktop"}, {"desktop", "--database", folder_ / "falta.fdb"}}) {
    ExpectOneLine(Start(arguments), 1, "não há tela para abrir janelas");
  }
}

TEST_F(Cli, WindowsOptionsAreChecked) {
  ExpectOneLine(Start({"desktop", "--force"}), 2, "argumento desconhecido: --force");
  ExpectOneLine(Start({"desktop", "--database"}), 2, "falta o valor de --database");
}

// A display that is named and does not answer is no crash.
TEST_F(Cli, ADisplayThatDoesNotAnswer) {
  ExpectOneLine(Start(std::vector<std::string>{"desktop"}, {"QT_QPA_PLATFORM=xcb", "DISPLAY=127.0.0.1:99"}), 1,
                "não há tela para abrir janelas");
}

// --- databases -----------------------------------------------------------------------------------------------------

TEST_F(Cli, InitMakesAnEmptyMillThatChecks) {
  const std::string database = folder_ / "novo.fdb";
  const Ended init = Start({"init", "--database", database, "--password", "segredo"});
  EXPECT_EQ(init.code, 0) << init.errors;
  EXPECT_EQ(Start({"check", "--database", database}).code, 0);
  EXPECT_EQ(Script("print(1)", {"--database", database, "--password", "segredo"}).output, "1\n");
  ExpectOneLine(Script("print(1)", {"--database", database, "--password", "outra"}), 1, "Senha errada");
  ExpectOneLine(Script("print(1)", {"--database", database, "--user", "NINGUEM"}), 1, "NINGUEM");
}

TEST_F(Cli, InitWithoutPasswordMakesNothing) {
  const std::string database = folder_ / "novo.fdb";
  ExpectOneLine(Start({"init", "--database", database}), 1, "Falta a senha");
  ExpectOneLine(Start({"init", "--database", database, "--password", ""}), 1, "não pode ficar vazia");
  EXPECT_FALSE(fs::exists(database));
}

TEST_F(Cli, WhatExistsIsNotMadeAgain) {
  const std::string file = folder_.Write("carta.txt", "querida malharia");
  ExpectOneLine(Start({"init", "--database", file, "--password", "x"}), 1, "já existe");
  ExpectOneLine(Start({"demo", "--database", file}), 1, "já existe");
  EXPECT_EQ(test::ReadText(file), "querida malharia");
}

TEST_F(Cli, AFolderThatDoesNotExist) {
  ExpectOneLine(Start({"init", "--database", folder_ / "nada/novo.fdb", "--password", "x"}), 1, "nada");
}

TEST_F(Cli, AMissingDatabaseIsNotMade) {
  const std::string database = folder_ / "falta.fdb";
  ExpectOneLine(Start({"check", "--database", database}), 1, "falta.fdb");
  ExpectOneLine(Script("print(1)", {"--database", database}), 1, "falta.fdb");
  ExpectOneLine(Start({"import", "CADCOR", folder_.Write("c.csv", "COR\n"), "--database", database}), 1, "falta.fdb");
  EXPECT_FALSE(fs::exists(database));
}

TEST_F(Cli, AFileThatIsNoDatabase) {
  const std::string file = folder_.Write("carta.txt", std::string(20000, 'x'));
  ExpectOneLine(Start({"check", "--database", file}), 1, "carta.txt");
  ExpectOneLine(Start({"check", "--database", folder_ / ""}), 1, "");
  EXPECT_EQ(test::ReadText(file), std::string(20000, 'x'));
}

TEST_F(Cli, AReadOnlyDatabase) {
  const std::string database = Demo();
  fs::permissions(database, fs::perms::owner_read | fs::perms::group_read);
  ExpectOneLine(Script("print(1)", {"--database", database}), 1, "mill.fdb\" só permite leitura");
  ExpectOneLine(Start({"check", "--database", database}), 1, "só permite leitura");
}

TEST_F(Cli, AServerThatDoesNotAnswer) {
  ExpectOneLine(Start({"check", "--database", "127.0.0.1/1:nada.fdb", "--user", "X", "--password", "Y"}), 1,
                "127.0.0.1/1");
}

TEST_F(Cli, ADatabaseOfANewerProgramIsRefused) {
  const std::string database = Demo();
  const Ended raise = Script(
      "db.exec(\"UPDATE TEC_MIGRACAO SET NUMERO = 9000 WHERE NUMERO = (SELECT MAX(NUMERO) FROM "
      "TEC_MIGRACAO)\")",
      {"--database", database});
  ASSERT_EQ(raise.code, 0) << raise.errors;
  ExpectOneLine(Start({"check", "--database", database}), 1, "9000");
  ExpectOneLine(Script("print(1)", {"--database", database}), 1, "9000");
}

// --- import --------------------------------------------------------------------------------------------------------

TEST_F(Cli, ImportWritesAllRows) {
  const std::string database = Demo();
  const std::string file = folder_.Write("cores.csv", "COR;DESCRICAO\n900;OURO\n901;PRATA\n");
  const Ended import = Start({"import", "CADCOR", file, "--database", database});
  EXPECT_EQ(import.code, 0) << import.errors;
  EXPECT_EQ(import.output.substr(0, 2), "2 ");
  EXPECT_EQ(Script("print(db.query(\"SELECT COR, DESCRICAO FROM {CADCOR} WHERE COR STARTING '90'\").length)",
                   {"--database", database})
                .output,
            "2\n");
}

TEST_F(Cli, ImportTellsEveryWrongRowAndWritesNone) {
  const std::string database = Demo();
  const std::string file = folder_.Write("cores.csv", "COR;DESCRICAO\n900;OURO\n0;CRU\nLONGADEMAIS;X\n");
  const Ended import = Start({"import", "CADCOR", file, "--database", database});
  EXPECT_EQ(import.code, 1);
  EXPECT_EQ(Lines(import.errors), 2) << import.errors;
  EXPECT_NE(import.errors.find("cores.csv: Linha 3"), std::string::npos) << import.errors;
  EXPECT_NE(import.errors.find("cores.csv: Linha 4"), std::string::npos) << import.errors;
  EXPECT_EQ(
      Script("print(db.query(\"SELECT COR FROM {CADCOR} WHERE COR = '900'\").length)", {"--database", database}).output,
      "0\n");
}

TEST_F(Cli, ImportOfWhatIsNotThere) {
  const std::string database = Demo();
  ExpectOneLine(Start({"import", "CADCOR", folder_ / "falta.csv", "--database", database}), 1, "falta.csv");
  ExpectOneLine(Start({"import", "NADA", folder_.Write("n.csv", "A\n1\n"), "--database", database}), 1, "NADA");
}

// --- scripts -------------------------------------------------------------------------------------------------------

TEST_F(Cli, ScriptErrorsNameFileAndLine) {
  const std::string database = Demo();
  const Ended thrown = Script("print('um');\n\nthrow new Error('acabou');\n", {"--database", database});
  EXPECT_EQ(thrown.code, 1);
  EXPECT_EQ(thrown.output, "um\n");
  EXPECT_EQ(thrown.errors, folder_ / "work.js:3: acabou\n");
  EXPECT_EQ(Script("assert(false, 'não vale')", {"--database", database}).errors, folder_ / "work.js:1: não vale\n");
  ExpectOneLine(Script("let = ;", {"--database", database}), 1, "work.js:1: SyntaxError");
  ExpectOneLine(Script("db.query('SELECT * FROM NADA')", {"--database", database}), 1, "work.js:1: ");
}

TEST_F(Cli, ScriptFilesThatCannotBeRead) {
  const std::string database = Demo();
  ExpectOneLine(Start({"script", folder_ / "falta.js", "--database", database}), 1, "falta.js");
  ExpectOneLine(Start({"script", folder_ / "", "--database", database}), 1, "pasta");
  ExpectOneLine(Script("print('\xE7')", {"--database", database}), 1, "UTF-8");
}

TEST_F(Cli, AnEndlessScriptIsEnded) {
  ExpectOneLine(Script("for (;;);", {"--database", Demo(), "--timeout", "0.3"}), 1, "work.js: o tempo de 0.3 s acabou");
}

TEST_F(Cli, TheWorkDoneBeforeAnErrorStays) {
  const std::string database = Demo();
  Script("db.exec(\"INSERT INTO {CADCOR} (COR, DESCRICAO) VALUES ('950', 'X')\"); throw 1;", {"--database", database});
  EXPECT_EQ(
      Script("print(db.query(\"SELECT COR FROM {CADCOR} WHERE COR = ?\", ['950'])[0].COR)", {"--database", database})
          .output,
      "950\n");
}

// --- the road and the books ----------------------------------------------------------------------------------------

TEST_F(Cli, TheRoadRunsAgainAndAgainAndTheBooksBalance) {
  const std::string database = Demo();
  const std::string road = std::string(TECELAGEM_SOURCE_DIR) + "/demo/road-of-one-roll.js";
  for (const char* order : {"000001", "000002"}) {
    const Ended run = Start({"script", road, "--database", database});
    EXPECT_EQ(run.code, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    EXPECT_NE(run.output.find(std::string("Ordem de tecelagem ") + order), std::string::npos) << run.output;
  }
  const Ended plain = Start({"script", road, "--database", database, "--no-statement-cache"});
  EXPECT_EQ(plain.code, 0) << plain.errors;
  const Ended check = Start({"check", "--database", database});
  EXPECT_EQ(check.code, 0) << check.output << check.errors;
  EXPECT_EQ(check.errors, "");
}

TEST_F(Cli, CheckNamesWhatIsOff) {
  const std::string database = Demo();
  Script("db.exec(\"UPDATE {MAT_ITEN} SET QTDE = QTDE + 1 WHERE LOTE = '0020226001'\")", {"--database", database});
  const Ended check = Start({"check", "--database", database});
  EXPECT_EQ(check.code, 1);
  EXPECT_NE(check.output.find("0020226001"), std::string::npos) << check.output;
  EXPECT_EQ(Lines(check.errors), 1) << check.errors;
  EXPECT_NE(check.errors.find("1 diferença"), std::string::npos) << check.errors;
}

// --- the module ----------------------------------------------------------------------------------------------------

// The program in a folder of its own, beside whatever stands for the module there.
class CliModule : public ::testing::Test {
 protected:
  CliModule() : program_(folder_ / "tecelagem") { fs::copy_file(test::Program(), program_); }

  Ended With(const std::string& library) const {
    const std::string module = folder_ / "libtecelagem.so";
    fs::remove(module);
    if (!library.empty()) fs::copy_file(std::string(TECELAGEM_BINARY_DIR) + "/" + library, module);
    return StartIt();
  }
  // The module is asked for before the database: one that is missing would be told only afterwards.
  Ended StartIt() const {
    return Start(program_, {"script", folder_.Write("work.js", "print(1)"), "--database", folder_ / "falta.fdb"});
  }

  Folder folder_;
  std::string program_;
};

TEST_F(CliModule, TheRealOneIsLoadedFromBesideTheProgram) { ExpectOneLine(With("libtecelagem.so"), 1, "falta.fdb"); }

TEST_F(CliModule, AModuleThatIsMissing) { ExpectOneLine(With(""), 1, "libtecelagem.so não pôde ser carregado"); }

TEST_F(CliModule, AModuleOfAnotherVersion) {
  ExpectOneLine(With("libtest_module_other_version.so"), 1, "é de outra versão");
  ExpectOneLine(With("libtest_module_refuses.so"), 1, "é de outra versão");
}

TEST_F(CliModule, AModuleWithoutScreens) {
  ExpectOneLine(With("libtest_module_empty.so"), 1, "a lista de telas está vazia");
}

TEST_F(CliModule, AModuleWithAReportThatNobodyCouldPrint) {
  ExpectOneLine(With("libtest_module_incomplete_report.so"), 1, "uma lista está incompleta");
}

TEST_F(CliModule, ALibraryThatIsNoModule) {
  ExpectOneLine(With("libtest_module_no_entry.so"), 1, "não tem a entrada tecelagem_module");
}

TEST_F(CliModule, AModuleThatNeedsWhatNobodyHas) {
  ExpectOneLine(With("libtest_module_unresolved.so"), 1, "what_nobody_has");
}

TEST_F(CliModule, AFileThatIsNoLibrary) {
  folder_.Write("libtecelagem.so", "nada");
  ExpectOneLine(StartIt(), 1, "não pôde ser carregado");
}

}  // namespace
