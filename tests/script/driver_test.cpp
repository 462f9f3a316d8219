// The script driver on toy screens: every name a script knows, and every way a script can fail.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include "app/script/prelude.h"
#include "toy.h"

namespace {

using test::ToyDesk;

constexpr const char* kOpen = "const s = open('TfmBrinquedo');\n";

class ScriptDriver : public ::testing::Test {
 protected:
  // What the script printed; a failing script fails the test.
  std::string Printed(const std::string& source) {
    const auto result = desk_.Run(kOpen + source);
    EXPECT_TRUE(result.ok) << result.error;
    return desk_.output.str();
  }
  // The one line that a failing script leaves.
  std::string Error(const std::string& source) {
    const auto result = desk_.Run(source);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.error.find('\n'), std::string::npos) << result.error;
    return result.error;
  }

  ToyDesk desk_;
};

TEST_F(ScriptDriver, TypesAndReadsInputs) {
  EXPECT_EQ(Printed(R"(
    s.type("EdtNome", "Água");
    s.type("EdtPeso", 12.5);
    s.type("EdtRolos", 3);
    s.type("EdtData", "2026-03-10");
    print(s.text("EdtNome"), s.text("LblNome"), s.text("EdtPeso"), s.text("EdtData"));
    print(s.value("EdtNome"), s.value("EdtPeso") === 12.5, s.value("EdtRolos") === 3, s.value("EdtData"));
    s.type("EdtData", null);
    print(s.value("EdtData") === null);
    s.type("EdtData", "31/12/2026");
    print(s.value("EdtData"));
  )"),
            "Água nome: Água 12,500 10/03/2026\nÁgua true true 2026-03-10\ntrue\n2026-12-31\n");
}

TEST_F(ScriptDriver, NumbersKeepTheirPrecisionWhenTyped) {
  EXPECT_EQ(Printed("s.type('EdtPeso', 0.1 + 0.2); print(s.value('EdtPeso') === 0.1 + 0.2, s.text('EdtPeso'));"),
            "true 0,300\n");
}

TEST_F(ScriptDriver, SingleStepsKeepTheFocus) {
  EXPECT_EQ(Printed(R"(
    print(s.focused());
    s.enter("EdtPeso"); print(s.focused());
    s.leave("EdtNome"); print(s.focused());
    s.leave("EdtPeso"); print(s.focused());
    s.enter("TbItens"); print(s.focused()); s.leave();
  )"),
            "null\nEdtPeso\nEdtPeso\nnull\nGrdItens\n");
}

TEST_F(ScriptDriver, ARefusedExitIsFalseAndTellsItsMessage) {
  EXPECT_EQ(
      Printed(R"(
    print(s.type("EdtNome", "ruim"));
    print(messages());
    print(messages().length, s.focused());
    print(s.type("EdtNome", "bom"));
  )"),
      "false\n[{\"title\":\"Brinquedo\",\"text\":\"Nome inválido.\",\"icon\":\"information\"}]\n0 EdtNome\ntrue\n");
}

TEST_F(ScriptDriver, TextTooLongIsRefused) {
  EXPECT_EQ(Printed("print(s.type('EdtNome', 'x'.repeat(11)), messages().length, JSON.stringify(s.text('EdtNome')));"),
            "false 1 \"\"\n");
}

TEST_F(ScriptDriver, TicksChoosesAndTurnsPages) {
  EXPECT_EQ(Printed(R"(
    print(s.checked("CbTodos"), s.check("CbTodos"), s.value("CbTodos"), s.check("CbTodos", false), s.checked("CbTodos"));
    print(s.value("RgSituacao"), s.choose("RgSituacao", "Baixados"), s.text("RgSituacao"));
    print(s.choose("PgAbas", "Manutenção"), s.text("PgAbas"));
    print(s.enabled("BtnFechado"), s.enabled("BtnDobra"), s.visible("BtnDobra"), s.enabled("TbItens"));
  )"),
            "false true true true false\nPendentes true Baixados\ntrue Manutenção\nfalse true true true\n");
}

TEST_F(ScriptDriver, ClicksAndMenus) {
  EXPECT_EQ(Printed(R"(
    s.type("EdtPeso", 2.25); s.click("BtnDobra"); print(s.value("EdtPeso"));
    s.append("TbItens", {Codigo: "A"});
    s.menu("Contar Linhas"); print(messages()[0].text);
    print(s.click("BtnRecusa"), messages()[0].text);
  )"),
            "4.5\n1 linhas\nfalse Não pode.\n");
}

TEST_F(ScriptDriver, RowsOfAGrid) {
  EXPECT_EQ(
      Printed(R"(
    s.append("TbItens", {Codigo: "A", Qtde: 1.5, Entrega: "2026-01-31"});
    s.append("TbItens", {Codigo: "B", Qtde: 2});
    print(s.rows("TbItens"));
    s.select("TbItens", {Codigo: "A", Qtde: 1.5}); s.set("TbItens", {Qtde: 3});
    s.select("TbItens", 1); s.set("TbItens", {Entrega: "05/02/2026"});
    print(s.rows("GrdItens"));
    s.select("TbItens", {Entrega: "2026-01-31"}); s.remove("TbItens");
    print(s.rows("TbItens").length, s.rows("TbItens")[0].Codigo);
    s.dblclick("TbItens"); print(messages()[0].text);
  )"),
      R"([{"100":null,"Codigo":"A","Qtde":1.5,"Entrega":"2026-01-31"},{"100":null,"Codigo":"B","Qtde":2,"Entrega":null}])"
      "\n"
      R"([{"100":null,"Codigo":"A","Qtde":3,"Entrega":"2026-01-31"},{"100":null,"Codigo":"B","Qtde":2,"Entrega":"2026-02-05"}])"
      "\n1 B\nduplo em B\n");
}

TEST_F(ScriptDriver, ARowIsClicked) {
  EXPECT_EQ(Printed(R"(
    s.append("TbItens", {Codigo: "A"}); s.append("TbItens", {Codigo: "B"});
    s.click("TbItens", 0);
    print(messages().map(m => m.text));
    try { s.click("TbItens", 2); } catch (e) { print(e.message); }
  )"),
            "[\"clique em A\"]\na grade de \"TbItens\" não tem a linha 2\n");
}

TEST_F(ScriptDriver, AListOfPairsKeepsTheOrderOfCells) {
  // The column "100" would come first in an object; the refused code must come before it.
  EXPECT_EQ(Printed(R"(
    print(s.append("TbItens", [["Codigo", "X"], ["100", "azul"]]));
    print(messages()[0].text, JSON.stringify(s.rows("TbItens")[0]["100"]));
    s.key("Escape");
    print(s.rows("TbItens").length);
    s.append("TbItens", [["Codigo", "C"], ["100", "azul"]]);
    print(s.rows("TbItens")[0]["100"]);
  )"),
            "false\nCódigo X não existe. null\n0\nazul\n");
}

TEST_F(ScriptDriver, ACellCanBeTypedWithoutBeingLeft) {
  EXPECT_EQ(Printed(R"(
    s.cell("TbItens", "Codigo", "X"); print(messages().length);
    print(s.cell("TbItens", "Qtde"), messages()[0].text);
  )"),
            "0\nfalse Código X não existe.\n");
}

TEST_F(ScriptDriver, AnswersServeOnceAndByText) {
  EXPECT_EQ(Printed(R"(
    answer("Deseja excluir", "yes"); answer("Deseja excluir", false);
    s.click("BtnPergunta"); s.click("BtnPergunta");
    print(messages().map(m => m.text).join("|"));
  )"),
            "Deseja excluir tudo?|sim|Deseja excluir tudo?|não\n");
  EXPECT_EQ(desk_.notes.str(), "");
}

TEST_F(ScriptDriver, AQuestionNobodyExpectedGetsNoAndIsTold) {
  EXPECT_EQ(Printed("s.click('BtnPergunta'); print(messages()[1].text);"), "não\n");
  EXPECT_EQ(desk_.notes.str(), "sem resposta preparada: pergunta \"Deseja excluir tudo?\"\n");
}

TEST_F(ScriptDriver, LookupsByKeyAndByName) {
  EXPECT_EQ(Printed(R"(
    lookup("PqNome", "0002"); s.enter("EdtNome"); s.key("F4"); print(s.text("EdtNome"));
    lookup("PqNome", "0001"); s.search("PqNome"); print(s.text("EdtNome"));
  )"),
            "0002\n0001\n");
}

TEST_F(ScriptDriver, LookupsByColumns) {
  EXPECT_EQ(Printed(R"(
    const pick = (row) => { lookup("PqPreco", row); s.search("PqPreco"); print(s.text("EdtNome")); };
    pick({CODIGO: "M1", CODCLI: "00101", COR: "02"});
    pick({codcli: "00102"});
    pick([["COR", "02"]]);
    pick({CODIGO: "M1"});
    pick("M1");
  )"),
            "00101/02\n00102/0\n00101/02\n00101/0\n00101/0\n");
  EXPECT_EQ(desk_.notes.str(), "");
}

TEST_F(ScriptDriver, ALookupWithoutSuchARowIsToldAndGivenUp) {
  EXPECT_EQ(Printed(R"(
    s.type("EdtNome", "antes");
    lookup("PqPreco", {CODIGO: "M1", COR: "77"}); s.search("PqPreco"); print(s.text("EdtNome"));
  )"),
            "antes\n");
  EXPECT_EQ(desk_.notes.str(), "sem resposta preparada: pesquisa PqPreco sem {CODIGO: \"M1\", COR: \"77\"}\n");
}

TEST_F(ScriptDriver, ALookupByNoSuchColumnIsAMistakeOfTheScript) {
  const std::string open = kOpen;
  EXPECT_NE(Error(open + "lookup('PqPreco', {PRECO: 5}); s.search('PqPreco');").find("não tem a coluna \"PRECO\""),
            std::string::npos);
  EXPECT_NE(Error(open + "lookup('PqPreco', {});").find("ao menos uma coluna"), std::string::npos);
  EXPECT_NE(Error(open + "lookup('PqPreco', {COR: undefined});").find("undefined"), std::string::npos);
  EXPECT_NE(Error(open + "lookup('PqPreco', {COR: '02'});").find("escolha {COR: \"02\"} em PqPreco"),
            std::string::npos);
}

TEST_F(ScriptDriver, WhatABoxRefusesFailsTheScriptWithItsSentence) {
  EXPECT_EQ(Printed("answer('nota', '1234'); s.click('BtnNota'); print(messages()[0].text);"), "nota 1234\n");
  const std::string open = kOpen;
  EXPECT_EQ(Error(open + "answer('nota', '12345');\ns.click('BtnNota');"),
            "teste.js:3: No máximo 4 caracteres; o texto tem 5.");
  EXPECT_NE(Error(open + "answer('nota', '1✓'); s.click('BtnNota');").find("✓"), std::string::npos);
  EXPECT_EQ(Printed(R"(
    answer("nota", "12345");
    try { s.click("BtnNota"); } catch (refused) { print(refused.message); }
    print(messages()[0].text);
  )"),
            "No máximo 4 caracteres; o texto tem 5.\nsem nota\n");
}

TEST_F(ScriptDriver, ChoosesAFile) {
  const std::string path = testing::TempDir() + "preços de teste.csv";
  std::ofstream(path, std::ios::binary) << "M1;5,10";
  EXPECT_EQ(Printed("chooseFile('Importar', '" + path + "'); s.click('BtnArquivo'); print(messages()[0].text);"),
            "preços de teste.csv: M1;5,10\n");
  EXPECT_EQ(Printed("chooseFile('Importar', null); s.click('BtnArquivo'); print(messages()[0].text);"),
            "sem arquivo\n");
  EXPECT_EQ(desk_.notes.str(), "");
  EXPECT_EQ(Printed("s.click('BtnArquivo'); print(messages()[0].text);"), "sem arquivo\n");
  EXPECT_EQ(desk_.notes.str(), "sem resposta preparada: arquivo \"Importar preços\"\n");
  std::ofstream(path, std::ios::binary) << "M1;5,10\nM2;5,20\nM3;5,30";
  const std::string open = kOpen;
  EXPECT_EQ(Error(open + "chooseFile('Importar', '" + path + "');\ns.click('BtnArquivo');"),
            "teste.js:3: O arquivo \"" + path + "\" tem mais de 20 bytes, o máximo aqui.");
  EXPECT_EQ(Error(open + "chooseFile('Importar', '/nada/nada.csv'); s.click('BtnArquivo');"),
            "teste.js:2: O arquivo \"/nada/nada.csv\" não pôde ser lido.");
  EXPECT_NE(Error(open + "chooseFile('Importar');").find("chooseFile quer o caminho"), std::string::npos);
  EXPECT_NE(Error(open + "chooseFile('Exportar', 'x.csv');").find("arquivo \"x.csv\" a \"Exportar\""),
            std::string::npos);
  std::remove(path.c_str());
}

TEST_F(ScriptDriver, TabGoesOnWhereTheInputSays) {
  EXPECT_EQ(Printed(R"(
    s.enter("EdtObs"); s.key("Tab"); print(s.focused());
    s.enter("EdtObs"); s.key("Enter"); print(s.focused());
    s.enter("EdtObs"); s.click("BtnDobra"); print(s.focused());
  )"),
            "BtnConfirma\nBtnConfirma\nBtnDobra\n");
}

TEST_F(ScriptDriver, ActsOnAModalScreen) {
  EXPECT_EQ(Printed(R"(
    modal("TfmAjuda", h => { print(h.name, screen("fmAjuda") === h); h.type("EdtResposta", "42"); h.click("BtnOk"); });
    s.click("BtnAjuda");
    print(s.text("EdtNome"), screen("fmAjuda"));
  )"),
            "fmAjuda true\n42 null\n");
}

TEST_F(ScriptDriver, AScreenIsOneObjectUntilItIsClosed) {
  EXPECT_EQ(Printed(R"(
    print(open("TfmBrinquedo") === s, screen("fmBrinquedo") === s, screen("TfmBrinquedo") === s, screen("fmOutra"));
    print(s.close(), screen("fmBrinquedo"));
    try { s.text("EdtNome"); } catch (e) { print(e.message); }
  )"),
            "true true true null\ntrue null\na tela TfmBrinquedo já foi fechada\n");
}

TEST_F(ScriptDriver, ClockFormatAndJobs) {
  EXPECT_EQ(Printed(R"(
    print(clock("2026-03-10 22:15:00"), clock());
    print(format(1234.5, "0.000"), format(2.005, "0.00"), format(3, "0"));
    print(jobs());
  )"),
            "2026-03-10 22:15:00 2026-03-10 22:15:00\n1234,500 2,01 3\n[]\n");
}

TEST_F(ScriptDriver, JobsAreThoseSinceTheLastCall) {
  desk_.application.jobs = {{"WTecLoteCad", 'W', "/tmp/ordem.pdf", ""}, {"WEtqTecRolo", 'T', "", "10.0.0.7:9100"}};
  EXPECT_EQ(Printed("print(jobs()); print(jobs().length);"),
            "[{\"report\":\"WTecLoteCad\",\"kind\":\"W\",\"file\":\"/tmp/ordem.pdf\",\"destination\":\"\"},"
            "{\"report\":\"WEtqTecRolo\",\"kind\":\"T\",\"file\":\"\",\"destination\":\"10.0.0.7:9100\"}]\n0\n");
}

TEST_F(ScriptDriver, WaitingLetsWhatArrivesBeDealtWith) {
  // What a device sends comes through the event loop; here a timer stands for it.
  bool arrived = false;
  QTimer::singleShot(50, [&arrived] { arrived = true; });
  QElapsedTimer time;
  time.start();
  EXPECT_EQ(Printed("print(wait(0)); print(wait(0.2));"), "true\ntrue\n");
  EXPECT_TRUE(arrived);
  EXPECT_GE(time.elapsed(), 200);
  EXPECT_LT(time.elapsed(), 2000);
}

TEST_F(ScriptDriver, WhatItWasGivenAndWhatItThrows) {
  app::script::RunOptions options{"teste.js", std::chrono::milliseconds(0), desk_.output, desk_.notes, {}};
  options.given = {{"order", "000123"}, {"mill", "São João"}};
  const auto result =
      app::script::Run(desk_.application, desk_.person, "throw `${given.mill}: ${given.order}`;", options);
  EXPECT_FALSE(result.ok);
  EXPECT_EQ(result.error, "teste.js:1: São João: 000123");
  EXPECT_EQ(result.thrown, "São João: 000123");
  EXPECT_EQ(Printed("print(given);"), "{}\n");
}

TEST_F(ScriptDriver, WaitingIsBounded) {
  for (const char* wrong : {"wait(-1)", "wait(601)", "wait()", "wait('x')", "wait(1 / 0)"}) {
    EXPECT_NE(Error(wrong).find("wait quer de 0 a 600 segundos"), std::string::npos) << wrong;
  }
  const auto result = desk_.Run("wait(30)", std::chrono::milliseconds(200));
  EXPECT_FALSE(result.ok);
  EXPECT_NE(result.error.find("o tempo de 0.2 s acabou"), std::string::npos) << result.error;
}

// --- ways to fail ------------------------------------------------------------------------------------------------

TEST_F(ScriptDriver, ErrorsNameFileAndLine) {
  EXPECT_EQ(Error("\n\n  throw new Error('acabou\\naqui')"), "teste.js:3: acabou aqui");
  EXPECT_EQ(Error("let a = 1;\nb.c = 2"), "teste.js:2: ReferenceError: b is not defined");
  EXPECT_EQ(Error("let a = 1;\nlet b = ;").substr(0, 24), "teste.js:2: SyntaxError:");
  EXPECT_EQ(Error("\nthrow 'texto'"), "teste.js:2: texto");
}

TEST_F(ScriptDriver, APlaceIsTheScriptsOwnLine) {
  const std::string open = kOpen;
  EXPECT_EQ(Error(open + "function f() {\n  s.click('BtnNada');\n}\nf();"),
            "teste.js:3: não há componente \"BtnNada\" na tela TfmBrinquedo");
}

TEST_F(ScriptDriver, WhatAPersonCannotDoIsAnError) {
  const std::string open = kOpen;
  EXPECT_EQ(Error(open + "s.click('BtnFechado')"), "teste.js:2: BtnFechado está desabilitado");
  EXPECT_EQ(Error(open + "s.click('EdtNome')"),
            "teste.js:2: o componente \"EdtNome\" na tela TfmBrinquedo não é um botão");
  EXPECT_EQ(Error(open + "s.rows('TbNada')"), "teste.js:2: nenhuma grade mostra \"TbNada\" na tela TfmBrinquedo");
  EXPECT_EQ(Error(open + "s.append('TbItens', {Escondido: 'x'})"),
            "teste.js:2: a grade de \"TbItens\" não mostra \"Escondido\"");
  EXPECT_EQ(Error(open + "s.select('TbItens', {Codigo: 'Z'})"),
            "teste.js:2: a grade de \"TbItens\" não tem linha {Codigo: Z}");
  EXPECT_EQ(Error(open + "s.select('TbItens', 0)"), "teste.js:2: a grade de \"TbItens\" não tem a linha 0");
  EXPECT_EQ(Error(open + "s.key('F13')"), "teste.js:2: tecla desconhecida: F13");
  EXPECT_EQ(Error("open('TfmNada')"), "teste.js:1: Tela desconhecida: TfmNada.");
}

TEST_F(ScriptDriver, ValuesThatNobodyCanType) {
  const std::string open = kOpen;
  EXPECT_EQ(Error(open + "s.type('EdtPeso', 1/0)"), "teste.js:2: número inválido: Infinity");
  EXPECT_EQ(Error(open + "s.type('EdtPeso', 0/0)"), "teste.js:2: número inválido: NaN");
  EXPECT_EQ(Error(open + "s.type('EdtNome')"), "teste.js:2: valor não informado (undefined)");
  EXPECT_EQ(Error(open + "clock('ontem')"), "teste.js:2: clock quer \"AAAA-MM-DD HH:MM:SS\", veio \"ontem\"");
  EXPECT_EQ(Error("modal('TfmAjuda', 1)"),
            "teste.js:1: TypeError: modal precisa de uma função: modal(tela, s => { ... })");
}

TEST_F(ScriptDriver, AnUncaughtErrorOfTheProgramIsAnException) {
  const std::string open = kOpen;
  EXPECT_EQ(Error(open + "s.click('BtnFalha')"), "teste.js:2: o disco caiu");
  EXPECT_EQ(Printed("try { s.click('BtnFalha'); } catch (e) { print('pego'); } print(messages()[0].icon);"),
            "pego\nerror\n");
}

TEST_F(ScriptDriver, AssertionsFailEvenWhenCaught) {
  EXPECT_EQ(Error("assert(1 === 1);\nassert(1 > 2, 'um não é maior')"), "teste.js:2: um não é maior");
  EXPECT_EQ(Error("\nassertEqual(2, '2', 'dois')"), "teste.js:2: dois: veio 2, esperava \"2\"");
  EXPECT_EQ(Error("try { assert(false, 'escondida'); } catch (e) {}"), "teste.js: escondida");
  EXPECT_EQ(Printed("assertEqual([{a: 1}], [{a: 1}]); assertEqual(null, null); assertEqual(0.5, 0.5); print('fim');"),
            "fim\n");
  EXPECT_NE(Error("assertEqual(undefined, null)"), "");
  EXPECT_NE(Error("assertEqual([1], [2])"), "");
}

TEST_F(ScriptDriver, WhatWasPreparedAndNeverAskedForFails) {
  EXPECT_EQ(Error("answer('Deseja', 'yes')"), "teste.js: preparado e nunca pedido: resposta \"yes\" a \"Deseja\"");
}

TEST_F(ScriptDriver, AThrowInsideAModalScreenEndsTheScriptAtItsOwnLine) {
  const std::string open = kOpen;
  EXPECT_EQ(Error(open + "modal('TfmAjuda', h => {\n  h.click('BtnNada');\n});\ns.click('BtnAjuda');\nprint('tarde');"),
            "teste.js:3: não há componente \"BtnNada\" na tela TfmAjuda");
  EXPECT_EQ(desk_.output.str(), "");
  EXPECT_EQ(desk_.application.GetDesk().Modal(), nullptr);
}

TEST_F(ScriptDriver, AThrownNumberInsideAModalScreenIsNotLost) {
  const std::string open = kOpen;
  EXPECT_EQ(Error(open + "modal('TfmAjuda', h => { throw 5; });\ns.click('BtnAjuda');").substr(0, 9), "teste.js:");
  EXPECT_EQ(Printed("modal('TfmAjuda', h => { throw 5; }); try { s.click('BtnAjuda'); } catch (e) { print(e); }"),
            "5\n");
}

TEST_F(ScriptDriver, OtherScreensWaitForTheModalOne) {
  const std::string open = kOpen;
  EXPECT_EQ(Error(open + "modal('TfmAjuda', h => { s.click('BtnDobra'); });\ns.click('BtnAjuda');"),
            "teste.js:2: a tela \"Ajuda\" espera ser fechada");
}

TEST_F(ScriptDriver, AnEndlessLoopIsEnded) {
  const auto start = std::chrono::steady_clock::now();
  const auto result = desk_.Run("while (true) {}", std::chrono::milliseconds(200));
  EXPECT_FALSE(result.ok);
  EXPECT_EQ(result.error, "teste.js: o tempo de 0.2 s acabou");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST_F(ScriptDriver, AnEndlessLoopInAModalScreenIsEnded) {
  const auto result =
      desk_.Run(std::string(kOpen) + "modal('TfmAjuda', h => { while (true) {} }); s.click('BtnAjuda');",
                std::chrono::milliseconds(200));
  EXPECT_EQ(result.error, "teste.js: o tempo de 0.2 s acabou");
}

TEST_F(ScriptDriver, ALimitThatIsNotReachedDoesNothing) {
  EXPECT_TRUE(desk_.Run("print(1)", std::chrono::seconds(30)).ok);
}

// --- the manual ----------------------------------------------------------------------------------------------------

TEST(ScriptManual, HasEveryNameThatAScriptKnows) {
  std::ifstream file(std::string(TECELAGEM_SOURCE_DIR) + "/docs/scripting.md");
  const std::string manual{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const std::string prelude = app::script::kPrelude;
  const auto expect_named = [&](const std::regex& pattern, const std::string& before) {
    std::size_t found = 0;
    for (std::sregex_iterator at(prelude.begin(), prelude.end(), pattern), end; at != end; ++at, ++found) {
      const std::string name = before + (*at)[1].str();
      EXPECT_NE(manual.find("`" + name), std::string::npos) << name;
    }
    return found;
  };
  EXPECT_GT(expect_named(std::regex("define\\(\"(\\w+)\""), ""), 10u);
  EXPECT_GT(expect_named(std::regex("\n    (?!constructor)(\\w+)\\([^)]*\\) \\{"), "s."), 20u);
}

}  // namespace
