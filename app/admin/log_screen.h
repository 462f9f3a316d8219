// Who did what and when.
#pragma once

#include "app/admin/admin_screen.h"
#include "app/admin/log_search.h"

namespace app::admin {

class TfmLog : public AdminScreen {
 public:
  explicit TfmLog(Application& application);

  void FormCreate() override;
  void FormShow() override;

  void BtnPesquisarClick();

 private:
  LogFilter Typed() const;
  void Show(host::TTIQuery& rows);

 public:
  // In tab order.
  host::Edit EdtDe;
  host::Edit EdtAte;
  host::ComboBox CbUsuario;
  host::ComboBox CbAssunto;
  host::ComboBox CbOperacao;
  host::Edit EdtTexto;
  host::Edit EdtChave;
  host::Button BtnPesquisar;
  host::Label LblAviso;
  host::Dataset TbLog;
  host::Grid GrdLog;
  host::Button BtnFechar;
};

}  // namespace app::admin
