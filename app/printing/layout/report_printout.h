// The three kinds of layout, from what the file describes to what stands on paper.
#pragma once

#include "app/equipment.h"
#include "app/printing/layout/layout_engine.h"
#include "app/printing/page/printout.h"

namespace app::printing {

// Each fills form, size, pages or bytes, styles and tables. They throw Mistake, and what the layout's functions throw.

void FillReport(const ReportRoot& report, int line, const PrintRequest& request, LayoutEngine& engine,
                Printout& printout);
void FillLabels(const LabelRoot& label, int line, LayoutEngine& engine, Printout& printout);
void FillText(const TextRoot& text, int line, LayoutEngine& engine, Printout& printout);

}  // namespace app::printing
