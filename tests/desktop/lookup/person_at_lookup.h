// Whoever sits before the dialog of a lookup, and what it is given to offer.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/errors.h"
#include "support/row_offer.h"

namespace test {

inline constexpr int kPatience = 5000;  // milliseconds

/// True when it became so in time.
inline bool Becomes(const std::function<bool()>& so) {
  for (int waited = 0; waited < kPatience; waited += 5) {
    if (so()) return true;
    QTest::qWait(5);
  }
  return so();
}

/// The open dialog, as whoever sits before it sees it.
class Seen {
 public:
  explicit Seen(QDialog& dialog) : dialog_(dialog) {}

  QLineEdit& Line() const { return *dialog_.findChild<QLineEdit*>("EdtPesquisa"); }
  QTableView& Table() const { return *dialog_.findChild<QTableView*>("TabOferta"); }
  std::string Count() const { return dialog_.findChild<QLabel*>("LblTotal")->text().toStdString(); }
  bool SaysNothingFound() const {
    const auto* label = dialog_.findChild<QLabel*>("LblNada");
    return label->isVisible() && label->text() == QStringLiteral("Nada encontrado");
  }
  bool MayChoose() const { return dialog_.findChild<QPushButton*>("BtnEscolher")->isEnabled(); }
  QDialog& Dialog() const { return dialog_; }

  void Type(const QString& text) const {
    for (const QChar letter : text) {
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
      QApplication::sendEvent(QApplication::focusWidget(), &press);
    }
  }
  static void Key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

  int Rows() const { return Table().model()->rowCount(); }
  std::string Cell(int row, int column, int role = Qt::DisplayRole) const {
    return Table().model()->index(row, column).data(role).toString().toStdString();
  }
  std::string Header(int column) const {
    return Table().model()->headerData(column, Qt::Horizontal).toString().toStdString();
  }
  Qt::Alignment AlignmentOf(int row, int column) const {
    return Table().model()->index(row, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
  }
  int CurrentRow() const { return Table().currentIndex().row(); }
  std::string Current() const { return Cell(CurrentRow(), 0); }
  bool BecomesFound(const std::string& count) const {
    return Becomes([&] { return Count() == count; });
  }

 private:
  QDialog& dialog_;
};

/// A plain offer that may fail, or lose its rows.
class FaultyOffer : public RowOffer {
 public:
  using RowOffer::RowOffer;
  std::vector<host::LookupRow> Search(std::string_view text, std::size_t skip, std::size_t count) override {
    ++searches;
    if (fail_in > 0 && --fail_in == 0) throw host::DatabaseError("A conexão caiu.", 1, "");
    return RowOffer::Search(text, skip, count);
  }
  std::optional<host::LookupRow> Find(std::string_view key) override {
    return gone ? std::nullopt : RowOffer::Find(key);
  }
  int fail_in = 0;
  int searches = 0;
  bool gone = false;
};

}  // namespace test
