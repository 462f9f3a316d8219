#include "weaving/parameters.h"

#include "host/text.h"

namespace weaving {

std::string Parameters::LotScheme() const { return host::Left(funcoes_.BuscaParametro("MAL", 40), 1); }

}  // namespace weaving
