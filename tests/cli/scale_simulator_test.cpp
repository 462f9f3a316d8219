// The command scale-simulator, as a trainer starts it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "program.h"

namespace {

namespace fs = std::filesystem;
using test::Ended;
using test::Folder;
using test::Start;

// What comes out of that port until this text is there; waits for the port to appear first. Nothing comes for long:
// what came so far.
std::string Hear(const std::string& port, const std::string& request, const std::string& until) {
  for (int i = 0; i < 500 && !fs::exists(port); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  const int line = open(port.c_str(), O_RDWR | O_NOCTTY);
  if (line < 0) return "no port";
  std::string heard;
  if (write(line, request.data(), request.size()) < 0) heard = "not written: ";
  while (heard.find(until) == std::string::npos) {
    pollfd ready{line, POLLIN, 0};
    if (poll(&ready, 1, 5000) <= 0) break;
    char bytes[64];
    const ssize_t count = read(line, bytes, sizeof bytes);
    if (count <= 0) break;
    heard.append(bytes, static_cast<std::size_t>(count));
  }
  close(line);
  return heard;
}

struct Session {
  Ended ended;
  std::string heard;
};

Session Listen(const std::vector<std::string>& options, const std::string& request, const std::string& until) {
  const Folder folder;
  const std::string link = folder / "balanca";
  std::vector<std::string> arguments = {"scale-simulator", "--link", link, "--seconds", "1.5"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  Session session;
  std::thread program([&] { session.ended = Start(arguments); });
  session.heard = Hear(link, request, until);
  program.join();
  EXPECT_FALSE(fs::is_symlink(link));
  EXPECT_NE(session.ended.output.find("na porta " + link), std::string::npos) << session.ended.output;
  return session;
}

TEST(ScaleSimulatorCommand, SendsWithoutBeingAsked) {
  const Session session = Listen({"--weight", "18.25"}, "", "\n");
  EXPECT_EQ(session.ended.code, 0) << session.ended.errors;
  EXPECT_NE(session.heard.find("ST,GS,+  18.250kg\r\n"), std::string::npos) << session.heard;
  EXPECT_EQ(session.ended.output.find("Quadros enviados: 0."), std::string::npos) << session.ended.output;
}

TEST(ScaleSimulatorCommand, AnswersOnlyWhenAsked) {
  const Session session = Listen({"--protocol", "1"}, "\x05", "\n");
  EXPECT_EQ(session.heard, "ST,GS,+  20.500kg\r\n");
  EXPECT_NE(session.ended.output.find("Pedidos recebidos: 1. Quadros enviados: 1."), std::string::npos)
      << session.ended.output;
}

TEST(ScaleSimulatorCommand, DigitsAsTheStationExpectsThem) {
  const Session session = Listen({"--protocol", "2", "--decimals", "1", "--interval", "20"}, "", "\r");
  EXPECT_NE(session.heard.find("002050\r"), std::string::npos) << session.heard;
}

TEST(ScaleSimulatorCommand, BehavesAsTold) {
  EXPECT_NE(Listen({"--behaviour", "unstable"}, "", "\n").heard.find("US,GS,"), std::string::npos);
  EXPECT_NE(Listen({"--behaviour", "overload", "--protocol", "1"}, "\x05", "\n").heard.find("OL,GS,"),
            std::string::npos);
}

TEST(ScaleSimulatorCommand, CtrlCEndsItAndRemovesTheLink) {
  const Folder folder;
  const std::string link = folder / "balanca";
  const Ended ended = Start("/usr/bin/timeout", {"--preserve-status", "-s", "INT", "0.5", test::Program(),
                                                 "scale-simulator", "--link", link});
  EXPECT_EQ(ended.code, 0) << ended.errors;
  EXPECT_NE(ended.output.find("Quadros enviados"), std::string::npos) << ended.output;
  EXPECT_FALSE(fs::is_symlink(link));
}

TEST(ScaleSimulatorCommand, WrongValuesAreOneLine) {
  const std::vector<std::vector<std::string>> wrong = {
      {"--protocol", "3"}, {"--protocol", "um"}, {"--behaviour", "drunk"},
      {"--weight", "-1"},  {"--weight", "nan"},  {"--weight", "1e9"},
      {"--decimals", "8"}, {"--interval", "0"},  {"--seconds", "-1"},
      {"--seconds"},       {"--link"},           {"--interval", "1.5"},
      {"balanca"}};
  for (const auto& options : wrong) {
    std::vector<std::string> arguments = {"scale-simulator"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Ended ended = Start(arguments);
    EXPECT_EQ(ended.code, 2) << options.front();
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(std::count(ended.errors.begin(), ended.errors.end(), '\n'), 1) << ended.errors;
  }
}

TEST(ScaleSimulatorCommand, WhatCannotBe) {
  const Folder folder;
  const std::string file = folder.Write("carta.txt", "querida malharia");
  for (const std::vector<std::string>& options : {std::vector<std::string>{"--link", file},
                                                  {"--link", folder / "nada/porta"},
                                                  {"--protocol", "2", "--weight", "99999", "--decimals", "7"}}) {
    std::vector<std::string> arguments = {"scale-simulator"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Ended ended = Start(arguments);
    EXPECT_EQ(ended.code, 1);
    EXPECT_EQ(std::count(ended.errors.begin(), ended.errors.end(), '\n'), 1) << ended.errors;
  }
  EXPECT_EQ(test::ReadText(file), "querida malharia");
}

}  // namespace
