#include "app/admin/users_screen.h"

#include <algorithm>

#include "app/admin/server_people.h"
#include "app/services/passwords.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::admin {
namespace {

constexpr const char* kLogSubject = "USUARIOS";
constexpr std::size_t kCodeWidth = 10;
constexpr std::size_t kNameWidth = 50;
constexpr std::size_t kPasswordWidth = 60;

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

bool IsPlainCode(const std::string& code) {
  const auto letter = [](char c) { return c >= 'A' && c <= 'Z'; };
  if (code.empty() || !letter(code.front())) return false;
  return std::all_of(code.begin(), code.end(), [&](char c) { return letter(c) || (c >= '0' && c <= '9') || c == '_'; });
}

std::string LetterText(const std::string& letter) {
  return letter == "A" ? "incluir e alterar" : letter == "E" ? "excluir" : letter;
}

}  // namespace

TfmUsuarios::TfmUsuarios(Application& application)
    : ListScreen(application, "TfmUsuarios", "fmUsuarios", "Usuários e direitos"),
      EdtCodigo(*this, "EdtCodigo", "Código", host::EditKind::kText, kCodeWidth),
      EdtNome(*this, "EdtNome", "Nome", host::EditKind::kText, kNameWidth),
      ChkAdministrador(*this, "ChkAdministrador", "Administrador"),
      ChkAtivo(*this, "ChkAtivo", "Ativo", true),
      EdtSenha(*this, "EdtSenha", "Nova senha", host::EditKind::kText, kPasswordWidth),
      EdtRepita(*this, "EdtRepita", "Repita a senha", host::EditKind::kText, kPasswordWidth),
      LblAviso(*this, "LblAviso"),
      TbUsuarios(*this, "TbUsuarios"),
      GrdUsuarios(*this, "GrdUsuarios", TbUsuarios,
                  {{.field = "CODIGO", .caption = "Código", .width = 11},
                   {.field = "NOME", .caption = "Nome", .width = 30},
                   {.field = "ADMINISTRADOR", .caption = "Adm.", .width = 6, .check_box = true},
                   {.field = "ATIVO", .caption = "Ativo", .width = 6, .check_box = true}}),
      LblDireitos(*this, "LblDireitos"),
      TbDireitos(*this, "TbDireitos",
                 {{.name = "TELA", .caption = "Tela"},
                  {.name = "CLASSE", .caption = "Classe"},
                  {.name = "ALTERAR", .width = 1, .caption = "Incluir/alterar"},
                  {.name = "EXCLUIR", .width = 1, .caption = "Excluir"}}),
      GrdDireitos(*this, "GrdDireitos", TbDireitos,
                  {{.field = "TELA", .width = 30, .read_only = true},
                   {.field = "CLASSE", .width = 18, .read_only = true},
                   {.field = "ALTERAR", .width = 14, .check_box = true},
                   {.field = "EXCLUIR", .width = 10, .check_box = true}}),
      PpDireitos(*this, "PpDireitos"),
      BtnIncluir(*this, "BtnIncluir", "&Incluir"),
      BtnGravar(*this, "BtnGravar", "&Gravar"),
      BtnExcluir(*this, "BtnExcluir", "E&xcluir"),
      BtnCancelar(*this, "BtnCancelar", "&Cancelar"),
      BtnFechar(*this, "BtnFechar", "&Fechar") {
  EdtSenha.Secret = EdtRepita.Secret = true;
  for (host::Edit* edit : {&EdtCodigo, &EdtNome, &EdtSenha, &EdtRepita}) edit->OnChange = [this] { Changed(); };
  for (host::CheckBox* box : {&ChkAdministrador, &ChkAtivo}) {
    box->OnClick = [this] {
      Changed();
      AllowInputs();
    };
  }
  GrdUsuarios.SetReadOnly(true);
  GrdDireitos.Popup = &PpDireitos;
  PpDireitos.Add("MarcarTodos", "Marcar todos", [this] { MarcarTodosClick(); });
  PpDireitos.Add("DesmarcarTodos", "Desmarcar todos", [this] { DesmarcarTodosClick(); });
  // The rows are the screens; a person neither adds one nor takes one away.
  TbDireitos.AfterInsert = [this] {
    if (!Filling()) TbDireitos.Cancel();
  };
  TbDireitos.BeforeDelete = [] { throw host::Abort(); };
  for (const char* field : {"ALTERAR", "EXCLUIR"}) {
    TbDireitos[field].OnChange = [this](host::Field&) { Changed(); };
  }
  Wire({TbUsuarios, GrdUsuarios, LblAviso, BtnIncluir, BtnGravar, BtnExcluir, BtnCancelar, BtnFechar});
}

void TfmUsuarios::FormCreate() {
  ListScreen::FormCreate();
  screens_ = ScreensWithRights(App());
}

// --- showing --------------------------------------------------------------------------------------------------------

std::unique_ptr<host::TTIQuery> TfmUsuarios::ReadList() { return ListUsers(Db()); }

bool TfmUsuarios::LocateRecord() { return TbUsuarios.Locate("CODIGO", {EdtCodigo.Text()}); }

bool TfmUsuarios::ShowRecord() {
  const std::optional<UserRecord> user = ReadUser(Db(), TbUsuarios["CODIGO"].AsText());
  if (!user) return false;
  loaded_ = user;
  ShowUser(*user);
  return true;
}

void TfmUsuarios::ShowNew() {
  loaded_.reset();
  ShowUser({});
  EdtCodigo.SetFocus();
}

void TfmUsuarios::ShowUser(const UserRecord& user) {
  EdtCodigo.SetText(user.code);
  EdtNome.SetText(user.name);
  ChkAdministrador.SetChecked(user.administrator);
  ChkAtivo.SetChecked(user.active);
  EdtSenha.Clear();
  EdtRepita.Clear();
  ShowRights(user.rights);
}

void TfmUsuarios::ShowRights(const std::set<Right>& rights) {
  TbDireitos.Empty();
  for (const RightsScreen& screen : screens_) AddRightsRow(screen, rights);
  // Rights on a screen that this program does not know stay in sight: nothing is given unseen.
  for (const Right& right : rights) {
    if (!Knows(right.screen_class) && !TbDireitos.Locate("CLASSE", {right.screen_class})) {
      AddRightsRow({right.screen_class, "(tela desconhecida)"}, rights);
    }
  }
  TbDireitos.First();
}

void TfmUsuarios::AddRightsRow(const RightsScreen& screen, const std::set<Right>& rights) {
  TbDireitos.Append();
  TbDireitos["TELA"].Set(screen.caption);
  TbDireitos["CLASSE"].Set(screen.class_name);
  TbDireitos["ALTERAR"].Set(rights.contains({screen.class_name, "A"}) ? "S" : "N");
  TbDireitos["EXCLUIR"].Set(rights.contains({screen.class_name, "E"}) ? "S" : "N");
  TbDireitos.Post();
}

void TfmUsuarios::MarkAll(const char* flag) {
  const std::size_t row = TbDireitos.RecNo();
  for (TbDireitos.First(); !TbDireitos.Eof(); TbDireitos.Next()) {
    TbDireitos.Edit();
    TbDireitos["ALTERAR"].Set(flag);
    TbDireitos["EXCLUIR"].Set(flag);
    TbDireitos.Post();
  }
  TbDireitos.GoTo(row);
}

// The code is what everything else knows the user by: it is chosen once.
void TfmUsuarios::AllowInputs() {
  EdtCodigo.SetEnabled(IsNew());
  GrdDireitos.SetEnabled(!ChkAdministrador.Checked());
  LblDireitos.SetText(ChkAdministrador.Checked() ? "Um administrador tem todos os direitos." : "Direitos por tela");
}

bool TfmUsuarios::Knows(const std::string& screen_class) const {
  return std::any_of(screens_.begin(), screens_.end(),
                     [&](const RightsScreen& screen) { return screen.class_name == screen_class; });
}

std::string TfmUsuarios::TheRecord() const { return "o usuário " + Quoted(EdtCodigo.Text()); }

// --- storing --------------------------------------------------------------------------------------------------------

UserRecord TfmUsuarios::Typed() const {
  UserRecord user;
  user.code = IsNew() ? host::UpperAscii(host::Trim(EdtCodigo.Text())) : EdtCodigo.Text();
  user.name = host::Trim(EdtNome.Text());
  user.administrator = ChkAdministrador.Checked();
  user.active = ChkAtivo.Checked();
  for (host::DatasetCursor rows(TbDireitos); !rows.Eof(); rows.Next()) {
    const std::string screen_class = rows.FieldByName("CLASSE").AsText();
    if (rows.FieldByName("ALTERAR").AsText() == "S") user.rights.insert({screen_class, "A"});
    if (rows.FieldByName("EXCLUIR").AsText() == "S") user.rights.insert({screen_class, "E"});
  }
  if (loaded_) {
    for (const Right& right : loaded_->rights) {
      if (right.letter != "A" && right.letter != "E") user.rights.insert(right);
    }
  }
  return user;
}

void TfmUsuarios::CheckInputs(const UserRecord& user) {
  if (IsNew() && !IsPlainCode(user.code)) {
    Refuse("O código começa com uma letra e tem somente letras sem acento, algarismos e \"_\".", EdtCodigo);
  }
  if (user.name.empty()) Refuse("Informe o nome.", EdtNome);
  if (NameTaken(Db(), user.name, user.code)) Refuse("Outro usuário já tem esse nome.", EdtNome);
  if (EdtSenha.Text() != EdtRepita.Text()) Refuse("As duas senhas são diferentes.", EdtSenha);
  if (ServerKeepsPasswords(Db())) {
    if (const auto objection = ServerPasswordObjection(EdtSenha.Text())) Refuse(*objection, EdtSenha);
  } else if (IsNew() && EdtSenha.Text().empty()) {  // at a server the person may have one already
    Refuse("Informe a senha.", EdtSenha);
  }
}

std::optional<UserRecord> TfmUsuarios::StoredBefore(const UserRecord& user) const {
  std::optional<UserRecord> before = ReadUser(Db(), user.code);
  if (IsNew() && before) throw host::InputError("O usuário " + Quoted(user.code) + " já existe.");
  if (!IsNew() && before != loaded_) {
    throw host::InputError(ChangedElsewhere(Services(), "O usuário " + Quoted(user.code), kLogSubject, user.code));
  }
  return before;
}

void TfmUsuarios::CheckAccess(const UserRecord& user, const std::optional<UserRecord>& before) const {
  const bool was = before && before->administrator && before->active;
  if (!was || (user.administrator && user.active)) return;
  if (user.code == Services().vUsuarioCodigo()) {
    throw host::InputError("Ninguém tira o próprio acesso: outro administrador deve fazer isso.");
  }
  if (!HasOtherAdministrator(Db(), user.code)) {
    throw host::InputError("O usuário " + Quoted(user.code) + " é o último administrador.");
  }
}

void TfmUsuarios::Save() {
  TbDireitos.Post();
  const UserRecord user = Typed();
  CheckInputs(user);
  const std::string password = EdtSenha.Text();
  const bool on_server = ServerKeepsPasswords(Db());

  TakeTurn(Db(), "TEC_USUARIO");
  const std::optional<UserRecord> before = StoredBefore(user);
  CheckAccess(user, before);
  StoreUser(Db(), before, user);
  Log(user, before);
  if (!password.empty()) {
    if (!on_server) services::SetPassword(Db(), user.code, password);
    Services().GeraLog(kLogSubject, "Senha definida", host::LogOperation::kAlteration, user.code, nullptr);
  }
  Db().MakeDurable();
  loaded_ = user;
  EdtCodigo.SetText(user.code);
  if (on_server && (!before || !password.empty())) TellServer(user.code, password);
}

void TfmUsuarios::Log(const UserRecord& user, const std::optional<UserRecord>& before) {
  const auto log = [&](const std::string& text, host::LogOperation operation) {
    Services().GeraLog(kLogSubject, text, operation, user.code, nullptr);
  };
  const auto state = [](const UserRecord& record) {
    return record.name + (record.administrator ? ", administrador" : "") + (record.active ? "" : ", inativo");
  };
  if (!before) {
    log(state(user), host::LogOperation::kInclusion);
  } else if (state(*before) != state(user)) {
    log(state(*before) + " -> " + state(user), host::LogOperation::kAlteration);
  }
  const std::set<Right> had = before ? before->rights : std::set<Right>();
  const auto log_rights = [&](const char* what, const std::set<Right>& these, const std::set<Right>& those) {
    for (const Right& right : these) {
      if (those.contains(right)) continue;
      log(what + right.screen_class + ", " + LetterText(right.letter), host::LogOperation::kAlteration);
    }
  };
  log_rights("Direito dado: ", user.rights, had);
  log_rights("Direito tirado: ", had, user.rights);
}

// The program's user is stored whatever the server says: its administrator may do his part later.
void TfmUsuarios::TellServer(const std::string& code, const std::string& password) {
  if (const auto refusal = AdmitOnServer(Db(), code, password)) Warn(*refusal);
}

void TfmUsuarios::Delete() {
  const UserRecord user = loaded_.value();
  if (user.code == Services().vUsuarioCodigo()) Refuse("Ninguém exclui a si mesmo.");
  TakeTurn(Db(), "TEC_USUARIO");
  const std::optional<UserRecord> stored = ReadUser(Db(), user.code);
  if (stored != loaded_) {
    throw host::InputError(ChangedElsewhere(Services(), "O usuário " + Quoted(user.code), kLogSubject, user.code));
  }
  if (user.administrator && user.active && !HasOtherAdministrator(Db(), user.code)) {
    throw host::InputError("O usuário " + Quoted(user.code) + " é o último administrador.");
  }
  if (HasDoneSomething(Db(), user)) {
    throw host::InputError("O usuário " + Quoted(user.code) +
                           " tem operações no registro e não pode ser excluído: desmarque \"Ativo\".");
  }
  DeleteUser(Db(), user.code);
  Services().GeraLog(kLogSubject, user.name, host::LogOperation::kDeletion, user.code, nullptr);
  Db().MakeDurable();
  if (!ServerKeepsPasswords(Db())) return;
  if (const auto refusal = ShutOutOnServer(Db(), user.code)) Warn(*refusal);
}

}  // namespace app::admin
