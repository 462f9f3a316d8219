// The administration by keyboard, in its windows.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <string>

#include "app/services/passwords.h"
#include "desktop/support/desktop_mill.h"

namespace {

using test::Press;
using test::TypeText;

class AdminWindows : public testing::Test {
 protected:
  static test::DesktopMill::Options Filled() {
    test::DesktopMill::Options options;
    options.prepare = [](test::Mill& mill) {
      mill.SetClock("2026-03-10 14:30:00");
      app::services::SetPassword(mill.Db(), "ADMIN", "velha");
      mill.Insert("TEC_USUARIO", {{"CODIGO", "MARIA"}, {"NOME", "Maria Conceição"}});
      mill.Insert("TEC_PERIODO",
                  {{"AREA", "IV"}, {"DT_INICIO", "2026-02-01"}, {"DT_FIM", "2026-02-28"}, {"CONCILIADO", "S"}});
    };
    return options;
  }
  AdminWindows() : mill_(Filled()) {}

  std::string Focused() {
    const host::Control* focused = mill_.Desk().Focused();
    return focused == nullptr ? std::string() : focused->Name();
  }
  // Tab until the keyboard is there.
  void TabTo(const std::string& name) {
    for (int i = 0; i < 30 && Focused() != name; ++i) Press(Qt::Key_Tab);
    ASSERT_EQ(Focused(), name);
  }
  host::Value Scalar(std::string_view sql) { return mill_.GetMill().Scalar(sql); }

  test::DesktopMill mill_;
};

TEST_F(AdminWindows, EveryFormFitsItsScreen) {
  for (const char* screen : {"TfmUsuarios", "TfmParametros", "TfmPeriodos", "TfmLog", "TfmSenha"}) {
    ASSERT_TRUE(mill_.IsInMenu(screen)) << screen;
    const QStringList mismatches = mill_.WindowOf(mill_.Open(screen)).Mismatches();
    EXPECT_TRUE(mismatches.isEmpty()) << screen << ": " << mismatches.join(u'\n').toStdString();
  }
}

// Each screen that is picked from the menu comes to the front and has the keyboard.
TEST_F(AdminWindows, TheKeyboardIsInTheScreenOpenedLast) {
  for (const char* screen : {"TfmUsuarios", "TfmLog", "TfmSenha", "TfmUsuarios"}) {
    const host::Screen& open = mill_.Open(screen);
    EXPECT_TRUE(mill_.WindowOf(open).isVisible()) << screen;
    const QWidget* keyboard = QApplication::focusWidget();
    ASSERT_NE(keyboard, nullptr) << screen;
    EXPECT_TRUE(mill_.WindowOf(open).isAncestorOf(keyboard)) << screen;
    ASSERT_NE(mill_.Desk().Focused(), nullptr) << screen;
    EXPECT_EQ(&mill_.Desk().Focused()->Owner(), &open) << screen;
  }
}

TEST_F(AdminWindows, APasswordIsNotShown) {
  const host::Screen& users = mill_.Open("TfmUsuarios");
  EXPECT_EQ(mill_.WidgetOf<QLineEdit>(users, "EdtSenha").echoMode(), QLineEdit::Password);
  EXPECT_EQ(mill_.WidgetOf<QLineEdit>(users, "EdtNome").echoMode(), QLineEdit::Normal);
  const host::Screen& own = mill_.Open("TfmSenha");
  for (const char* input : {"EdtAtual", "EdtNova", "EdtRepita"}) {
    EXPECT_EQ(mill_.WidgetOf<QLineEdit>(own, input).echoMode(), QLineEdit::Password) << input;
  }
}

TEST_F(AdminWindows, AUserIsIncludedByKeyboard) {
  const host::Screen& screen = mill_.Open("TfmUsuarios");
  EXPECT_EQ(Focused(), "GrdUsuarios");
  Press(Qt::Key_I, Qt::AltModifier);
  EXPECT_EQ(Focused(), "EdtCodigo");
  TypeText(QStringLiteral("ana"));
  Press(Qt::Key_Return);
  EXPECT_EQ(Focused(), "EdtNome");
  TypeText(QString::fromUtf8("Ana Assunção"));
  TabTo("EdtSenha");
  TypeText(QStringLiteral("tear"));
  Press(Qt::Key_Return);
  TypeText(QStringLiteral("tear"));
  EXPECT_EQ(mill_.WidgetOf<QLabel>(screen, "LblAviso").text().toStdString(), "Registro novo: grave ou cancele.");
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(Scalar("SELECT NOME FROM TEC_USUARIO WHERE CODIGO = 'ANA'").AsText(), "Ana Assunção");
  EXPECT_TRUE(app::services::CheckPassword(mill_.GetMill().Db(), "ANA", "tear"));
  EXPECT_TRUE(mill_.WidgetOf<QLabel>(screen, "LblAviso").text().isEmpty());
  EXPECT_TRUE(mill_.WidgetOf<QLineEdit>(screen, "EdtSenha").text().isEmpty());
}

TEST_F(AdminWindows, AParameterIsChangedInItsCell) {
  const host::Screen& screen = mill_.Open("TfmParametros");
  TabTo("GrdParametros");
  auto& grid = dynamic_cast<host::Grid&>(*screen.FindComponent("GrdParametros"));
  ASSERT_EQ(mill_.Desk().SelectRow(grid, 2), host::ActResult::kDone);
  ASSERT_EQ(mill_.Desk().SelectCell(grid, "VALOR"), host::ActResult::kDone);
  test::Settle();
  mill_.ExpectBox(QString::fromUtf8("O parâmetro \"MAL\" 40 aceita 1, 2, 3, 4, 5 ou 6."));
  TypeText(QStringLiteral("7"));
  Press(Qt::Key_Return);
  EXPECT_TRUE(mill_.GetBoxes().Met());
  Press(Qt::Key_Escape);
  TypeText(QStringLiteral("5"));
  Press(Qt::Key_Return);
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(Scalar("SELECT VALOR FROM TEC_PARAMETRO WHERE GRUPO = 'MAL' AND NUMERO = 40").AsText(), "5");
}

TEST_F(AdminWindows, ClosingWithAChangedPeriodAsks) {
  const host::Screen& screen = mill_.Open("TfmPeriodos");
  TabTo("ChkConciliado");
  Press(Qt::Key_Space);
  EXPECT_TRUE(screen.HasUnsavedWork());
  mill_.ExpectBox({}, test::Reply::kNo);
  Press(Qt::Key_F, Qt::AltModifier);
  EXPECT_NE(mill_.Desk().Find("TfmPeriodos"), nullptr);
  Press(Qt::Key_C, Qt::AltModifier);
  EXPECT_FALSE(screen.HasUnsavedWork());
  Press(Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(mill_.Desk().Find("TfmPeriodos"), nullptr);
}

TEST_F(AdminWindows, TheOwnPasswordIsChangedByKeyboard) {
  mill_.Open("TfmSenha");
  EXPECT_EQ(Focused(), "EdtAtual");
  TypeText(QStringLiteral("velha"));
  Press(Qt::Key_Return);
  TypeText(QStringLiteral("nova"));
  Press(Qt::Key_Return);
  TypeText(QStringLiteral("nova"));
  mill_.ExpectBox(QStringLiteral("Senha alterada."));
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_TRUE(app::services::CheckPassword(mill_.GetMill().Db(), "ADMIN", "nova"));
  EXPECT_EQ(mill_.Desk().Find("TfmSenha"), nullptr);
}

}  // namespace
