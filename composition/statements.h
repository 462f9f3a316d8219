// The statements of the composition screen, each put together here and nowhere else. Codes come in plain and are quoted
// here; tables are written by their physical names.
#pragma once

#include <string>
#include <string_view>

#include "host/funcoes.h"

namespace composition {

/// Colours in which a fabric exists: COR, DESCRICAO.
std::string ColoursOfFabric(host::Funcoes& funcoes, std::string_view fabric);
/// The stored composition of a fabric with the descriptions that the grid shows.
std::string StoredComposition(host::Funcoes& funcoes, std::string_view fabric);
/// One row of a composition; its values are named parameters.
std::string InsertComposition(host::Funcoes& funcoes);
/// Takes the whole composition of a fabric away.
std::string DeleteComposition(host::Funcoes& funcoes, std::string_view fabric);
/// Lookup over the colours in which a yarn exists.
std::string ColoursOfYarn(host::Funcoes& funcoes, std::string_view yarn);
/// Lookup over the colours for which a fabric's composition is stored.
std::string StoredColours(host::Funcoes& funcoes, std::string_view fabric);
/// Registers a colour of a yarn, as an empty lot in a deposit.
std::string RegisterYarnColour(host::Funcoes& funcoes, std::string_view yarn, std::string_view colour,
                               std::string_view deposit);

}  // namespace composition
