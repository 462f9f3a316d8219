// What a layout's own names call.
#pragma once

#include <QJSValue>
#include <QObject>
#include <QString>
#include <exception>
#include <functional>
#include <memory>
#include <optional>

#include "app/printing/layout/blocks.h"
#include "app/printing/layout/datasets_in_script.h"
#include "app/printing/page/text_measure.h"
#include "host/kit/report.h"

namespace app::printing {

/// A block on its way through the layout's code.
class BlockHandle : public QObject {
  Q_OBJECT

 public:
  explicit BlockHandle(BlockPtr block) : block_(std::move(block)) {}
  const BlockPtr& Get() const { return block_; }

 private:
  BlockPtr block_;
};

/// The line of the layout that a stack ("function@file:line", a frame per line) leads to; 0 when none does.
int LineOfStack(const QString& stack);

/// Mistakes are thrown into the layout as errors, so that they know their line. Other exceptions, which come from the
/// screen, wait in `pending` for whoever called the layout.
class LayoutBridge : public QObject {
  Q_OBJECT

 public:
  LayoutBridge(QJSEngine& engine, DatasetsInScript& datasets, host::Report* unknown_functions);

  Q_INVOKABLE QJSValue rows(int dataset);
  Q_INVOKABLE QJSValue current(int dataset);
  Q_INVOKABLE int count(int dataset);
  Q_INVOKABLE QString shown(int dataset, const QJSValue& row, const QString& field);
  Q_INVOKABLE QString number(const QJSValue& value, const QJSValue& format);
  Q_INVOKABLE QString date(const QJSValue& value);
  Q_INVOKABLE QString time(const QJSValue& value);
  Q_INVOKABLE bool encodes(const QString& kind, const QJSValue& value);
  Q_INVOKABLE double textWidth(const QString& text, const QJSValue& style);
  Q_INVOKABLE QString unknown(const QString& name, const QJSValue& values);
  Q_INVOKABLE QJSValue block(const QString& kind, const QJSValue& first, const QJSValue& second, const QString& stack);
  Q_INVOKABLE void root(const QString& kind, const QJSValue& options, const QString& stack);

  const std::optional<Root>& GetRoot() const { return root_; }
  void RethrowPending();

 private:
  void Guarded(const std::function<void()>& act);

  QJSEngine& engine_;
  DatasetsInScript& datasets_;
  host::Report* unknown_functions_;
  std::unique_ptr<TextMeasure> measure_;  // for those layouts that ask
  std::optional<Root> root_;
  std::exception_ptr pending_;
};

}  // namespace app::printing
