// The order screen: what is sent to a knitting mill, the yarn it needs, and the stock lots reserved for it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/host.h"
#include "host/kit/component.h"
#include "host/kit/dataset.h"
#include "host/kit/grid.h"
#include "host/kit/lookup.h"
#include "host/kit/screen.h"
#include "orders/fabric_rules.h"
#include "orders/fields.h"
#include "orders/order_store.h"
#include "orders/yarn_explosion.h"
#include "orders/yarn_reservation.h"
#include "orders/yarn_stock.h"

namespace orders {

/// Where nothing else is said, an operation throws Abort when a check refuses it (the message was shown) and
/// DatabaseError when a statement fails; what the person typed is then still on the screen.
class TfmCadLoteTec : public host::Screen {
 public:
  explicit TfmCadLoteTec(host::Host& host);

  void FormCreate() override;
  void FormClose() override;
  bool FormKeyDown(host::Key key) override;

  // --- the record: cad_lote_tec_record.cpp ----------------------------------------------------------------------
  /// Loads the order whose number stands in the number input, with its yarns and their stock; the caller holds the
  /// order. When that fails the screen is empty but for the number.
  void BuscaDados();
  void BtnIncluirClick();
  void BtnGravarClick();
  /// Replaces the stored order by the one on the screen and makes it durable; an order in state "B" is refused with a
  /// message and left as it is.
  void GravaDados();
  void BtnExcluirClick();
  /// Copies what is on the screen, saved or not, under a new number.
  void BitBtn5Click();
  /// Empties the datasets and the inputs, the number and the stitch size excepted.
  void LimpaTela();
  /// Sum of the rolls of an item; 0 when there are none.
  double BuscaQtdeB(std::string_view numero, std::string_view codigo, std::string_view cor) const;

  // --- inputs and lookups: cad_lote_tec_inputs.cpp --------------------------------------------------------------
  void EdtNumeroExit();
  void EdtMalhariaExit();
  void EdtPrazoExit();
  void EdtMaquinaExit();
  void EdtFluxoExit();
  void EdtDepositoExit();
  void BtnConsultarClick();
  void BtnFecharClick();

  // --- the item grid: cad_lote_tec_items.cpp --------------------------------------------------------------------
  void DBGrid6KeyDown(host::Key key);
  void DBGrid6ColExit();
  void TbItensAfterScroll();
  void TbItensCodigoValidate();
  void TbItensCorValidate();
  void TbItensBeforePost();
  void TbItensBeforeDelete();
  /// Narrows the colour lookup to the colours of the row's fabric.
  void BuscaCores();
  /// False when the fabric has a composition, but none for this colour.
  bool ExisteComposicao(std::string_view material, std::string_view cor) const;

  // --- yarn and stock ---------------------------------------------------------------------------------------------
  /// Adds the yarns that a fabric needs to TbFios.
  void Armazena_Explosao_Fios(std::string_view material, std::string_view cor, std::string_view unidade, double qtde,
                              double peso);
  /// Fills TbEstoque for every yarn of TbFios and sets the warehouse filter to the mill's own yarn warehouse.
  void BuscaEstoqueFio();
  /// Shows only the lots of the current yarn that pass the filter inputs.
  void FiltraEstoqueFios();
  /// What other orders hold reserved on a lot.
  double QtdeReserva(std::string_view numero, std::string_view codigo, std::string_view cor, std::string_view deposito,
                     std::string_view lote) const;
  /// Name of the supplier that delivered the lot last; empty when unknown.
  std::string BuscaFornUltNF(std::string_view codigo, std::string_view lote) const;
  /// Writes the ticked lots as the order's reservations.
  void GravaReserva();
  void TbFiosAfterScroll();
  void TbEstoqueBeforePost();

  // --- components, in tab order -----------------------------------------------------------------------------------
  host::PageControl PageControl1{*this, "PageControl1", {"Acesso", "Manutenção"}};
  host::Edit EdtNumero{*this, "EdtNumero", "Número", host::EditKind::kText, 6};
  host::Edit EdtMalharia{*this, "EdtMalharia", "Malharia", host::EditKind::kText, 6};
  host::Label LblMalharia{*this, "LblMalharia"};
  host::Edit EdtData{*this, "EdtData", "Data", host::EditKind::kDate};
  host::Edit EdtFicha{*this, "EdtFicha", "Ficha Lote", host::EditKind::kText, 20};
  host::Edit EdtPrazo{*this, "EdtPrazo", "Prazo Entrega", host::EditKind::kText, 6};
  host::Label LblPrazo{*this, "LblPrazo"};
  host::Edit EdtMaquina{*this, "EdtMaquina", "Máquina", host::EditKind::kText, 6};
  host::Label LblMaquina{*this, "LblMaquina"};
  host::Edit EdtPonto{*this, "EdtPonto", "Tam. Ponto", host::EditKind::kNumber, 0, "0.000"};
  host::Edit EdtFluxo{*this, "EdtFluxo", "Fluxo", host::EditKind::kText, 6};
  host::Label LblFluxo{*this, "LblFluxo"};
  host::Edit EdtRPM{*this, "EdtRPM", "RPM", host::EditKind::kNumber, 0, "0"};
  host::Edit EdtDeposito{*this, "EdtDeposito", "Depósito", host::EditKind::kText, 6};
  host::Label LblDeposito{*this, "LblDeposito"};

  host::PageControl PageControl2{*this, "PageControl2", {"Itens", "Observações"}};
  host::Dataset TbItens{*this, "TbItens", ItemFields()};
  host::Grid DBGrid6{*this, "DBGrid6", TbItens, ItemColumns()};
  /// The stored remarks are read back as 4000 characters.
  host::Edit EdtObs{*this, "EdtObs", "Observações", host::EditKind::kMemo, 4000};

  host::Dataset TbFios{*this, "TbFios", YarnFields()};
  host::Grid GrdFios{*this, "GrdFios", TbFios, YarnColumns()};
  host::Edit EdtFilDeposito{*this, "EdtFilDeposito", "Depósito", host::EditKind::kText, 6};
  host::Edit EdtFilLote{*this, "EdtFilLote", "Lote", host::EditKind::kText, 32};
  host::Edit EdtFilLocal{*this, "EdtFilLocal", "Local", host::EditKind::kText, 30};
  host::Dataset TbEstoque{*this, "TbEstoque", StockFields()};
  host::Grid GrdEstoque{*this, "GrdEstoque", TbEstoque, StockColumns()};

  host::Button BtnIncluir{*this, "BtnIncluir", "Incluir", [this] { BtnIncluirClick(); }};
  host::Button BtnGravar{*this, "BtnGravar", "&Gravar", [this] { BtnGravarClick(); }};
  host::Button BtnExcluir{*this, "BtnExcluir", "&Excluir", [this] { BtnExcluirClick(); }};
  host::Button BtnConsultar{*this, "BtnConsultar", "Consultar", [this] { BtnConsultarClick(); }};
  host::Button BtnDuplicar{*this, "BtnDuplicar", "&Duplicar", [this] { BitBtn5Click(); }};
  host::Button BtnFechar{*this, "BtnFechar", "&Fechar", [this] { BtnFecharClick(); }};

  host::TPesquisa PqNumero{*this, "PqNumero", "TECEL", "NUMERO"};
  host::TPesquisa PqMalharia{*this, "PqMalharia", "ENTIDADE", "CODCLI"};
  host::TPesquisa PqPrazo{*this, "PqPrazo", "TABPRZ", "PRAZO"};
  host::TPesquisa PqMaquina{*this, "PqMaquina", "MAQUINA", "CODIGO"};
  host::TPesquisa PqFluxo{*this, "PqFluxo", "FLUXOTIN", "CODIGO"};
  host::TPesquisa PqDeposito{*this, "PqDeposito", "DEPOSITO", "CODIGO"};
  host::TPesquisa PqMaterial{*this, "PqMaterial", "MATERIAL", "CODIGO"};
  host::TPesquisa PqCor{*this, "PqCor", "CADCOR", "COR"};

 private:
  /// While one lives, the rules of the datasets and the lookups of descriptions keep still: rows are being put in by
  /// the program.
  class Quiet {
   public:
    explicit Quiet(TfmCadLoteTec& screen) : depth_(screen.quiet_) { ++depth_; }
    ~Quiet() { --depth_; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

   private:
    int& depth_;
  };

  void WireInputs();
  void WireDatasets();
  void Serve(host::Edit& input, host::TPesquisa& lookup);
  void ShowDescription(const host::Edit& code, host::Label& label, std::string_view table, std::string_view key,
                       std::string_view column);
  void RequireKnown(host::Edit& code, std::string_view table, std::string_view key, std::string_view message);

  void RequireRight(std::string_view operation) const;
  void RequireNumber();
  void StartOrder();
  void ShowHeader(const host::TTIQuery& order);
  void ShowItems(host::TTIQuery& order);
  void AppendItem(const host::TTIQuery& order);
  bool MillChanged() const;
  void CheckItems(bool mill_changed);
  void KeepWrittenOffItems();
  [[noreturn]] void RefuseItem(const host::DatasetCursor& item, std::string_view message);
  OrderHeader HeaderOnScreen() const;
  std::vector<OrderItem> ItemsOnScreen() const;
  void StoreReservationsAndOrder();

  void LeaveCode();
  void LeaveColour();
  void KeepKeyOfWrittenOff(std::string_view remembered, std::string_view typed);
  bool AnotherRowIs(std::string_view code, std::string_view colour) const;

  host::Funcoes& funcoes_;
  host::Database& database_;
  OrderStore store_;
  FabricRules fabrics_;
  YarnExplosion explosion_;
  YarnStock stock_;
  YarnReservation reservation_;
  std::vector<std::string> open_tables_;
  int quiet_ = 0;
};

}  // namespace orders
