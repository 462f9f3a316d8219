#include "support/label_printer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace test {
namespace {

sockaddr_in Here(int port) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<in_port_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

}  // namespace

LabelPrinter::LabelPrinter() { SwitchOn(); }

LabelPrinter::~LabelPrinter() { SwitchOff(); }

void LabelPrinter::SwitchOn() {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int again = 1;
  setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &again, sizeof again);
  sockaddr_in address = Here(port_);
  socklen_t size = sizeof address;
  if (bind(listener, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener, 8) != 0 ||
      getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    close(listener);
    throw std::runtime_error("the label printer cannot listen");
  }
  port_ = ntohs(address.sin_port);
  listener_ = listener;
  thread_ = std::thread([this] { Serve(); });
}

void LabelPrinter::SwitchOff() {
  const int listener = listener_.exchange(-1);
  if (listener < 0) return;
  shutdown(listener, SHUT_RDWR);  // wakes whoever waits for a connection
  thread_.join();
  close(listener);
}

void LabelPrinter::Serve() {
  for (int listener = listener_; listener >= 0; listener = listener_) {
    const int connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) return;
    Take(connection);
    close(connection);
  }
}

void LabelPrinter::Take(int connection) {
  std::string bytes;
  std::array<char, 4096> buffer = {};
  for (ssize_t got = 0; (got = recv(connection, buffer.data(), buffer.size(), 0)) > 0;) {
    last_byte_ = std::chrono::steady_clock::now();
    bytes.append(buffer.data(), static_cast<std::size_t>(got));
  }
  const std::lock_guard lock(guard_);
  received_.push_back(std::move(bytes));
}

std::vector<std::string> LabelPrinter::Received() const {
  const std::lock_guard lock(guard_);
  return received_;
}

std::string LabelPrinter::Paper() const {
  std::string paper;
  for (const std::string& job : Received()) paper += job;
  return paper;
}

}  // namespace test
