// A person at the screens with the keyboard alone, and what that person sees.
#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "desktop/support/desktop_mill.h"

namespace test {

/// Names are those of the components. What cannot be done throws std::runtime_error.
class Hands {
 public:
  explicit Hands(DesktopMill& desktop) : desktop_(desktop) {}

  /// The control with the focus, by name; empty when there is none. Says so when the keyboard is elsewhere.
  std::string Focused() const;
  /// The screen that the control with the focus stands on.
  host::Screen& Screen() const;
  /// Tab from input to input, Ctrl+Enter out of a grid, with Shift backwards, until the control has the focus.
  void GoTo(std::string_view control);
  /// GoTo, and typed over what stands there. The input is not left.
  void Fill(std::string_view input, const QString& text);
  /// Fill, and Enter.
  void Enter(std::string_view input, const QString& text);

  // --- in the grid with the focus ---------------------------------------------------------------------------------
  host::Grid& Grid() const;
  /// Enter from cell to cell as far as this one, from the first cell of the row when it lies behind.
  void Cell(std::string_view field);
  /// Cell, and typed. The cell is not left.
  void Type(std::string_view field, const QString& text);
  /// Up and Down to the first row with these texts.
  void Row(const std::vector<std::pair<std::string, std::string>>& values);
  /// What a cell of the current row shows.
  std::string Shown(std::string_view field) const;
  /// Fields of every row that the grid shows, one line each, "; " between.
  std::vector<std::string> Rows(const host::Screen& screen, std::string_view grid,
                                const std::vector<std::string>& fields) const;

  /// Text of an input, label or the like, from its widget.
  std::string Text(const host::Screen& screen, std::string_view name) const;

 private:
  DesktopMill& desktop_;
};

/// A mill at half past two in the afternoon of the 10th of March 2026, the same for everybody who works on it.
inline constexpr const char* kAfternoon = "2026-03-10 14:30:00";

class Scenario : public ::testing::Test {
 protected:
  explicit Scenario(const std::function<void(Mill&)>& prepare = {});

  host::Screen& OpenOrders() { return desktop_.Open("TfmCadLoteTec"); }
  /// Opens the orders and types a new one for M00001 into the warehouse DF, as far as the first cell of the items.
  host::Screen& StartOrder();
  /// A second station on the same mill, with a program and a scripted person of its own.
  Mill& Elsewhere();
  /// An order of F1 in colour 01 that another station saved, without reservations; its number.
  std::string OrderFromElsewhere(double quantity);
  /// Types the items' cells in the order in which they stand.
  void TypeItem(const QString& code, const QString& colour, const QString& quantity);

  /// A box with that very text comes up while `act` runs, and no other.
  void ExpectRefused(const QString& title, const QString& text, const std::function<void()>& act,
                     host::Icon icon = host::Icon::kInformation);
  std::string Scalar(std::string_view sql) { return desktop_.GetMill().Scalar(sql).AsText(); }
  std::string Focused() const { return hands_.Focused(); }

  DesktopMill desktop_;
  Hands hands_{desktop_};
  std::unique_ptr<Mill> elsewhere_;
};

}  // namespace test
