// The administration before a Firebird server, which has users and passwords of its own.
#include "app/admin/server_people.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "admin/admin_mill.h"
#include "app/mill/mill.h"
#include "host/errors.h"
#include "support/module_under_test.h"
#include "tests/firebird/private_server.h"

namespace {

using host::ActResult;
using test::Lines;

constexpr unsigned kLongestTest = 120;  // seconds, after which the test dies and the server with it

class AtAServer : public testing::Test {
 protected:
  static void SetUpTestSuite() { server_ = std::make_unique<test::PrivateServer>(); }
  static void TearDownTestSuite() { server_.reset(); }

  AtAServer() {
    alarm(kLongestTest);
    static int number = 0;
    name_ = "malharia" + std::to_string(++number) + ".fdb";
    const auto database = app::mill::InitDatabase(server_->Options(name_), "sem uso no servidor");
    database->Execute("INSERT INTO TEC_USUARIO (CODIGO, NOME, ADMINISTRADOR) VALUES ('SYSDBA', 'Servidor', 'S')", {});
    database->Execute("INSERT INTO TEC_USUARIO (CODIGO, NOME) VALUES ('MARIA', 'Maria')", {});
    database->MakeDurable();
  }
  ~AtAServer() override {
    app_.reset();
    std::filesystem::remove(Settings());
    alarm(0);
  }

  std::string Settings() const {
    return (std::filesystem::temp_directory_path() / (name_ + std::to_string(getpid()) + ".settings")).string();
  }
  /// The program started by one of the server's users.
  void Start(const std::string& user, const std::string& password) {
    app::ApplicationOptions options;
    options.connect = server_->Options(name_, user, password);
    options.user = user;
    options.settings_file = Settings();
    app_ = app::Application::Start(options, test::ModuleUnderTest(), person_);
  }
  host::Screen& Open(std::string_view screen_class) { return *app_->GetDesk().Open(screen_class); }
  template <typename T>
  static T& Part(host::Screen& screen, std::string_view name) {
    return dynamic_cast<T&>(*screen.FindComponent(name));
  }
  void Type(host::Screen& screen, std::string_view edit, std::string_view text) {
    ASSERT_EQ(app_->GetDesk().Type(Part<host::Edit>(screen, edit), text), ActResult::kDone);
  }
  ActResult Click(host::Screen& screen, std::string_view button) {
    return app_->GetDesk().Click(Part<host::Button>(screen, button));
  }
  ActResult Include(const std::string& code, const std::string& password) {
    host::Screen& screen = Open("TfmUsuarios");
    Click(screen, "BtnIncluir");
    Type(screen, "EdtCodigo", code);
    Type(screen, "EdtNome", "Pessoa " + code);
    Type(screen, "EdtSenha", password);
    Type(screen, "EdtRepita", password);
    return Click(screen, "BtnGravar");
  }
  Lines Said() {
    Lines texts;
    for (const auto& shown : person_.TakeMessages()) texts.push_back(shown.text);
    return texts;
  }
  std::int64_t Stored(const std::string& code) {
    const auto own = app::firebird::Database::Open(server_->Options(name_));
    return own->Query("SELECT COUNT(*) AS N FROM TEC_USUARIO WHERE CODIGO = ?", {code})->FieldByName("N").AsInteger();
  }
  /// What the server says to someone who wants to read the mill's tables; empty when it lets him.
  std::string Refusal(const std::string& user, const std::string& password) {
    try {
      const auto theirs = app::firebird::Database::Open(server_->Options(name_, user, password));
      theirs->Query("SELECT COUNT(*) FROM {TECEL}", {});
      return {};
    } catch (const host::DatabaseError& error) {
      return error.what();
    }
  }

  static inline std::unique_ptr<test::PrivateServer> server_;
  std::string name_;
  app::ScriptedPerson person_;
  std::unique_ptr<app::Application> app_;
};

TEST_F(AtAServer, WhoMayMakesTheServersUserTooAndLetsHimIn) {
  Start("SYSDBA", "chave");
  EXPECT_NE(Refusal("ANA", "tear d'agua"), "");
  EXPECT_EQ(Include("ANA", "tear d'agua"), ActResult::kDone);
  EXPECT_EQ(Said(), Lines{});
  EXPECT_EQ(Stored("ANA"), 1);
  EXPECT_EQ(Refusal("ANA", "tear d'agua"), "");
  const auto own = app::firebird::Database::Open(server_->Options(name_));
  EXPECT_TRUE(own->Query("SELECT SENHA FROM TEC_USUARIO WHERE CODIGO = 'ANA'", {})->FieldByName("SENHA").IsNull())
      << "the server keeps the password";
}

TEST_F(AtAServer, WhoMayNotIsToldInOneSentenceAndTheProgramsUserIsThere) {
  Start("ADMIN", "demo");
  EXPECT_EQ(Include("RUI", "senha"), ActResult::kDone);
  EXPECT_EQ(Said(), Lines{"O servidor não deixou criar o usuário \"RUI\" nem mudar a sua senha: peça isso ao "
                          "administrador do servidor."});
  EXPECT_EQ(Stored("RUI"), 1);
  EXPECT_EQ(Include("JOSE", "josé"), ActResult::kRefused);
  EXPECT_EQ(Said(), Lines{"No servidor a senha tem somente letras sem acento, algarismos e sinais."});
  Click(Open("TfmUsuarios"), "BtnCancelar");
  EXPECT_EQ(Include("JOSE", ""), ActResult::kDone) << "without a password the server's user is somebody else's matter";
  EXPECT_EQ(Said(), Lines{});
  EXPECT_EQ(Stored("JOSE"), 1);
}

TEST_F(AtAServer, TheOwnerOfTheDatabaseLetsAUserOfTheServerInAndOutAgain) {
  EXPECT_NE(Refusal("MARIA", "maria"), "");
  const auto own = app::firebird::Database::Open(server_->Options(name_));
  EXPECT_EQ(app::admin::AdmitOnServer(*own, "MARIA", ""), std::nullopt);
  EXPECT_EQ(Refusal("MARIA", "maria"), "");
  EXPECT_EQ(app::admin::ShutOutOnServer(*own, "MARIA"), std::nullopt);
  EXPECT_NE(Refusal("MARIA", "maria"), "");
}

TEST_F(AtAServer, DeletingAUserTakesTheWayInAway) {
  const auto own = app::firebird::Database::Open(server_->Options(name_));
  ASSERT_EQ(app::admin::AdmitOnServer(*own, "MARIA", ""), std::nullopt);
  Start("ADMIN", "demo");
  host::Screen& screen = Open("TfmUsuarios");
  host::Dataset& users = Part<host::Dataset>(screen, "TbUsuarios");
  ASSERT_TRUE(users.Locate("CODIGO", {"MARIA"}));
  person_.Answer("Deseja excluir o usuário \"MARIA\"?", "yes");
  ASSERT_EQ(Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(Stored("MARIA"), 0);
  EXPECT_NE(Refusal("MARIA", "maria"), "");
}

TEST_F(AtAServer, APersonChangesTheOwnPassword) {
  const auto own = app::firebird::Database::Open(server_->Options(name_));
  ASSERT_EQ(app::admin::AdmitOnServer(*own, "MARIA", ""), std::nullopt);
  Start("MARIA", "maria");
  const auto change = [this](std::string_view now, std::string_view next) {
    host::Screen& screen = Open("TfmSenha");
    Type(screen, "EdtAtual", now);
    Type(screen, "EdtNova", next);
    Type(screen, "EdtRepita", next);
    Click(screen, "BtnGravar");
    return Said();
  };
  EXPECT_EQ(change("errada", "roca 'fina'"), Lines{"Usuário ou senha do banco de dados inválidos."});
  EXPECT_EQ(change("maria", "roca à noite"),
            Lines{"No servidor a senha tem somente letras sem acento, algarismos e sinais."});
  EXPECT_EQ(change("maria", "roca 'fina'"), Lines{"Senha alterada."});
  EXPECT_EQ(Refusal("MARIA", "roca 'fina'"), "");
  EXPECT_NE(Refusal("MARIA", "maria"), "");
  EXPECT_EQ(change("roca 'fina'", "maria"), Lines{"Senha alterada."});
  EXPECT_EQ(Refusal("MARIA", "maria"), "");
}

}  // namespace
