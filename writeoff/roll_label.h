// What the label of a roll tells beside the roll's own row.
#pragma once

#include <string_view>

#include "host/host.h"
#include "host/kit/dataset.h"

namespace writeoff {

/// One row: DESC_COR, COMPOSICAO, LARGURA, GRAMATURA and BARRA of the fabric in this colour (BARRA null where no stock
/// row has one), and UNIDADE, that of the roll's quantity. Throws DatabaseError; the dataset is then as it was.
void LoadFabricOfLabel(host::Host& host, std::string_view code, std::string_view colour, host::Dataset& fabric);

}  // namespace writeoff
