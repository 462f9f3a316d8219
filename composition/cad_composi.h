// The composition of a fabric: which yarns in which proportions, and in which colour for each colour of the fabric.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "composition/composition_grid.h"
#include "composition/composition_store.h"
#include "host/kit/screen.h"

namespace composition {

/// One row per yarn, one column per colour in which the fabric exists. Nothing is stored until "Gravar", which replaces
/// the fabric's whole composition.
class TFmCadComposi : public host::Screen {
 public:
  explicit TFmCadComposi(host::Host& host);

  void FormCreate() override;
  void FormClose() override;
  bool HasUnsavedWork() const override;

  /// Rebuilds the grid, without rows, for these colours.
  void CriaTabela(const std::vector<FabricColour>& colours);
  /// The colours in which the fabric of the code input exists.
  std::vector<FabricColour> BuscaCores();
  /// Loads the stored composition of a fabric. Everything is read before the grid is touched: after a
  /// host::DatabaseError the screen shows what it showed before.
  void BuscaDados(std::string_view fabric);
  /// Replaces the stored composition of the fabric in the code input by the grid's; asks for it to be made durable.
  /// Throws host::DatabaseError; the grid is as before.
  void GravaDados();
  /// Works consumption and percentages out again, and says so when they do not make 100%. The fabric makes no
  /// difference. Throws host::InputError when there is no consumption to share.
  void Calcula_Comp(std::string_view fabric);

  void btnGravarClick();
  void DBGridKeyDown(host::Key key);
  void EdtCodMatExit();
  void EdtCodMatChange();
  void edtCodClienteExit();
  void edtCodClienteChange();
  void pqMatFechaPesquisa();
  void PqRegraFechaPesquisa();
  void PqCorFechaPesquisa();
  void ppManutencaoPopup();
  void LocalizarCor1Click();
  void pqMatLocalizaFechaPesquisa();

 private:
  host::Funcoes& Services() const { return GetHost().GetFuncoes(); }
  host::Database& Connection() const { return GetHost().GetTabela().IBDatabase(); }

  void WireInputs();
  void WireGrid();
  void DropBlankRows();
  void AskToRecalculate();
  void ShowHeader(const host::TTIQuery& first_row);
  void AddStoredRow(const host::TTIQuery& row);
  void SetBatchElement(host::TTIQuery& insert, std::size_t element, const FabricColour& colour);
  void LeaveCell(std::string_view field);
  void PassReadOnlyColumns();
  void LeaveYarn();
  void LeaveFeeders();
  void LeaveRule();
  void LeaveStitch();
  void LeaveYarnColour(const FabricColour& colour);
  void OpenLookupOf(std::string_view field);
  void ApplyRule(const std::string& rule);

 public:
  // In tab order.
  host::PageControl PcComposi;
  host::Edit EdtCodMat;
  host::Label LblCodMat;
  host::Edit edtCodCliente;
  host::Label LblCodCliente;
  host::Edit EdtLargura;
  host::Edit EdtGramatura;
  host::Edit EdtDiametro;
  host::Edit EdtFinura;
  host::Edit EdtKgRolo;
  host::Edit EdtAgulhas;
  host::Edit EdtDesperdicio;
  host::Edit EdtRPM;
  host::Label LblConsumo;
  host::Dataset TbComposi;
  host::Grid GrdComposi;
  host::Button btnGravar;
  host::Button BtnFechar;
  host::PopupMenu ppManutencao;
  host::TPesquisa PqCodMat;
  host::TPesquisa PqCliente;
  host::TPesquisa pqMat;
  host::TPesquisa PqRegra;
  host::TPesquisa PqCor;
  host::TPesquisa pqMatLocaliza;

 private:
  CompositionStore store_;
  std::vector<FabricColour> colours_;
  // The grid was loaded for the fabric in the code input (or carried over to it on purpose). Only then may it be
  // stored: after a failed or refused load it still shows another fabric.
  bool grid_is_of_fabric_ = false;
  bool changed_ = false;
};

}  // namespace composition
