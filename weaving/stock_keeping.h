// Whether a fabric's stock is kept at all.
#pragma once

#include <string_view>

#include "host/funcoes.h"

namespace weaving {

/// What a person is told of a fabric whose stock is not kept.
inline constexpr std::string_view kStockNotKept =
    "Material não está ativo para controlar estoque. Impossível continuar.";

/// False also for a fabric that is in no register. Throws DatabaseError.
inline bool KeepsStock(host::Funcoes& funcoes, std::string_view fabric) {
  return funcoes.Busca_Valor("MATERIAL", "CODIGO", "ESTOQUE", funcoes.Aspas(fabric), true, true).AsText() == "S";
}

}  // namespace weaving
