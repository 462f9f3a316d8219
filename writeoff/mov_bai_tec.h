// The write-off of a weaving order: every roll that comes back from the loom is confirmed here.
#pragma once

#include <string>
#include <vector>

#include "host/kit/report.h"
#include "host/kit/screen.h"
#include "writeoff/item_closing.h"
#include "writeoff/roll_record.h"
#include "yarn/yarn_write_off.h"

namespace writeoff {

class TfmMovBaiTec : public host::Screen, public yarn::YarnWriteOffOpener {
 public:
  explicit TfmMovBaiTec(host::Host& host);

  void FormCreate() override;
  /// F6 goes to the items and from there back to the quantity.
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

  // --- yarn::YarnWriteOffOpener ------------------------------------------------------------------------------
  yarn::Roll CurrentRoll() const override;
  host::Dataset& RememberedLots() override { return TbBaixas; }

  host::Dataset TbItens;
  host::Dataset TbRolos;
  host::Dataset TbBaixas;
  host::Dataset QryDefeitos;  // of all rolls of the order; a label picks those of its own
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
  /// The checks and all writing of a roll. Abort when it was refused or given up.
  void BaixaPeca();
  double Quantidade() const;  // as typed, to three decimals
  double Pecas() const;       // to one decimal
  double PesoLiquido();
  double ConferePeso(double net);
  void BaixaFios(double net);
  bool EscolheFios(yarn::YarnWriteOff& yarn, host::Screen& screen);
  void GravaPeca(double net);
  void ZeraPeca();

  std::string Ordem() const;
  bool Existe(std::string_view table, std::string_view column, std::string_view value) const;
  std::string Descricao(std::string_view table, std::string_view key, std::string_view code) const;
  host::Database& Banco() const { return GetHost().GetTabela().IBDatabase(); }
  host::Funcoes& Servicos() const { return GetHost().GetFuncoes(); }

  ItemClosing closing_;
  RollRecord record_;
  std::string loaded_order_;
  std::string lot_scheme_;
  double last_net_ = 0;  // of the roll written last on this screen
  bool loading_ = false;
};

}  // namespace writeoff
