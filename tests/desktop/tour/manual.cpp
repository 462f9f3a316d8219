#include "desktop/tour/chapters.h"
#include "desktop/tour/walks.h"

namespace tour {

void Manual(test::DesktopMill& mill, const Camera& camera) {
  Walker walker(mill, camera);
  SignIn(walker);
  TypeOrder(walker);
  ReserveYarn(walker);
  WriteOffRolls(walker);
  SearchOrders(walker);
  Administrate(walker);
  ChooseYarn(walker);
  ShowComposition(walker);
  ShowRegisters(walker);
}

}  // namespace tour
