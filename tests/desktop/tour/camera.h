// Pictures of windows.
#pragma once

#include <QDir>
#include <QImage>
#include <QString>
#include <QWidget>

namespace tour {

class Camera {
 public:
  /// The folder is made when it is not there.
  explicit Camera(const QString& folder);

  /// FOLDER/NAME.png; an older picture of that name is replaced. In 256 colours: a picture of a window loses next to
  /// nothing by that, and has half the size.
  void Take(QWidget& window, const QString& name) const;
  void Keep(const QImage& picture, const QString& name) const;

 private:
  QDir folder_;
};

}  // namespace tour
