// The yarn write-off of a roll as an operator sees it: what the roll consumes, the lots that hold it, and the choice
// between them. What is consumed and written is worked out by weaving/roll_consumption.h and weaving/roll_writing.h.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/kit/screen.h"
#include "weaving/roll_consumption.h"
#include "weaving/roll_writing.h"
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
  /// The fabric of roll `ordem` into stock, and its lot handed back; as MovimentaEstoque.
  void EntradaMalha(int ordem);
  /// Brings back the yarn of roll `ordem`. Throws DatabaseError.
  void VoltaFiosExcecao(int ordem);
  void TbBaixaBeforePost();

  std::string ParamReserva;        // weaving::Parameters::Reservations
  bool UsaFornecedorLote = false;  // the supplier stands beside each lot
  double QtdeReservada = 0;        // of the lot that BaixaFiosReservados took from last

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
  // --- the two lists
  void ShowNeeds();
  /// Shows what was taken and stands on a lot, or still on the one stood on before.
  void ShowTaken(std::optional<std::size_t> stand_on);
  void ShowNeed(std::size_t need);
  void ShowLot(std::size_t lot);
  /// What the operator typed is what is wanted.
  void TakeOverWanted();
  /// Stands on the first need from this one on that still wants something, or on the last one that does.
  void StandFrom(std::size_t need);
  void ShowStockColumns();
  std::size_t CurrentNeed() const;
  std::size_t CurrentLot() const;

  /// Takes the current line from the current lot; false when nothing could be taken.
  bool TakeFromLot();
  void RememberLot(const weaving::StockLot& lot);
  std::vector<weaving::StockLot> RememberedLots() const;
  /// The end of every way to consume: the roll is written and the screen has done its work.
  void Conclude();

  weaving::NewRoll CurrentRoll() const;
  weaving::RollWriting Writing(int number) const { return {GetHost(), CurrentRoll(), number}; }
  /// Tells what failed, closes, ends the action.
  [[noreturn]] void GiveUp(const weaving::RollFailed& failure);

  host::Funcoes& Services() const { return GetHost().GetFuncoes(); }

  YarnWriteOffOpener* opener_ = nullptr;
  weaving::RollConsumption consumption_;
  std::vector<std::size_t> need_rows_;  // rows of TbBaixa by need
  std::vector<std::size_t> lot_rows_;   // rows of TbEst by lot; 0 for one that is not shown
  bool loading_ = false;
};

}  // namespace yarn
