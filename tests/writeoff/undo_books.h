// What the books must say after any sequence of rolls and reversals, computed from the rolls that remain.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/mill.h"

namespace test {

class UndoBooks {
 public:
  using Key = std::pair<std::string, int>;  // order and number of a roll

  /// Remembers the books as they are; no roll is written yet.
  explicit UndoBooks(Mill& mill);

  /// A roll came; the program has just written it.
  void Written(const Key& roll);
  /// A roll went.
  void Reversed(const Key& roll);
  /// What was still reserved for an order was given up.
  void GivenUp(const std::string& order);
  /// Whether the fabric of the roll is there to be taken, as a reversal looks at it.
  bool CanReverse(const Key& roll) const;

  std::vector<Key> Rolls() const;
  /// Where the database says something else, one line each.
  std::vector<std::string> Differences();

 private:
  using Figures = std::map<std::string, double>;

  struct Known {
    std::string row;                 // of the roll, as text
    std::vector<std::string> yarns;  // its records of consumed yarn, as text
    std::string item;
    double kilograms = 0;
    std::string fabric_lot;
    double units = 0;  // that came into stock
    Figures taken;     // recorded, by yarn lot
  };

  void SkipMovements();
  Figures Read(const std::string& sql);
  std::vector<std::string> ReadRows(const std::string& sql);
  void Compare(const char* what, const Figures& expected, const Figures& actual);
  void CompareRows();
  Figures Items() const;
  Figures Stock() const;
  Figures Consumed() const;
  Figures Reserved() const;
  std::map<std::string, std::string> Closed();

  Mill& mill_;
  std::map<Key, Known> rolls_;
  Figures stock_;     // at first; then what reversals leave behind is added
  Figures reserved_;  // at first; then what was taken past it is added, and what was given up taken off
  Figures ordered_;
  Figures averages_;
  std::map<std::string, std::string> closed_;
  std::int64_t last_movement_ = 0;
  std::vector<std::string> differences_;
};

}  // namespace test
