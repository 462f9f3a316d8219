#include "weaving/roll_movements.h"

namespace weaving {
namespace {

// "Baixa de tecelagem".
constexpr const char* kDocumentKind = "BT";

}  // namespace

std::unique_ptr<host::TEstoque> NewRollMovement(host::Host& host, const NewRoll& roll, int number) {
  auto movement = host.NewEstoque();
  movement->Documento = roll.order;
  movement->Ordem = number;
  movement->TipoDocumento = kDocumentKind;
  movement->Cliente = roll.client;
  movement->Maquina = roll.machine;
  movement->Funcionario = roll.employee;
  movement->Data = roll.date;
  movement->Usuario = host.GetFuncoes().vUsuario();
  movement->Baixado = "0";
  movement->Ativo = "1";
  movement->Complemento.clear();
  movement->Local = roll.place;
  return movement;
}

std::unique_ptr<host::TEstoque> NewReversalMovement(host::Host& host, const StoredRoll& roll, const ReversedBy& by) {
  auto movement = host.NewEstoque();
  movement->Documento = roll.order;
  movement->Ordem = roll.number;
  movement->Estorno = true;
  movement->TipoDocumento = kDocumentKind;
  movement->Cliente = by.client;
  movement->Funcionario = by.employee;
  movement->Data = by.date;
  movement->Usuario = host.GetFuncoes().vUsuario();
  return movement;
}

}  // namespace weaving
