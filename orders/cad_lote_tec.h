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
#include "host/kit/report.h"
#include "host/kit/screen.h"
#include "orders/cad_lote_tec_fields.h"
#include "orders/fabric_rules.h"
#include "orders/order_report.h"
#include "orders/order_search.h"
#include "orders/order_store.h"
#include "orders/order_watch.h"
#include "orders/roll_labels.h"
#include "orders/yarn_explosion.h"
#include "orders/yarn_reservation.h"
#include "orders/yarn_stock.h"
#include "weaving/mill_price.h"
#include "weaving/stock_lot.h"

namespace orders {

/// Where nothing else is said, an operation throws Abort when a check refuses it (the message was shown) and
/// DatabaseError when a statement fails; what the person typed is then still on the screen.
class TfmCadLoteTec : public host::Screen {
 public:
  explicit TfmCadLoteTec(host::Host& host);

  void FormCreate() override;
  void FormClose() override;
  bool FormKeyDown(host::Key key) override;
  /// Header, items, remarks or reservations differ from what was loaded, or from the empty screen.
  bool HasUnsavedWork() const override;
  std::vector<host::KeyHint> KeyHints() const override;

  // --- the search: cad_lote_tec_search.cpp ----------------------------------------------------------------------
  /// Lists the orders that the filters ask for, one row per order and fabric.
  void BtnAConsultarClick();
  /// These three put the number of a row of the list into the number input and the person there; leaving it loads the
  /// order. Without a list nothing happens.
  void DBGrid1DblClick();
  void SpeedButton1Click();  // the row before
  void SpeedButton4Click();  // the row after

  // --- the record: cad_lote_tec_record.cpp ----------------------------------------------------------------------
  /// Loads the order whose number stands in the number input, with its yarns and their stock; the caller holds the
  /// order. When that fails the screen is empty but for the number.
  void BuscaDados();
  void BtnIncluirClick();
  /// Stores the order on the screen, and the reservations with it. Where somebody else changed it since it came on the
  /// screen (or stored a new one under its number), nothing is written and the person may load it again.
  void BtnGravarClick();
  /// Replaces the stored order by the one on the screen and makes it durable; an order in state "B" is refused with a
  /// message and left as it is.
  void GravaDados();
  /// Deletes the order on the screen; one that somebody else changed since is not, as with a save.
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

  // --- paper and labels: cad_lote_tec_paper.cpp -----------------------------------------------------------------
  /// Prints the order as it is stored, after a question when the screen has changes that are not. The screen shows the
  /// same afterwards. Throws InputError when the report cannot be printed.
  void BtnImprimirClick();
  /// Lists the rolls to expect from the printed order in TbRolos.
  void Gera_Itens();
  void PopupMenu1Popup();
  /// Asks for metres and puts their weight into the quantity of the item.
  void CalcularMetros1Click();
  /// Asks how many labels the item shall have.
  void GerarEtiquetas1Click();
  /// Makes that many empty stock rows for the item of the stored order, in the place of the ones it has; their lots are
  /// the rolls' labels. Nothing is written when it refuses.
  void GeraEtiquetas(int quantidade);

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
  host::Label LblAPeriodo{*this, "LblAPeriodo", "Período"};
  host::Edit EdtADe{*this, "EdtADe", "De", host::EditKind::kDate};
  host::Edit EdtAAte{*this, "EdtAAte", "Até", host::EditKind::kDate};
  host::Edit EdtAMalharia{*this, "EdtAMalharia", "Malharia", host::EditKind::kText, 6};
  host::Label LblAMalharia{*this, "LblAMalharia"};
  host::Edit EdtAPrazo{*this, "EdtAPrazo", "Prazo Entrega", host::EditKind::kText, 6};
  host::Label LblAPrazo{*this, "LblAPrazo"};
  host::Edit EdtAMaquina{*this, "EdtAMaquina", "Máquina", host::EditKind::kText, 6};
  host::Label LblAMaquina{*this, "LblAMaquina"};
  host::Edit EdtAMaterial{*this, "EdtAMaterial", "Material", host::EditKind::kText, 15};
  host::Label LblAMaterial{*this, "LblAMaterial"};
  host::Edit EdtAFicha{*this, "EdtAFicha", "Ficha", host::EditKind::kText, 20};
  host::Edit EdtAFluxo{*this, "EdtAFluxo", "Fluxo", host::EditKind::kText, 6};
  host::Label LblAFluxo{*this, "LblAFluxo"};
  host::Edit EdtACor{*this, "EdtACor", "Cor", host::EditKind::kText, 6};
  host::Label LblACor{*this, "LblACor"};
  host::Edit EdtAPedido{*this, "EdtAPedido", "Pedido", host::EditKind::kText, 12};
  host::RadioGroup RgASituacao{*this, "RgASituacao", "Situação", {"Todas", "Pendentes", "Baixadas"}};
  host::Edit EdtAObs{*this, "EdtAObs", "Observação", host::EditKind::kText, 100};
  host::Button BtnAConsultar{*this, "BtnAConsultar", "Consultar", [this] { BtnAConsultarClick(); }};
  host::Dataset TbAcesso{*this, "TbAcesso", SearchFields()};
  host::Grid DBGrid1{*this, "DBGrid1", TbAcesso, SearchColumns()};

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
  host::Edit EdtFilLote{*this, "EdtFilLote", "Lote", host::EditKind::kText, weaving::kLotWidth};
  host::Edit EdtFilLocal{*this, "EdtFilLocal", "Local", host::EditKind::kText, 30};
  host::Dataset TbEstoque{*this, "TbEstoque", StockFields()};
  host::Grid GrdEstoque{*this, "GrdEstoque", TbEstoque, StockColumns()};

  host::Button BtnIncluir{*this, "BtnIncluir", "Incluir", [this] { BtnIncluirClick(); }};
  host::Button BtnGravar{*this, "BtnGravar", "&Gravar", [this] { BtnGravarClick(); }};
  host::Button BtnExcluir{*this, "BtnExcluir", "&Excluir", [this] { BtnExcluirClick(); }};
  host::Button BtnConsultar{*this, "BtnConsultar", "Consultar", [this] { BtnConsultarClick(); }};
  host::Button BtnDuplicar{*this, "BtnDuplicar", "&Duplicar", [this] { BitBtn5Click(); }};
  host::Button BtnImprimir{*this, "BtnImprimir", "&Imprimir", [this] { BtnImprimirClick(); }};
  host::Button BtnFechar{*this, "BtnFechar", "&Fechar", [this] { BtnFecharClick(); }};
  // Last, so that Enter in the number goes on to the mill.
  host::Button SpeedButton1{*this, "SpeedButton1", "Ordem anterior da consulta", [this] { SpeedButton1Click(); }};
  host::Button SpeedButton4{*this, "SpeedButton4", "Próxima ordem da consulta", [this] { SpeedButton4Click(); }};

  host::PopupMenu PopupMenu1{*this, "PopupMenu1"};

  // What the layout of the order reads, beside TbFios; there while it is printed.
  host::Dataset QryRelatorio{*this, "QryRelatorio"};
  host::Dataset QryRaport{*this, "QryRaport"};
  host::Dataset TbRolos{*this, "TbRolos", RollFields()};
  host::Report RvTecelagem{*this, "RvTecelagem"};  // graphic
  host::Report prTxReport{*this, "prTxReport"};    // text

  host::TPesquisa PqAMalharia{*this, "PqAMalharia", "ENTIDADE", "CODCLI"};
  host::TPesquisa PqAPrazo{*this, "PqAPrazo", "TABPRZ", "PRAZO"};
  host::TPesquisa PqAMaquina{*this, "PqAMaquina", "MAQUINA", "MAQUINA"};
  host::TPesquisa PqAMaterial{*this, "PqAMaterial", "MATERIAL", "CODIGO"};
  host::TPesquisa PqAFluxo{*this, "PqAFluxo", "FLUXOTIN", "CODIGO"};
  host::TPesquisa PqACor{*this, "PqACor", "CADCOR", "COR"};
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

  class Printing;

  void PlaceOnPages();
  void WireInputs();
  void WireSearch();
  void WireDatasets();
  void WirePaper();
  void ProposePeriod();
  void TakeNumberOfList();
  void ShowDescription(const host::Edit& code, host::Label& label, std::string_view table, std::string_view key,
                       std::string_view column);
  void RequireKnown(host::Edit& code, std::string_view table, std::string_view key, std::string_view message);

  void RequireRight(std::string_view operation) const;
  void RequireNumber();
  void StartOrder();
  /// The order of the number input, or an empty screen under that number when it is not stored.
  void ShowStored();
  /// Ends the action unless the order is stored as it came on the screen; the person may look at it anew. `outcome` is
  /// the sentence that says what was not done. The caller holds the order.
  void RequireUnchanged(std::string_view outcome);
  /// What a save would write, number excepted, in a form that can be compared.
  std::string WorkOnScreen() const;
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

  void ReadPrintedOrder();
  void ExplodePrintedOrder();
  LabelledItem ItemForLabels();
  LabelledItem HeldItemForLabels();
  void WriteLabels(const LabelledItem& item, bool replace, int count);

  void LeaveCode();
  void LeaveColour();
  void KeepKeyOfWrittenOff(std::string_view remembered, std::string_view typed);
  bool AnotherRowIs(std::string_view code, std::string_view colour) const;

  host::Funcoes& funcoes_;
  host::Database& database_;
  OrderStore store_;
  OrderWatch watch_;
  OrderSearch search_;
  OrderReport report_;
  RollLabels labels_;
  FabricRules fabrics_;
  weaving::MillPrice prices_;
  YarnExplosion explosion_;
  YarnStock stock_;
  YarnReservation reservation_;
  std::vector<std::string> open_tables_;
  std::string saved_work_;  // WorkOnScreen when nothing was typed yet
  int quiet_ = 0;
};

}  // namespace orders
