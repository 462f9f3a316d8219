// What an installation decides about weaving, each parameter by a name and with its meaning. A parameter that was never
// set reads as an empty text.
#pragma once

#include <string>
#include <string_view>

#include "host/funcoes.h"

namespace weaving {

class Parameters {
 public:
  explicit Parameters(host::Funcoes& funcoes) : funcoes_(funcoes) {}

  /// "MAL" 40: how rolls get their lots, one character; see weaving/roll_lot.h.
  std::string LotScheme() const;
  /// "MAL" 50: a label is printed after each roll.
  bool LabelAfterRoll() const { return Is("MAL", 50, "S"); }
  /// "MAL" 60: the defects register opens after each roll.
  bool DefectsAfterRoll() const { return Is("MAL", 60, "S"); }

  /// "MAL" 70 has three answers, and two questions are asked of it. "S" takes what a roll consumes from the order's
  /// reservations; "N" lets a roll be written whose yarn nobody reserved. Blank does neither: consumption then comes
  /// from the composition, and a roll still needs a reservation.
  std::string Reservations() const { return funcoes_.BuscaParametro("MAL", 70); }
  static bool ConsumesReservations(std::string_view reservations) { return reservations == "S"; }
  static bool NeedsReservation(std::string_view reservations) { return reservations != "N"; }

  /// "MAL" 90: what an order reserves is held against stock and consumption.
  bool ReservationsChecked() const { return Is("MAL", 90, "S"); }
  /// "COM" 80: a lot's code begins with its supplier's, whose name is shown.
  bool LotsNameSuppliers() const { return Is("COM", 80, "F"); }
  /// "SIS" 20: labels go to a text printer unless the person chooses otherwise.
  bool PrintsText() const { return Is("SIS", 20, "S"); }

 private:
  bool Is(std::string_view group, int number, std::string_view answer) const {
    return funcoes_.BuscaParametro(group, number) == answer;
  }

  host::Funcoes& funcoes_;
};

}  // namespace weaving
