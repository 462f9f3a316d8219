// A serial port with a device on it: the scale.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace host {

/// Made per screen by Host::NewSerialPort and owned by it; closes with the object. All calls on the user-interface
/// thread. Bytes are as on the line.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  /// Takes the settings that the user stored under this path (key "Venda", section "Parametros"); those never stored
  /// are COM1, 9600 baud, no parity, 8 data bits, 1 stop bit, no flow control, DTR and RTS off.
  virtual void LoadSettings(std::string_view key, std::string_view section) = 0;
  /// Throws InputError when they cannot be stored; they hold for this object all the same.
  virtual void StoreSettings(std::string_view key, std::string_view section) = 0;
  /// Shows the setup dialog on the settings loaded. False when the person gave up: they are as before.
  virtual bool ShowSetup() = 0;

  /// Throws InputError in one sentence (no such port, in use, no permission); it is closed then. Nothing received
  /// before is left.
  virtual void Open() = 0;
  /// Nothing happens when it is closed. What was received and not read is gone.
  virtual void Close() = 0;
  virtual bool Connected() const = 0;

  /// Sends these bytes and returns when they have left. Throws InputError when it is closed or they cannot be sent.
  virtual void Write(std::string_view bytes) = 0;
  /// Up to `most` of the bytes received and not read yet; empty when there are none. Does not wait.
  virtual std::string Read(std::size_t most) = 0;
  /// Forgets what was received and not read.
  virtual void Discard() = 0;
  /// Lets the time pass, or less as soon as `enough` (asked after every reception; may be empty) is true. Windows go on
  /// being drawn and nobody can act on them; OnRxChar is fired here for what arrives, and what it throws goes on to the
  /// caller.
  virtual void Wait(std::chrono::milliseconds time, const std::function<bool()>& enough) = 0;

  /// Bytes arrived. Outside of Wait it is an action of its own; what arrives while the program is in the middle of
  /// another one, or waits for a person's answer, is forgotten unseen: it was weighed for nobody. Fired also when the
  /// device went away while it was open; the next Read, Write or Wait throws then.
  std::function<void()> OnRxChar;
};

}  // namespace host
