// Under which subjects the module's screens write to the log, and how much of a text it keeps.
#pragma once

#include <cstddef>
#include <string_view>

namespace weaving {

/// Orders included, altered, deleted, duplicated.
inline constexpr std::string_view kOrderSubject = "ORDEM DE TECELAGEM";
/// Rolls written off and taken back, what failed about them, reservations given up, labels, weights read.
inline constexpr std::string_view kRollSubject = "BAIXAS DA TECELAGEM";
/// Compositions of fabrics included and altered.
inline constexpr std::string_view kCompositionSubject = "CADASTRO DE COMPOSICAO";

/// Characters of a log text; what is longer is cut by whoever writes it.
inline constexpr std::size_t kLogWidth = 150;

}  // namespace weaving
