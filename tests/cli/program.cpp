#include "program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace test {

namespace fs = std::filesystem;

Folder::Folder() {
  std::string pattern = (fs::temp_directory_path() / "tecelagem-cli-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = pattern;
}

Folder::~Folder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string Folder::Write(const std::string& name, const std::string& text) const {
  std::ofstream(path_ / name, std::ios::binary) << text;
  return (path_ / name).string();
}

std::string ReadText(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string Program() { return std::string(TECELAGEM_BINARY_DIR) + "/tecelagem"; }

namespace {

[[noreturn]] void Become(const std::string& program, const std::vector<std::string>& arguments,
                         const std::vector<std::string>& environment, const std::string& output,
                         const std::string& errors) {
  for (const char* name : {"TECELAGEM_PASSWORD", "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) unsetenv(name);
  for (const std::string& variable : environment) putenv(const_cast<char*>(variable.c_str()));
  const int in = open("/dev/null", O_RDONLY);
  const int out = open(output.c_str(), O_WRONLY | O_CREAT, 0600);
  const int err = open(errors.c_str(), O_WRONLY | O_CREAT, 0600);
  dup2(in, STDIN_FILENO);
  dup2(out, STDOUT_FILENO);
  dup2(err, STDERR_FILENO);
  std::vector<char*> values;
  std::string name = program;
  std::vector<std::string> copies = arguments;
  values.push_back(name.data());
  for (std::string& copy : copies) values.push_back(copy.data());
  values.push_back(nullptr);
  execv(program.c_str(), values.data());
  _exit(127);
}

}  // namespace

Ended Start(const std::string& program, const std::vector<std::string>& arguments,
            const std::vector<std::string>& environment) {
  const Folder folder;
  const std::string output = folder / "output";
  const std::string errors = folder / "errors";
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) Become(program, arguments, environment, output, errors);
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(output), ReadText(errors)};
}

long Lines(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

void ExpectOneLine(const Ended& ended, int code, const std::string& part) {
  EXPECT_EQ(ended.code, code) << ended.errors;
  EXPECT_EQ(Lines(ended.errors), 1) << ended.errors;
  EXPECT_NE(ended.errors.find(part), std::string::npos) << ended.errors;
  EXPECT_EQ(ended.output, "");
}

}  // namespace test
