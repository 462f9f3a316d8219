// The dialog of a lookup: type, look, Enter.
#pragma once

#include <QWidget>
#include <optional>
#include <string_view>

#include "app/lookup_offer.h"
#include "host/kit/lookup.h"

namespace app::desktop {

/// Shows the offer and waits. `start` is what the search line holds at first, all of it selected. Enter or a double
/// click picks, Esc gives up. Throws host::DatabaseError when the offer cannot be read; the dialog is closed then.
std::optional<host::LookupRow> AskLookup(QWidget* parent, const QString& title, LookupOffer& offer,
                                         const host::TPesquisa& lookup, std::string_view start);

}  // namespace app::desktop
