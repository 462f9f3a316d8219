// The roll's label as it leaves the printer: what it tells, that it can be scanned, that nothing runs into anything.
#include <gmock/gmock.h>

#include <regex>
#include <string>
#include <vector>

#include "app/printing/page/pdf.h"
#include "tests/printing/decoded.h"
#include "tests/printing/layout/roll_label.h"

namespace test {
namespace {

using app::printing::Printout;
using testing::HasSubstr;
using testing::Not;
using testing::UnorderedElementsAre;

INSTANTIATE_TEST_SUITE_P(Rolls, OddRollLabel, testing::ValuesIn(OddRolls()));

TEST_F(RollLabel, TellsTheRoll) {
  const Printout label = Drawn();
  ASSERT_EQ(label.pages.size(), 1U);
  EXPECT_DOUBLE_EQ(label.width, 100);
  EXPECT_DOUBLE_EQ(label.height, 60);
  const std::string text = TextOf(label);
  for (const char* part :
       {"TECELAGEM SÃO JOSÉ LTDA", "Ordem 000123", "ROLO 12", "MEIA MALHA LISTRADA FIO TINTO", "M0111",
        "Cor L01 LISTRADO MARINHO/BRANCO", "49% ALGODÃO", "1,70 m", "185 g/m²", "PESO LÍQUIDO", "20,400 kg",
        "000123012", "10/03/2026", "00012 JOÃO DA CONCEIÇÃO", "03 CIRCULAR 30 POL"}) {
    EXPECT_THAT(text, HasSubstr(part));
  }
}

TEST_F(RollLabel, ItsCodesAreReadBackAtBothPrintersResolutions) {
  const PictureFolder folder;
  const Printout label = Drawn();
  for (const int dpi : {203, 300, 600}) {
    const std::string file = folder.File(std::to_string(dpi) + ".png");
    WritePage(label, 0, dpi, file);
    EXPECT_THAT(Decoded(file), UnorderedElementsAre("CODE-128:000123012", "I2/5:07891234501127",
                                                    "QR-Code:LOTE 000123012 PESO 20.400 KG"))
        << dpi;
  }
}

TEST_F(RollLabel, ItsCodesAreReadBackFromThePdfAndItsTextFound) {
  const PictureFolder folder;
  app::printing::WritePdf(Drawn(), folder.File("label.pdf"));
  OutputOf("pdftoppm -r 300 -png '" + folder.File("label.pdf") + "' '" + folder.File("page") + "'");
  EXPECT_THAT(Decoded(folder.File("page-1.png")), UnorderedElementsAre("CODE-128:000123012", "I2/5:07891234501127",
                                                                       "QR-Code:LOTE 000123012 PESO 20.400 KG"));
  const std::string text = OutputOf("pdftotext -layout '" + folder.File("label.pdf") + "' -");
  EXPECT_THAT(text, HasSubstr("JOÃO DA CONCEIÇÃO"));
  EXPECT_THAT(text, HasSubstr("20,400 kg"));
}

TEST_F(RollLabel, WeightAndLotAreReadAtArmsLength) {
  const Printout label = Drawn();
  for (const auto& item : label.pages[0].texts) {
    if (item.text != "20,400 kg" && item.text != "000123012") continue;
    EXPECT_GE(label.styles[item.style].size, 20) << item.text;
  }
}

TEST_P(OddRollLabel, NothingRunsIntoAnything) {
  const Printout label = Drawn();
  ASSERT_EQ(label.pages.size(), 1U);
  EXPECT_EQ(Collisions(label, 0), "");
  for (const auto& code : label.pages[0].barcodes) {
    const auto& symbol = code.symbol;
    const double left = symbol.x * symbol.dot;
    const double top = symbol.y * symbol.dot;
    const double right = left + symbol.width * symbol.dot;
    const double bottom = top + symbol.height * symbol.dot;
    EXPECT_TRUE(left >= 0 && top >= 0 && right <= 100 && bottom <= 60) << code.kind;
    for (const auto& text : label.pages[0].texts) {
      const bool apart = text.x + text.width <= left + 0.2 || right <= text.x + 0.2 ||
                         text.y + text.height <= top + 0.2 || bottom <= text.y + 0.2;
      EXPECT_TRUE(apart) << code.kind << " and " << text.text;
    }
  }
}

TEST_P(OddRollLabel, WhatItBearsAsCodesIsReadBack) {
  const PictureFolder folder;
  const Printout label = Drawn();
  WritePage(label, 0, 203, folder.File("label.png"));
  EXPECT_EQ(Decoded(folder.File("label.png")).size(), label.pages[0].barcodes.size());
  for (const auto& code : label.pages[0].barcodes) {
    EXPECT_THAT(Decoded(folder.File("label.png")), testing::Contains(HasSubstr(":" + code.value))) << code.kind;
  }
}

TEST_F(RollLabel, ALotThatNoScannerReadsHasNoBarCodeButIsWritten) {
  Roll(With(UsualRoll(), {{"LOTE", "LOTE-Ç"}}));
  const Printout label = Drawn();
  for (const auto& code : label.pages[0].barcodes) EXPECT_NE(code.kind, "code128");
  EXPECT_THAT(TextOf(label), HasSubstr("LOTE-Ç"));
}

TEST_F(RollLabel, ArticleNumberOnlyWhenItIsOne) {
  const auto kinds = [](const Printout& label) {
    std::vector<std::string> all;
    for (const auto& code : label.pages[0].barcodes) all.push_back(code.kind);
    return all;
  };
  for (const char* number : {"7891234501127", "17891234501124"}) {
    Fabric(With(UsualFabric(), {{"BARRA", number}}));
    EXPECT_THAT(kinds(Drawn()), UnorderedElementsAre("code128", "itf14", "qr")) << number;
    EXPECT_THAT(Commands(), HasSubstr("^B2N")) << number;
  }
  for (const char* number : {"", "7891234501120", "789", "ABC4567890123", "178912345011240"}) {
    Fabric(With(UsualFabric(), {{"BARRA", number}}));
    EXPECT_THAT(kinds(Drawn()), UnorderedElementsAre("code128", "qr")) << number;
    EXPECT_THAT(Commands(), Not(HasSubstr("^B2N"))) << number;
  }
}

TEST_F(RollLabel, DefectsOfThisRollOnlyEachOnce) {
  Defects({Defect("BURACO"), Defect("FIO PUXADO", 11), Defect("BURACO"), Defect("MANCHA DE ÓLEO")});
  EXPECT_THAT(TextOf(Drawn()), HasSubstr("BURACO (2), MANCHA DE ÓLEO\n"));
  EXPECT_THAT(TextOf(Drawn()), Not(HasSubstr("FIO PUXADO")));
  EXPECT_THAT(Commands(), HasSubstr("BURACO (2), MANCHA DE ÓLEO^FS"));
  EXPECT_THAT(Commands(), Not(HasSubstr("FIO PUXADO")));
}

TEST_F(RollLabel, ThirtyDefectsAreCountedBeyondTheRoomForThem) {
  std::vector<FieldsOfRow> rows;
  for (int at = 1; at <= 30; ++at) rows.push_back(Defect("DEFEITO " + std::to_string(at)));
  Defects(rows);
  for (const std::string& text : {TextOf(Drawn()), Commands()}) {
    EXPECT_THAT(text, HasSubstr("DEFEITO 1, DEFEITO 2"));
    const std::regex tail("e mais (\\d+)");
    std::smatch found;
    ASSERT_TRUE(std::regex_search(text, found, tail));
    int shown = 0;
    for (int at = 1; at <= 30; ++at) {
      shown += std::regex_search(text, std::regex("DEFEITO " + std::to_string(at) + "\\b")) ? 1 : 0;
    }
    EXPECT_EQ(shown + std::stoi(found[1].str()), 30);
  }
}

TEST_F(RollLabel, WithoutTheFabricsDataItTakesWhatTheItemTells) {
  PaperScreen bare;
  bare.Add("TbRolos", kRollFields, {UsualRoll()});
  bare.Add("TbItens", {"Codigo", "Cor", "Desc_Cor", "Unidade"},
           {{{"Codigo", "M0111"}, {"Cor", "L01"}, {"Desc_Cor", "COR DO ITEM"}, {"Unidade", "MT"}}});
  const std::string text = TextOf(bare.Print("WEtqTecRolo"));
  EXPECT_THAT(text, HasSubstr("COR DO ITEM"));
  EXPECT_THAT(text, HasSubstr("QUANTIDADE"));
  EXPECT_THAT(text, HasSubstr("20,4 mt"));
}

TEST_F(RollLabel, WithoutARollThereIsNoLabel) {
  screen_.Add("TbRolos", kRollFields);
  EXPECT_TRUE(Drawn().pages.empty());
  EXPECT_EQ(Commands(), "");
}

}  // namespace
}  // namespace test
