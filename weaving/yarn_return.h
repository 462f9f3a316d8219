// The yarn of a roll that is taken back: into stock again, and to its reservation.
#pragma once

#include "host/host.h"
#include "weaving/roll.h"
#include "weaving/roll_movements.h"

namespace weaving {

/// Returns all yarn that is recorded for the roll and forgets the record. Throws at what failed; what was written
/// before is the caller's to undo.
void EstornaFios(host::Host& host, const StoredRoll& roll, const ReversedBy& by);

}  // namespace weaving
