// What was learnt about statements that differ only in their literals.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace app::firebird {

struct TextPlan {
  bool doubtful = false;   // the engine did not take this statement with parameters
  bool refused = false;    // and it took the text: run that always
  std::vector<bool> kept;  // literals that must stay in the text; empty: none
};

/// Plans by the statement's text with all literals as "?".
class TextPlans {
 public:
  TextPlan& Of(const std::string& shape) {
    if (plans_.size() >= kMost && !plans_.contains(shape)) plans_.clear();
    return plans_[shape];
  }
  /// The structure changed: types may have changed with it.
  void Clear() { plans_.clear(); }

 private:
  static constexpr std::size_t kMost = 2000;  // a program sends far fewer; a script may not fill the memory

  std::unordered_map<std::string, TextPlan> plans_;
};

}  // namespace app::firebird
