#include "tests/firebird/child.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <exception>
#include <map>

namespace test {
namespace {

constexpr const char* kSwitch = "--child";

std::map<std::string, ChildWork>& Works() {
  static std::map<std::string, ChildWork> works;
  return works;
}

}  // namespace

RegisterChild::RegisterChild(const std::string& name, ChildWork work) { Works()[name] = std::move(work); }

Child::Child(const std::string& name, const std::vector<std::string>& arguments) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
  std::vector<std::string> words = {"child", kSwitch, name};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  process_ = fork();
  if (process_ == 0) {
    dup2(ends[1], STDOUT_FILENO);
    execv("/proc/self/exe", pointers.data());
    _exit(126);
  }
  close(ends[1]);
  output_ = ends[0];
}

Child::~Child() {
  if (process_ > 0) {
    Kill();
    Wait();
  }
  close(output_);
}

std::string Child::Line() {
  std::string line;
  char letter = 0;
  while (read(output_, &letter, 1) == 1 && letter != '\n') line += letter;
  return line;
}

void Child::Kill() { kill(process_, SIGKILL); }

int Child::Wait() {
  int status = 0;
  waitpid(process_, &status, 0);
  process_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int RunChildWork(int argc, char** argv) {
  const std::vector<std::string> words(argv, argv + argc);
  if (words.size() < 3 || words[1] != kSwitch) return -1;
  try {
    return Works().at(words[2])({words.begin() + 3, words.end()});
  } catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 1;
  }
}

}  // namespace test
