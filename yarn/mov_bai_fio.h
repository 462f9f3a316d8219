// The yarn write-off of a roll: what it consumes, from which lots, by itself or by the operator's choice.
#pragma once

#include <cstddef>
#include <exception>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/kit/screen.h"
#include "yarn/consumption_queries.h"
#include "yarn/fabric_entry.h"
#include "yarn/yarn_movements.h"
#include "yarn/yarn_write_off.h"

namespace yarn {

class TFmMovBaiFio : public host::Screen, public YarnWriteOff {
 public:
  explicit TFmMovBaiFio(host::Host& host);

  void FormCreate() override;
  /// F6 goes to and fro between the consumptions and the stock.
  bool FormKeyDown(host::Key key) override;
  std::vector<host::KeyHint> KeyHints() const override;

  // --- YarnWriteOff ------------------------------------------------------------------------------------------
  void SetOpener(YarnWriteOffOpener* opener) override;
  void ConsultaFiosOF() override;
  bool BaixaFiosReservados() override;
  bool BaixaFiosLembrados() override;

  /// Adds the lots of the current consumption line's yarn, once per yarn.
  void ConsultaEstoque();
  /// Shows only the lots of the current line, in the deposit and of the lot that were typed.
  void FiltraFio();
  void BitBtn1Click();
  void BitBtn2Click();
  void CbTodosClick();
  /// Writes all of roll `ordem`. Abort when it failed: undone and told.
  void MovimentaEstoque(int ordem);
  /// The fabric of roll `ordem` into stock; as MovimentaEstoque.
  void EntradaMalha(int ordem);
  void VoltaFiosExcecao(int ordem);
  void TbBaixaBeforePost();

  std::string ParamReserva;
  bool UsaFornecedorLote = false;
  double QtdeReservada = 0;

  host::Dataset TbBaixa;
  host::Dataset TbEst;
  host::Grid GrdConsumos;
  host::Edit EdtDeposito;
  host::Label LblDeposito;
  host::TPesquisa PqDeposito;
  host::Edit EdtLote;
  host::TPesquisa PqLote;
  host::Grid GrdEstoque;
  host::CheckBox CbTodos;
  host::Button BitBtn1;
  host::Button BitBtn2;

 private:
  /// Takes the current line from the current lot; false when nothing could be taken.
  bool Baixa();
  double QuantidadeABaixar(bool& refused);
  void BaixaDoConsumo(double quantity);
  void LembraLote(const LotKey& lot);
  bool SobraConsumo() const;
  void ConcluiBaixa();
  int ProximaPeca();
  /// Takes the current line from its reserved lots.
  void BaixaLinhaReservada();
  double QtdeDaReserva(const LotKey& lot);
  enum class Lembrado { kSegue, kPara, kConcluido };
  Lembrado BaixaLoteLembrado(const LotKey& lot);
  std::vector<std::size_t> LinhasDoFio(const LotKey& lot, bool& known) const;

  void CarregaConsumos();
  bool CarregaDasReservas();
  void CarregaDaComposicao();
  void AcrescentaConsumos(host::TTIQuery& query);
  bool NadaEmAberto();
  std::string FornecedorDoLote(const std::string& lot);
  void ColunasDoEstoque();

  void BaixaLotes(const Roll& roll, int ordem);
  YarnMovements Movimentos(const Roll& roll, int ordem);
  Roll PecaAtual() const;
  std::string LoteDaPeca(const Roll& roll, int ordem);
  YarnCost CustoDosFios() const;
  /// The last part of every failure, after all else was undone: brings the yarn back, tells, closes, ends the action.
  [[noreturn]] void Desiste(int ordem, std::string_view step, const std::string& log, const std::exception& error);

  LotKey LoteAtual() const;
  host::Database& Banco() const { return GetHost().GetTabela().IBDatabase(); }
  host::Funcoes& Servicos() const { return GetHost().GetFuncoes(); }

  YarnWriteOffOpener* opener_ = nullptr;
  bool loading_ = false;
  std::map<std::string, std::string> suppliers_;  // names by code, for the lots being listed
};

}  // namespace yarn
