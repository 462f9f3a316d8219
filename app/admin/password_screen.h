// A person changes the own password.
#pragma once

#include "app/application.h"
#include "host/kit/screen.h"

namespace app::admin {

/// For everybody. At a server the password is the server's.
class TfmSenha : public host::Screen {
 public:
  explicit TfmSenha(Application& application);

  void FormShow() override;
  bool HasUnsavedWork() const override { return !EdtNova.Text().empty(); }

  void BtnGravarClick();

 private:
  void CheckInputs();
  /// Throws host::InputError, one sentence, when the present password is another one.
  void Prove();
  void Change();

  Application& application_;

 public:
  // In tab order.
  host::Label LblUsuario;
  host::Edit EdtAtual;
  host::Edit EdtNova;
  host::Edit EdtRepita;
  host::Button BtnGravar;
  host::Button BtnFechar;
};

}  // namespace app::admin
