// The rows of a lookup as a table view asks for them: page by page.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "app/lookup_offer.h"

namespace app::desktop {

class LookupModel : public QAbstractTableModel {
 public:
  /// `guard` runs what reads the offer while the event loop is above; no exception may get past it there.
  LookupModel(LookupOffer& offer, std::function<void(const std::function<void()>&)> guard, QObject* parent = nullptr);

  /// Shows the rows that fit the text, the first page of them. A row whose key is the text stands first where the
  /// order of the keys would put it on a later page. Throws host::DatabaseError; no rows are shown then.
  void Search(const QString& text);
  /// The row whose key is the text, without regard to case where there is no better; -1 when there is none.
  int RowOfKey(const QString& text) const;
  const host::LookupRow& Row(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  /// Rows beyond those shown.
  bool HasMore() const { return has_more_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;

 private:
  /// The next rows of the search.
  std::vector<host::LookupRow> NextPage();
  QString KeyOf(const host::LookupRow& row) const;
  void PutExactFirst(const QString& text);

  LookupOffer& offer_;
  std::function<void(const std::function<void()>&)> guard_;
  std::string text_;
  std::vector<host::LookupRow> rows_;
  std::size_t read_ = 0;  // rows of the search that were passed
  bool has_more_ = false;
  std::optional<host::LookupRow> put_first_;  // the row that was taken out of its order, until its page comes
};

}  // namespace app::desktop
