#include "desktop/tour/camera.h"

#include <QHash>
#include <QList>
#include <QPixmap>
#include <algorithm>
#include <limits>
#include <stdexcept>

namespace tour {
namespace {

constexpr qsizetype kColours = 256;
constexpr int kBestCompression = 0;  // what Qt calls quality is the reverse of effort in a PNG

int Distance(QRgb one, QRgb other) {
  const int red = qRed(one) - qRed(other);
  const int green = qGreen(one) - qGreen(other);
  const int blue = qBlue(one) - qBlue(other);
  return red * red + green * green + blue * blue;
}

struct Colour {
  QRgb rgb = 0;
  double uses = 0;
  int off = std::numeric_limits<int>::max();  // how far the nearest chosen one is
};

// One after the other the colour whose absence would show most: by how often it occurs and how far off the nearest is.
QList<QRgb> BestColours(const QImage& image) {
  QHash<QRgb, int> uses;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) ++uses[image.pixel(x, y)];
  }
  QList<Colour> all;
  for (auto one = uses.cbegin(); one != uses.cend(); ++one) all.append({one.key(), static_cast<double>(one.value())});
  std::sort(all.begin(), all.end(), [](const Colour& one, const Colour& other) { return one.rgb < other.rgb; });
  const auto shows = [](const Colour& one, const Colour& other) { return one.uses * one.off < other.uses * other.off; };
  QList<QRgb> chosen;
  while (chosen.size() < kColours) {
    const QRgb next = std::max_element(all.begin(), all.end(), shows)->rgb;
    if (chosen.contains(next)) break;
    chosen.append(next);
    for (Colour& one : all) one.off = std::min(one.off, Distance(one.rgb, next));
  }
  return chosen;
}

QImage WithFewColours(const QImage& image) {
  const QList<QRgb> colours = BestColours(image);
  QHash<QRgb, uint> nearest;
  QImage result(image.size(), QImage::Format_Indexed8);
  result.setColorTable(colours);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb wanted = image.pixel(x, y);
      auto found = nearest.constFind(wanted);
      if (found == nearest.constEnd()) {
        const auto best = std::min_element(colours.begin(), colours.end(), [wanted](QRgb one, QRgb other) {
          return Distance(one, wanted) < Distance(other, wanted);
        });
        found = nearest.insert(wanted, static_cast<uint>(best - colours.begin()));
      }
      result.setPixel(x, y, found.value());
    }
  }
  return result;
}

}  // namespace

Camera::Camera(const QString& folder) : folder_(folder) {
  if (!folder_.mkpath(QStringLiteral("."))) throw std::runtime_error("cannot make the folder of the pictures");
}

void Camera::Take(QWidget& window, const QString& name) const { Keep(window.grab().toImage(), name); }

void Camera::Keep(const QImage& picture, const QString& name) const {
  const QString file = folder_.filePath(name + QStringLiteral(".png"));
  const QImage image = picture.convertToFormat(QImage::Format_RGB32);
  if (!WithFewColours(image).save(file, "PNG", kBestCompression)) {
    throw std::runtime_error("cannot write " + file.toStdString());
  }
}

}  // namespace tour
