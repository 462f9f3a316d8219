// Text on its way between the screens (UTF-8) and the widgets.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace app::desktop {

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(const QString& text) { return text.toStdString(); }

}  // namespace app::desktop
