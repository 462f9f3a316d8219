#include "app/printing/page/text_measure.h"

#include <algorithm>
#include <cmath>

#include "app/printing/page/fonts.h"

namespace app::printing {
namespace {

constexpr double kMillimetresPerDot = kMillimetresPerInch / kTextDpi;
// What adding up widths may be off: a column as wide as its text must hold it.
constexpr double kTolerance = 0.01;

// Stands for itself, whatever stands beside it.
bool IsSimple(QChar character) {
  const char16_t code = character.unicode();
  return (code >= 0x20 && code < 0x300) || (code >= 0x1E00 && code < 0x1F00) || (code >= 0x2010 && code < 0x2028) ||
         (code >= 0x20A0 && code < 0x2190);
}

bool IsBlank(QChar character) { return character == u' ' || character == u'\t'; }

}  // namespace

TextMeasure::TextMeasure() : device_(1, 1, QImage::Format_RGB32) {
  const int dots_per_metre = static_cast<int>(std::lround(kTextDpi / kMillimetresPerInch * 1000));
  device_.setDotsPerMeterX(dots_per_metre);
  device_.setDotsPerMeterY(dots_per_metre);
}

std::uint32_t TextMeasure::StyleIndex(const TextStyle& style) {
  for (std::size_t at = 0; at < faces_.size(); ++at) {
    if (faces_[at]->style == style) return static_cast<std::uint32_t>(at);
  }
  auto face = std::make_unique<Face>(Face{style, QFontMetricsF(FontOf(style, kTextDpi), &device_), {}});
  face->widths.fill(-1);
  faces_.push_back(std::move(face));
  return static_cast<std::uint32_t>(faces_.size() - 1);
}

std::vector<TextStyle> TextMeasure::Styles() const {
  std::vector<TextStyle> styles;
  styles.reserve(faces_.size());
  for (const auto& face : faces_) styles.push_back(face->style);
  return styles;
}

double TextMeasure::CharacterWidth(const Face& face, QChar character) const {
  const char16_t code = character.unicode();
  if (code >= kCached) return face.metrics.horizontalAdvance(character) * kMillimetresPerDot;
  float& width = face.widths[code];
  if (width < 0) width = static_cast<float>(face.metrics.horizontalAdvance(QString(character)) * kMillimetresPerDot);
  return static_cast<double>(width);
}

double TextMeasure::Width(std::uint32_t style, QStringView text) const {
  const Face& face = *faces_[style];
  double width = 0;
  for (const QChar character : text) {
    if (!IsSimple(character)) return face.metrics.horizontalAdvance(text.toString()) * kMillimetresPerDot;
    width += CharacterWidth(face, character);
  }
  return width;
}

qsizetype TextMeasure::Fitting(std::uint32_t style, QStringView text, double width) const {
  if (Width(style, text) <= width + kTolerance) return text.size();
  qsizetype low = 0;
  qsizetype high = text.size();  // does not fit
  while (high - low > 1) {
    const qsizetype middle = (low + high) / 2;
    (Width(style, text.first(middle)) <= width + kTolerance ? low : high) = middle;
  }
  if (low > 0 && text[low - 1].isHighSurrogate()) --low;
  return low;
}

void TextMeasure::BreakLine(std::uint32_t style, QStringView text, double width, std::vector<QString>& lines) const {
  // No line has more characters than this, so that a long text is not measured as a whole again for each of its lines.
  constexpr qsizetype kLongestLine = 1000;
  while (true) {
    const qsizetype fitting = Fitting(style, text.first(std::min(text.size(), kLongestLine)), width);
    if (fitting == text.size()) break;
    qsizetype end = fitting;
    while (end > 0 && !IsBlank(text[end]) && !IsBlank(text[end - 1])) --end;
    if (end == 0) {
      // A word wider than the line; a character of it goes on every line even when that is wider too.
      const bool pair = text.front().isHighSurrogate() && text.size() > 1;
      end = std::max<qsizetype>(fitting, pair ? 2 : 1);
    }
    QStringView line = text.first(end);
    while (!line.isEmpty() && IsBlank(line.back())) line.chop(1);
    lines.push_back(line.toString());
    while (end < text.size() && IsBlank(text[end])) ++end;
    text = text.sliced(end);
    if (text.isEmpty()) return;
  }
  lines.push_back(text.toString());
}

std::vector<QString> TextMeasure::Lines(std::uint32_t style, const QString& text, double width) const {
  std::vector<QString> lines;
  for (const QStringView piece : QStringView(text).split(u'\n')) {
    BreakLine(style, piece.endsWith(u'\r') ? piece.chopped(1) : piece, width, lines);
  }
  return lines;
}

QString TextMeasure::Cut(std::uint32_t style, const QString& text, double width) const {
  if (Width(style, text) <= width + kTolerance) return text;
  return WithEllipsis(style, text, width);
}

QString TextMeasure::WithEllipsis(std::uint32_t style, const QString& text, double width) const {
  const QChar ellipsis(u'…');
  QStringView kept = QStringView(text).first(Fitting(style, text, width - Width(style, QStringView(&ellipsis, 1))));
  while (!kept.isEmpty() && IsBlank(kept.back())) kept.chop(1);
  return kept.toString() + ellipsis;
}

}  // namespace app::printing
