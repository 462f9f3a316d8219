// Runs the program as a shell would, in a folder of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace test {

struct Ended {
  int code = -1;
  std::string output;
  std::string errors;
};

/// A folder that is removed with the object.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  /// Writes a file and hands back its path.
  std::string Write(const std::string& name, const std::string& text) const;

 private:
  std::filesystem::path path_;
};

std::string ReadText(const std::string& file);

/// The built program.
std::string Program();

/// Runs `program` with these arguments, its input at an end from the start, no password and no display in its
/// environment but what `environment` ("NAME=value") adds.
Ended Start(const std::string& program, const std::vector<std::string>& arguments,
            const std::vector<std::string>& environment = {});
inline Ended Start(const std::vector<std::string>& arguments, const std::vector<std::string>& environment = {}) {
  return Start(Program(), arguments, environment);
}

/// How many lines the text has.
long Lines(const std::string& text);
/// The program ended with this code, one line on standard error that contains `part`, and nothing on standard output.
void ExpectOneLine(const Ended& ended, int code, const std::string& part);

}  // namespace test
