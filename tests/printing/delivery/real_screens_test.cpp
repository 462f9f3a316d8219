// The screens' own data on the program's own layouts, from the click to what a scanner reads on the paper.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "app/printing/delivery/file_equipment.h"
#include "host/kit/desk.h"
#include "support/mill.h"
#include "support/road.h"
#include "tests/printing/decoded.h"

namespace {

using host::ActResult;
using test::Decoded;
using test::Mill;
using test::OutputOf;
using test::PictureFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

class RealScreens : public testing::Test {
 protected:
  RealScreens() : equipment_(folder_.File("")), mill_(With(equipment_)) {
    test::FillSmallMill(mill_);
    mill_.SetClock("2026-03-10 22:15:00");
    mill_.SetParameter("MAL", 40, "3");
    mill_.SetParameter("SIS", 10, "TECELAGEM SÃO JOSÉ LTDA");
  }

  static Mill::Options With(app::Equipment& equipment) {
    Mill::Options options;
    options.equipment = &equipment;
    return options;
  }
  static std::string Bytes(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    EXPECT_TRUE(in.good()) << file;
    return {std::istreambuf_iterator<char>(in), {}};
  }
  std::string TextOfPdf(const std::string& name) {
    return OutputOf("pdftotext -layout '" + folder_.File(name) + "' -");
  }
  std::vector<std::string> CodesOfPdf(const std::string& name) {
    OutputOf("pdftoppm -r 300 -png -singlefile '" + folder_.File(name) + "' '" + folder_.File("seen") + "'");
    return Decoded(folder_.File("seen.png"));
  }
  host::Screen& Rolls(const std::string& order) {
    host::Screen& screen = test::OpenWriteOff(mill_, order, "DF");
    EXPECT_EQ(test::ConfirmRoll(mill_, screen, 18.45), ActResult::kDone);
    EXPECT_EQ(test::ConfirmRoll(mill_, screen, 20.4), ActResult::kDone);
    mill_.Messages();
    return screen;
  }
  void Defect(const std::string& order, int roll, const std::string& code, const std::string& entry) {
    mill_.Insert("DEF_MOV", {{"CODIGO", code},
                             {"ARTIGO", "F1"},
                             {"QUANT", 1},
                             {"NUMERO", order},
                             {"TIPO", "T"},
                             {"ROLO", roll},
                             {"LANCAMENTO", entry}});
  }

  PictureFolder folder_;
  app::printing::FileEquipment equipment_;
  Mill mill_;
};

TEST_F(RealScreens, AnOrderGoesToTheMillOnPaper) {
  const std::string order = test::SaveOrder(mill_, test::SmallMillOrder(100));
  mill_.Messages();
  host::Screen& screen = mill_.Open("TfmCadLoteTec");
  ASSERT_EQ(mill_.Type(screen, "EdtNumero", order), ActResult::kDone);
  ASSERT_EQ(mill_.Click(screen, "BtnImprimir"), ActResult::kDone);
  EXPECT_THAT(mill_.Messages(), testing::IsEmpty());
  EXPECT_THAT(CodesOfPdf("WTecLoteCad-1.pdf"), ElementsAre("CODE-128:" + order));
  const std::string text = TextOfPdf("WTecLoteCad-1.pdf");
  for (const char* part :
       {"TECELAGEM SÃO JOSÉ LTDA", "Ordem de Tecelagem", "M00001", "F1", "100,000 kg", "Fios", "Y1", "60,000", "Y2",
        "40,000", "100,000", "Rolos esperados", "Página 1 de 1", "10/03/2026 22:15"}) {
    EXPECT_THAT(text, HasSubstr(part));
  }
}

// A station that prints in text what it can: the order's screen asks for pages, the label's for what its list says.
TEST_F(RealScreens, AnOrderGoesToTheMillAsTextWhereTextIsWanted) {
  app::printing::FileEquipment in_text(folder_.File(""), true);
  Mill mill(With(in_text));
  test::FillSmallMill(mill);
  mill.SetClock("2026-03-10 22:15:00");
  const std::string order = test::SaveOrder(mill, test::SmallMillOrder(100));
  host::Screen& screen = mill.Open("TfmCadLoteTec");
  ASSERT_EQ(mill.Type(screen, "EdtNumero", order), ActResult::kDone);
  ASSERT_EQ(mill.Click(screen, "BtnImprimir"), ActResult::kDone);
  const std::string text = Bytes(folder_.File("WTecLoteCad-1.txt"));
  EXPECT_THAT(text, HasSubstr("ORDEM DE TECELAGEM " + order));
  EXPECT_THAT(text, HasSubstr("100,000 KG"));
  host::Screen& rolls = test::OpenWriteOff(mill, order, "DF");
  ASSERT_EQ(test::ConfirmRoll(mill, rolls, 18.45), ActResult::kDone);
  ASSERT_EQ(mill.Desk().PickMenu(rolls, "Imprimir Etiqueta"), ActResult::kDone);
  EXPECT_EQ(Bytes(folder_.File("WEtqTecRolo-1.pdf")).substr(0, 4), "%PDF");
}

TEST_F(RealScreens, ARollGetsItsLabelAndItIsScanned) {
  mill_.Exec("UPDATE {MAT_ITEN} SET BARRA = '7891234501028' WHERE CODIGO = 'F1' AND COR = '01'");
  const std::string order = test::SaveOrder(mill_, test::SmallMillOrder(100));
  host::Screen& screen = Rolls(order);
  mill_.Exec("UPDATE {MAT_ITEN} SET BARRA = '7891234501028' WHERE CODIGO = 'F1' AND COR = '01'");
  mill_.Insert("DEFEITO", {{"CODIGO", "BRC"}, {"DESCRICAO", "BURACO NA MALHA"}});
  Defect(order, 2, "BRC", "900001");
  ASSERT_EQ(mill_.Desk().PickMenu(screen, "Imprimir Etiqueta"), ActResult::kDone);
  EXPECT_THAT(mill_.Messages(), testing::IsEmpty());
  const std::string lot = order + "2";
  EXPECT_THAT(CodesOfPdf("WEtqTecRolo-1.pdf"), UnorderedElementsAre("CODE-128:" + lot, "I2/5:07891234501028",
                                                                    "QR-Code:LOTE " + lot + " PESO 20.400 KG"));
  const std::string text = TextOfPdf("WEtqTecRolo-1.pdf");
  const std::vector<std::string> parts{
      "TECELAGEM SÃO JOSÉ LTDA", "Ordem " + order, "ROLO 2", "20,400 kg", lot, "10/03/2026", "BURACO NA MALHA"};
  for (const std::string& part : parts) {
    EXPECT_THAT(text, HasSubstr(part));
  }
}

TEST_F(RealScreens, ARollGetsItsLabelInThePrintersLanguage) {
  const std::string order = test::SaveOrder(mill_, test::SmallMillOrder(100));
  host::Screen& screen = Rolls(order);
  ASSERT_EQ(mill_.Desk().Choose(dynamic_cast<host::Choice&>(*screen.FindComponent("CbImpressao")), "Texto"),
            ActResult::kDone);
  ASSERT_EQ(mill_.Desk().PickMenu(screen, "Imprimir Etiqueta"), ActResult::kDone);
  EXPECT_THAT(mill_.Messages(), testing::IsEmpty());
  const std::string commands = Bytes(folder_.File("WEtqTecRolo-1.txt"));
  EXPECT_EQ(commands.substr(0, 3), "^XA");
  EXPECT_THAT(commands, HasSubstr("^FDROLO 002^FS"));
  EXPECT_THAT(commands, HasSubstr("^FD20,400 kg^FS"));
  EXPECT_THAT(commands, HasSubstr("^BCN,76,N,N,N,A^FH_^FD" + order + "2^FS"));
}

}  // namespace
