// The points that the module's screens go back to when a step fails. A box makes durable what is pending, so each of
// them goes back before it says anything.
#pragma once

#include <string_view>

namespace weaving {

/// Before the first statement that a roll writes. Whoever fails while writing the rest of the roll goes back there.
inline constexpr std::string_view kBeforeRoll = "ANTES_DA_PECA";
/// Before each lot of yarn that a roll takes after its first one.
inline constexpr std::string_view kBeforeLot = "ANTES_DO_LOTE";
/// Before the roll's fabric enters stock, its yarn being out.
inline constexpr std::string_view kBeforeFabric = "ANTES_DA_MALHA";
/// Before the first statement that a reversal writes.
inline constexpr std::string_view kBeforeReversal = "ANTES_DO_ESTORNO";
/// After a weight was read and logged: it was read, whatever becomes of the roll.
inline constexpr std::string_view kWeighed = "PESAGEM_REGISTRADA";
/// Before the labels of an item are replaced by new ones.
inline constexpr std::string_view kBeforeLabels = "ETIQUETAS";

}  // namespace weaving
