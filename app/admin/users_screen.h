// Who may work with the program, and on which screens.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/admin/list_screen.h"
#include "app/admin/user_store.h"

namespace app::admin {

class TfmUsuarios : public ListScreen {
 public:
  explicit TfmUsuarios(Application& application);

  void FormCreate() override;

  void MarcarTodosClick() { MarkAll("S"); }
  void DesmarcarTodosClick() { MarkAll("N"); }

 private:
  std::unique_ptr<host::TTIQuery> ReadList() override;
  bool LocateRecord() override;
  bool ShowRecord() override;
  void ShowNew() override;
  void Save() override;
  std::string TheRecord() const override;
  void Delete() override;
  void AllowInputs() override;

  void ShowUser(const UserRecord& user);
  void ShowRights(const std::set<Right>& rights);
  void AddRightsRow(const RightsScreen& screen, const std::set<Right>& rights);
  void MarkAll(const char* flag);
  bool Knows(const std::string& screen_class) const;

  UserRecord Typed() const;
  void CheckInputs(const UserRecord& user);
  /// What is stored now, after a check that it is what the screen was filled from.
  std::optional<UserRecord> StoredBefore(const UserRecord& user) const;
  void CheckAccess(const UserRecord& user, const std::optional<UserRecord>& before) const;
  void Log(const UserRecord& user, const std::optional<UserRecord>& before);
  void TellServer(const std::string& code, const std::string& password);

 public:
  // In tab order.
  host::Edit EdtCodigo;
  host::Edit EdtNome;
  host::CheckBox ChkAdministrador;
  host::CheckBox ChkAtivo;
  host::Edit EdtSenha;
  host::Edit EdtRepita;
  host::Label LblAviso;
  host::Dataset TbUsuarios;
  host::Grid GrdUsuarios;
  host::Label LblDireitos;
  host::Dataset TbDireitos;
  host::Grid GrdDireitos;
  host::PopupMenu PpDireitos;
  host::Button BtnIncluir;
  host::Button BtnGravar;
  host::Button BtnExcluir;
  host::Button BtnCancelar;
  host::Button BtnFechar;

 private:
  std::vector<RightsScreen> screens_;
  std::optional<UserRecord> loaded_;  // what the inputs were filled from; nothing for a new user
};

}  // namespace app::admin
