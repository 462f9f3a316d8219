// The defects register: what an inspection found in the rolls of a fabric in an order, or in a lot.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/kit/screen.h"
#include "writeoff/defect_store.h"

namespace writeoff {

/// Whoever opens it fills the header and then shows it. Without an order and a fabric there is nothing to register.
class TfmCadDefTec : public host::Screen {
 public:
  explicit TfmCadDefTec(host::Host& host);

  void FormShow() override;
  std::vector<host::KeyHint> KeyHints() const override;
  bool HasUnsavedWork() const override;

  /// Lists what is stored.
  void BuscaMovDefeitos();
  /// Stores the list in the place of what is stored, and closes. Where somebody else stored meanwhile, nothing is
  /// written and the person may load it again.
  void BitBtn1Click();
  void DBGrid1KeyDown(host::Key key);
  void TbDefAfterInsert();
  void TbDefBeforePost();
  void PqDefeitoFechaPesquisa();
  void PqFuncFechaPesquisa();
  void PqTurnoFechaPesquisa();
  void PqQualidadeFechaPesquisa();

  host::Dataset TbDef;
  host::Edit EdtOF;
  host::Edit EdtOrdem;
  host::Edit EdtTipo;
  host::Edit EdtArtigo;
  host::Label LblArtigo;
  host::Edit EdtCor;
  host::Edit EdtLote;
  host::Edit EdtFunc;
  host::Label LblFunc;
  host::Label LblTurno;
  host::Label LblAviso;
  host::Grid DBGrid1;
  host::Button BitBtn1;
  host::Button BitBtn2;
  host::TPesquisa PqDefeito;
  host::TPesquisa PqFunc;
  host::TPesquisa PqTurno;
  host::TPesquisa PqQualidade;

 private:
  void WireGrid();
  void ShowHeader();
  /// Refuses the cell unless the table knows the code.
  void CheckCode(const host::Field& field, std::string_view table, std::string_view key, std::string_view what) const;
  void CheckQuantity() const;
  void CheckRoll();
  void ShowDescription(std::string_view code, std::string_view table, std::string_view column,
                       std::string_view shown_in);
  void FillIn(std::string_view field, const host::Value& value);
  bool IsBlank() const;
  /// The list as it is to be stored. Refuses what has no roll.
  std::vector<Defect> TypedDefects();
  void CheckUnchanged();

  bool HasRoll() const;
  DefectScope Scope() const;
  host::Database& Db() const { return GetHost().GetTabela().IBDatabase(); }
  host::Funcoes& Services() const { return GetHost().GetFuncoes(); }

  DefectStore store_;
  std::string version_;  // of what is listed
  bool loading_ = false;
  bool changed_ = false;
};

}  // namespace writeoff
