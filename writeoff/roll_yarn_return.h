// The yarn of a roll that is taken back: into stock again, and to its reservation.
#pragma once

#include "host/host.h"
#include "writeoff/roll_reversal.h"

namespace writeoff {

/// Returns all yarn that is recorded for the roll and forgets the record. Throws at what failed; what was written
/// before is the caller's to undo.
void EstornaFios(host::Host& host, const Reversal& reversal);

}  // namespace writeoff
