// The registers as windows, by keys and mouse.
#include <gtest/gtest.h>

#include <QLineEdit>

#include "app/tables/descriptions.h"
#include "desktop/support/desktop_mill.h"

namespace {

using test::Press;
using test::Reply;
using test::TypeText;

class RegisterWindows : public ::testing::Test {
 protected:
  QString Shown(const host::Screen& screen, std::string_view input) {
    return desktop.WidgetOf<QLineEdit>(screen, input).text();
  }
  std::string Stored(std::string_view sql) { return desktop.GetMill().Scalar(sql).AsText(); }
  QString Focused() { return test::Keyboard().objectName(); }

  test::DesktopMill desktop{{.mill = {}, .prepare = test::FillSmallMill}};
};

TEST_F(RegisterWindows, EveryComponentHasItsWidget) {
  for (const auto& description : app::tables::Registers()) {
    const host::Screen& screen = desktop.Open(description.class_name);
    EXPECT_EQ(desktop.WindowOf(screen).Mismatches().join(u'\n').toStdString(), "") << description.class_name;
    desktop.ClickOn(screen, "BtnFechar");
    EXPECT_EQ(desktop.Desk().Find(description.class_name), nullptr) << description.class_name;
  }
}

TEST_F(RegisterWindows, AColourIsIncludedAlteredAndDeletedByKeysAlone) {
  const host::Screen& screen = desktop.Open("TfmCores");
  Press(Qt::Key_F2);
  EXPECT_EQ(Focused(), "EdtCor");
  TypeText(QStringLiteral("AÇ"));
  Press(Qt::Key_Return);
  TypeText(QStringLiteral("Açafrão"));
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(Stored("SELECT DESCRICAO FROM {CADCOR} WHERE COR = 'AÇ'"), "Açafrão");

  Press(Qt::Key_B, Qt::AltModifier);
  EXPECT_EQ(Focused(), "EdtBusca");
  TypeText(QStringLiteral("acafrao"));
  Press(Qt::Key_Return);  // to the list, which holds the one that was found
  Press(Qt::Key_Return);  // and on to the record
  EXPECT_EQ(Focused(), "EdtDescricao");
  TypeText(QStringLiteral("Laranja"));
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(Stored("SELECT DESCRICAO FROM {CADCOR} WHERE COR = 'AÇ'"), "Laranja");

  desktop.ExpectBox(QStringLiteral("Deseja excluir a cor AÇ?"), Reply::kYes);
  Press(Qt::Key_E, Qt::AltModifier);
  EXPECT_EQ(Stored("SELECT COUNT(*) FROM {CADCOR} WHERE COR = 'AÇ'"), "0");
  EXPECT_EQ(Shown(screen, "EdtCor"), "");
}

TEST_F(RegisterWindows, TheArrowsGoThroughTheListAndItsRecords) {
  const host::Screen& screen = desktop.Open("TfmCores");
  EXPECT_EQ(Shown(screen, "EdtDescricao"), "Branco");
  Press(Qt::Key_Return);
  Press(Qt::Key_Down);
  EXPECT_EQ(Shown(screen, "EdtDescricao"), "Azul-marinho");
  Press(Qt::Key_Down);
  EXPECT_EQ(Shown(screen, "EdtDescricao"), "Vermelho");
  Press(Qt::Key_Up);
  EXPECT_EQ(Shown(screen, "EdtCor"), "02");
}

TEST_F(RegisterWindows, ARefusalIsABoxAndTheKeyboardGoesToTheInput) {
  desktop.Open("TfmMateriais");
  Press(Qt::Key_F2);
  TypeText(QStringLiteral("N1"));
  desktop.ExpectBox(QStringLiteral("Campo \"Descrição\": o valor é obrigatório."));
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(Focused(), "EdtDescricao");
}

TEST_F(RegisterWindows, ClosingWithChangesAsks) {
  const host::Screen& screen = desktop.Open("TfmCores");
  Press(Qt::Key_F2);
  TypeText(QStringLiteral("N1"));
  desktop.ExpectBox(QString(), Reply::kNo);
  Press(Qt::Key_F, Qt::AltModifier);
  ASSERT_EQ(desktop.Desk().Find("TfmCores"), &screen);
  EXPECT_EQ(Shown(screen, "EdtCor"), "N1");
  desktop.ExpectBox(QString(), Reply::kYes);
  Press(Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(desktop.Desk().Find("TfmCores"), nullptr);
}

TEST_F(RegisterWindows, TheHoursOfAShiftAreTypedCellByCell) {
  desktop.Open("TfmTurnos");
  for (int i = 0; i < 4; ++i) Press(Qt::Key_Return);  // list, description, check box, hours
  Press(Qt::Key_Return);                              // the weekday's own cell is not typed into
  TypeText(QStringLiteral("07:10"));
  Press(Qt::Key_Return);
  TypeText(QStringLiteral("11:20"));
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(Stored("SELECT ENTRADA FROM {TURNO_HORARIOS} WHERE TURNO = '1' AND DIA = 1"), "07:10:00");
  EXPECT_EQ(Stored("SELECT SAIDA FROM {TURNO_HORARIOS} WHERE TURNO = '1' AND DIA = 1"), "11:20:00");
}

}  // namespace
