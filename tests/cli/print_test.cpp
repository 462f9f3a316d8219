// Reports from the command line: `print`, and what scripts print.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "app/cli/module_loader.h"
#include "app/reports.h"
#include "program.h"

namespace {

namespace fs = std::filesystem;
using test::Ended;
using test::ExpectOneLine;
using test::Folder;
using test::ReadText;
using test::Start;

// The demonstration mill after one order and its rolls, made once; each test works on its own copy.
class PrintCommand : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    made_ = new Folder;
    ASSERT_EQ(Start({"demo", "--database", *made_ / "demo.fdb"}).code, 0);
    const Ended road = Start(
        {"script", std::string(TECELAGEM_SOURCE_DIR) + "/demo/road-of-one-roll.js", "--database", *made_ / "demo.fdb"});
    ASSERT_EQ(road.code, 0) << road.errors;
  }
  static void TearDownTestSuite() {
    delete made_;
    made_ = nullptr;
  }

  PrintCommand() { fs::copy_file(*made_ / "demo.fdb", Database()); }
  std::string Database() const { return folder_ / "mill.fdb"; }
  Ended Print(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "print");
    arguments.insert(arguments.end(), {"--database", Database()});
    return Start(arguments);
  }
  static std::string TextOfPdf(const std::string& file) {
    return Start("/usr/bin/pdftotext", {"-layout", file, "-"}).output;
  }

  Folder folder_;

 private:
  static inline Folder* made_ = nullptr;
};

TEST_F(PrintCommand, AnOrderBecomesAPdf) {
  const Ended ended = Print({"WTecLoteCad", "--order", "000001", "--pdf", folder_ / "ordem.pdf"});
  EXPECT_EQ(ended.code, 0) << ended.errors;
  EXPECT_EQ(ended.errors, "");
  EXPECT_EQ(ended.output, "WTecLoteCad: " + (folder_ / "ordem.pdf") + "\n");
  const std::string text = TextOfPdf(folder_ / "ordem.pdf");
  EXPECT_NE(text.find("000001"), std::string::npos) << text;
  EXPECT_NE(text.find("Página 1 de "), std::string::npos) << text;
}

TEST_F(PrintCommand, ARollsLabelAsPageAndAsText) {
  const Ended page = Print({"WEtqTecRolo", "--order", "000001", "--roll", "2", "--pdf", folder_ / "rolo.pdf"});
  EXPECT_EQ(page.code, 0) << page.errors;
  EXPECT_NE(TextOfPdf(folder_ / "rolo.pdf").find("000001"), std::string::npos);
  const Ended text =
      Print({"WEtqTecRolo", "--order", "000001", "--roll", "2", "--text", "--output", folder_ / "rolo.txt"});
  EXPECT_EQ(text.code, 0) << text.errors;
  const std::string bytes = ReadText(folder_ / "rolo.txt");
  EXPECT_NE(bytes.find("ROLO 002"), std::string::npos) << bytes;
}

TEST_F(PrintCommand, AnOrderAsTextForALinePrinter) {
  const Ended ended = Print({"WTecLoteCad", "--order", "000001", "--text", "--output", folder_ / "ordem.txt"});
  EXPECT_EQ(ended.code, 0) << ended.errors;
  EXPECT_EQ(ended.output, "WTecLoteCad: " + (folder_ / "ordem.txt") + "\n");
  const std::string bytes = ReadText(folder_ / "ordem.txt");
  EXPECT_NE(bytes.find("ORDEM DE TECELAGEM 000001"), std::string::npos) << bytes;
  EXPECT_EQ(bytes.back(), '\f');
  ExpectOneLine(Print({"WTecLoteCad", "--order", "000001", "--text", "--to", "rede:127.0.0.1:1"}), 1,
                "A impressora 127.0.0.1:1 recusou a conexão");
}

// What the reports of the list are told in the mill of this test.
const std::map<std::string, std::string> kToldHere = {{"order", "000001"}, {"roll", "1"}};

TEST_F(PrintCommand, EveryReportOfTheListIsPrintedInEveryLayoutThatItHas) {
  const auto module = app::cli::LoadedModule::Load(std::string(TECELAGEM_BINARY_DIR) + "/libtecelagem.so");
  ASSERT_GT(module.Get().report_count, 0u);
  for (const host::ListedReport& report : app::ReportsOf(module.Get())) {
    std::vector<std::string> line = {report.name};
    for (const host::ReportArgument& argument : app::ArgumentsOf(report)) {
      ASSERT_TRUE(kToldHere.contains(argument.name)) << report.name << " wants --" << argument.name;
      line.insert(line.end(), {"--" + std::string(argument.name), kToldHere.at(argument.name)});
    }
    for (const bool text : {false, true}) {
      if (!(text ? HasText(report.layouts) : HasDrawn(report.layouts))) continue;
      const std::string file = folder_ / (report.name + std::string(text ? ".txt" : ".pdf"));
      std::vector<std::string> arguments = line;
      if (text) arguments.emplace_back("--text");
      arguments.insert(arguments.end(), {"--output", file});
      const Ended ended = Print(arguments);
      EXPECT_EQ(ended.code, 0) << ended.errors;
      EXPECT_EQ(ended.output, std::string(report.name) + ": " + file + "\n");
      const std::string bytes = ReadText(file);
      EXPECT_GT(bytes.size(), 100u) << file;
      EXPECT_EQ(bytes.substr(0, 4) == "%PDF", !text) << file;
    }
  }
}

TEST_F(PrintCommand, TheHelpTellsReportsAndTheirArguments) {
  const Ended help = Start({"print", "--help"});
  EXPECT_EQ(help.code, 0) << help.errors;
  for (const char* line : {"\n  WEtqTecRolo             Etiqueta do rolo (páginas ou texto)\n    --order NUMERO ",
                           "\n    --roll N              Rolo da ordem\n  WTecLoteCad             Ordem de tecelagem "
                           "(páginas ou texto)\n"}) {
    EXPECT_NE(help.output.find(line), std::string::npos) << help.output;
  }
}

TEST_F(PrintCommand, TheNameMayStandBehindItsArguments) {
  EXPECT_EQ(Print({"--order", "000001", "--pdf", folder_ / "ordem.pdf", "WTecLoteCad"}).code, 0);
}

TEST_F(PrintCommand, TheLogTellsWhoPrintedWhichLabel) {
  ASSERT_EQ(Print({"WEtqTecRolo", "--order", "000001", "--roll", "1", "--text", "--output", folder_ / "r.txt"}).code,
            0);
  const Ended asked = Start(
      {"script",
       folder_.Write("log.js", "print(db.query(\"SELECT TEXTO FROM TEC_LOG WHERE TEXTO LIKE '%ETIQUETA%'\").length)"),
       "--database", Database()});
  EXPECT_EQ(asked.output, "1\n") << asked.errors;
}

TEST_F(PrintCommand, ALabelGoesToAPrinterInTheNetwork) {
  const int listener = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
  ASSERT_EQ(listen(listener, 1), 0);
  ASSERT_EQ(getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size), 0);
  std::string got;
  std::thread printer([&] {
    const int peer = accept(listener, nullptr, nullptr);
    char part[4096];
    for (ssize_t count = 0; (count = read(peer, part, sizeof part)) > 0;)
      got.append(part, static_cast<std::size_t>(count));
    close(peer);
  });
  const std::string where = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
  const Ended ended = Print({"WEtqTecRolo", "--order", "000001", "--roll", "1", "--text", "--to", where});
  if (ended.code != 0) shutdown(listener, SHUT_RDWR);
  printer.join();
  close(listener);
  EXPECT_EQ(ended.code, 0) << ended.errors;
  EXPECT_EQ(ended.output, "WEtqTecRolo: " + where + "\n");
  ASSERT_EQ(Print({"WEtqTecRolo", "--order", "000001", "--roll", "1", "--text", "--output", folder_ / "r.txt"}).code,
            0);
  EXPECT_NE(got.find("ROLO 001"), std::string::npos) << got;
  EXPECT_EQ(got.size(), ReadText(folder_ / "r.txt").size());
}

TEST_F(PrintCommand, WhatIsWrongIsOneLine) {
  const std::string pdf = folder_ / "x.pdf";
  ExpectOneLine(Print({"WTecLoteCad", "--order", "999999", "--pdf", pdf}), 1, "tecelagem: A ordem 999999 não existe.");
  ExpectOneLine(Print({"WEtqTecRolo", "--order", "000001", "--roll", "77", "--pdf", pdf}), 1,
                "tecelagem: A ordem 000001 não tem o rolo 77.");
  ExpectOneLine(Print({"WTecBai", "--order", "000001", "--pdf", pdf}), 1, "os que são: WEtqTecRolo, WTecLoteCad.");
  ExpectOneLine(Print({"WTecLoteCad", "--order", "000001", "--pdf", folder_ / "nada/x.pdf"}), 1, "nada/x.pdf");
  ExpectOneLine(Print({"WEtqTecRolo", "--order", "000001", "--roll", "1", "--text", "--output", folder_ / "nada/x"}), 1,
                "Não foi possível gravar o arquivo");
  ExpectOneLine(Print({"WEtqTecRolo", "--order", "000001", "--roll", "1", "--text", "--to", "127.0.0.1:1"}), 1,
                "A impressora 127.0.0.1:1 recusou a conexão");
  ExpectOneLine(Print({"WTecLoteCad", "--order", "000001", "--to", "rede:127.0.0.1:1"}), 1,
                "só aceita relatórios em texto");
  ExpectOneLine(Print({"WTecLoteCad", "--order", "000001", "--to", "Laser"}), 1, "A fila de impressão \"Laser\"");
  EXPECT_FALSE(fs::exists(pdf));
}

TEST_F(PrintCommand, OptionsThatDoNotGoTogether) {
  const std::string pdf = folder_ / "x.pdf";
  ExpectOneLine(Print({"WEtqTecRolo", "--order", "000001", "--pdf", pdf}), 2, "falta o argumento --roll");
  ExpectOneLine(Print({"WTecLoteCad", "--order", "000001", "--roll", "1", "--pdf", pdf}), 2,
                "o relatório WTecLoteCad não tem o argumento --roll");
  ExpectOneLine(Print({"WEtqTecRolo", "--order", "000001", "--roll", "1", "--text", "--pdf", pdf}), 1,
                "um relatório em texto não vira PDF");
  ExpectOneLine(Print({"WTecLoteCad", "--order", "000001"}), 2, "falta dizer para onde");
  ExpectOneLine(Print({"WTecLoteCad", "--order", "000001", "--pdf", pdf, "--to", "x"}), 2, "não andam juntos");
  ExpectOneLine(Print({"WTecLoteCad", "--pdf", pdf}), 2, "falta o argumento --order");
  ExpectOneLine(Print({"WEtqTecRolo", "--order", "000001", "--roll", "-1", "--pdf", pdf}), 2,
                "valor inválido: --roll \"-1\"");
  ExpectOneLine(Start({"print", "WTecLoteCad", "--pdf", pdf, "--database", Database(), "--order"}), 2,
                "falta o valor de --order");
  ExpectOneLine(Print({"WTecLoteCad", "--order", "000001", "--order", "000002", "--pdf", pdf}), 2,
                "--order está repetido");
  ExpectOneLine(Print({"WTecLoteCad", "--order", "000001", "--pdf", pdf, "--pdf", pdf}), 2, "--pdf está repetido");
  ExpectOneLine(Print({"WTecLoteCad", "--lote", "000001", "--pdf", pdf}), 2, " --lote (veja");
}

TEST_F(PrintCommand, AWrongPasswordPrintsNothing) {
  const std::string pdf = folder_ / "x.pdf";
  ExpectOneLine(Print({"WTecLoteCad", "--order", "000001", "--pdf", pdf, "--password", "errada"}), 1, "Senha errada");
  EXPECT_FALSE(fs::exists(pdf));
}

// --- scripts -------------------------------------------------------------------------------------------------------

constexpr const char* kTwoPrints =
    "const s = open('TfmCadLoteTec'); s.type('EdtNumero', '000001');\n"
    "s.click('BtnImprimir'); s.click('BtnImprimir');\n"
    "for (const job of jobs()) print(job.report, job.kind, job.file, job.destination);\n"
    "print(jobs().length);\n";

TEST_F(PrintCommand, AScriptPrintsIntoTheFolderItIsGiven) {
  const std::string jobs = folder_ / "saida/de hoje";
  const Ended ended = Start({"script", folder_.Write("work.js", kTwoPrints), "--database", Database(), "--jobs", jobs});
  EXPECT_EQ(ended.code, 0) << ended.errors;
  EXPECT_EQ(ended.output,
            "WTecLoteCad W " + jobs + "/WTecLoteCad-1.pdf \nWTecLoteCad W " + jobs + "/WTecLoteCad-2.pdf \n0\n");
  EXPECT_EQ(ReadText(jobs + "/WTecLoteCad-2.pdf").substr(0, 4), "%PDF");
}

TEST_F(PrintCommand, WithoutOneItLeavesNothingBehind) {
  const Ended ended =
      Start({"script", folder_.Write("work.js", kTwoPrints), "--database", Database()}, {"TMPDIR=" + (folder_ / "")});
  EXPECT_EQ(ended.code, 0) << ended.errors;
  EXPECT_NE(ended.output.find("WTecLoteCad-2.pdf"), std::string::npos) << ended.output;
  for (const auto& entry : fs::directory_iterator(folder_ / "")) {
    EXPECT_EQ(entry.path().string().find("tecelagem-jobs"), std::string::npos) << entry.path();
  }
}

TEST_F(PrintCommand, NoDisplayIsWanted) {
  const Ended ended =
      Start({"print", "WTecLoteCad", "--order", "000001", "--pdf", folder_ / "x.pdf", "--database", Database()},
            {"QT_QPA_PLATFORM=xcb", "QT_QPA_PLATFORMTHEME=gtk3", "DISPLAY=:4711"});
  EXPECT_EQ(ended.code, 0) << ended.errors;
  EXPECT_EQ(ended.errors, "");
}

TEST_F(PrintCommand, AFolderThatCannotBeIsOneLine) {
  folder_.Write("arquivo", "x");
  ExpectOneLine(
      Start({"script", folder_.Write("work.js", ""), "--database", Database(), "--jobs", folder_ / "arquivo"}), 1,
      "é um arquivo");
  ExpectOneLine(
      Start({"script", folder_.Write("work.js", ""), "--database", Database(), "--jobs", folder_ / "arquivo/dentro"}),
      1, "não pôde ser criada");
}

TEST_F(PrintCommand, WithoutTheToolkitEverythingButPrintingWorks) {
  // The program and its module alone, as on a computer where the windows were left out.
  const fs::path program = folder_ / "tecelagem";
  fs::copy_file(test::Program(), program);
  fs::copy_file(std::string(TECELAGEM_BINARY_DIR) + "/libtecelagem.so", folder_ / "libtecelagem.so");
  const Ended works =
      Start(program.string(), {"script", folder_.Write("a.js", "print('feito')"), "--database", Database()});
  EXPECT_EQ(works.code, 0) << works.errors;
  EXPECT_EQ(works.output, "feito\n");
  const Ended refused = Start(program.string(), {"print", "WTecLoteCad", "--order", "000001", "--pdf",
                                                 folder_ / "x.pdf", "--database", Database()});
  ExpectOneLine(refused, 1, "A biblioteca das janelas");
}

}  // namespace
