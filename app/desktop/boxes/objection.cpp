#include "app/desktop/boxes/objection.h"

#include <QPalette>

#include "app/desktop/look/theme.h"

namespace app::desktop {

ObjectionLabel::ObjectionLabel(QWidget* parent) : QLabel(parent) {
  setObjectName(QStringLiteral("Objection"));
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  hide();
}

void ObjectionLabel::Show(const QString& sentence, QLineEdit& back_to) {
  QPalette colors = palette();
  colors.setColor(QPalette::WindowText, IsDark() ? QColor(0xff, 0x9a, 0x8a) : QColor(0xb0, 0x20, 0x10));
  setPalette(colors);
  setText(sentence);
  show();
  back_to.setFocus();
  back_to.selectAll();
}

void ObjectionLabel::Clear() {
  clear();
  hide();
}

}  // namespace app::desktop
