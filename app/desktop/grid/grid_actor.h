// What a person does in a grid, handed to the desk. Rows and columns are those of the list.
#pragma once

#include <string>

#include "app/desktop/basics/station.h"
#include "app/desktop/grid/grid_model.h"

namespace app::desktop {

/// Every function is one act of the Station. The grid may be gone when it returns: an act can close its screen.
class GridActor {
 public:
  GridActor(Station& station, GridModel& model);

  Station& GetStation() const { return station_; }
  /// The screen lets the person act on the grid; otherwise it is looked at, copied and exported only.
  bool Live() const;
  /// The selected cell takes typed text.
  bool CanType() const;
  bool IsCheckBox() const;

  /// Gives the grid the focus of the desk; false when what had it was not left.
  bool Enter();
  void ToRow(int row);
  void ToColumn(int column);
  /// A click of the mouse; `toggle` when it hit the box of a check-box cell.
  void Click(int row, int column, bool toggle);
  void Up();
  /// On the last row a new one begins.
  void Down();
  /// A new row after the last.
  void Append();
  void Key(host::Key key);
  void Tick(bool ticked);
  /// False when the text was refused.
  bool Type(const std::string& text);
  /// Empties the selected cell.
  void Clear();
  void DblClick();
  /// Out of the grid, to the next input or the one before.
  void MoveOn(bool back);

 private:
  host::Desk& Desk() const { return station_.Desk(); }
  bool Inserting() const;
  /// Row by identity: what is being typed is settled first, and that may move rows.
  host::ActResult SelectRow(std::size_t id) const;

  Station& station_;
  GridModel& model_;
  host::Grid& grid_;
};

}  // namespace app::desktop
