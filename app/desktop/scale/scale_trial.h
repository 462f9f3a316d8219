// Listens to a scale for a few seconds, as a weighing station with these settings would.
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>
#include <string>

#include "app/scale/scale_settings.h"
#include "host/host.h"
#include "host/serial_port.h"

namespace app::desktop {

/// Nothing is stored and nobody's screen learns of it.
class ScaleTrial : public QObject {
  Q_OBJECT

 public:
  explicit ScaleTrial(QObject* parent = nullptr);
  ~ScaleTrial() override;

  /// Begins anew. What goes wrong with the port is told by Heard and Ended at once.
  void Start(const scale::ScaleSettings& settings);
  void Stop();
  bool Running() const { return port_ != nullptr; }

 signals:
  /// Half a second is over: the bytes that came, as in the log (empty for none), and the weight or why there is none.
  void Heard(const QString& bytes, const QString& meaning);
  void Ended();

 private:
  void Tick();
  QString MeaningOf(const std::string& received) const;

  scale::ScaleSettings settings_;
  std::unique_ptr<host::UserSettings> kept_;
  std::unique_ptr<host::SerialPort> port_;
  std::string received_;
  std::string lost_;  // why the port is gone; empty while it is there
  bool asked_ = false;
  QTimer timer_;
  int ticks_ = 0;
};

}  // namespace app::desktop
