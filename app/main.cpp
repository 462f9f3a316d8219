// The program's entry: reads the command line, carries the command out, tells every failure in one line.
#include <exception>
#include <iostream>
#include <string>

#include "app/cli/arguments.h"
#include "app/cli/commands.h"
#include "app/cli/module_loader.h"

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int Fail(std::string text, int code) {
  for (char& character : text) {
    if (character == '\n' || character == '\r') character = ' ';
  }
  std::cerr << "tecelagem: " << text << std::endl;
  return code;
}

}  // namespace

int main(int count, char** values) {
  try {
    const auto arguments = app::cli::ReadArguments(count, values, app::cli::ProgramModule);
    return arguments ? app::cli::Carry(*arguments) : 0;
  } catch (const app::cli::UsageError& error) {
    return Fail(error.text, kWrongUsage);
  } catch (const std::exception& error) {
    return Fail(error.what(), kFailed);
  }
}
