// What the yarn screen writes for a roll: yarn out, fabric in, and the way back when a step fails.
//
// A box makes what is pending durable, because the program waits for the person. So a failure is undone to the end
// before its box is shown: half a roll must never become durable.
#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"
#include "weaving/roll_lot.h"
#include "yarn/mov_bai_fio.h"

namespace yarn {
namespace {

constexpr std::string_view kBeforeLot = "ANTES_DO_LOTE";
constexpr std::string_view kBeforeFabric = "ANTES_DA_MALHA";
constexpr std::string_view kSubject = "BAIXAS DA TECELAGEM";
constexpr std::size_t kLogWidth = 150;

}  // namespace

YarnMovements TFmMovBaiFio::Movimentos(const Roll& roll, int ordem) {
  return YarnMovements(GetHost(), roll, MaterialMalha, LocalMalha, ordem);
}

void TFmMovBaiFio::MovimentaEstoque(int ordem) {
  Banco().SetSavepoint(kBeforeRoll);
  BaixaLotes(PecaAtual(), ordem);
  EntradaMalha(ordem);
}

void TFmMovBaiFio::BaixaLotes(const Roll& roll, int ordem) {
  LotKey lot;
  double quantity = 0;
  // Where the lot that is being written began; the lots before it are taken back by VoltaFiosExcecao.
  std::string_view began = kBeforeRoll;
  try {
    YarnMovements yarn = Movimentos(roll, ordem);
    bool first = true;
    for (host::DatasetCursor at(TbEst); !at.Eof(); at.Next()) {
      if (!(at.FieldByName("Qtde_B").AsFloat() > 0)) continue;
      if (!first) {
        Banco().SetSavepoint(kBeforeLot);
        began = kBeforeLot;
      }
      first = false;
      quantity = at.FieldByName("Qtde_B").AsFloat();
      lot = {at.FieldByName("Codigo").AsText(), at.FieldByName("Cor").AsText(), at.FieldByName("Deposito").AsText(),
             at.FieldByName("Lote").AsText()};
      yarn.TakeOut(lot, quantity, at.FieldByName("Preco").AsFloat());
    }
    Banco().CommitRetaining();
  } catch (const std::exception& error) {
    Banco().RollbackTo(began);
    Desiste(ordem, "Erro na baixa dos fios",
            "ERRO NA SAIDA DOS FIOS DO LOTE NR.: " + roll.order + " CODIGO: " + lot.code +
                " QUANT: " + host::PointText(quantity),
            error);
  }
}

void TFmMovBaiFio::EntradaMalha(int ordem) {
  const Roll roll = PecaAtual();
  FabricEntry fabric(GetHost(), roll, MaterialMalha, CorMalha, LocalMalha);
  const double quantity = fabric.Quantity(QtdeMalha);
  bool marked = false;
  try {
    Banco().SetSavepoint(kBeforeFabric);
    marked = true;
    opener_->LoteBaixa = LoteDaPeca(roll, ordem);
    fabric.Enter(quantity, opener_->LoteBaixa, CustoDosFios());
    Banco().CommitRetaining();
  } catch (const std::exception& error) {
    if (marked) Banco().RollbackTo(kBeforeFabric);
    Desiste(ordem, "Erro na entrada da malha",
            "ERRO NA ENTRADA DA MALHA DO LOTE NR.: " + roll.order + " CODIGO: " + MaterialMalha +
                " QUANT: " + host::PointText(quantity),
            error);
  }
}

std::string TFmMovBaiFio::LoteDaPeca(const Roll& roll, int ordem) {
  return weaving::RollLot(roll.lot_scheme,
                          {roll.order, ordem, roll.sales_order, roll.return_note, roll.bar_code_ticked, roll.bar_code},
                          [this, &roll] { return Servicos().ProximaOrdemTecelB(roll.order); });
}

YarnCost TFmMovBaiFio::CustoDosFios() const {
  YarnCost cost;
  for (host::DatasetCursor at(TbEst); !at.Eof(); at.Next()) {
    cost.total += at.FieldByName("Qtde_B").AsFloat() * at.FieldByName("Preco").AsFloat();
    cost.weighted += at.FieldByName("Custo_Imp").AsFloat();
  }
  return cost;
}

void TFmMovBaiFio::VoltaFiosExcecao(int ordem) { Movimentos(PecaAtual(), ordem).BringBack(); }

void TFmMovBaiFio::Desiste(int ordem, std::string_view step, const std::string& log, const std::exception& error) {
  const std::string text = error.what();
  Servicos().GeraLog(kSubject, host::Left(log + " " + text, kLogWidth), host::LogOperation::kOther,
                     opener_->CurrentRoll().order, nullptr);
  VoltaFiosExcecao(ordem);
  Inform(std::string(step) + "\n" + text);
  Close();
  throw host::Abort();
}

}  // namespace yarn
