// Coming in: the database, the name, the password.
#include "app/desktop/shell/entrance.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <memory>

#include "app/desktop/basics/settings.h"
#include "app/desktop/shell/database_dialog.h"
#include "app/desktop/shell/window_person.h"
#include "app/services/passwords.h"
#include "app/services/user_settings.h"
#include "desktop/support/boxes.h"
#include "desktop/support/keys.h"
#include "host/errors.h"
#include "support/mill.h"
#include "support/module_under_test.h"

namespace {

using app::desktop::DesktopOptions;
using app::desktop::Entrance;

class Entering : public ::testing::Test {
 protected:
  Entering() : mill_(std::make_unique<test::Mill>()) {
    app::services::SetPassword(mill_->Db(), "ADMIN", "segredo");
    options_.connect.database = mill_->Path();
    options_.settings_file = File("settings");
  }

  std::string File(const char* name) const { return folder_.filePath(QLatin1String(name)).toStdString(); }
  std::string Setting(const char* name) const {
    return app::services::FileUserSettings(options_.settings_file)
        .Read(app::desktop::kSettingsKey, app::desktop::kEntrySection, name)
        .value_or("");
  }
  std::unique_ptr<app::Application> Enter() {
    app::services::FileUserSettings settings(options_.settings_file);
    Entrance entrance(options_, test::ModuleUnderTest(), settings, folder_.path());
    return entrance.Enter(person_);
  }
  static QString Objection(const QWidget& dialog) {
    const auto* label = dialog.findChild<QLabel*>("Objection");
    return label->isHidden() ? QString() : label->text();
  }
  static QString Text(const QWidget& dialog, const char* name) {
    return dialog.findChild<QLineEdit*>(QLatin1String(name))->text();
  }
  // As a person: everything by keys; the password's input has the keyboard once a name stands there.
  static void TypePassword(const QString& password) {
    test::TypeText(password);
    test::Press(Qt::Key_Return);
  }

  QTemporaryDir folder_;
  std::unique_ptr<test::Mill> mill_;
  DesktopOptions options_;
  test::Boxes boxes_;
  app::desktop::WindowPerson person_;
};

TEST_F(Entering, NameAndPasswordByKeys) {
  boxes_.ExpectDialog("Entrar", [this](QWidget& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("Database")->text().toStdString(), mill_->Path());
    EXPECT_EQ(dialog.findChild<QLineEdit*>("Password")->echoMode(), QLineEdit::Password);
    test::TypeText("admin");
    test::Press(Qt::Key_Tab);
    TypePassword("segredo");
  });
  const auto application = Enter();
  ASSERT_NE(application, nullptr);
  EXPECT_EQ(application->GetFuncoes().vUsuarioCodigo(), "ADMIN");
  EXPECT_EQ(Setting(app::desktop::kUserName), "admin");
  EXPECT_EQ(Setting(app::desktop::kDatabaseName), mill_->Path());
}

TEST_F(Entering, TheLastUserIsProposedAndOnlyThePasswordMissing) {
  options_.user = "ADMIN";
  boxes_.ExpectDialog("Entrar", [](QWidget& dialog) {
    EXPECT_EQ(Text(dialog, "User"), "ADMIN");
    TypePassword("segredo");
  });
  ASSERT_NE(Enter(), nullptr);
  options_.user.clear();
  options_.connect.database.clear();  // both from the settings
  boxes_.ExpectDialog("Entrar", [this](QWidget& dialog) {
    EXPECT_EQ(Text(dialog, "User"), "ADMIN");
    EXPECT_EQ(dialog.findChild<QLabel*>("Database")->text().toStdString(), mill_->Path());
    TypePassword("segredo");
  });
  EXPECT_NE(Enter(), nullptr);
}

TEST_F(Entering, AWrongPasswordIsSaidInTheDialogAndCleared) {
  options_.user = "ADMIN";
  boxes_.ExpectDialog("Entrar", [](QWidget& dialog) {
    TypePassword("errada");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_NE(Objection(dialog), "");
    EXPECT_EQ(Text(dialog, "User"), "ADMIN");
    EXPECT_EQ(Text(dialog, "Password"), "");
    EXPECT_EQ(QApplication::focusWidget(), dialog.findChild<QLineEdit*>("Password"));
    TypePassword("segredo");
  });
  EXPECT_NE(Enter(), nullptr);
}

TEST_F(Entering, AfterFiveWrongPasswordsTheRightOneHasToWait) {
  options_.user = "ADMIN";
  boxes_.ExpectDialog("Entrar", [](QWidget& dialog) {
    QStringList said;
    for (int i = 0; i < 5; ++i) {
      TypePassword("errada");
      said.append(Objection(dialog));
    }
    EXPECT_EQ(said[0], said[1]);
    TypePassword("segredo");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_NE(Objection(dialog), said[0]);
    EXPECT_TRUE(Objection(dialog).contains("aguarde")) << Objection(dialog).toStdString();
    test::Press(Qt::Key_Escape);
  });
  EXPECT_EQ(Enter(), nullptr);
}

TEST_F(Entering, WithoutANameNobodyIsAskedFor) {
  boxes_.ExpectDialog("Entrar", [](QWidget& dialog) {
    test::Press(Qt::Key_Return);
    EXPECT_EQ(Objection(dialog), "Digite o nome do usuário.");
    test::Press(Qt::Key_Escape);
  });
  EXPECT_EQ(Enter(), nullptr);
}

TEST_F(Entering, UserAndPasswordGivenAreTakenWithoutAsking) {
  options_.user = "ADMIN";
  options_.connect.password = "segredo";
  options_.signed_in = true;
  EXPECT_NE(Enter(), nullptr);
}

TEST_F(Entering, GivenWrongTheyAreAskedForWithTheReason) {
  options_.user = "ADMIN";
  options_.connect.password = "errada";
  options_.signed_in = true;
  boxes_.ExpectDialog("Entrar", [](QWidget& dialog) {
    EXPECT_NE(Objection(dialog), "");
    EXPECT_EQ(Text(dialog, "Password"), "");
    TypePassword("segredo");
  });
  EXPECT_NE(Enter(), nullptr);
}

TEST_F(Entering, AProposedPasswordNeedsOnlyEnter) {
  options_.user = "ADMIN";
  options_.connect.password = "segredo";
  boxes_.ExpectDialog("Entrar", [](QWidget&) { test::Press(Qt::Key_Return); });
  EXPECT_NE(Enter(), nullptr);
}

TEST_F(Entering, AFileThatIsNoDatabaseIsToldInTheDialog) {
  QFile file(folder_.filePath("carta.fdb"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(20000, 'x'));
  file.close();
  options_.connect.database = File("carta.fdb");
  options_.user = "ADMIN";
  boxes_.ExpectDialog("Entrar", [](QWidget& dialog) {
    TypePassword("segredo");
    EXPECT_TRUE(Objection(dialog).contains("carta.fdb")) << Objection(dialog).toStdString();
    test::Press(Qt::Key_Escape);
  });
  EXPECT_EQ(Enter(), nullptr);
}

TEST_F(Entering, AServerThatDoesNotAnswerIsToldInTheDialog) {
  options_.connect.database = "127.0.0.1/1:nada.fdb";
  options_.user = "MARIA";
  boxes_.ExpectDialog("Entrar", [](QWidget& dialog) {
    TypePassword("segredo");
    EXPECT_TRUE(Objection(dialog).contains("127.0.0.1/1")) << Objection(dialog).toStdString();
    test::Press(Qt::Key_Escape);
  });
  EXPECT_EQ(Enter(), nullptr);
}

// --- the first start -----------------------------------------------------------------------------------------------

class FirstStart : public Entering {
 protected:
  FirstStart() { options_.connect.database.clear(); }
};

TEST_F(FirstStart, AnEmptyMillWithItsAdministratorsPassword) {
  boxes_.ExpectDialog("Banco de dados", [this](QWidget& dialog) {
    EXPECT_EQ(Text(dialog, "NewFile").toStdString(), File("tecelagem.fdb"));
    test::Press(Qt::Key_Return);
    EXPECT_EQ(Objection(dialog), "A senha do administrador não pode ficar vazia.");
    test::TypeText("um");
    test::Press(Qt::Key_Tab);
    test::TypeText("dois");
    test::Press(Qt::Key_Return);
    EXPECT_EQ(Objection(dialog), "As duas senhas são diferentes.");
    EXPECT_FALSE(QFile::exists(folder_.filePath("tecelagem.fdb")));
    test::TypeText("um");
    test::Press(Qt::Key_Return);
  });
  boxes_.ExpectDialog("Entrar", [](QWidget& dialog) {
    EXPECT_EQ(Text(dialog, "User"), "ADMIN");
    EXPECT_EQ(Text(dialog, "Password"), "");
    TypePassword("um");
  });
  const auto application = Enter();
  ASSERT_NE(application, nullptr);
  EXPECT_EQ(application->GetDatabase().Options().database, File("tecelagem.fdb"));
  EXPECT_EQ(application->GetDatabase().Query("SELECT COUNT(*) AS N FROM {MATERIAL}", {})->FieldByName("N").AsInteger(),
            0);
}

TEST_F(FirstStart, TheDemonstrationMillProposesItsPassword) {
  boxes_.ExpectDialog("Banco de dados", [](QWidget& dialog) {
    test::Press(Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(test::WaitFor([&] { return dialog.findChild<QRadioButton*>("DemoMill")->isChecked(); }));
    test::Press(Qt::Key_Return);
  });
  boxes_.ExpectDialog("Entrar", [](QWidget& dialog) {
    EXPECT_EQ(Text(dialog, "User"), "ADMIN");
    test::Press(Qt::Key_Return);
  });
  const auto application = Enter();
  ASSERT_NE(application, nullptr);
  EXPECT_EQ(application->GetDatabase().Options().database, File("demo.fdb"));
  EXPECT_GT(application->GetDatabase().Query("SELECT COUNT(*) AS N FROM {MATERIAL}", {})->FieldByName("N").AsInteger(),
            0);
}

TEST_F(FirstStart, ADatabaseThatExists) {
  const std::string path = mill_->Path();
  boxes_.ExpectDialog("Banco de dados", [&](QWidget& dialog) {
    auto* existing = dialog.findChild<QRadioButton*>("Existing");
    existing->click();
    auto* name = dialog.findChild<QLineEdit*>("ExistingName");
    name->setFocus();
    test::TypeText("/nada/falta.fdb");
    test::Press(Qt::Key_Return);
    EXPECT_EQ(Objection(dialog), "O banco de dados /nada/falta.fdb não existe.");
    name->clear();
    test::TypeText(QString::fromStdString(path));
    test::Press(Qt::Key_Return);
  });
  boxes_.ExpectDialog("Entrar", [](QWidget&) {
    test::TypeText("ADMIN");
    test::Press(Qt::Key_Tab);
    TypePassword("segredo");
  });
  const auto application = Enter();
  ASSERT_NE(application, nullptr);
  EXPECT_EQ(application->GetDatabase().Options().database, path);
}

TEST_F(FirstStart, WhatCannotBeMadeIsToldAndNothingIsLeft) {
  QFile file(folder_.filePath("tecelagem"));  // where the folder ought to be
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  boxes_.ExpectDialog("Banco de dados", [this](QWidget& dialog) {
    dialog.findChild<QLineEdit*>("NewFile")->setText(folder_.filePath("tecelagem/novo.fdb"));
    test::TypeText("um");
    test::Press(Qt::Key_Tab);
    test::TypeText("um");
    test::Press(Qt::Key_Return);
    EXPECT_NE(Objection(dialog), "");
    EXPECT_TRUE(dialog.isVisible());
    test::Press(Qt::Key_Escape);
  });
  EXPECT_EQ(Enter(), nullptr);
  EXPECT_EQ(QDir(folder_.path()).entryList({"*.fdb"}).size(), 0);
}

TEST_F(FirstStart, GivenUpNothingIsMade) {
  boxes_.ExpectDialog("Banco de dados", [](QWidget&) { test::Press(Qt::Key_Escape); });
  EXPECT_EQ(Enter(), nullptr);
  EXPECT_EQ(QDir(folder_.path()).entryList({"*.fdb"}).size(), 0);
}

TEST_F(FirstStart, ANamedDatabaseThatIsMissingIsSaid) {
  options_.connect.database = File("falta.fdb");
  boxes_.ExpectDialog("Banco de dados", [this](QWidget& dialog) {
    EXPECT_EQ(Objection(dialog).toStdString(), "O banco de dados " + File("falta.fdb") + " não existe.");
    test::Press(Qt::Key_Escape);
  });
  EXPECT_EQ(Enter(), nullptr);
}

// Signing in at another database, and giving that up again.
TEST_F(Entering, AnotherDatabaseCanBeChosenAtSignIn) {
  options_.user = "ADMIN";
  boxes_.ExpectDialog("Entrar",
                      [](QWidget& dialog) { test::ClickOn(*dialog.findChild<QPushButton*>("OtherDatabase")); });
  boxes_.ExpectDialog("Banco de dados", [](QWidget&) { test::Press(Qt::Key_Escape); });
  boxes_.ExpectDialog("Entrar", [](QWidget& dialog) {
    EXPECT_EQ(Text(dialog, "User"), "ADMIN");
    TypePassword("segredo");
  });
  EXPECT_NE(Enter(), nullptr);
}

}  // namespace
