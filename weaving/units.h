// The units in which fabrics are ordered and kept in stock, as the material register writes them.
#pragma once

#include <string_view>

namespace weaving {

inline constexpr std::string_view kMetres = "MT";
inline constexpr std::string_view kPieces = "PC";
inline constexpr std::string_view kUnits = "UN";

/// Fabrics counted or measured: written off in kilograms by their unit weight, in stock by piece or metre. `unit` in
/// capitals.
inline bool CountedByWeight(std::string_view unit) { return unit == kPieces || unit == kUnits || unit == kMetres; }

}  // namespace weaving
