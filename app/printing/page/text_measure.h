// How wide text is, and where it breaks.
#pragma once

#include <QFontMetricsF>
#include <QImage>
#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "app/printing/page/printout.h"

namespace app::printing {

/// Measures in millimetres. Holds the styles that a printout uses, each once.
class TextMeasure {
 public:
  TextMeasure();

  std::uint32_t StyleIndex(const TextStyle& style);
  const TextStyle& Style(std::uint32_t style) const { return faces_[style]->style; }
  std::vector<TextStyle> Styles() const;

  double Width(std::uint32_t style, QStringView text) const;
  /// Lines of at most `width`, broken between words, and inside a word that is wider than a line. Line ends in the text
  /// stay; there is at least one line.
  std::vector<QString> Lines(std::uint32_t style, const QString& text, double width) const;
  /// The text, or as much of its beginning as fits before a "…".
  QString Cut(std::uint32_t style, const QString& text, double width) const;
  /// Adds "…" to a text of which more follows, in place of what has no room beside it.
  QString WithEllipsis(std::uint32_t style, const QString& text, double width) const;

 private:
  static constexpr std::size_t kCached = 0x250;  // Latin letters
  struct Face {
    TextStyle style;
    QFontMetricsF metrics;
    mutable std::array<float, kCached> widths;  // millimetres; negative while unknown
  };

  double CharacterWidth(const Face& face, QChar character) const;
  void BreakLine(std::uint32_t style, QStringView text, double width, std::vector<QString>& lines) const;
  /// How many characters from the beginning fit.
  qsizetype Fitting(std::uint32_t style, QStringView text, double width) const;

  QImage device_;
  std::vector<std::unique_ptr<Face>> faces_;
};

}  // namespace app::printing
