#include "app/desktop/printing/desktop_equipment.h"

#include <utility>

#include "app/desktop/basics/busy_cursor.h"
#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/message_boxes.h"
#include "app/desktop/printing/destination_dialog.h"
#include "app/desktop/printing/preview_dialog.h"
#include "app/printing/layout/make_printout.h"
#include "app/printing/page/printout.h"
#include "app/serial/port.h"
#include "host/errors.h"

namespace app::desktop {
namespace {

using printing::Choice;
using printing::KnownReport;
using printing::Printout;

KnownReport ReportOf(const Printout& printout) { return {printout.report, printing::KindOf(printout)}; }

Printout Make(const PrintRequest& request) {
  const BusyCursor busy;
  Printout printout = printing::MakePrintout(request);
  printing::CheckHasContent(printout);
  return printout;
}

// It is printed already: that the choice could not be kept is worth a word and no more.
void Remember(host::UserSettings& settings, const KnownReport& report, const Choice& choice) {
  try {
    printing::StoreChoice(settings, report, choice);
  } catch (const host::InputError& error) {
    ShowMessage(BoxParent(), QStringLiteral("Impressoras"), QString::fromUtf8(error.what()), host::Icon::kExclamation);
  }
}

}  // namespace

std::unique_ptr<host::SerialPort> DesktopEquipment::NewSerialPort(PortUse use) {
  return serial::NewPort(std::move(use));
}

std::optional<PrintJob> DesktopEquipment::Print(const PrintRequest& request) {
  const Printout printout = Make(request);
  const bool pages = printing::MakesPages(printing::KindOf(printout));
  if (pages && request.flags.preview) return Preview(printout, request);
  return Send(printout, request.settings, request.flags.show_dialog);
}

std::optional<PrintJob> DesktopEquipment::Preview(const Printout& printout, const PrintRequest& request) {
  PreviewDialog::Acts acts;
  acts.print = [&](bool ask) { return Send(printout, request.settings, ask || request.flags.show_dialog); };
  acts.destination = [&] {
    const auto known = printing::ReadChoice(request.settings, ReportOf(printout));
    return known ? ToQt(printing::Caption(known->destination)) : QString();
  };
  PreviewDialog dialog(printout, std::move(acts), request.settings, BoxParent());
  RunBox(dialog);
  return dialog.Job();
}

std::optional<PrintJob> DesktopEquipment::Send(const Printout& printout, host::UserSettings& settings, bool ask) {
  const KnownReport report = ReportOf(printout);
  std::optional<Choice> choice = printing::ReadChoice(settings, report);
  bool remember = false;
  if (!choice || ask) {
    DestinationDialog dialog({QStringLiteral("Imprimir"), ToQt(printing::ReportCaption(report.report)), report.kind,
                              choice, true, QStringLiteral("&Imprimir")},
                             BoxParent());
    if (RunBox(dialog) != QDialog::Accepted) return std::nullopt;
    choice = dialog.Chosen();
    remember = dialog.Remember();
  }
  std::optional<PrintJob> job;
  {
    const BusyCursor busy;
    job = printing::Deliver(printout, *choice);
  }
  if (remember) Remember(settings, report, *choice);
  return job;
}

}  // namespace app::desktop
