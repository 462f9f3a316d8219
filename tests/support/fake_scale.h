// A scale that is not there, and the port it would stand at: what it says is prepared, no time passes.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/equipment.h"

namespace test {

/// Bytes that come so long after what set them off.
struct Piece {
  std::string bytes;
  std::chrono::milliseconds after{0};
};

class FakePort;

/// Of all the ports that a mill's screens make, the one made last is the one that bytes come to.
class FakeScale {
 public:
  /// What the scale sends after the port is opened next; each call prepares one opening.
  void AfterOpening(std::vector<Piece> pieces) { openings_.push_back(std::move(pieces)); }
  /// What it answers to the next ENQ.
  void Answer(std::vector<Piece> pieces) { answers_.push_back(std::move(pieces)); }
  /// Bytes arrive now; what is sent later arrives while the screen waits. False when the port is not open, or when the
  /// program is in the middle of something else and they are forgotten.
  bool Send(std::string_view bytes, std::vector<Piece> later = {});

  /// Sentences with which the next of these fails; empty for none.
  std::string fail_open;
  std::string fail_write;
  std::string fail_store;
  /// The station has no port at all.
  std::string fail_port;

  /// What was asked of the port since the last call: "load Venda/Parametros", "store Venda/Parametros", "setup",
  /// "open", "close", "write <05>", "read 50", "discard", "wait 500".
  std::vector<std::string> TakeCalls();
  bool Connected() const;

  std::unique_ptr<host::SerialPort> NewPort(app::PortUse use);

 private:
  friend class FakePort;

  std::deque<std::vector<Piece>> openings_;
  std::deque<std::vector<Piece>> answers_;
  std::vector<std::string> calls_;
  FakePort* port_ = nullptr;
};

}  // namespace test
