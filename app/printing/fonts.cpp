#include "app/printing/fonts.h"

namespace app::printing {

QFont FontOf(const TextStyle& style, double device_dpi) {
  QFont font(QString::fromStdString(style.family));
  font.setStyleHint(QFont::SansSerif);
  font.setPointSizeF(style.size * kTextDpi / device_dpi);
  font.setBold(style.bold);
  font.setItalic(style.italic);
  // A line is as wide as its characters together, whoever draws it.
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setKerning(false);
  return font;
}

}  // namespace app::printing
