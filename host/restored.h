// A variable that has another value for a while.
#pragma once

namespace host {

/// Sets a variable and puts the former value back at the end of the scope.
template <typename T>
class Restored {
 public:
  Restored(T& variable, T value) : variable_(variable), former_(variable) { variable_ = value; }
  ~Restored() { variable_ = former_; }
  Restored(const Restored&) = delete;
  Restored& operator=(const Restored&) = delete;

 private:
  T& variable_;
  T former_;
};

}  // namespace host
