// The composition of a fabric typed by keyboard, a column for each of its colours.
#include <QTableView>

#include "desktop/scenario/hands.h"

namespace test {
namespace {

const QString kTitle = QStringLiteral("Cadastro de Composição");

class CompositionByKeys : public Scenario {
 protected:
  using Scenario::Scenario;

  host::Screen& Load(const char* fabric) {
    host::Screen& screen = desktop_.Open("TFmCadComposi");
    EXPECT_EQ(Focused(), "EdtCodMat");
    hands_.Enter("EdtCodMat", QString::fromUtf8(fabric));
    return screen;
  }
  std::vector<std::string> Stored(const char* fabric) {
    std::vector<std::string> rows;
    for (const test::Row& row : desktop_.GetMill().Rows(
             std::string("SELECT ORDEM, CODIGO, COR, COR_I, ROUND(PERC, 2) AS PERC, LFA, KG_ROLO FROM {COMP_MATERIAL} "
                         "WHERE MATERIAL = '") +
             fabric + "' ORDER BY ORDEM, COR")) {
      std::string line;
      for (const char* column : {"ORDEM", "CODIGO", "COR", "COR_I", "PERC", "LFA", "KG_ROLO"}) {
        line += (line.empty() ? "" : " ") + row.at(column).AsText();
      }
      rows.push_back(line);
    }
    return rows;
  }
};

TEST_F(CompositionByKeys, IsTypedCellByCellAndStored) {
  const host::Screen& screen = Load("F2");
  EXPECT_EQ(hands_.Text(screen, "LblCodMat"), "Moletom sem composição");
  hands_.Fill("EdtKgRolo", QStringLiteral("22"));
  hands_.Fill("EdtAgulhas", QStringLiteral("2000"));
  hands_.GoTo("GrdComposi");
  hands_.Type("Codigo", QStringLiteral("Y1"));
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Shown("Descricao"), "Fio 30/1 algodão");
  EXPECT_EQ(hands_.Shown("NE"), "30");
  EXPECT_EQ(hands_.Grid().SelectedField(), "Milimetros");  // what the program fills is passed over
  TypeText(QStringLiteral("3"));
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Grid().GetDataset()["LFA"].AsFloat(), 6000);
  hands_.Type("ROCA", QStringLiteral("48"));
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Shown("Consumo"), "56,6400");
  hands_.Type("01", QStringLiteral("CR"));
  hands_.Type("02", QStringLiteral("CR"));
  Press(Qt::Key_Return);
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());

  Press(Qt::Key_Down);
  hands_.Type("Codigo", QStringLiteral("NADA"));
  ExpectRefused(kTitle, QStringLiteral("Material não cadastrado."), [] { Press(Qt::Key_Return); });
  hands_.Type("Codigo", QStringLiteral("Y2"));
  hands_.Type("Milimetros", QStringLiteral("3"));
  hands_.Type("ROCA", QStringLiteral("32"));
  hands_.Type("Regra", QStringLiteral("R9"));
  ExpectRefused(kTitle, QStringLiteral("Regra de cálculo inválida."), [] { Press(Qt::Key_Return); });
  EXPECT_EQ(hands_.Shown("Regra"), "");
  // A colour that the yarn does not have yet: first no, then yes.
  const QString question = QStringLiteral("Cor não cadastrada no Material. Deseja cadastrar?");
  hands_.Type("02", QStringLiteral("01"));
  desktop_.ExpectBox(question, Reply::kOk);
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Shown("02"), "01");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {MAT_ITEN} WHERE CODIGO = 'Y2' AND COR = '01'"), "0");
  hands_.Type("02", QStringLiteral("01"));
  desktop_.ExpectBox(question, Reply::kYes);
  Press(Qt::Key_Return);
  EXPECT_EQ(Scalar("SELECT LOTE || DEPOSITO FROM {MAT_ITEN} WHERE CODIGO = 'Y2' AND COR = '01'"), "000000D1");

  desktop_.ExpectBox(QStringLiteral("Composição incorreta. Deseja recalcular?"), Reply::kYes);
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_TRUE(desktop_.GetBoxes().Met());
  EXPECT_EQ(Focused(), "EdtCodMat");
  EXPECT_EQ(Stored("F2"), (std::vector<std::string>{"1 Y1 01 CR 54.55 6000 22", "1 Y1 02 CR 54.55 6000 22",
                                                    "2 Y2 01 ***** 45.45 6000 22", "2 Y2 02 01 45.45 6000 22"}));
}

TEST_F(CompositionByKeys, ARuleGivesTheShareAndLookupsFillTheCells) {
  Load("F1");
  hands_.GoTo("GrdComposi");
  EXPECT_EQ(hands_.Shown("Codigo"), "Y1");
  hands_.Cell("Regra");
  desktop_.GetBoxes().ExpectDialog(QStringLiteral("Pesquisa"), [](QWidget&) {
    TypeText(QStringLiteral("gramatura"));
    Press(Qt::Key_Return);
  });
  Press(Qt::Key_F4);
  EXPECT_EQ(hands_.Shown("Regra"), "R2");
  EXPECT_EQ(hands_.Shown("Desc_Regra"), "Pela gramatura");
  EXPECT_EQ(hands_.Shown("Perc"), "40,0000");
  hands_.Cell("01");
  desktop_.GetBoxes().ExpectDialog(QStringLiteral("Pesquisa"), [](QWidget&) { Press(Qt::Key_Escape); });
  Press(Qt::Key_F4);
  EXPECT_EQ(hands_.Shown("01"), "CR");
  EXPECT_EQ(Focused(), "GrdComposi");
}

TEST_F(CompositionByKeys, AnUnknownFabricIsTold) {
  desktop_.Open("TFmCadComposi");
  hands_.Fill("EdtCodMat", QStringLiteral("NADA"));
  ExpectRefused(kTitle, QStringLiteral("Material não encontrado."), [] { Press(Qt::Key_Return); });
}

}  // namespace
}  // namespace test
