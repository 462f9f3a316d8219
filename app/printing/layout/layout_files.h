// Where layouts come from.
#pragma once

#include <QString>
#include <string>

namespace app::printing {

struct LayoutFile {
  std::string name;  // for messages: the path of the installation's own file, or the bare name of the program's
  QString text;
};

/// The layout REPORT.js (kind 'W') or REPORT.text.js ('T') of the installation's folder, or else the program's own.
/// Throws host::InputError when there is neither, and when it cannot be read or is not UTF-8.
LayoutFile FindLayout(const std::string& report, char kind, const std::string& folder);

}  // namespace app::printing
