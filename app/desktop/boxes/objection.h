// What a dialog says against an input, inside the dialog.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QString>

namespace app::desktop {

/// Hidden while there is nothing to say.
class ObjectionLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ObjectionLabel(QWidget* parent = nullptr);

  /// Says it and sends the person back to the input, its text selected.
  void Show(const QString& sentence, QLineEdit& back_to);
  void Clear();
};

}  // namespace app::desktop
