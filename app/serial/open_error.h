// Why a port did not open, in one sentence.
#pragma once

#include <QSerialPort>
#include <string>

#include "app/scale/scale_settings.h"

namespace app::serial {

std::string OpenErrorText(const scale::PortSettings& port, QSerialPort::SerialPortError error);

}  // namespace app::serial
