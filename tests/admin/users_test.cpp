// Users and their rights, and what nobody may do to them.
#include "app/services/users.h"

#include <gtest/gtest.h>

#include "admin/admin_mill.h"
#include "app/services/passwords.h"
#include "app/services/sign_in.h"

namespace {

using host::ActResult;
using test::Lines;

class UsersScreen : public test::AdminMill {
 protected:
  UsersScreen() {
    mill_.Insert("TEC_USUARIO", {{"CODIGO", "MARIA"}, {"NOME", "Maria Conceição"}});
    mill_.Insert("TEC_DIREITO", {{"USUARIO", "MARIA"}, {"TELA", "TfmCadLoteTec"}, {"OPERACAO", "A"}});
  }
  host::Screen& Open() { return mill_.Open("TfmUsuarios"); }
  host::Screen& OpenOn(std::string_view code) {
    host::Screen& screen = Open();
    Stand(screen, "TbUsuarios", "CODIGO", code);
    return screen;
  }
  void Fill(host::Screen& screen, std::string_view code, std::string_view name, std::string_view password) {
    mill_.Click(screen, "BtnIncluir");
    mill_.Type(screen, "EdtCodigo", code);
    mill_.Type(screen, "EdtNome", name);
    mill_.Type(screen, "EdtSenha", password);
    mill_.Type(screen, "EdtRepita", password);
  }
  Lines Rights(std::string_view user) {
    Lines lines;
    for (auto& row : mill_.Rows("SELECT TELA, OPERACAO FROM TEC_DIREITO WHERE USUARIO = '" + std::string(user) +
                                "' ORDER BY 1, 2")) {
      lines.push_back(row["TELA"].AsText() + " " + row["OPERACAO"].AsText());
    }
    return lines;
  }
  // Reads as another station would.
  std::string Stored(std::string_view user) {
    auto rows = mill_.Rows("SELECT * FROM TEC_USUARIO WHERE CODIGO = '" + std::string(user) + "'");
    if (rows.empty()) return {};
    auto& row = rows.front();
    return row["NOME"].AsText() + "|" + row["ADMINISTRADOR"].AsText() + "|" + row["ATIVO"].AsText();
  }
};

TEST_F(UsersScreen, ShowsTheUserUnderTheCursorWithTheRights) {
  host::Screen& screen = OpenOn("MARIA");
  EXPECT_EQ(mill_.Text(screen, "EdtCodigo"), "MARIA");
  EXPECT_EQ(mill_.Text(screen, "EdtNome"), "Maria Conceição");
  EXPECT_FALSE(Ticked(screen, "ChkAdministrador"));
  EXPECT_TRUE(Ticked(screen, "ChkAtivo"));
  EXPECT_EQ(mill_.Text(screen, "EdtSenha"), "");
  EXPECT_TRUE(Part<host::Edit>(screen, "EdtSenha").Secret);
  host::Dataset& rights = mill_.Data(screen, "TbDireitos");
  ASSERT_TRUE(rights.Locate("CLASSE", {"TfmCadLoteTec"}));
  EXPECT_EQ(rights["TELA"].AsText(), "Ordens de Tecelagem");
  EXPECT_EQ(rights["ALTERAR"].AsText(), "S");
  EXPECT_EQ(rights["EXCLUIR"].AsText(), "N");
  EXPECT_FALSE(Enabled(screen, "EdtCodigo")) << "the code is chosen once";
  EXPECT_FALSE(screen.HasUnsavedWork());
}

TEST_F(UsersScreen, EveryScreenButTheAdministrationsHasARow) {
  host::Screen& screen = Open();
  host::Dataset& rights = mill_.Data(screen, "TbDireitos");
  std::size_t expected = 0;
  for (const auto& known : mill_.App().MenuScreens()) {
    const bool own = known.menu == "Administração";
    expected += own ? 0 : 1;
    EXPECT_EQ(rights.Locate("CLASSE", {known.class_name}), !own) << known.class_name;
  }
  EXPECT_EQ(rights.RecordCount(), expected);
  EXPECT_TRUE(rights.Locate("CLASSE", {"TFmMovBaiFio"})) << "one that only another screen opens";
}

TEST_F(UsersScreen, IncludesAUserWhoCanThenSignIn) {
  host::Screen& screen = Open();
  Fill(screen, "joao_2", "João da Silva", "tear à noite");
  EXPECT_TRUE(screen.HasUnsavedWork());
  ASSERT_EQ(mill_.Set(screen, "TbDireitos", {{"EXCLUIR", "S"}}), ActResult::kDone);
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{});
  EXPECT_EQ(Stored("JOAO_2"), "João da Silva|N|S");
  EXPECT_EQ(Rights("JOAO_2"), Lines{"TfmCadLoteTec E"});
  EXPECT_FALSE(screen.HasUnsavedWork());
  EXPECT_EQ(mill_.Data(screen, "TbUsuarios")["CODIGO"].AsText(), "JOAO_2");
  EXPECT_EQ(mill_.Text(screen, "EdtSenha"), "") << "a password is not left standing";
  EXPECT_EQ(Log("USUARIOS"), (Lines{"0|JOAO_2|João da Silva", "1|JOAO_2|Direito dado: TfmCadLoteTec, excluir",
                                    "1|JOAO_2|Senha definida"}));
  const auto moment = host::DateTime::FromIso("2026-03-10 15:00:00").value();
  EXPECT_EQ(app::services::SignIn(mill_.Db(), "joao_2", "tear à noite", moment).name, "João da Silva");
}

TEST_F(UsersScreen, ChangesNameRightsAndState) {
  host::Screen& screen = OpenOn("MARIA");
  mill_.Type(screen, "EdtNome", "Maria Conceição Araújo");
  Stand(screen, "TbDireitos", "CLASSE", "TfmCadLoteTec");
  mill_.Set(screen, "TbDireitos", {{"ALTERAR", "N"}});
  Stand(screen, "TbDireitos", "CLASSE", "TFmCadComposi");
  mill_.Set(screen, "TbDireitos", {{"ALTERAR", "S"}, {"EXCLUIR", "S"}});
  Tick(screen, "ChkAtivo", false);
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored("MARIA"), "Maria Conceição Araújo|N|N");
  EXPECT_EQ(Rights("MARIA"), (Lines{"TFmCadComposi A", "TFmCadComposi E"}));
  EXPECT_EQ(Log("USUARIOS"), (Lines{"1|MARIA|Maria Conceição -> Maria Conceição Araújo, inativo",
                                    "1|MARIA|Direito dado: TFmCadComposi, incluir e alterar",
                                    "1|MARIA|Direito dado: TFmCadComposi, excluir",
                                    "1|MARIA|Direito tirado: TfmCadLoteTec, incluir e alterar"}));
  EXPECT_FALSE(app::services::HasRight(mill_.Db(), "MARIA", "TFmCadComposi", "A")) << "inactive";
}

TEST_F(UsersScreen, AChangeHoldsTheListUntilItIsStoredOrGivenUp) {
  host::Screen& screen = OpenOn("MARIA");
  EXPECT_TRUE(Enabled(screen, "GrdUsuarios"));
  EXPECT_FALSE(Enabled(screen, "BtnGravar"));
  mill_.Type(screen, "EdtNome", "Outra");
  EXPECT_TRUE(screen.HasUnsavedWork());
  for (const char* held : {"GrdUsuarios", "BtnIncluir", "BtnExcluir"}) EXPECT_FALSE(Enabled(screen, held)) << held;
  EXPECT_NE(mill_.Text(screen, "LblAviso"), "");
  ASSERT_EQ(mill_.Click(screen, "BtnCancelar"), ActResult::kDone);
  EXPECT_EQ(mill_.Text(screen, "EdtNome"), "Maria Conceição");
  EXPECT_EQ(mill_.Text(screen, "EdtCodigo"), "MARIA");
  EXPECT_TRUE(Enabled(screen, "GrdUsuarios"));
  EXPECT_FALSE(screen.HasUnsavedWork());
  EXPECT_EQ(mill_.Text(screen, "LblAviso"), "");
}

TEST_F(UsersScreen, WhatCannotBeStoredIsRefusedAtItsInput) {
  host::Screen& screen = Open();
  const auto refused = [&](std::string_view code, std::string_view name, std::string_view password,
                           std::string_view repeated) {
    if (Enabled(screen, "BtnIncluir")) mill_.Click(screen, "BtnIncluir");
    mill_.Type(screen, "EdtCodigo", code);
    mill_.Type(screen, "EdtNome", name);
    mill_.Type(screen, "EdtSenha", password);
    mill_.Type(screen, "EdtRepita", repeated);
    mill_.Messages();
    EXPECT_NE(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
    const Lines said = mill_.Messages();
    const host::Control* focused = mill_.Desk().Focused();
    return (said.size() == 1 ? said.front() : "?") + "|" + (focused == nullptr ? "" : focused->Name());
  };
  const std::string code =
      "O código começa com uma letra e tem somente letras sem acento, algarismos e \"_\".|EdtCodigo";
  EXPECT_EQ(refused("", "Ana", "x", "x"), code);
  EXPECT_EQ(refused("1ANA", "Ana", "x", "x"), code);
  EXPECT_EQ(refused("JOÃO", "Ana", "x", "x"), code);
  EXPECT_EQ(refused("A'NA", "Ana", "x", "x"), code);
  EXPECT_EQ(refused("ANA", "  ", "x", "x"), "Informe o nome.|EdtNome");
  EXPECT_EQ(refused("ANA", "MARIA CONCEIÇÃO", "x", "x"), "Outro usuário já tem esse nome.|EdtNome");
  EXPECT_EQ(refused("ANA", "admin", "x", "x"), "Outro usuário já tem esse nome.|EdtNome");
  EXPECT_EQ(refused("ANA", "Ana", "x", "X"), "As duas senhas são diferentes.|EdtSenha");
  EXPECT_EQ(refused("ANA", "Ana", "", ""), "Informe a senha.|EdtSenha");
  EXPECT_EQ(refused("maria", "Ana", "x", "x"), "O usuário \"MARIA\" já existe.|BtnGravar");
  EXPECT_EQ(Count("TEC_USUARIO"), 2);
  EXPECT_EQ(Log("USUARIOS"), Lines{});
}

TEST_F(UsersScreen, ANewPasswordTakesTheWaitAway) {
  const auto moment = host::DateTime::FromIso("2026-03-10 14:30:00").value();
  for (int i = 0; i < 5; ++i) EXPECT_THROW(app::services::SignIn(mill_.Db(), "MARIA", "x", moment), std::exception);
  host::Screen& screen = OpenOn("MARIA");
  mill_.Type(screen, "EdtSenha", "nova");
  mill_.Type(screen, "EdtRepita", "nova");
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Log("USUARIOS"), Lines{"1|MARIA|Senha definida"});
  EXPECT_EQ(app::services::SignIn(mill_.Db(), "MARIA", "nova", moment).code, "MARIA");
}

TEST_F(UsersScreen, NobodyTakesTheOwnAccess) {
  mill_.Exec("UPDATE TEC_USUARIO SET ADMINISTRADOR = 'S' WHERE CODIGO = 'MARIA'");
  host::Screen& screen = OpenOn("ADMIN");
  for (const char* box : {"ChkAdministrador", "ChkAtivo"}) {
    Tick(screen, box, false);
    EXPECT_NE(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
    EXPECT_EQ(mill_.Messages(), Lines{"Ninguém tira o próprio acesso: outro administrador deve fazer isso."}) << box;
    mill_.Click(screen, "BtnCancelar");
  }
  mill_.Person().Answer("Deseja excluir o usuário \"ADMIN\"?", "yes");
  EXPECT_NE(mill_.Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), (Lines{"Deseja excluir o usuário \"ADMIN\"?", "Ninguém exclui a si mesmo."}));
  EXPECT_EQ(Stored("ADMIN"), "ADMIN|S|S");
}

// Two administrators take each other's access away: the second one finds himself the last.
TEST_F(UsersScreen, TheLastAdministratorStays) {
  mill_.Exec("UPDATE TEC_USUARIO SET ADMINISTRADOR = 'S' WHERE CODIGO = 'MARIA'");
  test::Mill::Options there;
  there.database = mill_.Path();
  there.user = "MARIA";
  test::Mill other(there);
  host::Screen& screen = OpenOn("MARIA");
  host::Screen& others = other.Open("TfmUsuarios");
  ASSERT_EQ(other.Data(others, "TbUsuarios")["CODIGO"].AsText(), "ADMIN");
  other.Desk().Check(Part<host::CheckBox>(others, "ChkAtivo"), false);
  Tick(screen, "ChkAdministrador", false);
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_NE(other.Click(others, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(other.Messages(), Lines{"Somente um administrador pode usar a tela \"Usuários e direitos\"."});
  EXPECT_EQ(Count("TEC_USUARIO WHERE ADMINISTRADOR = 'S' AND ATIVO = 'S'"), 1);
}

TEST_F(UsersScreen, ALastAdministratorIsNeitherDemotedNorDeleted) {
  mill_.Insert("TEC_USUARIO", {{"CODIGO", "CHEFE"}, {"NOME", "Chefe"}, {"ADMINISTRADOR", "S"}});
  test::Mill::Options there;
  there.database = mill_.Path();
  there.user = "CHEFE";
  test::Mill other(there);
  host::Screen& screen = other.Open("TfmUsuarios");
  StandAt(other, screen, "TbUsuarios", "CODIGO", "ADMIN");
  // What is checked as the action begins is not yet the whole truth: somebody deactivates CHEFE meanwhile.
  other.Person().OnShown = [&](const auto&) {
    mill_.Exec("UPDATE TEC_USUARIO SET ATIVO = 'N' WHERE CODIGO = 'CHEFE'");
  };
  other.Person().Answer("Deseja excluir", "yes");
  EXPECT_NE(other.Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(other.Messages().back(), "O usuário \"ADMIN\" é o último administrador.");
  EXPECT_EQ(Stored("ADMIN"), "ADMIN|S|S");
}

TEST_F(UsersScreen, DeletesWhoNeverDidAnything) {
  host::Screen& screen = OpenOn("MARIA");
  EXPECT_EQ(mill_.Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(Stored("MARIA"), "Maria Conceição|N|S") << "the default is No";
  mill_.Person().Answer("Deseja excluir o usuário \"MARIA\"?", "yes");
  ASSERT_EQ(mill_.Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(Stored("MARIA"), "");
  EXPECT_EQ(Rights("MARIA"), Lines{});
  EXPECT_EQ(Log("USUARIOS"), Lines{"2|MARIA|Maria Conceição"});
  EXPECT_EQ(mill_.Text(screen, "EdtCodigo"), "ADMIN");
}

TEST_F(UsersScreen, WhoDidSomethingIsDeactivatedInstead) {
  const auto refused = [&] {
    host::Screen& screen = OpenOn("MARIA");
    mill_.Person().Answer("Deseja excluir", "yes");
    EXPECT_NE(mill_.Click(screen, "BtnExcluir"), ActResult::kDone);
    EXPECT_EQ(mill_.Messages().back(),
              "O usuário \"MARIA\" tem operações no registro e não pode ser excluído: desmarque \"Ativo\".");
    EXPECT_EQ(Stored("MARIA"), "Maria Conceição|N|S");
  };
  mill_.Exec(
      "INSERT INTO TEC_LOG (USUARIO, DATA_HORA, ASSUNTO, OPERACAO) VALUES ('Maria Conceição', "
      "'2026-03-01 08:00:00', 'BAIXA', 0)");
  refused();
  mill_.Exec("UPDATE TEC_LOG SET USUARIO = 'Maria Antes do Casamento', ASSUNTO = 'ACESSO', CHAVE = 'MARIA'");
  refused();
}

TEST_F(UsersScreen, AUserWhoWasChangedElsewhereIsNotOverwritten) {
  host::Screen& screen = OpenOn("MARIA");
  mill_.Type(screen, "EdtNome", "Outra");
  test::Mill::Options there;
  there.database = mill_.Path();
  test::Mill other(there);
  host::Screen& others = other.Open("TfmUsuarios");
  StandAt(other, others, "TbUsuarios", "CODIGO", "MARIA");
  other.Set(others, "TbDireitos", {{"EXCLUIR", "S"}});
  ASSERT_EQ(other.Click(others, "BtnGravar"), ActResult::kDone);
  EXPECT_NE(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(),
            Lines{"O usuário \"MARIA\" foi alterado em outra estação (último a alterar: ADMIN). Cancele para ver como "
                  "está agora e altere de novo."});
  EXPECT_EQ(Stored("MARIA"), "Maria Conceição|N|S");
  EXPECT_TRUE(screen.HasUnsavedWork());
  mill_.Click(screen, "BtnCancelar");
  mill_.Data(screen, "TbDireitos").Locate("CLASSE", {"TfmCadLoteTec"});
  EXPECT_EQ(mill_.Data(screen, "TbDireitos")["EXCLUIR"].AsText(), "S");
}

TEST_F(UsersScreen, AnAdministratorNeedsNoTicksAndTheMenuMarksAllOfThem) {
  host::Screen& screen = OpenOn("MARIA");
  ASSERT_EQ(mill_.Desk().PickMenu(screen, "Marcar todos"), ActResult::kDone);
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Rights("MARIA").size(), 2 * mill_.Data(screen, "TbDireitos").RecordCount());
  ASSERT_EQ(mill_.Desk().PickMenu(screen, "Desmarcar todos"), ActResult::kDone);
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Rights("MARIA"), Lines{});
  EXPECT_TRUE(Enabled(screen, "GrdDireitos"));
  Tick(screen, "ChkAdministrador", true);
  EXPECT_FALSE(Enabled(screen, "GrdDireitos"));
  EXPECT_EQ(mill_.Text(screen, "LblDireitos"), "Um administrador tem todos os direitos.");
}

TEST_F(UsersScreen, RightsThatThisProgramDoesNotKnowStay) {
  mill_.Insert("TEC_DIREITO", {{"USUARIO", "MARIA"}, {"TELA", "TfmDoFuturo"}, {"OPERACAO", "A"}});
  mill_.Insert("TEC_DIREITO", {{"USUARIO", "MARIA"}, {"TELA", "TfmCadLoteTec"}, {"OPERACAO", "I"}});
  host::Screen& screen = OpenOn("MARIA");
  EXPECT_TRUE(mill_.Data(screen, "TbDireitos").Locate("CLASSE", {"TfmDoFuturo"}));
  mill_.Type(screen, "EdtNome", "Maria");
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Rights("MARIA"), (Lines{"TfmCadLoteTec A", "TfmCadLoteTec I", "TfmDoFuturo A"}));
}

TEST_F(UsersScreen, APersonNeitherAddsNorRemovesScreens) {
  host::Screen& screen = OpenOn("MARIA");
  host::Dataset& rights = mill_.Data(screen, "TbDireitos");
  const std::size_t screens = rights.RecordCount();
  host::Grid& grid = mill_.GridOf(screen, "TbDireitos");
  mill_.Desk().SelectRow(grid, screens);
  mill_.Desk().GridKey(grid, host::Key::kDown);
  EXPECT_EQ(rights.State(), host::DatasetState::kBrowse);
  EXPECT_EQ(mill_.Desk().GridKey(grid, host::Key::kDelete), ActResult::kRefused);
  EXPECT_EQ(rights.RecordCount(), screens);
}

TEST_F(UsersScreen, AFailingStatementStoresNothing) {
  host::Screen& screen = Open();
  Fill(screen, "ANA", "Ana", "senha");
  mill_.Set(screen, "TbDireitos", {{"ALTERAR", "S"}});
  FailOnceAtEach(screen, 10, [&] { return mill_.Click(screen, "BtnGravar"); });
  EXPECT_EQ(Stored("ANA"), "Ana|N|S");
  EXPECT_EQ(Rights("ANA").size(), 1u);
}

class NoAdministrator : public UsersScreen {};

TEST_F(NoAdministrator, SeesOnlyTheOwnPasswordInTheMenu) {
  mill_.Exec("UPDATE TEC_USUARIO SET ADMINISTRADOR = 'N' WHERE CODIGO = 'ADMIN'");
  Lines seen;
  for (const auto& known : mill_.App().MenuScreens()) {
    if (known.menu == "Administração") seen.push_back(known.class_name);
  }
  EXPECT_EQ(seen, Lines{"TfmSenha"});
}

TEST_F(NoAdministrator, IsRefusedAtTheDoor) {
  mill_.Exec("UPDATE TEC_USUARIO SET ADMINISTRADOR = 'N' WHERE CODIGO = 'ADMIN'");
  for (const auto& [screen_class, caption] :
       std::vector<std::pair<std::string, std::string>>{{"TfmUsuarios", "Usuários e direitos"},
                                                        {"TfmParametros", "Parâmetros"},
                                                        {"TfmPeriodos", "Períodos contábeis"},
                                                        {"TfmLog", "Registro de operações"}}) {
    EXPECT_EQ(mill_.Desk().Open(screen_class), nullptr);
    EXPECT_EQ(mill_.Messages(), Lines{"Somente um administrador pode usar a tela \"" + caption + "\"."});
  }
}

TEST_F(NoAdministrator, IsRefusedAtEveryActionWhenTheRightWentMeanwhile) {
  host::Screen& screen = OpenOn("MARIA");
  mill_.Exec("UPDATE TEC_USUARIO SET ADMINISTRADOR = 'N' WHERE CODIGO = 'ADMIN'");
  const Lines refusal = {"Somente um administrador pode usar a tela \"Usuários e direitos\"."};
  for (const char* button : {"BtnIncluir", "BtnExcluir"}) {
    EXPECT_EQ(mill_.Click(screen, button), ActResult::kFailed) << button;
    EXPECT_EQ(mill_.Messages(), refusal) << button;
  }
  mill_.Type(screen, "EdtNome", "Outra");
  EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kFailed);
  EXPECT_EQ(mill_.Messages(), refusal);
  EXPECT_EQ(Stored("MARIA"), "Maria Conceição|N|S");
}

class PasswordScreen : public test::AdminMill {
 protected:
  PasswordScreen() { app::services::SetPassword(mill_.Db(), "ADMIN", "velha"); }
  ActResult Change(host::Screen& screen, std::string_view now, std::string_view next, std::string_view repeated) {
    mill_.Type(screen, "EdtAtual", now);
    mill_.Type(screen, "EdtNova", next);
    mill_.Type(screen, "EdtRepita", repeated);
    mill_.Messages();
    return mill_.Click(screen, "BtnGravar");
  }
};

TEST_F(PasswordScreen, WhoKnowsTheOldOneGetsANewOne) {
  host::Screen& screen = mill_.Open("TfmSenha");
  EXPECT_EQ(mill_.Text(screen, "LblUsuario"), "ADMIN - ADMIN");
  EXPECT_EQ(Change(screen, "velha", "nova à tarde", "nova à tarde"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{"Senha alterada."});
  EXPECT_TRUE(app::services::CheckPassword(mill_.Db(), "ADMIN", "nova à tarde"));
  EXPECT_EQ(mill_.Desk().Find("TfmSenha"), nullptr);
  EXPECT_EQ(Log("USUARIOS"), Lines{"1|ADMIN|Senha alterada pelo próprio usuário"});
}

TEST_F(PasswordScreen, RefusalsLeaveTheOldOne) {
  host::Screen& screen = mill_.Open("TfmSenha");
  EXPECT_EQ(Change(screen, "velha", "", ""), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines{"Informe a senha nova."});
  EXPECT_EQ(Change(screen, "velha", "nova", "outra"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines{"As duas senhas novas são diferentes."});
  EXPECT_EQ(Change(screen, "errada", "nova", "nova"), ActResult::kFailed);
  EXPECT_EQ(mill_.Messages(), Lines{"Usuário ou senha incorretos."});
  EXPECT_TRUE(app::services::CheckPassword(mill_.Db(), "ADMIN", "velha"));
}

TEST_F(PasswordScreen, GuessingTheOldOneIsSlowToo) {
  host::Screen& screen = mill_.Open("TfmSenha");
  for (int i = 0; i < 5; ++i) Change(screen, "errada", "nova", "nova");
  EXPECT_EQ(Change(screen, "velha", "nova", "nova"), ActResult::kFailed);
  EXPECT_EQ(mill_.Messages(), Lines{"Muitas tentativas erradas: aguarde 30 segundos e tente de novo."});
  EXPECT_TRUE(app::services::CheckPassword(mill_.Db(), "ADMIN", "velha"));
}

TEST_F(PasswordScreen, EverybodyHasIt) {
  mill_.Exec("UPDATE TEC_USUARIO SET ADMINISTRADOR = 'N' WHERE CODIGO = 'ADMIN'");
  host::Screen& screen = mill_.Open("TfmSenha");
  EXPECT_EQ(Change(screen, "velha", "nova", "nova"), ActResult::kDone);
}

}  // namespace
