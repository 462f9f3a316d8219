// The serial port of this computer.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/equipment.h"
#include "host/serial_port.h"

namespace app::serial {

/// A port that is closed yet; `use` outlives it. Needs a QCoreApplication and belongs to its thread.
///
/// What host::SerialPort leaves open: when the device goes away while it is open, the port is closed and the next Read,
/// Write or Wait throws host::InputError and says so, once. Keys, clicks and the closing of windows that reach the
/// program during Wait are dropped, so that a key pressed twice does not weigh twice.
std::unique_ptr<host::SerialPort> NewPort(PortUse use);

/// The ports that the operating system knows now, by the names that people use ("COM3", "/dev/ttyUSB0"). Others may be
/// opened all the same.
std::vector<std::string> KnownPorts();

}  // namespace app::serial
