// A scanner types into whatever has the keyboard: its code must not answer a box.
#pragma once

#include <QDialog>
#include <QObject>
#include <QString>
#include <QTimer>
#include <Qt>

namespace app::desktop {

/// While it lives, several characters in one go and the Enter or Tab after them do nothing in that box but sound: the
/// box stays and the person sees that the code was not read. A single letter is a person's, who answers with it.
class CodeGuard : public QObject {
  Q_OBJECT

 public:
  explicit CodeGuard(QDialog& box);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void HandOn();

  QDialog& box_;
  QTimer alone_;  // runs while the next character would show that it is a scanner
  int typed_ = 0;
  int key_ = 0;  // the one that is held back
  QString text_;
  bool handing_on_ = false;
};

}  // namespace app::desktop
