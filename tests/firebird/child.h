// Other processes: stations that die, users without rights.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace test {

using ChildWork = std::function<int(const std::vector<std::string>& arguments)>;

/// Gives a name to what a child process may do.
struct RegisterChild {
  RegisterChild(const std::string& name, ChildWork work);
};

/// A started process of this program that does nothing but the named work.
class Child {
 public:
  Child(const std::string& name, const std::vector<std::string>& arguments);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  /// Waits until the child has written a line, and hands it back.
  std::string Line();
  void Kill();
  /// Its exit code, -1 when it was killed.
  int Wait();

 private:
  int process_ = -1;
  int output_ = -1;
};

/// Runs the work that the command line asks for; -1 when it asks for none.
int RunChildWork(int argc, char** argv);

}  // namespace test
