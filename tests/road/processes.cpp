#include "road/processes.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

extern char** environ;

namespace test {

Station::Station(const std::vector<std::string>& arguments) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  std::string program = std::string(TECELAGEM_BINARY_DIR) + "/road_worker";
  std::vector<std::string> copies = arguments;
  std::vector<char*> argv = {program.data()};
  for (auto& argument : copies) argv.push_back(argument.data());
  argv.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  const int failed = posix_spawn(&process_, program.c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  pipe_ = ends[0];
  if (failed != 0) throw std::runtime_error("cannot start " + program);
}

Station::~Station() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    Wait();
  }
}

Ended Station::Wait() {
  Ended ended;
  std::array<char, 4096> piece;
  for (ssize_t size = 0; (size = read(pipe_, piece.data(), piece.size())) > 0;) {
    ended.output.append(piece.data(), static_cast<std::size_t>(size));
  }
  close(pipe_);
  int status = 0;
  waitpid(process_, &status, 0);
  process_ = -1;
  ended.killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  ended.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return ended;
}

}  // namespace test
