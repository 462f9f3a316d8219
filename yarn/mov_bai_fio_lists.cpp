// The two lists of the yarn screen: what the roll consumes, and the lots that hold it.
#include "host/decimal.h"
#include "host/errors.h"
#include "host/restored.h"
#include "host/text.h"
#include "yarn/mov_bai_fio.h"

namespace yarn {
namespace {

// A lot's code begins with its supplier's.
constexpr std::size_t kSupplierWidth = 5;
// Prices are kept with four decimals.
constexpr int kPriceDecimals = 4;

}  // namespace

void TFmMovBaiFio::ConsultaFiosOF() {
  {
    const host::Restored<bool> loading(loading_, true);
    TbBaixa.SetFiltered(false);
    TbBaixa.Empty();
    TbEst.Empty();
    suppliers_.clear();
    UsaFornecedorLote = Servicos().BuscaParametro("COM", 80) == "F";
    ColunasDoEstoque();
    if (opener_ != nullptr) CarregaConsumos();
    TbBaixa.SetFilter("qtde > 0");
    TbBaixa.SetFiltered(true);
    TbBaixa.First();
  }
  BitBtn1.SetEnabled(false);
  FiltraFio();
}

void TFmMovBaiFio::CarregaConsumos() {
  const auto items = Banco().NewQuery();
  ItemsOfOrder(items->SQL, Servicos(), opener_->CurrentRoll().order);
  items->Open();
  const bool by_reservation = items->RecordCount() == 1 && ParamReserva == "S";
  if (!by_reservation || !CarregaDasReservas()) CarregaDaComposicao();
}

// False when the order has nothing reserved that the roll could consume.
bool TFmMovBaiFio::CarregaDasReservas() {
  const auto query = Banco().NewQuery();
  ConsumptionFromReservations(query->SQL, Servicos(), opener_->CurrentRoll().order, QtdeMalha);
  try {
    query->Open();
  } catch (const host::DatabaseError&) {
    if (!NadaEmAberto()) throw;
    Refuse(
        "O item já foi baixado por inteiro e ainda tem fios reservados. Use \"Considerar Reserva como baixada\" para "
        "liberar a reserva.");
  }
  if (query->IsEmpty()) return false;
  AcrescentaConsumos(*query);
  return true;
}

bool TFmMovBaiFio::NadaEmAberto() {
  const auto query = Banco().NewQuery();
  query->SQL.Add("SELECT QTDE - QTDE_B AS ABERTO FROM " + Servicos().DBLocal("TECEL_ITEN", true) +
                 " WHERE NUMERO = " + Servicos().Aspas(opener_->CurrentRoll().order));
  query->Open();
  return !query->IsEmpty() && query->FieldByName("ABERTO").AsFloat() == 0;
}

void TFmMovBaiFio::CarregaDaComposicao() {
  const auto query = Banco().NewQuery();
  ConsumptionFromComposition(query->SQL, Servicos(), MaterialMalha, CorMalha, QtdeMalha, CbTodos.Checked());
  query->Open();
  AcrescentaConsumos(*query);
}

void TFmMovBaiFio::AcrescentaConsumos(host::TTIQuery& query) {
  for (; !query.Eof(); query.Next()) {
    TbBaixa.Append();
    TbBaixa["Codigo"].Set(query.FieldByName("CODIGO"));
    TbBaixa["Descricao"].Set(query.FieldByName("DESCRICAO"));
    TbBaixa["Cor"].Set(query.FieldByName("COR"));
    TbBaixa["Qtde"].Set(query.FieldByName("QTDE"));
    TbBaixa["Qt_Orig"].Set(query.FieldByName("QTDE"));
    TbBaixa["Perc"].Set(query.FieldByName("PERC"));
    TbBaixa.Post();
    ConsultaEstoque();
  }
}

void TFmMovBaiFio::ConsultaEstoque() {
  const std::string code = TbBaixa["Codigo"].AsText();
  const std::string colour = TbBaixa["Cor"].AsText();
  const bool filtered = TbEst.Filtered();
  TbEst.SetFiltered(false);
  const bool listed = TbEst.Locate("Codigo;Cor", {code, colour});
  TbEst.SetFiltered(filtered);
  if (listed) return;

  const auto query = Banco().NewQuery();
  StockOfYarn(query->SQL, Servicos(), opener_->CurrentRoll().order, code, colour);
  query->Open();
  for (; !query->Eof(); query->Next()) {
    TbEst.Append();
    for (const char* field :
         {"Codigo", "Descricao", "Cor", "Deposito", "Lote", "Qtde", "Reservadas", "DescDep", "Local"}) {
      TbEst[field].Set(query->FieldByName(field));
    }
    TbEst["Qtde_B"].Set(0.0);
    TbEst["Preco"].Set(host::RoundTo(query->FieldByName("PRECO_MED").AsFloat(), kPriceDecimals));
    TbEst["Custo_Imp"].Set(query->FieldByName("CUSTO").AsFloat() * (TbBaixa["Perc"].AsFloat() / 100));
    if (UsaFornecedorLote) TbEst["Fornecedor"].Set(FornecedorDoLote(query->FieldByName("LOTE").AsText()));
    TbEst.Post();
  }
}

// The lots of one supplier stand together in a list; its name is asked for once.
std::string TFmMovBaiFio::FornecedorDoLote(const std::string& lot) {
  const std::string code = host::Left(lot, kSupplierWidth);
  const auto found = suppliers_.find(code);
  if (found != suppliers_.end()) return found->second;
  return suppliers_[code] =
             Servicos().Busca_Valor("ENTIDADE", "CODCLI", "NOME", Servicos().Aspas(code), true, true).AsText();
}

}  // namespace yarn
