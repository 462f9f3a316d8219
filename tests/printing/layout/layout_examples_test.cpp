// What docs/layouts.md shows can be copied and printed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "host/errors.h"
#include "tests/printing/decoded.h"
#include "tests/printing/paper_screen.h"
#include "writeoff/label_functions.h"

namespace {

using test::PaperScreen;
using test::PictureFolder;
using test::TextOf;
using testing::HasSubstr;

// The JavaScript blocks of the page, from "```js" to "```".
std::vector<std::string> Examples() {
  std::ifstream page(std::string(TECELAGEM_SOURCE_DIR) + "/docs/layouts.md");
  std::vector<std::string> examples;
  bool within = false;
  for (std::string line; std::getline(page, line);) {
    if (line == "```js") {
      within = true;
      examples.emplace_back();
    } else if (line == "```") {
      within = false;
    } else if (within) {
      examples.back() += line + "\n";
    }
  }
  return examples;
}

class LayoutExamples : public testing::Test {
 protected:
  LayoutExamples() {
    screen_.Add("TbRolos", {"NUMERO", "ORDEM", "DT_LAN", "DESCRICAO", "LOTE", "QTDE"},
                {{{"NUMERO", "000123"},
                  {"ORDEM", 1},
                  {"DT_LAN", "2026-03-10"},
                  {"DESCRICAO", "MEIA MALHA"},
                  {"LOTE", "000123001"},
                  {"QTDE", 20.4}},
                 {{"NUMERO", "000123"},
                  {"ORDEM", 2},
                  {"DT_LAN", "2026-03-10"},
                  {"DESCRICAO", "MEIA MALHA"},
                  {"LOTE", "000123002"},
                  {"QTDE", 1200}}});
    screen_.Functions().OnUnknownFunction = [](std::string_view name, const std::vector<std::string>& arguments) {
      return writeoff::LabelFunction(name, arguments);
    };
  }

  app::printing::Printout Print(const std::string& layout, char kind = 'W') {
    std::ofstream(folder_.File(kind == 'T' ? "Exemplo.text.js" : "Exemplo.js")) << layout;
    return screen_.Print("Exemplo", kind, folder_.File(""));
  }
  std::string Refusal(const std::string& layout) {
    try {
      Print(layout);
    } catch (const host::InputError& error) {
      return error.what();
    }
    return "printed";
  }
  // What an expression of the layout is, as a text on paper.
  std::string Value(const std::string& expression) {
    return TextOf(Print("label({width: 100, height: 60, draw: () => [{text: String(" + expression + ")}]});"));
  }

  PictureFolder folder_;
  PaperScreen screen_;
};

TEST_F(LayoutExamples, EveryOneOfThePageIsPrinted) {
  int reports = 0;
  int labels = 0;
  int texts = 0;
  int items = 0;
  for (const std::string& example : Examples()) {
    SCOPED_TRACE(example);
    if (example.rfind("report(", 0) == 0) {
      const std::string paper = TextOf(Print(example));
      for (const char* part : {"Rolos", "MEIA MALHA", "20,400", "Total", "1.220,400", "Página 1 de 1"}) {
        EXPECT_THAT(paper, HasSubstr(part));
      }
      ++reports;
    } else if (example.rfind("label(", 0) == 0) {
      EXPECT_THAT(TextOf(Print(example)), HasSubstr("20,400 kg"));
      ++labels;
    } else if (example.rfind("text(", 0) == 0) {
      EXPECT_EQ(Print(example, 'T').bytes, "^XA^CI28^FO16,16^A0N,40,40^FD000123001^FS^XZ\n");
      ++texts;
    } else {
      std::istringstream lines(example);
      std::string list;
      for (std::string line; std::getline(lines, line);) list += line + ",\n";
      const auto label =
          Print("const row = TbRolos.first; label({width: 200, height: 60, draw: () => [" + list + "]});");
      EXPECT_THAT(TextOf(label), HasSubstr("20,400 kg"));
      EXPECT_EQ(label.pages.at(0).barcodes.size(), 1U);
      ++items;
    }
  }
  EXPECT_EQ(reports, 1);
  EXPECT_EQ(labels, 1);
  EXPECT_EQ(texts, 1);
  EXPECT_EQ(items, 1);
}

TEST_F(LayoutExamples, FunctionsGiveWhatThePageSays) {
  EXPECT_EQ(Value("number(1234.5, '#,##0.00')"), "1.234,50\n");
  EXPECT_EQ(Value("number(1234.5)"), "1234,5\n");
  EXPECT_EQ(Value("'[' + number(null) + ']'"), "[]\n");
  EXPECT_EQ(Value("date('2026-03-10')"), "10/03/2026\n");
  EXPECT_EQ(Value("'[' + date(null) + ']'"), "[]\n");
  EXPECT_EQ(Value("time(info.moment)"), "22:15\n");
  EXPECT_EQ(Value("encodes('itf14', '17891234567892')"), "true\n");
  EXPECT_EQ(Value("encodes('itf14', '17891234567891')"), "false\n");
  EXPECT_EQ(Value("encodes('code128', null)"), "false\n");
  EXPECT_EQ(Value("textWidth('MM', {size: 8, bold: true}) > 1"), "true\n");
  EXPECT_EQ(Value("ZeroE('12', '3')"), "012\n");
  EXPECT_EQ(Value("TiraPontos('1.2-3/4,5')"), "12345\n");
  EXPECT_EQ(Value("RemoveAcento('MAÇÃ')"), "MACA\n");
  EXPECT_EQ(Value("CHR1('65')"), "A\n");
  EXPECT_EQ(Value("TbRolos.count + ' ' + TbRolos.first.LOTE + ' ' + TbRolos.current.ORDEM"), "2 000123001 1\n");
  EXPECT_EQ(Value("typeof QryEtiqueta === 'object'"), "false\n");
}

TEST_F(LayoutExamples, ABarCodeIsMadeForTheLabelsPrinterUnlessItNamesAnother) {
  const auto dpi_of = [this](const std::string& label, const std::string& code) {
    const auto paper = Print("label({width: 100, height: 60" + label +
                             ", draw: () => [{barcode: 'qr', value: '1', w: 20, h: 20" + code + "}]});");
    return std::lround(25.4 / paper.pages.at(0).barcodes.at(0).symbol.dot);
  };
  EXPECT_EQ(dpi_of("", ""), 203);
  EXPECT_EQ(dpi_of(", dpi: 300", ""), 300);
  EXPECT_EQ(dpi_of(", dpi: 300", ", dpi: 600"), 600);
}

TEST_F(LayoutExamples, MistakesAreToldAsThePageSays) {
  const auto in_label = [this](const std::string& item) {
    return Refusal("label({width: 100, height: 60, draw: () => [\n" + item + "\n]});");
  };
  EXPECT_THAT(in_label("{text: formata(1)}"), HasSubstr("Exemplo.js, linha 2: a função \"formata\" não existe."));
  EXPECT_THAT(in_label("{text: TbRolo.count}"),
              HasSubstr("linha 2: não há conjunto de dados, função ou variável \"TbRolo\"."));
  EXPECT_THAT(in_label("{text: number(TbRolos.first.QTD, '0')}"), HasSubstr("undefined (nome de campo errado?)"));
  EXPECT_THAT(in_label("{barcode: 'ean13', value: '789', w: 40, h: 10}"),
              HasSubstr("Código de barras ean13 \"789\": tem 3 dígitos em vez de 13."));
  EXPECT_THAT(in_label("{barcode: 'ean13', value: '789123456789', w: 5, h: 10}"), HasSubstr("não cabe; precisa de"));
  EXPECT_THAT(in_label("{text: String(encodes('ean13', TbRolos.first.LOT))}"),
              HasSubstr("linha 2: o valor de encodes()"));
  EXPECT_THAT(in_label("{text: String(encodes('ean-13', '1'))}"), HasSubstr("linha 2: Código de barras ean-13"));
  EXPECT_THAT(Refusal("\n\nreport({body: [table({rows: TbRolos, columns: [{field: 'QTD'}]})]});"),
              HasSubstr("linha 3: o conjunto TbRolos não tem o campo \"QTD\"."));
}

}  // namespace
