#include "desktop/tour/chapters.h"
#include "desktop/tour/walks.h"

namespace tour {

void Manual(test::DesktopMill& mill, const Camera& camera, Devices& devices) {
  Walker walker(mill, camera);
  SignIn(walker);
  TypeOrder(walker);
  ReserveYarn(walker);
  PrintOrder(walker);
  MeasureItem(walker);
  LabelRollsToCome(walker);
  WriteOffRolls(walker);
  SearchOrders(walker);
  Administrate(walker);
  ChooseYarn(walker);
  ShowComposition(walker);
  ShowRegisters(walker);
  PrepareStation(walker);
  ConnectScale(walker, devices);
  WeighRolls(walker, devices);
  RegisterDefects(walker);
  PrintLabel(walker, devices);
  ReverseRoll(walker);
  ShowPrinters(walker);
}

}  // namespace tour
