// The line above a long grid that narrows it down while one types.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QWidget>

namespace app::desktop {

class FilterLine : public QWidget {
  Q_OBJECT

 public:
  explicit FilterLine(QWidget* parent = nullptr);

  QString Words() const { return input_.text(); }
  void Clear();
  void ShowCount(const QString& text) { count_.setText(text); }
  /// The keyboard goes to the input, its text selected.
  void TakeFocus();
  bool HasKeyboard() const { return input_.hasFocus(); }

 signals:
  /// Some time after the last letter: each word of a long list costs a look at every row.
  void WordsChanged(const QString& words);
  /// The person clicked into the line.
  void Entered();
  /// Enter or Down: on to the rows.
  void Done();
  /// Esc in the empty line, or after it emptied the line.
  void GivenUp();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Tell();

  QLabel caption_;
  QLineEdit input_;
  QLabel count_;
  QTimer pause_;
};

}  // namespace app::desktop
