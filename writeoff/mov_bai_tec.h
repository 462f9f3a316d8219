// The write-off of a weaving order: every roll that comes back from the loom is confirmed here.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/kit/report.h"
#include "host/kit/screen.h"
#include "writeoff/bar_code.h"
#include "writeoff/item_closing.h"
#include "writeoff/roll_record.h"
#include "writeoff/roll_reversal.h"
#include "writeoff/scale_capture.h"
#include "yarn/yarn_write_off.h"

namespace writeoff {

class TfmMovBaiTec : public host::Screen, public yarn::YarnWriteOffOpener {
 public:
  explicit TfmMovBaiTec(host::Host& host);

  void FormCreate() override;
  /// F5 takes the weight from the scale, F10 sets its port up. F6 goes to the items and from there back to the
  /// quantity.
  bool FormKeyDown(host::Key key) override;
  std::vector<host::KeyHint> KeyHints() const override;
  /// A quantity that was typed and not confirmed.
  bool HasUnsavedWork() const override;
  bool Maximised() const override { return true; }

  /// Loads the order whose number is typed. `reload`, after a roll: item, tare, deposit and machine stay.
  void BuscaDados(bool reload);
  void BtnConfirmaClick();
  void EdtFuncExit();
  void TbItensAfterScroll();
  void TbItensBaixadaChange();
  void ConsiderarReservaComoBaixadaClick();
  void CalcularMetros1Click();
  void wwDBGrid1DblClick();
  void CbBarraClick();
  void BtnDefeitosClick();
  void BtnExtornaClick();
  /// Reads the scanned code and, when that leaves a quantity, confirms the roll.
  void EdtBarraExit();
  /// F5: weighs and confirms. Nothing happens while no bar codes are read or an order is being typed.
  void CapturaPeso();
  /// Prints the label of the roll selected.
  void ImprimirEtiqueta1Click();
  /// The defects of all rolls of an order into QryDefeitos.
  void CarregaDefeitos(std::string_view order);
  static std::optional<std::string> prTxReportUnknownFunction(std::string_view name,
                                                              const std::vector<std::string>& arguments);

  // --- yarn::YarnWriteOffOpener ------------------------------------------------------------------------------
  yarn::Roll CurrentRoll() const override;
  host::Dataset& RememberedLots() override { return TbBaixas; }

  host::Dataset TbItens;
  host::Dataset TbRolos;
  host::Dataset TbBaixas;
  host::Dataset QryDefeitos;  // of all rolls of the order; a label picks those of its own
  host::Dataset QryEtiqueta;  // about the fabric of the roll whose label is printed
  host::Edit EdtLote;
  host::TPesquisa PqLote;
  host::Edit EdtFornecedor;
  host::Label LblFornecedor;
  host::Edit EdtData;
  host::Edit EdtDeposito;
  host::Label LblDeposito;
  host::TPesquisa PqDeposito;
  host::Edit EdtNFRet;
  host::Edit EdtNFCob;
  host::Edit EdtLocal;
  host::Edit EdtTurno;
  host::Edit EdtFunc;
  host::Label LblFunc;
  host::TPesquisa PqFunc;
  host::Edit EdtMaquina;
  host::Label LblMaquina;
  host::TPesquisa PqMaquina;
  // What is typed once for an order stands above, what every roll needs below: Enter goes from the tare to
  // "Confirmar", and from there back to the quantity.
  host::Edit EdtCodigo;
  host::Label LblCodigo;
  host::Edit EdtCor;
  host::CheckBox CbBarra;
  host::Edit EdtBarra;
  host::Edit EdtQtde;
  host::Edit EdtPecas;
  host::Edit EdtTara;
  host::Label LblCaptura;
  host::Button BtnConfirma;
  host::Button BtnDefeitos;
  host::Button BtnExtorna;
  host::ComboBox CbImpressao;
  host::Button BtnFechar;
  host::Grid GrdItens;
  host::Grid GrdRolos;
  host::PopupMenu PopItens;
  host::PopupMenu PopQtde;
  host::PopupMenu PopRolos;
  host::Report RvEtiqueta;
  host::Report prTxReport;

 private:
  static constexpr int kWindows = 0;  // of CbImpressao
  static constexpr int kTexto = 1;

  void LigaEventos();
  void LigaPesquisas();
  void MostraItem();
  void MostraCabecalho(host::TTIQuery& order);
  void MostraItens(host::TTIQuery& order, bool reload);
  void MostraRolos(host::TTIQuery& rolls);
  void AcrescentaItem(host::TTIQuery& order);

  void ConfereCampos();
  void ConfereCadastros();
  [[noreturn]] void Recusa(std::string_view text, host::Control* back_to);
  /// The checks and all writing of a roll; false when it could not be written. Abort when it was refused or given up.
  bool BaixaPeca();
  double Quantidade() const;  // as typed, to three decimals
  double Pecas() const;       // to one decimal
  double PesoLiquido();
  double ConferePeso(double net);
  void BaixaFios(double net);
  bool EscolheFios(yarn::YarnWriteOff& yarn, host::Screen& screen);
  /// False when it could not be written, which was told.
  bool GravaPeca(double net);
  void ZeraPeca();
  void AbreDefeitos();
  void VoltaParaPesagem();

  bool TemPecas() const;
  // What a scanned code came to.
  enum class Lido { kNada, kItem, kQuantidade };
  Lido VerificaCodigoBarraEAN14(std::string_view text);
  Lido LePesado(const BarCode& code);
  Lido LeEmbalagem(const BarCode& code);
  Lido LeEtiqueta(const BarCode& code);
  /// True when it went as far as the confirmation.
  bool LeCodigoDeBarras();
  void StandOnItem(host::TTIQuery& stock);
  [[noreturn]] void RecusaLeitura(std::string_view text);

  void RecebePeso(const Weighing& weighing);
  void RegistraPesagem(const Weighing& weighing);
  void ConfiguraBalanca();
  void MostraCaptura();
  void ImprimeEtiqueta();
  void ImprimeEtiquetaDaBaixa(bool selected);

  /// The current row of the roll list.
  RollRow PecaSelecionada() const;
  void ConfereEstorno();
  void ConferePecaListada(const RollRow& roll, RollReversal::Standing standing);
  /// All writing of a reversal. Abort when it was refused: undone and told.
  void EstornaPeca(const RollRow& roll, RollReversal& reversal);
  [[noreturn]] void RecusaEstorno(const std::string& text);
  /// The lot in which the roll's fabric lies.
  std::string LoteDoEstorno(const RollRow& roll);

  std::string Ordem() const;
  bool Existe(std::string_view table, std::string_view column, std::string_view value) const;
  std::string Descricao(std::string_view table, std::string_view key, std::string_view code) const;
  host::Database& Banco() const { return GetHost().GetTabela().IBDatabase(); }
  host::Funcoes& Servicos() const { return GetHost().GetFuncoes(); }

  ItemClosing closing_;
  RollRecord record_;
  ScaleCapture scale_;
  std::string loaded_order_;
  std::string lot_scheme_;
  double last_net_ = 0;  // of the roll written last on this screen
  bool loading_ = false;
};

}  // namespace writeoff
