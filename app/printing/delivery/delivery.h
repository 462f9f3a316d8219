// What was made of a layout, on its way to where it goes.
#pragma once

#include <string>
#include <vector>

#include "app/equipment.h"
#include "app/printing/delivery/destination.h"
#include "app/printing/page/printout.h"

namespace app::printing {

/// Where a report goes on this station, and how often.
struct Choice {
  Destination destination;
  int copies = 1;

  bool operator==(const Choice&) const = default;
};

inline constexpr int kMostCopies = 99;

/// 'T' for a printout of bytes, 'W' for pages.
inline char KindOf(const Printout& printout) { return printout.form == PrintoutForm::kText ? 'T' : 'W'; }

/// Prints and tells what was printed; a file is written once, whatever the copies. Throws host::InputError, one
/// sentence: nothing to print, a destination that does not take this kind, and whatever SendBytes and WritePdf throw.
PrintJob Deliver(const Printout& printout, const Choice& choice, const TimeLimits& limits = {});

/// Throws host::InputError when the printout is empty: labels of no rows.
void CheckHasContent(const Printout& printout);

/// Printers of the operating system that take pages, the usual one first.
std::vector<std::string> PrinterNames();

/// A page, or some lines of text, that tell where they came from, to see whether a destination works. `moment` as
/// people read it.
Printout TestPrintout(char kind, const std::string& where, const std::string& moment);

}  // namespace app::printing
