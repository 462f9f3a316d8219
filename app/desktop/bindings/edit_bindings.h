// Inputs: one line, or a memo.
#pragma once

#include <QAction>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <string>

#include "app/desktop/bindings/binding.h"

namespace app::desktop {

/// What a line and a memo have in common: text that reaches the screen with every change, and Esc that takes it back.
class EditBinding : public Binding {
 public:
  EditBinding(ScreenBindings& window, host::Edit& edit, QWidget& widget);

  void Show() override;
  void ActEnded() override;
  void Entered() override;
  bool GiveUp() override;
  bool HasLookup() const override;

 protected:
  virtual QString Shown() const = 0;
  virtual void Put(const QString& text) = 0;
  virtual void SetReadOnly(bool read_only) = 0;
  /// What stands in the widget is not the screen's yet.
  virtual bool Unsettled() const { return false; }
  /// The screen gets what was typed; refused: the widget shows the screen's text again.
  void Send();
  void PutComponentText();

  host::Edit& edit_;
  bool sending_ = false;

 private:
  std::string shown_;   // the component's text when it was put into the widget last
  std::string before_;  // what stood there on arrival, or what the program put in since
  bool typed_ = false;
};

class LineBinding : public EditBinding {
 public:
  LineBinding(ScreenBindings& window, host::Edit& edit, QLineEdit& line);

  void Show() override;
  void ActEnded() override;
  void Fit() override;
  void Entered() override;
  void Refused() override;
  bool GiveUp() override;

 protected:
  QString Shown() const override { return line_.text(); }
  void Put(const QString& text) override;
  void SetReadOnly(bool read_only) override { line_.setReadOnly(read_only); }
  bool Unsettled() const override;
  void AddStandardEntries(QMenu& menu) override;

 private:
  bool Deferred() const;
  void Edited();
  void BeginTyping();
  bool HandOver();
  void OpenLookup();
  void LimitTo(const QString& text);
  int WidthOf(int characters) const;

  QLineEdit& line_;
  QAction* lookup_ = nullptr;
};

class MemoBinding : public EditBinding {
 public:
  MemoBinding(ScreenBindings& window, host::Edit& edit, QPlainTextEdit& memo);

  bool Keeps(host::Key key) const override { return key == host::Key::kEnter; }
  void LetGo() override;

 protected:
  QString Shown() const override { return memo_.toPlainText(); }
  void Put(const QString& text) override;
  void SetReadOnly(bool read_only) override { memo_.setReadOnly(read_only); }
  void AddStandardEntries(QMenu& menu) override;

 private:
  QPlainTextEdit& memo_;
  bool putting_ = false;
};

}  // namespace app::desktop
