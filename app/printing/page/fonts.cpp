#include "app/printing/page/fonts.h"

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
  // Any spacing keeps "fi" from being drawn as one sign, which a search in a PDF file would not find. The least that
  // the engine knows, a 64th of a dot.
  font.setLetterSpacing(QFont::AbsoluteSpacing, 1.0 / 64);
  return font;
}

}  // namespace app::printing
