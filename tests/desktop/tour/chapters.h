// The chapters of the manual, in the order in which they are walked: each finds the mill as the one before left it.
#pragma once

#include "desktop/tour/walker.h"

namespace tour {

void SignIn(Walker& walker);
/// Order 000001: two items, what is typed wrong, and the yarn of both reserved.
void TypeOrder(Walker& walker);
void ReserveYarn(Walker& walker);
/// Two rolls of it, and the same weight once more.
void WriteOffRolls(Walker& walker);
/// Order 000003, a copy without reservations: its yarn is chosen roll by roll. (000002 was proposed on the way to the
/// search and given up.)
void ChooseYarn(Walker& walker);
void SearchOrders(Walker& walker);
void ShowComposition(Walker& walker);
void ShowRegisters(Walker& walker);
void Administrate(Walker& walker);

}  // namespace tour
