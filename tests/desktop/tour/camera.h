// Pictures of windows.
#pragma once

#include <QDir>
#include <QPixmap>
#include <QString>
#include <QWidget>
#include <stdexcept>

namespace tour {

class Camera {
 public:
  /// The folder is made when it is not there.
  explicit Camera(const QString& folder) : folder_(folder) {
    if (!folder_.mkpath(QStringLiteral("."))) throw std::runtime_error("cannot make the folder of the pictures");
  }

  /// FOLDER/NAME.png; an older picture of that name is replaced.
  void Take(QWidget& window, const QString& name) const {
    const QString file = folder_.filePath(name + QStringLiteral(".png"));
    if (!window.grab().save(file)) throw std::runtime_error("cannot write " + file.toStdString());
  }

 private:
  QDir folder_;
};

}  // namespace tour
