// Rows that are drawn as blocks of their own.
#include <utility>

#include "app/printing/layout/block_reader.h"
#include "app/printing/layout/flow.h"
#include "app/printing/layout/group_walk.h"

namespace app::printing {

void FlowDetail(const Detail& detail, int line, FlowContext& context) {
  RowSource& rows = *detail.rows;
  if (context.tables != nullptr) {
    DataTable data = DataOf(rows);
    if (!data.columns.empty()) context.tables->push_back(std::move(data));
  }
  GroupWalk walk(detail.group, rows, context.engine, line);
  for (std::size_t row = 0; row < rows.Size(); ++row) {
    walk.GoTo(row);
    if (detail.group && walk.Begins()) {
      Strip header = GroupHeader(*detail.group, row, rows, {context.base, 0}, line, context);
      if (header.height > 0) context.sink.Add(std::move(header));
    }
    const QJSValue blocks =
        context.engine.Call(detail.band, {rows.ScriptRow(row), QJSValue(static_cast<int>(row))}, line);
    FlowBlocks(BlocksOf(blocks), context);
  }
}

}  // namespace app::printing
