// The write-off of a weaving order: every roll that comes back from the loom is confirmed here.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/kit/report.h"
#include "host/kit/screen.h"
#include "weaving/roll_record.h"
#include "weaving/roll_reversal.h"
#include "writeoff/bar_code.h"
#include "writeoff/item_closing.h"
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
  weaving::NewRoll CurrentRoll() const override;
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
  static constexpr int kPlainText = 1;

  void WireEvents();
  void WireLookups();
  void ShowItem();
  void ShowHeader(host::TTIQuery& order);
  void ShowItems(host::TTIQuery& order, bool reload);
  void ShowRolls(std::unique_ptr<host::TTIQuery> rolls);
  void AppendItem(host::TTIQuery& order);

  void CheckInputs();
  void CheckCodes();
  [[noreturn]] void Reject(std::string_view text, host::Control* back_to);
  /// The checks and all writing of a roll; false when it could not be written. Abort when it was refused or given up.
  bool WriteOffRoll();
  double Quantity() const;  // as typed, to three decimals
  double Pieces() const;    // to one decimal
  double NetWeight();
  double CheckedWeight(double net);
  void ConsumeYarn(double net);
  bool ChooseYarn(yarn::YarnWriteOff& yarn, host::Screen& screen);
  /// False when it could not be written, which was told.
  bool StoreRoll(double net);
  void ClearRoll();
  void OpenDefects();
  void BackToWeighing();

  bool HasRolls() const;
  // What a scanned code came to.
  enum class Scan { kNothing, kItem, kQuantity };
  Scan VerificaCodigoBarraEAN14(std::string_view text);
  Scan ReadWeighed(const BarCode& code);
  Scan ReadPackage(const BarCode& code);
  Scan ReadRollLabel(const BarCode& code);
  /// True when it went as far as the confirmation.
  bool TakeScannedCode();
  void StandOnItem(host::TTIQuery& stock);
  [[noreturn]] void RefuseScan(std::string_view text);

  void TakeWeight(const Weighing& weighing);
  void LogWeighing(const Weighing& weighing);
  void SetUpScale();
  void ShowCapture();
  void PrintLabel();
  void PrintLabelAfterRoll(bool selected);

  /// The current row of the roll list.
  weaving::StoredRoll SelectedRoll() const;
  void CheckReversal();
  void CheckListedRoll(const weaving::StoredRoll& roll, weaving::RollReversal::Standing standing);
  /// All writing of a reversal. Abort when it was refused: undone and told.
  void ReverseRoll(const weaving::StoredRoll& roll, weaving::RollReversal& reversal);
  [[noreturn]] void RefuseReversal(const std::string& text);
  /// The lot in which the roll's fabric lies.
  std::string ReversalLot(const weaving::StoredRoll& roll);

  std::string Order() const;
  bool IsKnown(std::string_view table, std::string_view column, std::string_view value) const;
  std::string DescriptionOf(std::string_view table, std::string_view key, std::string_view code) const;
  host::Database& Db() const { return GetHost().GetTabela().IBDatabase(); }
  host::Funcoes& Services() const { return GetHost().GetFuncoes(); }

  ItemClosing closing_;
  weaving::RollRecord record_;
  ScaleCapture scale_;
  std::string loaded_order_;
  std::string lot_scheme_;
  double last_net_ = 0;  // of the roll written last on this screen
  bool loading_ = false;
};

}  // namespace writeoff
