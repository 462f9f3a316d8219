#include "app/desktop/printing/desktop_equipment.h"

#include <utility>

#include "app/desktop/basics/busy_cursor.h"
#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/message_boxes.h"
#include "app/desktop/printing/destination_dialog.h"
#include "app/desktop/printing/preview_dialog.h"
#include "app/printing/delivery/print_type.h"
#include "app/printing/layout/make_printout.h"
#include "app/printing/page/printout.h"
#include "app/serial/port.h"
#include "host/errors.h"

namespace app::desktop {
namespace {

using printing::Printout;
using printing::Route;

std::optional<Route> RouteOf(const PrintRequest& request) {
  return printing::ReadRoute(request.settings, {request.report, request.kind}, request.listed);
}

Printout Make(const PrintRequest& request) {
  const BusyCursor busy;
  Printout printout = printing::MakePrintout(request);
  printing::CheckHasContent(printout);
  return printout;
}

// A print type other than the request's own is text, where the destination decides.
Printout MakeAs(char kind, const PrintRequest& request) {
  return Make(kind == request.kind ? request : printing::AsText(request));
}

struct Answer {
  Route route;
  bool remember;
};

// Nothing when the person gave up.
std::optional<Answer> AskRoute(const PrintRequest& request, const std::optional<Route>& before) {
  DestinationDialog::Question question;
  question.title = QStringLiteral("Imprimir");
  question.report = ToQt(printing::ReportCaption(request.report, request.listed));
  question.kind = before ? before->kind : request.kind;
  if (before) question.before = before->choice;
  question.accept = QStringLiteral("&Imprimir");
  question.both_kinds = printing::DestinationDecides(request);
  DestinationDialog dialog(question, BoxParent());
  if (RunBox(dialog) != QDialog::Accepted) return std::nullopt;
  return Answer{{dialog.ChosenKind(), dialog.Chosen()}, dialog.Remember()};
}

// It is printed already: that the choice could not be kept is worth a word and no more.
void Remember(const PrintRequest& request, const Route& route) {
  try {
    printing::StoreRoute(request.settings, request.report, route, request.listed);
  } catch (const host::InputError& error) {
    ShowMessage(BoxParent(), QStringLiteral("Impressoras"), QString::fromUtf8(error.what()), host::Icon::kExclamation);
  }
}

QString Caption(const Route& route, const PrintRequest& request) {
  const QString place = ToQt(printing::Caption(route.choice.destination));
  return route.kind == request.kind ? place : QStringLiteral("%1 (texto)").arg(place);
}

}  // namespace

std::unique_ptr<host::SerialPort> DesktopEquipment::NewSerialPort(PortUse use) {
  return serial::NewPort(std::move(use));
}

std::optional<PrintJob> DesktopEquipment::Print(const PrintRequest& request) {
  if (printing::MakesPages(request.kind) && request.flags.preview) return Preview(request);
  const std::optional<Route> route = RouteOf(request);
  return Send(MakeAs(route ? route->kind : request.kind, request), request, request.flags.show_dialog);
}

std::optional<PrintJob> DesktopEquipment::Preview(const PrintRequest& request) {
  const Printout pages = Make(request);
  PreviewDialog::Acts acts;
  acts.print = [&](bool ask) { return Send(pages, request, ask || request.flags.show_dialog); };
  acts.destination = [&] {
    const std::optional<Route> known = RouteOf(request);
    return known ? Caption(*known, request) : QString();
  };
  PreviewDialog dialog(pages, std::move(acts), request.settings, BoxParent());
  RunBox(dialog);
  return dialog.Job();
}

std::optional<PrintJob> DesktopEquipment::Send(const Printout& made, const PrintRequest& request, bool ask) {
  std::optional<Route> route = RouteOf(request);
  bool remember = false;
  if (!route || ask) {
    const std::optional<Answer> answer = AskRoute(request, route);
    if (!answer) return std::nullopt;
    route = answer->route;
    remember = answer->remember;
  }
  std::optional<PrintJob> job;
  {
    const BusyCursor busy;
    const bool as_made = route->kind == printing::KindOf(made);
    job = printing::Deliver(as_made ? made : MakeAs(route->kind, request), route->choice);
  }
  if (remember) Remember(request, *route);
  return job;
}

}  // namespace app::desktop
