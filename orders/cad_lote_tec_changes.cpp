// What was typed and not saved yet, and what others did to the order meanwhile.
#include <algorithm>
#include <initializer_list>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/kit/busy.h"
#include "orders/cad_lote_tec.h"

namespace orders {
namespace {

// A row as it stands, the one being edited with what was typed so far; empty when nothing is in it.
template <typename ValueOf>
std::string RowText(const ValueOf& value_of, std::initializer_list<const char*> fields) {
  std::string text;
  bool filled = false;
  for (const char* field : fields) {
    const std::string value = value_of(field).AsText();
    filled = filled || !value.empty();
    text += value + '\x1f';
  }
  return filled ? text + '\x1e' : std::string();
}

std::string ItemRows(const host::Dataset& items) {
  const std::size_t count = items.RecordCount() + (items.State() == host::DatasetState::kInsert ? 1 : 0);
  std::vector<std::string> names;
  for (std::size_t at = 0; at < items.FieldCount(); ++at) names.push_back(items.FieldAt(at).Name());
  std::string text;
  for (std::size_t row = 1; row <= count; ++row) {
    const auto value_of = [&](std::string_view field) -> const host::Value& {
      return items.ValueAt(row, static_cast<std::size_t>(std::find(names.begin(), names.end(), field) - names.begin()));
    };
    text += RowText(value_of, {"Codigo", "Cor", "Pedido", "Custo", "Qtde", "Baixada", "Ciclos", "Obs"});
  }
  return text;
}

// The filter hides the lots of other yarns, so they are read with a second cursor; it has the rows as last posted.
std::string ReservationRows(const host::Dataset& lots) {
  const auto same_lot = [&lots](const host::DatasetCursor& row) {
    for (const char* key : {"Codigo", "Cor", "Lote", "Deposito"}) {
      if (row.FieldByName(key).AsText() != lots[key].AsText()) return false;
    }
    return true;
  };
  std::string text;
  for (host::DatasetCursor row(lots); !row.Eof(); row.Next()) {
    const bool edited = lots.InEdit() && same_lot(row);
    const auto value_of = [&](std::string_view field) -> const host::Value& {
      return edited ? lots[field].Get() : row.FieldByName(field);
    };
    if (value_of("Sel").AsText() != "S") continue;
    text += RowText(value_of, {"Codigo", "Cor", "Lote", "Deposito", "Qtde_Res", "Obs"});
  }
  return text;
}

std::string WhatHappened(OrderChange change, const std::string& number, const std::string& by_whom) {
  const std::string order = "A ordem " + number;
  switch (change) {
    case OrderChange::kAltered:
      return order + " foi alterada " + by_whom + ", depois de carregada nesta tela.";
    case OrderChange::kDeleted:
      return order + " foi excluída " + by_whom + ", depois de carregada nesta tela.";
    case OrderChange::kStored:
      return order + " foi gravada " + by_whom + ", depois de iniciada nesta tela.";
    case OrderChange::kNotShown:
    case OrderChange::kNone:
      break;
  }
  return order + " já existe e não está carregada nesta tela.";
}

const char* WhatNow(OrderChange change) {
  if (change == OrderChange::kAltered) return "Deseja carregá-la novamente?";
  return change == OrderChange::kDeleted ? "Deseja limpar a tela?" : "Deseja carregá-la?";
}

}  // namespace

std::string TfmCadLoteTec::WorkOnScreen() const {
  std::string text;
  for (const host::Edit* input :
       {&EdtMalharia, &EdtData, &EdtFicha, &EdtPrazo, &EdtMaquina, &EdtFluxo, &EdtDeposito, &EdtObs}) {
    text += input->Text() + '\x1f';
  }
  for (const host::Edit* input : {&EdtPonto, &EdtRPM}) text += host::PointText(input->Number()) + '\x1f';
  return text + ItemRows(TbItens) + '\x1d' + ReservationRows(TbEstoque);
}

bool TfmCadLoteTec::HasUnsavedWork() const { return WorkOnScreen() != saved_work_; }

// The box ends the hold on the order, which does not matter: nothing has been written, and what is shown afterwards is
// read under a hold of its own.
void TfmCadLoteTec::RequireUnchanged(std::string_view outcome) {
  const std::string number = EdtNumero.Text();
  const OrderChange change = watch_.Look(number);
  if (change == OrderChange::kNone) return;
  const std::string by_whom = change == OrderChange::kNotShown ? std::string() : watch_.ByWhom(number);
  if (Confirm(WhatHappened(change, number, by_whom) + " " + std::string(outcome) + " " + WhatNow(change))) {
    const host::Busy busy(*this);
    ShowStored();
  }
  throw host::Abort();
}

}  // namespace orders
