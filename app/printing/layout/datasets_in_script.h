// The screen's datasets as a layout sees them.
#pragma once

#include <QJSEngine>
#include <QJSValue>
#include <QStringList>
#include <memory>
#include <string>
#include <vector>

#include "app/printing/layout/row_source.h"
#include "host/kit/screen.h"

namespace app::printing {

/// Datasets are known by their place in Names(). Rows become objects when they are asked for; one that is not open has
/// none. The datasets' cursors stay where they are.
class DatasetsInScript {
 public:
  DatasetsInScript(QJSEngine& engine, const host::Screen& screen);

  QStringList Names() const;
  /// `factory` makes rows: (dataset, field names) => (values...) => row.
  void SetRowFactory(const QJSValue& factory) { make_factory_ = factory; }

  QJSValue Rows(int dataset);
  QJSValue Row(int dataset, std::size_t row) { return Rows(dataset).property(static_cast<quint32>(row)); }
  /// The row at the cursor, null without one.
  QJSValue Current(int dataset);
  int Count(int dataset) const;
  /// A field of a row as the grid shows it. Throws Mistake for what is no row or no field.
  QString Shown(int dataset, const QJSValue& row, const QString& field) const;

  /// What the value of a `rows` property stands for: a dataset, or a list of rows. Throws Mistake for anything else.
  std::shared_ptr<RowSource> SourceOf(const QJSValue& rows);

 private:
  struct Entry {
    host::Dataset* dataset;
    QJSValue factory;
    QJSValue rows;
  };
  QJSValue MakeRow(Entry& entry, int dataset, std::size_t rec_no);

  QJSEngine& engine_;
  QJSValue make_factory_;
  std::vector<Entry> entries_;
};

}  // namespace app::printing
