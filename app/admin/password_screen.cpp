#include "app/admin/password_screen.h"

#include "app/admin/server_people.h"
#include "app/services/passwords.h"
#include "app/services/sign_in.h"
#include "host/errors.h"

namespace app::admin {
namespace {

constexpr std::size_t kPasswordWidth = 60;

}  // namespace

TfmSenha::TfmSenha(Application& application)
    : Screen(application, "TfmSenha", "fmSenha", "Alterar senha"),
      application_(application),
      LblUsuario(*this, "LblUsuario"),
      EdtAtual(*this, "EdtAtual", "Senha atual", host::EditKind::kText, kPasswordWidth),
      EdtNova(*this, "EdtNova", "Senha nova", host::EditKind::kText, kPasswordWidth),
      EdtRepita(*this, "EdtRepita", "Repita a senha nova", host::EditKind::kText, kPasswordWidth),
      BtnGravar(*this, "BtnGravar", "&Gravar"),
      BtnFechar(*this, "BtnFechar", "&Fechar") {
  for (host::Edit* edit : {&EdtAtual, &EdtNova, &EdtRepita}) edit->Secret = true;
  BtnGravar.OnClick = [this] { BtnGravarClick(); };
  BtnFechar.OnClick = [this] { Close(); };
}

void TfmSenha::FormShow() {
  const host::Funcoes& services = application_.GetFuncoes();
  LblUsuario.SetText(services.vUsuarioCodigo() + " - " + services.vUsuario());
  EdtAtual.SetFocus();
}

void TfmSenha::BtnGravarClick() {
  CheckInputs();
  Prove();
  Change();
  for (host::Edit* edit : {&EdtAtual, &EdtNova, &EdtRepita}) edit->Clear();
  Inform("Senha alterada.");
  Close();
}

void TfmSenha::CheckInputs() {
  if (EdtNova.Text().empty()) Refuse("Informe a senha nova.", EdtNova);
  if (ServerKeepsPasswords(application_.GetDatabase())) {
    if (const auto objection = ServerPasswordObjection(EdtNova.Text())) Refuse(*objection, EdtNova);
  }
  if (EdtNova.Text() != EdtRepita.Text()) Refuse("As duas senhas novas são diferentes.", EdtNova);
}

void TfmSenha::Prove() {
  firebird::Database& database = application_.GetDatabase();
  const host::Funcoes& services = application_.GetFuncoes();
  if (!ServerKeepsPasswords(database)) {
    services::ConfirmPassword(database, {services.vUsuarioCodigo(), services.vUsuario()}, EdtAtual.Text(),
                              application_.GetClock().Now());
    return;
  }
  // Only the server can tell, and slows guessing down itself.
  firebird::ConnectOptions options = database.Options();
  options.password = EdtAtual.Text();
  try {
    firebird::Database::Open(options);
  } catch (const host::DatabaseError& error) {
    throw host::InputError(error.what());
  }
}

void TfmSenha::Change() {
  firebird::Database& database = application_.GetDatabase();
  host::Funcoes& services = application_.GetFuncoes();
  if (!ServerKeepsPasswords(database)) {
    services::SetPassword(database, services.vUsuarioCodigo(), EdtNova.Text());
  } else if (const auto refusal = ChangeOwnServerPassword(database, EdtNova.Text())) {
    throw host::InputError(*refusal);
  }
  services.GeraLog("USUARIOS", "Senha alterada pelo próprio usuário", host::LogOperation::kAlteration,
                   services.vUsuarioCodigo(), nullptr);
  database.CommitRetaining();
}

}  // namespace app::admin
