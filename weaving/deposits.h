// Deposits that are found by what they are for, which the register calls their priority.
#pragma once

#include <string>
#include <string_view>

#include "host/funcoes.h"

namespace weaving {

/// Where new stock begins; empty when no deposit is marked so. Throws DatabaseError.
inline std::string FirstDeposit(host::Funcoes& funcoes) {
  return funcoes.Busca_Valor("DEPOSITO", "PRIORIDADE", "CODIGO", funcoes.Aspas("1"), true, true).AsText();
}

/// The mill's own yarn deposit; empty when it has none. Throws DatabaseError.
inline std::string YarnDepositOf(host::Funcoes& funcoes, std::string_view mill) {
  const std::string key = funcoes.Aspas(mill) + ";" + funcoes.Aspas("5");
  return funcoes.Busca_Valor("DEPOSITO", "CODCLI;PRIORIDADE", "CODIGO", key, true, true).AsText();
}

}  // namespace weaving
