// Every mistake in a layout is told in one sentence with file and line.
#include <gmock/gmock.h>

#include <chrono>
#include <ostream>

#include "tests/printing/layout_fixture.h"

namespace {

using testing::HasSubstr;

class BadLayout : public test::LayoutTest {};

TEST_F(BadLayout, NotUtf8) {
  EXPECT_EQ(Refusal("// um\n// ok\n// a\xE7\xE3o\nreport({ body: [] });"), "linha 3: o arquivo não está em UTF-8.");
}

TEST_F(BadLayout, AByteOrderMarkIsNoMistake) {
  EXPECT_EQ(test::TextOf(Printed("\xEF\xBB\xBFreport({ pageFooter: null, body: [paragraph('a')] });")), "a\n");
}

TEST_F(BadLayout, Syntax) {
  EXPECT_THAT(Refusal("report({\n  body: [paragraph('a') paragraph('b')]\n});"),
              HasSubstr("linha 2: erro de sintaxe: "));
  EXPECT_THAT(Refusal("report({\n body: [\n"), HasSubstr("erro de sintaxe: "));
}

TEST_F(BadLayout, NothingOrTooMuchIsCalled) {
  EXPECT_EQ(Refusal(""), ": o arquivo precisa chamar report(), label() ou text().");
  EXPECT_EQ(Refusal("const a = 1;\n"), ": o arquivo precisa chamar report(), label() ou text().");
  EXPECT_EQ(Refusal("report({ body: [] });\n\nreport({ body: [] });"),
            "linha 3: só pode haver uma chamada de report(), label() ou text().");
  EXPECT_EQ(Refusal("report({ body: [] });\nlabel({ width: 10, height: 10, draw: () => [] });"),
            "linha 2: só pode haver uma chamada de report(), label() ou text().");
}

TEST_F(BadLayout, TheWrongKindIsCalled) {
  EXPECT_EQ(Refusal("\nreport({ body: [] });", 'T'), "linha 2: um leiaute de texto precisa chamar text().");
  EXPECT_EQ(Refusal("\ntext({ write: () => '' });"), "linha 2: um leiaute gráfico precisa chamar report() ou label().");
}

TEST_F(BadLayout, TheEnginesOwnErrors) {
  EXPECT_THAT(Refusal("const row = null;\nreport({\n  body: [paragraph(row.Nome)] });"),
              HasSubstr("linha 3: TypeError: "));
  EXPECT_THAT(Refusal("function f() { return f() + 1; }\nf();"), HasSubstr("linha 1: RangeError: "));
}

TEST_F(BadLayout, WhatTheLayoutThrowsItself) {
  EXPECT_EQ(Refusal("\nthrow new Error('Falta o conjunto X');"), "linha 2: Falta o conjunto X.");
  EXPECT_EQ(Refusal("\n\nthrow 'sem motivo';"), "linha 3: sem motivo.");
  EXPECT_EQ(Refusal("throw new Error('duas\\nlinhas');"), "linha 1: duas linhas.");
  EXPECT_EQ(Refusal("label({ width: 10, height: 10,\n draw: () => { throw 'na etiqueta'; } });"),
            "linha 1: na etiqueta.");
}

TEST_F(BadLayout, AMistakeInAFunctionThatRunsLaterKnowsItsLine) {
  AddRows(3);
  EXPECT_EQ(Refusal("report({ body: [\n table({ rows: TbLista, columns: [\n  { caption: 'A', value: r =>\n"
                    "    Errada(r) }] })] });"),
            "linha 4: a função \"Errada\" não existe.");
  EXPECT_EQ(Refusal("report({ body: [],\n pageHeader: p => [\n  band({ items: [{ texto: 'a' }] })] });"),
            "linha 3: o item 1 de band() precisa de \"text\", \"line\", \"box\" ou \"barcode\".");
}

struct Wrong {
  const char* body;
  const char* told;

  friend void PrintTo(const Wrong& wrong, std::ostream* out) { *out << wrong.body; }
};

// Each stands in line 3 of a report's body.
class WrongBlock : public test::LayoutTest, public testing::WithParamInterface<Wrong> {};

TEST_P(WrongBlock, IsToldWithItsLine) {
  AddRows(2);
  EXPECT_EQ(Refusal("report({\n  body: [\n    " + std::string(GetParam().body) + "\n  ]\n});"),
            "linha 3: " + std::string(GetParam().told));
}

const Wrong kWrongBlocks[] = {
    {"band()", "band() precisa de um objeto {...}, e tem undefined."},
    {"band({ itens: [] })", "band() não conhece a propriedade \"itens\"."},
    {"band({ items: ['a'] })", "o item 1 de band() precisa de um objeto {...}, e tem \"a\"."},
    {"band({ items: [{ text: 'a', x: '1' }] })",
     "o item 1 de band(): \"x\" precisa ser um número de -5000 a 5000, e é \"1\"."},
    {"band({ items: [{ text: 'a' }, { text: TbLista.first.Nada }] })",
     "o item 2 de band(): \"text\" não tem valor (undefined); o nome do campo está certo?"},
    {"band({ items: [{ text: {} }] })",
     "o item 1 de band(): \"text\" precisa ser um texto ou um número, e é um objeto."},
    {"band({ items: [{ text: 'a', align: 'meio' }] })",
     "o item 1 de band(): \"align\" precisa ser um de \"left\", \"center\", \"right\", e é \"meio\"."},
    {"band({ items: [{ text: 'a', bold: 1 }] })", "o item 1 de band(): \"bold\" precisa ser true ou false, e é 1."},
    {"band({ items: [{ text: 'a', color: 'azulado' }] })",
     "o item 1 de band(): \"color\" precisa ser uma cor como \"#eeeeee\" ou \"black\", e é \"azulado\"."},
    {"band({ items: [{ line: [1, 2, 3] }] })",
     "o item 1 de band(): \"line\" precisa ser uma lista de 4 números, e é uma lista."},
    {"band({ items: [{ text: 'a', x: 0 / 0 }] })",
     "o item 1 de band(): \"x\" precisa ser um número de -5000 a 5000, e é NaN."},
    {"paragraph()", "o texto de paragraph() não tem valor (undefined); o nome do campo está certo?"},
    {"paragraph('a', { tamanho: 3 })", "paragraph() não conhece a propriedade \"tamanho\"."},
    {"fields('a')", "fields() precisa de uma lista de pares [[\"legenda\", valor], ...]."},
    {"fields([['a', undefined]])",
     "o valor de \"a\" em fields() não tem valor (undefined); o nome do campo está certo?"},
    {"space('1')", "space() precisa de um número de milímetros."},
    {"keepTogether(['texto'])", "a parte 1 da lista não é um bloco, como band(), table() ou paragraph()."},
    {"table({ columns: [{ field: 'NOME' }] })",
     "table(): \"rows\" precisa ser um conjunto de dados ou uma lista de linhas, e é undefined."},
    {"table({ rows: 5, columns: [{ field: 'NOME' }] })",
     "\"rows\" precisa ser um conjunto de dados ou uma lista de linhas."},
    {"table({ rows: TbLista })", "table(): \"columns\" precisa ser uma lista de colunas, e é undefined."},
    {"table({ rows: TbLista, columns: [{ caption: 'A' }] })",
     "a coluna 1 de table() precisa de \"field\" ou de \"value\", um dos dois."},
    {"table({ rows: TbLista, columns: [{ field: 'NADA' }] })", "o conjunto TbLista não tem o campo \"NADA\"."},
    {"table({ rows: TbLista.rows, columns: [{ field: 'NADA' }] })", "as linhas não têm o campo \"NADA\"."},
    {"table({ rows: TbLista, columns: [{ field: 'NOME', width: 300 }] })",
     "as colunas da tabela somam 300 mm e a página tem 190 mm."},
    {"table({ rows: TbLista, columns: [{ field: 'NOME', width: 189 }, { field: 'QTDE' }] })",
     "não sobra lugar para a coluna \"Qtde\" da tabela."},
    {"table({ rows: TbLista, columns: [{ field: 'NOME', width: 'x' }] })",
     "a coluna 1 de table(): \"width\" precisa ser um número de milímetros, \"*\" ou uma parte como \"2*\", e é "
     "\"x\"."},
    {"table({ rows: TbLista, columns: [{ field: 'NOME', total: true }] })",
     "a coluna \"Nome\" tem total e o valor \"R001\", que não é um número."},
    {"table({ rows: TbLista, columns: [{ field: 'QTDE', format: 'x' }] })",
     "o formato de número \"x\" não tem \"0\" nem \"#\"."},
    {"table({ rows: TbLista, columns: [{ caption: 'A', value: r => r.Nada }] })",
     "o valor da coluna \"A\" não tem valor (undefined); o nome do campo está certo?"},
    {"table({ rows: TbLista, columns: [{ field: 'NOME' }], group: { by: 'NADA' } })",
     "o conjunto TbLista não tem o campo \"NADA\"."},
    {"detail({ rows: TbLista })", "detail(): \"band\" precisa ser uma função, e é undefined."},
    {"detail({ rows: TbLista, band: r => 'x' })",
     "a parte 1 da lista não é um bloco, como band(), table() ou paragraph()."},
    {"paragraph(number('1'))", "number() precisa de um número, e tem \"1\"."},
    {"paragraph(date(TbLista.first.Dia))",
     "date() precisa de um texto como \"2026-03-10\", e tem undefined (nome de campo errado?)."},
    {"paragraph(TbLista.shown(TbLista.first, 'Nada'))", "o conjunto TbLista não tem o campo \"Nada\"."},
};
INSTANTIATE_TEST_SUITE_P(Blocks, WrongBlock, testing::ValuesIn(kWrongBlocks));

TEST_F(BadLayout, RootsNeedTheirParts) {
  EXPECT_EQ(Refusal("report();"), "linha 1: report() precisa de um objeto {...}, e tem undefined.");
  EXPECT_EQ(Refusal("report({});"), "linha 1: report(): \"body\" precisa ser uma lista de blocos, e é undefined.");
  EXPECT_EQ(Refusal("report({ body: [], pagina: 1 });"), "linha 1: report() não conhece a propriedade \"pagina\".");
  EXPECT_EQ(Refusal("report({ body: [], page: { size: 'A9' } });"),
            "linha 1: \"page\" de report(): \"size\" precisa ser um de \"A3\", \"A4\", \"A5\", \"Letter\", \"Legal\", "
            "e é \"A9\".");
  EXPECT_EQ(Refusal("report({ body: [], page: { margins: [100, 10, 105, 10] } });"),
            "linha 1: \"page\" de report(): as margens não deixam lugar na página.");
  EXPECT_EQ(Refusal("label({ height: 60, draw: () => [] });"),
            "linha 1: label(): \"width\" precisa ser um número de milímetros, e é undefined.");
  EXPECT_EQ(Refusal("label({ width: 100, height: 60 });"),
            "linha 1: label(): \"draw\" precisa ser uma função, e é undefined.");
  EXPECT_EQ(Refusal("text({ encoding: 'latin1', write: () => '' });", 'T'),
            "linha 1: text(): \"encoding\" precisa ser \"utf-8\", \"windows-1252\" ou \"cp850\", e é \"latin1\".");
}

TEST_F(BadLayout, ABarCodeThatCannotBe) {
  const std::string told = Refusal(
      "label({ width: 100, height: 60, draw: () => [\n"
      "  { barcode: 'ean13', value: '12A', x: 0, y: 0, w: 50, h: 20 }] });");
  EXPECT_THAT(told, HasSubstr("linha 1: "));
  EXPECT_THAT(told, HasSubstr("ean13"));
  EXPECT_THAT(told, HasSubstr("12A"));
  EXPECT_THAT(Refusal("\nreport({ body: [band({ items: [\n"
                      "{ barcode: 'code128', value: 'ABCDEFGHIJKLMNOP', x: 0, y: 0, w: 5, h: 20 }] })] });"),
              HasSubstr("linha 2: "));
}

TEST_F(BadLayout, AnEndlessLoopIsEnded) {
  WriteLayout("Teste.js", "\nwhile (true) {}\n");
  const auto start = std::chrono::steady_clock::now();
  try {
    screen_.Print("Teste", 'W', Folder(), std::chrono::milliseconds(300));
    ADD_FAILURE() << "printed";
  } catch (const host::InputError& error) {
    EXPECT_EQ(error.what(),
              "Erro no leiaute " + LayoutPath("Teste.js") + ": o leiaute não terminou em 0,3 s (um laço sem fim?).");
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(BadLayout, AnEndlessLoopInARowsFunctionNamesTheBlock) {
  AddRows(1);
  WriteLayout("Teste.js",
              "report({\n body: [\n  table({ rows: TbLista, columns: [{ caption: 'A', value: r => { for (;;) {} } }]"
              " })] });");
  try {
    screen_.Print("Teste", 'W', Folder(), std::chrono::milliseconds(300));
    ADD_FAILURE() << "printed";
  } catch (const host::InputError& error) {
    EXPECT_THAT(error.what(), HasSubstr("Teste.js, linha 3: o leiaute não terminou"));
  }
}

// Each row keeps the layout busy for a while, but never long in one go.
TEST_F(BadLayout, ALongListIsNoEndlessLoop) {
  AddRows(40);
  WriteLayout("Teste.js",
              "const wait = () => { const end = Date.now() + 20; while (Date.now() < end) {} return 'x'; };\n"
              "report({ body: [table({ rows: TbLista, columns: [{ caption: 'A', value: wait }] })] });");
  EXPECT_EQ(screen_.Print("Teste", 'W', Folder(), std::chrono::milliseconds(400)).tables.at(0).rows.size(), 40u);
}

TEST_F(BadLayout, MoreThanPaperIsFor) {
  EXPECT_EQ(Refusal("report({\n body: [[...Array(21000).keys()].map(() => newPage()).map((b, n) => [paragraph(n), b])]"
                    " });"),
            "linha 2: o relatório passa de 20.000 páginas.");
  EXPECT_EQ(Refusal("label({ width: 10, height: 10, rows: Array(20001).fill(0), draw: () => [] });"),
            "linha 1: são mais de 20.000 etiquetas.");
  EXPECT_EQ(Refusal("report({ body:\n [paragraph('x'.repeat(300000))] });"),
            "linha 2: o texto de paragraph() é um texto longo demais.");
  EXPECT_EQ(Refusal("const a = []; a.push(a);\nreport({ body: a });"),
            "linha 2: as listas estão uma dentro da outra sem fim.");
}

TEST_F(BadLayout, NothingElseBreaks) {
  AddRows(2);
  Refusal("while (nada.x) {}");
  EXPECT_EQ(test::TextOf(Blocks("paragraph(TbLista.count)", "pageFooter: null,")), "2\n");
}

}  // namespace
