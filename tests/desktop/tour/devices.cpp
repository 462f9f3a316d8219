#include "desktop/tour/devices.h"

#include <QImage>
#include <QPainter>
#include <chrono>
#include <filesystem>

#include "app/printing/layout/make_printout.h"
#include "app/printing/page/page_painter.h"
#include "app/printing/page/printout.h"

namespace tour {
namespace {

constexpr std::chrono::minutes kLongerThanTheWalk{10};
constexpr int kLabelDpi = 203;  // of common label printers
constexpr int kLabelMargin = 8;
constexpr QRgb kTable = qRgb(200, 200, 200);

app::scale::SimulatorOptions Scale(const std::string& folder) {
  app::scale::SimulatorOptions scale;
  scale.protocol = host::ScaleProtocol::kAsked;
  scale.link = folder + "/balanca";
  return scale;
}

// Dot by dot as a label printer does it, on a table that shows where the paper ends.
QImage Drawn(const app::printing::Printout& label) {
  constexpr double kMillimetresPerInch = 25.4;
  const auto dots = [](double millimetres) { return static_cast<int>(millimetres / kMillimetresPerInch * kLabelDpi); };
  const QSize size(dots(label.width), dots(label.height));
  QImage image(size.grownBy({kLabelMargin, kLabelMargin, kLabelMargin, kLabelMargin}), QImage::Format_RGB32);
  image.fill(kTable);
  QPainter painter(&image);
  painter.translate(kLabelMargin, kLabelMargin);
  painter.fillRect(QRect(QPoint(0, 0), size), Qt::white);
  app::printing::PaintPage(painter, label, 0, kLabelDpi);
  return image;
}

}  // namespace

Devices::Devices(const std::string& folder, const Camera& camera)
    : camera_(camera),
      paper_(folder + "/papel"),
      scale_(Scale(folder)),
      scale_at_work_([this] { scale_.Serve(kLongerThanTheWalk); }) {
  std::filesystem::create_directories(paper_);
}

Devices::~Devices() { scale_.Stop(); }

std::unique_ptr<host::SerialPort> Devices::NewSerialPort(app::PortUse use) {
  return station_.NewSerialPort(std::move(use));
}

std::optional<app::PrintJob> Devices::Print(const app::PrintRequest& request) {
  if (request.report == "WEtqTecRolo" && request.kind == 'W') {
    camera_.Keep(Drawn(app::printing::MakePrintout(request)), QStringLiteral("etiqueta"));
  }
  return station_.Print(request);
}

}  // namespace tour
