// What a lookup offers, from the database.
#pragma once

#include <memory>

#include "app/firebird/database.h"
#include "app/lookup_offer.h"
#include "host/kit/lookup.h"

namespace app::services {

/// The offer of this lookup's table, filter or statement as they are now; the lookup itself is not kept. Throws
/// host::DatabaseError.
std::unique_ptr<LookupOffer> NewLookupOffer(firebird::Database& database, const host::TPesquisa& lookup);

}  // namespace app::services
