// Starts stations in processes of their own.
#pragma once

#include <string>
#include <vector>

namespace test {

struct Ended {
  bool killed = false;  // by SIGKILL
  int exit_code = 0;
  std::string output;  // standard output and error together
};

/// A started road_worker; Wait before it goes out of scope.
class Station {
 public:
  explicit Station(const std::vector<std::string>& arguments);
  ~Station();
  Station(const Station&) = delete;
  Station& operator=(const Station&) = delete;
  Ended Wait();

 private:
  int process_ = -1;
  int pipe_ = -1;
};

}  // namespace test
