// The chapters of the manual, in the order in which they are walked: each finds the mill as the one before left it.
#pragma once

#include "desktop/tour/devices.h"
#include "desktop/tour/walker.h"

namespace tour {

void SignIn(Walker& walker);
/// Order 000001: two items, what is typed wrong, and the yarn of both reserved.
void TypeOrder(Walker& walker);
void ReserveYarn(Walker& walker);
/// It on paper; a length in metres for one item, given up again; labels for the rolls of the other.
void PrintOrder(Walker& walker);
void MeasureItem(Walker& walker);
void LabelRollsToCome(Walker& walker);
/// Two rolls of it, and the same weight once more.
void WriteOffRolls(Walker& walker);
/// Order 000003, a copy without reservations: its yarn is chosen roll by roll. (000002 was proposed on the way to the
/// search and given up.)
void ChooseYarn(Walker& walker);
void SearchOrders(Walker& walker);
void ShowComposition(Walker& walker);
void ShowRegisters(Walker& walker);
void Administrate(Walker& walker);

/// Lots of rolls are their labels' from now on, and each roll gets a label. Then two rolls of order 000001 with scanner
/// and scale, the defects of the second, its label once more in print and drawn, and the first taken back.
void PrepareStation(Walker& walker);
void ConnectScale(Walker& walker, const Devices& devices);
void WeighRolls(Walker& walker, Devices& devices);
void RegisterDefects(Walker& walker);
void PrintLabel(Walker& walker, const Devices& devices);
void ReverseRoll(Walker& walker);
void ShowPrinters(Walker& walker);

}  // namespace tour
